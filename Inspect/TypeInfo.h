// What types consist of: the entries of the tables that reflection hands out (Reflection.h). All of it is static.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "Backend/Velmora/MsgDescriptor.h"

namespace Inspect {

/// What a value is and thereby how it travels.
enum class Kind : uint8_t {
    boolean,     ///< one byte
    int8,        ///< one byte
    int16,       ///< zig-zag varint
    int32,       ///< zig-zag varint
    int64,       ///< zig-zag varint
    price,       ///< int64_t as the special varint
    uint8,       ///< one byte
    uint16,      ///< plain varint
    uint32,      ///< plain varint
    uint64,      ///< plain varint
    uint16Fixed, ///< two bytes, the low one first
    uint32Fixed, ///< four bytes
    int64Fixed,  ///< eight bytes
    float4,      ///< four bytes
    float8,      ///< eight bytes
    string,      ///< length as a varint, then the bytes
    stringFixed, ///< length in two bytes, the low one first, then the bytes
    cryptstring, ///< as a string, enciphered
    padding,     ///< read as a string; written as a stringFixed
    blob,        ///< as a string; its bytes are no text
    cryptblob,   ///< the same, enciphered
    enumeration, ///< one byte
    record,      ///< its fields, one after the other
    vector,      ///< count, then the elements
};

constexpr bool is_bytes(Kind kind) { return kind >= Kind::string && kind <= Kind::cryptblob; } ///< strings and blobs
constexpr bool is_floating(Kind kind) { return kind == Kind::float4 || kind == Kind::float8; }

// What the definition says for people stands in `doc`, what is to be used no more tells why in `deprecated`. Texts that are
// not given are empty.

struct EnumeratorInfo {
    std::string_view name;
    int32_t value;
    std::string_view doc = {};
    std::string_view deprecated = {};
};

struct EnumerationInfo {
    std::string_view name;
    std::span<const EnumeratorInfo> enumerators; ///< in declaration order
    std::string_view doc = {};
    std::string_view deprecated = {};
};

struct TypeInfo;

struct ValueInfo {
    Kind kind;
    const EnumerationInfo* enumeration = nullptr; ///< of an enumeration
    const TypeInfo* record = nullptr;             ///< of a record
    const ValueInfo* element = nullptr;           ///< of a vector
};

struct FieldInfo {
    std::string_view name;
    ValueInfo value;
    size_t minimalSize; ///< fewest bytes on the wire, as read() takes it
    bool isSecret;      ///< marked as not to be shown in logs; see is_secret_in()
    std::string_view doc = {};
    std::string_view deprecated = {};
    std::string_view identifies = {}; ///< what the value is the identifier of, as in "order"
    std::string_view station = {};    ///< where the time that it holds was taken, as in "exchange"

    /// Whether its value is secret, given whether the record is that it stands in: all that a secret record holds is.
    constexpr bool is_secret_in(bool isRecordSecret) const { return isRecordSecret || isSecret; }
};

/// Fields of a record or a message at most.
inline constexpr size_t MAX_FIELDS = 512; // as qlgen allows

/// A record or a message.
struct TypeInfo {
    std::string_view name;
    std::span<const FieldInfo> fields; ///< in declaration order, which is wire order
    size_t minimalSize;                ///< fewest bytes on the wire, as read() takes it
    size_t memorySize;                 ///< bytes of the object, without what it owns in its block
    std::string_view doc = {};
    std::string_view deprecated = {};
};

struct MessageInfo {
    Velmora::MsgType_t id;
    const TypeInfo* type;
};

namespace tables {

/// A member of a template, so that records can be pointed to before they are defined.
template <class T>
struct TypeTable {
    static const TypeInfo type; ///< defined in ReflectionTables.h
};

#pragma GCC diagnostic push
#ifdef __clang__ // compiled in one source of each protocol
#pragma GCC diagnostic ignored "-Wundefined-var-template"
#endif
/// What T consists of.
template <class T>
constexpr const TypeInfo& type_of() {
    return TypeTable<T>::type;
}
#pragma GCC diagnostic pop

} // namespace tables
} // namespace Inspect
