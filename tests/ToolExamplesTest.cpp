// The examples in the help texts, run as printed.
#include <gtest/gtest.h>

#include "tests/ToolFolder.h"

namespace {

TEST(Examples, RunAsPrinted) {
    const ToolFolder folder;
    ASSERT_EQ(folder.run("qlproto generate --messages 20000 --seed 7 -o session.pcap").exitCode, 0);
    std::vector<std::string> examples;
    const auto take = [&](const std::string& help) {
        const size_t before = examples.size();
        for (const std::string& line : linesOf(help))
            if (line.starts_with("  qlproto ")) examples.push_back(line);
        return examples.size() - before;
    };
    const std::string help = folder.run("qlproto --help").out;
    take(help);
    size_t commands = 0;
    for (const std::string& line : linesOf(help.substr(help.find("Subcommands:")))) {
        if (line.empty()) break;
        if (!line.starts_with("  ") || line[2] == ' ') continue; // the heading, or a description goes on
        const std::string command = line.substr(2, line.find(' ', 2) - 2);
        EXPECT_NE(take(folder.run("qlproto " + command + " --help").out), 0u) << command << " shows no example";
        ++commands;
    }
    EXPECT_GE(commands, 3u) << help;
    for (const std::string& example : examples) {
        const ToolFolder::Result result = folder.run("set -o pipefail; " + example);
        EXPECT_EQ(result.exitCode, 0) << example << "\n" << result.err;
    }
}

} // namespace
