#include "Capture/Blocks.h"

#include <algorithm>
#include <cstring>

#include "Capture/Packet.h"
#include "Capture/Verification.h"
#include "Inspect/Reflection.h"

namespace Capture {

namespace {

/// Two packets of one file are seldom further apart, in units of the high half of their times: 30 days where times are in
/// nanoseconds.
constexpr uint32_t NEAR = 600'000;

/// Whoever makes a file chooses its lengths, and with them how often a byte is looked at. No more than so often for each
/// byte of the file, and of one more block. Damage that nobody intended takes far less.
constexpr uint64_t RATION = 32;

uint32_t rawWordAt(std::string_view bytes, std::size_t at) {
    uint32_t word;
    std::memcpy(&word, bytes.data() + at, sizeof(word));
    return word;
}

} // namespace

std::optional<Block> BlockFinder::anyBlockHere() {
    const std::string_view bytes = _window.peek(Block::SMALLEST);
    if (bytes.size() < Block::SMALLEST) return std::nullopt;
    const Block head = headOf(bytes);
    const auto believe = [&] {
        if (head.type == Block::SECTION) _isSwapped = rawWordAt(_window.peek(Block::SMALLEST), 8) != Block::ORDER_MARK;
        if (head.type == Block::PACKET) _time = wordAt(_window.peek(Block::EMPTY_PACKET), Block::TIME_AT);
        return head;
    };
    if (isClosed(0, head.size)) {
        const std::string_view all = _window.peek(head.size);
        const std::string_view next = all.substr(head.size);
        if (next.size() >= Block::SMALLEST && isPlausible(next)) return believe(); // nearly always
        if (head.type == Block::PACKET) {
            const uint32_t captured = wordAt(all, Block::CAPTURED_AT);
            if (holds(all, captured) && isSound(all, captured)) return believe();
        } else if (isKnownType(head.type)) {
            return believe();
        }
        if (isFollowed(head.size) || (isKnownType(head.type) && !holdsBlock(head.size))) return believe();
    }
    return head.type == Block::PACKET ? packetHere(head) : otherHere(head);
}

/// A block without a packet of ours, one of whose lengths is damaged: the other one closes it, and another block follows.
std::optional<Block> BlockFinder::otherHere(const Block& head) {
    constexpr uint32_t longest = 4096; // of what describes sections and interfaces
    if (!isKnownType(head.type)) return std::nullopt;
    const auto take = [&](uint32_t size) {
        if (head.type == Block::SECTION) _isSwapped = rawWordAt(_window.peek(Block::SMALLEST), 8) != Block::ORDER_MARK;
        return Block{head.type, size, true};
    };
    if (head.size != 0 && isFollowed(head.size) && !holdsBlock(head.size)) return take(head.size);
    for (uint32_t size = Block::SMALLEST; size <= longest && mayLook(4); size += 4)
        if (isClosed(0, size) && isFollowed(size)) return take(size);
    return std::nullopt;
}

/// The block of a packet, one of whose lengths is damaged.
std::optional<Block> BlockFinder::packetHere(const Block& head) {
    const std::string_view bytes = _window.peek(Block::EMPTY_PACKET);
    if (bytes.size() < Block::EMPTY_PACKET) return std::nullopt;
    const uint32_t captured = wordAt(bytes, Block::CAPTURED_AT), original = wordAt(bytes, Block::ORIGINAL_AT);
    const uint32_t high = wordAt(bytes, Block::TIME_AT);
    for (const uint32_t size : {sizeOf(captured), sizeOf(original)})
        if (size != 0 && isClosed(0, size) && !holdsBlock(size)) return Block{head.type, size, true};

    // Both the length at the end and what follows are gone, or what follows alone speaks for it.
    const std::string_view all = _window.peek(std::min<std::size_t>(head.size, Block::LARGEST));
    if (head.size < Block::EMPTY_PACKET || all.size() < head.size || !holds(all.substr(0, head.size), captured))
        return std::nullopt;
    const std::string_view packet = all.substr(Block::PACKET_AT, captured);
    const auto isFrame = [&](uint32_t linkType) { return beginsAsFrame(linkType, packet); };
    const bool isKnown =
        captured >= IDENTIFIER_SIZE
        && (Inspect::reflect(_protocol, identifierOf(packet)) != nullptr || std::ranges::any_of(_links, isFrame));
    const bool isNear = _time && (high < *_time ? *_time - high : high - *_time) <= NEAR;
    if (isFollowed(head.size) || (isKnown && isNear && !holdsBlock(head.size)))
        return Block{head.type, head.size, true};
    return std::nullopt;
}

std::optional<Block> BlockFinder::search() {
    while (!_window.peek(1).empty()) {
        _window.skip(1);
        const std::string_view bytes = _window.peek(Block::SMALLEST);
        if (bytes.size() < Block::SMALLEST || !isPlausible(bytes)) continue;
        if (!isClosed(0, headOf(bytes).size)) continue;
        if (const std::optional<Block> block = blockHere()) return block;
    }
    return std::nullopt;
}

/// The bytes from `at` on, `size` or more; fewer only where the file ends.
std::string_view BlockFinder::peek(std::size_t at, std::size_t size) {
    const std::string_view bytes = _window.peek(at + size);
    return bytes.substr(std::min(at, bytes.size()));
}

bool BlockFinder::isKnownType(uint32_t type) {
    constexpr uint32_t journal = 9, secrets = 0xA, custom = 0xBAD, customUncopied = 0x40000BAD;
    return (type != 0 && type <= Block::PACKET) || type == journal || type == secrets || type == custom
           || type == customUncopied || type == Block::SECTION;
}

/// Type and length, which is 0 if it cannot be that of a block. REQUIRES: bytes.size() >= Block::SMALLEST.
Block BlockFinder::headOf(std::string_view bytes) const {
    Block head{wordAt(bytes, 0), wordAt(bytes, 4)};
    if (head.type == Block::SECTION) { // the same in either byte order, which may change here
        const uint32_t order = rawWordAt(bytes, 8);
        head.size = rawWordAt(bytes, 4);
        if (order == __builtin_bswap32(Block::ORDER_MARK))
            head.size = __builtin_bswap32(head.size);
        else if (order != Block::ORDER_MARK)
            head.size = 0;
    }
    const bool isPacket = head.type == Block::PACKET || head.type == Block::OLD_PACKET;
    if (head.size < (isPacket ? Block::EMPTY_PACKET : Block::SMALLEST) || head.size > Block::LARGEST
        || head.size % 4 != 0)
        head.size = 0;
    return head;
}

/// Whether a block may begin like this.
bool BlockFinder::isPlausible(std::string_view bytes) const {
    const Block head = headOf(bytes);
    return head.size != 0 && isKnownType(head.type);
}

/// Whether the length stands at the end, too, of a block of so many bytes that is `at` bytes ahead.
bool BlockFinder::isClosed(std::size_t at, uint32_t size) {
    if (size == 0) return false;
    const std::string_view block = peek(at, size);
    if (block.size() < size) return false;
    const uint32_t last = rawWordAt(block, size - 4);
    return last == size || last == __builtin_bswap32(size);
}

/// Whether another block, or the end, follows after so many bytes.
bool BlockFinder::isFollowed(std::size_t size) {
    const std::string_view bytes = _window.peek(size + Block::SMALLEST);
    if (bytes.size() < size) return false; // the file ends before
    const std::string_view next = bytes.substr(size);
    return next.empty() || (next.size() >= Block::SMALLEST && isPlausible(next));
}

/// Whether a block begins inside the next `size` bytes, after the first, that ends beyond them.
bool BlockFinder::holdsBlock(std::size_t size) {
    if (!mayLook(size)) return true;
    for (std::size_t at = 1; at < size; ++at) {
        const std::string_view bytes = peek(at, Block::SMALLEST);
        if (bytes.size() < Block::SMALLEST || !isPlausible(bytes)) continue;
        const Block head = headOf(bytes);
        if (at + head.size > size && isClosed(at, head.size)) return true;
    }
    return false;
}

/// Bytes of a block with a packet of that length, with options or without; 0 if it has no such length.
uint32_t BlockFinder::sizeOf(uint32_t captured) {
    if (captured > MAX_PACKET) return 0;
    std::size_t size = Block::EMPTY_PACKET + padded(captured);
    if (isClosed(0, static_cast<uint32_t>(size))) return static_cast<uint32_t>(size);
    for (size -= 4; size < Block::LARGEST && mayLook(4);) { // the last option has the number 0
        const std::string_view bytes = peek(size, 4);
        if (bytes.size() < 4) return 0;
        const auto [code, length] = optionAt(bytes, 0);
        size += 4 + padded(length);
        if (code == 0) return size + 4 <= Block::LARGEST ? static_cast<uint32_t>(size + 4) : 0;
    }
    return 0;
}

/// Number and length of an option.
std::pair<uint32_t, uint32_t> BlockFinder::optionAt(std::string_view bytes, std::size_t at) const {
    const uint32_t word = wordAt(bytes, at);
    if (_isSwapped) return {word >> 16, word & 0xFFFF};
    return {word & 0xFFFF, word >> 16};
}

bool BlockFinder::holds(std::string_view block, uint32_t captured) const {
    if (captured > MAX_PACKET || Block::EMPTY_PACKET + padded(captured) > block.size()) return false;
    if (Block::EMPTY_PACKET + padded(captured) == block.size()) return true;
    return options(block, Block::PACKET_AT + padded(captured), [](uint32_t, std::string_view) {});
}

bool BlockFinder::isSound(std::string_view block, uint32_t captured) {
    if (captured < IDENTIFIER_SIZE || captured > MAX_PACKET || Block::EMPTY_PACKET + captured > block.size())
        return false;
    if (!mayLook(captured)) return false;
    const std::string_view packet = block.substr(Block::PACKET_AT, captured);
    const auto isFrame = [&](uint32_t linkType) { return isSoundFrame(linkType, packet); };
    if (std::ranges::any_of(_links, isFrame)) return true;
    return bool(verifyBody(_protocol, identifierOf(packet), packet.substr(IDENTIFIER_SIZE), Inspect::whole));
}

bool BlockFinder::mayLook(std::size_t bytes) {
    if (_looked > RATION * (_window.position() + Block::LARGEST)) return false;
    _looked += bytes;
    return true;
}

} // namespace Capture
