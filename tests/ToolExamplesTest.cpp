// The examples in the help texts, run as printed.
#include <sstream>

#include <gtest/gtest.h>

#include "tests/ToolFolder.h"

namespace {

/// The lines of a text that begin so, without what leads them in.
std::vector<std::string> linesBehind(const std::string& text, const std::string& lead, const std::string& start) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (line.starts_with(lead + start)) lines.push_back(line.substr(lead.size()));
    return lines;
}

TEST(Examples, RunAsPrinted) {
    const ToolFolder folder;
    ASSERT_EQ(folder.run("qlproto generate --messages 100000 --seed 7 -o session.pcap").exitCode, 0);
    const std::string help = folder.run("qlproto --help").out;
    std::vector<std::string> examples = linesBehind(help, "  ", "qlproto ");

    std::istringstream commands(help.substr(help.find("Subcommands:")));
    std::string line;
    size_t count = 0;
    for (std::getline(commands, line); std::getline(commands, line) && line.starts_with("  ");) {
        if (line[2] == ' ') continue; // a description goes on
        const std::string command = line.substr(2, line.find(' ', 2) - 2);
        const auto own = linesBehind(folder.run("qlproto " + command + " --help").out, "  ", "qlproto ");
        EXPECT_FALSE(own.empty()) << command << " shows no example";
        examples.insert(examples.end(), own.begin(), own.end());
        ++count;
    }
    EXPECT_GE(count, 3u) << help;
    for (const std::string& example : examples) {
        const ToolFolder::Result result = folder.run("set -o pipefail; " + example);
        EXPECT_EQ(result.exitCode, 0) << example << "\n" << result.err;
    }
}

} // namespace
