#include "tools/qlproto/trading/OrderTotals.h"

#include <algorithm>

namespace qlproto {

OrderTotals totalsOf(const OrderKind& kind, const OrderRows& rows) {
    OrderTotals totals;
    for (const OrderRow* row : rows) {
        const auto add = [&](std::string_view by, std::string value) {
            OrderTotal& total = totals[{by, std::move(value)}];
            ++total.orders;
            total.refused += (row->told & kind.refused) != 0;
            total.done += (row->told & kind.done) != 0;
        };
        add("outcome", std::string(kind.outcomeOf(row->told)));
        if (!row->reason.empty()) add("reason", row->reason);
        if (row->user != 0) add("user", std::to_string(row->user));
        add("feed", std::to_string(row->feed));
    }
    return totals;
}

std::vector<std::pair<std::string, OrderTotal>> byFrequency(const OrderTotals& totals, std::string_view by) {
    std::vector<std::pair<std::string, OrderTotal>> values;
    for (const auto& [key, total] : totals)
        if (key.first == by) values.emplace_back(key.second, total);
    std::ranges::stable_sort(values, std::ranges::greater{}, [](const auto& it) { return it.second.orders; });
    return values;
}

} // namespace qlproto
