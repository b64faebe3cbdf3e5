// SQL over captures: the answers are those of the other commands, whatever of the messages was decoded for them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Capture/Framer.h"
#include "Capture/NetworkPackets.h"
#include "Capture/Reader.h"
#include "tests/Engine.h"
#include "tests/ToolFolder.h"

namespace {

using Json = nlohmann::json;

class Sql : public testing::Test {
  protected:
    void SetUp() override {
        NEEDS_ENGINE();
        ASSERT_EQ(folder.run("qlproto generate --messages 20000 --seed 7 -o session.pcap").exitCode, 0);
    }

    ToolFolder::Result query(const std::string& sql, const std::string& options = "session.pcap") const {
        folder.write("sql", sql);
        return folder.run("qlproto query " + options + " \"$(cat sql)\"");
    }

    const ToolFolder folder{};
};

TEST_F(Sql, CountsWhatStatsCounts) {
    const Json stats = Json::parse(folder.run("qlproto stats --json session.pcap").out)["messages"];
    Json counts = Json::object();
    std::string byView;
    for (const std::string& line :
         linesOf(query("SELECT name, count(*) AS n, sum(size) AS bytes FROM messages GROUP BY name",
                       "--format ndjson session.pcap")
                     .out)) {
        const Json row = Json::parse(line);
        counts[row["name"].get<std::string>()] = row;
    }
    ASSERT_EQ(counts.size(), stats.size());
    for (const auto& [name, it] : stats.items()) {
        EXPECT_EQ(counts[name]["n"], it["count"]) << name;
        EXPECT_EQ(counts[name]["bytes"], it["bytes"]) << name;
        const std::string view = name.ends_with("Message") ? name.substr(0, name.size() - 7) : name;
        byView += (byView.empty() ? "SELECT " : ", ") + ("(SELECT count(*) FROM " + view + ") AS " + name);
    }
    const Json row = Json::parse(query(byView, "--format ndjson session.pcap").out);
    for (const auto& [name, it] : stats.items()) EXPECT_EQ(row[name], it["count"]) << name;
}

TEST_F(Sql, ValuesAreThoseOfDecode) {
    const std::string decoded = folder
                                    .run("qlproto decode --format csv --fields userID,clOrdID,side,feedID --message "
                                         "SubmitOrderMessage session.pcap | tail -n +2")
                                    .out;
    const auto result = query("SELECT userID, contents.clOrdID, contents.side, contents.feedID FROM SubmitOrder; ");
    EXPECT_EQ(result.out.substr(result.out.find('\n') + 1), decoded);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(query("SELECT contents.price FROM SubmitOrder LIMIT 1", "--price-scale 1000000 session.pcap").out,
              "price\n85.560000\n");
    EXPECT_EQ(query("SELECT count(DISTINCT _capture), count(*) FROM SubmitOrder", "session.pcap ./session.pcap").out,
              "count(DISTINCT _capture),count_star()\n2,888\n");
    EXPECT_EQ(linesOf(query("SELECT count(password), count(*) > 0 FROM ClientConnect").out).at(1), "0,true");
    EXPECT_EQ(linesOf(query("SELECT count(password) > 0 FROM ClientConnect", "--secrets session.pcap").out).at(1),
              "true");
}

// A statement that defines something makes those after it read all that there is.
TEST_F(Sql, AnswersDoNotDependOnWhatIsDecoded) {
    const std::string statements[] = {
        "SELECT contents.side, count(*) FROM SubmitOrder GROUP BY ALL ORDER BY 1",
        "SELECT max(CONTENTS.Side), max(s.contents.price_sentinel), max(contents.maxShow_sentinel) FROM submitorder s",
        "SELECT max(contents['side']), max(struct_extract(contents, 'price')) FROM SubmitOrder",
        "SELECT s FROM SubmitOrder s ORDER BY _packet LIMIT 2",
        "SELECT c.side FROM (SELECT contents AS c, _packet FROM SubmitOrder) ORDER BY _packet LIMIT 3",
        "SELECT d.side FROM SubmitOrder AS t(a, b, c, cc, e, f, g, d, h) ORDER BY a LIMIT 3",
        "WITH q AS (FROM SubmitOrder) SELECT contents.clOrdID FROM q ORDER BY _packet LIMIT 3",
        "SELECT COLUMNS('cont.*') FROM SubmitOrder ORDER BY _packet LIMIT 2",
        "SELECT a.contents.side, b.contents.timeInForce FROM SubmitOrder a JOIN SubmitOrder b USING (contents) LIMIT 2",
        "SELECT e.side, max(e.price) FROM (SELECT unnest(mvd.mdEntryList) AS e FROM MktData) GROUP BY ALL ORDER BY 1",
        "SELECT sum(len(list_filter(mvd.mdEntryList, lambda e: e.side = 'BID'))) FROM MktData",
        "SELECT x.c.side FROM query('SELECT contents AS c, _packet FROM SubmitOrder') x ORDER BY _packet LIMIT 3",
        "SELECT count(*) FROM MktData WHERE _time BETWEEN '2024-03-04 07:00:01' AND '2024-03-04 07:00:01.5'",
        "SELECT count(*) FROM messages m WHERE m.time >= TIMESTAMP '2024-03-04 07:00:02' AND '2024-03-04 07:00:03' > "
        "time",
        "SELECT (SELECT count(*) FROM MktData WHERE _time < '2024-03-04 07:00:01'), (SELECT count(*) FROM MktData)",
        "SELECT count(*) FROM SubmitOrder o ASOF JOIN MktData m ON o._time >= m._time "
        "WHERE m._time < '2024-03-04 07:00:03' AND m.mvd.isSnapshot",
        "SELECT count(*) FROM MktData WHERE _time < '2024-03-04 07:00:01' OR streamID = 0",
    };
    const auto run = [&](std::string sql) {
        for (const std::string& statement : statements) sql += statement + "; SELECT 'end';";
        const auto result = query(sql);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        std::vector<std::string> answers(1);
        for (const std::string& line : linesOf(result.out))
            line == "end" ? answers.emplace_back() : answers.back() += line + '\n';
        return answers;
    };
    const std::vector<std::string> part = run(""), all = run("CREATE TABLE nothing(i INT);");
    ASSERT_EQ(part.size(), std::size(statements) + 1);
    ASSERT_EQ(all.size(), part.size());
    for (size_t i = 0; i < std::size(statements); ++i) {
        EXPECT_EQ(part[i], all[i]) << statements[i];
        EXPECT_GT(linesOf(part[i]).size(), 2u) << statements[i];
        EXPECT_EQ(part[i].find("\n,"), std::string::npos) << statements[i] << " gives nothing:\n" << part[i];
    }
}

TEST_F(Sql, OfANetworkIsThatOfItsMessages) {
    folder.run("qlproto convert session.pcap --over tcp --framing frames --connections 3 -o net.pcap");
    const std::string by =
        query("SELECT connection, count(*) FROM messages GROUP BY 1 ORDER BY 1", "net.pcap --framing frames").out;
    EXPECT_EQ(by.substr(by.find('\n') + 1),
              folder
                  .run("qlproto stats --csv --by _connection --sort name net.pcap --framing frames | cut -d, -f1-2 "
                       "| sed '1d; /^all/d'")
                  .out);
    const std::string sql = "SELECT _packet, _time, contents FROM SubmitOrder ORDER BY 1";
    const auto result = query(sql, "net.pcap --framing frames");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, query(sql).out);
    EXPECT_EQ(linesOf(query("SELECT count(*) FROM messages", "net.pcap --framing frames --port 7").out).at(1), "0");
    EXPECT_EQ(query(sql, "net.pcap --framing fields").exitCode, 2);
    EXPECT_EQ(query(sql, "net.pcap").exitCode, 1) << "it is of a network";
}

