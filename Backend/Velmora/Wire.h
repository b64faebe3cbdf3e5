// The wire forms, as functions on a bare cursor. FastCodec offers them one by one; the operations over all types run
// whole messages through them with the cursor in a register.
//
// A Writer touches exactly the bytes of the message's encoding. Where a number and the fields still to come take at
// least eight bytes, it is stored as a whole word, whose spare bytes those fields overwrite; other numbers are stored
// in pieces that end where the number ends. A Reader looks at whole words, but at none that reaches beyond the end of
// the range, nor at any byte beyond it unless the encoding itself runs there: where the fields still to come take at
// least seven bytes, it does.
//
// `following`, the least number of bytes that are certain to follow the number at hand, is kept by the walk over the
// fields. It is the same for every message of a type, so that once all is inlined no test of it remains.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "Backend/Common/CopyBytes.h"
#include "Backend/Common/Inline.h"
#include "Backend/Common/Processor.h"

// Names of this header that a host's earlier headers may have made macros.
#pragma push_macro("MAX")
#pragma push_macro("NA")
#undef MAX
#undef NA

namespace Velmora {

// Sentinels of signed 64-bit quantities. The last three take one byte in the special varint; MAX travels as any value.
inline constexpr int64_t MAX = INT64_MAX - 1;
inline constexpr int64_t NMA = INT64_MIN + 1;
inline constexpr int64_t NDA = INT64_MIN + 2;
inline constexpr int64_t NA = INT64_MIN + 3;

/// The sentinel's name; empty for any other value.
QL_FORCE_INLINE constexpr std::string_view sentinelName(int64_t value) {
    if (__builtin_expect(value > NA && value < MAX, 1)) return {}; // they lie at the two ends
    return value == MAX ? "MAX" : value == NMA ? "NMA" : value == NDA ? "NDA" : value == NA ? "NA" : "";
}

template <class U, class S>
QL_FORCE_INLINE constexpr U zigzag(S v) {
    return static_cast<U>(static_cast<U>(v) << 1 ^ static_cast<U>(v >> (8 * sizeof(S) - 1)));
}
template <class S, class U>
QL_FORCE_INLINE constexpr S unzigzag(U u) {
    return static_cast<S>(static_cast<U>(u >> 1) ^ static_cast<U>(0 - (u & 1)));
}

// Kernels are told apart by a template argument; see Processor.h.
using Quillon::Baseline;
using Quillon::Bmi2;

/// The bounds of a writer that trusts its caller: none.
struct Unbounded {};

template <class KernelType>
class Writer {
  public:
    using Kernel = KernelType;
    using Bounds = Unbounded;

    explicit Writer(char* begin, size_t least = 0, Unbounded = {}) : p(begin), following(least) {}

    // What writers within bounds find out on their way; see Encode.h.
    static constexpr bool fits() { return true; }   ///< whether the next element does
    static constexpr bool isOpen() { return true; } ///< whether all did so far

    QL_FORCE_INLINE void byte(unsigned char v) { *p++ = static_cast<char>(v); }

    /// As held in memory, little-endian.
    template <class T>
    QL_FORCE_INLINE void raw(T v) {
        std::memcpy(p, &v, sizeof v);
        p += sizeof v;
    }

    /// Plain varint. T tells how long it can get.
    template <class T>
    QL_FORCE_INLINE void varint(T v) {
        static_assert(std::is_unsigned_v<T>);
        const uint64_t wide = v;
        if constexpr (sizeof(T) == 2)
            if (wide < 0x80) return byte(static_cast<unsigned char>(wide));
        if constexpr (sizeof(T) == 8)
            if (__builtin_expect(wide >> 56 != 0, 1)) return longVarint(wide); // times in nanoseconds
        following >= 7 ? spilling(wide) : exact<T>(wide);
    }

