// Where the packets of a large capture stand: a small file beside it, CAPTURE.index, by which readers go to a time, a packet's
// number or messages of some kind without reading what is before or between.
//
// Lines of JSON: what the index is of, then the parts of the capture, some megabytes each, as arrays of the members of
// Index::Part in their order, the messages in hexadecimal digits.
//
//     {"index": 1, "size": 123456, "ends": "5c3f...", "packets": 1000, "messages": [61673, ...]}
//     [1, 24, 24, 24, 1709535600000000000, 1709535607000000000, 0, "0f"]
//
//   size, ends   of the file: its bytes, and a hash of the first and the last 64 kB, so that an index of another file, or of
//                this one before it was written anew, is not taken for its own
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Capture/ByteWindow.h"
#include "Capture/Packet.h"
#include "Inspect/Protocol.h"

namespace Capture {

class Index {
  public:
    struct Part {
        uint64_t packet = 0;              ///< number of the first, from 1
        uint64_t offset = 0;              ///< of its record, in the contents
        Place place = {};                 ///< at the record or before it
        int64_t earliest = 0, latest = 0; ///< of the packets' times
        uint64_t faults = 0;              ///< packets whose messages are bad, and places where the capture is damaged
        std::vector<bool> messages = {};  ///< by their place in the protocol: whether one is there
    };

    /// Begins the index of a capture that is about to be read from its start. Throws IoError, or DamagedCapture if the file
    /// is compressed in a form that can only be read from its start.
    Index(const std::string& capture, const Inspect::Protocol& protocol);

    /// Adds the next packet. `isBad`: it, or the place before it.
    void add(const Packet& packet, bool isBad);

    /// Writes it beside the capture. Throws IoError.
    void write() const;

    /// The index beside the capture, a regular file. None if there is none, and if it cannot be read or is of another file or
    /// no index at all: then `why` says so, on one line.
    static std::optional<Index> beside(const std::string& capture, const Inspect::Protocol& protocol, std::string& why);

    static std::string nameFor(const std::string& capture) { return capture + ".index"; }

    const std::vector<Part>& parts() const { return _parts; }
    uint64_t packets() const { return _packets; }

    /// The part that holds the packet of that number; null if there is no such packet.
    const Part* partOf(uint64_t packet) const;

  private:
    Index(const std::string& capture, const Inspect::Protocol& protocol, uint64_t size);
    bool read(const std::string& text);

    std::string _capture;
    const Inspect::Protocol* _protocol;
    uint64_t _size;
    uint64_t _packets = 0;
    std::vector<Place> _frames; ///< if it is compressed
    std::vector<Part> _parts;
};

} // namespace Capture
