#include "tools/qlproto/trading/session/Connections.h"

#include <fmt/format.h>

namespace qlproto::session {

using namespace Quillon;

namespace {

constexpr int64_t INTERVAL = 30 * MILLISECONDS; // from one event to the next, on average
constexpr int16_t APPLICATION = 7;              // on the memory bus
constexpr int64_t GENERATION = 1709;            // of that application's run

} // namespace

const Connections::Events Connections::EVENTS = {{
    {&Connections::heartbeatTimer, &Connections::heartbeat},
    {&Connections::heartbeatTimer, &Connections::heartbeat},
    {&Connections::ruThere, &Connections::imHere},
    {&Connections::ruThere, &Connections::imHere},
    {&Connections::memoryBusHeartbeat},
    {&Connections::pad},
}};

Connections::Connections(const World& world, Scheduler& scheduler, Sender& sender, Rng rng)
    : Routine(world, scheduler, sender, rng, EVENTS, INTERVAL, 100 * MICROSECONDS) {}

void Connections::sendVersion() {
    _sender.send<VersionMessage>([](VersionMessage& message) {
        message.program = "apiserver";
        message.version_major = 4;
        message.version_minor = 2;
        message.version_micro = 17;
        message.revision = "8c1f2ab";
        message.commitdate = "2024-03-01";
        message.branch = "release";
        message.build = "release";
        message.arch = "x86_64";
        message.host = "bramble";
        message.date = "Mar  1 2024";
        message.time = "18:04:11";
        message.compiler = "g++ 12.2";
        message.defines = "NDEBUG";
        message.builduser = "builder";
        message.distribution = "Debian 12";
        message.platform = "linux";
        message.protosig = __protocol->getSignature();
        message.syncSize = 65536;
    });
}

void Connections::sendProtocolDefinition() {
    _sender.send<ProtocolDefinitionMessage>([](ProtocolDefinitionMessage& message) {
        std::size_t length = 0;
        const auto* definition = static_cast<const char*>(__protocol->getCompressedDefinition(length));
        message.proto.assign(definition, length);
    });
}

void Connections::connect(const User& user) {
    _sender.send<ClientConnectMessage>([&](ClientConnectMessage& message) {
        message.user = user.name;
        message.password = "not-a-secret";
    });
}

void Connections::answerConnect(const User& user) {
    _sender.send<ConnectResponseMessage>([&](ConnectResponseMessage& message) {
        message.connectionResponse = ConnectionResponse::SUCCESS;
        message.text = "welcome";
        message.sessionID = user.sessionID;
        message.userType = user.type;
    });
}

void Connections::sendClientInfo(const User& user) {
    _sender.send<InternalClientInfoMessage>([&](InternalClientInfoMessage& message) {
        message.userID = user.id;
        message.sessionID = user.sessionID;
        message.timeConnected = _scheduler.now();
        message.apiLanguage = user.language;
        message.apiVersion = "4.2.17";
        message.ipAddress = fmt::format("192.0.2.{}", user.id); // of the block for documentation
    });
}

void Connections::disconnect(const User& user) {
    _sender.send<ClientDisconnectMessage>([&](ClientDisconnectMessage& message) {
        message.sessionID = user.sessionID;
        message.timeDisconnected = _scheduler.now();
    });
}

void Connections::connectMemoryBus() {
    _sender.send<MemBusConnectMessage>([](MemBusConnectMessage& message) { message.id.set(APPLICATION, GENERATION); });
}

void Connections::disconnectMemoryBus() {
    _sender.send<MemBusDisconnectMessage>(
        [](MemBusDisconnectMessage& message) { message.id.set(APPLICATION, GENERATION); });
}

void Connections::memoryBusHeartbeat() {
    _sender.send<MemBusHeartbeatMessage>(
        [](MemBusHeartbeatMessage& message) { message.id.set(APPLICATION, GENERATION); });
}

void Connections::heartbeatTimer() {
    _sender.send<HeartbeatTimerMessage>([](HeartbeatTimerMessage& message) { message.interval_ns = 3 * INTERVAL; });
}

void Connections::heartbeat() {
    _sender.send<HeartbeatMessage>([&](HeartbeatMessage& message) {
        message.contents.timeApiServer = _scheduler.now();
        for (const Feed& feed : _world.feeds) message.contents.activeFeeds.push_back(feed.id);
        message.feedSeqID = ++_heartbeats;
    });
}

void Connections::ruThere() {
    _probeSent = _scheduler.now();
    _sender.send<RuThereMessage>([&](RuThereMessage& message) {
        message.dpdSeqNo = ++_probes;
        message.timeApiClient = _probeSent;
    });
}

void Connections::imHere() {
    _sender.send<ImHereMessage>([&](ImHereMessage& message) {
        message.dpdSeqNo = _probes;
        message.timeApiClient = _probeSent;
        message.timeApiServer = _scheduler.now();
    });
}

void Connections::pad() {
    _sender.send<PadMessage>([&](PadMessage& message) {
        message.padding = std::string(static_cast<std::size_t>(_rng.between(0, 60)), ' ');
    });
}

} // namespace qlproto::session
