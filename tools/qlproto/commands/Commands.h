// The commands of the tool. Each stands in a file of its own, adds itself to the command line with its options and
// help, and runs when it was chosen. It returns an exit code and throws what Errors.h names.
#pragma once

#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace qlproto {

struct Command {
    CLI::App* app;            ///< as the command line knows it
    std::function<int()> run; ///< owns the options; called after the command line was parsed
};

using Commands = std::vector<Command>;

/// The protocol in sentences: "the QLProtocol".
std::string title();

/// Ends the help of a command with its examples: those that the tool has for it, or else these. In both, "$tool" is the
/// program; in these, and in the remarks, "$message", "$id" and "$body" are those of the protocol's sample.
void addExamples(CLI::App& command, std::string_view remarks, std::initializer_list<std::string_view> examples);

using AddCommand = void (*)(CLI::App& app, Commands& commands);

/// Runs the tool with these commands. Returns its exit status.
int runTool(int argc, char** argv, std::span<const AddCommand> all);

void addAnnotate(CLI::App& app, Commands& commands);
void addConvert(CLI::App& app, Commands& commands);
void addCorpus(CLI::App& app, Commands& commands);
void addDecode(CLI::App& app, Commands& commands);
void addDescribe(CLI::App& app, Commands& commands);
void addDiff(CLI::App& app, Commands& commands);
void addDissector(CLI::App& app, Commands& commands);
void addEncode(CLI::App& app, Commands& commands);
void addEnum(CLI::App& app, Commands& commands);
void addExport(CLI::App& app, Commands& commands);
void addGenerate(CLI::App& app, Commands& commands);
void addIndex(CLI::App& app, Commands& commands);
void addLatency(CLI::App& app, Commands& commands);
void addManual(CLI::App& app, Commands& commands); ///< adds manpage and completion
void addMerge(CLI::App& app, Commands& commands);
void addMessages(CLI::App& app, Commands& commands);
void addMetrics(CLI::App& app, Commands& commands);
void addOrders(CLI::App& app, Commands& commands);
void addQuery(CLI::App& app, Commands& commands);
void addPublish(CLI::App& app, Commands& commands);
void addReplay(CLI::App& app, Commands& commands);
void addQuotes(CLI::App& app, Commands& commands);
void addRecord(CLI::App& app, Commands& commands);
void addReport(CLI::App& app, Commands& commands);
void addRoundTrip(CLI::App& app, Commands& commands);
void addSchema(CLI::App& app, Commands& commands);
void addScrub(CLI::App& app, Commands& commands);
void addSlice(CLI::App& app, Commands& commands);
void addStats(CLI::App& app, Commands& commands);
void addTap(CLI::App& app, Commands& commands);
void addTemplate(CLI::App& app, Commands& commands);
void addTrace(CLI::App& app, Commands& commands);
void addVerify(CLI::App& app, Commands& commands);
void addWatch(CLI::App& app, Commands& commands);

} // namespace qlproto
