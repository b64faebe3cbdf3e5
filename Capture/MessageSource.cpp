#include "Capture/MessageSource.h"

#include <utility>

namespace Capture {

MessageSource::MessageSource(const std::vector<std::string>& paths, const Inspect::Protocol& protocol,
                             std::optional<NetworkOptions> network)
    : _captures(paths, protocol, network ? Takes::networks : Takes::messages) {
    if (network) _network = std::make_unique<Network>(std::move(*network), protocol, _faults);
}

bool MessageSource::next(Packet& message) {
    _faults.clear();
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
