// Decimal digits are produced in blocks of eight: three divisions of a 64-bit value at most, and the digits inside a
// block do not wait for each other as they would in a loop over the whole value.
#include "Backend/Common/Util.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

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
inline void put2(char* out, std::uint32_t value) { std::memcpy(out, DIGIT_PAIRS.data() + 2 * value, 2); }

/// Eight digits with leading zeros; requires value < 10^8.
inline void put8(char* out, std::uint32_t value) {
    const std::uint32_t high = value / 10000;
    const std::uint32_t low = value % 10000;
    put2(out, high / 100);
    put2(out + 2, high % 100);
    put2(out + 4, low / 100);
    put2(out + 6, low % 100);
}

/// Requires value < 10^8.
inline int digits(std::uint32_t value) {
    if (value < 10000) return value < 100 ? (value < 10 ? 1 : 2) : (value < 1000 ? 3 : 4);
    return value < 1000000 ? (value < 100000 ? 5 : 6) : (value < 10000000 ? 7 : 8);
}

/// The digits of a value below 10^8 without leading zeros. Counted first, so that they are stored where they belong.
inline int putHead(char* out, std::uint32_t value) {
    const int count = digits(value);
    char* end = out + count;
    while (value >= 100) {
        end -= 2;
        put2(end, value % 100);
        value /= 100;
    }
    if (value >= 10)
        put2(out, value);
    else
        *out = static_cast<char>('0' + value);
    return count;
}

inline int decimal(std::uint64_t value, char* out) {
    if (value < TEN_8) return putHead(out, static_cast<std::uint32_t>(value));
    int count;
    if (value < TEN_16) {
        count = putHead(out, static_cast<std::uint32_t>(value / TEN_8));
    } else {
        count = putHead(out, static_cast<std::uint32_t>(value / TEN_16));
        put8(out + count, static_cast<std::uint32_t>(value % TEN_16 / TEN_8));
        count += 8;
    }
    put8(out + count, static_cast<std::uint32_t>(value % TEN_8));
    return count + 8;
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
    return base == 10 ? decimal(value, out) : anyBase(value, out, base);
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

int Util::stoa(short value, char* out, unsigned int base) { return signedText(value, out, base); }

int Util::ustoa(unsigned short value, char* out, unsigned int base) { return unsignedText(value, out, base); }

int Util::itoa(int value, char* out, unsigned int base) { return signedText(value, out, base); }

int Util::uitoa(unsigned int value, char* out, unsigned int base) { return unsignedText(value, out, base); }

int Util::lltoa(long long value, char* out, unsigned int base) { return signedText(value, out, base); }

int Util::ulltoa(unsigned long long value, char* out, unsigned int base) { return unsignedText(value, out, base); }

} // namespace Quillon