TEST_F(Sql, PacketsThatAreBadStandInFaults) {
    folder.run("head -c 100000 session.pcap > cut.pcap");
    const auto faults = query("SELECT packet, kind, capture FROM faults", "cut.pcap");
    EXPECT_EQ(faults.exitCode, 1);
    EXPECT_EQ(faults.lines(), 2u) << faults.out;
    EXPECT_NE(faults.err.find("SELECT * FROM faults"), faults.err.npos);
    EXPECT_EQ(query("SELECT 1", "cut.pcap").exitCode, 0) << "nothing was read";
    EXPECT_EQ(query("SELECT 1", "none.pcap").exitCode, 3);
}

TEST_F(Sql, EachFormOfOutput) {
    const std::string statement =
        "SELECT 7 AS n, 'a,\"b' AS t, NULL AS x, [1, 2] AS l UNION ALL SELECT 10, '', 2.5, [] ORDER BY n";
    EXPECT_EQ(query(statement).out, "n,t,x,l\n7,\"a,\"\"b\",,\"[1, 2]\"\n10,,2.5,[]\n");
    EXPECT_EQ(query(statement, "--format ndjson session.pcap").out,
              "{\"n\":7,\"t\":\"a,\\\"b\",\"x\":null,\"l\":[1,2]}\n{\"n\":10,\"t\":\"\",\"x\":2.5,\"l\":[]}\n");
    EXPECT_EQ(query(statement, "--format table session.pcap").out,
              " n  t       x  l\n 7  a,\"b    -  [1, 2]\n10        2.5  []\n");
    EXPECT_EQ(folder.run("printf 'SELECT 1 -- ;\\n;SELECT '\"';'\"' AS s' | qlproto query session.pcap").out,
              "1\n1\ns\n;\n");
    EXPECT_EQ(folder.run("qlproto query - 'SELECT count(*) AS n FROM messages' < session.pcap").out, "n\n20000\n");
    EXPECT_EQ(folder.run("qlproto query session.pcap 'SELECT * FROM MktData' | head -n 1 | wc -l").out, "1\n");
}

