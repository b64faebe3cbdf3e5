// What goes wrong in a session with a story, and what is known of it afterwards.
//
// Four things, in parts of the session that do not overlap: the market data of one feed come late, by more and more and
// then by less; one user's orders are rejected one after the other, for a reason for which no other of that user's is;
// messages to one user are lost; one client disconnects, its open orders are canceled, and it does not return. Who it
// meets, when and how hard is told by the seed.
#pragma once

#include <cstdint>

#include "tools/qlproto/trading/session/Hops.h"
#include "tools/qlproto/trading/session/World.h"

namespace qlproto::session {

/// Why orders are rejected.
struct RejectCause {
    Quillon::RejectReason::Type reason;
    const char* text;
};
inline constexpr std::array<RejectCause, 4> REJECT_CAUSES{{
    {Quillon::RejectReason::CREDIT_LOW, "credit line used up"},
    {Quillon::RejectReason::INCORRECT_PRICE, "price outside the band of the day"},
    {Quillon::RejectReason::EXCEEDS_SINGLE_LIMIT, "amount above the limit of a single order"},
    {Quillon::RejectReason::MARKET_NOT_ACTIVE, ""},
}};

class Incident {
  public:
    /// Messages that a session has at least, for all of it to happen.
    static constexpr uint64_t LEAST_MESSAGES = 5000;

    /// Of a session of so many messages.
    Incident(uint64_t seed, uint64_t messages);

    // Each begins when as many messages were sent; what is found out meanwhile stands beside.
    struct SlowFeed {
        int32_t feedID = 0;
        uint64_t begin = 0, end = 0; ///< messages
        int64_t most = 0;            ///< nanoseconds by which messages are late in the middle
        int64_t first = 0, last = 0; ///< times of late messages
        uint64_t late = 0;           ///< messages
        int64_t longest = 0;         ///< that one of them took from the exchange
    } slowFeed;
    struct Rejects {
        int32_t userID = 0;
        RejectCause cause{};
        uint64_t begin = 0;
        int64_t left = 0;            ///< orders still to be sent
        int64_t first = 0, last = 0; ///< times of rejections
        uint64_t orders = 0;         ///< that were rejected
    } rejects;
    struct Gap {
        int32_t userID = 0;
        uint64_t begin = 0;
        int32_t missing = 0; ///< sequence numbers
        int32_t after = 0;   ///< the last one before; 0 if nothing is lost yet
        int64_t time = 0;    ///< of the first message afterwards
    } gap;
    struct Disconnect {
        int32_t userID = 0;
        uint64_t begin = 0;
        int64_t time = 0;      ///< 0 if the client is connected
        uint64_t canceled = 0; ///< orders
    } disconnect;

    bool isGone(const User& user) const { return disconnect.time != 0 && user.id == disconnect.userID; }

    /// Makes a message of that feed late that is sent after so many, if it is to be.
    void makeLate(Hops& hops, int32_t feedID, uint64_t sent);

    /// How many messages to the user are lost before one that is sent now.
    int32_t lost(const User& user, uint64_t sent, int64_t now);
};

} // namespace qlproto::session
