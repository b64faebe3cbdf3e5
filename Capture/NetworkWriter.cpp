#include "Capture/NetworkWriter.h"

#include <algorithm>

namespace Capture {

namespace {

constexpr std::size_t LONGEST_SEGMENT = 1460, LONGEST_DATAGRAM = 65507;
constexpr uint32_t FIRST = 1000, FIRST_BACK = 5000; ///< sequence numbers

} // namespace

NetworkWriter::NetworkWriter(PacketSink& sink, Transport transport, const Framing& framing, std::size_t connections)
    : _sink(sink), _transport(transport) {
    constexpr uint16_t port = 40000;
    for (std::size_t i = 0; i < connections; ++i)
        _peers.push_back({Framer(framing), endpointOf(0x0A000001, static_cast<uint16_t>(port + i))});
    if (transport == Transport::tcp && !framing.fitsStreams())
        throw FramingError("'" + framing.text()
                           + "' has no length outside of brackets, by which a stream could be read");
}

void NetworkWriter::packet(const Packet& message) {
    if (message.bytes.size() < IDENTIFIER_SIZE) return; // nothing that a frame could hold
    const uint16_t id = identifierOf(message.bytes);
    Peer& peer = _peers[id % _peers.size()];
    _time = message.time;
    _frame.clear();
    peer.framer.append(id, message.bytes.substr(IDENTIFIER_SIZE), _frame);
    if (_transport == Transport::udp) {
        if (_frame.size() > LONGEST_DATAGRAM)
            throw FramingError("a message of " + std::to_string(message.bytes.size()) + " bytes fits no datagram");
        _sink.packet(
            {.time = _time, .bytes = ethernetFrame(udpPacket(peer.from, _to, _frame)), .linkType = LinkType::ETHERNET});
        return;
    }
    if (peer.sequence == 0) {
        peer.sequence = FIRST;
        send(peer, false, TcpFlags::SYN, {});
        send(peer, true, TcpFlags::SYN | TcpFlags::ACK, {});
        send(peer, false, TcpFlags::ACK, {});
    }
    for (std::string_view rest = _frame; !rest.empty();) {
        const std::string_view part = rest.substr(0, LONGEST_SEGMENT);
        rest.remove_prefix(part.size());
        send(peer, false, TcpFlags::ACK | (rest.empty() ? TcpFlags::PSH : 0), part);
    }
}

void NetworkWriter::send(Peer& peer, bool isBack, unsigned flags, std::string_view bytes) {
    const bool isOpening = (flags & TcpFlags::SYN) != 0, isEnding = (flags & TcpFlags::FIN) != 0;
    TcpHeader header{peer.sequence, FIRST_BACK + 1, flags};
    if (isBack) header = {isOpening ? FIRST_BACK : FIRST_BACK + 1, peer.sequence, flags};
    if (isOpening && !isBack) header.acknowledged = 0;
    const std::string packet =
        isBack ? tcpPacket(_to, peer.from, header, bytes) : tcpPacket(peer.from, _to, header, bytes);
    _sink.packet({.time = _time, .bytes = ethernetFrame(packet), .linkType = LinkType::ETHERNET});
    if (!isBack) peer.sequence += static_cast<uint32_t>(bytes.size()) + (isOpening || isEnding ? 1 : 0);
}

void NetworkWriter::close() {
    for (Peer& peer : _peers) {
        if (peer.sequence == 0) continue;
        for (const bool isBack : {false, true}) send(peer, isBack, TcpFlags::FIN | TcpFlags::ACK, {});
    }
}

} // namespace Capture
