// Comparing messages and captures: what makes two equal, and how far is read ahead.
#include <memory>

#include "tests/Samples.h"
#include "tools/qlproto/analysis/CaptureDiff.h"
#include "tools/qlproto/analysis/FlatFields.h"

namespace {

using namespace qlproto;
using namespace Quillon;
using Velmora::of;

template <class T>
std::string bytesOf(const T& message, const std::vector<std::string>& ignored = {}) {
    return valueBytes(T::ID, &message, ignored);
}

class Diff : public Module {};

TEST_F(Diff, BytesOfValuesAreEqualWhereTheMessagesAre) {
    forEveryMessage([&]<class T>(of<T>, const char*) {
        std::vector<std::unique_ptr<InBlock<T>>> messages;
        for (const Filling filling : fillings)
            for (unsigned seed : {1u, 1u, 2u}) {
                messages.push_back(std::make_unique<InBlock<T>>(1 << 18));
                Sample(filling, seed).fill(**messages.back());
            }
        for (const auto& a : messages)
            for (const auto& b : messages) EXPECT_EQ(bytesOf(**a) == bytesOf(**b), **a == **b);
    });
}

TEST_F(Diff, BytesOfValuesTellApartWhatLooksAlike) {
    const auto quotes = [](const std::vector<const char*>& ids, const std::vector<std::string>& ignored = {}) {
        InBlock<MassQuoteMessage> it;
        for (const char* id : ids) {
            auto& quote = it->contents.quotes.add_back();
            if (id != nullptr) quote.quoteID = id;
        }
        return bytesOf(*it, ignored);
    };
    EXPECT_NE(quotes({nullptr}), quotes({""})) << "never stored";
    EXPECT_NE(quotes({"a", "b"}), quotes({"ab"}));
    EXPECT_NE(quotes({"a", ""}), quotes({"", "a"}));
    EXPECT_NE(quotes({}), quotes({nullptr}));
    const std::vector<std::string> all{"quoteID", "price", "amount", "side", "detail"};
    EXPECT_EQ(quotes({"a", "b"}, all), quotes({"c", "d"}, all));
    EXPECT_NE(quotes({"a", "b"}, all), quotes({"a"}, all)) << "the number of elements counts";
    EXPECT_EQ(quotes({"a", "b"}, {"quotes"}), quotes({}, {"quotes"}));

    InBlock<JsonFromServer> server;
    InBlock<JsonFromClient> client;
    EXPECT_NE(bytesOf(*server), bytesOf(*client)) << "types";
}

/// A capture made up as it is read; knows how much of it has been read.
struct Made {
    std::function<CaptureDiff::Side(uint64_t number)> packet;
    uint64_t count;
    uint64_t read = 0;

    CaptureDiff::Source source() {
        return [this](CaptureDiff::Side& side) {
            if (read == count) return false;
            side = packet(++read);
            side.number = read;
            return true;
        };
    }
};

TEST_F(Diff, IsReadAheadByBytesNotByPackets) {
    constexpr size_t large = 250'000, count = 100;
    for (const bool isKeyed : {false, true}) { // a key counts as its packet does
        const auto made = [&](char letter) {
            return Made{[=](uint64_t number) {
                            const std::string text = letter + std::to_string(number) + std::string(large, letter);
                            return isKeyed ? CaptureDiff::Side{0, "id", text} : CaptureDiff::Side{0, text, {}};
                        },
                        count};
        };
        Made a = made('a'), b = made('b');
        uint64_t toldInA = 0, toldInB = 0, most = 0;
        CaptureDiff diff(a.source(), b.source(), [&](const CaptureDiff::Side* inA, const CaptureDiff::Side* inB) {
            most = std::max({most, a.read - toldInA, b.read - toldInB});
            toldInA += inA != nullptr;
            toldInB += inB != nullptr;
        });
        diff.run();
        EXPECT_LE(most, CaptureDiff::WINDOW_BYTES / large + 1);
        EXPECT_EQ(toldInA, count);
        EXPECT_EQ(toldInB, count);
        EXPECT_EQ(diff.equal(), 0u);
    }
}

TEST_F(Diff, AKeyIsNoPacketOfTheSameBytes) {
    Made a{[](uint64_t) { return CaptureDiff::Side{0, "p", "k"}; }, 1};
    Made b{[](uint64_t) { return CaptureDiff::Side{0, "k", {}}; }, 1};
    CaptureDiff diff(a.source(), b.source(), [](auto, auto) {});
    diff.run();
    EXPECT_EQ(diff.equal(), 0u);
}

} // namespace
