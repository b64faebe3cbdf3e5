// Atomic operations on plain counters: single words (cas_t) and double words (cas2_t).
//
// Every operation is one indivisible step with sequentially consistent order. Operations that compute return the new
// value. A double word is one 128-bit unsigned number, low word first; arithmetic wraps.
#pragma once

#include <cstdint>

namespace Quillon {

using cas_t = std::uint64_t;

/// The alignment is what the processor demands of a double word; on a misaligned one it faults.
struct alignas(16) cas2_t {
    cas_t low;
    cas_t high;
};

class Atomic {
  public:
    /// No read or write moves across, in either direction.
    static void memory_barrier() { __sync_synchronize(); }
    /// No later read moves before an earlier one. The processor keeps reads in order; only the compiler must be held.
    static void read_memory_barrier() { __asm__ __volatile__("" ::: "memory"); }

    static cas_t add(cas_t* target, cas_t value) { return __atomic_add_fetch(target, value, __ATOMIC_SEQ_CST); }
    static cas_t increment(cas_t* target) { return add(target, 1); }
    static cas_t decrement(cas_t* target) { return __atomic_sub_fetch(target, 1, __ATOMIC_SEQ_CST); }

    /// Replaces the stored value if `value` is smaller.
    static void setmin(cas_t* target, cas_t value) {
        cas_t seen = __atomic_load_n(target, __ATOMIC_SEQ_CST);
        while (value < seen && !exchange(target, seen, value)) {
        }
    }

    /// Replaces the stored value if `value` is larger.
    static void setmax(cas_t* target, cas_t value) {
        cas_t seen = __atomic_load_n(target, __ATOMIC_SEQ_CST);
        while (value > seen && !exchange(target, seen, value)) {
        }
    }

    /// Stores `desired` if the stored value is `expected`; returns whether it did.
    static bool cas(volatile cas_t* target, cas_t expected, cas_t desired) {
        return exchange(target, expected, desired);
    }

    static cas2_t add(cas2_t* target, cas2_t value) {
        // The two halves are read one after the other and may not belong together; the exchange then fails and brings
        // both.
        cas2_t seen = {__atomic_load_n(&target->low, __ATOMIC_RELAXED),
                       __atomic_load_n(&target->high, __ATOMIC_RELAXED)};
        cas2_t sum;
        do {
            sum.low = seen.low + value.low;
            sum.high = seen.high + value.high + (sum.low < seen.low ? 1 : 0); // the carry
        } while (!exchange(target, seen, sum));
        return sum;
    }

    static cas2_t increment(cas2_t* target) { return add(target, {1, 0}); }
    static cas2_t decrement(cas2_t* target) { return add(target, {~cas_t{0}, ~cas_t{0}}); } // minus one

    /// Stores `desired` if both words are those of `expected`; returns whether it did.
    static bool cas2(volatile cas2_t* target, cas2_t expected, cas2_t desired) {
        return exchange(target, expected, desired);
    }

  private:
    // Compare and swap; on failure `expected` becomes the value found.

    static bool exchange(volatile cas_t* target, cas_t& expected, cas_t desired) {
        return __atomic_compare_exchange_n(target, &expected, desired, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    }

    // By hand, because the compiler's builtin needs -mcx16 in every host or calls a library.
    static bool exchange(volatile cas2_t* target, cas2_t& expected, cas2_t desired) {
        bool swapped;
        __asm__ __volatile__("lock cmpxchg16b %1"
                             : "=@ccz"(swapped), "+m"(*target), "+a"(expected.low), "+d"(expected.high)
                             : "b"(desired.low), "c"(desired.high)
                             : "memory");
        return swapped;
    }
};

} // namespace Quillon
