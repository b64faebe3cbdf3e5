// The columns that tell by which connection messages came.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/Connection.h"
#include "Columns/Column.h"

namespace Columns {

class ConnectionColumns {
  public:
    /// Adds those that are taken to the end of the table, which must stay where it is. Names begin with the prefix.
    void addTo(Column& table, std::string_view prefix, const std::function<bool(std::string_view name)>& isTaken);

    size_t count() const { return _facts.size(); } ///< of columns

    /// Fills in a row; with nulls if the message came by no connection.
    void row(const Capture::Connection* connection);

  private:
    static constexpr size_t FACTS = Capture::CONNECTION_FACTS.size();

    /// Texts that were made of a connection and direction. Most messages are of one that was met shortly before.
    struct Known {
        uint64_t number = 0; ///< from 1 on
        std::array<std::string, FACTS> texts;
    };
    const Known& textsOf(const Capture::Connection& connection);

    Column* _table = nullptr;
    size_t _first = 0;                           ///< the place of the first column
    std::vector<Capture::ConnectionFact> _facts; ///< a column each
    std::vector<Known> _known;                   ///< each number and direction has a place, which it shares with others
};

} // namespace Columns
