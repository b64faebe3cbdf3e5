#include "tools/qlproto/sql/ArrowText.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include <fmt/format.h>

#include "Inspect/Json.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/terminal/Terminal.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto::sql {

namespace {

bool isNull(const ArrowArray& array, size_t row) {
    const auto* const validity = static_cast<const uint8_t*>(array.buffers[0]);
    return validity != nullptr && (validity[row / 8] >> row % 8 & 1) == 0;
}

template <class T>
T at(const ArrowArray& array, size_t row) {
    T value;
    std::memcpy(&value, static_cast<const char*>(array.buffers[1]) + row * sizeof value, sizeof value);
    return value;
}

std::string_view textAt(const ArrowArray& array, size_t row) {
    const int32_t begin = at<int32_t>(array, row), end = at<int32_t>(array, row + 1);
    if (begin == end) return "";
    return {static_cast<const char*>(array.buffers[2]) + begin, static_cast<size_t>(end - begin)};
}

/// "2024-03-04T07:00:00.000000042Z" without its T and Z, as databases have times without a zone.
std::string timeAt(const ArrowArray& array, size_t row) {
    std::string text = timeText(at<int64_t>(array, row), TimeForm::utc);
    if (const size_t letter = text.find('T'); letter != text.npos) text[letter] = ' ';
    if (text.ends_with('Z')) text.pop_back();
    return text;
}

/// A string of JSON. Texts of columns are UTF-8.
std::string jsonQuoted(std::string_view utf8) {
    std::string text(1, '"');
    for (const char c : utf8) {
        if (static_cast<unsigned char>(c) < 0x20)
            text += fmt::format("\\u{:04x}", static_cast<unsigned>(c));
        else
            (c == '"' || c == '\\' ? text += '\\' : text) += c;
    }
    return text += '"';
}

/// "d:19,4"
std::string decimalText(const char* format, int64_t number) {
    const auto decimals = static_cast<size_t>(std::atoi(std::strchr(format, ',') + 1));
    // The magnitude of the least number has no sign of its own.
    std::string digits = std::to_string(number < 0 ? 0 - static_cast<uint64_t>(number) : static_cast<uint64_t>(number));
    if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
    if (decimals != 0) digits.insert(digits.size() - decimals, ".");
    return (number < 0 ? "-" : "") + digits;
}

/// What is a number or true or false, in any form of text. Empty for what is not, and for what is no number.
std::string numberAt(const ArrowSchema& schema, const ArrowArray& array, size_t row) {
    switch (schema.format[0]) {
    case 'b':
        return (static_cast<const uint8_t*>(array.buffers[1])[row / 8] >> row % 8 & 1) != 0 ? "true" : "false";
    case 'c':
        return std::to_string(at<int8_t>(array, row));
    case 'C':
        return std::to_string(at<uint8_t>(array, row));
    case 's':
        return std::to_string(at<int16_t>(array, row));
    case 'S':
        return std::to_string(at<uint16_t>(array, row));
    case 'i':
        return std::to_string(at<int32_t>(array, row));
    case 'I':
        return std::to_string(at<uint32_t>(array, row));
    case 'l':
        return std::to_string(at<int64_t>(array, row));
    case 'L':
        return std::to_string(at<uint64_t>(array, row));
    case 'd':
        return decimalText(schema.format, at<int64_t>(array, 2 * row));
    case 'f': {
        const auto real = at<float>(array, row);
        return std::isfinite(real) ? fmt::format("{}", real) : "";
    }
    case 'g': {
        const auto real = at<double>(array, row);
        return std::isfinite(real) ? fmt::format("{}", real) : "";
    }
    default:
        return {};
    }
}

void appendJson(const ArrowSchema& schema, const ArrowArray& array, size_t row, std::string& text) {
    const auto appendAll = [&](char open, size_t begin, size_t end, char close, auto&& append) {
        text += open;
        for (size_t i = begin; i != end; ++i) {
            if (i != begin) text += ',';
            append(i);
        }
        text += close;
    };
    const char* const format = schema.format;
    if (isNull(array, row)) {
        text += "null";
    } else if (schema.dictionary != nullptr) {
        appendJson(*schema.dictionary, *array.dictionary, static_cast<size_t>(at<int16_t>(array, row)), text);
    } else if (format[0] == '+' && format[1] == 's') {
        appendAll('{', 0, static_cast<size_t>(array.n_children), '}', [&](size_t i) {
            text += Inspect::json_text(schema.children[i]->name) + ':';
            appendJson(*schema.children[i], *array.children[i], row, text);
        });
    } else if (format[0] == '+') {
        appendAll('[', static_cast<size_t>(at<int32_t>(array, row)), static_cast<size_t>(at<int32_t>(array, row + 1)),
                  ']', [&](size_t i) { appendJson(*schema.children[0], *array.children[0], i, text); });
    } else if (format[0] == 'u') { // JSON's own escapes alone: it is UTF-8
        text += jsonQuoted(textAt(array, row));
    } else if (format[0] == 'z') {
        text += Inspect::json_text(textAt(array, row));
    } else if (format[0] == 't') {
        text += '"' + timeAt(array, row) + '"';
    } else {
        const std::string number = numberAt(schema, array, row);
        text += number.empty() ? "null" : number;
    }
}

void appendCsvCells(const ArrowSchema& schema, const ArrowArray& array, size_t row, std::string& text) {
    for (int64_t i = 0; i < array.n_children; ++i) {
        const ArrowSchema& column = *schema.children[i];
        const ArrowArray& values = *array.children[i];
        if (i != 0) text += ',';
        if (std::string_view(column.format) == "+s") {
            appendCsvCells(column, values, row, text);
        } else if (isNull(values, row)) {
            continue;
        } else if (column.format[0] == '+' || column.format[0] == 'z') {
            std::string json;
            appendJson(column, values, row, json);
            appendCsv(json, text);
        } else if (column.dictionary != nullptr) {
            appendCsv(visible(textAt(*values.dictionary, static_cast<size_t>(at<int16_t>(values, row)))), text);
        } else if (column.format[0] == 'u') {
            appendCsv(visible(textAt(values, row)), text);
        } else {
            text += column.format[0] == 't' ? timeAt(values, row) : numberAt(column, values, row);
        }
    }
}

void appendNames(const ArrowSchema& schema, const std::string& path, std::string& text) {
    for (int64_t i = 0; i < schema.n_children; ++i) {
        const ArrowSchema& column = *schema.children[i];
        if (i != 0) text += ',';
        if (std::string_view(column.format) == "+s")
            appendNames(column, path + column.name + '.', text);
        else
            text.append(path).append(column.name);
    }
}

} // namespace

void appendJsonRow(const ArrowSchema& schema, const ArrowArray& rows, size_t row, std::string& text) {
    appendJson(schema, rows, row, text);
}

void appendCsvRow(const ArrowSchema& schema, const ArrowArray& rows, size_t row, std::string& text) {
    appendCsvCells(schema, rows, row, text);
}

std::vector<std::string_view> wordsOf(const ArrowArray& column) {
    std::vector<std::string_view> words;
    for (size_t i = 0; i < static_cast<size_t>(column.dictionary->length); ++i)
        words.push_back(textAt(*column.dictionary, i));
    return words;
}

void appendCsvHeader(const ArrowSchema& schema, std::string& text) { appendNames(schema, "", text); }

} // namespace qlproto::sql
