// Messages as JSON, both ways and exactly: message to JSON to message gives an equal message.
//
//   message, record   object, its fields by their declared names; all of them, in declaration order when written
//   vector            array
//   bool              true, false
//   int8 to int32     number
//   int64             string of decimal digits or number, as asked when written; both when read. The sentinels by name:
//                     "MAX", "NMA", "NDA", "NA"
//   enumeration       the enumerator's name; the number of a value that has none. Both when read
//   string            string; null for one that was never stored, "" for one stored empty. Bytes that are no valid
//                     UTF-8 stand as \xHH and a backslash as \\ in the string's value, which JSON's own escapes come on
//                     top of: the byte FF is "\\xff" in the JSON text
//
// The identifier stands beside the JSON, as it stands beside a body. Reading is strict: names that are missing, unknown
// or given twice, values of another type or out of range are errors that tell the path. It takes time linear in the
// text, and no memory besides the block but for the longest string that holds escapes; nothing nests deeper than the
// message does. The module need not be initialised.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Inspect/Display.h"
#include "Inspect/Protocol.h"

namespace Inspect {

/// How 64-bit integers are written: many readers of JSON hold numbers as doubles, which are exact up to 2^53 only.
enum class Integers { strings, numbers };

class JsonError : public std::runtime_error {
  public:
    JsonError(const std::string& path, const std::string& reason)
        : std::runtime_error(path.empty() ? reason : path + ": " + reason), _path(path) {}

    /// The value concerned, as in "contents.parameters[3].value"; empty if it is the whole.
    const std::string& path() const { return _path; }

  private:
    std::string _path;
};

/// The text is good, but its message does not fit the block: a string or a vector needs more than there is left, or
/// more than the whole block.
class DoesNotFit : public std::out_of_range {
  public:
    explicit DoesNotFit(const std::string& path) : std::out_of_range(path + ": does not fit the block"), _path(path) {}

    /// The string or vector that was to grow.
    const std::string& path() const { return _path; }

  private:
    std::string _path;
};

class JsonCursor; // Inspect/JsonCursor.h

/// How a text is read, and what is found wrong with it: for people, who leave out what does not matter to them and want to
/// know of all their errors at once.
struct JsonReading {
    bool isPartial = false;             ///< whether fields may be missing: they stay zero, strings never stored
    size_t mostErrors = 1;              ///< the last of them is thrown
    std::vector<JsonError> errors = {}; ///< those before it; what is missing comes at the end of its record

    /// Keeps an error, so that reading goes on. Throws it if it is the last.
    void keep(const JsonError& error);
    /// The same of the value that begins at `start`, which is passed over. Also throws what says that the text is no JSON.
    void keep(const JsonError& error, JsonCursor& json, size_t start);
};

/// The message as JSON on one line, in which no character ends a line or steers a terminal. Throws JsonError for an
/// unknown identifier.
std::string to_json(const Protocol& protocol, Velmora::MsgType_t id, const void* message,
                    Integers integers = Integers::strings);
inline std::string to_json(Velmora::MsgType_t id, const void* message, Integers integers = Integers::strings) {
    return to_json(default_protocol(), id, message, integers);
}

/// The same after what `text` holds, as people want to see it. Hidden secrets are "***" and divided prices decimal digits
/// and a point, in strings where integers are; neither can be read back. Throws JsonError for an unknown identifier.
void append_json(const Protocol& protocol, Velmora::MsgType_t id, const void* message, Integers integers,
                 const Display& display, std::string& text);
inline void append_json(Velmora::MsgType_t id, const void* message, Integers integers, const Display& display,
                        std::string& text) {
    append_json(default_protocol(), id, message, integers, display, text);
}

/// A string's value alone: in quotes, in the form that it has in a message.
std::string json_text(std::string_view bytes);

template <class T>
std::string to_json(const T& message, Integers integers = Integers::strings) {
    return to_json(protocol_of<Velmora::ProtocolOf<T>>(), T::ID, &message, integers);
}

/// Sets the message, which must be freshly constructed, from JSON. Throws JsonError when the text is wrong and
/// DoesNotFit when the block is too small, and nothing else; the message is then partly set and destructible.
void from_json(const Protocol& protocol, Velmora::MsgType_t id, std::string_view json, void* message);
inline void from_json(Velmora::MsgType_t id, std::string_view json, void* message) {
    from_json(default_protocol(), id, json, message);
}

/// The same from the next value of a longer text, in whose errors paths begin with `name`, as in "body.tqid". When it
/// returns, the message is whole only if no errors were kept.
void from_json(const Protocol& protocol, Velmora::MsgType_t id, JsonCursor& json, void* message, JsonReading& reading,
               std::string_view name = {});
inline void from_json(Velmora::MsgType_t id, JsonCursor& json, void* message, JsonReading& reading,
                      std::string_view name = {}) {
    from_json(default_protocol(), id, json, message, reading, name);
}

template <class T>
void from_json(std::string_view json, T& message) {
    from_json(protocol_of<Velmora::ProtocolOf<T>>(), T::ID, json, &message);
}

} // namespace Inspect
