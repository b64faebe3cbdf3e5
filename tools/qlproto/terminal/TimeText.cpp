#include "tools/qlproto/terminal/TimeText.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>

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

/// Seconds from UTC to the time of the zone.
int64_t offsetAt(int64_t second, TimeForm form) {
    if (form != TimeForm::zone) return 0;
    const std::time_t instant = second;
    std::tm local{};
    localtime_r(&instant, &local);
    return local.tm_gmtoff;
}

/// The moment at which a clock of the zone shows that many seconds since 1970.
int64_t instantOf(int64_t shown, TimeForm form) {
    if (form != TimeForm::zone) return shown;
    const std::time_t asUtc = shown;
    std::tm local{};
    gmtime_r(&asUtc, &local);
    local.tm_isdst = -1;
    return std::mktime(&local);
}

/// "2024-03-04T08:00:00" and "+01:00" of a second.
struct SecondText {
    int64_t second = INT64_MIN;
    TimeForm form = TimeForm::raw;
    std::string date, zone;
};

std::string zoneText(int64_t offset, TimeForm form) {
    if (form == TimeForm::utc) return "Z";
    const int64_t size = std::abs(offset);
    std::string text = fmt::format("{}{:02}:{:02}", offset < 0 ? '-' : '+', size / 3600, size / 60 % 60);
    if (size % 60 != 0) text += fmt::format(":{:02}", size % 60); // as before zones were agreed upon
    return text;
}

SecondText textOf(int64_t second, TimeForm form) {
    using namespace std::chrono;
    const int64_t offset = offsetAt(second, form);
    const sys_seconds instant{seconds(second + offset)};
    const sys_days day = floor<days>(instant);
    const year_month_day date(day);
    const hh_mm_ss clock(instant - day);
    return {second, form,
            fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}", static_cast<int>(date.year()),
                        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), clock.hours().count(),
                        clock.minutes().count(), clock.seconds().count()),
            zoneText(offset, form)};
}

/// Takes "12:00" or "12:00:00.5".
bool takeClock(std::string_view& text, int64_t& nanoseconds) {
    int64_t hour = 0, minute = 0, second = 0, fraction = 0;
    if (!take(text, 2, hour) || !take(text, ':') || !take(text, 2, minute)) return false;
    if (take(text, ':') && (!take(text, 2, second) || !takeFraction(text, fraction))) return false;
    nanoseconds = ((hour * 60 + minute) * 60 + second) * SECOND + fraction;
    return hour <= 23 && minute <= 59 && second <= 59;
}

/// Takes "Z", "+01:00", or nothing.
bool takeOffset(std::string_view& text, std::optional<int64_t>& offset) {
    if (take(text, 'Z')) {
        offset = 0;
    } else if (text.starts_with('+') || text.starts_with('-')) {
        const int sign = text.front() == '-' ? -1 : 1;
        int64_t hours = 0, minutes = 0;
        text.remove_prefix(1);
        if (!take(text, 2, hours) || !take(text, ':') || !take(text, 2, minutes) || hours > 15 || minutes > 59)
            return false;
        offset = sign * (hours * 60 + minutes) * 60;
    }
    return true;
}

} // namespace

bool takeZone(const std::string& name) {
    const char* const folder = std::getenv("TZDIR");
    const std::filesystem::path file =
        std::filesystem::path(folder != nullptr && *folder != '\0' ? folder : "/usr/share/zoneinfo") / name;
    char magic[4] = {}; // a name of another file would mean UTC
    std::error_code error;
    if (name.empty() || name.front() == '/' || name.find("..") != name.npos
        || !std::filesystem::is_regular_file(file, error) || !std::ifstream(file).read(magic, sizeof magic)
        || std::string_view(magic, sizeof magic) != "TZif")
        return false;
    setenv("TZ", name.c_str(), 1);
    tzset();
    return true;
}

void appendTime(int64_t time, TimeForm form, std::string& text) {
    if (form == TimeForm::raw) {
        fmt::format_to(std::back_inserter(text), "{}.{:09}", time / SECOND, time % SECOND);
        return;
    }
    // Many times in a row are of the same second.
    const int64_t second = time / SECOND - (time % SECOND < 0);
    thread_local SecondText last;
    if (last.second != second || last.form != form) last = textOf(second, form);
    text += last.date;
    fmt::format_to(std::back_inserter(text), ".{:09}", time - second * SECOND);
    text += last.zone;
}

std::optional<int64_t> parseClock(std::string_view text) {
    int64_t clock = 0;
    return takeClock(text, clock) && text.empty() ? std::optional(clock) : std::nullopt;
}

int64_t atClock(int64_t time, int64_t clock, TimeForm form, int days) {
    constexpr int64_t day = 24 * 3600;
    const int64_t shown = time / SECOND + offsetAt(time / SECOND, form);
    return instantOf((shown / day + days) * day + clock / SECOND, form) * SECOND + clock % SECOND;
}

std::optional<int64_t> parseTime(std::string_view text, TimeForm form) {
    int64_t nanoseconds = 0;
    if (text.find('-') == text.npos) {
        int64_t seconds = 0;
        const std::size_t digits = std::min(text.find('.'), text.size());
        if (digits > 10 || !take(text, digits, seconds) || !takeFraction(text, nanoseconds) || !text.empty())
            return std::nullopt;
        return seconds >= INT64_MAX / SECOND ? std::nullopt : std::optional(seconds * SECOND + nanoseconds);
    }
    int64_t year, month, day;
    std::optional<int64_t> offset;
    if (!take(text, 4, year) || !take(text, '-') || !take(text, 2, month) || !take(text, '-') || !take(text, 2, day))
        return std::nullopt;
    if ((take(text, 'T') || take(text, ' ')) && !takeClock(text, nanoseconds)) return std::nullopt;
    if (!takeOffset(text, offset)) return std::nullopt;
    using namespace std::chrono;
    const year_month_day date(std::chrono::year(static_cast<int>(year)),
                              std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day)));
    if (!text.empty() || !date.ok() || year < 1970 || year > 2200) return std::nullopt;
    const int64_t shown = seconds(sys_days(date).time_since_epoch()).count() + nanoseconds / SECOND;
    return (offset ? shown - *offset : instantOf(shown, form)) * SECOND + nanoseconds % SECOND;
}

} // namespace qlproto
