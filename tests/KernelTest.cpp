// The wire code exists once per kernel, and the processor decides which runs. Both must do the same: the one for older
// processors is exercised here whatever this machine has.
#include "Backend/Velmora/operations/Decode.h"
#include "Backend/Velmora/operations/Encode.h"

#include <gtest/gtest.h>

#include "tests/Hex.h"
#include "tests/Samples.h"

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

template <class K, class T>
std::string encoded(const T& value) {
    std::string range(1 << 17, '\xAA');
    range.resize(static_cast<size_t>(Velmora::encodeFields<K>(value, range.data()) - range.data()));
    return range;
}

/// Through the kernel K alone, from bytes that end where their storage ends.
template <class K>
void expectRoundTrips() {
    forEveryType([]<class T>(Velmora::of<T>, const char*) {
        if constexpr (std::is_same_v<T, Quillon::PadMessage>) return; // reads another form than it writes
        for (const Filling filling : fillings) {
            InBlock<T> value, back;
            Sample sample(filling, 6);
            sample.fill(*value);
            const std::string body = encoded<K>(*value);
            EXPECT_EQ(hex(body), hex(encoded<Baseline>(*value)));
            const std::unique_ptr<char[]> exact(new char[body.size()]);
            std::memcpy(exact.get(), body.data(), body.size());
            const char* const end = exact.get() + body.size();
            EXPECT_EQ(Velmora::decodeFields<K>(*back, exact.get(), exact.get(), end), end);
            sample.check(*back);
        }
    });
}

TEST_F(Kernel, BaselineRunsEverywhere) {
    expectSpreadAndGather<Baseline>();
    expectRoundTrips<Baseline>();
}

TEST_F(Kernel, Bmi2AgreesWithIt) {
    if (!__builtin_cpu_supports("bmi2")) GTEST_SKIP() << "needs a processor with BMI2";
    expectSpreadAndGather<Bmi2>();
    expectRoundTrips<Bmi2>();
}

} // namespace
