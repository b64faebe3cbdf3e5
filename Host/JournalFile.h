// The files of a journal: how they are named, what their blocks look like, and what is whole of one that is damaged.
//
// A file is a capture in the container pcapng, whose name tells the sequence and the time of its first message:
//
//     00000000000000000001-1709535600000000000.pcapng
//
// The block of a message has two options: epb_packetid holds its sequence, and one of local use the CRC-32 of all that
// stands in the block before it. So a block is known to be whole by itself, wherever it is found.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/Packet.h"
#include "Host/Descriptor.h"
#include "Host/Record.h"

namespace Host {

struct JournalFile {
    uint64_t sequence = 0; ///< of its first message
    int64_t time = 0;      ///< the same
    std::string name;      ///< in its folder

    /// All in the folder, by sequence. What has another name is none. Throws Capture::IoError.
    static std::vector<JournalFile> in(const std::string& folder);
    static std::string nameOf(uint64_t sequence, int64_t time);
};

/// Bodies of a journal are this long at most.
inline constexpr size_t LONGEST_JOURNAL_BODY = Capture::MAX_PACKET - Capture::IDENTIFIER_SIZE;

/// Appends the block of a message. REQUIRES: its body is not too long, its time is one from 1970 to 2106.
void appendJournalBlock(std::string& to, const Record& record);

/// Reads one file, which may grow meanwhile.
class JournalFileReader {
  public:
    /// Throws Capture::IoError, as all do that read.
    explicit JournalFileReader(const std::string& path);

    /// The next message that is whole. What is damaged before it is stepped over, and counted. False if there is none yet:
    /// what follows position() may be one that is just being written, or cut off. `lost` is not set. The body is valid until
    /// the next call.
    bool next(Record& record);

    uint64_t position() const { return _position; } ///< after the last whole block; what is cut off begins there
    uint64_t damages() const { return _damages; }   ///< places at which something was stepped over

  private:
    enum class Outcome { message, other, none };

    std::string_view peek(size_t at, size_t size);
    Outcome take(std::string_view bytes, Record& record, size_t& size);
    Outcome here(Record& record, size_t& size);
    bool search(Record& record, size_t& size);

    std::string _path;
    Descriptor _file;
    uint64_t _position = 0;
    std::unique_ptr<char[]> _bytes;
    size_t _begin = 0, _end = 0; ///< of what was read of the file from the position on
    bool _isAtEnd = false;       ///< of the file, for now
    bool _isTail = false;        ///< what was read ends where the file did
    uint64_t _damages = 0;
};

} // namespace Host
