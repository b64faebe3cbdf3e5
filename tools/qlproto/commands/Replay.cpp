// qlproto replay: the messages of captures to an address of a network or a pipe, in their own time.
#include <cerrno>
#include <cstring>
#include <memory>

#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Capture/Framer.h"
#include "Capture/Output.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/live/LivePace.h"

namespace qlproto {

namespace {

struct ReplayOptions {
    PacedCaptures paced;
    std::string target;
};

/// Where frames go: tcp:HOST:PORT, udp:HOST:PORT, or a pipe.
class ReplayTarget {
  public:
    explicit ReplayTarget(const std::string& to) : _name(to), _isDatagram(to.starts_with("udp:")) {
        if (_isDatagram || to.starts_with("tcp:"))
            connectTo(to.substr(4));
        else
            _pipe = std::make_unique<Capture::Output>(to);
    }
    ~ReplayTarget() {
        if (_socket >= 0) ::close(_socket);
    }
    ReplayTarget(const ReplayTarget&) = delete;
    ReplayTarget& operator=(const ReplayTarget&) = delete;

    void send(std::string_view frame) {
        if (_pipe) {
            _pipe->append(frame);
            return _pipe->flush();
        }
        while (!frame.empty()) {
            const ssize_t sent = ::send(_socket, frame.data(), frame.size(), MSG_NOSIGNAL);
            if (sent < 0 && errno == EINTR && !isInterrupted()) continue;
            if (sent < 0 && errno == EINTR) throw Interrupted();
            if (sent < 0 && _isDatagram && errno == ECONNREFUSED) return; // nobody listens yet, or any more
            if (sent < 0) throw Capture::IoError(fmt::format("{}: {}", _name, std::strerror(errno)));
            frame.remove_prefix(static_cast<std::size_t>(sent));
        }
    }

    void close() {
        if (_pipe) _pipe->close();
    }

  private:
    void connectTo(const std::string& address) {
        const std::size_t colon = address.rfind(':');
        if (colon == address.npos) throw FilterError(fmt::format("--target: {} has no port", _name));
        std::string host = address.substr(0, colon);
        if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
        addrinfo wanted{}, *found = nullptr;
        wanted.ai_socktype = _isDatagram ? SOCK_DGRAM : SOCK_STREAM;
        if (const int error = getaddrinfo(host.c_str(), address.c_str() + colon + 1, &wanted, &found); error != 0)
            throw Capture::IoError(fmt::format("{}: {}", _name, gai_strerror(error)));
        const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> all(found, &freeaddrinfo);
        int error = 0;
        for (const addrinfo* it = found; it != nullptr && _socket < 0; it = it->ai_next) {
            _socket = socket(it->ai_family, it->ai_socktype | SOCK_CLOEXEC, it->ai_protocol);
            if (_socket >= 0 && connect(_socket, it->ai_addr, it->ai_addrlen) == 0) return;
            error = errno;
            if (_socket >= 0) ::close(_socket);
            _socket = -1;
        }
        throw Capture::IoError(fmt::format("{}: {}", _name, std::strerror(error)));
    }

    const std::string _name;
    const bool _isDatagram;
    int _socket = -1;
    std::unique_ptr<Capture::Output> _pipe; ///< null: it is a socket
};

int replay(const ReplayOptions& options) {
    const ScanOptions& scan = options.paced.scan;
    const Capture::Framing framing = scan.network.isMade() ? scan.network.read() : Capture::Framing::of("frames");
    ReplayTarget target(options.target);
    Capture::Framer framer(framing);
    endOnInterrupt();
    Sent sent;
    std::string frame;
    Capture::whileRead([&] {
        try {
            sendPaced(options.paced, sent, [&](const Capture::Packet&, const MessageReader& reader) {
                frame.clear();
                framer.append(reader.descriptor().id(), reader.body(), frame);
                target.send(frame);
            });
        } catch (const Capture::FramingError& error) {
            throw FilterError(fmt::format("--framing: {}", error.what()));
        }
        target.close();
    });
    if (!scan.isQuiet) tell(Capture::counted(sent.messages, "message") + " sent");
    return sent.exitCode;
}

} // namespace

void addReplay(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<ReplayOptions>();
    CLI::App* const command =
        app.add_subcommand("replay", "Send the messages of captures to an address or a pipe, in their own time");
    addCaptures(*command, options->paced.captures);
    command->add_option("--target", options->target, "tcp:HOST:PORT, udp:HOST:PORT, or a pipe; - is standard output")
        ->required()
        ->type_name("ADDRESS");
    addPace(*command, options->paced);
    addSelectionOptions(*command, options->paced.scan);
    addExamples(
        *command,
        "Messages are sent as --framing has them, or else in the frames of the host library. They are due as long "
        "after\nthe first one as in the capture: delays do not add up.",
        {"$tool replay session.pcap --target udp:localhost:9001 --speed 100 --first 1000",
         "$tool replay session.pcap --target - --speed max | wc -c"});
    commands.push_back({command, [options] { return replay(*options); }});
}

} // namespace qlproto
