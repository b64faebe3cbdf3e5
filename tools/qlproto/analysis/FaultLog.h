// The faults of a capture: all counted, the first ones kept.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qlproto {

class FaultLog {
  public:
    static constexpr std::size_t KEPT = 1000;

    struct Fault {
        uint64_t packet; ///< from 1; 0 before the first
        std::string text;
    };

    void add(uint64_t packet, std::string text) {
        ++_count;
        if (_first.size() < KEPT) _first.push_back({packet, std::move(text)});
    }

    uint64_t count() const { return _count; }
    const std::vector<Fault>& first() const { return _first; }

  private:
    uint64_t _count = 0;
    std::vector<Fault> _first;
};

} // namespace qlproto
