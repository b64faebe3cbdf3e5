// No command shows a secret that it is to hide: not its value, not its bytes.
#include <set>

#include <gtest/gtest.h>

#include "tests/Hex.h"
#include "tests/Module.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/trading/TraceText.h"

namespace {

using Secrets = Module;

TEST_F(Secrets, AreHiddenByEveryCommand) {
    const ToolFolder folder;
    const auto connect = [](const char* password) {
        return ToolFolder::packet<Quillon::ClientConnectMessage>([&](Quillon::ClientConnectMessage& it) {
            it.user = "wren";
            it.password = password;
        });
    };
    const std::string packet = connect("tell-nobody");
    folder.store("a.pcap", {{1, packet}});
    folder.store("b.pcap", {{1, connect("tell-noone")}});
    const std::string bytes = hex(packet), cut = hex(packet.substr(0, packet.size() - 4));
    folder.write("hex", bytes);
    const struct {
        std::string command;
        const char* shows = ""; ///< that it got there
    } cases[] = {
        {"decode --redact a.pcap", "password=***"},
        {"decode --redact --format lines a.pcap", "password = ***"},
        {"decode --redact --format json a.pcap", R"("password":"***"},"redacted":true)"},
        {"decode --redact --format json --hex hex", R"("password":"***")"},
        {"annotate --redact a.pcap --packet 1", "***             password  string  ***"},
        {"annotate --redact " + bytes, "password"},
        {"annotate --redact " + bytes + "2121 --policy tolerant", "after the last field"},
        {"annotate --redact " + cut, "***             password  string  <-- truncated"},
        {"annotate --redact " + hex(packet.substr(0, 2)) + "ff" + bytes.substr(6), "user"},
        {"decode --redact --format csv --fields password,user a.pcap", "***,wren"},
        {"diff a.pcap b.pcap", "password: *** -> ***"},
        {"decode --redact --where user=wren a.pcap", "wren"},
        {"verify a.pcap", "ClientConnectMessage"},
        {"stats a.pcap", "ClientConnectMessage"},
        {"stats --redact --by password a.pcap", "***"},
        {"orders a.pcap", "outcome"},
        {"quotes a.pcap", "outcome"},
        {"latency a.pcap"},
        {"report a.pcap -o -", "ClientConnectMessage"},
        {"roundtrip a.pcap"},
        {"describe ClientConnectMessage", "secret"},
        {"dissector", "secret"},
        {"schema", "secret"},
    };
    // Those that show no packets but may copy them, and the one whose texts are asked for below.
    std::set<std::string> tested = {"completion", "convert", "corpus", "encode",   "enum", "generate",
                                    "manpage",    "merge",   "slice",  "messages", "trace"};
    EXPECT_EQ(folder.run("qlproto slice --redact a.pcap -o c.pcap").exitCode, 2) << "it would not";
    for (const auto& it : cases) {
        tested.insert(it.command.substr(0, it.command.find(' ')));
        const ToolFolder::Result result = folder.run("qlproto " + it.command);
        std::string all = result.out + result.err;
        EXPECT_NE(result.out.find(it.shows), all.npos) << it.command << '\n' << all;
        for (const char* secret : {"tell-no", "6c6c2d6e", "6c 6c 2d 6e"})
            EXPECT_EQ(all.find(secret), all.npos) << it.command << '\n' << all;
    }
    // No identifier leads a trace to the only message with a secret: this is the step that it would be.
    const std::vector<qlproto::Trace::Step> steps{{1, 1, packet}};
    for (const std::string& it :
         {qlproto::traceTable(steps, {}), qlproto::traceLines(steps, {.display = {.secrets = Inspect::Secrets::hide}})})
        EXPECT_TRUE(it.find("wren") != it.npos && it.find("***") != it.npos && it.find("tell-no") == it.npos) << it;
    EXPECT_NE(qlproto::traceLines(steps, {}).find("tell-nobody"), std::string::npos);
    EXPECT_NE(folder.run("qlproto decode a.pcap").out.find("tell-nobody"), std::string::npos) << "unless asked to";
    EXPECT_NE(folder.run("qlproto annotate a.pcap --packet 1").out.find("tell-nobody"), std::string::npos);

    const std::string help = folder.run("qlproto --help").out;
    for (const std::string& line : linesOf(help.substr(help.find("Subcommands:"))))
        if (line.empty()) {
            break;
        } else if (line.starts_with("  ") && line[2] != ' ') {
            EXPECT_TRUE(tested.contains(line.substr(2, line.find(' ', 2) - 2))) << line << ": is not tested";
        }
}

} // namespace
