// Text in aligned columns.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qlproto {

class Table {
  public:
    enum class Align { left, right };

    /// One alignment per column.
    explicit Table(std::vector<Align> columns) : _columns(std::move(columns)) {}

    /// REQUIRES: at most as many cells as columns.
    void add(std::vector<std::string> row) { _rows.push_back(std::move(row)); }

    /// Two blanks between columns, none at the ends of lines, `indent` blanks at their beginnings. Cells count as wide
    /// as they have bytes.
    std::string text(std::size_t indent = 0) const;

  private:
    std::vector<Align> _columns;
    std::vector<std::vector<std::string>> _rows;
};

} // namespace qlproto
