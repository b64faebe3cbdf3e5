// What is wrong with what a capture holds, gathered between two messages.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Backend/Common/Inline.h"
#include "Capture/Container.h"

namespace Capture {

class Faults {
  public:
    /// Where what is told from now on stands in the capture.
    void at(uint64_t offset, std::size_t capture) { _offset = offset, _capture = capture; }

    QL_COLD_PATH void tell(const char* kind, std::string reason, uint64_t skipped = 0) {
        Damage damage{_offset, skipped, std::move(reason)};
        damage.kind = kind;
        damage.capture = _capture;
        _all.push_back(std::move(damage));
    }
    QL_COLD_PATH void tell(Damage damage) { _all.push_back(std::move(damage)); }

    const std::vector<Damage>& all() const { return _all; }
    void clear() { _all.clear(); }

  private:
    uint64_t _offset = 0;
    std::size_t _capture = 0;
    std::vector<Damage> _all;
};

} // namespace Capture
