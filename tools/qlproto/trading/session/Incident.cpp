#include "tools/qlproto/trading/session/Incident.h"

#include <algorithm>
#include <cstdlib>

#include "tools/qlproto/trading/session/Rng.h"

namespace qlproto::session {

namespace {

constexpr int64_t LEAST_DELAY = MILLISECONDS; // more than any usual message takes

} // namespace

Incident::Incident(uint64_t seed, uint64_t messages) {
    Rng rng(seed ^ 0x1DC1DE47); // what is usual in the session stays as it is without the incident
    // Thousandths of the session, for the four in any order.
    Deck<int64_t, 4> places(rng.fork(), {120, 320, 520, 720});
    const auto place = [&](int64_t thousandths) { return messages * static_cast<uint64_t>(thousandths) / 1000; };
    const auto anyPlace = [&] { return place(places.deal() + rng.between(0, 60)); };

    // The first user also asks for quotes and therefore stays; the last makes markets and sends no orders.
    const World world;
    const std::size_t gone = static_cast<std::size_t>(rng.between(1, 2));
    const std::array<std::size_t, 2> others{0, 3 - gone};
    const std::size_t rejected = rng.indexIn(others);

    slowFeed = {.feedID = rng.pick(world.feeds).id, .begin = anyPlace(), .most = rng.between(4, 16) * MILLISECONDS};
    slowFeed.end = slowFeed.begin + place(rng.between(80, 120));
    rejects = {.userID = world.users[others[rejected]].id,
               .cause = rng.pick(REJECT_CAUSES),
               .begin = anyPlace(),
               .left = rng.between(20, 40)};
    gap = {.userID = world.users[others[1 - rejected]].id,
           .begin = anyPlace(),
           .missing = static_cast<int32_t>(rng.between(2, 50))};
    disconnect = {.userID = world.users[gone].id, .begin = anyPlace()};
}

void Incident::makeLate(Hops& hops, int32_t feedID, uint64_t sent) {
    if (feedID != slowFeed.feedID || sent < slowFeed.begin || sent >= slowFeed.end) return;
    // It grows and falls more slowly than time passes, so that messages stay in order at the exchange.
    const auto length = static_cast<int64_t>(slowFeed.end - slowFeed.begin);
    const int64_t fromMiddle = std::abs(2 * static_cast<int64_t>(sent - slowFeed.begin) - length);
    hops.timeExchange -= LEAST_DELAY + slowFeed.most * (length - fromMiddle) / length;
    if (slowFeed.late++ == 0) slowFeed.first = hops.timeApiClient;
    slowFeed.last = hops.timeApiClient;
    slowFeed.longest = std::max(slowFeed.longest, hops.timeArrival - hops.timeExchange);
}

int32_t Incident::lost(const User& user, uint64_t sent, int64_t now) {
    if (user.id != gap.userID || sent < gap.begin || gap.after != 0) return 0;
    gap.after = user.sequenceID;
    gap.time = now;
    return gap.missing;
}

} // namespace qlproto::session
