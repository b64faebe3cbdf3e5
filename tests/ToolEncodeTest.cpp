// Lines of JSON to packets.
#include <gtest/gtest.h>

#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "tests/Hex.h"
#include "tests/Sessions.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/MessageLine.h"
#include "tools/qlproto/TimeText.h"

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
        decoded.descriptor->destroy(decoded.object);
        const Packet packet = reader.read(line);
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
        {R"({"message": "TimerMessage", "body": {"tqid": 7})", "parse error at line 1, column 48"},
        {R"(["TimerMessage"])", "not an object"},
        {R"({})", "message: missing"},
        {R"({"message": "TimerMessage"})", "body: missing"},
        {R"({"message": "TimrMessage", "body": {}})", "message: no message is named 'TimrMessage'; did you mean "},
        {R"({"message": "53284", "body": {"tqid": 7}})", "message: no message "},
        {R"({"message": 53284, "body": {"tqid": 7}})", "message: not a string"},
        {R"({"message": "TimerMessage", "id": 53285, "body": {"tqid": 7}})",
         "id: not 53284, the identifier of TimerMessage"},
        {R"({"message": "TimerMessage", "id": 53284.0, "body": {"tqid": 7}})", "id: not 53284"},
        {R"({"message": "TimerMessage", "body": {"tqid": 7}, "packet": 3})", "packet: unknown name"},
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
