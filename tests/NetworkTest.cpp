// Messages inside packets of networks: frames, IP packets, streams and framings, as they should be and as they are.
#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <tuple>

#include <gtest/gtest.h>

#include "Capture/Errors.h"
#include "Capture/MessageSource.h"
#include "Capture/NetworkWriter.h"
#include "Capture/NumberAt.h"
#include "Capture/Verification.h"
#include "Capture/Writer.h"
#include "Host/Frames.h"
#include "tests/Folder.h"
#include "tests/Sessions.h"

namespace {

using Capture::Endpoint;
using Capture::Framing;
using Capture::TcpFlags;
using Random = std::mt19937;

struct NetworkTest : Module {};

/// A packet of a capture.
struct Raw {
    int64_t time;
    std::string bytes;
    uint32_t linkType = Capture::LinkType::ETHERNET;
    size_t missing = 0; ///< bytes that the capture cut off
};

struct Outcome {
    std::vector<Sent> messages;
    std::vector<std::string> ways; ///< by which they came
    std::vector<std::string> faults;
    size_t memory = 0, connections = 0; ///< the most
    bool operator==(const Outcome& other) const {
        return messages == other.messages && ways == other.ways && faults == other.faults;
    }
};

/// What comes out of packets.
Outcome read(const std::vector<Raw>& packets, const std::string& framing = "frames",
             const std::vector<uint16_t>& ports = {}) {
    Capture::Faults faults;
    Capture::Network network({Framing::of(framing), ports}, Inspect::default_protocol(), faults);
    Outcome outcome;
    const auto drain = [&] {
        for (Capture::Packet it; network.next(it);) {
            outcome.messages.push_back({it.time, std::string(it.bytes)});
            outcome.ways.push_back(it.connection->way());
            EXPECT_LE(it.bytes.size(), it.original);
            EXPECT_TRUE(!it.isProven
                        || !Capture::verifyPacket(Inspect::default_protocol(), it.bytes, it.original, Capture::PROOF));
            if (it.original != it.bytes.size()) outcome.faults.push_back("cut");
        }
        outcome.memory = std::max(outcome.memory, network.memory());
        outcome.connections = std::max(outcome.connections, network.connections());
    };
    uint64_t offset = 0;
    for (const Raw& it : packets) {
        faults.at(++offset, 0);
        network.take({.time = it.time, .bytes = it.bytes, .offset = offset, .linkType = it.linkType});
        drain();
    }
    do drain();
    while (network.finish());
    for (const Capture::Damage& it : faults.all()) outcome.faults.push_back(it.text());
    EXPECT_EQ(network.memory(), 0u);
    return outcome;
}

std::string framed(const std::vector<Sent>& sent, const std::string& framing = "frames") {
    Capture::Framer framer(Framing::of(framing));
    std::string bytes;
    for (const Sent& it : sent) framer.append(it.id(), std::string_view(it.bytes).substr(2), bytes);
    return bytes;
}

const Endpoint CLIENT = Capture::endpointOf(0x0A000001, 40000), SERVER = Capture::endpointOf(0x0A000002, 9001);

Endpoint v6(char last, uint16_t port) {
    Endpoint it;
    it.address = {0x20, 0x01, 0x0D, static_cast<char>(0xB8)};
    it.address[15] = last;
    it.port = port;
    return it;
}

/// A frame of that link type around an IP packet.
std::string inFrame(uint32_t linkType, const std::string& ip, unsigned tags = 0) {
    using Type = Capture::LinkType;
    const std::string protocol = Capture::ethernetFrame(ip).substr(12, 2);
    if (linkType == Type::COOKED) return std::string("\0\0\0\1\0\6\2\0\0\0\0\1\0\0", 14) + protocol + ip;
    if (linkType == Type::COOKED_2) return protocol + std::string("\0\0\0\0\0\1\0\1\0\6\2\0\0\0\0\1\0\0", 18) + ip;
    if (linkType != Type::ETHERNET) return ip;
    std::string frame = Capture::ethernetFrame(ip);
    for (unsigned i = 0; i < tags; ++i) frame.insert(12, i + 1 == tags && i > 0 ? "\x88\xA8\0\7" : "\x81\0\0\5", 4);
    return frame;
}

/// Sends a stream in segments of one to `longest` bytes. Every segment has the time of the message it ends in.
class Sender {
  public:
    Sender(Endpoint from, Endpoint to, uint32_t first, uint32_t linkType = Capture::LinkType::ETHERNET)
        : _from(from), _to(to), _first(first), _linkType(linkType) {}

    Raw segment(size_t at, std::string_view bytes, int64_t time, unsigned flags = TcpFlags::ACK) const {
        const uint32_t sequence = _first + static_cast<uint32_t>(at) - ((flags & TcpFlags::SYN) != 0 ? 1 : 0);
        return {time, inFrame(_linkType, Capture::tcpPacket(_from, _to, {sequence, 1, flags}, bytes)), _linkType};
    }

    /// Cut at random, but such that no segment reaches from the end of one message into the next but one.
    std::vector<Raw> segments(const std::vector<Sent>& sent, Random& random, size_t longest) const {
        std::vector<Raw> all{segment(0, "", sent.front().time, TcpFlags::SYN)};
        std::string stream;
        size_t at = 0;
        for (const Sent& it : sent) {
            stream += framed({it});
            while (at < stream.size()) {
                const size_t size = std::min(stream.size() - at, 1 + random() % longest);
                if (at + size == stream.size() && random() % 3 == 0 && size > 1) { // the rest goes with the next one
                    all.push_back(segment(at, std::string_view(stream).substr(at, size - 1), it.time));
                    at += size - 1;
                }
                const size_t rest = std::min(size, stream.size() - at);
                all.push_back(segment(at, std::string_view(stream).substr(at, rest), it.time));
                at += rest;
            }
        }
        all.push_back(segment(at, "", sent.back().time, TcpFlags::FIN | TcpFlags::ACK));
        _stream = stream;
        return all;
    }
    const std::string& stream() const { return _stream; }

