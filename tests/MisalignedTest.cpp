// Misaligned elements under an eager optimiser: everything that loops over elements, at every start offset, in a
// library and a test compiled with -O3, AVX2 and a tuning that prefers aligned accesses. A wrong assumption crashes.
#include <gtest/gtest.h>

#include <vector>

#include "tests/Samples.h"

namespace {

using bufstl::bufvector;
using Quillon::FeedMarketID;

class Misaligned : public Module {
  protected:
    void SetUp() override {
        if (!__builtin_cpu_supports("avx2")) GTEST_SKIP() << "needs a processor with AVX2";
    }
};

template <class T, class Make>
void exercise(int offset, Make make) {
    SCOPED_TRACE(offset);
    Block block(1 << 16, offset), other(1 << 16, offset + 1);
    bufvector<T> v(block.alloc), w(other.alloc);
    std::vector<T> usual;
    const auto check = [&](const bufvector<T>& ours) {
        ASSERT_EQ(ours.size(), usual.size());
        for (size_t i = 0; i < usual.size(); ++i) EXPECT_TRUE(bufstl::load(ours.data() + i) == usual[i]);
    };
    usual.assign(67, make(1)), v.assign(67, make(1));
    check(v);
    for (int i = 0; i < 40; ++i) usual.push_back(make(i)), v.push_back(make(i));
    usual.insert(usual.begin() + 5, 33, make(7)), v.insert(v.begin() + 5, 33, make(7));
    usual.erase(usual.begin() + 3, usual.begin() + 20), v.erase(v.begin() + 3, v.begin() + 20);
    usual.resize(300), v.resize(300);
    check(v);
    w = v;
    check(w);
    EXPECT_TRUE(v == w && !(v < w));
    w.back() = make(99);
    EXPECT_TRUE(v != w && v < w);
}

TEST_F(Misaligned, VectorsOfPlainElements) {
    for (int offset = 0; offset < 64; ++offset) {
        exercise<int>(offset, [](int i) { return i; });
        exercise<FeedMarketID>(offset, [](int i) { return FeedMarketID(i, -i); });
    }
}

TEST_F(Misaligned, EveryTypeAtEveryOffset) {
    forEveryType([]<class T>(Velmora::of<T>, const char*) {
        for (int offset = 0; offset < 32; ++offset) {
            SCOPED_TRACE(offset);
            InBlock<T> value(1 << 16, offset), copy(1 << 16, offset + 3), read(1 << 16, offset + 5);
            Sample sample(Filling::extreme, static_cast<unsigned>(offset));
            sample.fill(*value);
            *copy = *value;
            sample.check(*copy);
            EXPECT_TRUE(*copy == *value && !(*copy < *value));
            value->checkbounds(value.block.begin(), value.block.end());
            if constexpr (std::is_same_v<T, Quillon::PadMessage>) continue; // reads another form than it writes
            decode(*read, encoded(*value));
            sample.check(*read);
        }
    });
}

} // namespace
