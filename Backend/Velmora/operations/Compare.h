// Equality and order of values: field by field in declaration order, decided by the first field that differs.
//
// How one field compares is the business of its type: integers, enumerations and booleans as such; strings and vectors
// as bufstl defines it; records by their own operators. Floating-point numbers compare as they travel: equal are those
// of the same bytes, and the order is the total one of IEEE 754, so that values with NaN in them can be told apart,
// found again and sorted.
#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "Backend/Velmora/FieldList.h"

namespace Velmora {

/// The pattern of a number, as an integer with the same order.
template <std::floating_point T>
QL_FORCE_INLINE auto ordinal(T v) {
    using Pattern = std::conditional_t<sizeof(T) == 4, int32_t, int64_t>;
    const auto pattern = std::bit_cast<Pattern>(v);
    return pattern < 0 ? pattern ^ std::numeric_limits<Pattern>::max() : pattern;
}

template <class T>
bool differ(const T& a, const T& b) {
    if (&a == &b) return false;
    return !fields(of<T>{}, [&](const char*, auto member, auto) QL_FORCE_INLINE_LAMBDA {
        if constexpr (std::is_floating_point_v<MemberType<decltype(member)>>)
            return ordinal(a.*member) == ordinal(b.*member);
        else
            return a.*member == b.*member;
    });
}

// Negative, 0 or positive as `a` is less than, equal to or greater than `b`. One walk decides both: asking for less
// both ways would double the work at each level of nesting.

/// Numbers come by value, for in a block they are misaligned.
template <class T>
requires std::is_integral_v<T> || std::is_enum_v<T> QL_FORCE_INLINE int order(T a, T b) { return (a > b) - (a < b); }
QL_FORCE_INLINE int order(std::floating_point auto a, decltype(a) b) { return order(ordinal(a), ordinal(b)); }

QL_FORCE_INLINE int order(const String auto& a, const String auto& b) { return a.compare(b); }

/// Not inlined: there is one for every type, and what calls it would grow by all that is nested.
template <Composite T>
[[gnu::noinline]] int order(const T& a, const T& b);

template <Vector V>
int order(const V& a, const V& b) {
    using Element = typename V::value_type;
    if constexpr (std::is_integral_v<Element> || std::is_enum_v<Element>) return a.compare(b);
    for (size_t i = 0; i < a.size() && i < b.size(); ++i)
        if (const int decision = order(a[i], b[i])) return decision;
    return (a.size() > b.size()) - (a.size() < b.size());
}

template <Composite T>
int order(const T& a, const T& b) {
    if (&a == &b) return 0;
    int decision = 0;
    fields(of<T>{}, [&](const char*, auto member, auto) QL_FORCE_INLINE_LAMBDA {
        decision = order(a.*member, b.*member);
        return decision == 0;
    });
    return decision;
}

template <class T>
bool less(const T& a, const T& b) {
    return order(a, b) < 0;
}

} // namespace Velmora
