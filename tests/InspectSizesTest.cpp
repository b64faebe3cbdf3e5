// Sizes told beforehand: exact means that the size told does and one byte less does not.
#include "Inspect/Sizes.h"

#include <gtest/gtest.h>

#include "tests/Samples.h"

namespace {

using namespace Inspect;
using Velmora::of;

class Sizes : public Module {};

TEST_F(Sizes, EncodedSizeIsWhatIsWritten) {
    forEveryType([]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            for (unsigned seed = 1; seed <= 10; ++seed) {
                InBlock<T> value(1 << 18);
                Sample(filling, seed).fill(*value);
                ASSERT_EQ(encoded_size(*value), encoded(*value).size()) << seed;
            }
        }
    });
}

TEST_F(Sizes, EncodedSizeFollowsEveryBitOfANumber) {
    InBlock<Quillon::TradeCaptureMessage> trade; // a price, 64 and 32 bits
    InBlock<Quillon::MemBusConnectMessage> bus;  // 64 and 16 bits
    for (int bit = 0; bit < 64; ++bit) {
        for (const int64_t near : {-2, -1, 0, 1, 2, 3}) {
            for (const uint64_t sign : {uint64_t{1}, ~uint64_t{0}}) {
                const auto v = static_cast<int64_t>((uint64_t{1} << bit) * sign + static_cast<uint64_t>(near));
                trade->origPrice = trade->contents.timeExchange = bus->id.generation = v;
                trade->userID = static_cast<int32_t>(v);
                bus->id.appID = static_cast<int16_t>(v);
                ASSERT_EQ(encoded_size(*trade), encoded(*trade).size()) << v;
                ASSERT_EQ(encoded_size(*bus), encoded(*bus).size()) << v;
            }
        }
    }
    for (const int64_t sentinel : {Velmora::MAX, Velmora::NMA, Velmora::NDA, Velmora::NA}) {
        trade->origPrice = sentinel;
        EXPECT_EQ(encoded_size(*trade), encoded(*trade).size());
    }
}

TEST_F(Sizes, EncodedSizeIsTrueEvenOfWhatShouldNotBeWritten) {
    for (const size_t length : {0u, 127u, 128u, 16383u, 16384u, 65535u, 65536u, 70000u}) {
        InBlock<Quillon::JsonFromServer> text(1 << 18);
        text->contents = std::string(length, 'x');
        EXPECT_EQ(encoded_size(*text), encoded(*text).size()) << length;
        InBlock<Quillon::PadMessage> pad(1 << 18);
        pad->padding = std::string(length, 'x');
        EXPECT_EQ(encoded_size(*pad), length + 2) << length;
    }
    for (const size_t count : {127u, 128u, 32767u, 40000u, 65536u + 5}) {
        InBlock<Quillon::BatchesCompletedMessage> numbers(1 << 19);
        numbers->batchesCompleted.resize(count);
        EXPECT_EQ(encoded_size(*numbers), encoded(*numbers).size()) << count;
    }
}

/// Sets every field to what takes the most bytes within the limits.
template <class T>
void fillLargest(T& v, Limits limits, bool isPrice = false) {
    if constexpr (Velmora::String<T>) {
        v = std::string(limits.text, 'x');
    } else if constexpr (Velmora::Vector<T>) {
        v.resize(limits.count);
        for (auto& element : v) fillLargest(element, limits);
    } else if constexpr (Velmora::Composite<T>) {
        fields(of<T>{}, [&](const char*, auto member, auto encoding) {
            fillLargest(v.*member, limits, std::is_same_v<decltype(encoding), Velmora::price_t>);
            return true;
        });
    } else if constexpr (std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) {
        v = isPrice ? T{-1} : std::numeric_limits<T>::min();
    }
}

TEST_F(Sizes, TheLargestIsReachedAndNeverExceeded) {
    forEveryType([]<class T>(of<T>, const char*) {
        for (const Limits limits : {Limits{0, 0}, Limits{5, 2}, Limits{200, 1}, Limits{3, 130}}) {
            if (limits.count > 100 && max_encoded_size<T>(limits) > 100000) continue; // more than a test should build
            InBlock<T> largest(1 << 24);
            fillLargest(*largest, limits);
            EXPECT_EQ(max_encoded_size<T>(limits), encoded_size(*largest)) << limits.text << " " << limits.count;
        }
        for (unsigned seed = 1; seed <= 10; ++seed) {
            InBlock<T> value(1 << 18);
            Sample(Filling::extreme, seed).fill(*value);
            EXPECT_LE(encoded_size(*value), max_encoded_size<T>({300, 200}));
        }
    });
    EXPECT_EQ(max_encoded_size<Quillon::JsonFromServer>({}), 65538u);
    EXPECT_EQ(max_encoded_size<Quillon::PadMessage>({70000, 0}), 65537u) << "no more than can travel";
    EXPECT_EQ(max_encoded_size<Quillon::BatchesCompletedMessage>({0, 40000}), 2u + 5 * 32767);
}

TEST_F(Sizes, ACopyTakesExactlyTheBlockTold) {
    forEveryType([]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            for (unsigned seed = 1; seed <= 10; ++seed) {
                InBlock<T> value(1 << 18);
                Sample(filling, seed).fill(*value);
                const size_t required = required_block_bytes(*value);
                InBlock<T> copy(static_cast<int>(sizeof(T) + required));
                *copy = *value;
                ASSERT_EQ(copy.block.alloc.used_size(), sizeof(T) + required);
                if (required == 0) continue;
                InBlock<T> small(static_cast<int>(sizeof(T) + required - 1));
                EXPECT_ANY_THROW(*small = *value);
            }
        }
    });
    // A string that was never stored takes nothing, one that is empty takes its NUL.
    InBlock<Quillon::ClientConnectMessage> connect;
    EXPECT_EQ(required_block_bytes(*connect), 0u);
    connect->user = "";
    EXPECT_EQ(required_block_bytes(*connect), 1u);
    connect->password = "abc";
    EXPECT_EQ(required_block_bytes(*connect), 5u);
}

} // namespace
