// Block pool and ring under several threads, for as long as one likes, with all that must hold checked.
#include <atomic>
#include <cstring>
#include <deque>
#include <random>
#include <thread>

#include "Host/MemRing.h"
#include "Host/MsgBlockPool.h"
#include "Host/SharedMessage.h"
#include "bench/host/Runs.h"

namespace bench {

namespace {

using namespace Host;

/// Threads take, share and give back blocks: no two have one, and in the end all are back.
void checkPool(uint64_t operations) {
    using namespace Velmora;
    MsgBlockPool pool({{64, 5}, {256, 7}});
    MsgDescriptor& descriptor = *Quillon::__protocol->getDescriptor(Quillon::TimerMessage::ID);
    std::atomic<uint64_t> done = 0;
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < 4; ++seed)
        threads.emplace_back([&, seed] {
            std::minstd_rand random(seed + 1);
            std::deque<SharedMessage> kept;
            while (done.fetch_add(1, std::memory_order_relaxed) < operations) {
                if (kept.size() > random() % 5) kept.pop_front();
                OwnedMessage message(pool.get(random() % 2 == 0 ? 64 : 200));
                if (!message) continue;
                auto* const timer = static_cast<Quillon::TimerMessage*>(message.control().initialize(descriptor));
                QL_ASSERT(timer->tqid == 0);
                const auto value = static_cast<int>(random());
                timer->tqid = value;
                SharedMessage shared = std::move(message).share();
                const SharedMessage other = shared;
                QL_ASSERT(static_cast<const Quillon::TimerMessage*>(other.get())->tqid == value);
                kept.push_back(std::move(shared));
            }
            kept.clear();
        });
    for (std::thread& thread : threads) thread.join();
    QL_ASSERT(pool.free() == pool.capacity());
    std::printf("pool: %llu operations, %llu found it empty\n", static_cast<unsigned long long>(operations),
                static_cast<unsigned long long>(pool.exhausted()));
}

/// Three publish, two read at their own pace: every message is whole, in order, and seen or told as lost.
void checkRing(uint64_t operations) {
    const std::string path = "/dev/shm/qlhostbench-check-" + std::to_string(getpid());
    MemRing ring = MemRing::open(path, 1 << 18);
    constexpr uint64_t PUBLISHERS = 3;
    const uint64_t each = operations / PUBLISHERS, all = each * PUBLISHERS;
    std::deque<RingReader> readers;
    for (int i = 0; i < 2; ++i) readers.emplace_back(ring);
    std::vector<std::thread> threads;
    for (uint64_t publisher = 0; publisher < PUBLISHERS; ++publisher)
        threads.emplace_back([&, publisher] {
            uint64_t words[40];
            for (uint64_t i = 1; i <= each; ++i) {
                const size_t size = 1 + i % 40;
                for (size_t k = 0; k < size; ++k) words[k] = publisher << 56 | i;
                ring.publish(
                    {.id = 1, .body = {reinterpret_cast<const char*>(words), size * sizeof *words}, .time = 1});
            }
        });
    std::atomic<uint64_t> lost = 0, read = 0;
    for (RingReader& reader : readers)
        threads.emplace_back([&] {
            Record record;
            uint64_t last[PUBLISHERS] = {}, sequence = 0, seen = 0;
            while (sequence < all) {
                if (!reader.next(record)) {
                    reader.wait(1);
                    continue;
                }
                QL_ASSERT(record.sequence == sequence + record.lost + 1);
                sequence = record.sequence;
                uint64_t word = 0, other = 0;
                std::memcpy(&word, record.body.data(), sizeof word);
                QL_ASSERT(record.body.size() == (1 + (word & 0xFFFFFFFFFFFFFF) % 40) * sizeof word);
                for (size_t at = 0; at < record.body.size(); at += sizeof word) {
                    std::memcpy(&other, record.body.data() + at, sizeof other);
                    QL_ASSERT(other == word);
                }
                uint64_t& before = last[word >> 56];
                QL_ASSERT((word & 0xFFFFFFFFFFFFFF) > before);
                before = word & 0xFFFFFFFFFFFFFF;
                if (++seen % 100'000 == 0 && &reader == &readers[1])
                    std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            QL_ASSERT(reader.lost() + seen == all);
            lost += reader.lost();
            read += seen;
        });
    for (std::thread& thread : threads) thread.join();
    unlink(path.c_str());
    std::printf("ring: %llu published, by two readers %llu read whole and in order, %llu told as lost\n",
                static_cast<unsigned long long>(all), static_cast<unsigned long long>(read),
                static_cast<unsigned long long>(lost));
}

} // namespace

void check(uint64_t operations) {
    checkPool(operations);
    checkRing(operations);
}

} // namespace bench
