// The hash of tables whose keys come from strangers.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <string>

#include <gtest/gtest.h>

#include "Capture/SeededHash.h"

namespace {

using namespace Capture;

// The vectors of its authors: the key is the bytes 0 to 15, the texts are the bytes from 0 on.
TEST(SeededHash, IsTheHashItIsNamedAfter) {
    constexpr SipKey key{0x0706050403020100, 0x0F0E0D0C0B0A0908};
    const std::pair<size_t, uint64_t> cases[] = {{0, 0x726fdb47dd0e0e31},  {1, 0x74f839c593dc67fd},
                                                 {7, 0xab0200f58b01d137},  {8, 0x93f5f5799a932462},
                                                 {15, 0xa129ca6149be45e5}, {63, 0x958a324ceb064572}};
    for (const auto& [length, hash] : cases) {
        std::string bytes(length, '\0');
        std::iota(bytes.begin(), bytes.end(), '\0');
        EXPECT_EQ(sipHash(bytes, key), hash) << length;
    }
}

TEST(SeededHash, KeysChosenForOnePlaceAreSpread) {
    SeededMap<int64_t, bool> numbers;
    numbers.reserve(10000);
    const auto places = static_cast<int64_t>(numbers.bucket_count());
    for (int64_t i = 0; i < 10000; ++i) numbers[i * places]; // as themselves, all would be in the first
    size_t longest = 0;
    for (size_t i = 0; i < numbers.bucket_count(); ++i) longest = std::max(longest, numbers.bucket_size(i));
    EXPECT_LT(longest, 20u);
}

// A table of another hash would work as well, until somebody chooses its keys.
TEST(SeededHash, NoOtherHashTableReadsWhatStrangersWrote) {
    for (const char* folder : {"/Capture", "/Inspect", "/tools"})
        for (const auto& file : std::filesystem::recursive_directory_iterator(std::string(QL_ROOT) + folder)) {
            if (!file.is_regular_file() || file.path().filename() == "SeededHash.h") continue;
            std::ifstream stream(file.path());
            const std::string text{std::istreambuf_iterator<char>(stream), {}};
            EXPECT_EQ(text.find("std::unordered_"), text.npos) << file.path();
        }
}

} // namespace
