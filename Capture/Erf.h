// The container ERF, in which capture cards write: records of a header and a packet each, and nothing in front of them.
//
// A header holds the time (64 bits, low byte first: seconds since 1970 and a fraction of 2^-32), the type of record, flags,
// the length of the record, a counter, and the length that the packet had (16 bits each, high byte first). If the type's
// high bit is set, extension headers of eight bytes follow, each of which says in its high bit whether another does. Zeros
// fill the record up to a multiple of eight bytes.
//
// Messages are taken from records of the type for raw links, packets of networks from those of the types for Ethernet, in
// which two bytes stand in front of the frame, and for IP. Padding and what cards tell of themselves is passed over.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Capture/ByteWindow.h"
#include "Capture/Packet.h"

namespace Capture {

struct ErfRecord {
    uint32_t seconds;
    uint32_t fraction; ///< of 2^-32 seconds
    uint8_t type;
    uint8_t flags;
    uint32_t length; ///< of the record
    uint32_t captured;
    uint32_t original;
    std::size_t begin; ///< of the packet

    std::size_t packetAt() const { return begin; }
    std::size_t size() const { return length; }
    bool isWhole() const { return captured == original && captured >= IDENTIFIER_SIZE; }
};

struct ErfForm {
    using Record = ErfRecord;
    static constexpr std::size_t HEADER = 16;
    static constexpr std::size_t EXTENSION = 8, MOST_EXTENSIONS = 16;
    static constexpr std::size_t LONGEST_HEADER = HEADER + MOST_EXTENSIONS * EXTENSION;
    // Types of records.
    static constexpr uint8_t ETHERNET = 2, COLOR_ETHERNET = 11, DSM_COLOR_ETHERNET = 16, COLOR_HASH_ETHERNET = 20;
    static constexpr uint8_t IPV4 = 22, IPV6 = 23, RAW_LINK = 24, META = 27, PAD = 48;

    uint32_t longest = MAX_PACKET;
    Takes takes = Takes::messages;

    ErfRecord recordAt(std::string_view bytes) const;
    bool isWellFormed(const ErfRecord& it) const;
    uint32_t linkTypeOf(const ErfRecord& it) const;
    bool isFiller(const ErfRecord& it) const { return !isTaken(linkTypeOf(it), takes); }
    static constexpr std::size_t filled(std::size_t size) { return (size + 7) / 8 * 8; }
    static bool isExtended(std::string_view bytes) { return (bytes[8] & 0x80) != 0; }
    int64_t timeOf(const ErfRecord& it) const;
    std::string fault(const ErfRecord& it) const;

    /// Whether a file of such records begins here, of whatever type: one, and another or the end. Throws DamagedCapture, with
    /// the file's name, if it does and its packets are none of ours.
    static bool isStart(ByteWindow& window, Takes takes);

  private:
    bool isPlausible(std::string_view bytes) const;
};

} // namespace Capture
