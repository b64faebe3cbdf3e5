// One captured message: two bytes of message identifier, low byte first, then the message's body.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Capture/Connection.h"
#include "Capture/Link.h"

namespace Capture {

/// Bytes of identifier in front of the body.
inline constexpr std::size_t IDENTIFIER_SIZE = 2;

/// The identifier in front of a packet's body. REQUIRES: the packet holds one.
inline uint16_t identifierOf(std::string_view packet) {
    return static_cast<uint16_t>(static_cast<unsigned char>(packet[0]) | static_cast<unsigned char>(packet[1]) << 8);
}

/// The same the other way round: the bytes that stand in front of the body.
inline std::string identifierBytes(uint16_t id) { return {static_cast<char>(id & 0xFF), static_cast<char>(id >> 8)}; }

/// The longest packet of a capture.
inline constexpr std::size_t MAX_PACKET = 262144;

struct Packet {
    int64_t time = 0;        ///< nanoseconds since 1970
    std::string_view bytes;  ///< valid until the next packet
    uint64_t offset = 0;     ///< of its record in the capture it was read from, decompressed
    uint64_t original = 0;   ///< bytes that it had if a capture holds only the first of them; 0 says that these are all
    std::size_t capture = 0; ///< the number of that capture, if it is one of several
    uint32_t linkType = LinkType::MESSAGE;  ///< what the bytes are
    bool isProven = false;                  ///< it is known to be a sound message (Verification.h)
    const Connection* connection = nullptr; ///< by which it came; null if that is not known. Valid as the bytes are

    /// Bytes that it had before it was cut to what the capture holds of it.
    uint64_t originalLength() const { return original != 0 ? original : bytes.size(); }
};

/// Takes packets one by one, in the order of time.
class PacketSink {
  public:
    virtual ~PacketSink() = default;
    virtual void packet(const Packet& packet) = 0;
};

} // namespace Capture
