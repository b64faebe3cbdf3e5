// The walk behind verify(): over the field lists, with one of two walkers that know the wire forms.
//
//   Canonical   takes what write() produces, fast, and tells nothing about anything else
//   Judge       byte by byte; knows the policy, and finds the first fault
//
// A body goes through the first, and only if that refuses it through the second. A walker's functions take the position
// of a value and return the one after it, or null when the value is refused. A position is never advanced before the
// bytes up to there are known to exist: all tests are on what remains.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>
#include <string_view>

#include "Inspect/MessageTable.h"
#include "Inspect/SizeWalk.h"
#include "Inspect/Verify.h"

namespace Inspect::walk {

using Velmora::Composite;
using Velmora::EnumerationOf;
using Velmora::Enumerator;
using Velmora::fixed_t;
using Velmora::MemberType;
using Velmora::of;
using Velmora::plain;
using Velmora::plain_t;
using Velmora::price_t;
using Velmora::String;
using Velmora::Vector;

inline unsigned char byte_at(const char* p) { return static_cast<unsigned char>(*p); }

/// Significant bits of a price whose two low bits are zero, taken as one varint, and of what follows its first byte.
inline constexpr unsigned PRICE = 66;
inline constexpr unsigned PRICE_REST = 59;

/// A varint of `bits` significant bits takes at most this many bytes.
constexpr unsigned longest(unsigned bits) { return (bits + 6) / 7; }

/// Whether an enumerator of H travels as that byte, which is the low one of its value.
template <class H>
QL_FORCE_INLINE bool is_known(unsigned byte) {
    struct Set {
        uint64_t words[4] = {};
        unsigned lowest = 255, highest = 0, count = 0;
    };
    static constexpr Set known = [] {
        Set set;
        enumerators(of<H>{}, [&](const char*, auto value) {
            const unsigned low = static_cast<unsigned>(value) & 0xFF;
            set.count += (set.words[low >> 6] >> (low & 63) & 1) == 0;
            set.words[low >> 6] |= uint64_t{1} << (low & 63);
            set.lowest = std::min(set.lowest, low);
            set.highest = std::max(set.highest, low);
        });
        return set;
    }();
    if constexpr (known.highest - known.lowest + 1 == known.count)
        return byte - known.lowest <= known.highest - known.lowest; // nearly all; what lies below has wrapped around
    else
        return (known.words[byte >> 6] >> (byte & 63) & 1) != 0;
}

class Canonical {
  public:
    Canonical(const char* begin, const char* end)
        : _end(end), _afterLook(end - begin >= LOOK ? reinterpret_cast<uintptr_t>(end - LOOK) + 1 : 0) {}

    QL_FORCE_INLINE const char* byte(const char* p) const { return p != _end ? p + 1 : refused(); }
    QL_FORCE_INLINE const char* boolean(const char* p) const {
        return p != _end && byte_at(p) <= 1 ? p + 1 : refused();
    }
    template <class H>
    QL_FORCE_INLINE const char* enumerator(const char* p) const {
        return p != _end && is_known<H>(byte_at(p)) ? p + 1 : refused();
    }

