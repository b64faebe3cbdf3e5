// The vocabulary of the generated field lists.
//
// For every record and message X the generated header QLProtocol.fields.h holds one function
//
//     bool fields(of<X>, visit)      visit("price", &X::price, price) && visit("side", &X::side, plain) && ...
//
// that calls `visit(name, member pointer, encoding)` for each field in declaration order until a call returns false,
// and returns whether all were visited. The encoding of a vector is that of its elements. An operation over all types is one generic function over that list; see
// operations/. Members come as pointers to members, so the list can also be walked without an object.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "Backend/Common/Inline.h"
#include "Backend/Velmora/bufstl/bufstring.h"
#include "Backend/Velmora/bufstl/bufvector.h"

namespace Velmora {

/// Names a type in a call, without an object of it.
template <class T>
struct of {
    using type = T;
};

// How a field travels. The C++ type decides most of it; these tell fields of one type apart.
struct plain_t {};     ///< the encoding that belongs to the C++ type
struct price_t {};     ///< int64_t: the special varint with one-byte sentinels
struct fixed_t {};     ///< uint16_t, uint32_t, int64_t: all bytes, the low one first; bufstring: a two-byte length
struct crypt_t {};     ///< bufstring: enciphered on the wire
struct blob_t {};      ///< bufstring: bytes that are no text; they travel as one
struct cryptblob_t {}; ///< the same, enciphered
struct padding_t {};   ///< bufstring: written with a fixed two-byte length, read with a varint one

inline constexpr plain_t plain{};
inline constexpr price_t price{};
inline constexpr fixed_t fixed{};
inline constexpr crypt_t crypt{};
inline constexpr blob_t blob{};
inline constexpr cryptblob_t cryptblob{};
inline constexpr padding_t padding{};

// What kinds of value a field can hold.

/// The nested `Type` of an enumeration helper. `enumerationOf(value)` is generated per enumeration, found by its
/// argument, never defined, and names the helper: `of<Side> enumerationOf(Side::Type)`.
template <class T>
concept Enumerator = std::is_enum_v<T>;

template <Enumerator T>
using EnumerationOf = typename decltype(enumerationOf(T{}))::type;

template <class T>
concept String = std::is_same_v<T, bufstl::bufstring>;

template <class T>
struct is_vector : std::false_type {};
template <class T>
struct is_vector<bufstl::bufvector<T>> : std::true_type {};
template <class T>
struct is_vector<bufstl::bufvectox<T>> : std::true_type {};

template <class T>
concept Vector = is_vector<T>::value;

/// A generated record or message: has a field list.
template <class T>
concept Composite = requires {
    fields(of<T>{}, [](const char*, auto, auto) { return true; });
};

/// A message: a composite with an identifier of its own.
template <class T>
concept Message = Composite<T> && requires {
    T::ID;
};

/// The type of the member that a pointer to member points to.
template <class Member>
struct member_type;
template <class Owner, class T>
struct member_type<T Owner::*> {
    using type = T;
};
template <class Member>
using MemberType = typename member_type<Member>::type;

/// Whether values travel as they lie in memory, so that those of a vector can be copied at once.
template <class T, class Encoding>
inline constexpr bool
    travelsAsHeld = std::is_floating_point_v<T> || (std::is_arithmetic_v<T> && std::is_same_v<Encoding, fixed_t>)
                    || std::is_same_v<T, int8_t> || std::is_same_v<T, uint8_t>;

/// Bytes that a value of type T takes on the wire at least.
template <class T, class Encoding = plain_t>
constexpr size_t leastBytes() {
    if constexpr (Composite<T>) {
        size_t sum = 0;
        fields(of<T>{}, [&](const char*, auto member, auto encoding) {
            sum += leastBytes<MemberType<decltype(member)>, decltype(encoding)>();
            return true;
        });
        return sum;
    } else if constexpr (travelsAsHeld<T, Encoding>) {
        return sizeof(T);
    } else if constexpr (String<T> && std::is_same_v<Encoding, fixed_t>) {
        return 2;
    } else {
        return 1; // numbers, and strings and vectors, whose length is a number
    }
}

/// Whether a value of type T holds a string or a vector, directly or in a nested record, and so takes storage from a
/// block.
template <class T>
constexpr bool holdsStorage() {
    if constexpr (String<T> || Vector<T>)
        return true;
    else if constexpr (Composite<T>)
        return !fields(of<T>{},
                       [](const char*, auto member, auto) { return !holdsStorage<MemberType<decltype(member)>>(); });
    else
        return false;
}

} // namespace Velmora
