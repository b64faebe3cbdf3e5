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

/// While one lives, it writes down what is taken and freed, in this order.
struct Record {
    Record() { current = this; }
    ~Record() { current = nullptr; }

    void* taken[1024];
    void* freed[1024];
    size_t takenCount = 0, freedCount = 0;
    inline static Record* current = nullptr;
};

} // namespace heap

void* operator new(size_t size) {
    if (heap::untilRefusal >= 0 && heap::untilRefusal-- == 0) throw std::bad_alloc();
    void* p = std::malloc(size);
    if (p == nullptr) throw std::bad_alloc();
    ++heap::alive;
    ++heap::taken;
    if (heap::Record* const record = heap::Record::current) record->taken[record->takenCount++ % 1024] = p;
    return p;
}
// A sanitizer has a form of its own, which would not fit what frees here.
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void operator delete(void* p) noexcept {
    if (p != nullptr) --heap::alive;
    if (heap::Record* const record = heap::Record::current) record->freed[record->freedCount++ % 1024] = p;
    std::free(p);
}
void operator delete(void* p, size_t) noexcept { operator delete(p); }
