#include "Backend/Velmora/bufstl/bufvector.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "Backend/Velmora/bufstl/bufstring.h"
#include "tests/Block.h"

namespace {

using bufstl::bufstring;
using bufstl::bufvector;
using bufstl::bufvectox;

std::vector<int> values(const bufvector<int>& v) { return std::vector<int>(v.begin(), v.end()); }

std::vector<std::string> texts(const bufvectox<bufstring>& v) {
    std::vector<std::string> result;
    for (const bufstring& s : v) result.push_back(s.c_str());
    return result;
}

/// Storage that fails on demand, to see what is left when building an element throws.
struct Fragile {
    explicit Fragile(Velmora::BufferAllocator&) { ++alive; }
    Fragile(const Fragile&) = delete;
    Fragile& operator=(const Fragile& other) {
        if (assignmentsLeft-- == 0) throw std::runtime_error("assignment");
        value = other.value;
        return *this;
    }
    ~Fragile() {
        --alive;
        ended.push_back(value);
    }

    int value = 0;
    inline static std::vector<int> ended; // the values, in the order of destruction
    inline static int alive = 0;
    inline static int assignmentsLeft = -1; // negative: never fails
};

TEST(BufVector, TakesNoStorageUntilSomethingIsStored) {
    Block block(100);
    bufvector<int> v(block.alloc);
    v.reserve(0);
    v.resize(0);
    v.clear();
    bufvector<int> copy(v);
    copy = v;
    EXPECT_EQ(block.alloc.used_size(), 0u);
    EXPECT_EQ(v.data(), nullptr);
    EXPECT_EQ(copy.data(), nullptr);
    EXPECT_TRUE(v.empty());
}

TEST(BufVector, GrowsByDoublingAndCountsTheOldCapacity) {
    Block block(1000);
    bufvector<int> v(block.alloc);
    std::vector<size_t> capacities;
    for (int i = 0; i < 9; ++i) {
        v.push_back(i);
        if (capacities.empty() || capacities.back() != v.capacity()) capacities.push_back(v.capacity());
    }
    EXPECT_EQ(capacities, (std::vector<size_t>{1, 2, 4, 8, 16}));
    EXPECT_EQ(block.alloc.used_size(), (1 + 2 + 4 + 8 + 16) * sizeof(int));
    EXPECT_EQ(block.alloc.deallocated_size(), static_cast<int>((1 + 2 + 4 + 8) * sizeof(int)));
    EXPECT_EQ(values(v), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    v.resize(40); // more than double: exactly what is asked for
    EXPECT_EQ(v.capacity(), 40u);
    EXPECT_EQ(v[39], 0);
    int& last = v.add_back();
    EXPECT_EQ(&last, &v.back());
    EXPECT_EQ(v.size(), 41u);
    EXPECT_EQ(last, 0);
}

TEST(BufVector, IsBoundedByTheWholeBlock) {
    Block block(1000);
    bufvector<int> v(block.alloc);
    block.alloc.allocate(500);
    EXPECT_EQ(v.max_size(), 250u) << "whatever is used already";
    EXPECT_EQ(thrownText<std::length_error>([&] { v.resize(251); }), "vector::_M_fill_insert");
    EXPECT_EQ(thrownText<std::length_error>([&] { v.insert(v.end(), SIZE_MAX, 1); }), "vector::_M_fill_insert");
    EXPECT_EQ(thrownText<std::length_error>([&] { v.reserve(251); }), "vector::reserve");
    EXPECT_EQ(thrownText<std::length_error>([&] { v.assign(251, 1); }), "vector::_M_fill_assign");
    const bufstl::alloc_proxy<int> proxy(block.alloc);
    for (const size_t tooMany : {size_t{251}, SIZE_MAX / 4 + 2, SIZE_MAX}) {
        EXPECT_EQ(thrownText<std::length_error>([&] { bufstl::vector<int>(tooMany, 1, proxy); }),
                  "vector::_M_fill_initialize");
    }
    for (const size_t wrapping : {SIZE_MAX / 4 + 1, SIZE_MAX / 4 + 2, SIZE_MAX}) {
        EXPECT_EQ(thrownText<std::length_error>([&] { proxy.allocate(wrapping); }), "alloc_proxy::allocate");
        int* p = nullptr;
        EXPECT_FALSE(proxy.tryAllocate(wrapping, p));
    }
    EXPECT_EQ(block.alloc.used_size(), 500u) << "none of them reached the block";
    EXPECT_EQ(bufstl::vector<int>(3, 7, proxy)[2], 7);
    int dirty = -1;
    proxy.construct(&dirty, block.alloc);
    EXPECT_EQ(dirty, 0) << "a fresh element";
    v.resize(30);
    v.resize(31);
    EXPECT_EQ(v.capacity(), 60u);
}

TEST(BufVector, GrowthIsCappedAtMaxSize) {
    Block block(400);
    bufvector<int> v(block.alloc); // max_size 100
    v.resize(60);
    EXPECT_THROW(v.resize(61), std::out_of_range) << "would take 100 elements, the block holds 40 more";
    EXPECT_EQ(block.alloc.end() - block.begin(), 640) << "60 elements, then a failed request for 100";
    EXPECT_EQ(v.size(), 60u) << "the old storage stays in use";
    EXPECT_EQ(block.alloc.deallocated_size(), 0);
    EXPECT_THROW(v.insert(v.begin(), 41, 1), std::length_error) << "what is there counts";
    for (const auto fill :
         {+[](bufvector<int>& full) { full.resize(100); }, +[](bufvector<int>& full) { full.reserve(100); },
          +[](bufvector<int>& full) { full.assign(100, 1); }}) {
        Block exact(400);
        bufvector<int> full(exact.alloc);
        fill(full);
        EXPECT_EQ(full.capacity(), 100u);
    }
}

TEST(BufVector, InsertsErasesAndAssignsLikeTheUsualVector) {
    // The same steps on both kinds of vector and on the standard one.
    Block block(20000);
    bufvector<int> ours(block.alloc);
    bufvectox<bufstring> strings(block.alloc);
    std::vector<int> usual;
    const auto check = [&](const char* step) {
        EXPECT_EQ(values(ours), usual) << step;
        std::vector<std::string> expected;
        for (int i : usual) expected.push_back(std::to_string(i));
        EXPECT_EQ(texts(strings), expected) << step;
    };
    bufstring text(block.alloc);
    const auto string = [&](int i) -> bufstring& { return text = std::to_string(i), text; };

    for (int i = 0; i < 6; ++i) usual.push_back(i), ours.push_back(i), strings.push_back(string(i));
    check("push_back");
    ours.reserve(40), strings.reserve(40); // from here on within the spare capacity
    for (size_t at : {0u, 3u, 7u}) {
        for (size_t n : {1u, 2u, 5u, 0u}) {
            const auto i = static_cast<std::ptrdiff_t>(at);
            usual.insert(usual.begin() + i, n, 77);
            ours.insert(ours.begin() + i, n, 77);
            strings.insert(strings.begin() + i, n, string(77));
            check("insert n copies");
        }
    }
    EXPECT_EQ(ours.insert(ours.begin() + 2, ours[5]), ours.begin() + 2); // of an element that moves itself
    strings.insert(strings.begin() + 2, strings[5]);
    usual.insert(usual.begin() + 2, usual[5]);
    check("insert one of its own");
    ours.push_back(ours.front()), strings.push_back(strings.front()), usual.push_back(usual.front());
    check("push_back one of its own");

    usual.erase(usual.begin() + 1), ours.erase(ours.begin() + 1), strings.erase(strings.begin() + 1);
    usual.erase(usual.begin() + 2, usual.begin() + 9);
    EXPECT_EQ(ours.erase(ours.begin() + 2, ours.begin() + 9), ours.begin() + 2);
    strings.erase(strings.begin() + 2, strings.begin() + 9);
    usual.erase(usual.end(), usual.end()), ours.erase(ours.end(), ours.end()),
        strings.erase(strings.end(), strings.end());
    usual.pop_back(), ours.pop_back(), strings.pop_back();
    check("erase");

    for (size_t n : {3u, 30u, 100u, 5u}) {
        usual.assign(n, 9), ours.assign(n, 9), strings.assign(n, string(9));
        check("assign n copies");
    }
    const int range[] = {4, 5, 6};
    usual.assign(range, range + 3), ours.assign(range, range + 3);
    EXPECT_EQ(values(ours), usual);
    EXPECT_EQ(std::vector<int>(ours.rbegin(), ours.rend()), (std::vector<int>{6, 5, 4}));

    bufvector<int> other(block.alloc);
    other.swap(ours);
    EXPECT_EQ(values(other), usual);
    EXPECT_TRUE(ours.empty());
}

TEST(BufVector, AtChecksItsRange) {
    Block block(100);
    bufvector<int> v(block.alloc);
    v.push_back(1);
    EXPECT_EQ(v.at(0), 1);
    EXPECT_EQ(thrownText<std::out_of_range>([&] { v.at(1); }), "vector::_M_range_check");
}

TEST(BufVectox, AssignmentTakesExactlyTheCountAndRebuildsElements) {
    Block sourceBlock(1000), block(1000);
    bufvectox<bufstring> source(sourceBlock.alloc), v(block.alloc);
    for (int i = 0; i < 5; ++i) source.add_back() = "abc";
    v = source;
    EXPECT_EQ(v.capacity(), 5u);
    EXPECT_EQ(block.alloc.used_size(), 5 * sizeof(bufstring) + 5 * 4);
    for (const bufstring& s : v) EXPECT_TRUE(block.contains(s.data()) && std::string(s.c_str()) == "abc");

    bufvectox<bufstring> three(sourceBlock.alloc);
    for (int i = 0; i < 3; ++i) three.add_back() = "xy";
    const size_t used = block.alloc.used_size();
    v = three;
    EXPECT_EQ(texts(v), (std::vector<std::string>{"xy", "xy", "xy"}));
    EXPECT_EQ(block.alloc.used_size(), used) << "shorter strings into fewer elements take nothing";
    EXPECT_EQ(block.alloc.deallocated_size(), 2 * 4) << "the two surplus strings";

    v = source; // grows again inside its capacity: over the old elements, then built anew
    EXPECT_EQ(v.capacity(), 5u);
    EXPECT_EQ(block.alloc.used_size(), used + 2 * 4) << "the first three strings fit the storage they kept";
    EXPECT_TRUE(v == source);
    const size_t filled = block.alloc.used_size();
    v = source;
    EXPECT_EQ(block.alloc.used_size(), filled) << "as many as there is room for";
    const auto& self = v;
    v = self;
    EXPECT_TRUE(v == source);
}

TEST(BufVectox, ResizeGrowsByFreshElementsWithoutTakingStorageForThem) {
    Block block(1000);
    bufvectox<bufstring> v(block.alloc);
    v.resize(3);
    EXPECT_EQ(block.alloc.used_size(), 3 * sizeof(bufstring));
    v[0] = "a";
    v.resize(1);
    EXPECT_EQ(texts(v), (std::vector<std::string>{"a"}));
    bufstring& last = v.add_back();
    EXPECT_EQ(&last, &v[1]);
    EXPECT_TRUE(last.empty_());
    EXPECT_EQ(v.capacity(), 3u);
}

TEST(BufVectox, ElementsEndFromTheFirstToTheLast) {
    Block block(1000);
    {
        bufvectox<Fragile> v(block.alloc);
        v.reserve(6);
        for (int i = 1; i <= 4; ++i) v.add_back().value = i;
        Fragile::ended.clear();
    }
    EXPECT_EQ(Fragile::ended, (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(block.alloc.deallocated_size(), static_cast<int>(6 * sizeof(Fragile)));
}

TEST(BufVectox, ElementsThatThrowLeaveTheOldStorageInUse) {
    Block block(1000);
    {
        bufvectox<Fragile> v(block.alloc);
        v.resize(4);
        v[0].value = 7;
        const auto* before = v.data();
        for (int failing = 0; failing < 5; ++failing) {
            Fragile::assignmentsLeft = failing;
            const int freed = block.alloc.deallocated_size();
            EXPECT_THROW(v.push_back(v[0]), std::runtime_error) << failing;
            EXPECT_EQ(block.alloc.deallocated_size() - freed, static_cast<int>(8 * sizeof(Fragile))) << "the new";
            EXPECT_EQ(v.data(), before);
            EXPECT_EQ(v.size(), 4u);
            EXPECT_EQ(Fragile::alive, 4) << failing;
        }
        Fragile::assignmentsLeft = 2;
        bufvectox<Fragile> target(block.alloc);
        EXPECT_THROW(target = v, std::runtime_error);
        EXPECT_TRUE(target.empty());
        EXPECT_EQ(Fragile::alive, 4);
        Fragile::assignmentsLeft = -1;
        v.push_back(v[0]);
        EXPECT_EQ(Fragile::alive, 5);
        int built = 0;
        EXPECT_THROW(v.append_each(3,
                                   [&](Fragile&) {
                                       if (++built == 2) throw std::runtime_error("fill");
                                   }),
                     std::runtime_error);
        EXPECT_EQ(v.size(), 7u) << "what was built stays";
    }
    EXPECT_EQ(Fragile::alive, 0);
}

TEST(BufVector, ComparesLexicographicallyWithAPrefixFirst) {
    Block block(1000);
    bufvector<int> a(block.alloc), b(block.alloc);
    const auto fill = [](bufvector<int>& v, std::vector<int> content) { v.assign(content.begin(), content.end()); };
    fill(a, {-1, 5});
    fill(b, {1});
    EXPECT_TRUE(a < b && !(b < a)) << "signed";
    fill(b, {-1, 5, 0});
    EXPECT_TRUE(a < b && !(b < a) && a != b) << "prefix";
    fill(b, {-1, 6});
    EXPECT_TRUE(a < b && !(b < a) && a != b) << "the last";
    fill(b, {-1, 5});
    EXPECT_TRUE(a == b && !(a < b));
}

using BufVectorDeathTest = testing::Test;

TEST(BufVectorDeathTest, CheckboundsExaminesFinishAndEndOfStorageOnly) {
    Block block(1000);
    bufvector<int> v(block.alloc);
    v.checkbounds(block.begin(), block.begin()); // nothing allocated: any bounds will do
    v.reserve(4);
    v.resize(2);
    const char* start = reinterpret_cast<const char*>(v.data());
    v.checkbounds(start + 8, start + 16); // the start lies outside, and the upper bound is inclusive
    EXPECT_DEATH(v.checkbounds(start + 9, start + 16),
                 "Backend/Velmora/bufstl/bufvector.*checkbounds.*"
                 "Assertion `begin_ == 0 \\|\\| \\(begin <= begin_ && begin_ <= end\\)' failed");
    EXPECT_DEATH(
        v.checkbounds(start, start + 15),
        "Backend/Velmora/bufstl/bufvector.*Assertion `end_ == 0 \\|\\| \\(begin <= end_ && end_ <= end\\)' failed");
#ifndef __clang__ // which words the function otherwise
    EXPECT_DEATH(v.checkbounds(start, start + 15),
                 "^([^:]*: )?Backend/Velmora/bufstl/bufvector\\.h:[0-9]+: void "
                 "bufstl::bufvector<T>::checkbounds\\(const void\\*, const void\\*\\) const "
                 "\\[with T = int\\]: ");
#endif
}

TEST(BufVectorDeathTest, CheckboundsVisitsTheElementsOfRecordVectors) {
    Block block(1000), elsewhere(100);
    bufvectox<bufstring> v(block.alloc);
    v.resize(2);
    v[0] = "inside";
    v.checkbounds(block.begin(), block.end());
    new (&v[1]) bufstring(elsewhere.alloc);
    v[1] = "outside";
    EXPECT_DEATH(v.checkbounds(block.begin(), block.end()), "begin_ == 0");
    new (&v[1]) bufstring(block.alloc);
}

TEST(BufVectorDeathTest, SwapAcrossBlocksIsRefused) {
    Block a(100), b(100);
    bufvector<int> x(a.alloc), y(b.alloc);
    EXPECT_DEATH(x.swap(y), "Assertion");
}

} // namespace
