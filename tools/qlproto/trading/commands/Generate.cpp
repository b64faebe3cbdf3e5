// qlproto generate: a made-up trading session as a capture.
#include <memory>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Capture/Writer.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/TimeText.h"
#include "tools/qlproto/trading/session/Hostile.h"
#include "tools/qlproto/trading/session/Incident.h"
#include "tools/qlproto/trading/session/Session.h"

namespace qlproto {

namespace {

struct GenerateOptions {
    uint64_t messages = 10000;
    uint64_t seed = 1;
    std::string profile = "usual";
    uint64_t rate = 0; ///< 0: that of the profile
    std::string output;
    std::string truth; ///< empty: not asked for
};

std::string userName(int32_t id) {
    for (const session::User& user : session::World().users)
        if (user.id == id) return user.name;
    return "";
}

/// What went wrong, as the other commands show it.
std::string truthOf(const session::Incident& incident, const GenerateOptions& options) {
    const auto& slowFeed = incident.slowFeed;
    const auto& rejects = incident.rejects;
    const auto& gap = incident.gap;
    const auto& disconnect = incident.disconnect;
    const char* const reason = Velmora::enumeratorName<Quillon::RejectReason>(rejects.cause.reason);
    const nlohmann::ordered_json json{
        {"seed", options.seed},
        {"slowFeed",
         {{"feedID", slowFeed.feedID},
          {"message", "MktDataMessage"},
          {"hop", "exchange->arrival"},
          {"from", timeText(slowFeed.first)},
          {"to", timeText(slowFeed.last)},
          {"messages", slowFeed.late},
          {"longest", slowFeed.longest}}},
        {"rejects",
         {{"userID", rejects.userID},
          {"user", userName(rejects.userID)},
          {"reason", reason},
          {"text", rejects.cause.text},
          {"from", timeText(rejects.first)},
          {"to", timeText(rejects.last)},
          {"orders", rejects.orders}}},
        {"gap",
         {{"userID", gap.userID},
          {"user", userName(gap.userID)},
          {"time", timeText(gap.time)},
          {"last", gap.after},
          {"next", gap.after + gap.missing + 1},
          {"missing", gap.missing}}},
        {"disconnect",
         {{"userID", disconnect.userID},
          {"user", userName(disconnect.userID)},
          {"time", timeText(disconnect.time)},
          {"canceledOrders", disconnect.canceled}}},
    };
    return json.dump(2) + '\n';
}

int generate(const GenerateOptions& options) {
    Capture::Writer writer(options.output, ownDefinition());
    Hostile hostile(options.seed, writer);
    Capture::PacketSink& sink = options.profile == "hostile" ? static_cast<Capture::PacketSink&>(hostile) : writer;
    session::Pace pace;
    if (options.profile == "quiet") pace = session::QUIET;
    if (options.profile == "busy") pace = session::BUSY;
    if (options.rate != 0) pace = session::withRate(pace, options.rate);
    session::Incident incident(options.seed, options.messages);
    session::Session(options.seed, options.messages, sink, pace, options.profile == "incident" ? &incident : nullptr)
        .run();
    writer.close();
    if (!options.truth.empty()) Capture::writeText(truthOf(incident, options), options.truth);
    return EXIT_FINE;
}

} // namespace

void addGenerate(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<GenerateOptions>();
    CLI::App* const command = app.add_subcommand("generate", "Write a made-up trading session as a capture");
    addNumber(*command, "--messages", options->messages, "How many messages")->capture_default_str();
    addNumber(*command, "--seed", options->seed, "The same seed gives the same bytes")->capture_default_str();
    command
        ->add_option("--profile", options->profile,
                     "usual; quiet: slow, with less market data; busy: fast, with more; hostile: as usual, with every "
                     "twentieth body damaged; incident: a feed becomes slow, orders are rejected in a row, messages "
                     "are lost and a client disconnects, other ones with each seed")
        ->check(CLI::IsMember({"usual", "quiet", "busy", "hostile", "incident"}))
        ->capture_default_str();
    addNumber(*command, "--rate", options->rate, "About so many messages per second of session time", 1, 1'000'000);
    command->add_option("-o,--output", options->output, "The capture to write; - is standard output")
        ->required()
        ->type_name(FILE_VALUE);
    command->add_option("--truth", options->truth, "With the profile incident: write what happened as JSON, too")
        ->type_name(FILE_VALUE);
    command->final_callback([options] {
        const bool isIncident = options->profile == "incident";
        if (!isIncident && !options->truth.empty())
            throw CLI::ValidationError("--truth", "only the profile incident has one");
        if (isIncident && options->messages < session::Incident::LEAST_MESSAGES)
            throw CLI::ValidationError("--messages",
                                       fmt::format("an incident takes at least {}", session::Incident::LEAST_MESSAGES));
    });
    command->footer("Every type of message occurs from 1,000 messages on, and from 5,000 on when busy.\n\n"
                    "Examples:\n"
                    "  qlproto generate --messages 100000 --seed 7 -o session.pcap\n"
                    "  qlproto generate --profile busy --rate 5000 -o - | qlproto verify -\n"
                    "  qlproto generate --profile incident --seed 3 --truth truth.json -o incident.pcap");
    commands.push_back({command, [options] { return generate(*options); }});
}

} // namespace qlproto
