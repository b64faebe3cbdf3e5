#include "generator/compare/Match.h"

#include <algorithm>
#include <map>
#include <set>

#include <fmt/format.h>

#include "generator/compare/Body.h"

namespace qlgen::compare {
namespace {

constexpr size_t NONE = static_cast<size_t>(-1);

/// Positions of a longest part of `sequence` that rises.
std::vector<size_t> longestRising(const std::vector<size_t>& sequence) {
    std::vector<size_t> tails, before(sequence.size(), NONE); // positions, by length of the part they end
    for (size_t i = 0; i < sequence.size(); ++i) {
        const auto at = std::ranges::lower_bound(tails, sequence[i], {}, [&](size_t tail) { return sequence[tail]; });
        if (at != tails.begin()) before[i] = *(at - 1);
        if (at == tails.end())
            tails.push_back(i);
        else
            *at = i;
    }
    std::vector<size_t> positions;
    for (size_t i = tails.empty() ? NONE : tails.back(); i != NONE; i = before[i]) positions.push_back(i);
    std::ranges::reverse(positions);
    return positions;
}

bool isSingle(const Type& type) { return !type.isVector && type.record == nullptr; }
bool isPadding(const Type& type) { return type.logical != nullptr && type.logical->form == WireForm::padding; }
bool isRecord(const Type& type) { return !type.isVector && type.record != nullptr; }

/// What is said of something that is deprecated in one of the definitions, or in both for different reasons.
std::string deprecationText(const std::string& is) { return is.empty() ? "no longer" : "now: " + is; }

/// The fields below one that hold a single value in the end, ".value" after ".value"; nothing if they hold more.
std::optional<std::string> pathToSingle(const Type& type) {
    if (isSingle(type)) return "";
    if (type.isVector || type.record->fields.size() != 1) return {};
    const FieldView& inner = type.record->fields.front();
    const auto rest = pathToSingle(inner.type);
    return rest ? std::optional('.' + inner.name + *rest) : std::nullopt;
}

/// Which of the two definitions' types are the same.
class Types {
  public:
    Types(const Model& oldModel, Model& newModel) : _old(oldModel), _new(newModel) {
        for (const EnumerationView& it : _old.enumerations)
            if (const EnumerationView* const same = _new.enumeration(it.name)) _pairs[&it] = same;
        for (const CompositeView& it : _old.records)
            if (const CompositeView* const same = _new.record(it.name)) _pairs[&it] = same;
    }

    bool areSame(const void* oldType, const void* newType) const {
        const auto found = _pairs.find(oldType);
        return found != _pairs.end() && found->second == newType;
    }
    const void* newOf(const void* oldType) const {
        const auto found = _pairs.find(oldType);
        return found == _pairs.end() ? nullptr : found->second;
    }
    bool isNew(const void* newType) const {
        return std::ranges::none_of(_pairs, [&](const auto& pair) { return pair.second == newType; });
    }

    /// Takes types for renamed ones where a field of both composites had the one and has the other. Whether some were.
    bool findRenamed(const CompositeView& before, const CompositeView& after) {
        bool found = false;
        for (const FieldView& field : after.fields) {
            const FieldView* const same = before.find(field.name);
            if (same == nullptr || same->type.isVector != field.type.isVector) continue;
            found |= pair(same->type.record, field.type.record) || pair(same->type.enumeration, field.type.enumeration);
        }
        return found;
    }

    /// The rule by which a field's type has changed; nothing if it has not.
    std::optional<Rule> change(const Type& before, const Type& after) const {
        if (before.isVector != after.isVector) return Rule::fieldRetyped;
        if (before.record != nullptr && after.record != nullptr) {
            if (areSame(before.record, after.record)) return {};
        } else if (before.enumeration != nullptr && after.enumeration != nullptr) {
            if (areSame(before.enumeration, after.enumeration)) return {};
        } else if (before.written == after.written) {
            return {};
        } else if (isSingle(before) && isSingle(after) && (isPadding(before) || isPadding(after))) {
            return Rule::paddingChanged;
        } else if (isSingle(before) && isRecord(after) && pathToSingle(after)) {
            return Rule::fieldWrapped;
        } else if (isRecord(before) && isSingle(after) && pathToSingle(before)) {
            return Rule::fieldInlined;
        }
        return before.isVector ? Rule::elementRetyped : Rule::fieldRetyped;
    }

  private:
    template <class View>
    bool pair(const View* before, const View* after) {
        if (before == nullptr || after == nullptr || newOf(before) != nullptr || !isNew(after)) return false;
        _pairs[before] = after;
        return true;
    }

