// The connection of a bus to its NATS servers, and what the library gives out.
#pragma once

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <nats/nats.h>

namespace Host {

/// What the library gives out, given back at the end.
template <class T, void (*destroy)(T*)>
struct NatsGiven {
    void operator()(T* it) const { destroy(it); }
    using Owner = std::unique_ptr<T, NatsGiven>;
};
using NatsOptionsOwner = NatsGiven<natsOptions, natsOptions_Destroy>::Owner;
using NatsConnectionOwner = NatsGiven<natsConnection, natsConnection_Destroy>::Owner;
using NatsContextOwner = NatsGiven<jsCtx, jsCtx_Destroy>::Owner;
using NatsMessageOwner = NatsGiven<natsMsg, natsMsg_Destroy>::Owner;
using NatsSubscriptionOwner = NatsGiven<natsSubscription, natsSubscription_Destroy>::Owner;
using NatsInboxOwner = NatsGiven<natsInbox, natsInbox_Destroy>::Owner;
using NatsStreamOwner = NatsGiven<jsStreamInfo, jsStreamInfo_Destroy>::Owner;
using NatsConsumerOwner = NatsGiven<jsConsumerInfo, jsConsumerInfo_Destroy>::Owner;
using NatsAckOwner = NatsGiven<jsPubAck, jsPubAck_Destroy>::Owner;
using NatsMetaOwner = NatsGiven<jsMsgMetaData, jsMsgMetaData_Destroy>::Owner;

inline constexpr const char* NATS_TIME_HEADER = "QL-Time"; ///< of messages: nanoseconds since 1970

/// The parts of the URL that this side is to know, and the rest for the library.
struct NatsPlace {
    std::vector<std::string> servers;
    std::string stream = "QL", ca, cert, key, creds;
    int64_t replicas = 1, patience = 30;

    /// Throws BusError.
    explicit NatsPlace(const std::string& url);
    std::string root() const; ///< of subjects

  private:
    void set(const std::string& url, const std::string& name, const std::string& value);
};

/// Whether it is worth to be tried again: nobody answers, or nobody leads the stream just now.
bool mayPass(natsStatus status, jsErrCode error);

/// To the servers, with the stream.
class NatsConnection {
  public:
    /// Throws BusError.
    explicit NatsConnection(const std::string& url);

    const NatsPlace& place() const { return _place; }
    natsConnection* connection() const { return _connection.get(); }
    jsCtx* stream() const { return _stream.get(); }

    /// Throws BusError for any status but NATS_OK.
    void demand(natsStatus status) const;
    [[noreturn]] void fail(const std::string& reason) const;

    /// Tries until it is done, or is of no use, or the patience is at its end: `work` returns how it went.
    template <class Work>
    void insist(Work&& work) const {
        using Clock = std::chrono::steady_clock;
        using Milliseconds = std::chrono::milliseconds;
        const Clock::time_point end = Clock::now() + std::chrono::seconds(_place.patience);
        for (Milliseconds pause(5);; pause = std::min(2 * pause, Milliseconds(1000))) {
            auto error = static_cast<jsErrCode>(0);
            const natsStatus status = work(error);
            if (status == NATS_OK) return;
            if (!mayPass(status, error) || Clock::now() + pause > end) demand(status);
            std::this_thread::sleep_for(pause);
        }
    }

    uint64_t lastSequence() const;

  private:
    NatsOptionsOwner options() const;
    void makeStream();

    const std::string _shown; ///< URL
    const NatsPlace _place;
    NatsConnectionOwner _connection;
    NatsContextOwner _stream;
};

} // namespace Host
