// Encoding: the fields of a value in declaration order, each in its wire form, with nothing before, between or after
// them.
#pragma once

#include <concepts>

#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"

namespace Velmora {

// One overload per wire form. Exact types are asked for, so that a wrong pair of type and encoding does not compile.

FORCE_INLINE void put(FastCodec& codec, plain_t, std::same_as<bool> auto v, const char*) { codec.write_bool(v); }
FORCE_INLINE void put(FastCodec& codec, plain_t, std::same_as<int8_t> auto v, const char*) {
    codec.write_int8(static_cast<char>(v));
}
FORCE_INLINE void put(FastCodec& codec, plain_t, std::same_as<int16_t> auto v, const char*) { codec.write_int16(v); }
FORCE_INLINE void put(FastCodec& codec, plain_t, std::same_as<int32_t> auto v, const char*) { codec.write_int32(v); }
FORCE_INLINE void put(FastCodec& codec, plain_t, std::same_as<int64_t> auto v, const char*) { codec.write_int64(v); }
FORCE_INLINE void put(FastCodec& codec, price_t, std::same_as<int64_t> auto v, const char*) { codec.write_qlfloat(v); }
FORCE_INLINE void put(FastCodec& codec, plain_t, const String auto& v, const char*) { codec.write_string(v); }
FORCE_INLINE void put(FastCodec& codec, crypt_t, const String auto& v, const char*) { codec.write_cryptstring(v); }
/// Deliberate: written with a fixed two-byte length, read with a varint one. The body is two bytes plus the padding,
/// whatever its length; peers depend on it.
FORCE_INLINE void put(FastCodec& codec, padding_t, const String auto& v, const char*) { codec.write_string_fixed(v); }

/// One byte, whatever the enumeration's largest value; a byte without a name is reported to the hook and written all
/// the same.
FORCE_INLINE void put(FastCodec& codec, plain_t, Enumerator auto v, const char* name) {
    const auto byte = static_cast<unsigned char>(v);
    validate<EnumerationOf<decltype(v)>>(byte, name);
    codec.write_uint8(byte);
}

/// A record goes through its own write, out of line. It is handed a copy of the cursor, because a cursor whose address
/// leaves this function could not stay in a register.
FORCE_INLINE void put(FastCodec& codec, plain_t, const Composite auto& v, const char*) {
    FastCodec handedOver = codec;
    v.write(handedOver);
    codec = handedOver;
}

/// The caller guarantees at most 32767 elements; the count is not checked.
FORCE_INLINE void put(FastCodec& codec, plain_t, const Vector auto& v, const char* name) {
    codec.write_length(static_cast<unsigned short>(v.size()));
    for (size_t i = 0; i < v.size(); ++i) put(codec, plain, v[i], name);
}

/// All fields of `value` at the cursor of `codec`.
template <class T>
void encode(const T& value, FastCodec& codec) {
    FastCodec cursor = codec; // a local: stores through a char pointer could change the codec itself
    fields(of<T>{}, [&](const char* name, auto member, auto encoding) FORCE_INLINE_LAMBDA {
        put(cursor, encoding, value.*member, name);
        return true;
    });
    codec = cursor;
}

} // namespace Velmora