    template <unsigned Bits>
    QL_FORCE_INLINE const char* varint(const char* p) const {
        if (isRoomy(p)) return roomy_varint<Bits>(p);
        return p != _end && signed_at(p) >= 0 ? p + 1 : last_number<Bits>(p);
    }
    QL_FORCE_INLINE const char* price(const char* p) const {
        if (!isRoomy(p)) return last_price(p);
        const unsigned first = byte_at(p);
        if (__builtin_expect((first & 0x83) == 0x80, 1)) return after_more<PRICE>(p);
        return (first & 0x83) == 0 || is_sentinel(first) ? ended<1>(p) : refused();
    }
    /// A varint of 16 bits, and `n` characters, which is what it says.
    QL_FORCE_INLINE const char* string(const char* p, size_t& n) const {
        if (p == _end) return refused();
        n = byte_at(p);
        uintptr_t after = reinterpret_cast<uintptr_t>(p) + 1; // a number: it may lie beyond the body
        if (n >= 0x80) {
            const Length length = long_length(p); // null and 0 where it is refused
            n = length.value;
            after = reinterpret_cast<uintptr_t>(length.text);
        }
        after += n;
        return after <= reinterpret_cast<uintptr_t>(_end) ? reinterpret_cast<const char*>(after) : refused();
    }
    QL_FORCE_INLINE const char* count(const char* p, size_t& n) const {
        if (p == _end) return refused();
        n = byte_at(p);
        if (n < 0x80) return p + 1;
        if (remaining(p) < 2) return refused();
        n = (n << 8 | byte_at(p + 1)) & 0x7FFF;
        return n >= 0x80 ? p + 2 : refused();
    }
    /// `n` bytes in a form that has no other.
    QL_FORCE_INLINE const char* fixed(const char* p, size_t n) const { return remaining(p) >= n ? p + n : refused(); }
    QL_FORCE_INLINE const char* text(const char* p, size_t n, const char*) const { return fixed(p, n); }
    /// Not asked: where elements are missing, the bytes run out.
    QL_FORCE_INLINE static bool can_hold(const char*, size_t, size_t, const char*) { return true; }

  private:
    static constexpr std::ptrdiff_t LOOK = 9; ///< bytes that are looked at without a test

    /// No position. The empty statement keeps the compiler from choosing the next position without a branch: it would
    /// then wait for the bytes of this value, where the processor else goes on with the value it expects.
    QL_FORCE_INLINE static const char* refused() {
        __asm__ volatile("");
        return nullptr;
    }
    /// After a number of N bytes. Each length has a branch of its own, for the same reason.
    template <unsigned N>
    QL_FORCE_INLINE static const char* ended(const char* p) {
        p += N;
        __asm__("" : "+r"(p));
        if (p == nullptr) __builtin_unreachable(); // which it cannot know then
        return p;
    }

    size_t remaining(const char* p) const { return static_cast<size_t>(_end - p); }
    /// Whether all of any number remains, a rare tenth byte apart.
    QL_FORCE_INLINE bool isRoomy(const char* p) const {
        return __builtin_expect(reinterpret_cast<uintptr_t>(p) < _afterLook, 1);
    }

    static bool is_sentinel(unsigned first) { return first == 0x03 || first == 0x05 || first == 0x07; }

