#include "Backend/Velmora/bufstl/bufstring.h"

#include <gtest/gtest.h>

#include "tests/Block.h"

namespace {

using bufstl::bufstring;

TEST(BufString, NeverStoredAndStoredEmptyReadAlikeButDiffer) {
    Block block(100);
    bufstring never(block.alloc), empty(block.alloc);
    EXPECT_EQ(block.alloc.used_size(), 0u);
    empty = "";
    EXPECT_EQ(block.alloc.used_size(), 1u) << "the NUL";
    for (const bufstring* s : {&never, &empty}) {
        EXPECT_TRUE(s->empty());
        EXPECT_EQ(s->size(), 0u);
        EXPECT_STREQ(s->c_str(), "");
        EXPECT_TRUE(*s == std::string());
        EXPECT_TRUE(s->check());
    }
    EXPECT_TRUE(never.empty_() && !empty.empty_());
    EXPECT_EQ(empty.size_(), 1u);
    EXPECT_FALSE(never == empty);
    EXPECT_TRUE(never < empty && !(empty < never));
}

TEST(BufString, GrowthDecidesTheBytesTaken) {
    Block block(100);
    bufstring s(block.alloc);
    s = "abc";
    EXPECT_EQ(block.alloc.used_size(), 4u);
    s = "abcdefghij";
    EXPECT_EQ(block.alloc.used_size(), 4u + 11u);
    EXPECT_EQ(block.alloc.deallocated_size(), 4);
    s = "abcdefghijk"; // one more: doubled
    EXPECT_EQ(block.alloc.used_size(), 4u + 11u + 22u);
    s = "x";
    s = "twenty-one characters";
    EXPECT_EQ(block.alloc.used_size(), 4u + 11u + 22u) << "fits what it has";
    EXPECT_STREQ(s.c_str(), "twenty-one characters");
}

TEST(BufString, AssignmentAcrossBlocksKeepsTheTargetsStorage) {
    Block sourceBlock(100), block(100);
    bufstring source(sourceBlock.alloc), s(block.alloc);
    s = source;
    EXPECT_EQ(block.alloc.used_size(), 0u);
    EXPECT_EQ(s.data(), nullptr);
    s = "filled";
    s = source;
    EXPECT_TRUE(s.empty_()) << "no element at all, not even a NUL";
    EXPECT_EQ(s.capacity(), 7u);
    EXPECT_EQ(block.alloc.deallocated_size(), 0);
    source = std::string("b\0c", 3);
    s = source;
    EXPECT_TRUE(s == std::string("b\0c", 3) && s == source);
    EXPECT_TRUE(block.contains(s.data()));
    EXPECT_EQ(block.alloc.used_size(), 7u);
}

TEST(BufString, AFirstTextTakesWhatItNeeds) {
    for (int n : {0, 1, 2, 7, 15, 16, 30, 31, 32, 33, 100}) {
        const std::string text(static_cast<size_t>(n), 'x');
        Block sourceBlock(200), block(n + 1), full(n + 1);
        bufstring source(sourceBlock.alloc), s(block.alloc), without(full.alloc);
        full.alloc.allocate(1);
        source = text;
        s = source;
        EXPECT_TRUE(s == text && s == source) << n;
        EXPECT_EQ(block.alloc.unused_size(), 0u) << "to the last byte";
        EXPECT_THROW(without = source, std::out_of_range);
        EXPECT_EQ(full.alloc.used_size(), 1 + text.size() + 1) << "the failed request included";
        EXPECT_TRUE(without.empty_());
        const bufstring& itself = s;
        s = itself;
        EXPECT_TRUE(s == text);
    }
}

TEST(BufString, TextOperations) {
    Block block(1000);
    bufstring s(block.alloc);
    s.clear();
    EXPECT_TRUE(s.empty_()) << "clearing stores nothing";
    s += "ab";
    s.append("cd").append("").append(nullptr);
    EXPECT_TRUE(s == "abcd" && s != "abc");
    s.append(s.c_str());
    EXPECT_STREQ(s.c_str(), "abcdabcd");
    s.assign(s.c_str() + 2, 3); // of its own text
    EXPECT_STREQ(s.c_str(), "cda");
    s.assign("xyz", 2);
    EXPECT_STREQ(s.c_str(), "xy");
    s.assign(static_cast<const char*>(nullptr));
    EXPECT_EQ(s.size_(), 1u);
    s = "again";
    s.clear();
    EXPECT_EQ(s.size_(), 1u);
    EXPECT_STREQ(s.c_str(), "");
    const bufstring copy(s);
    EXPECT_TRUE(copy == s && copy != std::string(1, '\0'));
    s.push_back('x');
    EXPECT_FALSE(s.check()) << "no NUL at its end";
    s.append("");
    EXPECT_TRUE(s.check());
}

TEST(BufString, OrderIsBySignedCharactersWithTheNulIncluded) {
    struct {
        std::string less, greater;
        const char* why;
    } const table[] = {
        {"ab", "abc", "NUL before a letter"},
        {"ab\xE9", "ab", "a byte above 7F is negative, so it comes before the NUL"},
        {"\xE9", "z", "and before every letter"},
        {"\x80", "\xFF", "-128 before -1"},
        {"", "a", "empty"},
        {std::string("a\0", 2), std::string("a\0b", 3), "embedded NUL: prefix"},
    };
    for (const auto& row : table) {
        Block block(1000);
        bufstring a(block.alloc), b(block.alloc);
        a = row.less;
        b = row.greater;
        EXPECT_TRUE(a < b) << row.why;
        EXPECT_FALSE(b < a) << row.why;
        EXPECT_FALSE(a == b) << row.why;
    }
}

} // namespace
