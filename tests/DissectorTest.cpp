// The packet-analyser plug-in, run in the real tshark: it must show what the library decodes.
#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Capture/Framer.h"
#include "Capture/NetworkPackets.h"
#include "Inspect/Json.h"
#include "Inspect/Reflection.h"
#include "tests/Samples.h"
#include "tests/Sessions.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/messages/MessageReader.h"

using namespace Quillon;
using Capture::identifierOf;
using nlohmann::json;

namespace {

using Packets = std::vector<std::string>;

Packets packetsOfSession(uint64_t messages) {
    Packets packets;
    for (const Sent& it : session(1, messages)) packets.push_back(it.bytes);
    return packets;
}

/// The first packet of each message.
Packets oneOfEach(const Packets& packets) {
    Packets firsts;
    std::set<MsgType_t> seen;
    for (const std::string& it : packets)
        if (seen.insert(Capture::identifierOf(it)).second) firsts.push_back(it);
    return firsts;
}

/// All messages with the limits of every width, sentinels, undeclared enumerators and long vectors.
Packets samples() {
    Packets packets;
    for (const unsigned seed : {1u, 2u, 3u})
        messages([&]<class T>(Velmora::of<T>, const char*) {
            InBlock<T> it(1 << 20);
            Sample(Filling::extreme, seed).fill(*it);
            packets.push_back(Capture::identifierBytes(T::ID) + encoded(*it));
            return true;
        });
    return packets;
}

class Dissector : public Module {
  protected:
    void SetUp() override { ASSERT_EQ(_folder.run("qlproto dissector -o ql.lua").exitCode, 0); }

    /// What tshark prints of the packets. Errors of the script end up in the tree, those of its loading on standard
    /// error.
    std::string tshark(const Packets& packets, const std::string& options) {
        std::vector<ToolFolder::Packet> capture;
        for (const std::string& it : packets) capture.emplace_back(1, it);
        _folder.store("a.pcap", capture);
        const ToolFolder::Result result = _folder.run("tshark -X lua_script:ql.lua -r a.pcap " + options);
        EXPECT_EQ(result.exitCode, 0) << options << result.err;
        EXPECT_EQ(result.err.find("Lua"), std::string::npos) << result.err;
        return result.out;
    }

    /// Numbers of the packets, from 0, that pass the filter.
    std::set<size_t> passing(const Packets& packets, const std::string& filter) {
        std::istringstream lines(tshark(packets, "-Y '" + filter + "' -T fields -e frame.number"));
        std::set<size_t> numbers;
        for (size_t number; lines >> number;) numbers.insert(number - 1);
        return numbers;
    }

    ToolFolder _folder;
};

/// Compares what tshark shows of a message with the library's JSON of it.
class Comparison {
  public:
    void message(const std::string& packet, json& shown) {
        ASSERT_TRUE(_reader.read(packet)) << _reader.fault();
        const MsgType_t id = Capture::identifierOf(packet);
        const Inspect::TypeInfo& type = *Inspect::reflect(id);
        json expected = json::parse(Inspect::to_json(id, _reader.message()));
        if (id == PadMessage::ID) expected["padding"] = packet.substr(4); // shown as written, not as read

        _name = type.name;
        std::string lower = _name.substr(0, _name.ends_with("Message") ? _name.size() - 7 : _name.size());
        std::transform(lower.begin(), lower.end(), lower.begin(),
                       [](char c) { return static_cast<char>(std::tolower(c)); });
        _prefix = "ql." + lower + '.';
        ASSERT_EQ(shown["ql.message"], _name);
        shown.erase("ql.message");
        shown.erase("ql.id");
        record(type, expected, shown, "");
    }

    size_t texts = 0, vectors = 0, numbers = 0; ///< compared

  private:
    void record(const Inspect::TypeInfo& type, const json& expected, const json& shown, const std::string& path) {
        size_t own = 0; // others belong to vectors, or hold tshark's remarks on odd characters
        for (const auto& [name, unused] : shown.items()) own += !name.ends_with("_tree");
        EXPECT_EQ(own, type.fields.size()) << _name << ' ' << path;
        for (const Inspect::FieldInfo& field : type.fields) {
            const std::string here = path + std::string(field.name);
            if (field.value.kind == Inspect::Kind::vector)
                vector(*field.value.element, expected[field.name], shown, here);
            else
                value(field.value, expected[field.name], at(shown, key(shown, here)), here);
        }
    }