    const Model& _old;
    Model& _new;
    std::map<const void*, const void*> _pairs;
};

/// Compares the fields of one record or message.
class Fields {
  public:
    Fields(const CompositeView& before, CompositeView& after, const Types& types, Model& newModel,
           std::vector<Change>& changes)
        : _old(before),
          _new(after),
          _types(types),
          _newModel(newModel),
          _changes(changes),
          _oldOf(after.fields.size(), NONE),
          _isOldTaken(before.fields.size(), false),
          _isNewTaken(after.fields.size(), false) {}

    void compare() {
        matchNames();
        for (size_t i = 0; i < _new.fields.size(); ++i) findWrapped(i);
        for (size_t i = 0; i < _old.fields.size(); ++i) findInlined(i);
        findRenamed();
        for (size_t i = 0; i < _new.fields.size(); ++i)
            if (!_isNewTaken[i]) add(i);
        for (size_t i = 0; i < _old.fields.size(); ++i)
            if (!_isOldTaken[i]) remove(i);
        compareOrder();
        for (size_t i = 0; i < _new.fields.size(); ++i)
            if (_oldOf[i] != NONE && !_isReplaced.contains(i)) {
                compareTypes(i);
                compareMarks(_old.fields[_oldOf[i]], _new.fields[i]);
            }
    }

  private:
    using List = std::vector<FieldView>;

    void report(Rule rule, const std::string& field, const std::string& details) {
        _changes.push_back({rule, _old.name + '.' + field, details, {}, nullptr, nullptr});
    }
    void report(Rule rule, const std::string& field, const std::string& details, List edited) {
        report(rule, field, details);
        Edit& edit = _changes.back().edit;
        edit.composite = &_old;
        edit.editedComposite = _old;
        edit.editedComposite.fields = std::move(edited);
    }

    void pair(size_t before, size_t after) {
        _oldOf[after] = before;
        _isOldTaken[before] = _isNewTaken[after] = true;
        _new.fields[after].identity = _old.fields[before].identity;
    }

    void matchNames() {
        for (size_t i = 0; i < _new.fields.size(); ++i)
            if (const FieldView* const same = _old.find(_new.fields[i].name))
                pair(static_cast<size_t>(same - _old.fields.data()), i);
    }

    /// Whether all fields of a record stand, with their types, among the fields of the other definition that have no
    /// partner yet; their positions there.
    template <class IsFree, class IsSame>
    static std::vector<size_t> positionsOf(const CompositeView& record, const CompositeView& among, IsFree isFree,
                                           IsSame isSame) {
        std::vector<size_t> positions;
        for (const FieldView& inner : record.fields) {
            const FieldView* const outer = among.find(inner.name);
            const auto at = static_cast<size_t>(outer - among.fields.data());
            if (outer == nullptr || !isFree(at) || !isSame(inner, *outer)) return {};
            positions.push_back(at);
        }
        return positions;
    }

    void findWrapped(size_t wrapper) {
        FieldView& field = _new.fields[wrapper];
        if (_isNewTaken[wrapper] || !isRecord(field.type)) return;
        const std::vector<size_t> positions = positionsOf(
            *field.type.record, _old, [&](size_t at) { return !_isOldTaken[at]; },
            [&](const FieldView& inner, const FieldView& outer) { return !_types.change(outer.type, inner.type); });
        if (positions.empty()) return;
        CompositeView& copy = _newModel.wrappers.emplace_back(*field.type.record);
        for (size_t i = 0; i < positions.size(); ++i) {
            copy.fields[i].identity = _old.fields[positions[i]].identity;
            _isOldTaken[positions[i]] = true;
        }
        field.type.record = &copy;
        field.identity = "";
        _isNewTaken[wrapper] = true;
        List list = _old.fields;
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::ranges::min(positions)), field);
        const std::set<std::string> inside = namesOf(copy.fields);
        std::erase_if(list, [&](const FieldView& it) { return inside.contains(it.identity); });
        report(Rule::fieldWrapped, _old.fields[positions.front()].name,
               fmt::format("{} in {}", positions.size() == 1 ? "is now" : "and others are now", field.name), list);
    }

    static std::set<std::string> namesOf(const List& fields) {
        std::set<std::string> names;
        for (const FieldView& it : fields) names.insert(it.identity);
        return names;
    }

