// Lines of JSON to packets.
#include <set>

#include <gtest/gtest.h>

#include "Capture/Verification.h"
#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "tests/Hex.h"
#include "tests/Sessions.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/messages/LineReader.h"
#include "tools/qlproto/messages/MessageLine.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace {

using namespace qlproto;

using Encode = Module;

TEST_F(Encode, MakesThePacketsThatTheLinesWereMadeOf) {
    MessageLineReader reader;
    const auto block = std::make_unique_for_overwrite<char[]>(1 << 20);
    size_t lines = 0;
    for (const Sent& it : ::session(6, 2000)) {
        Velmora::BufferAllocator alloc(block.get(), 1 << 20, "test", "message");
        const Inspect::Decoded decoded = Inspect::decode_verified(it.id(), std::string_view(it.bytes).substr(2), alloc);
        if (!decoded) continue; // a pad
        const std::string line = "{\"time\": \"" + timeText(it.time) + "\", \"message\": \""
                                 + decoded.descriptor->name() + "\", \"id\": " + std::to_string(it.id())
                                 + ", \"body\": " + Inspect::to_json(it.id(), decoded.object) + "}";
        const Capture::Packet packet = reader.read(line);
        ASSERT_EQ(packet.time, it.time) << line;
        ASSERT_EQ(hex(packet.bytes), hex(it.bytes)) << line;
        ++lines;
    }
    EXPECT_GT(lines, 1900u);
}

TEST_F(Encode, TellsWhatIsWrongAndWhere) {
    const struct {
        std::string line;
        const char* complaint;
    } cases[] = {
        {R"({"message": "TimerMessage", "body": {"tqid": 7})", "not JSON at byte 47: a comma or } is missing"},
        {R"(["TimerMessage"])", "not an object"},
        {R"({})", "message: missing"},
        {R"({"message": "TimerMessage"})", "body: missing"},
        {R"({"message": "TimrMessage", "body": {}})", "message: no message is named 'TimrMessage'; did you mean "},
        {R"({"message": "53284", "body": {"tqid": 7}})", "message: no message "},
        {R"({"message": 53284, "body": {"tqid": 7}})", "message: not a string"},
        {R"({"message": "TimerMessage", "id": 53285, "body": {"tqid": 7}})",
         "id: not 53284, the identifier of TimerMessage"},
        {R"({"message": "TimerMessage", "id": 53284.0, "body": {"tqid": 7}})", "id: not 53284"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "packets": 3})", "packets: unknown name"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "gap": [})", "not JSON at byte 57"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "redacted": true})", "redacted: no packet"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "priceScale": 10})", "priceScale: no packet"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "hex": "10"})", "hex: not the bytes of the body"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "hex": "0e01"})", "hex: trailing bytes at byte 1"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "hex": "0"})", "hex: a digit is missing"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "hex": 14})", "hex: not a string"},
        {"{\"message\": \"TimerMessage\", \"body\": " + std::string(1 << 20, '['), "body: not an object"},
        {"{\"body\": " + std::string(1 << 20, '['), "nested too deeply"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "message": "TimerMessage"})", "message: given twice"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7, "tqid": 7}})", "body.tqid: given twice"},
        {R"({"message": "TimerMessage", "body": 7})", "body: not an object"},
        {R"({"message": "QuoteRequestMessage", "body": {"contents": {"feedID": true}}})",
         "body.contents.feedID: not an integer"},
        {R"({"message": "JsonFromServer", "body": {"contents": ")" + std::string(65536, 'x') + "\"}}",
         "body.contents: string too long"},
        {R"({"message": "BatchesCompletedMessage", "body": {"batchesCompleted": [)" +
             [] {
                 std::string list = "0";
                 for (int i = 0; i < 32767; ++i) list += ",0";
                 return list;
             }()
             + "]}}",
         "body.batchesCompleted: too many elements"},
    };
    MessageLineReader reader;
    for (const auto& it : cases) {
        try {
            reader.read(it.line);
            ADD_FAILURE() << it.line.substr(0, 200) << " was taken";
        } catch (const Inspect::JsonError& error) {
            EXPECT_NE(std::string(error.what()).find(it.complaint), std::string::npos)
                << it.line.substr(0, 200) << ": " << error.what();
        }
    }
    for (const char* time : {"\"1709535600\"", "1709535600", "\"1.5\"", "\"-1.000000000\"", "\"1.0000000000\"",
                             "\"4294967296.000000000\"", "\"01.000000000\"", "\"1.00000000x\"", "null"})
        EXPECT_THROW(
            reader.read(std::string(R"({"message": "TimerMessage", "body": {"tqid": 7}, "time": )") + time + "}"),
            Inspect::JsonError)
            << time;
}

