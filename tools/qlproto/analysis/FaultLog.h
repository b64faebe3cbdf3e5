// The faults of a capture: all counted by kind, the first ones kept.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tools/qlproto/messages/CaptureScan.h"

namespace qlproto {

class FaultLog {
  public:
    static constexpr std::size_t KEPT = 1000;

    struct Kind {
        uint64_t count = 0;
        uint64_t first = 0, last = 0; ///< packets
    };

    void add(const CaptureScan::Fault& fault) {
        ++_count;
        Kind& kind = _kinds[fault.kind];
        if (kind.count++ == 0) kind.first = fault.packet;
        kind.last = fault.packet;
        if (_first.size() < KEPT) _first.push_back(fault);
    }

    uint64_t count() const { return _count; }
    const std::map<std::string, Kind>& kinds() const { return _kinds; }
    const std::vector<CaptureScan::Fault>& first() const { return _first; }

  private:
    uint64_t _count = 0;
    std::map<std::string, Kind> _kinds;
    std::vector<CaptureScan::Fault> _first;
};

} // namespace qlproto
