// How long the text of a value can get: what the printers that do not check their room ask beforehand.
//
// Found without rendering, from the lengths of strings and vectors: names are taken as long as they are, numbers as
// long as they can be. For a value that owns nothing it is a constant.
#pragma once

#include <algorithm>
#include <cstring>
#include <limits>

#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FieldList.h"

namespace Velmora {

template <class T>
constexpr size_t maxFieldsTextSize(const T* value);

/// The longest text of `*value`; of any value of its type without storage when `value` is null.
template <class T>
constexpr size_t maxTextSize(const T* value) {
    if constexpr (String<T>) {
        return value->size() + 2; // the quotes
    } else if constexpr (Vector<T>) {
        using Element = typename T::value_type;
        size_t size = 2 + value->size(); // the brackets, and a separator each
        if constexpr (holdsStorage<Element>())
            for (size_t i = 0; i < value->size(); ++i) {
                const auto& element = (*value)[i];
                size += maxTextSize(&element);
            }
        else
            size += value->size() * maxTextSize<Element>(nullptr);
        return size;
    } else if constexpr (Composite<T>) {
        return 2 + maxFieldsTextSize(value);
    } else if constexpr (Enumerator<T>) {
        size_t longest = 11; // an int32_t
        enumerators(of<EnumerationOf<T>>{},
                    [&](const char* name, auto) { longest = std::max(longest, std::char_traits<char>::length(name)); });
        return longest;
    } else if constexpr (std::is_floating_point_v<T>) {
        return std::numeric_limits<T>::max_exponent10 + 103; // digits, sign, point, and 99 digits of a fraction
    } else {
        return 20; // an int64_t or uint64_t
    }
}

/// The longest text of the fields of a record or message on one line, without brackets around it.
template <class T>
constexpr size_t maxFieldsTextSize(const T* value) {
    size_t size = 0;
    fields(of<T>{}, [&](const char* name, auto member, auto) {
        using M = MemberType<decltype(member)>;
        size += std::char_traits<char>::length(name) + 2; // the equals sign and a separator
        if constexpr (holdsStorage<M>())
            size += maxTextSize(&(value->*member));
        else
            size += maxTextSize<M>(nullptr);
        return true;
    });
    return size;
}

} // namespace Velmora
