#include "tools/qlproto/Capture.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fmt/format.h>

#include "Inspect/Reflection.h"
#include "tools/qlproto/Errors.h"
#include "tools/qlproto/TimeText.h"

namespace qlproto {

namespace {

// The file's header: what it begins with tells the resolution of times; then the version in two halves, two words that
// are always 0, the longest packet, and the link type.
constexpr uint32_t MAGIC_NANOSECONDS = 0xA1B23C4D;
constexpr uint32_t VERSION_MAJOR = 2, VERSION_MINOR = 4;
constexpr uint32_t LINK_TYPE = 147; // USER0
constexpr int64_t NANOSECONDS = 1'000'000'000;

constexpr std::size_t FILE_HEADER = 24;
constexpr std::size_t HEADER = RecordHeader::SIZE;

} // namespace

std::string Damage::text() const {
    const std::string where = fmt::format("damaged record at offset {}: {}", offset, reason);
    if (skipped == 0) return where + "; its packet is taken all the same";
    return where + fmt::format("; {} skipped", counted(skipped, "byte"));
}

std::string cutText(const Packet& packet, uint64_t originalLength) {
    std::string name = "a message";
    if (packet.bytes.size() >= IDENTIFIER_SIZE) {
        const Velmora::MsgType_t id = identifierOf(packet.bytes);
        const Inspect::TypeInfo* const type = Inspect::reflect(id);
        name = type != nullptr ? std::string(type->name) : fmt::format("message {} (0x{:04X})", id, id);
    }
    return fmt::format("only {} of its {} bytes were captured, {} at {}", packet.bytes.size(), originalLength, name,
                       timeText(packet.time));
}

CaptureReader::CaptureReader(const std::string& path)
    : _window(path), _form(readFileHeader()), _finder(_window, _form) {}

RecordForm CaptureReader::readFileHeader() {
    RecordForm form;
    const std::string_view header = _window.peek(FILE_HEADER);
    const auto fail = [&](const std::string& why) { throw DamagedCapture(_window.name() + ": " + why); };
    if (header.size() < FILE_HEADER)
        fail(fmt::format("not a capture: {} are no header", counted(header.size(), "byte")));
    switch (form.wordAt(header, 0)) {
    case 0xA1B23C4D:
        form.fractions = 1'000'000'000;
        break;
    case 0xA1B2C3D4:
        form.fractions = 1'000'000;
        break;
    case 0x4D3CB2A1:
        form.fractions = 1'000'000'000;
        form.isSwapped = true;
        break;
    case 0xD4C3B2A1:
        form.fractions = 1'000'000;
        form.isSwapped = true;
        break;
    case 0x0A0D0D0A:
        fail("a capture of the newer form, pcapng; convert it to pcap with: editcap -F nsecpcap OLD NEW");
        break;
    default:
        fail("not a capture: it does not begin as one");
    }
    const uint32_t longest = form.wordAt(header, 16);
    if (longest >= IDENTIFIER_SIZE && longest <= MAX_PACKET) form.longest = longest;
    const uint32_t linkType = form.wordAt(header, 20) & 0xFFFF; // what is above tells of checksums
    if (linkType != LINK_TYPE) fail(fmt::format("link type {} instead of USER0 ({})", linkType, LINK_TYPE));
    _window.skip(FILE_HEADER);
    return form;
}

bool CaptureReader::next(Packet& packet) {
    _damage.reset();
    const uint64_t last = _window.position();
    if (_found && _finder.pass(*_found))
        _damage = Damage{last, 0, fmt::format("the next one begins inside its {}", counted(_found->length, "byte"))};
    _found.reset();
    if (_window.peek(1).empty()) return false;

    const uint64_t from = _window.position();
    _found = _finder.recordHere();
    if (!_found) {
        const std::string reason = describe(_window.peek(HEADER));
        _found = _finder.search();
        _damage = Damage{from, _window.position() - from, reason};
        if (!_found) return false;
    }
    const std::string_view bytes = _window.peek(HEADER + _found->length);
    const RecordHeader header = _form.headerOf(bytes);
    const bool isRepaired = _found->isSound && !(_form.isWellFormed(header) && header.isWhole());
    if (isRepaired && !_damage) _damage = Damage{from, 0, describe(bytes)};
    packet.time = _form.timeOf(header);
    packet.bytes = bytes.substr(HEADER, _found->length);
    packet.offset = _window.position();
    _originalLength = isRepaired ? _found->length : header.original;
    return true;
}

bool CaptureReader::isReady() {
    if (_window.fileSize() != 0) return true;
    std::string_view held = _window.peek(0);
    if (_found) held.remove_prefix(HEADER + _found->length);
    return held.size() >= HEADER && held.size() - HEADER >= _form.headerOf(held).captured;
}

std::string CaptureReader::describe(std::string_view header) const {
    if (header.size() < HEADER) return "the capture ends inside its header";
    const RecordHeader record = _form.headerOf(header);
    if (record.fraction >= _form.fractions)
        return fmt::format("its time has {} parts of {}", record.fraction, _form.fractions);
    if (record.captured > MAX_PACKET) return fmt::format("{} are too many", counted(record.captured, "byte"));
    if (record.captured > record.original)
        return fmt::format("{} captured of {}", counted(record.captured, "byte"), record.original);
    if (_window.fileSize() != 0 && _window.position() + HEADER + record.captured > _window.fileSize())
        return fmt::format("the capture ends inside its {}", counted(record.captured, "byte"));
    return fmt::format("no record follows its {}", counted(record.captured, "byte"));
}

// --- writing

CaptureWriter::CaptureWriter(const std::string& path) : _output(path) {
    append(
        {MAGIC_NANOSECONDS, VERSION_MAJOR | VERSION_MINOR << 16, 0, 0, static_cast<uint32_t>(MAX_PACKET), LINK_TYPE});
}

void CaptureWriter::packet(const Packet& packet) {
    const auto size = static_cast<uint32_t>(packet.bytes.size());
    append({static_cast<uint32_t>(packet.time / NANOSECONDS), static_cast<uint32_t>(packet.time % NANOSECONDS), size,
            size});
    _output.append(packet.bytes);
}

/// In the byte order of this machine: readers tell it by the first word.
void CaptureWriter::append(std::initializer_list<uint32_t> words) {
    _output.append({reinterpret_cast<const char*>(words.begin()), words.size() * sizeof(uint32_t)});
}

void CaptureWriter::close() { _output.close(); }

} // namespace qlproto
