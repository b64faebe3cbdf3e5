#include "bench/Cold.h"

#include <chrono>
#include <fstream>
#include <sstream>

namespace bench {

Caches::Caches() {
    std::ifstream file("/proc/self/maps");
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        Mapping mapping;
        char dash;
        std::string rights;
        fields >> std::hex >> mapping.begin >> dash >> mapping.end >> rights;
        const bool isKernels = line.find("[v") != line.npos; // vdso and the like
        if (rights[0] == 'r' && !isKernels) _mappings.push_back(mapping);
    }
}

void Caches::flush() const {
    constexpr uintptr_t line = 64;
    for (const Mapping& mapping : _mappings)
        for (uintptr_t at = mapping.begin; at != mapping.end; at += line)
            // CLFLUSHOPT, spelt so that processors without it take it for CLFLUSH.
            __asm__ volatile(".byte 0x66; clflush %0" : "+m"(*reinterpret_cast<volatile char*>(at)));
    _mm_mfence();
    _mm_lfence();
}

double secondsPerTick() {
    static const double seconds = [] {
        using Clock = std::chrono::steady_clock;
        const auto begin = Clock::now();
        const uint64_t first = __rdtsc();
        auto end = begin;
        while (end - begin < std::chrono::milliseconds(50)) end = Clock::now();
        return std::chrono::duration<double>(end - begin).count() / static_cast<double>(__rdtsc() - first);
    }();
    return seconds;
}

} // namespace bench