TEST_F(Sql, MistakesAreToldWithTheirPlace) {
    const auto mistake = query("SELECT userID,\n conents FROM SubmitOrder");
    EXPECT_EQ(mistake.exitCode, 2);
    EXPECT_NE(mistake.err.find("LINE 2:  conents FROM"), mistake.err.npos) << mistake.err;
    EXPECT_NE(mistake.err.find("\n         ^"), mistake.err.npos) << mistake.err;
    EXPECT_EQ(query("SELECT 'x'::INT").exitCode, 2);
    EXPECT_EQ(folder.run("printf 'SELEC 1;\\nSELECT 1;' | qlproto query session.pcap").out, "");
    EXPECT_EQ(query("COPY (SELECT 1) TO '/dev/full' (FORMAT csv)").exitCode, 3);
}

// Processes that share one would take each other's files for their own.
TEST_F(Sql, FilesOfTheEngineAreOfOneProcessAndGoWithIt) {
    const std::string statement = "SELECT current_setting('temp_directory') AS t";
    folder.write("sql", statement);
    folder.run("mkdir -p t/qlproto-sql-999999999-left t/qlproto-sql-1-init t/qlproto-sqlx");
    const auto run = [&] { return folder.run("TMPDIR=$PWD/t qlproto query session.pcap \"$(cat sql)\"").out; };
    const std::string first = run(), second = run();
    EXPECT_NE(first.find("/t/qlproto-sql-"), first.npos) << first;
    EXPECT_NE(first, second);
    EXPECT_EQ(folder.run("ls t").out, "qlproto-sql-1-init\nqlproto-sqlx\n") << "of processes that live, or of none";
    EXPECT_EQ(folder.run("TMPDIR=$PWD/none qlproto query session.pcap 'SELECT 1'").exitCode, 3);
}

