// Trade limits, the answers to them, and user locks.
#pragma once

#include "tools/qlproto/trading/session/Routine.h"

namespace qlproto::session {

class Risk : public Routine<Risk, 3> {
  public:
    Risk(const World& world, Scheduler& scheduler, Sender& sender, Rng rng);

    /// Sends the limits, states and hierarchy as the session opens with them.
    void sendSnapshot() { sendLimits(true); }

  private:
    static const Events EVENTS;

    void sendLimits(bool isSnapshot);
    void changeLimits() { sendLimits(false); }
    void answerLimits();
    void lockUser();
    void answerLock();

    bool _locked = false; ///< whether the monitored user is locked
    int _lastRequest = 0;
    std::string _limitsRequest, _lockRequest; ///< identifiers of the requests to be answered next
};

} // namespace qlproto::session
