// The tools of other protocols: one of every type and of names that are hard to bear, and the example. Their captures are
// made of their own test vectors.
#include <filesystem>
#include <map>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Backend/Velmora/Wire.h"
#include "tests/Folder.h"

namespace {

using nlohmann::json;

class OtherTools : public testing::TestWithParam<const char*> {
  protected:
    OtherTools() {
        // The golden vectors as a capture: bodies at the limits, and every message. Pads travel as they are written, not
        // as the vectors have them.
        run("tool corpus -o c && cat c/*.ndjson | grep '\"kind\":\"golden\"' "
            "| sed '/\"written\"/ s/\"hex\":\"[0-9a-f]*\",//' | tool encode - -o a.pcap");
    }

    Folder::Result attempt(const std::string& command) {
        return _folder.run("tool() { '" + std::string(GetParam()) + "' \"$@\"; }; set -o pipefail; " + command);
    }

    /// What a command that must succeed prints.
    std::string run(const std::string& command) {
        const Folder::Result result = attempt(command);
        EXPECT_EQ(result.exitCode, 0) << command << '\n' << result.out << result.err;
        return result.out;
    }

    Folder _folder;
};

TEST_P(OtherTools, TakeAndGiveBackEveryMessage) {
    const json messages = json::parse(run("tool messages --json"));
    const json stats = json::parse(run("tool stats --json a.pcap"));
    EXPECT_EQ(stats["messages"].size(), messages.size());
    run("tool verify a.pcap");
    run("tool decode --format json a.pcap | tool encode - -o b.pcap && cmp a.pcap b.pcap && tool diff a.pcap b.pcap");
    EXPECT_NE(run("tool roundtrip a.pcap").find("different 0\n"), std::string::npos);
    const std::string count = std::to_string(stats["all"]["count"].get<int>());
    run("for i in $(seq 1 3 " + count
        + "); do tool annotate a.pcap --packet $i >/dev/null || exit 1; done; "
          "for i in $(tool decode a.pcap | cut -d ' ' -f 2 | uniq); do tool describe $i >/dev/null || exit 1; done");
    EXPECT_EQ(json::parse(run("tool schema"))["messages"].size(), messages.size());
    // Templates are taken as they are, and so is what is left of them when their bodies are taken out.
    run("for i in $(tool messages --csv | tail -n +2 | cut -d, -f3); do tool template $i; done >templates; "
        "tool encode templates -o zeros.pcap && tool verify --policy strict zeros.pcap >/dev/null; "
        "sed 's/,\"body\".*/}/' templates | tool encode --partial - -o nothing.pcap");
    for (const char* capture : {"zeros.pcap", "nothing.pcap"})
        EXPECT_EQ(linesOf(run(std::string("tool decode ") + capture)).size(), messages.size());
    run("for i in $(tool enum); do tool enum $i >/dev/null || exit 1; done; tool manpage >/dev/null; tool completion "
        "bash "
        "| bash -n");
}

TEST_P(OtherTools, RefuseWhatTheVectorsSayIsBad) {
    std::map<std::string, std::vector<json>> vectors;
    for (const std::string& line : linesOf(run("cat c/*.ndjson | grep '\"kind\":\"hostile\"'")))
        vectors[json::parse(line)["message"]].push_back(json::parse(line));
    EXPECT_FALSE(vectors.empty());
    vectors.erase("Padded"); // packets hold pads as they are written, vectors as they are read
    for (const auto& [name, bodies] : vectors) {
        std::string hex;
        for (const json& it : bodies) hex += it["hex"].get<std::string>() + '\n';
        _folder.write("hex", hex);
        const std::vector<std::string> faults =
            linesOf(attempt("tool decode --hex --policy strict --type " + name + " hex").err);
        size_t next = 0;
        for (const json& it : bodies) {
            if (it["hex"] == "") continue; // no line of hex
            ASSERT_LT(next, faults.size()) << name;
            EXPECT_NE((faults[next] + ' ').find(" at byte " + it["strict"]["offset"].dump() + ' '), std::string::npos)
                << it << faults[next];
            ++next;
        }
        EXPECT_EQ(next, faults.size()) << name;
    }
}

TEST_P(OtherTools, HaveAnAnalyserOfTheirOwn) {
    run("tool dissector -o d.lua");
    const std::string prefix = std::filesystem::path(GetParam()).filename();
    const auto tshark = [&](const std::string& options) {
        const Folder::Result result = attempt("tshark -X lua_script:d.lua -r a.pcap " + options);
        EXPECT_EQ(result.exitCode, 0) << options << result.err;
        EXPECT_EQ(result.err.find("Lua"), std::string::npos) << result.err;
        return result.out;
    };
    EXPECT_EQ(tshark("-Y '_ws.expert || _ws.lua.error || !" + prefix + ".message'"), "");
    EXPECT_EQ(tshark("-T fields -e " + prefix + ".message"), run("tool decode a.pcap | cut -d ' ' -f 2"));
}

// Those that QLProtocol does not use, at their limits.
TEST_P(OtherTools, ShowNumbersOfEveryTypeInTheAnalyser) {
    if (std::string_view(GetParam()) != QL_HOSTILE_TOOL) GTEST_SKIP() << "has none of them";
    run("tool dissector -o d.lua");
    const std::string lines = run("tool decode --format json --message Types a.pcap");
    const std::string shown = "tshark -X lua_script:d.lua -r a.pcap -Y ";
    for (const char* name : {"uint8", "uint16", "uint32", "uint64", "uint16_fixed", "uint32_fixed", "int64_fixed"}) {
        std::string expected, field = std::string(name) + "_1";
        for (const std::string& line : linesOf(lines)) {
            const json value = json::parse(line)["body"][field];
            const std::string text = value.is_string() ? value.get<std::string>() : value.dump();
            expected += (text == "NMA" ? std::to_string(Velmora::NMA) : text) + '\n';
        }
        EXPECT_EQ(run(shown + "'hostileproto.message == \"Types\"' -T fields -e hostileproto.types." + field), expected)
            << name;
    }
    run(shown + "'hostileproto.types.float4_1 < -3e38 && hostileproto.types.float8_1 < -1e308' | grep -q Types");
    run(shown
        + "'hostileproto.types.string_fixed_1 == \"ab\" && hostileproto.types.cryptblob_1 == 61:62' | grep -q Types");
}

INSTANTIATE_TEST_SUITE_P(All, OtherTools, testing::Values(QL_HOSTILE_TOOL, QL_CHAT_TOOL),
                         [](const auto& it) { return std::filesystem::path(it.param).filename().string(); });

} // namespace
