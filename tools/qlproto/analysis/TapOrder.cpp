#include "tools/qlproto/analysis/TapOrder.h"

#include <algorithm>
#include <utility>

#include "tools/qlproto/analysis/TapMerge.h"

namespace qlproto {

void TapOrder::add(const Capture::Packet& packet) {
    if (packet.time != _time || _bytes > MOST) pass();
    _time = packet.time;
    Held& held = _taps[packet.capture].emplace_back(Held{packet, std::string(packet.bytes), {}});
    seenAlike(packet, held.seen);
    _bytes += held.bytes.size() + held.seen.size() + HELD_WITH;
}

/// Numbers the packets, those that are the same alike.
void TapOrder::number() {
    for (std::size_t tap = 0; tap < _taps.size(); ++tap) {
        for (Held& held : _taps[tap]) {
            held.alike = _alike.try_emplace(held.seen, _left.size()).first->second;
            if (held.alike == _left.size()) _left.emplace_back(_taps.size());
            ++_left[held.alike][tap];
        }
    }
}

/// Whether the first packet of the tap comes before all others: no other tap has it after one that is still to come.
bool TapOrder::mayPass(std::size_t tap) const {
    const std::size_t alike = _taps[tap].front().alike;
    for (std::size_t i = 0; i < _taps.size(); ++i)
        if (_left[alike][i] != 0 && _taps[i].front().alike != alike) return false;
    return true;
}

void TapOrder::passFirstOf(std::size_t tap) {
    const Held held = std::move(_taps[tap].front());
    _taps[tap].pop_front();
    Capture::Packet packet = held.packet;
    packet.bytes = held.bytes;
    _take(packet);
}

/// Passes on the first packets of all taps if they are the same, as nearly always; false if they are not.
bool TapOrder::passAlike() {
    const auto isThere = [](const std::deque<Held>& it) { return !it.empty(); };
    const auto first = std::ranges::find_if(_taps, isThere);
    if (first == _taps.end()) return false;
    for (auto it = first; it != _taps.end(); ++it)
        if (isThere(*it) && it->front().seen != first->front().seen) return false;
    for (std::size_t tap = 0; tap < _taps.size(); ++tap)
        if (isThere(_taps[tap])) passFirstOf(tap);
    return true;
}

/// The first tap whose first packet may come next, or if the taps contradict each other, the first one; their number if all
/// has been passed on.
std::size_t TapOrder::nextTap() const {
    std::size_t any = _taps.size();
    for (std::size_t tap = 0; tap < _taps.size(); ++tap) {
        if (_taps[tap].empty()) continue;
        if (mayPass(tap)) return tap;
        any = std::min(any, tap);
    }
    return any;
}

void TapOrder::pass() {
    while (passAlike()) {
    }
    number();
    for (std::size_t first = nextTap(); first != _taps.size(); first = nextTap()) {
        const std::size_t alike = _taps[first].front().alike;
        for (std::size_t tap = first; tap < _taps.size(); ++tap)
            if (!_taps[tap].empty() && _taps[tap].front().alike == alike) {
                --_left[alike][tap];
                passFirstOf(tap);
            }
    }
    _alike.clear();
    _left.clear();
    _bytes = 0;
}

} // namespace qlproto
