// A message block for tests, with its allocator.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Backend/Velmora/BufferAllocator.h"

/// A block of exactly `size` bytes that starts `offset` bytes after an aligned address, so that tests choose how
/// misaligned it is. It ends where its heap storage ends: an overrun is caught by the address sanitizer.
class Block {
  public:
    explicit Block(int size, int offset = 0)
        : _storage(new char[static_cast<size_t>(size + offset)]),
          alloc(_storage.get() + offset, size, "test", "TestMessage"),
          _size(size) {}

    char* begin() { return alloc.buffer(); }
    char* end() { return begin() + _size; }
    bool contains(const void* p) { return begin() <= p && p < end(); }

  private:
    std::unique_ptr<char[]> _storage;

  public:
    Velmora::BufferAllocator alloc;

  private:
    int _size;
};

/// Constructs a T at the block's first bytes, as a host does, and destroys it in the end. T need not be aligned there.
template <class T>
class InBlock {
  public:
    explicit InBlock(int size = 1 << 16, int offset = 0) : block(size, offset) {
        value = new (block.alloc.allocate(sizeof(T))) T(block.alloc);
    }
    InBlock(const InBlock&) = delete;
    ~InBlock() { value->~T(); }

    T& operator*() { return *value; }
    T* operator->() { return value; }

    Block block;

  private:
    T* value;
};

/// The exception's text, or "" when nothing of type E was thrown.
template <class E, class Action>
std::string thrownText(Action&& action) {
    try {
        action();
    } catch (const E& e) {
        return e.what();
    }
    return "";
}
