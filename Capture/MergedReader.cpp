#include "Capture/MergedReader.h"

namespace Capture {

MergedReader::MergedReader(const std::vector<std::string>& paths, const Inspect::Protocol& protocol) {
    for (const std::string& path : paths) _inputs.push_back({Reader(path, protocol), {}});
}

void MergedReader::advance(std::size_t number) {
    Input& input = _inputs[number];
    input.isThere = input.reader.next(input.packet);
    if (const Damage* const damage = input.reader.damage()) _faults.push_back({number, *damage});
}

bool MergedReader::next(Packet& packet) {
    _faults.clear();
    if (_last < _inputs.size())
        advance(_last);
    else if (_last == SIZE_MAX)
        for (std::size_t i = 0; i < _inputs.size(); ++i) advance(i);
    _last = _inputs.size();
    for (std::size_t i = 0; i < _inputs.size(); ++i) {
        const bool isEarlier = _last == _inputs.size() || _inputs[i].packet.time < _inputs[_last].packet.time;
        if (_inputs[i].isThere && isEarlier) _last = i;
    }
    if (_last == _inputs.size()) return false;
    packet = _inputs[_last].packet;
    return true;
}

} // namespace Capture
