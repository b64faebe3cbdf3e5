// Two kernels of the varint, for processors with and without BMI2, selected at run time.
//
// A varint holds groups of seven bits in its bytes. Spreading the bits of a number over the bytes of a word, and
// gathering them again, is one instruction with BMI2 and three steps of shifting without. Code that uses either takes
// the kernel as a template argument, so that the two never share a symbol; a caller decides once per message by
// hasFastDeposit().
//
// A kernel's run() is the one function compiled for its processors; what it calls is inlined into it. The two central
// instructions are written as assembly and not as intrinsics, which would not compile where debug builds inline
// nothing.
#pragma once

#include <cstdint>

#include "Backend/Common/Inline.h"

namespace Quillon {

/// Runs on every x86-64.
struct Baseline {
    /// Calls `body(arguments...)`, which is to be inlined, out of line and compiled for the kernel's processors.
    template <class Body, class... Arguments>
    [[gnu::noinline]] static auto run(Body body, Arguments... arguments) {
        return body(arguments...);
    }
    /// Bits 7k to 7k+6 of `bits` become bits 8k to 8k+6; bits 56 and above are ignored.
    FORCE_INLINE static uint64_t spread(uint64_t bits) {
        bits = (bits & 0x000000000FFFFFFF) | (bits & 0x00FFFFFFF0000000) << 4;
        bits = (bits & 0x00003FFF00003FFF) | (bits & 0x0FFFC0000FFFC000) << 2;
        return (bits & 0x007F007F007F007F) | (bits & 0x3F803F803F803F80) << 1;
    }
    /// The reverse; bits 8k+7 are ignored.
    FORCE_INLINE static uint64_t gather(uint64_t bytes) {
        bytes = (bytes & 0x007F007F007F007F) | (bytes & 0x7F007F007F007F00) >> 1;
        bytes = (bytes & 0x00003FFF00003FFF) | (bytes & 0x3FFF00003FFF0000) >> 2;
        return (bytes & 0x000000000FFFFFFF) | (bytes & 0x0FFFFFFF00000000) >> 4;
    }
};

/// Requires BMI2.
struct Bmi2 {
    static constexpr uint64_t groups = 0x7F7F7F7F7F7F7F7F;

    template <class Body, class... Arguments>
    [[gnu::noinline, gnu::target("bmi,bmi2,lzcnt")]] static auto run(Body body, Arguments... arguments) {
        return body(arguments...);
    }
    FORCE_INLINE static uint64_t spread(uint64_t bits) {
        uint64_t bytes;
        __asm__("pdepq %2, %1, %0" : "=r"(bytes) : "r"(bits), "r"(groups));
        return bytes;
    }
    FORCE_INLINE static uint64_t gather(uint64_t bytes) {
        uint64_t bits;
        __asm__("pextq %2, %1, %0" : "=r"(bits) : "r"(bytes), "r"(groups));
        return bits;
    }
};

/// Whether the kernel for BMI2 is the faster one here. The processors excluded have the instructions, but in microcode.
inline bool hasFastDeposit() {
    // BMI1 and the count of leading zeros need no test of their own: every processor that has BMI2 executes them.
    return __builtin_cpu_supports("bmi2") && !__builtin_cpu_is("amdfam17h") && !__builtin_cpu_is("amdfam15h");
}

} // namespace Quillon
