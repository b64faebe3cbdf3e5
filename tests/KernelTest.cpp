// The wire code exists once per kernel, and the processor decides which runs. Both must do the same: the one for older
// processors is exercised here whatever this machine has.
#include "Backend/Common/Processor.h"

#include <gtest/gtest.h>

#include "tests/Guarded.h"
#include "tests/Hex.h"
#include "tests/OlderProcessor.h"
#include "tests/Samples.h"

namespace {

using Quillon::Baseline;
using Quillon::Bmi2;

/// What the compiler's run-time library found out about the processor.
extern "C" {
extern struct { unsigned vendor, type, subtype, features; } __cpu_model;
}

class Kernel : public Module {};

TEST(KernelChoice, IsTheSafeOneUntilTheModuleIsInitialised) {
    EXPECT_FALSE(Quillon::fastDeposit);
    Quillon::RuThereMessage message, back;
    message.dpdSeqNo = -300;
    message.timeApiClient = 1'700'000'000'000'000'000;
    decode(back, encoded(message));
    EXPECT_TRUE(back == message);
    Quillon::initialize();
    EXPECT_EQ(Quillon::fastDeposit, Quillon::findFastDeposit());
    Quillon::finalize();
}

TEST_F(Kernel, IsChosenByTheProcessor) {
    const unsigned features = __cpu_model.features;
    __cpu_model.features &= ~(1u << 17); // BMI2
    EXPECT_FALSE(Quillon::findFastDeposit());
    __cpu_model.features = features;
}

template <class K>
void expectSpreadAndGather() {
    for (unsigned bit = 0; bit < 56; ++bit) {
        for (const uint64_t bits : {uint64_t{1} << bit, (uint64_t{1} << bit) - 1, uint64_t{0x5A5A5A5A5A5A5A} >> bit}) {
            uint64_t expected = 0;
            for (unsigned group = 0; group < 8; ++group) expected |= (bits >> (7 * group) & 0x7F) << (8 * group);
            EXPECT_EQ(K::spread(bits), expected) << std::hex << bits;
            EXPECT_EQ(K::gather(expected), bits) << std::hex << bits;
            EXPECT_EQ(K::gather(expected | 0x8080808080808080), bits) << "top bits are ignored";
            EXPECT_EQ(K::template spread<2>(bits), K::spread(bits << 2)) << std::hex << bits;
            EXPECT_EQ((K::template gather<2, 8>(expected)), bits >> 2) << std::hex << bits;
            EXPECT_EQ((K::template gather<0, 3>(~expected)), ~bits & 0x1FFFFF) << "of three bytes only";
        }
    }
    for (unsigned index = 0; index < 64; ++index)
        EXPECT_EQ(K::moreBelow(index), 0x8080808080808080 & ((uint64_t{1} << index) - 1)) << index;
}

TEST_F(Kernel, SpreadAndGatherFollowTheirDefinition) {
    expectSpreadAndGather<Baseline>();
    if (__builtin_cpu_supports("bmi2")) expectSpreadAndGather<Bmi2>();
}

/// Writes `value` where the bytes end at a protected page, and where they begin after one; reads them back from there.
template <class T, class Check>
void expectWithinPages(const T& value, const std::string& body, Guarded& pages, const Check& check) {
    const std::string blank(body.size(), '\xAA');
    for (const bool atEnd : {true, false}) {
        char* const begin = const_cast<char*>((atEnd ? pages.hold(blank) : pages.holdAtBegin(blank)).data());
        Velmora::FastCodec out(begin, begin + body.size());
        value.write(out);
        EXPECT_EQ(hex({begin, out.size()}), hex(body));
        if constexpr (std::is_same_v<T, Quillon::PadMessage>) continue; // reads another form than it writes
        InBlock<T> back(1 << 18);
        Velmora::FastCodec in(begin, begin + body.size());
        back->read(in);
        EXPECT_EQ(in.size(), body.size());
        check(*back);
    }
}

/// The same by both kernels.
template <class T, class Check>
void expectOfBothKernels(const T& value, const std::string& body, Guarded& pages, const Check& check) {
    expectWithinPages(value, body, pages, check);
    const OlderProcessor older;
    expectWithinPages(value, body, pages, check);
}

TEST_F(Kernel, AllProcessorsWriteAndReadTheSameBytesAndNoneOutsideABody) {
    Guarded pages;
    forEveryType([&]<class T>(Velmora::of<T>, const char*) {
        for (const Filling filling : fillings) {
            for (unsigned seed = 1; seed <= 8; ++seed) {
                InBlock<T> value;
                Sample sample(filling, seed);
                sample.fill(*value);
                expectOfBothKernels(*value, encoded(*value), pages, [&](const T& back) { sample.check(back); });
            }
        }
    });
}

TEST_F(Kernel, TextsOfEveryKindOfLength) {
    Guarded pages;
    const std::vector<size_t> lengths = {0,  1,  2,  3,  4,  5,  7,   8,   9,   15,  16,    17,    18,   31,
                                         32, 33, 34, 63, 64, 65, 126, 127, 128, 129, 16383, 16384, 65535};
    for (const size_t n : lengths) {
        std::string text(n, ' '), body;
        for (size_t i = 0; i < n; ++i) text[i] = static_cast<char>(i * 7 + n);
        for (int i = 0; i < 2; ++i) { // the key and the value
            size_t rest = n;
            for (; rest > 127; rest >>= 7) body += static_cast<char>(rest | 0x80);
            body += static_cast<char>(rest);
            body += text;
        }
        InBlock<Quillon::KeyValuePair> pair(1 << 18);
        pair->key = text;
        pair->value = text;
        expectOfBothKernels(*pair, body, pages, [&](const Quillon::KeyValuePair& back) {
            EXPECT_TRUE(back.key == text && back.value == text) << n;
            EXPECT_EQ(back.value.size_(), n + 1) << "the NUL included";
        });

        // Read over other texts: what fits is overwritten, what does not takes new storage.
        for (const size_t before : {size_t{0}, n / 2, n, n + 40}) {
            InBlock<Quillon::KeyValuePair> used(1 << 18);
            used->key = std::string(before, '#');
            used->value = std::string(before, '#');
            Velmora::FastCodec codec(body.data(), body.data() + body.size());
            used->read(codec);
            EXPECT_TRUE(used->key == text && used->value == text) << n << " over " << before;
            EXPECT_EQ(used->key.c_str()[n], '\0');
        }
    }
}

} // namespace