    void findInlined(size_t wrapper) {
        const FieldView& field = _old.fields[wrapper];
        if (_isOldTaken[wrapper] || !isRecord(field.type)) return;
        std::vector<size_t> positions = positionsOf(
            *field.type.record, _new, [&](size_t at) { return !_isNewTaken[at]; },
            [&](const FieldView& inner, const FieldView& outer) { return !_types.change(inner.type, outer.type); });
        if (positions.empty()) return;
        List list = _old.fields;
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(wrapper));
        std::ranges::sort(positions);
        for (size_t i = 0; i < positions.size(); ++i) {
            FieldView& inner = _new.fields[positions[i]];
            inner.identity = field.identity + '.' + inner.name;
            _isNewTaken[positions[i]] = true;
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(wrapper + i), inner);
        }
        _isOldTaken[wrapper] = true;
        report(Rule::fieldInlined, field.name, "has become its own fields", list);
    }

    /// Partners for what is left between fields that both definitions have in the same order.
    void findRenamed() {
        std::vector<size_t> news, olds;
        for (size_t i = 0; i < _new.fields.size(); ++i)
            if (_oldOf[i] != NONE) {
                news.push_back(i);
                olds.push_back(_oldOf[i]);
            }
        size_t oldFrom = 0, newFrom = 0;
        for (const size_t anchor : longestRising(olds)) {
            findRenamed(oldFrom, olds[anchor], newFrom, news[anchor]);
            oldFrom = olds[anchor] + 1;
            newFrom = news[anchor] + 1;
        }
        findRenamed(oldFrom, _old.fields.size(), newFrom, _new.fields.size());
    }
    void findRenamed(size_t oldFrom, size_t oldEnd, size_t newFrom, size_t newEnd) {
        std::vector<size_t> gone, fresh;
        for (size_t i = oldFrom; i < oldEnd; ++i)
            if (!_isOldTaken[i]) gone.push_back(i);
        for (size_t i = newFrom; i < newEnd; ++i)
            if (!_isNewTaken[i]) fresh.push_back(i);
        for (size_t& before : gone) {
            const auto after =
                std::ranges::find_if(fresh, [&](size_t i) { return _new.fields[i].doc == _old.fields[before].doc; });
            if (after == fresh.end()) continue;
            pair(before, *after);
            report(Rule::fieldRenamed, _old.fields[before].name, "is now " + _new.fields[*after].name);
            fresh.erase(after);
            before = NONE;
        }
        std::erase(gone, NONE);
        if (gone.size() != fresh.size()) return;
        for (size_t i = 0; i < gone.size(); ++i) replace(gone[i], fresh[i]);
    }

    void replace(size_t before, size_t after) {
        pair(before, after);
        _isReplaced.insert(after);
        _new.fields[after].identity = '+' + _new.fields[after].name;
        List list = _old.fields;
        list[before] = _new.fields[after];
        report(Rule::fieldReplaced, _old.fields[before].name,
               fmt::format("has given its place to {}, which has another doc", _new.fields[after].name), list);
    }

    /// Where in the old list the new field belongs: before the next one that both have and that is not `moved`.
    size_t placeOf(size_t field, const std::set<size_t>& moved = {}) const {
        for (size_t i = field + 1; i < _new.fields.size(); ++i)
            if (_oldOf[i] != NONE && !moved.contains(i)) return _oldOf[i];
        return _old.fields.size();
    }

    void add(size_t field) {
        _new.fields[field].identity = '+' + _new.fields[field].name;
        List list = _old.fields;
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(placeOf(field)), _new.fields[field]);
        report(Rule::fieldAdded, _new.fields[field].name, _new.fields[field].type.written, list);
    }
    void remove(size_t field) {
        List list = _old.fields;
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(field));
        report(Rule::fieldRemoved, _old.fields[field].name, _old.fields[field].type.written, list);
    }

    void compareOrder() {
        std::vector<size_t> fields, ranks; // of the new definition; their order in the old one
        for (size_t i = 0; i < _new.fields.size(); ++i)
            if (_oldOf[i] != NONE) fields.push_back(i);
        for (const size_t field : fields)
            ranks.push_back(static_cast<size_t>(
                std::ranges::count_if(fields, [&](size_t it) { return _oldOf[it] < _oldOf[field]; })));
        for (size_t i = 0; i < ranks.size(); ++i)
            if (const size_t other = ranks[i]; other > i && ranks[other] == i) {
                const size_t first = _oldOf[fields[other]], second = _oldOf[fields[i]];
                List list = _old.fields;
                std::swap(list[first], list[second]);
                report(Rule::fieldsSwapped, _old.fields[first].name, "and " + _old.fields[second].name, list);
                std::swap(ranks[i], ranks[other]);
            }
        std::set<size_t> moved(fields.begin(), fields.end());
        for (const size_t stays : longestRising(ranks)) moved.erase(fields[stays]);
        for (const size_t field : moved) {
            List list = _old.fields;
            const size_t from = _oldOf[field], to = placeOf(field, moved);
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(from));
            list.insert(list.begin() + static_cast<std::ptrdiff_t>(to > from ? to - 1 : to), _old.fields[from]);
            report(Rule::fieldMoved, _old.fields[from].name,
                   to == _old.fields.size() ? "to the end" : "before " + _old.fields[to].name, list);
        }
    }

    void compareTypes(size_t after) {
        const size_t before = _oldOf[after];
        const FieldView& was = _old.fields[before];
        FieldView& is = _new.fields[after];
        const std::optional<Rule> rule = _types.change(was.type, is.type);
        if (!rule) return;
        if (rule == Rule::fieldWrapped) is.type.record = boxed(*is.type.record);
        if (rule == Rule::fieldInlined) is.identity += *pathToSingle(was.type);
        List list = _old.fields;
        list[before] = is;
        report(*rule, was.name, fmt::format("{} is now {}", was.type.written, is.type.written), list);
    }

    void compareMarks(const FieldView& was, const FieldView& is) {
        if (was.isSecret != is.isSecret) report(Rule::secretChanged, was.name, is.isSecret ? "now" : "no longer");
        if (was.deprecated != is.deprecated) report(Rule::deprecatedChanged, was.name, deprecationText(is.deprecated));
    }

    /// A copy of a record that holds a single value, which takes the identity of the field that holds the record.
    const CompositeView* boxed(const CompositeView& record) {
        CompositeView& copy = _newModel.wrappers.emplace_back(record);
        FieldView& inner = copy.fields.front();
        inner.identity = "";
        if (inner.type.record != nullptr) inner.type.record = boxed(*inner.type.record);
        return &copy;
    }

    const CompositeView& _old;
    CompositeView& _new;
    const Types& _types;
    Model& _newModel;
    std::vector<Change>& _changes;
    std::vector<size_t> _oldOf; // positions of the partners of new fields
    std::vector<bool> _isOldTaken;
    std::vector<bool> _isNewTaken;
    std::set<size_t> _isReplaced;
};

