// The bus over a NATS server against a program that has its library alone: the same bytes, each message acknowledged.
#ifdef QL_WITH_NATS
#include <nats/nats.h>

#include "Host/NatsBus.h"
#endif
#include "bench/host/Runs.h"

namespace bench {

#ifdef QL_WITH_NATS

namespace {

constexpr uint64_t COUNT = 2000;
constexpr int ROUNDS = 15;

/// What a host would write that knows where its messages go.
class Bare {
  public:
    Bare(const std::string& url, const std::string& subject, const std::string& payload)
        : _subject(subject), _payload(payload) {
        QL_ASSERT(natsConnection_ConnectTo(&_connection, url.c_str()) == NATS_OK);
        QL_ASSERT(natsConnection_JetStream(&_stream, _connection, nullptr) == NATS_OK);
    }
    ~Bare() {
        jsCtx_Destroy(_stream);
        natsConnection_Destroy(_connection);
    }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    void publish() {
        natsMsg* message = nullptr;
        QL_ASSERT(
            natsMsg_Create(&message, _subject.c_str(), nullptr, _payload.data(), static_cast<int>(_payload.size()))
            == NATS_OK);
        QL_ASSERT(natsMsgHeader_Set(message, "QL-Time", "1709535600000000000") == NATS_OK);
        jsPubOptions options;
        jsPubOptions_Init(&options);
        const std::string identifier = "1234567890123456789-" + std::to_string(++_published);
        options.MsgId = identifier.c_str();
        options.ExpectStream = "QL";
        QL_ASSERT(js_PublishMsg(nullptr, _stream, message, &options, nullptr) == NATS_OK);
        natsMsg_Destroy(message);
    }
    void read(uint64_t first, uint64_t count) {
        jsSubOptions options;
        jsSubOptions_Init(&options);
        options.Stream = "QL";
        options.Config.AckPolicy = js_AckNone;
        options.Config.FlowControl = true;
        options.Config.Heartbeat = 500'000'000;
        options.Config.DeliverPolicy = js_DeliverByStartSequence;
        options.Config.OptStartSeq = first;
        natsSubscription* subscription = nullptr;
        QL_ASSERT(js_SubscribeSync(&subscription, _stream, "ql.>", nullptr, &options, nullptr) == NATS_OK);
        for (uint64_t i = 0; i < count; ++i) {
            natsMsg* message = nullptr;
            QL_ASSERT(natsSubscription_NextMsg(&message, subscription, 5000) == NATS_OK);
            natsMsg_Destroy(message);
        }
        natsSubscription_Unsubscribe(subscription); // as NatsSource does it, and why
        natsConnection_FlushTimeout(_connection, 2000);
        natsSubscription_Destroy(subscription);
    }

  private:
    const std::string _subject, _payload;
    natsConnection* _connection = nullptr;
    jsCtx* _stream = nullptr;
    uint64_t _published = static_cast<uint64_t>(Clock::now().time_since_epoch().count());
};

} // namespace

void natsRates(const std::string& url) {
    const Order order;
    Host::NatsBus bus(url, Host::qlTopics());
    const Host::Record record{.id = order.message().ID, .body = order.body, .time = 1'709'535'600'000'000'000};
    Bare bare(url, bus.subjectOf(record), Capture::identifierBytes(record.id) + order.body);
    const uint64_t first = bus.publish(record);
    const auto repeated = [](uint64_t times, auto work) {
        return secondsOf([&] {
            for (uint64_t i = 0; i < times; ++i) work();
        });
    };
    std::vector<Measured> all{
        {"the library alone publishes a SubmitOrder and is told of it", COUNT,
         [&] { return repeated(COUNT, [&] { bare.publish(); }); }},
        {"NatsBus publishes the same bytes", COUNT, [&] { return repeated(COUNT, [&] { bus.publish(record); }); }},
        {"NatsBus publishes the message, with its encoding", COUNT,
         [&] { return repeated(COUNT, [&] { bus.publish(order.message(), record.time); }); }},
        {"the library alone reads", COUNT, [&] { return secondsOf([&] { bare.read(first, COUNT); }); }},
        {"NatsBus reads and verifies", COUNT, [&] {
             return secondsOf([&] {
                 const auto subscription = bus.subscribe({}, Host::From::at(first), {[](const Host::Record&) {}, {}});
                 while (subscription->delivered() < COUNT) subscription->poll(1000);
             });
         }}};
    measure(all, ROUNDS);
    std::printf("publishing at %.2f, reading at %.2f of the rate of the library alone\n",
                all[0].median() / all[1].median(), all[3].median() / all[4].median());
}

#else

void natsRates(const std::string&) { std::puts("built without libnats: scripts/setup nats"); }

#endif

} // namespace bench
