#include "Host/NatsBus.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

#include <nats/nats.h>

#include "Capture/Packet.h"

namespace Host {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr const char* TIME_HEADER = "QL-Time";
constexpr int64_t NANOSECONDS = 1'000'000'000;

/// What the library gives out, given back at the end.
template <class T, void (*destroy)(T*)>
struct Given {
    void operator()(T* it) const { destroy(it); }
    using Owner = std::unique_ptr<T, Given>;
};
using OptionsOwner = Given<natsOptions, natsOptions_Destroy>::Owner;
using ConnectionOwner = Given<natsConnection, natsConnection_Destroy>::Owner;
using ContextOwner = Given<jsCtx, jsCtx_Destroy>::Owner;
using MessageOwner = Given<natsMsg, natsMsg_Destroy>::Owner;
using SubscriptionOwner = Given<natsSubscription, natsSubscription_Destroy>::Owner;
using StreamOwner = Given<jsStreamInfo, jsStreamInfo_Destroy>::Owner;
using AckOwner = Given<jsPubAck, jsPubAck_Destroy>::Owner;
using MetaOwner = Given<jsMsgMetaData, jsMsgMetaData_Destroy>::Owner;

/// The parts of the URL that this side is to know, and the rest for the library.
struct Place {
    std::vector<std::string> servers;
    std::string stream = "QL", ca, cert, key, creds;
    int64_t replicas = 1, patience = 30;

    explicit Place(const std::string& url) {
        const size_t query = std::min(url.find('?'), url.size());
        const std::string scheme = url.substr(0, url.find("://") + 3);
        std::string hosts = url.substr(std::min(scheme.size(), query), query - std::min(scheme.size(), query));
        const size_t slash = std::min(hosts.find('/'), hosts.size());
        if (slash + 1 < hosts.size()) stream = hosts.substr(slash + 1);
        hosts.resize(slash);
        for (size_t at = 0; at <= hosts.size();) {
            const size_t end = std::min(hosts.find(',', at), hosts.size());
            servers.push_back(scheme + hosts.substr(at, end - at));
            at = end + 1;
        }
        if (stream.find_first_of(" .*>/\\") != stream.npos) throw BusError(url + ": no name of a stream");
        for (size_t at = query; at < url.size();) {
            const size_t end = std::min(url.find('&', at + 1), url.size()), is = url.find('=', at + 1);
            if (is >= end) throw BusError(url + ": an option is NAME=VALUE");
            set(url, url.substr(at + 1, is - at - 1), url.substr(is + 1, end - is - 1));
            at = end;
        }
    }

    std::string root() const { // of subjects
        std::string name = stream;
        std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return name;
    }

  private:
    void set(const std::string& url, const std::string& name, const std::string& value) {
        for (auto [known, text] : {std::pair("ca", &ca), {"cert", &cert}, {"key", &key}, {"creds", &creds}})
            if (name == known) {
                *text = value;
                return;
            }
        for (auto [known, number] : {std::pair("replicas", &replicas), {"patience", &patience}}) {
            if (name != known) continue;
            const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), *number);
            if (error != std::errc() || end != value.data() + value.size() || *number < 1 || *number > 86400)
                throw BusError(url + ": '" + value + "' is no number for " + name);
            return;
        }
        throw BusError(url + ": no option is named '" + name + "'");
    }
};

/// Whether it is worth to be tried again: nobody answers, or nobody leads the stream just now.
bool mayPass(natsStatus status, jsErrCode error) {
    switch (status) {
    case NATS_TIMEOUT:
    case NATS_NO_RESPONDERS:
    case NATS_NO_SERVER:
    case NATS_CONNECTION_DISCONNECTED:
    case NATS_CONNECTION_CLOSED:
    case NATS_STALE_CONNECTION:
    case NATS_IO_ERROR:
        return true;
    default:
        return error == JSClusterNotAvailErr || error == JSClusterNotLeaderErr || error == JSClusterNotAssignedErr;
    }
}

std::string reasonOf(natsStatus status) {
    natsStatus last = NATS_OK;
    const char* const text = nats_GetLastError(&last);
    return last == status && text != nullptr && *text != '\0' ? text : natsStatus_GetText(status);
}

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

} // namespace

/// To the servers, with the stream.
class NatsConnection {
  public:
    const std::string url;
    const Place place;
    ConnectionOwner connection;
    ContextOwner context;

