// What a capture holds of each message: count, bytes, sizes, and how they spread over time.
//
// A size is that of the packet: identifier and body. Where a capture is damaged, a packet's time can be off, by seconds
// or years. One that is FAR from both its neighbours, and not on the way from one to the other, has no place in the
// spread over time, which it would stretch beyond use; nor has a last one that is more than GAP away. Memory is bounded
// by the number of message types.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "tools/qlproto/Tool.h"
#include "tools/qlproto/analysis/Histogram.h"
#include "tools/qlproto/analysis/RateSeries.h"
#include "tools/qlproto/messages/MessageReader.h"

namespace qlproto {

class TrafficStats {
  public:
    struct Traffic {
        uint64_t bytes = 0;
        Histogram sizes; ///< bytes; its count is the count of messages
        RateSeries overTime;

        void merge(const Traffic& other) {
            bytes += other.bytes;
            sizes.merge(other.sizes);
            overTime.merge(other.overTime);
        }
    };

    // Nanoseconds.
    static constexpr int64_t FAR = 10'000'000'000;
    static constexpr int64_t GAP = 3'600'000'000'000;

    void add(const Capture::Packet& packet, const MessageReader& reader);

    /// Messages that are counted, but left out of the spread over time.
    uint64_t outOfTime() const { return _outOfTime + (_doubtful && !mayEnd(*_doubtful) ? 1 : 0); }

    /// By INDEX of the message.
    const std::vector<Traffic>& byMessage() const { return _traffic; }

    Traffic overall() const;

    /// INDEX of each message that occurs, the most frequent first.
    std::vector<std::size_t> byFrequency() const;

  private:
    struct Place {
        int64_t time;
        std::size_t index; ///< of the message
        uint64_t bytes;
    };
    void place(const Place& it);
    bool mayEnd(const Place& it) const { return std::abs(it.time - *_lastTime) <= GAP; }

    std::vector<Traffic> _traffic = std::vector<Traffic>(thisTool.protocol.messages.size());
    std::optional<int64_t> _lastTime; ///< that has a place
    std::optional<Place> _doubtful;   ///< far from the one before; the next one decides
    uint64_t _outOfTime = 0;
};

/// Tells people, on standard error, of messages that are left out of rates, if there are any.
void tellOutOfTime(const TrafficStats& stats);

/// Count, bytes, rate over `seconds`, sizes.
nlohmann::ordered_json trafficJson(const TrafficStats::Traffic& traffic, double seconds);

/// How many messages have a size from one power of two up to the next.
struct SizeClass {
    uint64_t low, high; ///< both included
    uint64_t count;
};
std::vector<SizeClass> sizeClasses(const Histogram& sizes);

} // namespace qlproto
