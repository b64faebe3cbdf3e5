// How many messages the protocol has, for tables by INDEX.
#pragma once

#include "Backend/Velmora/TypeLists.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace qlproto {

inline constexpr std::size_t MESSAGE_COUNT =
    static_cast<std::size_t>(Velmora::countTypes([](auto&& visit) { return Quillon::messages(visit); }));

} // namespace qlproto
