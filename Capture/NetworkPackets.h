// Packets of a network, as a host would send them: with their headers and checksums.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Capture/Connection.h"

namespace Capture {

/// The address of IPv4 from its four bytes, high first, as in 0x0A000001 for 10.0.0.1.
Endpoint endpointOf(uint32_t address, uint16_t port);

struct TcpFlags {
    static constexpr unsigned FIN = 1, SYN = 2, RST = 4, PSH = 8, ACK = 16;
};

struct TcpHeader {
    uint32_t sequence = 0, acknowledged = 0;
    unsigned flags = 0;
};

/// IP packets of the version that the addresses are of. REQUIRES: fewer than 65,000 bytes.
std::string tcpPacket(const Endpoint& from, const Endpoint& to, const TcpHeader& header, std::string_view bytes);
std::string udpPacket(const Endpoint& from, const Endpoint& to, std::string_view bytes);

/// An Ethernet frame with an IP packet, without checksum.
std::string ethernetFrame(std::string_view ipPacket);

} // namespace Capture
