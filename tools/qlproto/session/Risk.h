// Trade limits, the answers to them, and user locks.
#pragma once

#include "tools/qlproto/session/Rng.h"
#include "tools/qlproto/session/Sender.h"
#include "tools/qlproto/session/World.h"

namespace qlproto::session {

class Risk : public Actor {
  public:
    Risk(const World& world, Scheduler& scheduler, Sender& sender, Rng rng);

    /// Sends the limits, states and hierarchy as the session opens with them.
    void sendSnapshot() { sendLimits(true); }

    /// From now on limits change and users are locked and unlocked.
    void start();

    void act(int token) override;

  private:
    enum Event { NEXT, LIMITS, LIMITS_ANSWER, LOCK, LOCK_ANSWER };

    void sendLimits(bool isSnapshot);
    void answerLimits();
    void lockUser();
    void answerLock();

    const World& _world;
    Scheduler& _scheduler;
    Sender& _sender;
    Rng _rng;
    Deck<Event, 3> _events;
    bool _locked = false; ///< whether the monitored user is locked
    int _lastRequest = 0;
    std::string _limitsRequest, _lockRequest; ///< identifiers of the requests to be answered next
};

} // namespace qlproto::session
