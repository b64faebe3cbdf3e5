#include "Capture/Verification.h"

#include "Capture/Errors.h"
#include "Inspect/Reflection.h"
#include "Inspect/SizeWalk.h"

namespace Capture {

namespace {

Inspect::Result verifyPad(const Inspect::Protocol& protocol, Velmora::MsgType_t id, std::string_view body,
                          const Inspect::Policy& policy) {
    Inspect::Result result{
        .id = id, .begin = body.data(), .end = body.data() + body.size(), .type = Inspect::reflect(protocol, id)};
    const std::size_t size = body.size() < PAD_LENGTH ? PAD_LENGTH
                                                      : PAD_LENGTH + static_cast<unsigned char>(body[0])
                                                            + 256u * static_cast<unsigned char>(body[1]);
    if (body.empty() && policy.missingLastFields) {
        result.missing = PAD_LENGTH;
    } else if (body.size() < size) {
        result.fault = Inspect::Fault::truncated;
    } else if (body.size() > size && !policy.trailingBytes) {
        result.fault = Inspect::Fault::trailingBytes;
        result.offset = result.consumed = size;
    } else {
        result.consumed = size;
    }
    return result;
}

} // namespace

bool isPad(const Inspect::Protocol& protocol, Velmora::MsgType_t id) {
    const Inspect::TypeInfo* const type = Inspect::reflect(protocol, id);
    return type != nullptr && type->fields.size() == 1 && type->fields[0].value.kind == Inspect::Kind::padding;
}

Inspect::Result verifyBody(const Inspect::Protocol& protocol, Velmora::MsgType_t id, std::string_view body,
                           const Inspect::Policy& policy) {
    if (isPad(protocol, id)) return verifyPad(protocol, id, body, policy);
    return Inspect::verify(protocol, id, body.data(), body.data() + body.size(), policy);
}

std::string_view readableBody(const Inspect::Protocol& protocol, const Inspect::Result& result, std::string_view body,
                              std::string& room) {
    // Reading a pad ends before or after its body, never at the end. It reaches at most a longest string further.
    const std::size_t zeros = isPad(protocol, result.id) ? Inspect::MAX_TEXT : result.missing;
    if (zeros == 0) return body;
    return room.assign(body).append(zeros, '\0');
}

std::optional<PacketFault> verifyPacket(const Inspect::Protocol& protocol, std::string_view packet,
                                        uint64_t originalLength, const Inspect::Policy& policy) {
    if (originalLength != packet.size())
        return PacketFault{"cut by the capture", "only " + std::to_string(packet.size()) + " of its "
                                                     + counted(originalLength, "byte") + " were captured"};
    if (packet.size() < IDENTIFIER_SIZE)
        return PacketFault{"no identifier", counted(packet.size(), "byte") + " cannot hold an identifier"};
    if (packet.size() > MAX_PACKET)
        return PacketFault{"too long", counted(packet.size(), "byte") + " are more than a packet can have"};
    const Velmora::MsgType_t id = identifierOf(packet);
    const std::string_view body = packet.substr(IDENTIFIER_SIZE);
    const Inspect::Result result = verifyBody(protocol, id, body, policy);
    if (result) return std::nullopt;
    if (result.fault == Inspect::Fault::unknownIdentifier)
        return PacketFault{Inspect::to_string(result.fault), "unknown message identifier " + std::to_string(id)};
    return PacketFault{Inspect::to_string(result.fault), result.text(), result.path(), result.offset};
}

} // namespace Capture
