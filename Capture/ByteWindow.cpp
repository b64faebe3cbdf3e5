#include "Capture/ByteWindow.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "Capture/Decompression.h"
#include "Capture/ReadAhead.h"

namespace Capture {

ByteWindow::ByteWindow(const std::string& path)
    : _file(path), _bytes(std::make_unique_for_overwrite<char[]>(SMALLEST)) {}

void ByteWindow::read(std::size_t size) {
    if (_isAtEnd) return;
    if (_begin + size > _capacity) makeRoom(size);
    while (_end - _begin < size || !_isRecognised) {
        ByteSource& source = _contents ? *_contents : _file;
        const std::size_t got = source.read(_bytes.get() + _end, _capacity - _end);
        _end += got;
        if (!_isRecognised) {
            const std::string_view start(_bytes.get(), _end);
            if (got != 0 && mayBeCompressed(start) && !isCompressed(start)) continue; // too few bytes to tell
            _isRecognised = true;
            if (isCompressed(start)) {
                _contents = decompressor(start, _file);
                if (isFile()) _contents = std::make_unique<ReadAhead>(std::move(_contents));
                _end = 0;
                continue;
            }
        }
        if (got == 0) {
            _isAtEnd = true;
            return;
        }
    }
}

/// For so many bytes from the next one on. The window grows to several times what is asked for, so that bytes are moved seldom.
void ByteWindow::makeRoom(std::size_t size) {
    const std::size_t held = _end - _begin, wanted = std::min(CAPACITY, 4 * size);
    if (_capacity < wanted) {
        const std::size_t capacity = std::bit_ceil(wanted);
        auto larger = std::make_unique_for_overwrite<char[]>(capacity);
        std::memcpy(larger.get(), _bytes.get() + _begin, held);
        _bytes = std::move(larger);
        _capacity = capacity;
    } else {
        std::memmove(_bytes.get(), _bytes.get() + _begin, held);
    }
    _begin = 0;
    _end = held;
}

void ByteWindow::jump(const Place& to) {
    _contents.reset(); // before the file, which it may be reading ahead
    _file.seek(to.file);
    _begin = _end = 0;
    _isAtEnd = _isRecognised = false;
    _position = to.contents;
}

std::optional<SourceFault> ByteWindow::takeFault() {
    if (!hasFault()) return std::nullopt;
    std::optional<SourceFault> fault(std::move(_contents->faults.front()));
    _contents->faults.pop_front();
    return fault;
}

} // namespace Capture
