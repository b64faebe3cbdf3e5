// Durations for people.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

#include <fmt/format.h>

namespace qlproto {

/// Four digits and the unit they are readable in: "640ns", "12.35µs", "-1.500ms", "72.00s"; without a blank, so that it
/// stays one word.
inline std::string readableDuration(int64_t nanoseconds) {
    const double size = std::abs(static_cast<double>(nanoseconds));
    if (size < 1e3) return fmt::format("{}ns", nanoseconds);
    const auto [unit, name] = size < 999.95e3   ? std::pair(1e3, "µs")
                              : size < 999.95e6 ? std::pair(1e6, "ms")
                                                : std::pair(1e9, "s");
    const double value = static_cast<double>(nanoseconds) / unit;
    const int decimals = std::abs(value) < 9.9995 ? 3 : std::abs(value) < 99.995 ? 2 : std::abs(value) < 999.95 ? 1 : 0;
    return fmt::format("{:.{}f}{}", value, decimals, name);
}

} // namespace qlproto