    /// Whether another byte follows each of eight.
    QL_FORCE_INLINE static bool is_all_more(const char* p) {
        return _mm_movemask_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))) == 0xFF;
    }
    /// Negative where another byte follows.
    static signed char signed_at(const char* p) { return static_cast<signed char>(*p); }

    /// The last byte of the longest varint of `Bits` bits is at most this.
    template <unsigned Bits>
    static constexpr int lastMax = (1 << (Bits - 7 * (longest(Bits) - 1))) - 1;

    /// The end of a varint at `p`, of which N bytes continue. All tests are on single bytes: lengths repeat from message to
    /// message, so the processor goes on to the next value at the length it expects instead of waiting for this one. A last
    /// byte of zero adds nothing, which no canonical form has.
    template <unsigned Bits, unsigned N = 1>
    QL_FORCE_INLINE const char* after_more(const char* p) const {
        if constexpr (N + 1 == longest(Bits)) {
            if (N >= LOOK && p + N == _end) return refused();
            if (Bits == PRICE && is_all_more(p + 1)) return refused(); // perhaps a sentinel in its long form
            return signed_at(p + N) > 0 && signed_at(p + N) <= lastMax<Bits> ? ended<N + 1>(p) : refused();
        } else {
            if (signed_at(p + N) > 0) return ended<N + 1>(p);
            return signed_at(p + N) != 0 ? after_more<Bits, N + 1>(p) : refused();
        }
    }

    /// The end of a varint where nine bytes remain.
    template <unsigned Bits>
    QL_FORCE_INLINE const char* roomy_varint(const char* p) const {
        if constexpr (longest(Bits) > LOOK) {
            if (__builtin_expect(is_all_more(p), 1)) // times, and numbers near the limits
                return after_more<Bits, 8>(p);
        }
        return signed_at(p) >= 0 ? ended<1>(p) : after_more<Bits>(p);
    }

    /// The end of a number of which fewer than nine bytes remain.
    template <unsigned Bits>
    [[gnu::noinline]] const char* last_number(const char* p) const {
        for (unsigned n = 1; p != _end; ++n, ++p) {
            if (signed_at(p) > 0)
                return n < longest(Bits) || (n == longest(Bits) && signed_at(p) <= lastMax<Bits>) ? p + 1 : nullptr;
            if (signed_at(p) == 0) return n == 1 ? p + 1 : nullptr;
        }
        return nullptr;
    }

    [[gnu::noinline]] const char* last_price(const char* p) const {
        if (p == _end || (byte_at(p) & 0x03) == 0) return last_number<PRICE>(p);
        return is_sentinel(byte_at(p)) ? p + 1 : nullptr;
    }

    /// Returned by value: what a call could change through its address would not stay in a register.
    struct Length {
        const char* text;
        size_t value;
    };
    [[gnu::noinline]] Length long_length(const char* p) const {
        const char* const text = varint<16>(p);
        if (text == nullptr) return {nullptr, 0};
        size_t value = (byte_at(p) & 0x7Fu) | (byte_at(p + 1) & 0x7Fu) << 7;
        if (text - p == 3) value |= size_t{byte_at(p + 2)} << 14;
        return {text, value};
    }

    const char* const _end;
    const uintptr_t _afterLook; ///< the first position from which fewer than nine bytes remain; 0 in a body of so few
};

class Judge {
  public:
    /// `zeros` are as many as the smallest body has.
    Judge(std::string_view body, std::string_view zeros, const Policy& policy)
        : _body(body), _zeros(zeros), _end(body.data() + body.size()), _policy(policy) {}

    Fault fault() const { return _fault; }
    const char* at() const { return _at; } ///< the faulty value

    /// Where one of the last fields is judged: at `p` or, if the body ends there and may, in the zeros. They last for all
    /// that can be missing.
    const char* last_field(const char* p) {
        if (p != _end || _isBeyondBody || !_policy.missingLastFields) return p;
        _isBeyondBody = true;
        _end = _zeros.data() + _zeros.size();
        return _zeros.data();
    }
    /// Of a position in the body or in the zeros after it.
    size_t offset(const char* p) const {
        return _isBeyondBody ? _body.size() + static_cast<size_t>(p - _zeros.data())
                             : static_cast<size_t>(p - _body.data());
    }

    /// Notes the first fault, of the value at `p`.
    const char* refuse(Fault why, const char* p) {
        _fault = why;
        _at = p;
        return nullptr;
    }

    const char* byte(const char* p) { return p != _end ? p + 1 : refuse(Fault::truncated, p); }
    const char* fixed(const char* p, size_t n) { return remaining(p) >= n ? p + n : refuse(Fault::truncated, p); }
    const char* boolean(const char* p);
    template <class H>
    const char* enumerator(const char* p) {
        return enumerator(p, p != _end && is_known<H>(byte_at(p)));
    }
    template <unsigned Bits>
    const char* varint(const char* p) {
        uint64_t value;
        return varint(p, p, Bits, value);
    }
    const char* price(const char* p);
    const char* string(const char* p, size_t& n);
    const char* count(const char* p, size_t& n);
    /// The characters of a string whose length stands at `start`.
    const char* text(const char* p, size_t n, const char* start) {
        return remaining(p) >= n ? p + n : refuse(Fault::truncated, start);
    }
    /// Whether the bytes from `p` on can hold that many elements, whose count stands at `start`.
    bool can_hold(const char* p, size_t n, size_t elementSize, const char* start) {
        if (remaining(p) / elementSize < n) refuse(Fault::countBeyondBytes, start);
        return _fault == Fault::none;
    }

