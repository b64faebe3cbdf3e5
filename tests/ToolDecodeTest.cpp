// qlproto decode and verify: forms, filters, bytes without a capture, damaged captures.
#include <set>

#include <nlohmann/json.hpp>

#include "tests/Sessions.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/messages/Filter.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace {

using namespace Quillon;

class Decode : public Module {
  protected:
    const std::vector<std::string> decode(const std::string& options) {
        const auto result = _folder.run("qlproto decode " + options);
        EXPECT_EQ(result.exitCode, 0) << options << ": " << result.err;
        return linesOf(result.out);
    }
    void generate(uint64_t messages) {
        ASSERT_EQ(_folder.run("qlproto generate --seed 7 -o a.pcap --messages " + std::to_string(messages)).exitCode,
                  0);
    }
    const std::string timer{"\x24\xD0\x0E", 3};
    ToolFolder _folder;
};

TEST_F(Decode, KeepsTheOrderOfACaptureOfManyBatches) {
    generate(60000);
    const std::vector<std::string> all = decode("a.pcap");
    const std::vector<Sent> sent = session(7, 60000);
    ASSERT_EQ(all.size(), sent.size());
    for (size_t i = 0; i < sent.size(); ++i) {
        std::string start;
        qlproto::appendTime(sent[i].time, qlproto::TimeForm::raw, start);
        start += std::string(" ") + __protocol->getMessageName(sent[i].id()) + ' ';
        ASSERT_EQ(all[i].substr(0, start.size()), start);
    }
    EXPECT_EQ(decode("- <a.pcap"), all);
    for (const size_t n : {0u, 1u, 4096u, 4097u, 50000u}) {
        const std::vector<std::string> some = decode("a.pcap -n " + std::to_string(n));
        EXPECT_TRUE(some.size() == n && std::equal(some.begin(), some.end(), all.begin())) << n;
    }
}

TEST_F(Decode, CountsWhatItPrints) {
    generate(20000);
    for (const char* options : {"", "-n 0", "-n 5000", "--message TimerMessage", "--message '*Order*' -n 7"}) {
        const auto result = _folder.run("qlproto decode --verbose a.pcap " + std::string(options));
        EXPECT_TRUE(result.err.starts_with(std::to_string(result.lines()) + " message")) << options << result.err;
    }
}

