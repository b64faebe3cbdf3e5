// Which frames are believed, where a stream may be out of step: those whose messages are known and verify.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Capture/Faults.h"
#include "Capture/FrameReader.h"
#include "Capture/Framing.h"
#include "Capture/Verification.h"
#include "Inspect/Protocol.h"

namespace Capture {

/// What all deframers of a capture share.
struct DeframerContext {
    const Framing& framing;
    const Inspect::Protocol& protocol;
    Faults& faults;
    int hints = 4; ///< that may still be looked for, which costs
};

/// Little is verified for nothing: no more than some bytes for each byte of the stream, whose sender chooses the lengths.
class FrameJudge : public FrameReader {
  public:
    /// So many bytes of the stream have come.
    void allowFor(std::size_t bytes) { _allowed += PROOF_RATION * bytes; }

    /// Whether the first message of the frame that the bytes begin with is known and verifies.
    bool isSound(const DeframerContext& context, std::string_view bytes, const Frame& frame);

    /// Whether the bytes, perhaps all that come, begin with a frame that is sound; if it is so short that this may be an
    /// accident, another must be able to follow.
    Fit isBelieved(const DeframerContext& context, const Framing& framing, std::string_view bytes, bool isEnd);

    /// Whether a frame stands inside those bytes, after the first.
    bool holdsFrame(const DeframerContext& context, std::string_view bytes);

    /// Whether the bytes after a frame begin with the start of another one, of a known message, or nothing follows.
    Fit isFollowed(const DeframerContext& context, std::string_view bytes, bool isEnd);

    /// Whether a frame of which bytes are still to come may be one.
    bool mayBecomeFrame(const DeframerContext& context, std::string_view bytes, const Frame& frame);

    /// What framing would fit the bytes instead, as a remark; empty if none does.
    std::string hint(DeframerContext& context, std::string_view bytes);

  private:
    bool verifies(const DeframerContext& context, const Framing& framing, std::string_view bytes, const Frame& frame,
                  uint64_t& work);

    uint64_t _allowed = PROOF_RATION * MAX_PACKET; ///< bytes that may be verified in all
    uint64_t _verified = 0;                        ///< bytes that might have been messages
};

} // namespace Capture
