// Journals and buses: what was published comes back, and what does not is told, whatever dies, fills up or is damaged.
#include <atomic>
#include <csignal>
#include <fstream>
#include <random>
#include <thread>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/Reader.h"
#include "Host/Journal.h"
#include "tests/Folder.h"

namespace {

using namespace Host;
using testing::TestInfo;

/// The body that a message with this number has, in a host that sends numbers.
std::string bodyOf(uint64_t number) { return std::to_string(number) + std::string(number * 37 % 200, 'x'); }
uint64_t numberOf(const Record& record) {
    const uint64_t number = std::stoull(std::string(record.body));
    EXPECT_EQ(record.body, bodyOf(number));
    return number;
}
constexpr int64_t timeOf(uint64_t number) { return static_cast<int64_t>(number * 1000); }

class Journals : public testing::Test {
  protected:
    const Folder folder;
    const std::string path = folder.path("journal");
    Record record;

    static void append(Journal& journal, uint64_t number) {
        const std::string body = bodyOf(number);
        ASSERT_EQ(journal.append({.id = 7, .body = body, .time = timeOf(number)}), number);
    }
    /// How many packets readers of captures find in all files, without damage.
    uint64_t packetsOfCaptures() const {
        uint64_t packets = 0;
        for (const JournalFile& file : JournalFile::in(path)) {
            Capture::Reader capture(path + '/' + file.name);
            uint64_t number = file.sequence;
            for (Capture::Packet packet; capture.next(packet); ++packets, ++number) {
                EXPECT_EQ(packet.bytes, Capture::identifierBytes(7) + bodyOf(number));
                EXPECT_EQ(packet.time, timeOf(number));
            }
            EXPECT_EQ(capture.damage(), nullptr);
        }
        return packets;
    }
    /// The sequences of all that a reader gives, whose bodies tell the same number.
    std::vector<uint64_t> read(JournalReader&& reader) {
        std::vector<uint64_t> all;
        while (reader.next(record)) {
            EXPECT_EQ(record.lost, record.sequence - (all.empty() ? record.sequence - record.lost : all.back() + 1));
            all.push_back(record.sequence);
            EXPECT_EQ(numberOf(record), record.sequence);
            EXPECT_EQ(record.time, timeOf(record.sequence));
        }
        return all;
    }
    std::vector<uint64_t> readFrom(From from) { return read(JournalReader(path, from)); }
    static std::vector<uint64_t> numbers(uint64_t first, uint64_t last) {
        std::vector<uint64_t> all;
        for (uint64_t i = first; i <= last; ++i) all.push_back(i);
        return all;
    }
};

TEST_F(Journals, AreReadFromAnySequenceOrTimeAndByReadersOfCaptures) {
    constexpr uint64_t COUNT = 1000;
    EXPECT_THROW(JournalReader reader(path), Capture::IoError);
    {
        Journal journal(path, {.rotateSize = 20'000});
        for (uint64_t i = 1; i <= COUNT; ++i) append(journal, i);
        EXPECT_THROW(Journal second(path), Capture::IoError) << "one at a time";
        EXPECT_THROW(journal.append({.id = 1, .body = "", .time = 1, .sequence = COUNT}), std::invalid_argument);
        EXPECT_THROW(journal.append({.id = 1, .body = "", .time = -1}), std::invalid_argument);
        const std::string tooLong(LONGEST_JOURNAL_BODY + 1, 'x');
        EXPECT_THROW(journal.append({.id = 1, .body = tooLong}), std::invalid_argument);
        journal.sync();
    }
    const std::vector<JournalFile> files = JournalFile::in(path);
    EXPECT_GT(files.size(), 5u);
    for (const JournalFile& file : files) EXPECT_LT(std::filesystem::file_size(path + '/' + file.name), 20'400u);
    for (const uint64_t first :
         {uint64_t{1}, uint64_t{2}, files[3].sequence - 1, files[3].sequence, COUNT, COUNT + 1}) {
        EXPECT_EQ(readFrom(From::at(first)), numbers(first, COUNT));
        EXPECT_EQ(readFrom(From::since(timeOf(first) - 999)), numbers(first, COUNT));
        EXPECT_EQ(readFrom(From::since(timeOf(first))), numbers(first, COUNT));
    }
    EXPECT_EQ(readFrom(From::oldest()), numbers(1, COUNT));
    EXPECT_EQ(readFrom(From::live()), numbers(1, 0));

    EXPECT_EQ(packetsOfCaptures(), COUNT);

    // What was taken away from the front is told.
    std::filesystem::remove(path + '/' + files[0].name);
    JournalReader reader(path, From::at(1));
    ASSERT_TRUE(reader.next(record));
    EXPECT_EQ(record.lost, files[1].sequence - 1);

    Journal journal(path, {.rotateTime = 5000}); // each five
    EXPECT_EQ(journal.last(), COUNT);
    for (uint64_t i = COUNT + 1; i <= COUNT + 20; ++i) append(journal, i);
    EXPECT_EQ(JournalFile::in(path).size(), files.size() - 1 + 4);
    EXPECT_EQ(journal.append({.id = 7, .body = "x", .time = 1, .sequence = 5000}), 5000u);
    EXPECT_EQ(journal.append({.id = 7, .body = "x", .time = 1}), 5001u);

    const std::string others = folder.path("others");
    Journal equal(others, {.rotateSize = 1});
    for (int i = 0; i < 3; ++i) equal.append({.id = 7, .body = "x", .time = 5});
    JournalReader ofTime(others, From::since(5));
    EXPECT_TRUE(ofTime.next(record) && record.sequence == 1) << "the first of that time";
}

// A journal of one file that is cut off at every byte, and one with a bit flipped in every byte: whole messages are all there,
// missing ones are told, and it goes on.
TEST_F(Journals, LoseNothingButWhatIsDamaged) {
    constexpr uint64_t COUNT = 5;
    std::vector<size_t> ends; // of each message in the file
    {
        Journal journal(path);
        for (uint64_t i = 1; i <= COUNT; ++i) {
            append(journal, i);
            ends.push_back(std::filesystem::file_size(path + '/' + JournalFile::in(path)[0].name));
        }
    }
    const std::string name = "journal/" + JournalFile::in(path)[0].name, bytes = folder.content(name);
    std::string first;
    const std::string body = bodyOf(1);
    appendJournalBlock(first, {.id = 7, .body = body, .time = timeOf(1), .sequence = 1});
    const size_t start = ends[0] - first.size(); // what stands before belongs to no message
    const auto expectGoesOn = [&](const std::vector<uint64_t>& whole, bool isCut, const std::string& what) {
        SCOPED_TRACE(what);
        EXPECT_EQ(readFrom(From::oldest()), whole);
        const uint64_t last = whole.empty() ? 0 : whole.back();
        {
            Journal journal(path);
            ASSERT_EQ(journal.last(), last);
            EXPECT_TRUE(!isCut || journal.damages() == 0);
            append(journal, last + 1);
            EXPECT_EQ(JournalFile::in(path).size(), journal.damages() != 0 ? 2u : 1u);
        }
        EXPECT_TRUE(!isCut || packetsOfCaptures() == last + 1);
        std::vector<uint64_t> all = whole;
        all.push_back(last + 1);
        EXPECT_EQ(readFrom(From::oldest()), all);
    };
    const auto restore = [&](const std::string& content) {
        for (const JournalFile& file : JournalFile::in(path)) std::filesystem::remove(path + '/' + file.name);
        folder.write(name, content);
    };
    restore(bytes + std::string(3000, 'x'));
    expectGoesOn(numbers(1, COUNT), true, "longer than what comes next");
    for (size_t at = 0; at < bytes.size(); ++at) {
        const auto whole = static_cast<uint64_t>(std::ranges::count_if(ends, [&](size_t end) { return end <= at; }));
        restore(bytes.substr(0, at));
        expectGoesOn(numbers(1, whole), true, "cut at " + std::to_string(at));

        std::string damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 1 << at % 8);
        restore(damaged);
        std::vector<uint64_t> others = numbers(1, COUNT);
        if (at >= start) others.erase(others.begin() + static_cast<std::ptrdiff_t>(whole));
        expectGoesOn(others, false, "flipped at " + std::to_string(at));
    }
}

TEST_F(Journals, AreFollowedWhileTheyGrow) {
    constexpr uint64_t COUNT = 20'000;
    Journal journal(path, {.rotateSize = 50'000});
    JournalReader reader(path, From::live());
    EXPECT_TRUE(reader.wait(1)) << "for what was written before it began to watch";
    EXPECT_FALSE(reader.next(record) || reader.wait(1));
    std::thread writer([&] {
        for (uint64_t i = 1; i <= COUNT; ++i) append(journal, i);
    });
    uint64_t last = 0;
    while (last < COUNT && (reader.next(record) || reader.wait(10'000)))
        if (record.sequence == last + 1) {
            ASSERT_EQ(numberOf(record), record.sequence);
            last = record.sequence;
        }
    writer.join();
    EXPECT_EQ(last, COUNT);
    EXPECT_EQ(reader.lost() + reader.damages(), 0u);
    EXPECT_FALSE(reader.next(record));
}

/// A limit on the size of files stands for a disk that is full.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &_old);
        const rlimit limit{bytes, _old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &_old); }

  private:
    rlimit _old{};
};

TEST_F(Journals, RefuseWhatDoesNotFitTheDiskAndGoOnLater) {
    for (const rlim_t room : {0u, 100u, 300u, 1000u, 5000u}) {
        std::filesystem::remove_all(path);
        Journal journal(path);
        std::filesystem::create_directory(path);
        uint64_t written = 0;
        {
            const FullDisk disk(room);
            try {
                for (;; ++written) append(journal, written + 1);
            } catch (const Capture::IoError&) {
            }
            EXPECT_THROW(append(journal, written + 1), Capture::IoError) << "told again";
        }
        EXPECT_EQ(written > 10, room == 5000);
        EXPECT_EQ(readFrom(From::oldest()), numbers(1, written));
        EXPECT_EQ(packetsOfCaptures(), written);
        append(journal, written + 1);
        EXPECT_EQ(readFrom(From::oldest()), numbers(1, written + 1));
    }
}

// Nothing that append() returned for is lost when the process is killed.
TEST_F(Journals, OutliveTheirWriters) {
    auto* const acknowledged =
        static_cast<uint64_t*>(mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    std::mt19937 random(5);
    uint64_t last = 0;
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            Journal journal(path, {.rotateSize = 20'000});
            for (uint64_t i = journal.last() + 1;; ++i) {
                append(journal, i);
                __atomic_store_n(acknowledged, i, __ATOMIC_SEQ_CST);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(2000 + random() % 5000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const Journal journal(path);
        EXPECT_GE(journal.last(), *acknowledged);
        EXPECT_LE(journal.last(), *acknowledged + 1);
        EXPECT_EQ(journal.damages(), 0u);
        last = journal.last();
    }
    EXPECT_EQ(readFrom(From::oldest()), numbers(1, last));
    EXPECT_GT(last, 100u);
    RecordProperty("acknowledged", std::to_string(*acknowledged));
}

} // namespace
