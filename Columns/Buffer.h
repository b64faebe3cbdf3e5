// Bytes of a column while it grows. Unlike those of a vector they are not zeroed first, and many grow without being copied.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "Backend/Common/Inline.h"

namespace Columns {

class Buffer {
  public:
    Buffer() = default;
    Buffer(Buffer&& other) noexcept { swap(other); }
    Buffer& operator=(Buffer&& other) noexcept {
        Buffer(std::move(other)).swap(*this);
        return *this;
    }
    ~Buffer() { std::free(_begin); }

    uint8_t* data() { return _begin; } ///< null as long as nothing was appended
    const uint8_t* data() const { return _begin; }
    size_t size() const { return static_cast<size_t>(_end - _begin); }

    /// Appends the lowest bytes of a number, eight at most.
    QL_FORCE_INLINE void append(uint64_t value, size_t width) {
        if (static_cast<size_t>(_limit - _end) < sizeof value) grow(sizeof value);
        std::memcpy(_end, &value, sizeof value); // those after its width are overwritten by the next
        _end += width;
    }
    void append(std::string_view bytes) {
        if (bytes.empty()) return;
        if (static_cast<size_t>(_limit - _end) < bytes.size()) grow(bytes.size());
        std::memcpy(_end, bytes.data(), bytes.size());
        _end += bytes.size();
    }
    void appendZeros(size_t count) {
        if (count == 0) return;
        if (static_cast<size_t>(_limit - _end) < count) grow(count);
        std::memset(_end, 0, count);
        _end += count;
    }

    /// The last `T` of those that were appended. REQUIRES: there is one.
    template <class T>
    T last() const {
        T value;
        std::memcpy(&value, _end - sizeof value, sizeof value);
        return value;
    }

  private:
    void swap(Buffer& other) noexcept {
        std::swap(_begin, other._begin);
        std::swap(_end, other._end);
        std::swap(_limit, other._limit);
    }

    [[gnu::noinline]] void grow(size_t more) {
        const size_t used = size(), room = 2 * used + more + 64;
        void* const bytes = std::realloc(_begin, room);
        if (bytes == nullptr) throw std::bad_alloc();
        _begin = static_cast<uint8_t*>(bytes);
        _end = _begin + used;
        _limit = _begin + room;
    }

    uint8_t *_begin = nullptr, *_end = nullptr, *_limit = nullptr;
};

} // namespace Columns
