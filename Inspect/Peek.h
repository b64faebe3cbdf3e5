// Single fields out of a body, without building its message: for routers and filters.
//
//     using Inspect::peek;
//     std::optional<int32_t> market = peek<&SubmitOrderMessage::contents, &SubmitOrder::marketID>(body);
//     std::optional<size_t> entries = peek<&MktDataMessage::mvd, &MarketView::mdEntryList>(body);
//     std::optional<int64_t> price = peek<&MktDataMessage::mvd, &MarketView::mdEntryList, &MDEntry::price>(body, 3);
//
// What stands in front of the field is skipped, not decoded, and what follows it is not looked at. Every byte is checked to
// lie in the body: there is no value where the body ends before or inside it, or has no such element. Of a body that
// verify() accepts under `whole`, the value is the one that read() decodes. Nothing is allocated, and the module need not be
// initialised. Needs the protocol's field lists (QLProtocol.fields.h).
//
// Paths that are known at run time only are for Selection.h.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "Backend/Velmora/FieldList.h"
#include "Inspect/Skipper.h"

namespace Inspect {
namespace peeking {

using Velmora::Composite;
using Velmora::Enumerator;
using Velmora::fixed_t;
using Velmora::leastBytes;
using Velmora::MemberType;
using Velmora::of;
using Velmora::String;
using Velmora::travelsAsHeld;
using Velmora::Vector;

template <class T, class Encoding>
QL_FORCE_INLINE void skip(Skipper& at) {
    if constexpr (Composite<T>) {
        fields(of<T>{}, [&](const char*, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
            skip<MemberType<decltype(member)>, decltype(encoding)>(at);
            return true;
        });
    } else if constexpr (Vector<T>) {
        using Element = typename T::value_type;
        const size_t count = at.count(leastBytes<Element, Encoding>());
        if constexpr (travelsAsHeld<Element, Encoding>)
            at.bytes(count * sizeof(Element));
        else
            for (size_t i = 0; i < count && !at.isAtEnd(); ++i) skip<Element, Encoding>(at);
    } else if constexpr (String<T>) {
        std::is_same_v<Encoding, fixed_t> ? at.fixedText() : at.text();
    } else if constexpr (std::is_same_v<T, bool> || Enumerator<T>) {
        at.bytes(1);
    } else if constexpr (travelsAsHeld<T, Encoding>) {
        at.bytes(sizeof(T));
    } else {
        at.numbers(1);
    }
}

/// The value of a field. Of no meaning if the cursor is at the end afterwards.
template <class T, class Encoding>
QL_FORCE_INLINE auto value(Skipper& at) {
    if constexpr (Vector<T>)
        return at.count(leastBytes<typename T::value_type, Encoding>());
    else if constexpr (String<T>)
        return std::is_same_v<Encoding, fixed_t> ? at.fixedText() : at.text();
    else if constexpr (std::is_same_v<T, bool>)
        return at.held<uint8_t>() != 0;
    else if constexpr (Enumerator<T>)
        return static_cast<T>(at.held<uint8_t>());
    else if constexpr (travelsAsHeld<T, Encoding>)
        return at.held<T>();
    else if constexpr (std::is_same_v<Encoding, Velmora::price_t>)
        return static_cast<T>(at.price());
    else if constexpr (std::is_unsigned_v<T>)
        return at.number<T>();
    else
        return Velmora::unzigzag<T>(at.number<std::make_unsigned_t<T>>());
}

/// The value that a path leads to from a T, which itself is entered by the next step of the path.
template <class T, class Encoding, size_t Indices, auto... Path>
struct Target {
    static_assert(Indices == 0 && sizeof...(Path) == 0 && !Composite<T>,
                  "a path ends at a value and takes an index for each vector that it enters");
    using type = decltype(value<T, Encoding>(std::declval<Skipper&>()));
    QL_FORCE_INLINE static type find(Skipper& at, const size_t*) { return value<T, Encoding>(at); }
};

template <Vector T, class Encoding, size_t Indices, auto... Path>
requires(Indices > 0) struct Target<T, Encoding, Indices, Path...> {
    using Element = typename T::value_type;
    using Next = Target<Element, Encoding, Indices - 1, Path...>;
    using type = typename Next::type;
    QL_FORCE_INLINE static type find(Skipper& at, const size_t* index) {
        if (*index >= at.count(leastBytes<Element, Encoding>())) at.giveUp();
        for (size_t i = 0; i < *index && !at.isAtEnd(); ++i) skip<Element, Encoding>(at);
        return Next::find(at, index + 1);
    }
};

template <class Member>
struct owner_type;
template <class Owner, class T>
struct owner_type<T Owner::*> {
    using type = Owner;
};

template <Composite T, class Encoding, size_t Indices, auto Member, auto... Path>
struct Target<T, Encoding, Indices, Member, Path...> {
    static_assert(std::is_same_v<typename owner_type<decltype(Member)>::type, T>,
                  "each member is one of the one before it");
    using Field = MemberType<decltype(Member)>;
    using type = typename Target<Field, Velmora::plain_t, Indices, Path...>::type; // encodings do not alter types
    QL_FORCE_INLINE static type find(Skipper& at, const size_t* index) {
        type result{};
        fields(of<T>{}, [&](const char*, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
            if constexpr (std::is_same_v<decltype(member), decltype(Member)>) {
                if (member == Member) { // folded away by the compiler
                    result = Target<Field, decltype(encoding), Indices, Path...>::find(at, index);
                    return false;
                }
            }
            skip<MemberType<decltype(member)>, decltype(encoding)>(at);
            return true;
        });
        return result;
    }
};

} // namespace peeking

/// The value at the end of the path of members that starts at a message (or record) `First` belongs to, whose body this is.
/// Each vector that the path enters takes an index; one at its end without an index gives the number of its elements. Numbers
/// come as the member's type, enumerators as the byte that came, texts as a view of the body: enciphered ones as they travel.
template <auto First, auto... Path, std::convertible_to<size_t>... Index>
QL_FORCE_INLINE auto peek(std::string_view body, Index... indices) {
    using Found = peeking::Target<typename peeking::owner_type<decltype(First)>::type, Velmora::plain_t,
                                  sizeof...(indices), First, Path...>;
    const size_t index[sizeof...(indices) + 1] = {static_cast<size_t>(indices)...};
    Skipper at(body.data(), body.data() + body.size());
    const typename Found::type value = Found::find(at, index);
    return at.isAtEnd() ? std::nullopt : std::optional(value);
}

} // namespace Inspect
