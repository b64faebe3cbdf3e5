// Messages for all processes of one machine that want them: a ring in a file of shared memory, without a server.
//
// Any number of processes publish, any number read at their own pace. Publishers never wait for readers: who falls behind
// by more than the ring holds goes on with messages that are still there, and is told how many were lost. A process may
// die at any moment: what it had not finished was never there, and nobody else notices but by that.
//
//     MemRing ring = MemRing::open("/dev/shm/prices", 64 << 20);
//     ring.publish({id, body, now});                                        // in one process
//     RingReader reader(ring);                                              // in others
//     for (RingRecord record; reader.next(record) || reader.wait(1000);) ...
//
// What is read is a copy of bytes that other processes wrote: verify it before it is decoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Backend/Velmora/MsgDescriptor.h"
#include "Inspect/Checked.h"

namespace Host {

/// The file cannot be made or opened, or is none of this layout.
class RingError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct RingRecord {
    Velmora::MsgType_t id = 0;
    std::string_view body;
    int64_t time = 0;      ///< as the publisher gave it: nanoseconds since 1970
    uint64_t sequence = 0; ///< of the ring, from 1; set by publish()
    uint64_t lost = 0;     ///< messages between this one and the one read before that came and went unread
};

namespace detail {
struct RingHeader;
}

class MemRing {
  public:
    static constexpr size_t LEAST_SIZE = 1 << 16;

    /// Opens the ring in that file, best one in /dev/shm, or makes it with `size` bytes for messages (rounded up to a
    /// power of two; of a ring that is there it is what it is). Throws RingError.
    static MemRing open(const std::string& path, size_t size = 64 << 20);

    MemRing(MemRing&&) = default;
    MemRing& operator=(MemRing&&) = default;

    /// Publishes a message; returns its sequence. From any thread. Throws std::length_error if the body is longer than
    /// longestBody().
    uint64_t publish(const RingRecord& record);
    /// Encodes the message into its place in the ring. Nothing is published if it is refused; `sequence` is 0 then.
    Inspect::Encoded publish(const Inspect::Protocol& protocol, Velmora::MsgType_t id, const void* message,
                             int64_t time, uint64_t& sequence);

    size_t size() const;
    size_t longestBody() const; ///< that the ring takes: an eighth of it

  private:
    friend class RingReader;

    struct Unmap {
        size_t size;
        void operator()(detail::RingHeader* header) const;
    };
    class Turn;

    MemRing(int file, const std::string& path);

    std::unique_ptr<detail::RingHeader, Unmap> _header;
};

/// One reader's place in a ring, which must outlive it.
class RingReader {
  public:
    enum class From { now, oldest };

    explicit RingReader(const MemRing& ring, From from = From::now);

    /// The next message, copied out of the ring; false if there is none yet. Its body is valid until the next call.
    /// Throws RingError if the ring holds what no publisher writes.
    bool next(RingRecord& record);
    /// Waits until there may be one, for so many milliseconds at most. False if there is none.
    bool wait(int milliseconds) const;

    uint64_t lost() const { return _lost; } ///< all messages that came and went unread

  private:
    void catchUp();
    bool isOverwritten(uint64_t position) const;

    const detail::RingHeader* _header;
    uint64_t _position = 0;
    uint64_t _next = 0; ///< sequence that is expected; 0: any
    uint64_t _lost = 0;
    std::string _copy;
};

} // namespace Host
