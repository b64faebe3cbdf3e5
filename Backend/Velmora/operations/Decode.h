// Decoding: the fields of an existing value are overwritten in declaration order. Nothing is cleared beforehand;
// strings and vectors grow in the value's own block.
#pragma once

#include <concepts>

#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"
#include "Backend/Velmora/Wire.h"

namespace Velmora {

/// Reads all fields of `value` from `cursor` on, in that range, by an `In`, which is a Reader or has its interface;
/// returns the cursor after them. The cursor goes in and out by value, so that it stays in a register. `isFollowed`: at
/// least seven bytes of the same message come after the value.
template <class In, class T, bool isFollowed = false>
QL_FORCE_INLINE const char* decodeFields(T& value, const char* cursor, typename In::Bounds& range);

// One overload per wire form, the mirror of those in Encode.h.

template <class In>
QL_FORCE_INLINE void get(In& in, plain_t, std::same_as<bool> auto& v, const char*) {
    v = in.byte() != 0;
}
template <class In>
QL_FORCE_INLINE void get(In& in, plain_t, std::same_as<int8_t> auto& v, const char*) {
    v = static_cast<int8_t>(in.byte());
}
template <class In>
QL_FORCE_INLINE void get(In& in, plain_t, std::same_as<int16_t> auto& v, const char*) {
    v = unzigzag<int16_t>(in.template varint<uint16_t>());
}
template <class In>
QL_FORCE_INLINE void get(In& in, plain_t, std::same_as<int32_t> auto& v, const char*) {
    v = unzigzag<int32_t>(in.template varint<uint32_t>());
}
template <class In>
QL_FORCE_INLINE void get(In& in, plain_t, std::same_as<int64_t> auto& v, const char*) {
    v = unzigzag<int64_t>(in.template varint<uint64_t>());
}
template <class In>
QL_FORCE_INLINE void get(In& in, price_t, std::same_as<int64_t> auto& v, const char*) {
    v = static_cast<int64_t>(in.special());
}
template <class In>
QL_FORCE_INLINE void get(In& in, plain_t, std::same_as<uint8_t> auto& v, const char*) {
    v = in.byte();
}
template <class In, std::unsigned_integral T>
requires(sizeof(T) > 1) QL_FORCE_INLINE void get(In& in, plain_t, T& v, const char*) { v = in.template varint<T>(); }
template <class In, std::floating_point T>
QL_FORCE_INLINE void get(In& in, plain_t, T& v, const char*) {
    v = in.template raw<T>();
}
template <class In, std::integral T>
requires std::same_as<T, uint16_t> || std::same_as<T, uint32_t> || std::same_as<T, int64_t> QL_FORCE_INLINE void
get(In& in, fixed_t, T& v, const char*) {
    v = in.template raw<T>();
}

/// Any text; returns the cursor after it. Out of line, because it is met rarely, or costs more than the call.
template <class In>
[[gnu::noinline]] const char* getRareText(String auto& v, const char* cursor, typename In::Bounds& range) {
    In in(cursor, range);
    in.text(v, in.template varint<uint16_t>());
    return in.p;
}
template <class In>
QL_FORCE_INLINE void get(In& in, plain_t, String auto& v, const char*) {
    const size_t first = static_cast<unsigned char>(*in.p);
    // A short text, whose length is one byte, is stored inline if it is its string's first.
    if (first > Quillon::SHORT_COPY || !v.assignFirst(in.p + 1, first)) {
        in.p = getRareText<In>(v, in.p, in.range);
        return;
    }
    in.p += 1 + first;
}
template <class In>
QL_FORCE_INLINE void get(In& in, crypt_t, String auto& v, const char* name) {
    get(in, plain, v, name);
    if (!v.empty()) Quillon::DumbCrypt::decrypt(v.data(), static_cast<int>(v.size()), 0);
}
template <class In>
QL_FORCE_INLINE void get(In& in, blob_t, String auto& v, const char* name) {
    get(in, plain, v, name);
}
template <class In>
QL_FORCE_INLINE void get(In& in, cryptblob_t, String auto& v, const char* name) {
    get(in, crypt, v, name);
}
template <class In>
QL_FORCE_INLINE void get(In& in, fixed_t, String auto& v, const char*) {
    in.text(v, in.template raw<uint16_t>());
}
/// Deliberate: read with a varint length although written with a fixed one; see Encode.h.
template <class In>
QL_FORCE_INLINE void get(In& in, padding_t, String auto& v, const char* name) {
    get(in, plain, v, name);
}

/// The byte as it came: one without a name is reported to the hook and kept.
template <class In, Enumerator E>
QL_FORCE_INLINE void get(In& in, plain_t, E& v, const char* name) {
    const unsigned char byte = in.byte();
    v = static_cast<E>(byte);
    validate<EnumerationOf<E>>(byte, name);
}

template <class In>
QL_FORCE_INLINE void get(In& in, plain_t, Composite auto& v, const char*) {
    using T = std::remove_cvref_t<decltype(v)>;
    in.p =
        in.isFollowed() ? decodeFields<In, T, true>(v, in.p, in.range) : decodeFields<In, T, false>(v, in.p, in.range);
}

/// The vector takes exactly the count that came: it grows by fresh elements or drops surplus ones.
template <class In, class Encoding>
QL_FORCE_INLINE void get(In& in, Encoding encoding, Vector auto& v, const char* name) {
    using Element = typename std::remove_cvref_t<decltype(v)>::value_type;
    const size_t count = in.count();
    if constexpr (travelsAsHeld<Element, Encoding>) {
        v.resize(count);
        if (count != 0) std::memcpy(v.data(), in.p, count * sizeof(Element));
        in.p += count * sizeof(Element);
        return;
    }
    if (v.empty()) { // as in every fresh message
        if constexpr (Composite<Element> && leastBytes<Element>() >= 7) {
            size_t left = count; // all but the last are followed by another
            return v.append_each(count, [&](auto& element) QL_FORCE_INLINE_LAMBDA {
                if (--left == 0)
                    get(in, plain, element, name);
                else
                    in.p = decodeFields<In, Element, true>(element, in.p, in.range);
            });
        }
        return v.append_each(count, [&](auto& element) QL_FORCE_INLINE_LAMBDA { get(in, encoding, element, name); });
    }
    v.resize(count);
    for (size_t i = 0; i < count; ++i) get(in, encoding, v[i], name);
}

/// The walk over the fields, to be inlined into a kernel's run().
template <class In, class T, bool isFollowed>
QL_FORCE_INLINE const char* readFields(T& value, const char* cursor, typename In::Bounds& range) {
    In in(cursor, range, leastBytes<T>() + (isFollowed ? 7 : 0));
    fields(of<T>{}, [&](const char* name, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
        in.following -= leastBytes<MemberType<decltype(member)>, decltype(encoding)>();
        get(in, encoding, value.*member, name);
        return true;
    });
    return in.p;
}

template <class In, class T, bool isFollowed>
const char* decodeFields(T& value, const char* cursor, typename In::Bounds& range) {
    return In::Kernel::run([](T* v, const char* p, typename In::Bounds* bytes)
                               QL_FORCE_INLINE_LAMBDA { return readFields<In, T, isFollowed>(*v, p, *bytes); },
                           &value, cursor, &range);
}

/// All fields of `value` from the cursor of `codec`. When an exception passes, the value is partly decoded and
/// destructible, and the cursor stands where it stood.
template <class Kernel, class T>
QL_FORCE_INLINE void decode(T& value, FastCodec& codec) {
    using In = Reader<Kernel>;
    if constexpr (Message<T>) // one jump: the kernel's function takes and leaves the cursor itself
        Kernel::run(
            [](T* v, FastCodec* in)
                QL_FORCE_INLINE_LAMBDA { in->setCursor(readFields<In, T, false>(*v, in->cursor(), in->range())); },
            &value, &codec);
    else // the function that messages call for their records
        codec.setCursor(decodeFields<In>(value, codec.cursor(), codec.range()));
}
template <class T>
void decode(T& value, FastCodec& codec) {
    Quillon::fastDeposit ? decode<Bmi2>(value, codec) : decode<Baseline>(value, codec);
}

} // namespace Velmora
