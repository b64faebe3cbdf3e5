// The walk that shows all values of a message to a visitor (Values.h).
#pragma once

#include <algorithm>
#include <concepts>

#include "Backend/Velmora/FieldList.h"
#include "Inspect/MessageTable.h"
#include "Inspect/Values.h"

namespace Inspect::detail {

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

inline constexpr size_t MAX_DEPTH = 16; // as qlgen allows

class ValueWalk {
  public:
    explicit ValueWalk(ValueVisitor& visitor) : _visitor(visitor) {}

    /// The table names what the fields are, so that it is said in one place.
    template <Composite T>
    bool record(const T& v, const TypeInfo& type, bool isSecret = false) {
        ++_depth;
        const FieldInfo* field = type.fields.data();
        const bool goesOn = fields(of<T>{}, [&](const char*, auto member, auto) {
            _path[_depth - 1] = {field->name};
            const Marks marks{field->is_secret_in(isSecret), !field->station.empty()};
            return value(v.*member, (field++)->value, marks);
        });
        --_depth;
        return goesOn;
    }

  private:
    struct Marks {
        bool isSecret, isTime;
    };

    template <class T>
    bool value(const T& v, const ValueInfo& info, Marks marks) {
        if constexpr (Composite<T>) {
            return record(v, *info.record, marks.isSecret);
        } else if constexpr (Vector<T>) {
            bool goesOn = _visitor.vector(
                {_path, _depth},
                {.kind = info.kind, .number = static_cast<int64_t>(v.size()), .text = {}, .isSecret = marks.isSecret});
            ++_depth;
            for (size_t i = 0; i < v.size() && goesOn; ++i) {
                _path[_depth - 1] = {{}, i};
                goesOn = value(v[i], *info.element, marks);
            }
            --_depth;
            return goesOn;
        } else {
            Value shown{.kind = info.kind,
                        .text = {},
                        .enumeration = info.enumeration,
                        .isSecret = marks.isSecret,
                        .isTime = marks.isTime};
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

template <class T>
constexpr ValueWalker entry(Velmora::of<ValueWalker>, Velmora::of<T>) {
    return {[](const void* message, const TypeInfo& type, ValueVisitor& visitor) {
        static_assert(depth_of<T>() <= MAX_DEPTH);
        return ValueWalk(visitor).record(*static_cast<const T*>(message), type);
    }};
}

} // namespace Inspect::detail
