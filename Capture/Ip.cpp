#include "Capture/Ip.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "Capture/Errors.h"
#include "Capture/NumberAt.h"

namespace Capture {

namespace {

constexpr std::size_t V4_HEADER = 20, V6_HEADER = 40, V4_FROM = 12, V6_FROM = 8;
constexpr const char* DAMAGED = "damaged IP packet";

/// Protocols that are headers of IP itself.
constexpr unsigned HOP_BY_HOP = 0, ROUTING = 43, FRAGMENT = 44, AUTHENTICATION = 51, DESTINATION = 60;

bool isV6(std::string_view packet) { return !packet.empty() && byteAt(packet, 0) >> 4 == 6; }

std::size_t headerOfV4(std::string_view packet) { return std::size_t(byteAt(packet, 0) & 0xF) * 4; }

/// Of the header alone. Processors of network cards fill it in later, so that what a host sends has none yet.
bool hasRightSum(std::string_view packet) {
    return halfAt(packet, 10) == 0 || wordSum(packet.substr(0, headerOfV4(packet))) == 0xFFFF;
}

} // namespace

std::size_t lengthOfIp(std::string_view packet) {
    if (isV6(packet)) return packet.size() < V6_HEADER ? 0 : V6_HEADER + halfAt(packet, 4);
    if (packet.size() < V4_HEADER || byteAt(packet, 0) >> 4 != 4) return 0;
    const std::size_t header = headerOfV4(packet), size = halfAt(packet, 2);
    if (header < V4_HEADER || header > packet.size() || size < header || !hasRightSum(packet)) return 0;
    return size;
}

bool Ip::take(std::string_view packet, int64_t time, Datagram& datagram) {
    while (!_waiting.empty() && time - _waiting.front().begun > LONGEST_WAIT) giveUp(_waiting.begin(), "30 s went by");
    datagram = {};
    return isV6(packet) ? takeV6(packet, time, datagram) : takeV4(packet, time, datagram);
}

bool Ip::takeV4(std::string_view packet, int64_t time, Datagram& datagram) {
    if (packet.size() < V4_HEADER || byteAt(packet, 0) >> 4 != 4) return damaged("it has no header");
    const std::size_t header = headerOfV4(packet);
    if (header < V4_HEADER || header > packet.size())
        return damaged("its header has " + counted(header, "byte") + " of " + std::to_string(packet.size()));
    if (!hasRightSum(packet)) return damaged("its checksum is wrong");
    std::size_t size = halfAt(packet, 2);
    if (size == 0) size = packet.size(); // left to the network card, too
    if (size < header) return damaged("its length, " + std::to_string(size) + ", is less than its header's");
    for (std::array<char, 16>* const it : {&datagram.from, &datagram.to}) {
        it->fill('\0');
        (*it)[10] = (*it)[11] = '\xFF';
        std::memcpy(it->data() + 12, packet.data() + V4_FROM + (it == &datagram.to ? 4 : 0), 4);
    }
    datagram.protocol = byteAt(packet, 9);
    datagram.bytes = packet.substr(header, size - header);
    datagram.missing = size - header - datagram.bytes.size();

    const uint32_t word = halfAt(packet, 6);
    constexpr uint32_t more = 0x2000, offset = 0x1FFF;
    if ((word & (more | offset)) == 0) return true;
    std::string key(packet.substr(V4_FROM, 8));
    key.append(packet.substr(4, 2)).append(packet.substr(9, 1)); // identification and protocol
    const Fragment fragment{(word & offset) * std::size_t(8), (word & more) == 0, datagram.bytes};
    return reassemble(std::move(key), fragment, time, datagram);
}

bool Ip::takeV6(std::string_view packet, int64_t time, Datagram& datagram) {
    if (packet.size() < V6_HEADER) return damaged("it ends inside its header");
    const std::string addresses(packet.substr(V6_FROM, 32));
    std::memcpy(datagram.from.data(), addresses.data(), 16);
    std::memcpy(datagram.to.data(), addresses.data() + 16, 16);
    datagram.protocol = byteAt(packet, 6);
    std::size_t size = halfAt(packet, 4);
    packet.remove_prefix(V6_HEADER);
    if (size == 0) size = packet.size(); // left to the network card
    datagram.bytes = packet.substr(0, size);
    datagram.missing = size - datagram.bytes.size();

    for (bool isFragmented = false;;) {
        const std::string_view rest = datagram.bytes;
        const unsigned type = datagram.protocol;
        const bool isFragment = type == FRAGMENT;
        if (!isFragment && type != HOP_BY_HOP && type != ROUTING && type != AUTHENTICATION && type != DESTINATION)
            return true;
        if (rest.size() < 8) return damaged("it ends inside an extension header");
        datagram.protocol = byteAt(rest, 0);
        std::size_t header = 8;
        if (type == AUTHENTICATION) header = (byteAt(rest, 1) + 2) * std::size_t(4);
        if (type == HOP_BY_HOP || type == ROUTING || type == DESTINATION) header += byteAt(rest, 1) * std::size_t(8);
        if (rest.size() < header) return damaged("it ends inside an extension header");
        datagram.bytes.remove_prefix(header);
        if (!isFragment) continue;
        const uint32_t word = halfAt(rest, 2);
        if (word >> 3 == 0 && (word & 1) == 0) continue; // all of it
        if (std::exchange(isFragmented, true)) return damaged("it is a fragment of a fragment");
        std::string key = addresses;
        key.append(rest.substr(4, 4)).push_back(static_cast<char>(datagram.protocol));
        if (!reassemble(std::move(key), {word & 0xFFF8, (word & 1) == 0, datagram.bytes}, time, datagram)) return false;
    }
}

/// Adds the fragment to its packet. If that makes it whole, the datagram is that of all.
bool Ip::reassemble(std::string key, const Fragment& fragment, int64_t time, Datagram& datagram) {
    if (fragment.at + fragment.bytes.size() > LONGEST_DATAGRAM || (!fragment.isLast && fragment.bytes.size() < 8))
        return damaged("a fragment of " + counted(fragment.bytes.size(), "byte") + " at "
                       + std::to_string(fragment.at));
    if (datagram.missing != 0)
        return damaged("a fragment of which the capture lacks " + counted(datagram.missing, "byte"));
    auto found = _byKey.find(key);
    if (found == _byKey.end()) {
        _waiting.push_back({key, time, {}, {}, 0});
        found = _byKey.emplace(std::move(key), std::prev(_waiting.end())).first;
    }
    Fragmented& it = *found->second;
    fill(it, fragment);
    const bool isWhole =
        it.size != 0 && it.ranges.size() == 1 && it.ranges.begin()->first == 0 && it.ranges.begin()->second >= it.size;
    if (isWhole) {
        _bytes -= it.bytes.size();
        _whole = std::move(it.bytes);
        datagram.bytes = std::string_view(_whole).substr(0, it.size);
        _waiting.erase(found->second);
        _byKey.erase(found);
    }
    while (_waiting.size() > MOST_FRAGMENTED || _bytes > MOST_BYTES) giveUp(_waiting.begin(), "too many wait");
    return isWhole;
}

/// What came first holds, be it the first bytes or what is said of the length.
void Ip::fill(Fragmented& it, const Fragment& fragment) {
    std::size_t from = fragment.at;
    const std::size_t to = from + fragment.bytes.size();
    if (fragment.isLast && it.size == 0) it.size = std::max<std::size_t>(to, 1);
    if (it.bytes.size() < to) {
        _bytes += to - it.bytes.size();
        it.bytes.resize(to);
    }
    auto next = it.ranges.upper_bound(from);
    if (next != it.ranges.begin()) {
        const auto before = std::prev(next);
        from = std::max(from, before->second);
    }
    const auto copy = [&](std::size_t end) {
        if (from < end) fragment.bytes.copy(it.bytes.data() + from, end - from, from - fragment.at);
    };
    for (; next != it.ranges.end() && next->first < to; ++next) {
        copy(next->first);
        from = std::max(from, next->second);
    }
    copy(to);

    // The part joins those that it touches.
    std::size_t begin = fragment.at, end = to;
    next = it.ranges.upper_bound(begin);
    if (next != it.ranges.begin() && std::prev(next)->second >= begin) --next;
    while (next != it.ranges.end() && next->first <= end) {
        begin = std::min(begin, next->first);
        end = std::max(end, next->second);
        next = it.ranges.erase(next);
    }
    it.ranges[begin] = end;
}

void Ip::giveUp(std::list<Fragmented>::iterator it, const char* why) {
    std::size_t there = 0;
    for (const auto& [from, to] : it->ranges) there += to - from;
    _faults.tell("incomplete IP packet",
                 (it->size != 0 ? counted(there, "byte") + " of " + std::to_string(it->size) + " came in fragments"
                                : counted(there, "byte") + " came in fragments, and not the last one")
                     + ": " + why,
                 there);
    _bytes -= it->bytes.size();
    _byKey.erase(it->key);
    _waiting.erase(it);
}

void Ip::finish() {
    while (!_waiting.empty()) giveUp(_waiting.begin(), "the capture ends");
}

bool Ip::damaged(const std::string& reason) {
    _faults.tell(DAMAGED, reason);
    return false;
}

} // namespace Capture
