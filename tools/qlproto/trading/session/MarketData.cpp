#include "tools/qlproto/trading/session/MarketData.h"

#include "tools/qlproto/trading/session/Incident.h"

namespace qlproto::session {

using Quillon::FeedMarketID;
using Quillon::MktDataMessage;

namespace {

constexpr int64_t UPDATE_INTERVAL = 8 * MILLISECONDS; // of each book, on average
constexpr int32_t LIVE_STREAM = 1;

} // namespace

MarketData::MarketData(const World& world, Scheduler& scheduler, Sender& sender, Rng rng)
    : _world(world), _scheduler(scheduler), _sender(sender), _rng(rng) {
    for (const Listing& listing : world.listings) _books.emplace_back(listing, _rng.fork());
}

void MarketData::start() {
    for (std::size_t i = 0; i < _books.size(); ++i)
        _scheduler.wake(_rng.between(0, UPDATE_INTERVAL), *this, static_cast<int>(i));
}

void MarketData::act(int token) {
    const auto listing = static_cast<std::size_t>(token);
    _sender.send<MktDataMessage>([&](MktDataMessage& message) {
        describe(message, listing, false);
        message.streamID = LIVE_STREAM;
        _books[listing].update(message.mvd.mdEntryList);

        // A batch spans all markets of its feed and names them with each message.
        const Feed& feed = *_world.listings[listing].feed;
        if (!feed.batching) return;
        message.batchID = ++_batchID;
        message.fmIDsInBatch.reserve(feed.marketIDs.size());
        for (int32_t marketID : feed.marketIDs) message.fmIDsInBatch.push_back(FeedMarketID(marketID, feed.id));
    });
    _scheduler.wake(_scheduler.pacedMarketData(_rng.around(UPDATE_INTERVAL)), *this, token);
}

void MarketData::sendSnapshot(std::size_t listing, int32_t streamID) {
    _sender.send<MktDataMessage>([&](MktDataMessage& message) {
        describe(message, listing, true);
        message.streamID = streamID;
        _books[listing].snapshot(message.mvd.mdEntryList);
    });
}

void MarketData::describe(MktDataMessage& message, std::size_t listing, bool isSnapshot) {
    message.mvd.fmID.set(_world.listings[listing].market->id, _world.listings[listing].feed->id);
    Hops hops = Hops::in(_rng, _scheduler.now());
    if (_world.incident != nullptr) _world.incident->makeLate(hops, _world.listings[listing].feed->id, _sender.sent());
    hops.stamp(message.mvd);
    message.mvd.isSnapshot = isSnapshot;
}

} // namespace qlproto::session
