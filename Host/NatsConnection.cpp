#include "Host/NatsConnection.h"

#include <cctype>
#include <charconv>

#include "Host/Bus.h"

namespace Host {

namespace {

/// What went wrong, without the place in the library's sources that it begins with: "(conn.c:733): ".
std::string reasonOf(natsStatus status) {
    natsStatus last = NATS_OK;
    const char* const text = nats_GetLastError(&last);
    if (last != status || text == nullptr || *text == '\0') return natsStatus_GetText(status);
    const std::string reason = text;
    const size_t place = reason.starts_with('(') ? reason.find("): ") : reason.npos;
    return place == reason.npos ? reason : reason.substr(place + 3);
}

} // namespace

NatsPlace::NatsPlace(const std::string& url) {
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
    if (stream.find_first_of(" .*>/\\") != stream.npos) throw BusError(shownUrl(url) + ": no name of a stream");
    for (size_t at = query; at < url.size();) {
        const size_t end = std::min(url.find('&', at + 1), url.size()), is = url.find('=', at + 1);
        if (is >= end) throw BusError(shownUrl(url) + ": an option is NAME=VALUE");
        set(url, url.substr(at + 1, is - at - 1), url.substr(is + 1, end - is - 1));
        at = end;
    }
}

void NatsPlace::set(const std::string& url, const std::string& name, const std::string& value) {
    for (auto [known, text] : {std::pair("ca", &ca), {"cert", &cert}, {"key", &key}, {"creds", &creds}})
        if (name == known) {
            *text = value;
            return;
        }
    for (auto [known, number] : {std::pair("replicas", &replicas), {"patience", &patience}}) {
        if (name != known) continue;
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), *number);
        if (error != std::errc() || end != value.data() + value.size() || *number < 1 || *number > 86400)
            throw BusError(shownUrl(url) + ": '" + value + "' is no number for " + name);
        return;
    }
    throw BusError(shownUrl(url) + ": no option is named '" + name + "'");
}

std::string NatsPlace::root() const {
    std::string name = stream;
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

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

NatsConnection::NatsConnection(const std::string& url) : _shown(shownUrl(url)), _place(url) {
    natsConnection* connected = nullptr;
    const natsStatus status = natsConnection_Connect(&connected, options().get());
    const bool isHungUp = status == NATS_PROTOCOL_ERROR || status == NATS_CONNECTION_CLOSED || status == NATS_IO_ERROR;
    if (isHungUp && !_place.ca.empty()) // which is all that is seen of it
        fail(reasonOf(status) + "; the server may want another certificate of this side (cert=FILE&key=FILE)");
    demand(status);
    _connection.reset(connected);
    jsCtx* stream = nullptr;
    demand(natsConnection_JetStream(&stream, connected, nullptr));
    _stream.reset(stream);
    makeStream();
}

NatsOptionsOwner NatsConnection::options() const {
    natsOptions* made = nullptr;
    demand(natsOptions_Create(&made));
    NatsOptionsOwner options(made);
    std::vector<const char*> servers;
    for (const std::string& it : _place.servers) servers.push_back(it.c_str());
    demand(natsOptions_SetServers(made, servers.data(), static_cast<int>(servers.size())));
    demand(natsOptions_SetMaxReconnect(made, -1));
    demand(natsOptions_SetReconnectWait(made, 100));
    demand(natsOptions_SetFailRequestsOnDisconnect(made, true));
    demand(natsOptions_SetSendAsap(made, true)); // what a reader says to be done, not some milliseconds later
    demand(natsOptions_SetName(made, "QLProtocol"));
    if (!_place.ca.empty()) demand(natsOptions_LoadCATrustedCertificates(made, _place.ca.c_str()));
    if (!_place.ca.empty()) demand(natsOptions_SetSecure(made, true));
    if (!_place.cert.empty()) demand(natsOptions_LoadCertificatesChain(made, _place.cert.c_str(), _place.key.c_str()));
    if (!_place.creds.empty()) demand(natsOptions_SetUserCredentialsFromFiles(made, _place.creds.c_str(), nullptr));
    return options;
}

void NatsConnection::demand(natsStatus status) const {
    if (status != NATS_OK) fail(reasonOf(status));
}

void NatsConnection::fail(const std::string& reason) const { throw BusError(_shown + ": " + reason); }

uint64_t NatsConnection::lastSequence() const {
    jsStreamInfo* info = nullptr;
    insist([&](jsErrCode& error) { return js_GetStreamInfo(&info, stream(), _place.stream.c_str(), nullptr, &error); });
    return NatsStreamOwner(info)->State.LastSeq;
}

/// Makes the stream. One that is there stays as it is, however it was made.
void NatsConnection::makeStream() {
    jsStreamConfig config;
    demand(jsStreamConfig_Init(&config));
    const std::string subject = _place.root() + ".>";
    const char* subjects[] = {subject.c_str()};
    config.Name = _place.stream.c_str();
    config.Subjects = subjects;
    config.SubjectsLen = 1;
    config.Replicas = _place.replicas;
    insist([&](jsErrCode& error) {
        const natsStatus status = js_AddStream(nullptr, stream(), &config, nullptr, &error);
        return error == JSStreamNameExistErr ? NATS_OK : status;
    });
}

} // namespace Host
