#include "Host/Presence.h"

namespace Host {

Presence::Presence(Bus& bus, const PresenceMessages& messages, const Incarnation& self, int64_t now)
    : _bus(bus), _messages(messages), _body(messages.body(self)), _last(now) {
    say(_messages.connect);
}

Presence::~Presence() {
    try {
        say(_messages.disconnect);
    } catch (const std::exception&) {
        // Peers will miss its heartbeats.
    }
}

void Presence::beat(int64_t now, int64_t interval) {
    if (now - _last < interval) return;
    _last = now;
    say(_messages.heartbeat);
}

void Presence::say(Velmora::MsgType_t id) { _bus.publish({.id = id, .body = _body, .time = _last}); }

void Peers::take(const Record& record) {
    if (record.id != _messages.connect && record.id != _messages.heartbeat && record.id != _messages.disconnect) return;
    const Incarnation who = _messages.read(record.body);
    const auto known = _last.find(keyOf(who));
    if (record.id == _messages.disconnect) {
        if (known == _last.end()) return;
        _last.erase(known);
        tell(_events.left, who);
        return;
    }
    if (known != _last.end()) {
        known->second = record.time;
        return;
    }
    if (_last.size() >= MOST) return;
    const auto other = _last.lower_bound({who.application, INT64_MIN});
    const bool isDoubled =
        other != _last.end() && other->first.first == who.application && record.time - other->second < _patience;
    _last.emplace(keyOf(who), record.time);
    tell(_events.arrived, who);
    if (isDoubled) tell(_events.doubled, who);
}

void Peers::look(int64_t now) {
    for (auto it = _last.begin(); it != _last.end();) {
        const Incarnation who{it->first.first, it->first.second};
        const bool isSilent = now - it->second >= _patience;
        it = isSilent ? _last.erase(it) : std::next(it);
        if (isSilent) tell(_events.silent, who);
    }
}

} // namespace Host
