#include "Backend/Common/FastOStream.h"

#include <climits>
#include <cstring>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "Backend/Velmora/BufferAllocator.h"
#include "Backend/Velmora/bufstl/bufstring.h"

using Quillon::FastOStream;
using Quillon::StaticOStream;

namespace {

/// What `write` writes into a fresh stream.
template <class Write>
std::string text(Write write) {
    StaticOStream<512> os;
    FastOStream& result = write(os);
    EXPECT_EQ(&result, &os);
    return {os.begin(), os.size()};
}

FastOStream& lineEnd(FastOStream& os) { return os << '\n'; }

TEST(FastOStream, TextOfEveryType) {
    char block[64];
    Velmora::BufferAllocator alloc(block, sizeof(block), "test", "test");
    bufstl::bufstring stored(alloc);
    stored.assign("b\0c", 3);
    const bufstl::bufstring untouched(alloc);

    const struct {
        std::string actual;
        std::string expected;
    } cases[] = {
        {text([](auto& os) -> auto& { return os << true << false; }), "TF"},
        {text([](auto& os) -> auto& { return os << 'x' << '\0'; }), std::string("x\0", 2)},
        {text([](auto& os) -> auto& { return os << short{-32768}; }), "-32768"},
        {text([](auto& os) -> auto& { return os << static_cast<unsigned short>(65535); }), "65535"},
        {text([](auto& os) -> auto& { return os << INT_MIN; }), "-2147483648"},
        {text([](auto& os) -> auto& { return os << UINT_MAX; }), "4294967295"},
        {text([](auto& os) -> auto& { return os << LONG_MIN; }), "-9223372036854775808"},
        {text([](auto& os) -> auto& { return os << ULONG_MAX; }), "18446744073709551615"},
        {text([](auto& os) -> auto& { return os << LLONG_MIN; }), "-9223372036854775808"},
        {text([](auto& os) -> auto& { return os << ULLONG_MAX; }), "18446744073709551615"},
        {text([](auto& os) -> auto& { return os << 1.5; }), "1.50000"},
        {text([](auto& os) -> auto& { return os << 0.25f; }), "0.25000"},
        {text([](auto& os) -> auto& { return os << reinterpret_cast<const void*>(0xbeef01); }), "0xbeef01"},
        {text([](auto& os) -> auto& { return os << static_cast<const void*>(nullptr); }), "0x0"},
        {text([](auto& os) -> auto& {
             return os << "abc"
                       << "" << static_cast<const char*>(nullptr);
         }),
         "abc"},
        {text([](auto& os) -> auto& { return os << std::string("a\0b", 3); }), std::string("a\0b", 3)},
        {text([&](auto& os) -> auto& { return os << stored << untouched; }), std::string("b\0c", 3)},
        {text([](auto& os) -> auto& { return os << 1 << lineEnd << 2; }), "1\n2"},
        {text([](auto& os) -> auto& { return os.write("abc", 2).write("def").write(nullptr); }), "abdef"},
        {text([](auto& os) -> auto& { return os.write(nullptr, 0); }), ""},
        {text([](auto& os) -> auto& { return os.write_pad("ab", 5, '.'); }), "ab..."},
        {text([](auto& os) -> auto& { return os.write_pad("abc", 3, '.').write_pad("defg", 3, '.'); }), "abcdefg"},
        {text([](auto& os) -> auto& { return os.write_pad(nullptr, 2, '.'); }), ".."},
        {text([](auto& os) -> auto& { return os.write_nchars('-', 4).write_nchars('+', 0); }), "----"},
        {text([](auto& os) -> auto& { return os.write_binary(0).write_binary(10); }), "01010"},
        {text([](auto& os) -> auto& { return os.write_binary(~0ull); }), std::string(64, '1')},
    };
    for (const auto& c : cases) EXPECT_EQ(c.actual, c.expected);
}

TEST(FastOStream, PrecisionIsKeptAndBoundedToTwoDigits) {
    const struct {
        std::size_t digits;
        const char* asDouble;
        const char* asFloat;
    } cases[] = {
        {0, "2", "0"},
        {1, "1.5", "0.2"},
        {9, "1.500000000", "0.250000000"},
        {12, "1.500000000000", "0.250000000000"},
    };
    StaticOStream<512> os;
    for (const auto& c : cases) {
        os.setprecision(c.digits).clear() << 1.5 << ' ' << 0.25f;
        EXPECT_STREQ(os.ends(), (std::string(c.asDouble) + ' ' + c.asFloat).c_str());
    }
    for (const std::size_t digits : {std::size_t{99}, std::size_t{100}, ~std::size_t{0}}) {
        os.setprecision(digits).clear() << 0.0 << 0.0f;
        EXPECT_EQ(std::string(os.begin(), os.size()), "0." + std::string(99, '0') + "0." + std::string(99, '0'));
    }
    char other[16];
    os.setprecision(2).init(other, other + sizeof(other));
    os << 1.0;
    EXPECT_STREQ(os.ends(), "1.00");
}

TEST(FastOStream, FreshStreamKnowsItsBuffer) {
    StaticOStream<65536> own;
    EXPECT_EQ(own.size(), 0u);
    EXPECT_EQ(own.capacity(), 65536u);
    EXPECT_EQ(own.free(), 65536u);
    EXPECT_EQ(own.begin(), own.buffer());
    EXPECT_EQ(own.current(), own.buffer());
    EXPECT_EQ(own.end(), own.buffer() + 65536);
    static_assert(!std::is_copy_constructible_v<StaticOStream<64>> && !std::is_copy_assignable_v<StaticOStream<64>>);

    char buffer[10];
    FastOStream range(buffer, buffer + 10);
    FastOStream sized(buffer, 10);
    for (FastOStream* os : {&range, &sized}) {
        EXPECT_EQ(os->current(), buffer);
        EXPECT_EQ(os->end(), buffer + 10);
    }
}

TEST(FastOStream, PositionMovesByHand) {
    StaticOStream<16> os;
    std::memcpy(os.current(), "abcdef", 6);
    os.advance(6);
    EXPECT_EQ(os.size(), 6u);
    EXPECT_EQ(os.free(), 10u);
    EXPECT_STREQ(os.rchop(2).ends(), "abcd");
    EXPECT_EQ(os.rchop(100).size(), 0u);
    EXPECT_EQ((os << "xyz").clear().size(), 0u);
    EXPECT_EQ(os.current(), os.buffer());
}

TEST(FastOStream, EndsAddsOneNulAtMost) {
    StaticOStream<16> os;
    EXPECT_EQ(os.ends(), os.begin());
    EXPECT_EQ(os.size(), 1u);
    EXPECT_EQ(os.buffer()[0], '\0');
    os.ends();
    EXPECT_EQ(os.size(), 1u);

    os.clear() << "ab";
    os.ends();
    os.ends();
    EXPECT_EQ(std::string(os.begin(), os.size()), std::string("ab\0", 3));
}

TEST(FastOStream, CutFloatsLeaveThePositionBeyondTheEnd) {
    char buffer[16];
    std::memset(buffer, '#', sizeof(buffer));
    FastOStream os(buffer, 5);
    os << 123456.75; // 123456.75000: twelve characters
    EXPECT_EQ(std::string(buffer, sizeof(buffer)), std::string("1234\0###########", 16));
    EXPECT_EQ(os.size(), 12u);
    EXPECT_EQ(os.current(), os.end() + 7);
    EXPECT_EQ(os.free(), 0u);

    os << 1.0f; // past the end there is no room at all, but the advance goes on
    EXPECT_EQ(std::string(buffer, sizeof(buffer)), std::string("1234\0###########", 16));
    EXPECT_EQ(os.size(), 19u);
}

TEST(FastOStream, NothingIsStoredBeyondTheText) {
    char buffer[64];
    std::memset(buffer, '#', sizeof(buffer));
    FastOStream os(buffer, sizeof(buffer));
    os << -7 << "ab" << 'c' << 42ull << true;
    os.write_binary(5).write_pad("p", 3, ' ').write_nchars('n', 2);
    EXPECT_EQ(std::string(buffer, sizeof(buffer)), "-7abc42T101p  nn" + std::string(48, '#'));
}

} // namespace
