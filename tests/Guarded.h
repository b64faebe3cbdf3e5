// Bytes that end where a page ends, followed by one that must not be touched, or begin where one begins that such a
// page precedes: any read beyond them faults, with or without a sanitizer.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string_view>

class Guarded {
  public:
    /// Room for bodies of up to `capacity` bytes.
    explicit Guarded(size_t capacity = 1 << 18) {
        const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        _size = (capacity + page - 1) / page * page;
        _mapped = _size + 2 * page;
        void* const mapping = mmap(nullptr, _mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (mapping == MAP_FAILED) std::abort();
        _mapping = static_cast<char*>(mapping);
        _begin = _mapping + page;
        if (mprotect(_mapping, page, PROT_NONE) != 0 || mprotect(end(), page, PROT_NONE) != 0) std::abort();
    }
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;
    ~Guarded() { munmap(_mapping, _mapped); }

    /// Moves a copy of `bytes` to the end of the pages and returns it. The copy before is gone.
    std::string_view hold(std::string_view bytes) { return place(bytes, end() - bytes.size()); }
    /// The same at their begin.
    std::string_view holdAtBegin(std::string_view bytes) { return place(bytes, _begin); }

    char* end() { return _begin + _size; }

  private:
    std::string_view place(std::string_view bytes, char* at) {
        if (bytes.size() > _size) std::abort();
        if (!bytes.empty()) std::memmove(at, bytes.data(), bytes.size());
        return {at, bytes.size()};
    }

    char* _mapping;
    size_t _mapped;
    char* _begin;
    size_t _size;
};
