// The hook for bytes without a name, which the module keeps empty: what it is told, seen by a program with a hook and a
// small protocol of its own.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "Backend/Velmora/operations/Decode.h"
#include "Backend/Velmora/operations/Encode.h"
#include "tests/Block.h"

namespace paintings {

std::vector<std::pair<std::string, bool>> reported;
void validateEnum(const std::string& fieldName, bool valid) { reported.emplace_back(fieldName, valid); }
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
    explicit Painting(Velmora::BufferAllocator& alloc) : pairs(alloc) {}
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

} // namespace paintings
