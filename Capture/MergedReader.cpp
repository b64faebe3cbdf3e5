#include "Capture/MergedReader.h"

#include <algorithm>

namespace Capture {

MergedReader::MergedReader(const std::vector<std::string>& paths, const Inspect::Protocol& protocol, Takes takes) {
    for (const std::string& path : paths) _inputs.push_back({Reader(path, protocol, takes), {}});
}

void MergedReader::advance(std::size_t number) {
    Input& input = _inputs[number];
    input.isThere = input.reader.next(input.packet);
    input.packet.capture = number;
    if (const Damage* const damage = input.reader.damage()) {
        _faults.push_back(*damage);
        _faults.back().capture = number;
    }
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

bool MergedReader::isReady() const {
    if (_last < _inputs.size()) return _inputs[_last].reader.isReady();
    return std::ranges::all_of(_inputs, [](const Input& it) { return it.reader.isReady(); });
}

bool MergedReader::hasInput(int milliseconds) const {
    if (_last < _inputs.size()) return _inputs[_last].reader.hasInput(milliseconds);
    return std::ranges::all_of(_inputs, [&](const Input& it) { return it.reader.hasInput(milliseconds); });
}

uint64_t MergedReader::position() const {
    uint64_t position = 0;
    for (const Input& it : _inputs) position += it.reader.position();
    return position;
}

uint64_t MergedReader::fileSize() const {
    uint64_t size = 0;
    for (const Input& it : _inputs) {
        if (it.reader.fileSize() == 0) return 0;
        size += it.reader.fileSize();
    }
    return size;
}

} // namespace Capture
