// Messages as packets of a network: framed, on TCP connections or in UDP datagrams, over IPv4 and Ethernet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/Framer.h"
#include "Capture/NetworkPackets.h"
#include "Capture/Packet.h"

namespace Capture {

enum class Transport { tcp, udp };

class NetworkWriter : public PacketSink {
  public:
    /// The packets go to `sink`: from 10.0.0.1, port 40000 and following, one a connection, to 10.0.0.2, port 9001. The
    /// identifier of a message tells which connection it takes. REQUIRES: the sink outlives this; 1 to 1000 connections.
    NetworkWriter(PacketSink& sink, Transport transport, const Framing& framing, std::size_t connections = 1);

    /// A message. Throws FramingError if the framing has no room for it, or a datagram has not.
    void packet(const Packet& message) override;

    /// Closes the connections at the time of the last message.
    void close();

  private:
    struct Peer {
        Framer framer;
        Endpoint from;
        uint32_t sequence = 0; ///< of the next byte; 0 before the connection is open
    };
    void send(Peer& peer, bool isBack, unsigned flags, std::string_view bytes);

    PacketSink& _sink;
    const Transport _transport;
    const Endpoint _to = endpointOf(0x0A000002, 9001);
    std::vector<Peer> _peers;
    std::string _frame;
    int64_t _time = 0; ///< of the last message
};

} // namespace Capture
