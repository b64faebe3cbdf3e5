// Times of packets as text: nanoseconds since 1970, of which the protocol fixes neither calendar nor zone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qlproto {

enum class TimeForm {
    raw,  ///< 1709535600.000000042
    utc,  ///< 2024-03-04T07:00:00.000000042Z
    zone, ///< 2024-03-04T08:00:00.000000042+01:00, in the zone of the process; see takeZone()
};

/// Makes that zone of the system's, as in "Europe/Zurich", the one of the process. False if there is none of that name.
bool takeZone(const std::string& name);

void appendTime(int64_t time, TimeForm form, std::string& text);

inline std::string timeText(int64_t time, TimeForm form = TimeForm::raw) {
    std::string text;
    appendTime(time, form, text);
    return text;
}

/// Reads a time in any form. Fractions can have fewer digits or be missing, and so can seconds, or the time of day. Dates
/// that name no zone are of the zone of the process if that is `form`, else UTC.
std::optional<int64_t> parseTime(std::string_view text, TimeForm form = TimeForm::utc);

/// Reads a time of day, "12:00" or "12:00:00.5": nanoseconds since midnight.
std::optional<int64_t> parseClock(std::string_view text);

/// The moment with that time of day on the day of `time`, `days` later.
int64_t atClock(int64_t time, int64_t clock, TimeForm form, int days = 0);

} // namespace qlproto
