// A message as a line of JSON: the envelope that all commands write and `encode` reads.
//
//     {"time": "1709535600.000000042", "message": "TimerMessage", "id": 53284, "body": {"tqid": 7}}
//
//   time      seconds since 1970, or UTC; may be left out, and is then 0
//   message   the name
//   id        the identifier, which must be that of the message; may be left out
//   body      as in Inspect/Json.h
//   hex       the body's bytes, where encoding `body` gives others: pads, which are read in another form than they are
//             written in, and what only a tolerant reader takes. Must mean the same message as `body`
//
// Lines whose secrets are hidden or whose prices are divided say so (redacted, priceScale), for no packet can be made
// of them. What a command knows besides stands after the envelope and is passed over when read: packet, gap
// and connection (trace), kind, name, text, strict, whole and written (corpus). Any other name, a name given twice and a value of
// another form are errors that tell the JSON path.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Capture/Packet.h"
#include "Capture/SeededHash.h"
#include "Inspect/Json.h"
#include "Inspect/JsonCursor.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

/// Characters that a packet's line has at most: no byte of a body becomes more than 64, field name included.
inline constexpr std::size_t LONGEST_LINE = 64 * Capture::MAX_PACKET + 4096;

/// Writes a line, member by member, after what `text` holds.
class MessageLineWriter {
  public:
    explicit MessageLineWriter(std::string& text) : _text(text) {}

    void time(int64_t time, TimeForm form);
    /// Name, identifier and body of a message, and its bytes where they would else be lost.
    void message(const MessageReader& reader, const Inspect::Display& display = {},
                 Inspect::Integers integers = Inspect::Integers::strings);
    /// Name and identifier alone.
    void message(std::string_view name, Velmora::MsgType_t id);
    /// A member of that name, whose value is `json`.
    void member(std::string_view name, std::string_view json);
    void end() { _text += "}\n"; }

  private:
    /// Writes the name of the next member.
    void begin(std::string_view name);

    std::string& _text;
    char _before = '{';
};

/// Makes packets of lines, in memory that is used again for the next. The protocol must be initialised.
class MessageLineReader {
  public:
    /// Errors that are told of one line.
    static constexpr std::size_t MOST_ERRORS = 20;

    /// By `policy` bytes in a line are judged that are not as the writer writes them. If a line may be partial, the body may
    /// be missing, too.
    explicit MessageLineReader(const Inspect::Policy& policy = Inspect::whole, bool isPartial = false);

    /// The line's packet, valid until the next call. Throws Inspect::JsonError, the first of errors().
    Capture::Packet read(std::string_view line);

    /// What is wrong with the line that was read last.
    const std::vector<Inspect::JsonError>& errors() const { return _reading.errors; }

  private:
    struct Envelope;

    Capture::Packet packetOf(std::string_view line);
    void member(std::string_view name, Inspect::JsonCursor& json, Envelope& line);
    const Inspect::MessageInfo& messageNamed(std::string_view name) const;
    /// Encodes what the body says.
    void encodeBody(const Inspect::MessageInfo& message, Inspect::JsonCursor& json);
    /// Whether those bytes mean the message that was encoded.
    bool isOfBody(Velmora::MsgType_t id, std::string_view bytes);

    Capture::SeededMap<std::string_view, const Inspect::MessageInfo*> _messages; ///< by name
    std::unique_ptr<char[]> _block;                                              ///< the message and what it owns
    std::unique_ptr<char[]> _packet;                                             ///< identifier and body
    std::size_t _size = 0;                                                       ///< of the body
    MessageReader _reader;                                                       ///< of bytes that stand in a line
    Inspect::JsonReading _reading;
};

} // namespace qlproto
