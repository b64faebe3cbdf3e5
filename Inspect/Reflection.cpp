#include "Inspect/Reflection.h"

#include <algorithm>
#include <array>
#include <concepts>

#include "Inspect/BodyWalk.h"
#include "Inspect/IdTable.h"
#include "Inspect/Secrets.h"
#include "Inspect/Sizes.h"

namespace Inspect {
namespace {

using namespace Velmora;

// --- the tables

/// The name of T without its namespace. Cut from the compiler's own text, because looking it up in the lists of types
/// would compare every type with every other.
template <class T>
consteval std::string_view name_of() {
    std::string_view text =
        __PRETTY_FUNCTION__; // "... [with T = Quillon::MDEntry; ...]" or "... [T = Quillon::MDEntry]"
    text.remove_prefix(text.find("T = Quillon::") + std::string_view("T = Quillon::").size());
    return text.substr(0, text.find_first_of(";]"));
}

template <class H>
constexpr auto enumeratorTable = [] {
    std::array<EnumeratorInfo, H::_nbValues> table{};
    size_t i = 0;
    enumerators(of<H>{}, [&](const char* name, auto value) { table[i++] = {name, value}; });
    return table;
}();

template <class H>
constexpr EnumerationInfo enumerationInfo{H::Name, enumeratorTable<H>};

/// A member of a template, so that records can be pointed to before they are defined.
template <class T>
struct Table {
    static const TypeInfo type;
};

// One overload per pair of type and encoding, as those of Velmora::put; a protocol need not use them all.
[[maybe_unused]] constexpr Kind kind_of(of<bool>, plain_t) { return Kind::boolean; }
[[maybe_unused]] constexpr Kind kind_of(of<int8_t>, plain_t) { return Kind::int8; }
[[maybe_unused]] constexpr Kind kind_of(of<int16_t>, plain_t) { return Kind::int16; }
[[maybe_unused]] constexpr Kind kind_of(of<int32_t>, plain_t) { return Kind::int32; }
[[maybe_unused]] constexpr Kind kind_of(of<int64_t>, plain_t) { return Kind::int64; }
[[maybe_unused]] constexpr Kind kind_of(of<int64_t>, price_t) { return Kind::price; }
[[maybe_unused]] constexpr Kind kind_of(of<int64_t>, fixed_t) { return Kind::int64Fixed; }
[[maybe_unused]] constexpr Kind kind_of(of<uint8_t>, plain_t) { return Kind::uint8; }
[[maybe_unused]] constexpr Kind kind_of(of<uint16_t>, plain_t) { return Kind::uint16; }
[[maybe_unused]] constexpr Kind kind_of(of<uint32_t>, plain_t) { return Kind::uint32; }
[[maybe_unused]] constexpr Kind kind_of(of<uint64_t>, plain_t) { return Kind::uint64; }
[[maybe_unused]] constexpr Kind kind_of(of<uint16_t>, fixed_t) { return Kind::uint16Fixed; }
[[maybe_unused]] constexpr Kind kind_of(of<uint32_t>, fixed_t) { return Kind::uint32Fixed; }
[[maybe_unused]] constexpr Kind kind_of(of<float>, plain_t) { return Kind::float4; }
[[maybe_unused]] constexpr Kind kind_of(of<double>, plain_t) { return Kind::float8; }
[[maybe_unused]] constexpr Kind kind_of(of<bufstl::bufstring>, plain_t) { return Kind::string; }
[[maybe_unused]] constexpr Kind kind_of(of<bufstl::bufstring>, fixed_t) { return Kind::stringFixed; }
[[maybe_unused]] constexpr Kind kind_of(of<bufstl::bufstring>, crypt_t) { return Kind::cryptstring; }
[[maybe_unused]] constexpr Kind kind_of(of<bufstl::bufstring>, padding_t) { return Kind::padding; }
[[maybe_unused]] constexpr Kind kind_of(of<bufstl::bufstring>, blob_t) { return Kind::blob; }
[[maybe_unused]] constexpr Kind kind_of(of<bufstl::bufstring>, cryptblob_t) { return Kind::cryptblob; }

template <class T, class Encoding = plain_t>
constexpr ValueInfo valueInfo = [] {
    if constexpr (Enumerator<T>)
        return ValueInfo{.kind = Kind::enumeration, .enumeration = &enumerationInfo<EnumerationOf<T>>};
    else if constexpr (Vector<T>)
        return ValueInfo{.kind = Kind::vector, .element = &valueInfo<typename T::value_type, Encoding>};
    else if constexpr (Composite<T>)
        return ValueInfo{.kind = Kind::record, .record = &Table<T>::type};
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
constexpr auto fieldTable = [] {
    std::array<FieldInfo, count_fields<T>()> table{};
    size_t i = 0;
    fields(of<T>{}, [&](const char* name, auto member, auto encoding) {
        using M = MemberType<decltype(member)>;
        table[i++] = {name, valueInfo<M, decltype(encoding)>, minimal_size<M, decltype(encoding)>(),
                      is_secret<T>(member)};
        return true;
    });
    return table;
}();

template <class T>
constinit const TypeInfo Table<T>::type{name_of<T>(), fieldTable<T>, minimal_size<T>(), sizeof(T)};

constexpr IdTable<const TypeInfo*> types([]<class T>(of<T>, const char*) { return &Table<T>::type; });

constexpr auto messageTable = [] {
    std::array<MessageInfo, countTypes([](auto&& visit) { return Quillon::messages(visit); })> table{};
    Quillon::messages([&]<class T>(of<T>, const char*) {
        table[T::INDEX] = {T::ID, &Table<T>::type};
        return true;
    });
    return table;
}();

constexpr auto recordTable = [] {
    std::array<const TypeInfo*, countTypes([](auto&& visit) { return Quillon::records(visit); })> table{};
    size_t i = 0;
    Quillon::records([&]<class T>(of<T>, const char*) { return table[i++] = &Table<T>::type, true; });
    return table;
}();

constexpr auto enumerationTable = [] {
    std::array<const EnumerationInfo*, countTypes([](auto&& visit) { return Quillon::enumerations(visit); })> table{};
    size_t i = 0;
    Quillon::enumerations([&]<class H>(of<H>, const char*) { return table[i++] = &enumerationInfo<H>, true; });
    return table;
}();

} // namespace

const TypeInfo* reflect(MsgType_t id) {
    const TypeInfo* const* const found = types.find(id);
    return found != nullptr ? *found : nullptr;
}

std::span<const MessageInfo> all_messages() { return messageTable; }

std::span<const TypeInfo* const> all_records() { return recordTable; }

std::span<const EnumerationInfo* const> all_enumerations() { return enumerationTable; }

bool holds_secret(const TypeInfo& type) {
    return std::ranges::any_of(type.fields, [](const FieldInfo& field) {
        const ValueInfo& value = field.value.element != nullptr ? *field.value.element : field.value;
        return field.isSecret || (value.record != nullptr && holds_secret(*value.record));
    });
}

std::string type_text(const ValueInfo& value) {
    static constexpr const char* names[] = {
        "bool",   "int8",   "int16",        "int32",        "int64",        "price",       "uint8",
        "uint16", "uint32", "uint64",       "uint16_fixed", "uint32_fixed", "int64_fixed", "float4",
        "float8", "string", "string_fixed", "cryptstring",  "padding",      "blob",        "cryptblob"};
    switch (value.kind) {
    case Kind::enumeration:
        return std::string(value.enumeration->name);
    case Kind::record:
        return std::string(value.record->name);
    case Kind::vector:
        return type_text(*value.element) + "[]";
    default:
        return names[static_cast<size_t>(value.kind)];
    }
}

std::string path_at(const TypeInfo& type, std::string_view body, size_t offset) {
    const size_t target = std::min(offset, body.size());
    std::string path;
    walk_body(type, body, [&](const BodyValue& value) {
        if (value.begin != target && value.end <= target) return true;
        path = value.path;
        return false;
    });
    return path;
}

} // namespace Inspect