    explicit NatsConnection(const std::string& url_) : url(url_), place(url_) {
        natsOptions* made = nullptr;
        demand(natsOptions_Create(&made));
        const OptionsOwner options(made);
        std::vector<const char*> servers;
        for (const std::string& it : place.servers) servers.push_back(it.c_str());
        demand(natsOptions_SetServers(made, servers.data(), static_cast<int>(servers.size())));
        demand(natsOptions_SetMaxReconnect(made, -1));
        demand(natsOptions_SetReconnectWait(made, 100));
        demand(natsOptions_SetFailRequestsOnDisconnect(made, true));
        demand(natsOptions_SetName(made, "QLProtocol"));
        if (!place.ca.empty()) demand(natsOptions_LoadCATrustedCertificates(made, place.ca.c_str()));
        if (!place.ca.empty()) demand(natsOptions_SetSecure(made, true));
        if (!place.cert.empty()) demand(natsOptions_LoadCertificatesChain(made, place.cert.c_str(), place.key.c_str()));
        if (!place.creds.empty()) demand(natsOptions_SetUserCredentialsFromFiles(made, place.creds.c_str(), nullptr));
        natsConnection* connected = nullptr;
        demand(natsConnection_Connect(&connected, made));
        connection.reset(connected);
        jsCtx* stream = nullptr;
        demand(natsConnection_JetStream(&stream, connected, nullptr));
        context.reset(stream);
        makeStream();
    }

    void demand(natsStatus status) const {
        if (status != NATS_OK) throw BusError(url + ": " + reasonOf(status));
    }

    /// Tries until it is done, or is of no use, or the patience is at its end: `work` returns how it went.
    template <class Work>
    void insist(Work&& work) const {
        const Clock::time_point end = Clock::now() + std::chrono::seconds(place.patience);
        for (Milliseconds pause(5);; pause = std::min(2 * pause, Milliseconds(1000))) {
            auto error = static_cast<jsErrCode>(0);
            const natsStatus status = work(error);
            if (status == NATS_OK) return;
            if (!mayPass(status, error) || Clock::now() + pause > end) demand(status);
            std::this_thread::sleep_for(pause);
        }
    }

    uint64_t lastSequence() const {
        jsStreamInfo* info = nullptr;
        insist([&](jsErrCode& error) {
            return js_GetStreamInfo(&info, context.get(), place.stream.c_str(), nullptr, &error);
        });
        return StreamOwner(info)->State.LastSeq;
    }

  private:
    /// Makes the stream. One that is there stays as it is, however it was made.
    void makeStream() {
        jsStreamConfig config;
        demand(jsStreamConfig_Init(&config));
        const std::string subject = place.root() + ".>";
        const char* subjects[] = {subject.c_str()};
        config.Name = place.stream.c_str();
        config.Subjects = subjects;
        config.SubjectsLen = 1;
        config.Replicas = place.replicas;
        insist([&](jsErrCode& error) {
            const natsStatus status = js_AddStream(nullptr, context.get(), &config, nullptr, &error);
            return error == JSStreamNameExistErr ? NATS_OK : status;
        });
    }
};

namespace {

std::string someName() {
    std::random_device random;
    return std::to_string(random()) + std::to_string(random()) + '-';
}

/// A consumer of the server's that remembers nothing: where to go on after it, or a server, has gone is known here.
class NatsSource : public Source {
  public:
    NatsSource(const NatsConnection& connection, From from) : _connection(connection), _from(from) {
        if (from.kind == From::Kind::live) _from = From::at(connection.lastSequence() + 1);
        if (_from.kind == From::Kind::sequence) _expected = std::max<uint64_t>(_from.sequence, 1);
        connection.insist([&](jsErrCode& error) { return open(error); });
    }

    bool next(Record& record) override {
        while (_message || fetch(0)) {
            _taken = std::move(_message);
            if (take(record)) return true;
        }
        return false;
    }
    bool wait(int milliseconds) override { return _message || fetch(milliseconds); }

  private:
    natsStatus open(jsErrCode& error) {
        jsSubOptions options;
        if (const natsStatus status = jsSubOptions_Init(&options); status != NATS_OK) return status;
        options.Stream = _connection.place.stream.c_str();
        options.Config.AckPolicy = js_AckNone;
        options.Config.MaxDeliver = 1;
        options.Config.FlowControl = true;
        options.Config.Heartbeat = NANOSECONDS / 2;
        if (_expected != 0) {
            options.Config.DeliverPolicy = js_DeliverByStartSequence;
            options.Config.OptStartSeq = _expected;
        } else if (_from.kind == From::Kind::time && _from.time > 0) {
            // The server has messages after they were made, but for what its clock is behind that of publishers.
            options.Config.DeliverPolicy = js_DeliverByStartTime;
            options.Config.OptStartTime = std::max<int64_t>(1, _from.time - 10 * NANOSECONDS);
        } else {
            options.Config.DeliverPolicy = js_DeliverAll;
        }
        natsSubscription* made = nullptr;
        _subscription.reset();
        const std::string subjects = _connection.place.root() + ".>";
        const natsStatus status =
            js_SubscribeSync(&made, _connection.context.get(), subjects.c_str(), nullptr, &options, &error);
        _subscription.reset(made);
        _consumed = 0;
        return status;
    }

