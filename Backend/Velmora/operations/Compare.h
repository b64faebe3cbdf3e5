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

template <class T>
bool less(const T& a, const T& b) {
    if (&a == &b) return false;
    bool isLess = false;
    fields(of<T>{}, [&](const char*, auto member, auto) FORCE_INLINE_LAMBDA {
        isLess = a.*member < b.*member;
        return !isLess && !(b.*member < a.*member);
    });
    return isLess;
}

} // namespace Velmora
