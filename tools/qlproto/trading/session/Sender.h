// Builds a message in a block, encodes it and hands the packet on.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Capture/Packet.h"
#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/trading/session/Scheduler.h"

namespace qlproto::session {

class Sender {
  public:
    /// Sends `limit` messages to `sink` and drops what comes after them.
    Sender(Capture::PacketSink& sink, const Scheduler& clock, uint64_t limit)
        : _sink(sink), _clock(clock), _limit(limit) {}

    uint64_t sent() const { return _sent; }
    uint64_t limit() const { return _limit; }

    /// Sends one message of type M now, its fields set by `fill(M&)`. Throws std::out_of_range if it outgrows the
    /// block.
    template <class M, class Fill>
    void send(Fill&& fill) {
        if (_sent == _limit) return;
        Velmora::BufferAllocator alloc(_block.data(), static_cast<int>(_block.size()), "qlproto generate",
                                       Quillon::__protocol->getMessageName(M::ID));
        M message(alloc);
        fill(message);

        // The codec does not check its range, but the block bounds the message, and no field takes more than three
        // bytes on the wire for two in memory.
        static_assert(sizeof(_packet) > 2 * (sizeof(_block) + sizeof(M)));
        _packet[0] = static_cast<char>(M::ID & 0xFF);
        _packet[1] = static_cast<char>(M::ID >> 8);
        Velmora::FastCodec codec(_packet.data() + Capture::IDENTIFIER_SIZE, _packet.data() + _packet.size());
        message.write(codec);
        _sink.packet({_clock.now(), {_packet.data(), Capture::IDENTIFIER_SIZE + codec.size()}});
        ++_sent;
    }

  private:
    Capture::PacketSink& _sink;
    const Scheduler& _clock;
    const uint64_t _limit;
    uint64_t _sent = 0;
    std::array<char, 32 * 1024> _block{};
    std::array<char, 128 * 1024> _packet{};
};

} // namespace qlproto::session
