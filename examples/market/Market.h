// What the processes of the market have in common: a bus by URL, messages in a block, and a loop until they are stopped.
#pragma once

#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "Host/Engines.h"
#include "Host/QLProtocol.h"
#include "generated/QLProtocol/MsgHandler.h"

namespace market {

/// Prices and amounts are whole numbers of 1/SCALE: on that all processes agree.
constexpr int64_t SCALE = 100'000'000;
constexpr int MARKETS = 4;

inline int64_t now() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

inline volatile std::sig_atomic_t isStopped = 0;

/// A message in a block of its own.
template <class T>
class New {
  public:
    T* operator->() { return &_message; }
    T& operator*() { return _message; }

  private:
    char _block[4096];
    Velmora::BufferAllocator _alloc{_block, sizeof _block, "market", "message"};
    T _message{_alloc};
};

/// One process: it handles what it subscribed to, does something of its own now and then, and says that it is there.
class Process {
  public:
    Process(const char* url, int16_t application)
        : bus(Host::openBus(url, Host::qlTopics(), Host::engines())),
          _self(*bus, Host::QL_PRESENCE, {application, now()}, now()) {
        for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, [](int) { isStopped = 1; });
    }

    const std::unique_ptr<Host::Bus> bus;

    template <class T>
    void publish(New<T>& message) {
        bus->publish(*message, now());
    }

    /// Hands over what comes to `handler`, and calls `tick` every so often.
    void run(const Host::Filter& filter, Quillon::MsgHandler& handler, std::chrono::milliseconds interval,
             const std::function<void()>& tick) {
        const auto subscription =
            bus->subscribe(filter, Host::From::live(),
                           {[&](const Host::Record& record) { take(record, handler); },
                            [](uint64_t lost) {
                                std::fprintf(stderr, "%llu messages lost\n", static_cast<unsigned long long>(lost));
                            }});
        auto next = std::chrono::steady_clock::now();
        while (isStopped == 0) {
            subscription->poll(1);
            if (std::chrono::steady_clock::now() < next) continue;
            next += interval;
            tick();
            _self.beat(now());
        }
    }

  private:
    static void take(const Host::Record& record, Quillon::MsgHandler& handler) {
        static char block[1 << 20];
        Velmora::BufferAllocator alloc(block, sizeof block, "market", "received");
        const Inspect::Decoded message = Inspect::decode_verified(record.id, record.body, alloc);
        if (message) Quillon::dispatch(record.id, message.object, handler);
    }

    Host::Presence _self;
};

/// The main of each process: PROGRAM BUS
inline int runProcess(int argc, char** argv, void (*work)(const char* url)) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s BUS\n", argv[0]);
        return 2;
    }
    Quillon::initialize();
    int status = 0;
    try {
        work(argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
        status = 3;
    }
    Quillon::finalize();
    return status;
}

} // namespace market
