// The commands of the tool. Each stands in a file of its own, adds itself to the command line with its options and
// help, and runs when it was chosen. It returns an exit code and throws what Errors.h names.
#pragma once

#include <functional>
#include <vector>

#include <CLI/CLI.hpp>

namespace qlproto {

struct Command {
    CLI::App* app;            ///< as the command line knows it
    std::function<int()> run; ///< owns the options; called after the command line was parsed
};

using Commands = std::vector<Command>;

void addAnnotate(CLI::App& app, Commands& commands);
void addCorpus(CLI::App& app, Commands& commands);
void addDecode(CLI::App& app, Commands& commands);
void addDescribe(CLI::App& app, Commands& commands);
void addDiff(CLI::App& app, Commands& commands);
void addDissector(CLI::App& app, Commands& commands);
void addEncode(CLI::App& app, Commands& commands);
void addEnum(CLI::App& app, Commands& commands);
void addGenerate(CLI::App& app, Commands& commands);
void addLatency(CLI::App& app, Commands& commands);
void addManual(CLI::App& app, Commands& commands); ///< adds manpage and completion
void addMessages(CLI::App& app, Commands& commands);
void addReport(CLI::App& app, Commands& commands);
void addRoundTrip(CLI::App& app, Commands& commands);
void addSchema(CLI::App& app, Commands& commands);
void addStats(CLI::App& app, Commands& commands);
void addTrace(CLI::App& app, Commands& commands);
void addVerify(CLI::App& app, Commands& commands);

} // namespace qlproto
