#include "Backend/Velmora/FastCodec.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <random>

#include "tests/Block.h"
#include "tests/Hex.h"

namespace {

using bufstl::bufstring;
using Velmora::FastCodec;

/// The bytes of what `write` encodes, with a check that it touched nothing else of its range.
std::string encoded(const std::function<void(FastCodec&)>& write, size_t room = 1 << 17) {
    for (const char fill : {'\0', '\xFF'}) {
        std::string range(room, fill);
        FastCodec codec(range.data(), range.data() + range.size());
        write(codec);
        EXPECT_EQ(range.find_first_not_of(fill, codec.size()), std::string::npos)
            << "bytes outside the encoding changed";
        EXPECT_TRUE(codec.check());
        if (fill != '\0') return range.substr(0, codec.size());
    }
    return "";
}

/// Runs `read` over exactly these bytes, which end where their storage ends, and checks that it consumes all of them.
template <class Read>
auto decoded(const std::string& bytes, Read&& read) {
    const std::unique_ptr<char[]> exact(new char[bytes.size()]);
    std::memcpy(exact.get(), bytes.data(), bytes.size());
    FastCodec codec(exact.get(), exact.get() + bytes.size());
    auto value = read(codec);
    EXPECT_EQ(codec.size(), bytes.size()) << hex(bytes);
    return value;
}

#define WRITES(operation, ...) encoded([&](FastCodec& c) { c.operation(__VA_ARGS__); })
#define READS(bytes, operation) decoded(bytes, [](FastCodec& c) { return c.operation(); })

TEST(SpecialVarint, ComplementFlagIsHonouredAndBitZeroAloneIgnored) {
    EXPECT_EQ(READS(unhex("02"), read_qlfloat), -1);
    EXPECT_EQ(READS(unhex("7e"), read_qlfloat), -32);
    EXPECT_EQ(READS(unhex("8201"), read_qlfloat), ~INT64_C(32));
    EXPECT_EQ(READS(unhex("8301"), read_qlfloat), ~INT64_C(32)) << "bit 0 beside others";
    EXPECT_EQ(READS(unhex("01"), read_qlfloat), 0);
    EXPECT_EQ(READS(unhex("09"), read_qlfloat), 2);
}

TEST(Varint, AnyLengthIsReadAndExcessBitsAreDropped) {
    EXPECT_EQ(READS(unhex("8000"), read_uint32), 0u) << "overlong";
    EXPECT_EQ(READS(unhex("ffffffff7f"), read_uint32), UINT32_MAX) << "bits above 32 dropped";
    EXPECT_EQ(READS(unhex("81808080808080808080808080808080808000"), read_uint64), 1u) << "19 bytes";
    EXPECT_EQ(READS(unhex("ffffffffffffffffffff7f"), read_uint64), UINT64_MAX);
    EXPECT_EQ(READS(unhex("8080808080808080807f"), read_uint64), UINT64_C(1) << 63);
    EXPECT_EQ(READS(unhex("81808004"), read_uint16), 1u) << "a 16-bit target drops bit 23";
    EXPECT_EQ(READS(unhex("ffff07"), read_int16), INT16_MIN) << "truncated before the zig-zag is undone";
    EXPECT_EQ(READS(unhex("808080808080808080808000"), read_qlfloat), 0);
}

/// Values around every power of two, the extremes and some from everywhere.
template <class T>
std::vector<T> interesting() {
    std::vector<T> values = {0, std::numeric_limits<T>::max(), std::numeric_limits<T>::min()};
    for (unsigned bit = 0; bit < 8 * sizeof(T); ++bit)
        for (int delta : {-1, 0, 1}) {
            const auto power = static_cast<T>((UINT64_C(1) << bit) + static_cast<uint64_t>(delta));
            values.push_back(power);
            values.push_back(static_cast<T>(0 - static_cast<uint64_t>(power)));
        }
    std::mt19937_64 random(7);
    for (int i = 0; i < 1000; ++i) values.push_back(static_cast<T>(random() >> random() % 64));
    return values;
}

/// What the rules in the header say, computed the slow way.
std::string plainVarint(uint64_t u) {
    std::string bytes;
    for (; u > 127; u >>= 7) bytes += static_cast<char>(u % 128 + 128);
    return bytes + static_cast<char>(u);
}
template <class T>
std::string zigzagVarint(T v) {
    const auto magnitude = static_cast<uint64_t>(v < 0 ? -(v + 1) : v);
    return plainVarint(2 * magnitude + (v < 0)); // 0, -1, 1, -2, ... count 0, 1, 2, 3, ...
}
std::string specialVarint(int64_t v) {
    if (v == INT64_MIN + 1) return "\x03";
    if (v == INT64_MIN + 2) return "\x05";
    if (v == INT64_MIN + 3) return "\x07";
    const auto u = static_cast<uint64_t>(v);
    if (u < 32) return std::string(1, static_cast<char>(u * 4));
    return static_cast<char>(u % 32 * 4 + 128) + plainVarint(u / 32);
}

template <class T, class Write, class Read, class Expected>
void expectRoundTrips(Write write, Read read, Expected expected) {
    for (const T v : interesting<T>()) {
        const std::string bytes = encoded([&](FastCodec& c) { (c.*write)(v); }, 16);
        EXPECT_EQ(hex(bytes), hex(expected(v))) << +v;
        EXPECT_EQ(decoded(bytes, [&](FastCodec& c) { return static_cast<T>((c.*read)()); }), v);
    }
}

TEST(FastCodec, IntegersRoundTripInTheFormTheRulesGive) {
    expectRoundTrips<int16_t>(&FastCodec::write_int16, &FastCodec::read_int16, zigzagVarint<int16_t>);
    expectRoundTrips<int32_t>(&FastCodec::write_int32, &FastCodec::read_int32, zigzagVarint<int32_t>);
    expectRoundTrips<int64_t>(&FastCodec::write_int64, &FastCodec::read_int64, zigzagVarint<int64_t>);
    expectRoundTrips<uint16_t>(&FastCodec::write_uint16, &FastCodec::read_uint16, plainVarint);
    expectRoundTrips<uint32_t>(&FastCodec::write_uint32, &FastCodec::read_uint32, plainVarint);
    expectRoundTrips<uint64_t>(&FastCodec::write_uint64, &FastCodec::read_uint64, plainVarint);
    expectRoundTrips<int64_t>(&FastCodec::write_qlfloat, &FastCodec::read_qlfloat, specialVarint);
    for (const int64_t v : interesting<int64_t>()) {
        int16_t v16;
        int32_t v32;
        int64_t v64;
        uint64_t special;
        std::string bytes = encoded(
            [&](FastCodec& c) {
                c.write_varint16_zigzag(static_cast<int16_t>(v));
                c.write_varint32_zigzag(static_cast<int32_t>(v));
                c.write_varint64_zigzag(v);
                c.write_varint_special(v);
            },
            64);
        EXPECT_TRUE(bytes.ends_with(specialVarint(v)));
        FastCodec codec(bytes.data(), bytes.data() + bytes.size());
        codec.read_varint16_zigzag(v16);
        codec.read_varint32_zigzag(v32);
        codec.read_varint64_zigzag(v64);
        codec.read_varint_special(special);
        EXPECT_TRUE(v16 == static_cast<int16_t>(v) && v32 == static_cast<int32_t>(v) && v64 == v
                    && special == static_cast<uint64_t>(v));
    }
    EXPECT_EQ(hex(WRITES(write_varint, -1LL)), "ffffffffffffffffff01") << "a signed argument travels as its pattern";
    EXPECT_EQ(hex(WRITES(write_varint, static_cast<unsigned short>(65535))), "ffff03");
    EXPECT_EQ(READS(unhex("ac02"), read_varint<short>), 300);
    EXPECT_EQ(READS(unhex("ffffffff0f"), read_varint<int>), -1);
    EXPECT_EQ(READS(unhex("ac02"), read_varint<long>), 300);
}

TEST(FastCodec, SingleBytesFixedFormsAndFloats) {
    EXPECT_EQ(hex(WRITES(write_bool, true) + WRITES(write_bool, false)), "0100");
    EXPECT_TRUE(READS(unhex("02"), read_bool)) << "any byte but 0";
    EXPECT_FALSE(READS(unhex("00"), read_bool));
    EXPECT_EQ(hex(WRITES(write_int8, '\x80') + WRITES(write_uint8, 255)), "80ff");
    EXPECT_EQ(READS(unhex("80"), read_int8), '\x80');
    EXPECT_EQ(READS(unhex("ff"), read_uint8), 255);
    EXPECT_EQ(hex(WRITES(write_uint16_fixed, 0x1234)), "3412");
    EXPECT_EQ(hex(WRITES(write_uint32_fixed, 0x12345678)), "78563412");
    EXPECT_EQ(hex(WRITES(write_int64_fixed, -2)), "feffffffffffffff");
    EXPECT_EQ(READS(unhex("3412"), read_uint16_fixed), 0x1234);
    EXPECT_EQ(READS(unhex("78563412"), read_uint32_fixed), 0x12345678u);
    EXPECT_EQ(READS(unhex("feffffffffffffff"), read_int64_fixed), -2);
    EXPECT_EQ(hex(WRITES(write_float4, 1.5f) + WRITES(write_float8, -2.25)), "0000c03f00000000000002c0");
    EXPECT_EQ(READS(unhex("0000c03f"), read_float4), 1.5f);
    EXPECT_EQ(READS(unhex("00000000000002c0"), read_float8), -2.25);
}

TEST(Length, OneByteUpTo127ThenTwoHighPartFirst) {
    struct {
        unsigned short count;
        const char* bytes;
    } const table[] = {{0, "00"},     {1, "01"},     {127, "7f"},   {128, "8080"},  {200, "80c8"},
                       {300, "812c"}, {255, "80ff"}, {256, "8100"}, {32767, "ffff"}};
    for (const auto& row : table) {
        EXPECT_EQ(hex(WRITES(write_length, row.count)), row.bytes);
        EXPECT_EQ(READS(unhex(row.bytes), read_length), row.count);
    }
    EXPECT_EQ(READS(unhex("8005"), read_length), 5) << "two bytes where one would do";
    EXPECT_EQ(hex(WRITES(write_length, 32768)), "8000") << "the top bit merges with the flag";
}

TEST(Strings, LengthThenTheTextWithoutItsNul) {
    Block block(1 << 20);
    bufstring s(block.alloc);
    EXPECT_EQ(hex(WRITES(write_string, s)), "00") << "never stored";
    s = "";
    EXPECT_EQ(hex(WRITES(write_string, s) + WRITES(write_string_fixed, s)), "000000");
    s = "abc";
    EXPECT_EQ(hex(WRITES(write_string, s)), "03616263");
    EXPECT_EQ(hex(WRITES(write_blob, s)), "03616263");
    EXPECT_EQ(hex(WRITES(write_string_fixed, s)), "0300616263");
    EXPECT_EQ(hex(WRITES(write_string, std::string("abc"))), "03616263");
    s = std::string(300, 'x');
    EXPECT_EQ(hex(WRITES(write_string, s)).substr(0, 6), "ac0278");
    s = std::string(70000, 'x');
    const std::string bytes = WRITES(write_string, s);
    EXPECT_EQ(hex(bytes.substr(0, 2)), "f022") << "70,000 modulo 65,536";
    EXPECT_EQ(bytes.size(), 2 + 70000u) << "and all characters";
}

TEST(Strings, ReadsLeaveTheTextAndOneNul) {
    Block block(1000);
    bufstring s(block.alloc);
    s = "previous content";
    using Read = void (FastCodec::*)(bufstring&);
    const auto read = [&](const char* bytes, Read operation) {
        return decoded(unhex(bytes), [&](FastCodec& c) {
            (c.*operation)(s);
            return s.check();
        });
    };
    EXPECT_TRUE(read("03616263", &FastCodec::read_blob));
    EXPECT_EQ(s.size_(), 4u);
    EXPECT_STREQ(s.c_str(), "abc");
    EXPECT_TRUE(read("0300610062", &FastCodec::read_string_fixed));
    EXPECT_TRUE(s == std::string("a\0b", 3));
    for (const Read operation : {Read{&FastCodec::read_string}, Read{&FastCodec::read_cryptstring}}) {
        EXPECT_TRUE(read("00", operation));
        EXPECT_EQ(s.size_(), 1u) << "one NUL stays";
    }
    EXPECT_TRUE(read("81800461", &FastCodec::read_string));
    EXPECT_STREQ(s.c_str(), "a") << "a length of 65,537 is cut to 16 bits";
}

TEST(Strings, CipherWorksOnTheCopyOnly) {
    Block block(10000);
    for (const size_t length : {0u, 1u, 7u, 8u, 9u, 31u, 1000u}) {
        bufstring s(block.alloc), back(block.alloc);
        const std::string text(length, 'p');
        s = text;
        for (const bool blob : {false, true}) {
            const std::string bytes = blob ? WRITES(write_cryptblob, s) : WRITES(write_cryptstring, s);
            EXPECT_TRUE(s == text) << "the source is not enciphered";
            EXPECT_EQ(bytes.size(), WRITES(write_string, s).size());
            EXPECT_EQ(bytes == WRITES(write_string, s), length == 0);
            EXPECT_EQ(bytes, blob ? WRITES(write_cryptblob, text) : WRITES(write_cryptstring, text));
            decoded(bytes, [&](FastCodec& c) {
                blob ? c.read_cryptblob(back) : c.read_cryptstring(back);
                return 0;
            });
            EXPECT_TRUE(back == text);
            EXPECT_EQ(blob ? READS(bytes, read_cryptblob) : READS(bytes, read_cryptstring), text);
        }
        EXPECT_EQ(READS(WRITES(write_blob, text), read_blob), text);
        EXPECT_EQ(READS(WRITES(write_string, text), read_string), text);
    }
}

TEST(FastCodec, CursorIsACursor) {
    char range[4];
    FastCodec codec(range, range + sizeof range);
    codec.write_uint8(1);
    codec.write_uint8(2);
    EXPECT_EQ(codec.size(), 2u);
    codec.reset();
    EXPECT_EQ(codec.size(), 0u);
    EXPECT_EQ(codec.read_uint8(), 1);
    codec.read_uint16_fixed();
    codec.read_uint8();
    EXPECT_TRUE(codec.check()) << "at the end";
    FastCodec beyond(range, range + 1);
    beyond.read_uint16_fixed(); // runs past its range by contract; check() tells
    EXPECT_FALSE(beyond.check());
}

TEST(FastCodec, ReadOfAStringReportsAnExhaustedBlock) {
    Block block(3);
    bufstring s(block.alloc);
    std::string bytes = unhex("03616263");
    FastCodec codec(bytes.data(), bytes.data() + bytes.size());
    EXPECT_EQ(thrownText<std::length_error>([&] { codec.read_string(s); }), "vector::_M_fill_insert");
    Block half(6);
    bufstring first(half.alloc), second(half.alloc);
    codec.reset();
    codec.read_string(first);
    codec.reset();
    EXPECT_EQ(thrownText<std::out_of_range>([&] { codec.read_string(second); }),
              "BufferAllocator: exhausted memory block. (MsgName=TestMessage, Site=test)");
}

} // namespace