TEST_F(Sql, RecipesRunAsTheyStand) {
    ASSERT_EQ(folder.run("qlproto generate --profile incident --messages 20000 --seed 7 -o session.pcap").exitCode, 0);
    ASSERT_EQ(folder.run("qlproto export session.pcap -o columns --format parquet --message MktDataMessage").exitCode,
              0);
    ASSERT_EQ(folder.run("qlproto convert session.pcap --over tcp --framing frames -o net.pcap").exitCode, 0);
    std::ifstream text(QL_ROOT "/docs/sql.md");
    std::string recipe;
    bool isRecipe = false;
    size_t recipes = 0;
    for (std::string line; std::getline(text, line);) {
        if (line == "```sql") {
            isRecipe = true;
            recipe.clear();
        } else if (isRecipe && line == "```") {
            isRecipe = false;
            ++recipes;
            const bool isOfNetwork = recipe.find("connection") != recipe.npos;
            const auto result = query(recipe, isOfNetwork ? "net.pcap --framing frames" : "session.pcap");
            EXPECT_EQ(result.exitCode, 0) << recipe << result.err;
            EXPECT_GT(result.lines(), 1u) << recipe;
        } else if (isRecipe) {
            recipe += line + '\n';
        }
    }
    EXPECT_GE(recipes, 10u);
}

TEST_F(Sql, AnotherReaderOfParquetReadsTheSame) {
    if (!std::filesystem::exists(QL_ROOT "/node_modules/parquet-wasm"))
        GTEST_SKIP() << "scripts/setup sql installs the reader";
    ASSERT_EQ(folder.run("qlproto export session.pcap -o made --format parquet --message SubmitOrderMessage").exitCode,
              0);
    const auto read = folder.run("node '" QL_ROOT "/tests/parquet.mjs' made/SubmitOrder/*/*.parquet");
    const auto expected =
        query("SELECT epoch_ns(_time), contents.clOrdID, contents.side, contents.amount FROM SubmitOrder");
    std::vector<std::string> lines = linesOf(expected.out), others = linesOf(read.out);
    lines.erase(lines.begin());
    std::ranges::sort(lines);
    std::ranges::sort(others);
    EXPECT_EQ(others, lines) << read.err;
    EXPECT_GT(lines.size(), 400u);
}

// --- export

/// The rows of all files of the folder, without what differs: the capture and the hour.
std::multiset<std::string> rowsIn(const ToolFolder& folder, const std::string& path) {
    std::multiset<std::string> rows;
    for (const auto& it : std::filesystem::recursive_directory_iterator(folder.path(path))) {
        if (!it.is_regular_file() || it.path().filename().native()[0] == '.') continue;
        std::ifstream file(it.path());
        for (std::string line; std::getline(file, line);) rows.insert(line);
    }
    return rows;
}