  private:
    size_t remaining(const char* p) const { return static_cast<size_t>(_end - p); }
    const char* enumerator(const char* p, bool isKnown);
    const char* varint(const char* p, const char* start, unsigned bits, uint64_t& value);

    const std::string_view _body;
    const std::string_view _zeros;
    const char* _end; // of the one that is walked over
    bool _isBeyondBody = false;
    const Policy& _policy;
    Fault _fault = Fault::none;
    const char* _at = nullptr;
};

// Goes in and out by value, so that it stays in registers.
using detail::Position;

// One overload per kind of value, the mirror of those of Velmora::get.

template <class Walker>
QL_FORCE_INLINE void check(of<int8_t>, plain_t, Position& at, Walker& walker) {
    at.p = walker.byte(at.p);
}
template <class Walker>
QL_FORCE_INLINE void check(of<bool>, plain_t, Position& at, Walker& walker) {
    at.p = walker.boolean(at.p);
}
template <class Walker>
QL_FORCE_INLINE void check(of<int16_t>, plain_t, Position& at, Walker& walker) {
    at.p = walker.template varint<16>(at.p);
}
template <class Walker>
QL_FORCE_INLINE void check(of<int32_t>, plain_t, Position& at, Walker& walker) {
    at.p = walker.template varint<32>(at.p);
}
template <class Walker>
QL_FORCE_INLINE void check(of<int64_t>, plain_t, Position& at, Walker& walker) {
    at.p = walker.template varint<64>(at.p);
}
template <class Walker>
QL_FORCE_INLINE void check(of<int64_t>, price_t, Position& at, Walker& walker) {
    at.p = walker.price(at.p);
}
template <class Walker>
QL_FORCE_INLINE void check(of<uint8_t>, plain_t, Position& at, Walker& walker) {
    at.p = walker.byte(at.p);
}
template <std::unsigned_integral T, class Walker>
requires(sizeof(T) > 1) QL_FORCE_INLINE void check(of<T>, plain_t, Position& at, Walker& walker) {
    at.p = walker.template varint<8 * sizeof(T)>(at.p);
}
template <std::floating_point T, class Walker>
QL_FORCE_INLINE void check(of<T>, plain_t, Position& at, Walker& walker) {
    at.p = walker.fixed(at.p, sizeof(T));
}
template <std::integral T, class Walker>
QL_FORCE_INLINE void check(of<T>, fixed_t, Position& at, Walker& walker) {
    at.p = walker.fixed(at.p, sizeof(T));
}
template <Enumerator E, class Walker>
QL_FORCE_INLINE void check(of<E>, plain_t, Position& at, Walker& walker) {
    at.p = walker.template enumerator<EnumerationOf<E>>(at.p);
}

template <String T, class Encoding, class Walker>
QL_FORCE_INLINE void check(of<T>, Encoding, Position& at, Walker& walker) {
    size_t length = 0;
    const char* const start = at.p;
    if constexpr (std::same_as<Encoding, fixed_t>) {
        at.p = walker.fixed(start, 2);
        if (at.p == nullptr) return;
        length = size_t{byte_at(start)} | size_t{byte_at(start + 1)} << 8;
        at.p = walker.text(at.p, length, start);
    } else {
        at.p = walker.string(start, length);
    }
    at.blockBytes += length + 1;
}

template <class T, class Walker>
[[gnu::noinline]] Position check_fields(Position at, Walker& walker);
template <class T, class Walker>
Position check_fields_in_place(Position at, Walker& walker);

template <Composite T, class Walker>
QL_FORCE_INLINE void check(of<T>, plain_t, Position& at, Walker& walker) {
    at = check_fields<T>(at, walker);
}

