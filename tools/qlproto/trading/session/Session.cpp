#include "tools/qlproto/trading/session/Session.h"

#include <algorithm>

#include "tools/qlproto/trading/session/Incident.h"

namespace qlproto::session {

Session::Session(uint64_t seed, uint64_t messages, Capture::PacketSink& sink, const Pace& pace, Incident* incident)
    : _rng(seed),
      _scheduler(pace),
      _sender(sink, _scheduler, messages),
      _connections(_world, _scheduler, _sender, _rng.fork()),
      _marketData(_world, _scheduler, _sender, _rng.fork()),
      _subscriptions(_world, _marketData, _scheduler, _sender, _rng.fork()),
      _internals(_world, _scheduler, _sender, _rng.fork()),
      _orders(_world, _marketData, _scheduler, _sender, _rng.fork()),
      _quotes(_world, _marketData, _scheduler, _sender, _rng.fork()),
      _risk(_world, _scheduler, _sender, _rng.fork()) {
    _world.incident = incident;
}

void Session::run() {
    open();
    _connections.start();
    _marketData.start();
    _subscriptions.start();
    _internals.start();
    _orders.start();
    _quotes.start();
    _risk.start();

    const bool hasEnd = _sender.sent() + closingLength() <= _sender.limit();
    const uint64_t tradeUntil = hasEnd ? _sender.limit() - closingLength() : _sender.limit();
    while (_sender.sent() < tradeUntil) {
        if (_world.incident != nullptr) goWrong();
        _scheduler.runNext();
    }
    if (hasEnd) close();
}

/// Begins what is to begin now. The rest happens where messages are made.
void Session::goWrong() {
    Incident& incident = *_world.incident;
    if (_sender.sent() >= incident.rejects.begin && incident.rejects.left != 0 && !_isRejecting) {
        _isRejecting = true;
        _orders.startRejects();
    }
    if (_sender.sent() < incident.disconnect.begin || incident.disconnect.time != 0) return;
    const User& user = *std::ranges::find(_world.users, incident.disconnect.userID, &User::id);
    if (!_orders.hasOpenOrders(user)) return; // a moment later, then
    incident.disconnect.time = _scheduler.now();
    _connections.disconnect(user);
    _orders.disconnect(user);
}

void Session::open() {
    then([&] { _internals.initializeTask(); });
    then([&] { _connections.connectMemoryBus(); });
    then([&] { _connections.sendVersion(); });
    then([&] { _connections.sendProtocolDefinition(); });
    for (const User& user : _world.users) {
        then([&] { _connections.connect(user); });
        then([&] { _connections.answerConnect(user); });
        then([&] { _connections.sendClientInfo(user); });
    }
    then([&] { _subscriptions.sendConfig(); });
    then([&] { _risk.sendSnapshot(); });
    then([&] { _subscriptions.registerBatch(); });
    for (std::size_t i = 0; i < _world.listings.size(); ++i) {
        then([&] { _subscriptions.subscribe(i); });
        then([&] { _subscriptions.confirm(i); });
    }
    for (const Feed& feed : _world.feeds) {
        then([&] { _subscriptions.sendLastSequenceIDs(feed); });
        then([&] { _subscriptions.sendTradingOpen(feed); });
        then([&] { _subscriptions.requestSnapshot(feed); });
        for (std::size_t i = 0; i < _world.listings.size(); ++i)
            if (_world.listings[i].feed == &feed) then([&] { _subscriptions.sendSnapshot(i); });
    }
}

void Session::close() {
    for (std::size_t i = 0; i < _world.listings.size(); ++i) then([&] { _subscriptions.unsubscribe(i); });
    for (const User& user : _world.users) {
        if (_world.incident != nullptr && _world.incident->isGone(user)) continue;
        then([&] { _subscriptions.unsubscribeAll(user); });
        then([&] { _connections.disconnect(user); });
    }
    then([&] { _connections.disconnectMemoryBus(); });
}

} // namespace qlproto::session
