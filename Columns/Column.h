// One column of a table while it grows: buffers as Arrow lays them out, and the columns within it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Columns/Arrow.h"
#include "Inspect/Values.h"

namespace Columns {

class Column {
  public:
    /// A column of values of that kind. Of a record and a vector the columns within are added by the caller. Prices with so
    /// many decimals are decimal numbers, otherwise integers.
    Column(std::string name, const Inspect::ValueInfo& value, std::optional<int> decimals = std::nullopt);
    /// A column of the table's own.
    Column(std::string name, const char* format);

    Column& within(Column column); ///< adds a column to that of a record or a vector; valid until the next is added

    void number(int64_t value); ///< of integers, in two's complement, and of times
    void text(std::string_view bytes);
    /// Of enumerations: the word with that number, by which it is known from then on.
    void word(size_t number, std::string_view text);
    void value(const Inspect::Value& value);
    void null();
    void elements(size_t count); ///< of a vector: as many elements follow in the column within
    void row();                  ///< of a record: its values stand in the columns within

    std::vector<Column>& columns() { return _columns; }
    size_t length() const { return _length; }
    size_t bytes() const; ///< of all buffers, those within included

    void exportSchema(ArrowSchema& to) const;
    /// Hands over what was gathered; the column is empty again. `to` lives on its own.
    void exportArray(ArrowArray& to);

  private:
    template <class T>
    void append(T value);
    void put(int64_t value);
    void name(const Inspect::Value& value);
    void valid(bool isValid);
    void reset();

    std::string _name;
    std::string _format;
    Inspect::Kind _kind;
    std::vector<Column> _columns;

    size_t _length = 0, _nulls = 0;
    std::vector<uint8_t> _validity;  ///< a bit a value; empty as long as none is null
    std::vector<uint8_t> _values;    ///< of fixed width, bits, or bytes of texts
    std::vector<int32_t> _offsets;   ///< of texts and vectors: where each begins, and the end
    std::vector<int16_t> _indices;   ///< of words: of each number its place in the dictionary; -1 if it was not met
    std::vector<std::string> _names; ///< the dictionary
};

} // namespace Columns
