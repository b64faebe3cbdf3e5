// What happens every now and then: events at random intervals, some of them with an answer a little later.
#pragma once

#include <array>
#include <cstddef>
#include <numeric>

#include "tools/qlproto/trading/session/Rng.h"
#include "tools/qlproto/trading/session/Sender.h"
#include "tools/qlproto/trading/session/World.h"

namespace qlproto::session {

/// The base of `Self`, whose N events are dealt: one that occurs more often stands there as often.
template <class Self, std::size_t N>
class Routine : public Actor {
  public:
    /// From now on events happen.
    void start() { _scheduler.wake(0, *this, NEXT); }

    void act(int token) final {
        if (token == NEXT) {
            _scheduler.wake(0, *this, 2 * _deck.deal());
            _scheduler.wake(_scheduler.paced(_rng.around(_interval)), *this, NEXT);
            return;
        }
        Self& self = static_cast<Self&>(*this);
        const Event& event = _events[static_cast<std::size_t>(token) / 2];
        if (token % 2 != 0) return (self.*event.answer)();
        (self.*event.happen)();
        if (event.answer != nullptr) _scheduler.wake(_rng.around(_answer), *this, token + 1);
    }

  protected:
    struct Event {
        void (Self::*happen)();
        void (Self::*answer)() = nullptr;
    };
    using Events = std::array<Event, N>;

    /// `interval` is from one event to the next, `answer` from an event to its answer, both on average.
    Routine(const World& world, Scheduler& scheduler, Sender& sender, Rng rng, const Events& events, int64_t interval,
            int64_t answer)
        : _world(world),
          _scheduler(scheduler),
          _sender(sender),
          _rng(rng),
          _events(events),
          _interval(interval),
          _answer(answer),
          _deck(_rng.fork(), numbers()) {}

    const World& _world;
    Scheduler& _scheduler;
    Sender& _sender;
    Rng _rng;

  private:
    // Tokens: twice an event's number, one more for its answer, or this.
    static constexpr int NEXT = -1;

    static std::array<int, N> numbers() {
        std::array<int, N> all{};
        std::iota(all.begin(), all.end(), 0);
        return all;
    }

    const Events& _events;
    const int64_t _interval, _answer;
    Deck<int, N> _deck;
};

} // namespace qlproto::session
