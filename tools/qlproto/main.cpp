// qlproto: writes and reads captures of the protocol.
#include <csignal>

#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/Errors.h"
#include "tools/qlproto/Filter.h"
#include "tools/qlproto/commands/Commands.h"

namespace {

constexpr const char* EXAMPLES = R"(Examples:
  qlproto generate --messages 100000 --seed 7 -o session.pcap
  qlproto decode session.pcap
  qlproto decode session.pcap | grep ' SubmitOrderMessage '
  qlproto generate --messages 1000 -o - | qlproto decode -
  qlproto verify session.pcap
  qlproto roundtrip session.pcap
  qlproto stats --plot session.pcap
  qlproto trace session.pcap --order heron-1
  qlproto report session.pcap -o report.html

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

    qlproto::Commands commands;
    qlproto::addGenerate(app, commands);
    qlproto::addDecode(app, commands);
    qlproto::addEncode(app, commands);
    qlproto::addVerify(app, commands);
    qlproto::addRoundTrip(app, commands);
    qlproto::addStats(app, commands);
    qlproto::addLatency(app, commands);
    qlproto::addTrace(app, commands);
    qlproto::addDiff(app, commands);
    qlproto::addReport(app, commands);
    qlproto::addAnnotate(app, commands);
    qlproto::addMessages(app, commands);
    qlproto::addDescribe(app, commands);
    qlproto::addEnum(app, commands);
    qlproto::addSchema(app, commands);
    qlproto::addCorpus(app, commands);
    qlproto::addDissector(app, commands);
    qlproto::addManual(app, commands);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? qlproto::EXIT_FINE : qlproto::EXIT_USAGE;
    }

    const Protocol protocol;
    try {
        for (const qlproto::Command& command : commands)
            if (*command.app) return command.run();
        return qlproto::EXIT_USAGE;
    } catch (const qlproto::ClosedPipe&) {
        return qlproto::EXIT_FINE;
    } catch (const qlproto::FilterError& error) {
        return fail(qlproto::EXIT_USAGE, error);
    } catch (const qlproto::IoError& error) {
        return fail(qlproto::EXIT_IO, error);
    } catch (const qlproto::DamagedCapture& error) {
        return fail(qlproto::EXIT_BAD_DATA, error);
    }
}
