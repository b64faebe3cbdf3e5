// qlproto publish: a capture onto a bus, in its own time.
#include <memory>

#include "Capture/Verification.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/live/LivePace.h"

namespace qlproto {

namespace {

struct PublishOptions {
    PacedCaptures paced;
    std::string bus;
    bool isStamped = false;
};

int publish(const PublishOptions& options) {
    const std::unique_ptr<Host::Bus> bus = openLiveBus(options.bus);
    endOnInterrupt();
    Sent published;
    sendPaced(options.paced, published, [&](const Capture::Packet& packet, const MessageReader& reader) {
        bus->publish({.id = reader.descriptor().id(),
                      .body = reader.body(),
                      .time = options.isStamped ? timeNow() : packet.time});
    });
    if (!options.paced.scan.isQuiet) tell(Capture::counted(published.messages, "message") + " published");
    return published.exitCode;
}

} // namespace

void addPublish(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<PublishOptions>();
    CLI::App* const command = app.add_subcommand("publish", "Publish the messages of a capture on a bus");
    addCaptures(*command, options->paced.captures);
    addBus(*command, options->bus);
    addPace(*command, options->paced);
    command->add_flag("--now", options->isStamped, "Give messages the time at which they are published, not their own");
    addSelectionOptions(*command, options->paced.scan);
    addExamples(*command, BUS_REMARK,
                {"$tool publish session.pcap --bus mem:./bus --speed max",
                 "$tool publish session.pcap --bus mem:./bus --speed 10 --first 100 --now"});
    commands.push_back({command, [options] { return publish(*options); }});
}

} // namespace qlproto
