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
/// named first. All are open at once, with 64 kB of memory each, or some more where packets are long.
class MergedReader {
  public:
    /// Throws as Reader does.
    MergedReader(const std::vector<std::string>& paths, const Inspect::Protocol& protocol,
                 Takes takes = Takes::messages);

    /// Reads the next packet; false at the end. Its bytes are valid until the next call.
    bool next(Packet& packet);

    /// The only capture goes on at another place (Reader::jump()). REQUIRES: as there.
    void jump(const Index::Part& part) { _inputs.front().reader.jump(part); }

    /// What was wrong since the last call.
    const std::vector<Damage>& faults() const { return _faults; }

    /// Whether the next packet can be had without waiting for its writer.
    bool isReady() const;
    /// Waits for him up to so many milliseconds; whether he has sent something by then, or ended.
    bool hasInput(int milliseconds) const;

    std::size_t count() const { return _inputs.size(); }
    const std::string& definition(std::size_t number) const { return _inputs[number].reader.definition(); }

    uint64_t position() const; ///< bytes of the files up to which all was read
    uint64_t fileSize() const; ///< of all together; 0 if one is not known

  private:
    struct Input {
        Reader reader;
        Packet packet;
        bool isThere = false;
    };
    void advance(std::size_t number);

    std::vector<Input> _inputs;
    std::vector<Damage> _faults;
    std::size_t _last = SIZE_MAX; ///< none yet
};

} // namespace Capture
