#include "tools/qlproto/messages/Hex.h"

#include <fmt/format.h>

#include "Inspect/Utf8.h"

namespace qlproto {

namespace {

/// -1 for any other character.
int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool isSeparator(char c) { return std::string_view(" \t\r\n:").find(c) != std::string_view::npos; }

std::string describe(char c) {
    return c >= 0x20 && c < 0x7F ? fmt::format("'{}'", c)
                                 : fmt::format("character 0x{:02X}", static_cast<unsigned char>(c));
}

} // namespace

HexError::HexError(std::size_t position, const std::string& reason)
    : std::runtime_error(fmt::format("{} at position {}", reason, position)), _position(position) {}

std::string bytesFromHex(std::string_view text) {
    const auto digit = [&](std::size_t i) {
        if (i == text.size()) throw HexError(i, "a digit is missing at the end");
        const int value = digitValue(text[i]);
        if (value < 0) throw HexError(i, fmt::format("{} is no hexadecimal digit", describe(text[i])));
        return value;
    };
    std::string bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i < text.size();) {
        if (isSeparator(text[i])) {
            ++i;
            continue;
        }
        if (text[i] == '0' && i + 1 < text.size() && (text[i + 1] | 0x20) == 'x') i += 2;
        const int high = digit(i);
        bytes += static_cast<char>(high << 4 | digit(i + 1));
        i += 2;
    }
    return bytes;
}

std::string hexFromBytes(std::string_view bytes, std::string_view separator) {
    std::string text;
    text.reserve(bytes.size() * (2 + separator.size()));
    for (const char c : bytes) {
        if (!text.empty()) text += separator;
        text += Inspect::HEX_DIGITS[static_cast<unsigned char>(c) >> 4];
        text += Inspect::HEX_DIGITS[static_cast<unsigned char>(c) & 15];
    }
    return text;
}

} // namespace qlproto
