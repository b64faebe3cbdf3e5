// The messages of one type as columns: one row a message, in the layout that Arrow describes (Arrow.h).
//
//     Columns::Table orders(id, *Inspect::reflect(id), {});
//     orders.add({packet, time}, body);          // of a body that verify() accepts
//     ArrowSchema schema; orders.exportSchema(schema);
//     ArrowArray batch;   orders.exportBatch(batch);
//
// In front stand `_packet` (uint64, its number in the capture), `_time` (timestamp in nanoseconds, without a zone), `_id` (uint16,
// the identifier), if captures are named, `_capture` (dictionary of these names) and, if connections are asked for, what tells by
// which one it came, null if by none: `_connection`, `_connectionID` (uint64), `_from`, `_to`, `_direction` (dictionary;
// Capture/Connection.h says what they are); then the fields of the message in their order:
//
//   record                 struct
//   vector                 list
//   bool, integers, floats the type of that width
//   time at a station      timestamp in nanoseconds, without a zone; null where it is zero: no time was taken
//   price                  int64, or a decimal number if decimals are asked for; null where it is a sentinel: which one tells
//                          a column beside it, NAME_sentinel, which is null where it is none
//   enumeration            dictionary of names; a value without a name stands there as its number
//   string                 utf8; bytes that are none, and the backslash, as in the strings of JSON (Inspect/Json.h)
//   padding, blob          binary
//
// Secrets are null unless they are asked for. Nothing is decoded but what was chosen.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Columns/Column.h"
#include "Columns/ConnectionColumns.h"
#include "Inspect/Selection.h"

namespace Columns {

struct Options {
    bool showsSecrets = false;
    /// Of prices and amounts, from 0 to 18; integers if none are asked for.
    std::optional<int> decimals = std::nullopt;
    /// Names of captures; at most 32,767.
    std::vector<std::string> captures = {};
    bool hasConnections = false; ///< whether there are columns of the connections by which messages came
    /// Whether a value becomes a column; asked of values that are no records, and of whole vectors. A record becomes one if
    /// anything in it does, a sentinel goes with its price. Columns in front are paths of one name. All do if this is empty.
    std::function<bool(Inspect::Path)> takes = {};
};

/// Where a message was met.
struct Origin {
    uint64_t packet = 0;
    int64_t time = 0;
    size_t capture = 0;                              ///< the place of its name
    const Capture::Connection* connection = nullptr; ///< by which it came; null if that is not known
};

class Table {
  public:
    /// `type` is that of the message with that identifier.
    Table(Velmora::MsgType_t id, const Inspect::TypeInfo& type, const Options& options);
    Table(const Table&) = delete; // the targets refer to the columns
    Table& operator=(const Table&) = delete;

    /// Adds a row. REQUIRES: verify() accepts the body; the texts of a batch have less than 2 GB together.
    void add(const Origin& origin, std::string_view body);

    size_t rows() const { return _table.length(); }
    size_t bytes() const { return _table.bytes(); } ///< that the rows take

    /// What the columns are. The caller releases it.
    void exportSchema(ArrowSchema& to) const { _table.exportSchema(to); }
    /// Hands over the rows since the last time. The caller releases them, whether this object lives or not.
    void exportBatch(ArrowArray& to) { _table.exportArray(to); }

  private:
    /// What becomes of the values of a field.
    struct Target {
        enum class Kind : uint8_t { number, real, text, vector, word, time, price, secret } kind;
        Column* column;
        Column* sentinel = nullptr; ///< of a price
    };

    bool takes(const Inspect::FieldInfo& field);
    void addColumn(Column& to, const Inspect::FieldInfo& field);
    void plan(std::vector<Column>& columns, size_t& at, const Inspect::FieldInfo& field, bool isSecret);
    void plan(Column& column, Column* sentinel, const Inspect::ValueInfo& value, const Inspect::FieldInfo& field,
              bool isSecret);
    struct Filling;

    const Velmora::MsgType_t _id;
    const Options _options;
    // While columns are made and planned:
    std::vector<Inspect::PathPiece> _path; ///< of the record at hand
    size_t _vectors = 0;                   ///< that it is in
    Column _table;
    Column *_packet = nullptr, *_time = nullptr, *_identifier = nullptr, *_capture = nullptr; ///< null if not taken
    ConnectionColumns _connection;
    std::vector<Target> _targets; ///< of the values, in the order in which they travel
    Inspect::Selection _values;
};

} // namespace Columns
