// What stands in front of each packet of a capture.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "Capture/Packet.h"

namespace Capture {

struct RecordHeader {
    static constexpr std::size_t SIZE = 16; ///< bytes in the file

    uint32_t seconds;  ///< since 1970
    uint32_t fraction; ///< of a second, in the capture's own unit
    uint32_t captured; ///< bytes of the packet that follow
    uint32_t original; ///< bytes that the packet had

    /// Whether the capture holds all of a packet that can hold a message.
    bool isWhole() const { return captured == original && captured >= IDENTIFIER_SIZE; }
};

/// How a capture writes the headers of its records.
struct RecordForm {
    bool isSwapped = false;        ///< the file's byte order is not ours
    uint32_t fractions = 0;        ///< of a second: the unit that times are told in
    uint32_t longest = MAX_PACKET; ///< the length that packets are said to be cut to

    uint32_t wordAt(std::string_view bytes, std::size_t at) const {
        uint32_t word;
        std::memcpy(&word, bytes.data() + at, sizeof(word));
        return isSwapped ? __builtin_bswap32(word) : word;
    }

    /// REQUIRES: bytes.size() >= RecordHeader::SIZE.
    RecordHeader headerOf(std::string_view bytes) const {
        return {wordAt(bytes, 0), wordAt(bytes, 4), wordAt(bytes, 8), wordAt(bytes, 12)};
    }

    bool isWellFormed(const RecordHeader& header) const {
        return header.fraction < fractions && header.captured <= MAX_PACKET && header.captured <= header.original;
    }

    /// Nanoseconds since 1970.
    int64_t timeOf(const RecordHeader& header) const {
        constexpr int64_t nanoseconds = 1'000'000'000;
        return header.seconds * nanoseconds + header.fraction * (nanoseconds / fractions);
    }
};

} // namespace Capture
