// Reporting enumerators without a name: what decoding and encoding do on their way, for values that came another.
#pragma once

#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FieldList.h"

namespace Velmora {

/// Calls the hook for every enumeration field of `value` whose byte has no name, in declaration order.
template <class T>
void validateAll(const T& value, const char* name = "") {
    if constexpr (Enumerator<T>)
        validate<EnumerationOf<T>>(static_cast<unsigned char>(value), name);
    else if constexpr (Vector<T>)
        for (size_t i = 0; i < value.size(); ++i) validateAll(value[i], name);
    else if constexpr (Composite<T>)
        fields(of<T>{}, [&](const char* field, auto member, auto) {
            validateAll(value.*member, field);
            return true;
        });
}

} // namespace Velmora
