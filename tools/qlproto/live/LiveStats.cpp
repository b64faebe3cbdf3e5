#include "tools/qlproto/live/LiveStats.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/terminal/Duration.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

void LiveStats::add(const Host::Record& record, int64_t now) {
    Kind& kind = _kinds[record.id];
    ++kind.messages;
    kind.bytes += record.body.size();
    ++_messages;
    _bytes += record.body.size();
    kind.hop.add(std::max<int64_t>(0, now - record.time)); // clocks differ
}

std::string LiveStats::text() {
    const auto now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - std::exchange(_told, now)).count();
    const auto rate = [&](uint64_t all, uint64_t before) {
        return fmt::format("{:.0f}", static_cast<double>(all - before) / std::max(seconds, 1e-3));
    };
    std::vector<std::pair<Velmora::MsgType_t, Kind*>> kinds;
    for (auto& [id, kind] : _kinds) kinds.emplace_back(id, &kind);
    std::ranges::stable_sort(kinds, std::ranges::greater{}, [](const auto& it) { return it.second->messages; });

    Table table({"message", "messages", "/s", "bytes", "hop p50", "p99", "max"});
    for (auto& [id, kind] : kinds) {
        const Inspect::TypeInfo* const type = Inspect::reflect(thisTool.protocol, id);
        table.add({std::string(type->name), fmt::format("{}", kind->messages), rate(kind->messages, kind->before),
                   fmt::format("{}", kind->bytes), readableDuration(kind->hop.percentile(50)),
                   readableDuration(kind->hop.percentile(99)), readableDuration(kind->hop.max())});
    }
    const std::string total = fmt::format("{} messages, {}/s, {} bytes, {} lost, {} faults\n", _messages,
                                          rate(_messages, _before), _bytes, _lost, _faults);
    for (auto& [id, kind] : _kinds) kind.before = kind.messages;
    _before = _messages;
    return total + table.text();
}

} // namespace qlproto
