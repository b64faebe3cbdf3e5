// The header of a message block from a pool: who owns the block, what message it holds, and who uses it.
//
// It counts in the statistics of the message's descriptor what becomes of the block: messages constructed and destroyed
// (and with each, the block allocated and released), decoded, encoded, copied, and the most bytes that one had.
//
// A block has one writer, or any number of readers, or nobody. The last one out gives it back to its pool. All of that is
// one word of the header, changed in one step; nothing waits. The handles in SharedMessage.h make the calls in pairs.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>

#include "Backend/LockFree/Atomic.h"
#include "Backend/Velmora/BufferAllocator.h"
#include "Backend/Velmora/MsgDescriptor.h"
#include "Inspect/Checked.h"

namespace Velmora {

class MsgBlockPool;

class MsgControl {
  public:
    /// From the header to its block, at whose start the message is built.
    static const size_t OFFSET;
    static constexpr int16_t MOST_READERS = INT16_MAX;

    /// The header of the block that begins with this message.
    static MsgControl* of(void* message);

    /// Builds an empty message in the block, in the place of the one it holds. REQUIRES: the caller is its writer.
    /// Throws std::out_of_range if the block is too small.
    void* initialize(MsgDescriptor& descriptor);
    /// Destroys the message, if there is one; its memory is free again. REQUIRES: as above.
    void finalize();

    /// The message; null if there is none.
    void* get() const { return _descriptor != nullptr ? _buffer : nullptr; }
    MsgDescriptor* descriptor() const { return _descriptor; } ///< of the message; null if there is none
    MsgType_t id() const { return users()._id; }              ///< of the message; 0 if there is none
    const BufferAllocator& allocator() const { return _alloc; }

    /// Builds the message that the bytes hold, in the place of the one there is. If it is refused, also for want of room
    /// (Fault::blockTooSmall), the block is without a message. REQUIRES: the caller is the writer.
    Inspect::Result read(const Inspect::Protocol& protocol, MsgType_t id, std::string_view body,
                         const Inspect::Policy& policy = Inspect::whole);
    /// Assigns the message of another block to the one in this, which must be of the same type. Throws
    /// std::out_of_range if the block is too small. REQUIRES: the caller is the writer here, and a reader or the writer
    /// there.
    void copy(const MsgControl& from);
    /// Encodes the message into [begin, end), as Inspect::encode_checked does. REQUIRES: there is one, and the caller is
    /// its writer or one of its readers.
    Inspect::Encoded write(const Inspect::Protocol& protocol, char* begin, char* end) const;

    // Each tells whether it was granted. A writer has the block for itself.
    bool acquireReader();
    bool acquireWriter();
    // The last one out destroys the message and gives the block back. REQUIRES: it was granted.
    void releaseReader();
    void releaseWriter();
    /// The writer becomes a reader, so that others can.
    void share();

    int16_t readers() const { return users()._readers; }
    int16_t writers() const { return users()._writers; }

    /// Writes one line for people about the block.
    void dumpAlloc(std::ostream& os) const { _alloc.dump(os); }

  private:
    friend MsgBlockPool;

    /// Together the last word of the header.
    struct Users {
        MsgType_t _id;    ///< of the message
        int16_t _index;   ///< of the message in its protocol
        int16_t _readers; ///< that hold the block
        int16_t _writers; ///< 0 or 1
    };

    MsgControl(MsgBlockPool& pool, char* block, size_t size);

    Users users() const { return std::bit_cast<Users>(__atomic_load_n(&_users, __ATOMIC_SEQ_CST)); }
    /// Replaces the users by what `change` makes of them; false, and nothing is changed, if it makes nothing of them.
    template <class Change>
    bool changeUsers(Change change);
    void hold(MsgDescriptor& descriptor);
    void describe(MsgType_t id, int16_t index);
    void count(Quillon::cas_t MsgStats::*counter) const;

    BufferAllocator _alloc;
    MsgProtocol* _protocol = nullptr;
    MsgDescriptor* _descriptor = nullptr;
    char* _buffer;
    MsgBlockPool* _pool;
    Quillon::cas_t _users; ///< a Users
};

inline constexpr size_t MsgControl::OFFSET = sizeof(MsgControl);

} // namespace Velmora
