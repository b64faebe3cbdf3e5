// How many orders there are with each outcome, reason, user and feed.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/qlproto/trading/Orders.h"

namespace qlproto {

using OrderRows = std::vector<const OrderRow*>;

struct OrderTotal {
    uint64_t orders = 0;
    uint64_t refused = 0, done = 0; ///< of them, as OrderKind tells it
};

/// By what they are counted, and the value; those without a reason or a user count for none.
using OrderTotals = std::map<std::pair<std::string_view, std::string>, OrderTotal>;
inline constexpr std::string_view ORDER_TOTALS[] = {"outcome", "reason", "user", "feed"};

OrderTotals totalsOf(const OrderKind& kind, const OrderRows& rows);

/// The values of one of ORDER_TOTALS, the most frequent first.
std::vector<std::pair<std::string, OrderTotal>> byFrequency(const OrderTotals& totals, std::string_view by);

} // namespace qlproto
