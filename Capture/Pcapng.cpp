#include "Capture/Pcapng.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "Capture/Errors.h"
#include "Capture/Pcap.h"

namespace Capture {

namespace {

constexpr int64_t NANOSECONDS = 1'000'000'000;
constexpr std::size_t LONGEST_DEFINITION = 4096;
constexpr std::size_t MOST_INTERFACES = 65536; ///< of a section; what old blocks can name

} // namespace

Pcapng::Pcapng(ByteWindow& window, const Inspect::Protocol& protocol, Takes takes)
    : _window(window), _finder(window, protocol), _takes(takes) {
    if (const std::optional<Block> block = _finder.blockHere())
        section(_window.peek(block->size).substr(0, block->size));
}

bool Pcapng::isStart(std::string_view header) {
    uint32_t type, order;
    std::memcpy(&type, header.data(), sizeof(type));
    std::memcpy(&order, header.data() + 8, sizeof(order));
    return type == Block::SECTION && (order == Block::ORDER_MARK || order == __builtin_bswap32(Block::ORDER_MARK));
}

bool Pcapng::next(Packet& packet) {
    _damage.reset();
    do {
        if (!nextBlock()) return false;
    } while (!take(packet));
    packet.offset = _window.position();
    return _hasPackets = true;
}

/// Goes on to the next block; false at the end.
bool Pcapng::nextBlock() {
    if (_block) _window.skip(_block->size);
    _block.reset();
    if (_window.peek(1).empty()) return false;
    const uint64_t from = _window.position();
    if ((_block = _finder.blockHere())) {
        if (_block->isRepaired) told("its length is damaged");
        return true;
    }
    const std::string reason = fault(_window.peek(Block::SMALLEST));
    _block = _finder.search();
    damaged({from, _window.position() - from, reason});
    if (_block && _block->isRepaired) told("its length is damaged");
    return _block.has_value();
}

/// Takes the packet of the block, or what it tells of others: then there is none.
bool Pcapng::take(Packet& packet) {
    const std::string_view block = _window.peek(_block->size).substr(0, _block->size);
    if (_block->type == Block::PACKET || _block->type == Block::OLD_PACKET) return takePacket(packet, block);
    if (looksLikePacket(block)) {
        told("its type is damaged");
        return takePacket(packet, block);
    }
    if (_block->type == Block::SIMPLE_PACKET) return takeSimple(packet, block);
    if (_block->type == Block::SECTION) section(block);
    if (_block->type == Block::INTERFACE) describe(block);
    constexpr uint32_t local = 0x80000000; // what others make of their own is theirs
    if (_block->type < local && !BlockFinder::isKnownType(_block->type))
        damaged({_window.position(), block.size(), "its type, " + std::to_string(_block->type) + ", is unknown"});
    return false;
}

bool Pcapng::takePacket(Packet& packet, std::string_view block) {
    const std::optional<uint32_t> length = lengthOf(block);
    if (!length) {
        damaged({_window.position(), block.size(), "its packet has no length that fits"});
        return false;
    }
    const Interface* const interface = interfaceOf(block);
    if (interface == nullptr) return false;
    packet.bytes = block.substr(Block::PACKET_AT, *length);
    packet.time = _time = timeOf(block, *interface);
    packet.linkType = interface->linkType;
    packet.original = _finder.wordAt(block, Block::ORIGINAL_AT);
    if (packet.original == *length) return true;
    // A message that is whole says so.
    if (packet.original < *length || _finder.isSound(block, *length)) {
        told(counted(*length, "byte") + " captured of " + std::to_string(packet.original));
        packet.original = *length;
    }
    return true;
}

bool Pcapng::takeSimple(Packet& packet, std::string_view block) {
    constexpr std::size_t at = 12, around = 16;
    if (block.size() < around) return false;
    const uint32_t original = _finder.wordAt(block, 8);
    uint32_t captured = std::min<uint32_t>(original, static_cast<uint32_t>(block.size() - around));
    if (!_interfaces.empty() && _interfaces[0].longest != 0) captured = std::min(captured, _interfaces[0].longest);
    if (captured > MAX_PACKET || (!_interfaces.empty() && !isTaken(_interfaces[0].linkType, _takes))) return false;
    packet.bytes = block.substr(at, captured);
    packet.time = _time; // it has none
    packet.linkType = _interfaces.empty() ? LinkType::MESSAGE : _interfaces[0].linkType;
    packet.original = original;
    return true;
}

/// The packet's length; none if none can be told.
std::optional<uint32_t> Pcapng::lengthOf(std::string_view block) {
    const uint32_t captured = _finder.wordAt(block, Block::CAPTURED_AT);
    const uint32_t original = _finder.wordAt(block, Block::ORIGINAL_AT);
    if (_finder.holds(block, captured)) { // what follows it may look like options, and be the rest of the packet
        if (original == captured || !_finder.holds(block, original) || !_finder.isSound(block, original))
            return captured;
        told(counted(captured, "byte") + " instead of " + std::to_string(original));
        return original;
    }
    const auto most = static_cast<uint32_t>(block.size() - Block::EMPTY_PACKET);
    std::optional<uint32_t> length;
    for (const uint32_t size : {original, most, most - 1, most - 2, most - 3})
        if (!length && size <= most && _finder.isSound(block, size)) length = size;
    if (length) told(counted(captured, "byte") + " do not fit into it");
    return length;
}

/// Where the block's packet comes from. Null if it is none of ours.
const Pcapng::Interface* Pcapng::interfaceOf(std::string_view block) {
    uint32_t number = _finder.wordAt(block, Block::INTERFACE_AT);
    if (_block->type == Block::OLD_PACKET) { // half of the word
        uint16_t half;
        std::memcpy(&half, block.data() + Block::INTERFACE_AT, sizeof(half));
        number = _finder.isSwapped() ? __builtin_bswap16(half) : half;
    }
    if (_interfaces.empty()) {
        // What describes it was lost. Of times in this century the size tells the resolution.
        constexpr uint64_t nanoseconds = 100'000'000'000'000'000;
        const uint64_t time =
            uint64_t(_finder.wordAt(block, Block::TIME_AT)) << 32 | _finder.wordAt(block, Block::TIME_AT + 4);
        if (!_isGuessed) told("no interface is described: packets are taken for messages");
        _isGuessed = true;
        static constexpr Interface fine{LinkType::MESSAGE, 0, NANOSECONDS}, coarse{LinkType::MESSAGE, 0, 1'000'000};
        return time > nanoseconds ? &fine : &coarse;
    }
    if (number >= _interfaces.size()) {
        told("its interface, " + std::to_string(number) + ", is not described");
        number = 0;
    }
    Interface& it = _interfaces[number];
    if (isTaken(it.linkType, _takes)) return &it;
    const std::string what = otherLinkType(it.linkType);
    const auto isOurs = [&](const Interface& each) { return isTaken(each.linkType, _takes); };
    if (!_hasPackets && std::none_of(_interfaces.begin(), _interfaces.end(), isOurs))
        throw DamagedCapture(_window.name() + ": " + what + networkHint(it.linkType));
    if (!it.isTold)
        damaged({_window.position(), block.size(), "its interface has " + what + ": all packets of it are left out"});
    it.isTold = true;
    return nullptr;
}

/// Whether the block, of another type, is that of a packet in all but its type.
bool Pcapng::looksLikePacket(std::string_view block) {
    if (block.size() < Block::EMPTY_PACKET || _finder.wordAt(block, Block::INTERFACE_AT) >= _interfaces.size())
        return false;
    const uint32_t captured = _finder.wordAt(block, Block::CAPTURED_AT);
    return captured >= IDENTIFIER_SIZE && captured <= _finder.wordAt(block, Block::ORIGINAL_AT)
           && _finder.holds(block, captured);
}

/// A section: all that was said before holds no longer.
void Pcapng::section(std::string_view block) {
    ++_descriptions;
    constexpr std::size_t optionsAt = 24;
    _interfaces.clear();
    _isGuessed = false;
    if (block.size() < optionsAt + 4) return;
    _finder.options(block, optionsAt, [&](uint32_t code, std::string_view value) {
        if (code == COMMENT && value.starts_with('{') && value.size() <= LONGEST_DEFINITION) _definition = value;
    });
}

/// An interface.
void Pcapng::describe(std::string_view block) {
    ++_descriptions;
    constexpr std::size_t optionsAt = 16;
    if (block.size() < optionsAt + 4 || _interfaces.size() == MOST_INTERFACES) return;
    const uint32_t word = _finder.wordAt(block, 8);
    Interface it{_finder.isSwapped() ? word >> 16 : word & 0xFFFF, _finder.wordAt(block, 12)};
    _finder.options(block, optionsAt, [&](uint32_t code, std::string_view value) {
        if (code == TIME_RESOLUTION && !value.empty()) {
            const auto exponent = static_cast<unsigned char>(value[0]);
            const int digits = exponent & 0x7F;
            if ((exponent & 0x80) != 0 ? digits > 63 : digits > 19) return told("its resolution of times is unknown");
            it.perSecond = 1;
            for (int i = 0; i < digits; ++i) it.perSecond *= (exponent & 0x80) != 0 ? 2 : 10;
        }
        if (code == TIME_OFFSET && value.size() == sizeof(it.offset)) {
            const uint64_t low = _finder.wordAt(value, _finder.isSwapped() ? 4 : 0);
            const uint64_t high = _finder.wordAt(value, _finder.isSwapped() ? 0 : 4);
            it.offset = static_cast<int64_t>(high << 32 | low);
        }
    });
    _interfaces.push_back(it);
    if (isNetwork(it.linkType)) _finder.expectFrames(it.linkType);
}

/// Nanoseconds since 1970, within what other containers can tell: 32 bits of seconds.
int64_t Pcapng::timeOf(std::string_view block, const Interface& interface) {
    constexpr int64_t end = (int64_t(1) << 32) * NANOSECONDS;
    const uint64_t units =
        uint64_t(_finder.wordAt(block, Block::TIME_AT)) << 32 | _finder.wordAt(block, Block::TIME_AT + 4);
    if (interface.perSecond == NANOSECONDS && interface.offset == 0 && units < static_cast<uint64_t>(end))
        return static_cast<int64_t>(units); // nearly always
    __extension__ using Wide = __int128;
    const Wide time = Wide(interface.offset) * NANOSECONDS + Wide(units) * NANOSECONDS / interface.perSecond;
    if (time >= 0 && time < end) return static_cast<int64_t>(time);
    told("its time is not of the years 1970 to 2106");
    return time < 0 ? 0 : end - 1;
}

bool Pcapng::isReady() const {
    std::string_view held = _window.held();
    if (_block) held.remove_prefix(std::min<std::size_t>(held.size(), _block->size));
    return held.size() >= Block::SMALLEST && held.size() >= _finder.wordAt(held, 4);
}

/// Tells what is wrong with a block whose packet comes out all the same.
void Pcapng::told(const std::string& reason) { damaged({_window.position(), 0, reason}); }

std::string Pcapng::fault(std::string_view header) const {
    if (header.size() < Block::SMALLEST) return "the capture ends inside its header";
    const uint32_t type = _finder.wordAt(header, 0), size = _finder.wordAt(header, 4);
    if (size < Block::SMALLEST || size % 4 != 0) return counted(size, "byte") + " are no length of a block";
    if (size > Block::LARGEST) return counted(size, "byte") + " are too many";
    if (_window.size() != 0 && _window.position() + size > _window.size())
        return "the capture ends inside its " + counted(size, "byte");
    return "no block of type " + std::to_string(type) + " ends after " + counted(size, "byte");
}

} // namespace Capture
