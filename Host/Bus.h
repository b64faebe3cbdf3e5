// Messages from any process to any that want them, whatever carries them.
//
//     const std::unique_ptr<Bus> bus = openBus("mem:prices", topics);
//     bus->publish({.id = id, .body = body, .time = now});
//
//     const auto subscription = bus->subscribe({.messages = {"SubmitOrderMessage"}}, From::live(),
//                                              {.message = [](const Record& record) { ... },
//                                               .lost = [](uint64_t messages) { ... }});
//     while (...) subscription->poll(1000);
//
//     const auto risk = bus->subscribeAs("risk", {}, From::oldest(), handler);    // goes on where "risk" stopped
//
// All that is published on a bus has one sequence. Whoever subscribes is told how many messages came and went that he did
// not see: by poll(), in his own thread, which is the only one that handlers are called in. Who is slow holds up himself.
//
// An engine is one class: it publishes, and reads from any place on. Everything else is written once, here.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

#include "Host/Record.h"
#include "Host/Topics.h"
#include "Inspect/Checked.h"

namespace Host {

/// The bus cannot be reached, or does not take the message: nothing was published, or (that is said) it is not known.
class BusError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Handler {
    std::function<void(const Record&)> message; ///< the body is verified, and valid during the call
    /// So many messages were published and missed, of whatever kind. It comes before the message after them.
    std::function<void(uint64_t)> lost;
};

class Subscription {
  public:
    /// Of any source. REQUIRES: the topics outlive it.
    Subscription(const Topics& topics, const Filter& filter, std::unique_ptr<Source> source, Handler handler);

    /// Hands over what there is, up to a few hundred messages; if there is nothing, waits so many milliseconds for it.
    /// Returns how many messages it went over, those that the filter leaves out among them. Throws what the source and
    /// the handlers throw. What it went over when it returns has been dealt with (see Bus::subscribeAs).
    size_t poll(int milliseconds);

    uint64_t delivered() const { return _delivered; } ///< messages that were handed over
    uint64_t lost() const { return _lost; }           ///< messages that came and went unseen
    uint64_t refused() const { return _refused; } ///< messages that were left out because they are none of the protocol
    uint64_t sequence() const { return _sequence; } ///< of the last message that it went over; 0: of none

  private:
    void take(const Record& record);

    const Topics& _topics;
    const Chooser _chooser;
    std::unique_ptr<Source> _source;
    const Handler _handler;
    uint64_t _delivered = 0, _lost = 0, _refused = 0, _sequence = 0;
};

/// What a bus is to know of a journal that is kept of it.
struct KeptJournal {
    std::string folder = {};  ///< empty: none is kept
    std::string refusal = {}; ///< why it cannot be written to; empty if it can. Meanwhile nothing may be published
};

class Bus {
  public:
    explicit Bus(Topics topics) : _topics(std::move(topics)) {}
    virtual ~Bus() = default;
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    /// Publishes the message; returns its sequence. From any thread. Throws BusError, and std::length_error for a body that is
    /// longer than captures hold. The body is not verified: subscribers do that.
    virtual uint64_t publish(const Record& record) = 0;

    /// Reads all that is published, unfiltered. Throws BusError. REQUIRES: the bus outlives it.
    virtual std::unique_ptr<Source> read(From from) = 0;

    /// Reads under a name, which consists of letters, digits, '-' and '_': on from where the reader of that name stopped, in
    /// this process or another; the first one begins at `from`. What was given out and not told to be done() comes again,
    /// and a server gives out no more than some thousand messages before it is told so.
    /// One at a time has a name, until it goes or its process dies. Throws as read() does, also if another one has it, and
    /// std::invalid_argument for what is no name. REQUIRES: as above.
    std::unique_ptr<Source> readAs(const std::string& name, From from);

    /// Tells the bus that this process keeps a journal of it. Engines that keep messages themselves need none: they do nothing.
    virtual void journalIs(const KeptJournal& /*journal*/, uint64_t /*last*/) {}

    /// Throws as read() does, and std::invalid_argument for a filter that names no message. REQUIRES: as above.
    std::unique_ptr<Subscription> subscribe(const Filter& filter, From from, Handler handler) {
        return std::make_unique<Subscription>(_topics, filter, read(from), std::move(handler));
    }
    /// The same under a name (see readAs()): after a death, what the last poll() that returned had not gone over comes again.
    std::unique_ptr<Subscription> subscribeAs(const std::string& name, const Filter& filter, From from,
                                              Handler handler) {
        return std::make_unique<Subscription>(_topics, filter, readAs(name, from), std::move(handler));
    }

    /// Encodes the message and publishes it. Nothing is published if that is refused; `sequence` is 0 then.
    virtual Inspect::Encoded publish(Velmora::MsgType_t id, const void* message, int64_t time, uint64_t& sequence);
    /// The same of a message that is known to be encodable; returns its sequence. Throws BusError if it is not.
    template <class T>
    uint64_t publish(const T& message, int64_t time) {
        uint64_t sequence = 0;
        if (const Inspect::Encoded encoded = publish(T::ID, &message, time, sequence); !encoded)
            throw BusError(encoded.text());
        return sequence;
    }

    const Topics& topics() const { return _topics; }

  private:
    /// As readAs() says, of a good name.
    virtual std::unique_ptr<Source> readNamed(const std::string& name, From from) = 0;

    const Topics _topics;
};

/// A kind of bus, as URLs name it.
struct Engine {
    std::string_view scheme; ///< of the URL, as in "mem:prices"
    std::unique_ptr<Bus> (*open)(const std::string& url, Topics topics);
};

/// Buses in shared memory: "mem:NAME", or "mem:/path/of/a/file"; see MemBus.h.
extern const Engine MEM_ENGINE;

/// Whether a place is a bus, by its URL; one without a colon is the folder of a journal.
bool isUrl(std::string_view place);

/// The URL as people may see it: without user and password.
std::string shownUrl(std::string url);

/// Opens the bus that the URL tells, by one of these engines. Throws BusError.
std::unique_ptr<Bus> openBus(const std::string& url, Topics topics,
                             std::span<const Engine> engines = std::span(&MEM_ENGINE, 1));

} // namespace Host
