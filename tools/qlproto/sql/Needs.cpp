#include "tools/qlproto/sql/Needs.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include <nlohmann/json.hpp>

namespace qlproto::sql {

namespace {

using Json = nlohmann::json;

/// What is left of rounding in the engine, whose times may be of microseconds.
constexpr int64_t MICROSECOND = 1000;

constexpr std::string_view UNDERSTOOD[] = {"COLUMN_REF", "CONSTANT", "FUNCTION", "COMPARISON", "CONJUNCTION",
                                           "CAST",       "OPERATOR", "CASE",     "BETWEEN",    "WINDOW",
                                           "SUBQUERY",   "LAMBDA",   "COLLATE"};
constexpr std::string_view UNDERSTOOD_SOURCES[] = {"BASE_TABLE", "JOIN", "SUBQUERY", "EMPTY", "EXPRESSION_LIST"};
constexpr std::string_view HARMLESS_FUNCTIONS[] = {"unnest", "range", "generate_series"};

bool isOneOf(const std::string& text, auto&& all) { return std::ranges::find(all, text) != std::end(all); }

std::string textOf(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

/// A sentinel stands beside its price.
bool isSame(const std::string& inStatement, std::string_view field) {
    const std::string name = inSmallLetters(field);
    return inStatement == name || inStatement == name + "_sentinel";
}

} // namespace

std::string inSmallLetters(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return result;
}

class Needs::Search {
  public:
    Search(Needs& needs, const std::function<int64_t(const std::string&)>& timeOf) : _needs(needs), _timeOf(timeOf) {}

    /// Visits parents before what is in them. The syntax nests as deeply as the engine lets statements do.
    void walk(const Json& it) {
        if (it.is_object()) look(it);
        if (it.is_structured())
            for (const Json& inner : it) walk(inner);
    }

    /// Whether all was understood.
    bool isUnderstood(const std::function<bool(const std::string&)>& isTable) const {
        const auto isWholeRow = [&](const auto& names) {
            return _tables.contains(names.back()) || _aliases.contains(names.back());
        };
        return _isUnderstood && std::ranges::none_of(_needs._names, isWholeRow)
               && std::ranges::all_of(_tables, [&](const auto& it) { return isTable(it) || _subqueries.contains(it); });
    }

  private:
    void look(const Json& it) {
        const std::string expression = textOf(it, "class");
        if (!expression.empty())
            _isUnderstood &= isOneOf(expression, UNDERSTOOD);
        else if (it.contains("select_list"))
            lookAtSelect(it);
        else if (it.contains("sample"))
            lookAtSource(it);
        else if (it.contains("key") && it.contains("value"))
            _subqueries.insert(inSmallLetters(textOf(it, "key")));
        if (expression == "COLUMN_REF") _needs._names.push_back(namesOf(it));
    }

    void lookAtSource(const Json& it) {
        const std::string type = textOf(it, "type");
        const bool isHarmless = type == "TABLE_FUNCTION" && it.contains("function")
                                && isOneOf(textOf(it["function"], "function_name"), HARMLESS_FUNCTIONS);
        _isUnderstood &= isHarmless || isOneOf(type, UNDERSTOOD_SOURCES);
        // Columns by other names, or by none.
        for (const char* key : {"column_name_alias", "using_columns"})
            _isUnderstood &= !it.contains(key) || it[key].empty();
        _isUnderstood &= textOf(it, "ref_type") != "NATURAL";
        if (type != "BASE_TABLE") return;
        const std::string name = inSmallLetters(textOf(it, "table_name"));
        _tables.insert(name);
        _aliases.insert(inSmallLetters(textOf(it, "alias")));
        const auto bounds = _bounds.find(&it);
        const Times times = bounds != _bounds.end() ? bounds->second : Times();
        const auto [known, isFirst] = _needs._times.emplace(name, times);
        if (isFirst) return;
        known->second.from = std::min(known->second.from, times.from);
        known->second.to = std::max(known->second.to, times.to);
    }

    /// Of one table: the times that its condition leaves. Of joins none, where a row that is missing can let another one in.
    void lookAtSelect(const Json& select) {
        const Json& source = select.at("from_table");
        if (textOf(source, "type") != "BASE_TABLE" || !select.at("where_clause").is_object()) return;
        Times times;
        narrow(select["where_clause"], source, times);
        _bounds.emplace(&source, times);
    }