template <Vector V, class Encoding, class Walker>
QL_FORCE_INLINE void check(of<V>, Encoding encoding, Position& at, Walker& walker) {
    using Element = typename V::value_type;
    size_t count;
    const char* const start = at.p;
    at.p = walker.count(start, count);
    if (at.p == nullptr) return;
    if (!walker.can_hold(at.p, count, minimal_size<Element, Encoding>(), start)) {
        at.p = nullptr;
        return;
    }
    at.blockBytes += count * sizeof(Element);
    for (; count != 0 && at.p != nullptr; --count)
        if constexpr (Composite<Element>)
            at = check_fields_in_place<Element>(at, walker);
        else
            check(of<Element>{}, encoding, at, walker);
}

/// Strings in a T itself, those in vectors apart.
template <class T>
consteval size_t count_strings() {
    if constexpr (String<T>) return 1;
    size_t count = 0;
    if constexpr (Composite<T>)
        fields(of<T>{}, [&](const char*, auto member, auto) {
            count += count_strings<MemberType<decltype(member)>>();
            return true;
        });
    return count;
}

/// The step of the derivation in Verify.h: an element and the NULs of its strings.
template <class Element, class Encoding>
inline constexpr bool isBounded = sizeof(Element) + count_strings<Element>() <= 33 * minimal_size<Element, Encoding>();

template <class T, class Walker>
QL_FORCE_INLINE Position check_fields_in_place(Position at, Walker& walker) {
    fields(of<T>{}, [&](const char*, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
        using M = MemberType<decltype(member)>;
        if constexpr (Vector<M>) static_assert(isBounded<typename M::value_type, decltype(encoding)>);
        check(of<M>{}, encoding, at, walker);
        return at.p != nullptr;
    });
    return at;
}
template <class T, class Walker>
Position check_fields(Position at, Walker& walker) {
    return check_fields_in_place<T>(at, walker);
}

template <class T>
Position canonical(const char* begin, const char* end) {
    const Canonical walker(begin, end);
    return check_fields_in_place<T>(Position{begin, 0}, walker);
}

/// The fields that nothing but each other follow: those of a message, then those of a record that is the last of them,
/// all the way down. A body may end before any of them where the policy says so.
template <class T>
Position judge_last_fields(Position at, Judge& walker) {
    size_t left = 0;
    const auto count = [&](auto&&...) { return ++left != 0; };
    fields(of<T>{}, count);
    fields(of<T>{}, [&](const char*, auto member, auto encoding) {
        using M = MemberType<decltype(member)>;
        at.p = walker.last_field(at.p);
        --left;
        if constexpr (Composite<M>)
            at = left == 0 ? judge_last_fields<M>(at, walker) : check_fields<M>(at, walker);
        else
            check(of<M>{}, encoding, at, walker);
        return at.p != nullptr;
    });
    return at;
}

template <class T>
Result judge(const char* begin, const char* end, const Policy& policy) {
    static constexpr std::array<char, Velmora::leastBytes<T>()> zeros{};
    const std::string_view body(begin, static_cast<size_t>(end - begin));
    Judge walker(body, {zeros.data(), zeros.size()}, policy);
    const Position last = judge_last_fields<T>(Position{begin, 0}, walker);
    Result result{.id = T::ID, .begin = begin, .end = end};
    if (last.p != nullptr && walker.offset(last.p) < body.size() && !policy.trailingBytes)
        walker.refuse(Fault::trailingBytes, last.p);
    result.fault = walker.fault();
    const size_t reached = walker.offset(result ? last.p : walker.at());
    result.consumed = std::min(reached, body.size());
    if (result) {
        result.blockBytes = last.blockBytes;
        result.missing = reached - result.consumed;
    } else {
        result.offset = reached;
    }
    return result;
}

} // namespace Inspect::walk

namespace Inspect::detail {

template <class T>
constexpr Verifier entry(Velmora::of<Verifier>, Velmora::of<T>) {
    return {&tables::type_of<T>(), &walk::canonical<T>, &walk::judge<T>};
}

} // namespace Inspect::detail
