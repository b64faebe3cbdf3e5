// How rates are measured: several rounds, in each of which everything has its turn, so that what disturbs the machine for a
// while disturbs all; medians of the rounds, in processes that stay on one processor each.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Backend/Common/Assert.h"
#include "Capture/Packet.h"
#include "Capture/Verification.h"
#include "Host/QLProtocol.h"

namespace bench {

using Clock = std::chrono::steady_clock;

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

/// What a host asks of bytes before it decodes them.
inline bool isGood(Velmora::MsgType_t id, std::string_view body) {
    return static_cast<bool>(Capture::verifyBody(Inspect::default_protocol(), id, body, Inspect::whole));
}

/// This process stays on one of the processors that it may use; there are mostly at least two.
inline void pinTo(unsigned which) {
    static const cpu_set_t allowed = [] {
        cpu_set_t set;
        QL_ASSERT(sched_getaffinity(0, sizeof set, &set) == 0);
        return set;
    }();
    std::vector<size_t> processors;
    for (size_t it = 0; it < CPU_SETSIZE; ++it)
        if (CPU_ISSET(it, &allowed)) processors.push_back(it);
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(processors[which % processors.size()], &one);
    QL_ASSERT(sched_setaffinity(0, sizeof one, &one) == 0);
}

inline double secondsOf(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Work that is measured; it returns the seconds that so many operations took.
struct Measured {
    std::string name;
    uint64_t operations;
    std::function<double()> work;
    std::vector<double> rounds = {};

    double median() const {
        std::vector<double> sorted = rounds;
        std::ranges::sort(sorted);
        return sorted[sorted.size() / 2];
    }
    void tell() const {
        const auto [least, most] = std::ranges::minmax(rounds);
        const auto count = static_cast<double>(operations);
        std::printf("%-64s %8.3f M/s %8.1f ns   (%.1f to %.1f)\n", name.c_str(), count / median() / 1e6,
                    median() * 1e9 / count, least * 1e9 / count, most * 1e9 / count);
    }
};

inline void measure(std::vector<Measured>& all, int rounds) {
    for (int round = 0; round < rounds; ++round)
        for (Measured& it : all) it.rounds.push_back(it.work());
    std::printf("medians of %d rounds (least and most)\n", rounds);
    for (const Measured& it : all) it.tell();
}

/// Seconds in which one process sends all and another has them all: from the first to the last that it gets. Both are begun
/// here; the first waits until the other listens.
inline double acrossProcesses(const std::function<void()>& send,
                              const std::function<void(const std::function<void()>& got)>& receive) {
    int ready[2], done[2];
    QL_ASSERT(pipe(ready) == 0 && pipe(done) == 0);
    const auto begin = [](const std::function<void()>& work) {
        const pid_t child = fork();
        if (child != 0) return child;
        work();
        _exit(0);
    };
    const pid_t receiver = begin([&] {
        pinTo(1);
        Clock::time_point start{};
        receive([&, isFirst = true]() mutable {
            if (std::exchange(isFirst, false)) start = Clock::now();
        });
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        QL_ASSERT(write(done[1], &seconds, sizeof seconds) == sizeof seconds);
    });
    const pid_t sender = begin([&] {
        pinTo(0);
        usleep(100'000); // it reads by now
        send();
        char byte;
        static_cast<void>(read(ready[0], &byte, 1)); // some engines forget what a process published that is gone
    });
    double seconds = 0;
    QL_ASSERT(read(done[0], &seconds, sizeof seconds) == sizeof seconds);
    QL_ASSERT(write(ready[1], "", 1) == 1);
    for (const pid_t child : {receiver, sender}) waitpid(child, nullptr, 0);
    for (const int end : {ready[0], ready[1], done[0], done[1]}) close(end);
    return seconds;
}

void rates(bool hasIceoryx);            ///< of one machine. REQUIRES: if so, iox-roudi runs
void natsRates(const std::string& url); ///< against the library alone
void check(uint64_t operations);        ///< of pool and ring
void addIceoryx(std::vector<Measured>& all, const Order& order);

} // namespace bench
