// The same messages across processes by iceoryx, which hands over memory and copies nothing: what a ring is to be read against.
#include "bench/host/Runs.h"

#ifdef QL_WITH_ICEORYX
#include <cstring>

#include <iceoryx_posh/popo/publisher.hpp>
#include <iceoryx_posh/popo/subscriber.hpp>
#include <iceoryx_posh/runtime/posh_runtime.hpp>
#endif

namespace bench {

#ifdef QL_WITH_ICEORYX

namespace {

constexpr uint64_t COUNT = 500'000;

struct Message {
    uint32_t size;
    char bytes[124];
};

double acrossIceoryx(const Order& order) {
    const iox::capro::ServiceDescription service{"bench", "host", "order"};
    return acrossProcesses(
        [&] {
            iox::runtime::PoshRuntime::initRuntime("qlhostbench-sender");
            iox::popo::PublisherOptions options;
            options.subscriberTooSlowPolicy = iox::popo::ConsumerTooSlowPolicy::WAIT_FOR_CONSUMER;
            iox::popo::Publisher<Message> publisher(service, options);
            while (!publisher.hasSubscribers()) usleep(1000);
            for (uint64_t i = 0; i < COUNT; ++i)
                publisher.loan()
                    .and_then([&](auto& sample) {
                        const Inspect::Encoded encoded = Inspect::encode_checked(order.message(), sample->bytes,
                                                                                 sample->bytes + sizeof sample->bytes);
                        QL_ASSERT(encoded);
                        sample->size = static_cast<uint32_t>(encoded.size);
                        sample.publish();
                    })
                    .or_else([](auto&) { QL_ASSERT(!"a chunk"); });
        },
        [&](const std::function<void()>& got) {
            iox::runtime::PoshRuntime::initRuntime("qlhostbench-receiver");
            iox::popo::SubscriberOptions options;
            options.queueCapacity = 256; // the most that it has
            options.queueFullPolicy = iox::popo::QueueFullPolicy::BLOCK_PRODUCER;
            iox::popo::Subscriber<Message> subscriber(service, options);
            for (uint64_t left = COUNT; left > 0;)
                subscriber.take().and_then([&](auto& sample) {
                    QL_ASSERT(isGood(order.message().ID, {sample->bytes, sample->size}));
                    got();
                    --left;
                });
        });
}

} // namespace

void addIceoryx(std::vector<Measured>& all, const Order& order) {
    all.push_back(
        {"the same by iceoryx, encoded into its memory, which is polled", COUNT, [&] { return acrossIceoryx(order); }});
}

#else

void addIceoryx(std::vector<Measured>&, const Order&) {}

#endif

} // namespace bench
