// Bytes as text of hexadecimal digits, for fixtures and reports.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "Inspect/Utf8.h"

inline std::string hex(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        text += Inspect::HEX_DIGITS[static_cast<unsigned char>(c) >> 4];
        text += Inspect::HEX_DIGITS[static_cast<unsigned char>(c) & 15];
    }
    return text;
}

inline std::string unhex(std::string_view text) {
    std::string bytes;
    for (size_t i = 0; i + 1 < text.size(); i += 2)
        bytes += static_cast<char>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16));
    if (bytes.size() * 2 != text.size()) throw std::invalid_argument("odd number of digits");
    return bytes;
}
