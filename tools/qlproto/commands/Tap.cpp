// qlproto tap: what comes on an interface, as a capture: packets as they are, or the messages in them.
#include <algorithm>
#include <exception>
#include <memory>
#include <optional>

#include <fmt/format.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/Network.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/CaptureOutput.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/live/LiveInterface.h"
#include "tools/qlproto/messages/Filter.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

namespace {

struct TapOptions {
    InterfaceOptions live;
    NetworkChoice network;
    CaptureOutput output{.path = "-"};
    uint64_t first = UINT64_MAX;
    uint64_t seconds = UINT32_MAX;
};

class Tap {
  public:
    Tap(const TapOptions& options, LiveInterface& live) : _options(options), _live(live), _writer(open(options, live)) {
        if (auto network = options.network.options()) _network.emplace(std::move(*network), thisTool.protocol, _faults);
    }

    /// Until as much has come as was asked for, or the user ends it. Returns the exit status.
    int run() {
        tell(fmt::format("listening on {}", _options.live.name));
        Every end(std::chrono::seconds(_options.seconds));
        std::exception_ptr failure;
        Capture::Packet packet;
        while (_written < _options.first && !isInterrupted() && !end.isDue()) {
            bool isThere = false;
            try {
                isThere = _live.next(packet);
            } catch (const Capture::IoError&) { // what came before stays
                failure = std::current_exception();
                break;
            }
            if (isThere) {
                take(packet);
            } else {
                _writer.flush();
                _live.wait(100);
            }
        }
        finish();
        if (failure) std::rethrow_exception(failure);
        return summarize();
    }

  private:
    static Capture::CaptureWriter open(const TapOptions& options, const LiveInterface& live) {
        const uint32_t type = live.linkType();
        if (options.network.isMade() && !Capture::isNetwork(type))
            throw FilterError(
                fmt::format("--framing: {} has frames of another kind, link type {}", options.live.name, type));
        return options.output.open(options.network.isMade() ? Capture::LinkType::MESSAGE : type);
    }

    void take(const Capture::Packet& packet) {
        ++_packets;
        _time = packet.time;
        if (!_network) return write(packet);
        _network->take(packet);
        drain();
    }

    void write(const Capture::Packet& packet) {
        if (_written == _options.first) return;
        ++_written;
        _writer.packet(packet);
    }

    /// The messages that are whole by now.
    void drain() {
        for (Capture::Packet message; _network->next(message);) write(message);
        for (const Capture::Damage& it : _faults.all()) {
            constexpr uint64_t told = 3; // one by one
            if (++_bad > told) continue;
            const std::string skipped =
                it.skipped != 0 ? "; " + Capture::counted(it.skipped, "byte") + " skipped" : std::string();
            tellFault(fmt::format("{} at {}: {}{}", it.kind, timeText(_time), it.reason, skipped));
        }
        _faults.clear();
    }

    void finish() {
        if (_network) {
            do drain();
            while (_network->finish());
        }
        _writer.close();
    }

    int summarize() {
        const uint64_t dropped = _live.dropped();
        std::string line = Capture::counted(_packets, "packet");
        if (_network) line = fmt::format("{} in {}", Capture::counted(_written, "message"), line);
        if (_bad != 0) line += ", " + Capture::counted(_bad, "fault");
        tell(fmt::format("{}, {} dropped by the kernel", line, dropped));
        return dropped == 0 && _bad == 0 ? EXIT_FINE : EXIT_BAD_DATA;
    }

    const TapOptions& _options;
    LiveInterface& _live;
    Capture::CaptureWriter _writer;
    Capture::Faults _faults;
    std::optional<Capture::Network> _network; ///< none: packets stay as they are
    uint64_t _packets = 0, _written = 0, _bad = 0;
    int64_t _time = 0; ///< of the last packet
};

int tap(const TapOptions& options) {
    if (options.output.path == "-" && isatty(STDOUT_FILENO) == 1) {
        tellFault("a capture is nothing for a terminal: name a file by -o, or another command by |");
        return EXIT_USAGE;
    }
    endOnInterrupt();
    const std::unique_ptr<LiveInterface> live = LiveInterface::open(options.live);
    if (!live) {
        tellFault("this program was built without libpcap");
        return EXIT_USAGE;
    }
    return Tap(options, *live).run();
}

} // namespace

void addTap(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<TapOptions>();
    CLI::App* const command = app.add_subcommand("tap", "Capture what comes on an interface");
    command->add_option("-i,--interface", options->live.name, "The interface; any is all of them")
        ->required()
        ->type_name("NAME");
    command->add_option("--filter", options->live.filter, "Only such packets, as in 'tcp port 9001' (man pcap-filter)")
        ->type_name("FILTER");
    addNetworkChoice(*command, options->network);
    command->get_option("--framing")
        ->description("Write the messages in TCP streams and UDP datagrams, which stand there so, as those of other "
                      "commands; without, packets are written as they are");
    addCaptureOutput(*command, options->output);
    command->get_option("--output")->required(false)->description("The capture to write, else standard output");
    addNumber(*command, "-n,--first", options->first, "End after so many packets or, with --framing, messages", 1);
    addNumber(*command, "--seconds", options->seconds, "End after so many seconds", 1, UINT32_MAX);
    addNumber(*command, "--buffer", options->live.buffer, "MB of packets that the kernel keeps until they are taken", 1,
              1024);
    command->add_flag_callback(
        "--no-promiscuous", [options] { options->live.isPromiscuous = false; },
        "Only packets of this host, not those for others that pass by");
    addExamples(
        *command,
        "To capture takes root, or the capability cap_net_raw. What has come is written whenever nothing more is "
        "there, a\n"
        "file when it is complete. What the kernel had no room for is told at the end.",
        {"$tool tap -i lo --seconds 1 -o lo.pcap",
         "$tool tap -i lo --filter 'port 9001' --framing frames --seconds 1 | $tool stats -"});
    commands.push_back({command, [options] { return tap(*options); }});
}

} // namespace qlproto
