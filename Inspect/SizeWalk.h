// How many bytes a value takes, on the wire and in a block, without writing or building anything.
//
//   encoded_size            the exact bytes that write() of this value writes
//   max_encoded_size        the most that any value within given limits takes
//   minimal_size            the least that read() of the type takes
//   required_block_bytes    the exact bytes that a fresh copy of this value takes from its block, besides the object
//                           itself: a stored string of length L takes L + 1, one that was never stored nothing, a
//                           vector of n elements n * sizeof(element), plus what the elements own
//
// What a body takes when it is decoded is told by verify(): there every string takes L + 1, for the wire does not tell
// empty strings from those never stored.
#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>

#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"

namespace Inspect {

inline constexpr size_t MAX_TEXT = 65535;  ///< characters of the longest string that can travel
inline constexpr size_t MAX_COUNT = 32767; ///< elements of the longest vector that can travel

namespace sizes {

using Velmora::blob_t;
using Velmora::Composite;
using Velmora::crypt_t;
using Velmora::cryptblob_t;
using Velmora::Enumerator;
using Velmora::fixed_t;
using Velmora::of;
using Velmora::padding_t;
using Velmora::plain;
using Velmora::plain_t;
using Velmora::price_t;
using Velmora::String;
using Velmora::Vector;

/// Bytes of the plain varint of `value`: one for each seven bits begun.
QL_FORCE_INLINE constexpr size_t varint(uint64_t value) {
    return (9 * static_cast<size_t>(std::bit_width(value | 1)) + 64) / 64;
}
/// Bytes of a zig-zag varint; narrower values take as many in their own width.
QL_FORCE_INLINE constexpr size_t zigzag(int64_t value) {
    return varint(static_cast<uint64_t>(value) << 1 ^ static_cast<uint64_t>(value >> 63));
}
QL_FORCE_INLINE constexpr size_t count(size_t n) { return n > 127 ? 2 : 1; }

// One overload per wire form, the mirror of those of Velmora::put. Where put drops bits, so do these: the size is that
// of what is written, even of values that should not be.

QL_FORCE_INLINE size_t encoded(plain_t, std::same_as<bool> auto) { return 1; }
QL_FORCE_INLINE size_t encoded(plain_t, std::same_as<int8_t> auto) { return 1; }
QL_FORCE_INLINE size_t encoded(plain_t, Enumerator auto) { return 1; }
QL_FORCE_INLINE size_t encoded(plain_t, std::same_as<int16_t> auto v) { return zigzag(v); }
QL_FORCE_INLINE size_t encoded(plain_t, std::same_as<int32_t> auto v) { return zigzag(v); }
QL_FORCE_INLINE size_t encoded(plain_t, std::same_as<int64_t> auto v) { return zigzag(v); }
QL_FORCE_INLINE size_t encoded(price_t, std::same_as<int64_t> auto v) {
    if (v == Velmora::NMA || v == Velmora::NDA || v == Velmora::NA) return 1;
    const uint64_t rest = static_cast<uint64_t>(v) >> 5;
    return rest != 0 ? 1 + varint(rest) : 1;
}
QL_FORCE_INLINE size_t encoded(plain_t, std::same_as<uint8_t> auto) { return 1; }
template <std::unsigned_integral T>
requires(sizeof(T) > 1) QL_FORCE_INLINE size_t encoded(plain_t, T v) { return varint(v); }
QL_FORCE_INLINE size_t encoded(plain_t, std::floating_point auto v) { return sizeof v; }
QL_FORCE_INLINE size_t encoded(fixed_t, std::integral auto v) { return sizeof v; }
QL_FORCE_INLINE size_t encoded(plain_t, const String auto& v) {
    return varint(static_cast<uint16_t>(v.size())) + v.size();
}
QL_FORCE_INLINE size_t encoded(crypt_t, const String auto& v) { return encoded(plain, v); }
QL_FORCE_INLINE size_t encoded(blob_t, const String auto& v) { return encoded(plain, v); }
QL_FORCE_INLINE size_t encoded(cryptblob_t, const String auto& v) { return encoded(plain, v); }
QL_FORCE_INLINE size_t encoded(fixed_t, const String auto& v) { return 2 + v.size(); }
QL_FORCE_INLINE size_t encoded(padding_t, const String auto& v) { return 2 + v.size(); }
template <Composite T>
size_t encoded(plain_t, const T& v);
template <class Encoding>
QL_FORCE_INLINE size_t encoded(Encoding encoding, const Vector auto& v) {
    size_t size = count(static_cast<uint16_t>(v.size()));
    for (size_t i = 0; i < v.size(); ++i) size += encoded(encoding, v[i]);
    return size;
}
template <Composite T>
size_t encoded(plain_t, const T& v) {
    size_t size = 0;
    fields(of<T>{}, [&](const char*, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
        size += encoded(encoding, v.*member);
        return true;
    });
    return size;
}

} // namespace sizes

/// Bytes that write() of the value writes.
template <Velmora::Composite T>
size_t encoded_size(const T& value) {
    return sizes::encoded(Velmora::plain, value);
}

/// What a host allows its values to hold. More than can travel counts as what can travel.
struct Limits {
    size_t text = MAX_TEXT;   ///< characters of every string
    size_t count = MAX_COUNT; ///< elements of every vector
};

/// The most bytes that write() of a value within `limits` writes. T: a record, a message or the type of a field.
template <class T, class Encoding = Velmora::plain_t>
constexpr size_t max_encoded_size(Limits limits) {
    using namespace Velmora;
    constexpr bool hasFixedLength = std::same_as<Encoding, padding_t> || std::same_as<Encoding, fixed_t>;
    const size_t text = std::min(limits.text, MAX_TEXT);
    const size_t count = std::min(limits.count, MAX_COUNT);
    if constexpr (Composite<T>) {
        size_t size = 0;
        fields(of<T>{}, [&](const char*, auto member, auto encoding) {
            size += max_encoded_size<MemberType<decltype(member)>, decltype(encoding)>(limits);
            return true;
        });
        return size;
    } else if constexpr (Vector<T>) {
        return sizes::count(count) + count * max_encoded_size<typename T::value_type, Encoding>(limits);
    } else if constexpr (String<T>) {
        return (hasFixedLength ? 2 : sizes::varint(text)) + text;
    } else if constexpr (std::same_as<T, bool> || Enumerator<T>) {
        return 1;
    } else if constexpr (travelsAsHeld<T, Encoding>) {
        return sizeof(T);
    } else {
        static_assert(std::integral<T>);
        // One byte for each seven bits begun; a price has five in its first, the other 59 in nine: ten as well.
        static_assert((64 - 5 + 6) / 7 + 1 == 10);
        return (8 * sizeof(T) + 6) / 7;
    }
}

/// The fewest bytes that read() of a T takes. T: a record, a message or the type of a field. The codec's own figure,
/// for it relies on no value taking less.
template <class T, class Encoding = Velmora::plain_t>
constexpr size_t minimal_size() {
    return Velmora::leastBytes<T, Encoding>();
}

/// Bytes that assigning `value` to a freshly constructed T takes from its block.
template <class T>
size_t required_block_bytes(const T& value) {
    using namespace Velmora;
    size_t size = 0;
    if constexpr (String<T>) {
        size = value.size_();
    } else if constexpr (Vector<T>) {
        using Element = typename T::value_type;
        size = value.size() * sizeof(Element);
        if constexpr (holdsStorage<Element>())
            for (const Element& element : value) size += required_block_bytes(element);
    } else if constexpr (Composite<T>) {
        fields(of<T>{}, [&](const char*, auto member, auto) {
            if constexpr (holdsStorage<MemberType<decltype(member)>>()) size += required_block_bytes(value.*member);
            return true;
        });
    }
    return size;
}

} // namespace Inspect