class Matcher {
  public:
    Matcher(const Model& oldModel, Model& newModel) : _old(oldModel), _new(newModel), _types(oldModel, newModel) {}

    Matched run() {
        if (_old.sources != _new.sources)
            report(Rule::sourcesMoved, _old.name, fmt::format("{} is now {}", _old.sources, _new.sources));
        matchMessages();
        matchTypes();
        for (const EnumerationView& it : _old.enumerations)
            if (const void* const same = _types.newOf(&it)) {
                const auto& after = *static_cast<const EnumerationView*>(same);
                compareDeprecated(it.name, it, after);
                compareEnumerators(it, after);
            }
        for (const auto& [before, after] : compositePairs()) {
            compareDeprecated(before->name, *before, *after);
            Fields(*before, *after, _types, _new, _matched.changes).compare();
        }
        return std::move(_matched);
    }

  private:
    Change& report(Rule rule, const std::string& place, const std::string& details) {
        return _matched.changes.emplace_back(Change{rule, place, details, {}, nullptr, nullptr});
    }

    template <class View>
    void compareDeprecated(const std::string& place, const View& was, const View& is) {
        if (was.deprecated != is.deprecated) report(Rule::deprecatedChanged, place, deprecationText(is.deprecated));
    }

    std::vector<std::pair<const CompositeView*, CompositeView*>> compositePairs() {
        std::vector<std::pair<const CompositeView*, CompositeView*>> pairs;
        for (CompositeView& record : _new.records)
            for (const CompositeView& it : _old.records)
                if (_types.areSame(&it, &record)) pairs.emplace_back(&it, &record);
        for (CompositeView& message : _new.messages)
            for (const MessagePair& pair : _matched.messages)
                if (pair.newMessage == &message) pairs.emplace_back(pair.oldMessage, &message);
        return pairs;
    }

