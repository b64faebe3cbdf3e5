// The messages of captures: one a packet, or out of the packets of a network. Several captures are one stream in the order of
// time, and what connections say is put together of all of them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Capture/Faults.h"
#include "Capture/MergedReader.h"
#include "Capture/Network.h"
#include "Capture/Packet.h"

namespace Capture {

class MessageSource {
  public:
    /// Opens the captures; "-" is standard input. Without a framing, packets of networks hold no messages. Throws as Reader
    /// does.
    MessageSource(const std::vector<std::string>& paths, const Inspect::Protocol& protocol,
                  std::optional<NetworkOptions> network = std::nullopt);

    /// Reads the next message; false at the end. It is valid until the next call. Throws as Reader::next() does.
    bool next(Packet& message);

    /// What was wrong since the message before.
    const std::vector<Damage>& faults() const { return _faults.all(); }

    /// Whether the next message can be had without waiting for its writer, as far as that can be told.
    bool isReady() const { return _captures.isReady(); }

    const MergedReader& captures() const { return _captures; }

  private:
    MergedReader _captures;
    Faults _faults;
    std::unique_ptr<Network> _network; ///< null without a framing
    bool _isAtEnd = false;
};

} // namespace Capture
