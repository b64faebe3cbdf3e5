// Text in aligned columns, or the same values as CSV.
#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qlproto {

/// What people read, and what programs read instead: "12.35µs" and "12350".
struct Cell {
    template <class Text>
    requires std::convertible_to<Text, std::string> Cell(Text text_) : text(std::move(text_)), plain(text) {}

    static Cell of(std::string text, std::string plain) {
        Cell cell(std::move(text));
        cell.plain = std::move(plain);
        return cell;
    }
    /// Of a value that is not there: "-", and nothing.
    static Cell none() { return of("-", ""); }

    std::string text, plain;
};

/// Appends a value of CSV. REQUIRES: it ends no line.
void appendCsv(std::string_view value, std::string& line);

class Table {
  public:
    enum class Align { left, right };

    /// One alignment per column.
    explicit Table(std::vector<Align> columns) : _columns(std::move(columns)) {}

    /// With a header as its first row; the first columns stand to the left, the others to the right.
    explicit Table(std::vector<std::string> header, std::size_t toTheLeft = 1) : _columns(header.size(), Align::right) {
        std::fill_n(_columns.begin(), toTheLeft, Align::left);
        add({header.begin(), header.end()});
    }

    /// No cell ends its line or steers a terminal. REQUIRES: at most as many cells as columns.
    void add(std::vector<Cell> row);

    /// Two blanks between columns, none at the ends of lines, `indent` blanks at their beginnings. Widths are
    /// in characters.
    std::string text(std::size_t indent = 0) const;

    /// An array with an object for each row, its members named by the first row. What a column to the right holds is a
    /// number if it reads like one, what is not there null.
    std::string json() const;

    /// Lines of values with commas between them; those that hold a comma or a quote stand in quotes.
    std::string csv() const;

  private:
    std::vector<Align> _columns;
    std::vector<std::vector<Cell>> _rows;
};

} // namespace qlproto