    void narrow(const Json& condition, const Json& source, Times& times) const {
        const std::string type = textOf(condition, "type");
        if (type == "CONJUNCTION_AND") {
            for (const Json& child : condition.at("children")) narrow(child, source, times);
        } else if (type == "COMPARE_BETWEEN" && isTime(condition.at("input"), source)) {
            bound(times, 1, timeIn(condition.at("lower")));
            bound(times, -1, timeIn(condition.at("upper")));
        } else if (type.starts_with("COMPARE_") && condition.contains("left")) {
            const int direction = type.starts_with("COMPARE_GREATER") ? 1 : type.starts_with("COMPARE_LESS") ? -1 : 0;
            if (direction == 0 && type != "COMPARE_EQUAL") return;
            if (isTime(condition["left"], source)) bound(times, direction, timeIn(condition["right"]));
            if (isTime(condition["right"], source)) bound(times, -direction, timeIn(condition["left"]));
        }
    }

    /// The time is at least (1), at most (-1) or exactly (0) that.
    static void bound(Times& times, int direction, std::optional<int64_t> time) {
        if (!time) return;
        if (direction >= 0) times.from = std::max(times.from, std::max(*time, INT64_MIN + MICROSECOND) - MICROSECOND);
        if (direction <= 0) times.to = std::min(times.to, std::min(*time, INT64_MAX - MICROSECOND) + MICROSECOND);
    }

    /// Whether it is the time of the packets of that table.
    static bool isTime(const Json& expression, const Json& source) {
        if (textOf(expression, "class") != "COLUMN_REF") return false;
        const std::vector<std::string> names = namesOf(expression);
        const std::string table = inSmallLetters(textOf(source, "table_name"));
        const std::string alias = inSmallLetters(textOf(source, "alias"));
        if (names.size() > 2 || names.back() != (table == "messages" ? "time" : "_time")) return false;
        return names.size() == 1 || names[0] == (alias.empty() ? table : alias);
    }

    std::optional<int64_t> timeIn(const Json& expression) const {
        const Json* constant = &expression;
        if (textOf(expression, "type") == "OPERATOR_CAST") {
            const std::string to = textOf(expression.at("cast_type"), "id");
            if (to != "DATE" && to != "TIMESTAMP" && to != "TIMESTAMP_NS") return std::nullopt;
            constant = &expression.at("child");
        }
        if (textOf(*constant, "class") != "CONSTANT") return std::nullopt;
        const std::string text = textOf(constant->at("value"), "value");
        try {
            return text.empty() ? std::nullopt : std::optional(_timeOf(text));
        } catch (const std::exception&) {
            return std::nullopt; // the engine will say what is wrong with it
        }
    }

    static std::vector<std::string> namesOf(const Json& column) {
        std::vector<std::string> names;
        for (const Json& name : column.at("column_names")) names.push_back(inSmallLetters(name.get<std::string>()));
        return names;
    }

    Needs& _needs;
    const std::function<int64_t(const std::string&)>& _timeOf;
    bool _isUnderstood = true;
    std::set<std::string> _tables, _aliases, _subqueries;
    std::map<const Json*, Times> _bounds; ///< of sources
};

Needs::Needs(std::string_view syntax, const std::function<bool(const std::string&)>& isTable,
             const std::function<int64_t(const std::string&)>& timeOf) {
    try {
        const Json statements = Json::parse(syntax);
        if (statements.value("error", true)) return; // no SELECT
        Search search(*this, timeOf);
        search.walk(statements.at("statements"));
        _isAll = !search.isUnderstood(isTable);
    } catch (const Json::exception&) {
        _isAll = true; // another version of the engine has another syntax
    }
}

bool Needs::reads(Inspect::Path path) const {
    if (_isAll || path.size() == 1) return true;
    // A record is needed whole where a name ends with it, and otherwise what is named in it.
    return std::ranges::any_of(_names, [&](const std::vector<std::string>& names) {
        for (size_t begin = 0; begin < names.size(); ++begin) {
            const size_t both = std::min(names.size() - begin, path.size());
            size_t i = 0;
            while (i < both && isSame(names[begin + i], path[i].name)) ++i;
            if (i == both) return true;
        }
        return false;
    });
}

Needs::Times Needs::timesOf(const std::string& table) const {
    const auto found = _times.find(inSmallLetters(table));
    return _isAll || found == _times.end() ? Times() : found->second;
}

} // namespace qlproto::sql
