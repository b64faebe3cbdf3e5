// The command line of a tool: its commands, what they have in common, and how it ends.
#include <algorithm>
#include <csignal>
#include <sstream>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/corpus/Filler.h"
#include "tools/qlproto/manual/HelpFormatter.h"
#include "tools/qlproto/messages/Filter.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

constexpr std::string_view NOTES =
    R"(Output files: A file is written beside its place and renamed when it is complete. Until then, and if that fails, what
stands there is left alone. Beside a capture comes a file CAPTURE.definition, which tells the definition it was made with;
commands that read the capture warn if theirs is another.

Captures: pcap, pcapng and ERF are read, as they are or compressed by gzip or zstd: the contents tell. Offsets are those of
the decompressed capture. What is compressed more than a thousand times is refused, beyond 256 MB.

Exit status: 0 fine, 1 bad data found, 2 usage, 3 input or output failed or the system lacks memory or threads.)";

struct Module {
    Module() { thisTool.protocol.initialize(); }
    ~Module() { thisTool.protocol.finalize(); }
};

int fail(int exitCode, const std::exception& error) noexcept {
    tellFault(error.what());
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
        return EXIT_FINE;
    }
    fail(EXIT_USAGE, error);
    tell("Run with --help for more information.");
    return EXIT_USAGE;
}

int runCommand(int argc, char** argv, std::span<const AddCommand> all) {
    CLI::App app(fmt::format("Writes and reads captures of {}: files of packets with one message each.", title()),
                 std::string(thisTool.program));
    app.formatter(std::make_shared<HelpFormatter>()); // for all commands that are added after it
    addExamples(app, "",
                {"$tool decode session.pcap", "$tool decode session.pcap | grep ' $message '",
                 "$tool verify session.pcap", "$tool roundtrip session.pcap", "$tool stats --plot session.pcap"});
    app.footer(fmt::format("{}\n\n{}", app.get_footer(), NOTES));
    app.require_subcommand(1);
    app.set_version_flag("--version", fmt::format("{} {}", thisTool.program, thisTool.version), "Print the version");

    Commands commands;
    for (const AddCommand add : all) add(app, commands);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::vector<std::string_view> names;
        for (const Command& command : commands) names.push_back(command.app->get_name());
        const std::string_view first = argc > 1 ? argv[1] : "";
        if (first.empty() || first.starts_with('-') || std::ranges::find(names, first) != names.end())
            return answer(app, error);
        tellFault(noneNamed("command", first, names));
        return EXIT_USAGE;
    }

    const Module module;
    for (const Command& command : commands)
        if (*command.app) return command.run();
    return EXIT_USAGE;
}

/// With the names that stand for what the tool knows replaced.
std::string filledIn(std::string_view text) {
    const Inspect::MessageInfo& first = thisTool.protocol.messages.front();
    const bool hasSample = !thisTool.sample.message.empty();
    const std::string_view message = hasSample ? thisTool.sample.message : first.type->name;
    Velmora::MsgType_t id = 0;
    for (const Inspect::MessageInfo& it : thisTool.protocol.messages)
        if (it.type->name == message) id = it.id;
    std::string result(text);
    const std::pair<std::string_view, std::string> names[] = {
        {"$tool", std::string(thisTool.program)},
        {"$message", std::string(message)},
        {"$id", std::to_string(id)},
        {"$body",
         hasSample ? std::string(thisTool.sample.body) : corpus::filledJson(*first.type, corpus::Filling::small)},
    };
    for (const auto& [name, value] : names)
        for (std::size_t at = 0; (at = result.find(name, at)) != result.npos; at += value.size())
            result.replace(at, name.size(), value);
    return result;
}

} // namespace

std::string title() {
    return thisTool.title.empty() ? fmt::format("the protocol {}", thisTool.name) : std::string(thisTool.title);
}

void addExamples(CLI::App& command, std::string_view remarks, std::initializer_list<std::string_view> examples) {
    const bool isTool = command.get_parent() == nullptr;
    std::vector<std::string_view> lines;
    for (const Example& it : thisTool.examples)
        if (isTool ? it.command.empty() : it.command == command.get_name()) lines.push_back(it.line);
    if (lines.empty()) lines = examples;

    std::string footer(remarks);
    if (!footer.empty()) footer += "\n\n";
    footer += lines.size() == 1 ? "Example:" : "Examples:";
    for (const std::string_view line : lines) footer.append("\n  ").append(line);
    command.footer(filledIn(footer));
}

int runTool(int argc, char** argv, std::span<const AddCommand> all) {
    openStandardStreams();
    // Whoever reads our output may stop early, and files may be limited in size. Writing then fails, which is told.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return runCommand(argc, argv, all);
    } catch (const Capture::ClosedPipe&) {
        return EXIT_FINE;
    } catch (const FilterError& error) {
        return fail(EXIT_USAGE, error);
    } catch (const Capture::DamagedCapture& error) {
        return fail(EXIT_BAD_DATA, error);
    } catch (const std::exception& error) { // IoError, or memory or threads are lacking
        return fail(EXIT_IO, error);
    }
}

int runTool(int argc, char** argv) {
    static constexpr AddCommand all[] = {addDecode,   addEncode,   addVerify,    addRoundTrip, addStats,    addQuery,
                                         addExport,   addDiff,     addConvert,   addSlice,     addScrub,    addMerge,
                                         addReplay,   addPublish,  addRecord,    addTap,       addWatch,    addMetrics,
                                         addAnnotate, addMessages, addDescribe,  addEnum,      addTemplate, addIndex,
                                         addSchema,   addCorpus,   addDissector, addManual};
    return runTool(argc, argv, all);
}

} // namespace qlproto
