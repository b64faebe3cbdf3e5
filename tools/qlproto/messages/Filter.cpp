#include "tools/qlproto/messages/Filter.h"

#include <algorithm>
#include <charconv>
#include <span>

#include <fmt/format.h>
#include <fnmatch.h>

#include "Backend/Velmora/Wire.h"
#include "Capture/Verification.h"
#include "Inspect/Reflection.h"
#include "Inspect/SizeWalk.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/messages/Names.h"

namespace qlproto {

namespace {

/// What a value of that kind can be on the wire, in which an enumerator has one byte.
std::pair<int64_t, int64_t> rangeOf(Inspect::Kind kind) {
    using enum Inspect::Kind;
    switch (kind) {
    case boolean:
        return {0, 1};
    case enumeration:
    case uint8:
        return {0, UINT8_MAX};
    case int8:
        return {INT8_MIN, INT8_MAX};
    case int16:
        return {INT16_MIN, INT16_MAX};
    case uint16:
    case uint16Fixed:
        return {0, UINT16_MAX};
    case int32:
        return {INT32_MIN, INT32_MAX};
    case uint32:
    case uint32Fixed:
        return {0, UINT32_MAX};
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

/// The field at the path, which is one of the type's.
const Inspect::FieldInfo* fieldAt(const Inspect::TypeInfo& type, Inspect::Path path) {
    const Inspect::TypeInfo* record = &type;
    const Inspect::FieldInfo* found = nullptr;
    for (const Inspect::PathPiece& piece : path) {
        if (piece.name.empty()) continue;
        found = &*std::ranges::find(record->fields, piece.name, &Inspect::FieldInfo::name);
        record = found->value.element != nullptr ? found->value.element->record : found->value.record;
    }
    return found;
}

/// `text` times `scale`, which is a power of ten, if that is a whole number.
std::optional<int64_t> scaled(std::string_view text, int64_t scale) {
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string digits(text.substr(0, point));
    for (std::size_t i = point + 1; i < text.size(); ++i, scale /= 10) {
        if (scale == 1) return std::nullopt;
        digits += text[i];
    }
    if (point + 1 == text.size()) return std::nullopt;
    for (; scale > 1; scale /= 10) digits += '0';
    return digits.starts_with("0x") ? std::nullopt : numberIn<int64_t>(digits);
}

/// Whether the text is of the pattern, in which * stands for any characters and ? for one. Linear but for patterns with
/// several *.
bool isLike(std::string_view text, std::string_view pattern) {
    std::size_t at = 0, star = pattern.npos, retry = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            retry = i;
        } else if (at < pattern.size() && (pattern[at] == '?' || pattern[at] == text[i])) {
            ++at;
            ++i;
        } else if (star != pattern.npos) {
            at = star + 1;
            i = ++retry;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', at) == pattern.npos;
}

} // namespace

// --- conditions on values

/// Looks for what the condition is about, and for what it would have to be about to be meant.
class Condition::Search {
  public:
    explicit Search(Condition& condition) : _condition(condition) {}

    void add(const Inspect::TypeInfo& message) {
        _condition._values.emplace_back(message, [&](Inspect::Path path, const Inspect::ValueInfo& value) {
            if (value.kind == Inspect::Kind::vector || !_condition._path.isEndOf(path)) return false;
            isField = true;
            hasPrices |= value.kind == Inspect::Kind::price;
            hasTexts |= Inspect::is_bytes(value.kind);
            if (value.enumeration != nullptr) note(*value.enumeration);
            const bool isMeant_ = _condition.canMeet(value, !fieldAt(message, path)->station.empty());
            isMeant |= isMeant_;
            return isMeant_;
        });
    }

    bool isField = false, isMeant = false, hasPrices = false, hasTexts = false;
    const Inspect::EnumerationInfo* enumeration = nullptr; ///< of a field that it is about

  private:
    void note(const Inspect::EnumerationInfo& it) {
        enumeration = &it;
        auto& known = _condition._enumerators;
        for (const Inspect::EnumeratorInfo& enumerator : it.enumerators)
            if (enumerator.name == _condition._operand
                && std::ranges::find(known, &it, [](auto& pair) { return pair.first; }) == known.end())
                known.emplace_back(&it, enumerator.value & UINT8_MAX); // all of it that travels
    }

    Condition& _condition;
};

Condition::Condition(const std::string& text, TimeForm time, int64_t priceScale) {
    parse(text);
    if (!isText()) {
        _number = numberIn<int64_t>(_operand);
        _unsigned = numberIn<uint64_t>(_operand);
        _price = priceScale == 1 ? _number : scaled(_operand, priceScale);
        if (!_number) _time = parseTime(_operand, time);
        double real = 0;
        const char* const end = _operand.data() + _operand.size();
        if (const auto [last, error] = std::from_chars(_operand.data(), end, real); error == std::errc() && last == end)
            _real = real;
        for (const int64_t sentinel : {Velmora::MAX, Velmora::NMA, Velmora::NDA, Velmora::NA})
            if (_operand == Velmora::sentinelName(sentinel)) _sentinel = sentinel;
    }

    if (const std::string name = text.substr(0, text.find_first_of("=!<>~")); PacketValue::isName(name)) {
        _ofPacket.emplace(name);
        if (_ofPacket->isNumber() && !_unsigned)
            throw FilterError(fmt::format("{}: {} is no value of that field", text, _operand));
        return;
    }

    // A field or an enumerator misspelt would match nothing, and nobody would know why.
    Search search(*this);
    for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol)) search.add(*message.type);
    const std::string path = text.substr(0, text.find_first_of("=!<>~"));
    if (!search.isField) throw FilterError(fmt::format("{}: {}", text, noSuchField(path)));
    if (search.isMeant) return;
    if (isText()) throw FilterError(fmt::format("{}: {} holds no text", text, path));
    if (search.enumeration != nullptr)
        throw FilterError(fmt::format("{}: {}", text, noSuchEnumerator(*search.enumeration, _operand)));
    if (search.hasPrices && _real)
        throw FilterError(fmt::format("{}: no price has such a fraction; --price-scale tells the scale", text));
    throw FilterError(fmt::format("{}: {} is no value of that field", text, _operand));
}

void Condition::parse(const std::string& text) {
    constexpr std::string_view signs = "=!<>~";
    const std::size_t at = text.find_first_of(signs);
    // What follows "~" or "=" can begin like a sign.
    constexpr std::pair<std::string_view, Relation> relations[] = {
        {"==", Relation::equal},       {"=", Relation::equal},   {"!=", Relation::unequal},
        {"<=", Relation::lessOrEqual}, {"<", Relation::less},    {">=", Relation::greaterOrEqual},
        {">", Relation::greater},      {"!~", Relation::unlike}, {"~", Relation::like}};
    const std::string_view rest = at == text.npos ? "" : std::string_view(text).substr(at);
    const auto found = std::ranges::find_if(relations, [&](const auto& it) { return rest.starts_with(it.first); });
    if (found == std::end(relations) || at == 0
        || (found->second != Relation::like && found->second != Relation::unlike && rest.size() > found->first.size()
            && signs.find(rest[found->first.size()]) != signs.npos))
        throw FilterError(fmt::format("{}: not of the form FIELD=VALUE (or !=, <, <=, >, >=, ~, !~)", text));
    _relation = found->second;
    _path = FieldPath(text.substr(0, at));
    _operand = rest.substr(found->first.size());
}

/// Whether a value of that kind can meet the condition.
bool Condition::canMeet(const Inspect::ValueInfo& value, bool isTime) const {
    if (Inspect::is_bytes(value.kind)) return true;
    if (isText()) return false;
    if (Inspect::is_floating(value.kind)) return _real.has_value();
    if (value.kind == Inspect::Kind::uint64) return _unsigned.has_value();
    const bool isDate = _time && !_number;
    return (!isDate || isTime || value.kind == Inspect::Kind::price) && operand(value.kind, value.enumeration);
}

/// The operand as a value of that kind.
std::optional<int64_t> Condition::operand(Inspect::Kind kind, const Inspect::EnumerationInfo* enumeration) const {
    if (kind == Inspect::Kind::enumeration)
        for (const auto& [known, value] : _enumerators)
            if (known == enumeration) return value;
    if (kind == Inspect::Kind::boolean) {
        if (_operand == "true" || _operand == "T") return 1;
        if (_operand == "false" || _operand == "F") return 0;
    }
    if (_sentinel && isQuantity(kind)) return _sentinel;
    if (kind == Inspect::Kind::price) return _price;
    const std::optional<int64_t> number =
        _number || (kind != Inspect::Kind::int64 && kind != Inspect::Kind::int64Fixed) ? _number : _time;
    const auto [least, most] = rangeOf(kind);
    return number >= least && number <= most ? number : std::nullopt;
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
    case Relation::like:
    case Relation::unlike:
        break; // of texts alone
    }
    return false;
}

