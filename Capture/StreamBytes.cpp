#include "Capture/StreamBytes.h"

#include <algorithm>
#include <utility>

namespace Capture {

void StreamBytes::take(std::string_view bytes, const Origin& origin) {
    if (_at == all().size()) {
        _position += std::exchange(_at, 0);
        _marks.clear();
        _bytes.clear();
        shrink();
        _taken = bytes;
        _isKept = false;
    } else {
        if (_at >= _bytes.size() / 2) { // else more would be moved than is gone
            _bytes.erase(0, _at);
            _position += std::exchange(_at, 0);
            shrink();
            const auto isHeld = [&](const Mark& it) { return it.end > _position; };
            _marks.erase(_marks.begin(), std::ranges::find_if(_marks, isHeld));
        }
        _bytes.append(bytes);
    }
    _marks.push_back({_position + all().size(), origin});
    _last = origin;
}

void StreamBytes::takeDatagram(std::string_view bytes, std::size_t missing, const Origin& origin) {
    _taken = bytes;
    _isKept = false;
    _position = _at = 0;
    _marks.assign(1, {bytes.size() + missing, origin});
    _last = origin;
}

/// What has gathered in a burst is not kept for ever.
void StreamBytes::shrink() {
    constexpr std::size_t usual = 64 * 1024;
    if (_bytes.size() < usual && _bytes.capacity() > 2 * usual) _bytes.shrink_to_fit();
}

void StreamBytes::copyRest() {
    _bytes = rest();
    _position += std::exchange(_at, 0);
    _isKept = true;
}

void StreamBytes::passOver(uint64_t missing) {
    _position += all().size() + missing;
    _bytes.clear();
    _isKept = true;
    _marks.clear();
    _at = 0;
}

void StreamBytes::advance(std::size_t size) { _at = std::min(_at + size, all().size()); }

const Origin& StreamBytes::originOf(uint64_t position) const {
    const auto mark = std::ranges::find_if(_marks, [&](const Mark& it) { return it.end > position; });
    return mark != _marks.end() ? mark->origin : _last;
}

} // namespace Capture
