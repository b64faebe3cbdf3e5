// Damages bodies on their way to a capture: cut, longer, with other bits, or of random bytes. Identifiers stay.
#pragma once

#include <array>
#include <string>

#include "Capture/Packet.h"
#include "tools/qlproto/trading/session/Rng.h"

namespace qlproto {

class Hostile : public Capture::PacketSink {
  public:
    /// The same seed damages the same way.
    Hostile(uint64_t seed, Capture::PacketSink& sink) : _rng(seed), _sink(sink) {}

    void packet(const Capture::Packet& packet) override {
        // The first of each type stays whole, so that every type is also seen sound.
        bool& isSeen = _isSeen[Capture::identifierOf(packet.bytes)];
        const bool isFirst = !isSeen;
        isSeen = true;
        if (isFirst || !_rng.chance(PERCENT)) return _sink.packet(packet);
        _bytes = packet.bytes;
        damage();
        _sink.packet({packet.time, _bytes});
    }

  private:
    static constexpr int PERCENT = 5;

    void damage() {
        const auto body = static_cast<int64_t>(_bytes.size() - Capture::IDENTIFIER_SIZE);
        const auto randomByte = [&] { return static_cast<char>(_rng.between(0, 255)); };
        const auto anyPlace = [&] {
            return Capture::IDENTIFIER_SIZE + static_cast<std::size_t>(_rng.between(0, body - 1));
        };
        switch (body == 0 ? 1 : _rng.between(0, 3)) {
        case 0:
            return _bytes.resize(anyPlace());
        case 1:
            for (int64_t i = _rng.between(1, 8); i > 0; --i) _bytes += randomByte();
            return;
        case 2:
            for (int64_t i = _rng.between(1, 4); i > 0; --i)
                _bytes[anyPlace()] ^= static_cast<char>(1 << _rng.between(0, 7));
            return;
        case 3:
            for (std::size_t i = Capture::IDENTIFIER_SIZE; i < _bytes.size(); ++i) _bytes[i] = randomByte();
        }
    }

    session::Rng _rng;
    Capture::PacketSink& _sink;
    std::string _bytes;
    std::array<bool, 65536> _isSeen{};
};

} // namespace qlproto
