// A constant table with one entry per message, found by identifier in one step.
#pragma once

#include <cstddef>

#include "Backend/Velmora/MsgDescriptor.h"
#include "Backend/Velmora/TypeLists.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace Inspect {

template <class Entry>
class IdTable {
    // No two identifiers are the same modulo this, which the protocol's own registry relies on too.
    static constexpr size_t MODULO = 350;
    static_assert(Velmora::idsDistinct<MODULO>([](auto&& visit) { return Quillon::messages(visit); }));

  public:
    /// `make(of<T>{}, name)` gives the entry of each message.
    template <class Make>
    consteval explicit IdTable(Make make) {
        Quillon::messages([&]<class T>(Velmora::of<T> type, const char* name) {
            _slots[T::ID % MODULO] = {true, T::ID, make(type, name)};
            return true;
        });
    }

    /// The entry of that message, or null if there is no such message.
    constexpr const Entry* find(Velmora::MsgType_t id) const {
        const Slot& slot = _slots[id % MODULO];
        return slot.isUsed && slot.id == id ? &slot.entry : nullptr;
    }

  private:
    struct Slot {
        bool isUsed = false;
        Velmora::MsgType_t id = 0;
        Entry entry{};
    };
    Slot _slots[MODULO] = {};
};

} // namespace Inspect
