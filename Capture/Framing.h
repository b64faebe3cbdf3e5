// How messages stand in the bytes of a network, as users state it: a row of fields, with commas between them.
//
//     length:u32le, id:u16le, body
//     0x514C:u16be, length:u16be=frame, seq:u32be, id:u16be, body
//     seq:u64be=messages, count:u16be, (length:u16be, id:u16le, body)
//
//   NAME:SIZE       a number of u8, u16, u32 or u64, the last three with the byte order: le (low byte first) or be
//   length          of what follows it in the frame; length:u32be=body, of the body; length:u32be=frame, of the whole frame.
//                   A number after that is added to what it counts: length:u16be=body+2
//   id              the message's identifier
//   body            the message's bytes; to the end of the frame if nothing tells their length
//   seq             a number that the next frame of the connection and direction has one more of; seq:u32be=messages, as many
//                   more as the frame has messages
//   count           how many messages the frame has
//   skip            a number that says nothing here; is written as 0
//   0x514C:u16be    a number that stands there always, decimal or hexadecimal
//   ( ... )         several messages: what stands between the brackets comes again up to the end of the frame, or as often as
//                   count says. A length between them is that of the one message
//
// A frame on a stream tells its length outside of brackets. In a datagram, which ends by itself, it need not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Capture {

/// A text that is no framing: says where and why.
class FramingError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Framing {
  public:
    struct Field {
        enum class Kind : uint8_t { constant, length, id, sequence, count, skip };
        Kind kind;
        uint8_t size; ///< bytes
        bool isHighFirst;
        uint64_t value = 0; ///< of a constant
        std::size_t at = 0; ///< in front of the body: from the start of the row; after it: from its end
        bool isAfterBody = false;
    };

    /// What a length counts.
    enum class Counts : uint8_t { rest, body, frame };

    /// A row of fields around a body, or around messages.
    struct Row {
        std::vector<Field> fields;
        std::size_t before = 0, after = 0; ///< bytes of the fields there
        std::size_t lengthEnd = 0;         ///< where the length ends; 0 if there is none
        Counts counts = Counts::rest;
        int64_t more = 0; ///< that the length is greater by than what it counts

        bool hasLength() const { return lengthEnd != 0; }
        /// The value of the length of a body of so many bytes, and the other way round; the latter may be negative.
        int64_t lengthOf(int64_t body) const { return body + around() + more; }
        int64_t bodyOf(uint64_t length) const { return static_cast<int64_t>(length) - more - around(); }

      private:
        int64_t around() const {
            const std::size_t bytes = counts == Counts::body    ? 0
                                      : counts == Counts::frame ? before + after
                                                                : before - lengthEnd + after;
            return static_cast<int64_t>(bytes);
        }
    };

    /// Of a framing's text, or the name of a preset. Throws FramingError.
    static Framing of(std::string_view text);

    /// As of() would take it.
    std::string text() const;

    const Row& frame() const { return _frame; }
    const Row* message() const { return _message ? &*_message : nullptr; } ///< what stands between brackets
    bool countsMessages() const { return _countsMessages; }                ///< the sequence number does
    /// The row that holds the identifier and the body.
    const Row& inner() const { return _message ? *_message : _frame; }
    /// Whether it says where a frame ends.
    bool fitsStreams() const { return _frame.hasLength(); }

    /// Whether identifier and body stand as in the packets of captures.
    bool isAsInPackets() const { return _isAsInPackets; }

    /// Framings that are like this one but for byte orders or what lengths count.
    std::vector<Framing> relatives() const;

    /// Names of the presets, with their texts.
    struct Preset {
        std::string_view name, text;
    };
    static const std::vector<Preset>& presets();

  private:
    class Parser;

    void noteId();

    Row _frame;
    std::optional<Row> _message;
    bool _countsMessages = false;
    bool _isAsInPackets = false;
};

} // namespace Capture
