#include "tools/qlproto/trading/SlowestMessages.h"

#include <algorithm>

#include "tools/qlproto/trading/Stations.h"

namespace qlproto {

namespace {

bool isSlower(const SlowestMessages::Message& a, const SlowestMessages::Message& b) {
    return a.took != b.took ? a.took > b.took : a.number < b.number;
}

} // namespace

void SlowestMessages::add(const Capture::Packet& packet, const MessageReader& reader, uint64_t number,
                          const ValueOf& valueOf) {
    const auto index = static_cast<std::size_t>(reader.descriptor().index());
    const Way& way = WAYS[index];
    if (way.length < 2) return;
    std::array<int64_t, STATIONS.size()> times;
    way.times(reader.message(), times.data());

    Message it{.number = number, .time = packet.time, .index = index};
    std::optional<std::size_t> first, last;
    for (std::size_t i = 0; i < way.length; ++i) {
        if (times[i] == 0) continue;
        int64_t hop = 0;
        // Times against the clock, or from strangers and too far apart, tell no duration.
        if (last && !__builtin_sub_overflow(times[i], times[*last], &hop) && hop > it.slowest) {
            it.slowest = hop;
            it.slowFrom = way.stations[*last];
            it.slowTo = way.stations[i];
        }
        if (!first) first = i;
        last = i;
    }
    if (!first || first == last || it.slowest < 0 || __builtin_sub_overflow(times[*last], times[*first], &it.took)
        || it.took < 0)
        return;
    it.from = way.stations[*first];
    it.to = way.stations[*last];

    if (_heap.size() == _most) {
        if (!isSlower(it, _heap.front())) return;
        std::pop_heap(_heap.begin(), _heap.end(), isSlower);
        _heap.pop_back();
    }
    if (const std::optional<std::string> value = valueOf ? valueOf() : std::nullopt) {
        it.hasValue = true;
        it.value = *value;
    }
    _heap.push_back(std::move(it));
    std::push_heap(_heap.begin(), _heap.end(), isSlower);
}

std::vector<SlowestMessages::Message> SlowestMessages::messages() const {
    std::vector<Message> sorted = _heap;
    std::ranges::sort(sorted, isSlower);
    return sorted;
}

} // namespace qlproto
