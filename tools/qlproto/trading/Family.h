// The families of messages, told by the high byte of their identifiers. For people only: no receiver may rely on it.
#pragma once

#include <array>
#include <string_view>

#include "Backend/Velmora/MsgDescriptor.h"

namespace qlproto {

struct Family {
    unsigned highByte;
    std::string_view name;
};

inline constexpr std::array<Family, 9> FAMILIES{{
    {0x00, "control"},
    {0x02, "quotes"}, // MassQuoteAckMessage, whose identifier is out of line
    {0xA0, "liveness"},
    {0xB0, "market-data"},
    {0xD0, "internals"},
    {0xF0, "orders"},
    {0xF2, "quotes"},
    {0xFA, "clients"},
    {0xFB, "memory-bus"},
}};

/// The family of that message; empty for an identifier that belongs to none.
constexpr std::string_view familyOf(Velmora::MsgType_t id) {
    for (const Family& family : FAMILIES)
        if (family.highByte == id >> 8) return family.name;
    return {};
}

} // namespace qlproto
