// Asserting that all that a value owns lies inside its block.
//
// Only what holds storage is visited: strings and vectors check themselves, records with storage go on with their own
// checkbounds. A plain nested record is deliberately passed over, even where it reaches beyond the bounds: only the
// address of the enclosing object and the containers count.
#pragma once

#include "Backend/Velmora/FieldList.h"

namespace Velmora {

/// The members of `value`, in declaration order. The address of `value` itself is the caller's to assert, so that the
/// report names the caller.
template <class T>
QL_FORCE_INLINE void checkMembers(const T& value, const void* begin, const void* end) {
    fields(of<T>{}, [&](const char*, auto member, auto) QL_FORCE_INLINE_LAMBDA {
        if constexpr (holdsStorage<MemberType<decltype(member)>>()) (value.*member).checkbounds(begin, end);
        return true;
    });
}

} // namespace Velmora
