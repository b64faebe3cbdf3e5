// Rates on one machine: what publishing on a ring costs, and how fast messages come across to another process.
#include <cstring>

#include <sys/mman.h>
#include <sys/socket.h>

#include "Host/Frames.h"
#include "Host/MemBus.h"
#include "bench/host/Runs.h"

namespace bench {

namespace {

using namespace Host;

constexpr uint64_t COUNT = 500'000;
constexpr size_t RING = 64 << 20;
constexpr int ROUNDS = 7;

/// Of memory that processes share, as a ring's is.
double copying(char* memory, std::string_view bytes) {
    return secondsOf([&] {
        for (uint64_t i = 0; i < COUNT; ++i) {
            char* const to = memory + i * bytes.size() % RING;
            std::memcpy(to, bytes.data(), bytes.size());
            asm volatile("" : : "r"(to) : "memory");
        }
    });
}

double acrossRing(MemRing& ring, std::string_view bytes) {
    return acrossProcesses(
        [&] {
            for (uint64_t i = 0; i < COUNT; ++i) ring.publish({.id = 1, .body = bytes});
        },
        [&](const std::function<void()>& got) {
            RingReader reader(ring);
            Record record;
            for (uint64_t there = 0; there < COUNT;)
                if (reader.next(record)) {
                    there += 1 + record.lost;
                    got();
                } else {
                    reader.wait(1000);
                }
        });
}

double acrossBus(Bus& bus, const Order& order, uint64_t& lost) {
    int told[2];
    QL_ASSERT(pipe(told) == 0);
    const double seconds = acrossProcesses(
        [&] {
            for (uint64_t i = 0; i < COUNT; ++i) bus.publish(order.message(), 1);
        },
        [&](const std::function<void()>& got) {
            const auto subscription = bus.subscribe({}, From::live(), {[&](const Record&) { got(); }, {}});
            while (subscription->delivered() + subscription->lost() < COUNT) subscription->poll(1000);
            const uint64_t all = subscription->lost();
            QL_ASSERT(write(told[1], &all, sizeof all) == sizeof all);
        });
    uint64_t all = 0;
    QL_ASSERT(read(told[0], &all, sizeof all) == sizeof all);
    lost += all;
    for (const int end : told) close(end);
    return seconds;
}

/// So many bytes of frames a call.
double acrossSocket(const Order& order, size_t gathered) {
    int ends[2];
    QL_ASSERT(socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0);
    const double seconds = acrossProcesses(
        [&] {
            FrameWriter frames;
            for (uint64_t i = 1; i <= COUNT; ++i) {
                QL_ASSERT(frames.append(Inspect::default_protocol(), order.message().ID, &order.message()));
                while (frames.bytes().size() >= gathered || (i == COUNT && !frames.bytes().empty()))
                    frames.sent(static_cast<size_t>(::send(ends[0], frames.bytes().data(), frames.bytes().size(), 0)));
            }
        },
        [&](const std::function<void()>& got) {
            FrameReader reader;
            for (uint64_t left = COUNT; left > 0;) {
                const std::span<char> room = reader.room();
                reader.received(static_cast<size_t>(recv(ends[1], room.data(), room.size(), 0)));
                for (Frame frame; reader.next(frame); --left) {
                    QL_ASSERT(isGood(frame.id, frame.body));
                    got();
                }
            }
        });
    for (const int end : ends) close(end);
    return seconds;
}

} // namespace

void rates(bool hasIceoryx) {
    pinTo(0);
    const std::string path = "/dev/shm/qlhostbench-" + std::to_string(getpid());
    const Order order;
    const std::string bytes(128, 'x');
    auto* const memory =
        static_cast<char*>(mmap(nullptr, RING, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    MemRing ring = MemRing::open(path, RING);
    MemBus bus("mem:" + path, qlTopics());
    uint64_t lost = 0;
    std::vector<Measured> all{
        {"memcpy of 128 bytes round 64 MB of shared memory", COUNT, [&] { return copying(memory, bytes); }},
        {"publish of 128 bytes on a ring of that size", COUNT,
         [&] {
             return secondsOf([&] {
                 for (uint64_t i = 0; i < COUNT; ++i) ring.publish({.id = 1, .body = bytes});
             });
         }},
        {"publish of a SubmitOrder, with its encoding", COUNT,
         [&] {
             return secondsOf([&] {
                 for (uint64_t i = 0; i < COUNT; ++i) bus.publish(order.message(), 1);
             });
         }},
        {"one process publishes 128 bytes, one reads them", COUNT, [&] { return acrossRing(ring, bytes); }},
        {"one process publishes SubmitOrders, one subscribes and verifies", COUNT,
         [&] { return acrossBus(bus, order, lost); }},
        {"the same as frames over a Unix socket, 64 kB a call", COUNT, [&] { return acrossSocket(order, 65536); }},
        {"the same, a call each", COUNT, [&] { return acrossSocket(order, 1); }},
    };
    if (hasIceoryx) addIceoryx(all, order);
    std::printf("SubmitOrder of %zu bytes; rounds of %llu\n", order.body.size(),
                static_cast<unsigned long long>(COUNT));
    measure(all, ROUNDS);
    std::printf("the subscriber lost %llu of %llu\n", static_cast<unsigned long long>(lost),
                static_cast<unsigned long long>(COUNT * ROUNDS));
    munmap(memory, RING);
    unlink(path.c_str());
}

} // namespace bench
