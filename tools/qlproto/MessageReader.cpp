#include "tools/qlproto/MessageReader.h"

#include <fmt/format.h>

#include "Inspect/Checked.h"
#include "Inspect/Sizes.h"
#include "tools/qlproto/Errors.h"
#include "tools/qlproto/Verification.h"

namespace qlproto {

MessageReader::MessageReader() : _block(std::make_unique_for_overwrite<char[]>(BLOCK)) {}

bool MessageReader::read(std::string_view packet) {
    discard();
    if (packet.size() < IDENTIFIER_SIZE)
        return bad(fmt::format("{} cannot hold an identifier", counted(packet.size(), "byte")));
    if (packet.size() > MAX_PACKET)
        return bad(fmt::format("{} are more than a packet can have", counted(packet.size(), "byte")));

    const Velmora::MsgType_t id = identifierOf(packet);
    _descriptor = Quillon::__protocol->getDescriptor(id);
    if (_descriptor == nullptr) return bad(fmt::format("unknown message identifier {} (0x{:04X})", id, id));

    _body = packet.substr(IDENTIFIER_SIZE);
    _alloc = Velmora::BufferAllocator(_block.get(), static_cast<int>(BLOCK), "qlproto", _descriptor->name());
    Inspect::Decoded decoded;
    if (id != Quillon::PadMessage::ID) {
        decoded = Inspect::decode_verified(id, _body, _alloc, Inspect::whole);
    } else if (decoded.result = verifyBody(id, _body, Inspect::whole); decoded.result) {
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
