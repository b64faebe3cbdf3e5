#include "tools/qlproto/terminal/TimeText.h"

#include <charconv>
#include <chrono>

#include <fmt/format.h>

namespace qlproto {

namespace {

constexpr int64_t SECOND = 1'000'000'000;

/// Takes `digits` digits from the front of `text`.
bool take(std::string_view& text, std::size_t digits, int64_t& number) {
    if (text.size() < digits || digits == 0) return false;
    const char* const end = text.data() + digits;
    if (text.find_first_not_of("0123456789") < digits || std::from_chars(text.data(), end, number).ptr != end)
        return false;
    text.remove_prefix(digits);
    return true;
}

bool take(std::string_view& text, char c) {
    if (!text.starts_with(c)) return false;
    text.remove_prefix(1);
    return true;
}

/// Takes a point and up to nine digits, or nothing.
bool takeFraction(std::string_view& text, int64_t& nanoseconds) {
    nanoseconds = 0;
    if (!take(text, '.')) return true;
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits > 9 || !take(text, digits, nanoseconds)) return false;
    for (std::size_t i = digits; i < 9; ++i) nanoseconds *= 10;
    return true;
}

} // namespace

void appendTime(int64_t time, TimeForm form, std::string& text) {
    if (form == TimeForm::raw) {
        fmt::format_to(std::back_inserter(text), "{}.{:09}", time / SECOND, time % SECOND);
        return;
    }
    using namespace std::chrono;
    const sys_seconds instant{seconds(time / SECOND)};
    const sys_days day = floor<days>(instant);
    const year_month_day date(day);
    const hh_mm_ss clock(instant - day);
    fmt::format_to(std::back_inserter(text), "{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:09}Z",
                   static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                   static_cast<unsigned>(date.day()), clock.hours().count(), clock.minutes().count(),
                   clock.seconds().count(), time % SECOND);
}

std::optional<int64_t> parseTime(std::string_view text) {
    int64_t nanoseconds = 0;
    if (text.find('-') == text.npos) {
        int64_t seconds = 0;
        const std::size_t digits = std::min(text.find('.'), text.size());
        if (digits > 10 || !take(text, digits, seconds) || !takeFraction(text, nanoseconds) || !text.empty())
            return std::nullopt;
        return seconds >= INT64_MAX / SECOND ? std::nullopt : std::optional(seconds * SECOND + nanoseconds);
    }
    int64_t year, month, day, hour = 0, minute = 0, second = 0;
    if (!take(text, 4, year) || !take(text, '-') || !take(text, 2, month) || !take(text, '-') || !take(text, 2, day))
        return std::nullopt;
    if (take(text, 'T') || take(text, ' ')) {
        if (!take(text, 2, hour) || !take(text, ':') || !take(text, 2, minute) || !take(text, ':')
            || !take(text, 2, second) || !takeFraction(text, nanoseconds))
            return std::nullopt;
    }
    take(text, 'Z');
    using namespace std::chrono;
    const year_month_day date(std::chrono::year(static_cast<int>(year)),
                              std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day)));
    if (!text.empty() || !date.ok() || year < 1970 || year > 2200 || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const seconds instant = sys_days(date).time_since_epoch() + hours(hour) + minutes(minute) + seconds(second);
    return instant.count() * SECOND + nanoseconds;
}

} // namespace qlproto
