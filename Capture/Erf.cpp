#include "Capture/Erf.h"

#include <algorithm>
#include <cstring>

#include "Capture/Errors.h"
#include "Capture/NumberAt.h"

namespace Capture {

namespace {

constexpr uint8_t EXTENDED = 0x80;
constexpr uint32_t NO_LINK = UINT32_MAX;
constexpr uint8_t INCOMPLETE = 0x7F; ///< no type: the bytes end inside the header
constexpr uint8_t RESERVED_FLAGS = 0xC0;
constexpr std::size_t ETHERNET_OFFSET = 2; ///< bytes between header and frame
constexpr uint32_t FILLING = 8;            ///< records are filled up to a multiple of so many bytes

uint32_t wordAt(std::string_view bytes, std::size_t at) {
    uint32_t word;
    std::memcpy(&word, bytes.data() + at, sizeof(word));
    return word;
}

} // namespace

ErfRecord ErfForm::recordAt(std::string_view bytes) const {
    ErfRecord it{};
    it.fraction = wordAt(bytes, 0);
    it.seconds = wordAt(bytes, 4);
    it.type = static_cast<uint8_t>(bytes[8]) & 0x7F;
    it.flags = static_cast<uint8_t>(bytes[9]);
    it.length = halfAt(bytes, 10);
    it.begin = HEADER;
    bool isExtended = ErfForm::isExtended(bytes);
    for (; isExtended && it.begin < LONGEST_HEADER && it.begin + EXTENSION <= bytes.size(); it.begin += EXTENSION)
        isExtended = (static_cast<uint8_t>(bytes[it.begin]) & EXTENDED) != 0;
    if (isExtended) it.type = INCOMPLETE;
    if (isFiller(it)) return it;
    if (linkTypeOf(it) == LinkType::ETHERNET) it.begin += ETHERNET_OFFSET;
    it.original = halfAt(bytes, 14);
    it.captured = std::min(it.original, it.length - std::min(it.length, static_cast<uint32_t>(it.begin)));
    return it;
}

bool ErfForm::isWellFormed(const ErfRecord& it) const {
    if (it.length < it.begin || (it.flags & RESERVED_FLAGS) != 0) return false;
    if (isFiller(it)) return it.type == META || it.type == PAD;
    return it.length - it.begin - it.captured < FILLING;
}

int64_t ErfForm::timeOf(const ErfRecord& it) const {
    constexpr uint64_t nanoseconds = 1'000'000'000, half = uint64_t(1) << 31;
    constexpr uint64_t end = (uint64_t(1) << 32) * nanoseconds; // which the last fraction would be rounded up to
    return static_cast<int64_t>(
        std::min(it.seconds * nanoseconds + ((it.fraction * nanoseconds + half) >> 32), end - 1));
}

std::string ErfForm::fault(const ErfRecord& it) const {
    if (isWellFormed(it)) return "";
    if (isFiller(it) && it.type != META && it.type != PAD)
        return "type " + std::to_string(it.type) + " instead of RAW_LINK (" + std::to_string(RAW_LINK) + ")";
    if (it.length < it.begin) return counted(it.length, "byte") + " are fewer than its header has";
    if (!isFiller(it) && it.length - it.begin - it.captured >= FILLING)
        return counted(it.original, "byte") + " of packet in " + std::to_string(it.length - it.begin);
    return "its flags are unknown";
}

bool ErfForm::isPlausible(std::string_view bytes) const {
    constexpr uint8_t latest = 48;             // type
    constexpr uint32_t earliest = 631'152'000; // 1990
    if (bytes.size() < HEADER) return false;
    const ErfRecord it = recordAt(bytes);
    return it.type != 0 && it.type <= latest && it.length >= it.begin && (it.flags & RESERVED_FLAGS) == 0
           && it.seconds >= earliest;
}

uint32_t ErfForm::linkTypeOf(const ErfRecord& it) const {
    switch (it.type) {
    case RAW_LINK:
        return LinkType::MESSAGE;
    case ETHERNET:
    case COLOR_ETHERNET:
    case DSM_COLOR_ETHERNET:
    case COLOR_HASH_ETHERNET:
        return LinkType::ETHERNET;
    case IPV4:
        return LinkType::IPV4;
    case IPV6:
        return LinkType::IPV6;
    default:
        return NO_LINK;
    }
}

bool ErfForm::isStart(ByteWindow& window, Takes takes) {
    const ErfForm form{.takes = takes};
    if (!form.isPlausible(window.peek(LONGEST_HEADER))) return false;
    const ErfRecord it = form.recordAt(window.held());
    std::string_view next = window.peek(it.length + HEADER);
    if (next.size() < it.length) return false;
    next.remove_prefix(it.length);
    if (!next.empty() && !form.isPlausible(next)) return false;
    if (form.isFiller(it) && it.type != META && it.type != PAD)
        throw DamagedCapture(window.name() + ": " + form.fault(it));
    return true;
}

} // namespace Capture
