// Decoding: the fields of an existing value are overwritten in declaration order. Nothing is cleared beforehand;
// strings and vectors grow in the value's own block.
#pragma once

#include <concepts>

#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"

namespace Velmora {

// One overload per wire form, the mirror of those in Encode.h.

FORCE_INLINE void get(FastCodec& codec, plain_t, std::same_as<bool> auto& v, const char*) { v = codec.read_bool(); }
FORCE_INLINE void get(FastCodec& codec, plain_t, std::same_as<int8_t> auto& v, const char*) {
    v = static_cast<int8_t>(codec.read_int8());
}
FORCE_INLINE void get(FastCodec& codec, plain_t, std::same_as<int16_t> auto& v, const char*) { v = codec.read_int16(); }
FORCE_INLINE void get(FastCodec& codec, plain_t, std::same_as<int32_t> auto& v, const char*) { v = codec.read_int32(); }
FORCE_INLINE void get(FastCodec& codec, plain_t, std::same_as<int64_t> auto& v, const char*) { v = codec.read_int64(); }
FORCE_INLINE void get(FastCodec& codec, price_t, std::same_as<int64_t> auto& v, const char*) {
    v = codec.read_qlfloat();
}
FORCE_INLINE void get(FastCodec& codec, plain_t, String auto& v, const char*) { codec.read_string(v); }
FORCE_INLINE void get(FastCodec& codec, crypt_t, String auto& v, const char*) { codec.read_cryptstring(v); }
/// Deliberate: read with a varint length although written with a fixed one; see Encode.h.
FORCE_INLINE void get(FastCodec& codec, padding_t, String auto& v, const char*) { codec.read_string(v); }

/// The byte as it came: one without a name is reported to the hook and kept.
template <Enumerator E>
FORCE_INLINE void get(FastCodec& codec, plain_t, E& v, const char* name) {
    const unsigned char byte = codec.read_uint8();
    v = static_cast<E>(byte);
    validate<EnumerationOf<E>>(byte, name);
}

/// A record goes through its own read, on a copy of the cursor; see Encode.h.
FORCE_INLINE void get(FastCodec& codec, plain_t, Composite auto& v, const char*) {
    FastCodec handedOver = codec;
    v.read(handedOver);
    codec = handedOver;
}

/// The vector takes exactly the count that came: it grows by fresh elements or drops surplus ones.
FORCE_INLINE void get(FastCodec& codec, plain_t, Vector auto& v, const char* name) {
    v.resize(codec.read_length());
    for (size_t i = 0; i < v.size(); ++i) get(codec, plain, v[i], name);
}

/// All fields of `value` from the cursor of `codec`. When an exception passes, the value is partly decoded and
/// destructible, and the cursor stands where it stood.
template <class T>
void decode(T& value, FastCodec& codec) {
    FastCodec cursor = codec; // a local: stores into strings could change the codec itself
    fields(of<T>{}, [&](const char* name, auto member, auto encoding) FORCE_INLINE_LAMBDA {
        get(cursor, encoding, value.*member, name);
        return true;
    });
    codec = cursor;
}

} // namespace Velmora
