// Takes the messages out of the bytes of one direction of a connection, by a framing.
//
// A stream is in step as long as each frame fits where the one before it ends. A frame whose message does not verify may have
// a damaged length: it is taken only if the start of a frame with a known message follows, or nothing does, and no frame stands
// inside it. Where a frame does not fit, or bytes are missing, the next one is searched for byte by byte: one is believed if it
// has a known message that verifies, and if it is so short that this may be an accident, another may begin after it. Little is verified for nothing: no more than some bytes for
// each byte of the stream.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/Connection.h"
#include "Capture/Faults.h"
#include "Capture/Framing.h"
#include "Capture/Packet.h"
#include "Inspect/Protocol.h"

namespace Capture {

/// What all deframers of a capture share.
struct DeframerContext {
    const Framing& framing;
    const Inspect::Protocol& protocol;
    Faults& faults;
    int hints = 4; ///< that may still be looked for, which costs
};

/// Where bytes come from: the time and place of their packet.
struct Origin {
    int64_t time = 0;
    uint64_t offset = 0;
    std::size_t capture = 0;
};

class Deframer {
  public:
    /// The longest frame.
    static constexpr std::size_t LONGEST = MAX_PACKET + 4096;

    /// The next bytes of a stream. REQUIRES: next() was false.
    void take(std::string_view bytes, const Origin& origin);

    /// A datagram, of which the capture lacks so many bytes: it ends by itself. REQUIRES: next() was false.
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
    std::size_t memory() const { return _bytes.capacity() + _message.capacity() + _marks.capacity() * sizeof(Mark); }

  private:
    struct Frame {
        std::size_t size = 0;       ///< of all
        std::size_t begin = 0, end; ///< of the body or the messages
        uint64_t count = 0;         ///< of messages; 0 if it does not say
        uint64_t id = 0, sequence = 0;
    };
    struct Message {
        std::size_t size = 0;       ///< with what frames it between brackets
        std::size_t begin = 0, end; ///< of the body
        uint64_t id = 0;
    };
    enum class Fit { fits, misfit, needsMore };
    /// Why the stream is out of step.
    enum class Loss {
        inside, ///< it may have begun so: a fault only if bytes are skipped
        misfit, ///< no frame fits
        end,    ///< it ends inside a frame
        gap,    ///< bytes are missing
    };
    /// Of the bytes up to a position of the stream, from the mark before on.
    struct Mark {
        uint64_t end;
        Origin origin;
    };
    /// Why a frame does not fit.
    struct Misfit {
        const char* what = ""; ///< of the field
        uint64_t value = 0;
        const char* is = "";
        uint64_t limit = 0;
    };

    std::string_view rest(std::size_t at) const { return std::string_view(_bytes).substr(at); }
    Fit frameAt(const Framing& framing, std::string_view bytes, Frame& frame);
    Fit rowAt(const Framing::Row& row, std::string_view bytes, std::size_t whole, std::size_t longest, Frame& frame);
    Fit messageAt(const Framing& framing, std::string_view bytes, const Frame& frame, std::size_t at, Message& message);
    Fit misfit(const Misfit& why);
    bool isSound(DeframerContext& context, const Framing& framing, std::string_view bytes, const Frame& frame);
    Fit isBelieved(DeframerContext& context, const Framing& framing, std::string_view bytes, bool isEnd);
    Fit headerAt(const Framing& framing, std::string_view bytes, Frame& frame);
    bool holdsFrame(DeframerContext& context, std::string_view bytes);
    Fit isFollowed(DeframerContext& context, std::string_view bytes);
    bool mayBecomeFrame(DeframerContext& context, std::string_view bytes, const Frame& frame);
    bool openFrame(DeframerContext& context, const Connection& connection);
    bool nextOfFrame(DeframerContext& context, const Connection& connection, Packet& packet);
    void closeFrame();
    void emit(DeframerContext& context, const Connection& connection, const Message& it, Packet& packet);
    void loseStep(Loss loss, std::string reason);
    bool findStep(DeframerContext& context, const Connection& connection);
    void tellLoss(DeframerContext& context, const Connection& connection);
    void checkSequence(DeframerContext& context, const Connection& connection);
    std::string hint(DeframerContext& context);
    const Origin& originOf(uint64_t position) const;

    std::string _bytes;     ///< what is held of the stream
    uint64_t _position = 0; ///< of the first of them in the stream
    std::size_t _at = 0;    ///< of the next frame in them
    std::vector<Mark> _marks;

    bool _isOpen = false;   ///< messages of the frame at _at come out
    Frame _frame;           ///< that one
    std::size_t _inner = 0; ///< the next of its messages in it
    uint64_t _taken = 0;    ///< of them

    bool _isAtEnd = false, _isDatagram = false;
    std::size_t _missing = 0; ///< bytes of the datagram that the capture lacks

    // While a frame is searched for:
    bool _isSearching = false;
    Loss _loss = Loss::inside;
    std::string _reason;
    uint64_t _lostAt = 0;      ///< position at which the step was lost
    uint64_t _lostMissing = 0; ///< bytes since then that the capture lacks
    Origin _lostOrigin;

    Misfit _misfit;                    ///< the last one
    uint64_t _verified = 0;            ///< bytes that might have been messages
    std::optional<uint64_t> _sequence; ///< of the next frame
    std::string _message;              ///< identifier and body, where they do not stand so
};

} // namespace Capture
