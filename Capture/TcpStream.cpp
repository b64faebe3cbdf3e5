#include "Capture/TcpStream.h"

#include <algorithm>
#include <utility>

namespace Capture {

namespace {

/// No window is larger: what is further away belongs to another connection.
constexpr int64_t LARGEST_WINDOW = int64_t(1) << 30;

/// How far the sequence number is from that of a position.
int64_t distance(uint32_t sequence, uint32_t of) { return static_cast<int32_t>(sequence - of); }

} // namespace

bool TcpStream::mayTake(const Segment& segment) const {
    if (!_isBegun) return true;
    const uint32_t start = segment.sequence + (segment.isFirst ? 1 : 0);
    if (segment.isFirst) return start == _first;
    const int64_t from = distance(start, _first + static_cast<uint32_t>(_position));
    return from <= LARGEST_WINDOW && from >= -LARGEST_WINDOW;
}

void TcpStream::take(const Segment& segment, const Origin& origin) {
    const uint32_t start = segment.sequence + (segment.isFirst ? 1 : 0);
    if (!_isBegun) {
        if (!segment.isFirst && segment.bytes.empty()) return; // perhaps one that only keeps the connection alive
        _isBegun = true;
        _first = start;
        if (!segment.isFirst) _deframer.beginInside();
    }
    _now = origin.time;
    const int64_t from = static_cast<int64_t>(_position) + distance(start, _first + static_cast<uint32_t>(_position));
    const int64_t to = from + static_cast<int64_t>(segment.bytes.size() + segment.missing);
    if (segment.isLast && to >= 0) _end = std::min(_end, static_cast<uint64_t>(to));
    std::string_view bytes = segment.bytes;
    std::size_t missing = segment.missing;
    if (to <= static_cast<int64_t>(_position) || to == from) return; // all of it came before, or it holds nothing
    const auto at = static_cast<uint64_t>(std::max<int64_t>(from, 0));
    if (at >= _end) return;
    bytes.remove_prefix(std::min<std::size_t>(bytes.size(), at - static_cast<uint64_t>(from)));
    missing = std::min(missing, static_cast<std::size_t>(to - static_cast<int64_t>(at)) - bytes.size());
    if (at <= _position && _early.empty() && _lost == 0) return deliver(bytes, missing, at, origin);

    if (_early.empty()) _waitingSince = origin.time;
    Early& it = _early[at];
    if (it.bytes.size() + it.missing >= bytes.size() + missing) return;
    _waitingBytes += bytes.size() - it.bytes.size() + (it.bytes.empty() && it.missing == 0 ? NODE : 0);
    it = {std::string(bytes), missing, origin};
}

/// Hands on what is new of bytes that begin at or before the position.
void TcpStream::deliver(std::string_view bytes, std::size_t missing, uint64_t at, const Origin& origin) {
    const std::size_t known = static_cast<std::size_t>(_position - at);
    if (known < bytes.size()) _deframer.take(bytes.substr(known), origin);
    _position = at + bytes.size() + missing;
    _lost = missing - std::min<std::size_t>(missing, known - std::min(known, bytes.size()));
}

bool TcpStream::next(DeframerContext& context, const Connection& connection, Packet& message) {
    do {
        if (_deframer.next(context, connection, message)) return true;
    } while (advance());
    if (_isFinished) _deframer.close(context, connection);
    return false;
}

/// Hands on more bytes that have come, or the end; false if there is nothing to hand on.
bool TcpStream::advance() {
    if (_lost != 0) {
        if (!_deframer.isAtEnd()) {
            _deframer.end();
            return true;
        }
        _deframer.goOn(std::exchange(_lost, 0));
    }
    if (!_early.empty()) {
        const auto first = _early.begin();
        if (first->first > _position) {
            const bool isOver = _isFinished || _waitingBytes > MOST_WAITING || _now - _waitingSince > LONGEST_WAIT;
            if (!isOver) return false;
            _lost = first->first - _position;
            _position = first->first;
            return true;
        }
        const Early early = std::move(first->second);
        const uint64_t at = first->first;
        _early.erase(first);
        _waitingBytes -= std::min(_waitingBytes, early.bytes.size() + NODE);
        _waitingSince = _now;
        if (at + early.bytes.size() + early.missing > _position) deliver(early.bytes, early.missing, at, early.origin);
        _deframer.keep();
        return true;
    }
    const bool isEnd = _isFinished || isOver();
    if (!isEnd || _deframer.isAtEnd()) return false;
    _deframer.end();
    return true;
}

} // namespace Capture
