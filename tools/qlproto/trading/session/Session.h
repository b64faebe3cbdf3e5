// A made-up trading session, the same for the same seed: opening, trade, end.
//
// The opening is versions, connections, configuration, limits and subscriptions; the end unsubscribes and disconnects.
// In between all streams run side by side; a session of 1,000 messages or more holds every type of message. A session
// that is too short for opening and end together is the beginning of a longer one, cut off.
#pragma once

#include "tools/qlproto/trading/session/Connections.h"
#include "tools/qlproto/trading/session/Internals.h"
#include "tools/qlproto/trading/session/MarketData.h"
#include "tools/qlproto/trading/session/OrderFlow.h"
#include "tools/qlproto/trading/session/Quotes.h"
#include "tools/qlproto/trading/session/Risk.h"
#include "tools/qlproto/trading/session/Subscriptions.h"

namespace qlproto::session {

class Session {
  public:
    /// A session of exactly `messages` messages, which go to `sink`.
    /// An incident, if there is one, happens in it and is told what did.
    Session(uint64_t seed, uint64_t messages, Capture::PacketSink& sink, const Pace& pace = {},
            Incident* incident = nullptr);

    /// Runs it from beginning to end. The protocol must be initialised.
    void run();

  private:
    void open();
    void close();

    /// Messages that close() sends.
    uint64_t closingLength() const {
        const std::size_t users = _world.users.size() - (_world.incident != nullptr ? 1 : 0);
        return _world.listings.size() + 2 * users + 1;
    }
    void goWrong();

    /// One message of a sequence: a little later than the one before it.
    template <class Send>
    void then(Send&& send) {
        _scheduler.advance(_rng.around(150 * MICROSECONDS));
        send();
    }

    Rng _rng;
    World _world;
    Scheduler _scheduler;
    Sender _sender;
    Connections _connections;
    MarketData _marketData;
    Subscriptions _subscriptions;
    Internals _internals;
    OrderFlow _orders;
    Quotes _quotes;
    Risk _risk;
    bool _isRejecting = false; ///< the incident's orders are on their way
};

} // namespace qlproto::session
