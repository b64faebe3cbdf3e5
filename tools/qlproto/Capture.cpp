#include "tools/qlproto/Capture.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include <fmt/format.h>

#include "Inspect/Reflection.h"
#include "tools/qlproto/Errors.h"
#include "tools/qlproto/Verification.h"

namespace qlproto {

namespace {

constexpr int LINK_TYPE = DLT_USER0;
constexpr std::size_t FILE_BUFFER = 256 * 1024;
constexpr int64_t NANOSECONDS = 1'000'000'000;

constexpr std::size_t FILE_HEADER = 24;
constexpr std::size_t HEADER = 16; // of a record: seconds, fraction, captured and original length

/// As many records must follow each other to be believed if the body of the first is bad.
constexpr int CHAIN = 3;
static_assert(ByteWindow::CAPACITY > (CHAIN + 1) * (HEADER + MAX_PACKET));

uint32_t wordAt(std::string_view bytes, std::size_t at, bool isSwapped) {
    uint32_t word;
    std::memcpy(&word, bytes.data() + at, sizeof(word));
    return isSwapped ? __builtin_bswap32(word) : word;
}

bool isKnown(std::string_view packet) { return Inspect::reflect(identifierOf(packet)) != nullptr; }

} // namespace

std::string Damage::text() const {
    const std::string where = fmt::format("damaged record at offset {}: {}", offset, reason);
    if (skipped == 0) return where + "; its packet is taken all the same";
    return where + fmt::format("; {} skipped", counted(skipped, "byte"));
}

CaptureReader::CaptureReader(const std::string& path) : _window(path) {
    const std::string_view header = _window.peek(FILE_HEADER);
    const auto fail = [&](const std::string& why) { throw DamagedCapture(_window.name() + ": " + why); };
    if (header.size() < FILE_HEADER)
        fail(fmt::format("not a capture: {} are no header", counted(header.size(), "byte")));
    switch (wordAt(header, 0, false)) {
    case 0xA1B23C4D:
        _fractions = 1'000'000'000;
        break;
    case 0xA1B2C3D4:
        _fractions = 1'000'000;
        break;
    case 0x4D3CB2A1:
        _fractions = 1'000'000'000;
        _isSwapped = true;
        break;
    case 0xD4C3B2A1:
        _fractions = 1'000'000;
        _isSwapped = true;
        break;
    case 0x0A0D0D0A:
        fail("a capture of the newer form, pcapng; convert it to pcap with: editcap -F nsecpcap OLD NEW");
        break;
    default:
        fail("not a capture: it does not begin as one");
    }
    const uint32_t linkType = wordAt(header, 20, _isSwapped) & 0xFFFF; // what is above tells of checksums
    if (linkType != LINK_TYPE) fail(fmt::format("link type {} instead of USER0 ({})", linkType, LINK_TYPE));
    _window.skip(FILE_HEADER);
}

bool CaptureReader::next(Packet& packet) {
    _damage.reset();
    _window.skip(std::exchange(_taken, 0));
    if (_window.peek(HEADER).empty()) return false;
    std::optional<uint32_t> length = trustedLength();
    if (!length) {
        if (!findAnchor()) return false;
        length = parse(_window.peek(HEADER)).captured;
    }
    const std::string_view bytes = _window.peek(HEADER + *length);
    const Record record = parse(bytes);
    packet.time = record.seconds * NANOSECONDS + record.fraction * (NANOSECONDS / _fractions);
    packet.bytes = bytes.substr(HEADER, *length);
    packet.offset = _window.position();
    // Of a damaged record the length that was found is the one it had.
    _originalLength = _damage && _damage->skipped == 0 ? *length : record.original;
    _taken = HEADER + *length;
    return true;
}

bool CaptureReader::isReady() {
    if (_window.fileSize() != 0) return true;
    const std::string_view held = _window.peek(0).substr(_taken);
    return held.size() >= HEADER && held.size() - HEADER >= parse(held).captured;
}

CaptureReader::Record CaptureReader::parse(std::string_view header) const {
    return {wordAt(header, 0, _isSwapped), wordAt(header, 4, _isSwapped), wordAt(header, 8, _isSwapped),
            wordAt(header, 12, _isSwapped)};
}

bool CaptureReader::isPlausible(const Record& record) const {
    return record.fraction < _fractions && record.captured <= MAX_PACKET && record.captured <= record.original;
}

/// Whether the bytes begin as a record does whose packet is whole. Two equal lengths say much: damage seldom hits both
/// alike.
bool CaptureReader::isSoundHeader(std::string_view bytes) const {
    if (bytes.size() < HEADER) return false;
    const Record record = parse(bytes);
    return isPlausible(record) && record.captured == record.original && record.captured >= IDENTIFIER_SIZE;
}

/// The length of the packet at the current place, or nothing if there is none to be trusted.
std::optional<uint32_t> CaptureReader::trustedLength() {
    std::string_view bytes = _window.peek(HEADER);
    if (bytes.size() < HEADER) return std::nullopt;
    const Record record = parse(bytes);

    // What was sent says more than what the headers say of it: one of the lengths may be damaged, or the time.
    for (const uint32_t length : {record.captured, record.original}) {
        if (length > MAX_PACKET) continue;
        bytes = _window.peek(HEADER + length);
        if (bytes.size() < HEADER + length) continue;
        if (length == record.captured && isSoundHeader(bytes) && isSoundHeader(bytes.substr(HEADER + length)))
            return length; // nearly always
        if (isSound(bytes.substr(HEADER, length))) {
            if (!isPlausible(record) || length != record.captured)
                _damage = Damage{_window.position(), 0, describe(bytes)};
            return length;
        }
    }

    // A bad body, or a length that is damaged. After the former there is a record or the end.
    if (!isPlausible(record)) return std::nullopt;
    bytes = _window.peek(HEADER + record.captured);
    if (bytes.size() < HEADER + record.captured || !followsRecord(HEADER + record.captured)) return std::nullopt;
    // A damaged length may point to a later record by chance.
    if (record.captured != record.original && holdsAnchor(HEADER + record.captured)) return std::nullopt;
    return record.captured;
}

/// Whether what is `length` bytes ahead is the end or begins as a record does.
bool CaptureReader::followsRecord(std::size_t length) {
    const std::string_view bytes = _window.peek(length + HEADER + IDENTIFIER_SIZE).substr(length);
    if (bytes.empty() || isSoundHeader(bytes)) return true;
    return bytes.size() >= HEADER + IDENTIFIER_SIZE && isPlausible(parse(bytes)) && isKnown(bytes.substr(HEADER));
}

/// Whether a record begins inside of the next `length` bytes, but not at the first.
bool CaptureReader::holdsAnchor(std::size_t length) {
    for (std::size_t at = 1; at < length; ++at)
        if (isAnchor(at)) return true;
    return false;
}

/// Whether a record surely begins `at` bytes ahead: its packet is sound, or more records follow.
bool CaptureReader::isAnchor(std::size_t at) {
    for (int i = 0; i < CHAIN; ++i) {
        std::string_view bytes = _window.peek(at + HEADER + IDENTIFIER_SIZE).substr(at);
        if (i != 0 && bytes.empty()) return true;
        if (bytes.size() < HEADER + IDENTIFIER_SIZE || !isSoundHeader(bytes) || !isKnown(bytes.substr(HEADER)))
            return false;
        const std::size_t length = parse(bytes).captured;
        bytes = _window.peek(at + HEADER + length).substr(at);
        if (bytes.size() < HEADER + length) return false;
        if (isSound(bytes.substr(HEADER, length))) return true;
        at += HEADER + length;
    }
    return true;
}

/// Goes on to the next place where a record surely begins, and tells of what lies between; false if there is none.
bool CaptureReader::findAnchor() {
    const uint64_t from = _window.position();
    const std::string reason = describe(_window.peek(HEADER));
    bool isFound = false;
    do {
        _window.skip(1);
        isFound = isAnchor(0);
    } while (!isFound && !_window.peek(1).empty());
    _damage = Damage{from, _window.position() - from, reason};
    return isFound;
}

std::string CaptureReader::describe(std::string_view header) const {
    if (header.size() < HEADER) return "the capture ends inside its header";
    const Record record = parse(header);
    if (record.fraction >= _fractions) return fmt::format("its time has {} parts of {}", record.fraction, _fractions);
    if (record.captured > MAX_PACKET) return fmt::format("{} are too many", counted(record.captured, "byte"));
    if (record.captured > record.original)
        return fmt::format("{} captured of {}", counted(record.captured, "byte"), record.original);
    if (_window.fileSize() != 0 && _window.position() + HEADER + record.captured > _window.fileSize())
        return fmt::format("the capture ends inside its {}", counted(record.captured, "byte"));
    return fmt::format("no record follows its {}", counted(record.captured, "byte"));
}

CaptureWriter::CaptureWriter(const std::string& path) : _path(path == "-" ? "standard output" : path) {
    std::FILE* file = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
    if (file == nullptr) throw IoError(fmt::format("{}: {}", _path, std::strerror(errno)));
    std::setvbuf(file, nullptr, _IOFBF, FILE_BUFFER);

    _pcap.reset(
        pcap_open_dead_with_tstamp_precision(LINK_TYPE, static_cast<int>(MAX_PACKET), PCAP_TSTAMP_PRECISION_NANO));
    _dump.reset(pcap_dump_fopen(_pcap.get(), file));
    if (!_dump) throw IoError(fmt::format("{}: {}", _path, pcap_geterr(_pcap.get())));
}

void CaptureWriter::packet(const Packet& packet) {
    pcap_pkthdr header{};
    header.ts.tv_sec = packet.time / NANOSECONDS;
    header.ts.tv_usec = packet.time % NANOSECONDS; // the field holds nanoseconds, whatever its name
    header.caplen = header.len = static_cast<bpf_u_int32>(packet.bytes.size());
    pcap_dump(reinterpret_cast<u_char*>(_dump.get()), &header, reinterpret_cast<const u_char*>(packet.bytes.data()));
    if (std::ferror(pcap_dump_file(_dump.get())) != 0) fail(); // the call above reports nothing itself
}

void CaptureWriter::close() {
    if (pcap_dump_flush(_dump.get()) != 0) fail();
}

void CaptureWriter::fail() const {
    if (errno == EPIPE) throw ClosedPipe();
    throw IoError(fmt::format("{}: {}", _path, std::strerror(errno)));
}

} // namespace qlproto
