// What the servers say among themselves: logs, statistics, timers, callbacks, raw exchange traffic, tests, JSON for
// clients.
#pragma once

#include "tools/qlproto/trading/session/Routine.h"

namespace qlproto::session {

class Internals : public Routine<Internals, 12> {
  public:
    Internals(const World& world, Scheduler& scheduler, Sender& sender, Rng rng);

    /// A server's task comes up.
    void initializeTask();

  private:
    static const Events EVENTS;

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

    int32_t _timers = 0;
    int _jsonRequests = 0;
};

} // namespace qlproto::session
