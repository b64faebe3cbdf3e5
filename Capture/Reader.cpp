#include "Capture/Reader.h"

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
