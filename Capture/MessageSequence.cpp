#include "Capture/MessageSequence.h"

#include <utility>

namespace Capture {

MessageSequence::MessageSequence(std::vector<std::string> paths, const Inspect::Protocol& protocol,
                                 std::optional<NetworkOptions> network)
    : _paths(std::move(paths)), _protocol(protocol), _network(std::move(network)), _messages(_paths.size()) {}

void MessageSequence::open() {
    _first = _opened;
    _opened = _network ? _paths.size() : _opened + 1;
    const auto path = [&](std::size_t i) { return _paths.begin() + static_cast<std::ptrdiff_t>(i); };
    _source = std::make_unique<MessageSource>(std::vector(path(_first), path(_opened)), _protocol, _network);
}

bool MessageSequence::next(Packet& message) try {
    _faults.clear();
    while (_source != nullptr || _opened != _paths.size()) {
        if (_source == nullptr) open();
        const bool isThere = _source->next(message);
        for (const Damage& it : _source->faults()) {
            _faults.push_back(it);
            _faults.back().capture += _first;
        }
        if (isThere) {
            message.capture += _first;
            ++_messages[message.capture];
            return true;
        }
        _source.reset();
    }
    return false;
} catch (...) {
    _source.reset();
    _opened = _paths.size();
    throw;
}

} // namespace Capture
