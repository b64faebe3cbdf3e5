// Who and what takes part in a session: feeds, markets and users. Currency codes are the public ones, all else is made
// up.
//
// Prices and amounts are whole numbers of 1/SCALE: 1.0845 is 108'450'000.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/trading/session/Scheduler.h"

namespace qlproto::session {

inline constexpr int64_t SCALE = 100'000'000;
inline constexpr int64_t MILLION = 1'000'000 * SCALE;

/// A market: a pair of currencies and what is traded of it.
struct Market {
    int32_t id;
    const char* name;
    const char* base;
    const char* counter;
    int64_t price; ///< at which the session opens
    int64_t tick;  ///< smallest step of a price
    Quillon::InstrumentType::Type instrument;
    Quillon::StandardTenor::Type tenor;
};

/// A venue and the markets it lists.
struct Feed {
    int32_t id;
    const char* name;
    const char* exchange;
    bool batching; ///< whether its market data come in batches
    std::vector<int32_t> marketIDs;
};

/// One market as one feed lists it. What is subscribed to, quoted and traded.
struct Listing {
    const Feed* feed;
    const Market* market;
};

struct User {
    int32_t id;
    const char* name;
    const char* company;
    const char* group;
    const char* language;
    Quillon::UserType::Type type;
    int32_t sessionID;
    int32_t sequenceID = 0; ///< of the last order message to this user
};

class Incident;

class World {
  public:
    World();
    World(const World&) = delete; // listings point into it
    World& operator=(const World&) = delete;

    const std::array<Market, 10> markets;
    const std::array<Feed, 3> feeds;
    std::vector<Listing> listings; ///< of all feeds, feed by feed
    std::array<User, 4> users;
    Incident* incident = nullptr; ///< what goes wrong, if anything does
};

/// The dates of a trade done at `now`: midnight of the day, and two days later.
inline int64_t tradeDate(int64_t now) { return now - now % DAYS; }
inline int64_t settlDate(int64_t now) { return tradeDate(now) + 2 * DAYS; }

/// A number as decimal text with two places, as the risk records carry amounts.
std::string decimal(int64_t scaled);

/// `amount` of the base currency at `price`: what it is in the counter currency.
int64_t times(int64_t amount, int64_t price);

} // namespace qlproto::session
