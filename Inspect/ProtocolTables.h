// Makes the table of a protocol (Protocol.h) out of its traits. For the generated source STEM.inspect.cpp, in which all
// operations over all types of the protocol are thus compiled.
#pragma once

#include <array>

#include "Backend/Velmora/TypeLists.h"
#include "Inspect/DecodeWalk.h"
#include "Inspect/EncodeWalk.h"
#include "Inspect/JsonWalk.h"
#include "Inspect/ReflectionTables.h"
#include "Inspect/TextWalk.h"
#include "Inspect/ValueWalk.h"
#include "Inspect/VerifyWalk.h"

namespace Inspect::detail {

template <class T>
inline constexpr Operations operationsFor{
    .type = &tables::TypeTable<T>::type,
    .size = sizeof(T),
    .verifier = {&walk::canonical<T>, &walk::judge<T>},
    .encodedSize = [](const void* message) { return encoded_size(*static_cast<const T*>(message)); },
    .encode = &walk::encode_within<T>,
    .encodeMeasured = &walk::encode_measured<T>,
    .decode = &walk::decode_fresh<T>,
    .decodeTrusted = &walk::decode_trusted<T>,
    .writeJson = [](const void* message, JsonWriter& writer) { writer(*static_cast<const T*>(message)); },
    .readJson =
        [](JsonCursor& json, void* message, const JsonPath& path) {
            read_record(json, *static_cast<T*>(message), tables::TypeTable<T>::type, path);
        },
    .render =
        [](const void* message, char* begin, char* end, const Display& display) {
            return TextRenderer(begin, end, display).message(typeNotes(of<T>{}).name, *static_cast<const T*>(message));
        },
    .walkValues =
        [](const void* message, const TypeInfo& type, ValueVisitor& visitor) {
            static_assert(depth_of<T>() <= MAX_DEPTH);
            return ValueWalk(visitor).record(*static_cast<const T*>(message), type);
        },
};

template <class Traits>
struct Tables {
    static constexpr auto operations = [] {
        std::array<Operations, Traits::MESSAGES> table{};
        Traits::messages([&]<class T>(of<T>, const char*) { return table[T::INDEX] = operationsFor<T>, true; });
        return table;
    }();

    static constexpr auto slots = [] {
        std::array<IdIndex::Slot, Traits::MODULUS> table{};
        Traits::messages([&]<class T>(of<T>, const char*) {
            table[T::ID % Traits::MODULUS] = {T::ID, T::INDEX};
            return true;
        });
        return table;
    }();
    static constexpr IdIndex index{slots.data(), Traits::MODULUS};
    static_assert(Traits::messages([]<class T>(of<T>, const char*) {
        const IdIndex::Slot* const slot = index.find(T::ID);
        return slot != nullptr && slot->index == T::INDEX;
    }));

    static constexpr auto messages = [] {
        std::array<MessageInfo, Traits::MESSAGES> table{};
        Traits::messages([&]<class T>(of<T>, const char*) {
            table[T::INDEX] = {T::ID, &tables::TypeTable<T>::type};
            return true;
        });
        return table;
    }();

    static constexpr auto records = [] {
        constexpr auto all = [](auto&& visit) { return Traits::records(visit); };
        std::array<const TypeInfo*, countTypes(all)> table{};
        size_t i = 0;
        all([&]<class T>(of<T>, const char*) { return table[i++] = &tables::TypeTable<T>::type, true; });
        return table;
    }();

    static constexpr auto enumerations = [] {
        constexpr auto all = [](auto&& visit) { return Traits::enumerations(visit); };
        std::array<const EnumerationInfo*, countTypes(all)> table{};
        size_t i = 0;
        all([&]<class H>(of<H>, const char*) { return table[i++] = &tables::enumerationInfo<H>, true; });
        return table;
    }();
};

template <class Traits>
constinit const Protocol ProtocolTable<Traits>::protocol{
    .name = Traits::NAME,
    .version = Traits::VERSION,
    .signature = Traits::SIGNATURE,
    .messages = Tables<Traits>::messages,
    .records = Tables<Traits>::records,
    .enumerations = Tables<Traits>::enumerations,
    .instance = &Traits::instance,
    .initialize = &Traits::initialize,
    .finalize = &Traits::finalize,
    .operations = Tables<Traits>::operations.data(),
    .index = Tables<Traits>::index,
};

} // namespace Inspect::detail
