// Plots for the terminal, of block characters that fill an eighth of a cell each.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace qlproto {

/// Columns of the terminal that standard output is, or what COLUMNS says, or 80.
std::size_t terminalWidth();

/// Lines of the terminal that standard output is, or of the usual one.
std::size_t terminalHeight();

/// A curve: one column a value, `height` lines, the axis with the greatest value to its left. Values are not negative.
std::string plotCurve(const std::vector<double>& values, std::size_t height, const std::string& greatest);

/// Characters that plotCurve() puts to the left of the values.
std::size_t curveMargin(const std::string& greatest);

/// Bars: one line for each label and value, with what to tell of the value after the bar.
struct Bar {
    std::string label;
    double value;
    std::string text;
};
std::string plotBars(const std::vector<Bar>& bars, std::size_t width);

} // namespace qlproto
