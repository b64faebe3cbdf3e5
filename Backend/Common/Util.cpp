// Decimal digits are produced in blocks: up to eight in front, two by two out of a fixed-point fraction, and after
// them blocks of eight or sixteen in a vector register. The digits of a block do not wait for each other as they would
// in a loop over the whole value.
#include "Backend/Common/Util.h"

#include <emmintrin.h> // every x86-64 has these

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Backend/Common/Inline.h"

namespace Quillon {

namespace {

constexpr std::uint32_t TEN_8 = 100'000'000;
constexpr std::uint64_t TEN_16 = 10'000'000'000'000'000;

/// "00" to "99" in a row.
constexpr std::array<char, 200> DIGIT_PAIRS = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// Two digits; requires value < 100.
QL_FORCE_INLINE void put2(char* out, std::uint64_t value) { std::memcpy(out, DIGIT_PAIRS.data() + 2 * value, 2); }

/// One or two digits; requires value < 100. All that write digits return the position after them.
QL_FORCE_INLINE char* putFirst(char* out, std::uint64_t value) {
    if (value < 10) {
        *out = static_cast<char>('0' + value);
        return out + 1;
    }
    put2(out, value);
    return out + 2;
}

/// One or two digits and `Pairs` pairs; requires value < 100^(Pairs + 1). The first digits are the integer part of
/// value / 100^Pairs, in fixed point with 32 bits of fraction, rounded up by at most four units. The fraction times 100
/// has the next pair in its integer part, and so on; four units grow to less than 0.001 of the last digit.
template <unsigned Pairs>
QL_FORCE_INLINE char* putPairs(char* out, std::uint32_t value) {
    constexpr std::uint64_t unit = Pairs == 1 ? 100 : Pairs == 2 ? 10'000 : 1'000'000;
    std::uint64_t fixed = (value * ((std::uint64_t{1} << 57) / unit + 1) >> 25) + 1;
    out = putFirst(out, fixed >> 32);
    for (unsigned i = 0; i < Pairs; ++i) {
        fixed = std::uint64_t{static_cast<std::uint32_t>(fixed)} * 100;
        put2(out, fixed >> 32);
        out += 2;
    }
    return out;
}

/// The digits of a value below 10^8 without leading zeros.
QL_FORCE_INLINE char* putHead(char* out, std::uint32_t value) {
    if (value < 10'000) return value < 100 ? putFirst(out, value) : putPairs<1>(out, value);
    return value < 1'000'000 ? putPairs<2>(out, value) : putPairs<3>(out, value);
}

/// Each of eight numbers times `factor`. The compiler is kept from making half a dozen shifts and additions of it.
QL_FORCE_INLINE __m128i times(__m128i numbers, short factor) {
    __m128i factors = _mm_set1_epi16(factor);
    __asm__("" : "+x"(factors));
    return _mm_mullo_epi16(numbers, factors);
}

/// Sixteen digits with leading zeros, of two values below 10^8, one in each half. Every step splits all numbers into a
/// higher and a lower half by a multiplication with the reciprocal, and puts them side by side.
QL_FORCE_INLINE __m128i digits(__m128i eights) {
    const __m128i high4 = _mm_srli_epi64(_mm_mul_epu32(eights, _mm_set1_epi64x(0xD1B71759)), 45); // / 10000
    const __m128i low4 = _mm_sub_epi32(eights, _mm_mul_epu32(high4, _mm_set1_epi64x(10'000)));
    const __m128i fours = _mm_or_si128(high4, _mm_slli_epi64(low4, 32));
    const __m128i high2 = _mm_srli_epi16(_mm_mulhi_epu16(fours, _mm_set1_epi16(5243)), 3); // / 100
    const __m128i low2 = _mm_sub_epi16(fours, times(high2, 100));
    const __m128i twos = _mm_or_si128(high2, _mm_slli_epi32(low2, 16));
    const __m128i high1 = _mm_mulhi_epu16(twos, _mm_set1_epi16(6554)); // / 10
    // high1 + 256 * (twos - 10 * high1)
    const __m128i ones = _mm_sub_epi16(_mm_slli_epi16(twos, 8), times(high1, 2559));
    return _mm_or_si128(ones, _mm_set1_epi8('0'));
}

/// Requires value < 10^8.
QL_FORCE_INLINE char* put8(char* out, std::uint64_t value) {
    const __m128i text = digits(_mm_cvtsi64_si128(static_cast<long long>(value)));
    std::memcpy(out, &text, 8);
    return out + 8;
}

/// Requires value < 10^16.
QL_FORCE_INLINE char* put16(char* out, std::uint64_t value) {
    const __m128i text =
        digits(_mm_set_epi64x(static_cast<long long>(value % TEN_8), static_cast<long long>(value / TEN_8)));
    std::memcpy(out, &text, 16);
    return out + 16;
}

QL_FORCE_INLINE char* putDecimal(char* out, std::uint64_t value) {
    if (value < TEN_8) return putHead(out, static_cast<std::uint32_t>(value));
    if (value < TEN_16) return put8(putHead(out, static_cast<std::uint32_t>(value / TEN_8)), value % TEN_8);
    const auto high = static_cast<std::uint32_t>(value / TEN_16);
    return put16(high < 100 ? putFirst(out, high) : putPairs<1>(out, high), value % TEN_16);
}

/// Any base but 10.
[[gnu::noinline]] int anyBase(std::uint64_t value, char* out, unsigned int base) {
    if (base < 2 || base > 36) return 0;
    char text[64];
    char* const end = text + sizeof(text);
    char* p = end;
    do {
        *--p = "0123456789abcdefghijklmnopqrstuvwxyz"[value % base];
        value /= base;
    } while (value != 0);
    const std::size_t count = static_cast<std::size_t>(end - p);
    std::memcpy(out, p, count);
    return static_cast<int>(count);
}

inline int unsignedText(std::uint64_t value, char* out, unsigned int base) {
    return base == 10 ? static_cast<int>(putDecimal(out, value) - out) : anyBase(value, out, base);
}

inline int signedText(std::int64_t value, char* out, unsigned int base) {
    if (value >= 0) return unsignedText(static_cast<std::uint64_t>(value), out, base);
    // The magnitude is taken in unsigned arithmetic: the least number has no positive counterpart.
    const int count = unsignedText(0 - static_cast<std::uint64_t>(value), out + 1, base);
    if (count == 0) return 0;
    *out = '-';
    return count + 1;
}

} // namespace

char* Util::decimal(long long value, char* out) {
    const auto pattern = static_cast<std::uint64_t>(value);
    if (value >= 0) return putDecimal(out, pattern);
    *out = '-';
    return putDecimal(out + 1, 0 - pattern);
}

int Util::stoa(short value, char* out, unsigned int base) { return signedText(value, out, base); }

int Util::ustoa(unsigned short value, char* out, unsigned int base) { return unsignedText(value, out, base); }

int Util::itoa(int value, char* out, unsigned int base) { return signedText(value, out, base); }

int Util::uitoa(unsigned int value, char* out, unsigned int base) { return unsignedText(value, out, base); }

int Util::lltoa(long long value, char* out, unsigned int base) { return signedText(value, out, base); }

int Util::ulltoa(unsigned long long value, char* out, unsigned int base) { return unsignedText(value, out, base); }

} // namespace Quillon
