// qlproto generate: a made-up trading session as a capture.
#include <memory>

#include "Capture/Writer.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/trading/session/Hostile.h"
#include "tools/qlproto/trading/session/Session.h"

namespace qlproto {

namespace {

struct GenerateOptions {
    uint64_t messages = 10000;
    uint64_t seed = 1;
    std::string profile = "usual";
    uint64_t rate = 0; ///< 0: that of the profile
    std::string output;
};

int generate(const GenerateOptions& options) {
    Capture::Writer writer(options.output, ownDefinition());
    Hostile hostile(options.seed, writer);
    Capture::PacketSink& sink = options.profile == "hostile" ? static_cast<Capture::PacketSink&>(hostile) : writer;
    session::Pace pace;
    if (options.profile == "quiet") pace = session::QUIET;
    if (options.profile == "busy") pace = session::BUSY;
    if (options.rate != 0) pace = session::withRate(pace, options.rate);
    session::Session(options.seed, options.messages, sink, pace).run();
    writer.close();
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
                     "twentieth body damaged")
        ->check(CLI::IsMember({"usual", "quiet", "busy", "hostile"}))
        ->capture_default_str();
    addNumber(*command, "--rate", options->rate, "About so many messages per second of session time", 1, 1'000'000);
    command->add_option("-o,--output", options->output, "The capture to write; - is standard output")
        ->required()
        ->type_name(FILE_VALUE);
    command->footer("Every type of message occurs from 1,000 messages on, and from 5,000 on when busy.\n\n"
                    "Examples:\n"
                    "  qlproto generate --messages 100000 --seed 7 -o session.pcap\n"
                    "  qlproto generate --profile busy --rate 5000 -o - | qlproto verify -");
    commands.push_back({command, [options] { return generate(*options); }});
}

} // namespace qlproto
