// The conversions are compared with std::to_chars, which follows the same rules, over every value where a digit count
// or a block boundary may go wrong. Bytes around the text are canaries.
#include "Backend/Common/Util.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <set>
#include <string>

#include <gtest/gtest.h>

using Quillon::Util;

namespace {

constexpr char CANARY = '\x5a';

/// The text that `convert` writes, or a description of what it did wrong.
template <class T>
std::string text(int (*convert)(T, char*, unsigned int), T value, unsigned int base) {
    std::string out(Util::MAX_DIGITS + 2, CANARY);
    const int count = convert(value, out.data() + 1, base);
    if (count < 0 || count > Util::MAX_DIGITS) return "count " + std::to_string(count);
    const auto used = static_cast<std::size_t>(count);
    if (out.front() != CANARY || out.substr(1 + used) != std::string(out.size() - 1 - used, CANARY))
        return "wrote outside its " + std::to_string(count) + " characters";
    return out.substr(1, used);
}

template <class T>
std::string expected(T value, unsigned int base) {
    char out[Util::MAX_DIGITS];
    const auto end = std::to_chars(out, out + sizeof(out), value, static_cast<int>(base)).ptr;
    return {out, end};
}

/// Extremes, and every power of the base with its neighbours, in both signs.
template <class T>
std::set<T> edges(unsigned int base) {
    using Limits = std::numeric_limits<T>;
    std::set<T> values{0, 1, Limits::min(), static_cast<T>(Limits::min() + 1), Limits::max(), Limits::max() - 1};
    for (T power = 1; power <= Limits::max() / static_cast<T>(base);) {
        power = static_cast<T>(power * static_cast<T>(base));
        for (int delta = -1; delta <= 1; ++delta) {
            values.insert(static_cast<T>(power + static_cast<T>(delta)));
            values.insert(static_cast<T>(0 - power - static_cast<T>(delta)));
        }
    }
    return values;
}

template <class T>
void expectEdges(const char* name, int (*convert)(T, char*, unsigned int)) {
    for (unsigned int base = 2; base <= 36; ++base)
        for (const T value : edges<T>(base))
            ASSERT_EQ(text(convert, value, base), expected(value, base)) << name << ' ' << value << " base " << base;
}

TEST(UtilText, EdgesOfEveryWidthAndBase) {
    expectEdges("stoa", Util::stoa);
    expectEdges("ustoa", Util::ustoa);
    expectEdges("itoa", Util::itoa);
    expectEdges("uitoa", Util::uitoa);
    expectEdges("lltoa", Util::lltoa);
    expectEdges("ulltoa", Util::ulltoa);
}

TEST(UtilText, EverySixteenBitValue) {
    for (int value = 0; value <= 65535; ++value) {
        const auto pattern = static_cast<unsigned short>(value);
        const auto number = static_cast<short>(pattern);
        ASSERT_EQ(text(Util::ustoa, pattern, 10), std::to_string(pattern));
        ASSERT_EQ(text(Util::stoa, number, 10), std::to_string(number));
    }
}

TEST(UtilText, DecimalValuesOfEveryLength) {
    std::uint64_t state = 1;
    for (int i = 0; i < 200000; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        const auto value = static_cast<unsigned long long>((state ^ (state >> 32)) >> (i % 64));
        ASSERT_EQ(text(Util::ulltoa, value, 10), std::to_string(value));
        const auto negative = static_cast<long long>(0 - value);
        ASSERT_EQ(text(Util::lltoa, negative, 10), std::to_string(negative));
    }
}

TEST(UtilText, DecimalBlocksNextToTheirCarries) {
    constexpr long long block = 100'000'000;
    for (long long high = 0; high < block; high += 9'999) { // falls short of each 10,000 by one more
        for (const long long value : {high, high + 1, high * block + (block - 1 - high), -(high + 1) * block}) {
            char out[20];
            ASSERT_EQ(std::string(out, Util::decimal(value, out)), std::to_string(value));
            ASSERT_EQ(text(Util::lltoa, value, 10), std::to_string(value));
        }
    }
}

TEST(UtilText, LongestTextFillsTheDocumentedRoom) {
    const std::string least = text(Util::lltoa, std::numeric_limits<long long>::min(), 2);
    EXPECT_EQ(least, "-1" + std::string(63, '0'));
    EXPECT_EQ(least.size(), static_cast<std::size_t>(Util::MAX_DIGITS));
}

TEST(UtilText, OtherBasesWriteNothing) {
    for (const unsigned int base : {0u, 1u, 37u, 0xffffffffu}) {
        EXPECT_EQ(text(Util::itoa, -7, base), "") << base; // not even the sign
        EXPECT_EQ(text(Util::ulltoa, 7ull, base), "") << base;
    }
}

} // namespace
