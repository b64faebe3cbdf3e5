// Message blocks of a few sizes, out of memory that is reserved once.
//
//     MsgBlockPool pool({{256, 10000}, {4096, 1000}, {262144, 16}});
//     MsgControl* block = pool.get(300);   // of 4096 bytes; null if there is none left
//
// Taking and giving back are lock-free: a thread that stands still holds up nobody. A pool that has run out says so; it
// never asks the heap and never waits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "Backend/LockFree/Atomic.h"
#include "Host/MsgControl.h"

namespace Velmora {

class MsgBlockPool {
  public:
    struct SizeClass {
        size_t bytes;  ///< of each block, for the message and what it owns; at most 2 GB
        size_t blocks; ///< how many; at most MOST_BLOCKS
    };
    static constexpr size_t MOST_BLOCKS = (size_t{1} << 20) - 1;

    /// Classes in any order. Throws std::invalid_argument for sizes out of range, std::bad_alloc. `site` labels the
    /// blocks in reports and must outlive the pool.
    explicit MsgBlockPool(std::vector<SizeClass> classes, const char* site = "");
    MsgBlockPool(const MsgBlockPool&) = delete;
    MsgBlockPool& operator=(const MsgBlockPool&) = delete;
    /// Asserts that all blocks are back.
    ~MsgBlockPool();

    /// A block of at least that size without a message, with the caller as its writer: of the smallest class that has one
    /// left. Null if none has.
    MsgControl* get(size_t bytes);

    /// Decodes a body into a block that is large enough for it. Null if it is refused, then `result` says why, or if no
    /// block is left, then `result` is without a fault or says blockTooSmall: no class is large enough. Asserts that the
    /// protocol is initialised.
    MsgControl* decode(const Inspect::Protocol& protocol, MsgType_t id, std::string_view body, Inspect::Result& result,
                       const Inspect::Policy& policy = Inspect::whole);

    size_t free() const;     ///< blocks that can be had; a snapshot
    size_t capacity() const; ///< all blocks
    uint64_t exhausted() const { return __atomic_load_n(&_exhausted, __ATOMIC_SEQ_CST); } ///< requests that got none
    const char* site() const { return _site; }

  private:
    friend MsgControl;

    /// The free blocks of one size: a stack whose links lie beside the blocks, so that no link is ever read from a block
    /// that somebody else has taken meanwhile.
    class Shelf {
      public:
        Shelf(SizeClass size, char* memory) : _size(size), _memory(memory), _next(size.blocks) {}

        static size_t stride(SizeClass size); ///< bytes from one header to the next
        size_t blockBytes() const { return _size.bytes; }
        size_t blocks() const { return _size.blocks; }
        char* at(size_t i) const { return _memory + i * stride(_size); }
        bool holds(const void* block) const { return block >= _memory && block < at(_size.blocks); }
        MsgControl* pop();
        void push(MsgControl* block);
        size_t free() const { return __atomic_load_n(&_free, __ATOMIC_SEQ_CST); }

      private:
        // Of the top: the block's number from 1, 0 for none, and above it how often the stack was changed. Between the
        // reading of the top and its exchange that count would have to go round, which takes days of nothing else.
        static constexpr unsigned INDEX_BITS = 20;
        static constexpr Quillon::cas_t INDEX = (Quillon::cas_t{1} << INDEX_BITS) - 1;

        SizeClass _size;
        char* _memory;
        std::vector<Quillon::cas_t> _next; ///< of each block that is free, the number of the one below
        alignas(64) Quillon::cas_t _top = 0;
        Quillon::cas_t _free = 0;
    };
    struct Release {
        void operator()(char* memory) const;
    };

    void put(MsgControl* block);

    std::unique_ptr<char, Release> _memory;
    std::vector<Shelf> _shelves; ///< by size
    const char* _site;
    alignas(64) Quillon::cas_t _exhausted = 0;
};

} // namespace Velmora
