// Taps of one stream as one: what several have seen comes out once, and what one has not seen is told.
//
// A packet is that of another tap if its bytes are the same, their times differ by the window at most, and neither has been
// paired with another packet of the same tap: what is sent twice comes out twice. Of a packet of a network the bytes are those
// of the IP packet, without what changes on its way: frames, hops and the checksum over them.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "Capture/Packet.h"
#include "Capture/SeededHash.h"

namespace qlproto {

/// Bytes that a packet is held with, at most, besides its own.
constexpr std::size_t HELD_WITH = 1024;

/// What all taps see alike of a packet, in `room`.
const std::string& seenAlike(const Capture::Packet& packet, std::string& room);

class TapMerge {
  public:
    static constexpr std::size_t MOST_TAPS = 64;

    /// Packets in a row that one tap has not seen, and others have.
    struct Gap {
        std::size_t tap;
        int64_t from, to; ///< times of the first and the last of them
        uint64_t packets;
    };
    struct Side {
        uint64_t packets = 0;    ///< that the tap has seen
        uint64_t duplicates = 0; ///< of them, that came out as another tap's
        uint64_t missing = 0, gaps = 0;
    };

    /// The window is in nanoseconds. `onGap` is told of each gap when it has ended.
    TapMerge(std::size_t taps, int64_t window, std::function<void(const Gap&)> onGap)
        : _window(window), _onGap(std::move(onGap)), _sides(taps), _open(taps) {}

    /// Whether the packet comes out. REQUIRES: times do not decrease, tap < taps.
    bool take(const Capture::Packet& packet, std::size_t tap);

    void finish(); ///< tells of the last gaps

    const std::vector<Side>& sides() const { return _sides; }

    /// Whether more came within a window than are held: what is older may have come out twice.
    bool isOverfull() const { return _isOverfull; }

  private:
    static constexpr std::size_t HELD = 64 * 1024 * 1024; ///< bytes of packets

    /// The packets of the same bytes that came out lately.
    struct Alike {
        std::deque<uint64_t> numbers;
        std::vector<uint64_t> next; ///< for each tap, the number after the last one that it has seen
    };
    struct Held {
        int64_t time;
        uint64_t seenBy; ///< a bit for each tap
        const std::string* bytes;
    };

    void release();

    const int64_t _window;
    const std::function<void(const Gap&)> _onGap;
    std::vector<Side> _sides;
    std::vector<Gap> _open; ///< the gap that each tap is in; of no packets if it is in none
    Capture::SeededMap<std::string, Alike> _alike;
    std::deque<Held> _held;
    uint64_t _first = 1; ///< number of the first that is held
    std::size_t _bytes = 0;
    std::string _key; ///< of the last packet
    bool _isOverfull = false;
};

} // namespace qlproto
