// Two captures side by side: which messages are equal, which differ, which are in one only.
//
// Where the captures part, both are read ahead, up to WINDOW packets or WINDOW_BYTES, to find where they meet again: the
// nearest place from which RUN packets are equal. What lies before it is laid side by side so that as many equal packets
// as possible, then as many of the same type as possible, face each other; if it is much, a part of it at a time. Time
// is linear in the packets and memory bounded by the two windows, whatever they hold.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace qlproto {

class CaptureDiff {
  public:
    struct Side {
        uint64_t number = 0;            ///< of the packet, from 1
        std::string packet;             ///< its bytes
        std::optional<std::string> key; ///< what counts of it, as bytes; without one, all of it

        bool operator==(const Side& other) const { return key == other.key && (key || packet == other.packet); }
        std::size_t bytes() const { return packet.size() + (key ? key->size() : 0); }
    };

    /// Gives the next packet of one capture; false at its end.
    using Source = std::function<bool(Side& side)>;
    /// Is told of each pair that is not equal, in order. One of the two is null if the other is in its capture only.
    using Tell = std::function<void(const Side* a, const Side* b)>;

    CaptureDiff(Source a, Source b, Tell tell);

    void run();

    uint64_t equal() const { return _equal; }
    uint64_t different() const { return _different; } ///< pairs of the same type
    uint64_t onlyInA() const { return _onlyInA; }
    uint64_t onlyInB() const { return _onlyInB; }

    static constexpr std::size_t WINDOW = 16384;
    static constexpr std::size_t WINDOW_BYTES = 16 << 20;

  private:
    static constexpr std::size_t PART = 1000;
    static constexpr std::size_t RUN = 3;

    /// Packets read ahead.
    struct Ahead {
        Source source;
        std::deque<Side> packets;
        std::size_t bytes = 0; ///< of the packets and their keys
        bool isAtEnd = false;

        void fill(std::size_t count);
        void drop();
    };

    /// The packets read ahead as numbers: those of equal packets are equal.
    struct Numbers {
        std::vector<uint32_t> a, b;
    };

    /// How much of both is before the place where they meet again.
    struct Stretch {
        std::size_t a, b;
        bool meets;
    };

    Numbers number() const;
    Stretch untilTheyMeet(const Numbers& numbers) const;
    void layOut(const Stretch& stretch, const Numbers& numbers);
    void tellOnlyInA();
    void tellOnlyInB();
    void tellPair();

    Ahead _a, _b;
    Tell _tell;
    uint64_t _equal = 0, _different = 0, _onlyInA = 0, _onlyInB = 0;
};

} // namespace qlproto
