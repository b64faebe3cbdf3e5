#include "Inspect/Selection.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <utility>

#include "Backend/Common/DumbCrypt.h"

namespace Inspect {
namespace {

/// A step of a path in a text.
struct Piece {
    std::string_view name;
    std::optional<size_t> index; ///< of an element; then there is no name
};

/// Takes the path apart; nothing if it is none.
std::optional<std::vector<Piece>> pieces_of(std::string_view path) {
    std::vector<Piece> pieces;
    while (!path.empty()) {
        if (path.front() == '[') {
            size_t index = 0;
            const auto [end, error] = std::from_chars(path.data() + 1, path.data() + path.size(), index);
            if (error != std::errc() || end == path.data() + path.size() || *end != ']') return std::nullopt;
            pieces.push_back({{}, index});
            path.remove_prefix(static_cast<size_t>(end + 1 - path.data()));
        } else {
            if (!pieces.empty()) {
                if (path.front() != '.') return std::nullopt;
                path.remove_prefix(1);
            }
            const std::string_view name = path.substr(0, path.find_first_of(".["));
            if (name.empty()) return std::nullopt;
            pieces.push_back({name, std::nullopt});
            path.remove_prefix(name.size());
        }
    }
    return pieces;
}

} // namespace

/// Writes down the steps. What is stepped over is joined where it can be; what follows the last value chosen is left out.
class Selection::Builder {
  public:
    using Choose = std::function<bool(Path, const ValueInfo&)>;

    Builder(std::vector<Step>& steps, const Choose& choose) : _steps(steps), _choose(choose) {}

    void add(const TypeInfo& type, bool isSecret = false) {
        for (const FieldInfo& field : type.fields) add(field, isSecret);
    }

    void add(const FieldInfo& field, bool isSecret) {
        _path.push_back({field.name});
        enter(field);
        add(field.value, field.is_secret_in(isSecret));
        _path.pop_back();
    }

    /// What is read next is a value of that field.
    void enter(const FieldInfo& field) { _isTime = !field.station.empty(); }

    /// The steps over the elements of a vector before that one.
    void skip_to(size_t index, const ValueInfo& vector) {
        elements({.kind = Step::Kind::element, .index = index}, vector, false);
    }

    void read(const ValueInfo& value, bool isSecret) {
        if (value.kind == Kind::vector)
            elements({.kind = Step::Kind::shownVector, .value = value.kind, .isSecret = isSecret, .number = _shown++},
                     value, isSecret);
        else
            _steps.push_back({.kind = Step::Kind::read,
                              .value = value.kind,
                              .isSecret = isSecret,
                              .isTime = _isTime,
                              .number = _shown++,
                              .enumeration = value.enumeration});
        _needed = _steps.size();
    }

    void finish() {
        _steps.resize(_needed);
        if (!_steps.empty() && _steps.back().kind == Step::Kind::shownVector)
            _steps.back().n = 0; // its elements are not needed
    }

  private:
    void add(const ValueInfo& value, bool isSecret) {
        if (value.kind == Kind::record)
            add(*value.record, isSecret);
        else if (_choose(_path, value))
            read(value, isSecret);
        else
            skip(value, isSecret);
    }

    void skip(const ValueInfo& value, bool isSecret) {
        switch (value.kind) {
        case Kind::vector:
            return elements({.kind = Step::Kind::vector}, value, isSecret);
        case Kind::string:
        case Kind::cryptstring:
        case Kind::padding:
        case Kind::blob:
        case Kind::cryptblob:
            _steps.push_back({.kind = Step::Kind::text});
            return;
        case Kind::stringFixed:
            _steps.push_back({.kind = Step::Kind::fixedText});
            return;
        case Kind::int16:
        case Kind::int32:
        case Kind::int64:
        case Kind::price:
        case Kind::uint16:
        case Kind::uint32:
        case Kind::uint64:
            return join(Step::Kind::numbers, 1);
        default:
            return join(Step::Kind::bytes, least_of(value)); // these take as many always
        }
    }