TEST_F(Decode, FiltersAsGrepWould) {
    generate(20000);
    const std::vector<std::string> all = decode("a.pcap");
    const auto expect = [&](const std::string& options, auto&& holds) {
        std::vector<std::string> expected;
        for (const std::string& line : all)
            if (holds(line)) expected.push_back(line);
        EXPECT_FALSE(expected.empty()) << options;
        EXPECT_EQ(decode(options + " a.pcap"), expected) << options;
    };
    const auto has = [](std::string piece) {
        return [piece](const std::string& line) { return line.find(piece) != line.npos; };
    };
    expect("--message SubmitOrderMessage", has(" SubmitOrderMessage "));
    expect("--message 'Submit*' --message Cancel?rderMessage", [&](const std::string& line) {
        return has(" SubmitOrderMessage ")(line) || has(" CancelOrderMessage ")(line);
    });
    expect("--id 0xF0E9", has(" SubmitOrderMessage "));
    expect("--family memory-bus", has(" MemBus"));
    expect("--message SubmitOrderMessage --where contents.side=BID",
           [&](const std::string& line) { return has(" SubmitOrderMessage ")(line) && has(" side=BID ")(line); });
    expect("--message SubmitOrderMessage --where side!=BID --where userID=11", [&](const std::string& line) {
        return has(" SubmitOrderMessage userID=11 ")(line) && !has(" side=BID ")(line);
    });
    expect("--message SubmitOrderMessage --where 'contents.price>108000000'", [&](const std::string& line) {
        const size_t at = line.find(" price=");
        return has(" SubmitOrderMessage ")(line) && isdigit(line[at + 7])
               && std::stoll(line.substr(at + 7)) > 108000000;
    });
    expect("--where clOrdID~magpie-1", has(" clOrdID=\"magpie-1"));
    expect("--message SubmitOrderMessage --where 'clOrdID~m*-?2'", [&](const std::string& line) {
        const size_t at = line.find(" clOrdID=\"m"), end = line.find("\" ", at);
        return has(" SubmitOrderMessage ")(line) && at != line.npos && line[end - 1] == '2' && line[end - 3] == '-';
    });
    expect("--message SubmitOrderMessage --where 'clOrdID!~wren'",
           [&](const std::string& line) { return has(" SubmitOrderMessage ")(line) && !has(" clOrdID=\"wren")(line); });
    expect("--message SubmitOrderMessage --where 'timeHandler<=2024-03-04T07:00:01'",
           [&](const std::string& line) { return has(" SubmitOrderMessage ")(line) && line < "1709535601.000000001"; });
    expect("--where isSnapshot=true", has(" isSnapshot=T"));
    expect("--where request=SECURITYINFO", has(" request=79"));
    const std::string from = all[5000].substr(0, 20), to = all[6000].substr(0, 20);
    expect("--from " + from + " --to " + to,
           [&](const std::string& line) { return line >= from && line.substr(0, 20) <= to; });
    const auto ofFiveToSix = [](const std::string& line) {
        return line >= "1709535605" && line.substr(0, 20) <= "1709535606.000000000";
    };
    expect("--from 07:00:05 --to 07:00:06", ofFiveToSix);
    expect("--from 2024-03-04T08:00:05+01:00 --to 2024-03-04T07:00:06Z", ofFiveToSix);
    const std::string zurich = "decode a.pcap --time Europe/Zurich ";
    EXPECT_TRUE(_folder.run("qlproto " + zurich + "--from 08:00:05 --to 2024-03-04T08:00:06").out
                == _folder.run("qlproto " + zurich + "--from 2024-03-04T07:00:05Z --to 08:00:06").out);
    EXPECT_TRUE(_folder.run("qlproto " + zurich + "--from 23:00 --to 22:00").out.empty()) << "the night after";
    const std::string scaled = "--price-scale 100000000 --message SubmitOrderMessage --where 'price>1.08' a.pcap";
    EXPECT_EQ(decode(scaled), decode("--price-scale 100000000 --message SubmitOrderMessage --where 'price>=1.08000001' "
                                     "a.pcap"));
    EXPECT_EQ(decode(scaled).size(), decode("--message SubmitOrderMessage --where 'price>108000000' a.pcap").size());
}

// Whatever a command tells of the messages that a filter takes, it tells of a capture of these alone.
TEST_F(Decode, AllCommandsTakeTheSameMessages) {
    generate(20000);
    for (const char* filter :
         {"--where feedID=2", "--family orders --where side!=OFR --first 1000", "--from 07:00:02 --to 07:00:03.5",
          "--message '*Quote*' --where userID=11", "--message PadMessage --where padding~a", "--first 0"}) {
        const std::string options(filter);
        _folder.run("qlproto decode --format json a.pcap " + options + " | qlproto encode - -o b.pcap");
        for (const char* command : {"stats --json", "latency --json", "verify", "report -o /dev/stdout", "decode"}) {
            const std::string run = "qlproto " + std::string(command);
            EXPECT_EQ(_folder.run("ln -f a.pcap c.pcap; " + run + " c.pcap " + options).out,
                      _folder.run("ln -f b.pcap c.pcap; " + run + " c.pcap").out)
                << command << filter;
        }
        const std::string equal = "equal " + std::to_string(decode("b.pcap").size()) + ',';
        EXPECT_NE(_folder.run("qlproto diff a.pcap b.pcap " + options).out.find(equal), std::string::npos) << filter;
    }
}

