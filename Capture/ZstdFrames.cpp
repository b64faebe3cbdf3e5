#include "Capture/ZstdFrames.h"

#include <new>
#include <stdexcept>

#include <zstd.h>

namespace Capture {

namespace {

constexpr std::size_t FRAME = 1024 * 1024; ///< bytes of content, and those of one record

// Of the frame that tells the lengths: what it begins and ends with, the bytes of its end and of the lengths of one frame.
constexpr std::size_t SKIPPABLE = 0x184D2A5E, SEEKABLE = 0x8F92EAB1, FOOTER = 9, ENTRY = 8, HEADER = 8;

void appendWord(std::string& bytes, std::size_t number) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
}

std::size_t wordAt(std::string_view bytes, std::size_t at) {
    std::size_t word = 0;
    for (std::size_t i = 0; i < 4; ++i)
        word |= static_cast<std::size_t>(static_cast<unsigned char>(bytes[at + i])) << 8 * i;
    return word;
}

} // namespace

std::vector<Place> framesOf(FileSource& file) {
    const uint64_t size = file.size();
    if (size < FOOTER) return {};
    const std::string footer = file.bytesAt(size - FOOTER, FOOTER);
    if (footer.size() < FOOTER || wordAt(footer, FOOTER - 4) != SEEKABLE || footer[4] != '\0') return {};
    const std::size_t frames = wordAt(footer, 0), table = HEADER + frames * ENTRY + FOOTER;
    if (table > size) return {};
    const std::string bytes = file.bytesAt(size - table, table);
    if (bytes.size() < table || wordAt(bytes, 0) != SKIPPABLE || wordAt(bytes, 4) != table - HEADER) return {};
    std::vector<Place> places;
    Place place;
    for (std::size_t i = 0; i < frames; ++i) {
        places.push_back(place);
        place.file += wordAt(bytes, HEADER + i * ENTRY);
        place.contents += wordAt(bytes, HEADER + i * ENTRY + 4);
    }
    return place.file == size - table ? places : std::vector<Place>();
}

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
    endFrame();
    std::string frame;
    appendWord(frame, SKIPPABLE);
    appendWord(frame, _table.size() + FOOTER);
    frame += _table;
    appendWord(frame, _table.size() / ENTRY);
    frame += '\0'; // no checksums in the table
    appendWord(frame, SEEKABLE);
    _output.append(frame);
}

} // namespace Capture
