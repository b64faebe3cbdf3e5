// The tables of reflection, made from the field lists and notes of a protocol (TypeInfo.h).
#pragma once

#include <array>

#include "Backend/Velmora/Notes.h"
#include "Inspect/SizeWalk.h"
#include "Inspect/TypeInfo.h"

namespace Inspect::tables {

using namespace Velmora;

template <class H>
inline constexpr auto enumeratorTable = [] {
    std::array<EnumeratorInfo, H::_nbValues> table{};
    constexpr auto notes = enumeratorNotes(of<H>{});
    size_t i = 0;
    enumerators(of<H>{}, [&](const char* name, auto value) {
        table[i] = {name, value, notes[i].doc, notes[i].deprecated};
        ++i;
    });
    return table;
}();

template <class H>
inline constexpr EnumerationInfo enumerationInfo{H::Name, enumeratorTable<H>, typeNotes(of<H>{}).doc,
                                                 typeNotes(of<H>{}).deprecated};

// One overload per pair of type and encoding, as those of Velmora::put.
constexpr Kind kind_of(of<bool>, plain_t) { return Kind::boolean; }
constexpr Kind kind_of(of<int8_t>, plain_t) { return Kind::int8; }
constexpr Kind kind_of(of<int16_t>, plain_t) { return Kind::int16; }
constexpr Kind kind_of(of<int32_t>, plain_t) { return Kind::int32; }
constexpr Kind kind_of(of<int64_t>, plain_t) { return Kind::int64; }
constexpr Kind kind_of(of<int64_t>, price_t) { return Kind::price; }
constexpr Kind kind_of(of<int64_t>, fixed_t) { return Kind::int64Fixed; }
constexpr Kind kind_of(of<uint8_t>, plain_t) { return Kind::uint8; }
constexpr Kind kind_of(of<uint16_t>, plain_t) { return Kind::uint16; }
constexpr Kind kind_of(of<uint32_t>, plain_t) { return Kind::uint32; }
constexpr Kind kind_of(of<uint64_t>, plain_t) { return Kind::uint64; }
constexpr Kind kind_of(of<uint16_t>, fixed_t) { return Kind::uint16Fixed; }
constexpr Kind kind_of(of<uint32_t>, fixed_t) { return Kind::uint32Fixed; }
constexpr Kind kind_of(of<float>, plain_t) { return Kind::float4; }
constexpr Kind kind_of(of<double>, plain_t) { return Kind::float8; }
constexpr Kind kind_of(of<bufstl::bufstring>, plain_t) { return Kind::string; }
constexpr Kind kind_of(of<bufstl::bufstring>, fixed_t) { return Kind::stringFixed; }
constexpr Kind kind_of(of<bufstl::bufstring>, crypt_t) { return Kind::cryptstring; }
constexpr Kind kind_of(of<bufstl::bufstring>, padding_t) { return Kind::padding; }
constexpr Kind kind_of(of<bufstl::bufstring>, blob_t) { return Kind::blob; }
constexpr Kind kind_of(of<bufstl::bufstring>, cryptblob_t) { return Kind::cryptblob; }

template <class T, class Encoding = plain_t>
inline constexpr ValueInfo valueInfo = [] {
    if constexpr (Enumerator<T>)
        return ValueInfo{.kind = Kind::enumeration, .enumeration = &enumerationInfo<EnumerationOf<T>>};
    else if constexpr (Vector<T>)
        return ValueInfo{.kind = Kind::vector, .element = &valueInfo<typename T::value_type, Encoding>};
    else if constexpr (Composite<T>)
        return ValueInfo{.kind = Kind::record, .record = &type_of<T>()};
    else
        return ValueInfo{kind_of(of<T>{}, Encoding{})};
}();

template <class T>
consteval size_t count_fields() {
    size_t count = 0;
    fields(of<T>{}, [&](const char*, auto, auto) { return ++count, true; });
    return count;
}

template <class T>
inline constexpr auto fieldTable = [] {
    std::array<FieldInfo, count_fields<T>()> table{};
    constexpr auto notes = fieldNotes(of<T>{});
    size_t i = 0;
    fields(of<T>{}, [&](const char* name, auto member, auto encoding) {
        using M = MemberType<decltype(member)>;
        const FieldNotes& note = notes[i];
        table[i++] = {.name = name,
                      .value = valueInfo<M, decltype(encoding)>,
                      .minimalSize = minimal_size<M, decltype(encoding)>(),
                      .isSecret = note.isSecret,
                      .doc = note.doc,
                      .deprecated = note.deprecated,
                      .identifies = note.identifies,
                      .station = note.station};
        return true;
    });
    return table;
}();

template <class T>
constinit const TypeInfo TypeTable<T>::type{.name = typeNotes(of<T>{}).name,
                                            .fields = fieldTable<T>,
                                            .minimalSize = minimal_size<T>(),
                                            .memorySize = sizeof(T),
                                            .doc = typeNotes(of<T>{}).doc,
                                            .deprecated = typeNotes(of<T>{}).deprecated};

} // namespace Inspect::tables
