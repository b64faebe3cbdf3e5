// A bus for many machines: a stream of NATS JetStream.
//
//     nats://host:4222              the stream QL, which is made if need be, with the subjects "ql.>"
//     nats://host:4222/PRICES       another one, with the subjects "prices.>"
//     nats://a:4222,b:4222?replicas=3&patience=60&ca=FILE&cert=FILE&key=FILE&creds=FILE
//
//   replicas   servers that hold each message, if the stream is made by this
//   patience   seconds for which publishing is tried while no server answers for the stream; else 30
//   ca         certificates of authorities, by which the server proves that it is the host of the URL: without them, those of
//              the system, if the server wants to be spoken to in secret
//   cert, key  this side's own certificate and its key
//   creds      file with the user's credentials; name and password, or a token, may also stand before the host: user:word@host
//
// A message goes to the subject ql.FAMILY.MESSAGE.KEY (Topics.h), with the payload of a packet of captures: identifier and
// body. Its time stands in the header QL-Time. Characters that no subject may hold are %XX; no key is "-".
//
// What is promised: publish() returns when the stream has acknowledged the message, under its sequence there. It is tried
// again until then, under an identifier by which the server tells that it has it already. An acknowledged message outlives
// processes, and with replicas the loss of a minority of servers. It may be lost if all of them lose power at once: a server of
// this version writes to its disk some minutes later.
//
// A reader with a name is a durable consumer of that name: see `nats consumer info`. The server keeps its place with the stream.
//
// This class starts threads by its library, so that processes are not to be forked once a bus of this kind was opened.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "Host/Bus.h"

namespace Host {

class NatsConnection;

class NatsBus : public Bus {
  public:
    /// Throws BusError.
    NatsBus(const std::string& url, Topics topics);
    ~NatsBus() override;

    using Bus::publish;
    uint64_t publish(const Record& record) override;
    std::unique_ptr<Source> read(From from) override;

    /// What the message is published under.
    std::string subjectOf(const Record& record) const;

  private:
    std::unique_ptr<Source> readNamed(const std::string& name, From from) override;

    const std::unique_ptr<NatsConnection> _connection;
    const std::string _publisher; ///< of this object alone, whatever it is called
    std::atomic<uint64_t> _published = 0;
};

extern const Engine NATS_ENGINE;

} // namespace Host
