// Frames and the messages in them as the fields of a framing tell them: where they end, and what speaks against it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Backend/Common/Inline.h"
#include "Capture/Framing.h"
#include "Capture/Packet.h"

namespace Capture {

/// What the fields of a frame say.
struct Frame {
    std::size_t size = 0;           ///< of all; 0 if it is not known
    std::size_t begin = 0, end = 0; ///< of the body or the messages
    uint64_t count = 0;             ///< of messages; 0 if it does not say
    uint64_t id = 0, sequence = 0;
};

struct FramedMessage {
    std::size_t size = 0;           ///< with what frames it between brackets
    std::size_t begin = 0, end = 0; ///< of the body, from the start of the frame
    uint64_t id = 0;
};

enum class Fit { fits, misfit, needsMore };

class FrameReader {
  public:
    /// The longest frame.
    static constexpr std::size_t LONGEST = MAX_PACKET + 4096;

    /// From now on the bytes are datagrams, which end by themselves; the capture lacks so many of the next one.
    void beginDatagram(std::size_t missing);
    bool isOfDatagrams() const { return _isDatagram; }
    std::size_t missing() const { return _missing; }

    /// The frame that the bytes begin with. Of one that needs more, what is known is told.
    Fit frameAt(const Framing& framing, std::string_view bytes, Frame& frame);

    /// Whether the fields of a frame in front of its messages fit there.
    Fit headerAt(const Framing& framing, std::string_view bytes, Frame& frame);

    /// The message `at` bytes inside the frame that the bytes begin with.
    Fit messageAt(const Framing& framing, std::string_view bytes, const Frame& frame, std::size_t at,
                  FramedMessage& message);

    /// Why the last one that was a misfit is one.
    std::string misfit() const;

  private:
    struct Misfit {
        const char* what = ""; ///< of the field
        uint64_t value = 0;
        const char* is = "";
        uint64_t limit = 0;
    };

    Fit rowAt(const Framing::Row& row, std::string_view bytes, std::size_t whole, std::size_t longest, Frame& frame);
    Fit endOf(const Framing::Row& row, uint64_t length, std::size_t whole, std::size_t longest, Frame& frame);
    QL_COLD_PATH Fit misfit(const Misfit& why);

    bool _isDatagram = false;
    std::size_t _missing = 0; ///< bytes of the datagram that the capture lacks
    Misfit _misfit;
};

} // namespace Capture
