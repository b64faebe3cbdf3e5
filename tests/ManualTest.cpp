// What the tool tells about itself: the manual page, and completions as the shells themselves work them out.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "Inspect/Reflection.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/manual/Completion.h"
#include "tools/qlproto/manual/ManualPage.h"

namespace {

using namespace qlproto;

/// A command line with one of everything.
class Manual : public testing::Test {
  protected:
    Manual() {
        CLI::App* const show = app.add_subcommand("show", "Shows [it]: \"all\" of $it, 5 `%`");
        show->add_option("name", text)->required()->check(named(TYPE_VALUE));
        show->add_option("--how", text, "The way")->check(CLI::IsMember({"short", "long"}))->capture_default_str();
        show->add_flag("--all", isAll, "Everything");
        show->add_option("--secret", text)->group("");
        CLI::Option_group* const group = show->add_option_group("of files");
        group->add_option("-o,--output", text, "A file")->type_name(FILE_VALUE);
        group->add_option("--only", text, "A message")->check(named(MESSAGE_VALUE));
        group->add_option("--word", text, "Any text");
        group->add_option("--where", text, "A condition")->check(named(CONDITION_VALUE));
        group->add_option("--first", count, "That many");
        show->footer("Examples:\n  qlproto show Side\n  .hidden '\\n'\n\nNote: that's all.");
        app.add_subcommand("values", "Shows values")->add_option("name", text)->check(named(ENUMERATION_VALUE));
        app.add_subcommand("inner", "Not for people")->group("");
        app.footer("Examples:\n  qlproto show x\n\nExit status: 0 fine.");
        folder.write("a file.pcap", "");
        folder.write("bash", bashCompletion(commandTree(app)));
        folder.write("zsh", zshCompletion(commandTree(app)));
    }

    /// What a shell command prints, both streams, line by line.
    std::vector<std::string> run(const std::string& command) const {
        return linesOf(folder.run("exec 2>&1; " + command).out);
    }

    static CLI::Validator named(const char* kind) {
        return {[](std::string&) { return std::string(); }, kind};
    }

    /// What bash offers for the last of `words`.
    std::set<std::string> offered(const std::string& words, int position) {
        const auto lines = run("bash -c '. ./bash; COMP_WORDS=(" + words + "); COMP_CWORD=" + std::to_string(position)
                               + "; _qlproto; for it in \"${COMPREPLY[@]}\"; do echo \"$it\"; done'");
        return {lines.begin(), lines.end()};
    }

