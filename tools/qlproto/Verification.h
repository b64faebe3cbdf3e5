// Whether the bytes of a packet are those of a message.
#pragma once

#include <string_view>

#include "Inspect/Verify.h"
#include "tools/qlproto/Packet.h"

namespace qlproto {

/// As Inspect::verify, but for pads. Deliberate: pads are written with a length of two bytes and read with one of
/// variable length, so a reader never ends where a written body does. A pad is sound if its length is that of its
/// written form.
Inspect::Result verifyBody(Velmora::MsgType_t id, std::string_view body, const Inspect::Policy& policy);

} // namespace qlproto
