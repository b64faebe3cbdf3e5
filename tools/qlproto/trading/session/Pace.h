// How fast a session goes.
//
// Only the intervals between one event and the next are stretched. Answers take as long as ever: a busy market does not
// make the wire shorter.
#pragma once

#include <cstdint>

namespace qlproto::session {

/// Intervals in millionths of their usual length.
struct Pace {
    static constexpr int64_t USUAL = 1'000'000;

    int64_t marketData = USUAL;
    int64_t others = USUAL;
};

inline constexpr Pace QUIET{20 * Pace::USUAL, 10 * Pace::USUAL};
inline constexpr Pace BUSY{Pace::USUAL / 10, Pace::USUAL / 4};

/// The same mix of messages, about `rate` of them per second. The protocol must be initialised.
Pace withRate(const Pace& pace, uint64_t rate);

} // namespace qlproto::session
