// What the servers say among themselves: logs, statistics, timers, callbacks, raw exchange traffic, tests, JSON for
// clients.
#pragma once

#include "tools/qlproto/session/Rng.h"
#include "tools/qlproto/session/Sender.h"
#include "tools/qlproto/session/World.h"

namespace qlproto::session {

class Internals : public Actor {
  public:
    Internals(const World& world, Scheduler& scheduler, Sender& sender, Rng rng);

    /// A server's task comes up.
    void initializeTask();

    /// From now on the servers are busy.
    void start();

    void act(int token) override;

  private:
    enum Event {
        NEXT,
        LOG,
        INSERT_LOG,
        STATISTICS_TIMEOUT,
        STATISTICS,
        EXCHANGE,
        ACTIVITY_CHECK,
        CALLBACK,
        TIMER,
        TEST,
        JSON_REQUEST,
        JSON_ANSWER,
    };

    void log();
    void insertLog();
    void statisticsTimeout();
    void statistics();
    void exchange();
    void checkActivity();
    void callback();
    void timer();
    void test();
    void jsonRequest();
    void jsonAnswer();

    const World& _world;
    Scheduler& _scheduler;
    Sender& _sender;
    Rng _rng;
    Deck<Event, 12> _events;
    int32_t _timers = 0;
    int _jsonRequests = 0;
};

} // namespace qlproto::session
