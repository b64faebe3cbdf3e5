// Whether the bytes of a packet are those of a message.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Capture/Packet.h"
#include "Inspect/Verify.h"

namespace Capture {

constexpr std::size_t PAD_LENGTH = 2; ///< bytes of the length in front of a pad's text

/// By which bytes are verified that may be a packet or not: as elsewhere, but without overlong numbers, which no writer of
/// ours makes: they take longer to refuse than the place of the fault tells.
inline constexpr Inspect::Policy PROOF = [] {
    Inspect::Policy policy = Inspect::whole;
    policy.overlongVarints = false;
    return policy;
}();

/// Who makes a capture chooses its lengths, and with them how many bytes might be messages. Only so many are verified for
/// each byte of the capture or stream, and of one more packet. Damage that nobody intended takes far less.
inline constexpr uint64_t PROOF_RATION = 8;

/// Fewer bytes prove little, for they are easily a sound message by accident: something else must speak for them, too.
inline constexpr std::size_t SHORT_PROOF = 16;

/// Whether the message need not be verified: it was, to tell it from other bytes, and the policy takes what a proof takes.
inline bool isKnownSound(const Packet& packet, const Inspect::Policy& policy) {
    return packet.isProven && policy.accepts_all_of(PROOF);
}

/// Bytes that were looked at to verify so many: only too many elements are looked through before they are refused where they
/// begin.
inline uint64_t workOf(const Inspect::Result& result, std::size_t size) {
    return result.fault == Inspect::Fault::countBeyondBytes ? size : result.consumed;
}

/// Whether the message is nothing but padding, of which the written form is another than the one that is read.
bool isPad(const Inspect::Protocol& protocol, Velmora::MsgType_t id);

/// As Inspect::verify, but for pads. Deliberate: pads are written with a length of two bytes and read with one of
/// variable length, so a reader never ends where a written body does. A pad is sound if its length is that of its
/// written form.
Inspect::Result verifyBody(const Inspect::Protocol& protocol, Velmora::MsgType_t id, std::string_view body,
                           const Inspect::Policy& policy);

/// The bytes that the values of a sound body are read from: zeros go on after a pad and after fields that are missing. They
/// stand in `room` if there are any.
std::string_view readableBody(const Inspect::Protocol& protocol, const Inspect::Result& result, std::string_view body,
                              std::string& room);

/// What is wrong with a packet.
struct PacketFault {
    std::string kind;       ///< as in "truncated"
    std::string reason;     ///< as in "truncated at byte 17 (contents.clOrdID)"; bytes count from the body's begin
    std::string field = {}; ///< the path of the value; empty if it belongs to none
    std::optional<size_t> byte = {}; ///< of the body
};

/// Nothing if the packet, which had `originalLength` bytes before it was captured, holds a message with a sound body.
std::optional<PacketFault> verifyPacket(const Inspect::Protocol& protocol, std::string_view packet,
                                        uint64_t originalLength, const Inspect::Policy& policy);

} // namespace Capture
