#include "Host/NatsBus.h"

#include <cctype>
#include <random>

#include "Capture/Packet.h"
#include "Host/NatsConnection.h"
#include "Host/NatsSource.h"

namespace Host {

namespace {

/// What a subject may hold, in a form from which no two texts come out the same.
std::string token(std::string_view text) {
    if (text.empty()) return "-";
    constexpr const char* digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0 || c == '_' || (c == '-' && text.size() > 1))
            result += c;
        else
            result.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
    return result;
}

std::string someName() {
    std::random_device random;
    return std::to_string(random()) + std::to_string(random()) + '-';
}

} // namespace

NatsBus::NatsBus(const std::string& url, Topics topics)
    : Bus(std::move(topics)), _connection(std::make_unique<NatsConnection>(url)), _publisher(someName()) {}

NatsBus::~NatsBus() = default;

std::string NatsBus::subjectOf(const Record& record) const {
    const std::string_view name = topics().name(record.id);
    const std::string key = name.empty() ? "" : topics().key(record.id, record.body);
    return _connection->place().root() + '.' + token(topics().family(record.id)) + '.' + token(name) + '.' + token(key);
}

uint64_t NatsBus::publish(const Record& record) {
    if (record.body.size() > Capture::MAX_PACKET - Capture::IDENTIFIER_SIZE)
        throw std::length_error("NatsBus: body of " + std::to_string(record.body.size()) + " bytes");
    const std::string payload = Capture::identifierBytes(record.id).append(record.body);
    natsMsg* made = nullptr;
    _connection->demand(
        natsMsg_Create(&made, subjectOf(record).c_str(), nullptr, payload.data(), static_cast<int>(payload.size())));
    const NatsMessageOwner message(made);
    _connection->demand(natsMsgHeader_Set(made, NATS_TIME_HEADER, std::to_string(record.time).c_str()));
    const std::string identifier = _publisher + std::to_string(++_published);
    jsPubOptions options;
    _connection->demand(jsPubOptions_Init(&options));
    options.MsgId = identifier.c_str();
    options.ExpectStream = _connection->place().stream.c_str();
    options.MaxWait = 2000;
    jsPubAck* ack = nullptr;
    _connection->insist(
        [&](jsErrCode& error) { return js_PublishMsg(&ack, _connection->stream(), made, &options, &error); });
    return NatsAckOwner(ack)->Sequence;
}

std::unique_ptr<Source> NatsBus::read(From from) { return std::make_unique<NatsSource>(*_connection, from); }

std::unique_ptr<Source> NatsBus::readNamed(const std::string& name, From from) {
    return std::make_unique<NatsSource>(*_connection, from, name);
}

const Engine NATS_ENGINE{"nats", [](const std::string& url, Topics topics) -> std::unique_ptr<Bus> {
                             return std::make_unique<NatsBus>(url, std::move(topics));
                         }};

} // namespace Host
