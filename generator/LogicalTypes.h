// The types that a definition can name without declaring them, and how their values travel.
#pragma once

#include <span>
#include <string_view>

namespace qlgen {

/// How a value that is neither a record nor a vector stands on the wire.
enum class WireForm {
    boolean,   ///< one byte, 0 or 1; any other byte reads as true
    byte,      ///< one byte as it is; enumerations, too
    zigzag,    ///< plain varint of (v << 1) ^ (v >> (bits - 1))
    varint,    ///< plain varint
    special,   ///< special varint, with one-byte sentinels
    fixed,     ///< bits / 8 bytes, the low one first
    text,      ///< length as a varint of 16 bits, then the bytes
    fixedText, ///< length in two bytes, the low one first, then the bytes
    padding,   ///< written as fixedText and read as text
};

/// What a value is to those who read it.
enum class ValueKind { boolean, signedInteger, unsignedInteger, floating, text, bytes };

struct LogicalType {
    std::string_view name;     ///< in the definition
    std::string_view cppType;  ///< of the member
    std::string_view encoding; ///< the tag of Velmora
    ValueKind kind;
    WireForm form;
    unsigned bits = 0;         ///< of a number; 0 for texts and bytes
    bool isEnciphered = false; ///< its bytes, after the length, pass through the cipher

    bool holdsStorage() const { return kind == ValueKind::text || kind == ValueKind::bytes; }
};

std::span<const LogicalType> logicalTypes();

/// The type of that name, or null.
const LogicalType* findLogicalType(std::string_view name);

} // namespace qlgen
