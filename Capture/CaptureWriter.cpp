#include "Capture/CaptureWriter.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

namespace Capture {

namespace {

/// With the number in front of what tells the form.
std::string numbered(const std::string& path, unsigned number) {
    const std::filesystem::path whole(path);
    const std::string name = whole.filename();
    const std::size_t dot = std::min(name.find('.', 1), name.size());
    char text[16];
    std::snprintf(text, sizeof(text), "-%05u", number);
    return whole.parent_path() / (name.substr(0, dot) + text + name.substr(dot));
}

/// Whether a regular file stands there, or none yet.
bool isRegular(const std::string& path) {
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    return path != "-"
           && (type == std::filesystem::file_type::regular || type == std::filesystem::file_type::not_found);
}

} // namespace

CaptureWriter::CaptureWriter(const std::string& path, CaptureWriterOptions options)
    : _path(path),
      _options(std::move(options)),
      _isRotated((_options.rotateSize != 0 || _options.rotateTime != 0) && isRegular(path)) {
    begin();
}

void CaptureWriter::begin() {
    const std::string path = _isRotated ? numbered(_path, ++_number) : _path;
    _writer = std::make_unique<Writer>(path, _options.form.value_or(WriterForm::of(path)), _options.definition);
    _firstTime.reset();
}

void CaptureWriter::packet(const Packet& packet) {
    const bool isFull = _options.rotateSize != 0 && _writer->size() + packet.bytes.size() > _options.rotateSize;
    const bool isOver = _firstTime && _options.rotateTime != 0 && packet.time - *_firstTime >= _options.rotateTime;
    if (_isRotated && _firstTime && (isFull || isOver)) {
        _writer->close();
        begin();
    }
    if (!_firstTime) _firstTime = packet.time;
    _writer->packet(packet);
    if (_options.isFlushed) _writer->flush();
}

void CaptureWriter::flush() { _writer->flush(); }

void CaptureWriter::close() { _writer->close(); }

} // namespace Capture