TEST_F(Decode, TimesAreShownInTheFormThatIsAskedFor) {
    const auto order = ToolFolder::packet<SubmitOrderMessage>([](SubmitOrderMessage& it) {
        it.contents.orderID = it.contents.timeHandler = 1709535600'000000042;
        it.contents.timeApiClient = -1;
        it.contents.timeApiServer = Velmora::NA;
    });
    _folder.store("a.pcap", {{1720000000'000000007, order}});
    struct Form {
        const char *name, *packet, *field, *early;
    };
    for (const Form& form : {Form{"raw", "1720000000.000000007", "1709535600000000042", "-1"},
                             Form{"utc", "2024-07-03T09:46:40.000000007Z", "2024-03-04T07:00:00.000000042Z",
                                  "1969-12-31T23:59:59.999999999Z"},
                             Form{"America/New_York", "2024-07-03T05:46:40.000000007-04:00",
                                  "2024-03-04T02:00:00.000000042-05:00", "1969-12-31T18:59:59.999999999-05:00"}})
        for (const char* command : {"decode", "decode --format lines", "trace --order 1709535600000000042"}) {
            const std::string shown =
                _folder.run("qlproto " + std::string(command) + " a.pcap --time " + form.name).out;
            const std::string_view kind = command;
            EXPECT_NE(shown.find(form.packet), std::string::npos) << command << shown;
            if (kind.starts_with("trace")) continue; // tells no times of stations
            for (const std::string& field : {std::string("timeHandler"), std::string("timeApiClient")}) {
                const std::string blank = kind == "decode" ? "" : " ";
                const std::string text =
                    field + blank + '=' + blank + (field == "timeHandler" ? form.field : form.early);
                EXPECT_NE(shown.find(text), std::string::npos) << command << shown;
            }
            EXPECT_NE(shown.find("timeApiServer"), std::string::npos);
            EXPECT_NE(shown.find("NA"), std::string::npos);
            EXPECT_NE(shown.find("1709535600000000042"), std::string::npos) << "an identifier is no time";
        }
    EXPECT_NE(_folder.run("TZ=Asia/Tokyo qlproto decode --time local a.pcap").out.find("T18:46:40.000000007+09:00 "),
              std::string::npos);
}

TEST_F(Decode, RefusesConditionsThatCannotBeMeant) {
    for (const char* options : {"--where sied=BID",
                                "--where side=BDI",
                                "--where side",
                                "--where =3",
                                "--where 'userID=x'",
                                "--where 'price>>3'",
                                "--message NoSuchMessage",
                                "--family nobody",
                                "--id x",
                                "--from yesterday",
                                "--price-scale 7",
                                "--price-scale 0",
                                "--format xml",
                                "--format 2",
                                "--format csv",
                                "--format json --fields side",
                                "--format csv --fields sied",
                                "--time Mars",
                                "--time ../localtime",
                                "--from 25:00",
                                "--where userID~1",
                                "--where price=1.5",
                                "--price-scale 100 --where 'price>1.085'",
                                "--where userID=2024-03-04",
                                "-n -1",
                                "-n 0x-1",
                                "-n 1e3",
                                "-n 18446744073709551616",
                                "-n ''",
                                "--id 0x10000",
                                "--id 65536",
                                "--id 3",
                                "--id ''",
                                "--where side=257",
                                "--where side=-1",
                                "--where userID=0x-5",
                                "--where userID=2147483648",
                                "--where isSnapshot=2",
                                "--from ''",
                                "--type ''"}) {
        const auto result = _folder.run(std::string("qlproto decode a.pcap ") + options);
        EXPECT_EQ(result.exitCode, 2) << options;
        EXPECT_TRUE(result.out.empty() && !result.err.empty()) << options;
    }
}

TEST_F(Decode, SentinelsAreNoNumbers) {
    const qlproto::Condition above("price>5"), na("price=NA"), notNa("price!=NA");
    const auto value = [](int64_t number) {
        return Inspect::Value{.kind = Inspect::Kind::price, .number = number, .text = {}};
    };
    EXPECT_TRUE(above.holds(value(6)) && !above.holds(value(5)) && !above.holds(value(Velmora::NA)));
    EXPECT_TRUE(na.holds(value(Velmora::NA)) && !na.holds(value(6)) && notNa.holds(value(6)));
}

TEST_F(Decode, WritesJsonThatAgreesWithTheText) {
    generate(2000);
    const std::vector<std::string> text = decode("a.pcap"), json = decode("--format json a.pcap");
    ASSERT_EQ(json.size(), text.size());
    const std::vector<Sent> sent = session(7, 2000);
    for (size_t i = 0; i < json.size(); ++i) {
        const nlohmann::json object = nlohmann::json::parse(json[i]);
        EXPECT_EQ(object["id"], sent[i].id());
        const std::string start = object["time"].get<std::string>() + ' ' + object["message"].get<std::string>() + ' '
                                  + nlohmann::ordered_json::parse(json[i])["body"].begin().key() + '=';
        EXPECT_EQ(text[i].substr(0, start.size()), start);
    }
}

TEST_F(Decode, RowsHoldTheValuesOfJson) {
    generate(5000);
    const std::string orders = " --price-scale 100000000 --time utc --message SubmitOrderMessage a.pcap";
    const auto rows = decode("--format csv --fields time,id,userID,contents.clOrdID,price,stopPrice" + orders);
    const auto json = decode("--format json --numbers" + orders);
    ASSERT_EQ(rows.size(), json.size() + 1);
    EXPECT_EQ(rows[0], "time,id,userID,contents.clOrdID,price,stopPrice");
    for (size_t i = 0; i < json.size(); ++i) {
        const nlohmann::json line = nlohmann::json::parse(json[i]), body = line["body"], contents = body["contents"];
        EXPECT_TRUE(contents["price"].is_number_float() && contents["orderID"].is_number_integer()) << json[i];
        EXPECT_EQ(rows[i + 1], line["time"].get<std::string>() + ",61673," + body["userID"].dump() + ','
                                   + contents["clOrdID"].get<std::string>() + ',' + contents["price"].dump() + ",NA");
    }
    const std::string quote = ToolFolder::packet<MassQuoteMessage>([](MassQuoteMessage& it) {
        for (const char* id : {"a\n\"", "b,c"}) it.contents.quotes.add_back().quoteID = id;
        it.contents.timeHandler = 1709535600'000000042;
    });
    _folder.store("a.pcap", {{1, timer}, {2, quote}});
    EXPECT_EQ(decode("--format csv --time utc --fields message,quoteID,timeHandler a.pcap"),
              (std::vector<std::string>{"message,quoteID,timeHandler", "TimerMessage,,",
                                        "MassQuoteMessage,\"a\\n\"\" b,c\",2024-03-04T07:00:00.000000042Z"}));
}

TEST_F(Decode, DividesPricesAndHidesSecretsInEveryForm) {
    const auto order = ToolFolder::packet<SubmitOrderMessage>([](SubmitOrderMessage& it) {
        it.contents.price = 108450000;
        it.contents.stopPrice = Velmora::NDA;
        it.contents.feedID = 100000000; // no price
        it.contents.side = Side::OFR;
        it.contents.ordType = static_cast<OrderType::Type>(77);
    });
    const auto connect = ToolFolder::packet<ClientConnectMessage>([](ClientConnectMessage& it) {
        it.user = "wr\"en";
        it.password = "hunter2";
    });
    const auto request =
        ToolFolder::packet<QuoteRequestMessage>([](QuoteRequestMessage& it) { it.contents.isBaseSpecified = true; });
    _folder.store("a.pcap", {{1, order}, {2, connect}, {3, request}});
    const std::string all = "a.pcap --price-scale 100000000 --redact --format ";
    for (const char* form : {"line", "lines", "json"}) {
        const std::string shown = _folder.run("qlproto decode " + all + form).out;
        EXPECT_NE(shown.find("1.0845"), shown.npos) << shown;
        EXPECT_NE(shown.find("100000000"), shown.npos) << shown;
        EXPECT_EQ(shown.find("hunter2"), shown.npos) << shown;
    }
    // Zeros and empty texts are left out, but for enumerators.
    EXPECT_EQ(decode("a.pcap --message ClientConnectMessage --price-scale 100000000 --format lines"),
              (std::vector<std::string>{"0.000000002 ClientConnectMessage", "    user = \"wr\\\"en\"",
                                        "    password = \"hunter2\""}));
    const std::vector<std::string> lines = decode(all + "lines");
    for (const char* line :
         {"0.000000001 SubmitOrderMessage", "    contents.price = 1.0845", "    contents.stopPrice = NDA",
          "    contents.feedID = 100000000", "    contents.side = OFR", "    contents.ordType = 77",
          "    contents.isBaseSpecified = true", "    password = ***"})
        EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1) << line;
    for (const char* path : {"userID", "contents.amount", "contents.clOrdID"})
        for (const std::string& line : lines) EXPECT_EQ(line.find(path), line.npos) << line;
}

TEST_F(Decode, TakesBytesWithoutACapture) {
    EXPECT_EQ(decode("--hex - <<< '24 d0 0e'"), std::vector<std::string>{"TimerMessage tqid=7"});
    EXPECT_EQ(decode("--hex --type TimerMessage - <<< 0e"), std::vector<std::string>{"TimerMessage tqid=7"});
    EXPECT_EQ(decode("--raw --type 0xD024 --format json - < <(printf '\\016')"),
              std::vector<std::string>{R"({"message":"TimerMessage","id":53284,"body":{"tqid":7}})"});
    EXPECT_EQ(decode("--raw --format lines - < <(printf '\\044\\320\\016')"),
              (std::vector<std::string>{"TimerMessage", "    tqid = 7"}));
    const auto bad = _folder.run("printf '24d00e\\n24d0\\nxx\\n\\n24d010' | qlproto decode --hex -");
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_EQ(bad.out, "TimerMessage tqid=7\nTimerMessage tqid=8\n");
    EXPECT_NE(bad.err.find("standard input:2: TimerMessage: truncated at byte 0 (tqid)"), std::string::npos) << bad.err;
    EXPECT_NE(bad.err.find("standard input:3: "), std::string::npos) << bad.err;
}

TEST_F(Decode, ShowsWhatComesWhileMoreIsAwaited) {
    // The writer waits until what it wrote has been shown.
    generate(40);
    const auto result =
        _folder.run("mkfifo f; (qlproto decode - <f >shown 2>/dev/null) & exec 3>f; head -c 2000 a.pcap "
                    ">&3; for i in {1..200}; do [ -s shown ] && break; sleep 0.05; done; "
                    "[ -s shown ] && echo seen; exec 3>&-; wait");
    EXPECT_EQ(result.out, "seen\n");
}

TEST_F(Decode, SurvivesDamage) {
    generate(5000);
    std::string bytes = _folder.content("a.pcap");
    qlproto::session::Rng rng(3);
    for (int i = 0; i < 100; ++i)
        bytes[static_cast<size_t>(rng.between(24, static_cast<int64_t>(bytes.size()) - 1))] =
            static_cast<char>(rng.between(0, 255));
    _folder.write("b.pcap", bytes);
    const std::vector<std::string> whole = linesOf(_folder.run("qlproto decode a.pcap").out);
    const auto result = _folder.run("qlproto decode --faults all b.pcap");
    EXPECT_EQ(result.exitCode, 1);
    const std::vector<std::string> left = linesOf(result.out);
    const std::multiset<std::string> found(left.begin(), left.end());
    size_t missing = 0;
    for (const std::string& line : whole) missing += !found.contains(line);
    EXPECT_LE(missing, 100u); // one for each place at most
    EXPECT_NE(result.err.find(" at offset "), std::string::npos);

    // All commands find the same messages and the same faults.
    const std::string summary = std::to_string(left.size()) + " messages, ";
    for (const char* command : {"decode --format json b.pcap", "decode --format lines b.pcap", "roundtrip b.pcap",
                                "stats b.pcap", "latency b.pcap", "report b.pcap -o b.html"}) {
        const auto other = _folder.run(std::string("qlproto ") + command + " --faults all --verbose");
        EXPECT_EQ(other.exitCode, 1) << command;
        EXPECT_NE(other.err.find(summary), std::string::npos) << command << other.err;
        for (const std::string& fault : linesOf(result.err))
            if (fault.find(" at offset ") != std::string::npos) {
                EXPECT_NE(other.err.find(fault), std::string::npos) << command << fault;
            }
    }
    for (const char* command : {"trace b.pcap --order heron-1", "diff a.pcap b.pcap"}) {
        const auto other = _folder.run(std::string("qlproto ") + command);
        EXPECT_EQ(other.exitCode, 1) << command;
        EXPECT_NE(other.err.find(" at offset "), std::string::npos) << command;
        EXPECT_NE(other.out, "") << command;
    }
    const auto verified = _folder.run("qlproto verify b.pcap");
    EXPECT_EQ(verified.exitCode, 1);
    EXPECT_NE(verified.out.find(" at offset "), std::string::npos);
}

// Of many faults a few are told one by one, and all by kind; of those in messages that cannot matter, their number.
TEST_F(Decode, FaultsDoNotBuryTheAnswer) {
    const std::string order = ToolFolder::packet<SubmitOrderMessage>([](SubmitOrderMessage& it) {
        it.contents.clOrdID = "x";
        it.contents.orderID = 1;
    });
    _folder.store("a.pcap",
                  {{1, timer + "x"}, {2, order + "x"}, {3, timer + "x"}, {4, "\x03\x01"}, {5, order}, {6, order}});
    const std::string of = "qlproto: packet 1 at offset 24 of 0.000000001: TimerMessage: trailing bytes at byte 1\n",
                      inOrder = "of 0.000000002: SubmitOrderMessage: trailing bytes at byte ";
    const struct {
        const char *command, *last;
        size_t lines;
        bool tellsOfAny, tellsOfOrder;
    } cases[] = {
        {"stats a.pcap", "4 faults: 3 trailing bytes, 1 unknown identifier", 4, true, true},
        {"stats a.pcap --faults 1", "4 faults: 3 trailing bytes, 1 unknown identifier", 2, true, false},
        {"decode a.pcap --faults all", "4 faults: 3 trailing bytes, 1 unknown identifier", 5, true, true},
        {"latency a.pcap --faults 0 --verbose", "4 faults: 3 trailing bytes, 1 unknown identifier", 2, false, false},
        {"report a.pcap -o /dev/null --quiet", "", 0, false, false},
        {"orders a.pcap", "4 faults: 1 trailing bytes, 3 in other messages", 2, false, true},
        {"trace a.pcap --order x", "2 steps in 1ns", 3, false, true},
        {"trace a.pcap --order x --quiet", "", 0, false, false},
    };
    for (const auto& it : cases) {
        const auto result = _folder.run("qlproto " + std::string(it.command));
        const auto lines = linesOf(result.err);
        EXPECT_EQ(result.exitCode, 1) << it.command;
        EXPECT_EQ(lines.size(), it.lines) << it.command << result.err;
        EXPECT_EQ(lines.empty() ? "" : lines.back(), it.last) << it.command;
        EXPECT_EQ(result.err.find(of) != std::string::npos, it.tellsOfAny) << it.command << result.err;
        EXPECT_EQ(result.err.find(inOrder) != std::string::npos, it.tellsOfOrder) << it.command << result.err;
    }
    EXPECT_EQ(_folder.run("qlproto stats a.pcap --faults some").exitCode, 2);
}

TEST_F(Decode, VerifyCountsByMessageAndFault) {
    _folder.store("a.pcap", {{1, timer}, {2, timer + "x"}, {3, std::string("\x24\xD0\x8E\x00", 4)}, {4, "\x03\x01"}});
    const auto result = _folder.run("qlproto verify a.pcap");
    EXPECT_EQ(result.exitCode, 1);
    for (const char* piece : {"TimerMessage                             2           1\n", "0x0103",
                              "all packets                              2           2\n", "trailing bytes",
                              "packet 2 at offset 43 of 0.000000002: TimerMessage: trailing bytes at byte 1\n",
                              "packet 4 at offset 83 of 0.000000004: unknown identifier 259\n"})
        EXPECT_NE(result.out.find(piece), std::string::npos) << piece << " is not in: " << result.out;
    EXPECT_EQ(nlohmann::json::parse(_folder.run("qlproto verify --json --faults 1 a.pcap").out),
              nlohmann::json::parse(R"({
        "all": {"sound": 2, "bad": 2},
        "messages": {"TimerMessage": {"sound": 2, "bad": 1}, "0x0103": {"sound": 0, "bad": 1}},
        "faults": {"trailing bytes": 1, "unknown identifier": 1},
        "first": [{"packet": 2, "offset": 43, "time": "0.000000002", "message": "TimerMessage",
                   "kind": "trailing bytes", "text": "TimerMessage: trailing bytes at byte 1"}]})"));
    EXPECT_NE(_folder.run("qlproto verify --policy strict a.pcap").out.find("non-minimal form"), std::string::npos);
    EXPECT_NE(
        _folder.run("qlproto verify --policy tolerant a.pcap").out.find("all packets                              3"),
        std::string::npos);
}

TEST_F(Decode, BodiesOfOtherDefinitionsAreReadOnRequest) {
    const auto packet = [](Velmora::MsgType_t id, const char* body) {
        return ToolFolder::Packet{1, Capture::identifierBytes(id) + body};
    };
    _folder.store("a.pcap", {packet(ImHereMessage::ID, "\x0E"), packet(TimerMessage::ID, "\x0E\x02"),
                             packet(PadMessage::ID, ""), packet(SubmitOrderMessage::ID, "\x16")});
    for (const char* command : {"decode a.pcap", "verify a.pcap", "stats a.pcap", "latency a.pcap",
                                "trace a.pcap --user 11", "report a.pcap -o r.html"}) {
        EXPECT_EQ(_folder.run(std::string("qlproto ") + command).exitCode, 1) << command;
        EXPECT_EQ(_folder.run(std::string("qlproto ") + command + " --policy rolling").exitCode, 0) << command;
    }
    const std::vector<std::string> lines = decode("--policy rolling a.pcap");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_NE(lines[0].find("dpdSeqNo=7 timeApiClient=0 timeApiServer=0"), std::string::npos) << lines[0];
    EXPECT_NE(lines[3].find("userID=11 quoteID=\"\""), std::string::npos) << lines[3];
    EXPECT_EQ(decode("--policy rolling --where timeApiClient=0 a.pcap").size(), 2u) << "what is missing is zero";
    const std::string json = "qlproto decode --policy rolling --format json a.pcap | qlproto encode - -o b.pcap ";
    EXPECT_EQ(_folder.run(json).exitCode, 1) << "such packets are made on request only";
    EXPECT_EQ(_folder.run(json + "--policy rolling && cmp a.pcap b.pcap").exitCode, 0);
}

TEST_F(Decode, TimesAreReadAsTheyAreWritten) {
    using namespace qlproto;
    for (const int64_t time : {int64_t{0}, int64_t{1709535600'000000042}, int64_t{4'000'000'000'999'999'999}}) {
        for (const TimeForm form : {TimeForm::raw, TimeForm::utc}) {
            std::string text;
            appendTime(time, form, text);
            EXPECT_EQ(parseTime(text), time) << text;
        }
    }
    std::string text;
    appendTime(1709535600'000000042, TimeForm::utc, text);
    EXPECT_EQ(text, "2024-03-04T07:00:00.000000042Z");
    EXPECT_EQ(parseTime("2024-03-04"), 1709510400'000000000);
    EXPECT_EQ(parseTime("1.5"), 1'500'000'000);
    for (const char* bad :
         {"", ".", "1.", "1.0000000001", "2024-02-30", "2024-03-04T24:00:00", "2024-03-04T07", "12:00", "x"})
        EXPECT_FALSE(parseTime(bad).has_value()) << bad;
}

// By an index parts of a capture are passed over, and nothing else changes: the same messages, packet numbers, exit status.
TEST_F(Decode, IndexPassesOverWhatIsNotAskedForAndNoMore) {
    ASSERT_EQ(_folder.run("qlproto generate --messages 90000 --seed 7 -o whole.pcap").exitCode, 0);
    std::string bytes = _folder.content("whole.pcap");
    for (const double at : {0.1, 0.4, 0.6, 0.95})
        for (size_t i = 0; i < 40; ++i)
            bytes[static_cast<size_t>(at * static_cast<double>(bytes.size())) + i] ^= '\x15';
    _folder.write("a.pcap", bytes);
    const auto times =
        linesOf(_folder.run("qlproto decode a.pcap 2>/dev/null | sed -n '1p;40000p;85000p' | cut -d' ' -f1").out);
    ASSERT_EQ(times.size(), 3u);
    const std::string lines = "qlproto decode --format json ";
    const std::vector<std::string> options = {lines + "--from " + times[2],
                                              lines + "--to " + times[0],
                                              lines + "--from " + times[1] + " --first 5",
                                              lines + "--from " + times[1] + " --to " + times[1],
                                              lines + "--message ClientConnectMessage",
                                              lines + "--message ClientConnectMessage --first 1",
                                              lines + "--where contents.clOrdID=none",
                                              lines + "--policy strict --from " + times[2],
                                              "qlproto stats --json --from " + times[2], // on several threads
                                              "qlproto verify --json --to " + times[0],
                                              "qlproto annotate --packet 2",
                                              "qlproto annotate --packet 40001",
                                              "qlproto annotate --packet 84999",
                                              "qlproto annotate --packet 100000"};
    for (const std::string name : {"a.pcap", "a.pcapng", "a.pcap.zst"}) {
        SCOPED_TRACE(name);
        if (name != "a.pcap") _folder.run("qlproto convert a.pcap -o " + name);
        std::vector<ToolFolder::Result> without;
        for (const std::string& it : options) without.push_back(_folder.run(it + " " + name));
        const ToolFolder::Result made = _folder.run("qlproto index " + name);
        EXPECT_EQ(made.exitCode, name == "a.pcap" ? 1 : without[0].exitCode) << made.err;
        size_t passed = 0;
        for (size_t i = 0; i < options.size(); ++i) {
            const ToolFolder::Result with = _folder.run(options[i] + " " + name);
            EXPECT_EQ(with.out, without[i].out) << options[i];
            EXPECT_EQ(with.exitCode, without[i].exitCode) << options[i] << with.err;
            passed += with.err.find("in parts that the index passes over") != std::string::npos;
        }
        EXPECT_GE(passed, 3u);
        const std::string index = _folder.content(name + ".index"), captured = _folder.content(name);
        size_t line = index.find('\n') + 1;
        if (name != "a.pcap") continue;
        for (const std::string& wrong :
             {std::string(), std::string("{"), index.substr(0, index.size() / 2), "[" + index,
              index.substr(0, line) + "[1,24,99999999999,24,0,0,0,\"0\"]\n",
              index.substr(0, line) + "[1,1e99,24,24,0,0,0,\"0\"]\n", index.substr(0, line) + "[1,24]\n"}) {
            _folder.write(name + ".index", wrong);
            const ToolFolder::Result with = _folder.run(options[0] + " " + name);
            EXPECT_EQ(with.out, without[0].out) << wrong.substr(0, 80);
            EXPECT_NE(with.err.find(".index is not of this capture as it is now"), std::string::npos)
                << wrong.substr(0, 80);
        }
        _folder.run("rm a.pcap.index; mkfifo a.pcap.index");
        const ToolFolder::Result with =
            _folder.run("timeout 60 " QLPROTO_TOOL + options[0].substr(7) + " a.pcap; rm a.pcap.index");
        EXPECT_EQ(with.out, without[0].out) << "what is no file is not waited for";
        _folder.write(name + ".index", index);
        _folder.write(name, captured + captured.substr(captured.size() - 1));
        EXPECT_NE(_folder.run(options[0] + " " + name).err.find("is not of this capture"), std::string::npos);
        _folder.write(name, captured);
    }
    _folder.run("gzip -k a.pcap");
    EXPECT_EQ(_folder.run("qlproto index a.pcap.gz").exitCode, 1);
    EXPECT_EQ(_folder.run("cat a.pcapng a.pcapng >b.pcapng; qlproto index b.pcapng").exitCode, 1);
    EXPECT_EQ(_folder.run("qlproto index none.pcap").exitCode, 3);
}

} // namespace