TEST_F(Encode, TellsAllErrorsOfALineAtOnce) {
    const struct {
        std::string line;
        std::vector<std::string> errors;
    } cases[] = {
        {R"({"tme": {"a": [1]}, "time": 1, "message": "SubmitOrderMessage", "id": 7, "body": {"userID": "x", "quoteID": 1,)"
         R"( "more": [{}], "contents": {"orderID": 1.5, "side": "BUY", "parameters": [7, {"key": [], "value": null}],)"
         R"( "parameters": []}, "onBehalfOfCompID": null}, "hex": "0"})",
         {"tme",
          "time",
          "body.userID",
          "body.quoteID",
          "body.more",
          "body.contents.orderID",
          "body.contents.side",
          "body.contents.parameters[0]",
          "body.contents.parameters[1].key",
          "body.contents.parameters",
          "body.contents.clOrdID",
          "body.contents.timeApiClient",
          "body.contents.timeApiServer",
          "body.contents.timeHandler",
          "body.contents.feedID",
          "body.contents.marketID",
          "body.contents.amount",
          "body.contents.price",
          "body.contents.ordType",
          "body.contents.timeInForce"}}, // and no more than 20
        {R"({"body": {"tqid": "7"}, "id": 7, "message": "TimerMessage", "gap": {]})",
         {""}}, // what comes first is no JSON
        {R"({"body": {"tqid": "7", "a": 1}, "id": 7, "message": "TimerMessage"})", {"id", "body.tqid", "body.a"}},
        {R"({"message": "TimrMessage", "id": "7"})", {"message", "id", "body"}},
        {R"({"message": "TimerMessage", "body": {"tqid": 7, "a": tru}})", {"body.a", ""}},
    };
    MessageLineReader reader;
    for (const auto& it : cases) {
        EXPECT_THROW(reader.read(it.line), Inspect::JsonError);
        std::vector<std::string> paths;
        for (const Inspect::JsonError& error : reader.errors()) paths.push_back(error.path());
        EXPECT_EQ(paths, it.errors) << it.line;
    }
    EXPECT_EQ(hex(reader.read(R"({"message": "TimerMessage", "body": {"tqid": 7}})").bytes), "24d00e");
    EXPECT_TRUE(reader.errors().empty());
}

// A line of a stranger, wrong from one end to the other, takes neither long nor much to tell of.
TEST(EncodeCommand, TellsOfAFewErrorsOfAnEndlessLine) {
    const ToolFolder folder;
    std::string list = "true";
    for (int i = 1; i < 100'000; ++i) list += ",true";
    folder.write("lines", R"({"message": "BatchesCompletedMessage", "body": {"batchesCompleted": [)" + list + "]}}\n"
                              + R"({"message": "TimerMessage", "body": {"tqid": 7}})");
    const ToolFolder::Result result = folder.run("qlproto encode --format hex lines");
    EXPECT_EQ(result.out, "24d00e\n") << "the line after it";
    const auto told = linesOf(result.err);
    ASSERT_EQ(told.size(), 22u) << result.err;
    EXPECT_EQ(told[19], "line 1: body.batchesCompleted[19]: not an integer");
    EXPECT_EQ(told[20], "line 1: no more errors are looked for");
    EXPECT_EQ(told[21], "1 of 2 lines bad");
}

TEST_F(Encode, TakesTemplatesAndWhatIsLeftOfThem) {
    const ToolFolder folder;
    MessageLineReader strict, partial(Inspect::whole, true);
    const std::string templates = folder
                                      .run("for it in $(qlproto messages | awk 'NR > 1 {print $3}'); do "
                                           "qlproto template $it; done")
                                      .out;
    for (const std::string& line : linesOf(templates)) {
        const size_t body = line.find(",\"body\"");
        const std::string bytes(strict.read(line).bytes);
        const Capture::Packet least = partial.read(line.substr(0, body) + '}');
        EXPECT_EQ(least.bytes, partial.read(line.substr(0, body) + ",\"body\":{}}").bytes);
        // Lists have an element, and enumerations without a zero their first enumerator.
        EXPECT_EQ(least.bytes.size() < bytes.size(), line.find('[') != line.npos) << line;
    }
    EXPECT_EQ(linesOf(templates).size(), Inspect::all_messages().size());
    const ToolFolder::Result order = folder.run(
        R"(qlproto encode --partial - <<<'{"message": "SubmitOrderMessage", "body": {"contents": {"price": 7}}}')"
        " | qlproto decode --format csv --fields userID,price,side,clOrdID -");
    EXPECT_EQ(order.out, "userID,price,side,clOrdID\n0,7,0,\n") << order.err;
    EXPECT_EQ(folder.run("qlproto template Timer").exitCode, 2);
}

TEST_F(Encode, GivesBackTheBytesOfWhateverDecodePrints) {
    const ToolFolder folder;
    std::vector<ToolFolder::Packet> packets;
    for (const Sent& it : ::session(6, 2000)) packets.emplace_back(it.time, it.bytes); // with pads
    for (const char* bytes : {"24d08e00", "24d0", "0300", "02000000", "02000300616263", "24d00e"})
        packets.emplace_back(packets.back().first + 1, unhex(bytes));
    const std::string quote = Capture::identifierBytes(Quillon::QuoteRequestMessage::ID)
                              + unhex("000002000007090000000000"),
                      request = Capture::identifierBytes(Quillon::RequestMessage::ID) + unhex("00004f");
    packets.insert(packets.end(), {{INT64_C(2'000'000'000), quote}, {INT64_C(3'000'000'000), request}});
    folder.store("a.pcap", packets);
    folder.run("qlproto decode --format json a.pcap >a.json");
    folder.run("qlproto encode a.json -o good.pcap");
    EXPECT_EQ(folder.content("a.json"), folder.run("qlproto decode --format json good.pcap").out);
    EXPECT_EQ(folder
                  .run("cmp <(qlproto decode --format json a.pcap | qlproto encode --format hex -) "
                       "<(qlproto decode --format json --time utc a.pcap | qlproto encode --format hex -)")
                  .exitCode,
              0);
    const std::set<std::string> bad = {unhex("24d0"), unhex("0300")}; // a body cut short, a message that does not exist
    std::string expected;
    for (const auto& [time, bytes] : packets)
        if (!bad.contains(bytes)) expected += hex(bytes) + '\n';
    const ToolFolder::Result back = folder.run("qlproto encode --format hex a.json");
    EXPECT_EQ(back.exitCode, 0) << back.err;
    EXPECT_EQ(back.out, expected);
    // Among them what the encoder would have in another form.
    for (const std::string& bytes : {unhex("24d08e00"), unhex("02000300616263"), quote, request})
        EXPECT_NE(expected.find('\n' + hex(bytes) + '\n'), expected.npos);

    const ToolFolder::Result traced =
        folder.run("set -o pipefail; qlproto trace good.pcap --user 11 --json | tee steps | "
                   "qlproto encode --format hex -");
    EXPECT_EQ(traced.exitCode, 0) << traced.err;
    EXPECT_EQ(traced.lines(), linesOf(folder.content("steps")).size());
    EXPECT_GT(traced.lines(), 10u);
    for (const std::string& line : linesOf(traced.out)) ASSERT_NE(expected.find(line + '\n'), expected.npos) << line;
}

TEST(Lines, AreOfBoundedLengthAndNoneIsLost) {
    const ToolFolder folder;
    const std::string lines[] = {"0123456789", std::string(11, 'a'), "", std::string(5'000'000, 'b'), "c"};
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    for (const char* end : {"", "without a line end"}) {
        folder.write("lines", text + end);
        LineReader reader(folder.path("lines"), 10);
        std::string_view line;
        for (const std::string& it : lines) {
            ASSERT_TRUE(reader.next(line));
            EXPECT_EQ(line, it.substr(0, 10));
            EXPECT_EQ(reader.isCut(), it.size() > 10);
        }
        EXPECT_EQ(reader.next(line), *end != '\0');
        EXPECT_EQ(reader.number(), *end != '\0' ? 6u : 5u);
        EXPECT_FALSE(reader.next(line));
    }
    const ToolFolder::Result result = folder.run(
        "(head -c 20000000 /dev/zero; printf '\\n{\"message\": \"TimerMessage\", \"body\": {\"tqid\": 7}}') | "
        "qlproto encode --format hex -");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "24d00e\n");
    EXPECT_EQ(result.err, "line 1: longer than 16781312 bytes\n1 of 2 lines bad\n");
}

