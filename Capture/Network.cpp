#include "Capture/Network.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Capture/Errors.h"
#include "Capture/Link.h"
#include "Capture/NumberAt.h"

namespace Capture {

namespace {

/// The same for both directions.
std::string keyOf(const Endpoint& a, const Endpoint& b, bool isStream) {
    std::string key(1, isStream ? 'T' : 'U');
    for (const Endpoint* it : {&std::min(a, b), &std::max(a, b)}) {
        key.append(it->address.data(), it->address.size());
        key += {static_cast<char>(it->port >> 8), static_cast<char>(it->port)};
    }
    return key;
}

/// The place among those found last, the same for both directions.
std::size_t placeOf(const Endpoint& a, const Endpoint& b) {
    return static_cast<unsigned char>(a.port ^ b.port ^ a.address.back() ^ b.address.back());
}

} // namespace

Network::Network(NetworkOptions options, const Inspect::Protocol& protocol, Faults& faults)
    : _options(std::move(options)), _faults(faults), _context{_options.framing, protocol, faults}, _ip(faults) {
    _recent.fill(_byAge.end());
}

void Network::take(const Packet& packet) {
    const std::string_view bytes = ipPacketOf(packet.linkType, packet.bytes);
    Datagram datagram;
    if (bytes.empty() || !_ip.take(bytes, packet.time, datagram)) return;
    const Origin origin{packet.time, packet.offset, packet.capture};
    if (datagram.protocol == Ip::TCP) takeTcp(datagram, origin);
    if (datagram.protocol == Ip::UDP) takeUdp(datagram, origin);
}

void Network::takeTcp(const Datagram& datagram, const Origin& origin) {
    constexpr std::size_t shortest = 20;
    constexpr unsigned fin = 1, syn = 2, reset = 4, ack = 16;
    const std::string_view bytes = datagram.bytes;
    if (bytes.size() < shortest) return _faults.tell("damaged segment", "it has no header");
    const std::size_t header = (byteAt(bytes, 12) >> 4) * std::size_t(4);
    if (header < shortest || header > bytes.size() + datagram.missing)
        return _faults.tell("damaged segment", "its header has " + counted(header, "byte"));
    const Endpoint from{datagram.from, static_cast<uint16_t>(halfAt(bytes, 0))};
    const Endpoint to{datagram.to, static_cast<uint16_t>(halfAt(bytes, 2))};
    if (!isTaken(from, to)) return;
    if (!_options.framing.fitsStreams()) {
        if (!std::exchange(_isRefused, true))
            _faults.tell("no frame", std::string("'").append(_options.framing.text())
                                         + "' has no length outside of brackets: streams, as " + from.text() + " > "
                                         + to.text() + ", are left out");
        return;
    }
    const unsigned flags = byteAt(bytes, 13);
    TcpStream::Segment segment;
    segment.sequence = static_cast<uint32_t>(numberAt(bytes, 4, 4));
    segment.isFirst = (flags & syn) != 0;
    segment.isLast = (flags & fin) != 0;
    segment.bytes = bytes.substr(std::min(header, bytes.size()));
    segment.missing = datagram.missing - std::min(datagram.missing, header - std::min(header, bytes.size()));
    const bool isEmpty = segment.bytes.empty() && segment.missing == 0 && (flags & (syn | fin | reset)) == 0;

    bool isBack = false;
    if (isEmpty && find(from, to, true) == _byAge.end()) return;
    const bool isAnswer = segment.isFirst && (flags & ack) != 0;
    Peers* peers = &peersOf(from, to, true, isAnswer, isBack);
    if (!isEmpty && (flags & reset) == 0 && !peers->streams[isBack].mayTake(segment)) {
        // The same ports once more.
        leave(_byKey.find(peers->key)->second);
        peers = &peersOf(from, to, true, isAnswer, isBack);
    }
    if ((flags & reset) != 0) {
        peers->isReset = true;
        return use(*peers, isBack);
    }
    peers->streams[isBack].take(segment, origin);
    use(*peers, isBack);
}

void Network::takeUdp(const Datagram& datagram, const Origin& origin) {
    constexpr std::size_t header = 8;
    const std::string_view bytes = datagram.bytes;
    if (bytes.size() < header) return _faults.tell("damaged datagram", "it has no header");
    const Endpoint from{datagram.from, static_cast<uint16_t>(halfAt(bytes, 0))};
    const Endpoint to{datagram.to, static_cast<uint16_t>(halfAt(bytes, 2))};
    if (!isTaken(from, to)) return;
    const std::size_t whole = bytes.size() + datagram.missing, said = halfAt(bytes, 4);
    const std::size_t size = said == 0 ? whole : said; // of more than 64 kB it does not say
    if (size < header || size > whole)
        return _faults.tell("damaged datagram",
                            "its length is " + std::to_string(said) + " of " + std::to_string(whole));
    bool isBack = false;
    Peers& peers = peersOf(from, to, false, false, isBack);
    const std::string_view there = bytes.substr(header, size - header);
    peers.streams[isBack].deframer().takeDatagram(there, size - header - there.size(), origin);
    use(peers, isBack);
}

bool Network::isTaken(const Endpoint& from, const Endpoint& to) const {
    const auto& ports = _options.ports;
    return ports.empty() || std::ranges::find(ports, from.port) != ports.end()
           || std::ranges::find(ports, to.port) != ports.end();
}

/// The connection; the end if there is none.
Network::ByAge::iterator Network::find(const Endpoint& from, const Endpoint& to, bool isStream) {
    ByAge::iterator& recent = _recent[placeOf(from, to)];
    if (recent != _byAge.end() && recent->isBetween(from, to, isStream)) return recent;
    const auto found = _byKey.find(keyOf(from, to, isStream));
    return found != _byKey.end() ? recent = found->second : _byAge.end();
}

/// The connection, a new one if there is none. Who answers did not open it.
Network::Peers& Network::peersOf(const Endpoint& from, const Endpoint& to, bool isStream, bool isAnswer, bool& isBack) {
    if (const auto found = find(from, to, isStream); found != _byAge.end()) {
        if (std::next(found) != _byAge.end()) _byAge.splice(_byAge.end(), _byAge, found);
    } else {
        Peers& peers = _byAge.emplace_back();
        peers.key = keyOf(from, to, isStream);
        ++_number;
        for (const bool back : {false, true})
            peers.connections[back] = {_number, isAnswer ? to : from, isAnswer ? from : to, back, isStream};
        _byKey.emplace(peers.key, std::prev(_byAge.end()));
    }
    Peers& peers = _byAge.back();
    isBack = !(peers.connections[0].from == from && peers.connections[0].to == to);
    return peers;
}

/// The connection whose messages come out next.
void Network::use(Peers& peers, bool isBack) {
    _current = &peers;
    _isBack = isBack;
}

void Network::count(Peers& peers) {
    _bytes -= peers.memory;
    peers.memory = peers.streams[0].memory() + peers.streams[1].memory();
    _bytes += peers.memory;
}

void Network::leave(ByAge::iterator it) {
    if (_current == &*it) _current = nullptr;
    ByAge::iterator& recent = _recent[placeOf(it->connections[0].from, it->connections[0].to)];
    if (recent == it) recent = _byAge.end();
    _byKey.erase(it->key);
    for (TcpStream& stream : it->streams) stream.finish();
    _leaving.splice(_leaving.end(), _byAge, it);
}

/// Lets connections go while there are too many, or too much waits in them.
void Network::bound() {
    while (isTooMuch()) {
        const auto oldest = _byAge.begin();
        const bool isClosed = oldest->isReset || !oldest->connections[0].isStream
                              || (oldest->streams[0].isOver() && oldest->streams[1].isOver());
        if (!isClosed)
            _faults.tell("dropped connection",
                         oldest->connections[0].text() + ", the one that was silent for the longest: "
                             + (_bytes > MOST_BYTES ? counted(_bytes, "byte") + " wait"
                                                    : std::to_string(MOST_CONNECTIONS) + " connections are held"));
        count(*oldest);
        _bytes -= std::exchange(oldest->memory, 0);
        leave(oldest);
    }
}

bool Network::next(Packet& message) {
    for (;;) {
        if (!_leaving.empty()) {
            Peers& peers = _leaving.front();
            for (const bool isBack : {false, true})
                if (peers.streams[isBack].next(_context, peers.connections[isBack], message)) return true;
            _bytes -= peers.memory;
            _leaving.pop_front();
        } else if (_current != nullptr) {
            if (_current->streams[_isBack].next(_context, _current->connections[_isBack], message)) return true;
            count(*_current);
            _current = nullptr;
            if (isTooMuch()) bound();
        } else {
            return false;
        }
    }
}

bool Network::finish() {
    _ip.finish();
    if (_byAge.empty()) return false;
    leave(_byAge.begin());
    return true;
}

} // namespace Capture