    /// Gets the next message from the library. False if there is none for now.
    bool fetch(int64_t milliseconds) {
        natsStatus status = NATS_INVALID_SUBSCRIPTION;
        if (_subscription) {
            natsMsg* message = nullptr;
            status = natsSubscription_NextMsg(&message, _subscription.get(), milliseconds);
            _message.reset(message);
        }
        if (status == NATS_OK || status == NATS_TIMEOUT) return status == NATS_OK;
        if (_again > Clock::now()) {
            std::this_thread::sleep_for(std::min(Milliseconds(milliseconds), RETRY));
            return false;
        }
        reopen();
        return false;
    }

    /// After messages that it has. If nobody answers, it is tried again at the next look.
    void reopen() {
        _again = Clock::now() + RETRY;
        auto error = static_cast<jsErrCode>(0);
        if (const natsStatus status = open(error); status != NATS_OK && !mayPass(status, error))
            _connection.demand(status);
    }

    bool take(Record& record) {
        jsMsgMetaData* made = nullptr;
        if (natsMsg_GetMetaData(&made, _taken.get()) != NATS_OK) return false; // none of the stream
        const MetaOwner meta(made);
        if (meta->Sequence.Consumer != ++_consumed) { // some were dropped on the way
            reopen();
            return false;
        }
        record.sequence = meta->Sequence.Stream;
        const std::string_view payload(natsMsg_GetData(_taken.get()),
                                       static_cast<size_t>(natsMsg_GetDataLength(_taken.get())));
        // What is too short for an identifier is lost.
        if (record.sequence < _expected || payload.size() < Capture::IDENTIFIER_SIZE) return false;
        record.lost = _expected != 0 ? record.sequence - _expected : 0;
        const char* header = nullptr;
        record.time = meta->Timestamp;
        if (natsMsgHeader_Get(_taken.get(), TIME_HEADER, &header) == NATS_OK)
            std::from_chars(header, header + std::char_traits<char>::length(header), record.time);
        if (_from.kind == From::Kind::time && record.time < _from.time) return false;
        _from = From::oldest(); // found
        _expected = record.sequence + 1;
        record.id = Capture::identifierOf(payload);
        record.body = payload.substr(Capture::IDENTIFIER_SIZE);
        return true;
    }

    static constexpr Milliseconds RETRY{100};

    const NatsConnection& _connection;
    From _from;
    uint64_t _expected = 0; ///< sequence of the next message; 0: not known yet
    SubscriptionOwner _subscription;
    uint64_t _consumed = 0;        ///< messages that the server's consumer has given
    MessageOwner _message, _taken; ///< the next one, and the last one
    Clock::time_point _again{};
};

} // namespace

NatsBus::NatsBus(const std::string& url, Topics topics)
    : Bus(std::move(topics)), _connection(std::make_unique<NatsConnection>(url)), _publisher(someName()) {}

NatsBus::~NatsBus() = default;

std::string NatsBus::subjectOf(const Record& record) const {
    const std::string_view name = topics().name(record.id);
    const std::string key = name.empty() ? "" : topics().key(record.id, record.body);
    return _connection->place.root() + '.' + token(topics().family(record.id)) + '.' + token(name) + '.' + token(key);
}

uint64_t NatsBus::publish(const Record& record) {
    if (record.body.size() > Capture::MAX_PACKET - Capture::IDENTIFIER_SIZE)
        throw std::length_error("NatsBus: body of " + std::to_string(record.body.size()) + " bytes");
    const std::string payload = Capture::identifierBytes(record.id).append(record.body);
    natsMsg* made = nullptr;
    _connection->demand(
        natsMsg_Create(&made, subjectOf(record).c_str(), nullptr, payload.data(), static_cast<int>(payload.size())));
    const MessageOwner message(made);
    _connection->demand(natsMsgHeader_Set(made, TIME_HEADER, std::to_string(record.time).c_str()));
    const std::string identifier = _publisher + std::to_string(++_published);
    jsPubOptions options;
    _connection->demand(jsPubOptions_Init(&options));
    options.MsgId = identifier.c_str();
    options.ExpectStream = _connection->place.stream.c_str();
    options.MaxWait = 2000;
    jsPubAck* ack = nullptr;
    _connection->insist(
        [&](jsErrCode& error) { return js_PublishMsg(&ack, _connection->context.get(), made, &options, &error); });
    return AckOwner(ack)->Sequence;
}

std::unique_ptr<Source> NatsBus::read(From from) { return std::make_unique<NatsSource>(*_connection, from); }

const Engine NATS_ENGINE{"nats", [](const std::string& url, Topics topics) -> std::unique_ptr<Bus> {
                             return std::make_unique<NatsBus>(url, std::move(topics));
                         }};

} // namespace Host
