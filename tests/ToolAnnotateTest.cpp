// The hex dump that explains itself.
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/Hex.h"
#include "tests/Sessions.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/messages/Annotation.h"
#include "tools/qlproto/messages/Names.h"

namespace {

using namespace qlproto;

using Annotate = Module;

Annotation annotated(const char* message, const std::string& hexBody, const Inspect::Policy& policy = Inspect::whole) {
    return annotate(*findMessage(message), unhex(hexBody), policy);
}

TEST_F(Annotate, NamesEachValueAndItsBytes) {
    std::string longPad = "2c01"; // 300 characters
    for (int i = 0; i < 300; ++i) longPad += "61";
    const struct {
        const char* message;
        std::string body;
        const char* line;
    } cases[] = {
        {"TimerMessage", "0e", "     0  0e     tqid   int32  7\n"},
        {"QuoteRequestMessage", "0204010151009003010000000000",
         "     3  01 51  contents.quoteReqID       string  \"Q\"\n"},
        {"QuoteRequestMessage", "0204010151009003010000000000",
         "     6  90 03  contents.amount           price   100\n"},
        {"QuoteRequestMessage", "000002000007090000000000", "     2  02     contents.isBaseSpecified  bool    true\n"},
        {"QuoteRequestMessage", "000002000007090000000000", "     5  07     contents.amount           price   NA\n"},
        {"QuoteRequestMessage", "000002000007090000000000",
         "     6  09     contents.side             Side    9, no enumerator of Side\n"},
        {"RequestMessage", "00004f", "Request  79, the low byte of SECURITYINFO\n"},
        {"JsonFromServer", "061b5b316d220a", "string  \"\\x1b[1m\\\"\\n\"\n"},
        {"BatchesCompletedMessage", "020204",
         "     0  02     batchesCompleted     int32[]  2 elements\n"
         "     1  02     batchesCompleted[0]  int32    1\n"
         "     2  04     batchesCompleted[1]  int32    2\n"},
        {"PadMessage", "0300616263", "     0  03 00 61 62 63  padding  padding  \"abc\"\n"}, // as written
        {"PadMessage", "03616263", "     0  03 61 62 63  padding  padding  \"abc\"\n"},      // as read
        {"PadMessage", "0000", "     0  00 00  padding  padding  \"\"\n"},
        {"PadMessage",
         "0100"
         "61",
         "     0  01 00 61  padding  padding  \"a\"\n"},
        {"PadMessage", longPad, "     0  2c 01 61 61 61 61 61 61 61 61  padding  padding  \"aaaaaaaa"},
    };
    for (const auto& it : cases) {
        const Annotation annotation = annotated(it.message, it.body);
        EXPECT_TRUE(annotation.fault) << it.message << annotation.fault.text();
        EXPECT_NE(annotation.text.find(it.line), std::string::npos) << it.line << "is not in\n" << annotation.text;
    }
}

TEST_F(Annotate, GoesUpToTheFault) {
    const struct {
        const char* message;
        std::string body;
        Inspect::Policy policy;
        const char* ending;
    } cases[] = {
        {"QuoteRequestMessage", "020401", Inspect::whole,
         "     2  01     contents.isBaseSpecified  bool    true\n"
         "     3         contents.quoteReqID       string  <-- truncated\n"},
        {"QuoteRequestMessage", "0204010551", Inspect::whole,
         "     3  05 51  contents.quoteReqID       string  <-- truncated\n"},
        {"TimerMessage", "0e01", Inspect::whole,
         "     0  0e     tqid   int32  7\n     1  01                   <-- trailing bytes\n"},
        {"TimerMessage", "0e01", Inspect::tolerant,
         "     0  0e     tqid   int32  7\n     1  01                   after the last field\n"},
        {"TimerMessage", "8e00", Inspect::strict, "     0  8e 00  tqid   int32  <-- non-minimal form\n"},
        {"BatchesCompletedMessage", "ffff00", Inspect::whole,
         "     0  ff ff 00  batchesCompleted  int32[]  <-- count beyond the remaining bytes\n"},
        {"TimerMessage", "0e" + std::string(100, '0'), Inspect::whole, "and 10 bytes more\n"},
    };
    for (const auto& it : cases) {
        const Annotation annotation = annotated(it.message, it.body, it.policy);
        EXPECT_TRUE(annotation.text.ends_with(it.ending)) << it.ending << "does not end\n" << annotation.text;
    }
}

TEST_F(Annotate, ShowsEveryByteOnceAndSecretStringsReadable) {
    for (const Sent& it : ::session(5, 1500)) {
        const std::string body = it.bytes.substr(2);
        const Annotation annotation = annotate(*findMessage(std::to_string(it.id())), body, Inspect::strict);
        ASSERT_TRUE(annotation.fault || it.id() == Quillon::RequestMessage::ID) << it.id() << annotation.fault.text();
        std::istringstream lines(annotation.text);
        std::string line, shown;
        std::getline(lines, line);
        const size_t column = line.find("bytes"), end = line.find("field");
        while (std::getline(lines, line)) {
            ASSERT_EQ(std::stoul(line), shown.size()) << annotation.text;
            std::istringstream bytes(line.substr(column, end - column));
            for (std::string byte; bytes >> byte;) shown += unhex(byte);
        }
        ASSERT_EQ(shown, body) << annotation.text;
        std::string rows; // for programs
        for (const auto& row : nlohmann::json::parse(annotation.table.json())) rows += row["bytes"].get<std::string>();
        ASSERT_EQ(rows, hex(body));
    }

    const std::string log =
        ToolFolder::packet<Quillon::LogMessage>([](Quillon::LogMessage& it) { it.logger = "book"; });
    EXPECT_EQ(log.find("book"), std::string::npos) << "enciphered on the wire";
    EXPECT_NE(annotate(*findMessage("LogMessage"), log.substr(2), Inspect::whole).text.find("cryptstring  \"book\"\n"),
              std::string::npos);
}

TEST_F(Annotate, TakesBytesFromWhereverTheyAre) {
    const ToolFolder folder;
    folder.store("a.pcap", {{1, "\x24\xD0\x02"}, {2, "\x24\xD0\x0E"}});
    folder.write("hex", "0x24 0xD0\n0E\n");
    folder.write("raw", "\x24\xD0\x0E");
    folder.write("body", "\x0E");
    const std::string expected = "TimerMessage 53284 (0xD024), body of 1 byte\n"
                                 "offset  bytes  field  type   value\n"
                                 "     0  0e     tqid   int32  7\n";
    for (const char* command :
         {"24d00e", "24:d0:0e", "hex", "- <hex", "--raw raw", "--raw - <raw", "--raw body --type TimerMessage",
          "0e --type 0xD024", "a.pcap --packet 2", "- --packet 2 <a.pcap"}) {
        const ToolFolder::Result result = folder.run(std::string("qlproto annotate ") + command);
        EXPECT_EQ(result.exitCode, 0) << command << ": " << result.err;
        EXPECT_EQ(result.out, expected) << command;
    }
    const struct {
        const char* command;
        int exitCode;
        const char* complaint;
    } cases[] = {
        {"24d0", 1, "TimerMessage: truncated at byte 0 (tqid)"},
        {"24", 1, "1 byte cannot hold an identifier"},
        {"0300", 1, "unknown message identifier 3 (0x0003)"},
        {"a.pcap --packet 3", 1, "has no packet 3, only 2 packets"},
        {"24d00g", 2, "neither a file nor hexadecimal: 'g' is no hexadecimal digit at position 5"},
        {"0e --type TimrMessage", 2, "did you mean TimerMessage"},
        {"a.pcap --packet 2 --raw", 2, "excludes"},
        {"--raw no-such-file", 3, "no-such-file"},
        {".", 3, "."},
        {"- <.", 3, "standard input"},
        {"--raw - <&-", 3, "standard input"},
        {"--raw - </dev/zero", 1, "standard input: more than the 262144 bytes that a packet can have"},
        {"- </dev/zero", 1, "standard input: more than the 262144 bytes that a packet can have"},
    };
    for (const auto& it : cases) {
        const ToolFolder::Result result = folder.run(std::string("qlproto annotate ") + it.command);
        EXPECT_EQ(result.exitCode, it.exitCode) << it.command;
        EXPECT_NE(result.err.find(it.complaint), std::string::npos) << it.command << ": " << result.err;
    }
}

} // namespace
