// What the clients are told of and ask for: configuration, subscriptions, snapshots, batches, replay, events of the
// feeds.
#pragma once

#include "tools/qlproto/trading/session/MarketData.h"
#include "tools/qlproto/trading/session/Routine.h"

namespace qlproto::session {

class Subscriptions : public Routine<Subscriptions, 10> {
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

  private:
    static const Events EVENTS;

    void requestSecurity();
    void sendSecurity();
    void requestAnySnapshot();
    void sendSnapshotAskedFor() { sendSnapshot(_listing); }
    void snapshotTimer();
    void snapshotTimeout();
    void unregisterBatch();
    void completeBatches();
    void requestReplay();
    void endReplay();
    void sendLastSequenceIDsOfAnyFeed() { sendLastSequenceIDs(_rng.pick(_world.feeds)); }
    void reportCredit();
    void reportEvent(Quillon::ExchEventType::Type event, const Listing& listing, const char* text);
    void rollOver();

    Quillon::FeedMarketID fmID(std::size_t listing) const;
    Quillon::Subscription subscription(std::size_t listing) const;
    const User& subscriber(std::size_t listing) const { return _world.users[listing % _world.users.size()]; }

    MarketData& _marketData;
    std::size_t _listing = 0; ///< what the last request asked for
    int32_t _streamID = 100;  ///< of the last snapshot request
    int32_t _requests = 0;
    int32_t _reports = 0; ///< events reported
};

} // namespace qlproto::session