TEST(EncodeCommand, WritesAllFormatsAndGoesOnBehindBadLines) {
    const ToolFolder folder;
    folder.write("lines", R"({"message": "TimerMessage", "body": {"tqid": 7}}

{"message": "TimerMessage", "body": {"tqid": }}
{"body":{"tqid":-1},"time":"1709535600.000000042","message":"TimerMessage"})");
    ToolFolder::Result result = folder.run("qlproto encode lines --format hex");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "24d00e\n24d001\n");
    EXPECT_EQ(result.err.rfind("line 3: ", 0), 0u) << result.err;
    EXPECT_NE(result.err.find("1 of 4 lines bad\n"), std::string::npos) << result.err;
    EXPECT_EQ(folder.run("sed -i 3d lines; qlproto encode - --format raw <lines").out, "\x0E\x01");
    ASSERT_EQ(folder.run("qlproto encode lines -o a.pcap").exitCode, 0);
    EXPECT_EQ(folder.run("qlproto decode a.pcap").out,
              "0.000000000 TimerMessage tqid=7\n1709535600.000000042 TimerMessage tqid=-1\n");

    const struct {
        const char* command;
        int exitCode;
    } cases[] = {{"encode no-such-file", 3},
                 {"encode .", 3},
                 {"encode - <.", 3},
                 {"encode - <&-", 3},
                 {"encode lines -o no/a.pcap", 3},
                 {"encode lines --format hex -o no/a", 3},
                 {"encode", 2},
                 {"encode lines --format text", 2},
                 {"encode lines -o /dev/full", 3},
                 {"encode lines --format hex -o /dev/full", 3}};
    for (const auto& it : cases) {
        result = folder.run(std::string("qlproto ") + it.command);
        EXPECT_EQ(result.exitCode, it.exitCode) << it.command << result.err;
        EXPECT_EQ(result.out, "") << it.command;
    }
    EXPECT_EQ(result.err, "qlproto: /dev/full: No space left on device\n"); // of the last
}

} // namespace
