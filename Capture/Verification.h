// Whether the bytes of a packet are those of a message.
#pragma once

#include <string_view>

#include "Capture/Packet.h"
#include "Inspect/Verify.h"

namespace Capture {

constexpr std::size_t PAD_LENGTH = 2; ///< bytes of the length in front of a pad's text

/// Whether the message is nothing but padding, of which the written form is another than the one that is read.
bool isPad(const Inspect::Protocol& protocol, Velmora::MsgType_t id);

/// As Inspect::verify, but for pads. Deliberate: pads are written with a length of two bytes and read with one of
/// variable length, so a reader never ends where a written body does. A pad is sound if its length is that of its
/// written form.
Inspect::Result verifyBody(const Inspect::Protocol& protocol, Velmora::MsgType_t id, std::string_view body,
                           const Inspect::Policy& policy);

} // namespace Capture
