#include "tools/qlproto/messages/Filter.h"

#include <algorithm>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fnmatch.h>

#include "Backend/Velmora/Wire.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

namespace {

/// What a value of that kind can be on the wire, in which an enumerator has one byte.
std::pair<int64_t, int64_t> rangeOf(Inspect::Kind kind) {
    using enum Inspect::Kind;
    switch (kind) {
    case boolean:
        return {0, 1};
    case enumeration:
        return {0, UINT8_MAX};
    case int8:
        return {INT8_MIN, INT8_MAX};
    case int16:
        return {INT16_MIN, INT16_MAX};
    case int32:
        return {INT32_MIN, INT32_MAX};
    default:
        return {INT64_MIN, INT64_MAX};
    }
}

/// The family of that message; empty for an identifier that belongs to none.
std::string_view familyOf(Velmora::MsgType_t id) {
    for (const Family& family : thisTool.families)
        if (family.highByte == id >> 8) return family.name;
    return {};
}

bool isQuantity(Inspect::Kind kind) { return kind == Inspect::Kind::int64 || kind == Inspect::Kind::price; }

/// Calls `visit(path, value)` for every kind of value that a message can hold, as if each vector had one element; true
/// as soon as one call is.
template <class Visit>
bool anyValue(const Inspect::ValueInfo& info, std::vector<Inspect::PathPiece>& path, Visit&& visit) {
    if (info.kind == Inspect::Kind::record) {
        for (const Inspect::FieldInfo& field : info.record->fields) {
            path.push_back({field.name});
            const bool isFound = anyValue(field.value, path, visit);
            path.pop_back();
            if (isFound) return true;
        }
        return false;
    }
    if (info.kind != Inspect::Kind::vector) return visit(path, info);
    path.push_back({});
    const bool isFound = anyValue(*info.element, path, visit);
    path.pop_back();
    return isFound;
}

} // namespace

// --- conditions on values

Condition::Condition(const std::string& text) {
    const std::size_t at = text.find_first_of("=!<>");
    const std::size_t afterSign = std::min(text.find_first_not_of("=!<>", at), text.size());
    const std::string sign = at == text.npos ? "" : text.substr(at, afterSign - at);
    constexpr std::pair<const char*, Relation> relations[] = {
        {"=", Relation::equal},   {"==", Relation::equal},       {"!=", Relation::unequal},       {"<", Relation::less},
        {">", Relation::greater}, {"<=", Relation::lessOrEqual}, {">=", Relation::greaterOrEqual}};
    const auto found = std::find_if(std::begin(relations), std::end(relations),
                                    [&](const auto& relation) { return sign == relation.first; });
    if (found == std::end(relations) || at == 0)
        throw FilterError(fmt::format("{}: not of the form FIELD=VALUE (or !=, <, <=, >, >=)", text));
    _relation = found->second;
    _path = CLI::detail::split(text.substr(0, at), '.');
    _operand = text.substr(afterSign);
    _number = numberIn<int64_t>(_operand);
    for (const int64_t sentinel : {Velmora::MAX, Velmora::NMA, Velmora::NDA, Velmora::NA})
        if (_operand == Velmora::sentinelName(sentinel)) _sentinel = sentinel;

    // A field or an enumerator misspelt would match nothing, and nobody would know why.
    bool isField = false;
    std::vector<Inspect::PathPiece> path;
    const bool isMeant =
        std::any_of(Inspect::all_messages(thisTool.protocol).begin(), Inspect::all_messages(thisTool.protocol).end(),
                    [&](const Inspect::MessageInfo& message) {
                        const Inspect::ValueInfo whole{.kind = Inspect::Kind::record, .record = message.type};
                        return anyValue(whole, path, [&](Inspect::Path at_, const Inspect::ValueInfo& info) {
                            if (!concerns(at_)) return false;
                            isField = true;
                            const Inspect::Value value{.kind = info.kind, .text = {}, .enumeration = info.enumeration};
                            return value.is_text() || operand(value).has_value();
                        });
                    });
    if (!isField) throw FilterError(fmt::format("{}: {}", text, noSuchField(text.substr(0, at))));
    if (!isMeant) throw FilterError(fmt::format("{}: {} is no value of that field", text, _operand));
}

bool Condition::concerns(Inspect::Path path) const {
    auto piece = path.rbegin();
    for (auto name = _path.rbegin(); name != _path.rend(); ++name, ++piece) {
        while (piece != path.rend() && piece->name.empty()) ++piece; // elements have no names
        if (piece == path.rend() || piece->name != *name) return false;
    }
    return true;
}

