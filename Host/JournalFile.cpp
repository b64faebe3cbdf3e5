#include "Host/JournalFile.h"

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <zlib.h>

#include "Capture/Blocks.h"
#include "Capture/Errors.h"
#include "Capture/PcapngForm.h"

namespace Host {

using Capture::Block;
using Capture::BlockFinder;

namespace {

constexpr const char* FORM = "%020" PRIu64 "-%019" PRId64 ".pcapng";

// Options, which stand in this order after the packet.
constexpr uint32_t SEQUENCE = 5, CHECKSUM = 0x8001;
constexpr size_t OPTION = 4; // bytes of code and length
constexpr size_t CHECKED = OPTION + sizeof(uint64_t) + OPTION;
constexpr size_t OPTIONS = CHECKED + sizeof(uint32_t) + OPTION;
constexpr size_t SMALLEST = Block::EMPTY_PACKET + BlockFinder::padded(Capture::IDENTIFIER_SIZE) + OPTIONS;
constexpr size_t LARGEST = Block::EMPTY_PACKET + Capture::MAX_PACKET + OPTIONS;

constexpr size_t CAPACITY = 2 * LARGEST; // read at a time at most

template <class Number>
Number numberAt(std::string_view bytes, size_t at) {
    Number number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

uint32_t checksumOf(std::string_view bytes) {
    return static_cast<uint32_t>(
        ::crc32(0, reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<unsigned>(bytes.size())));
}

} // namespace

std::string JournalFile::nameOf(uint64_t sequence, int64_t time) {
    char name[64];
    std::snprintf(name, sizeof name, FORM, sequence, time);
    return name;
}

std::vector<JournalFile> JournalFile::in(const std::string& folder) {
    std::vector<JournalFile> files;
    std::error_code error;
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        JournalFile file{.name = it->path().filename().string()};
        if (std::sscanf(file.name.c_str(), "%" SCNu64 "-%" SCNd64, &file.sequence, &file.time) == 2
            && file.name == nameOf(file.sequence, file.time))
            files.push_back(file);
    }
    if (error) throw Capture::IoError(folder + ": " + error.message());
    std::ranges::sort(files, {}, [](const JournalFile& it) { return it.name; });
    return files;
}

void appendJournalBlock(std::string& to, const Record& record) {
    const size_t begin = to.size();
    std::string packet = Capture::identifierBytes(record.id); // short enough to take nothing from the heap
    const size_t size = packet.size() + record.body.size(), padded = BlockFinder::padded(size);
    const auto time = static_cast<uint64_t>(record.time);
    const size_t whole = Block::EMPTY_PACKET + padded + OPTIONS;
    Capture::appendWords(to, {Block::PACKET, whole, 0, time >> 32, time, size, size});
    to.append(packet).append(record.body).append(padded - size, '\0');
    Capture::appendWords(to, {SEQUENCE | sizeof(uint64_t) << 16, record.sequence, record.sequence >> 32,
                              CHECKSUM | sizeof(uint32_t) << 16});
    Capture::appendWords(to, {checksumOf(std::string_view(to).substr(begin)), 0, whole});
}

JournalFileReader::JournalFileReader(const std::string& path)
    : _path(path),
      _file(::open(path.c_str(), O_RDONLY | O_CLOEXEC)),
      _bytes(std::make_unique_for_overwrite<char[]>(CAPACITY)) {
    if (!_file) throw Capture::IoError(path + ": " + std::strerror(errno));
}

/// What follows so many bytes after the position: `size` bytes or more, fewer only where the file ends now.
std::string_view JournalFileReader::peek(size_t at, size_t size) {
    while (_end - _begin < at + size && !_isAtEnd) {
        if (_isTail) _end = _begin; // whoever writes may have cut it off since, and written something else there
        if (_begin + at + size > CAPACITY) {
            std::memmove(_bytes.get(), _bytes.get() + _begin, _end - _begin);
            _end -= std::exchange(_begin, 0);
        }
        const auto offset = static_cast<off_t>(_position + _end - _begin);
        const size_t room = CAPACITY - _end;
        const ssize_t got = ::pread(_file.number(), _bytes.get() + _end, room, offset);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw Capture::IoError(_path + ": " + std::strerror(errno));
        _isTail = _isAtEnd = static_cast<size_t>(got) < room;
        _end += static_cast<size_t>(got);
    }
    const std::string_view held(_bytes.get() + _begin, _end - _begin);
    return held.substr(std::min(at, held.size()));
}

/// Whether a whole block stands at the start of the bytes; of a message, if it is one.
JournalFileReader::Outcome JournalFileReader::take(std::string_view bytes, Record& record, size_t& size) {
    if (bytes.size() < Block::SMALLEST) return Outcome::none;
    size = numberAt<uint32_t>(bytes, 4);
    const bool isMessage = numberAt<uint32_t>(bytes, 0) == Block::PACKET;
    if (size % 4 != 0 || size < (isMessage ? SMALLEST : Block::SMALLEST) || size > LARGEST || size > bytes.size()
        || numberAt<uint32_t>(bytes, size - 4) != size)
        return Outcome::none;
    if (!isMessage) return Outcome::other;
    const size_t packet = numberAt<uint32_t>(bytes, Block::CAPTURED_AT);
    const size_t checked = size - Block::EMPTY_PACKET + Block::PACKET_AT - OPTIONS + CHECKED;
    if (packet < Capture::IDENTIFIER_SIZE || packet > size
        || Block::EMPTY_PACKET + BlockFinder::padded(packet) + OPTIONS != size
        || numberAt<uint32_t>(bytes, checked + sizeof(uint32_t)) != 0 // the end of the options
        || numberAt<uint32_t>(bytes, checked) != checksumOf(bytes.substr(0, checked)))
        return Outcome::none;
    record.id = Capture::identifierOf(bytes.substr(Block::PACKET_AT));
    record.body = bytes.substr(Block::PACKET_AT, packet).substr(Capture::IDENTIFIER_SIZE);
    record.time = static_cast<int64_t>(uint64_t{numberAt<uint32_t>(bytes, Block::TIME_AT)} << 32
                                       | numberAt<uint32_t>(bytes, Block::TIME_AT + 4));
    record.sequence = numberAt<uint64_t>(bytes, checked - CHECKED + OPTION);
    return Outcome::message;
}

JournalFileReader::Outcome JournalFileReader::here(Record& record, size_t& size) {
    std::string_view bytes = peek(0, Block::SMALLEST);
    if (bytes.size() < Block::SMALLEST) return Outcome::none;
    const size_t announced = numberAt<uint32_t>(bytes, 4);
    if (announced <= LARGEST) bytes = peek(0, announced);
    return take(bytes, record, size);
}

bool JournalFileReader::next(Record& record) {
    for (_isAtEnd = false;;) {
        size_t size = 0;
        Outcome outcome = here(record, size);
        if (outcome == Outcome::none && search(record, size)) {
            ++_damages;
            outcome = Outcome::message;
        }
        if (outcome == Outcome::none) { // whoever writes may cut off what follows, and write something else
            _begin = _end = 0;
            return false;
        }
        _position += size;
        _begin += size;
        if (outcome == Outcome::message) return true;
    }
}

/// Finds the next whole message after the position, and goes to it.
bool JournalFileReader::search(Record& record, size_t& size) {
    uint64_t checked = 0; // bytes whose checksum was asked for: a few times those that are searched, whatever they are
    uint64_t passed = 0;
    const uint64_t position = _position;
    const auto step = [&](size_t bytes) {
        _position += bytes;
        _begin += bytes;
        passed += bytes;
    };
    while (peek(0, Block::SMALLEST).size() >= Block::SMALLEST) {
        step(4);
        const std::string_view bytes = peek(0, Block::SMALLEST);
        if (bytes.size() < Block::SMALLEST) break;
        if (numberAt<uint32_t>(bytes, 0) != Block::PACKET || checked > 16 * passed + LARGEST) continue;
        checked += numberAt<uint32_t>(bytes, 4);
        if (here(record, size) == Outcome::message) return true;
    }
    _position = position;
    return false;
}

} // namespace Host
