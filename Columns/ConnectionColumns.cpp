#include "Columns/ConnectionColumns.h"

namespace Columns {

using Capture::ConnectionFact;

namespace {

/// Texts but for the direction, as there may be more of them in a batch than a dictionary has numbers for.
Column columnOf(ConnectionFact fact, const std::string& name) {
    using Inspect::Kind;
    if (fact == ConnectionFact::connectionID) return {name, "L"};
    const Kind kind = fact == ConnectionFact::direction ? Kind::enumeration : Kind::string;
    return {name, Inspect::ValueInfo{.kind = kind}};
}

} // namespace

void ConnectionColumns::addTo(Column& table, std::string_view prefix,
                              const std::function<bool(std::string_view name)>& isTaken) {
    _table = &table;
    _first = table.columns().size();
    for (size_t i = 0; i < FACTS; ++i) {
        const std::string name = std::string(prefix).append(Capture::CONNECTION_FACTS[i]);
        if (!isTaken(name)) continue;
        _facts.push_back(static_cast<ConnectionFact>(i));
        table.within(columnOf(_facts.back(), name));
    }
}

const ConnectionColumns::Known& ConnectionColumns::textsOf(const Capture::Connection& connection) {
    constexpr size_t most = 256;
    _known.resize(most);
    Known& known = _known[(2 * connection.number + (connection.isBack ? 1 : 0)) % most];
    if (known.number == connection.number) return known;
    known.number = connection.number;
    for (const ConnectionFact fact : _facts) known.texts[static_cast<size_t>(fact)] = Capture::textOf(fact, connection);
    return known;
}

void ConnectionColumns::row(const Capture::Connection* connection) {
    if (_facts.empty()) return;
    const Known* const known = connection != nullptr ? &textsOf(*connection) : nullptr;
    Column* column = &_table->columns()[_first];
    for (const ConnectionFact fact : _facts) {
        Column& to = *column++;
        if (known == nullptr)
            to.null();
        else if (fact == ConnectionFact::connectionID)
            to.number(static_cast<int64_t>(connection->number));
        else if (fact == ConnectionFact::direction)
            to.word(connection->isBack ? 1 : 0, known->texts[static_cast<size_t>(fact)]);
        else
            to.text(known->texts[static_cast<size_t>(fact)]);
    }
}

} // namespace Columns
