// The examples in the help texts and documents, run as printed.
#include <filesystem>
#include <fstream>
#include <regex>

#include <gtest/gtest.h>

#include "tests/Engine.h"
#include "tests/ToolFolder.h"

namespace {

bool needsEngine(const std::string& line) {
    return line.find("qlproto query") != line.npos || line.find("--format parquet") != line.npos;
}

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
        if (needsEngine(example) && !hasEngine()) continue;
        const ToolFolder::Result result = folder.run("set -o pipefail; " + example);
        // Not every build has every library, and not every user may capture, which the program then says.
        const auto isTold = [&](const char* what) { return result.err.find(what) != std::string::npos; };
        if (result.exitCode != 0 && (isTold("this program was built without") || isTold("cap_net_raw"))) continue;
        EXPECT_EQ(result.exitCode, 0) << example << "\n" << result.err;
    }
}

// Each block of commands is run from the start, with a home of its own. Those that write no file show something.
TEST(Examples, OfTheDocumentsRunAsPrinted) {
    const ToolFolder folder;
    ASSERT_EQ(folder.run("qlproto generate --messages 5000 --seed 7 -o session.pcap").exitCode, 0);
    std::vector<std::filesystem::path> documents{QL_ROOT "/README.md"};
    for (const auto& it : std::filesystem::directory_iterator(QL_ROOT "/docs"))
        if (it.path().extension() == ".md") documents.push_back(it.path());
    const std::regex script("scripts/[a-z-]+"), command("^(qlproto|tshark|mkdir) ");
    size_t commands = 0, blocks = 0;
    for (const std::filesystem::path& document : documents) {
        std::ifstream text(document);
        bool isFenced = false, isBlock = false;
        for (std::string line; std::getline(text, line);) {
            if (line.starts_with("```")) {
                isFenced = !isFenced;
                isBlock = isFenced && line == "```";
                ++blocks;
            }
            for (std::sregex_iterator it(line.begin(), line.end(), script), end; it != end; ++it)
                EXPECT_TRUE(std::filesystem::exists(QL_ROOT "/" + it->str())) << document << ": " << it->str();
            if (!isBlock || !std::regex_search(line, command) || (needsEngine(line) && !hasEngine())) continue;
            ++commands;
            const std::string home = "export HOME=$PWD/home" + std::to_string(blocks) + "; set -o pipefail; ";
            const ToolFolder::Result result = folder.run(home + line.substr(0, line.find(" # ")));
            EXPECT_EQ(result.exitCode, 0) << document << ": " << line << "\n" << result.err;
            const bool isSilent = line.starts_with("mkdir") || line.find(" -o ") != line.npos;
            EXPECT_EQ(result.out.empty(), isSilent) << document << ": " << line;
        }
    }
    EXPECT_GE(commands, 9u);
}

} // namespace
