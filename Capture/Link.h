// What a packet of a capture is by its link type: a message, or a frame of a network with an IP packet in it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Capture {

/// Link types, as pcap and pcapng number them.
struct LinkType {
    static constexpr uint32_t ETHERNET = 1, RAW_IP = 101, COOKED = 113, IPV4 = 228, IPV6 = 229, COOKED_2 = 276;
    static constexpr uint32_t MESSAGE = 147; ///< USER0
};

/// Which packets a reader takes.
enum class Takes {
    messages, ///< those that are messages
    networks, ///< those of networks, too
};

/// Whether packets of that link type come from a network whose frames are known here: Ethernet, with VLAN tags or without,
/// Linux cooked captures of both versions, and IP without a frame.
bool isNetwork(uint32_t linkType);

/// The IP packet in a frame of a network, with all that follows it; empty if the frame holds none.
std::string_view ipPacketOf(uint32_t linkType, std::string_view frame);

// What speaks for bytes as a packet of a network where a capture is damaged.

/// Bytes that beginsAsFrame() looks at.
constexpr std::size_t FRAME_START = 24;

/// Whether the bytes, as far as they are there, may be the start of a frame.
bool beginsAsFrame(uint32_t linkType, std::string_view start);

/// Whether the frame says itself that it has that length: it holds one IP packet, or one of address resolution, and no more
/// than what fills it up.
bool isSoundFrame(uint32_t linkType, std::string_view frame);

inline bool isTaken(uint32_t linkType, Takes takes) {
    return linkType == LinkType::MESSAGE || (takes == Takes::networks && isNetwork(linkType));
}

/// What is told of a link type that is not taken, and of what would be taken for another reader.
std::string otherLinkType(uint32_t linkType);
std::string networkHint(uint32_t linkType);

} // namespace Capture
