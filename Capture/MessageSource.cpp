#include "Capture/MessageSource.h"

#include <utility>

namespace Capture {

MessageSource::MessageSource(const std::vector<std::string>& paths, const Inspect::Protocol& protocol,
                             std::optional<NetworkOptions> network)
    : _captures(paths, protocol, network ? Takes::networks : Takes::messages) {
    if (network) _network = std::make_unique<Network>(std::move(*network), protocol, _faults);
}

void MessageSource::passOver(Index index, std::function<bool(const Index::Part&)> wants) {
    _index = std::move(index);
    _wants = std::move(wants);
    _next = 2;
    _part = 1;
}

/// Where a part begins that is not wanted, goes on to the next one that is. False if there is none.
bool MessageSource::goToPart() {
    const std::vector<Index::Part>& parts = _index->parts();
    const std::size_t from = _part;
    if (from >= parts.size() || parts[from].packet != _next++) return true;
    while (_part < parts.size() && !_wants(parts[_part])) _passedOver.faults += parts[_part++].faults;
    const bool isThere = _part < parts.size();
    const uint64_t to = isThere ? parts[_part].packet : _index->packets() + 1;
    _passedOver.packets = to - parts[from].packet;
    if (isThere && _part != from) _captures.jump(parts[_part]);
    _next = to + 1;
    ++_part;
    return isThere;
}

bool MessageSource::next(Packet& message) {
    _faults.clear();
    _passedOver = {};
    if (_index && !goToPart()) return false;
    for (;;) {
        if (_network && _network->next(message)) return true;
        if (_isAtEnd) {
            if (!_network || !_network->finish()) return false;
            continue;
        }
        _isAtEnd = !_captures.next(message);
        for (const Damage& damage : _captures.faults()) _faults.tell(damage);
        if (_isAtEnd) continue;
        if (message.linkType == LinkType::MESSAGE) return true;
        _faults.at(message.offset, message.capture);
        _network->take(message);
    }
}

} // namespace Capture
