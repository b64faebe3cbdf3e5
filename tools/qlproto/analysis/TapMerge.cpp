#include "tools/qlproto/analysis/TapMerge.h"

#include <algorithm>

#include "Capture/Ip.h"
#include "Capture/Link.h"

namespace qlproto {

const std::string& seenAlike(const Capture::Packet& packet, std::string& room) {
    constexpr std::size_t v6Header = 40; // that long, a packet of IPv6 may not say how long it is
    const std::string_view ip = Capture::ipPacketOf(packet.linkType, packet.bytes);
    const std::size_t size = Capture::lengthOfIp(ip);
    if (packet.linkType == Capture::LinkType::MESSAGE || size == 0) return room = packet.bytes;
    const bool isV4 = static_cast<unsigned char>(ip[0]) >> 4 == 4;
    room = isV4 || size != v6Header ? ip.substr(0, size) : ip; // what follows fills up the frame
    if (isV4)
        room[8] = room[10] = room[11] = '\0';
    else
        room[7] = '\0';
    return room;
}

bool TapMerge::take(const Capture::Packet& packet, std::size_t tap) {
    while (!_held.empty() && packet.time - _held.front().time > _window) release();
    while (_bytes > HELD) {
        _isOverfull = true;
        release();
    }
    ++_sides[tap].packets;
    const std::string& bytes = seenAlike(packet, _key);
    auto it = _alike.find(bytes);
    if (it == _alike.end()) it = _alike.emplace(bytes, Alike{{}, std::vector<uint64_t>(_sides.size())}).first;
    Alike& alike = it->second;
    const auto unseen = std::lower_bound(alike.numbers.begin(), alike.numbers.end(), alike.next[tap]);
    if (unseen != alike.numbers.end()) {
        alike.next[tap] = *unseen + 1;
        _held[*unseen - _first].seenBy |= uint64_t(1) << tap;
        ++_sides[tap].duplicates;
        return false;
    }
    const uint64_t number = _first + _held.size();
    _held.push_back({packet.time, uint64_t(1) << tap, &it->first});
    alike.numbers.push_back(number);
    alike.next[tap] = number + 1;
    _bytes += bytes.size() + HELD_WITH;
    return true;
}

/// Lets the oldest packet go: no tap will see it any more.
void TapMerge::release() {
    const Held held = _held.front();
    for (std::size_t tap = 0; tap < _sides.size(); ++tap) {
        Gap& gap = _open[tap];
        if ((held.seenBy >> tap & 1) == 0) {
            if (gap.packets++ == 0) gap = {tap, held.time, held.time, 1};
            gap.to = held.time;
            ++_sides[tap].missing;
        } else if (gap.packets != 0) {
            ++_sides[tap].gaps;
            _onGap(gap);
            gap.packets = 0;
        }
    }
    _bytes -= held.bytes->size() + HELD_WITH;
    const auto it = _alike.find(*held.bytes);
    it->second.numbers.pop_front();
    if (it->second.numbers.empty()) _alike.erase(it);
    _held.pop_front();
    ++_first;
}

void TapMerge::finish() {
    while (!_held.empty()) release();
    for (const Gap& gap : _open) {
        if (gap.packets == 0) continue;
        ++_sides[gap.tap].gaps;
        _onGap(gap);
    }
}

} // namespace qlproto
