#include "tools/qlproto/terminal/Table.h"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>

#include "tools/qlproto/terminal/Terminal.h"

namespace qlproto {

namespace {

/// Characters, not bytes: a "µ" is two bytes long and one column wide.
std::size_t width(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

void Table::add(std::vector<Cell> row) {
    for (Cell& cell : row) {
        cell.text = visible(cell.text);
        cell.plain = visible(cell.plain);
    }
    _rows.push_back(std::move(row));
}

std::string Table::text(std::size_t indent) const {
    std::vector<std::size_t> widths(_columns.size());
    for (const auto& row : _rows)
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], width(row[i].text));

    std::string text;
    for (const auto& row : _rows) {
        std::string line(indent, ' ');
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i != 0) line += "  ";
            const std::string padding(widths[i] - width(row[i].text), ' ');
            line += _columns[i] == Align::left ? row[i].text + padding : padding + row[i].text;
        }
        line.resize(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

void appendCsv(std::string_view value, std::string& line) {
    if (value.find_first_of(",\"") == value.npos) {
        line += value;
        return;
    }
    line += '"';
    for (const char c : value) line.append(c == '"' ? 2 : 1, c);
    line += '"';
}

std::string Table::json() const {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (std::size_t i = 1; i < _rows.size(); ++i) {
        nlohmann::ordered_json& row = rows.emplace_back(nlohmann::ordered_json::object());
        for (std::size_t column = 0; column < _rows[i].size(); ++column) {
            const std::string& value = _rows[i][column].plain;
            nlohmann::ordered_json& it = row[_rows[0][column].plain];
            const bool mayBeNumber =
                _columns[column] == Align::right && value.find_first_not_of("-0123456789.") == value.npos;
            if (mayBeNumber) it = nlohmann::ordered_json::parse(value, nullptr, false);
            if (value.empty())
                it = nullptr;
            else if (!mayBeNumber || it.is_discarded())
                it = value;
        }
    }
    return rows.dump(2) + '\n';
}

std::string Table::csv() const {
    std::string text;
    for (const auto& row : _rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i != 0) text += ',';
            appendCsv(row[i].plain, text);
        }
        text += '\n';
    }
    return text;
}

} // namespace qlproto
