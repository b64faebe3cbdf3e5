// Messages as they are published on a bus, or written to a journal.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <pybind11/pybind11.h>

#include "Host/Bus.h"
#include "Inspect/Verify.h"
#include "bindings/python/Values.h"

namespace qlproto_python {

class LiveMessages {
  public:
    /// Of a bus, by its URL, or of a journal, by its folder, from `start` on: "live", "oldest" or a sequence. Of these names, or
    /// all if there are none. Throws Host::BusError and Capture::IoError, and raises KeyError and ValueError.
    LiveMessages(const std::string& place, const pybind11::object& start, const std::string& policy,
                 const std::vector<std::string>& names);

    /// (name, identifier, time, sequence, place, body, dict, lost), where `lost` messages came and went unseen since the last
    /// one. None if none comes for so many seconds. It waits without the interpreter's lock; what interrupts the interpreter
    /// interrupts the waiting. Threads take turns.
    pybind11::object next(std::optional<double> seconds);

    uint64_t faults() const { return _faults; } ///< messages that were bad, and are left out
    uint64_t lost() const { return _lost; }

  private:
    bool advance(int milliseconds);
    bool take();

    std::mutex _mutex; ///< held while messages are read and told
    const std::string _place;
    const Inspect::Policy _policy;
    std::vector<Velmora::MsgType_t> _ids; ///< all if empty
    std::unique_ptr<Host::Bus> _bus;      ///< null of a journal
    std::unique_ptr<Host::Source> _source;
    Host::Record _record;
    std::optional<BodyValues> _values;
    std::string _room;
    uint64_t _faults = 0, _lost = 0, _lostBefore = 0; ///< the last: before the message at hand
};

} // namespace qlproto_python
