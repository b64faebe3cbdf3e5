// Encoding: the fields of a value in declaration order, each in its wire form, with nothing before, between or after
// them.
#pragma once

#include <concepts>

#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"
#include "Backend/Velmora/Wire.h"

namespace Velmora {

/// Writes all fields of `value` from `cursor` on, by an `Out`, which is a Writer or has its interface; returns the
/// cursor after them. The cursor goes in and out by value, so that it stays in a register: stores through a char pointer
/// could change any cursor in memory. The work is done by the kernel's run(), so that its instructions stand in
/// functions that bear its name and nowhere else. `isFollowed`: at least seven bytes of the same message come after the
/// value.
template <class Out, class T, bool isFollowed = false>
QL_FORCE_INLINE char* encodeFields(const T& value, char* cursor, typename Out::Bounds bounds);

// One overload per wire form. Exact types are asked for, so that a wrong pair of type and encoding does not compile.

template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, std::same_as<bool> auto v, const char*) {
    out.byte(v);
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, std::same_as<int8_t> auto v, const char*) {
    out.byte(static_cast<unsigned char>(v));
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, std::same_as<int16_t> auto v, const char*) {
    out.varint(zigzag<uint16_t>(v));
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, std::same_as<int32_t> auto v, const char*) {
    out.varint(zigzag<uint32_t>(v));
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, std::same_as<int64_t> auto v, const char*) {
    out.varint(zigzag<uint64_t>(v));
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, price_t, std::same_as<int64_t> auto v, const char*) {
    out.special(v);
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, std::same_as<uint8_t> auto v, const char*) {
    out.byte(v);
}
template <class Out, std::unsigned_integral T>
requires(sizeof(T) > 1) QL_FORCE_INLINE void put(Out& out, plain_t, T v, const char*) { out.varint(v); }
template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, std::floating_point auto v, const char*) {
    out.raw(v);
}
template <class Out, std::integral T>
requires std::same_as<T, uint16_t> || std::same_as<T, uint32_t> || std::same_as<T, int64_t> QL_FORCE_INLINE void
put(Out& out, fixed_t, T v, const char*) {
    out.raw(v);
}

/// The caller guarantees a text of at most 65535 characters: only the low 16 bits of its length are written.
template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, const String auto& v, const char*) {
    const char* const text = v.data(); // looked up once: what is stored through a char pointer could change the string
    out.text(text, v.size());
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, crypt_t, const String auto& v, const char* name) {
    put(out, plain, v, name);
    if (!v.empty() && out.isOpen()) Quillon::DumbCrypt::encrypt(out.p - v.size(), static_cast<int>(v.size()), 0);
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, blob_t, const String auto& v, const char* name) {
    put(out, plain, v, name);
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, cryptblob_t, const String auto& v, const char* name) {
    put(out, crypt, v, name);
}
template <class Out>
QL_FORCE_INLINE void put(Out& out, fixed_t, const String auto& v, const char*) {
    out.fixedText(v.data(), v.size());
}
/// Deliberate: written with a fixed two-byte length, read with a varint one. The body is two bytes plus the padding,
/// whatever its length; peers depend on it.
template <class Out>
QL_FORCE_INLINE void put(Out& out, padding_t, const String auto& v, const char* name) {
    put(out, fixed, v, name);
}

/// One byte, whatever the enumeration's largest value; a byte without a name is reported to the hook and written all
/// the same.
template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, Enumerator auto v, const char* name) {
    const auto byte = static_cast<unsigned char>(v);
    validate<EnumerationOf<decltype(v)>>(byte, name);
    out.byte(byte);
}

template <class Out>
QL_FORCE_INLINE void put(Out& out, plain_t, const Composite auto& v, const char*) {
    using T = std::remove_cvref_t<decltype(v)>;
    out.p = out.following >= 7 ? encodeFields<Out, T, true>(v, out.p, out.bounds)
                               : encodeFields<Out, T, false>(v, out.p, out.bounds);
}

/// The caller guarantees at most 32767 elements; a Writer does not check the count.
template <class Out, class Encoding>
QL_FORCE_INLINE void put(Out& out, Encoding encoding, const Vector auto& v, const char* name) {
    out.count(v.size());
    using Element = typename std::remove_cvref_t<decltype(v)>::value_type;
    if constexpr (travelsAsHeld<Element, Encoding>) return out.held(v.data(), v.size() * sizeof(Element));
    size_t i = 0;
    if constexpr (Composite<Element> && leastBytes<Element>() >= 7) // all but the last are followed by another
        for (; i + 1 < v.size() && out.fits(); ++i) out.p = encodeFields<Out, Element, true>(v[i], out.p, out.bounds);
    for (; i < v.size() && out.fits(); ++i) put(out, encoding, v[i], name);
    out.fits(); // for the fields to come
}

/// The walk over the fields, to be inlined into a kernel's run().
template <class Out, class T, bool isFollowed>
QL_FORCE_INLINE char* writeFields(const T& value, char* cursor, typename Out::Bounds bounds) {
    Out out(cursor, leastBytes<T>() + (isFollowed ? 7 : 0), bounds);
    fields(of<T>{}, [&](const char* name, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
        using M = MemberType<decltype(member)>;
        out.following -= leastBytes<M, decltype(encoding)>();
        put(out, encoding, value.*member, name);
        return !holdsStorage<M>() || out.isOpen(); // numbers never end the walk
    });
    return out.p;
}

template <class Out, class T, bool isFollowed>
char* encodeFields(const T& value, char* cursor, typename Out::Bounds bounds) {
    return Out::Kernel::run([](const T* v, char* p, typename Out::Bounds b)
                                QL_FORCE_INLINE_LAMBDA { return writeFields<Out, T, isFollowed>(*v, p, b); },
                            &value, cursor, bounds);
}

/// All fields of `value` at the cursor of `codec`.
template <class Kernel, class T>
QL_FORCE_INLINE void encode(const T& value, FastCodec& codec) {
    using Out = Writer<Kernel>;
    if constexpr (Message<T>) // one jump: the kernel's function takes and leaves the cursor itself
        Kernel::run([](const T* v, FastCodec* out)
                        QL_FORCE_INLINE_LAMBDA { out->setCursor(writeFields<Out, T, false>(*v, out->cursor(), {})); },
                    &value, &codec);
    else // the function that messages call for their records
        codec.setCursor(encodeFields<Out>(value, codec.cursor(), {}));
}
template <class T>
void encode(const T& value, FastCodec& codec) {
    Quillon::fastDeposit ? encode<Bmi2>(value, codec) : encode<Baseline>(value, codec);
}

} // namespace Velmora
