// qlproto watch: messages as they are published, or statistics of them.
#include <memory>

#include <unistd.h>

#include "Capture/Output.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/live/LiveStats.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/Rendering.h"
#include "tools/qlproto/terminal/LiveView.h"
#include "tools/qlproto/terminal/Terminal.h"

namespace qlproto {

namespace {

struct WatchOptions {
    std::string bus;
    LiveSpan span{.start = "live"};
    bool isStatistics = false;
    ScanOptions scan;
    Rendering::Options rendering;
};

class Watcher {
  public:
    explicit Watcher(const WatchOptions& options)
        : _options(options),
          _live(openLive(options.bus, options.span.from())),
          _filter(options.scan),
          _reader(options.scan.policy),
          _rendering(options.rendering) {
        if (options.isStatistics && isatty(STDOUT_FILENO) == 1) _view.start([this] { return _stats.text(); });
    }

    int run() {
        Every second(std::chrono::seconds(1)), end(std::chrono::seconds(_options.span.seconds));
        uint64_t left = std::min(_options.span.messages, _options.scan.first);
        while (left != 0 && !isInterrupted() && !end.isDue()) {
            if (_view.isOn() && second.isDue()) _view.draw();
            if (_live.source->next(_record)) {
                if (take()) --left;
                continue;
            }
            if (_live.hasEnd) break;
            _output.flush();
            _live.source->wait(100);
        }
        _view.clear();
        if (_options.isStatistics) _output.append(_stats.text());
        _output.close();
        return _isBad ? EXIT_BAD_DATA : EXIT_FINE;
    }

  private:
    /// Whether the message is one that was asked for.
    bool take() {
        if (_record.lost != 0) {
            _stats.addLost(_record.lost);
            complain(Capture::counted(_record.lost, "message") + " lost before");
        }
        _bytes.assign(Capture::identifierBytes(_record.id)).append(_record.body);
        const Capture::Packet packet{.time = _record.time, .bytes = _bytes};
        const bool isTaken = _filter.takes(packet);
        const bool isText = isTaken && !_options.isStatistics;
        if (!(isText ? _reader.read(_bytes) : _reader.verify(_bytes))) {
            _stats.addFault();
            complain(_reader.fault());
            return false;
        }
        if (!isTaken) return false;
        if (_options.isStatistics) {
            _stats.add(_record, timeNow());
            return true;
        }
        _text.clear();
        _rendering.append(packet, _reader, _text);
        _output.append(_text);
        return true;
    }

    void complain(const std::string& what) {
        _isBad = true;
        if (_options.scan.isQuiet || _told++ >= _options.scan.faults) return;
        _view.clear();
        tellFault(fmt::format("message {}: {}", _record.sequence, what));
    }

    const WatchOptions& _options;
    const Live _live;
    const Filter _filter;
    MessageReader _reader;
    Rendering _rendering;
    Capture::Output _output;
    LiveStats _stats;
    LiveView _view; ///< of them, on a terminal
    Host::Record _record;
    std::string _bytes, _text;
    uint64_t _told = 0;
    bool _isBad = false;
};

int watch(WatchOptions& options) {
    options.rendering.time = options.scan.time;
    options.rendering.display = options.scan.display;
    options.rendering.isColoured = options.rendering.format < Format::json && mayHaveColours(STDOUT_FILENO);
    endOnInterrupt();
    return Watcher(options).run();
}

} // namespace

void addWatch(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<WatchOptions>();
    CLI::App* const command = app.add_subcommand("watch", "Print messages as they are published, or live statistics");
    command
        ->add_option("--bus", options->bus,
                     "The URL of a bus, the folder of a journal, or - for a capture on standard input")
        ->required()
        ->type_name("URL");
    command->add_flag(
        "--stats", options->isStatistics,
        "Print how many messages come and how long they took, each second on a terminal, else at the end");
    addChoice(*command, "--format", options->rendering.format,
              {{"line", Format::line}, {"lines", Format::lines}, {"json", Format::json}},
              "line, lines (a value per line) or json (a line each)");
    addLiveSpan(*command, options->span);
    addScanOptions(*command, options->scan);
    addExamples(
        *command,
        std::string("A hop is the time from that of the message to its arrival here, as far as clocks agree.\n\n")
            + BUS_REMARK,
        {"$tool watch --bus mem:./bus --start oldest --message $message --seconds 1",
         "$tool watch --bus mem:./bus --start oldest --stats --seconds 1",
         "$tool watch --bus journal --start oldest --messages 10 --seconds 5",
         "$tool convert session.pcap -o - | $tool watch --bus - --stats"});
    commands.push_back({command, [options] { return watch(*options); }});
}

} // namespace qlproto
