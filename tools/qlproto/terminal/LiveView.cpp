#include "tools/qlproto/terminal/LiveView.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include <fmt/format.h>

#include "tools/qlproto/terminal/Plot.h"

namespace qlproto {

std::chrono::milliseconds LiveView::untilDue() const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(_next - Clock::now());
    return std::max(left, std::chrono::milliseconds(0));
}

void LiveView::draw() {
    const std::string text = fitted(_text(), terminalWidth(), terminalHeight() - 1);
    clear();
    // Not fmt::print(), which throws if the terminal has gone.
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
    _lines = static_cast<std::size_t>(std::ranges::count(text, '\n'));
    _next = Clock::now() + std::chrono::milliseconds(250);
}

void LiveView::clear() {
    if (_lines == 0) return;
    std::fprintf(stdout, "\x1B[%zuA\x1B[J", _lines);
    std::fflush(stdout);
    _lines = 0;
}

std::string fitted(const std::string& text, std::size_t width, std::size_t height) {
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n'));
    const std::size_t first = lines <= height ? lines : height - 2;
    std::string result;
    std::istringstream in(text);
    std::string line;
    for (std::size_t i = 0; i < lines && std::getline(in, line); ++i) {
        if (i == first) result += fmt::format("... {} more\n", lines - 1 - first);
        if (i >= first && i != lines - 1) continue;
        std::size_t characters = 0;
        const auto isBeyond = [&](char c) {
            return (static_cast<unsigned char>(c) & 0xC0) != 0x80 && ++characters > width;
        };
        result.append(line.begin(), std::ranges::find_if(line, isBeyond)) += '\n';
    }
    return result;
}

} // namespace qlproto
