// What the clients are told of and ask for: configuration, subscriptions, snapshots, batches, replay, events of the
// feeds.
#pragma once

#include "tools/qlproto/session/MarketData.h"
#include "tools/qlproto/session/Rng.h"
#include "tools/qlproto/session/Sender.h"
#include "tools/qlproto/session/World.h"

namespace qlproto::session {

class Subscriptions : public Actor {
  public:
    Subscriptions(const World& world, MarketData& marketData, Scheduler& scheduler, Sender& sender, Rng rng);

    // Of the opening and the end of a session.
    void sendConfig();
    void subscribe(std::size_t listing);
    void confirm(std::size_t listing);
    void requestSnapshot(const Feed& feed);
    void sendSnapshot(std::size_t listing);
    void sendLastSequenceIDs(const Feed& feed);
    void registerBatch();
    void sendTradingOpen(const Feed& feed);
    void unsubscribe(std::size_t listing);
    void unsubscribeAll(const User& user);

    /// From now on the clients ask and the feeds report.
    void start();

    void act(int token) override;

  private:
    enum Event {
        NEXT,
        SECURITY_REQUEST,
        SECURITY_INFO,
        SNAPSHOT_REQUEST,
        SNAPSHOT,
        TIMER,
        TIMEOUT,
        BATCH_UNREGISTER,
        BATCH_REGISTER,
        BATCHES_COMPLETED,
        REPLAY,
        REPLAY_DONE,
        SEQUENCE_IDS,
        EVENT_REPORT,
        DATE_ROLLOVER,
    };

    void requestSecurity();
    void sendSecurity();
    void snapshotTimer();
    void snapshotTimeout();
    void unregisterBatch();
    void completeBatches();
    void requestReplay();
    void endReplay();
    void reportEvent(Quillon::ExchEventType::Type event, const Listing& listing, const char* text);
    void rollOver();

    Quillon::FeedMarketID fmID(std::size_t listing) const;
    Quillon::Subscription subscription(std::size_t listing) const;
    const User& subscriber(std::size_t listing) const { return _world.users[listing % _world.users.size()]; }

    const World& _world;
    MarketData& _marketData;
    Scheduler& _scheduler;
    Sender& _sender;
    Rng _rng;
    Deck<Event, 10> _events;
    std::size_t _listing = 0; ///< what the last request asked for
    int32_t _streamID = 100;  ///< of the last snapshot request
    int32_t _requests = 0;
    int32_t _reports = 0; ///< events reported
};

} // namespace qlproto::session
