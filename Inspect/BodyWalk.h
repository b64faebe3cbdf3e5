// Walks the bytes of a body along the reflection tables: which bytes hold which value, without building a message.
//
//     Inspect::walk_body(*type, body, [](const Inspect::BodyValue& value) {
//         print(value.path, value.begin, value.end, value.number);
//         return true; // false ends the walk
//     });
//
// Values are decoded as read() does, liberties included. The walk never leaves the body: where that ends early, the
// bytes that are missing read as zeros and further values are empty. Whoever does not want those verifies the body
// first (Verify.h) and ends the walk at the fault.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "Inspect/Reflection.h"

namespace Inspect {

/// A value that has bytes of its own: a number, a string, the count of a vector. A record has none besides its fields.
struct BodyValue {
    const ValueInfo& value;
    const FieldInfo& field; ///< whose value it is, or in whose vector
    std::string_view path;  ///< as in "contents.parameters[3].value"; valid during the call
    size_t begin;           ///< offset of its first byte
    size_t end;             ///< after its last byte
    int64_t number;         ///< the number, of a uint64 its pattern; of a string its length, of a vector its count
    std::string_view bytes; ///< of a string: its text as it travels
    bool isSecret;          ///< not to be shown in logs
    double real = 0;        ///< the number, if it is a floating-point one

    /// The text of a string, deciphered where it travels enciphered.
    std::string text() const;
};

/// Deliberate: paddings are written with a length of two bytes, but read with a varint.
enum class PadForm { read, written };

/// Visits the values in the order in which they travel. Returns whether it came to the end.
bool walk_body(const TypeInfo& type, std::string_view body, const std::function<bool(const BodyValue&)>& visit,
               PadForm padForm = PadForm::read);

} // namespace Inspect
