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

void addDecode(CLI::App& app, Commands& commands);
void addDiff(CLI::App& app, Commands& commands);
void addGenerate(CLI::App& app, Commands& commands);
void addLatency(CLI::App& app, Commands& commands);
void addReport(CLI::App& app, Commands& commands);
void addRoundTrip(CLI::App& app, Commands& commands);
void addStats(CLI::App& app, Commands& commands);
void addTrace(CLI::App& app, Commands& commands);
void addVerify(CLI::App& app, Commands& commands);

} // namespace qlproto
