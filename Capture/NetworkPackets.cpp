#include "Capture/NetworkPackets.h"

#include <algorithm>

#include "Capture/Ip.h"
#include "Capture/NumberAt.h"

namespace Capture {

namespace {

constexpr std::string_view MAPPED("\0\0\0\0\0\0\0\0\0\0\xFF\xFF", 12);

std::string_view addressOf(const Endpoint& it) {
    const std::string_view whole(it.address.data(), it.address.size());
    return whole.starts_with(MAPPED) ? whole.substr(MAPPED.size()) : whole;
}

/// The IP packet around a segment or datagram whose checksum is to be put in at that place.
std::string ipPacket(const Endpoint& from, const Endpoint& to, unsigned protocol, std::string contents,
                     std::size_t checksumAt) {
    const std::string_view source = addressOf(from), target = addressOf(to);
    std::string pseudo;
    pseudo.append(source).append(target);
    appendNumber(pseudo, contents.size(), 4);
    appendNumber(pseudo, protocol, 4);
    const auto putSum = [](std::string& bytes, std::size_t at, uint32_t sum) {
        sum = ~sum & 0xFFFF;
        if (sum == 0) sum = 0xFFFF; // the same, and no sign that there is none
        bytes[at] = static_cast<char>(sum >> 8);
        bytes[at + 1] = static_cast<char>(sum);
    };
    putSum(contents, checksumAt, wordSum(contents, wordSum(pseudo)));

    constexpr unsigned hops = 64;
    std::string packet;
    if (source.size() == 4) {
        constexpr std::size_t header = 20, sumAt = 10;
        appendNumber(packet, 0x4500, 2);
        appendNumber(packet, header + contents.size(), 2);
        appendNumber(packet, 0x00004000, 4); // not to be fragmented
        appendNumber(packet, hops, 1);
        appendNumber(packet, protocol, 1);
        appendNumber(packet, 0, 2);
        packet.append(source).append(target);
        putSum(packet, sumAt, wordSum(packet));
    } else {
        appendNumber(packet, 0x60000000, 4);
        appendNumber(packet, contents.size(), 2);
        appendNumber(packet, protocol, 1);
        appendNumber(packet, hops, 1);
        packet.append(source).append(target);
    }
    return packet += contents;
}

std::string ports(const Endpoint& from, const Endpoint& to) {
    std::string bytes;
    appendNumber(bytes, from.port, 2);
    appendNumber(bytes, to.port, 2);
    return bytes;
}

} // namespace

Endpoint endpointOf(uint32_t address, uint16_t port) {
    Endpoint it;
    std::string bytes(MAPPED);
    appendNumber(bytes, address, 4);
    std::ranges::copy(bytes, it.address.begin());
    it.port = port;
    return it;
}

std::string tcpPacket(const Endpoint& from, const Endpoint& to, const TcpHeader& header, std::string_view bytes) {
    constexpr unsigned words = 5, window = 65535;
    std::string segment = ports(from, to);
    appendNumber(segment, header.sequence, 4);
    appendNumber(segment, header.acknowledged, 4);
    appendNumber(segment, words << 12 | header.flags, 2);
    appendNumber(segment, window, 2);
    appendNumber(segment, 0, 4);
    constexpr std::size_t checksumAt = 16;
    return ipPacket(from, to, Ip::TCP, segment.append(bytes), checksumAt);
}

std::string udpPacket(const Endpoint& from, const Endpoint& to, std::string_view bytes) {
    constexpr std::size_t header = 8, checksumAt = 6;
    std::string datagram = ports(from, to);
    appendNumber(datagram, header + bytes.size(), 2);
    appendNumber(datagram, 0, 2);
    return ipPacket(from, to, Ip::UDP, datagram.append(bytes), checksumAt);
}

std::string ethernetFrame(std::string_view ipPacket) {
    std::string frame("\x02\0\0\0\0\x02\x02\0\0\0\0\x01", 12); // addresses that are given locally
    appendNumber(frame, byteAt(ipPacket, 0) >> 4 == 6 ? 0x86DD : 0x0800, 2);
    return frame.append(ipPacket);
}

} // namespace Capture
