// The messages in the packets of a network: out of frames, IP packets, and the streams and datagrams of connections.
//
//     Network network(framing, ports, protocol, faults);
//     network.take(packet);                            // of a capture
//     for (Packet message; network.next(message);) ...
//     while (network.finish()) ... next() ...          // at the end
//
// Memory is bounded: by so many connections, and bytes that wait in all of them. Beyond that, the connection that was silent
// for the longest is finished and, unless both sides had closed it, told.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "Backend/Common/Inline.h"
#include "Capture/Connection.h"
#include "Capture/Deframer.h"
#include "Capture/Faults.h"
#include "Capture/Framing.h"
#include "Capture/Ip.h"
#include "Capture/Packet.h"
#include "Capture/SeededHash.h"
#include "Capture/TcpStream.h"
#include "Inspect/Protocol.h"

namespace Capture {

/// What packets of networks hold, as users state it.
struct NetworkOptions {
    Framing framing;
    std::vector<uint16_t> ports = {}; ///< only connections of these; of all if empty
};

class Network {
  public:
    static constexpr std::size_t MOST_CONNECTIONS = 65536;
    static constexpr std::size_t MOST_BYTES = 64 * 1024 * 1024; ///< that wait

    Network(NetworkOptions options, const Inspect::Protocol& protocol, Faults& faults);

    /// Takes a packet in. REQUIRES: isNetwork(packet.linkType), and that next() was false.
    void take(const Packet& packet);

    /// The next message, valid until the next call; false if more packets are needed.
    bool next(Packet& message);

    /// No more packets come: goes on to what is left, of which next() gives the messages; false if nothing is.
    bool finish();

    std::size_t connections() const { return _byAge.size(); }
    std::size_t memory() const { return _bytes + _ip.memory(); } ///< bytes that wait

  private:
    /// A connection with its two directions, there and back.
    struct Peers {
        std::string key;
        Connection connections[2];
        TcpStream streams[2];
        std::size_t memory = 0; ///< that was counted
        bool isReset = false;

        /// Whether it is between those, whoever opened it.
        bool isBetween(const Endpoint& a, const Endpoint& b, bool isStream) const {
            const Connection& it = connections[0];
            return it.isStream == isStream && ((it.from == a && it.to == b) || (it.from == b && it.to == a));
        }
    };
    using ByAge = std::list<Peers>;

    void takeTcp(const Datagram& datagram, const Origin& origin);
    void takeUdp(const Datagram& datagram, const Origin& origin);
    bool isTaken(const Endpoint& from, const Endpoint& to) const;
    ByAge::iterator find(const Endpoint& from, const Endpoint& to, bool isStream);
    Peers& peersOf(const Endpoint& from, const Endpoint& to, bool isStream, bool isAnswer, bool& isBack);
    void use(Peers& peers, bool isBack);
    void leave(ByAge::iterator it);
    bool isTooMuch() const { return _byAge.size() > MOST_CONNECTIONS || (_bytes > MOST_BYTES && _byAge.size() > 1); }
    QL_COLD_PATH void bound();
    void count(Peers& peers);

    const NetworkOptions _options;
    Faults& _faults;
    DeframerContext _context;
    Ip _ip;
    ByAge _byAge; ///< the one that was silent for the longest first
    SeededMap<std::string, ByAge::iterator> _byKey;
    /// The last one that was found of those that share a place, which spares most look-ups. Who makes all connections share
    /// one gains nothing but the look-up.
    std::array<ByAge::iterator, 256> _recent;
    ByAge _leaving; ///< finished, with messages that may still come out
    Peers* _current = nullptr;
    bool _isBack = false; ///< direction of the current one
    std::size_t _bytes = 0;
    uint64_t _number = 0;
    bool _isRefused = false; ///< that the framing fits no streams was told
};

} // namespace Capture
