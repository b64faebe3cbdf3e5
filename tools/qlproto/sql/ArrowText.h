// Rows of columns in the Arrow layout as lines of text: for programs that read neither Arrow nor Parquet.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Columns/Arrow.h"

namespace qlproto::sql {

/// Appends a row as an object of JSON. Records are objects, vectors arrays, binaries the strings of our JSON
/// (Inspect/Json.h), times texts as in "2024-03-04 07:00:00.000000042".
void appendJsonRow(const ArrowSchema& schema, const ArrowArray& rows, size_t row, std::string& text);

/// Appends a row as values with commas between them, and the names of these. What is in a record stands in columns of its own,
/// as in "contents.side"; vectors are in JSON. Null is nothing.
void appendCsvRow(const ArrowSchema& schema, const ArrowArray& rows, size_t row, std::string& text);
void appendCsvHeader(const ArrowSchema& schema, std::string& text);

/// The words of a column of words, by their numbers.
std::vector<std::string_view> wordsOf(const ArrowArray& column);

} // namespace qlproto::sql
