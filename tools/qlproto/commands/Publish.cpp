// qlproto publish: a capture onto a bus, in its own time.
#include <charconv>
#include <chrono>
#include <memory>
#include <thread>

#include "Capture/Verification.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/messages/CaptureScan.h"

namespace qlproto {

namespace {

struct PublishOptions {
    std::vector<std::string> captures;
    std::string bus;
    double speed = 1; ///< 0: as fast as it goes
    bool isLooped = false, isStamped = false;
    ScanOptions scan;
};

/// 0 for "max".
std::optional<double> speedOf(const std::string& text) {
    double speed = 0;
    if (text == "max") return speed;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), speed);
    if (error != std::errc() || end != text.data() + text.size() || !(speed >= 0.001 && speed <= 1e6))
        return std::nullopt;
    return speed;
}

/// Waits until a message is due.
class LivePace {
  public:
    explicit LivePace(double speed) : _speed(speed) {}

    /// False if the wait was interrupted.
    bool waitFor(int64_t time) {
        if (_speed == 0) return !isInterrupted();
        if (!_isBegun) _first = time;
        _isBegun = true;
        const auto due =
            _start + std::chrono::nanoseconds(static_cast<int64_t>(static_cast<double>(time - _first) / _speed));
        for (auto now = Clock::now(); now < due && !isInterrupted(); now = Clock::now())
            std::this_thread::sleep_for(std::min<Clock::duration>(due - now, std::chrono::milliseconds(100)));
        return !isInterrupted();
    }

  private:
    using Clock = std::chrono::steady_clock;
    const double _speed;
    const Clock::time_point _start = Clock::now();
    int64_t _first = 0; ///< once it is begun
    bool _isBegun = false;
};

struct Interrupted {};

int publish(const PublishOptions& options) {
    const std::unique_ptr<Host::Bus> bus = openLiveBus(options.bus);
    endOnInterrupt();
    uint64_t published = 0;
    int exitCode = EXIT_FINE;
    do {
        CaptureScan scan(options.scan);
        LivePace pace(options.speed);
        const uint64_t before = published;
        try {
            scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
                if (!pace.waitFor(packet.time)) throw Interrupted();
                bus->publish({.id = reader.descriptor().id(),
                              .body = reader.body(),
                              .time = options.isStamped ? timeNow() : packet.time});
                ++published;
            });
        } catch (const Interrupted&) {
        }
        scan.summarize();
        exitCode = std::max(exitCode, scan.exitCode());
        if (published == before) break; // nothing to be repeated
    } while (options.isLooped && !isInterrupted());
    if (!options.scan.isQuiet) tell(Capture::counted(published, "message") + " published");
    return exitCode;
}

} // namespace

void addPublish(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<PublishOptions>();
    CLI::App* const command = app.add_subcommand("publish", "Publish the messages of a capture on a bus");
    addCaptures(*command, options->captures);
    addBus(*command, options->bus);
    const auto choose = [options](const std::string& text) { options->speed = speedOf(text).value(); };
    command
        ->add_option_function<std::string>("--speed", choose,
                                           "So many times as fast as the capture was made, or max: as fast as it goes")
        ->check(CLI::Validator(
            [](std::string& text) {
                return speedOf(text) ? std::string()
                                     : fmt::format("'{}' is neither max nor a number from 0.001 to 1000000", text);
            },
            "SPEED"))
        ->default_str("1");
    command->add_flag("--loop", options->isLooped, "Begin again at the end, until it is interrupted");
    command->add_flag("--now", options->isStamped, "Give messages the time at which they are published, not their own");
    addSelectionOptions(*command, options->scan);
    addExamples(*command, BUS_REMARK,
                {"$tool publish session.pcap --bus mem:./bus --speed max",
                 "$tool publish session.pcap --bus mem:./bus --speed 10 --first 100 --now"});
    commands.push_back({command, [options] { return publish(*options); }});
}

} // namespace qlproto
