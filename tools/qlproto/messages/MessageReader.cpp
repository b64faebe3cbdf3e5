#include "tools/qlproto/messages/MessageReader.h"

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Verification.h"
#include "Inspect/Checked.h"
#include "Inspect/SizeWalk.h"

namespace qlproto {

MessageReader::MessageReader(const Inspect::Policy& policy)
    : _policy(policy), _block(std::make_unique_for_overwrite<char[]>(BLOCK)) {}

bool MessageReader::read(std::string_view packet) {
    discard();
    if (packet.size() < Capture::IDENTIFIER_SIZE)
        return bad(fmt::format("{} cannot hold an identifier", Capture::counted(packet.size(), "byte")));
    if (packet.size() > Capture::MAX_PACKET)
        return bad(fmt::format("{} are more than a packet can have", Capture::counted(packet.size(), "byte")));

    const Velmora::MsgType_t id = Capture::identifierOf(packet);
    _descriptor = Quillon::__protocol->getDescriptor(id);
    if (_descriptor == nullptr) return bad(fmt::format("unknown message identifier {} (0x{:04X})", id, id));

    _body = packet.substr(Capture::IDENTIFIER_SIZE);
    _alloc = Velmora::BufferAllocator(_block.get(), static_cast<int>(BLOCK), "qlproto", _descriptor->name());
    Inspect::Decoded decoded;
    if (!Capture::isPad(id)) {
        decoded = Inspect::decode_verified(id, _body, _alloc, _policy);
    } else if (decoded.result = Capture::verifyBody(id, _body, _policy); decoded.result) {
        // Reading a pad ends before or after its body, never at the end. It reaches at most a longest string further.
        _pad.assign(_body).append(Inspect::MAX_TEXT, '\0');
        decoded = Inspect::decode_verified(id, _pad, _alloc, Inspect::tolerant);
    }
    if (!decoded.result) return bad(fmt::format("{}: {}", _descriptor->name(), decoded.result.text()));
    _message = decoded.object;
    return true;
}

bool MessageReader::bad(std::string fault) {
    discard();
    _fault = std::move(fault);
    return false;
}

void MessageReader::discard() {
    if (_message != nullptr) _descriptor->destroy(_message);
    _message = nullptr;
}

} // namespace qlproto
