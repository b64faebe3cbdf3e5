// What the live commands have in common: buses by URL, where to begin, and how they end.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "Host/Bus.h"

namespace CLI {
class App;
}

namespace qlproto {

/// Opens a bus of the kinds that this program is built with. Throws Host::BusError.
std::unique_ptr<Host::Bus> openLiveBus(const std::string& url);

/// Messages as they come: from a bus, out of a journal, or of a capture on standard input.
struct Live {
    std::unique_ptr<Host::Bus> bus; ///< null if it is none
    std::unique_ptr<Host::Source> source;
    bool hasEnd = false; ///< when there is no next message, there is none any more
};
/// `what` is a URL, the folder of a journal, or "-". Throws Host::BusError and Capture::IoError.
Live openLive(const std::string& what, Host::From from);

/// Where to begin and when to end.
struct LiveSpan {
    std::string start; ///< live, oldest, a sequence, or a time
    uint64_t messages = UINT64_MAX;
    uint64_t seconds = UINT32_MAX;

    Host::From from() const;
};
/// Adds --start, --messages and --seconds. What stands in `span` is the default.
void addLiveSpan(CLI::App& command, LiveSpan& span);

/// Interrupts end a command from now on as its end does.
void endOnInterrupt();
bool isInterrupted();

int64_t timeNow(); ///< nanoseconds since 1970

/// Tells when a time has gone by, again and again.
class Every {
  public:
    explicit Every(std::chrono::milliseconds interval) : _interval(interval), _next(Clock::now() + interval) {}
    bool isDue() {
        const Clock::time_point now = Clock::now();
        if (now < _next) return false;
        _next = now + _interval;
        return true;
    }

  private:
    using Clock = std::chrono::steady_clock;
    const std::chrono::milliseconds _interval;
    Clock::time_point _next;
};

} // namespace qlproto
