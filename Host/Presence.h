// Which applications are on a bus: each says when it comes, now and then that it is still there, and when it leaves, by
// messages of its protocol.
//
// An application is a number, and each of its incarnations another generation. Two at once under one number disturb nothing on
// the bus, but are mostly a mistake, which Peers tell.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "Host/Bus.h"

namespace Host {

struct Incarnation {
    int16_t application = 0;
    int64_t generation = 0;
    bool operator==(const Incarnation&) const = default;
};

/// The messages of a protocol for it. All three have the same body.
struct PresenceMessages {
    Velmora::MsgType_t connect, heartbeat, disconnect;
    std::string (*body)(const Incarnation&);
    Incarnation (*read)(std::string_view body); ///< REQUIRES: the body is verified
};

/// This application on a bus, for as long as it lives. Publishing fails as that of the bus does, but for the farewell.
class Presence {
  public:
    /// Says that it has come. REQUIRES: the bus outlives it.
    Presence(Bus& bus, const PresenceMessages& messages, const Incarnation& self, int64_t now);
    /// Says that it leaves.
    ~Presence();
    Presence(const Presence&) = delete;
    Presence& operator=(const Presence&) = delete;

    /// Says that it is there if it has not for so many nanoseconds. To be called now and then.
    void beat(int64_t now, int64_t interval = 1'000'000'000);

  private:
    void say(Velmora::MsgType_t id);

    Bus& _bus;
    const PresenceMessages _messages;
    const std::string _body;
    int64_t _last;
};

/// The other applications, by what they say. Times are those of messages.
class Peers {
  public:
    struct Events {
        std::function<void(const Incarnation&)> arrived = {}, left = {};
        std::function<void(const Incarnation&)> silent = {};  ///< for too long: it counts as gone
        std::function<void(const Incarnation&)> doubled = {}; ///< another one of that number is there at the same time
    };

    /// Who says nothing for `patience` nanoseconds is silent.
    Peers(const PresenceMessages& messages, Events events, int64_t patience = 3'000'000'000)
        : _messages(messages), _events(std::move(events)), _patience(patience) {}

    /// Of a message, if it is one of these. REQUIRES: its body is verified.
    void take(const Record& record);
    /// To be called now and then.
    void look(int64_t now);

    size_t present() const { return _last.size(); }

  private:
    using Key = std::pair<int16_t, int64_t>; ///< application, generation

    static Key keyOf(const Incarnation& it) { return {it.application, it.generation}; }
    void tell(const std::function<void(const Incarnation&)>& event, const Incarnation& whom) const {
        if (event) event(whom);
    }

    // What strangers say is bounded, too: more than these are not kept.
    static constexpr size_t MOST = 65536;

    const PresenceMessages _messages;
    const Events _events;
    const int64_t _patience;
    std::map<Key, int64_t> _last; ///< when each was last heard of
};

} // namespace Host
