// What becomes of files, standard streams and the exit status when something is in the way.
#include <filesystem>
#include <set>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "tests/Sessions.h"
#include "tests/ToolFolder.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* LINE = "{\"message\": \"TimerMessage\", \"body\": {\"tqid\": 7}}\n";

class ToolOutput : public Module {
  protected:
    ToolOutput() {
        std::string lines;
        for (int i = 0; i < 3000; ++i) lines += LINE;
        folder.write("lines", lines);
        EXPECT_EQ(folder.run("qlproto generate --messages 5000 -o a.pcap").exitCode, 0);
    }

    /// Whether a file was left over beside the others.
    bool hasLeftover() const {
        for (const auto& it : fs::directory_iterator(folder.path("")))
            if (it.path().filename().string().starts_with(".part-")) return true;
        return false;
    }

    const ToolFolder folder;
};

using Case = std::pair<const char*, int>; ///< a command and its exit status

TEST_F(ToolOutput, ReplacesItsOwnInputWhenComplete) {
    for (const char* way : {"lines", "link", "second"}) {
        folder.run("rm -f link second x; cp lines x; ln -s x link; ln x second");
        const std::string output = std::string(way) == "lines" ? "x" : way;
        for (const char* format : {"hex", "raw", "capture"}) {
            folder.run("cp lines x");
            EXPECT_EQ(folder.run("qlproto encode x --format " + std::string(format) + " -o " + output).exitCode, 0);
            const std::string made = folder.run("qlproto encode lines --format " + std::string(format)).out;
            EXPECT_EQ(folder.content(output), made) << format << output;
        }
        EXPECT_EQ(folder.content("x").size() < folder.content("lines").size(), output != "second"); // a hard link
        EXPECT_TRUE(fs::is_symlink(folder.path("link")));
        EXPECT_EQ(folder.run("cp a.pcap x; qlproto report x -o " + output).exitCode, 0);
        EXPECT_TRUE(folder.content(output).starts_with("<!DOCTYPE html>")) << output;
    }
    EXPECT_EQ(folder.run("ln -s later dangling; qlproto encode lines -o dangling && cat later").out.size(),
              24 + 3000 * 19u);
    EXPECT_FALSE(hasLeftover());
}

TEST_F(ToolOutput, LeavesWhatWasThereWhenItFails) {
    folder.write("old", "old");
    for (const auto& [command, exitCode] : {
             Case{"ulimit -f 8; qlproto generate -o old", 3},
             {"ulimit -f 8; qlproto encode lines -o old", 3},
             {"ulimit -f 8; qlproto encode lines --format hex -o old", 3},
             {"ulimit -f 8; qlproto report a.pcap -o old", 3},
             {"ulimit -f 8; qlproto dissector -o old", 3},
             {"qlproto encode - -o old <.", 3},
             {"qlproto report lines -o old", 1},
             {"timeout --preserve-status -s INT 0.5 $tool generate --messages 1000000000 -o old", 128 + 2},
             {"timeout --preserve-status -s TERM 0.5 $tool generate --messages 1000000000 -o old", 128 + 15},
             {"timeout --preserve-status -s HUP 0.5 $tool generate --messages 1000000000 -o old", 128 + 1},
         }) {
        const auto result = folder.run(std::string("tool='" QLPROTO_TOOL "'; ") + command);
        EXPECT_EQ(result.exitCode, exitCode) << command << result.err;
        EXPECT_EQ(folder.content("old"), "old") << command;
        EXPECT_FALSE(hasLeftover()) << command;
    }
}

