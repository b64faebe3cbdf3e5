#include "tools/qlproto/trading/LatencyStats.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace qlproto {

void LatencyStats::Hop::add(int64_t begin, int64_t end) {
    if (begin == 0 || end == 0) {
        ++unset;
        return;
    }
    // Times from strangers can be further apart than any number of nanoseconds.
    int64_t time = 0;
    if (__builtin_sub_overflow(end, begin, &time))
        time = end > begin ? std::numeric_limits<int64_t>::max() : std::numeric_limits<int64_t>::min();
    if (time >= 0) {
        times.add(time);
    } else {
        ++negative;
        mostNegative = std::min(mostNegative, time);
    }
}

void LatencyStats::Hop::merge(const Hop& other) {
    times.merge(other.times);
    unset += other.unset;
    negative += other.negative;
    mostNegative = std::min(mostNegative, other.mostNegative);
}

LatencyStats::LatencyStats() {
    for (std::size_t i = 0; i < MESSAGE_COUNT; ++i) {
        const Way& way = WAYS[i];
        if (way.length < 2) continue;
        _hops[i].resize(way.length == 2 ? 1 : way.length);
        for (std::size_t hop = 0; hop + 1 < way.length; ++hop) {
            _hops[i][hop].from = way.stations[hop];
            _hops[i][hop].to = way.stations[hop + 1];
        }
        _hops[i].back().from = way.stations[0];
        _hops[i].back().to = way.stations[way.length - 1];
    }
}

void LatencyStats::add(const Capture::Packet&, const MessageReader& reader) {
    const auto index = static_cast<std::size_t>(reader.descriptor().index());
    std::vector<Hop>& hops = _hops[index];
    if (hops.empty()) return;
    const Way& way = WAYS[index];
    std::array<int64_t, STATIONS.size()> times;
    way.times(reader.message(), times.data());
    for (std::size_t i = 0; i + 1 < way.length; ++i) hops[i].add(times[i], times[i + 1]);
    if (way.length > 2) hops.back().add(times[0], times[way.length - 1]);
}

void LatencyStats::merge(const LatencyStats& other) {
    for (std::size_t i = 0; i < MESSAGE_COUNT; ++i)
        for (std::size_t hop = 0; hop < _hops[i].size(); ++hop) _hops[i][hop].merge(other._hops[i][hop]);
}

std::vector<LatencyStats::Hop> LatencyStats::overall() const {
    std::vector<Hop> sum;
    for (const auto& hops : _hops) {
        for (const Hop& hop : hops) {
            auto same = std::find_if(sum.begin(), sum.end(),
                                     [&](const Hop& it) { return it.from == hop.from && it.to == hop.to; });
            if (same == sum.end()) {
                same = sum.emplace(sum.end());
                same->from = hop.from;
                same->to = hop.to;
            }
            same->merge(hop);
        }
    }
    const auto order = [](const Hop& it) {
        const bool goesOut = it.from > it.to;
        return std::tuple(goesOut, goesOut ? STATIONS.size() - it.from : it.from, goesOut ? it.from - it.to : it.to);
    };
    std::sort(sum.begin(), sum.end(), [&](const Hop& a, const Hop& b) { return order(a) < order(b); });
    return sum;
}

} // namespace qlproto
