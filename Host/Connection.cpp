#include "Host/Connection.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

namespace Host {

namespace {

constexpr int MISSED_BEATS = 3;

/// Bytes of the frame that the queue begins with. REQUIRES: there is one.
size_t firstFrame(std::string_view queue) {
    uint32_t length = 0;
    for (size_t i = 0; i < FrameReader::LENGTH_SIZE; ++i)
        length |= uint32_t{static_cast<unsigned char>(queue[i])} << 8 * i;
    return FrameReader::LENGTH_SIZE + length;
}

std::string reasonOf(int error) { return std::strerror(error); }

} // namespace

Connection::Connection(ConnectionOptions options, Handler handler)
    : _options(std::move(options)),
      _handler(std::move(handler)),
      _isAccepted(false),
      _state(State::waiting),
      _queue(_options.longestBody),
      _pause(_options.leastPause) {}

Connection::Connection(Descriptor accepted, ConnectionOptions options, Handler handler)
    : _options(std::move(options)),
      _handler(std::move(handler)),
      _isAccepted(true),
      _state(State::connecting),
      _socket(std::move(accepted)),
      _queue(_options.longestBody),
      _pause(_options.leastPause) {
    finishConnect();
}

bool Connection::send(MsgType_t id, std::string_view body) {
    const size_t size = FrameReader::LENGTH_SIZE + FrameReader::IDENTIFIER_SIZE + body.size();
    if (_state == State::over || queued() + size > _options.mostQueued) return false;
    _queue.append(id, body);
    return true;
}

void Connection::poll(int milliseconds) {
    if (_state == State::over) return;
    if (_state == State::waiting) connect();
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(_again - Clock::now()).count();
    if (_state == State::waiting) milliseconds = std::clamp<int>(static_cast<int>(left) + 1, 0, milliseconds);
    if (_state == State::connected) flush();
    pollfd descriptor{_socket.number(), wanted(), 0};
    const int ready = ::poll(&descriptor, 1, std::min<int>(milliseconds, static_cast<int>(_options.beat.count())));
    if (ready > 0 && _state == State::connecting) finishConnect();
    if (ready > 0 && _state == State::connected && (descriptor.revents & ~POLLOUT) != 0) receive();
    if (_state == State::connected) beat();
    if (_state == State::connected) flush();
}

short Connection::wanted() const {
    if (_state == State::connecting) return POLLOUT;
    return static_cast<short>(_queue.bytes().empty() ? POLLIN : POLLIN | POLLOUT);
}

void Connection::connect() {
    if (Clock::now() < _again) return;
    _again = Clock::now() + _pause;
    _pause = std::min(2 * _pause, _options.longestPause);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(_options.port);
    if (::inet_pton(AF_INET, _options.address.c_str(), &address.sin_addr) != 1)
        return lose("'" + _options.address + "' is no address");
    _socket = Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!_socket) return lose(reasonOf(errno));
    _state = State::connecting;
    if (::connect(_socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        finishConnect();
    else if (errno != EINPROGRESS)
        lose(reasonOf(errno));
}

void Connection::finishConnect() {
    int error = 0;
    socklen_t size = sizeof error;
    if (::getsockopt(_socket.number(), SOL_SOCKET, SO_ERROR, &error, &size) != 0) error = errno;
    if (error != 0) return lose(reasonOf(error));
    const int on = 1;
    ::setsockopt(_socket.number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on); // messages are gathered here
    _state = State::connected;
    _pause = _options.leastPause;
    _lastSent = _lastReceived = Clock::now();
    _sentOfFirst = 0;
    _reader.emplace(_options.longestBody);
    if (_handler.connected) _handler.connected();
}

/// Gives the system what it takes of the queue.
void Connection::flush() {
    while (_state == State::connected && queued() > _sentOfFirst) {
        const std::string_view bytes = _queue.bytes().substr(_sentOfFirst);
        const ssize_t sent = ::send(_socket.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && errno == EINTR) continue;
        if (sent < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
        if (sent < 0) return lose(reasonOf(errno));
        _lastSent = Clock::now();
        // Whole frames leave the queue, so that the next connection begins with one.
        size_t whole = 0;
        _sentOfFirst += static_cast<size_t>(sent);
        while (whole < queued()) {
            const size_t frame = firstFrame(_queue.bytes().substr(whole));
            if (frame > _sentOfFirst) break;
            whole += frame;
            _sentOfFirst -= frame;
        }
        _queue.sent(whole);
    }
}

void Connection::receive() {
    for (int left = 64; left > 0 && _state == State::connected;
         --left) { // then others have their turn, however fast it is
        const std::span<char> room = _reader->room();
        const ssize_t got = ::recv(_socket.number(), room.data(), room.size(), MSG_DONTWAIT);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
        if (got < 0) return lose(reasonOf(errno));
        if (got == 0) return lose("the peer has closed it");
        _lastReceived = Clock::now();
        _reader->received(static_cast<size_t>(got));
        try {
            for (Frame frame; _state == State::connected && _reader->next(frame);) _handler.message(frame);
        } catch (const FrameError& error) {
            return lose(error.what());
        }
        if (static_cast<size_t>(got) < room.size()) return;
    }
}

void Connection::beat() {
    const Clock::time_point now = Clock::now();
    if (now - _lastReceived > MISSED_BEATS * _options.beat) return lose("the peer is silent");
    if (now - _lastSent < _options.beat || queued() != 0) return;
    _queue.append(_options.heartbeat, _options.heartbeatBody);
}

void Connection::lose(const std::string& reason) {
    const bool was = _state == State::connected;
    _state = _isAccepted ? State::over : State::waiting;
    _socket = Descriptor();
    _again = Clock::now() + _pause;
    if (was && _handler.disconnected) _handler.disconnected(reason);
}

} // namespace Host
