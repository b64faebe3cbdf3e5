#include "Inspect/Values.h"

#include <algorithm>
#include <charconv>
#include <concepts>

#include "Inspect/Display.h"
#include "Inspect/IdTable.h"

namespace Inspect {
namespace {

using namespace Velmora;

/// Steps from a T to the values in it, at most.
template <class T>
consteval size_t depth_of() {
    size_t depth = 0;
    if constexpr (Vector<T>)
        depth = 1 + depth_of<typename T::value_type>();
    else if constexpr (Composite<T>)
        fields(of<T>{}, [&](const char*, auto member, auto) {
            depth = std::max(depth, 1 + depth_of<MemberType<decltype(member)>>());
            return true;
        });
    return depth;
}

constexpr size_t MAX_DEPTH = 16; // as qlgen allows

class Walk {
  public:
    explicit Walk(ValueVisitor& visitor) : _visitor(visitor) {}

    /// The table names what the fields are, so that it is said in one place.
    template <Composite T>
    bool record(const T& v, const TypeInfo& type, bool isSecret = false) {
        ++_depth;
        const FieldInfo* field = type.fields.data();
        const bool goesOn = fields(of<T>{}, [&](const char*, auto member, auto) {
            _path[_depth - 1] = {field->name};
            const bool isSecretField = field->is_secret_in(isSecret);
            return value(v.*member, (field++)->value, isSecretField);
        });
        --_depth;
        return goesOn;
    }

  private:
    template <class T>
    bool value(const T& v, const ValueInfo& info, bool isSecret) {
        if constexpr (Composite<T>) {
            return record(v, *info.record, isSecret);
        } else if constexpr (Vector<T>) {
            bool goesOn = _visitor.vector(
                {_path, _depth},
                {.kind = info.kind, .number = static_cast<int64_t>(v.size()), .text = {}, .isSecret = isSecret});
            ++_depth;
            for (size_t i = 0; i < v.size() && goesOn; ++i) {
                _path[_depth - 1] = {{}, i};
                goesOn = value(v[i], *info.element, isSecret);
            }
            --_depth;
            return goesOn;
        } else {
            Value shown{.kind = info.kind, .text = {}, .enumeration = info.enumeration, .isSecret = isSecret};
            if constexpr (String<T>) {
                shown.text = {v.c_str(), v.size()};
                shown.isStored = !v.empty_();
            } else if constexpr (std::floating_point<T>) {
                shown.real = v;
            } else {
                shown.number = static_cast<int64_t>(v);
            }
            return _visitor.value({_path, _depth}, shown);
        }
    }

    ValueVisitor& _visitor;
    PathPiece _path[MAX_DEPTH];
    size_t _depth = 0;
};

using Walker = bool (*)(const void* message, const TypeInfo& type, ValueVisitor& visitor);
constexpr IdTable<Walker> walkers([]<class T>(of<T>, const char*) -> Walker {
    static_assert(depth_of<T>() <= MAX_DEPTH);
    return [](const void* message, const TypeInfo& type, ValueVisitor& visitor) {
        return Walk(visitor).record(*static_cast<const T*>(message), type);
    };
});

} // namespace

bool walk_values(MsgType_t id, const void* message, ValueVisitor& visitor) {
    const TypeInfo* const type = reflect(id);
    return type == nullptr || walk_values(id, *type, message, visitor);
}

bool walk_values(MsgType_t id, const TypeInfo& type, const void* message, ValueVisitor& visitor) {
    return (*walkers.find(id))(message, type, visitor);
}

std::string number_text(const Value& value) {
    switch (value.kind) {
    case Kind::boolean:
        return value.number != 0 ? "true" : "false";
    case Kind::enumeration:
        for (const EnumeratorInfo& it : value.enumeration->enumerators)
            if (it.value == value.number) return std::string(it.name);
        break;
    case Kind::int64:
    case Kind::int64Fixed:
    case Kind::price:
        return scaled_text(value.number, 1);
    case Kind::uint64:
        return std::to_string(static_cast<uint64_t>(value.number));
    case Kind::float4:
    case Kind::float8: {
        char digits[32]; // as few as tell it from its neighbours
        const bool isNarrow = value.kind == Kind::float4;
        return {digits, (isNarrow ? std::to_chars(digits, digits + sizeof digits, static_cast<float>(value.real))
                                  : std::to_chars(digits, digits + sizeof digits, value.real))
                            .ptr};
    }
    default:
        break;
    }
    return std::to_string(value.number);
}

std::string path_text(Path path) {
    std::string text;
    for (const PathPiece& piece : path) {
        if (piece.name.empty())
            text += '[' + std::to_string(piece.index) + ']';
        else
            (text.empty() ? text : text += '.') += piece.name;
    }
    return text;
}

} // namespace Inspect
