#include "Columns/Table.h"

#include <algorithm>

#include "Backend/Velmora/Wire.h"

namespace Columns {

using Inspect::FieldInfo;
using Inspect::Kind;
using Inspect::TypeInfo;
using Inspect::ValueInfo;

namespace {

constexpr const char* TIMESTAMP = "tsn:"; // in nanoseconds, without a zone

constexpr ValueInfo TEXT{.kind = Kind::string}, WORD{.kind = Kind::enumeration};

Inspect::Selection chosen(const TypeInfo& type, const Options& options) {
    if (!options.takes) return {type, [](Inspect::Path, const ValueInfo&) { return true; }};
    return {type, [&](Inspect::Path path, const ValueInfo&) {
                // What a vector holds is taken with it.
                const auto element = std::ranges::find_if(path, [](const auto& piece) { return piece.name.empty(); });
                return options.takes(path.first(static_cast<size_t>(element - path.begin())));
            }};
}

bool isTime(const FieldInfo& field) { return !field.station.empty() && field.value.kind == Kind::int64; }

} // namespace

Table::Table(Velmora::MsgType_t id, const TypeInfo& type, const Options& options)
    : _id(id),
      _options(options),
      _table("", ValueInfo{.kind = Kind::record, .record = &type}),
      _values(chosen(type, options)) {
    const auto isTaken = [&](std::string_view name) {
        const Inspect::PathPiece piece{name};
        return !_options.takes || _options.takes({&piece, 1});
    };
    const auto inFront = [&](const char* name, const auto&... how) {
        const bool isThere = isTaken(name);
        if (isThere) _table.within(Column(name, how...));
        return isThere;
    };
    const bool hasPacket = inFront("_packet", "L"), hasTime = inFront("_time", TIMESTAMP), hasId = inFront("_id", "S"),
               hasCapture = !options.captures.empty() && inFront("_capture", WORD);
    if (options.hasConnections) _connection.addTo(_table, "_", isTaken);
    for (const FieldInfo& field : type.fields)
        if (takes(field)) addColumn(_table, field);
    // Now they stay where they are.
    size_t at = 0;
    const auto next = [&](bool isThere) { return isThere ? &_table.columns()[at++] : nullptr; };
    _packet = next(hasPacket);
    _time = next(hasTime);
    _identifier = next(hasId);
    _capture = next(hasCapture);
    at += _connection.count();
    for (const FieldInfo& field : type.fields)
        if (takes(field)) plan(_table.columns(), at, field, false);
}

/// Whether the field, which stands in the record at hand, becomes a column.
bool Table::takes(const FieldInfo& field) {
    if (!_options.takes || _vectors != 0) return true;
    _path.push_back({field.name});
    const bool isTaken =
        field.value.kind == Kind::record
            ? std::ranges::any_of(field.value.record->fields, [&](const auto& it) { return takes(it); })
            : _options.takes(_path);
    _path.pop_back();
    return isTaken;
}

/// The column of a field, with all within that is taken; of a price followed by that of its sentinels.
void Table::addColumn(Column& to, const FieldInfo& field) {
    const std::string name(field.name);
    const std::function<void(Column&, const ValueInfo&)> fill = [&](Column& column, const ValueInfo& value) {
        if (value.kind == Kind::record) {
            for (const FieldInfo& inner : value.record->fields)
                if (takes(inner)) addColumn(column, inner);
        } else if (value.kind == Kind::vector) {
            ++_vectors;
            fill(column.within(Column("item", *value.element, _options.decimals)), *value.element);
            --_vectors;
        }
    };
    _path.push_back({field.name});
    fill(to.within(isTime(field) ? Column(name, TIMESTAMP) : Column(name, field.value, _options.decimals)),
         field.value);
    _path.pop_back();
    if (field.value.kind == Kind::price) to.within(Column(name + "_sentinel", TEXT));
}

/// Plans what fills the columns of a field, which stand from `at` on. The columns must not move any more.
void Table::plan(std::vector<Column>& columns, size_t& at, const FieldInfo& field, bool isSecret) {
    Column& column = columns[at++];
    Column* const sentinel = field.value.kind == Kind::price ? &columns[at++] : nullptr;
    _path.push_back({field.name});
    plan(column, sentinel, field.value, field, field.is_secret_in(isSecret));
    _path.pop_back();
}

void Table::plan(Column& column, Column* sentinel, const ValueInfo& value, const FieldInfo& field, bool isSecret) {
    using enum Target::Kind;
    if (value.kind == Kind::record) {
        size_t at = 0;
        for (const FieldInfo& inner : value.record->fields)
            if (takes(inner)) plan(column.columns(), at, inner, isSecret);
        return;
    }
    Target target{.kind = number, .column = &column, .sentinel = sentinel};
    if (value.kind == Kind::vector)
        target.kind = vector;
    else if (isSecret && !_options.showsSecrets)
        target.kind = secret;
    else if (isTime(field))
        target.kind = time;
    else if (Inspect::is_bytes(value.kind))
        target.kind = text;
    else if (Inspect::is_floating(value.kind))
        target.kind = real;
    else if (value.kind == Kind::enumeration)
        target.kind = word;
    else if (sentinel != nullptr)
        target.kind = price;
    _targets.push_back(target);
    if (value.kind != Kind::vector) return;
    ++_vectors;
    plan(column.columns()[0], nullptr, *value.element, field, isSecret);
    --_vectors;
}

/// Puts the values of one body into the columns, as they come.
struct Table::Filling {
    const Target* const targets;

    QL_FORCE_INLINE void number(size_t i, int64_t value) const {
        const Target& to = targets[i];
        switch (to.kind) {
        case Target::Kind::word:
            return to.column->enumerator(value);
        case Target::Kind::time:
            return value != 0 ? to.column->number(value) : to.column->null();
        case Target::Kind::price:
            if (const std::string_view name = Velmora::sentinelName(value); !name.empty()) return sentinel(to, name);
            return to.column->number(value);
        case Target::Kind::secret:
            return to.column->null();
        default:
            return to.column->number(value);
        }
    }
    void real(size_t i, double value) const {
        const Target& to = targets[i];
        to.kind == Target::Kind::secret ? to.column->null() : to.column->real(value);
    }
    void text(size_t i, std::string_view bytes) const {
        const Target& to = targets[i];
        to.kind == Target::Kind::secret ? to.column->null() : to.column->text(bytes);
    }
    void elements(size_t i, size_t count) const { targets[i].column->elements(count); }

    /// Columns of sentinels, nearly all null, are filled up to where one is.
    static void sentinel(const Target& to, std::string_view name) {
        to.sentinel->nullsUpTo(to.column->length());
        to.sentinel->text(name);
        to.column->null();
    }
};

void Table::add(const Origin& origin, std::string_view body) {
    if (_packet != nullptr) _packet->number(static_cast<int64_t>(origin.packet));
    if (_time != nullptr) _time->number(origin.time);
    if (_identifier != nullptr) _identifier->number(_id);
    if (_capture != nullptr) _capture->word(origin.capture, _options.captures[origin.capture]);
    _connection.row(origin.connection);
    _values.pour(body, Filling{_targets.data()});
    _table.row();
}

} // namespace Columns