bool Condition::holds(const Inspect::Value& value) const {
    if (isText() && value.is_text()) {
        const bool isPattern = _operand.find_first_of("*?") != _operand.npos;
        const bool has = isPattern ? isLike(value.text, _operand) : value.text.find(_operand) != value.text.npos;
        return has == (_relation == Relation::like);
    }
    if (value.is_text()) return compare<std::string_view>(value.text, _operand);
    if (Inspect::is_floating(value.kind)) return _real && compare(value.real, *_real);
    if (value.kind == Inspect::Kind::uint64)
        return _unsigned && compare(static_cast<uint64_t>(value.number), *_unsigned);
    const std::optional<int64_t> number = operand(value.kind, value.enumeration);
    if (!number) return false;
    // Sentinels stand for something that is no number, though they travel as the greatest ones.
    const bool isOrder = _relation != Relation::equal && _relation != Relation::unequal;
    if (isOrder && isQuantity(value.kind) && (!Velmora::sentinelName(value.number).empty() || _sentinel)) return false;
    return compare(value.number, *number);
}

bool Condition::holdsForPacket(const Capture::Packet& packet) const {
    if (!_ofPacket) return true;
    std::string room;
    const std::optional<Inspect::Value> value = _ofPacket->of(packet, room);
    return value && holds(*value);
}

