// Messages on a stream of bytes. docs/framing.md tells the form to the byte: length, identifier, body.
//
//     FrameReader reader;
//     const std::span<char> room = reader.room();
//     reader.received(recv(socket, room.data(), room.size(), 0));
//     for (Frame frame; reader.next(frame);) ... frame.id, frame.body ...
//
// Bodies are not looked at: verify them before they are decoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "Inspect/Checked.h"

namespace Host {

using Velmora::MsgType_t;

struct Frame {
    MsgType_t id = 0;
    std::string_view body;
};

/// A length that no frame has: what follows cannot be told apart.
class FrameError : public std::runtime_error {
  public:
    FrameError(uint64_t offset, const std::string& what) : std::runtime_error(what), _offset(offset) {}
    uint64_t offset() const { return _offset; } ///< of the frame in the stream

  private:
    uint64_t _offset;
};

class FrameReader {
  public:
    static constexpr size_t LENGTH_SIZE = 4, IDENTIFIER_SIZE = 2;
    static constexpr size_t LONGEST_BODY = 256 * 1024; ///< unless told otherwise

    explicit FrameReader(size_t longestBody = LONGEST_BODY);

    /// Where the next bytes of the stream go; not empty. Ends the validity of frames. Its size grows with what arrives,
    /// not with what a length announces.
    std::span<char> room();
    /// So many bytes stand there now.
    void received(size_t size);

    /// The next frame that is there in whole; false if more bytes are needed. It is valid until room() is called. Throws
    /// FrameError as soon as the length is there, and from then on.
    bool next(Frame& frame);

    uint64_t offset() const { return _offset; }       ///< of the next frame in the stream
    bool isBetween() const { return _begin == _end; } ///< whether the stream may end here
    size_t memory() const { return _buffer.capacity(); }

  private:
    static constexpr size_t ROOM = 4096; // asked for at least at a time

    const size_t _longestBody;
    std::vector<char> _buffer;
    size_t _begin = 0, _end = 0; // of what has come and is not taken
    uint64_t _offset = 0;
};

/// Gathers frames to be sent by one call.
class FrameWriter {
  public:
    explicit FrameWriter(size_t longestBody = FrameReader::LONGEST_BODY) : _longestBody(longestBody) {}

    /// Throws std::length_error for a body that is longer than readers take.
    void append(MsgType_t id, std::string_view body);
    /// The same of a message that is encoded for it. What cannot be encoded, or is too long, is in the outcome and adds
    /// nothing; `size` is that of the body.
    Inspect::Encoded append(const Inspect::Protocol& protocol, MsgType_t id, const void* message);

    std::string_view bytes() const { return {_buffer.data(), _buffer.size()}; } ///< all frames; what is to be sent
    /// The first bytes have been sent, whole frames or not.
    void sent(size_t size);

  private:
    const size_t _longestBody;
    std::vector<char> _buffer;
};

} // namespace Host
