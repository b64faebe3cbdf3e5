#include "Backend/LockFree/Atomic.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <iterator>
#include <new>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Backend/Velmora/MsgStats.h"

using Quillon::Atomic;
using Quillon::cas2_t;
using Quillon::cas_t;

namespace {

constexpr cas_t ALL = ~cas_t{0};

/// Runs `work(thread number)` in four threads at once.
template <class Work>
void together(Work work) {
    std::vector<std::thread> threads;
    for (cas_t t = 0; t < 4; ++t) threads.emplace_back([&, t] { work(t); });
    for (auto& thread : threads) thread.join();
}

void expectPair(cas2_t actual, cas_t low, cas_t high) {
    EXPECT_EQ(actual.low, low);
    EXPECT_EQ(actual.high, high);
}

TEST(Atomic, WordsReturnTheNewValueAndWrap) {
    cas_t word = 5;
    EXPECT_EQ(Atomic::add(&word, 10), 15u);
    EXPECT_EQ(Atomic::increment(&word), 16u);
    EXPECT_EQ(Atomic::decrement(&word), 15u);
    EXPECT_EQ(Atomic::add(&word, ALL), 14u);
    EXPECT_EQ(word, 14u);
    word = 0;
    EXPECT_EQ(Atomic::decrement(&word), ALL);
    EXPECT_EQ(Atomic::increment(&word), 0u);
}

TEST(Atomic, MinimumAndMaximumAreUnsigned) {
    const struct {
        cas_t stored, given, min, max;
    } cases[] = {{5, 4, 4, 5}, {5, 5, 5, 5}, {5, 6, 5, 6}, {1, ALL, 1, ALL}, {ALL, 0, 0, ALL}};
    for (const auto& c : cases) {
        cas_t word = c.stored;
        Atomic::setmin(&word, c.given);
        EXPECT_EQ(word, c.min);
        word = c.stored;
        Atomic::setmax(&word, c.given);
        EXPECT_EQ(word, c.max);
    }
}

TEST(Atomic, CasSwapsOnlyWhatIsExpected) {
    volatile cas_t word = 7;
    EXPECT_FALSE(Atomic::cas(&word, 8, 9));
    EXPECT_EQ(word, 7u);
    EXPECT_TRUE(Atomic::cas(&word, 7, 9));
    EXPECT_EQ(word, 9u);

    cas2_t pair{1, 2};
    EXPECT_FALSE(Atomic::cas2(&pair, {1, 3}, {8, 9})); // either half counts
    EXPECT_FALSE(Atomic::cas2(&pair, {0, 2}, {8, 9}));
    expectPair(pair, 1, 2);
    EXPECT_TRUE(Atomic::cas2(&pair, {1, 2}, {8, 9}));
    expectPair(pair, 8, 9);
}

TEST(Atomic, DoubleWordsCarryBetweenTheirHalves) {
    cas2_t pair{ALL, 3};
    expectPair(Atomic::increment(&pair), 0, 4);
    expectPair(Atomic::decrement(&pair), ALL, 3);
    expectPair(Atomic::add(&pair, {2, 10}), 1, 14);
    expectPair(Atomic::add(&pair, {ALL, ALL}), 0, 14);
    expectPair(pair, 0, 14);

    pair = {ALL, ALL};
    expectPair(Atomic::increment(&pair), 0, 0);
    expectPair(Atomic::decrement(&pair), ALL, ALL);
    expectPair(pair, ALL, ALL);
}

TEST(Atomic, NoUpdateIsLostBetweenThreads) {
    constexpr cas_t ROUNDS = 50000;
    cas_t counter = 0, balance = 0, spun = 0;
    cas2_t wide{ALL - 2 * ROUNDS, 0}; // the carry happens midway
    cas2_t wideBalance{0, 1};
    cas2_t swapped{0, 0};
    together([&](cas_t t) {
        for (cas_t i = 1; i <= ROUNDS; ++i) {
            Atomic::increment(&counter);
            (t % 2 == 0) ? Atomic::add(&balance, i) : Atomic::add(&balance, 0 - i);
            Atomic::increment(&wide);
            (t % 2 == 0) ? Atomic::decrement(&wideBalance) : Atomic::increment(&wideBalance); // around the borrow
            while (true) {
                const cas_t seen = Atomic::add(&spun, 0);
                if (Atomic::cas(&spun, seen, seen + 1)) break;
            }
            while (true) { // the two halves only ever change together
                const cas2_t seen = Atomic::add(&swapped, {0, 0});
                ASSERT_EQ(seen.high, seen.low * 3);
                if (Atomic::cas2(&swapped, seen, {seen.low + 1, seen.high + 3})) break;
            }
        }
    });
    EXPECT_EQ(counter, 4 * ROUNDS);
    EXPECT_EQ(balance, 0u);
    expectPair(wide, 2 * ROUNDS - 1, 1);
    expectPair(wideBalance, 0, 1);
    EXPECT_EQ(spun, 4 * ROUNDS);
    expectPair(swapped, 4 * ROUNDS, 12 * ROUNDS);
}

TEST(Atomic, MinimumAndMaximumNeverGoBack) {
    constexpr cas_t ROUNDS = 200000;
    cas_t smallest = ALL, largest = 0;
    std::atomic<cas_t> setbacks = 0;
    together([&](cas_t t) {
        cas_t lowest = ALL, highest = 0; // what this thread has seen
        for (cas_t i = 1; i <= ROUNDS; ++i) {
            Atomic::setmin(&smallest, ALL - i * 4 - t);
            Atomic::setmax(&largest, i * 4 + t);
            const cas_t low = __atomic_load_n(&smallest, __ATOMIC_SEQ_CST);
            const cas_t high = __atomic_load_n(&largest, __ATOMIC_SEQ_CST);
            if (low > lowest || high < highest) ++setbacks;
            lowest = low;
            highest = high;
        }
    });
    EXPECT_EQ(setbacks, 0u);
    EXPECT_EQ(smallest, ALL - ROUNDS * 4 - 3);
    EXPECT_EQ(largest, ROUNDS * 4 + 3);
}

// Each of two threads writes its own word and then reads the other's. Without a full barrier in between, the processor
// may delay both writes, and both threads read the old value.
TEST(Atomic, FullBarrierKeepsAReadBehindAWrite) {
    struct alignas(64) Word {
        cas_t value = 0;
    } own[2], arrived, seen[2];
    std::atomic<bool> done = false;
    cas_t bothOld = 0;
    const auto meet = [&](cas_t count) { // until that many arrivals
        Atomic::increment(&arrived.value);
        while (__atomic_load_n(&arrived.value, __ATOMIC_ACQUIRE) < count) std::this_thread::yield();
    };
    // Bounded by time: on a busy machine every meeting may cost a time slice.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
    const auto work = [&](int self) {
        for (cas_t i = 0; !done; ++i) {
            meet(i * 4 + 2);
            __atomic_store_n(&own[self].value, i + 1, __ATOMIC_RELAXED);
            Atomic::memory_barrier();
            seen[self].value = __atomic_load_n(&own[1 - self].value, __ATOMIC_RELAXED);
            if (self == 0) done = std::chrono::steady_clock::now() > deadline;
            meet(i * 4 + 4);
            if (self == 0 && seen[0].value == i && seen[1].value == i) ++bothOld;
        }
    };
    std::thread other(work, 1);
    work(0);
    other.join();
    EXPECT_EQ(bothOld, 0u);
}

TEST(MsgStats, StartsAtZeroInTheStatedOrder) {
    alignas(Velmora::MsgStats) unsigned char memory[sizeof(Velmora::MsgStats)];
    std::fill(std::begin(memory), std::end(memory), static_cast<unsigned char>(0xff));
    auto* stats = new (memory) Velmora::MsgStats;
    const cas_t* const counters[] = {&stats->nconstruct, &stats->ndestroy, &stats->ncopy,
                                     &stats->nwrite,     &stats->nread,    &stats->nalloc,
                                     &stats->ndealloc,   &stats->max_size, &stats->nundress};
    static_assert(sizeof(Velmora::MsgStats) == 9 * sizeof(cas_t));
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(*counters[i], 0u) << i;
        EXPECT_EQ(counters[i], &stats->nconstruct + i) << i;
    }
}

} // namespace
