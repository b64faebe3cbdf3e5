// The wire code exists once per kernel, and the processor decides which runs. Both must do the same: the one for older
// processors is exercised here whatever this machine has.
#include "Backend/Common/Processor.h"

#include <gtest/gtest.h>

#include "tests/Guarded.h"
#include "tests/Hex.h"
#include "tests/Samples.h"

/// What the compiler's run-time library found out about the processor; hasFastDeposit() asks it, in the library linked
/// here.
extern "C" {
extern struct { unsigned vendor, type, subtype, features; } __cpu_model;
}

namespace {

using Quillon::Baseline;
using Quillon::Bmi2;

class Kernel : public Module {};

template <class K>
void expectSpreadAndGather() {
    for (unsigned bit = 0; bit < 56; ++bit) {
        for (const uint64_t bits : {uint64_t{1} << bit, (uint64_t{1} << bit) - 1, uint64_t{0x5A5A5A5A5A5A5A} >> bit}) {
            uint64_t expected = 0;
            for (unsigned group = 0; group < 8; ++group) expected |= (bits >> (7 * group) & 0x7F) << (8 * group);
            EXPECT_EQ(K::spread(bits), expected) << std::hex << bits;
            EXPECT_EQ(K::gather(expected), bits) << std::hex << bits;
            EXPECT_EQ(K::gather(expected | 0x8080808080808080), bits) << "top bits are ignored";
        }
    }
}

TEST_F(Kernel, SpreadAndGatherFollowTheirDefinition) {
    expectSpreadAndGather<Baseline>();
    if (__builtin_cpu_supports("bmi2")) expectSpreadAndGather<Bmi2>();
}

/// Makes the processor look like one without BMI2.
struct OlderProcessor {
    OlderProcessor() { __cpu_model.features &= ~bmi2; }
    ~OlderProcessor() { __cpu_model.features = features; }

    static constexpr unsigned bmi2 = 1u << 17;
    unsigned features = __cpu_model.features;
};

/// Writes `value` where the bytes end at a protected page, and where they begin behind one; reads them back from there.
template <class T>
void expectWithinPages(const T& value, const std::string& body, Sample& sample, Guarded& pages) {
    const std::string blank(body.size(), '\xAA');
    for (const bool atEnd : {true, false}) {
        char* const begin = const_cast<char*>((atEnd ? pages.hold(blank) : pages.holdAtBegin(blank)).data());
        Velmora::FastCodec out(begin, begin + body.size());
        value.write(out);
        EXPECT_EQ(hex({begin, out.size()}), hex(body));
        if constexpr (std::is_same_v<T, Quillon::PadMessage>) continue; // reads another form than it writes
        InBlock<T> back;
        Velmora::FastCodec in(begin, begin + body.size());
        back->read(in);
        EXPECT_EQ(in.size(), body.size());
        sample.check(*back);
    }
}

TEST_F(Kernel, AllProcessorsWriteAndReadTheSameBytesAndNoneOutsideABody) {
    Guarded pages;
    forEveryType([&]<class T>(Velmora::of<T>, const char*) {
        for (const Filling filling : fillings) {
            for (unsigned seed = 1; seed <= 8; ++seed) {
                InBlock<T> value;
                Sample sample(filling, seed);
                sample.fill(*value);
                const std::string body = encoded(*value);
                expectWithinPages(*value, body, sample, pages);
                const OlderProcessor older;
                ASSERT_FALSE(Quillon::hasFastDeposit());
                expectWithinPages(*value, body, sample, pages);
            }
        }
    });
}

} // namespace
