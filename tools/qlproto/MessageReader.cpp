#include "tools/qlproto/MessageReader.h"

#include <cstring>
#include <stdexcept>

#include <fmt/format.h>

#include "tools/qlproto/Errors.h"

namespace qlproto {

namespace {

/// Bytes that a pad's body says it takes. Deliberate: pads are written with a length of two bytes but read with one of
/// variable length, so a reader never ends where the body does. A pad is sound if its length is that of its written
/// form.
std::size_t padSize(std::string_view body) {
    if (body.size() < 2) return 2;
    return 2u + static_cast<unsigned char>(body[0]) + 256u * static_cast<unsigned char>(body[1]);
}

} // namespace

MessageReader::MessageReader()
    : _bytes(std::make_unique<char[]>(MAX_PACKET + SLACK)), _block(std::make_unique_for_overwrite<char[]>(BLOCK)) {}

bool MessageReader::read(std::string_view packet) {
    discard();
    if (packet.size() < IDENTIFIER_SIZE)
        return bad(fmt::format("{} cannot hold an identifier", counted(packet.size(), "byte")));
    if (packet.size() > MAX_PACKET)
        return bad(fmt::format("{} are more than a packet can have", counted(packet.size(), "byte")));

    const auto id = static_cast<Velmora::MsgType_t>(static_cast<unsigned char>(packet[0])
                                                    | static_cast<unsigned char>(packet[1]) << 8);
    _descriptor = Quillon::__protocol->getDescriptor(id);
    if (_descriptor == nullptr) return bad(fmt::format("unknown message identifier {} (0x{:04X})", id, id));

    const std::string_view body = packet.substr(IDENTIFIER_SIZE);
    std::memcpy(_bytes.get(), body.data(), body.size());
    if (body.size() < _dirty) std::memset(_bytes.get() + body.size(), 0, _dirty - body.size());
    _dirty = body.size();
    _body = {_bytes.get(), body.size()};
    return decode();
}

bool MessageReader::decode() {
    std::size_t taken = 0;
    try {
        _alloc = Velmora::BufferAllocator(_block.get(), static_cast<int>(BLOCK), "qlproto", _descriptor->name());
        void* const place = _alloc.allocate(_descriptor->size());
        _descriptor->construct(place, _alloc);
        _message = place;
        Velmora::FastCodec codec(_bytes.get(), _bytes.get() + _body.size());
        _descriptor->read(_message, codec);
        taken = codec.size();
    } catch (const std::out_of_range&) {
        return bad(fmt::format("{}: its contents do not fit a block of {} bytes", _descriptor->name(), BLOCK));
    } catch (const std::length_error&) {
        return bad(fmt::format("{}: its contents do not fit a block of {} bytes", _descriptor->name(), BLOCK));
    }

    if (_descriptor->id() == Quillon::PadMessage::ID) taken = padSize(_body);
    if (taken > _body.size())
        return bad(fmt::format("{}: body of {} ends before its fields do", _descriptor->name(),
                               counted(_body.size(), "byte")));
    if (taken < _body.size())
        return bad(fmt::format("{}: {} left over behind its fields", _descriptor->name(),
                               counted(_body.size() - taken, "byte")));
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
