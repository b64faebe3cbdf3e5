// Measuring with cold caches: before each operation all that the program has mapped, code, data and stack, is flushed out of
// every level of the caches.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <emmintrin.h>
#include <string>
#include <x86intrin.h>

#include "bench/Measure.h"

namespace bench {

/// What the program has mapped when it is made; none of it may be gone when it is flushed.
class Caches {
  public:
    Caches();
    void flush() const;

  private:
    struct Mapping {
        uintptr_t begin, end;
    };
    std::vector<Mapping> _mappings;
};

/// Of the processor's time stamps.
double secondsPerTick();

/// Measures op(i) as measure() does, but cold. A time is the median of some operations, each of which takes what reading the
/// clock and choosing a message takes, too: the row "harness" tells how much that is.
template <class Op>
void measureCold(const std::string& shape, const std::string& operation, const std::string& who, Op op) {
    const std::string name = shape + "/cold " + operation + "/" + who;
    const auto run = [op = std::move(op), i = size_t{0}](benchmark::State& state) mutable {
        std::array<uint64_t, 7> ticks;
        const Caches caches;
        for ([[maybe_unused]] auto _ : state) {
            for (uint64_t& taken : ticks) {
                caches.flush();
                const uint64_t start = __rdtsc();
                _mm_lfence();
                op(i);
                benchmark::ClobberMemory();
                _mm_mfence(); // stores, too
                _mm_lfence();
                taken = __rdtsc() - start;
                i = (i + 5) % distinct;
            }
            std::nth_element(ticks.begin(), ticks.begin() + ticks.size() / 2, ticks.end());
            state.SetIterationTime(static_cast<double>(ticks[ticks.size() / 2]) * secondsPerTick());
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime()->Iterations(1);
}

/// Measures it warm and cold.
template <class Op>
void measureAlsoCold(const std::string& shape, const std::string& operation, const std::string& who, Op op,
                     double bytes = 0) {
    measure(shape, operation, who, op, bytes);
    measureCold(shape, operation, who, std::move(op));
}

} // namespace bench
