// Reading captures, damaged ones above all: no good packet is lost, and what is damaged is told.
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <termios.h>
#include <unistd.h>

#include "Capture/CaptureWriter.h"
#include "Capture/Errors.h"
#include "Capture/Index.h"
#include "Capture/MessageSource.h"
#include "Capture/Reader.h"
#include "tests/Folder.h"
#include "tests/Sessions.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/trading/LatencyStats.h"

namespace {

using CaptureFile = Module;
struct InEachContainer : Module, testing::WithParamInterface<CaptureForm::Container> {
    const CaptureForm form{.container = GetParam()};
};
constexpr const char* CONTAINERS[] = {"pcap", "pcapng", "erf"};
INSTANTIATE_TEST_SUITE_P(CaptureFile, InEachContainer,
                         testing::Values(CaptureForm::pcap, CaptureForm::pcapng, CaptureForm::erfCapture),
                         [](const auto& it) { return CONTAINERS[it.param]; });

constexpr size_t FILE_HEADER = 24, HEADER = 16;

struct Outcome {
    std::map<uint64_t, Sent> packets; ///< by offset; of which the message is good
    std::map<uint64_t, Sent> cut;     ///< by offset; of which the capture holds only the start
    std::vector<uint64_t> faults;     ///< offsets of what is bad
    uint64_t skipped = 0;
};

/// Reads a capture of these bytes.
Outcome read(const std::string& bytes) {
    const Folder folder;
    Outcome outcome;
    Capture::Reader capture(folder.write("a.pcap", bytes));
    qlproto::MessageReader reader;
    Capture::Packet packet;
    for (bool isThere = true; isThere;) {
        isThere = capture.next(packet);
        if (capture.damage() != nullptr) {
            outcome.faults.push_back(capture.damage()->offset);
            outcome.skipped += capture.damage()->skipped;
        }
        if (!isThere) break;
        const Sent it{packet.time, std::string(packet.bytes)};
        const bool isCut = capture.originalLength() != packet.bytes.size();
        if (isCut) outcome.cut[packet.offset] = it;
        if (!isCut && reader.read(packet.bytes))
            outcome.packets[packet.offset] = it;
        else
            outcome.faults.push_back(packet.offset);
    }
    return outcome;
}

/// A session as a capture, with the places of its records.
struct Original {
    explicit Original(uint64_t seed, uint64_t messages, const CaptureForm& form = {}) : bytes(form.header()) {
        for (const Sent& it : session(seed, messages)) {
            packets[bytes.size()] = it;
            bytes += form.record(it);
        }
    }
    std::string bytes;
    std::map<uint64_t, Sent> packets;
};

TEST_F(CaptureFile, OfEitherByteOrderAndResolutionIsRead) {
    const std::vector<Sent> sent = session(1, 300);
    for (int variant = 0; variant < 9; ++variant) {
        const uint32_t perSecond = variant % 2 != 0 ? 1'000'000 : 1'000'000'000;
        const CaptureForm form{perSecond, variant / 2 % 2 != 0, 147, CaptureForm::Container(variant / 4)};
        std::string bytes = form.header();
        for (const Sent& it : sent) bytes += form.record(it);
        const Outcome outcome = read(bytes);
        EXPECT_TRUE(outcome.faults.empty()) << variant;
        ASSERT_EQ(outcome.packets.size(), sent.size()) << variant;
        size_t i = 0;
        for (const auto& [offset, packet] : outcome.packets) {
            EXPECT_EQ(packet.bytes, sent[i].bytes);
            EXPECT_EQ(packet.time, sent[i].time - sent[i].time % (1'000'000'000 / perSecond));
            ++i;
        }
    }
    EXPECT_THROW(read(std::string("\x0A\x0D\x0D\x0A", 4) + std::string(40, 0)), Capture::DamagedCapture);
}

TEST_P(InEachContainer, DamagedInAHundredPlacesLosesNoGoodPacket) {
    for (uint64_t seed = 1; seed <= 40; ++seed) {
        const Original original(seed, 2000, form);
        const auto isLength = [&](size_t at) { // a place in a record
            if (form.container == CaptureForm::pcapng) return at < 8 || (at >= 20 && at < 28);
            return at < HEADER && at >= (form.container == CaptureForm::erfCapture ? 14 : 8);
        };
        const size_t headers = form.header().size() + (form.container == CaptureForm::erfCapture ? HEADER : 0);
        std::string bytes = original.bytes;
        qlproto::session::Rng rng(seed);
        std::map<uint64_t, bool>
            damagedRecords; ///< by offset: whether it must be told, as it does not just alter a value
        for (int i = 0; i < 100; ++i) {
            // Single bytes, and now and then several in a row, alternately anywhere and in headers alone.
            auto at =
                static_cast<size_t>(rng.between(static_cast<int64_t>(headers), static_cast<int64_t>(bytes.size()) - 1));
            if (i % 2 == 0)
                at = std::prev(original.packets.upper_bound(at))->first
                     + static_cast<size_t>(rng.between(0, HEADER - 1));
            const auto length = static_cast<size_t>(i % 10 == 0 ? rng.between(2, 40) : 1);
            for (size_t k = at; k < std::min(at + length, bytes.size()); ++k) {
                bytes[k] = i % 3 == 0 ? '\0' : static_cast<char>(rng.between(0, 255));
                const auto hit = std::prev(original.packets.upper_bound(k));
                if (bytes[k] == original.bytes[k]) continue;
                const size_t inRecord = k - hit->first;
                damagedRecords[hit->first] |= isLength(inRecord);
            }
        }
        const Outcome outcome = read(bytes);
        for (const auto& [offset, packet] : original.packets) {
            const auto found = outcome.packets.find(offset);
            if (!damagedRecords.contains(offset)) {
                ASSERT_NE(found, outcome.packets.end()) << "seed " << seed << ": lost at " << offset;
                ASSERT_EQ(found->second, packet) << "seed " << seed << " at " << offset;
            }
        }
        // Nothing comes out where nothing was, and lengths that are damaged are told with their place.
        for (const auto& [offset, packet] : outcome.packets) ASSERT_TRUE(original.packets.contains(offset)) << offset;
        for (const auto& [offset, mustBeTold] : damagedRecords) {
            if (!mustBeTold) continue;
            // A record in a gap, or right after it, is told with the record at which the gap begins.
            bool isTold = false;
            for (const uint64_t fault : outcome.faults)
                isTold |= fault <= offset && outcome.packets.lower_bound(fault) == outcome.packets.lower_bound(offset);
            EXPECT_TRUE(isTold) << "seed " << seed << " at " << offset;
        }
    }
}

/// Of two lengths that say the same, one is enough, of whatever kind the record or block is. If that of the packet as it was
/// is greater, the packet counts as cut.
TEST_P(InEachContainer, OneDamagedLengthLosesNoPacket) {
    const Original original(11, 60, form);
    const std::vector<size_t> lengths = form.container == CaptureForm::pcap ? std::vector<size_t>{8}
                                        : form.container == CaptureForm::pcapng
                                            ? std::vector<size_t>{4, 20, 24, SIZE_MAX}
                                            : std::vector<size_t>{10};
    std::vector<size_t> places;
    for (auto it = original.packets.begin(); std::next(it) != original.packets.end(); ++it)
        for (const size_t length : lengths)
            places.push_back(length == SIZE_MAX ? std::next(it)->first - 4 : it->first + length);
    if (form.container == CaptureForm::pcapng) { // of the section, and of its interface
        const size_t section = 28, end = original.packets.begin()->first;
        places.insert(places.end(), {section - 4, section + 4, end - 4});
    }
    for (const size_t at : places) {
        for (const char value : {'\x08', '\x60', '\xFF'}) {
            if (form.container == CaptureForm::erfCapture && at == 10) continue; // tells what the file is
            std::string bytes = original.bytes;
            if (bytes[at] == value) continue;
            bytes[at] = value;
            const Outcome outcome = read(bytes);
            EXPECT_EQ(outcome.packets, original.packets) << "at " << at << ", value " << int(value);
            EXPECT_EQ(outcome.faults.size(), 1u) << "at " << at << ", value " << int(value);
        }
    }
}

/// Bytes are replaced, put in or taken out. What was not hit comes out as what it is, whole or cut, and nothing comes
/// out but where a record begins: one that was hit, perhaps a little before or after its place.
TEST_P(InEachContainer, CutToALengthAndDamagedLosesNothingAndInventsNothing) {
    constexpr unsigned most = 18; // bytes of one damage: fewer than any record has, of which one could take the place
    for (size_t length : {20u, 40u, 96u, 200u, 65000u}) {
        if (form.container == CaptureForm::erfCapture) length = (length + 7) / 8 * 8; // the container knows no others
        for (int damages = 0; damages < 400; damages += form.container == CaptureForm::pcap ? 20 : 40) {
            SCOPED_TRACE(testing::Message() << "length " << length << ", damages " << damages);
            qlproto::session::Rng rng(length + static_cast<uint64_t>(damages));
            std::vector<Sent> sent = session(length + static_cast<uint64_t>(damages), 3000);
            std::vector<std::string> records;
            std::vector<bool> isCut, isHit(sent.size());
            for (Sent& it : sent) {
                const size_t original = it.bytes.size();
                isCut.push_back(original > length);
                it.bytes.resize(std::min(original, length));
                records.push_back(form.record(it, original));
            }
            for (int i = 0; i < damages; ++i) {
                const auto hit = static_cast<size_t>(rng.between(0, 2999));
                std::string& record = records[hit];
                if (isHit[hit] || (hit == 0 && form.container == CaptureForm::erfCapture))
                    continue; // tells what the file is
                isHit[hit] = true;
                const auto anywhere = static_cast<int64_t>(record.size()) - 1;
                const auto at = static_cast<size_t>(rng.between(0, i % 2 == 0 ? 15 : anywhere));
                std::string junk(static_cast<size_t>(rng.between(1, most)), 0);
                for (char& c : junk) c = static_cast<char>(rng.between(0, 255));
                if (at < record.size()) record.replace(at, i % 3 == 0 ? 0 : junk.size(), i % 3 == 1 ? "" : junk);
            }
            std::string bytes = form.header();
            std::map<uint64_t, size_t> places;
            for (size_t i = 0; i < records.size(); ++i) {
                places[bytes.size()] = i;
                bytes += records[i];
            }
            Outcome outcome = read(bytes);
            size_t cut = 0;
            for (const auto& [offset, i] : places) {
                if (isHit[i]) continue;
                cut += isCut[i];
                auto& found = isCut[i] ? outcome.cut : outcome.packets;
                ASSERT_TRUE(found.contains(offset)) << "lost at " << offset;
                EXPECT_EQ(found[offset], sent[i]) << offset;
                found.erase(offset);
            }
            outcome.packets.merge(outcome.cut);
            for (const auto& [offset, packet] : outcome.packets) {
                bool isDamaged = false;
                for (auto it = places.lower_bound(offset - most); it != places.end() && it->first <= offset + most;
                     ++it)
                    isDamaged |= isHit[it->second];
                EXPECT_TRUE(isDamaged) << "invented at " << offset;
            }
            EXPECT_TRUE(damages != 0 || outcome.faults.size() == cut);
            EXPECT_EQ(cut != 0, length < 65000);
        }
    }
}

TEST_F(CaptureFile, TellsOnceWhatWasSkippedAndWhere) {
    const Original original(3, 100);
    auto it = std::next(original.packets.begin(), 50);
    const uint64_t first = it->first, second = (++it)->first;
    const uint32_t huge = 0x7F000000, beyond = 1'999'999'999;

    // Both lengths lost: the record is skipped as a whole.
    std::string bytes = original.bytes;
    std::memcpy(&bytes[first + 8], &huge, 4);
    std::memcpy(&bytes[first + 12], &huge, 4);
    Outcome outcome = read(bytes);
    EXPECT_EQ(outcome.packets.size(), 99u);
    EXPECT_EQ(outcome.faults, std::vector<uint64_t>{first});
    EXPECT_EQ(outcome.skipped, second - first);

    // One field lost: the packet comes out, for its body says that it is whole.
    for (const auto& [at, value] : {std::pair(4u, beyond), {8u, huge}, {8u, 3u}, {12u, 3u}}) {
        bytes = original.bytes;
        std::memcpy(&bytes[first + at], &value, 4);
        outcome = read(bytes);
        EXPECT_EQ(outcome.packets.size(), 100u) << at;
        EXPECT_EQ(outcome.packets[first].bytes, original.packets.at(first).bytes) << at;
        EXPECT_EQ(outcome.faults, std::vector<uint64_t>{first}) << at;
        EXPECT_EQ(outcome.skipped, 0u) << at;
    }

    // The end is missing.
    for (const uint64_t missing : {1u, 3u}) {
        bytes = original.bytes.substr(0, original.bytes.size() - missing);
        outcome = read(bytes);
        EXPECT_EQ(outcome.packets.size(), 99u);
        EXPECT_EQ(outcome.faults, std::vector<uint64_t>{original.packets.rbegin()->first});
        EXPECT_EQ(outcome.skipped, bytes.size() - original.packets.rbegin()->first);
    }
}

TEST_F(CaptureFile, EmptyPacketsArePacketsButAHoleIsDamage) {
    const std::vector<Sent> sent = session(4, 40);
    std::string bytes = CaptureForm().header();
    for (const Sent& it : sent)
        for (int i = 0; i < 3; ++i) bytes += CaptureForm().record({it.time, i == 0 ? it.bytes : ""});
    Outcome outcome = read(bytes);
    EXPECT_EQ(outcome.packets.size(), sent.size());
    EXPECT_EQ(outcome.faults.size(), 2 * sent.size());
    EXPECT_EQ(outcome.skipped, 0u);

    bytes = CaptureForm().header() + CaptureForm().record(sent[0]) + std::string(4096, '\0');
    for (const Sent& it : sent) bytes += CaptureForm().record(it);
    outcome = read(bytes);
    EXPECT_EQ(outcome.packets.size(), sent.size() + 1);
    EXPECT_EQ(outcome.skipped, 4096u);
}

/// What speaks for a record, and what does not: each capture is a row of pieces, of which those marked + are packets that
/// come out, good, cut or bad, and all others are skipped.
TEST_F(CaptureFile, RecordsAreBelievedForTheReasonsStated) {
    constexpr int64_t day = 86'400'000'000'000, month = 29 * day, year = 365 * day;
    const int64_t now = session(8, 1)[0].time;
    const auto record = [](Sent it, size_t length = SIZE_MAX, int64_t later = 0) {
        const size_t original = it.bytes.size();
        it.bytes.resize(std::min(length, original));
        it.time += later;
        return CaptureForm().record(it, original);
    };
    const auto setLength = [](std::string bytes, uint32_t captured, uint32_t original) {
        std::memcpy(&bytes[8], &captured, 4);
        std::memcpy(&bytes[12], &original, 4);
        return bytes;
    };
    const Sent bad{now, {"\x24\xD0\x80", 3}}, timer{now, {"\x24\xD0\x0E", 3}}; // a cut number
    const std::string good = record(timer), empty = record({now, ""}), junk(40, '\xEE');
    const Sent json{now, std::string("\x15\xF2\x7F", 3) + std::string(127, 'b')};
    using Pieces = std::vector<std::pair<char, std::string>>;
    Pieces empties{{'+', good}};
    for (int i = 0; i < 40; ++i) empties.emplace_back(i < 8 ? '+' : '-', empty); // 32 headers in a row are no accident
    empties.emplace_back('-', junk);
    Pieces inner{{'+', good}, {'-', setLength(record(bad), 1500, 1500)}};
    for (int i = 0; i < 100; ++i) inner.emplace_back('+', good);
    const std::vector<Pieces> captures = {
        empties,
        {{'+', good}, {'+', record(bad)}, {'-', junk}},                        // credible: of about the time
        {{'+', good}, {'-', record(bad, 3, year)}, {'-', junk}},               // not so
        {{'+', good}, {'-', record(bad, 3, -year)}, {'-', junk}, {'+', good}}, // nor before it
        inner,                                                                 // a length beyond other records
        {{'-', junk}, {'+', record(json, 50)}, {'+', record(json, 50)}},       // no time is known yet
        {{'-', junk}, {'-', record(json, 50)}, {'-', junk}},                   // and nothing follows
        {{'+', record(json, 20)},
         {'+', record(json)},
         {'+', good},
         {'+', setLength(record(json), 3, 130)},
         {'+', good}},
        // In junk, a few bytes that are sound must be near, or followed; more bytes need not; nor what stands in its place.
        {{'+', good}, {'-', junk}, {'-', record(timer, 3, year)}, {'-', junk}, {'+', good}},
        {{'-', junk}, {'-', good}, {'-', junk}, {'+', good}, {'+', good}},
        {{'+', good}, {'-', junk}, {'+', good}, {'-', junk}, {'+', good}},
        {{'+', good}, {'-', junk}, {'+', record(timer, 3, year)}, {'+', record(timer, 3, year)}, {'-', junk}},
        {{'+', good}, {'-', junk}, {'+', record(json, 130, year)}, {'-', junk}, {'+', good}},
        {{'+', good}, {'+', record(timer, 3, year)}, {'-', junk}, {'+', good}},
        // The time of others is that of what is believed without it, and a new one if it is that of two in a row.
        {{'+', good}, {'+', record(bad, 3, month)}, {'-', junk}, {'-', record(bad, 3, 2 * month)}, {'-', junk}},
        {{'+', record(bad)}, {'-', junk}, {'+', good}, {'-', junk}}, // or of the first
        {{'+', good},
         {'+', record(json, 130, year)},
         {'+', good},
         {'-', junk},
         {'-', record(bad, 3, year)},
         {'-', junk}},
        {{'+', good},
         {'+', record(timer, 3, year)},
         {'+', record(timer, 3, year)},
         {'-', junk},
         {'+', record(timer, 3, year)},
         {'-', junk}},
        {{'+', good},
         {'-', junk},
         {'+', record(json, 130, year)},
         {'-', junk},
         {'+', record(json, 130, year)},
         {'-', junk},
         {'-', record(bad, 3, year)},
         {'-', junk}},
    };
    for (size_t i = 0; i < captures.size(); ++i) {
        SCOPED_TRACE(i);
        std::string bytes = CaptureForm().header();
        std::map<uint64_t, size_t> expected, found; // their lengths
        for (const auto& [mark, piece] : captures[i]) {
            if (mark == '+') expected[bytes.size()] = piece.size() - HEADER;
            bytes += piece;
        }
        const Folder folder;
        Capture::Reader capture(folder.write("a.pcap", bytes));
        for (Capture::Packet packet; capture.next(packet);) found[packet.offset] = packet.bytes.size();
        EXPECT_EQ(found, expected);
    }
}

/// Junk of small numbers, noise and identifiers of messages, of which many a place is like a record of few bytes.
TEST_P(InEachContainer, NothingIsFoundInWordsThatAreNoRecords) {
    const Original original(12, 400, form);
    const auto messages = Inspect::default_protocol().messages;
    qlproto::session::Rng rng(1);
    std::string junk;
    while (junk.size() < 2'000'000) {
        const uint64_t noise = rng.next(), kind = noise >> 62;
        junk += form.word(kind < 2    ? noise % 16
                          : kind == 2 ? noise
                                      : messages[noise % messages.size()].id | noise >> 16 << 16);
    }
    const uint64_t half = std::next(original.packets.begin(), 200)->first;
    const Outcome outcome = read(std::string(original.bytes).insert(half, junk));
    for (const auto& [offset, it] : original.packets) {
        const auto found = outcome.packets.find(offset + (offset < half ? 0 : junk.size()));
        EXPECT_TRUE(found != outcome.packets.end() && found->second == it) << "lost: " << offset;
    }
    EXPECT_EQ(outcome.packets.size(), original.packets.size());
}

/// Text can be a record. It is one only where records are looked for.
TEST_F(CaptureFile, RecordsInsidePacketsAreNone) {
    const std::vector<Sent> sent = session(5, 20);
    const std::string inner = CaptureForm().record(sent[3]);
    const Sent json{sent[4].time, std::string("\x15\xF2", 2) + static_cast<char>(inner.size() + 2) + 'a' + inner + 'z'};
    ASSERT_LT(inner.size(), 126u);
    const auto cut = [](const Sent& it, size_t length) {
        return CaptureForm().record({it.time, it.bytes.substr(0, length)}, it.bytes.size());
    };
    const size_t length = json.bytes.size() - 1; // the inner record ends with the outer one
    const Sent other{json.time, std::string("\x15\xF2\x7F", 3) + std::string(127, 'b')};
    std::string bytes = CaptureForm().header() + cut(other, length);
    const uint64_t whole = bytes.size();
    bytes += CaptureForm().record(json);
    const uint64_t second = bytes.size();
    bytes += cut(json, length) + CaptureForm().record(sent[5]);
    const Outcome outcome = read(bytes + "damage");
    EXPECT_EQ(outcome.packets.size(), 2u);
    EXPECT_EQ(outcome.packets.begin()->first, whole);
    EXPECT_EQ(outcome.cut.size(), 2u);
    EXPECT_EQ(outcome.faults, (std::vector<uint64_t>{FILE_HEADER, second, bytes.size()}));
}

/// Headers that make every place look like a long packet cost no more than other junk, and hide nothing behind it.
TEST_F(CaptureFile, CraftedHeadersHideNoGoodPacket) {
    const auto word = [](uint32_t number) { return std::string(reinterpret_cast<const char*>(&number), 4); };
    for (const uint32_t seconds : {0x01010101u, 1'709'535'600u}) {
        for (const uint32_t original : {200'000u, 262'144u}) {
            std::string bytes = CaptureForm().header();
            while (bytes.size() < 2'000'000)
                bytes += word(seconds) + word(1) + word(200'000) + word(original) + "\x52\xD0\xFF\xFF"; // a long list
            bytes.append(262'144, 'x');
            const size_t crafted = bytes.size();
            const std::vector<Sent> sent = session(6, 2000);
            for (const Sent& it : sent) bytes += CaptureForm().record(it);
            const Outcome outcome = read(bytes);
            size_t good = 0;
            for (const auto& [offset, packet] : outcome.packets) good += offset >= crafted;
            EXPECT_EQ(good, sent.size());
        }
    }
}

/// A terminal whose other end has gone gives what was written, then an error.
TEST_F(CaptureFile, AReadErrorComesAfterWhatWasReadAndIsNoEnd) {
    const std::vector<Sent> sent = session(7, 10);
    std::string bytes = CaptureForm().header();
    for (const Sent& it : sent) bytes += CaptureForm().record(it);
    bytes += CaptureForm().record({sent[0].time, sent[0].bytes.substr(0, 2)}, 50); // what follows it counts
    ASSERT_LT(bytes.size(), 4000u);                                                // what a terminal holds
    for (const bool isParallel : {false, true}) {
        const int master = posix_openpt(O_RDWR | O_NOCTTY);
        ASSERT_TRUE(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
        const int slave = open(ptsname(master), O_RDWR | O_NOCTTY);
        termios raw{};
        cfmakeraw(&raw);
        ASSERT_EQ(tcsetattr(slave, TCSANOW, &raw), 0);
        ASSERT_EQ(write(slave, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        close(slave);
        ASSERT_EQ(dup2(master, STDIN_FILENO), STDIN_FILENO);
        close(master);

        qlproto::CaptureScan scan;
        if (isParallel)
            EXPECT_THROW(scan.gather<qlproto::LatencyStats>({"-"}), Capture::IoError);
        else
            EXPECT_THROW(scan.run({"-"}, [](const auto&...) {}), Capture::IoError);
        EXPECT_EQ(scan.messages(), sent.size()) << isParallel;
    }
}

/// Standard input that is closed stays closed, whatever files are opened.
TEST_F(CaptureFile, AClosedStandardInputIsAnError) {
    const Folder folder;
    const std::string path = folder.write("a.pcap", CaptureForm().header());
    close(STDIN_FILENO);
    Capture::Reader file(path);
    EXPECT_THROW(Capture::Reader("-"), Capture::IoError);
    open("/", O_RDONLY | O_DIRECTORY); // as standard input
    EXPECT_THROW(Capture::Reader("-"), Capture::IoError);
}

TEST_F(CaptureFile, OfRandomBytesEndsInOneFault) {
    qlproto::session::Rng rng(5);
    std::string bytes = CaptureForm().header();
    for (int i = 0; i < 3'000'000; ++i) bytes += static_cast<char>(rng.next());
    const Outcome outcome = read(bytes);
    EXPECT_TRUE(outcome.packets.empty());
    EXPECT_EQ(outcome.faults, std::vector<uint64_t>{FILE_HEADER});
    EXPECT_EQ(outcome.skipped, 3'000'000u);
}

/// What one interface of many says of its packets holds for them alone, and what is no packet of ours is passed over.
TEST_F(CaptureFile, OfBlocksOfManyKindsGivesItsMessagesWithTheirTimes) {
    for (const bool isSwapped : {false, true}) {
        const CaptureForm form{.isSwapped = isSwapped, .container = CaptureForm::pcapng};
        const auto halves = [&](uint32_t first, uint32_t second) {
            return form.word(isSwapped ? first << 16 | second : second << 16 | first);
        };
        const auto option = [&](uint32_t code, std::string value) {
            const auto size = static_cast<uint32_t>(value.size());
            return halves(code, size) + value.append(-size % 4, '\0');
        };
        const auto interface = [&](uint32_t link, const std::string& options) {
            return form.block(1, halves(link, 0) + form.word(0) + options);
        };
        const auto packet = [&](uint32_t number, uint64_t time, const std::string& options = "") {
            return form.block(6, form.word(number) + form.word(time >> 32) + form.word(time) + form.word(3)
                                     + form.word(3) + std::string("\x24\xD0\x80\0", 4) + options);
        };
        const std::string comment = option(1, "by \"hand\"");
        const std::string offset = form.word(isSwapped ? 0 : 5) + form.word(isSwapped ? 5 : 0); // 64 bits
        const std::string seconds = form.header().substr(0, form.header().size() - 32) +        // of no interface yet
                                    interface(147, "") + interface(147, option(9, "\x8A") + option(14, offset))
                                    + interface(1, "") + interface(147, comment + option(9, "\x0C") + form.word(0));
        const std::string bytes = seconds + packet(0, 7'000'001) + form.block(0xBAD, form.word(32473))
                                  + packet(1, 3 * 1024 + 512, comment) + packet(2, 1) + packet(2, 1)
                                  + packet(3, 9'000'000'001'000, comment + form.word(0)) + form.block(4, form.word(0))
                                  + form.block(3, form.word(3) + std::string("\x24\xD0\x80\0", 4))
                                  + form.block(2, halves(1, 9) + packet(0, 1024).substr(12, 20)) + form.header()
                                  + packet(0, 42) + packet(7, 43);
        const Folder folder;
        Capture::Reader capture(folder.write("a.pcapng", bytes));
        std::vector<int64_t> times;
        std::vector<std::string> told;
        for (Capture::Packet it; capture.next(it);) {
            EXPECT_EQ(it.bytes, std::string_view("\x24\xD0\x80"));
            times.push_back(it.time);
            if (capture.damage() != nullptr) told.push_back(capture.damage()->text());
        }
        EXPECT_EQ(times, (std::vector<int64_t>{7'000'001'000, 8'500'000'000, 9'000'000'001, 9'000'000'001,
                                               6'000'000'000, 42, 43}));
        ASSERT_EQ(told.size(), 2u);
        EXPECT_NE(told[0].find("its interface has link type 1 instead of USER0 (147): all packets of it"),
                  told[0].npos);
        EXPECT_NE(told[1].find("its interface, 7, is not described"), told[1].npos);
        Capture::Reader others(folder.write("b.pcapng", form.header().substr(0, form.header().size() - 32)
                                                            + interface(1, "") + packet(0, 1)));
        Capture::Packet it;
        EXPECT_THROW(others.next(it), Capture::DamagedCapture);
    }
}

/// A compressed file of several parts, as the usual programs make it: damage to one loses nothing of the others, and of that
/// one no more than comes after.
TEST_F(CaptureFile, CompressedInPartsLosesNoneButTheDamagedOne) {
    const Folder folder;
    const std::vector<Sent> sent = session(9, 8000);
    std::vector<std::string> parts(8);
    for (size_t i = 0; i < sent.size(); ++i)
        parts[i / 1000].append(i == 0 ? CaptureForm().header() : "").append(CaptureForm().record(sent[i]));
    // Without the time of the file: a part that is cut takes the next header, with that time in it, for more of its own data, and
    // with few times what comes out of it looks like a message.
    for (const std::string command : {"gzip -nc", "zstd -qc"}) {
        std::vector<std::string> packed;
        for (const std::string& part : parts) {
            folder.write("part", part);
            packed.push_back(folder.run(command + " part").out);
        }
        for (int what = 0; what < 6;
             ++what) { // nothing, a byte, the start, the end of a part, the end of the file, junk
            SCOPED_TRACE(testing::Message() << command << ' ' << what);
            std::string bytes, skippable("\x5A\x2A\x4D\x18\5\0\0\0\x28\xB5\x2F\xFD\0", 13);
            for (size_t i = 0; i < packed.size(); ++i) {
                std::string part = packed[i];
                if (i == 3 && what == 1) part[part.size() / 2] ^= 0x55;
                if (i == 3 && what == 2) part[1] ^= 0x55;
                if ((i == 3 && what == 3) || (i == 7 && what == 4)) part.resize(part.size() - 20);
                bytes += part;
                if (i == 3 && what == 5) bytes += "no part";
                if (command[0] == 'z') bytes += skippable;
            }
            const Outcome outcome = read(bytes + std::string(600, '\0'));
            const size_t good = what == 0 || what == 5 ? 8000 : 7000;
            EXPECT_EQ(outcome.faults.empty(), what == 0);
            EXPECT_GE(outcome.packets.size(), good);
            EXPECT_EQ(outcome.packets.size() == 8000, good == 8000);
            std::vector<Sent> found;
            for (const auto& it : outcome.packets) found.push_back(it.second);
            const size_t before = what == 4 ? 7000 : 3000, after = what == 4 ? 0 : 4000;
            EXPECT_TRUE(std::equal(sent.begin(), sent.begin() + static_cast<int>(before), found.begin()));
            EXPECT_TRUE(
                std::equal(sent.end() - static_cast<int>(after), sent.end(), found.end() - static_cast<int>(after)));
        }
    }
}

/// Whatever a host's capture is written as, who looks on sees whole packets, and all of them after a flush.
TEST_F(CaptureFile, WrittenByAHostEndsWithAWholePacketAtAnyTime) {
    const std::vector<Sent> sent = session(2, 9000);
    for (const char* name : {"a.pcap", "a.pcapng", "a.pcap.zst", "a.pcapng.zst"}) {
        for (const bool isFlushed : {false, true}) {
            const int fd = memfd_create("capture", 0);
            const std::string path = "/proc/self/fd/" + std::to_string(fd);
            Capture::CaptureWriter writer(path, {.form = Capture::WriterForm::of(name), .isFlushed = isFlushed});
            size_t written = 0;
            for (const Sent& it : sent) {
                writer.packet({it.time, it.bytes});
                if (++written % 3000 != (isFlushed ? 7 : 0)) continue;
                if (lseek(fd, 0, SEEK_END) == 0) continue; // nothing has gathered
                Capture::Reader reader(path);
                size_t found = 0;
                for (Capture::Packet packet; reader.next(packet); ++found) ASSERT_EQ(packet.bytes, sent[found].bytes);
                EXPECT_EQ(reader.damage(), nullptr) << name << reader.damage()->text();
                EXPECT_TRUE(isFlushed ? found == written : found <= written && found + 12000 > written);
                if (isFlushed && written > 3000) break; // what is flushed so often is slow
            }
            close(fd);
        }
    }
    const Folder folder;
    Capture::CaptureWriter writer(folder.path("h.pcapng"), {.rotateTime = 1'000'000'000});
    for (const Sent& it : sent) writer.packet({it.time, it.bytes});
    writer.close();
    size_t next = 0;
    for (int number = 1; next < sent.size(); ++number) {
        Capture::Reader reader(folder.path("h-0000" + std::to_string(number) + ".pcapng"));
        const int64_t first = sent[next].time;
        for (Capture::Packet packet; reader.next(packet); ++next) {
            ASSERT_EQ(packet.bytes, sent[next].bytes);
            EXPECT_LT(packet.time, first + 1'000'000'000);
        }
        ASSERT_TRUE(next == sent.size() || sent[next].time >= first + 1'000'000'000);
    }
}

/// Several captures are one in the order of time, and what is wrong says in which of them it stands.
TEST_F(CaptureFile, SeveralAreReadAsOneAndFaultsSayOfWhich) {
    const Folder folder;
    std::vector<std::string> paths;
    using Places = std::set<std::pair<size_t, uint64_t>>; // captures and offsets in them
    Places faults, told;
    for (size_t i = 0; i < 3; ++i) {
        const Original original(i + 1, 100);
        std::string bytes = original.bytes;
        for (size_t damage = 0; damage < i; ++damage) {
            const uint64_t at = std::next(original.packets.begin(), static_cast<int>(90 - 40 * damage))->first;
            bytes.insert(at, 40, '\xEE');
            faults.emplace(i, at + (damage + 1 < i ? 40 : 0)); // the one before it is put in later
        }
        paths.push_back(folder.write(std::to_string(i), bytes));
    }
    Capture::MessageSource source(paths, Inspect::default_protocol());
    std::map<size_t, size_t> messages;
    int64_t last = 0;
    for (Capture::Packet it;; ++messages[it.capture]) {
        const bool isThere = source.next(it);
        for (const Capture::Damage& damage : source.faults()) told.emplace(damage.capture, damage.offset);
        if (!isThere) break;
        EXPECT_GE(it.time, std::exchange(last, it.time));
    }
    EXPECT_EQ(told, faults);
    EXPECT_EQ(messages, (std::map<size_t, size_t>{{0, 100}, {1, 100}, {2, 100}}));
}

TEST_F(CaptureFile, AnIndexTellsOfItsPartsAndIsOfItsCaptureAlone) {
    const Folder folder;
    const std::string bytes(5'000'000, 'x'); // no more is looked at than its size and ends
    const std::string path = folder.write("a", bytes);
    const Inspect::Protocol& protocol = Inspect::default_protocol();
    std::string why;
    {
        Capture::Index index(path, protocol);
        constexpr uint64_t size = 4 * 1024 * 1024;
        for (const auto& [offset, time, isBad] :
             {std::tuple(24ul, 50, false), {90ul, 30, true}, {23 + size, 70, false}, {24 + size, 40, true}})
            index.add({.time = time, .bytes = "\x24\xD0\x0E", .offset = offset}, isBad);
        index.write();
        const std::optional<Capture::Index> read = Capture::Index::beside(path, protocol, why);
        ASSERT_TRUE(read && read->parts().size() == 2) << why;
        const auto tell = [](const Capture::Index::Part& it) {
            return std::tuple(it.packet, it.offset, it.place.file, it.earliest, it.latest, it.faults);
        };
        EXPECT_EQ(tell(read->parts()[0]), std::tuple(1, 24, 24, 30, 70, 1));
        EXPECT_EQ(tell(read->parts()[1]), std::tuple(4, 24 + size, 24 + size, 40, 40, 1));
        const Capture::Index::Part* const parts = read->parts().data();
        for (const auto& [packet, part] :
             {std::pair(1u, parts), {3, parts}, {4, parts + 1}, {0, nullptr}, {5, nullptr}})
            EXPECT_EQ(read->partOf(packet), part);
    }
    const auto isTaken = [&](const Inspect::Protocol& by) {
        why.clear();
        const bool isThere = Capture::Index::beside(path, by, why).has_value();
        EXPECT_EQ(why.find("is not of this capture as it is now") != why.npos, !isThere);
        return isThere;
    };
    for (const auto& [at, isLonger] : {std::pair(bytes.size() / 2, true),
                                       {0ul, false},
                                       {65'535ul, false},
                                       {bytes.size() - 65'536, false},
                                       {bytes.size() - 1, false}}) {
        folder.write("a", std::string(bytes).replace(at, isLonger ? 0 : 1, "y"));
        EXPECT_FALSE(isTaken(protocol)) << at;
    }
    folder.write("a", bytes);
    EXPECT_TRUE(isTaken(protocol));
    Inspect::Protocol other = protocol;
    other.messages = other.messages.first(3);
    EXPECT_FALSE(isTaken(other));

    const std::string written = folder.content("a.index"), head = written.substr(0, written.find('\n') + 1);
    const auto isRead = [&](const std::string& first, const std::string& second) {
        const std::string end = ",0,0,0,\"0\"]\n";
        folder.write("a.index", head + "[" + first + end + "[" + second + end);
        return isTaken(protocol);
    };
    EXPECT_TRUE(isRead("1,24,24,24", "4,25,5000000,25"));
    for (const auto& [first, second] : {std::pair("1,24,24,24", "5,25,25,25"), // there are 4 packets
                                        {"1,24,24,24", "1,25,25,25"},
                                        {"0,24,24,24", "4,25,25,25"},
                                        {"1,24,24,24", "4,24,24,24"},
                                        {"1,24,24,24", "4,25,5000001,25"},
                                        {"1,24,24,24", "4,25,25,26"}})
        EXPECT_FALSE(isRead(first, second)) << first << ' ' << second;
}

/// Whichever parts of a capture are wanted, their messages come out and no others.
TEST_F(CaptureFile, PartsThatAreNotWantedArePassedOver) {
    const Folder folder;
    const Original original(5, 12);
    const std::string path = folder.write("a.pcap", original.bytes);
    const Inspect::Protocol& protocol = Inspect::default_protocol();
    Capture::Index whole(path, protocol);
    for (const auto& [offset, it] : original.packets)
        whole.add({.time = it.time, .bytes = it.bytes, .offset = offset}, false);
    whole.write();
    std::string text = folder.content("a.pcap.index"), why;
    text.resize(text.find('\n') + 1);
    std::vector<uint64_t> offsets;
    for (const auto& it : original.packets) offsets.push_back(it.first);
    const std::vector<size_t> begins = {0, 3, 5, 8, 12}; // of parts: places of packets
    for (size_t i = 0; i < 4; ++i) {
        const std::string offset = std::to_string(offsets[begins[i]]);
        text.append("[" + std::to_string(begins[i] + 1) + "," + offset + "," + offset + "," + offset)
            .append(",0,0," + std::to_string(1 << i) + ",\"0\"]\n");
    }
    folder.write("a.pcap.index", text);
    std::optional<Capture::Index> index = Capture::Index::beside(path, protocol, why);
    ASSERT_TRUE(index) << why;
    for (uint64_t wanted = 1; wanted < 16; wanted += 2) { // a bit for each part: its number of faults
        std::vector<uint64_t> expected, found;
        for (size_t i = 0; i < 4; ++i)
            for (size_t k = begins[i]; k < begins[i + 1]; ++k)
                if ((wanted >> i & 1) != 0) expected.push_back(offsets[k]);
        Capture::MessageSource source({path}, protocol);
        uint64_t packets = 0, faults = 0;
        for (Capture::Packet it;;) {
            const bool isThere = source.next(it);
            packets += source.passedOver().packets;
            faults += source.passedOver().faults;
            if (!isThere) break;
            if (found.empty())
                source.passOver(*index, [&](const Capture::Index::Part& part) { return (wanted & part.faults) != 0; });
            found.push_back(it.offset);
        }
        EXPECT_EQ(found, expected) << wanted;
        EXPECT_EQ(packets, offsets.size() - expected.size()) << wanted;
        EXPECT_EQ(faults, 15 - wanted);
    }
}

/// Little that becomes much is refused, and a window that takes much memory; what becomes much in good measure is not.
TEST_F(CaptureFile, CompressedBeyondMeasureIsRefused) {
    const Folder folder;
    const auto readAll = [&](const std::string& command) {
        EXPECT_EQ(folder.run(command + " >packed").exitCode, 0);
        Capture::ByteWindow window(folder.path("packed"));
        while (const size_t size = window.peek(1).size()) window.skip(size);
        return window.hasFault() ? "" : std::to_string(window.position());
    };
    EXPECT_EQ(readAll("head -c 250M /dev/zero | zstd -q"), std::to_string(250 << 20));
    EXPECT_THROW(readAll("head -c 300M /dev/zero | zstd -q"), Capture::DamagedCapture);
    EXPECT_THROW(readAll("head -c 300M /dev/zero | gzip"), Capture::DamagedCapture);
    EXPECT_EQ(readAll("head -c 1M /dev/urandom | zstd -q --long=27"), std::to_string(1 << 20));
    EXPECT_EQ(readAll("head -c 300M /dev/zero | zstd -q --long=28"), "");
}

} // namespace
