// The bump allocator of one message block.
//
// Everything a message owns lies in one block of memory that the caller supplies. Requests are laid end to end,
// byte-exact, without alignment or rounding; nothing is ever handed back. What containers give up is only counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>

#include "Backend/Common/Inline.h"

namespace Velmora {

class BufferAllocator {
  public:
    using size_type = std::size_t;

    /// An allocator over no block: every request but one of 0 bytes fails.
    BufferAllocator() = default;

    /// `buffer`: the block, `size` bytes long, owned by the caller. `site`: label of the place that sets the block up;
    /// `name`: name of the message type it holds. Both labels must outlive the allocator; null stands for an empty one.
    BufferAllocator(char* buffer, int size, const char* site, const char* name)
        : _begin(buffer), _end(buffer), _end_of_buffer(buffer + size), _site(site), _name(name) {}

    BufferAllocator(const BufferAllocator&) = default;
    BufferAllocator& operator=(const BufferAllocator&) = default;

    /// The block's first byte.
    char* buffer() { return _begin; }
    const char* buffer() const { return _begin; }

    /// The next free byte. Beyond the block after a request that failed.
    char* end() const { return _end; }

    size_type size() const { return address(_end_of_buffer) - address(_begin); } ///< bytes of the whole block
    size_type max_size() const { return size(); } ///< bytes of the largest request that a fresh block can grant
    size_type used_size() const {
        return address(_end) - address(_begin);
    }                               ///< bytes handed out, a failed request included
    size_type unused_size() const { ///< bytes left
        return _end <= _end_of_buffer ? address(_end_of_buffer) - address(_end) : 0;
    }

    /// Running total of the bytes that containers declared freed; they are not reused.
    int32_t deallocated_size() const { return _nbytes_deallocated; }

    /// `num` fresh bytes. Throws std::out_of_range when the block has fewer left; the allocator then stays exhausted
    /// and every later request fails too, even one of 0 bytes.
    char* allocate(size_type num, const void* /*hint*/ = nullptr) {
        char* const old = _end;
        // Deliberate: the position advances before the test and stays advanced, so that a block that failed once can
        // never hand out bytes again. Computed as an integer, because a pointer must not leave its block; a sum that
        // wraps around stands for "beyond every block".
        uintptr_t next;
        if (__builtin_expect(__builtin_add_overflow(address(old), num, &next), 0)) next = UINTPTR_MAX;
        _end = reinterpret_cast<char*>(next);
        if (__builtin_expect(next > address(_end_of_buffer), 0)) throwExhausted();
        return old;
    }

    /// As allocate(), into `p`; where the block has fewer left: false, and the allocator is as before.
    QL_FORCE_INLINE bool tryAllocate(size_type num, char*& p) {
        p = _end;
        const uintptr_t next = address(p) + num;
        if (__builtin_expect(next < num || next > address(_end_of_buffer), 0)) return false;
        _end = reinterpret_cast<char*>(next);
        return true;
    }

    /// Counts `num` bytes as freed. The count wraps at 32 bits.
    void deallocate(char* /*p*/, size_type num) {
        _nbytes_deallocated =
            static_cast<int32_t>(static_cast<uint32_t>(_nbytes_deallocated) + static_cast<uint32_t>(num));
    }

    /// Writes one line for people: labels, sizes and addresses of the block.
    void dump(std::ostream& os) const;

  private:
    static uintptr_t address(const char* p) { return reinterpret_cast<uintptr_t>(p); }
    QL_COLD_PATH [[noreturn]] void throwExhausted() const;

    char* _begin = nullptr;
    char* _end = nullptr; // next free byte
    char* _end_of_buffer = nullptr;
    int32_t _nbytes_deallocated = 0;
    const char* _site = "";
    const char* _name = "";
};

} // namespace Velmora
