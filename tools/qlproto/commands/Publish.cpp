// qlproto publish: a capture onto a bus, in its own time.
#include <memory>

#include "Capture/Verification.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/live/LivePace.h"
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
    addPace(*command, options->speed, options->isLooped);
    command->add_flag("--now", options->isStamped, "Give messages the time at which they are published, not their own");
    addSelectionOptions(*command, options->scan);
    addExamples(*command, BUS_REMARK,
                {"$tool publish session.pcap --bus mem:./bus --speed max",
                 "$tool publish session.pcap --bus mem:./bus --speed 10 --first 100 --now"});
    commands.push_back({command, [options] { return publish(*options); }});
}

} // namespace qlproto
