// The pace of a capture, as the commands that send its messages keep it.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/ScanOptions.h"

namespace qlproto {

/// Ends what was going on when the user does.
struct Interrupted {};

/// Captures that are sent in their own time.
struct PacedCaptures {
    std::vector<std::string> captures;
    double speed = 1; ///< 0: as fast as it goes
    bool isLooped = false;
    ScanOptions scan;
};

/// Adds --speed and --loop.
void addPace(CLI::App& command, PacedCaptures& paced);

/// Waits until a message is due: times count from the first one, so that no delay adds to another.
class LivePace {
  public:
    explicit LivePace(double speed) : _speed(speed) {}

    /// False if the wait was interrupted.
    bool waitFor(int64_t time) {
        if (_speed == 0) return !isInterrupted();
        if (!_isBegun) _first = time;
        _isBegun = true;
        const auto due =
            _start + std::chrono::nanoseconds(static_cast<int64_t>(static_cast<double>(time - _first) / _speed));
        for (auto now = Clock::now(); now < due && !isInterrupted(); now = Clock::now())
            std::this_thread::sleep_for(std::min<Clock::duration>(due - now, std::chrono::milliseconds(100)));
        return !isInterrupted();
    }

  private:
    using Clock = std::chrono::steady_clock;
    const double _speed;
    const Clock::time_point _start = Clock::now();
    int64_t _first = 0; ///< once it is begun
    bool _isBegun = false;
};

/// What became of it, also if it ended by an exception.
struct Sent {
    uint64_t messages = 0;
    int exitCode = EXIT_FINE;
};

/// Calls `send(packet, reader)` for each message that the options take when it is due, until the end or an interrupt.
template <class Send>
void sendPaced(const PacedCaptures& options, Sent& sent, Send&& send) {
    for (bool goesOn = true; goesOn;) {
        CaptureScan scan(options.scan);
        LivePace pace(options.speed);
        const uint64_t before = sent.messages;
        try {
            scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
                if (!pace.waitFor(packet.time)) throw Interrupted();
                send(packet, reader);
                ++sent.messages;
            });
        } catch (const Interrupted&) {
        } catch (const Capture::ClosedPipe&) { // what was bad before stays so
            sent.exitCode = std::max(sent.exitCode, scan.exitCode());
            throw;
        }
        scan.summarize();
        sent.exitCode = std::max(sent.exitCode, scan.exitCode());
        goesOn = options.isLooped && sent.messages != before && !isInterrupted();
    }
}

} // namespace qlproto