    /// Special varint. Up to 2^62 it is the plain varint of the value with two zero bits below; see FastCodec.h.
    QL_FORCE_INLINE void special(int64_t v) {
        const auto pattern = static_cast<uint64_t>(v);
        if (following >= 7 && __builtin_expect(pattern < uint64_t{1} << 54, 1)) return spilling<2>(pattern);
        if (__builtin_expect(pattern < uint64_t{1} << 54, 1)) return exact<uint64_t>(pattern << 2);
        if (pattern < uint64_t{1} << 62) return longVarint(pattern << 2);
        p = rareSpecial(p, pattern);
    }

    /// Of a vector; by contract n < 2^15.
    QL_FORCE_INLINE void count(size_t n) {
        const auto travelling = static_cast<unsigned short>(n);
        if (travelling > 127) byte(static_cast<unsigned char>(0x80 | travelling >> 8));
        byte(static_cast<unsigned char>(travelling));
    }

    /// A length as a varint of 16 bits, and as many bytes as `n` says; by contract n < 2^16. Short texts are written
    /// inline.
    QL_FORCE_INLINE void text(const char* from, size_t n) {
        if (__builtin_expect(n > Quillon::SHORT_COPY, 0)) {
            p = longText(p, from, n);
            return;
        }
        byte(static_cast<unsigned char>(n));
        bytes(from, n);
    }

    /// The same with a length of two bytes.
    QL_FORCE_INLINE void fixedText(const char* from, size_t n) {
        raw(static_cast<uint16_t>(n));
        bytes(from, n);
    }

    /// Elements that travel as they lie in memory.
    QL_FORCE_INLINE void held(const void* from, size_t n) { bytes(static_cast<const char*>(from), n); }

    char* p;
    size_t following;
    [[no_unique_address]] Bounds bounds;

  private:
    QL_FORCE_INLINE void bytes(const char* from, size_t n) {
        Quillon::copyBytes(p, from, n);
        p += n;
    }

    static constexpr uint64_t more = Quillon::KernelMasks::MORE;

    struct Word {
        uint64_t bytes;
        size_t n;
    };
    /// The `n` bytes of the varint of v << ZeroBits < 2^56, with zeros after them.
    template <unsigned ZeroBits = 0>
    QL_FORCE_INLINE static Word word(uint64_t v) {
        const uint64_t groups = Kernel::template spread<ZeroBits>(v);
        const auto highest = static_cast<unsigned>(std::countl_zero(groups | 1)) ^ 63; // bit of the last byte
        return {groups | Kernel::moreBelow(highest), size_t{highest >> 3} + 1};
    }
    /// v << ZeroBits < 2^56, as a whole word. Requires that its bytes and those that are certain to follow are eight.
    template <unsigned ZeroBits = 0>
    QL_FORCE_INLINE void spilling(uint64_t v) {
        const Word w = word<ZeroBits>(v);
        store<uint64_t>(0, w.bytes);
        p += w.n;
    }
    /// v < 2^56, where fewer than seven bytes are certain to follow: not a byte more than those. T tells how long it
    /// can get.
    template <class T>
    QL_FORCE_INLINE void exact(uint64_t v) {
        if (v < 0x80) return byte(static_cast<unsigned char>(v));
        if (following >= 1 && v >> 7 * (7 - following) != 0)
            return spilling(v); // so long that it makes a word with them
        if (v < 1u << 14) return raw(static_cast<uint16_t>(Kernel::spread(v) | 0x80));
        if (sizeof(T) == 2 || v < 1u << 21) {
            const uint64_t bytes = Kernel::spread(v) | 0x8080;
            if (following >= 1) { // the next field overwrites the fourth byte
                store<uint32_t>(0, bytes);
                p += 3;
                return;
            }
            raw(static_cast<uint16_t>(bytes));
            return byte(static_cast<unsigned char>(bytes >> 16));
        }
        if (v < 1u << 28) return raw(static_cast<uint32_t>(Kernel::spread(v) | 0x808080));
        const Word w = word(v);
        store<uint32_t>(0, w.bytes);
        if (sizeof(T) == 4) {
            store<uint8_t>(4, w.bytes >> 32);
            p += 5;
            return;
        }
        store<uint32_t>(w.n - 4, w.bytes >> (8 * (w.n - 4))); // overlaps the first piece
        p += w.n;
    }
    /// v >= 2^56: nine bytes, or ten of which the last is the number's highest bit.
    QL_FORCE_INLINE void longVarint(uint64_t v) {
        raw(Kernel::spread(v) | more);
        const uint64_t rest = v >> 56;
        if (following >= 1) {
            store<uint16_t>(0, rest | 0x100);
            p += 1 + (v >> 63);
            return;
        }
        if (rest < 0x80) return byte(static_cast<unsigned char>(rest));
        raw(static_cast<uint16_t>(rest | 0x100));
    }