    void elements(Step step, const ValueInfo& vector, bool isSecret) {
        const size_t at = _steps.size(), needed = _needed;
        step.least = least_of(*vector.element);
        _steps.push_back(step);
        _first = _steps.size();
        _path.push_back({});
        add(*vector.element, isSecret);
        _path.pop_back();
        _first = _steps.size();
        _steps[at].n = _first - at - 1;
        if (_needed != needed) _needed = _first; // what follows a value chosen in one element is in front of the next
    }

    /// The fewest bytes that a value takes.
    static size_t least_of(const ValueInfo& value) {
        switch (value.kind) {
        case Kind::uint16Fixed:
        case Kind::stringFixed:
            return 2;
        case Kind::uint32Fixed:
        case Kind::float4:
            return 4;
        case Kind::int64Fixed:
        case Kind::float8:
            return 8;
        case Kind::record:
            return value.record->minimalSize;
        default:
            return 1;
        }
    }

    void join(decltype(Step::kind) kind, size_t n) {
        if (_steps.size() > _first && _steps.back().kind == kind)
            _steps.back().n += n;
        else
            _steps.push_back({.kind = kind, .n = n});
    }

    std::vector<Step>& _steps;
    const Choose& _choose;
    std::vector<PathPiece> _path;
    bool _isTime = false;
    size_t _shown = 0;  ///< values chosen so far
    size_t _first = 0;  ///< of the steps that belong to the same list as the next one
    size_t _needed = 0; ///< steps up to the last value chosen
};

Selection::Selection(const TypeInfo& type, const std::function<bool(Path, const ValueInfo&)>& choose) {
    Builder builder(_steps, choose);
    builder.add(type);
    builder.finish();
}

Selection Selection::at(const TypeInfo& type, std::string_view path) {
    const auto none = [&] {
        return std::invalid_argument(std::string(type.name) + " has no value " + std::string(path));
    };
    const std::optional<std::vector<Piece>> pieces = pieces_of(path);
    if (!pieces || pieces->empty()) throw none();

    Selection selection;
    const Builder::Choose nothing = [](Path, const ValueInfo&) { return false; };
    Builder builder(selection._steps, nothing);
    const ValueInfo whole{.kind = Kind::record, .record = &type};
    const ValueInfo* value = &whole;
    bool isSecret = false;
    for (const Piece& piece : *pieces) {
        if (piece.index) {
            if (value->kind != Kind::vector) throw none();
            builder.skip_to(*piece.index, *value);
            value = value->element;
            continue;
        }
        if (value->kind != Kind::record) throw none();
        const auto& fields = value->record->fields;
        const auto field =
            std::find_if(fields.begin(), fields.end(), [&](const auto& it) { return it.name == piece.name; });
        if (field == fields.end()) throw none();
        for (auto before = fields.begin(); before != field; ++before) builder.add(*before, isSecret);
        builder.enter(*field);
        isSecret = field->is_secret_in(isSecret);
        value = &field->value;
    }
    if (value->kind == Kind::record) throw none();
    builder.read(*value, isSecret);
    builder.finish();
    return selection;
}

Value Selection::take(const Step& step, Skipper& at, std::string& room) {
    Value value{.kind = step.value,
                .text = {},
                .enumeration = step.enumeration,
                .isSecret = step.isSecret,
                .isTime = step.isTime};
    struct Filling {
        Value& value;
        void number(size_t, int64_t it) { value.number = it; }
        void real(size_t, double it) { value.real = it; }
        void text(size_t, std::string_view it) { value.text = it; }
    } to{value};
    hand(step, at, room, to);
    return value;
}

std::string_view Selection::decipher(std::string_view text, std::string& room) {
    room = text;
    if (!room.empty()) Quillon::DumbCrypt::decrypt(room.data(), static_cast<int>(room.size()), 0);
    return room;
}

} // namespace Inspect
