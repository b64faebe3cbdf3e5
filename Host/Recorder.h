// Keeps a journal of a bus: all that is published, with its sequence.
//
//     Journal journal("/var/journal/prices");
//     Recorder recorder(*bus, journal);
//     while (isWanted) recorder.poll(1000);
//
// It goes on after the journal's last message. If the journal cannot be written to, the bus is told, which lets nobody publish
// until it can be again if it keeps no messages itself; nothing that it still has is lost meanwhile.
#pragma once

#include <memory>
#include <string>

#include "Host/Bus.h"
#include "Host/Journal.h"

namespace Host {

class Recorder {
  public:
    /// Throws BusError, also if the bus has begun anew and is at messages that the journal has already. REQUIRES: both
    /// outlive it.
    Recorder(Bus& bus, Journal& journal);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Appends what there is; if there is nothing, or it cannot be written, waits so many milliseconds. Returns how many
    /// messages it appended. Throws BusError.
    size_t poll(int milliseconds);

    const std::string& refusal() const { return _refusal; } ///< why nothing can be appended; empty if it can
    uint64_t lost() const { return _lost; } ///< messages that came and went unread, or that no journal takes

  private:
    bool append();

    Bus& _bus;
    Journal& _journal;
    std::unique_ptr<Source> _source;
    Record _record; ///< that is to be appended
    bool _isPending = false;
    std::string _refusal;
    uint64_t _lost = 0;
};

} // namespace Host
