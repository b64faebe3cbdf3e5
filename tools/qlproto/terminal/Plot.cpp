#include "tools/qlproto/terminal/Plot.h"

#include <algorithm>
#include <cstdlib>

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace qlproto {

namespace {

constexpr int EIGHTHS = 8;
constexpr const char* RISING[] = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr const char* GROWING[] = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉", "█"};

/// `value` in eighths of cells if `greatest` fills `cells`. What is there at all is seen.
int eighths(double value, double greatest, std::size_t cells) {
    if (value <= 0 || greatest <= 0) return 0;
    return std::max(static_cast<int>(value / greatest * static_cast<double>(cells) * EIGHTHS + 0.5), 1);
}

} // namespace

std::size_t terminalWidth() {
    constexpr std::size_t least = 40, usual = 80, most = 400;
    winsize size{};
    if (isatty(STDOUT_FILENO) != 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0)
        return std::clamp<std::size_t>(size.ws_col, least, most);
    const char* const columns = std::getenv("COLUMNS");
    const long number = columns != nullptr ? std::strtol(columns, nullptr, 10) : 0;
    return number > 0 ? std::clamp(static_cast<std::size_t>(number), least, most) : usual;
}

std::size_t terminalHeight() {
    constexpr std::size_t least = 4, usual = 24;
    winsize size{};
    const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row != 0;
    return isKnown ? std::max<std::size_t>(size.ws_row, least) : usual;
}

std::size_t curveMargin(const std::string& greatest) { return greatest.size() + 2; }

std::string plotCurve(const std::vector<double>& values, std::size_t height, const std::string& greatest) {
    const double top = values.empty() ? 0 : *std::max_element(values.begin(), values.end());
    std::string text;
    for (std::size_t line = height; line-- > 0;) {
        const std::string label = line + 1 == height ? greatest : line == 0 ? "0" : "";
        text += fmt::format("{:>{}} {}", label, greatest.size(), line + 1 == height ? "┤" : "│");
        for (double value : values) {
            const int above = eighths(value, top, height) - static_cast<int>(line) * EIGHTHS;
            text += RISING[std::clamp(above, 0, EIGHTHS)];
        }
        text += '\n';
    }
    return text;
}

std::string plotBars(const std::vector<Bar>& bars, std::size_t width) {
    std::size_t label = 0, note = 0;
    double greatest = 0;
    for (const Bar& bar : bars) {
        label = std::max(label, bar.label.size());
        note = std::max(note, bar.text.size());
        greatest = std::max(greatest, bar.value);
    }
    const std::size_t others = label + note + 3;
    const std::size_t room = width > others + 10 ? width - others : 10;
    std::string text;
    for (const Bar& bar : bars) {
        const int length = eighths(bar.value, greatest, room);
        text += fmt::format("{:>{}} │", bar.label, label);
        for (int i = 0; i < length / EIGHTHS; ++i) text += GROWING[EIGHTHS];
        text += GROWING[length % EIGHTHS];
        text += ' ' + bar.text + '\n';
    }
    return text;
}

} // namespace qlproto
