// Facts about a list of types, found at compile time.
//
// A list is a callable that takes a visitor, calls `visitor(of<T>{}, name)` for each of its types in order until a call
// returns false, and returns whether all were visited: the generated lists, wrapped in a lambda so that they can be
// passed on.
#pragma once

#include <cstddef>
#include <type_traits>

#include "Backend/Velmora/FieldList.h"

namespace Velmora {

template <class List>
constexpr int countTypes(List list) {
    int count = 0;
    list([&]<class T>(of<T>, const char*) {
        ++count;
        return true;
    });
    return count;
}

/// How many of the types hold storage and therefore live in blocks.
template <class List>
constexpr int countHoldingStorage(List list) {
    int count = 0;
    list([&]<class T>(of<T>, const char*) {
        count += holdsStorage<T>();
        return true;
    });
    return count;
}

/// Whether the types that hold no storage, and no others, are plain bytes to the containers.
template <class List>
constexpr bool plainUnlessHoldingStorage(List list) {
    return list([]<class T>(of<T>, const char*) { return std::is_trivially_copyable_v<T> == !holdsStorage<T>(); });
}

/// Whether the INDEX of each message is its position in the list.
template <class List>
constexpr bool indexedInOrder(List list) {
    int position = 0;
    return list([&]<class T>(of<T>, const char*) { return T::INDEX == position++; });
}

/// Whether no two messages have the same ID, or the same ID modulo `Modulo`.
template <size_t Modulo = 65536, class List>
constexpr bool idsDistinct(List list) {
    bool isTaken[Modulo] = {};
    return list([&]<class T>(of<T>, const char*) {
        const bool isFree = !isTaken[T::ID % Modulo];
        isTaken[T::ID % Modulo] = true;
        return isFree;
    });
}

} // namespace Velmora
