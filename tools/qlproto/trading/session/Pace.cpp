#include "tools/qlproto/trading/session/Pace.h"

#include <algorithm>

#include "tools/qlproto/trading/session/Session.h"

namespace qlproto::session {

namespace {

/// Notes when the trading of a session begins and ends; its opening has a pace of its own.
struct Stopwatch : Capture::PacketSink {
    static constexpr uint64_t OPENING = 2000, MESSAGES = 12000;

    void packet(const Capture::Packet& packet) override {
        if (++count == OPENING) begin = packet.time;
        if (count == MESSAGES) end = packet.time;
    }
    uint64_t count = 0;
    int64_t begin = 0, end = 0;
};

} // namespace

Pace withRate(const Pace& pace, uint64_t rate) {
    // What a pace comes to follows from all the intervals of a session; so a session is tried.
    Stopwatch stopwatch;
    Session(1, Stopwatch::MESSAGES + 1000, stopwatch, pace).run();
    const double usual = static_cast<double>(Stopwatch::MESSAGES - Stopwatch::OPENING) * SECONDS
                         / static_cast<double>(stopwatch.end - stopwatch.begin);
    const double factor = usual / static_cast<double>(rate);
    const auto stretched = [&](int64_t interval) {
        return std::max<int64_t>(1, static_cast<int64_t>(static_cast<double>(interval) * factor));
    };
    return {stretched(pace.marketData), stretched(pace.others)};
}

} // namespace qlproto::session
