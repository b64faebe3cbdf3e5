#include "Capture/Pcap.h"

#include "Capture/Errors.h"

namespace Capture {

std::string PcapForm::fault(const PcapRecord& it) const {
    if (it.fraction >= fractions)
        return "its time has " + std::to_string(it.fraction) + " parts of " + std::to_string(fractions);
    if (it.captured > MAX_PACKET) return counted(it.captured, "byte") + " are too many";
    if (it.captured > it.original) return counted(it.captured, "byte") + " captured of " + std::to_string(it.original);
    return "";
}

bool PcapForm::isStart(std::string_view header) {
    const uint32_t magic = PcapForm().wordAt(header, 0);
    for (const uint32_t known : {MAGIC_NANOSECONDS, MAGIC_MICROSECONDS})
        if (magic == known || magic == __builtin_bswap32(known)) return true;
    return false;
}

PcapForm PcapForm::of(std::string_view header, const std::string& name, Takes takes) {
    PcapForm form;
    uint32_t magic = form.wordAt(header, 0);
    form.isSwapped = magic != MAGIC_NANOSECONDS && magic != MAGIC_MICROSECONDS;
    if (form.isSwapped) magic = __builtin_bswap32(magic);
    form.fractions = magic == MAGIC_NANOSECONDS ? 1'000'000'000 : 1'000'000;
    const uint32_t longest = form.wordAt(header, 16);
    if (longest >= IDENTIFIER_SIZE && longest <= MAX_PACKET) form.longest = longest;
    form.linkType = form.wordAt(header, 20) & 0xFFFF; // what is above tells of checksums
    if (!isTaken(form.linkType, takes))
        throw DamagedCapture(name + ": " + otherLinkType(form.linkType) + networkHint(form.linkType));
    return form;
}

} // namespace Capture
