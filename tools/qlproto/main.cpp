// qlproto: writes and reads captures of the protocol.
#include <csignal>
#include <sstream>

#include <fcntl.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/manual/HelpFormatter.h"
#include "tools/qlproto/messages/Filter.h"
#include "tools/qlproto/terminal/Errors.h"

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

Output files: A file is written beside its place and renamed when it is complete. Until then, and if that fails, what
stands there is left alone. Beside a capture comes a file CAPTURE.definition, which tells the definition it was made with;
commands that read the capture warn if theirs is another.

Exit status: 0 fine, 1 bad data found, 2 usage, 3 input or output failed or the system lacks memory or threads.)";

struct Protocol {
    Protocol() { Quillon::initialize(); }
    ~Protocol() { Quillon::finalize(); }
};

int fail(int exitCode, const std::exception& error) noexcept {
    try {
        qlproto::tell(std::string("qlproto: ") + error.what());
    } catch (const std::exception&) { // there is no memory to say so
    }
    return exitCode;
}

/// What replaces a closed standard stream fails as that does. Left closed, its number would go to the next file that is
/// opened, and what is meant for people, or standard output, would land in there.
void openStandardStreams() {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(fd, F_GETFD) == -1) open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

/// Help and version are data; anything else is the user's mistake.
int answer(const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        std::ostringstream text;
        app.exit(error, text);
        Capture::writeText(text.str());
        return qlproto::EXIT_FINE;
    }
    fail(qlproto::EXIT_USAGE, error);
    qlproto::tell("Run with --help for more information.");
    return qlproto::EXIT_USAGE;
}

int run(int argc, char** argv) {
    CLI::App app("Writes and reads captures of the QLProtocol: pcap files with one message a packet.", "qlproto");
    app.formatter(std::make_shared<qlproto::HelpFormatter>()); // for all commands that are added after it
    app.footer(EXAMPLES);
    app.require_subcommand(1);
    app.set_version_flag("--version", "qlproto " QLPROTO_VERSION, "Print the version");

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
        return answer(app, error);
    }

    const Protocol protocol;
    for (const qlproto::Command& command : commands)
        if (*command.app) return command.run();
    return qlproto::EXIT_USAGE;
}

} // namespace

int main(int argc, char** argv) {
    openStandardStreams();
    // Whoever reads our output may stop early, and files may be limited in size. Writing then fails, which is told.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return run(argc, argv);
    } catch (const Capture::ClosedPipe&) {
        return qlproto::EXIT_FINE;
    } catch (const qlproto::FilterError& error) {
        return fail(qlproto::EXIT_USAGE, error);
    } catch (const Capture::DamagedCapture& error) {
        return fail(qlproto::EXIT_BAD_DATA, error);
    } catch (const std::exception& error) { // IoError, or memory or threads are lacking
        return fail(qlproto::EXIT_IO, error);
    }
}
