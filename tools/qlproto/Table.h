// Rows of text in columns as wide as their widest cell: the first ones to the left, the others to the right.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace qlproto {

class Table {
  public:
    explicit Table(std::vector<std::string> header, std::size_t toTheLeft = 1) : _toTheLeft(toTheLeft) {
        add(std::move(header));
    }

    void add(std::vector<std::string> row) { _rows.push_back(std::move(row)); }

    /// One line a row, the header first.
    std::string text() const;

  private:
    std::size_t _toTheLeft;
    std::vector<std::vector<std::string>> _rows;
};

} // namespace qlproto
