// How far a long reading of a file is, on standard error: share, rate, time left. Only where people watch standard
// error alone, and not before a second has passed.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>

#include <unistd.h>

namespace qlproto {

class Progress {
  public:
    ~Progress() { clear(); }

    /// `size` is 0 if it is not known; then there is nothing to tell.
    void update(uint64_t done, uint64_t size) {
        if (!_isWatched || size == 0) return;
        const Clock::time_point now = Clock::now();
        if (now < _next) return;
        _next = now + std::chrono::milliseconds(200);
        const double seconds = std::chrono::duration<double>(now - _start).count();
        const double rate = static_cast<double>(done) / seconds;
        const double left = rate > 0 ? static_cast<double>(size - std::min(done, size)) / rate : 0;
        // Not fmt::print(), which throws if the terminal has gone.
        std::fprintf(stderr, "\r%3.0f %%  %.0f MB/s  %.0f s left\x1B[K",
                     100 * static_cast<double>(done) / static_cast<double>(size), rate / 1e6, left);
        _isShown = true;
    }

    /// Makes room for a line.
    void clear() {
        if (_isShown) std::fputs("\r\x1B[K", stderr);
        _isShown = false;
    }

  private:
    using Clock = std::chrono::steady_clock;

    const bool _isWatched = isatty(STDERR_FILENO) == 1 && isatty(STDOUT_FILENO) == 0;
    const Clock::time_point _start = Clock::now();
    Clock::time_point _next = _start + std::chrono::seconds(1);
    bool _isShown = false;
};

} // namespace qlproto