    template <class Piece>
    QL_FORCE_INLINE void store(size_t offset, uint64_t v) {
        const auto piece = static_cast<Piece>(v);
        std::memcpy(p + offset, &piece, sizeof piece);
    }

    [[gnu::noinline]] static char* longText(char* p, const char* from, size_t n) {
        Writer out(p);
        out.varint(static_cast<uint16_t>(n));
        std::memcpy(out.p, from, n);
        return out.p + n;
    }

    /// Sentinels, and patterns of 62 bits and more: negative values.
    QL_COLD_PATH static char* rareSpecial(char* p, uint64_t pattern) {
        switch (static_cast<int64_t>(pattern)) {
        case NMA:
            *p++ = 0x03;
            return p;
        case NDA:
            *p++ = 0x05;
            return p;
        case NA:
            *p++ = 0x07;
            return p;
        }
        *p++ = static_cast<char>(0x80 | (pattern & 0x1F) << 2);
        uint64_t rest = pattern >> 5;
        for (; rest >= 0x80; rest >>= 7) *p++ = static_cast<char>(rest | 0x80);
        *p++ = static_cast<char>(rest);
        return p;
    }
};

/// The bytes that a codec works on. It stays where it is while they are read, and readers refer to it: its ends are
/// looked at too rarely to be worth two registers.
struct Range {
    char* begin;
    char* end;
};

/// The end of what a reader may touch, for one that trusts its caller: that of the encoding, wherever it lies.
struct Endless {
    static constexpr bool isAt(const char*, const Range&) { return false; }
};
/// The same for one that does not: that of the range. A varint that does not end before leaves the cursor after it.
struct AtRange {
    static bool isAt(const char* p, const Range& range) { return p >= range.end; }
};

template <class KernelType, class End = Endless>
class Reader {
  public:
    using Kernel = KernelType;
    using Bounds = const Range;

    /// Bytes between the start of `range_` and the cursor may be looked at again.
    Reader(const char* cursor, const Range& range_, size_t least = 0) : p(cursor), following(least), range(range_) {}

    QL_FORCE_INLINE unsigned char byte() { return static_cast<unsigned char>(*p++); }

    template <class T>
    QL_FORCE_INLINE T raw() {
        T v;
        std::memcpy(&v, p, sizeof v);
        p += sizeof v;
        return v;
    }

    /// Stores the `n` bytes at the cursor, which `v` copies.
    template <class String>
    void text(String& v, size_t n) {
        v.assign(p, n);
        p += n;
    }

    /// Whether seven bytes of the message are certain to follow the value at hand.
    QL_FORCE_INLINE bool isFollowed() const { return following >= 7; }

