#include "tools/qlproto/messages/MessageReader.h"

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Verification.h"
#include "tools/qlproto/Tool.h"

namespace qlproto {

MessageReader::MessageReader(const Inspect::Policy& policy)
    : _policy(policy), _block(std::make_unique_for_overwrite<char[]>(BLOCK)) {}

/// Finds the message by its identifier.
bool MessageReader::begin(std::string_view packet) {
    _message = {};
    if (packet.size() < Capture::IDENTIFIER_SIZE)
        return bad("no identifier",
                   fmt::format("{} cannot hold an identifier", Capture::counted(packet.size(), "byte")));
    if (packet.size() > Capture::MAX_PACKET)
        return bad("too long",
                   fmt::format("{} are more than a packet can have", Capture::counted(packet.size(), "byte")));

    const Velmora::MsgType_t id = Capture::identifierOf(packet);
    _descriptor = thisTool.protocol.instance()->getDescriptor(id);
    if (_descriptor == nullptr)
        return bad(Inspect::to_string(Inspect::Fault::unknownIdentifier),
                   fmt::format("unknown message identifier {} (0x{:04X})", id, id));

    _body = packet.substr(Capture::IDENTIFIER_SIZE);
    return true;
}

bool MessageReader::verify(std::string_view packet) {
    if (!begin(packet)) return false;
    const Inspect::Result result = Capture::verifyBody(thisTool.protocol, _descriptor->id(), _body, _policy);
    return result ? true : bad(result);
}

bool MessageReader::verify(const Capture::Packet& packet) {
    return Capture::isKnownSound(packet, _policy) ? begin(packet.bytes) : verify(packet.bytes);
}

bool MessageReader::read(std::string_view packet) {
    if (!begin(packet)) return false;
    const Velmora::MsgType_t id = _descriptor->id();
    _alloc = Velmora::BufferAllocator(_block.get(), static_cast<int>(BLOCK), "qlproto", _descriptor->name());
    if (!Capture::isPad(thisTool.protocol, id)) {
        _message = Inspect::decode_verified(thisTool.protocol, id, _body, _alloc, _policy);
    } else if (_message.result = Capture::verifyBody(thisTool.protocol, id, _body, _policy); _message.result) {
        const std::string_view pad = Capture::readableBody(thisTool.protocol, _message.result, _body, _pad);
        _message = Inspect::decode_verified(thisTool.protocol, id, pad, _alloc, Inspect::tolerant);
    }
    return _message.result ? true : bad(_message.result);
}

bool MessageReader::bad(const Inspect::Result& result) {
    return bad(Inspect::to_string(result.fault), fmt::format("{}: {}", _descriptor->name(), result.text()));
}

bool MessageReader::bad(std::string kind, std::string fault) {
    _faultKind = std::move(kind);
    _fault = std::move(fault);
    return false;
}

} // namespace qlproto