    void vector(const Inspect::ValueInfo& element, const json& expected, const json& shown, const std::string& path) {
        const std::string count = key(shown, path + ".count");
        EXPECT_EQ(at(shown, count), std::to_string(expected.size())) << _name << ' ' << path;
        ++vectors;
        if (expected.empty()) return;
        const json& tree = at(shown, count + "_tree");
        const json& elements = at(tree, key(tree, path));
        const bool several = elements.is_array();
        ASSERT_EQ(several ? elements.size() : 1, expected.size()) << _name << ' ' << path;
        for (size_t i = 0; i < expected.size(); ++i)
            value(element, expected[i], several ? elements[i] : elements, path);
    }

    void value(const Inspect::ValueInfo& info, const json& expected, const json& shown, const std::string& path) {
        static const std::map<std::string, std::string> sentinels = {{"MAX", std::to_string(Velmora::MAX)},
                                                                     {"NMA", std::to_string(Velmora::NMA)},
                                                                     {"NDA", std::to_string(Velmora::NDA)},
                                                                     {"NA", std::to_string(Velmora::NA)}};
        std::string text;
        switch (info.kind) {
        case Inspect::Kind::record:
            return record(*info.record, expected, shown, path + '.');
        case Inspect::Kind::string:
        case Inspect::Kind::cryptstring:
        case Inspect::Kind::padding: {
            text = expected.get<std::string>();
            // tshark has a form of its own for bytes that are no text.
            if (!std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < 0x7F && c != '\\'; })) {
                EXPECT_TRUE(shown.is_string()) << _name << ' ' << path;
                return;
            }
            ++texts;
            break;
        }
        case Inspect::Kind::boolean:
            text = expected.get<bool>() ? "1" : "0";
            break;
        case Inspect::Kind::enumeration:
            text = expected.dump();
            for (const Inspect::EnumeratorInfo& it : info.enumeration->enumerators)
                if (expected == it.name) text = std::to_string(it.value);
            break;
        default:
            text = expected.is_string() ? expected.get<std::string>() : expected.dump();
            if (sentinels.contains(text)) text = sentinels.at(text);
            ++numbers;
        }
        EXPECT_EQ(shown, text) << _name << ' ' << path;
    }

    /// The member, or null if there is none.
    static const json& at(const json& object, const std::string& name) {
        static const json none;
        return object.contains(name) ? object[name] : none;
    }

    /// The filter name of a path is the message's prefix and an ending of the path.
    std::string key(const json& shown, const std::string& path) const {
        for (size_t from = path.size(); from != std::string::npos;) {
            from = from == 0 ? std::string::npos : path.rfind('.', from - 1);
            const std::string name = _prefix + path.substr(from == std::string::npos ? 0 : from + 1);
            if (shown.contains(name)) return name;
        }
        ADD_FAILURE() << _name << ' ' << path << " is not shown";
        return path;
    }

    qlproto::MessageReader _reader;
    std::string _name;
    std::string _prefix;
};

