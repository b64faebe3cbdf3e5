#include "Capture/ZstdFrames.h"

#include <new>
#include <stdexcept>

#include <zstd.h>

namespace Capture {

namespace {

constexpr std::size_t FRAME = 1024 * 1024; ///< bytes of content, and those of one record

void appendWord(std::string& bytes, std::size_t number) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
}

} // namespace

void ZstdFrames::Free::operator()(ZSTD_CCtx_s* context) const { ZSTD_freeCCtx(context); }

ZstdFrames::ZstdFrames(Output& output) : _output(output), _context(ZSTD_createCCtx()) {
    if (!_context) throw std::bad_alloc();
    ZSTD_CCtx_setParameter(_context.get(), ZSTD_c_checksumFlag, 1);
}

void ZstdFrames::append(std::string_view record) {
    _content += record;
    if (_content.size() >= FRAME) endFrame();
}

void ZstdFrames::endFrame() {
    if (_content.empty()) return;
    _frame.resize(ZSTD_compressBound(_content.size()));
    const std::size_t size =
        ZSTD_compress2(_context.get(), _frame.data(), _frame.size(), _content.data(), _content.size());
    if (ZSTD_isError(size)) throw std::runtime_error(ZSTD_getErrorName(size));
    _output.append(std::string_view(_frame).substr(0, size));
    appendWord(_table, size);
    appendWord(_table, _content.size());
    _content.clear();
}

void ZstdFrames::close() {
    constexpr std::size_t skippable = 0x184D2A5E, seekable = 0x8F92EAB1, footer = 9, entry = 8;
    endFrame();
    std::string frame;
    appendWord(frame, skippable);
    appendWord(frame, _table.size() + footer);
    frame += _table;
    appendWord(frame, _table.size() / entry);
    frame += '\0'; // no checksums in the table
    appendWord(frame, seekable);
    _output.append(frame);
}

} // namespace Capture
