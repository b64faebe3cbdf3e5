// Bodies by definition: what a writer makes of values, and what a reader makes of bytes.
//
// The reader is the library's own behind the verifier's policy `whole`: it takes every liberty of the decoder but bytes
// after the last value. A rolling reader also takes those, and missing last fields as zero: it is what peers run while
// an appended field is rolled out.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "generator/compare/WireGrammar.h"

namespace qlgen::compare {

enum class Reader : uint8_t {
    written, ///< takes the writer's forms, the fixed one of padding among them; for the writer's own bodies
    whole,
    rolling,
};

struct Value {
    enum class Kind : uint8_t { integer, real, text, enciphered };
    Kind kind = Kind::integer;
    bool isNegative = false;
    uint64_t bits = 0; ///< of a number; of floating point as it travels
    std::string text;  ///< an enciphered one as it travels

    bool isZero() const { return bits == 0 && text.empty(); }
    /// Numbers and texts by value; what cannot be compared is equal only if both are zero: never set.
    bool operator==(const Value& other) const;
};

/// The zero of a type, which is what a field holds that was never set.
Value zeroOf(const Item& item);
/// The number whose two's complement in `width` bits is `bits`.
Value integer(uint64_t bits, unsigned width, bool isSigned);

/// A value in its place. For a vector it is the count of its elements, whose values follow.
struct Place {
    const Item* item;
    std::vector<uint16_t> at; ///< positions in the vectors that hold it, from outside
    Value value;

    std::string path() const; ///< "contents.parameters[3].key"
    std::string text() const; ///< the value as people read it: an enumerator's name, a text in quotes
};
/// All values of a body in the order of its definition.
using Reading = std::vector<Place>;

std::optional<Reading> decode(Items items, std::string_view body, Reader reader);

/// The writer's bytes. The count of a vector must be the number of elements that follow.
std::string encode(const Reading& reading);

/// Whether the docs of two enumerators of one value say that they are different ones.
bool haveOtherDocs(const Enumerator& one, const Enumerator& other);

/// Whether `byte` stands for one enumerator at the writer and for another, or another's old name, at the reader.
bool changesMeaning(const EnumerationView& writer, const EnumerationView& reader, uint8_t byte);

/// Whether the reader took some value for another. A value that only the reader has must be zero: nobody sent it.
bool differ(const Reading& written, const Reading& read);

} // namespace qlgen::compare
