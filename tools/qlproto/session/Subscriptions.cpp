#include "tools/qlproto/session/Subscriptions.h"

#include <fmt/format.h>

namespace qlproto::session {

using namespace Quillon;

namespace {

constexpr int64_t INTERVAL = 20 * MILLISECONDS; // from one event to the next, on average
constexpr int64_t ANSWER = 1 * MILLISECONDS;
constexpr int32_t BATCH_DEFINITION = 71;
constexpr std::size_t BATCHING_FEED = 1; // index in World::feeds

std::string subscriptionID(std::size_t listing) { return fmt::format("sub-{}", listing + 1); }

} // namespace

Subscriptions::Subscriptions(const World& world, MarketData& marketData, Scheduler& scheduler, Sender& sender, Rng rng)
    : _world(world),
      _marketData(marketData),
      _scheduler(scheduler),
      _sender(sender),
      _rng(rng),
      _events(_rng.fork(), {{SECURITY_REQUEST, SNAPSHOT_REQUEST, TIMER, TIMEOUT, BATCH_UNREGISTER, BATCHES_COMPLETED,
                             REPLAY, SEQUENCE_IDS, EVENT_REPORT, DATE_ROLLOVER}}) {}

void Subscriptions::start() { _scheduler.wake(0, *this, NEXT); }

void Subscriptions::act(int token) {
    const auto answerWith = [&](Event event) { _scheduler.wake(_rng.around(ANSWER), *this, event); };
    switch (static_cast<Event>(token)) {
    case NEXT:
        _scheduler.wake(0, *this, _events.deal());
        _scheduler.wake(_scheduler.paced(_rng.around(INTERVAL)), *this, NEXT);
        return;
    case SECURITY_REQUEST:
        requestSecurity();
        return answerWith(SECURITY_INFO);
    case SECURITY_INFO:
        return sendSecurity();
    case SNAPSHOT_REQUEST:
        _listing = static_cast<std::size_t>(_rng.between(0, static_cast<int64_t>(_world.listings.size()) - 1));
        requestSnapshot(*_world.listings[_listing].feed);
        return answerWith(SNAPSHOT);
    case SNAPSHOT:
        return sendSnapshot(_listing);
    case TIMER:
        return snapshotTimer();
    case TIMEOUT:
        return snapshotTimeout();
    case BATCH_UNREGISTER:
        unregisterBatch();
        return answerWith(BATCH_REGISTER);
    case BATCH_REGISTER:
        return registerBatch();
    case BATCHES_COMPLETED:
        return completeBatches();
    case REPLAY:
        requestReplay();
        return answerWith(REPLAY_DONE);
    case REPLAY_DONE:
        return endReplay();
    case SEQUENCE_IDS:
        return sendLastSequenceIDs(_rng.pick(_world.feeds));
    case EVENT_REPORT:
        return reportEvent(ExchEventType::CREDITAVAILABLE, _rng.pick(_world.listings), "credit line renewed");
    case DATE_ROLLOVER:
        return rollOver();
    }
}

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
    _listing = static_cast<std::size_t>(_rng.between(0, static_cast<int64_t>(_world.listings.size()) - 1));
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

void Subscriptions::rollOver() {
    _sender.send<DateRolloverMessage>([&](DateRolloverMessage& message) {
        const std::size_t listing = _rng.next() % _world.listings.size();
        message.contents.set(fmID(listing), tradeDate(_scheduler.now()) + DAYS, settlDate(_scheduler.now()) + DAYS);
        message.dispatchToAll = true;
    });
}

} // namespace qlproto::session