  private:
    Endpoint _from, _to;
    uint32_t _first, _linkType;
    mutable std::string _stream;
};

/// The same packets, some later than others, some twice.
std::vector<Raw> shuffled(std::vector<Raw> packets, Random& random, size_t distance) {
    std::vector<std::pair<size_t, Raw>> places;
    for (size_t i = 0; i < packets.size(); ++i) {
        const size_t later = i != 0 && random() % 4 == 0 ? random() % distance : 0;
        places.emplace_back(i + later, packets[i]);
        if (random() % 8 == 0) places.emplace_back(i + later + random() % 50, packets[i]);
    }
    std::stable_sort(places.begin(), places.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    packets.clear();
    for (auto& it : places) packets.push_back(std::move(it.second));
    return packets;
}

TEST_F(NetworkTest, FramingsAreReadAndWrittenAsStated) {
    const char* framings[] = {"length:u32le, id:u16le, body",
                              "length:u32be=body, id:u16be, body",
                              "length:u16be=frame, id:u32be, body",
                              "20812:u16be, length:u32le=body+6, seq:u32be, id:u16le, body, 10:u8",
                              "id:u16le, length:u64be=rest-2, body, seq:u16le",
                              "seq:u64be=messages, count:u16be, length:u32le, (length:u16be, id:u16le, body)",
                              "length:u32le, (skip:u8, id:u16be, length:u32be=frame, body, 255:u8), skip:u16le"};
    std::vector<Sent> sent = session(1, 300);
    for (Sent& it : sent) it.time = 7;
    for (const std::string text : framings) {
        const Framing framing = Framing::of(text);
        EXPECT_EQ(framing.text(), text);
        const std::string bytes = framed(sent, text);
        Random random(1);
        for (const size_t longest : {7u, 1400u}) {
            std::vector<Raw> packets;
            const Sender sender(CLIENT, SERVER, 0xFFFFFF00); // the number wraps
            packets.push_back(sender.segment(0, "", 7, TcpFlags::SYN));
            for (size_t at = 0; at < bytes.size(); at += longest)
                packets.push_back(sender.segment(at, std::string_view(bytes).substr(at, longest), 7));
            const Outcome outcome = read(packets, text);
            EXPECT_EQ(outcome.messages, sent) << text;
            EXPECT_TRUE(outcome.faults.empty()) << text << ": " << outcome.faults.front();
        }
    }
    EXPECT_EQ(Framing::of(" frames ").text(), framings[0]);
    // The preset is what hosts send and read.
    Host::FrameWriter writer;
    for (const Sent& it : sent) writer.append(it.id(), std::string_view(it.bytes).substr(2));
    EXPECT_EQ(framed(sent), std::string(writer.bytes()));

    for (const auto& [text, complaint] : {std::pair("length:u32le, body", "no id tells"),
                                          {"length:u32, id:u16le, body", "'length:u32': sizes are"},
                                          {"id:u16le, length:u32le", "no body"},
                                          {"id:u16le,, body", "a field is missing"},
                                          {"", "a field is missing"},
                                          {"id:u16le, (body)", "no id tells"},
                                          {"((id:u16le, body))", "a bracket"},
                                          {"(id:u16le, body", "not closed"},
                                          {"id:u16le, body)", "no bracket"},
                                          {"300:u8, id:u8, body", "does not fit"},
                                          {"id:u8, id:u8, body", "twice"},
                                          {"id:u8, body, length:u8", "in front of"},
                                          {"count:u8, id:u8, body", "between brackets"},
                                          {"length:u8=all, id:u8, body", "the rest, the body or"},
                                          {"id:u8=body, body", "only a length"},
                                          {"lenght:u8, id:u8, body", "no field is named lenght"},
                                          {"length:u8=body+x, id:u8, body", "a number"},
                                          {"(seq:u8, id:u8, body)", "outside of the brackets"},
                                          {"id:u8, body, body", "one body"}})
        try {
            Framing::of(text);
            ADD_FAILURE() << text << " is taken";
        } catch (const Capture::FramingError& error) {
            EXPECT_NE(std::string(error.what()).find(complaint), std::string::npos) << text << ": " << error.what();
        }
}

/// Streams of both directions, cut anywhere, out of order, with segments that come twice and ones that overlap, on every link
/// and under both versions of IP: each message once, in order, with its time and the way it came.
TEST_F(NetworkTest, StreamsAreReassembledWhateverBecameOfThem) {
    using Type = Capture::LinkType;
    const uint32_t links[] = {Type::ETHERNET, Type::COOKED, Type::COOKED_2, Type::RAW_IP};
    for (unsigned seed = 1; seed <= 24; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        const uint32_t link = links[seed % 4];
        const bool isV6 = seed / 4 % 2 != 0;
        const Endpoint client = isV6 ? v6(1, 40000) : CLIENT, server = isV6 ? v6(2, 9001) : SERVER;
        const std::vector<Sent> sent = session(seed, 400);
        std::vector<Sent> there, back;
        for (const Sent& it : sent) (it.id() % 3 != 0 ? there : back).push_back(it);
        Sender out(client, server, static_cast<uint32_t>(random()), link), in(server, client, 7, link);
        const size_t longest = seed % 3 == 0 ? 20 : 400;
        std::vector<Raw> packets, questions = out.segments(there, random, longest);
        std::vector<Raw> answers = in.segments(back, random, longest);
        for (int i = 0; i < 200; ++i) { // once more, cut differently, and too late
            const std::string_view stream = out.stream();
            const size_t at = random() % (stream.size() / 2);
            questions.push_back(out.segment(at, stream.substr(at, 1 + random() % 300), sent.back().time));
        }
        questions = shuffled(std::move(questions), random, 30);
        answers = shuffled(std::move(answers), random, 30);
        for (size_t i = 0; i < std::max(questions.size(), answers.size()); ++i) {
            if (i < questions.size()) packets.push_back(questions[i]);
            if (i < answers.size()) packets.push_back(answers[i]);
        }
        if (link == Type::ETHERNET && seed % 8 == 0)
            for (Raw& it : packets)
                it.bytes.insert(12, seed % 16 == 0 ? std::string("\x88\xA8\0\7\x81\0\0\5", 8)
                                                   : std::string("\x81\0\0\5", 4));
        const Outcome outcome = read(packets);
        EXPECT_TRUE(outcome.faults.empty()) << outcome.faults.front();
        std::vector<Sent> found[2];
        for (size_t i = 0; i < outcome.messages.size(); ++i) {
            const bool isBack = outcome.ways[i] == server.text() + " > " + client.text();
            EXPECT_TRUE(isBack || outcome.ways[i] == client.text() + " > " + server.text()) << outcome.ways[i];
            found[isBack].push_back(outcome.messages[i]);
        }
        EXPECT_EQ(found[0], there);
        EXPECT_EQ(found[1], back);
        EXPECT_LT(outcome.memory, 20'000u);
        EXPECT_EQ(read(packets, "frames", {9001}), outcome);
        EXPECT_TRUE(read(packets, "frames", {9002}).messages.empty());
    }
    EXPECT_EQ(CLIENT.text(), "10.0.0.1:40000");
    EXPECT_EQ(v6(2, 80).text(), "[2001:db8::2]:80");
}

/// Segments that never came, or were cut by the capture: what has no byte in them comes out, nothing else does, and each gap is
/// told with its bytes.
TEST_F(NetworkTest, GapsAreToldAndPassedOver) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        const std::vector<Sent> sent = session(seed, 600);
        const Sender sender(CLIENT, SERVER, seed * 1000);
        std::vector<Raw> packets;
        std::vector<std::pair<size_t, size_t>> missing;
        const bool isCut = seed % 2 == 0; // by a length, else segments are lost
        const std::string stream = framed(sent);
        packets.push_back(sender.segment(0, "", sent[0].time, TcpFlags::SYN));
        for (size_t at = 0; at < stream.size();) {
            const size_t size = std::min(stream.size() - at, 1 + random() % 500);
            Raw raw = sender.segment(at, std::string_view(stream).substr(at, size), sent[0].time);
            const bool isHit = at > 2000 && at + 500 < stream.size() && random() % 20 == 0;
            const size_t lost = isHit ? (isCut ? 1 + random() % size : size) : 0;
            if (isHit) missing.emplace_back(at + size - lost, at + size);
            raw.bytes.resize(raw.bytes.size() - (isCut ? lost : 0));
            if (!isHit || isCut) packets.push_back(raw);
            at += size;
        }
        const Outcome outcome = read(packets);
        std::vector<std::string> expected, found;
        size_t at = 0;
        for (const Sent& it : sent) {
            const size_t end = at + 4 + it.bytes.size();
            if (std::ranges::none_of(missing, [&](const auto& gap) { return gap.first < end && gap.second > at; }))
                expected.push_back(it.bytes);
            at = end;
        }
        for (const Sent& it : outcome.messages) found.push_back(it.bytes);
        EXPECT_EQ(found, expected);
        EXPECT_GE(outcome.faults.size(), missing.empty() ? 0u : 1u);
        EXPECT_LE(outcome.faults.size(), missing.size());
        for (const std::string& it : outcome.faults) EXPECT_NE(it.find("gap in a stream at offset"), it.npos) << it;
    }
}

/// Bytes of a stream that are damaged, lengths among them: no other message is lost.
TEST_F(NetworkTest, DamagedFramesLoseNoOthers) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        const std::vector<Sent> sent = session(seed, 500);
        std::string stream;
        std::vector<size_t> ends;
        for (const Sent& it : sent) {
            stream += framed({it});
            ends.push_back(stream.size());
        }
        std::set<size_t> hit;
        for (int i = 0; i < 20; ++i) {
            const size_t message = random() % sent.size(), begin = message == 0 ? 0 : ends[message - 1];
            const size_t at =
                begin + random() % (i % 2 == 0 ? 6 : ends[message] - begin); // the fields in front, or anywhere
            hit.insert(message);
            stream[at] = i % 4 == 0 ? static_cast<char>(stream[at] ^ 1) : static_cast<char>(random());
        }
        std::vector<Raw> packets;
        const Sender sender(CLIENT, SERVER, 5);
        packets.push_back(sender.segment(0, "", 1, TcpFlags::SYN));
        for (size_t at = 0; at < stream.size(); at += 300)
            packets.push_back(sender.segment(at, std::string_view(stream).substr(at, 300), 1));
        const Outcome outcome = read(packets);
        std::multiset<std::string> found;
        for (const Sent& it : outcome.messages) found.insert(it.bytes);
        for (size_t i = 0; i < sent.size(); ++i) {
            if (hit.contains(i)) continue;
            const auto it = found.find(sent[i].bytes);
            EXPECT_NE(it, found.end()) << "lost: " << i;
            if (it != found.end()) found.erase(it);
        }
        EXPECT_LE(found.size(), hit.size()); // nothing is invented but where something was hit
    }
}

