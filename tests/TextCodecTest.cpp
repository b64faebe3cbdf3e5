#include "Backend/Velmora/TextCodec.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "Backend/Common/FastOStream.h"
#include "tests/Slots.h"

using bufstl::bufstring;
using Quillon::FastOStream;
using Quillon::StaticOStream;
using Velmora::Codec;
using TextCodec = Velmora::TextCodec<FastOStream>;

namespace {

template <class T>
using Limits = std::numeric_limits<T>;

/// A codec over a stream of its own, and strings in a block of their own.
class TextCodecTest : public testing::Test {
  protected:
    TextCodecTest() { stored.assign("b\0cd", 4); }

    /// What `write` writes. It is called through the interface.
    template <class Write>
    std::string text(Write write) {
        os.clear();
        write(static_cast<Codec&>(codec));
        return {os.begin(), os.size()};
    }

    StaticOStream<1024> os;
    TextCodec codec{os};
    char block[256];
    Velmora::BufferAllocator alloc{block, sizeof(block), "test", "test"};
    bufstring stored{alloc};
    bufstring untouched{alloc};
};

TEST_F(TextCodecTest, NumbersAreDecimal) {
    const struct {
        std::string actual;
        const char* expected;
    } cases[] = {
        {text([](Codec& c) { c.write_bool(true), c.write_bool(false); }), "TF"},
        {text([](Codec& c) { c.write_int8('A'); }), "65"},
        {text([](Codec& c) { c.write_int8('\xff'); }), "-1"},
        {text([](Codec& c) { c.write_int8('\x80'); }), "-128"},
        {text([](Codec& c) { c.write_uint8(0xff); }), "255"},
        {text([](Codec& c) { c.write_int16(Limits<short>::min()); }), "-32768"},
        {text([](Codec& c) { c.write_uint16(Limits<unsigned short>::max()); }), "65535"},
        {text([](Codec& c) { c.write_int32(Limits<int>::min()); }), "-2147483648"},
        {text([](Codec& c) { c.write_uint32(Limits<unsigned int>::max()); }), "4294967295"},
        {text([](Codec& c) { c.write_int64(Limits<long long>::min()); }), "-9223372036854775808"},
        {text([](Codec& c) { c.write_uint64(Limits<unsigned long long>::max()); }), "18446744073709551615"},
        {text([](Codec& c) { c.write_float4(0.25f); }), "0.25000"},
        {text([](Codec& c) { c.write_float8(-1.5); }), "-1.50000"},
        {text([](Codec& c) { c.write_float4(0.1f), c.write_float8(0.1); }), "0.100000.10000"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.actual, c.expected);

    // The widened float, not the nearest double: the digits show it.
    os.setprecision(12);
    EXPECT_EQ(text([](Codec& c) { c.write_float4(0.1f); }), "0.100000001490");
    EXPECT_EQ(text([](Codec& c) { c.write_float8(0.1); }), "0.100000000000");
}

TEST_F(TextCodecTest, EveryStringFormQuotesInClearAndEscapesNothing) {
    const std::string standard("a\0b", 3);
    const std::string special = "q\"b\\n\n";
    const std::string wholeText("\"b\0cd\"", 6);

    using Form = void (*)(Codec&, const bufstring&, const std::string&);
    const Form forms[] = {
        [](Codec& c, const bufstring& b, const std::string& s) { c.write_string(b), c.write_string(s); },
        [](Codec& c, const bufstring& b, const std::string& s) { c.write_cryptstring(b), c.write_cryptstring(s); },
        [](Codec& c, const bufstring& b, const std::string& s) { c.write_blob(b), c.write_blob(s); },
        [](Codec& c, const bufstring& b, const std::string& s) { c.write_cryptblob(b), c.write_cryptblob(s); },
    };
    for (const Form form : forms) {
        // Embedded NULs stay in the one and cut the other.
        EXPECT_EQ(text([&](Codec& c) { form(c, stored, standard); }), wholeText + "\"a\"");
        EXPECT_EQ(text([&](Codec& c) { form(c, untouched, ""); }), "\"\"\"\"");
        EXPECT_EQ(text([&](Codec& c) { form(c, stored, special); }), wholeText + '"' + special + '"');
    }
    stored.clear(); // only the terminator is left
    EXPECT_EQ(text([&](Codec& c) { c.write_string(stored); }), "\"\"");
}

TEST_F(TextCodecTest, RawTextStandsAsItIs) {
    EXPECT_EQ(text([](Codec& c) { c.write_rawfield("a\"b"), c.write_data("=1"); }), "a\"b=1");
    EXPECT_EQ(text([](Codec& c) { c.write_rawfield(""), c.write_data(""); }), "");
    EXPECT_EQ(text([](Codec& c) { c.write_rawfield(nullptr), c.write_data(nullptr); }), "");
}

TEST_F(TextCodecTest, ReadingYieldsNothing) {
    Codec& c = codec;
    os << "kept";
    EXPECT_EQ(c.read_bool(), false);
    EXPECT_EQ(c.read_int8(), 0);
    EXPECT_EQ(c.read_uint8(), 0);
    EXPECT_EQ(c.read_int16(), 0);
    EXPECT_EQ(c.read_uint16(), 0);
    EXPECT_EQ(c.read_int32(), 0);
    EXPECT_EQ(c.read_uint32(), 0u);
    EXPECT_EQ(c.read_int64(), 0);
    EXPECT_EQ(c.read_uint64(), 0u);
    EXPECT_EQ(c.read_float4(), 0.0f);
    EXPECT_EQ(c.read_float8(), 0.0);
    c.read_string(stored), c.read_cryptstring(stored), c.read_blob(stored), c.read_cryptblob(stored);
    EXPECT_EQ(stored, std::string("b\0cd", 4));
    EXPECT_EQ(std::string(os.begin(), os.size()), "kept");
}

TEST_F(TextCodecTest, CopiesWriteIntoTheSameStream) {
    TextCodec copy(codec);
    EXPECT_EQ(&copy.stream(), &os);
    EXPECT_EQ(&codec.stream(), &os);
    copy.write_int32(1);
    codec.write_int32(2);
    EXPECT_STREQ(os.ends(), "12");
}

TEST_F(TextCodecTest, DerivedStringFormServesAllOthers) {
    struct Masking : TextCodec {
        using TextCodec::TextCodec;
        void write_string(const bufstring&) override { stream() << '*'; }
        void write_string(const std::string&) override { stream() << '#'; }
    } masking(os);
    masking.write_cryptstring(stored), masking.write_blob(stored), masking.write_cryptblob(stored);
    masking.write_cryptstring("s"), masking.write_blob("s"), masking.write_cryptblob("s");
    EXPECT_STREQ(os.ends(), "***###");
}

TEST(CodecSlots, OrderIsBinding) {
    using Buf = void (Codec::*)(const bufstring&);
    using Std = void (Codec::*)(const std::string&);
    expectSlotsFromTwo(
        &Codec::read_bool, &Codec::read_int8, &Codec::read_uint8, &Codec::read_int16, &Codec::read_uint16,
        &Codec::read_int32, &Codec::read_uint32, &Codec::read_int64, &Codec::read_uint64, &Codec::read_float4,
        &Codec::read_float8, &Codec::read_string, &Codec::read_cryptstring, &Codec::read_blob, &Codec::read_cryptblob,
        &Codec::write_bool, &Codec::write_int8, &Codec::write_uint8, &Codec::write_int16, &Codec::write_uint16,
        &Codec::write_int32, &Codec::write_uint32, &Codec::write_int64, &Codec::write_uint64, &Codec::write_float4,
        &Codec::write_float8, Buf(&Codec::write_string), Std(&Codec::write_string), Buf(&Codec::write_cryptstring),
        Std(&Codec::write_cryptstring), Buf(&Codec::write_blob), Std(&Codec::write_blob), Buf(&Codec::write_cryptblob),
        Std(&Codec::write_cryptblob), &Codec::write_rawfield, &Codec::write_data);
}

} // namespace
