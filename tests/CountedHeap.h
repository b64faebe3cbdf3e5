// The general heap, counted. To be included by one source of a program: it replaces the global operators.
#pragma once

#include <cstdlib>
#include <new>

namespace heap {

inline long alive = 0;         // allocations not yet freed
inline long taken = 0;         // allocations ever
inline long untilRefusal = -1; // negative: never

/// Refuses one allocation, after that many were granted.
struct Refusal {
    explicit Refusal(long after) { untilRefusal = after; }
    ~Refusal() { untilRefusal = -1; }
};

} // namespace heap

void* operator new(size_t size) {
    if (heap::untilRefusal >= 0 && heap::untilRefusal-- == 0) throw std::bad_alloc();
    void* p = std::malloc(size);
    if (p == nullptr) throw std::bad_alloc();
    ++heap::alive;
    ++heap::taken;
    return p;
}
void operator delete(void* p) noexcept {
    if (p != nullptr) --heap::alive;
    std::free(p);
}
void operator delete(void* p, size_t) noexcept { operator delete(p); }
