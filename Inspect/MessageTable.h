// Makes the table of one operation for all messages of a protocol: see Protocol.h. The header of the operation says what
// the entry of a message consists of, by a function that is found by the type of the entry:
//
//     template <class T>
//     constexpr Verifier entry(Velmora::of<Verifier>, Velmora::of<T>);
#pragma once

#include "Backend/Velmora/FieldList.h"
#include "Inspect/Protocol.h"

namespace Inspect::detail {

template <class Entry, class Traits>
constinit const std::array<Entry, Traits::MESSAGES> MessageTable<Entry, Traits>::table = [] {
    std::array<Entry, Traits::MESSAGES> all{};
    Traits::messages([&]<class T>(Velmora::of<T> message, const char*) {
        all[T::INDEX] = entry(Velmora::of<Entry>{}, message);
        return true;
    });
    return all;
}();

} // namespace Inspect::detail
