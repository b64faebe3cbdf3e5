// The session's clock and its queue of what happens next.
//
// Everything that sends messages is an Actor. It asks to be woken at a time with a token of its own, and sends at most
// one message each time: so the messages of all actors come out in the order of time, however they interleave.
#pragma once

#include <cstdint>
#include <queue>
#include <vector>

#include "tools/qlproto/trading/session/Pace.h"

namespace qlproto::session {

class Actor {
  public:
    virtual ~Actor() = default;

    /// The time asked for has come.
    virtual void act(int token) = 0;
};

class Scheduler {
  public:
    explicit Scheduler(const Pace& pace = {}) : _pace(pace) {}

    /// The interval from one event to the next at the session's pace.
    int64_t paced(int64_t interval) const { return interval * _pace.others / Pace::USUAL; }
    int64_t pacedMarketData(int64_t interval) const { return interval * _pace.marketData / Pace::USUAL; }

    /// Times are nanoseconds since 1970; the session starts at a fixed one.
    int64_t now() const { return _now; }

    /// Lets time pass without an event; for sequences that run before the first one.
    void advance(int64_t nanoseconds) { _now += nanoseconds; }

    /// Wakes `actor` with `token` in `delay` nanoseconds.
    void wake(int64_t delay, Actor& actor, int token) { _events.push({_now + delay, _count++, &actor, token}); }

    /// Runs the next event. REQUIRES: an actor waits.
    void runNext() {
        const Event event = _events.top();
        _events.pop();
        if (event.time > _now) _now = event.time;
        event.actor->act(event.token);
    }

  private:
    struct Event {
        int64_t time;
        uint64_t number; // events of one time run in the order in which they were asked for
        Actor* actor;
        int token;

        bool operator<(const Event& other) const { // the queue's largest is the earliest
            return time != other.time ? time > other.time : number > other.number;
        }
    };

    const Pace _pace;
    int64_t _now = 1709535600'000000000; // 2024-03-04 07:00:00 UTC, a Monday
    uint64_t _count = 0;
    std::priority_queue<Event> _events;
};

inline constexpr int64_t MICROSECONDS = 1000;
inline constexpr int64_t MILLISECONDS = 1000 * MICROSECONDS;
inline constexpr int64_t SECONDS = 1000 * MILLISECONDS;
inline constexpr int64_t DAYS = 24 * 3600 * SECONDS;

} // namespace qlproto::session
