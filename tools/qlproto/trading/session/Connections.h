// The links between the session's programs: versions, client connections, the memory bus, and signs of life on all of
// them.
#pragma once

#include "tools/qlproto/trading/session/Routine.h"

namespace qlproto::session {

class Connections : public Routine<Connections, 6> {
  public:
    Connections(const World& world, Scheduler& scheduler, Sender& sender, Rng rng);

    // Of the opening and the end of a session.
    void sendVersion();
    void sendProtocolDefinition();
    void connect(const User& user);
    void answerConnect(const User& user);
    void sendClientInfo(const User& user);
    void disconnect(const User& user);
    void connectMemoryBus();
    void disconnectMemoryBus();

  private:
    static const Events EVENTS;

    void heartbeatTimer();
    void heartbeat();
    void ruThere();
    void imHere();
    void memoryBusHeartbeat();
    void pad();

    int32_t _heartbeats = 0;
    int32_t _probes = 0;
    int64_t _probeSent = 0; ///< when the client sent the last probe
};

} // namespace qlproto::session