// --- all together

Filter::Filter(const ScanOptions& options) : _policy(options.policy), _form(options.time) {
    for (const std::string& name : options.names)
        if (name.find_first_of("*?[") == name.npos && findMessage(name) == nullptr)
            throw FilterError(noSuchMessage(name));
    for (const std::string& condition : options.where)
        _where.emplace_back(condition, options.time, options.display.priceScale);
    const std::span<const Inspect::MessageInfo> messages = Inspect::all_messages(thisTool.protocol);
    for (std::size_t i = 0; i < messages.size(); ++i) {
        const Inspect::MessageInfo& message = messages[i];
        const std::string name(message.type->name);
        const auto isAny = [](const std::vector<std::string>& alternatives, auto holds) {
            return alternatives.empty() || std::any_of(alternatives.begin(), alternatives.end(), holds);
        };
        _isTaken.push_back(
            isAny(options.names, [&](const std::string& it) { return fnmatch(it.c_str(), name.c_str(), 0) == 0; })
            && isAny(options.families, [&](const std::string& it) { return familyOf(message.id) == it; })
            && isAny(options.ids, [&](const std::string& it) { return findMessage(it) == &message; })
            && std::ranges::none_of(
                _where, [&](const Condition& it) { return !it.values().empty() && it.values()[i].isEmpty(); }));
    }
    if (!options.from.empty() && !(_fromClock = parseClock(options.from)))
        _from = parseTime(options.from, options.time).value();
    if (!options.to.empty() && !(_toClock = parseClock(options.to))) _to = parseTime(options.to, options.time).value();
    _takesAll = options.from.empty() && options.to.empty() && _where.empty()
                && std::ranges::find(_isTaken, false) == _isTaken.end();
}

void Filter::beginAt(int64_t time) {
    if (_fromClock) _from = atClock(time, *_fromClock, _form);
    if (_toClock) _to = atClock(time, *_toClock, _form, _fromClock > _toClock ? 1 : 0); // past midnight
}

bool Filter::mayTake(int64_t earliest, int64_t latest, const std::vector<bool>& messages) const {
    if (earliest > _to || latest < _from) return false;
    for (std::size_t i = 0; i < messages.size(); ++i)
        if (messages[i] && _isTaken[i]) return true;
    return false;
}

bool Filter::takes(const Capture::Packet& packet) const {
    if (_takesAll || packet.bytes.size() < Capture::IDENTIFIER_SIZE) return true;
    const Velmora::MsgType_t id = Capture::identifierOf(packet.bytes);
    const Inspect::detail::IdIndex::Slot* const slot = thisTool.protocol.index.find(id);
    if (slot == nullptr) return true;
    if (!_isTaken[slot->index] || packet.time < _from || packet.time > _to) return false;
    if (!std::ranges::all_of(_where, [&](const Condition& it) { return it.holdsForPacket(packet); })) return false;
    const std::string_view body = packet.bytes.substr(Capture::IDENTIFIER_SIZE);
    if (meetsAll(body, slot->index)) return true;
    // What reads as zero, or is read of a pad, is not in the body.
    const bool isPad = Capture::isPad(thisTool.protocol, id);
    if (!_policy.missingLastFields && !isPad) return false;
    const std::size_t zeros =
        isPad ? Inspect::MAX_TEXT : Capture::verifyBody(thisTool.protocol, id, body, _policy).missing;
    return zeros != 0 && meetsAll(std::string(body).append(zeros, '\0'), slot->index);
}

bool Filter::meetsAll(std::string_view body, std::size_t index) const {
    return std::ranges::all_of(_where, [&](const Condition& condition) {
        return condition.values().empty() || condition.values()[index].read(body, [&](const Inspect::Value& it) {
            return !condition.holds(it);
        }) == Inspect::Selection::Outcome::stopped;
    });
}

} // namespace qlproto
