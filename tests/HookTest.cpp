// The hook for bytes without a name, which the module keeps empty: what it is told, seen by a program with a hook and a
// small protocol of its own.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "Backend/Velmora/operations/Decode.h"
#include "Backend/Velmora/operations/Encode.h"
#include "Inspect/DecodeWalk.h"
#include "Inspect/EncodeWalk.h"
#include "tests/Block.h"

namespace paintings {

std::vector<std::pair<std::string, bool>> reported;
bool isThrowing = false;
void validateEnum(const std::string& fieldName, bool valid) {
    reported.emplace_back(fieldName, valid);
    if (isThrowing) throw fieldName;
}
template <class H>
void validateEnum(Velmora::of<H>, const char* fieldName, bool valid) {
    VALIDATE_ENUM(fieldName, valid)
}

struct Color {
    enum Type : int32_t { RED = 1, GREEN = 4 };
    static constexpr const char* Name = "Color";
    inline static bool _initialized = true;
    static constexpr unsigned int _maxValue = 4;
    static constexpr unsigned int _nbValues = 2;
    inline static const char* _names[] = {nullptr, "RED", nullptr, nullptr, "GREEN"};
    static bool isValid(unsigned char value) { return Velmora::enumeratorName<Color>(value) != nullptr; }
};
Velmora::of<Color> enumerationOf(Color::Type);
template <class Visit>
constexpr void enumerators(Velmora::of<Color>, Visit&& visit) {
    visit("RED", Color::RED), visit("GREEN", Color::GREEN);
}

struct Pair {
    Color::Type front{}, back{};
};
template <class Visit>
constexpr bool fields(Velmora::of<Pair>, Visit&& visit) {
    return visit("front", &Pair::front, Velmora::plain) && visit("back", &Pair::back, Velmora::plain);
}

struct Painting {
    static constexpr Velmora::MsgType_t ID = 1;
    explicit Painting(Velmora::BufferAllocator& alloc) : pairs(alloc) {}
    void write(Velmora::FastCodec& codec) const { Velmora::encode(*this, codec); }
    Color::Type frame{};
    bufstl::bufvector<Pair> pairs;
};
template <class Visit>
constexpr bool fields(Velmora::of<Painting>, Visit&& visit) {
    return visit("frame", &Painting::frame, Velmora::plain) && visit("pairs", &Painting::pairs, Velmora::plain);
}

TEST(Hook, IsToldTheFieldOfEveryByteWithoutANameAndNoOther) {
    char bytes[] = {4, 3, 1, 0, 5, 4, 3, -1}; // the frame, the count, three pairs
    const std::vector<std::pair<std::string, bool>> expected = {
        {"back", false}, {"front", false}, {"front", false}, {"back", false}};
    InBlock<Painting> painting;
    for (int round = 0; round < 2; ++round) { // into a fresh vector and over elements
        reported.clear();
        Velmora::FastCodec in(bytes, bytes + sizeof bytes);
        Velmora::decode(*painting, in);
        EXPECT_EQ(in.size(), sizeof bytes);
        EXPECT_EQ(reported, expected) << "read";
    }
    reported.clear();
    char written[sizeof bytes];
    Velmora::FastCodec out(written, written + sizeof written);
    Velmora::encode(*painting, out);
    EXPECT_EQ(std::string(written, out.size()), std::string(bytes, sizeof bytes)) << "they travel all the same";
    EXPECT_EQ(reported, expected) << "written";

    painting->frame = Color::Type(257); // judged by the byte that travels, which is RED's
    reported.clear();
    out.reset();
    Velmora::encode(*painting, out);
    EXPECT_EQ(reported, expected);
}

TEST(Hook, IsToldWhatIsAcceptedAndNothingOfWhatIsRefused) {
    const char bytes[] = {4, 3, 1, 0, 5, 4, 3, -1};
    const std::vector<std::pair<std::string, bool>> expected = {
        {"back", false}, {"front", false}, {"front", false}, {"back", false}};
    for (size_t size = 0; size <= sizeof bytes; ++size) {
        reported.clear();
        Block block(4096);
        const auto placed = Inspect::walk::decode_fresh<Painting>({bytes, size}, block.alloc, true);
        EXPECT_EQ(placed.message != nullptr, size == sizeof bytes);
        EXPECT_EQ(reported, placed.message != nullptr ? expected : decltype(expected){});
        if (placed.message == nullptr) continue;
        reported.clear();
        char written[256]; // fewer do not suffice for one walk
        const char* const end =
            Inspect::walk::encode_within<Painting>(placed.message, written, written + sizeof written);
        EXPECT_EQ(std::string_view(written, static_cast<size_t>(end - written)), std::string_view(bytes, sizeof bytes));
        EXPECT_EQ(reported, expected);
        for (const size_t room : {sizeof bytes, sizeof bytes - 1}) { // by way of memory with room for one walk
            reported.clear();
            const bool isAccepted =
                bool(Inspect::walk::encode_measured<Painting>(placed.message, written, written + room));
            EXPECT_EQ(isAccepted, room == sizeof bytes);
            EXPECT_EQ(reported, isAccepted ? expected : decltype(expected){});
        }
        reported.clear();
        auto& pairs = static_cast<Painting*>(placed.message)->pairs;
        pairs.resize(100, pairs[0]);
        EXPECT_EQ(Inspect::walk::encode_within<Painting>(placed.message, written, written + 100), nullptr);
        EXPECT_TRUE(reported.empty());
        static_cast<Painting*>(placed.message)->~Painting();
    }
    Block block(4096);
    isThrowing = true;
    EXPECT_THROW(Inspect::walk::decode_fresh<Painting>({bytes, sizeof bytes}, block.alloc, false), std::string);
    EXPECT_EQ(block.alloc.deallocated_size(), static_cast<int>(3 * sizeof(Pair))) << "the message is destroyed";
    isThrowing = false;
}

} // namespace paintings
