// How values are shown to people, apart from the form of the text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Backend/Velmora/Wire.h"
#include "Inspect/SafeText.h"

namespace Inspect {

/// Stands for a hidden secret.
inline constexpr std::string_view HIDDEN = "***";

struct Display {
    Secrets secrets = Secrets::show;

    /// What values in the price encoding are divided by: a power of ten, as the protocol fixes no scale. With 1 they
    /// are shown as they are.
    int64_t priceScale = 1;

    /// Appends a time that was taken at a station, for text alone: in JSON it stays a number. Null: as a number there, too.
    void (*showTime)(int64_t time, std::string& text) = nullptr;

    /// Whether this value of a field that holds times is one: neither unset nor a sentinel.
    static bool is_time(int64_t value) { return value != 0 && Velmora::sentinelName(value).empty(); }
};

/// `value` / `scale` exactly, without zeros at the end: "1.0845", "-0.5", "3"; sentinels by name.
inline std::string scaled_text(int64_t value, int64_t scale) {
    if (const auto sentinel = Velmora::sentinelName(value); !sentinel.empty()) return std::string(sentinel);
    const auto divisor = static_cast<uint64_t>(scale);
    const uint64_t size = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    std::string text;
    if (value < 0) text += '-';
    text += std::to_string(size / divisor);
    if (size % divisor == 0) return text;
    const std::string digits = std::to_string(divisor + size % divisor); // the 1 in front keeps the zeros
    text += '.';
    return text.append(digits, 1, digits.find_last_not_of('0'));
}

} // namespace Inspect
