#include "Host/NatsSource.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <thread>
#include <utility>

#include "Capture/Packet.h"

namespace Host {

namespace {

constexpr int64_t NANOSECONDS = 1'000'000'000;
constexpr int64_t MOST_PENDING = 8192;   // messages ahead of what is done: more than a poll() goes over
constexpr std::chrono::seconds LEAVE{2}; // for which a server may not have noticed that a name is free

} // namespace

NatsSource::NatsSource(const NatsConnection& connection, From from, const std::string& name)
    : _connection(connection), _name(name), _from(from) {
    if (from.kind == From::Kind::live) _from = From::at(connection.lastSequence() + 1);
    if (_from.kind == From::Kind::sequence) _expected = std::max<uint64_t>(_from.sequence, 1);
    connection.insist([&](jsErrCode& error) {
        const natsStatus status = open(error);
        return isTaken(error) ? NATS_TIMEOUT : status;
    });
    _isBegun = true;
}

NatsSource::~NatsSource() {
    if (!_name.empty() && _given && _isDone) { // once more what was done with, and now the server says that it knows
        natsMsg* answer = nullptr;
        natsConnection_RequestString(&answer, _connection.connection(), natsMsg_GetReply(_given.get()), "+ACK", 1000);
        natsMsg_Destroy(answer);
    }
    leave();
}

/// Ends the subscription. The library (3.4.1) may be busy with a message of one that is destroyed, which it does not survive: so
/// first no more is to come, and what has come is to be over when the answer to a ping is.
void NatsSource::leave() {
    if (!_subscription) return;
    natsSubscription_Unsubscribe(_subscription.get());
    natsConnection_FlushTimeout(_connection.connection(), 2000);
    _subscription.reset();
}

bool NatsSource::next(Record& record) {
    while (_message || fetch(0)) {
        NatsMessageOwner message = std::move(_message);
        if (!take(message.get(), record)) continue;
        _given = std::move(message);
        _isDone = false;
        return true;
    }
    return false;
}

void NatsSource::done() {
    if (_name.empty() || std::exchange(_isDone, true)) return;
    natsMsg_Ack(_given.get(), nullptr); // and all before. If that is lost, they come again
}

// --- the consumer

natsStatus NatsSource::open(jsErrCode& error) {
    leave();
    if (!_name.empty()) return openNamed(error);
    jsSubOptions options;
    if (const natsStatus status = jsSubOptions_Init(&options); status != NATS_OK) return status;
    options.Config.AckPolicy = js_AckNone;
    options.Config.MaxDeliver = 1;
    begin(options.Config);
    return subscribe(options, (_connection.place().root() + ".>").c_str(), error);
}

/// Of one that is there, the subject to which it delivers is changed: so all that is not done comes again at once, in order.
natsStatus NatsSource::openNamed(jsErrCode& error) {
    const char* const stream = _connection.place().stream.c_str();
    natsInbox* inbox = nullptr;
    if (const natsStatus status = natsInbox_Create(&inbox); status != NATS_OK) return status;
    const NatsInboxOwner owner(inbox);

    jsConsumerInfo* info = nullptr;
    natsStatus status = js_GetConsumerInfo(&info, _connection.stream(), stream, _name.c_str(), nullptr, &error);
    const NatsConsumerOwner known(info);
    if (status != NATS_OK && status != NATS_NOT_FOUND) return status;
    jsConsumerConfig config;
    if (known) {
        config = *known->Config;
    } else {
        if (status = jsConsumerConfig_Init(&config); status != NATS_OK) return status;
        config.Durable = _name.c_str();
        config.AckPolicy = js_AckAll;
        config.MaxAckPending = MOST_PENDING;
        begin(config);
    }
    config.DeliverSubject = inbox;
    status = js_AddConsumer(&info, _connection.stream(), stream, &config, nullptr, &error);
    if (status != NATS_OK) return status;
    const NatsConsumerOwner made(info);
    if (made->AckFloor.Consumer != 0) { // something is done: where the first one of that name was to begin is over
        _from = From::oldest();
        _expected = std::max(_isBegun ? _expected : 0, made->AckFloor.Stream + 1);
    } else if (!_isBegun) {
        _expected = config.OptStartSeq;
    }

    jsSubOptions options;
    if (status = jsSubOptions_Init(&options); status != NATS_OK) return status;
    options.Consumer = _name.c_str();
    return subscribe(options, nullptr, error);
}

/// Whether another one has the name, for now. Throws BusError if it does so for long.
bool NatsSource::isTaken(jsErrCode error) {
    if (error != JSConsumerNameExistErr) {
        _free = Clock::now();
        return false;
    }
    if (Clock::now() - _free > LEAVE) _connection.fail("another one reads as '" + _name + "'");
    return true;
}

/// Has it begin where this one is.
void NatsSource::begin(jsConsumerConfig& config) const {
    config.FlowControl = true;
    config.Heartbeat = NANOSECONDS / 2;
    if (_expected != 0) {
        config.DeliverPolicy = js_DeliverByStartSequence;
        config.OptStartSeq = _expected;
    } else if (_from.kind == From::Kind::time && _from.time > 0) {
        // The server has messages after they were made, but for what its clock is behind that of publishers.
        config.DeliverPolicy = js_DeliverByStartTime;
        config.OptStartTime = std::max<int64_t>(1, _from.time - 10 * NANOSECONDS);
    } else {
        config.DeliverPolicy = js_DeliverAll;
    }
}

natsStatus NatsSource::subscribe(jsSubOptions& options, const char* subject, jsErrCode& error) {
    options.Stream = _connection.place().stream.c_str();
    natsSubscription* made = nullptr;
    const natsStatus status = js_SubscribeSync(&made, _connection.stream(), subject, nullptr, &options, &error);
    _subscription.reset(made);
    _consumed = 0;
    // Others that come for this name are to be told that it is taken.
    return status == NATS_OK && !_name.empty() ? natsConnection_Flush(_connection.connection()) : status;
}

/// After messages that it has. If nobody answers, it is tried again at the next look.
void NatsSource::reopen() {
    _again = Clock::now() + RETRY;
    auto error = static_cast<jsErrCode>(0);
    const natsStatus status = open(error);
    if (status != NATS_OK && !isTaken(error) && !mayPass(status, error)) _connection.demand(status);
}

// --- its messages

/// Gets the next message from the library. False if there is none for now.
bool NatsSource::fetch(int64_t milliseconds) {
    natsStatus status = NATS_INVALID_SUBSCRIPTION;
    if (_subscription) {
        natsMsg* message = nullptr;
        status = natsSubscription_NextMsg(&message, _subscription.get(), milliseconds);
        _message.reset(message);
    }
    if (status == NATS_OK || status == NATS_TIMEOUT) return status == NATS_OK;
    if (_again > Clock::now()) {
        std::this_thread::sleep_for(std::min(std::chrono::milliseconds(milliseconds), RETRY));
        return false;
    }
    reopen();
    return false;
}

bool NatsSource::take(natsMsg* message, Record& record) {
    jsMsgMetaData* made = nullptr;
    if (natsMsg_GetMetaData(&made, message) != NATS_OK) return false; // none of the stream
    const NatsMetaOwner meta(made);
    const uint64_t consumed = meta->Sequence.Consumer;
    // A consumer with a name goes on counting from whatever it gave to others.
    const bool isNext = _consumed != 0 ? consumed == _consumed + 1 : consumed == 1 || !_name.empty();
    _consumed = consumed;
    if (!isNext) { // some were dropped on the way
        reopen();
        return false;
    }
    record.sequence = meta->Sequence.Stream;
    const std::string_view payload(natsMsg_GetData(message), static_cast<size_t>(natsMsg_GetDataLength(message)));
    // What is too short for an identifier is lost.
    if (record.sequence < _expected || payload.size() < Capture::IDENTIFIER_SIZE) return false;
    record.lost = _expected != 0 ? record.sequence - _expected : 0;
    const char* header = nullptr;
    record.time = meta->Timestamp;
    if (natsMsgHeader_Get(message, NATS_TIME_HEADER, &header) == NATS_OK)
        std::from_chars(header, header + std::char_traits<char>::length(header), record.time);
    if (_from.kind == From::Kind::time && record.time < _from.time) return false;
    _from = From::oldest(); // found
    _expected = record.sequence + 1;
    record.id = Capture::identifierOf(payload);
    record.body = payload.substr(Capture::IDENTIFIER_SIZE);
    return true;
}

} // namespace Host
