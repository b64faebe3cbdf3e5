#include "Capture/Link.h"

#include "Capture/Ip.h"
#include "Capture/NumberAt.h"

namespace Capture {

namespace {

constexpr uint32_t IPV4_TYPE = 0x0800, IPV6_TYPE = 0x86DD, ARP = 0x0806;
constexpr uint32_t VLAN = 0x8100, SERVICE_VLAN = 0x88A8, OLD_SERVICE_VLAN = 0x9100;
constexpr std::size_t TAG = 4; ///< bytes of a VLAN tag

bool isTag(uint32_t type) { return type == VLAN || type == SERVICE_VLAN || type == OLD_SERVICE_VLAN; }

/// What a frame holds: its type, and where that begins.
struct Contents {
    uint32_t type = 0;
    std::size_t at = 0;
};

/// Type 0 if the bytes end before it is known.
Contents contentsOf(uint32_t linkType, std::string_view frame) {
    std::size_t typeAt = 0, at = 0;
    switch (linkType) {
    case LinkType::ETHERNET:
        typeAt = 12, at = 14;
        break;
    case LinkType::COOKED:
        typeAt = 14, at = 16;
        break;
    case LinkType::COOKED_2:
        typeAt = 0, at = 20;
        break;
    default:
        if (frame.empty()) return {};
        return {byteAt(frame, 0) >> 4 == 6 ? IPV6_TYPE : IPV4_TYPE, 0};
    }
    if (frame.size() < typeAt + 2) return {};
    uint32_t type = halfAt(frame, typeAt);
    while (isTag(type) && frame.size() >= at + TAG) {
        type = halfAt(frame, at + 2);
        at += TAG;
    }
    return {type, at};
}

} // namespace

bool isNetwork(uint32_t linkType) {
    using Type = LinkType;
    return linkType == Type::ETHERNET || linkType == Type::RAW_IP || linkType == Type::COOKED || linkType == Type::IPV4
           || linkType == Type::IPV6 || linkType == Type::COOKED_2;
}

std::string_view ipPacketOf(uint32_t linkType, std::string_view frame) {
    const auto [type, at] = contentsOf(linkType, frame);
    if ((type != IPV4_TYPE && type != IPV6_TYPE) || at >= frame.size()) return {};
    return frame.substr(at);
}

bool beginsAsFrame(uint32_t linkType, std::string_view start) {
    const auto [type, at] = contentsOf(linkType, start);
    constexpr uint32_t discovery = 0x88CC, longestOfLlc = 1500;
    if (type == ARP || type == discovery || isTag(type)) return true;
    if (linkType == LinkType::ETHERNET && type != 0 && type <= longestOfLlc) return true;
    if (type != IPV4_TYPE && type != IPV6_TYPE) return false;
    if (at >= start.size()) return true;
    return type == IPV6_TYPE ? byteAt(start, at) >> 4 == 6 : byteAt(start, at) >= 0x45 && byteAt(start, at) <= 0x4F;
}

bool isSoundFrame(uint32_t linkType, std::string_view frame) {
    constexpr std::size_t shortest = 64; // frames are filled up to it, or end in a checksum
    const auto [type, at] = contentsOf(linkType, frame);
    if (at >= frame.size()) return false;
    const std::string_view rest = frame.substr(at);
    std::size_t size = 0;
    if (type == ARP) {
        constexpr std::size_t request = 28;
        if (rest.size() < request || numberAt(rest, 0, 4) != 0x00010800) return false;
        size = request;
    } else if (type == IPV4_TYPE || type == IPV6_TYPE) {
        size = lengthOfIp(rest);
    }
    return size != 0 && size <= rest.size() && rest.size() - size <= (frame.size() <= shortest ? shortest : 4);
}

std::string otherLinkType(uint32_t linkType) {
    return "link type " + std::to_string(linkType) + " instead of USER0 (" + std::to_string(LinkType::MESSAGE) + ")";
}

std::string networkHint(uint32_t linkType) {
    if (!isNetwork(linkType)) return "";
    const char* const name = linkType == LinkType::ETHERNET                                   ? "Ethernet"
                             : linkType == LinkType::COOKED || linkType == LinkType::COOKED_2 ? "Linux cooked"
                                                                                              : "raw IP";
    return std::string("; it is of a network, ") + name + ": a framing tells how messages stand in it";
}

} // namespace Capture
