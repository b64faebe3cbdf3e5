// The allocator type of the buffer-backed containers: a reference to the block's BufferAllocator.
#pragma once

#include <cstring>
#include <new>
#include <stdexcept>
#include <type_traits>

#include "Backend/Velmora/BufferAllocator.h"

namespace bufstl {

/// Elements that own storage in the block are built with its allocator and copied by assignment. All others are plain
/// bytes: they are copied bytewise and never given the allocator.
template <class T>
inline constexpr bool isPlain = std::is_trivially_copyable_v<T>;

template <class T>
class alloc_proxy {
  public:
    using buffer_alloc = Velmora::BufferAllocator;
    using value_type = T;
    using size_type = std::size_t;

    template <class U>
    struct rebind {
        using other = alloc_proxy<U>;
    };

    alloc_proxy(buffer_alloc& alloc) : _alloc(alloc) {}
    alloc_proxy(const alloc_proxy&) = default;
    template <class U>
    alloc_proxy(const alloc_proxy<U>& other) : _alloc(other.get_init()) {}

    /// The allocator that new elements are built with.
    buffer_alloc& get_init() const { return _alloc; }

    /// Elements that the whole block could hold, whatever of it is used already.
    size_type max_size() const { return _alloc.max_size() / sizeof(T); }

    /// Storage for `num` elements, unaligned. Throws std::out_of_range when the block is exhausted, and
    /// std::length_error when there is no such number of bytes; the block is then as before.
    T* allocate(size_type num, const void* hint = nullptr) const {
        size_type bytes;
        if (__builtin_mul_overflow(num, sizeof(T), &bytes)) throwLength();
        return reinterpret_cast<T*>(_alloc.allocate(bytes, hint));
    }

    /// As allocate(), into `p`; false where the block has not that much left, which then is as before.
    QL_FORCE_INLINE bool tryAllocate(size_type num, T*& p) const {
        size_type bytes;
        char* start;
        if (__builtin_mul_overflow(num, sizeof(T), &bytes) || !_alloc.tryAllocate(bytes, start)) return false;
        p = reinterpret_cast<T*>(start);
        return true;
    }

    /// Counts the storage of `num` elements as freed.
    void deallocate(T* p, size_type num) const { _alloc.deallocate(reinterpret_cast<char*>(p), num * sizeof(T)); }

    /// Builds a copy of `value` at `p`. A record is first built with this block's allocator and then assigned, so that
    /// its strings and vectors are rebuilt in this block.
    void construct(T* p, const T& value) const {
        if constexpr (isPlain<T>) {
            std::memcpy(static_cast<void*>(p), &value, sizeof(T)); // p need not be aligned
        } else {
            new (static_cast<void*>(p)) T(_alloc);
            try {
                *p = value;
            } catch (...) {
                p->~T();
                throw;
            }
        }
    }

    /// Builds a fresh element at `p`: zero, or with the allocator handed to it.
    void construct(T* p, buffer_alloc& alloc) const {
        if constexpr (isPlain<T>)
            std::memset(static_cast<void*>(p), 0, sizeof(T));
        else
            new (static_cast<void*>(p)) T(alloc);
    }

    void destroy(T* p) const {
        if constexpr (!isPlain<T>) p->~T();
    }

  private:
    QL_COLD_PATH [[noreturn]] static void throwLength() { throw std::length_error("alloc_proxy::allocate"); }

    buffer_alloc& _alloc;
};

} // namespace bufstl
