#include "Backend/Velmora/BufferAllocator.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "tests/Block.h"

namespace {

const char* const exhausted = "BufferAllocator: exhausted memory block. (MsgName=LogMessage, Site=gateway)";

TEST(BufferAllocator, LaysRequestsEndToEndWithoutRounding) {
    char block[16];
    Velmora::BufferAllocator alloc(block, sizeof block, "gateway", "LogMessage");
    EXPECT_EQ(alloc.allocate(0), block);
    EXPECT_EQ(alloc.allocate(3), block);
    EXPECT_EQ(alloc.allocate(1, block), block + 3);
    EXPECT_EQ(alloc.allocate(7), block + 4);
    EXPECT_EQ(alloc.end(), block + 11);
    EXPECT_EQ(alloc.size(), 16u);
    EXPECT_EQ(alloc.max_size(), 16u);
    EXPECT_EQ(alloc.used_size(), 11u);
    EXPECT_EQ(alloc.unused_size(), 5u);
}

TEST(BufferAllocator, GrantsTheLastByteAndThenFailsForever) {
    char block[16];
    Velmora::BufferAllocator alloc(block, sizeof block, "gateway", "LogMessage");
    alloc.allocate(10);
    char* p = nullptr;
    EXPECT_FALSE(alloc.tryAllocate(7, p));
    EXPECT_TRUE(alloc.tryAllocate(6, p));
    EXPECT_EQ(p, block + 10);
    alloc = Velmora::BufferAllocator(block, sizeof block, "gateway", "LogMessage");
    alloc.allocate(10);
    EXPECT_EQ(alloc.allocate(6), block + 10);
    EXPECT_EQ(alloc.allocate(0), block + 16);
    EXPECT_EQ(thrownText<std::out_of_range>([&] { alloc.allocate(1); }), exhausted);
    EXPECT_EQ(alloc.used_size(), 17u) << "the position stays advanced";
    EXPECT_EQ(alloc.unused_size(), 0u);
    EXPECT_EQ(thrownText<std::out_of_range>([&] { alloc.allocate(0); }), exhausted);
}

TEST(BufferAllocator, HugeRequestsDoNotWrapAround) {
    for (size_t huge : {SIZE_MAX, SIZE_MAX / 2, SIZE_MAX - 5}) {
        char block[16];
        Velmora::BufferAllocator alloc(block, sizeof block, "gateway", "LogMessage");
        alloc.allocate(8);
        char* p = nullptr;
        EXPECT_FALSE(alloc.tryAllocate(huge, p));
        EXPECT_EQ(alloc.used_size(), 8u) << "as before";
        EXPECT_EQ(thrownText<std::out_of_range>([&] { alloc.allocate(huge); }), exhausted) << huge;
        EXPECT_EQ(thrownText<std::out_of_range>([&] { alloc.allocate(0); }), exhausted) << huge;
    }
}

TEST(BufferAllocator, OnlyCountsWhatIsFreed) {
    char block[16];
    Velmora::BufferAllocator alloc(block, sizeof block, "gateway", "LogMessage");
    char* p = alloc.allocate(16);
    alloc.deallocate(p, 16);
    alloc.deallocate(p, 4);
    EXPECT_EQ(alloc.deallocated_size(), 20);
    EXPECT_EQ(alloc.used_size(), 16u);
    EXPECT_THROW(alloc.allocate(1), std::out_of_range);
    alloc.deallocate(p, INT32_MAX - 20);
    alloc.deallocate(p, 1);
    EXPECT_EQ(alloc.deallocated_size(), INT32_MIN) << "a plain 32-bit addition";
    alloc.deallocate(p, (size_t{3} << 32) + (size_t{1} << 31) + 7);
    EXPECT_EQ(alloc.deallocated_size(), 7);
}

TEST(BufferAllocator, WithoutABlockGrantsNothing) {
    Velmora::BufferAllocator alloc;
    EXPECT_EQ(alloc.allocate(0), nullptr);
    EXPECT_THROW(alloc.allocate(1), std::out_of_range);
}

TEST(BufferAllocator, LabelsMayBeMissing) {
    Velmora::BufferAllocator alloc(nullptr, 0, nullptr, nullptr);
    EXPECT_EQ(thrownText<std::out_of_range>([&] { alloc.allocate(1); }),
              "BufferAllocator: exhausted memory block. (MsgName=, Site=)");
    std::ostringstream os;
    alloc.dump(os);
    EXPECT_TRUE(os.good()) << os.str();
}

TEST(BufferAllocator, DumpNamesBlockAndFigures) {
    char block[16];
    Velmora::BufferAllocator alloc(block, sizeof block, "gateway", "LogMessage");
    alloc.allocate(5);
    alloc.deallocate(block, 3);
    std::ostringstream os;
    alloc.dump(os);
    for (const char* part : {"LogMessage", "gateway", "size=16", "used=5", "unused=11", "deallocated=3"})
        EXPECT_NE(os.str().find(part), std::string::npos) << part << " missing in " << os.str();
}

} // namespace
