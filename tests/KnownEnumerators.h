// Whether a value could have been written from declared enumerators.
#pragma once

#include "generated/QLProtocol/QLProtocol.fields.h"

/// Whether every enumeration field holds a value that travels as one of its enumerators does.
template <class T>
bool holdsKnownEnumerators(const T& v) {
    using namespace Velmora;
    if constexpr (Enumerator<T>) {
        bool isKnown = false;
        enumerators(of<EnumerationOf<T>>{}, [&](const char*, auto e) { isKnown |= (e & 0xFF) == (v & 0xFF); });
        return isKnown;
    } else if constexpr (Vector<T>) {
        for (size_t i = 0; i < v.size(); ++i)
            if (!holdsKnownEnumerators(v[i])) return false;
        return true;
    } else if constexpr (Composite<T>) {
        return fields(of<T>{}, [&](const char*, auto member, auto) { return holdsKnownEnumerators(v.*member); });
    } else {
        return true;
    }
}
