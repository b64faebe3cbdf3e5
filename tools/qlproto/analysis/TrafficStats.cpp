#include "tools/qlproto/analysis/TrafficStats.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Errors.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

void TrafficStats::add(const Capture::Packet& packet, const MessageReader& reader) {
    const Place it{packet.time, static_cast<std::size_t>(reader.descriptor().index()), packet.bytes.size()};
    _traffic[it.index].bytes += it.bytes;
    _traffic[it.index].sizes.add(static_cast<int64_t>(it.bytes));

    const auto isNear = [&](int64_t time) { return std::abs(it.time - time) <= FAR; };
    const auto isOnTheWay = [&](int64_t time) { return (time > *_lastTime) == (it.time > time); };
    if (_doubtful && (isNear(_doubtful->time) || isOnTheWay(_doubtful->time))) {
        place(*_doubtful); // the times have moved on, and stay there
        place(it);
        _doubtful.reset();
    } else if (!_lastTime || isNear(*_lastTime)) {
        place(it);
        if (_doubtful) ++_outOfTime;
        _doubtful.reset();
    } else {
        if (_doubtful) ++_outOfTime;
        _doubtful = it;
    }
}

void TrafficStats::place(const Place& it) {
    _traffic[it.index].overTime.add(it.time, it.bytes);
    _lastTime = it.time;
}

TrafficStats::Traffic TrafficStats::overall() const {
    Traffic sum;
    for (const Traffic& it : _traffic) sum.merge(it);
    if (_doubtful && mayEnd(*_doubtful)) sum.overTime.add(_doubtful->time, _doubtful->bytes);
    return sum;
}

std::vector<std::size_t> TrafficStats::byFrequency() const {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < _traffic.size(); ++i)
        if (_traffic[i].sizes.count() != 0) order.push_back(i);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return _traffic[a].sizes.count() > _traffic[b].sizes.count();
    });
    return order;
}

void tellOutOfTime(const TrafficStats& stats) {
    if (stats.outOfTime() == 0) return;
    tell(fmt::format("{} at times far from all around: not in rates over time",
                     Capture::counted(stats.outOfTime(), "packet")));
}

nlohmann::ordered_json trafficJson(const TrafficStats::Traffic& traffic, double seconds) {
    const Histogram& sizes = traffic.sizes;
    nlohmann::ordered_json json{{"count", sizes.count()}, {"bytes", traffic.bytes}, {"perSecond", nullptr}};
    if (seconds > 0) json["perSecond"] = static_cast<double>(sizes.count()) / seconds;
    if (sizes.count() == 0) return json;
    json["sizes"] = {
        {"min", sizes.min()}, {"median", sizes.percentile(50)}, {"p99", sizes.percentile(99)}, {"max", sizes.max()}};
    return json;
}

std::vector<SizeClass> sizeClasses(const Histogram& sizes) {
    std::vector<SizeClass> classes;
    sizes.forEach([&](int64_t size, int64_t, uint64_t count) {
        const uint64_t low = std::bit_floor(static_cast<uint64_t>(size));
        while (classes.empty() || classes.back().low < low) {
            const uint64_t next = classes.empty() ? low : classes.back().low * 2;
            classes.push_back({next, std::max<uint64_t>(2 * next, 1) - 1, 0});
        }
        classes.back().count += count;
    });
    return classes;
}

} // namespace qlproto
