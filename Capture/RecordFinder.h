// Tells the records of a capture from what damage has left of them, in containers whose records are a header and a packet
// (pcap, ERF), which say of each other no more than where the next one begins.
//
// A record is looked for where the one before it ends, and believed for one of three reasons:
//
//   followed   its header is well-formed, and another such header stands where it says, or the capture ends there
//   sound      its packet verifies with one of the header's two lengths; no part of a message is a message, so only the
//              true length does. A frame of a network is sound if the IP packet in it says that it has that length
//   credible   its header is well-formed and of about the time of the others, and a known identifier, or what a frame may
//              begin with, follows
//
// A record that holds only the start of its packet is as good as any other.
//
// Where there is none, records are searched for byte by byte. One begins where a known identifier follows a well-formed
// header and one of the reasons holds. There a packet of few bytes may be sound by accident: it must also be followed, or
// of about the time of the others. What is believed without being followed may have lost bytes: then the next record is
// searched for inside it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "Capture/ByteWindow.h"
#include "Inspect/Protocol.h"

namespace Capture {

/// For the forms PcapForm and ErfForm.
template <class Form>
class RecordFinder {
  public:
    using Record = typename Form::Record;

    struct Found {
        Record record;           ///< its header, as it stands there
        uint32_t length = 0;     ///< of the packet
        bool isSound = false;    ///< it is known to be whole
        bool isFollowed = false; ///< the record is known to be followed
    };

    /// Works at the position of the window. REQUIRES: the window outlives this.
    RecordFinder(ByteWindow& window, const Form& form, const Inspect::Protocol& protocol)
        : _window(window), _form(form), _protocol(protocol), _longest(form.longest) {}

    /// The record at the position, if there is one; the window then holds all of it. Waits for no input after a sound
    /// packet.
    std::optional<Found> recordHere();

    /// Goes on to the next record after the position, or to the end.
    std::optional<Found> search();

    /// Goes on from a record that was found at the position to what follows it. True if it is a record that begins
    /// before the one found ends.
    bool pass(const Found& found);

    /// The records that come are of another time than those before.
    void forgetTime() { _seconds.reset(); }

  private:
    std::size_t sizeOf(const Found& found);
    std::optional<std::size_t> overlapping(const Found& found);
    std::string_view peek(std::size_t at, std::size_t size);
    std::string_view peekHeader(std::size_t at, std::size_t more = 0);
    bool isWholeHeader(std::string_view bytes) const;
    bool isKnown(const Record& record, std::string_view bytes) const;
    std::size_t startSize(const Record& record) const;
    bool isRecord(std::size_t at);
    bool isFollowed(std::size_t at, std::size_t size, const Record& record);
    bool isSound(const Record& record, std::size_t at, uint32_t length);
    void noteTime(uint32_t seconds);
    bool leadsTo(std::size_t size);
    bool holdsRecord(std::size_t size);

    ByteWindow& _window;
    const Form _form;
    const Inspect::Protocol& _protocol;
    std::optional<uint32_t> _seconds;     ///< about the time of the records here
    std::optional<uint32_t> _lastSeconds; ///< of the record in front, right or wrong
    uint32_t _longest;                    ///< the length that packets are cut to, as far as is known
    uint64_t _verified = 0;               ///< bytes of what might have been packets
};

} // namespace Capture
