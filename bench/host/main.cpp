// What the ring and the bus cost, between processes of one machine, and checkers that run for as long as one likes.
//
//     qlhostbench rates            memcpy, publishing, one publisher and one subscriber, against a Unix socket
//     qlhostbench check MILLIONS   so many operations of pool and ring by several threads, with all that must hold checked
//
// Rates are to be compared within one run only.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <deque>
#include <functional>
#include <random>
#include <thread>
#include <vector>

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Backend/Common/Assert.h"
#include "Host/Frames.h"
#include "Host/MemBus.h"
#include "Host/MsgBlockPool.h"
#include "Host/QLProtocol.h"
#include "Host/SharedMessage.h"

namespace {

using namespace Host;
using Clock = std::chrono::steady_clock;

const std::string PATH = "/dev/shm/qlhostbench-" + std::to_string(getpid());
constexpr uint64_t COUNT = 3'000'000;
constexpr size_t RING = 64 << 20;

/// A SubmitOrder as they are in life.
class Order {
  public:
    Order() {
        _message.userID = 117;
        _message.contents.clOrdID = "heron-000123";
        _message.contents.timeApiClient = 1'709'535'600'000'000'000;
        _message.contents.feedID = 3;
        _message.contents.marketID = 12;
        _message.contents.side = Quillon::Side::BID;
        _message.contents.amount = 100'000'000'000'000;
        _message.contents.price = 108'250'000;
        _message.modelID = "m1";
        char bytes[1024];
        body.assign(bytes, Inspect::encode_checked(_message, bytes, bytes + sizeof bytes).size);
    }
    const Quillon::SubmitOrderMessage& message() const { return _message; }
    std::string body;

  private:
    char _block[1024];
    Velmora::BufferAllocator _alloc{_block, sizeof _block, "bench", "order"};
    Quillon::SubmitOrderMessage _message{_alloc};
};

double secondsOf(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void tell(const char* what, double seconds, uint64_t count = COUNT) {
    std::printf("%-62s %7.2f M/s %7.1f ns\n", what, static_cast<double>(count) / seconds / 1e6,
                seconds * 1e9 / static_cast<double>(count));
    std::fflush(stdout);
}

/// Seconds in which one process sends all and another has them all: from the first to the last that it gets.
double acrossProcesses(const std::function<void()>& send,
                       const std::function<void(const std::function<void()>&)>& receive) {
    int ready[2], done[2];
    QL_ASSERT(pipe(ready) == 0 && pipe(done) == 0);
    const pid_t child = fork();
    if (child == 0) {
        Clock::time_point start{};
        uint64_t got = 0;
        QL_ASSERT(write(ready[1], "", 1) == 1);
        receive([&] {
            if (got++ == 0) start = Clock::now();
        });
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        QL_ASSERT(write(done[1], &seconds, sizeof seconds) == sizeof seconds);
        _exit(0);
    }
    char byte;
    QL_ASSERT(read(ready[0], &byte, 1) == 1);
    usleep(50'000); // it reads by now
    send();
    double seconds = 0;
    QL_ASSERT(read(done[0], &seconds, sizeof seconds) == sizeof seconds);
    waitpid(child, nullptr, 0);
    for (const int end : {ready[0], ready[1], done[0], done[1]}) close(end);
    return seconds;
}

void rates() {
    const Order order;
    std::printf("SubmitOrder of %zu bytes, %llu million of them\n", order.body.size(),
                static_cast<unsigned long long>(COUNT / 1'000'000));
    std::vector<char> memory(RING);
    const std::string bytes(128, 'x');
    tell("memcpy of 128 bytes round 64 MB", secondsOf([&] {
             for (uint64_t i = 0; i < COUNT; ++i) {
                 char* const to = memory.data() + i * 128 % RING;
                 std::memcpy(to, bytes.data(), 128);
                 asm volatile("" : : "r"(to) : "memory");
             }
         }));
    MemRing ring = MemRing::open(PATH, RING);
    tell("the same into a ring, published", secondsOf([&] {
             for (uint64_t i = 0; i < COUNT; ++i) ring.publish({.id = 1, .body = bytes});
         }));
    MemBus bus("mem:" + PATH, qlTopics());
    tell("SubmitOrder, encoded and published", secondsOf([&] {
             for (uint64_t i = 0; i < COUNT; ++i) bus.publish(order.message(), 1);
         }));
    tell("one process encodes and publishes, one subscribes and verifies",
         acrossProcesses(
             [&] {
                 for (uint64_t i = 0; i < COUNT; ++i) bus.publish(order.message(), 1);
             },
             [&](const std::function<void()>& got) {
                 const auto subscription = bus.subscribe({}, From::live(), {[&](const Record&) { got(); }, {}});
                 while (subscription->delivered() + subscription->lost() < COUNT) subscription->poll(1000);
                 std::printf("(%llu lost) ", static_cast<unsigned long long>(subscription->lost()));
                 std::fflush(stdout);
             }));
    int ends[2];
    QL_ASSERT(socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0);
    const auto send = [&](std::string_view bytes_) { return ::send(ends[0], bytes_.data(), bytes_.size(), 0); };
    const auto receive = [&](const std::function<void()>& got) {
        FrameReader reader;
        for (uint64_t left = COUNT; left > 0;) {
            const std::span<char> room = reader.room();
            reader.received(static_cast<size_t>(recv(ends[1], room.data(), room.size(), 0)));
            for (Frame frame; reader.next(frame); --left) got();
        }
    };
    for (const size_t gathered : {size_t{65536}, size_t{1}})
        tell(gathered == 1 ? "the same, a call each" : "the same bytes as frames over a Unix socket, 64 kB a call",
             acrossProcesses(
                 [&] {
                     FrameWriter frames;
                     for (uint64_t i = 1; i <= COUNT; ++i) {
                         frames.append(1, order.body);
                         while (frames.bytes().size() >= gathered || (i == COUNT && !frames.bytes().empty()))
                             frames.sent(static_cast<size_t>(send(frames.bytes())));
                     }
                 },
                 receive));
}

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
    MemRing ring = MemRing::open(PATH + ".check", 1 << 18);
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
    unlink((PATH + ".check").c_str());
    std::printf("ring: %llu published, by two readers %llu read whole and in order, %llu told as lost\n",
                static_cast<unsigned long long>(all), static_cast<unsigned long long>(read),
                static_cast<unsigned long long>(lost));
}

} // namespace

int main(int argc, char** argv) {
    const std::string what = argc > 1 ? argv[1] : "rates";
    Quillon::initialize();
    if (what == "check") {
        const uint64_t operations = (argc > 2 ? std::stoull(argv[2]) : 100) * 1'000'000;
        checkPool(operations);
        checkRing(operations);
    } else {
        rates();
    }
    unlink(PATH.c_str());
    Quillon::finalize();
}
