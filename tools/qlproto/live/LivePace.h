// The pace of a capture, as the commands that send its messages keep it.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <thread>

#include "tools/qlproto/live/Live.h"

namespace qlproto {

/// Ends what was going on when the user does.
struct Interrupted {};

/// Adds --speed, of which 0 stands for as fast as it goes, and --loop.
void addPace(CLI::App& command, double& speed, bool& isLooped);

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

} // namespace qlproto
