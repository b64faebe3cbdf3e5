#include "Capture/Reader.h"

#include <algorithm>
#include <utility>

namespace Capture {

Reader::Reader(const std::string& path, const Inspect::Protocol& protocol, Takes takes)
    : _window(std::make_unique<ByteWindow>(path)), _container(containerOf(*_window, protocol, takes)) {}

bool Reader::next(Packet& packet) {
    _fileDamage.reset();
    const bool isThere = _container->next(packet);
    if (_window->hasFault()) noteFault();
    _originalLength = packet.original;
    return isThere;
}

void Reader::jump(const Index::Part& part) {
    _window->jump(part.place);
    for (uint64_t left = part.offset - part.place.contents; left != 0;) { // within a compressed frame
        const std::size_t held = std::min<uint64_t>(left, _window->peek(1).size());
        if (held == 0) break;
        _window->skip(held);
        left -= held;
    }
    _container->jumped();
}

/// Of all that is wrong since the packet before, one thing is told: the packets' offset and what was skipped, and why.
void Reader::noteFault() {
    while (const std::optional<SourceFault> fault = _window->takeFault()) {
        if (!_fileDamage) {
            _fileDamage = Damage{fault->position, 0, fault->reason, false};
            if (const Damage* const damage = _container->damage()) {
                _fileDamage = *damage;
                _fileDamage->reason = fault->reason + "; " + damage->reason;
            }
        } else {
            _fileDamage->reason = fault->reason + "; " + _fileDamage->reason;
        }
    }
}

} // namespace Capture
