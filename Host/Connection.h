// A TCP connection that carries frames (Frames.h), to a peer that may come and go.
//
//     Connection connection({.address = "127.0.0.1", .port = 7001, .heartbeat = ..., .heartbeatBody = ...},
//                           {.message = [](const Frame& frame) { ... }});
//     connection.send(id, body);                         // queued; false if the queue is full
//     while (...) connection.poll(100);                  // connects, sends, receives, in this thread
//
// It is plain poll(2) in the thread of the host: one connection has two descriptors' worth of work, and a library for it would
// be larger than this, and bring threads and callbacks of its own. Hosts with an event loop add descriptor() to it.
//
// A connection that is lost, or on which nothing came for the time of three heartbeats, is made again, after pauses that double
// from one try to the next. What was queued and not given to the system is sent on the next one, from the start of a frame; what
// the system had may be lost, so that peers who must not lose messages tell each other by sequences what they have.
//
// When the queue is full, send() refuses the message: the host knows best what is dropped.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Host/Descriptor.h"
#include "Host/Frames.h"

namespace Host {

struct ConnectionOptions {
    std::string address; ///< IPv4, as in "127.0.0.1"
    uint16_t port = 0;
    size_t mostQueued = 1 << 20; ///< bytes of frames that wait to be sent
    size_t longestBody = FrameReader::LONGEST_BODY;
    std::chrono::milliseconds leastPause{10}, longestPause{5000}; ///< between tries to connect
    std::chrono::milliseconds beat{1000}; ///< without anything else to send, a heartbeat is sent so often
    MsgType_t heartbeat = 0;              ///< the protocol's message for it
    std::string heartbeatBody = {};
};

class Connection {
  public:
    struct Handler {
        std::function<void(const Frame&)> message; ///< not verified; heartbeats of the peer among them
        std::function<void()> connected = {};
        std::function<void(const std::string& reason)> disconnected = {};
    };

    Connection(ConnectionOptions options, Handler handler);
    /// One that a peer has made, as accept(2) gives it. It is not made again.
    Connection(Descriptor accepted, ConnectionOptions options, Handler handler);

    /// Queues a message. False, and nothing is queued, if the queue has no room for it. Throws std::length_error if the body
    /// is longer than readers take.
    bool send(MsgType_t id, std::string_view body);

    /// Does what there is to do; if there is nothing, waits for it so many milliseconds at most. Throws what handlers throw.
    void poll(int milliseconds);

    bool isConnected() const { return _state == State::connected; }
    bool isOver() const { return _state == State::over; } ///< accepted, and lost
    size_t queued() const { return _queue.bytes().size(); }
    int descriptor() const { return _socket.number(); } ///< negative while there is none

  private:
    enum class State { waiting, connecting, connected, over };
    using Clock = std::chrono::steady_clock;

    void connect();
    void finishConnect();
    void flush();
    void receive();
    void beat();
    void lose(const std::string& reason);
    short wanted() const;

    const ConnectionOptions _options;
    const Handler _handler;
    const bool _isAccepted;
    State _state;
    Descriptor _socket;
    std::optional<FrameReader> _reader;
    FrameWriter _queue;
    size_t _sentOfFirst = 0; ///< bytes of the first frame in the queue that the system has
    std::chrono::milliseconds _pause;
    Clock::time_point _again{}, _lastSent{}, _lastReceived{};
};

} // namespace Host
