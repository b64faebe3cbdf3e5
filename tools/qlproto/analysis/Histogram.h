// The distribution of values that are not negative: octaves of 1024 equal buckets.
//
// Values below 2048 are exact; any other falls into a bucket narrower than 1/1024 of it and is told as the bucket's
// middle, so no percentile is off by more than 0.05 %. The whole range of int64_t is covered. An octave takes its 8 KB
// when the first value falls into it: memory is bounded by 440 KB, and is a few pages for what is usual.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>

namespace qlproto {

class Histogram {
  public:
    // REQUIRES: value >= 0
    void add(int64_t value) {
        const std::size_t bucket = bucketOf(static_cast<uint64_t>(value));
        std::unique_ptr<Octave>& octave = _octaves[bucket / BUCKETS];
        if (!octave) octave = std::make_unique<Octave>();
        ++(*octave)[bucket % BUCKETS];
        ++_count;
        _min = std::min(_min, value);
        _max = std::max(_max, value);
    }

    void merge(const Histogram& other) {
        for (std::size_t i = 0; i < _octaves.size(); ++i) {
            if (!other._octaves[i]) continue;
            if (!_octaves[i]) _octaves[i] = std::make_unique<Octave>();
            for (std::size_t j = 0; j < BUCKETS; ++j) (*_octaves[i])[j] += (*other._octaves[i])[j];
        }
        _count += other._count;
        _min = std::min(_min, other._min);
        _max = std::max(_max, other._max);
    }

    uint64_t count() const { return _count; }

    // REQUIRES: count() > 0
    int64_t min() const { return _min; } ///< exact
    int64_t max() const { return _max; } ///< exact

    /// The smallest value that at least `percent` of all do not exceed; percent in (0, 100].
    int64_t percentile(double percent) const {
        const auto wanted = static_cast<uint64_t>(percent / 100 * static_cast<double>(_count) + 0.999999);
        const uint64_t rank = std::clamp<uint64_t>(wanted, 1, _count);
        if (rank == _count) return _max;
        uint64_t seen = 0;
        int64_t found = _max;
        forEach([&](int64_t low, int64_t high, uint64_t count) {
            if (seen < rank && seen + count >= rank) found = low + (high - low) / 2;
            seen += count;
        });
        return std::clamp(found, _min, _max);
    }

    /// Calls `visit(lowest value, highest value, count)` for each bucket that is not empty, from low to high.
    template <class Visit>
    void forEach(Visit visit) const {
        for (std::size_t i = 0; i < _octaves.size(); ++i) {
            if (!_octaves[i]) continue;
            for (std::size_t j = 0; j < BUCKETS; ++j) {
                const uint64_t count = (*_octaves[i])[j];
                if (count == 0) continue;
                // Octaves 0 and 1 have buckets of one value; from there on they get twice as wide with each.
                const std::size_t shift = i == 0 ? 0 : i - 1;
                const uint64_t low = static_cast<uint64_t>(i == 0 ? j : BUCKETS + j) << shift;
                visit(static_cast<int64_t>(low), static_cast<int64_t>(low + (uint64_t{1} << shift) - 1), count);
            }
        }
    }

  private:
    static constexpr std::size_t BUCKETS = 1024;
    static constexpr std::size_t BITS = 11; // values of more bits share buckets
    using Octave = std::array<uint64_t, BUCKETS>;

    static std::size_t bucketOf(uint64_t value) {
        const auto bits = static_cast<std::size_t>(std::bit_width(value));
        const std::size_t shift = bits > BITS ? bits - BITS : 0;
        return shift * BUCKETS + (value >> shift);
    }

    std::array<std::unique_ptr<Octave>, 63 - BITS + 2> _octaves;
    uint64_t _count = 0;
    int64_t _min = std::numeric_limits<int64_t>::max();
    int64_t _max = 0;
};

} // namespace qlproto
