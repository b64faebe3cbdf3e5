// The walk behind verify(): one check per wire form, over the field lists.
//
// Each check takes the position of a value and returns the one behind it, or null when the value is refused. The checks
// here accept only canonical forms, and fast: one byte first, then eight at a time. All else, also what merely stands
// close to the end of the body, goes to the judges in Verify.cpp, which read byte by byte and know the policy.
//
// A position is never advanced before the bytes up to there are known to exist: all tests are on what remains.
#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>

#include "Inspect/Sizes.h"
#include "Inspect/Verify.h"

namespace Inspect::walk {

using namespace Velmora;

/// What one verification knows.
struct State {
    State(const char* begin_, const char* end_, const Policy& policy_)
        : end(end_), lastWord(end_ - begin_ >= 8 ? end_ - 8 : nullptr), policy(policy_) {}

    size_t remaining(const char* p) const { return static_cast<size_t>(end - p); }

    /// Notes the first fault, of the value at `p`.
    const char* refuse(Fault why, const char* p) {
        fault = why;
        at = p;
        return nullptr;
    }

    const char* const end;
    const char* const lastWord; ///< the last eight bytes of the body; null if it is shorter
    const Policy& policy;
    size_t blockBytes = 0;
    Fault fault = Fault::none;
    const char* at = nullptr; ///< the faulty value
};

inline unsigned char byteAt(const char* p) { return static_cast<unsigned char>(*p); }

/// Significant bits of what follows the first byte of a price.
inline constexpr unsigned PRICE_REST = 59;

/// A varint of `Bits` significant bits takes at most this many bytes, the last of which is at most lastMax.
template <unsigned Bits>
inline constexpr unsigned longest = (Bits + 6) / 7;
template <unsigned Bits>
inline constexpr unsigned lastMax = (1u << (Bits - 7 * (longest<Bits> - 1))) - 1;

// The judges, one byte at a time. `start` is where the value begins, for the report.

/// A varint at `p`; stores its low 64 bits.
COLD_PATH const char* judgeVarint(const char* p, const char* start, unsigned bits, State& state, uint64_t& value);
COLD_PATH const char* judgePrice(const char* p, State& state);
/// The length of a string.
COLD_PATH const char* judgeLength(const char* p, State& state, size_t& length);
/// A count of two bytes.
COLD_PATH const char* judgeCount(const char* p, State& state, size_t& count);

/// The bytes of a canonical varint whose first eight are in `word`, of which `N` are known to continue; 0 if it is none
/// or longer. By branches, not by counting bits: lengths repeat from message to message, so the processor goes on to
/// the next value at the length it expects instead of waiting for this one.
template <unsigned Bits, unsigned N = 1>
FORCE_INLINE unsigned lengthInWord(uint64_t word) {
    constexpr unsigned most = longest<Bits>;
    if constexpr (N < 8 && N < most) {
        const auto byte = static_cast<unsigned char>(word >> 8 * N);
        if (byte >= 0x80) return lengthInWord<Bits, N + 1>(word);
        if (byte != 0 && (N + 1 < most || byte <= lastMax<Bits>)) return N + 1;
    }
    return 0;
}

/// The end of a varint at `p`, whose first byte continues, or null if it is not plainly in canonical form.
template <unsigned Bits>
FORCE_INLINE const char* plainVarint(const char* p, const State& state) {
    constexpr unsigned most = longest<Bits>;
    uint64_t word;
    if (p <= state.lastWord) {
        std::memcpy(&word, p, 8);
    } else if (state.lastWord != nullptr) {
        // The last eight bytes, shifted so that the first is the one at `p`. The zeros that come in look like last
        // bytes that add nothing, which no canonical form has.
        std::memcpy(&word, state.lastWord, 8);
        word >>= 8 * (p - state.lastWord);
    } else {
        return nullptr;
    }
    constexpr uint64_t continues = 0x8080808080808080u;
    if (most <= 8 || (word & continues) != continues) {
        const unsigned length = lengthInWord<Bits>(word);
        return length != 0 ? p + length : nullptr;
    }
    // Nine bytes or ten: times, and numbers near the limits.
    if (Bits == PRICE_REST && word == continues) return nullptr; // perhaps a sentinel in its long form
    if (state.remaining(p) > 8 && byteAt(p + 8) < 0x80) {
        const bool isCanonical = byteAt(p + 8) != 0 && (most > 9 || byteAt(p + 8) <= lastMax<Bits>);
        return isCanonical ? p + 9 : nullptr;
    }
    if (most == 10 && state.remaining(p) > 9 && byteAt(p + 9) == lastMax<Bits>) return p + 10;
    return nullptr;
}

template <unsigned Bits>
FORCE_INLINE const char* checkVarint(const char* p, State& state) {
    if (p != state.end && byteAt(p) < 0x80) return p + 1;
    if (p != state.end)
        if (const char* const next = plainVarint<Bits>(p, state)) return next;
    uint64_t value;
    return judgeVarint(p, p, Bits, state, value);
}

// One overload per wire form, the mirror of those of Velmora::get.

FORCE_INLINE const char* check(of<int8_t>, plain_t, const char* p, State& state) {
    return p != state.end ? p + 1 : state.refuse(Fault::truncated, p);
}
FORCE_INLINE const char* check(of<bool>, plain_t, const char* p, State& state) {
    if (p == state.end) return state.refuse(Fault::truncated, p);
    if (byteAt(p) > 1 && !state.policy.anyBoolean) return state.refuse(Fault::badBoolean, p);
    return p + 1;
}
FORCE_INLINE const char* check(of<int16_t>, plain_t, const char* p, State& state) { return checkVarint<16>(p, state); }
FORCE_INLINE const char* check(of<int32_t>, plain_t, const char* p, State& state) { return checkVarint<32>(p, state); }
FORCE_INLINE const char* check(of<int64_t>, plain_t, const char* p, State& state) { return checkVarint<64>(p, state); }

FORCE_INLINE const char* check(of<int64_t>, price_t, const char* p, State& state) {
    if (p == state.end) return judgePrice(p, state);
    const unsigned first = byteAt(p);
    if ((first & 0x83) == 0) return p + 1;
    if ((first & 0x83) == 0x80 && state.remaining(p) > 1) {
        const unsigned second = byteAt(p + 1);
        if (second < 0x80) {
            if (second != 0) return p + 2;
        } else if (const char* const next = plainVarint<PRICE_REST>(p + 1, state)) {
            return next;
        }
    }
    return judgePrice(p, state);
}

/// The bytes that the enumerators of H travel as: the low bytes of their values.
template <class H>
inline constexpr auto knownBytes = [] {
    struct {
        uint64_t words[4] = {};
    } set;
    enumerators(of<H>{},
                [&](const char*, auto value) { set.words[(value & 0xFF) >> 6] |= uint64_t{1} << (value & 63); });
    return set;
}();

template <Enumerator E>
FORCE_INLINE const char* check(of<E>, plain_t, const char* p, State& state) {
    if (p == state.end) return state.refuse(Fault::truncated, p);
    const unsigned byte = byteAt(p);
    const bool isKnown = (knownBytes<EnumerationOf<E>>.words[byte >> 6] >> (byte & 63) & 1) != 0;
    if (!isKnown && !state.policy.unknownEnumerators) return state.refuse(Fault::unknownEnumerator, p);
    return p + 1;
}

template <String T, class Encoding>
FORCE_INLINE const char* check(of<T>, Encoding, const char* p, State& state) {
    size_t length;
    const char* text = p + 1;
    if (p != state.end && byteAt(p) < 0x80)
        length = byteAt(p);
    else if ((text = judgeLength(p, state, length)) == nullptr)
        return nullptr;
    if (state.remaining(text) < length) return state.refuse(Fault::truncated, p);
    state.blockBytes += length + 1;
    return text + length;
}

template <Composite T>
const char* check(of<T>, plain_t, const char* p, State& state);

template <Vector V>
FORCE_INLINE const char* check(of<V>, plain_t, const char* p, State& state) {
    using Element = typename V::value_type;
    size_t count;
    const char* element = p + 1;
    if (p != state.end && byteAt(p) < 0x80)
        count = byteAt(p);
    else if ((element = judgeCount(p, state, count)) == nullptr)
        return nullptr;
    if (state.remaining(element) / minimal_size<Element>() < count) return state.refuse(Fault::countBeyondBytes, p);
    state.blockBytes += count * sizeof(Element);
    for (; count != 0; --count)
        if ((element = check(of<Element>{}, plain, element, state)) == nullptr) return nullptr;
    return element;
}

/// Strings in a T itself, those in vectors apart.
template <class T>
consteval size_t countStrings() {
    if constexpr (String<T>) return 1;
    size_t count = 0;
    if constexpr (Composite<T>)
        fields(of<T>{}, [&](const char*, auto member, auto) {
            count += countStrings<MemberType<decltype(member)>>();
            return true;
        });
    return count;
}

/// The step of the derivation in Verify.h: an element and the NULs of its strings.
template <class Element>
inline constexpr bool isBounded = sizeof(Element) + countStrings<Element>() <= 33 * minimal_size<Element>();

template <Composite T>
const char* check(of<T>, plain_t, const char* p, State& state) {
    fields(of<T>{}, [&](const char*, auto member, auto encoding) FORCE_INLINE_LAMBDA {
        using M = MemberType<decltype(member)>;
        if constexpr (Vector<M>) static_assert(isBounded<typename M::value_type>);
        p = check(of<M>{}, encoding, p, state);
        return p != nullptr;
    });
    return p;
}

/// The body of message T.
template <class T>
Result run(const char* begin, const char* end, const Policy& policy) {
    State state(begin, end, policy);
    const char* const p = check(of<T>{}, plain, begin, state);
    if (p != nullptr && p != end && !policy.trailingBytes) state.refuse(Fault::trailingBytes, p);
    Result result{.id = T::ID, .begin = begin, .end = end};
    if (state.fault == Fault::none) {
        result.consumed = static_cast<size_t>(p - begin);
        result.blockBytes = state.blockBytes;
    } else {
        result.fault = state.fault;
        result.offset = result.consumed = static_cast<size_t>(state.at - begin);
    }
    return result;
}

} // namespace Inspect::walk
