// Times of packets as text: nanoseconds since 1970, of which the protocol fixes neither calendar nor zone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qlproto {

enum class TimeForm {
    raw, ///< 1709535600.000000042
    utc, ///< 2024-03-04T07:00:00.000000042Z
};

void appendTime(int64_t time, TimeForm form, std::string& text);

inline std::string timeText(int64_t time, TimeForm form = TimeForm::raw) {
    std::string text;
    appendTime(time, form, text);
    return text;
}

/// Reads either form; fractions of fewer digits and without, and a UTC time without Z or time of day, are fine.
std::optional<int64_t> parseTime(std::string_view text);

} // namespace qlproto
