// All values of a message known only by its identifier, each with its path: for filters, listings and searches.
//
//     struct Print : Inspect::ValueVisitor {
//         bool value(Inspect::Path path, const Inspect::Value& value) override { ...; return true; }
//     };
//
// Records are walked through and do not appear themselves, and vectors only to those who ask how many elements they have.
// Two messages of a type are equal if and only if they show the same. The module need not be initialised.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "Inspect/Reflection.h"

namespace Inspect {

/// A step from a message to a value in it.
struct PathPiece {
    std::string_view name; ///< of a field; empty for an element of a vector
    size_t index = 0;      ///< of an element
};

using Path = std::span<const PathPiece>;

/// As in "contents.parameters[3].value".
std::string path_text(Path path);

struct Value {
    Kind kind;             ///< never record
    int64_t number = 0;    ///< the value, of a uint64 its pattern; of vectors the number of elements, of strings 0
    double real = 0;       ///< of floating-point numbers
    std::string_view text; ///< of strings and blobs
    bool isStored = true;  ///< of strings: false for one that was never stored
    const EnumerationInfo* enumeration = nullptr; ///< of enumerations
    bool isSecret = false;                        ///< not to be shown in logs
    bool isTime = false;                          ///< of a field that holds the time at a station

    bool is_text() const { return is_bytes(kind); }
};

class ValueVisitor {
  public:
    virtual ~ValueVisitor() = default;

    /// Takes the next value, in declaration order; false ends the walk. The path is valid until the return.
    virtual bool value(Path path, const Value& value) = 0;

    /// Is told of a vector before its elements; false ends the walk.
    virtual bool vector(Path /*path*/, const Value& /*vector*/) { return true; }
};

/// The value of what is no text as people call it: "true", "BID", "NA", "-7"; as a number where it has no name.
std::string number_text(const Value& value);

/// The same with prices divided and times shown as `display` has it.
std::string number_text(const Value& value, const Display& display);

/// Shows all values of the message to the visitor; none if the identifier is unknown. False if the visitor ended it.
bool walk_values(const Protocol& protocol, Velmora::MsgType_t id, const void* message, ValueVisitor& visitor);
inline bool walk_values(Velmora::MsgType_t id, const void* message, ValueVisitor& visitor) {
    return walk_values(default_protocol(), id, message, visitor);
}

/// The same as a table of the caller's own describes it, which may hold more fields to be secret than the protocol does.
/// REQUIRES: the identifier is known, and `type` has the fields and records of its message.
bool walk_values(const Protocol& protocol, Velmora::MsgType_t id, const TypeInfo& type, const void* message,
                 ValueVisitor& visitor);
inline bool walk_values(Velmora::MsgType_t id, const TypeInfo& type, const void* message, ValueVisitor& visitor) {
    return walk_values(default_protocol(), id, type, message, visitor);
}

} // namespace Inspect