    /// Plain varint of any length. Bits beyond 64 are dropped, and so are those beyond T. `isRoomy`: the range holds
    /// nine bytes from the cursor on, or the encoding runs so far.
    template <class T, bool isRoomy = false>
    QL_FORCE_INLINE T varint() {
        const auto first = static_cast<unsigned char>(*p);
        if (first < 0x80) {
            ++p;
            return static_cast<T>(first);
        }
        uint64_t word;
        if (isRoomy || isWord()) {
            std::memcpy(&word, p, 8);
            if constexpr (sizeof(T) == 4) {
                if ((word & 0x8000) == 0) return static_cast<T>(taken<2>(word));
                if ((word & 0x800000) == 0) return static_cast<T>(taken<3>(word));
            }
            if (uint64_t stops; __builtin_expect(Kernel::stopsOf(word, stops), sizeof(T) <= 4)) {
                if constexpr (sizeof(T) > 4) {
                    if ((word & 0x8000) == 0) return static_cast<T>(taken<2>(word));
                    if ((word & 0x800000) == 0) return static_cast<T>(taken<3>(word));
                }
                return static_cast<T>(take(word, stops));
            }
            if constexpr (sizeof(T) > 4) {
                // A byte after the word belongs to the encoding: the ninth of a time in nanoseconds.
                const auto ninth = static_cast<unsigned char>(p[8]);
                if (ninth < 0x80) {
                    p += 9;
                    return static_cast<T>(Kernel::gather(word) | static_cast<uint64_t>(ninth) << 56);
                }
            }
        } else {
            word = tail(p, range);
            if (uint64_t stops; Kernel::stopsOf(word, stops)) return static_cast<T>(take(word, stops));
        }
        return static_cast<T>(taken(anyVarint(p, range)));
    }

    /// Special varint, as a pattern. Where its two low bits are zero it is a plain varint of the pattern with two zero
    /// bits below; nine bytes and more are left to the slow way, because there the pattern's highest bits would be
    /// lost.
    template <bool isRoomy = false>
    QL_FORCE_INLINE uint64_t special() {
        const auto first = static_cast<unsigned char>(*p);
        if (first < 0x80 && (first & 3) == 0) {
            ++p;
            return first >> 2;
        }
        if (__builtin_expect((first & 3) == 0, 1)) {
            uint64_t word;
            if (isRoomy || isWord()) {
                std::memcpy(&word, p, 8);
                if ((word & 0x808000) != 0x808000) {
                    if ((word & 0x8000) == 0) return taken<2, 2>(word);
                    return taken<3, 2>(word);
                }
                if ((word & 0x80000000) == 0) return taken<4, 2>(word);
                if ((word & 0x8000000000) == 0) return taken<5, 2>(word);
            } else {
                word = tail(p, range);
            }
            if (uint64_t stops; Kernel::stopsOf(word, stops)) return take<2>(word, stops);
        }
        return taken(rareSpecial(p, range));
    }

    /// Of a vector.
    QL_FORCE_INLINE unsigned short count() {
        const unsigned char first = byte();
        if (first <= 127) return first;
        return static_cast<unsigned short>((first << 8 | byte()) & 0x7FFF);
    }

    const char* p;
    size_t following;
    const Range& range;

  protected:
    /// Bytes that must be there for a look at a word: itself, and the byte after it where nothing else tells that it is
    /// there.
    static constexpr size_t LOOK = std::is_same_v<End, Endless> ? 8 : 9;

    // What is out of line takes and returns the cursor by value: one whose address leaves the function could not stay
    // in a register.
    struct Taken {
        uint64_t value;
        const char* p;
    };
    QL_FORCE_INLINE uint64_t taken(Taken t) {
        p = t.p;
        return t.value;
    }
    /// A varint of which fewer than nine bytes may remain.
    QL_FORCE_INLINE static Taken lastVarint(const char* p, const Range& range) {
        Reader in(p, range);
        const uint64_t word = tailWord(p, range);
        uint64_t stops;
        if (!Kernel::stopsOf(word, stops)) return anyVarint(p, range);
        const uint64_t value = in.take(word, stops);
        return {value, in.p};
    }
    /// Of a value that does not end within the range: the cursor is after the end, and stays there. Computed as a number,
    /// because a pointer must not leave its range.
    QL_FORCE_INLINE static Taken beyond(const Range& range) {
        return {0, reinterpret_cast<const char*>(reinterpret_cast<uintptr_t>(range.end) + 1)};
    }

