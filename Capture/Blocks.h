// Tells the blocks of a pcapng file from what damage has left of them.
//
// A block begins with its type and its length, and ends with its length once more. Those with packets tell the packet's
// length, too, and what follows a block is another, or the end. So there are several witnesses to where a block ends: it is
// believed if two of them agree and no block begins inside it that ends beyond it. Where none is believed, blocks are
// searched for byte by byte: one begins where a known type is followed by a length that is repeated where it says.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "Capture/ByteWindow.h"
#include "Inspect/Protocol.h"

namespace Capture {

struct Block {
    // Types that matter here.
    static constexpr uint32_t SECTION = 0x0A0D0D0A, INTERFACE = 1, OLD_PACKET = 2, SIMPLE_PACKET = 3, PACKET = 6;

    // Places in a block with a packet.
    static constexpr std::size_t INTERFACE_AT = 8, TIME_AT = 12, CAPTURED_AT = 20, ORIGINAL_AT = 24, PACKET_AT = 28;

    static constexpr std::size_t SMALLEST = 12; ///< bytes: type and both lengths
    static constexpr std::size_t EMPTY_PACKET = PACKET_AT + 4;
    static constexpr std::size_t LARGEST = 512 * 1024; ///< what says that it is larger is taken for damage
    static constexpr uint32_t ORDER_MARK = 0x1A2B3C4D; ///< after type and length of a section

    uint32_t type = 0;
    uint32_t size = 0;       ///< bytes of the block
    bool isRepaired = false; ///< one of its lengths is damaged
};

class BlockFinder {
  public:
    /// Works at the position of the window. REQUIRES: the window outlives this.
    BlockFinder(ByteWindow& window, const Inspect::Protocol& protocol) : _window(window), _protocol(protocol) {}

    /// The block at the position, if there is one; the window then holds all of it. Waits for no input after a sound packet.
    std::optional<Block> blockHere() {
        if (const uint32_t size = usualPacket(_window.held())) return Block{Block::PACKET, size};
        return anyBlockHere();
    }

    /// Goes on to the next block after the position, or to the end.
    std::optional<Block> search();

    /// Packets may be frames of networks of that link type, too.
    void expectFrames(uint32_t linkType) {
        if (_links.size() < MOST_LINKS && std::ranges::find(_links, linkType) == _links.end())
            _links.push_back(linkType);
    }

    static bool isKnownType(uint32_t type); ///< one that files usually hold

    bool isSwapped() const { return _isSwapped; } ///< the byte order of the section is not ours

    /// The number at a place of a block at the position, in the byte order of its section.
    uint32_t wordAt(std::string_view bytes, std::size_t at) const {
        uint32_t word;
        std::memcpy(&word, bytes.data() + at, sizeof(word));
        return _isSwapped ? __builtin_bswap32(word) : word;
    }

    /// Whether so many bytes of packet stand in the block, with well-formed options after them.
    bool holds(std::string_view block, uint32_t captured) const;

    /// Whether the block's packet is a message if it has that length.
    bool isSound(std::string_view block, uint32_t captured);

    /// Calls `take(code, value)` for each option of a block from `at` on. False if they are not well-formed.
    template <class Take>
    bool options(std::string_view block, std::size_t at, Take&& take) const {
        const std::size_t end = block.size() - 4;
        while (at + 4 <= end) {
            const auto [code, length] = optionAt(block, at);
            if (code == 0) return at + 4 == end;
            if (length > end - at - 4) return false;
            take(code, block.substr(at + 4, length));
            at += 4 + padded(length);
        }
        return at == end;
    }

    static constexpr std::size_t padded(std::size_t size) { return (size + 3) / 4 * 4; }

  private:
    /// The size of the block with a packet that the bytes begin with, if both its lengths agree and another such block
    /// follows; else 0. Nearly all blocks are like this.
    uint32_t usualPacket(std::string_view bytes) {
        if (bytes.size() < Block::EMPTY_PACKET || wordAt(bytes, 0) != Block::PACKET) return 0;
        const uint32_t size = wordAt(bytes, 4);
        if (size % 4 != 0 || size < Block::EMPTY_PACKET || size > Block::LARGEST) return 0;
        if (bytes.size() < size + Block::SMALLEST || wordAt(bytes, size - 4) != size) return 0;
        const uint32_t next = wordAt(bytes, size + 4);
        if (wordAt(bytes, size) != Block::PACKET || next % 4 != 0 || next < Block::EMPTY_PACKET
            || next > Block::LARGEST)
            return 0;
        _time = wordAt(bytes, Block::TIME_AT);
        return size;
    }

    std::optional<Block> anyBlockHere();
    std::string_view peek(std::size_t at, std::size_t size);
    Block headOf(std::string_view bytes) const;
    bool isPlausible(std::string_view bytes) const;
    bool isClosed(std::size_t at, uint32_t size);
    bool isFollowed(std::size_t size);
    bool holdsBlock(std::size_t size);
    std::optional<Block> packetHere(const Block& head);
    std::optional<Block> otherHere(const Block& head);
    uint32_t sizeOf(uint32_t captured);
    std::pair<uint32_t, uint32_t> optionAt(std::string_view bytes, std::size_t at) const;
    bool mayLook(std::size_t bytes);

    ByteWindow& _window;
    const Inspect::Protocol& _protocol;
    bool _isSwapped = false;       ///< the section's byte order is not ours
    std::optional<uint32_t> _time; ///< about the time of the packets here, its high half
    uint64_t _looked = 0;          ///< bytes that were looked at where damage is
    static constexpr std::size_t MOST_LINKS = 8;
    std::vector<uint32_t> _links; ///< of networks that packets come from
};

} // namespace Capture
