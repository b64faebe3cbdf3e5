#include "tools/qlproto/trading/session/World.h"

#include <fmt/format.h>

namespace qlproto::session {

using Quillon::InstrumentType;
using Quillon::StandardTenor;
using Quillon::UserType;

World::World()
    : markets{{
        {101, "EUR/USD", "EUR", "USD", 108'450'000, 1'000, InstrumentType::SPOT, StandardTenor::SP},
        {102, "GBP/USD", "GBP", "USD", 126'310'000, 1'000, InstrumentType::SPOT, StandardTenor::SP},
        {103, "USD/JPY", "USD", "JPY", 15'042'500'000, 100'000, InstrumentType::SPOT, StandardTenor::SP},
        {104, "USD/CHF", "USD", "CHF", 88'270'000, 1'000, InstrumentType::SPOT, StandardTenor::SP},
        {105, "AUD/USD", "AUD", "USD", 65'180'000, 1'000, InstrumentType::SPOT, StandardTenor::SP},
        {106, "USD/CAD", "USD", "CAD", 135'690'000, 1'000, InstrumentType::SPOT, StandardTenor::TOM},
        {107, "NZD/USD", "NZD", "USD", 61'020'000, 1'000, InstrumentType::SPOT, StandardTenor::SP},
        {108, "EUR/GBP", "EUR", "GBP", 85'560'000, 1'000, InstrumentType::SPOT, StandardTenor::SP},
        {201, "EUR/USD 1M", "EUR", "USD", 108'610'000, 1'000, InstrumentType::FORWARD, StandardTenor::M1},
        {202, "USD/BRL 3M", "USD", "BRL", 501'400'000, 10'000, InstrumentType::NDF, StandardTenor::M3},
    }},
      feeds{{
          {1, "DRIFTWOOD", "Driftwood Crossing", false, {101, 102, 103, 104, 105, 106}},
          {2, "LANTERN", "Lantern Street", true, {101, 102, 103, 108, 201}},
          {3, "COBBLE", "Cobble Yard", false, {101, 103, 107, 201, 202}},
      }},
      users{{
          {11, "wren", "BARLEYCO", "Majors", "C++", UserType::REGULAR, 9001},
          {12, "heron", "BARLEYCO", "Majors", "Java", UserType::MODEL, 9002},
          {13, "magpie", "TINDERCO", "Crosses", "C++", UserType::MONITORED, 9003},
          {14, "kestrel", "OXBOWCO", "Makers", "C++", UserType::MARKET_MAKER, 9004},
      }} {
    for (const Feed& feed : feeds)
        for (int32_t id : feed.marketIDs)
            for (const Market& market : markets)
                if (market.id == id) listings.push_back({&feed, &market});
}

std::string decimal(int64_t scaled) { return fmt::format("{}.{:02}", scaled / SCALE, scaled % SCALE / (SCALE / 100)); }

int64_t times(int64_t amount, int64_t price) {
    // The product of two scaled numbers does not fit 64 bits, so whole units and their fraction go separately.
    return amount / SCALE * price + amount % SCALE * price / SCALE;
}

} // namespace qlproto::session
