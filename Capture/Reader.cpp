#include "Capture/Reader.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "Capture/Errors.h"
#include "Capture/FileHeader.h"

namespace Capture {

namespace {

constexpr std::size_t HEADER = RecordHeader::SIZE;

} // namespace

std::string Damage::text() const {
    const std::string where = "damaged record at offset " + std::to_string(offset) + ": " + reason;
    if (skipped == 0) return where + "; its packet is taken all the same";
    return where + "; " + counted(skipped, "byte") + " skipped";
}

Reader::Reader(const std::string& path, const Inspect::Protocol& protocol)
    : _window(path), _form(readFileHeader()), _finder(_window, _form, protocol) {}

RecordForm Reader::readFileHeader() {
    RecordForm form;
    const std::string_view header = _window.peek(FILE_HEADER);
    const auto fail = [&](const std::string& why) { throw DamagedCapture(_window.name() + ": " + why); };
    if (header.size() < FILE_HEADER) fail("not a capture: " + counted(header.size(), "byte") + " are no header");
    switch (form.wordAt(header, 0)) {
    case MAGIC_NANOSECONDS:
        form.fractions = 1'000'000'000;
        break;
    case MAGIC_MICROSECONDS:
        form.fractions = 1'000'000;
        break;
    case __builtin_bswap32(MAGIC_NANOSECONDS):
        form.fractions = 1'000'000'000;
        form.isSwapped = true;
        break;
    case __builtin_bswap32(MAGIC_MICROSECONDS):
        form.fractions = 1'000'000;
        form.isSwapped = true;
        break;
    case MAGIC_PCAPNG:
        fail("a capture of the newer form, pcapng; convert it to pcap with: editcap -F nsecpcap OLD NEW");
        break;
    default:
        fail("not a capture: it does not begin as one");
    }
    const uint32_t longest = form.wordAt(header, 16);
    if (longest >= IDENTIFIER_SIZE && longest <= MAX_PACKET) form.longest = longest;
    const uint32_t linkType = form.wordAt(header, 20) & 0xFFFF; // what is above tells of checksums
    if (linkType != LINK_TYPE)
        fail("link type " + std::to_string(linkType) + " instead of USER0 (" + std::to_string(LINK_TYPE) + ")");
    _window.skip(FILE_HEADER);
    return form;
}

bool Reader::next(Packet& packet) {
    _damage.reset();
    const uint64_t last = _window.position();
    if (_found && _finder.pass(*_found))
        _damage = Damage{last, 0, "the next one begins inside its " + counted(_found->length, "byte")};
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

bool Reader::isReady() {
    if (_window.fileSize() != 0) return true;
    std::string_view held = _window.peek(0);
    if (_found) held.remove_prefix(HEADER + _found->length);
    return held.size() >= HEADER && held.size() - HEADER >= _form.headerOf(held).captured;
}

std::string Reader::describe(std::string_view header) const {
    if (header.size() < HEADER) return "the capture ends inside its header";
    const RecordHeader record = _form.headerOf(header);
    if (record.fraction >= _form.fractions)
        return "its time has " + std::to_string(record.fraction) + " parts of " + std::to_string(_form.fractions);
    if (record.captured > MAX_PACKET) return counted(record.captured, "byte") + " are too many";
    if (record.captured > record.original)
        return counted(record.captured, "byte") + " captured of " + std::to_string(record.original);
    if (_window.fileSize() != 0 && _window.position() + HEADER + record.captured > _window.fileSize())
        return "the capture ends inside its " + counted(record.captured, "byte");
    return "no record follows its " + counted(record.captured, "byte");
}

} // namespace Capture
