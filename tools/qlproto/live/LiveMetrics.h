// What is known of the messages that came, in the form that Prometheus scrapes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Host/Record.h"

namespace qlproto {

class LiveMetrics {
  public:
    /// Serves them at "ADDRESS:PORT". Null if this program is built without; throws Capture::IoError if nobody can listen
    /// there.
    static std::unique_ptr<LiveMetrics> listen(const std::string& address);
    virtual ~LiveMetrics() = default;

    /// A good message that came `now`.
    virtual void add(const Host::Record& record, int64_t now) = 0;
    virtual void addLost(uint64_t messages) = 0;
    virtual void addFaults(uint64_t messages) = 0;
};

} // namespace qlproto
