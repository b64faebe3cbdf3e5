// Several captures as one, in the order of time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Capture/Packet.h"
#include "Capture/Reader.h"

namespace Capture {

/// Each capture is taken in its own order; among them the earliest packet comes first, of equal times that of the capture
/// named first. All are open at once, with 2 MB of memory each.
class MergedReader {
  public:
    /// Throws as Reader does.
    MergedReader(const std::vector<std::string>& paths, const Inspect::Protocol& protocol);

    /// Reads the next packet; false at the end. Its bytes are valid until the next call.
    bool next(Packet& packet);

    std::size_t input() const { return _last; } ///< the number of the capture that the last packet is from

    /// What was wrong since the last call, each with the number of its capture.
    struct Fault {
        std::size_t input;
        Damage damage;
    };
    const std::vector<Fault>& faults() const { return _faults; }

  private:
    struct Input {
        Reader reader;
        Packet packet;
        bool isThere = false;
    };
    void advance(std::size_t number);

    std::vector<Input> _inputs;
    std::vector<Fault> _faults;
    std::size_t _last = SIZE_MAX; ///< none yet
};

} // namespace Capture
