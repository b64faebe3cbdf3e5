// The bytes of pcapng files that we write, for whoever writes blocks: captures, and journals, which add options of their own.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "Capture/Blocks.h"
#include "Capture/Definition.h"
#include "Capture/Packet.h"

namespace Capture {

/// In the byte order of this machine: readers tell it by the first words.
inline void appendWords(std::string& to, std::initializer_list<std::size_t> numbers) {
    for (const std::size_t number : numbers) {
        const auto word = static_cast<uint32_t>(number);
        to.append(reinterpret_cast<const char*>(&word), sizeof(word));
    }
}

/// What a file begins with: a section, with the definition in its comment, and its only interface.
std::string pcapngStart(const std::optional<Definition>& definition, uint32_t linkType = LinkType::MESSAGE);

/// Appends an option to those of a block.
void appendOption(std::string& to, uint32_t code, std::string_view value);

/// Appends the block of a packet up to its options, of which so many bytes follow. The block's size in a word ends it.
inline void appendPacketHead(std::string& to, const Packet& packet, std::size_t optionBytes = 0) {
    const std::size_t size = packet.bytes.size(), original = packet.original != 0 ? packet.original : size;
    const auto time = static_cast<uint64_t>(packet.time);
    const std::size_t padded = BlockFinder::padded(size);
    appendWords(to, {Block::PACKET, Block::EMPTY_PACKET + padded + optionBytes, 0, time >> 32, time, size, original});
    to.append(packet.bytes).append(padded - size, '\0');
}

} // namespace Capture
