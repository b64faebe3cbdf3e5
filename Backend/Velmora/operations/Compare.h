// Equality and order of values: field by field in declaration order, decided by the first field that differs.
//
// How one field compares is the business of its type: numbers, enumerations and booleans as such; strings and vectors
// as bufstl defines it; records by their own operators.
#pragma once

#include "Backend/Velmora/FieldList.h"

namespace Velmora {

template <class T>
bool differ(const T& a, const T& b) {
    if (&a == &b) return false;
    return !fields(of<T>{}, [&](const char*, auto member, auto) FORCE_INLINE_LAMBDA { return a.*member == b.*member; });
}

/// Negative, 0 or positive as `a` is less than, equal to or greater than `b`: one walk over a string or vector decides
/// both.
template <class T>
FORCE_INLINE int order(const T& a, const T& b) {
    if constexpr (String<T> || Vector<T>)
        return a.compare(b);
    else
        return a < b ? -1 : b < a;
}

template <class T>
bool less(const T& a, const T& b) {
    if (&a == &b) return false;
    int decision = 0;
    fields(of<T>{}, [&](const char*, auto member, auto) FORCE_INLINE_LAMBDA {
        decision = order(a.*member, b.*member);
        return decision == 0;
    });
    return decision < 0;
}

} // namespace Velmora
