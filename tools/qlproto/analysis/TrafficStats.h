// What a capture holds of each message: count, bytes, sizes, and how they spread over time.
//
// A size is that of the packet: identifier and body. Memory is bounded by the number of message types.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "tools/qlproto/MessageReader.h"
#include "tools/qlproto/analysis/Histogram.h"
#include "tools/qlproto/analysis/Messages.h"
#include "tools/qlproto/analysis/RateSeries.h"

namespace qlproto {

class TrafficStats {
  public:
    struct Traffic {
        uint64_t bytes = 0;
        Histogram sizes; ///< bytes; its count is the count of messages
        RateSeries overTime;

        void add(const Packet& packet) {
            bytes += packet.bytes.size();
            sizes.add(static_cast<int64_t>(packet.bytes.size()));
            overTime.add(packet.time, packet.bytes.size());
        }
        void merge(const Traffic& other) {
            bytes += other.bytes;
            sizes.merge(other.sizes);
            overTime.merge(other.overTime);
        }
    };

    void add(const Packet& packet, const MessageReader& reader) {
        _traffic[static_cast<std::size_t>(reader.descriptor().index())].add(packet);
    }
    void merge(const TrafficStats& other) {
        for (std::size_t i = 0; i < _traffic.size(); ++i) _traffic[i].merge(other._traffic[i]);
    }

    /// By INDEX of the message.
    const std::array<Traffic, MESSAGE_COUNT>& byMessage() const { return _traffic; }

    Traffic overall() const;

    /// INDEX of each message that occurs, the most frequent first.
    std::vector<std::size_t> byFrequency() const;

  private:
    std::array<Traffic, MESSAGE_COUNT> _traffic;
};

/// Count, bytes, rate over `seconds`, sizes.
nlohmann::ordered_json trafficJson(const TrafficStats::Traffic& traffic, double seconds);

/// How many messages have a size from one power of two up to the next.
struct SizeClass {
    uint64_t low, high; ///< both included
    uint64_t count;
};
std::vector<SizeClass> sizeClasses(const Histogram& sizes);

} // namespace qlproto