TEST_F(ToolOutput, KeepsPermissionsAndTakesTheUsualOnes) {
    const auto mode = [&](const char* name) {
        struct stat status {};
        return stat(folder.path(name).c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    };
    folder.run("touch old; chmod 604 old; umask 027; qlproto encode lines -o old; qlproto encode lines -o new");
    EXPECT_EQ(mode("old"), 0604u);
    EXPECT_EQ(mode("new"), 0640u);
}

TEST_F(ToolOutput, WritesSpecialFilesInPlace) {
    const std::string hex = folder.run("qlproto encode lines --format hex").out;
    for (const char* command :
         {"mkfifo f; cat f & qlproto encode lines --format hex -o f; wait",
          "qlproto encode lines --format hex -o >(cat >o); wait $!; for i in {1..100}; do sleep 0.02; [ $(wc -l <o) = "
          "3000 ] && break; done; cat o",
          "qlproto encode lines --format hex -o /dev/stdout | cat", "qlproto encode lines --format hex -o /dev/stdout"})
        EXPECT_EQ(folder.run(command).out, hex) << command;
    EXPECT_EQ(folder.run("qlproto encode lines -o /dev/null; [ -c /dev/null ]").exitCode, 0);
    for (const char* command : {"encode lines -o /dev/full", "generate -o /dev/full", "generate -o ."})
        EXPECT_EQ(folder.run(std::string("qlproto ") + command).exitCode, 3) << command;
}

TEST_F(ToolOutput, ReadErrorsAreNotTheEndOfInput) {
    for (const char* command : {"encode -", "annotate -", "annotate --raw -", "decode -", "decode --hex -",
                                "decode --raw -", "verify -", "stats -", "trace - --order x", "diff a.pcap -"})
        for (const char* input : {" <.", " <&-"}) {
            const auto result = folder.run(std::string("qlproto ") + command + input);
            EXPECT_EQ(result.exitCode, 3) << command << input;
            EXPECT_EQ(result.out, "") << command << input;
            EXPECT_TRUE(result.err.starts_with("qlproto: standard input: ")) << command << input << result.err;
        }
}

TEST_F(ToolOutput, BadDataIsNotForgottenWhenNobodyReadsOn) {
    folder.run("(echo '{'; cat lines) >badlines; qlproto encode --format hex lines | sed '1s/.*/xx/' >badhex;"
               "qlproto generate --profile hostile --messages 5000 -o bad.pcap");
    for (const auto& [command, exitCode] : {
             Case{"decode a.pcap", 0},
             {"decode bad.pcap", 1},
             {"decode --hex badhex", 1},
             {"encode badlines --format hex", 1},
             {"encode badlines", 1},
             {"verify bad.pcap", 1},
             {"diff --differences 0 a.pcap bad.pcap", 1},
             {"roundtrip bad.pcap", 1},
             {"generate --messages 10000 -o -", 0},
             {"--help", 0},
         }) {
        const auto result =
            folder.run("qlproto " + std::string(command) + " | head -c 1 >/dev/null; exit ${PIPESTATUS[0]}");
        EXPECT_EQ(result.exitCode, exitCode) << command << result.err;
    }
}

TEST_F(ToolOutput, ClosedStreamsAreNotTakenForOtherFiles) {
    EXPECT_EQ(folder.run("qlproto decode a.pcap >&-").exitCode, 3);
    EXPECT_EQ(folder.run("qlproto decode a.pcap >&- 2>&-").exitCode, 3);
    const std::string badLines = "(cat lines; echo '{') | qlproto encode - ";
    const std::string expected = folder.run(badLines + "2>/dev/null").out;
    EXPECT_EQ(folder.run(badLines + "-o b 2>&-").exitCode, 1);
    EXPECT_EQ(folder.content("b"), expected);
    EXPECT_EQ(folder.run("(cat lines; echo '{') >badlines; qlproto encode badlines -o b <&- 2>&-").exitCode, 1);
    EXPECT_EQ(folder.content("b"), expected);
}

TEST_F(ToolOutput, ExitStatusIsOneOfFourWithoutMemoryOrThreads) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer itself reserves terabytes of addresses";
#endif
    // Where the program cannot even be loaded, nothing of it can answer. A limit on memory is one on threads: each needs a
    // stack.
    const auto limit = [](int kilobytes) { return "ulimit -v " + std::to_string(kilobytes) + "; qlproto "; };
    int least = 12000;
    while (least < 60000 && folder.run(limit(least) + "--version").exitCode != 0) least += 4000;
    ASSERT_LE(least, 32000);
    for (const char* command : {"decode a.pcap", "latency a.pcap", "report a.pcap -o r", "encode lines -o e",
                                "diff b.pcap a.pcap", "decode --format xml a.pcap"})
        for (int kilobytes = least; kilobytes <= 60000; kilobytes += 4000) {
            const auto result = folder.run(limit(kilobytes) + command);
            EXPECT_TRUE(result.exitCode >= 0 && result.exitCode <= 3)
                << command << kilobytes << ": " << result.exitCode << result.err;
        }
}

