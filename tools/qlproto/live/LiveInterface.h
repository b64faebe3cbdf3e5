// Packets from an interface of this machine, as they come.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Capture/Packet.h"

namespace qlproto {

struct InterfaceOptions {
    std::string name = {};
    std::string filter = {};   ///< in the language of libpcap; empty: all packets
    bool isPromiscuous = true; ///< takes those for other hosts, too
    int buffer = 32;           ///< MB of packets that the kernel keeps until they are taken
};

class LiveInterface {
  public:
    /// Null if this program is built without. Throws Capture::IoError if there is no such interface, or nothing may be captured
    /// from it, and FilterError.
    static std::unique_ptr<LiveInterface> open(const InterfaceOptions& options);
    virtual ~LiveInterface() = default;

    virtual uint32_t linkType() const = 0;

    /// The next packet, if one has come, valid until the next call. Throws Capture::IoError if none will come any more.
    virtual bool next(Capture::Packet& packet) = 0;

    /// Waits for one, up to so many milliseconds or until a signal comes.
    virtual void wait(int milliseconds) = 0;

    /// Packets until now for which the kernel had no room.
    virtual uint64_t dropped() = 0;
};

} // namespace qlproto
