// What buses need to know of QLProtocol, for hosts that speak it. Nothing else in this folder knows any protocol.
//
//     const auto bus = Host::openBus(url, Host::qlTopics());
//     Host::Presence self(*bus, Host::QL_PRESENCE, {.application = 7, .generation = now}, now);
#pragma once

#include "Host/Presence.h"
#include "Inspect/Checked.h"
#include "generated/QLProtocol/QLProtocol.h"
#include "generated/QLProtocol/QLProtocol.traits.h"

namespace Host {

inline constexpr Family QL_FAMILIES[] = {
    {0x00, "control"},  {0x02, "quotes"}, // MassQuoteAckMessage, whose identifier is out of line
    {0xA0, "liveness"}, {0xB0, "market-data"}, {0xD0, "internals"},  {0xF0, "orders"},
    {0xF2, "quotes"},   {0xFA, "clients"},     {0xFB, "memory-bus"},
};

/// Messages are told apart by market, else by whom they concern.
inline constexpr std::string_view QL_KEYS[] = {"marketID", "userID", "sessionID", "feedID"};

inline Topics qlTopics() { return Topics(Inspect::protocol_of<Quillon::QLProtocolTraits>(), QL_FAMILIES, QL_KEYS); }

inline constexpr PresenceMessages QL_PRESENCE{
    .connect = Quillon::MemBusConnectMessage::ID,
    .heartbeat = Quillon::MemBusHeartbeatMessage::ID,
    .disconnect = Quillon::MemBusDisconnectMessage::ID,
    .body =
        [](const Incarnation& self) {
            Quillon::MemBusConnectMessage message;
            message.id.set(self.application, self.generation);
            char bytes[32];
            return std::string(bytes, Inspect::encode_checked(message, bytes, bytes + sizeof bytes).size);
        },
    .read =
        [](std::string_view body) {
            Quillon::MemBusConnectMessage message;
            Velmora::FastCodec codec(const_cast<char*>(body.data()), const_cast<char*>(body.data() + body.size()));
            message.read(codec);
            return Incarnation{message.id.appID, message.id.generation};
        },
};

} // namespace Host