TEST_F(Dissector, ShowsEveryFieldAsTheLibraryDecodesIt) {
    Packets packets = packetsOfSession(20000);
    for (const std::string& it : samples()) packets.push_back(it);

    json shown = json::parse(tshark(packets, "-T json -J ql --no-duplicate-keys"));
    ASSERT_EQ(shown.size(), packets.size());
    Comparison comparison;
    for (size_t i = 0; i < packets.size() && !HasFailure(); ++i) {
        SCOPED_TRACE("packet " + std::to_string(i));
        comparison.message(packets[i], shown[i]["_source"]["layers"]["ql"]);
    }
    EXPECT_GT(comparison.numbers, 400'000u);
    EXPECT_GT(comparison.texts, 50'000u);
    EXPECT_GT(comparison.vectors, 10'000u);
}

// A SubmitOrderMessage: amount complemented by bit 1, then NMA; stop price NDA, largest shown NA, smallest amount MAX.
const std::string SENTINELS("\xE9\xF0\0\0\0\0\0\0\0\0\0\0\1\2\3\1\1\5\7\xF8\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\3\0\0", 31);

TEST_F(Dissector, NamesEnumeratorsAndSentinels) {
    const std::string shown = tshark({SENTINELS}, "-V -O ql");
    for (const char* line : {"side: BID (1)\n", "amount: -1\n", "price: -9223372036854775807 (NMA)\n",
                             "stopPrice: -9223372036854775806 (NDA)\n", "maxShow: -9223372036854775805 (NA)\n",
                             "minAmount: 9223372036854775806 (MAX)\n", "QLProtocol, SubmitOrderMessage\n"})
        EXPECT_NE(shown.find(line), std::string::npos) << line << " is not in " << shown;
    EXPECT_NE(tshark({SENTINELS}, "").find("QLProtocol 31 SubmitOrderMessage"), std::string::npos);
}

// The protocol has no secret record, so one is made of a record of which the summary tells much.
TEST_F(Dissector, WhatASecretRecordHoldsStaysOutOfTheSummary) {
    std::string script = _folder.content("ql.lua");
    const std::string field = R"("contents", "SubmitOrder")";
    ASSERT_NE(tshark({SENTINELS}, "").find(" side=BID"), std::string::npos);
    _folder.write("ql.lua", script.insert(script.find(field) + field.size(), ", secret = true"));
    const std::string shown = tshark({SENTINELS}, "");
    EXPECT_NE(shown.find("SubmitOrderMessage userID=0\n"), std::string::npos) << shown;
}

TEST_F(Dissector, FiltersByFieldNames) {
    const Packets packets = packetsOfSession(5000);
    struct Case {
        const char* filter;
        MsgType_t id;
        std::function<bool(const json&)> matches;
    };
    const auto number = [](const json& it) { return std::stoll(it.get<std::string>()); };
    const Case cases[] = {
        {"ql.submitorder.price > 108000000", SubmitOrderMessage::ID,
         [&](const json& it) { return number(it["contents"]["price"]) > 108'000'000; }},
        {"ql.submitorder.side == \"BID\"", SubmitOrderMessage::ID,
         [](const json& it) { return it["contents"]["side"] == "BID"; }},
        {"ql.mktdata.fmID.marketID == 106", MktDataMessage::ID,
         [](const json& it) { return it["mvd"]["fmID"]["marketID"] == 106; }},
        {"ql.mktdata.mdEntryList.count > 5", MktDataMessage::ID,
         [](const json& it) { return it["mvd"]["mdEntryList"].size() > 5; }},
        {"ql.log.description contains \"expired\"", LogMessage::ID,
         [](const json& it) { return it["description"].get<std::string>().find("expired") != std::string::npos; }},
        {"ql.message == \"TimerMessage\"", TimerMessage::ID, [](const json&) { return true; }},
    };
    qlproto::MessageReader reader;
    for (const Case& it : cases) {
        std::set<size_t> expected;
        for (size_t i = 0; i < packets.size(); ++i)
            if (Capture::identifierOf(packets[i]) == it.id && reader.read(packets[i])
                && it.matches(json::parse(Inspect::to_json(it.id, reader.message()))))
                expected.insert(i);
        EXPECT_FALSE(expected.empty()) << it.filter;
        EXPECT_EQ(passing(packets, it.filter), expected) << it.filter;
    }
}

TEST_F(Dissector, MarksMalformedPacketsAndNoOthers) {
    Packets packets = {{"\x52\xD0\2\0\0", 5}, {"\x52\xD0\2\0", 4}}; // a vector that just fits, and one that does not
    std::mt19937 random(1);
    for (const std::string& good : oneOfEach(packetsOfSession(20000))) {
        for (size_t size = 1; size <= std::min<size_t>(good.size(), 80); ++size)
            packets.push_back(good.substr(0, size));
        packets.push_back(good);
        packets.push_back(good + '\0');
        for (int i = 0; i < 60; ++i) {
            packets.push_back(good);
            packets.back()[random() % good.size()] = static_cast<char>(random());
        }
    }
    std::set<size_t> bad;
    qlproto::MessageReader reader;
    for (size_t i = 0; i < packets.size(); ++i)
        if (!reader.read(packets[i])) bad.insert(i);
    EXPECT_GT(bad.size(), 1000u);
    EXPECT_LT(bad.size(), packets.size() - 500);
    EXPECT_EQ(passing(packets, "ql.truncated || ql.countbeyondbytes || ql.trailingbytes || ql.unknownidentifier"), bad);
    EXPECT_EQ(passing(packets, "_ws.lua.error"), std::set<size_t>());

    struct Case {
        std::string packet;
        const char* complaint;
    };
    const Case cases[] = {
        {SENTINELS.substr(0, 14), "truncated at byte 14 (contents.price)"},
        {SENTINELS + "ab", "2 bytes left over after the last value"},
        {std::string("\xFF\xFF\0", 3), "unknown message identifier 0xFFFF"},
        {"\xE9", "truncated at byte 1 (identifier)"},
        {SENTINELS.substr(0, 29) + "\x81\x2C\0", "300 elements at byte 29 (contents.parameters) cannot be in the"},
    };
    for (const Case& it : cases)
        EXPECT_NE(tshark({it.packet}, "-V -O ql").find(it.complaint), std::string::npos) << it.complaint;
}

/// The analyser reassembles streams itself: whatever became of the segments, it shows the messages that the tool finds.
TEST_F(Dissector, FramesOverANetworkAreWhatTheToolFinds) {
    const Packets packets = packetsOfSession(2000);
    for (const std::string framing : {"frames", "7:u8, length:u16be=frame, seq:u32be, id:u16be, body",
                                      "length:u32le=frame, (length:u16be=body, id:u16le, body)"}) {
        SCOPED_TRACE(framing);
        ASSERT_EQ(_folder.run("qlproto dissector --port 9001 --framing '" + framing + "' -o ql.lua").exitCode, 0);
        Capture::Framer framer(Capture::Framing::of(framing));
        std::string stream;
        for (const std::string& it : packets) framer.append(identifierOf(it), std::string_view(it).substr(2), stream);
        const Capture::Endpoint from = Capture::endpointOf(0x0A000001, 40000),
                                to = Capture::endpointOf(0x0A000002, 9001);
        std::vector<std::string> frames;
        const auto add = [&](uint32_t at, unsigned flags, std::string_view bytes) {
            frames.push_back(Capture::ethernetFrame(Capture::tcpPacket(from, to, {1000 + at, 1, flags}, bytes)));
        };
        std::mt19937 random(1);
        add(UINT32_MAX, Capture::TcpFlags::SYN, "");
        for (size_t at = 0, size; at < stream.size(); at += size) {
            size = std::min<size_t>(stream.size() - at, 1 + random() % 900);
            add(static_cast<uint32_t>(at), Capture::TcpFlags::ACK, std::string_view(stream).substr(at, size));
            if (random() % 10 == 0)
                frames.push_back(frames[frames.size() - 1 - random() % std::min<size_t>(frames.size(), 4)]);
        }
        for (size_t i = 2; i + 1 < frames.size(); i += 1 + random() % 20) std::swap(frames[i], frames[i + 1]);
        Capture::Writer writer(_folder.path("n.pcap"), {.linkType = Capture::LinkType::ETHERNET});
        int64_t time = 0;
        for (const std::string& it : frames)
            writer.packet({.time = time += 1000, .bytes = it, .linkType = Capture::LinkType::ETHERNET});
        writer.close();

        const auto names = [&](const std::string& command) {
            const ToolFolder::Result result = _folder.run("set -o pipefail; " + command);
            EXPECT_EQ(result.exitCode, 0) << result.err;
            return result.out;
        };
        const std::string found = names("qlproto decode --framing '" + framing + "' n.pcap | cut -d' ' -f2");
        EXPECT_EQ(linesOf(found).size(), packets.size());
        const std::string shark =
            "tshark -X lua_script:ql.lua -o tcp.reassemble_out_of_order:TRUE -T fields -e ql.message "
            "-E occurrence=a -r ";
        EXPECT_EQ(names(shark + "n.pcap | tr ',' '\\n' | grep ."), found);
        names("qlproto convert n.pcap --framing '" + framing + "' --over udp -o u.pcap");
        EXPECT_EQ(names(shark + "u.pcap | tr ',' '\\n' | grep ."), found);
        EXPECT_EQ(names(shark + "u.pcap -Y 'ql.truncated || ql.noframe || _ws.lua.error'"), "");
    }
}

} // namespace
