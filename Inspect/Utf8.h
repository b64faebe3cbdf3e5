// Recognising UTF-8, and what of it may be shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Inspect {

struct CodePoint {
    char32_t value;
    size_t length; ///< bytes; 0 if the text does not begin with a valid sequence
};

/// The code point that `text`, which is not empty, begins with. Overlong forms, surrogates and values beyond U+10FFFF
/// are not valid.
inline CodePoint first_code_point(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {lead, 1};
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {0, 0};
    char32_t value = lead & (0x7Fu >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {0, 0};
        value = value << 6 | (byte(i) & 0x3Fu);
    }
    const bool isOverlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    if (isOverlong || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return {0, 0};
    return {value, length};
}

/// Whether a code point may stand in a line as it is: not control characters, nor the invisible ones that separate
/// lines or change the direction of what follows.
inline bool is_harmless(char32_t c) {
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) return false;
    if (c == 0x061C || c == 0xFEFF) return false;
    if (c >= 0x200B && c <= 0x200F) return false;
    if (c >= 0x2028 && c <= 0x202E) return false;
    return c < 0x2060 || c > 0x206F;
}

inline constexpr char HEX_DIGITS[] = "0123456789abcdef";

} // namespace Inspect