/// More may be verified the more has come: junk in front of every frame loses none of them, however many there are.
TEST_F(NetworkTest, JunkInFrontOfEveryFrameLosesNone) {
    const Sent pad{1, Capture::identifierBytes(Quillon::PadMessage::ID) + "\x60\xEA" + std::string(60'000, 'x')};
    const std::string bytes = '\xEE' + framed({pad});
    for (const bool isStream : {false, true}) {
        std::vector<Raw> packets;
        for (size_t i = 0; i < 120; ++i)
            packets.push_back(isStream ? Sender(CLIENT, SERVER, 1).segment(i * bytes.size(), bytes, 1)
                                       : Raw{1, Capture::ethernetFrame(Capture::udpPacket(CLIENT, SERVER, bytes))});
        const Outcome outcome = read(packets);
        EXPECT_EQ(outcome.messages.size(), packets.size());
        EXPECT_TRUE(std::ranges::all_of(outcome.messages, [&](const Sent& it) { return it == pad; }));
        EXPECT_EQ(outcome.faults.size(), packets.size());
    }
}

/// Datagrams with several messages each, in fragments that come in any order, twice and overlapping.
TEST_F(NetworkTest, DatagramsAreReassembledFromFragments) {
    const std::string framing = "seq:u32be, (length:u16le, id:u16le, body)";
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        const bool isV6 = seed % 2 != 0;
        const std::vector<Sent> sent = session(seed, 300);
        std::vector<Raw> packets;
        Capture::Framer one(Framing::of("length:u16le, id:u16le, body"));
        for (size_t i = 0, number = 0; i < sent.size(); ++number) {
            std::string datagram{0, 0, static_cast<char>(number >> 8), static_cast<char>(number)};
            for (const size_t end = std::min(sent.size(), i + 1 + random() % 20); i < end; ++i)
                one.append(sent[i].id(), std::string_view(sent[i].bytes).substr(2), datagram);
            std::string ip =
                isV6 ? Capture::udpPacket(v6(1, 1), v6(2, 2), datagram) : Capture::udpPacket(CLIENT, SERVER, datagram);
            const size_t header = isV6 ? 40 : 20;
            std::vector<Raw> fragments;
            const std::string contents = ip.substr(header);
            for (size_t at = 0; at < contents.size();) {
                const size_t size = std::min(contents.size() - at, 8 + random() % 40 * 8);
                const size_t more = at != 0 ? std::min<size_t>(at, random() % 3 * 8) : 0; // overlaps what was before
                const bool isLast = at + size == contents.size();
                std::string fragment = ip.substr(0, header);
                const size_t from = at - more;
                const auto put = [&](size_t place, size_t value) {
                    fragment[place] = static_cast<char>(value >> 8);
                    fragment[place + 1] = static_cast<char>(value);
                };
                if (isV6) {
                    fragment[6] = 44;
                    put(4, 8 + more + size);
                    fragment += std::string{17, 0, static_cast<char>(from >> 8),   static_cast<char>(from | !isLast),
                                            0,  0, static_cast<char>(number >> 8), static_cast<char>(number)};
                } else {
                    put(2, header + more + size);
                    put(4, number);
                    put(6, from / 8 | (isLast ? 0 : 0x2000));
                    put(10, 0);
                    const uint32_t sum = ~Capture::wordSum(fragment) & 0xFFFF;
                    put(10, sum);
                }
                fragment += contents.substr(from, more + size);
                fragments.push_back({int64_t(number), Capture::ethernetFrame(fragment)});
                at += size;
            }
            for (size_t k = 0, twice = fragments.size() / 3; k < twice; ++k) fragments.push_back(fragments[k]);
            std::shuffle(fragments.begin(), fragments.end(), random);
            packets.insert(packets.end(), fragments.begin(), fragments.end());
        }
        const Outcome outcome = read(packets, framing);
        std::vector<std::string> expected, found;
        for (const Sent& it : sent) expected.push_back(it.bytes);
        for (const Sent& it : outcome.messages) found.push_back(it.bytes);
        EXPECT_EQ(found, expected);
        for (const std::string& it : outcome.faults) // what came twice after its packet was whole waits for ever
            EXPECT_NE(it.find("came in fragments"), it.npos) << it;
    }
}

/// Packets that others send and cards capture: what they carry comes out, and what is wrong with them is told.
TEST_F(NetworkTest, PacketsOfIpAreTakenAsTheyAre) {
    const std::vector<Sent> all = session(2, 50);
    const Sent sent = *std::ranges::find_if(all, [](const Sent& it) { return it.bytes.size() > 64; });
    const std::string frame = framed({sent}), ip = Capture::udpPacket(CLIENT, SERVER, frame), contents = ip.substr(20);
    using Bytes = std::vector<std::pair<size_t, int>>;
    const auto v4 = [](std::string packet, const Bytes& bytes = {}) { // with other bytes in the header
        for (const auto& [at, byte] : bytes) packet[at] = static_cast<char>(byte);
        packet[10] = packet[11] = '\0';
        const uint32_t sum = ~Capture::wordSum(packet.substr(0, 20)) & 0xFFFF;
        packet[10] = static_cast<char>(sum >> 8);
        packet[11] = static_cast<char>(sum);
        return Raw{1, Capture::ethernetFrame(packet)};
    };
    const auto part = [&](size_t from, const std::string& bytes, bool isLast, int protocol = Capture::Ip::UDP) {
        return v4(ip.substr(0, 20) + bytes, {{3, static_cast<int>(20 + bytes.size())},
                                             {6, isLast ? 0 : 0x20},
                                             {7, static_cast<int>(from / 8)},
                                             {9, protocol}});
    };
    const std::string start = contents.substr(0, 24), rest = contents.substr(24);
    Raw cut = part(0, start, false);
    cut.bytes.resize(cut.bytes.size() - 4);
    Raw wrong = v4(ip);
    wrong.bytes[14 + 8] ^= 1;
    std::string extended =
        Capture::udpPacket(v6(1, 1), v6(2, 2), frame); // by options, a route, options, and a signature
    const std::string headers = "\x2B" + std::string(7, '\0') + "\x3C\1" + std::string(14, '\0') + "\x33"
                                + std::string(7, '\0') + "\x11\4" + std::string(22, '\0');
    extended[6] = '\0';
    extended[5] = static_cast<char>(extended[5] + static_cast<char>(headers.size()));
    extended.insert(40, headers);
    const Sender sender(CLIENT, SERVER, 1);
    Raw filled = sender.segment(0, frame, 1);
    filled.bytes += "filled up";
    const auto size = [&](size_t more) { return static_cast<int>(ip.size() + more); };
    const struct {
        std::vector<Raw> packets;
        size_t messages;
        const char* told; ///< nothing else
    } cases[] = {
        {{v4(ip, {{0, 0x44}})}, 0, "its header has 16 bytes"},
        {{v4(ip, {{0, 0x4F}})}, 0, "checksum"},
        {{wrong}, 0, "its checksum is wrong"},
        {{v4(ip, {{2, 0}, {3, 0}})}, 1, nullptr},
        {{v4(ip, {{3, 19}})}, 0, "its length, 19, is less"},
        {{cut}, 0, "of which the capture lacks 4 bytes"},
        {{part(0, start, false), part(24, std::string(8, 'x'), true, Capture::Ip::TCP), part(24, rest, true)},
         1,
         "8 bytes of 32 came in fragments"},
        {{part(0, start, false), part(16, "overlaps" + rest.substr(0, 16), false), part(40, rest.substr(16), true)},
         1,
         nullptr},
        {{part(24, rest, true), part(8, start.substr(8, 8), true), part(0, start, false)}, 1, nullptr},
        {{Raw{1, Capture::ethernetFrame(extended)}}, 1, nullptr},
        {{sender.segment(0, "", 1, TcpFlags::SYN), filled, sender.segment(frame.size(), frame, 1)}, 2, nullptr},
        {{v4(ip + "more", {{3, size(4)}})}, 1, nullptr},
        {{v4(ip, {{24, 0}, {25, 0}})}, 1, nullptr},
        {{v4(ip, {{25, 7}})}, 0, "its length is 7 of"},
    };
    for (const auto& it : cases) {
        const size_t number = static_cast<size_t>(&it - cases);
        const Outcome outcome = read(it.packets);
        EXPECT_EQ(outcome.messages.size(), it.messages) << number;
        for (const Sent& message : outcome.messages) EXPECT_EQ(message.bytes, sent.bytes) << number;
        EXPECT_EQ(outcome.faults.size(), it.told != nullptr)
            << number << (outcome.faults.empty() ? "" : outcome.faults[0]);
        if (it.told != nullptr && !outcome.faults.empty()) {
            EXPECT_NE(outcome.faults[0].find(it.told), std::string::npos) << number << outcome.faults[0];
        }
    }
}

TEST_F(NetworkTest, SumsOfAnyLengthAreThoseOfTheirWords) {
    EXPECT_EQ(Capture::wordSum(std::string_view("\x00\x01\xF2\x03\xF4\xF5\xF6\xF7", 8)), 0xDDF2u); // of RFC 1071
    Random random(1);
    for (std::string bytes; bytes.size() < 70; bytes += static_cast<char>(random())) {
        uint64_t sum = 0;
        for (size_t i = 0; i < bytes.size(); ++i) sum += uint64_t(Capture::byteAt(bytes, i)) << (i % 2 == 0 ? 8 : 0);
        EXPECT_EQ(Capture::wordSum(bytes), sum == 0 ? 0 : (sum - 1) % 0xFFFF + 1) << bytes.size();
    }
}

/// What is said of a framing that does not fit, of what it says about sequences, and of datagrams.
TEST_F(NetworkTest, FramingsThatDoNotFitAreToldWithPlaceAndHint) {
    const std::vector<Sent> sent = session(3, 50);
    const auto stream = [&](const std::string& bytes) {
        const Sender sender(CLIENT, SERVER, 1);
        return std::vector<Raw>{sender.segment(0, "", 1, TcpFlags::SYN), sender.segment(0, bytes, 1)};
    };
    const auto datagram = [&](const std::string& bytes) {
        return Raw{1, Capture::ethernetFrame(Capture::udpPacket(CLIENT, SERVER, bytes))};
    };
    const std::string numbered = "seq:u8, id:u16le, body";
    std::vector<Raw> numbers;
    for (const int number : {255, 0, 1, 4, 3}) numbers.push_back(datagram(static_cast<char>(number) + sent[0].bytes));
    const std::string bytes = framed(sent, "length:u32be, id:u16le, body").substr(0, 1200);
    struct Case {
        std::vector<Raw> packets;
        const char* framing;
        size_t messages;
        std::vector<const char*> told;
    };
    const std::string one = framed({sent[0]}), part = framed({sent[0]}, "length:u16le, id:u16le, body");
    const std::string timer("\3\0\0\0\x24\xD0\x0E", 7), junk(4, '\xFF');
    const Case cases[] = {
        {stream(bytes),
         "frames",
         0,
         {"no frame at offset 2: byte 0 of 10.0.0.1:40000 > 10.0.0.2:9001: the length ",
          " is more than 262144; 'length:u32be, id:u16le, body' would fit; 1200 bytes skipped"}},
        {stream("SSH-2.0-what\r\n"), "frames", 0, {"the length 759714643 is more than 262144; 14 bytes skipped"}},
        {stream(one + "junk" + one), "frames", 2, {"is more than 262144; 4 bytes skipped"}},
        {stream(one + one.substr(0, 5)), "frames", 1, {"the stream ends inside it; 5 bytes skipped"}},
        {stream(one), "id:u16le, body", 0, {"has no length outside of brackets: streams, as 10.0.0.1:40000 >"}},
        {stream(one + junk + timer + junk + one),
         "frames",
         2,
         {"; 15 bytes skipped"}}, // one so short may be an accident
        {stream(timer + timer), "frames", 2, {}},
        {stream("\2" + timer.substr(1, 5) + "\1\2"), "frames", 0, {"and no other follows it; 8 bytes skipped"}},
        {stream(std::string("\4\0\0\0\0\0\1\0", 8)),
         "length:u32le, id:u32le, body",
         0,
         {"the identifier 65536 is more"}},
        {stream(std::string("\3\0\0\0\x24\xD0\x0E", 7)), "length:u32le=frame, id:u16le, body", 0, {"3 is less than 6"}},
        {{datagram("\x9" + timer.substr(1))}, "frames", 0, {"the length 9 is more than what follows, 1"}},
        {numbers, numbered.c_str(), 5, {": 4 instead of 2", ": 3 instead of 5"}},
        {{datagram('\1' + part + part), datagram('\3' + part), datagram('\5' + part)},
         "seq:u8=messages, (length:u16le, id:u16le, body)",
         4,
         {": 5 instead of 4"}},
        {{datagram(one + one)}, "7:u8, length:u32le, id:u16le, body", 0, {"the number ", " is not 7"}},
        {{datagram(one + one.substr(0, 5))},
         "frames",
         1,
         {"byte 7 of a datagram ", "the fields of 6 bytes are more than the 5"}},
        {{datagram('\2' + part)},
         "count:u8, (length:u16le, id:u16le, body)",
         1,
         {"no message in the rest of a frame: 0 bytes"}},
        // Only the first message of a frame is proven by the frame.
        {{datagram('\1' + part + std::string("\2\0\x24\xD0", 4))}, "seq:u8, (length:u16le, id:u16le, body)", 2, {}},
        {{datagram('\1' + part + "x")}, "count:u8, (length:u16le, id:u16le, body)", 1, {"of a frame: 1 byte"}},
    };
    for (const Case& it : cases) {
        const Outcome outcome = read(it.packets, it.framing);
        EXPECT_EQ(outcome.messages.size(), it.messages) << it.framing;
        std::string all;
        for (const std::string& fault : outcome.faults) all += fault + '\n';
        for (const char* told : it.told) EXPECT_NE(all.find(told), all.npos) << told << " is not in " << all;
        EXPECT_EQ(it.told.empty(), all.empty()) << all;
    }
    // What is proven holds under policies that take as much.
    Capture::Packet proven;
    proven.isProven = true;
    EXPECT_TRUE(Capture::isKnownSound(proven, Inspect::whole) && Capture::isKnownSound(proven, Inspect::rolling));
    EXPECT_FALSE(Capture::isKnownSound(proven, Inspect::strict) || Capture::isKnownSound({}, Inspect::whole));
    // A datagram that the capture cut: its last message is known to be cut.
    Raw cut = datagram(one + one);
    cut.bytes.resize(cut.bytes.size() - 1);
    const Outcome outcome = read({cut});
    EXPECT_EQ(outcome.messages.size(), 2u);
    EXPECT_EQ(outcome.faults, std::vector<std::string>{"cut"});
}

/// What strangers send takes bounded memory, and what is dropped for that is told.
TEST_F(NetworkTest, HalfOpenConnectionsFragmentsAndGapsAreBounded) {
    const std::vector<Sent> sent = session(5, 20);
    const std::string bytes = framed(sent);
    std::vector<Raw> packets;
    for (uint32_t i = 0; i < 66'000; ++i) { // half-open ones, and a good one that is busy all the while
        const Endpoint from = Capture::endpointOf(0x0B000000 + i, 1);
        packets.push_back(Sender(from, SERVER, i).segment(0, "", 1, TcpFlags::SYN));
        if (i == 1) packets.push_back(Sender(from, SERVER, i).segment(0, "", 1, TcpFlags::RST));
        if (i == 2) // one that both sides close
            for (const Sender& it : {Sender(from, SERVER, i), Sender(SERVER, from, 7)})
                packets.push_back(it.segment(0, "", 1, TcpFlags::SYN | TcpFlags::FIN | TcpFlags::ACK));
        if (i % 3000 == 0 && i / 3000 < bytes.size())
            packets.push_back(Sender(CLIENT, SERVER, 1)
                                  .segment(i / 3000, bytes.substr(i / 3000, i < 63'000 ? 1 : SIZE_MAX), 1,
                                           i == 0 ? TcpFlags::SYN : TcpFlags::ACK));
    }
    Outcome outcome = read(packets);
    EXPECT_EQ(outcome.messages.size(), sent.size());
    EXPECT_EQ(outcome.connections, Capture::Network::MOST_CONNECTIONS);
    EXPECT_EQ(outcome.faults.size(), 66'001 - Capture::Network::MOST_CONNECTIONS - 2)
        << "those that ended are not told";
    EXPECT_NE(outcome.faults[0].find("dropped connection at offset"), std::string::npos) << outcome.faults[0];

    packets.clear(); // bytes after a gap, on many connections; and a length of 4 GB
    const std::string much(60'000, 'x');
    for (uint32_t i = 0; i < 1200; ++i) {
        const Sender sender(Capture::endpointOf(0x0B000000 + i, 1), SERVER, 0);
        packets.push_back(sender.segment(0, i % 100 != 0 ? "" : "\xFF\xFF\3", 1, TcpFlags::SYN));
        packets.push_back(sender.segment(i % 100 != 0 ? 100 : 3, (i % 100 != 0 ? "" : std::string("\0", 1)) + much, 1));
    }
    outcome = read(packets);
    EXPECT_LE(outcome.memory, Capture::Network::MOST_BYTES + 1'000'000);
    EXPECT_FALSE(outcome.faults.empty());

    packets.clear(); // fragments of packets that are never whole, and a fragment of a fragment
    for (uint32_t i = 0; i < 3000; ++i) {
        std::string ip = Capture::udpPacket(v6(1, 1), v6(2, 9), std::string(16, 'x'));
        ip[6] = 44;
        ip[5] = 32;
        ip.insert(40, std::string{44, 0, 0x20, 1, 0, 0, char(i >> 8), char(i)});
        packets.push_back({1, Capture::ethernetFrame(ip)});
    }
    std::string inner = packets[0].bytes;
    for (const char word : {'\1', '\x18'}) { // both parts of it, which is itself one of a part
        inner[14 + 42] = 0, inner[14 + 43] = word;
        packets.push_back({1, inner});
    }
    outcome = read(packets);
    EXPECT_LE(outcome.memory, Capture::Ip::MOST_BYTES + 65536);
    EXPECT_EQ(outcome.faults.size(), 3001u);
    EXPECT_TRUE(std::ranges::any_of(outcome.faults, [](auto& it) { return it.find("of a fragment") != it.npos; }));
    EXPECT_NE(outcome.faults[0].find("incomplete IP packet"), std::string::npos) << outcome.faults[0];
}

/// Connections of the same ports one after the other, or whose start the capture does not hold; segments that come late, cut
/// or after the end.
TEST_F(NetworkTest, ConnectionsBeginAndEnd) {
    constexpr int64_t second = 1'000'000'000;
    const std::vector<Sent> sent = session(6, 40);
    const std::string bytes = framed(sent), start = bytes.substr(0, 80), rest = bytes.substr(80);
    const Sender first(CLIENT, SERVER, 100), far(CLIENT, SERVER, 1u << 31), near(CLIENT, SERVER, 50'000),
        back(SERVER, CLIENT, 77),
        other(Capture::endpointOf(0x0A000001, 40001), Capture::endpointOf(0x0A000003, 9001), 9);
    const auto syn = [](const Sender& it) { return it.segment(0, "", 1, TcpFlags::SYN); };
    const auto whole = [&](const Sender& it) { return it.segment(0, bytes, 1); };
    const auto piece = [&](size_t from, size_t to, int64_t time) {
        return first.segment(from, std::string_view(bytes).substr(from, to - from), time);
    };
    Raw cut = first.segment(0, std::string_view(bytes).substr(0, 100), 1);
    cut.bytes.resize(cut.bytes.size() - 50);
    std::vector<Raw> much{syn(first)};
    for (size_t i = 0; i < 80; ++i) much.push_back(first.segment(80 + i * 20'000, std::string(20'000, 'x'), 1));
    much.push_back(first.segment(0, start, 1));
    const size_t n = sent.size();
    const struct {
        std::vector<Raw> packets;
        size_t messages;
        const char* told; ///< nothing else
    } cases[] = {
        {{syn(first), whole(first), syn(far), whole(far)}, 2 * n, nullptr},
        {{syn(first), syn(other), piece(0, 80, 1), whole(other), piece(80, bytes.size(), 1)}, 2 * n, nullptr},
        {{syn(first), whole(first), syn(near), whole(near)}, 2 * n, nullptr},
        {{syn(first), whole(first), whole(far)}, 2 * n, nullptr},
        {{syn(first), whole(first), back.segment(3, std::string_view(bytes).substr(3), 3)},
         2 * n - 1,
         "the capture does not hold the start of the stream; "},
        {{syn(first), back.segment(size_t(-1), "", 1), whole(back)}, n, nullptr}, // keeps alive
        {{syn(first), whole(first), first.segment(bytes.size(), "", 1, TcpFlags::FIN | TcpFlags::ACK),
          first.segment(bytes.size(), "after", 1)},
         n,
         nullptr},
        {{syn(first), piece(80, bytes.size(), 1), piece(80, 90, 1), piece(0, 80, 1)}, n, nullptr},
        {{syn(first), piece(80, bytes.size(), 1), back.segment(0, "", 1), piece(0, 80, 3 * second)}, n, nullptr},
        {{syn(first), piece(100, bytes.size(), 1), piece(100, 110, 4 * second), piece(0, 100, 5 * second)},
         n,
         "100 bytes are missing"},
        {{syn(first), piece(80, 100, 1), piece(120, bytes.size(), 1), piece(0, 80, 2 * second),
          piece(bytes.size() - 9, bytes.size(), 4 * second), piece(100, 120, 9 * second / 2)},
         n,
         nullptr},
        {{syn(first), piece(0, 80, 1), cut, piece(100, bytes.size(), 1)}, n, "20 bytes are missing; 152 bytes skipped"},
        {much, 0, "80 bytes are missing"},
    };
    for (const auto& it : cases) {
        const size_t number = static_cast<size_t>(&it - cases);
        const Outcome outcome = read(it.packets);
        if (it.told == nullptr || std::string_view(it.told).starts_with("the"))
            EXPECT_EQ(outcome.messages.size(), it.messages) << number;
        else
            EXPECT_LT(outcome.messages.size(), n) << number;
        EXPECT_EQ(outcome.faults.size(), it.told != nullptr)
            << number << (outcome.faults.empty() ? "" : outcome.faults[0]);
        if (it.told != nullptr && !outcome.faults.empty()) {
            EXPECT_NE(outcome.faults[0].find(it.told), std::string::npos) << number << outcome.faults[0];
        }
    }
    EXPECT_EQ(read(cases[4].packets).ways.back(), "10.0.0.2:9001 > 10.0.0.1:40000");
    EXPECT_EQ(read({first.segment(5, "", 1), back.segment(5, "", 1)}).connections, 0u) << "nothing was said";
    EXPECT_EQ(read({syn(first), piece(0, 5, 1), piece(5, bytes.size(), 2)}).messages[0].time, 2) << "of its last byte";

    // Frames that are missing are told once, not as numbers that are missing, too.
    const std::string numbering = "seq:u32be, length:u16be, id:u16be, body", numbered = framed(sent, numbering);
    const size_t from = framed({sent[0]}, numbering).size(), to = from + framed({sent[1]}, numbering).size();
    const Outcome outcome = read({syn(first), first.segment(0, std::string_view(numbered).substr(0, from), 1),
                                  first.segment(to, std::string_view(numbered).substr(to), 1)},
                                 numbering);
    EXPECT_EQ(outcome.messages.size(), n - 1);
    EXPECT_EQ(outcome.faults.size(), 1u);
}

/// A stream that once held a long frame in pieces holds little again when it has gone past it.
TEST_F(NetworkTest, WhatGatheredInABurstIsNotKept) {
    const std::string piece(150'000, 'x');
    Capture::StreamBytes bytes;
    for (int i = 0; i < 2; ++i) {
        bytes.take(piece, {});
        bytes.keep();
    }
    EXPECT_EQ(bytes.rest(), piece + piece);
    EXPECT_GE(bytes.memory(), 2 * piece.size());
    bytes.advance(2 * piece.size());
    bytes.take("next", {});
    EXPECT_EQ(bytes.rest(), "next");
    EXPECT_LT(bytes.memory(), 1000u);
}

/// Whoever answers did not open the connection.
TEST_F(NetworkTest, WhoOpenedAConnectionIsToldByItsAnswer) {
    Capture::Faults faults;
    Capture::Network network({Framing::of("frames")}, Inspect::default_protocol(), faults);
    const Sender server(SERVER, CLIENT, 1);
    Capture::Packet message;
    for (const Raw& it :
         {server.segment(0, "", 1, TcpFlags::SYN | TcpFlags::ACK), server.segment(0, framed({session(1, 1)[0]}), 1)}) {
        network.take({.time = it.time, .bytes = it.bytes, .linkType = it.linkType});
        if (!network.next(message)) continue;
        EXPECT_EQ(message.connection->text(), CLIENT.text() + " > " + SERVER.text());
        EXPECT_TRUE(message.connection->isBack);
    }
    EXPECT_NE(message.connection, nullptr);
}

/// Damaged in a hundred places, a capture of a network loses no packet that was not hit, whatever it stands in.
TEST_F(NetworkTest, CapturesOfNetworksSurviveDamageAsOthersDo) {
    for (const auto container : {CaptureForm::pcap, CaptureForm::pcapng, CaptureForm::erfCapture}) {
        for (unsigned seed = 1; seed <= 10; ++seed) {
            SCOPED_TRACE(testing::Message() << "container " << container << ", seed " << seed);
            CaptureForm form{.container = container};
            form.linkType = Capture::LinkType::ETHERNET;
            std::string bytes = form.header();
            std::map<uint64_t, Sent> packets;
            for (const Sent& it : session(seed, 1000)) {
                const Sent packet{it.time, Capture::ethernetFrame(Capture::udpPacket(CLIENT, SERVER, framed({it})))};
                packets[bytes.size()] = packet;
                bytes += form.record(packet);
            }
            const std::string original = bytes;
            Random random(seed);
            std::set<uint64_t> hit;
            const size_t headers = form.header().size() + 16;
            for (int i = 0; i < 100; ++i) {
                const size_t at = headers + random() % (bytes.size() - headers - 40);
                for (size_t k = at; k < at + (i % 10 == 0 ? 1 + random() % 40 : 1); ++k) {
                    bytes[k] = i % 3 == 0 ? '\0' : static_cast<char>(random());
                    if (bytes[k] != original[k]) hit.insert(std::prev(packets.upper_bound(k))->first);
                }
            }
            const Folder folder;
            Capture::Reader capture(folder.write("a", bytes), Inspect::default_protocol(), Capture::Takes::networks);
            std::map<uint64_t, Sent> found;
            for (Capture::Packet it; capture.next(it);) found[it.offset] = {it.time, std::string(it.bytes)};
            for (const auto& [offset, packet] : packets)
                EXPECT_TRUE(hit.contains(offset) || (found.contains(offset) && found[offset] == packet))
                    << "lost at " << offset;
            for (const auto& [offset, packet] : found)
                EXPECT_TRUE(packets.contains(offset)) << "invented at " << offset;
        }
    }
}

} // namespace
