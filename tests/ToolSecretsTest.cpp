// No command shows a secret that it is to hide: not its value, not its bytes.
#include <cctype>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "Inspect/Utf8.h"
#include "tests/Hex.h"
#include "tests/Module.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/messages/Pseudonyms.h"
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
        {"annotate --redact --csv " + bytes, ",***,password,string,***"},
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
        {"template ClientConnectMessage", "password"},
        {"dissector", "secret"},
        {"schema", "secret"},
        {"watch --redact --bus - --seconds 5 --messages 1 <a.pcap", "***"},
    };
    // Those that show no packets but may copy them, and those whose texts are asked for below or where an engine is.
    std::set<std::string> tested = {"completion", "convert", "corpus",  "encode", "enum",  "export",   "generate",
                                    "manpage",    "merge",   "metrics", "slice",  "index", "messages", "publish",
                                    "query",      "record",  "replay",  "scrub",  "tap",   "trace"};
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
    for (const std::string& it : {qlproto::traceTable(steps, {}).text(),
                                  qlproto::traceLines(steps, {.display = {.secrets = Inspect::Secrets::hide}})})
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

/// Each value of the one is a value of the other, and no two are the same one.
class Bijection {
  public:
    bool holds(const std::string& from, const std::string& to) {
        return _there.emplace(from, to).first->second == to && _back.emplace(to, from).first->second == from;
    }
    const std::string& of(const std::string& from) const { return _there.at(from); }

  private:
    std::map<std::string, std::string> _there, _back;
};

std::vector<std::string> cells(const std::string& line) {
    std::vector<std::string> cells(1);
    bool isQuoted = false;
    for (const char c : line) {
        if (c == '"') isQuoted = !isQuoted;
        c == ',' && !isQuoted ? void(cells.emplace_back()) : void(cells.back() += c);
    }
    return cells;
}

// Whoever gets the scrubbed capture sees the same orders do the same at the same times, and no name.
TEST_F(Secrets, AndNamesAreScrubbedButOrdersStayWhole) {
    const ToolFolder folder;
    folder.write("key", "one");
    folder.write("other", "another");
    ASSERT_EQ(folder.run("qlproto generate --messages 4000 --seed 7 -o a.pcap").exitCode, 0);
    const ToolFolder::Result scrubbed = folder.run("qlproto scrub a.pcap -o b.pcap --key key --report done.json");
    ASSERT_EQ(scrubbed.exitCode, 0) << scrubbed.err;
    EXPECT_EQ(folder.run("qlproto verify b.pcap").exitCode, 0);
    for (const char* const key : {"--key key", "--key other", ""})
        folder.run("qlproto scrub a.pcap -o 'c" + std::string(key) + ".pcap' " + key);
    EXPECT_EQ(folder.content("c--key key.pcap"), folder.content("b.pcap"));
    EXPECT_NE(folder.content("c--key other.pcap"), folder.content("b.pcap"));
    EXPECT_NE(folder.content("c.pcap"), folder.content("b.pcap")) << "drawn at random";

    Bijection names;
    const auto before = linesOf(folder.run("qlproto orders --csv a.pcap").out);
    const auto after = linesOf(folder.run("qlproto orders --csv b.pcap").out);
    ASSERT_EQ(before.size(), after.size());
    ASSERT_GT(before.size(), 50u);
    const std::vector<std::string> columns = cells(before[0]);
    size_t traced = 0;
    for (size_t i = 1; i < before.size(); ++i) {
        const auto was = cells(before[i]), is = cells(after[i]);
        ASSERT_EQ(was.size(), is.size());
        for (size_t c = 0; c < was.size(); ++c)
            if (columns[c] == "clOrdID" || columns[c] == "text" || columns[c].ends_with("ID") || columns[c] == "user")
                EXPECT_TRUE(names.holds(was[c], is[c])) << columns[c] << " " << was[c] << " " << is[c];
            else
                EXPECT_EQ(was[c], is[c]) << columns[c];
        EXPECT_NE(was[1], is[1]);
        if (i % 5 != 0) continue;
        const std::string steps = " | sed 's/,\"body.*\"packet\"//'"; // time, message, packet and durations
        EXPECT_EQ(folder.run("qlproto trace a.pcap --json --order " + was[1] + steps).out,
                  folder.run("qlproto trace b.pcap --json --order " + is[1] + steps).out);
        ++traced;
    }
    EXPECT_GT(traced, 10u);
    // Words of the session that are no enumerators, anywhere in the other's bytes.
    for (const char* const name : {"heron", "magpie", "BARLEYCO"}) {
        EXPECT_NE(folder.content("a.pcap").find(name), std::string::npos) << name;
        EXPECT_EQ(folder.content("b.pcap").find(name), std::string::npos) << name;
    }
    EXPECT_NE(folder.content("done.json")
                  .find(R"({"message":"SubmitOrderMessage","field":"clOrdID","done":"pseudonyms","values":)"),
              std::string::npos);
}

