// The links between the session's programs: versions, client connections, the memory bus, and signs of life on all of
// them.
#pragma once

#include "tools/qlproto/session/Rng.h"
#include "tools/qlproto/session/Sender.h"
#include "tools/qlproto/session/World.h"

namespace qlproto::session {

class Connections : public Actor {
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

    /// From now on the links show that they live.
    void start();

    void act(int token) override;

  private:
    enum Event { NEXT, HEARTBEAT_TIMER, HEARTBEAT, RU_THERE, IM_HERE, MEMORY_BUS, PAD };

    void heartbeatTimer();
    void heartbeat();
    void ruThere();
    void imHere();
    void memoryBusHeartbeat();
    void pad();

    const World& _world;
    Scheduler& _scheduler;
    Sender& _sender;
    Rng _rng;
    Deck<Event, 6> _events;
    int32_t _heartbeats = 0;
    int32_t _probes = 0;
    int64_t _probeSent = 0; ///< when the client sent the last probe
};

} // namespace qlproto::session
