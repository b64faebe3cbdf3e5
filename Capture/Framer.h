// Frames messages as a framing says: the other way round than Deframer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "Capture/Framing.h"

namespace Capture {

class Framer {
  public:
    explicit Framer(Framing framing) : _framing(std::move(framing)) {}

    /// Appends a frame with one message. Throws FramingError if a field of the framing is too small for it.
    void append(uint16_t id, std::string_view body, std::string& to);

  private:
    void append(const Framing::Row& row, uint16_t id, std::string_view contents, std::string& to) const;

    const Framing _framing;
    uint64_t _sequence = 1; ///< of the next frame
    std::string _message;   ///< what stands between brackets
};

} // namespace Capture
