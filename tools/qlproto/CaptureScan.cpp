#include "tools/qlproto/CaptureScan.h"

namespace qlproto {

bool CaptureScan::next(CaptureReader& capture, Packet& packet) {
    const bool isThere = capture.next(packet);
    if (const Damage* const damage = capture.damage()) note(fmt::format("after packet {}", _packets), damage->text());
    if (!isThere) return false;
    ++_packets;
    _bytes += packet.bytes.size();
    _offset = packet.offset;
    return true;
}

void CaptureScan::complain(const std::string& fault) {
    note(fmt::format("packet {} at offset {}", _packets, _offset), fault);
}

void CaptureScan::note(const std::string& where, const std::string& fault) {
    ++_bad;
    if (_onFault) _onFault(_packets, fault);
    tell(fmt::format("qlproto: {}: {}", where, fault));
}

void CaptureScan::summarize() const {
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - _start).count();
    const double rate = seconds > 0 ? static_cast<double>(_messages) / seconds : 0;
    tell(fmt::format("{}, {}, {:.3f} s, {:.0f} messages/s", counted(_messages, "message"), counted(_bytes, "byte"),
                     seconds, rate));
    if (_bad != 0) tell(counted(_bad, "fault"));
}

} // namespace qlproto
