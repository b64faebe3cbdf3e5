#include "tools/qlproto/Table.h"

#include <algorithm>

#include <fmt/format.h>

namespace qlproto {

namespace {

/// Characters, not bytes: a "µ" is two bytes long and one column wide.
std::size_t columns(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

std::string Table::text() const {
    std::vector<std::size_t> widths;
    for (const auto& row : _rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], columns(row[i]));
    }
    std::string text;
    for (const auto& row : _rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string padding(widths[i] - columns(row[i]), ' ');
            const bool isLast = i + 1 == row.size();
            if (i != 0) text += "  ";
            text += i < _toTheLeft ? row[i] + (isLast ? "" : padding) : padding + row[i];
        }
        text += '\n';
    }
    return text;
}

} // namespace qlproto
