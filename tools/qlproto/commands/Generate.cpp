// qlproto generate: a made-up trading session as a capture.
#include <memory>

#include "tools/qlproto/Capture.h"
#include "tools/qlproto/Errors.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/session/Session.h"

namespace qlproto {

namespace {

struct Options {
    uint64_t messages = 10000;
    uint64_t seed = 1;
    std::string output;
};

int generate(const Options& options) {
    CaptureWriter writer(options.output);
    session::Session(options.seed, options.messages, writer).run();
    writer.close();
    return EXIT_FINE;
}

} // namespace

void addGenerate(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand("generate", "Write a made-up trading session as a capture");
    command->add_option("--messages", options->messages, "How many messages")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command->add_option("--seed", options->seed, "The same seed gives the same bytes")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command->add_option("-o,--output", options->output, "The capture to write; - is standard output")->required();
    command->footer("Example:\n  qlproto generate --messages 100000 --seed 7 -o session.pcap");
    commands.push_back({command, [options] { return generate(*options); }});
}

} // namespace qlproto