TEST_F(Secrets, AreEmptiedAndTheRestIsAsAskedFor) {
    const ToolFolder folder;
    const int64_t time = 1'700'000'000'000'000'000;
    folder.store("a.pcap",
                 {{time, ToolFolder::packet<Quillon::ClientConnectMessage>([&](auto& it) {
                       it.user = "wren";
                       it.password = "tell-nobody";
                   })},
                  {time, ToolFolder::packet<Quillon::SubmitOrderMessage>([&](auto& it) {
                       it.userID = 4711;
                       it.contents.clOrdID = "wren-1";
                       it.contents.price = 108'500;
                       it.contents.stopPrice = Velmora::NDA;
                       it.contents.timeHandler = time;
                   })},
                  {time, "\x34\xd0"}, // cut
                  {time, ToolFolder::packet<Quillon::PadMessage>([](auto& it) { it.padding = "tell-nobody"; })}});
    const auto scrub = [&](const std::string& options) {
        const ToolFolder::Result result = folder.run("qlproto scrub a.pcap -o b.pcap " + options);
        EXPECT_EQ(result.exitCode, 1) << result.err << "one is bad";
        EXPECT_EQ(folder.content("b.pcap").find("tell-nobody"), std::string::npos);
        return folder.run("qlproto decode b.pcap --format json").out;
    };
    std::string shown = scrub("--keep clOrdID --keep password --scale 3 --shift-times -1000000000");
    for (const char* const text :
         {R"("password":"")", R"("clOrdID":"wren-1")", R"("price":"325500")", R"("stopPrice":"NDA")",
          R"("timeHandler":"700000000000000000")", R"("timeApiClient":"0")", R"("time":"700000000.000000000")"})
        EXPECT_NE(shown.find(text), std::string::npos) << text << "\n" << shown;
    for (const char* const text : {"4711", R"("wren")"}) EXPECT_EQ(shown.find(text), std::string::npos) << text;
    shown = scrub("");
    for (const char* const text : {R"("price":"108500")", R"("timeHandler":"1700000000000000000")"})
        EXPECT_NE(shown.find(text), std::string::npos) << text;
    EXPECT_EQ(shown.find("wren-1"), std::string::npos);

    folder.write("empty", "");
    EXPECT_EQ(folder.run("qlproto scrub a.pcap -o b.pcap --key empty").exitCode, 2);
    EXPECT_EQ(folder.run("qlproto scrub a.pcap -o b.pcap --key none").exitCode, 3);
    for (const char* const wrong : {"--keep clOrdI", "--scale 0", "--scale nan", "--scale 1e400", "--scale 2x"})
        EXPECT_EQ(folder.run("qlproto scrub a.pcap -o b.pcap " + std::string(wrong)).exitCode, 2) << wrong;
    const ToolFolder::Result late = folder.run("qlproto scrub a.pcap -o b.pcap --shift-times 4000000000");
    EXPECT_NE(late.err.find("a time that no capture holds"), std::string::npos) << late.err;
}

// Permutations of all texts of one shape, whatever their length.
TEST(Pseudonyms, AreOfTheSameShapeAndNeverShared) {
    qlproto::Pseudonyms pseudonyms("key");
    const auto kinds = [](const std::string& text) {
        std::string all;
        for (const char c : text) {
            const auto byte = static_cast<unsigned char>(c);
            all += std::isdigit(byte)   ? '0'
                   : std::isupper(byte) ? 'A'
                   : std::islower(byte) ? 'a'
                   : byte < 0x80        ? c
                                        : 'u';
        }
        return all;
    };
    const auto isUtf8 = [](std::string_view text) {
        for (size_t length = 1; !text.empty() && length != 0; text.remove_prefix(length))
            length = Inspect::first_code_point(text).length;
        return text.empty();
    };
    for (const char* const text :
         {"", "7", "Q", "heron-17", "EUR/USD 1.0850", "007", "Zoë Müller", "注文 42", "\xff\xc3", "tail \xe6\xb3"})
        for (const std::string& it : {std::string(text), std::string(text) + std::string(100, 'x')}) {
            const std::string other = pseudonyms.ofText(it);
            EXPECT_EQ(kinds(other), kinds(it));
            EXPECT_EQ(isUtf8(other), isUtf8(it)) << other;
            EXPECT_TRUE(it.size() < 4 || other != it);
            EXPECT_EQ(pseudonyms.ofText(it), other);
            EXPECT_NE(qlproto::Pseudonyms("another key").ofText(it.empty() ? "long enough" : it + "long enough"),
                      pseudonyms.ofText(it.empty() ? "long enough" : it + "long enough"));
        }
    EXPECT_EQ(pseudonyms.ofText("0"), "0");
    EXPECT_EQ(pseudonyms.ofText("4711"), std::to_string(pseudonyms.ofNumber(4711, INT64_MAX)));
    const std::string word = "heron-17";
    std::vector<std::set<char>> seen(word.size());
    for (char key = 0; key < 40; ++key) {
        const std::string other = qlproto::Pseudonyms(std::string(1, key)).ofText(word);
        for (size_t i = 0; i < word.size(); ++i) seen[i].insert(other[i]);
    }
    for (size_t i = 0; i < word.size(); ++i)
        EXPECT_TRUE(word[i] == '-' ? seen[i].size() == 1 : seen[i].size() > 5) << i;
    std::set<std::string> texts, bytes;
    for (int i = 0; i < 65536; ++i)
        bytes.insert(pseudonyms.ofBytes(std::string{static_cast<char>(i), static_cast<char>(i >> 8)}));
    for (char a = 'a'; a <= 'z'; ++a)
        for (char b = 'A'; b <= 'Z'; ++b)
            for (char c = '0'; c <= '9'; ++c) texts.insert(pseudonyms.ofText(std::string{a, b, c}));
    EXPECT_EQ(bytes.size(), 65536u);
    EXPECT_EQ(texts.size(), 26u * 26 * 10);
    std::set<uint64_t> numbers;
    for (uint64_t i = 0; i <= 255; ++i) numbers.insert(pseudonyms.ofNumber(i, 255));
    EXPECT_EQ(numbers.size(), 256u);
    for (const uint64_t most : {UINT64_MAX, uint64_t{INT64_MAX}})
        for (uint64_t i = 0; i < 50; ++i) EXPECT_LE(pseudonyms.ofNumber(most - i, most), most);
}

} // namespace
