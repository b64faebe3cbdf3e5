// The container pcap: a header of the file, then records of a header and a packet each. In either byte order, with times in
// micro- or nanoseconds.
//
// The file begins with a word that tells the byte order and the resolution of times; the version in two halves, two words
// that are always 0, the longest packet, and the link type.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "Capture/Packet.h"

namespace Capture {

inline constexpr std::size_t PCAP_HEADER = 24; ///< bytes that the file begins with
inline constexpr uint32_t MAGIC_NANOSECONDS = 0xA1B23C4D;
inline constexpr uint32_t MAGIC_MICROSECONDS = 0xA1B2C3D4;
inline constexpr uint32_t VERSION_MAJOR = 2, VERSION_MINOR = 4;

/// What stands in front of each packet.
struct PcapRecord {
    uint32_t seconds;  ///< since 1970
    uint32_t fraction; ///< of a second, in the capture's own unit
    uint32_t captured; ///< bytes of the packet that follow
    uint32_t original; ///< bytes that the packet had

    static constexpr std::size_t packetAt() { return 16; } ///< where the packet begins
    std::size_t size() const { return packetAt() + captured; }

    /// Whether the capture holds all of a packet that can hold a message.
    bool isWhole() const { return captured == original && captured >= IDENTIFIER_SIZE; }
};

/// How a capture writes the headers of its records.
struct PcapForm {
    using Record = PcapRecord;
    static constexpr std::size_t HEADER = 16; ///< bytes of the shortest header
    static constexpr std::size_t LONGEST_HEADER = HEADER;

    bool isSwapped = false;        ///< the file's byte order is not ours
    uint32_t fractions = 0;        ///< of a second: the unit that times are told in
    uint32_t longest = MAX_PACKET; ///< the length that packets are said to be cut to
    uint32_t linkType = LinkType::MESSAGE;

    uint32_t linkTypeOf(const PcapRecord&) const { return linkType; }

    uint32_t wordAt(std::string_view bytes, std::size_t at) const {
        uint32_t word;
        std::memcpy(&word, bytes.data() + at, sizeof(word));
        return isSwapped ? __builtin_bswap32(word) : word;
    }

    /// REQUIRES: bytes.size() >= HEADER.
    PcapRecord recordAt(std::string_view bytes) const {
        return {wordAt(bytes, 0), wordAt(bytes, 4), wordAt(bytes, 8), wordAt(bytes, 12)};
    }

    bool isWellFormed(const PcapRecord& it) const {
        return it.fraction < fractions && it.captured <= MAX_PACKET && it.captured <= it.original;
    }

    /// Whether the record is one of the container's own, without a packet of the host's.
    static constexpr bool isFiller(const PcapRecord&) { return false; }

    /// Bytes of a record of so many bytes with what fills it up.
    static constexpr std::size_t filled(std::size_t size) { return size; }

    /// Nanoseconds since 1970. A fraction that is damaged is no more than the second that it is of.
    int64_t timeOf(const PcapRecord& it) const {
        constexpr int64_t nanoseconds = 1'000'000'000;
        return it.seconds * nanoseconds + std::min(it.fraction, fractions - 1) * (nanoseconds / fractions);
    }

    /// What is wrong with a header that is not well-formed. Empty if it is.
    std::string fault(const PcapRecord& it) const;

    /// Whether a file that begins with these bytes is of this container. REQUIRES: header.size() >= 4.
    static bool isStart(std::string_view header);

    /// The form of a file that begins with this header. Throws DamagedCapture, with the file's name, if its packets are none
    /// of those. REQUIRES: isStart(header), header.size() >= PCAP_HEADER.
    static PcapForm of(std::string_view header, const std::string& name, Takes takes);
};

} // namespace Capture
