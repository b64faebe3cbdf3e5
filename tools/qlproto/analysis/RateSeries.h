// How many messages, and how many bytes, in each stretch of time.
//
// All stretches are equally long, a power of two in nanoseconds, and begin at multiples of their length; so the series
// of any two batches can be added up. When there would be more than MAX_STRETCHES, pairs become one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace qlproto {

class RateSeries {
  public:
    struct Amount {
        double messages = 0;
        double bytes = 0;
    };

    /// `time` in nanoseconds; times may come in any order.
    void add(int64_t time, uint64_t bytes);
    void merge(const RateSeries& other);

    bool isEmpty() const { return _stretches.empty(); }

    // REQUIRES: not empty
    int64_t first() const { return _first; } ///< time of the earliest message
    int64_t last() const { return _last; }   ///< time of the latest

    /// Seconds from the first message to the last; 0 if there are not two.
    double seconds() const { return isEmpty() ? 0 : static_cast<double>(_last - _first) / 1e9; }

    /// The time in which the messages lie, without so many parts of 1,000 of them at either end, if that makes it much
    /// shorter: strays would squeeze all others into a corner.
    struct Span {
        int64_t first, last;
        uint64_t outside; ///< messages
    };
    Span withoutStrays(uint64_t perMille) const;

    /// Messages and bytes per second in `columns` equal parts of the time from `first` to `last`. What stretches across
    /// an edge is shared out in proportion; what is outside counts for nothing.
    std::vector<Amount> rates(std::size_t columns, int64_t first, int64_t last) const;

  private:
    static constexpr std::size_t MAX_STRETCHES = 2048;

    void insert(int64_t time, const Amount& amount);
    void widen();

    int _shift = 10; ///< a stretch is 2^_shift ns
    int64_t _begin = 0;
    std::vector<Amount> _stretches; ///< the first begins at _begin << _shift
    int64_t _first = std::numeric_limits<int64_t>::max();
    int64_t _last = std::numeric_limits<int64_t>::min();
};

} // namespace qlproto
