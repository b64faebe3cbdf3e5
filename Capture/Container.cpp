#include "Capture/Container.h"

#include <utility>

#include "Capture/Erf.h"
#include "Capture/Errors.h"
#include "Capture/Pcap.h"
#include "Capture/Pcapng.h"
#include "Capture/Records.h"

namespace Capture {

std::string Damage::text() const {
    const std::string where = (isOfRecord ? std::string(kind) : "damage") + " at offset " + std::to_string(offset);
    if (kind != RECORD)
        return where + ": " + reason + (skipped != 0 ? "; " + counted(skipped, "byte") + " skipped" : "");
    if (skipped != 0) return where + ": " + reason + "; " + counted(skipped, "byte") + " skipped";
    return where + ": " + reason + (isOfRecord ? "; its packet is taken all the same" : "");
}

void Container::damaged(Damage damage) {
    if (!_damage) {
        _damage = std::move(damage);
        return;
    }
    _damage->skipped += damage.skipped;
    _damage->reason += "; at offset " + std::to_string(damage.offset) + ": " + damage.reason;
}

std::unique_ptr<Container> containerOf(ByteWindow& window, const Inspect::Protocol& protocol, Takes takes) {
    const auto fail = [&](const std::string& why) { throw DamagedCapture(window.name() + ": not a capture: " + why); };
    std::string_view header = window.peek(Block::SMALLEST);
    if (header.size() < Block::SMALLEST) fail(counted(header.size(), "byte") + " are no header");
    if (Pcapng::isStart(header)) return std::make_unique<Pcapng>(window, protocol, takes);
    if (!PcapForm::isStart(header)) {
        if (!ErfForm::isStart(window, takes)) fail("it does not begin as one");
        return std::make_unique<Records<ErfForm>>(window, ErfForm{.takes = takes}, protocol);
    }
    header = window.peek(PCAP_HEADER);
    if (header.size() < PCAP_HEADER) fail(counted(header.size(), "byte") + " are no header");
    const PcapForm form = PcapForm::of(header, window.name(), takes);
    window.skip(PCAP_HEADER);
    return std::make_unique<Records<PcapForm>>(window, form, protocol);
}

} // namespace Capture
