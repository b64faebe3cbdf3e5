// Makes the table of a protocol (Protocol.h) out of its traits, and with it the tables of reflection.
#pragma once

#include <array>

#include "Backend/Velmora/TypeLists.h"
#include "Inspect/Protocol.h"
#include "Inspect/ReflectionTables.h"

namespace Inspect::detail {

using Velmora::countTypes;
using Velmora::of;

template <class Traits>
struct Tables {
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
        const IdIndex::Slot& slot = slots[index.position(T::ID)];
        return slot.id == T::ID && slot.index == T::INDEX;
    }));

    static constexpr auto messages = [] {
        std::array<MessageInfo, Traits::MESSAGES> table{};
        Traits::messages([&]<class T>(of<T>, const char*) {
            table[T::INDEX] = {T::ID, &tables::type_of<T>()};
            return true;
        });
        return table;
    }();

    static constexpr auto records = [] {
        constexpr auto all = [](auto&& visit) { return Traits::records(visit); };
        std::array<const TypeInfo*, countTypes(all)> table{};
        size_t i = 0;
        all([&]<class T>(of<T>, const char*) { return table[i++] = &tables::type_of<T>(), true; });
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

#pragma GCC diagnostic push
#ifdef __clang__ // the tables of operations stand in sources of their own
#pragma GCC diagnostic ignored "-Wundefined-var-template"
#endif
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
    .wireSignature = Traits::WIRE_SIGNATURE,
    .namesSignature = Traits::NAMES_SIGNATURE,
    .index = Tables<Traits>::index,
    .verifiers = MessageTable<Verifier, Traits>::table.data(),
    .decoders = MessageTable<Decoder, Traits>::table.data(),
    .encoders = MessageTable<Encoder, Traits>::table.data(),
    .jsonCoders = MessageTable<JsonCoder, Traits>::table.data(),
    .renderers = MessageTable<Renderer, Traits>::table.data(),
    .valueWalkers = MessageTable<ValueWalker, Traits>::table.data(),
};
#pragma GCC diagnostic pop

} // namespace Inspect::detail