class Export : public testing::Test {
  protected:
    void SetUp() override {
        Quillon::initialize();
        // Over the turn of an hour and back.
        std::vector<ToolFolder::Packet> packets;
        for (int64_t i = 0; i < 60; ++i) {
            const int64_t time = 1709539199'000000000 + i * 100'000'000 - (i == 12 ? 300'000'000 : 0);
            packets.emplace_back(
                time, ToolFolder::packet<Quillon::TimerMessage>([&](auto& it) { it.tqid = static_cast<int32_t>(i); }));
            packets.emplace_back(time, ToolFolder::packet<Quillon::SubmitOrderMessage>([&](auto& it) {
                                     it.userID = static_cast<int32_t>(i);
                                     it.contents.clOrdID = "a,\"b\n";
                                     it.contents.price = Velmora::NA;
                                     it.contents.parameters.resize(1);
                                     it.contents.parameters[0].key = "k";
                                     it.contents.parameters[0].value = "v";
                                 }));
        }
        packets.emplace_back(1709539199'000000000, "x");
        folder.store("session.pcap", packets);
    }

    void TearDown() override { Quillon::finalize(); }

    size_t files(const std::string& pattern) const { return folder.run("ls " + pattern).lines(); }

    const ToolFolder folder{};
};

TEST_F(Export, FilesByMessageAndHourHoldTheRows) {
    const auto result = folder.run("qlproto export session.pcap -o csv --format csv");
    EXPECT_EQ(result.exitCode, 1) << "one packet is bad";
    EXPECT_EQ(files("csv/Timer/hour=2024-03-04T07/* csv/Timer/hour=2024-03-04T08/*"), 2u);
    EXPECT_EQ(files("csv"), 3u) << "and faults";
    const auto timers = rowsIn(folder, "csv/Timer"), orders = rowsIn(folder, "csv/SubmitOrder");
    EXPECT_EQ(timers.size(), 62u) << "60 rows, two headers";
    EXPECT_EQ(timers.count("_packet,_time,_id,_capture,tqid"), 2u);
    EXPECT_EQ(timers.count("25,2024-03-04 07:59:59.900000000,53284,session.pcap,12"), 1u);
    EXPECT_EQ(orders.size(), 62u);
    EXPECT_TRUE(std::ranges::any_of(orders, [](const std::string& it) {
        return it.find(",\"a,\"\"b\\n\",") != it.npos && it.find(",,NA,") != it.npos
               && it.find("\"[{\"\"key\"\":\"\"k\"\",\"\"value\"\":\"\"v\"\"}]\"") != it.npos;
    })) << *orders.begin();
    EXPECT_EQ(rowsIn(folder, "csv/faults").size(), 2u);

    folder.run("qlproto export session.pcap -o ndjson --format ndjson --price-scale 100");
    for (const std::string& row : rowsIn(folder, "ndjson/SubmitOrder")) {
        const Json json = Json::parse(row);
        EXPECT_EQ(json["contents"]["clOrdID"], "a,\"b\n");
        EXPECT_TRUE(json["contents"]["price"].is_null());
        EXPECT_EQ(json["contents"]["amount"], 0.0);
        EXPECT_EQ(json["contents"]["parameters"][0]["key"], "k");
    }
}

TEST_F(Export, TakesMessagesOutOfPacketsOfANetwork) {
    folder.run("mkdir net; qlproto convert session.pcap --over udp --framing frames -o net/session.pcap");
    const auto result = folder.run("qlproto export net/session.pcap --framing frames -o net --format csv");
    EXPECT_NE(result.err.find("files written"), result.err.npos) << result.err;
    folder.run("qlproto export session.pcap -o csv --format csv");
    for (const char* const table : {"Timer", "SubmitOrder"})
        EXPECT_EQ(folder
                      .run("cat net/" + std::string(table)
                           + "/*/* | sed 's/,_connection,_connectionID,_from,_to,_direction,/,/; s/,net.session.pcap,"
                             "10.0.0.1:40000 > 10.0.0.2:9001,1,10.0.0.1:40000,10.0.0.2:9001,there,/,session.pcap,/'")
                      .out,
                  folder.run("cat csv/" + std::string(table) + "/*/*").out);
}

TEST_F(Export, AnotherWayOfReadingIsAnotherExport) {
    folder.run("qlproto convert session.pcap --over tcp --framing frames -o net.pcap");
    const auto run = [&](const std::string& how) {
        return folder.run("qlproto export net.pcap -o made --format csv --framing " + how).err;
    };
    std::string ports = "frames --port 7 --port 9001";
    for (const auto& [how, timers, kept] : // each differs from the one before in one thing
         {std::tuple<std::string, size_t, size_t>("frames", 62, 0),
          {"frames", 62, 3},
          {"'length:u32le,id:u16le,body'", 62, 3},
          {"'skip:u8, length:u8, id:u16be, body'", 0, 0},
          {"frames", 62, 0},
          {"frames --port 7", 0, 0},
          {"frames --port 9001 --port 7", 62, 0},
          {ports, 62, 3},
          {ports += " --secrets", 62, 0},
          {ports += " --price-scale 10", 62, 0},
          {ports + " --policy strict", 62, 0},
          {ports + " --policy rolling", 62, 0}}) {
        const std::string told = run(how);
        EXPECT_NE(told.find(fmt::format(", {} tables kept", kept)), told.npos) << how << told;
        EXPECT_EQ(rowsIn(folder, "made/Timer").size(), timers) << how << ": what was there before is no more";
    }
    folder.run("qlproto export session.pcap -o made --format csv");
    EXPECT_EQ(rowsIn(folder, "made/Timer").size(), 124u) << "another capture";
}

/// Its bytes cut into pieces, those after a third in a capture of their own; no piece ends where a message does.
void cutInTwo(const ToolFolder& folder) {
    constexpr size_t longest = 97;
    std::string stream;
    Capture::Framer framer(Capture::Framing::of("frames"));
    Capture::Reader session(folder.path("session.pcap"));
    for (Capture::Packet it; session.next(it);)
        if (it.bytes.size() > 2) framer.append(Capture::identifierOf(it.bytes), it.bytes.substr(2), stream);
    constexpr uint32_t ethernet = Capture::LinkType::ETHERNET;
    Capture::Writer first(folder.path("a.pcap"), {.linkType = ethernet}),
        second(folder.path("b.pcap"), {.linkType = ethernet});
    for (size_t at = 0; at < stream.size(); at += longest) {
        const std::string packet = Capture::ethernetFrame(
            Capture::tcpPacket(Capture::endpointOf(0x0A000001, 40000), Capture::endpointOf(0x0A000002, 9001),
                               {.sequence = static_cast<uint32_t>(at), .flags = Capture::TcpFlags::ACK},
                               std::string_view(stream).substr(at, longest)));
        (at < stream.size() / 3 ? first : second)
            .packet({.time = static_cast<int64_t>(at), .bytes = packet, .linkType = ethernet});
    }
    first.close();
    second.close();
}

TEST_F(Export, ConnectionsGoOnInTheNextCapture) {
    cutInTwo(folder);
    std::vector<std::string> formats{"csv", "ndjson"};
    if (hasEngine()) formats.emplace_back("parquet");
    for (const std::string& format : formats) {
        SCOPED_TRACE(format);
        const auto result =
            folder.run("qlproto export b.pcap a.pcap ./a.pcap --framing frames -o made --format " + format);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        const auto rows = [&](const std::string& capture) {
            const std::string files = "made/SubmitOrder/*/" + capture + "_pcap-*." + format;
            if (format != "parquet") return folder.run("cat " + files + " | grep -cE '" + capture + "[.]pcap\"?,'").out;
            folder.write("sql", "SELECT count(*) FROM '" + files + "' WHERE _capture = '" + capture + ".pcap'");
            return linesOf(folder.run("qlproto query session.pcap \"$(cat sql)\"").out).at(1) + '\n';
        };
        EXPECT_EQ(rows("a"), "20\n");
        EXPECT_EQ(rows("b"), "40\n") << "with the one of which the other has the start";
        EXPECT_EQ(files("made/faults/*." + format), format == "parquet" ? 2u : 0u);
        const auto again = [&](const std::string& captures) {
            return folder.run("qlproto export " + captures + " --framing frames -o made --format " + format).err;
        };
        const std::string same = again("a.pcap b.pcap");
        folder.run("touch b.pcap");
        const std::string newer = again("a.pcap b.pcap"), alone = again("b.pcap");
        EXPECT_NE(same.find(" 6 tables kept"), same.npos) << same << "in whatever order";
        EXPECT_NE(newer.find(" 0 tables kept"), newer.npos) << newer;
        EXPECT_NE(alone.find(" 0 tables kept"), alone.npos) << alone;
        EXPECT_EQ(rows("a"), "20\n");
        EXPECT_EQ(rows("b"), "39\n") << "as it is alone";
    }
}

TEST_F(Export, LeavesOutWhatTheCaptureHasCut) {
    folder.run("printf '\\377' | dd of=session.pcap bs=1 seek=36 conv=notrunc"); // the first packet was of 255 bytes
    EXPECT_EQ(folder.run("qlproto export session.pcap -o csv --format csv").exitCode, 1);
    EXPECT_EQ(rowsIn(folder, "csv/Timer").size(), 61u);
    EXPECT_EQ(rowsIn(folder, "csv/faults").size(), 3u);
}

TEST_F(Export, GoesOnWhereItWasAndLeavesNoHalfFile) {
    folder.run("qlproto export session.pcap -o made --format csv; rm made/Timer/.complete-*; rm made/Timer/*/*");
    const auto again = folder.run("mkdir made/.part-999999999; touch -d yesterday made/SubmitOrder/hour=*/*; "
                                  "qlproto export session.pcap -o made --format csv");
    EXPECT_NE(again.err.find("2 files written, 2 tables kept"), again.err.npos) << again.err;
    EXPECT_EQ(rowsIn(folder, "made/Timer").size(), 62u);
    EXPECT_EQ(files("-A made | grep part"), 0u) << "of a process that was killed";

    folder.run("touch session.pcap");
    EXPECT_NE(folder.run("qlproto export session.pcap -o made --format csv").err.find("5 files written"),
              std::string::npos);

    const auto full = folder.run("ulimit -f 4; qlproto export session.pcap -o small --format csv");
    EXPECT_EQ(full.exitCode, 3) << full.err;
    EXPECT_EQ(folder.run("find small -type f | grep -v complete").lines(), 2u)
        << "those of Timer alone are small enough";
    EXPECT_EQ(files("-A small | grep part"), 0u);
}

TEST_F(Export, ParquetHoldsWhatTheTablesHold) {
    NEEDS_ENGINE();
    EXPECT_EQ(folder.run("qlproto export session.pcap -o made --format parquet").exitCode, 1);
    const std::string difference =
        "SELECT count(*) AS n FROM ((FROM SubmitOrder) EXCEPT ALL (SELECT * EXCLUDE (hour) FROM read_parquet("
        "'made/SubmitOrder/*/*.parquet', hive_partitioning = true)));"
        "SELECT count(*) AS a, count(DISTINCT hour) AS b, typeof(any_value(_time)) AS c FROM "
        "read_parquet('made/SubmitOrder/*/*.parquet')";
    folder.write("sql", difference);
    EXPECT_EQ(folder.run("qlproto query session.pcap \"$(cat sql)\"").out, "n\n0\na,b,c\n60,2,TIMESTAMP_NS\n");
    EXPECT_EQ(folder.run("ulimit -f 1; qlproto export session.pcap -o small --format parquet").exitCode, 3);
    EXPECT_EQ(files("-AR small | grep -E 'parquet|part'"), 0u);
}

TEST(SqlWithoutEngine, IsToldHowToInstallIt) {
    const ToolFolder folder;
    ASSERT_EQ(folder.run("qlproto generate --messages 10 -o session.pcap").exitCode, 0);
    const auto none = folder.run("QLPROTO_DUCKDB=$PWD/none.so qlproto query session.pcap 'SELECT 1'");
    EXPECT_EQ(none.exitCode, 3);
    EXPECT_EQ(none.out, "");
    EXPECT_NE(none.err.find("QLPROTO_DUCKDB: "), none.err.npos) << none.err;
    folder.run("mkdir -p node_modules/@duckdb/node-bindings-linux-x64; cd node_modules/@duckdb/*/; echo > "
               "libduckdb.so; chmod 666 libduckdb.so");
    const auto untrusted = folder.run("unset QLPROTO_DUCKDB; qlproto query session.pcap 'SELECT 1'");
    EXPECT_EQ(untrusted.err.find("invalid ELF"), untrusted.err.npos) << "anybody can have put it there";
}

} // namespace
