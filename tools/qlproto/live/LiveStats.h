// What is known of the messages that came: how many, how fast, and how long they took to come here.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>

#include "Host/Record.h"
#include "tools/qlproto/analysis/Histogram.h"

namespace qlproto {

class LiveStats {
  public:
    /// A good message that came `now`.
    void add(const Host::Record& record, int64_t now);
    void addFault() { ++_faults; }
    void addLost(uint64_t messages) { _lost += messages; }

    uint64_t messages() const { return _messages; }

    /// A table for people, the most frequent messages first; rates are of the time since the last call.
    std::string text();

  private:
    using Clock = std::chrono::steady_clock;
    struct Kind {
        uint64_t messages = 0, bytes = 0, before = 0; ///< before: messages at the last call
        Histogram hop;                                ///< nanoseconds from the message's time to its arrival
    };

    std::map<Velmora::MsgType_t, Kind> _kinds;
    uint64_t _messages = 0, _bytes = 0, _before = 0, _faults = 0, _lost = 0;
    Clock::time_point _told = Clock::now();
};

} // namespace qlproto