/// The operand as a value of that kind.
std::optional<int64_t> Condition::operand(const Inspect::Value& value) const {
    if (value.kind == Inspect::Kind::enumeration)
        for (const Inspect::EnumeratorInfo& it : value.enumeration->enumerators)
            if (it.name == _operand) return it.value & UINT8_MAX; // all of it that travels
    if (value.kind == Inspect::Kind::boolean) {
        if (_operand == "true" || _operand == "T") return 1;
        if (_operand == "false" || _operand == "F") return 0;
    }
    if (_sentinel && isQuantity(value.kind)) return _sentinel;
    const auto [least, most] = rangeOf(value.kind);
    return _number >= least && _number <= most ? _number : std::nullopt;
}

template <class T>
bool Condition::compare(const T& left, const T& right) const {
    switch (_relation) {
    case Relation::equal:
        return left == right;
    case Relation::unequal:
        return left != right;
    case Relation::less:
        return left < right;
    case Relation::lessOrEqual:
        return left <= right;
    case Relation::greater:
        return left > right;
    case Relation::greaterOrEqual:
        return left >= right;
    }
    return false;
}

bool Condition::holds(const Inspect::Value& value) const {
    if (value.is_text()) return compare<std::string_view>(value.text, _operand);
    const std::optional<int64_t> number = operand(value);
    if (!number) return false;
    // Sentinels stand for something that is no number, though they travel as the greatest ones.
    const bool isOrder = _relation != Relation::equal && _relation != Relation::unequal;
    if (isOrder && isQuantity(value.kind) && (!Velmora::sentinelName(value.number).empty() || _sentinel)) return false;
    return compare(value.number, *number);
}

bool Condition::holds(Velmora::MsgType_t id, const void* message) const {
    struct Search : Inspect::ValueVisitor {
        explicit Search(const Condition& condition_) : condition(condition_) {}
        bool value(Inspect::Path path, const Inspect::Value& value) override {
            return !condition.concerns(path) || !condition.holds(value);
        }
        const Condition& condition;
    } search(*this);
    return !Inspect::walk_values(thisTool.protocol, id, message, search);
}

// --- all together

void Filter::addTo(CLI::App& command, Options& options) {
    command.add_option("--message", options.names, "Only messages of this name; * and ? stand for any characters")
        ->type_name(MESSAGE_VALUE);
    if (!thisTool.families.empty()) {
        std::vector<std::string> names;
        for (const Family& family : thisTool.families)
            if (std::find(names.begin(), names.end(), family.name) == names.end()) names.emplace_back(family.name);
        command.add_option("--family", options.families, "Only messages of this family")
            ->check(CLI::IsMember(names))
            ->allow_extra_args(false);
    }
    command.add_option("--id", options.ids, "Only messages of this identifier, decimal or 0x...")
        ->check(isIdentifier());
    command
        .add_option("--where", options.where,
                    "Only messages with such a value: FIELD=VALUE, also !=, <, <=, >, >=; FIELD is a name or a path "
                    "with dots, VALUE a number, a name or a text")
        ->type_name("CONDITION");
    const CLI::Validator isTime(
        [](std::string& text) {
            if (parseTime(text)) return std::string();
            return fmt::format("'{}' is not a time; write 1709535600.5 or 2024-03-04T07:00:00.5", text);
        },
        "TIME");
    command.add_option("--from", options.from, "Only from this time on: seconds since 1970 or UTC")->check(isTime);
    command.add_option("--to", options.to, "Only up to this time")->check(isTime);
    // Each takes one value, so that what follows is not taken for another one.
    for (const char* name : {"--message", "--id", "--where"}) command.get_option(name)->allow_extra_args(false);
}

Filter::Filter(const Options& options) {
    _isTaken.fill(false);
    for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol)) {
        const std::string name(message.type->name);
        const auto isAny = [](const std::vector<std::string>& alternatives, auto holds) {
            return alternatives.empty() || std::any_of(alternatives.begin(), alternatives.end(), holds);
        };
        _isTaken[message.id] =
            isAny(options.names, [&](const std::string& it) { return fnmatch(it.c_str(), name.c_str(), 0) == 0; })
            && isAny(options.families, [&](const std::string& it) { return familyOf(message.id) == it; })
            && isAny(options.ids, [&](const std::string& it) { return findMessage(it) == &message; });
    }
    for (const std::string& name : options.names)
        if (name.find_first_of("*?[") == name.npos && findMessage(name) == nullptr)
            throw FilterError(noSuchMessage(name));
    for (const std::string& condition : options.where) _where.emplace_back(condition);
    if (!options.from.empty()) _from = parseTime(options.from).value();
    if (!options.to.empty()) _to = parseTime(options.to).value();
}

bool Filter::takes(const Capture::Packet& packet, const MessageReader& reader) const {
    const Velmora::MsgType_t id = reader.descriptor().id();
    return _isTaken[id] && packet.time >= _from && packet.time <= _to
           && std::all_of(_where.begin(), _where.end(),
                          [&](const Condition& it) { return it.holds(id, reader.message()); });
}

} // namespace qlproto
