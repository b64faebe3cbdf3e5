// Reading the stream of a bus from a NATS server, through a consumer that the server has for it.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "Host/NatsConnection.h"
#include "Host/Record.h"

namespace Host {

/// Without a name the consumer remembers nothing: where to go on after it, or a server, has gone is known here. With a name it
/// is a durable one, which remembers what it was told to be done.
class NatsSource : public Source {
  public:
    /// Throws BusError, as all do that read. REQUIRES: the connection outlives it.
    NatsSource(const NatsConnection& connection, From from, const std::string& name = "");
    ~NatsSource() override;

    bool next(Record& record) override;
    bool wait(int milliseconds) override { return _message || fetch(milliseconds); }
    void done() override;

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds RETRY{100};

    void leave();
    natsStatus open(jsErrCode& error);
    natsStatus openNamed(jsErrCode& error);
    bool isTaken(jsErrCode error);
    void begin(jsConsumerConfig& config) const;
    natsStatus subscribe(jsSubOptions& options, const char* subject, jsErrCode& error);
    bool fetch(int64_t milliseconds);
    void reopen();
    bool take(natsMsg* message, Record& record);

    const NatsConnection& _connection;
    const std::string _name;
    From _from;
    uint64_t _expected = 0; ///< sequence of the next message; 0: not known yet
    NatsSubscriptionOwner _subscription;
    uint64_t _consumed = 0;            ///< message that the server's consumer has given last; 0: none yet
    NatsMessageOwner _message, _given; ///< the next one, and the last one that was given out
    bool _isDone = true;               ///< so is all that was given out
    bool _isBegun = false;             ///< the first consumer has been made, or found
    Clock::time_point _again{}, _free = Clock::now(); ///< when it may be tried again, and when nobody else had the name
};

} // namespace Host
