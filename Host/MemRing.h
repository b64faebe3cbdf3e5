// Messages for all processes of one machine that want them: a ring in a file of shared memory, without a server.
//
// Any number of processes publish, any number read at their own pace. Publishers never wait for readers: who falls behind
// by more than the ring holds goes on with messages that are still there, and is told how many were lost. A process may
// die at any moment: what it had not finished was never there, and nobody else notices but by that.
//
//     MemRing ring = MemRing::open("/dev/shm/prices", 64 << 20);
//     ring.publish({id, body, now});                                        // in one process
//     RingReader reader(ring);                                              // in others
//     for (Record record; reader.next(record) || reader.wait(1000);) ...
//
// What is read is a copy of bytes that other processes wrote: verify it before it is decoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Host/Record.h"
#include "Host/RingFile.h"
#include "Inspect/Checked.h"

namespace Host {

/// Who keeps in a journal what is published on a ring.
struct RingKeeper {
    std::string folder; ///< of the journal; empty: there is none
    std::string
        refusal; ///< why it cannot be written to; empty if it can. Nothing is published then, while the process lives
};

class MemRing {
  public:
    /// Opens the ring in that file, best one in /dev/shm, or makes it with `size` bytes for messages (rounded up to a
    /// power of two; of a ring that is there it is what it is). Throws RingError.
    static MemRing open(const std::string& path, size_t size = 64 << 20) {
        return MemRing(detail::RingFile::open(path, size));
    }

    /// Publishes a message; returns its sequence. From any thread. Throws std::length_error if the body is longer than
    /// longestBody(), and RingError if the journal that is kept of the ring cannot be written to.
    uint64_t publish(const Record& record);
    /// Encodes the message and publishes it. Nothing is published if it is refused; `sequence` is 0 then.
    Inspect::Encoded publish(const Inspect::Protocol& protocol, Velmora::MsgType_t id, const void* message,
                             int64_t time, uint64_t& sequence);

    /// Sequences go on after this one. Throws RingError if there are others already.
    void startAfter(uint64_t sequence);
    /// This process keeps a journal of the ring. The texts are cut to some hundred bytes.
    void setKeeper(const RingKeeper& keeper);
    RingKeeper keeper() const;

    uint64_t last() const; ///< sequence of the last message; 0 if there was none
    size_t size() const;
    size_t longestBody() const; ///< that the ring takes: an eighth of it, at most what captures do

  private:
    friend class RingReader;
    friend class RingPlace;

    explicit MemRing(detail::RingFile file) : _file(std::move(file)) {}
    detail::RingHeader& header() const { return _file.header(); }

    detail::RingFile _file;
};

/// One reader's place in a ring, which must outlive it.
class RingReader final : public Source {
  public:
    explicit RingReader(const MemRing& ring, From from = From::live());

    /// Copies the message out of the ring. Throws RingError if the ring holds what no publisher writes.
    bool next(Record& record) override;
    bool wait(int milliseconds) override;

    uint64_t lost() const { return _lost; } ///< all messages that came and went unread

  private:
    void catchUp();
    bool isOverwritten(uint64_t position) const;

    const detail::RingHeader* _header;
    uint64_t _position = 0;
    uint64_t _committed =
        0; ///< as it was last looked at, which is when all before is read: publishers write it all the time
    uint64_t _next = 0;         ///< sequence that is expected; 0: any
    bool _isAtStart = false;    ///< of the ring: the first message is expected, whatever its sequence
    int64_t _since = INT64_MIN; ///< messages before that time are stepped over
    uint64_t _lost = 0;
    std::string _copy;
};

} // namespace Host
