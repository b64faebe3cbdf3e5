// One direction of a TCP connection: its segments in order, each byte once.
//
// Segments that come early wait for those before them. If these have not come after 3 seconds of the capture's time, or 1 MB,
// or when the stream ends, they are missing, and the stream goes on after them. Of bytes that come twice, those hold that were handed on first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "Capture/Deframer.h"

namespace Capture {

class TcpStream {
  public:
    static constexpr std::size_t MOST_WAITING = 1024 * 1024; ///< bytes
    static constexpr int64_t LONGEST_WAIT = 3'000'000'000;   ///< nanoseconds

    struct Segment {
        uint32_t sequence = 0;
        bool isFirst = false; ///< SYN: the stream begins after its number
        bool isLast = false;  ///< FIN: and ends here
        std::string_view bytes;
        std::size_t missing = 0; ///< bytes that the capture cut off
    };

    /// Whether a segment with that number may belong to the stream.
    bool mayTake(const Segment& segment) const;

    /// Takes a segment in. REQUIRES: next() was false.
    void take(const Segment& segment, const Origin& origin);

    /// The next message, valid until the next call; false if more segments are needed.
    bool next(DeframerContext& context, const Connection& connection, Packet& message);

    /// No more segments come: what waits does so no longer.
    void finish() { _isFinished = true; }

    /// Bytes held.
    std::size_t memory() const { return _waitingBytes + _deframer.memory(); }

    bool isBegun() const { return _isBegun; }
    Deframer& deframer() { return _deframer; }
    bool isOver() const { return _isBegun && _position >= _end; } ///< all up to the last one has come

  private:
    struct Early {
        std::string bytes;
        std::size_t missing;
        Origin origin;
    };
    static constexpr std::size_t NODE = 128; ///< bytes that one of them takes besides its own

    void deliver(std::string_view bytes, std::size_t missing, uint64_t at, const Origin& origin);
    bool advance();

    bool _isBegun = false, _isFinished = false;
    uint32_t _first = 0;              ///< the sequence number of position 0
    uint64_t _position = 0;           ///< of the next byte
    uint64_t _end = UINT64_MAX;       ///< position after the last byte
    uint64_t _lost = 0;               ///< bytes missing in front of what comes next
    std::map<uint64_t, Early> _early; ///< by position
    std::size_t _waitingBytes = 0;
    int64_t _waitingSince = 0;
    int64_t _now = 0;
    Deframer _deframer;
};

} // namespace Capture
