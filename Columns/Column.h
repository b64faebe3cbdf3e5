// One column of a table while it grows: buffers as Arrow lays them out, and the columns within it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Columns/Arrow.h"
#include "Columns/Buffer.h"
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

    /// Of integers, in two's complement, and of times.
    QL_FORCE_INLINE void number(int64_t value) {
        _values.append(static_cast<uint64_t>(value), _width);
        ++_length;
    }
    void real(double value); ///< of floats of either width
    void text(std::string_view bytes);
    /// Of enumerations: the word with that number, by which it is known from then on.
    void word(size_t number, std::string_view text);
    void enumerator(int64_t number); ///< the name that the number has, or else the number itself
    void null();
    void nullsUpTo(size_t length); ///< as many as are missing to that length
    void elements(size_t count);   ///< of a vector: as many elements follow in the column within
    void row() { ++_length; }      ///< of a record that is a table: its values stand in the columns within

    std::vector<Column>& columns() { return _columns; }
    size_t length() const { return _length; } ///< not of a record that is none
    size_t bytes() const;                     ///< of all buffers, those within included

    void exportSchema(ArrowSchema& to) const;
    /// Hands over what was gathered; the column is empty again. `to` lives on its own.
    void exportArray(ArrowArray& to) { exportArray(to, _length); }

  private:
    void exportArray(ArrowArray& to, size_t length);
    Buffer arrowValues();
    void nulls(size_t count);
    void reset();

    std::string _name;
    std::string _format;
    Inspect::Kind _kind;
    size_t _width; ///< of a value while it grows; 0 of what has no fixed one
    const Inspect::EnumerationInfo* _enumeration = nullptr;
    std::vector<Column> _columns;

    size_t _length = 0, _nulls = 0;
    Buffer _values;                  ///< of fixed width, or bytes of texts
    Buffer _offsets;                 ///< of texts and vectors, 32 bits each: where each begins, and the end
    std::vector<uint8_t> _validity;  ///< a bit a value, up to the last null
    std::vector<int16_t> _indices;   ///< of words: of each number its place in the dictionary; -1 if it was not met
    std::vector<std::string> _names; ///< the dictionary
};

} // namespace Columns