  private:
    /// Whether the word at the cursor may be looked at.
    QL_FORCE_INLINE bool isWord() const {
        return isFollowed()
               || __builtin_expect(reinterpret_cast<uintptr_t>(p) + LOOK <= reinterpret_cast<uintptr_t>(range.end), 1);
    }

    static constexpr uint64_t more = Quillon::KernelMasks::MORE;

    /// The varint of N bytes, without its lowest bits. Where the next field begins must not wait until the length has
    /// been computed from what was loaded: the processor is to guess it, as it guesses branches. So each length has a
    /// branch of its own, and the compiler is kept from joining them to one addition of a computed length.
    template <unsigned N, unsigned Dropped = 0>
    QL_FORCE_INLINE uint64_t taken(uint64_t word) {
        p += N;
        __asm__("" : "+r"(p));
        return Kernel::template gather<Dropped, N>(word);
    }

    /// The varint whose last byte is marked by the lowest bit of `stops`, without its lowest bits.
    template <unsigned Dropped = 0>
    QL_FORCE_INLINE uint64_t take(uint64_t word, uint64_t stops) {
        p += (static_cast<unsigned>(std::countr_zero(stops)) >> 3) + 1;
        return Kernel::template gather<Dropped>(word & (stops ^ (stops - 1)));
    }

    /// The word at `p`, of which the range holds fewer than eight bytes: the last eight bytes of the range, shifted
    /// down. All ones where it holds no last byte of a varint or is too short for such a look.
    [[gnu::noinline]] static uint64_t tail(const char* p, const Range& range) { return tailWord(p, range); }
    QL_FORCE_INLINE static uint64_t tailWord(const char* p, const Range& range) {
        const std::ptrdiff_t left = range.end - p;
        if (left <= 0 || range.end - range.begin < 8) return ~uint64_t{0};
        uint64_t word;
        std::memcpy(&word, range.end - 8, 8);
        const auto gone = static_cast<unsigned>(64 - 8 * left);
        return (~word & more) >> gone != 0 ? word >> gone : ~uint64_t{0};
    }

    /// Byte by byte: ten bytes and more, and where the range is short.
    [[gnu::noinline]] static Taken anyVarint(const char* p, const Range& range) {
        if (End::isAt(p, range)) return beyond(range);
        auto byte = static_cast<unsigned char>(*p++);
        uint64_t value = byte & 0x7Fu;
        for (unsigned shift = 7; byte >= 0x80; shift += 7) {
            if (End::isAt(p, range)) return beyond(range);
            byte = static_cast<unsigned char>(*p++);
            if (shift < 64) value |= static_cast<uint64_t>(byte & 0x7Fu) << shift;
        }
        return {value, p};
    }

    [[gnu::noinline]] static Taken rareSpecial(const char* p, const Range& range) {
        const auto first = static_cast<unsigned char>(*p++);
        switch (first) {
        case 0x05:
            return {static_cast<uint64_t>(NDA), p};
        case 0x07:
            return {static_cast<uint64_t>(NA), p};
        case 0x03:
            return {static_cast<uint64_t>(NMA), p};
        }
        Taken result = {first >> 2 & 0x1Fu, p};
        if ((first & 0x80) != 0) {
            const Taken rest = anyVarint(p, range);
            result = {result.value | rest.value << 5, rest.p};
        }
        if ((first & 0x02) != 0)
            result.value = ~result.value; // never set by the writer; honoured for peers that set it
        return result;
    }
};

} // namespace Velmora

#pragma pop_macro("NA")
#pragma pop_macro("MAX")
