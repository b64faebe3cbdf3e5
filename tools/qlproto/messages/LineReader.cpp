#include "tools/qlproto/messages/LineReader.h"

#include <algorithm>

namespace qlproto {

bool LineReader::next(std::string_view& line) {
    std::string_view held = _window.peek(1);
    if (held.empty()) return false;
    ++_number;
    _isCut = false;
    _line.clear();
    std::size_t size;
    while ((size = held.find('\n')) == held.npos && !held.empty()) {
        _isCut |= held.size() > _longest - _line.size();
        _line.append(held.substr(0, _longest - _line.size()));
        _window.skip(held.size());
        held = _window.peek(1);
    }
    line = held.substr(0, size); // valid though skipped, until more is read
    if (!held.empty()) _window.skip(size + 1);
    if (!_line.empty()) {
        const std::size_t room = _longest - _line.size();
        _isCut |= line.size() > room;
        line = _line.append(line.substr(0, room));
    } else if (line.size() > _longest) {
        _isCut = true;
        line = line.substr(0, _longest);
    }
    return true;
}

} // namespace qlproto
