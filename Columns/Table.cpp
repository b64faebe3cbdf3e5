#include "Columns/Table.h"

#include "Backend/Velmora/Wire.h"

namespace Columns {

using Inspect::FieldInfo;
using Inspect::Kind;
using Inspect::TypeInfo;
using Inspect::ValueInfo;

namespace {

constexpr const char* TIMESTAMP = "tsn:"; // in nanoseconds, without a zone

Inspect::Selection chosen(const TypeInfo& type, const Options& options) {
    return Inspect::Selection(
        type, [&](Inspect::Path path, const ValueInfo&) { return !options.takes || options.takes(path.front().name); });
}

bool isTime(const FieldInfo& field) { return !field.station.empty() && field.value.kind == Kind::int64; }

} // namespace

Table::Table(const TypeInfo& type, const Options& options)
    : _showsSecrets(options.showsSecrets),
      _table("", ValueInfo{.kind = Kind::record, .record = &type}),
      _values(chosen(type, options)) {
    _table.within(Column("_packet", "L"));
    _table.within(Column("_time", TIMESTAMP));
    std::vector<const FieldInfo*> taken;
    for (const FieldInfo& field : type.fields)
        if (!options.takes || options.takes(field.name)) {
            taken.push_back(&field);
            addColumn(_table, field);
        }
    size_t at = 2;
    for (const FieldInfo* field : taken) plan(_table.columns(), at, *field, false);
}

/// The column of a field, with all within; of a price followed by that of its sentinels.
void Table::addColumn(Column& to, const FieldInfo& field) {
    const std::string name(field.name);
    const std::function<void(Column&, const ValueInfo&)> fill = [&](Column& column, const ValueInfo& value) {
        if (value.kind == Kind::record)
            for (const FieldInfo& inner : value.record->fields) addColumn(column, inner);
        else if (value.kind == Kind::vector)
            fill(column.within(Column("item", *value.element)), *value.element);
    };
    fill(to.within(isTime(field) ? Column(name, TIMESTAMP) : Column(name, field.value)), field.value);
    if (field.value.kind == Kind::price) to.within(Column(name + "_sentinel", ValueInfo{.kind = Kind::string}));
}

/// Plans what fills the columns of a field, which stand from `at` on. The columns must not move any more.
void Table::plan(std::vector<Column>& columns, size_t& at, const FieldInfo& field, bool isSecret) {
    Column& column = columns[at++];
    Column* const sentinel = field.value.kind == Kind::price ? &columns[at++] : nullptr;
    plan(column, sentinel, field.value, field, field.is_secret_in(isSecret));
}

void Table::plan(Column& column, Column* sentinel, const ValueInfo& value, const FieldInfo& field, bool isSecret) {
    Step step{.kind = Step::Kind::value, .column = &column, .sentinel = sentinel};
    if (value.kind == Kind::vector) {
        const size_t begin = _steps.size();
        step.kind = Step::Kind::vector;
        _steps.push_back(step);
        plan(column.columns()[0], nullptr, *value.element, field, isSecret);
        _steps[begin].end = _steps.size();
        return;
    }
    if (value.kind == Kind::record) {
        size_t at = 0;
        for (const FieldInfo& inner : value.record->fields) plan(column.columns(), at, inner, isSecret);
        step.kind = Step::Kind::row;
    } else if (isSecret && !_showsSecrets) {
        step.kind = Step::Kind::secret;
    } else if (isTime(field)) {
        step.kind = Step::Kind::time;
    }
    _steps.push_back(step);
}

/// Puts the values of one body into the columns, as they come.
class Table::Filling {
  public:
    explicit Filling(const std::vector<Step>& steps) : _steps(steps) { settle(); }

    void take(const Inspect::Value& value) {
        const Step& step = _steps[_at++];
        switch (step.kind) {
        case Step::Kind::vector: {
            const auto count = static_cast<size_t>(value.number);
            step.column->elements(count);
            if (count == 0)
                _at = step.end;
            else
                _loops.push_back({_at, step.end, count});
            break;
        }
        case Step::Kind::secret:
            step.column->null();
            if (step.sentinel != nullptr) step.sentinel->null();
            break;
        case Step::Kind::time:
            value.number != 0 ? step.column->number(value.number) : step.column->null();
            break;
        default:
            put(step, value);
        }
        settle();
    }

  private:
    struct Loop {
        size_t begin, end;
        size_t left; ///< elements, the one at hand included
    };

    static void put(const Step& step, const Inspect::Value& value) {
        if (step.sentinel == nullptr) return step.column->value(value);
        const std::string_view name = Velmora::sentinelName(value.number);
        if (name.empty()) {
            step.column->value(value);
            step.sentinel->null();
        } else {
            step.column->null();
            step.sentinel->value({.kind = Kind::string, .text = name});
        }
    }

    /// Ends records and elements whose last value has come.
    void settle() {
        for (;;) {
            if (!_loops.empty() && _at == _loops.back().end) {
                if (--_loops.back().left != 0)
                    _at = _loops.back().begin;
                else
                    _loops.pop_back();
            } else if (_at != _steps.size() && _steps[_at].kind == Step::Kind::row) {
                _steps[_at++].column->row();
            } else {
                return;
            }
        }
    }

    const std::vector<Step>& _steps;
    size_t _at = 0;
    std::vector<Loop> _loops;
};

void Table::add(uint64_t packet, int64_t time, std::string_view body) {
    _table.columns()[0].number(static_cast<int64_t>(packet));
    _table.columns()[1].number(time);
    Filling filling(_steps);
    _values.read(body, [&](const Inspect::Value& value) {
        filling.take(value);
        return true;
    });
    _table.row();
}

} // namespace Columns
