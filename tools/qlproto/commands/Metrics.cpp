// qlproto metrics: what happens on a bus, for Prometheus to scrape.
#include <memory>

#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/live/LiveMetrics.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct MetricsOptions {
    std::string bus, listen = "127.0.0.1:9464";
    LiveSpan span{.start = "live"};
};

int metrics(const MetricsOptions& options) {
    endOnInterrupt();
    const std::unique_ptr<Host::Bus> bus = openLiveBus(options.bus);
    const std::unique_ptr<LiveMetrics> metrics = LiveMetrics::listen(options.listen);
    if (!metrics) {
        tellFault("this program was built without prometheus-cpp");
        return EXIT_USAGE;
    }
    uint64_t refused = 0;
    const auto subscription = bus->subscribe({}, options.span.from(),
                                             {[&](const Host::Record& it) { metrics->add(it, timeNow()); },
                                              [&](uint64_t messages) { metrics->addLost(messages); }});
    Every end(std::chrono::seconds(options.span.seconds));
    while (subscription->delivered() < options.span.messages && !isInterrupted() && !end.isDue()) {
        subscription->poll(100);
        metrics->addFaults(subscription->refused() - std::exchange(refused, subscription->refused()));
    }
    return EXIT_FINE;
}

} // namespace

void addMetrics(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<MetricsOptions>();
    CLI::App* const command = app.add_subcommand("metrics", "Serve figures of a bus to Prometheus");
    addBus(*command, options->bus);
    command->add_option("--listen", options->listen, "The address to serve them at, under /metrics")
        ->type_name("ADDRESS:PORT")
        ->capture_default_str();
    addLiveSpan(*command, options->span);
    addExamples(*command,
                std::string("Of each message it counts how many came and their bytes, and how long they took to come; "
                            "of all, those that\n"
                            "were lost or bad.\n\n")
                    + BUS_REMARK,
                {"$tool metrics --bus mem:./bus --listen 127.0.0.1:0 --seconds 1"});
    commands.push_back({command, [options] { return metrics(*options); }});
}

} // namespace qlproto
