// Text in aligned columns.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace qlproto {

class Table {
  public:
    enum class Align { left, right };

    /// One alignment per column.
    explicit Table(std::vector<Align> columns) : _columns(std::move(columns)) {}

    /// With a header as its first row; the first columns stand to the left, the others to the right.
    explicit Table(std::vector<std::string> header, std::size_t toTheLeft = 1) : _columns(header.size(), Align::right) {
        std::fill_n(_columns.begin(), toTheLeft, Align::left);
        add(std::move(header));
    }

    /// No cell ends its line or steers a terminal. REQUIRES: at most as many cells as columns.
    void add(std::vector<std::string> row);

    /// Two blanks between columns, none at the ends of lines, `indent` blanks at their beginnings. Widths are
    /// in characters.
    std::string text(std::size_t indent = 0) const;

  private:
    std::vector<Align> _columns;
    std::vector<std::vector<std::string>> _rows;
};

} // namespace qlproto