    CLI::App app{"Shows things", "qlproto"};
    std::string text = "short";
    int count = 0;
    bool isAll = false;
    const ToolFolder folder;
};

TEST_F(Manual, BashOffersCommandsOptionsAndValues) {
    using Names = std::set<std::string>;
    EXPECT_EQ(offered("qlproto \"\"", 1), (Names{"show", "values", "-h", "--help"}));
    EXPECT_EQ(offered("qlproto sh", 1), Names{"show"});
    EXPECT_EQ(offered("qlproto show --", 2),
              (Names{"--help", "--how", "--all", "--output", "--only", "--word", "--where", "--first"}));
    EXPECT_EQ(offered("qlproto show --how \"\"", 3), (Names{"short", "long"}));
    EXPECT_EQ(offered("qlproto show --first \"\"", 3), Names{});
    EXPECT_EQ(offered("qlproto show -o a", 3), Names{"a file.pcap"});
    EXPECT_EQ(offered("qlproto show --word a", 3), Names{});
    EXPECT_EQ(offered("qlproto show --only SubmitO", 3), Names{"SubmitOrderMessage"});
    EXPECT_EQ(offered("qlproto show SubmitO", 2), (Names{"SubmitOrderMessage", "SubmitOrder"}));
    EXPECT_EQ(offered("qlproto show --first 5 --all MDEnt", 5), Names{"MDEntry"});
    EXPECT_EQ(offered("qlproto show --where clOrdI", 3), Names{"clOrdID"});
    EXPECT_EQ(offered("qlproto show --where side = ", 4),
              (Names{"BID", "OFR", "BOTH", "MIDPOINT"})); // what bash makes of "side="
    EXPECT_EQ(offered("qlproto show --where 'side!' = O", 5), Names{"OFR"});
    EXPECT_FALSE(offered("qlproto show --word side = B", 5).contains("BID"));
    EXPECT_EQ(offered("qlproto show --where userID = ", 4), Names{});
    EXPECT_EQ(offered("qlproto values Si", 2), Names{"Side"});
    EXPECT_EQ(offered("qlproto values", 2).size(), Inspect::all_enumerations().size());
}

// The functions of the completion system stand in for it and show what they are given.
TEST_F(Manual, ZshIsGivenCommandsOptionsAndValues) {
    const auto given = [&](const char* words, int current) {
        return run("zsh -f -c '_describe() { print -rl -- ${(P)2} }; _arguments() { print -rl -- \"$@\" };"
                   " words=("
                   + std::string(words) + "); CURRENT=" + std::to_string(current) + "; . ./zsh'");
    };
    EXPECT_EQ(given("qlproto x", 2),
              (std::vector<std::string>{"show:Shows \\[it\\]\\: \"all\" of $it, 5 `%`", "values:Shows values"}));
    const auto show = given("qlproto show x", 3);
    for (const char* spec : {"(-o --output)--output[A file]:FILE:_files", "(--all)--all[Everything]",
                             "(--first)--first[That many]:INT: ", "(--how)--how[The way]:{short,long}:(short long)"})
        EXPECT_EQ(std::ranges::count(show, spec), 1) << spec;
    EXPECT_TRUE(show.back().starts_with(":name:(LogMessage ")) << show.back();
    // As the completion system calls it: what it takes off the word stands in IPREFIX.
    const auto condition = [&](const char* word) {
        return run("zsh -f -c '_arguments() { :; }; compadd() { print -rl -- \"$@\" };"
                   " compset() { [[ $word == *=* ]] && IPREFIX=${word%%=*}= };"
                   " words=(qlproto show x); CURRENT=3; . ./zsh; fields=\"a b\"; word="
                   + std::string(word) + "; _qlproto_condition'");
    };
    EXPECT_EQ(condition("sid"), (std::vector<std::string>{"-S", "", "--", "a", "b"}));
    EXPECT_EQ(condition("side=B"), (std::vector<std::string>{"--", "BID", "BOTH", "MIDPOINT", "OFR"}));
    EXPECT_TRUE(given("qlproto values x", 3).back().starts_with(":name:(LogLevel Side "));
}

TEST_F(Manual, PageIsSoundAndReadsAsMeant) {
    folder.write("page", manualPage(commandTree(app), "1.2.3"));
    const auto page = run("MANWIDTH=100 man -l page | col -bx");
    for (const char* line : {"       qlproto show [OPTIONS] name", "              The way (default: short)",
                             "       Shows [it]: \"all\" of $it, 5 `%`.", "         .hidden '\\n'", "EXIT STATUS",
                             "       Note: that's all.", "       -o, --output FILE", "       --how {short,long}"})
        EXPECT_EQ(std::ranges::count(page, line), 1) << line;
    for (const std::string& line : page) {
        EXPECT_EQ(line.find("--secret"), line.npos);
        EXPECT_EQ(line.find("inner"), line.npos);
    }
}

// The tool's own, with all its commands. The page has no date, so that it is the same whenever it was built.
TEST_F(Manual, OfTheToolIsSound) {
    const std::vector<std::string> none;
    EXPECT_EQ(run("qlproto manpage >page"), none);
    EXPECT_EQ(run("mandoc -T lint -W warning page | grep -v 'missing date'"), none);
    EXPECT_EQ(run("man --warnings -l page >/dev/null"), none);
    EXPECT_EQ(run("qlproto completion bash >bash && bash -n bash"), none);
    EXPECT_EQ(run("qlproto completion zsh >zsh && zsh -n zsh"), none);
    EXPECT_EQ(offered("qlproto comp", 1), std::set<std::string>{"completion"});
    const std::set<std::string> submit{"SubmitOrderMessage"};
    for (const char* option : {"decode --message", "decode --type", "annotate --type"})
        EXPECT_EQ(offered("qlproto " + std::string(option) + " Submit", 3), submit) << option;
    for (const char* option : {"decode --where", "stats --by", "diff --ignore"})
        EXPECT_EQ(offered("qlproto " + std::string(option) + " timeApiC", 3), std::set<std::string>{"timeApiClient"})
            << option;
    EXPECT_EQ(offered("qlproto decode --format l", 3), (std::set<std::string>{"line", "lines"}));
    EXPECT_EQ(offered("qlproto trace --order pa", 3), std::set<std::string>{}) << "no file";
    // What the parser calls types and ranges is nothing for people.
    std::set<std::string> commands = offered("qlproto ''", 1);
    for (const std::string& command : commands)
        for (const std::string& line : run("cat page; qlproto " + command + (command[0] == '-' ? "" : " --help")))
            for (const char* internal : {"->", "INT ", "value in", "TEXT:", "NONNEGATIVE", "POSITIVE"})
                EXPECT_EQ(line.find(internal), std::string::npos) << line;
}

} // namespace
