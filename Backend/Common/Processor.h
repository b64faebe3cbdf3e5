// Two kernels of the varint, for processors with and without BMI2, selected at run time.
//
// A varint holds groups of seven bits in its bytes. Spreading the bits of a number over the bytes of a word, and
// gathering them again, is one instruction with BMI2 and three steps without. Code that uses either takes
// the kernel as a template argument, so that the two never share a symbol; a caller decides once per message by
// fastDeposit.
//
// A kernel's run() is the one function compiled for its processors; what it calls is inlined into it. The central
// instructions are written as assembly and not as intrinsics, which would not compile where debug builds inline
// nothing, and which would load their masks, numbers of eight bytes each, into registers over and over.
#pragma once

#include <cstdint>

#include "Backend/Common/Inline.h"

namespace Quillon {

/// Masks that the instructions of Bmi2 take from memory. Hidden, so that shared libraries reach them without a detour.
struct [[gnu::visibility("hidden")]] KernelMasks {
    /// The seven bits of each byte, but for the `Dropped` lowest of all, and of the first `N` bytes only.
    template <unsigned Dropped = 0, unsigned N = 8>
    static constexpr uint64_t GROUPS = (0x7F7F7F7F7F7F7F7F >> (64 - 8 * N)) & (~uint64_t{0} << Dropped);
    static constexpr uint64_t MORE = 0x8080808080808080; ///< the bits that announce another byte
};

/// Runs on every x86-64.
struct Baseline {
    /// Calls `body(arguments...)`, which is to be inlined, out of line and compiled for the kernel's processors.
    template <class Body, class... Arguments>
    [[gnu::noinline]] static auto run(Body body, Arguments... arguments) {
        return body(arguments...);
    }
    /// Bits 7k to 7k+6 of `bits` << Dropped become bits 8k to 8k+6; bits 56 and above are ignored. In three steps half
    /// of the bits move up, by 4, 2 and 1: to move some up by n is to add them (1 << n) - 1 times more.
    template <unsigned Dropped = 0>
    QL_FORCE_INLINE static uint64_t spread(uint64_t bits) {
        bits = bits << Dropped & 0x00FFFFFFFFFFFFFF;
        bits += (bits & 0x00FFFFFFF0000000) * 15;
        bits += (bits & 0x0FFFC0000FFFC000) * 3;
        return bits + (bits & 0x3F803F803F803F80);
    }
    /// The reverse, of the first N bytes; bits 8k+7 are ignored.
    template <unsigned Dropped = 0, unsigned N = 8>
    QL_FORCE_INLINE static uint64_t gather(uint64_t bytes) {
        if constexpr (N < 8) bytes &= KernelMasks::GROUPS<0, N>;
        bytes = (bytes & 0x007F007F007F007F) | (bytes & 0x7F007F007F007F00) >> 1;
        bytes = (bytes & 0x00003FFF00003FFF) | (bytes & 0x3FFF00003FFF0000) >> 2;
        return ((bytes & 0x000000000FFFFFFF) | (bytes & 0x0FFFFFFF00000000) >> 4) >> Dropped;
    }
    /// Bits 8k+7 that are not set in `word`, into `stops`; whether there is one.
    QL_FORCE_INLINE static bool stopsOf(uint64_t word, uint64_t& stops) {
        stops = ~word & KernelMasks::MORE;
        return stops != 0;
    }
    /// Bits 8k+7 below bit `index` < 64.
    QL_FORCE_INLINE static uint64_t moreBelow(unsigned index) {
        return KernelMasks::MORE & ((uint64_t{1} << index) - 1);
    }
};

/// Requires BMI2. The same operations.
struct Bmi2 {
    template <class Body, class... Arguments>
    [[gnu::noinline, gnu::target("bmi,bmi2,lzcnt")]] static auto run(Body body, Arguments... arguments) {
        return body(arguments...);
    }
    template <unsigned Dropped = 0>
    QL_FORCE_INLINE static uint64_t spread(uint64_t bits) {
        uint64_t bytes;
        __asm__("pdepq %2, %1, %0" : "=r"(bytes) : "r"(bits), "m"(KernelMasks::GROUPS<Dropped>));
        return bytes;
    }
    template <unsigned Dropped = 0, unsigned N = 8>
    QL_FORCE_INLINE static uint64_t gather(uint64_t bytes) {
        uint64_t bits;
        __asm__("pextq %2, %1, %0" : "=r"(bits) : "r"(bytes), "m"(KernelMasks::GROUPS<Dropped, N>));
        return bits;
    }
    QL_FORCE_INLINE static bool stopsOf(uint64_t word, uint64_t& stops) {
        bool isAny;
        __asm__("andnq %3, %2, %0" : "=r"(stops), "=@ccnz"(isAny) : "r"(word), "m"(KernelMasks::MORE));
        return isAny;
    }
    QL_FORCE_INLINE static uint64_t moreBelow(unsigned index) {
        uint64_t bits;
        __asm__("bzhiq %q2, %1, %0" : "=r"(bits) : "m"(KernelMasks::MORE), "r"(index) : "cc");
        return bits;
    }
};

/// Whether the kernel for BMI2 is the faster one on this processor.
inline bool findFastDeposit() {
    __builtin_cpu_init();
    // The processors excluded have the instructions, but in microcode. BMI1 and the count of leading zeros need no test
    // of their own: every processor that has BMI2 executes them.
    return __builtin_cpu_supports("bmi2") && !__builtin_cpu_is("amdfam17h") && !__builtin_cpu_is("amdfam15h");
}

/// The same, as the protocol's initialize() found it; until then the kernel that runs everywhere serves. Hidden: each
/// shared object has one of its own and reaches it without a detour. initialize() sets that of the library, which runs
/// the operations of all generated types; a host that runs operations over types of its own sets its own.
[[gnu::visibility("hidden")]] constinit inline bool fastDeposit = false;

} // namespace Quillon
