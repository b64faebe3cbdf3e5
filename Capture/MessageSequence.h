// The messages of captures that are read one after the other, however many these are; or, with a framing, as one stream in the
// order of time, for connections go on from one to the next.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Capture/MessageSource.h"

namespace Capture {

class MessageSequence {
  public:
    /// Opens nothing yet. REQUIRES: the protocol outlives this.
    MessageSequence(std::vector<std::string> paths, const Inspect::Protocol& protocol,
                    std::optional<NetworkOptions> network = std::nullopt);

    /// Reads the next message, of the capture of that number; false at the end. Valid until the next call. Throws as
    /// MessageSource does; then there is nothing more.
    bool next(Packet& message);

    /// What was wrong since the message before.
    const std::vector<Damage>& faults() const { return _faults; }

    /// Messages of that capture until now, which is the number of its last one.
    uint64_t messages(std::size_t capture) const { return _messages[capture]; }

    const std::vector<std::string>& paths() const { return _paths; }

  private:
    void open();

    const std::vector<std::string> _paths;
    const Inspect::Protocol& _protocol;
    const std::optional<NetworkOptions> _network;
    std::unique_ptr<MessageSource> _source; ///< null if the next one is to be opened
    std::size_t _first = 0, _opened = 0;    ///< numbers of the captures that it reads: from, to
    std::vector<uint64_t> _messages;
    std::vector<Damage> _faults;
};

} // namespace Capture
