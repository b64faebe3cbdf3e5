// How long messages took from station to station: each hop of their way, and the whole of it.
//
// A hop is told only if the message was stamped at both ends of it. Clocks of different machines disagree, so a hop can
// come out negative; such are counted and kept out of the distribution. Memory is bounded by the hops that messages
// have.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "tools/qlproto/analysis/Histogram.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/trading/Stations.h"

namespace qlproto {

/// What is told of a distribution, in percent.
inline constexpr std::array LATENCY_PERCENTILES{50.0, 90.0, 99.0, 99.9};

/// Whether a message passes more than one station.
inline bool hasWay(const MessageReader& reader) {
    return WAYS[static_cast<std::size_t>(reader.descriptor().index())].length >= 2;
}

class LatencyStats {
  public:
    struct Hop {
        std::size_t from = 0; ///< positions in STATIONS
        std::size_t to = 0;
        Histogram times;          ///< nanoseconds
        uint64_t unset = 0;       ///< messages without a time at one end or both
        uint64_t negative = 0;    ///< messages whose times are in the wrong order
        int64_t mostNegative = 0; ///< nanoseconds

        bool occurs() const { return times.count() + unset + negative != 0; }
        void add(int64_t begin, int64_t end);
        void merge(const Hop& other);
    };

    LatencyStats();

    void add(const Capture::Packet& packet, const MessageReader& reader);
    void merge(const LatencyStats& other);

    /// By INDEX of the message: the hops in the order of its way, then, if there are several, the whole way. None if
    /// the message tells of no way.
    const std::array<std::vector<Hop>, MESSAGE_COUNT>& byMessage() const { return _hops; }

    /// The same of one message, to keep.
    std::vector<Hop>&& takeHops(std::size_t index) { return std::move(_hops[index]); }

    /// Hops between the same stations of all messages together, inwards first.
    std::vector<Hop> overall() const;

  private:
    std::array<std::vector<Hop>, MESSAGE_COUNT> _hops;
};

} // namespace qlproto
