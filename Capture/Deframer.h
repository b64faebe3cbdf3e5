// Takes the messages out of the bytes of one direction of a connection, by a framing.
//
// A stream is in step as long as each frame fits where the one before it ends. A frame whose message does not verify may have
// a damaged length: it is taken only if the start of a frame with a known message follows, or nothing does, and no frame stands
// inside it. Where a frame does not fit, or bytes are missing, the next one is searched for byte by byte: one is believed if it
// has a known message that verifies (FrameJudge.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Backend/Common/Inline.h"
#include "Capture/Connection.h"
#include "Capture/FrameJudge.h"
#include "Capture/Packet.h"
#include "Capture/StreamBytes.h"

namespace Capture {

class Deframer {
  public:
    /// The next bytes of a stream, valid until keep() or until next() is false. REQUIRES: it was.
    void take(std::string_view bytes, const Origin& origin);

    /// What was taken is valid no longer.
    void keep() { _bytes.keep(); }

    /// A datagram, of which the capture lacks so many bytes: it ends by itself. REQUIRES: as above.
    void takeDatagram(std::string_view bytes, std::size_t missing, const Origin& origin);

    /// The stream ends here, or so many bytes are missing: then it goes on once next() was false and goOn() was called.
    void end() { _isAtEnd = true; }
    void goOn(uint64_t missing);
    /// Nothing follows. REQUIRES: next() was false after end().
    void close(DeframerContext& context, const Connection& connection);

    /// What comes may not begin with a frame, for the capture does not hold the start of the stream.
    void beginInside();

    /// The next message, valid until the next call; false if more bytes are needed.
    bool next(DeframerContext& context, const Connection& connection, Packet& message);

    bool isAtEnd() const { return _isAtEnd; }
    std::size_t memory() const { return _bytes.memory() + _message.capacity(); }

  private:
    /// Where the stream got out of step, and why.
    struct Loss {
        enum class Cause {
            inside, ///< it may have begun so: a fault only if bytes are skipped
            misfit, ///< no frame fits
            end,    ///< it ends inside a frame
            gap,    ///< bytes are missing
        };
        Cause cause = Cause::inside;
        std::string reason = {};
        uint64_t at = 0; ///< position
        Origin origin = {};
        uint64_t missing = 0; ///< bytes since then that the capture lacks
    };

    bool advance(DeframerContext& context, const Connection& connection, Packet& message);
    bool openFrame(DeframerContext& context, const Connection& connection);
    bool nextOfFrame(DeframerContext& context, const Connection& connection, Packet& packet);
    void closeFrame();
    void emit(const DeframerContext& context, const Connection& connection, const FramedMessage& it, Packet& packet);
    QL_COLD_PATH void loseStep(Loss::Cause cause, std::string reason);
    QL_COLD_PATH bool findStep(DeframerContext& context, const Connection& connection);
    QL_COLD_PATH void tellLoss(DeframerContext& context, const Connection& connection, const Loss& loss,
                               uint64_t here) const;
    void checkSequence(DeframerContext& context, const Connection& connection);

    StreamBytes _bytes; ///< from the next frame on
    FrameJudge _frames;
    bool _isAtEnd = false;

    bool _isOpen = false;   ///< messages of the next frame come out
    Frame _frame;           ///< that one
    std::size_t _inner = 0; ///< the next of its messages in it
    uint64_t _taken = 0;    ///< of them
    bool _isProven = false; ///< the first of them verifies

    bool _isSearching = false; ///< for a frame
    Loss _loss;                ///< since when

    std::optional<uint64_t> _sequence; ///< of the next frame
    std::string _message;              ///< identifier and body, where they do not stand so
};

} // namespace Capture