TEST_F(ToolOutput, CapturesSayWhichDefinitionTheyWereMadeWith) {
    const auto warning = [&](const std::string& command) {
        const auto result = folder.run("qlproto " + command + " >/dev/null");
        EXPECT_EQ(result.exitCode, 0) << command;
        const size_t at = result.err.find("definition"), end = result.err.find('\n');
        EXPECT_EQ(result.err.find("another definition", end), std::string::npos) << "once: " << result.err;
        return at < end ? result.err.substr(0, end) : "";
    };
    ASSERT_EQ(warning("generate --messages 1000 -o a.pcap"), "");
    const std::string told = folder.run("cat a.pcap.definition").out;
    EXPECT_EQ(warning("decode --format json a.pcap | qlproto encode - -o b.pcap"), "");
    EXPECT_EQ(folder.run("cat b.pcap.definition").out, told) << "by whichever command";
    EXPECT_EQ(warning("generate --messages 1000 -o - "), "");
    EXPECT_FALSE(std::filesystem::exists(folder.path("-.definition")));
    EXPECT_EQ(warning("generate --messages 1000 -o /dev/null"), "");
    EXPECT_FALSE(std::filesystem::exists("/dev/null.definition"));
    EXPECT_EQ(warning("decode a.pcap"), "");

    const auto with = [&](const std::string& text) { folder.write("a.pcap.definition", text); };
    const auto changed = [&](const char* name) {
        const size_t at = told.find(name) + std::string(name).size() + 4;
        return std::string(told).replace(at, 1, told[at] == '0' ? "1" : "0");
    };
    with(changed("wire"));
    for (const char* command :
         {"decode a.pcap", "verify a.pcap", "stats a.pcap", "latency a.pcap", "roundtrip a.pcap", "diff b.pcap a.pcap",
          "report a.pcap -o r.html", "annotate --packet 1 a.pcap", "trace a.pcap --user 11"})
        EXPECT_EQ(warning(command),
                  "qlproto: a.pcap: made with another definition, Quillon 1: values may be misread by "
                  "Quillon 1, which is built in");
    with(changed("names"));
    EXPECT_EQ(warning("decode a.pcap"),
              "qlproto: a.pcap: made with another definition, Quillon 1: its bodies are the same, its names are not");
    with(changed("wire") + " ");
    EXPECT_NE(warning("decode a.pcap"), "");
    with(changed("wire").replace(told.size() - 3, 1, told[told.size() - 3] == '1' ? "2" : "1"));
    EXPECT_EQ(warning("decode a.pcap"), "") << "of another capture that had its name";
    // What a stranger put there.
    for (const std::string& text :
         {std::string(), std::string("[]"), told + std::string(5000, ' '), std::string("{\"wire\":1}")}) {
        with(text);
        EXPECT_TRUE(warning("decode a.pcap").starts_with("qlproto: a.pcap.definition: does not tell")) << text;
    }
    ASSERT_EQ(folder.run("rm a.pcap.definition && mkfifo a.pcap.definition").exitCode, 0);
    EXPECT_NE(warning("decode a.pcap").find("no regular file"), std::string::npos);
    EXPECT_EQ(folder.run("rm a.pcap.definition").exitCode, 0);
    EXPECT_EQ(warning("decode a.pcap"), "");
}

TEST_F(ToolOutput, NoTextOfAStrangerSteersATerminal) {
    const std::string evil = "\x1B[2J\n\r\x7F\xC2\x9B\xE2\x80\xAE\xE2\x80\xA8|";
    const std::string packet = ToolFolder::packet<Quillon::SubmitOrderMessage>([&](Quillon::SubmitOrderMessage& it) {
        it.contents.clOrdID = evil.c_str();
        it.contents.orderID = 9;
    });
    folder.store("evil.pcap", {{1, packet}});
    folder.store("good.pcap", {{1, ToolFolder::packet<Quillon::SubmitOrderMessage>(
                                       [](Quillon::SubmitOrderMessage& it) { it.contents.orderID = 9; })}});
    folder.write("packet", packet);
    folder.write("evil.json",
                 "{\"" + evil + "\": 1}\n{\"message\": \"" + evil
                     + "\n{\"message\": \"\\u001b\\u009b\\u202e\", "
                       "\"body\": {}}\n{\"message\": \"TimerMessage\", \"body\": {\"\\u001b\\n\\u202e\": 1}}\n");
    folder.write("evil", evil);
    for (const char* command : {"decode evil.pcap",
                                "decode --format lines evil.pcap",
                                "decode --format json evil.pcap",
                                "trace evil.pcap --order 9",
                                "trace evil.pcap --order 9 --json",
                                "diff good.pcap evil.pcap",
                                "annotate --raw packet",
                                "encode --format hex evil.json",
                                "decode \"$evil\"",
                                "decode evil.pcap \"$evil\"",
                                "decode evil.pcap --where \"$evil\"",
                                "decode evil.pcap --where \"side=$evil\"",
                                "decode evil.pcap --message \"$evil\"",
                                "decode evil.pcap --from \"$evil\"",
                                "--\"$evil\"",
                                "decode evil.pcap --format \"$evil\"",
                                "decode evil.pcap -n \"$evil\"",
                                "describe \"$evil\"",
                                "annotate \"$evil\"",
                                "trace evil.pcap --order \"$evil$evil\"",
                                "generate -o \"no/$evil\"",
                                "verify evil"}) {
        const auto result = folder.run("evil=$(cat evil); qlproto " + std::string(command));
        for (const std::string& line : linesOf(result.out + result.err)) {
            for (const char* piece : {"\x1B", "\r", "\x7F", "\xC2\x9B", "\xE2\x80\xAE", "\xE2\x80\xA8"})
                EXPECT_EQ(line.find(piece), std::string::npos) << command << ": " << line;
            EXPECT_FALSE(line.starts_with("\\r")) << command << ": " << line; // forged by the line feed before
        }
    }
    const std::string json = folder.run("qlproto decode --format json evil.pcap").out;
    EXPECT_NE(json.find("\\u007f\\u009b\\u202e\\u2028|"), std::string::npos) << json;
    EXPECT_NE(nlohmann::json::parse(json).dump().find(nlohmann::json(evil).dump()), std::string::npos) << "inexact";
}

} // namespace
