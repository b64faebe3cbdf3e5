// Reads capture files: pcap with times in nanoseconds and link type USER0, one message a packet.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Capture/ByteWindow.h"
#include "Capture/Packet.h"
#include "Capture/RecordFinder.h"
#include "Capture/RecordForm.h"

namespace Capture {

/// Damage to a capture's records. A damaged body alone is not: its packet comes out and is found bad by its reader.
struct Damage {
    uint64_t offset = 0;  ///< of the record's header in the file
    uint64_t skipped = 0; ///< bytes that belong to no record that could be told; 0 if the packet came out all the same
    std::string reason;   ///< what is wrong with the header

    std::string text() const;
};

/// Reads captures, even damaged ones: the usual library ends at the first record whose header is damaged, and a damaged
/// length would make it swallow or misread the good packets after it. Either byte order, times in micro- or
/// nanoseconds.
class Reader {
  public:
    /// Opens the capture; "-" is standard input. What is damaged is searched for messages of the protocol. Throws IoError,
    /// or DamagedCapture if it is none of ours.
    explicit Reader(const std::string& path, const Inspect::Protocol& protocol = Inspect::default_protocol());

    /// Reads the next packet; false at the end. Its bytes are valid until the next call. Throws IoError.
    bool next(Packet& packet);

    /// What was wrong between the packet before and this one, or the end. Null if nothing was.
    const Damage* damage() const { return _damage ? &*_damage : nullptr; }

    /// Whether the next packet can be had without waiting for its writer.
    bool isReady();

    /// Bytes that the last packet had before it was cut to what the capture holds of it; as many as it has if it was
    /// not.
    uint64_t originalLength() const { return _originalLength; }

    uint64_t position() const { return _window.position(); } ///< offset in the file up to which all was read
    uint64_t fileSize() const { return _window.fileSize(); } ///< 0 if it is not known

  private:
    RecordForm readFileHeader();
    std::string describe(std::string_view header) const;

    ByteWindow _window;
    const RecordForm _form;
    RecordFinder _finder;
    std::optional<RecordFinder::Found> _found; ///< the record that came out last, still at the window's position
    std::optional<Damage> _damage;
    uint64_t _originalLength = 0;
};

} // namespace Capture
