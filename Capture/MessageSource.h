// The messages of captures: one a packet, or out of the packets of a network. Several captures are one stream in the order of
// time, and what connections say is put together of all of them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Capture/Faults.h"
#include "Capture/Index.h"
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

    /// What lies between a message and the one before, by an index.
    struct PassedOver {
        uint64_t packets = 0, faults = 0;
    };

    /// From the second part on, parts of the index that `wants` does not take are passed over. REQUIRES: there is one capture,
    /// a regular file, of which the index is; no framing; and one message was read.
    void passOver(Index index, std::function<bool(const Index::Part&)> wants);

    /// Since the message before, or at the end.
    const PassedOver& passedOver() const { return _passedOver; }

    /// What was wrong since the message before.
    const std::vector<Damage>& faults() const { return _faults.all(); }

    /// Whether the next message can be had without waiting for its writer, as far as that can be told.
    bool isReady() const { return _captures.isReady(); }

    const MergedReader& captures() const { return _captures; }

  private:
    bool goToPart();

    MergedReader _captures;
    Faults _faults;
    std::unique_ptr<Network> _network; ///< null without a framing
    bool _isAtEnd = false;
    std::optional<Index> _index;
    std::function<bool(const Index::Part&)> _wants;
    uint64_t _next = 1;    ///< number of the next packet, if there is an index
    std::size_t _part = 0; ///< of the index, the first that begins after the last packet
    PassedOver _passedOver;
};

} // namespace Capture
