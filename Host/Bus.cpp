#include "Host/Bus.h"

#include <algorithm>
#include <cctype>

#include "Capture/Packet.h"
#include "Capture/Verification.h"

namespace Host {

namespace {

constexpr size_t MOST_AT_ONCE = 512; // so that who polls looks around now and then

} // namespace

Subscription::Subscription(const Topics& topics, const Filter& filter, std::unique_ptr<Source> source, Handler handler)
    : _topics(topics), _chooser(topics, filter), _source(std::move(source)), _handler(std::move(handler)) {}

size_t Subscription::poll(int milliseconds) {
    Record record;
    size_t passed = 0;
    while (passed < MOST_AT_ONCE && _source->next(record)) {
        take(record);
        ++passed;
    }
    if (passed == 0) return _source->wait(milliseconds) ? poll(0) : 0;
    _source->done();
    return passed;
}

void Subscription::take(const Record& record) {
    _sequence = record.sequence;
    if (record.lost != 0) {
        _lost += record.lost;
        if (_handler.lost) _handler.lost(record.lost);
    }
    if (!Capture::verifyBody(_topics.protocol(), record.id, record.body, Inspect::whole)) {
        ++_refused;
        return;
    }
    if (!_chooser.takes(record)) return;
    ++_delivered;
    _handler.message(record);
}

Inspect::Encoded Bus::publish(Velmora::MsgType_t id, const void* message, int64_t time, uint64_t& sequence) {
    sequence = 0;
    std::string body(1024, '\0'); // mostly enough; else the refusal tells how much is
    for (;;) {
        Inspect::Encoded encoded =
            Inspect::encode_checked(_topics.protocol(), id, message, body.data(), body.data() + body.size());
        if (encoded.refusal == Inspect::Refusal::tooSmall && encoded.size <= Capture::MAX_PACKET) {
            body.resize(encoded.size);
            continue;
        }
        if (encoded)
            sequence = publish({.id = id, .body = std::string_view(body).substr(0, encoded.size), .time = time});
        return encoded;
    }
}

std::unique_ptr<Source> Bus::readAs(const std::string& name, From from) {
    const auto isGood = [](unsigned char c) { return std::isalnum(c) != 0 || c == '-' || c == '_'; };
    if (name.empty() || name.size() > LONGEST_READER_NAME || !std::ranges::all_of(name, isGood))
        throw std::invalid_argument("'" + name + "' is no name of a reader: 1 to " + std::to_string(LONGEST_READER_NAME)
                                    + " letters, digits, '-' and '_'");
    return readNamed(name, from);
}

bool isUrl(std::string_view place) { return place.find(':') != place.npos; }

std::string shownUrl(std::string url) {
    const size_t scheme = url.find("://");
    if (scheme == url.npos) return url;
    size_t begin = scheme + 3; // of a server
    for (size_t at = begin; at < url.size() && url[at] != '/' && url[at] != '?';) {
        if (url[at] == '@') {
            url.erase(begin, at + 1 - begin);
            at = begin;
        } else if (url[at++] == ',') {
            begin = at;
        }
    }
    return url;
}

std::unique_ptr<Bus> openBus(const std::string& url, Topics topics, std::span<const Engine> engines) {
    std::string known;
    for (const Engine& engine : engines) {
        if (url.starts_with(std::string(engine.scheme) + ':')) return engine.open(url, std::move(topics));
        known += (known.empty() ? "" : ", ") + std::string(engine.scheme) + ':';
    }
    throw BusError(shownUrl(url) + ": no bus that this program knows (" + known + ")");
}

} // namespace Host
