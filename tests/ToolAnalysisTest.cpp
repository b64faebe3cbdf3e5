// What the tool finds out about captures: the figures themselves, and the commands that tell them.
#include <map>
#include <random>
#include <set>
#include <thread>
#include <tuple>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <nlohmann/json.hpp>
#include <sys/socket.h>
#include <unistd.h>

#include "Capture/Framer.h"
#include "Capture/NetworkWriter.h"
#include "tests/Sessions.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/analysis/Histogram.h"
#include "tools/qlproto/analysis/PacketSpool.h"
#include "tools/qlproto/analysis/RateSeries.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/terminal/LiveView.h"
#include "tools/qlproto/terminal/Plot.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/trading/LatencyStats.h"

using namespace Quillon;
using nlohmann::json;
using qlproto::Histogram;
using qlproto::RateSeries;

namespace {

class Analysis : public Module {
  protected:
    ToolFolder folder;
};

std::string timer(int32_t tqid) {
    return ToolFolder::packet<TimerMessage>([&](TimerMessage& it) { it.tqid = tqid; });
}

// --- containers

/// One session in every container that is read, plain and compressed, as made by other programs: from a file and on a pipe.
TEST_F(Analysis, OfOneSessionIsTheSameInEveryContainer) {
    folder.run("qlproto generate --messages 3000 -o a.pcap");
    const std::vector<Sent> sent = session(1, 3000);
    for (const auto& [name, form] : {std::pair("swapped.pcap", CaptureForm{.isSwapped = true}),
                                     {"swapped.pcapng", {.isSwapped = true, .container = CaptureForm::pcapng}},
                                     {"card.erf", {.container = CaptureForm::erfCapture}}}) {
        std::string bytes = form.header();
        for (const Sent& it : sent) bytes += form.record(it);
        folder.write(name, bytes);
    }
    const ToolFolder::Result made =
        folder.run("editcap -F pcapng a.pcap b.pcapng && gzip -k a.pcap && zstd -q a.pcap b.pcapng card.erf"
                   " && gzip -k b.pcapng && editcap -F pcap a.pcap coarse.pcap"
                   " && editcap -F pcapng coarse.pcap coarse.pcapng"
                   " && gzip -k coarse.pcap && editcap -F nsecpcap swapped.pcapng again.pcap");
    ASSERT_EQ(made.exitCode, 0) << made.err;
    const auto facts = [&](const std::string& name) {
        const std::string all = "qlproto stats --json $it; qlproto decode $it; it=-; qlproto stats --json $it <";
        const ToolFolder::Result result =
            folder.run("it=" + name + "; " + all + name + " 2>told; grep -v messages/s told");
        EXPECT_EQ(result.lines(), 2 * linesOf(folder.run("qlproto stats --json a.pcap").out).size() + 3000) << name;
        return result.out;
    };
    const std::string fine = facts("a.pcap"), coarse = facts("coarse.pcap");
    EXPECT_NE(fine, coarse);
    for (const char* name : {"swapped.pcap", "swapped.pcapng", "card.erf", "b.pcapng", "a.pcap.gz", "a.pcap.zst",
                             "b.pcapng.gz", "b.pcapng.zst", "card.erf.zst", "again.pcap"})
        EXPECT_EQ(facts(name), fine) << name;
    for (const char* name : {"coarse.pcapng", "coarse.pcap.gz"}) EXPECT_EQ(facts(name), coarse) << name;
}

/// What convert, slice and merge write is what other programs make of it, packet by packet.
TEST_F(Analysis, CapturesAreWrittenAsOtherProgramsReadThem) {
    for (const char* command :
         {"qlproto generate --messages 12000 -o a.pcap && qlproto generate --messages 12000 -o a.pcapng.zst",
          "qlproto convert a.pcap -o b.pcapng && editcap -F nsecpcap b.pcapng c.pcap && cmp a.pcap c.pcap",
          "qlproto convert - -o - --container pcapng --zstd <a.pcap | cmp - a.pcapng.zst",
          "zstd -dqc a.pcapng.zst | cmp - b.pcapng && zstd -lv a.pcapng.zst | grep -q 'Zstandard Frames: 2'",
          "tshark -r b.pcapng -T fields -e frame.time_epoch -e frame.len >d && test $(wc -l <d) = 12000",
          "editcap -F nsecpcap -s 40 a.pcap cut.pcap && qlproto convert cut.pcap -o cut.pcapng.zst",
          "qlproto convert cut.pcapng.zst -o e.pcap && cmp <(tail -c +25 cut.pcap) <(tail -c +25 e.pcap)",
          "qlproto convert a.pcap -o r.pcap --rotate-size 1 && ls -s --block-size=1 r-*.pcap && test -f r-00002.pcap",
          "test $(cat r-*.pcap | wc -c) = $(($(wc -c <a.pcap) + 24)) && test $(wc -c <r-00001.pcap) -le 1000000",
          "mergecap -F nsecpcap -w m.pcap r-*.pcap && cmp m.pcap a.pcap && qlproto merge r-*.pcap -o n.pcap && cmp "
          "n.pcap a.pcap",
          "qlproto slice a.pcapng.zst -o s.pcapng --message 'Submit*' && diff <(qlproto decode s.pcapng) "
          "<(qlproto decode a.pcap --message 'Submit*') && test $(tshark -r s.pcapng | wc -l) -gt 100",
          "test -z \"$(qlproto stats --first 1 b.pcapng 2>&1 >/dev/null | grep definition)\"",
          "sed 's/\"wire\": \"./\"wire\": \"X/' b.pcapng >x.pcapng; qlproto stats x.pcapng 2>&1 | grep -q 'made with "
          "another'"}) {
        const ToolFolder::Result result = folder.run("set -o pipefail; " + std::string(command));
        EXPECT_EQ(result.exitCode, 0) << command << result.out << result.err;
    }
}

/// One session over a network, on connections and in datagrams, in each container: the same facts, and those that the other
/// program, with its own reassembly, finds of it. Then filters and groups by who sent it, and several captures as one.
TEST_F(Analysis, OfOneSessionIsTheSameOverANetwork) {
    for (const char* command :
         {"qlproto generate --messages 3000 -o a.pcap && qlproto stats --json a.pcap >stats && qlproto decode a.pcap "
          ">decoded",
          "qlproto convert a.pcap --over tcp --framing frames --connections 3 -o tcp.pcap",
          "qlproto convert a.pcap --over udp --framing frames -o udp.pcapng.zst && zstd -dq udp.pcapng.zst",
          "editcap -F pcapng tcp.pcap tcp.pcapng && gzip -k tcp.pcap",
          "for it in tcp.pcap tcp.pcapng tcp.pcap.gz udp.pcapng udp.pcapng.zst; do"
          "  cmp stats <(qlproto stats --json $it --framing frames) && cmp decoded <(qlproto decode $it --framing "
          "frames)"
          "  && cmp stats <(qlproto stats --json - --framing frames <$it) || exit 1; done",
          "printf 'length:u32le, # of the rest\\nid:u16le, body' >framing",
          "qlproto convert tcp.pcap --framing @framing -o b.pcap && cmp a.pcap b.pcap",
          "qlproto diff a.pcap udp.pcapng --framing frames && qlproto roundtrip tcp.pcap --framing frames",
          "qlproto annotate tcp.pcap --framing frames --packet 17 | cmp - <(qlproto annotate a.pcap --packet 17)",
          "qlproto stats --csv --by _connection --sort name tcp.pcap --framing frames >by && test $(wc -l <by) = 5",
          "test \"$(sed -n 3p by | cut -d, -f2-3)\" = \"$(qlproto stats --csv --by _direction tcp.pcap --framing frames"
          " --where '_connection~10.0.0.1:40001' | sed -n 's/^there,//p' | cut -d, -f1-2)\"",
          "n=$(qlproto decode --format csv --fields _connectionID,_from tcp.pcap --framing frames | grep -m 1 "
          "10.0.0.1:40002"
          " | cut -d, -f1) && cmp <(qlproto decode tcp.pcap --framing frames --where _connectionID=$n)"
          " <(qlproto decode tcp.pcap --framing frames --where _from=10.0.0.1:40002)",
          "qlproto trace tcp.pcap --framing frames --user 11 --json >t && grep -q '\"connection\":\"10.0.0.1:4' "
          "t",
          "cmp <(sed 's/,\"connection\":\"[^\"]*\"//' t) <(qlproto trace a.pcap --user 11 --json)",
          "qlproto encode t -o t.pcap",
          "for k in 0 1 2; do editcap -F nsecpcap tcp.pcap /dev/stdout -r $((k * 1200 + 1))-$((k * 1200 + 1200)) >p$k; "
          "done",
          "cmp stats <(qlproto stats --json p2 p0 p1 --framing frames) && cmp decoded <(qlproto decode p1 p2 p0 "
          "--framing frames)",
          "test $(qlproto stats --csv --framing frames --port 9002 tcp.pcap | wc -l) = 2"}) {
        const ToolFolder::Result result = folder.run("set -o pipefail; " + std::string(command));
        EXPECT_EQ(result.exitCode, 0) << command << result.out << result.err;
    }
    for (const auto& [options, exitCode, told] :
         {std::tuple("stats tcp.pcap", 1, "it is of a network, Ethernet: a framing tells"),
          {"stats tcp.pcap --framing length:u32be,id:u16le,body", 1, "'length:u32le, id:u16le, body' would fit"},
          {"stats tcp.pcap --framing lenght:u32be", 2, "no field is named lenght"},
          {"stats tcp.pcap --framing @none", 3, "none"},
          {"stats tcp.pcap --framing frames --where _form=x", 2, "there are _connection, _connectionID, _from, _to"},
          {"stats tcp.pcap --framing frames --where _connectionID=x", 2, "x is no value of that field"},
          {"convert a.pcap --over tcp --framing 'id:u16le, body' -o x", 2, "by which a stream could be read"},
          {"convert a.pcap --over tcp --framing 'length:u8, id:u16le, body' -o x", 2, "does not fit into 1 byte"}}) {
        const ToolFolder::Result result = folder.run("qlproto " + std::string(options));
        EXPECT_EQ(result.exitCode, exitCode) << options << result.err;
        EXPECT_NE(result.err.find(told), std::string::npos) << options << result.err;
    }
}

/// A socket on the loopback interface, and its port.
std::pair<int, std::string> boundSocket(int type) {
    const int it = socket(AF_INET, type, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    EXPECT_EQ(bind(it, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(getsockname(it, reinterpret_cast<sockaddr*>(&address), &size), 0);
    return {it, std::to_string(ntohs(address.sin_port))};
}

/// All messages in frames, to a pipe and over TCP; a connection that is refused is an error.
TEST_F(Analysis, ReplaySendsWhatTheCaptureHolds) {
    const std::vector<Sent> sent = session(1, 300);
    folder.run("qlproto generate --messages 300 -o a.pcap");
    Capture::Framer frames(Capture::Framing::of("frames")),
        numbers(Capture::Framing::of("seq:u32be, length:u16be, id:u16be, body"));
    std::string framed, numbered;
    for (const Sent& it : sent) {
        frames.append(it.id(), std::string_view(it.bytes).substr(2), framed);
        numbers.append(it.id(), std::string_view(it.bytes).substr(2), numbered);
    }
    EXPECT_EQ(folder.run("qlproto replay a.pcap --target - --speed max").out, framed);

    const auto [listener, port] = boundSocket(SOCK_STREAM);
    const std::string command =
        "qlproto replay a.pcap --speed 20 --framing 'seq:u32be, length:u16be, id:u16be, body' --target tcp:127.0.0.1:"
        + port;
    EXPECT_EQ(folder.run(command).exitCode, 3); // nobody listens
    ASSERT_EQ(listen(listener, 1), 0);
    EXPECT_EQ(folder.run(command).exitCode, 0);
    const int connection = accept(listener, nullptr, nullptr);
    std::string received(numbered.size() + 1, '\0');
    received.resize(static_cast<size_t>(recv(connection, received.data(), received.size(), MSG_WAITALL)));
    EXPECT_EQ(received, numbered);
    close(connection);
    close(listener);
}

/// What is sent on the loopback interface while it is tapped: packets as they are, and the messages in them as they come.
TEST_F(Analysis, TapGivesWhatComesOnAnInterface) {
    const ToolFolder::Result none = folder.run("qlproto tap -i none --seconds 9 -o x.pcap");
    if (none.err.find("built without") != none.err.npos || none.err.find("cap_net_raw") != none.err.npos)
        GTEST_SKIP() << none.err;
    EXPECT_EQ(none.exitCode, 3);
    EXPECT_NE(none.err.find("no interface is named 'none'; there are "), none.err.npos) << none.err;
    EXPECT_EQ(folder.run("qlproto tap -i lo --filter 'tcp prot 1' -o x.pcap").exitCode, 2);
    const auto [listener, tcp] = boundSocket(SOCK_STREAM);
    const auto [sink, udp] = boundSocket(SOCK_DGRAM);
    ASSERT_EQ(listen(listener, 1), 0);
    folder.write("script", "TCP=" + tcp + " UDP=" + udp + " tool='" QLPROTO_TOOL "'" + R"(
        listening() { until grep -q 'listening on lo' $1; do sleep 0.02; done; }
        qlproto generate --messages 3000 --seed 7 -o a.pcap
        $tool tap -i lo --filter "udp port $UDP" --first 3000 --seconds 60 -o udp.pcapng.zst 2>udp & udp=$!
        $tool tap -i lo --filter "tcp port $TCP" --framing frames --seconds 60 2>tcp >fifo & tcp=$!
        qlproto decode - <fifo >live & decode=$!
        listening udp && listening tcp
        qlproto replay a.pcap --target udp:127.0.0.1:$UDP --speed max
        qlproto replay a.pcap --target tcp:127.0.0.1:$TCP --speed max
        wait $udp || exit 2 # it ends after the last one
        for i in $(seq 500); do test $(wc -l <live) = 3000 && break; sleep 0.02; done
        kill -INT $tcp
        wait $tcp && wait $decode || exit 3
        qlproto decode udp.pcapng.zst --framing frames --port $UDP >stored || exit 4
        for it in live stored; do
            cmp <(cut -d' ' -f2- $it) <(qlproto decode a.pcap | cut -d' ' -f2-) || exit 5
        done)");
    std::thread server([listener = listener] { // takes what comes
        const int connection = accept(listener, nullptr, nullptr);
        for (char bytes[4096]; recv(connection, bytes, sizeof(bytes), 0) > 0;) {
        }
        close(connection);
    });
    const ToolFolder::Result result = folder.run("mkfifo fifo; . ./script");
    shutdown(listener, SHUT_RDWR); // if nobody came
    server.join();
    close(listener);
    close(sink);
    const std::string told = folder.content("udp") + folder.content("tcp");
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err << told;
    EXPECT_NE(told.find("3000 packets, 0 dropped by the kernel\n"), told.npos) << told;
    EXPECT_NE(told.find("3000 messages in "), told.npos) << told;
}

/// Two taps of one connection at different places, each of which lost packets: the result has all, and of messages also those
/// that no tap has seen whole.
TEST_F(Analysis, TapsOfANetworkMergedFillTheGapsOfEachOther) {
    const std::vector<Sent> sent = session(4, 4000);
    struct Packets : Capture::PacketSink {
        void packet(const Capture::Packet& it) override { all.push_back({it.time, std::string(it.bytes)}); }
        std::vector<Sent> all;
    } packets;
    Capture::NetworkWriter network(packets, Capture::Transport::tcp, Capture::Framing::of("frames"), 3);
    for (const Sent& it : sent) network.packet({.time = it.time, .bytes = it.bytes});
    network.close();
    std::mt19937 random(1);
    size_t lacks[2] = {};
    {
        Capture::Writer taps[] = {{folder.path("0.pcap"), {.linkType = Capture::LinkType::ETHERNET}},
                                  {folder.path("1.pcap"), {.linkType = Capture::LinkType::ETHERNET}}};
        for (Sent it : packets.all) {
            const size_t seen = 1 + random() % 3; // by one or both
            if (seen % 2 == 1) taps[0].packet({.time = it.time, .bytes = it.bytes});
            it.bytes[14 + 8] = '\x3F'; // a hop more, and with it another checksum, in a frame of another length
            it.bytes[14 + 10] = it.bytes[14 + 11] = '\0';
            if (seen >= 2) taps[1].packet({.time = it.time + 1000, .bytes = it.bytes + "pad"});
            for (const size_t tap : {0u, 1u}) lacks[tap] += (seen >> tap & 1) == 0;
        }
        for (Capture::Writer& it : taps) it.close();
    }
    folder.store("a.pcap", {{1, sent[0].bytes}});
    const ToolFolder::Result result = folder.run("qlproto merge 0.pcap 1.pcap -o u.pcap --window 5");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(result.err.find(fmt::format("{} packets of a network, link type 1\n", packets.all.size())),
              std::string::npos)
        << result.err;
    for (const size_t tap : {0u, 1u})
        EXPECT_NE(result.err.find(fmt::format("lacks {} in ", lacks[tap])), std::string::npos) << result.err;
    EXPECT_EQ(folder.run("qlproto stats 0.pcap --framing frames").exitCode, 1) << "it lacks packets";
    Capture::MessageSource merged({folder.path("u.pcap")}, Inspect::default_protocol(),
                                  Capture::NetworkOptions{Capture::Framing::of("frames")});
    std::multiset<std::string> expected, found;
    for (const Sent& it : sent) expected.insert(it.bytes);
    for (Capture::Packet it; merged.next(it); found.emplace(it.bytes))
        for (const Capture::Damage& fault : merged.faults()) ADD_FAILURE() << fault.text();
    EXPECT_EQ(found, expected);
    const ToolFolder::Result mixed = folder.run("qlproto merge a.pcap u.pcap -o x.pcap");
    EXPECT_EQ(mixed.exitCode, 1);
    EXPECT_NE(mixed.err.find("u.pcap: packets of a network, link type 1 cannot follow those of messages"),
              std::string::npos)
        << mixed.err;
}

/// Two taps, each of which lost packets, and whose clocks differ: what either has seen is there once, in either's order.
TEST_F(Analysis, TapsMergedGiveWhatEitherHasSeenAndTellWhatEachLacks) {
    const std::vector<Sent> sent = session(3, 6000);
    for (const int64_t skew : {0, 300'000}) {
        std::mt19937 random(1);
        std::string bytes[2] = {CaptureForm().header(), CaptureForm().header()};
        std::map<std::string, int> expected;
        size_t lacks[2] = {}, gaps[2] = {}, count = 0, common = 0;
        bool isLost[2] = {};
        for (const Sent& it : sent) {
            const bool isSeen[2] = {random() % 10 < 7, random() % 10 < 7};
            for (const int tap : {0, 1}) {
                if (isSeen[tap]) bytes[tap] += CaptureForm().record({it.time + tap * skew, it.bytes});
                if (!isSeen[0] && !isSeen[1]) continue;
                lacks[tap] += !isSeen[tap];
                gaps[tap] += !isSeen[tap] && !isLost[tap];
                isLost[tap] = !isSeen[tap];
            }
            common += isSeen[0] && isSeen[1];
            count += isSeen[0] || isSeen[1];
            if (isSeen[0] || isSeen[1]) ++expected[it.bytes];
        }
        for (const int tap : {0, 1}) folder.write(std::to_string(tap) + ".pcap", bytes[tap]);
        const ToolFolder::Result result = folder.run("qlproto merge 0.pcap 1.pcap -o u.pcap --window 310 --gaps");
        EXPECT_EQ(result.exitCode, 0);
        Capture::Reader merged(folder.path("u.pcap"));
        int64_t last = 0;
        for (Capture::Packet it; merged.next(it); last = it.time) {
            EXPECT_GE(it.time, last);
            --expected[std::string(it.bytes)];
        }
        for (const auto& [packet, left] : expected) EXPECT_EQ(left, 0);
        EXPECT_NE(result.err.find(fmt::format("0.pcap: {} packets, of which ", common + lacks[1])), std::string::npos);
        if (skew != 0) continue; // the order in which packets come out is another than that in which they were sent
        for (const int tap : {0, 1})
            EXPECT_NE(result.err.find(fmt::format("lacks {} in {} gaps\n", lacks[tap], gaps[tap])), std::string::npos)
                << result.err.substr(result.err.size() - 300);
        EXPECT_EQ(linesOf(result.err).size(), gaps[0] + gaps[1] + 3);
        EXPECT_NE(result.err.find(fmt::format("\n{} packets\n", count)), std::string::npos);
    }
}

/// Where clocks are coarse: what each tap has seen comes out in the order in which it saw it, whichever is named first.
TEST_F(Analysis, TapsMergedKeepTheirOrdersWithinOneTime) {
    struct Case {
        std::vector<std::string> taps;
        std::string merged; ///< a letter a packet
    };
    const Case cases[] = {{{"mhls", "mtsqu"}, "mhltsqu"}, {{"bc", "abc"}, "abc"},
                          {{"ab", "aab"}, "aab"},         {{"ab", "ba"}, "ab"}, // they contradict each other
                          {{"cd", "bc", "ab"}, "abcd"},   {{"", "ab"}, "ab"}};
    for (const Case& it : cases) {
        std::string command = "qlproto merge --window 0 -o u.pcap";
        for (size_t tap = 0; tap < it.taps.size(); ++tap) {
            std::vector<std::pair<int64_t, std::string>> packets;
            for (const char letter : it.taps[tap]) packets.push_back({7, std::string("\x24\xD0") + letter});
            packets.push_back({8, std::string("\x24\xD0") + '.'});
            folder.store(std::to_string(tap) + ".pcap", packets);
            command += ' ' + std::to_string(tap) + ".pcap";
        }
        EXPECT_EQ(folder.run(command).exitCode, 0);
        std::string merged;
        Capture::Reader reader(folder.path("u.pcap"));
        for (Capture::Packet packet; reader.next(packet);) merged += packet.bytes.back();
        EXPECT_EQ(merged, it.merged + '.') << it.taps[0];
    }
}

// --- pages

/// The data in a report's page.
json pageData(const std::string& page) {
    const std::string opening = "<script type=\"application/json\" id=\"data\">";
    const size_t begin = page.find(opening) + opening.size();
    return json::parse(page.substr(begin, page.find("</script>", begin) - begin));
}

/// The rows of all tables in a page, each as its cells' texts with a "|" after each cell.
std::set<std::string> tableRows(const std::string& page) {
    std::set<std::string> rows;
    for (size_t at = page.find("<tr"); at != std::string::npos; at = page.find("<tr", at)) {
        const size_t end = page.find("</tr>", at);
        std::string row;
        for (bool isTag = false; at < end; ++at) {
            if (page.compare(at, 5, "</td>") == 0 || page.compare(at, 5, "</th>") == 0) row += '|';
            if (page[at] == '<') isTag = true;
            if (!isTag) row += page[at];
            if (page[at] == '>') isTag = false;
        }
        rows.insert(row);
    }
    return rows;
}

/// A number as the page shows it: 1,234,567.
std::string grouped(uint64_t number) {
    return number < 1000 ? std::to_string(number) : fmt::format("{},{:03}", grouped(number / 1000), number % 1000);
}

/// Nanoseconds between 1 and 1,000 microseconds as the page shows them: four digits.
std::string digits(int64_t nanoseconds) {
    const int decimals = nanoseconds < 10'000 ? 3 : nanoseconds < 100'000 ? 2 : 1;
    const int64_t step = decimals == 3 ? 1 : decimals == 2 ? 10 : 100;
    const int64_t rounded = (nanoseconds + step / 2) / step * step; // half away from zero, as browsers round
    return fmt::format("{:.{}f}", static_cast<double>(rounded) / 1000, decimals);
}

// --- tables

TEST(Columns, AreAsWideAsTheirTextsInCharacters) {
    qlproto::Table table({"hop", "time", "name"}, 2);
    table.add({"a", "7µs", "x"});
    table.add({"bc", "1500ns"});
    EXPECT_EQ(table.text(1), " hop  time    name\n"
                             " a    7µs        x\n"
                             " bc   1500ns\n");
}

// --- distributions

TEST(Distribution, PercentilesAreWithinTheirBoundOfTheExactOnes) {
    std::mt19937_64 random(1);
    for (int bits : {4, 11, 12, 20, 40, 63}) {
        std::vector<int64_t> values;
        Histogram whole, one, other;
        for (int i = 0; i < 20000; ++i) {
            const auto value =
                static_cast<int64_t>(random() >> (64 - bits) >> (random() % static_cast<unsigned>(bits)));
            values.push_back(value);
            whole.add(value);
            (i % 3 == 0 ? one : other).add(value);
        }
        one.merge(other);
        std::sort(values.begin(), values.end());
        for (size_t hundredths : {1u, 5000u, 9000u, 9900u, 9990u, 10000u}) { // of a percent
            const size_t rank = (hundredths * values.size() + 9999) / 10000;
            const int64_t exact = values[rank - 1];
            const double percent = static_cast<double>(hundredths) / 100;
            const int64_t found = whole.percentile(percent);
            EXPECT_LE(std::abs(static_cast<double>(found - exact)),
                      exact < 2048 ? 0 : static_cast<double>(exact) / 2000)
                << percent << " % of " << bits << " bits";
            EXPECT_EQ(one.percentile(percent), found);
        }
        EXPECT_EQ(whole.min(), values.front());
        EXPECT_EQ(whole.max(), values.back());
        EXPECT_EQ(one.count(), values.size());
    }
}

// --- rates over time

TEST(Rate, IsTheSameInWhateverOrderAndPartsMessagesCome) {
    // One message a microsecond for a second, then two: 100,000 nanoseconds are a stretch at most.
    RateSeries forwards, parts[2];
    constexpr int64_t start = 1'709'535'600'000'000'000;
    const auto add = [](RateSeries& series, int64_t i) {
        for (int64_t n = 0; n < (i < 1'000'000 ? 1 : 2); ++n) series.add(start + i * 1000, 10);
    };
    for (int64_t i = 0; i < 2'000'000; ++i) add(forwards, i);
    for (int64_t i = 2'000'000; i-- > 0;) add(parts[i / 1000 % 2], i);
    parts[0].merge(parts[1]);

    for (const RateSeries* series : {&forwards, &parts[0]}) {
        EXPECT_NEAR(series->seconds(), 2, 0.00001);
        const auto rates = series->rates(20, series->first(), series->last());
        for (size_t i = 0; i < 20; ++i) {
            EXPECT_NEAR(rates[i].messages, i < 10 ? 1e6 : 2e6, 1e4) << i;
            EXPECT_NEAR(rates[i].bytes, i < 10 ? 1e7 : 2e7, 1e5) << i;
        }
    }
}

TEST(Rate, StraysDoNotSqueezeTheOthers) {
    for (const bool areMany : {false, true}) {
        RateSeries series;
        const int64_t start = 1'709'535'600'000'000'000, second = 1'000'000'000;
        for (int64_t i = 0; i < 10'000; ++i) series.add(start + i * 100'000, 10);
        for (int i = 0; i < (areMany ? 30 : 5); ++i) series.add(start + (areMany ? 9 : -9 + i % 2 * 18) * second, 10);
        const RateSeries::Span span = series.withoutStrays(2);
        EXPECT_EQ(span.outside, areMany ? 0u : 5u);
        EXPECT_NEAR(static_cast<double>(span.last - span.first), areMany ? 9e9 : 1e9, 4e7); // a stretch at either end
        double messages = 0;
        for (const auto& it : series.rates(50, span.first, span.last))
            messages += it.messages * static_cast<double>(span.last - span.first) / 1e9 / 50;
        EXPECT_NEAR(messages, areMany ? 10'030 : 10'000, 1);
    }
}

TEST_F(Analysis, RatesAreNotStretchedByDamagedTimes) {
    constexpr int64_t second = 1'000'000'000, year = 31'536'000 * second;
    std::vector<ToolFolder::Packet> packets;
    for (int64_t i = 0; i <= 20; ++i)
        packets.emplace_back((i <= 10 ? 10 * year : 10 * year + 7200 * second) + i * second, timer(1));
    packets[5].first += 3 * year;    // one by itself, two side by side, and the last
    packets[8].first += 20 * second; // a little is enough, if the next is back
    packets[15].first -= 2 * year;
    packets[16].first += year;
    packets[20].first = 0;
    folder.store("a.pcap", packets);
    const ToolFolder::Result result = folder.run("qlproto stats --json a.pcap");
    EXPECT_EQ(json::parse(result.out)["seconds"], 7219.0); // the step of two hours is none of them
    EXPECT_EQ(json::parse(result.out)["all"]["count"], 21);
    EXPECT_EQ(result.err.rfind("5 packets at times far from all around", 0), 0u) << result.err;
}

/// Where little happens, packets are far from each other, but none is off.
TEST_F(Analysis, QuietCapturesKeepAllTheirTimes) {
    std::vector<ToolFolder::Packet> packets;
    for (int64_t i = 1; i <= 6; ++i) packets.emplace_back(i * i * 60'000'000'000, timer(1));
    for (; !packets.empty(); packets.pop_back()) {
        folder.store("a.pcap", packets);
        const ToolFolder::Result result = folder.run("qlproto stats --json a.pcap");
        EXPECT_EQ(json::parse(result.out)["seconds"], static_cast<double>(packets.back().first) / 1e9 - 60);
        EXPECT_EQ(result.err, "");
    }
}

// --- plots

TEST(Plot, FillsCellsInEighths) {
    EXPECT_EQ(qlproto::plotCurve({0, 0.001, 4, 9, 16}, 2, "16"), "16 ┤   ▁█\n"
                                                                 " 0 │ ▁▄██\n");
    EXPECT_EQ(qlproto::plotBars({{"a", 16, "16"}, {"bc", 1, "1"}, {"d", 0, "0"}}, 20),
              " a │█████████████ 16\nbc │▉ 1\n d │ 0\n");
}

// --- the commands

TEST_F(Analysis, StatsTellsCountsRatesAndSizes) {
    folder.store("a.pcap",
                 {{1'000'000'000, timer(7)},
                  {1'500'000'000, timer(1'000'000)},
                  {2'000'000'000, timer(8)},
                  {5'000'000'000, ToolFolder::packet<PadMessage>([](PadMessage& it) { it.padding = "xyz"; })}});
    const ToolFolder::Result text = folder.run("qlproto stats a.pcap");
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(text.out, "message       count  bytes  per s  min  median  p99  max\n"
                        "TimerMessage      3     11    0.8    3       3    5    5\n"
                        "PadMessage        1      7    0.2    7       7    7    7\n"
                        "all               4     18    1.0    3       3    7    7\n");

    const auto plot = linesOf(folder.run("COLUMNS=50 qlproto stats --plot a.pcap").out.substr(text.out.size()));
    for (const std::string& line : plot)
        EXPECT_LE(std::count_if(line.begin(), line.end(), [](char c) { return (c & 0xC0) != 0x80; }), 50) << line;
    EXPECT_EQ(plot.size(), 2u + 8 + 2 + 2);

    const json told = json::parse(folder.run("qlproto stats --json a.pcap").out);
    EXPECT_EQ(told["seconds"], 4.0);
    EXPECT_EQ(told["all"], json::parse(R"({"count": 4, "bytes": 18, "perSecond": 1.0,
                                           "sizes": {"min": 3, "median": 3, "p99": 7, "max": 7}})"));
    EXPECT_EQ(told["messages"]["TimerMessage"]["bytes"], 11);
    EXPECT_EQ(told["messages"].size(), 2u);
}

TEST_F(Analysis, LatencyTellsEachHop) {
    const auto submit = [](int64_t client, int64_t server, int64_t handler) {
        return ToolFolder::packet<SubmitOrderMessage>([&](SubmitOrderMessage& it) {
            it.contents.timeApiClient = client;
            it.contents.timeApiServer = server;
            it.contents.timeHandler = handler;
        });
    };
    const auto received = ToolFolder::packet<OrderReceivedMessage>([](OrderReceivedMessage& it) {
        it.contents.timeApiServer = 1000;
        it.contents.timeApiClient = 1'001'000;
    });
    const auto data = ToolFolder::packet<MktDataMessage>([](MktDataMessage& it) {
        it.mvd.timeExchange = INT64_MIN; // from a stranger: the difference is beyond 64 bits
        it.mvd.timeArrival = INT64_MAX;
    });
    const auto imHere = ToolFolder::packet<ImHereMessage>([](ImHereMessage& it) {
        it.timeApiClient = 1;
        it.timeApiServer = 2;
    });
    folder.store("a.pcap", {{1, submit(1000, 1640, 13990)},
                            {2, submit(1000, 1500, 0)},
                            {3, submit(2000, 1600, 1700)},
                            {4, received},
                            {5, data},
                            {6, imHere}});
    const ToolFolder::Result result = folder.run("qlproto latency a.pcap");
    EXPECT_EQ(result.exitCode, 0);
    std::vector<std::string> rows;
    for (const std::string& line : linesOf(result.out)) {
        std::istringstream words(line);
        std::string row;
        for (std::string word; words >> word;) row += (row.empty() ? "" : " ") + word;
        rows.push_back(row);
    }
    const std::vector<std::string> expected = {
        "message hop count p50 p90 p99 p99.9 max unset negative lowest",
        "MktDataMessage exchange->arrival 1 9223372037s 9223372037s 9223372037s 9223372037s 9223372037s 0 0 -",
        "MktDataMessage arrival->handler 0 - - - - - 1 0 -",
        "MktDataMessage handler->enhanced 0 - - - - - 1 0 -",
        "MktDataMessage enhanced->server 0 - - - - - 1 0 -",
        "MktDataMessage server->client 0 - - - - - 1 0 -",
        "MktDataMessage exchange->client 0 - - - - - 1 0 -",
        "SubmitOrderMessage client->server 2 500ns 640ns 640ns 640ns 640ns 0 1 -400ns",
        "SubmitOrderMessage server->handler 2 100ns 12.35µs 12.35µs 12.35µs 12.35µs 1 0 -",
        "SubmitOrderMessage client->handler 1 12.99µs 12.99µs 12.99µs 12.99µs 12.99µs 1 1 -300ns",
        "OrderReceivedMessage server->client 1 1.000ms 1.000ms 1.000ms 1.000ms 1.000ms 0 0 -",
    };
    ASSERT_GE(rows.size(), expected.size());
    EXPECT_EQ(std::vector(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(expected.size())), expected);
    EXPECT_EQ(rows.size(), expected.size() + 9) << "the hops of all messages, server->client once";

    const json told = json::parse(folder.run("qlproto latency --json a.pcap").out);
    EXPECT_EQ(told["messages"]["SubmitOrderMessage"][1],
              json::parse(R"({"from": "server", "to": "handler", "count": 2, "unset": 1, "negative": 0, "min": 100,
                              "p50": 100, "p90": 12350, "p99": 12350, "p99.9": 12350, "max": 12350})"));
    EXPECT_FALSE(told["messages"].contains("ImHereMessage"));
}

TEST_F(Analysis, MadeUpSessionsPassAllStationsInOrder) {
    qlproto::MessageReader reader;
    qlproto::LatencyStats latency;
    std::map<size_t, uint64_t> counts;
    for (const Sent& it : session(3, 20000)) {
        ASSERT_TRUE(reader.read(it.bytes)) << reader.fault();
        latency.add({it.time, it.bytes}, reader);
        ++counts[static_cast<size_t>(reader.descriptor().index())];
    }
    for (const auto& [message, count] : counts)
        for (const auto& hop : latency.byMessage()[message])
            EXPECT_EQ(hop.times.count(), count) << "no hop is unset or negative";
}

// Many batches, some of them damaged: several threads find what one finds, and tell of the same faults.
TEST_F(Analysis, ThreadsGatherWhatOneThreadGathers) {
    const std::string backwards = ToolFolder::packet<SubmitOrderMessage>([](SubmitOrderMessage& it) {
        it.contents.timeApiClient = 2000;
        it.contents.timeApiServer = 1600; // and no time at the handler
    });
    std::vector<ToolFolder::Packet> packets;
    for (const Sent& it : session(5, 60000)) packets.emplace_back(it.time, packets.size() % 50 ? it.bytes : backwards);
    folder.store("a.pcap", packets);
    std::string bytes = folder.content("a.pcap");
    std::mt19937 random(11);
    for (int i = 0; i < 100; ++i) bytes[24 + random() % (bytes.size() - 24)] = static_cast<char>(random());
    folder.write("b.pcap", bytes);

    using Faults = std::vector<std::pair<uint64_t, std::string>>;
    Faults ofOne, ofMany;
    const auto listen = [](qlproto::CaptureScan& scan, Faults& faults) {
        scan.onFault([&faults](const qlproto::CaptureScan::Fault& it) { faults.emplace_back(it.packet, it.text); });
    };
    qlproto::CaptureScan one, many;
    listen(one, ofOne);
    listen(many, ofMany);
    qlproto::LatencyStats expected;
    one.run({folder.path("b.pcap")}, [&](const auto& packet, const auto& reader) { expected.add(packet, reader); });
    const auto found = many.gather<qlproto::LatencyStats>({folder.path("b.pcap")});

    EXPECT_GT(one.messages(), 59000u);
    EXPECT_EQ(many.messages(), one.messages());
    EXPECT_EQ(many.packets(), one.packets());
    EXPECT_GT(ofOne.size(), 10u);
    EXPECT_EQ(ofMany, ofOne);
    const auto tell = [](const qlproto::LatencyStats& stats) {
        std::vector<std::tuple<uint64_t, int64_t, int64_t, int64_t, uint64_t, uint64_t, int64_t>> told;
        for (const auto& hops : stats.byMessage())
            for (const auto& it : hops) {
                const bool any = it.times.count() != 0;
                told.emplace_back(it.times.count(), any ? it.times.min() : 0, any ? it.times.percentile(50) : 0,
                                  any ? it.times.max() : 0, it.unset, it.negative, it.mostNegative);
            }
        return told;
    };
    EXPECT_EQ(tell(found), tell(expected));
}

// Two users use the same clOrdID; a cancellation of all cancels orders of both; packet 4 comes late.
TEST_F(Analysis, TraceFollowsIdentifiersFromMessageToMessage) {
    const auto of = []<class Message>(Velmora::of<Message>, int32_t user, int64_t orderID, const char* clOrdID,
                                      const char* exOrdID = "", const char* cxlID = "", const char* newID = "") {
        return ToolFolder::packet<Message>([&](Message& it) {
            it.userID = user;
            it.contents.orderID = orderID;
            it.contents.clOrdID = clOrdID;
            if constexpr (requires { it.contents.exOrdID; }) it.contents.exOrdID = exOrdID;
            if constexpr (requires { it.contents.cxlID; }) it.contents.cxlID = cxlID;
            if constexpr (requires { it.contents.clNewID; }) it.contents.clNewID = newID;
        });
    };
    const Velmora::of<OrderReceivedMessage> received;
    const Velmora::of<OrderSubmittedMessage> submitted;
    const Velmora::of<OrderCanceledMessage> canceled;
    const Velmora::of<ModifyOrderMessage> modify;
    std::vector<std::string> packets = {
        of(received, 1, 100, "a"),
        of(received, 2, 200, "a"),
        ToolFolder::packet<NewOrderMessage>([](NewOrderMessage& it) {
            it.contents.clOrdID = "n";
            it.contents.orderID = "100"; // a text: no order 100 of the order flow
            it.contents.execID = "x";
            it.contents.quoteID = "q-bid";
            it.contents.quoteReqID = "q";
        }),
        of(modify, 1, 0, "a", "", "", "b"),
        of(submitted, 1, 100, "", "E1"),
        ToolFolder::packet<CancelAllOrderMessage>([](CancelAllOrderMessage& it) { it.contents.cxlID = "all"; }),
        of(canceled, 1, 0, "b", "", "all"),
        of(canceled, 2, 200, "a", "", "all"),
        of(canceled, 3, 300, "c", "", "all"),
        ToolFolder::packet<TradeCaptureAckMessage>([](TradeCaptureAckMessage& it) { it.contents.execID = "x"; }),
        ToolFolder::packet<ConnectResponseMessage>([](ConnectResponseMessage& it) { it.sessionID = 9; }),
        ToolFolder::packet<InternalClientInfoMessage>([](InternalClientInfoMessage& it) {
            it.userID = 2;
            it.sessionID = 9;
        }),
    };
    std::vector<ToolFolder::Packet> capture;
    for (size_t i = 0; i < packets.size(); ++i)
        capture.emplace_back(static_cast<int64_t>(i + 1) * 1'000'000 + (i == 3 ? 1'500'000 : 0), packets[i]);
    folder.store("a.pcap", capture);

    struct Case {
        const char* subject;
        std::vector<uint64_t> packets;
    };
    const Case cases[] = {
        {"--order E1 --user 1", {1, 5, 4, 6, 7}}, // by its third name; the first is learnt in between
        {"--order 200 --user 2", {2, 6, 8}},
        {"--order 300", {6, 9}},
        {"--order a", {1, 2, 5, 4, 6, 7, 8}}, // without a user, the orders of both
        {"--order n", {3, 10}},
        {"--quote q-bid", {3, 10}},
        {"--quote x", {}},
        {"--user 2", {2, 8, 11, 12}},
        {"--user 0", {}},
    };
    for (const Case& it : cases) {
        const ToolFolder::Result result = folder.run("qlproto trace a.pcap --json " + std::string(it.subject));
        EXPECT_EQ(result.exitCode, 0);
        std::vector<uint64_t> found;
        for (const std::string& line : linesOf(result.out)) found.push_back(json::parse(line)["packet"]);
        EXPECT_EQ(found, it.packets) << it.subject;
    }
    EXPECT_EQ(folder.run("qlproto trace a.pcap --order n").out,
              "packet  time         gap       message                 fields\n"
              "3       0.003000000  +0ns      NewOrderMessage         clOrdID=\"n\" orderID=\"100\" execID=\"x\" "
              "quoteID=\"q-bid\" quoteReqID=\"q\"\n"
              "10      0.010000000  +7.000ms  TradeCaptureAckMessage  execID=\"x\"\n");
    EXPECT_EQ(folder.run("qlproto trace a.pcap --order n --quote q").exitCode, 2);
}

// Each message tells of the one before it in the capture: none can be known by what came earlier.
TEST_F(Analysis, TraceFollowsLongChainsAndNeedsToReadOnce) {
    constexpr int length = 20000;
    std::vector<ToolFolder::Packet> packets;
    for (int i = length; i > 0; --i)
        packets.emplace_back(length - i, ToolFolder::packet<ModifyOrderMessage>([&](ModifyOrderMessage& it) {
                                 it.contents.clOrdID = std::to_string(i).c_str();
                                 it.contents.clNewID = std::to_string(i + 1).c_str();
                             }));
    folder.store("a.pcap", packets);
    const auto whole = folder.run("qlproto trace --json --order 1 a.pcap");
    EXPECT_EQ(whole.lines(), length);
    for (const char* command :
         {"cat a.pcap | qlproto trace --json --order 1 -", "qlproto trace --json --order 1 <(cat a.pcap)",
          "qlproto trace --json --order 1 - <a.pcap"}) {
        const auto result = folder.run(command);
        EXPECT_EQ(result.exitCode, 0) << command;
        EXPECT_TRUE(result.out == whole.out) << command;
    }
}

TEST_F(Analysis, SpooledPacketsComeBackFromMemoryAndFromAFile) {
    const std::vector<Sent> sent = session(3, 1000);
    for (const uint64_t count : {0u, 10u, 200'000u}) { // the last are more than is kept in memory
        qlproto::PacketSpool spool;
        for (uint64_t i = 0; i < count; ++i) spool.add({sent[i % 1000].time, sent[i % 1000].bytes}, i);
        uint64_t expected = 0;
        spool.forEach([&](const Capture::Packet& packet, uint64_t number) {
            ASSERT_EQ(number, expected);
            ASSERT_EQ(packet.time, sent[expected % 1000].time);
            ASSERT_EQ(packet.bytes, sent[expected++ % 1000].bytes);
        });
        EXPECT_EQ(expected, count);
    }
}

TEST_F(Analysis, DiffTellsWhatIsInOneOnlyAndWhichFieldsDiffer) {
    const auto quotes = [](int64_t time, const std::vector<std::string>& ids) {
        return ToolFolder::packet<MassQuoteMessage>([&](MassQuoteMessage& it) {
            it.contents.timeApiClient = time;
            for (const std::string& id : ids) it.contents.quotes.add_back().quoteID = id;
        });
    };
    const auto connect = [](const char* password) {
        return ToolFolder::packet<ClientConnectMessage>([&](ClientConnectMessage& it) { it.password = password; });
    };
    std::vector<ToolFolder::Packet> a, b;
    for (int i = 1; i <= 20; ++i) a.emplace_back(i, timer(i));
    b = a;
    a[18].second = quotes(5, {"x\x1B", "y"});
    b[18].second = quotes(6, {"z"});
    b[16].second = std::string(b[16].second).append("trailing");
    b[14].second = connect("hunter2");
    a[14].second = connect("hunter3");
    b.insert(b.begin() + 9, {7, connect("")}); // packet 10
    b[6].second = timer(70);
    b.erase(b.begin() + 2); // packet 3 of the first
    folder.store("a.pcap", a);
    folder.store("b.pcap", b);

    const ToolFolder::Result result = folder.run("qlproto diff a.pcap b.pcap");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "< 3 TimerMessage\n"
                          "! 7 6 TimerMessage\n"
                          "    tqid: 7 -> 70\n"
                          "> 9 ClientConnectMessage\n"
                          "! 15 15 ClientConnectMessage\n"
                          "    password: *** -> ***\n"
                          "! 17 17 TimerMessage\n"
                          "    in the other a bad packet: TimerMessage: trailing bytes at byte 1\n"
                          "! 19 19 MassQuoteMessage\n"
                          "    contents.quotes[0].quoteID: \"x\\u001b\" -> \"z\"\n"
                          "    contents.quotes[1].quoteID: \"y\" -> nothing\n"
                          "    contents.quotes[1].price: 0 -> nothing\n"
                          "    contents.quotes[1].amount: 0 -> nothing\n"
                          "    contents.quotes[1].side: 0 -> nothing\n"
                          "    contents.quotes[1].detail: \"\" -> nothing\n"
                          "    contents.timeApiClient: 5 -> 6\n"
                          "equal 15, different 4, only in the first 1, only in the second 1\n");
    const std::string ends = "and 5 more\nequal 15, different 4, only in the first 1, only in the second 1\n";
    EXPECT_TRUE(folder.run("qlproto diff --differences 1 a.pcap b.pcap").out.ends_with(ends));
    EXPECT_TRUE(folder.run("qlproto diff --ignore timeApiClient,quotes a.pcap b.pcap")
                    .out.ends_with("\nequal 16, different 3, only in the first 1, only in the second 1\n"));

    EXPECT_EQ(folder.run("cat a.pcap | qlproto diff - a.pcap").exitCode, 0);
    EXPECT_EQ(folder.run("qlproto diff - -").exitCode, 2);
    const ToolFolder::Result misspelt = folder.run("qlproto diff --ignore side,timeApiClent a.pcap b.pcap");
    EXPECT_EQ(misspelt.exitCode, 2);
    EXPECT_NE(misspelt.err.find("no message has a field 'timeApiClent'; did you mean timeApiClient"), std::string::npos)
        << misspelt.err;

    // Without elements or with some of which every field is ignored: not the same.
    folder.store("a.pcap", {{1, quotes(5, {})}});
    folder.store("b.pcap", {{1, quotes(5, {"x"})}});
    EXPECT_EQ(folder.run("qlproto diff --ignore quoteID,price,amount,side,detail a.pcap b.pcap").out,
              "! 1 1 MassQuoteMessage\n"
              "    contents.quotes: [] -> nothing\n"
              "equal 0, different 1, only in the first 0, only in the second 0\n");
    folder.store("a.pcap", {{1, quotes(5, {"x", "y"})}});
    EXPECT_TRUE(folder.run("qlproto diff --ignore quoteID,price,amount,side,detail a.pcap b.pcap")
                    .out.starts_with("! 1 1 MassQuoteMessage\n    other numbers of elements"));

    // Reading a pad can lose the end of its text.
    folder.store("a.pcap", {{1, std::string("\x02\0\x03\0abc", 7)}});
    folder.store("b.pcap", {{1, std::string("\x02\0\x03\0abd", 7)}});
    EXPECT_EQ(folder.run("qlproto diff --ignore timeApiClient a.pcap b.pcap").exitCode, 1);
    EXPECT_EQ(folder.run("qlproto diff --ignore padding a.pcap b.pcap").exitCode, 0);
}

// What is taken out of a session here and put in there is found, even if it is more than what is laid side by side.
TEST_F(Analysis, DiffFindsTheWayBackAfterLongGaps) {
    std::vector<ToolFolder::Packet> whole;
    for (const Sent& it : session(5, 20000)) whole.emplace_back(it.time, it.bytes);
    std::vector<ToolFolder::Packet> other = whole;
    other.erase(other.begin() + 15000, other.begin() + 18000);
    other.erase(other.begin() + 100, other.begin() + 103);
    other.insert(other.begin() + 5000, 1700, {0, timer(-1)});
    folder.store("a.pcap", whole);
    folder.store("b.pcap", other);
    EXPECT_TRUE(folder.run("qlproto diff a.pcap b.pcap")
                    .out.ends_with("equal 16997, different 0, only in the first 3003, only in the second 1700\n"));
}

// Messages of one order each, and what became of it.
TEST_F(Analysis, ReportCountsOrdersByOutcome) {
    int64_t id = 0;
    std::vector<ToolFolder::Packet> packets;
    const auto tell = [&]<class Message>(Velmora::of<Message>, auto fill) {
        packets.emplace_back(1, ToolFolder::packet<Message>([&](Message& it) {
                                 it.contents.orderID = id;
                                 fill(it.contents);
                             }));
    };
    const auto nothing = [](auto&) {};
    const auto submit = [&] { tell(Velmora::of<SubmitOrderMessage>{}, nothing); };
    const auto fill = [&] { tell(Velmora::of<TradeCaptureMessage>{}, nothing); };
    const auto done = [&] { tell(Velmora::of<OrderDoneMessage>{}, nothing); };
    const auto cancel = [&](CancelReason::Type reason) {
        tell(Velmora::of<OrderCanceledMessage>{}, [&](OrderCanceled& it) { it.reason = reason; });
    };
    ++id, submit();                                                               // still open
    ++id, cancel(CancelReason::BY_ADMIN), submit();                               // canceled
    ++id, submit(), cancel(CancelReason::ORDER_MODIFIED), fill(), fill(), done(); // filled
    ++id, submit(), fill();                                                       // filled in part, still open
    ++id, fill(), cancel(CancelReason::BY_EXCHANGE), done();                      // filled in part, then canceled
    ++id, done();                                                                 // done without a fill
    ++id, tell(Velmora::of<OrderRejectedMessage>{}, nothing);                     // rejected
    ++id, tell(Velmora::of<OrderSubmittedMessage>{}, [](OrderSubmitted& it) { it.ordStatus = OrderStatus::FILLED; });
    id = 0, submit(); // of no order
    for (const char* order : {"a", "b", "c"})
        packets.emplace_back(
            1, ToolFolder::packet<NewOrderMessage>([&](NewOrderMessage& it) { it.contents.clOrdID = order; }));
    packets.emplace_back(
        1, ToolFolder::packet<AcceptOrderMessage>([](AcceptOrderMessage& it) { it.contents.clOrdID = "a"; }));
    packets.emplace_back(
        1, ToolFolder::packet<OrderTimeoutMessage>([](OrderTimeoutMessage& it) { it.contents.clOrdID = "b"; }));
    folder.store("a.pcap", packets);

    const json data = pageData(folder.run("qlproto report a.pcap -o -").out);
    EXPECT_EQ(data["orders"], json::parse(R"([{"name": "rejected", "orders": 1},
                                              {"name": "filled in part, then canceled", "orders": 1},
                                              {"name": "canceled", "orders": 1},
                                              {"name": "filled", "orders": 2},
                                              {"name": "filled in part, still open", "orders": 1},
                                              {"name": "done without a fill", "orders": 1},
                                              {"name": "still open", "orders": 1}])"));
    EXPECT_EQ(data["newOrders"], json::parse(R"([{"name": "rejected", "orders": 0},
                                                 {"name": "accepted", "orders": 1},
                                                 {"name": "timed out", "orders": 1},
                                                 {"name": "unanswered", "orders": 1}])"));
    const json totals = json::parse(folder.run("qlproto orders --totals --json a.pcap").out)["totals"]["outcome"];
    for (const json& it : data["orders"]) EXPECT_EQ(totals[it["name"].get<std::string>()]["count"], it["orders"]);
}

TEST_F(Analysis, OrdersAndQuotesAreTellingRowsOfTheirOwn) {
    std::vector<ToolFolder::Packet> packets;
    const auto tell = [&]<class Message>(Velmora::of<Message>, int64_t time, auto fill) {
        packets.emplace_back(time, ToolFolder::packet<Message>([&](Message& it) {
                                 it.contents.feedID = 2;
                                 it.contents.marketID = 7;
                                 fill(it.contents);
                             }));
    };
    const auto order = [&]<class Message>(Velmora::of<Message> of, int64_t time, int64_t id, auto fill) {
        tell(of, time, [&](auto& it) {
            it.orderID = id;
            it.clOrdID = "a,\"b";
            fill(it);
        });
    };
    const auto trade = [](int64_t amount) { return [=](auto& it) { it.amount = amount; }; };
    order(Velmora::of<TradeCaptureMessage>{}, 1500, 1, trade(150)); // comes early
    order(Velmora::of<SubmitOrderMessage>{}, 1000, 1, [](auto& it) {
        it.side = Side::OFR;
        it.amount = 400;
        it.price = 105;
    });
    order(Velmora::of<OrderSubmittedMessage>{}, 1200, 1, [](auto& it) { it.exOrdID = "E"; });
    order(Velmora::of<TradeCaptureMessage>{}, 1600, 1, trade(INT64_MAX)); // from a stranger
    order(Velmora::of<OrderRejectedMessage>{}, 1700, 2, [](auto& it) {
        it.feedID = 3;
        it.reason = RejectReason::CREDIT_LOW;
        it.text = "no credit";
    });
    order(Velmora::of<OrderDoneMessage>{}, 2500, 1, [](auto&) {});
    const auto quote = [](const char* id, const char* client) {
        return [=](auto& it) {
            if constexpr (requires { it.quoteReqID; }) it.quoteReqID = id;
            if constexpr (requires { it.clOrdID; }) it.clOrdID = client;
        };
    };
    tell(Velmora::of<QuoteRequestMessage>{}, 100, quote("Q1", ""));
    tell(Velmora::of<MassQuoteMessage>{}, 150, quote("Q1", ""));
    tell(Velmora::of<NewOrderMessage>{}, 200, quote("Q1", "c"));
    tell(Velmora::of<OrderTimeoutMessage>{}, 300, quote("", "c")); // names the order alone
    tell(Velmora::of<QuoteRequestMessage>{}, 400, quote("Q2", ""));
    folder.store("a.pcap", packets);

    const std::string all = folder.run("qlproto orders --csv --price-scale 100 a.pcap").out;
    EXPECT_EQ(all,
              "orderID,clOrdID,exOrdID,user,feed,market,side,amount,filled,price,outcome,reason,text,packet,time,"
              "submitted,received,accepted,traded,ended,duration\n"
              "1,\"a,\"\"b\",E,,2,7,OFR,4,92233720368547758.07,1.05,filled,,,1,0.000001500,0.000001000,,0.000001200,"
              "0.000001500,0.000002500,1000\n"
              "2,\"a,\"\"b\",,,3,7,,0,0,0,rejected,CREDIT_LOW,no credit,5,0.000001700,,,,,0.000001700,0\n");
    const std::string rejected = linesOf(all)[2];
    for (const char* filter :
         {"--outcome rejected", "--where feedID=3", "--message OrderRejectedMessage", "--where 'text~credit'",
          "--where reason=CREDIT_LOW", "--from 0.0000017 --to 0.0000018", "--sort time --where feedID!=2"})
        EXPECT_EQ(linesOf(folder.run("qlproto orders --csv a.pcap " + std::string(filter)).out)[1], rejected) << filter;
    EXPECT_EQ(linesOf(folder.run("qlproto orders --csv --sort duration --first 1 a.pcap").out).size(), 2u);
    EXPECT_EQ(folder.run("qlproto orders --outcome lost a.pcap").exitCode, 2);
    const auto quotes = linesOf(folder.run("qlproto quotes --csv a.pcap").out);
    EXPECT_TRUE(quotes.size() == 3 && quotes[0].ends_with(",time,requested,quoted,ordered,answered,ended,duration"));
    EXPECT_EQ(quotes[1], "Q1,c,,,2,7,,0,0,0,order timed out,,,7,0.000000100,0.000000100,0.000000150,0.000000200,"
                         "0.000000300,,200");
    EXPECT_EQ(quotes[2], "Q2,,,,2,7,,0,0,0,requested,,,11,0.000000400,0.000000400,,,,,0");
}

// By a field whose value each message has but once: the same as of the messages with that value alone.
TEST_F(Analysis, GroupsAreWhatFiltersTake) {
    ASSERT_EQ(folder.run("qlproto generate --messages 20000 --seed 7 -o a.pcap").exitCode, 0);
    const auto told = [&](const std::string& command) {
        return json::parse(folder.run("qlproto " + command + " a.pcap").out);
    };
    for (const char* command : {"stats --json ", "latency --json "}) {
        const json by = told(std::string(command) + "--by contents.feedID");
        EXPECT_GE(by["groups"].size(), 3u);
        for (const auto& [feed, group] : by["groups"].items()) {
            if (feed.starts_with('(')) continue;
            json alone = told(command + ("--where contents.feedID=" + feed))["all"], grouped = group;
            if (alone.is_object()) alone.erase("perSecond"), grouped.erase("perSecond");
            EXPECT_EQ(grouped, alone) << command << feed;
        }
    }
    const json all = told("stats --json --by contents.timeApiClient");
    EXPECT_GT(all["groups"]["(others)"]["count"], 0) << "there are more times than groups";
    uint64_t sum = 0;
    for (const json& group : all["groups"]) sum += group["count"].get<uint64_t>();
    EXPECT_EQ(sum, all["all"]["count"]);

    const auto rows = linesOf(folder.run("qlproto latency --by feedID --sort p99 --csv a.pcap").out);
    EXPECT_EQ(rows[0], "feedID,hop,count,p50,p90,p99,p99.9,max,unset,negative,lowest");
    const auto p99 = [](const std::string& row) {
        std::istringstream cells(row);
        std::string cell;
        for (int i = 0; i < 6; ++i) std::getline(cells, cell, ',');
        return std::stoll(cell);
    };
    for (size_t i = 2; i < rows.size() && !rows[i].starts_with("all,"); ++i) EXPECT_GE(p99(rows[i - 1]), p99(rows[i]));
    EXPECT_EQ(folder.run("qlproto stats --by fedID a.pcap").exitCode, 2);
}

TEST_F(Analysis, SlowestPacketsAreNamed) {
    std::vector<ToolFolder::Packet> packets;
    for (const auto& [client, server, handler] : std::vector<std::array<int64_t, 3>>{{1000, 1100, 1500},
                                                                                     {1000, 2500, 2600},
                                                                                     {1000, 2300, 2800},
                                                                                     {1000, 0, 9000},
                                                                                     {1000, 5000, 900},
                                                                                     {0, 0, 7},
                                                                                     {INT64_MIN, 1, INT64_MAX}})
        packets.emplace_back(5, ToolFolder::packet<SubmitOrderMessage>(
                                    [&, client = client, server = server, handler = handler](SubmitOrderMessage& it) {
                                        it.userID = static_cast<int32_t>(packets.size());
                                        it.contents.timeApiClient = client;
                                        it.contents.timeApiServer = server;
                                        it.contents.timeHandler = handler;
                                    }));
    folder.store("a.pcap", packets);
    EXPECT_EQ(folder.run("qlproto latency --slowest 2 --by userID --csv a.pcap").out,
              "packet,time,message,way,took,slowest hop,it took,userID\n"
              "4,0.000000005,SubmitOrderMessage,client->handler,8000,client->handler,8000,3\n"
              "3,0.000000005,SubmitOrderMessage,client->handler,1800,client->server,1300,2\n");
    EXPECT_EQ(json::parse(folder.run("qlproto latency --slowest 9 --json a.pcap").out)["slowest"].size(), 4u);
}

/// The values of CSV that holds no quotes, row by row.
std::vector<std::vector<std::string>> cellsOf(const std::string& csv) {
    std::vector<std::vector<std::string>> rows;
    for (std::string line : linesOf(csv)) {
        std::vector<std::string>& row = rows.emplace_back();
        std::istringstream cells(line += ',');
        for (std::string cell; std::getline(cells, cell, ',');) row.push_back(cell);
    }
    rows.erase(rows.begin()); // names
    return rows;
}

TEST_F(Analysis, TheStoryOfAnIncidentIsFoundByTheCommands) {
    const auto told = [&](const std::string& command) { return folder.run("qlproto " + command + " a.pcap").out; };
    const auto decoded = [&](const std::string& fields, const std::string& which) {
        return cellsOf(told("decode --format csv --fields " + fields + " " + which));
    };
    std::set<json> stories, feeds, reasons;
    std::set<std::string> users;
    for (int seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        ASSERT_EQ(folder
                      .run(fmt::format("qlproto generate --profile incident --messages {} --seed {} --truth truth "
                                       "-o a.pcap",
                                       5000 + 100 * seed, seed))
                      .exitCode,
                  0);
        json found{{"seed", seed}};

        // The feed whose market data took longest from the exchange, and those that took more than any usually does.
        std::string feed;
        int64_t longest = -1;
        const json latency = json::parse(told("latency --by feedID --message MktDataMessage --json"));
        for (const auto& [name, hops] : latency["groups"].items())
            if (const int64_t p99 = hops[0]["p99"]; p99 > longest) longest = p99, feed = name;
        json& slow = found["slowFeed"] = {{"feedID", std::stoi(feed)}, {"message", "MktDataMessage"}, {"messages", 0}};
        const json& hop = latency["groups"][feed][0];
        slow["hop"] = hop["from"].get<std::string>() + "->" + hop["to"].get<std::string>();
        slow["longest"] = hop["max"];
        for (const auto& row :
             decoded("time,timeExchange,timeArrival", "--message MktDataMessage --where feedID=" + feed)) {
            if (std::stoll(row[2]) - std::stoll(row[1]) < 1'000'000) continue;
            if (slow["messages"] == 0) slow["from"] = row[0];
            slow["to"] = row[0];
            slow["messages"] = slow["messages"].get<int>() + 1;
        }

        // The user and the reason with most rejections.
        std::map<std::pair<std::string, std::string>, int> rejections;
        const json orders = json::parse(told("orders --outcome rejected --json"));
        for (const json& order : orders["orders"])
            ++rejections[{fmt::format("{}", order["user"].get<int>()), order["reason"]}];
        const auto most = std::ranges::max_element(rejections, {}, [](const auto& it) { return it.second; });
        const auto& [user, reason] = most->first;
        const auto rejected =
            decoded("time,text", "--message OrderRejectedMessage --where userID=" + user + " --where reason=" + reason);
        found["rejects"] = {{"userID", std::stoi(user)},   {"reason", reason},         {"text", rejected[0][1]},
                            {"from", rejected.front()[0]}, {"to", rejected.back()[0]}, {"orders", most->second}};

        // Numbers of reports to a user that do not follow each other.
        std::map<std::string, int> sequences;
        for (const auto& row : decoded("time,userID,sequenceID",
                                       "--message 'Order*' --message TradeCaptureMessage --message DropCopyMessage")) {
            if (row[1].empty() || row[2].empty()) continue;
            const int next = std::stoi(row[2]);
            int& last = sequences[row[1]];
            if (next != last + 1)
                found["gap"] = {{"userID", std::stoi(row[1])},
                                {"time", row[0]},
                                {"last", last},
                                {"next", next},
                                {"missing", next - last - 1}};
            last = next;
        }

        // The first client that disconnects, and its orders that this canceled; it sends no others.
        const auto first = decoded("time,sessionID", "--message ClientDisconnectMessage --first 1")[0];
        const std::string gone =
            decoded("userID", "--message InternalClientInfoMessage --where sessionID=" + first[1])[0][0];
        const auto canceled = cellsOf(told("orders --csv --where 'text~disconnected' --where userID=" + gone));
        found["disconnect"] = {{"userID", std::stoi(gone)}, {"time", first[0]}, {"canceledOrders", canceled.size()}};
        for (const auto& row :
             decoded("time", "--message SubmitOrderMessage --where userID=" + gone + " --from " + first[0]))
            EXPECT_EQ(row[0], first[0]) << "in the same moment, but before";
        EXPECT_GT(canceled.size(), 0u);

        json truth = json::parse(folder.content("truth"));
        for (const char* part : {"rejects", "gap", "disconnect"}) truth[part].erase("user");
        EXPECT_EQ(found, truth);
        EXPECT_EQ(folder.run("qlproto verify a.pcap").exitCode, 0);
        EXPECT_EQ(linesOf(told("decode")).size(), 5000u + 100u * static_cast<unsigned>(seed));
        truth.erase("seed");
        stories.insert(truth);
        feeds.insert(truth["slowFeed"]["feedID"]);
        reasons.insert(truth["rejects"]["reason"]);
        for (const std::string part : {"rejects", "gap", "disconnect"})
            users.insert(part + truth[part]["userID"].dump());
    }
    EXPECT_EQ(stories.size(), 20u);
    EXPECT_EQ(feeds.size(), 3u);
    EXPECT_EQ(reasons.size(), 4u);
    EXPECT_EQ(users.size(), 8u) << "three and three and two, for the first stays connected";
    // Until something goes wrong, which is not before a tenth of it, the session is what it is without.
    ASSERT_EQ(folder.run("qlproto generate --messages 7000 --seed 20 -o usual.pcap").exitCode, 0);
    const std::string usual = folder.content("usual.pcap"), incident = folder.content("a.pcap");
    EXPECT_EQ(usual.substr(0, usual.size() / 10), incident.substr(0, usual.size() / 10));
    EXPECT_NE(usual, incident);
    EXPECT_EQ(folder.run("qlproto generate --profile incident --messages 4999 -o a.pcap").exitCode, 2);
    EXPECT_EQ(folder.run("qlproto generate --truth t -o a.pcap").exitCode, 2);
}

// A terminal of the size of most: what is shown while more is awaited, and what remains. Commands say "[A" to go up.
TEST_F(Analysis, WhatComesBitByBitIsShownAgainAndAgainOnATerminal) {
    ASSERT_EQ(folder.run("qlproto generate --messages 3000 --seed 7 -o a.pcap").exitCode, 0);
    for (const char* command :
         {"stats", "stats --by feedID", "latency", "latency --by feedID", "latency --slowest 3"}) {
        SCOPED_TRACE(command);
        const std::string whole = folder.run(std::string("qlproto ") + command + " a.pcap").out;
        const auto onTerminal = [&](const std::string& line) {
            folder.write("line", "qlproto() { '" QLPROTO_TOOL "' \"$@\"; }; stty cols 200 rows 30; " + line);
            std::string shown = folder.run("script -qec '. ./line' /dev/null </dev/null | tr -d '\\r'").out;
            return shown;
        };
        const std::string shown = onTerminal("(head -c 100000 a.pcap; sleep 1; tail -c +100001 a.pcap) | qlproto "
                                             + std::string(command) + " --quiet -");
        const size_t up = shown.find("\x1B[");
        ASSERT_NE(up, shown.npos) << shown;
        const std::string first = shown.substr(0, up);
        EXPECT_LE(linesOf(first).size(), 29u) << "no more than the screen holds";
        EXPECT_EQ(first.substr(0, 4), whole.substr(0, 4)) << "of the header";
        EXPECT_NE(first, whole) << "half of the capture";
        EXPECT_TRUE(shown.ends_with("\x1B[J" + whole)) << shown;
        EXPECT_EQ(onTerminal(std::string("qlproto ") + command + " --quiet a.pcap"), whole) << "nothing is awaited";
        EXPECT_EQ(folder.run("qlproto " + std::string(command) + " - <a.pcap").out, whole);
        EXPECT_EQ(folder.run("cat a.pcap | qlproto " + std::string(command) + " -").out, whole) << "no terminal";
    }
    EXPECT_EQ(qlproto::fitted("abc\nµµµd\n", 2, 2), "ab\nµµ\n");
    EXPECT_EQ(qlproto::fitted("a\nb\nc\nd\n", 9, 3), "a\n... 2 more\nd\n");
}

// The page in a browser: what its tables say, and that its charts have been drawn.
TEST_F(Analysis, ReportShowsFiguresAndChartsInABrowser) {
    const std::string hostile = "a</script><img src=x onerror=console.error(1)>&amp;.pcap"; // a file in the folder "a<"
    std::filesystem::create_directory(folder.path("a<"));
    ASSERT_EQ(folder.run("qlproto generate --messages 5000 --seed 7 -o a.pcap").exitCode, 0);
    std::string bytes = folder.content("a.pcap");
    bytes[24 + 16] = '\x03'; // the first packet becomes one of an unknown message
    bytes[24 + 16 + static_cast<unsigned char>(bytes[24 + 8])] += 50; // and the second one of 50 s later
    folder.write(hostile, bytes);
    folder.store("empty.pcap", {});

    struct Case {
        std::string capture;
        int exitCode;
        size_t charts;
    };
    const Case cases[] = {{"a.pcap", 0, 5}, {hostile, 1, 5}, {"empty.pcap", 0, 0}};
    for (const Case& it : cases) {
        SCOPED_TRACE(it.capture);
        const ToolFolder::Result made =
            folder.run("qlproto report --time " + std::string(it.exitCode == 0 ? "Europe/Zurich" : "utc") + " '"
                       + it.capture + "' -o report.html");
        EXPECT_EQ(made.exitCode, it.exitCode) << made.err;
        // Counts the charts of which more than a few points have a colour.
        std::ofstream(folder.path("report.html"), std::ios::app) << R"(<script>
            document.documentElement.dataset.charts = [...document.querySelectorAll(".chart canvas")].filter((it) =>
                it.getContext("2d").getImageData(0, 0, it.width, it.height).data.filter((v, i) => i % 4 === 3 && v > 0)
                    .length > 2000).length;
            const cells = (i) => [...document.querySelectorAll(`#message-table tbody tr > :nth-child(${i + 1})`)]
                .map((it) => it.textContent.replaceAll(",", ""));
            const click = (i) => document.querySelectorAll("#message-table thead button")[i].click();
            const isSorted = (values, isLess) => values.every((it, i) => i === 0 || !isLess(it, values[i - 1]));
            click(0);
            const isByName = isSorted(cells(0), (a, b) => a.localeCompare(b, "en") < 0);
            click(1);
            const isFalling = isSorted(cells(1), (a, b) => Number(a) > Number(b));
            click(1);
            const isRising = isSorted(cells(1), (a, b) => Number(a) < Number(b));
            document.documentElement.dataset.sorted = [isByName, isFalling, isRising].join();</script>)";
        const ToolFolder::Result shown =
            folder.run("timeout 120 '" CHROMIUM "' --headless --no-sandbox --disable-gpu --disable-dev-shm-usage "
                       "--user-data-dir=profile --enable-logging=stderr --dump-dom file://$PWD/report.html");
        EXPECT_EQ(shown.exitCode, 0);
        EXPECT_EQ(shown.err.find("CONSOLE"), std::string::npos) << shown.err;
        EXPECT_NE(shown.out.find("data-state=\"drawn\""), std::string::npos);
        EXPECT_NE(shown.out.find("data-charts=\"" + std::to_string(it.charts) + "\""), std::string::npos);
        const char* const period = it.exitCode == 0 ? "2024-03-04 08:00:00.000 to 2024-03-04 08:00:01."
                                                    : "2024-03-04 07:00:00.000 to 2024-03-04 07:00:5";
        EXPECT_EQ(shown.out.find(period) != std::string::npos, it.charts != 0);
        EXPECT_EQ(shown.out.find("UTC+01:00") != std::string::npos, it.exitCode == 0 && it.charts != 0);
        EXPECT_NE(shown.out.find("data-sorted=\"true,true,true\""), std::string::npos);
        EXPECT_EQ(shown.out.find("1 message outside of the time shown") != std::string::npos, it.exitCode == 1);
        EXPECT_EQ(shown.out.find("<img"), std::string::npos);
        EXPECT_EQ(shown.out.find("//www"), std::string::npos) << "nothing comes from elsewhere";

        const std::set<std::string> rows = tableRows(shown.out);
        const json stats = json::parse(folder.run("qlproto stats --json '" + it.capture + "'").out);
        for (const auto& [name, message] : stats["messages"].items()) {
            const json& sizes = message["sizes"];
            const std::string beginning =
                name + '|' + grouped(message["count"]) + '|' + grouped(message["bytes"]) + '|';
            const std::string end = '|' + grouped(sizes["min"]) + '|' + grouped(sizes["median"]) + '|'
                                    + grouped(sizes["p99"]) + '|' + grouped(sizes["max"]) + '|';
            EXPECT_TRUE(std::any_of(rows.begin(), rows.end(), [&](const std::string& row) {
                return row.starts_with(beginning) && row.ends_with(end);
            })) << beginning;
        }
        const json latency = json::parse(folder.run("qlproto latency --json '" + it.capture + "'").out);
        for (const json& hop : latency["all"]) {
            const std::string beginning = hop["from"].get<std::string>() + " → " + hop["to"].get<std::string>() + '|'
                                          + grouped(hop["count"]) + '|' + digits(hop["p50"]) + " µs|"
                                          + digits(hop["p90"]) + " µs|";
            EXPECT_TRUE(std::any_of(rows.begin(), rows.end(), [&](const std::string& row) {
                return row.starts_with(beginning);
            })) << beginning;
        }
        const json totals =
            json::parse(folder.run("qlproto orders --totals --json '" + it.capture + "'").out)["totals"];
        for (const char* by : {"reason", "user", "feed"})
            for (const auto& [name, total] : totals[by].items()) {
                std::string row = name + '|' + grouped(total["count"]) + '|';
                if (by != std::string("reason"))
                    row += grouped(total["refused"]) + '|' + grouped(total["traded"]) + '|';
                EXPECT_TRUE(rows.contains(row + '|')) << by << ' ' << row; // and a bar
            }
        EXPECT_EQ(totals["reason"].empty(), it.charts == 0);
        const json feeds =
            json::parse(folder.run("qlproto latency --by feedID --json '" + it.capture + "'").out)["groups"];
        for (const auto& [feed, hops] : feeds.items()) {
            json slowest = hops[0];
            for (const json& hop : hops)
                if (hop.value("p99", 0) > slowest.value("p99", 0)) slowest = hop;
            const std::string beginning = feed + '|' + slowest["from"].get<std::string>() + " → "
                                          + slowest["to"].get<std::string>() + '|' + grouped(slowest["count"]) + '|';
            EXPECT_TRUE(std::ranges::any_of(rows, [&](const auto& row) { return row.starts_with(beginning); }))
                << beginning;
        }
        const bool isFault = it.exitCode == 1;
        EXPECT_EQ(rows.contains("unknown identifier|1|100.0 %|1|1|"), isFault);
        EXPECT_EQ(rows.contains("1|2024-03-04 07:00:00.000|unknown message identifier 53251 (0xD003)|"), isFault);
    }
}

} // namespace
