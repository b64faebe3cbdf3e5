// When a message passed each station between exchange and API client.
//
//     in    exchange -> arrival -> handler -> enhanced -> API server -> API client
//     out   API client -> API server -> handler
//
// A message is captured at the end of its way, when all its times are stamped; so the last of them is the packet's time
// and the earlier ones are counted back from it. A way takes less than LONGEST_WAY: steps that are further apart than
// that keep their order at every station.
#pragma once

#include "tools/qlproto/trading/session/Rng.h"
#include "tools/qlproto/trading/session/Scheduler.h"

namespace qlproto::session {

inline constexpr int64_t LONGEST_WAY = 200 * MICROSECONDS;

struct Hops {
    int64_t timeExchange = 0;
    int64_t timeArrival = 0;
    int64_t timeHandler = 0;
    int64_t timeEnhanced = 0;
    int64_t timeApiServer = 0;
    int64_t timeApiClient = 0;

    /// A message from the exchange that reaches the client now.
    static Hops in(Rng& rng, int64_t now) {
        Hops hops;
        hops.timeApiClient = now;
        hops.timeApiServer = hops.timeApiClient - rng.between(6'000, 30'000);
        hops.timeEnhanced = hops.timeApiServer - rng.between(2'000, 12'000);
        hops.timeHandler = hops.timeEnhanced - rng.between(1'000, 8'000);
        hops.timeArrival = hops.timeHandler - rng.between(500, 4'000);
        hops.timeExchange = hops.timeArrival - rng.between(25'000, 90'000);
        return hops;
    }

    /// A message from the client that reaches the handler now.
    static Hops out(Rng& rng, int64_t now) {
        Hops hops;
        hops.timeHandler = now;
        hops.timeApiServer = hops.timeHandler - rng.between(3'000, 15'000);
        hops.timeApiClient = hops.timeApiServer - rng.between(6'000, 30'000);
        return hops;
    }

    /// Sets those times that the record has.
    template <class Record>
    void stamp(Record& record) const {
        if constexpr (requires { record.timeExchange; }) record.timeExchange = timeExchange;
        if constexpr (requires { record.timeArrival; }) record.timeArrival = timeArrival;
        if constexpr (requires { record.timeHandler; }) record.timeHandler = timeHandler;
        if constexpr (requires { record.timeEnhanced; }) record.timeEnhanced = timeEnhanced;
        if constexpr (requires { record.timeApiServer; }) record.timeApiServer = timeApiServer;
        if constexpr (requires { record.timeApiClient; }) record.timeApiClient = timeApiClient;
    }
};

} // namespace qlproto::session
