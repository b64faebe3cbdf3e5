#include "tools/qlproto/CaptureScan.h"

namespace qlproto {

bool CaptureScan::next(CaptureReader& capture, Packet& packet) {
    try {
        return capture.next(packet);
    } catch (const DamagedCapture& damage) {
        ++_bad;
        if (_onFault) _onFault(_packets, fmt::format("damaged behind this packet: {}", damage.what()));
        tell(fmt::format("qlproto: after packet {}: {}", _packets, damage.what()));
        return false;
    }
}

void CaptureScan::complain(const std::string& fault) {
    ++_bad;
    if (_onFault) _onFault(_packets, fault);
    tell(fmt::format("qlproto: packet {}: {}", _packets, fault));
}

void CaptureScan::summarize() const {
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - _start).count();
    const double rate = seconds > 0 ? static_cast<double>(_messages) / seconds : 0;
    tell(fmt::format("{}, {}, {:.3f} s, {:.0f} messages/s", counted(_messages, "message"), counted(_bytes, "byte"),
                     seconds, rate));
    if (_bad != 0) tell(counted(_bad, "fault"));
}

} // namespace qlproto