    void matchMessages() {
        std::set<const CompositeView*> kept;
        for (size_t i = 0; i < _old.messages.size(); ++i) {
            const CompositeView& before = _old.messages[i];
            const CompositeView* after = _new.message(before.name);
            if (after == nullptr) {
                after = _new.message(before.id);
                if (after != nullptr && (_old.message(after->name) != nullptr || after->doc != before.doc))
                    after = nullptr;
                if (after != nullptr) report(Rule::messageRenamed, before.name, "is now " + after->name);
            }
            if (after == nullptr) {
                report(Rule::messageRemoved, before.name, fmt::format("identifier {}", before.id)).oldMessage = &before;
                continue;
            }
            kept.insert(after);
            _matched.messages.push_back({&before, after});
            if (before.id != after->id)
                report(Rule::identifierChanged, before.name, fmt::format("{} is now {}", before.id, after->id));
            if (const size_t index = indexOf(*after); index != i)
                report(Rule::messageMoved, before.name, fmt::format("index {} is now {}", i, index));
        }
        for (const CompositeView& it : _new.messages)
            if (!kept.contains(&it)) report(Rule::messageAdded, it.name, fmt::format("identifier {}", it.id));
        for (const CompositeView& before : _old.messages) {
            const CompositeView* const after = _new.message(before.id);
            const auto isPair = [&](const MessagePair& it) {
                return it.oldMessage == &before && it.newMessage == after;
            };
            if (after == nullptr || std::ranges::any_of(_matched.messages, isPair)) continue;
            Change& change = report(Rule::identifierTakenOver, before.name,
                                    fmt::format("{} is now the identifier of {}", before.id, after->name));
            change.oldMessage = &before;
            change.newMessage = after;
        }
    }
    size_t indexOf(const CompositeView& message) const {
        return static_cast<size_t>(
            std::ranges::find_if(_new.messages, [&](const CompositeView& it) { return &it == &message; })
            - _new.messages.begin());
    }

    void matchTypes() {
        for (bool foundSome = true; foundSome;) {
            foundSome = false;
            for (const auto& [before, after] : compositePairs()) foundSome |= _types.findRenamed(*before, *after);
        }
        reportTypes(_old.enumerations, _new.enumerations, "enumeration");
        reportTypes(_old.records, _new.records, "record");
        for (EnumerationView& it : _new.enumerations) it.identity = '+' + it.name;
        for (const EnumerationView& before : _old.enumerations)
            for (EnumerationView& it : _new.enumerations)
                if (_types.areSame(&before, &it)) it.identity = before.identity;
    }
    template <class Views>
    void reportTypes(const Views& olds, const Views& news, const char* kind) {
        for (const auto& it : olds) {
            const auto* const same = static_cast<const std::remove_cvref_t<decltype(it)>*>(_types.newOf(&it));
            if (same == nullptr)
                report(Rule::typeRemoved, it.name, kind);
            else if (same->name != it.name)
                report(Rule::typeRenamed, it.name, "is now " + same->name);
        }
        for (const auto& it : news)
            if (_types.isNew(&it)) report(Rule::typeAdded, it.name, kind);
    }

    void compareEnumerators(const EnumerationView& before, const EnumerationView& after) {
        const auto report = [&](Rule rule, const std::string& name, const std::string& details,
                                EnumerationView edited) {
            Edit& edit = this->report(rule, before.name + '.' + name, details).edit;
            edit.enumeration = &before;
            edit.editedEnumeration = std::move(edited);
        };
        std::set<std::string> renamed;
        for (const Enumerator& was : before.enumerators) {
            EnumerationView edited = before;
            Enumerator& change = edited.enumerators[static_cast<size_t>(&was - before.enumerators.data())];
            if (const Enumerator* const is = after.find(was.name)) {
                compareDeprecated(before.name + '.' + was.name, was, *is);
                change.value = is->value;
                if (is->value != was.value)
                    report(Rule::enumeratorRenumbered, was.name, fmt::format("{} is now {}", was.value, is->value),
                           edited);
                continue;
            }
            const auto is = std::ranges::find(after.enumerators, was.value, &Enumerator::value);
            if (is != after.enumerators.end() && before.find(is->name) == nullptr) {
                renamed.insert(is->name);
                change = *is;
                if (haveOtherDocs(was, *is))
                    report(Rule::enumeratorReplaced, was.name,
                           fmt::format("has given its value to {}, which has another doc", is->name), edited);
                else
                    report(Rule::enumeratorRenamed, was.name, "is now " + is->name, edited);
            } else {
                edited.enumerators.erase(edited.enumerators.begin() + (&was - before.enumerators.data()));
                report(Rule::enumeratorRemoved, was.name, fmt::format("value {}", was.value), edited);
            }
        }
        for (const Enumerator& is : after.enumerators) {
            if (before.find(is.name) != nullptr || renamed.contains(is.name)) continue;
            EnumerationView edited = before;
            edited.enumerators.push_back(is);
            report(Rule::enumeratorAdded, is.name, fmt::format("value {}", is.value), edited);
        }
    }

    const Model& _old;
    Model& _new;
    Types _types;
    Matched _matched;
};

} // namespace

Matched match(const Model& oldModel, Model& newModel) { return Matcher(oldModel, newModel).run(); }

} // namespace qlgen::compare
