// qlproto: writes and reads captures of the protocol.
#include <csignal>

#include <CLI/CLI.hpp>

#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/Commands.h"
#include "tools/qlproto/Errors.h"

namespace {

constexpr const char* EXAMPLES = R"(Examples:
  qlproto generate --messages 100000 --seed 7 -o session.pcap
  qlproto decode session.pcap
  qlproto decode session.pcap | grep ' SubmitOrderMessage '
  qlproto generate --messages 1000 -o - | qlproto decode -
  qlproto roundtrip session.pcap

Exit status: 0 fine, 1 bad data found, 2 usage, 3 input or output failed.)";

struct Protocol {
    Protocol() { Quillon::initialize(); }
    ~Protocol() { Quillon::finalize(); }
};

int fail(int exitCode, const std::exception& error) {
    qlproto::tell(std::string("qlproto: ") + error.what());
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    // Whoever reads our output may stop early. Writing then fails, which ends us quietly.
    std::signal(SIGPIPE, SIG_IGN);

    CLI::App app("Writes and reads captures of the QLProtocol: pcap files with one message a packet.", "qlproto");
    app.footer(EXAMPLES);
    app.require_subcommand(1);

    qlproto::GenerateOptions generate;
    CLI::App* generateCommand = app.add_subcommand("generate", "Write a made-up trading session as a capture");
    generateCommand->add_option("--messages", generate.messages, "How many messages")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    generateCommand->add_option("--seed", generate.seed, "The same seed gives the same bytes")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    generateCommand->add_option("-o,--output", generate.output, "The capture to write; - is standard output")
        ->required();
    generateCommand->footer("Example:\n  qlproto generate --messages 100000 --seed 7 -o session.pcap");

    std::string capture;
    CLI::App* decodeCommand = app.add_subcommand("decode", "Print messages, one a line: time, name, fields");
    decodeCommand->add_option("capture", capture, "The capture to read; - is standard input")->required();
    decodeCommand->footer("Example:\n  qlproto decode session.pcap | grep ' SubmitOrderMessage '");

    CLI::App* roundtripCommand = app.add_subcommand("roundtrip", "Decode, encode again and compare every message");
    roundtripCommand->add_option("capture", capture, "The capture to read; - is standard input")->required();
    roundtripCommand->footer("Example:\n  qlproto roundtrip session.pcap");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? qlproto::EXIT_FINE : qlproto::EXIT_USAGE;
    }

    const Protocol protocol;
    try {
        if (*generateCommand) return qlproto::generate(generate);
        if (*decodeCommand) return qlproto::decode(capture);
        if (*roundtripCommand) return qlproto::roundtrip(capture);
        return qlproto::EXIT_USAGE;
    } catch (const qlproto::ClosedPipe&) {
        return qlproto::EXIT_FINE;
    } catch (const qlproto::IoError& error) {
        return fail(qlproto::EXIT_IO, error);
    } catch (const qlproto::DamagedCapture& error) {
        return fail(qlproto::EXIT_BAD_DATA, error);
    }
}
