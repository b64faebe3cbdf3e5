#include "tools/qlproto/trading/session/Subscriptions.h"

#include <fmt/format.h>

namespace qlproto::session {

using namespace Quillon;

namespace {

constexpr int32_t BATCH_DEFINITION = 71;
constexpr std::size_t BATCHING_FEED = 1; // index in World::feeds

std::string subscriptionID(std::size_t listing) { return fmt::format("sub-{}", listing + 1); }

} // namespace

const Subscriptions::Events Subscriptions::EVENTS = {{
    {&Subscriptions::requestSecurity, &Subscriptions::sendSecurity},
    {&Subscriptions::requestAnySnapshot, &Subscriptions::sendSnapshotAskedFor},
    {&Subscriptions::snapshotTimer},
    {&Subscriptions::snapshotTimeout},
    {&Subscriptions::unregisterBatch, &Subscriptions::registerBatch},
    {&Subscriptions::completeBatches},
    {&Subscriptions::requestReplay, &Subscriptions::endReplay},
    {&Subscriptions::sendLastSequenceIDsOfAnyFeed},
    {&Subscriptions::reportCredit},
    {&Subscriptions::rollOver},
}};

Subscriptions::Subscriptions(const World& world, MarketData& marketData, Scheduler& scheduler, Sender& sender, Rng rng)
    : Routine(world, scheduler, sender, rng, EVENTS, 20 * MILLISECONDS, 1 * MILLISECONDS), _marketData(marketData) {}

FeedMarketID Subscriptions::fmID(std::size_t listing) const {
    return FeedMarketID(_world.listings[listing].market->id, _world.listings[listing].feed->id);
}

Subscription Subscriptions::subscription(std::size_t listing) const {
    return Subscription(APIType::MARKETDATA, _world.listings[listing].feed->id, _world.listings[listing].market->id);
}

void Subscriptions::sendConfig() {
    _sender.send<ConfigMessage>([&](ConfigMessage& message) {
        message.feedsList.reserve(_world.feeds.size());
        for (const Feed& feed : _world.feeds) {
            APIFeed& it = message.feedsList.add_back();
            it.name = feed.name;
            it.exchangeName = feed.exchange;
            it.feedID = feed.id;
            it.flags =
                1 << FeedFlag::MARKET_DATA | 1 << FeedFlag::TRADING | 1 << FeedFlag::DROPCOPY | 1 << FeedFlag::IOC;
            if (feed.batching) it.flags |= 1 << FeedFlag::BATCHING;
            it.marketList.reserve(feed.marketIDs.size());
            for (const Listing& listing : _world.listings) {
                if (listing.feed != &feed) continue;
                APIMarket& market = it.marketList.add_back();
                market.marketID = listing.market->id;
                market.name = listing.market->name;
                market.feedID = feed.id;
                market.bigIncrement = 10 * listing.market->tick;
                market.minIncrement = listing.market->tick;
                market.instrumentType = listing.market->instrument;
                market.settlementDate = listing.market->tenor;
            }
        }
    });
}

void Subscriptions::subscribe(std::size_t listing) {
    _sender.send<SubscribeMessage>([&](SubscribeMessage& message) {
        message.sub = subscription(listing);
        message.clSubID = subscriptionID(listing);
        message.sticky = true;
        message.sessionID = subscriber(listing).sessionID;
        message.timestamp = _scheduler.now();
    });
}

void Subscriptions::confirm(std::size_t listing) {
    _sender.send<SubscriptionEventMessage>([&](SubscriptionEventMessage& message) {
        message.contents.sub = subscription(listing);
        message.contents.clSubID = subscriptionID(listing);
        message.contents.status = SubscriptionStatus::ENABLED;
        message.contents.sticky = true;
        message.sessionID = subscriber(listing).sessionID;
        message.timestamp = _scheduler.now();
    });
}

void Subscriptions::requestSnapshot(const Feed& feed) {
    ++_streamID;
    _sender.send<RequestSnapshotMessage>([&](RequestSnapshotMessage& message) {
        message.feedID = feed.id;
        message.markets.reserve(feed.marketIDs.size());
        for (int32_t id : feed.marketIDs) message.markets.push_back(id);
        message.streamID = _streamID;
    });
}

void Subscriptions::sendSnapshot(std::size_t listing) { _marketData.sendSnapshot(listing, _streamID); }

void Subscriptions::requestAnySnapshot() {
    _listing = _rng.indexIn(_world.listings);
    requestSnapshot(*_world.listings[_listing].feed);
}

void Subscriptions::sendLastSequenceIDs(const Feed& feed) {
    _sender.send<LastSequenceIDMessage>([&](LastSequenceIDMessage& message) {
        for (const User& user : _world.users) message.feedSeqIDs.push_back(UserSequenceID(user.id, user.sequenceID));
        message.feedID = message.origFeedID = feed.id;
        message.sequenceID = _reports;
    });
}

void Subscriptions::registerBatch() {
    const Feed& feed = _world.feeds[BATCHING_FEED];
    _sender.send<BatchRegisterMessage>([&](BatchRegisterMessage& message) {
        message.feedID = feed.id;
        message.marketIDList.reserve(feed.marketIDs.size());
        for (int32_t id : feed.marketIDs) message.marketIDList.push_back(id);
        message.batchDefID = BATCH_DEFINITION;
    });
}

void Subscriptions::unregisterBatch() {
    _sender.send<BatchUnregisterMessage>(
        [](BatchUnregisterMessage& message) { message.batchDefID = BATCH_DEFINITION; });
}

void Subscriptions::completeBatches() {
    _sender.send<BatchesCompletedMessage>(
        [](BatchesCompletedMessage& message) { message.batchesCompleted.push_back(BATCH_DEFINITION); });
}

void Subscriptions::sendTradingOpen(const Feed& feed) {
    for (const Listing& listing : _world.listings)
        if (listing.feed == &feed) return reportEvent(ExchEventType::TRADING_OPEN, listing, "trading is open");
}

void Subscriptions::unsubscribe(std::size_t listing) {
    _sender.send<UnsubscribeMessage>([&](UnsubscribeMessage& message) {
        message.sub = subscription(listing);
        message.clSubID = subscriptionID(listing);
        message.sessionID = subscriber(listing).sessionID;
        message.timestamp = _scheduler.now();
    });
}

void Subscriptions::unsubscribeAll(const User& user) {
    _sender.send<UnsubscribeAllMessage>([&](UnsubscribeAllMessage& message) {
        message.clSubID = fmt::format("{}-all", user.name);
        message.sessionID = user.sessionID;
        message.timestamp = _scheduler.now();
    });
}

void Subscriptions::requestSecurity() {
    _listing = _rng.indexIn(_world.listings);
    _sender.send<RequestMessage>([&](RequestMessage& message) {
        message.fmID = fmID(_listing);
        message.request = Request::SECURITYINFO;
    });
}

void Subscriptions::sendSecurity() {
    _sender.send<SecurityInfoMessage>([&](SecurityInfoMessage& message) {
        message.fmID = fmID(_listing);
        message.settlDate = settlDate(_scheduler.now());
    });
}

void Subscriptions::snapshotTimer() {
    _sender.send<SubscriptionTimerMessage>([&](SubscriptionTimerMessage& message) {
        message.sub = subscription(_listing);
        message.action = 1;
    });
}

void Subscriptions::snapshotTimeout() {
    _sender.send<SubscriptionTimeoutMessage>(
        [&](SubscriptionTimeoutMessage& message) { message.requestId = ++_requests; });
}

void Subscriptions::requestReplay() {
    _sender.send<ReplayMessage>([&](ReplayMessage& message) {
        const User& user = _world.users[0];
        message.feedID = _world.feeds[0].id;
        message.first = user.sequenceID > 10 ? user.sequenceID - 10 : 1;
        message.last = user.sequenceID;
        message.userID = user.id;
    });
}

void Subscriptions::endReplay() {
    _sender.send<ReplayDoneMessage>([&](ReplayDoneMessage& message) {
        message.contents.set(_world.feeds[0].id, ReplayStatus::DONE);
        message.userID = _world.users[0].id;
    });
}

void Subscriptions::reportEvent(ExchEventType::Type event, const Listing& listing, const char* text) {
    _sender.send<EventReportMessage>([&](EventReportMessage& message) {
        message.sequenceID = ++_reports;
        message.contents.eventCode = event;
        message.contents.fmID.set(listing.market->id, listing.feed->id);
        message.contents.eventContents = text;
    });
}

void Subscriptions::reportCredit() {
    reportEvent(ExchEventType::CREDITAVAILABLE, _rng.pick(_world.listings), "credit line renewed");
}

void Subscriptions::rollOver() {
    _sender.send<DateRolloverMessage>([&](DateRolloverMessage& message) {
        const std::size_t listing = _rng.indexIn(_world.listings);
        message.contents.set(fmID(listing), tradeDate(_scheduler.now()) + DAYS, settlDate(_scheduler.now()) + DAYS);
        message.dispatchToAll = true;
    });
}

} // namespace qlproto::session
