// What a statement needs of the tables it names: which parts of records, and packets of which time. The engine tells a table
// which columns it needs, but neither of these, and most of a message is one record.
//
// It is found in the statement's syntax, and where that says something that is not understood here, all is needed.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "Inspect/Values.h"

namespace qlproto::sql {

class Needs {
  public:
    struct Times {
        int64_t from = std::numeric_limits<int64_t>::min(), to = std::numeric_limits<int64_t>::max();
    };

    /// All.
    Needs() = default;

    /// `syntax` is what the engine's json_serialize_sql() makes of the statement. `isTable` tells the tables of captures from
    /// what else has a name. `timeOf` makes nanoseconds of a constant; it throws std::exception if it is none.
    Needs(std::string_view syntax, const std::function<bool(const std::string&)>& isTable,
          const std::function<int64_t(const std::string&)>& timeOf);

    /// Whether a value is needed of a column that is.
    bool reads(Inspect::Path path) const;

    /// Of the packets of a table.
    Times timesOf(const std::string& table) const;

  private:
    class Search;

    bool _isAll = true;
    std::vector<std::vector<std::string>> _names; ///< of columns and what is in them, as the statement has them
    std::map<std::string, Times> _times;          ///< by the name of the table in small letters
};

/// The text in small letters: names of the engine do not depend on the case.
std::string inSmallLetters(std::string_view text);

} // namespace qlproto::sql
