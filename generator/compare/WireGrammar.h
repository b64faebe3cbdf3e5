// What a definition says about the bytes of a message: a flat sequence of values, records opened, vectors as a count and
// a sequence that repeats.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "generator/compare/Model.h"

namespace qlgen::compare {

/// How a value's first bytes tell where it ends.
enum class Framing : uint8_t {
    byte,      ///< one byte
    varint,    ///< up to the first byte without bit 7
    fixed,     ///< as many bytes as its type has
    text,      ///< a varint of 16 bits, and as many bytes
    fixedText, ///< two bytes, and as many as they say
    count,     ///< one byte, or two if bit 7 of the first is set; that many elements follow
};

struct Item {
    const LogicalType* type; ///< of an enumeration an unsigned byte, of a vector that of its count
    std::string path;        ///< "contents.parameters[].key"
    std::string key;         ///< the same by identities: equal in both definitions for one and the same value
    const EnumerationView* enumeration = nullptr;
    bool mayEndBefore = false; ///< whether a body may end here for a reader that takes missing last fields as zero
    std::vector<Item> element; ///< of a vector
    bool isVector = false;

    bool isPrice() const { return type->form == WireForm::special; }
    bool isPadding() const { return type->form == WireForm::padding; }
    bool isZigzag() const { return type->form == WireForm::zigzag; }
    bool isSigned() const { return type->kind == ValueKind::signedInteger; }
    bool isText() const { return type->kind == ValueKind::text || type->kind == ValueKind::bytes; }
    Framing written() const;
    Framing read() const; ///< the same but for padding
};
using Sequence = std::vector<Item>;
using Items = std::span<const Item>;

/// Types to be taken instead of others: how a definition looks with one change and no other.
struct Edit {
    const CompositeView* composite = nullptr;
    CompositeView editedComposite;
    const EnumerationView* enumeration = nullptr;
    EnumerationView editedEnumeration;
};

/// The body of a message.
Sequence flatten(const CompositeView& message, const Edit* edit = nullptr);

} // namespace qlgen::compare
