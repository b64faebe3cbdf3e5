// Journals and buses: what was published comes back, and what does not is told, whatever dies, fills up or is damaged.
#include <atomic>
#include <csignal>
#include <fstream>
#include <iostream>
#include <random>
#include <set>
#include <thread>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/Reader.h"
#include "Host/Engines.h"
#include "Host/Journal.h"
#include "Host/MemBus.h"
#include "Host/QLProtocol.h"
#include "Host/Recorder.h"
#include "tests/Folder.h"
#include "tests/Module.h"
#include "tests/Samples.h"
#include "tests/ToolFolder.h"

namespace {

using namespace Host;
using Quillon::SubmitOrderMessage;
using Quillon::TimerMessage;

/// The body that a message with this number has, in a host that sends numbers.
std::string bodyOf(uint64_t number) { return std::to_string(number) + std::string(number * 37 % 200, 'x'); }
uint64_t numberOf(const Record& record) {
    const uint64_t number = std::stoull(std::string(record.body));
    EXPECT_EQ(record.body, bodyOf(number));
    return number;
}
constexpr int64_t timeOf(uint64_t number) { return static_cast<int64_t>(number * 1000); }

/// A number that processes share.
class Counter {
  public:
    Counter() = default;
    Counter(const Counter&) = delete;
    Counter& operator=(const Counter&) = delete;
    ~Counter() { munmap(_number, sizeof *_number); }
    operator uint64_t() const { return __atomic_load_n(_number, __ATOMIC_SEQ_CST); }
    void operator=(uint64_t number) { __atomic_store_n(_number, number, __ATOMIC_SEQ_CST); }

  private:
    uint64_t* const _number = static_cast<uint64_t*>(
        mmap(nullptr, sizeof *_number, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
};

/// A process that does something for ever, until it is killed after some milliseconds.
class Victim {
  public:
    Victim(unsigned seed, const std::function<void()>& work) : _random(seed), _process(fork()) {
        if (_process != 0) return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        work();
        _exit(1);
    }
    ~Victim() {
        if (_process > 0) kill();
    }
    /// Not before `isReady` holds, or ten seconds have gone.
    void kill(const std::function<bool()>& isReady = [] { return true; }) {
        const auto start = std::chrono::steady_clock::now();
        const auto hasPassed = [&](auto time) { return std::chrono::steady_clock::now() - start > time; };
        const std::chrono::microseconds least(3000 + _random() % 8000);
        while (!hasPassed(std::chrono::seconds(10)) && !(isReady() && hasPassed(least)))
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        EXPECT_EQ(::kill(_process, SIGKILL), 0);
        EXPECT_GT(waitpid(std::exchange(_process, -1), nullptr, 0), 0);
    }

  private:
    std::mt19937 _random;
    pid_t _process;
};

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

// A reader has seen the start of a message that was cut off then, and something else stands there now.
TEST_F(Journals, AreFollowedWhereTheirEndIsWrittenAnew) {
    {
        Journal journal(path);
        append(journal, 1);
    }
    const std::string name = "journal/" + JournalFile::in(path)[0].name;
    std::string torn;
    const std::string body(500, 'x');
    appendJournalBlock(torn, {.id = 7, .body = body, .time = 1, .sequence = 2});
    folder.write(name, folder.content(name) + torn.substr(0, 100));
    JournalReader reader(path);
    ASSERT_TRUE(reader.next(record));
    Journal journal(path);
    EXPECT_EQ(journal.cutOff(), 100u);
    for (uint64_t i = 2; i <= 5; ++i) {
        append(journal, i);
        ASSERT_TRUE(reader.next(record));
        EXPECT_EQ(numberOf(record), i);
    }
    EXPECT_EQ(reader.lost() + reader.damages(), 0u);
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
    uint64_t last = 0, followed = 0;
    std::filesystem::create_directory(path);
    JournalReader follower(path);
    using Clock = std::chrono::steady_clock;
    const auto followUntil = [&](Clock::time_point end) { // who reads more slowly than is written comes to no end
        while (Clock::now() < end && follower.next(record)) ASSERT_EQ(numberOf(record), ++followed);
    };
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            Journal journal(path, {.rotateSize = 20'000});
            for (uint64_t i = journal.last() + 1;; ++i) {
                append(journal, i);
                __atomic_store_n(acknowledged, i, __ATOMIC_SEQ_CST);
            }
        }
        const auto end = Clock::now() + std::chrono::microseconds(2000 + random() % 5000);
        while (Clock::now() < end) followUntil(end);
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
    followUntil(Clock::now() + std::chrono::minutes(1));
    EXPECT_EQ(followed, last);
    EXPECT_EQ(follower.lost() + follower.damages(), 0u);
}

// --- buses

/// A server of its own in a folder, if one is needed.
class Server {
  public:
    explicit Server(const std::string& folder) : _folder(folder) {
        static unsigned servers = 0;
        std::mt19937 random(static_cast<unsigned>(getpid()));
        _port = std::to_string(20'000 + random() % 10'000 + servers++ % 10);
    }
    ~Server() { stop(); }
    const std::string& port() const { return _port; }
    std::string url() const { return "nats://127.0.0.1:" + _port; }
    void start(const std::vector<std::string>& options = {}) {
        std::vector<std::string> words{"nats-server", "--addr",      "127.0.0.1", "--port", _port,
                                       "--jetstream", "--store_dir", _folder,     "--log",  _folder + ".log"};
        words.insert(words.end(), options.begin(), options.end());
        std::vector<char*> arguments;
        for (std::string& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        _process = fork();
        if (_process != 0) return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        execvp(arguments[0], arguments.data());
        _exit(1);
    }
    void signal(int number) const { ::kill(_process, number); }
    void stop() { // as badly as can be
        if (_process <= 0) return;
        ::kill(_process, SIGKILL);
        waitpid(std::exchange(_process, -1), nullptr, 0);
    }

  private:
    const std::string _folder;
    std::string _port;
    pid_t _process = -1;
};

constexpr bool HAS_NATS =
#ifdef QL_WITH_NATS
    true;
#else
    false;
#endif

/// A bus of its own for each test, by each of the engines. The test's own process opens it when it has no other to start any
/// more.
class Buses : public testing::TestWithParam<const char*> {
  protected:
    Buses() {
        Quillon::initialize();
        if (!isMem) server.start();
    }
    ~Buses() override { Quillon::finalize(); }

    const Folder folder;
    const bool isMem = GetParam() == std::string("mem");
    Server server{folder.path("server")};
    const std::string url = isMem ? "mem:" + folder.path("ring") + "?size=1" : server.url();

    std::unique_ptr<Bus> open() const { return open(url); }
    static std::unique_ptr<Bus> open(const std::string& url) {
        for (int left = 100;; --left) try {
                return openBus(url, qlTopics(), engines());
            } catch (const BusError&) {
                if (left == 0) throw;
                std::this_thread::sleep_for(std::chrono::milliseconds(50)); // the server begins
            }
    }

    static uint64_t publishTimer(Bus& to, int number) {
        TimerMessage timer;
        timer.tqid = number;
        return to.publish(timer, timeOf(static_cast<uint64_t>(number)));
    }
    static int timerOf(const Record& record) {
        TimerMessage timer;
        Velmora::FastCodec codec(const_cast<char*>(record.body.data()),
                                 const_cast<char*>(record.body.data() + record.body.size()));
        timer.read(codec);
        EXPECT_EQ(record.time, timeOf(static_cast<uint64_t>(timer.tqid)));
        return timer.tqid;
    }
    static uint64_t publishOrder(Bus& to, int market) {
        InBlock<SubmitOrderMessage> order;
        order->contents.marketID = market;
        return to.publish(*order, timeOf(static_cast<uint64_t>(market)));
    }
    /// Polls until the bus was read up to that sequence.
    static void pollTo(Subscription& subscription, uint64_t last) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        do subscription.poll(100);
        while (subscription.sequence() < last && std::chrono::steady_clock::now() < end);
    }
    /// The sequences that a subscriber gets.
    static std::vector<uint64_t> all(Bus& from, const Filter& filter, From begin, uint64_t last, uint64_t lost = 0) {
        std::vector<uint64_t> sequences;
        const auto subscription =
            from.subscribe(filter, begin, {[&](const Record& it) { sequences.push_back(it.sequence); }, {}});
        pollTo(*subscription, begin.kind == From::Kind::live ? 0 : last);
        EXPECT_EQ(subscription->lost(), lost);
        return sequences;
    }
    /// Whether the number gets there within ten seconds.
    static bool reaches(const Counter& number, uint64_t least) {
        for (int i = 0; i < 10'000 && number < least; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return number >= least;
    }

    /// What a process that reads along tells: the last number, how many, and what was not the one after the one before it.
    struct Witness {
        Counter last, delivered, wrong;

        void operator()(const Buses& test) {
            const auto own = test.open();
            const auto take = [&](const Record& record) {
                const auto number = static_cast<uint64_t>(timerOf(record));
                if (number != last + 1 && number % ROUND != 1) wrong = wrong + 1;
                last = number;
                delivered = delivered + 1;
            };
            const auto subscription = own->subscribe({.messages = {"TimerMessage"}}, From::oldest(),
                                                     {take, [&](uint64_t lost) { wrong = wrong + lost; }});
            for (;;) subscription->poll(100);
        }
    };
    static constexpr uint64_t ROUND = 1'000'000;

    /// Publishes numbers of a round for ever, each after the one before was acknowledged.
    void publishRound(unsigned round, Counter& acknowledged) const {
        const auto own = open();
        for (uint64_t i = round * ROUND + 1;; ++i) {
            publishTimer(*own, static_cast<int>(i));
            acknowledged = i;
            std::this_thread::sleep_for(std::chrono::microseconds(20)); // so that readers keep up
        }
    }
};

/// Run before the others: threads of the engines do not outlive a fork of the test's process.
class BusesDeathTest : public Buses {};

std::string nameOf(const testing::TestParamInfo<const char*>& it) { return it.param; }
const auto ALL = testing::ValuesIn(HAS_NATS ? std::vector{"mem", "nats"} : std::vector{"mem"});
INSTANTIATE_TEST_SUITE_P(Engines, Buses, ALL, nameOf);
INSTANTIATE_TEST_SUITE_P(Engines, BusesDeathTest, ALL, nameOf);

TEST_P(Buses, GiveSubscribersWhatTheyWantFromWhereTheyWant) {
    using Sequences = std::vector<uint64_t>;
    const auto bus = open();
    std::vector<uint64_t> lateGot;
    const auto late = bus->subscribe({}, From::live(), {[&](const Record& it) { lateGot.push_back(it.sequence); }, {}});
    for (int i = 1; i <= 6; ++i) ASSERT_EQ(i % 2 == 0 ? publishOrder(*bus, i) : publishTimer(*bus, i), unsigned(i));
    const auto other = open();
    EXPECT_EQ(all(*other, {}, From::oldest(), 6), (Sequences{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(all(*other, {}, From::live(), 6), Sequences{});
    EXPECT_EQ(all(*other, {}, From::at(3), 6), (Sequences{3, 4, 5, 6}));
    EXPECT_EQ(all(*other, {}, From::since(timeOf(5) - 1), 6), (Sequences{5, 6}));
    EXPECT_EQ(all(*other, {.families = {"orders"}}, From::oldest(), 6), (Sequences{2, 4, 6}));
    EXPECT_EQ(all(*other, {.families = {"orders", "internals"}, .messages = {"TimerMessage"}}, From::at(2), 6),
              (Sequences{3, 5}));
    EXPECT_EQ(all(*other, {.keys = {"4", "2"}}, From::oldest(), 6), (Sequences{2, 4}));
    EXPECT_THROW(bus->subscribe({.messages = {"Timer"}}, From::live(), {}), std::invalid_argument);
    EXPECT_THROW(bus->subscribe({.families = {"order"}}, From::live(), {}), std::invalid_argument);
    pollTo(*late, 6);
    EXPECT_EQ(lateGot, (Sequences{1, 2, 3, 4, 5, 6}));
}

TEST_P(Buses, GoOnWhereReadersOfTheirNameStopped) {
    using Sequences = std::vector<uint64_t>;
    const auto bus = open(), other = open();
    int last = 0;
    const auto publish = [&](int count) {
        while (count-- > 0) publishTimer(*bus, ++last);
    };
    const auto got = [&](Bus& from, const char* name, From begin) {
        Sequences sequences;
        const auto subscription =
            from.subscribeAs(name, {}, begin, {[&](const Record& it) { sequences.push_back(it.sequence); }, {}});
        pollTo(*subscription, static_cast<uint64_t>(last));
        EXPECT_EQ(subscription->lost(), 0u);
        return sequences;
    };
    publish(3);
    other->readAs("late", From::live());
    EXPECT_EQ(got(*bus, "risk", From::oldest()), (Sequences{1, 2, 3}));
    publish(2);
    EXPECT_EQ(got(*other, "risk", From::at(1)), (Sequences{4, 5})) << "where it begins is told by the first one";
    EXPECT_EQ(got(*other, "desk", From::at(5)), Sequences{5});
    EXPECT_EQ(got(*other, "since", From::since(timeOf(3))), (Sequences{3, 4, 5}));
    EXPECT_EQ(got(*other, "late", From::oldest()), (Sequences{4, 5}));

    // What was given out and is not done comes again.
    publish(3);
    {
        const auto source = bus->readAs("risk", From::live());
        EXPECT_THROW(other->readAs("risk", From::live()), BusError) << "one at a time";
        Record record;
        for (int taken = 0; taken < 2 && (source->next(record) || source->wait(10'000));)
            if (record.sequence == 6u + unsigned(taken) && taken++ == 0) source->done();
    }
    EXPECT_EQ(got(*other, "risk", From::live()), (Sequences{7, 8}));
    for (const std::string& name : {std::string(), std::string("a b"), std::string("a.b"), std::string(49, 'a')})
        EXPECT_THROW(bus->readAs(name, From::live()), std::invalid_argument) << name;
    bus->readAs(std::string(48, 'a'), From::live());
}

TEST_P(Buses, TakeMessagesOfSeveralThreads) {
    constexpr int EACH = 200, THREADS = 3;
    const auto bus = open();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < THREADS; ++thread)
        threads.emplace_back([&, thread] {
            for (int i = 1; i <= EACH; ++i) publishTimer(*bus, thread * EACH + i);
        });
    for (std::thread& thread : threads) thread.join();
    std::set<int> numbers;
    const auto subscription =
        bus->subscribe({}, From::oldest(), {[&](const Record& it) { numbers.insert(timerOf(it)); }, {}});
    pollTo(*subscription, EACH * THREADS);
    EXPECT_EQ(subscription->sequence(), unsigned(EACH * THREADS));
    EXPECT_EQ(numbers.size(), unsigned(EACH * THREADS));
}

TEST_P(Buses, LetReadersLeaveInTheMidstOfMessages) {
    const auto bus = open();
    for (int i = 1; i <= 2000; ++i) publishTimer(*bus, i);
    for (int round = 0; round < 150; ++round) {
        const auto source = bus->read(From::oldest());
        Record record;
        EXPECT_TRUE(source->next(record) || source->wait(10'000));
    }
}

TEST_P(Buses, CountHostilePayloadsAndLeaveThemOut) {
    const auto bus = open();
    for (const auto& [id, body] : std::vector<std::pair<Velmora::MsgType_t, std::string>>{
             {0x1234, "x"}, {TimerMessage::ID, ""}, {TimerMessage::ID, "\x0exx"}, {SubmitOrderMessage::ID, "\xff"}})
        bus->publish({.id = id, .body = body, .time = 1});
    publishTimer(*bus, 7);
    int got = 0;
    const auto subscription = bus->subscribe({}, From::oldest(), {[&](const Record& it) { got += timerOf(it); }, {}});
    pollTo(*subscription, 5);
    EXPECT_EQ(got, 7);
    EXPECT_EQ(subscription->refused(), 4u);
    EXPECT_EQ(subscription->delivered(), 1u);
    const std::string tooLong(Capture::MAX_PACKET, 'x');
    EXPECT_THROW(bus->publish({.id = 1, .body = tooLong}), std::length_error);
}

// Processes that publish are killed at random moments: what was acknowledged is delivered, once.
TEST_P(BusesDeathTest, OutliveTheirPublishers) {
    Counter acknowledged;
    Witness witness;
    const Victim reader(0, [&] { witness(*this); });
    for (unsigned round = 0; round < 20; ++round) {
        Victim publisher(round, [&] { publishRound(round, acknowledged); });
        publisher.kill([&] { return acknowledged > round * ROUND; });
        EXPECT_TRUE(reaches(witness.last, acknowledged)) << "lost";
    }
    EXPECT_EQ(witness.wrong, 0u);
    EXPECT_GT(witness.delivered, 20u);
    RecordProperty("delivered", std::to_string(witness.delivered));
}

// Subscribers that are killed go on where they were: nothing is lost, and nothing comes twice but what the last of them had not
// done with.
TEST_P(BusesDeathTest, AreTakenUpAgainByTheNextSubscriberOfThatName) {
    Counter noted, polled, wrong, again, published;
    Victim publisher(0, [&] { publishRound(0, published); });
    const auto subscribe = [&] {
        const auto own = open();
        const auto take = [&](const Record& it) {
            if (it.sequence > noted + 1) wrong = wrong + 1;
            if (it.sequence <= noted) again = again + 1;
            noted = std::max<uint64_t>(noted, it.sequence);
        };
        const auto subscription =
            own->subscribeAs("risk", {}, From::oldest(), {take, [&](uint64_t lost) { wrong = wrong + lost; }});
        for (;; polled = uint64_t{noted}) subscription->poll(100);
    };
    for (unsigned round = 0; round < 20; ++round) {
        const uint64_t before = noted;
        Victim subscriber(round, subscribe);
        subscriber.kill([&] { return polled > before + 10; });
    }
    publisher.kill();
    Victim subscriber(0, subscribe);
    subscriber.kill([&] { return noted >= published; });
    EXPECT_TRUE(published <= noted && noted <= published + 1);
    EXPECT_EQ(wrong, 0u);
    EXPECT_GT(noted, 20u);
    EXPECT_LT(again, noted / 2);
    RecordProperty("published", std::to_string(published));
    RecordProperty("delivered", std::to_string(noted));
    RecordProperty("again", std::to_string(again));
}

TEST_P(Buses, TellStalledSubscribersWhatTheyMissed) {
    const auto bus = open();
    uint64_t told = 0, delivered = 0;
    const auto slow = bus->subscribe({.messages = {"SubmitOrderMessage"}}, From::live(),
                                     {[&](const Record&) { ++delivered; }, [&](uint64_t lost) { told += lost; }});
    const int count = isMem ? 60'000 : 2000; // more than the ring holds; a stream keeps all
    for (int i = 1; i < count; ++i) publishTimer(*bus, i);
    publishOrder(*bus, 1);
    pollTo(*slow, static_cast<uint64_t>(count));
    EXPECT_EQ(delivered, 1u);
    EXPECT_EQ(told, slow->lost());
    EXPECT_EQ(told > unsigned(count) / 2, isMem);
    EXPECT_EQ(told == 0, !isMem);
}

TEST_P(Buses, TellWhoIsThere) {
    const auto bus = open();
    std::string events;
    uint64_t last = 0;
    const auto note = [&](const char* what) {
        return [&events, what](const Incarnation& it) {
            events += what + std::to_string(it.application) + '.' + std::to_string(it.generation) + ' ';
        };
    };
    Peers peers(QL_PRESENCE, {note("+"), note("-"), note("?"), note("!")}, 100);
    const auto subscription =
        bus->subscribe({.families = {"memory-bus"}}, From::oldest(), {[&](const Record& it) { peers.take(it); }, {}});
    const auto look = [&](int64_t now, uint64_t said) {
        pollTo(*subscription, last += said);
        peers.look(now);
        return std::exchange(events, "");
    };
    {
        Presence one(*bus, QL_PRESENCE, {7, 1}, 0), other(*bus, QL_PRESENCE, {8, 1}, 0);
        EXPECT_EQ(look(0, 2), "+7.1 +8.1 ");
        one.beat(60, 50);
        EXPECT_EQ(look(99, 1), "");
        EXPECT_EQ(look(120, 0), "?8.1 ");
        other.beat(130, 50);
        EXPECT_EQ(look(130, 1), "+8.1 ");
        Presence twin(*bus, QL_PRESENCE, {7, 2}, 140);
        EXPECT_EQ(look(140, 1), "+7.2 !7.2 ");
        Presence late(*bus, QL_PRESENCE, {8, 2}, 300);
        EXPECT_EQ(look(140, 1), "+8.2 ") << "the one before it has been silent for long";
    }
    EXPECT_EQ(look(140, 4), "-8.2 -7.2 -8.1 -7.1 ");
    EXPECT_EQ(peers.present(), 0u);
    for (int64_t i = 0; i < 66'000; ++i) { // by somebody who makes them up
        const std::string body = QL_PRESENCE.body({1, i});
        peers.take({.id = QL_PRESENCE.heartbeat, .body = body, .time = 1});
    }
    EXPECT_EQ(peers.present(), 65'536u);
}

#ifdef QL_WITH_NATS
class NatsBuses : public Buses {};
class NatsBusesDeathTest : public Buses {};

INSTANTIATE_TEST_SUITE_P(Engines, NatsBuses, testing::Values("nats"));
INSTANTIATE_TEST_SUITE_P(Engines, NatsBusesDeathTest, testing::Values("nats"));

// The server dies again and again, three times unless QL_KILLS tells another number.
TEST_P(NatsBusesDeathTest, OutliveTheirServer) {
    Counter acknowledged;
    Witness witness;
    const Victim reader(0, [&] { witness(*this); });
    Victim publisher(1, [&] { publishRound(0, acknowledged); });
    const char* const kills = std::getenv("QL_KILLS");
    for (int left = kills != nullptr ? std::atoi(kills) : 3; left > 0; --left) {
        EXPECT_TRUE(reaches(acknowledged, acknowledged + 20));
        server.stop();
        server.start();
    }
    EXPECT_TRUE(reaches(acknowledged, acknowledged + 20));
    publisher.kill();
    EXPECT_TRUE(reaches(witness.last, acknowledged)) << "lost";
    EXPECT_EQ(witness.wrong, 0u);
    EXPECT_LE(witness.delivered, acknowledged + 1);
    RecordProperty("acknowledged", std::to_string(acknowledged));
    RecordProperty("delivered", std::to_string(witness.delivered));
}

TEST_P(NatsBuses, SayWhatTheyCarryInSubjects) {
    open(); // waits for the server
    const NatsBus bus(url, qlTopics());
    InBlock<SubmitOrderMessage> order;
    order->contents.marketID = -7;
    const std::string body = encoded(*order);
    EXPECT_EQ(bus.subjectOf({.id = SubmitOrderMessage::ID, .body = body}), "ql.orders.SubmitOrderMessage.-7");
    EXPECT_EQ(bus.subjectOf({.id = TimerMessage::ID, .body = "\x0e"}), "ql.internals.TimerMessage.-");
    EXPECT_EQ(bus.subjectOf({.id = 0x1234, .body = ""}), "ql.12.-.-");
    const NatsBus cluster("nats://127.0.0.1:1," + server.url().substr(7) + "/PRICES?patience=1", qlTopics());
    EXPECT_EQ(cluster.subjectOf({.id = TimerMessage::ID, .body = "\x0e"}), "prices.internals.TimerMessage.-");
    for (const char* other : {"nats://127.0.0.1:1", "nats://127.0.0.1:1/a.b", "nats://127.0.0.1:1?x=1",
                              "nats://127.0.0.1:1?replicas=0", "nats://127.0.0.1:1?ca", "nats://127.0.0.1:1?ca=/none"})
        EXPECT_THROW(NatsBus(other, qlTopics()), BusError) << other;
}

// A reader that has a name, and has not told yet what is done, goes on when the server has died.
TEST_P(NatsBuses, GiveNamedReadersTheNextMessageWhenTheirServerDies) {
    const auto bus = open();
    for (int i = 1; i <= 5; ++i) publishTimer(*bus, i);
    const auto source = bus->readAs("risk", From::oldest());
    Record record;
    const auto expectNext = [&](uint64_t first, uint64_t last) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        for (uint64_t next = first; next <= last && std::chrono::steady_clock::now() < end;)
            if (source->next(record))
                EXPECT_EQ(record.sequence - record.lost, next++);
            else
                source->wait(100);
        EXPECT_EQ(record.sequence, last);
    };
    expectNext(1, 3);
    server.stop();
    server.start();
    publishTimer(*bus, 6);
    expectNext(4, 6);
    source->done();
}

// The acknowledgement comes too late, so that a message is sent again, under its identifier.
TEST_P(NatsBuses, StoreOnceWhatIsSentTwice) {
    const auto bus = open();
    server.signal(SIGSTOP);
    std::thread later([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(2500)); // longer than one try
        server.signal(SIGCONT);
    });
    EXPECT_EQ(publishTimer(*bus, 1), 1u);
    later.join();
    EXPECT_EQ(publishTimer(*bus, 2), 2u);
    EXPECT_EQ(all(*bus, {}, From::oldest(), 2), (std::vector<uint64_t>{1, 2}));
}

TEST_P(NatsBuses, NeedTheRightCertificatesAndWords) {
    const Folder::Result made = folder.run(R"(
        new='openssl req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes'
        for it in ca other; do $new -x509 -subj /CN=$it -keyout $it.key -out $it.pem; done
        for it in localhost client; do
            $new -subj /CN=$it -keyout $it.key -out $it.csr && echo subjectAltName=DNS:$it >$it.ext
            openssl x509 -req -in $it.csr -CA ca.pem -CAkey ca.key -CAcreateserial -extfile $it.ext -out $it.pem
        done)");
    ASSERT_EQ(made.exitCode, 0) << made.err;
    Server secured(folder.path("secured"));
    secured.start({"--tlsverify", "--tlscert", folder.path("localhost.pem"), "--tlskey", folder.path("localhost.key"),
                   "--tlscacert", folder.path("ca.pem"), "--user", "desk", "--pass", "s3cret"});
    const auto urlOf = [&](const std::string& user, const std::string& host, const std::string& authority,
                           const std::string& own) {
        std::string text = "nats://" + user + host + ':' + secured.port() + "?patience=1";
        if (!authority.empty()) text += "&ca=" + folder.path(authority + ".pem");
        if (!own.empty()) text += "&cert=" + folder.path(own + ".pem") + "&key=" + folder.path(own + ".key");
        return text;
    };
    const auto bus = open(urlOf("desk:s3cret@", "localhost", "ca", "client"));
    publishTimer(*bus, 1);
    EXPECT_EQ(all(*bus, {}, From::oldest(), 1), std::vector<uint64_t>{1});
    for (const auto& [wrong, reason] : std::vector<std::pair<std::string, std::string>>{
             {urlOf("desk:s3cre@", "localhost", "ca", "client"), "Authorization Violation"},
             {urlOf("", "localhost", "ca", "client"), "Authorization Violation"},
             {urlOf("desk:s3cret@", "127.0.0.1", "ca", "client"), "IP address mismatch"},
             {urlOf("desk:s3cret@", "localhost", "other", "client"), "unable to get local issuer certificate"},
             {urlOf("desk:s3cret@", "localhost", "", ""), "unable to get local issuer certificate"},
             {urlOf("desk:s3cret@", "localhost", "ca", ""), "another certificate of this side"},
             {urlOf("desk:s3cret@", "localhost", "ca", "other"), "another certificate of this side"}})
        try {
            NatsBus(wrong, qlTopics());
            ADD_FAILURE() << wrong;
        } catch (const BusError& error) {
            const std::string text = error.what();
            EXPECT_NE(text.find(reason), std::string::npos) << text;
            EXPECT_EQ(text.find("s3cre"), std::string::npos) << text;
            EXPECT_EQ(text.find(".c:"), std::string::npos) << text;
        }
    EXPECT_EQ(shownUrl("nats://a:b@x:1,c@y,z/S?ca=d@e"), "nats://x:1,y,z/S?ca=d@e");
}

// What a stranger publishes there by himself, too short for an identifier, is told as lost.
TEST_P(NatsBuses, TellPayloadsOfStrangers) {
    const auto bus = open();
    publishTimer(*bus, 1);
    const std::string said = "CONNECT {\"verbose\":false}\r\nPUB ql.x 1\r\nx\r\nPING\r\n";
    EXPECT_EQ(folder
                  .run("exec 3<>/dev/tcp/127.0.0.1/" + server.port() + "; printf '" + said
                       + "' >&3; timeout 5 grep -m1 PONG <&3")
                  .exitCode,
              0);
    publishTimer(*bus, 2);
    EXPECT_EQ(all(*bus, {}, From::oldest(), 3, 1), (std::vector<uint64_t>{1, 3}));
}
#endif

TEST(MemBuses, OfOtherKindsAreRefused) {
    const Folder folder;
    for (const char* other :
         {"mem:", "mem:a/b", "mem:/none/x", "mem:a?size=", "mem:a?size=0", "mem:a?sizes=1", "x:y", "x"})
        EXPECT_THROW(openBus(other, qlTopics()), BusError) << other;
    EXPECT_THROW(openBus("mem:" + folder.write("foreign", std::string(100'000, 'x')), qlTopics()), BusError);
}

// A ring that holds little, of which a journal is kept.
class KeptBuses : public Buses {
  protected:
    const std::string small = "mem:" + folder.path("small"), path = folder.path("journal");
    const std::unique_ptr<Bus> kept = (MemRing::open(folder.path("small"), 1), openBus(small, qlTopics()));
    std::optional<Journal> journal = Journal(path);

    void record(Recorder& recorder) {
        while (recorder.poll(0) != 0) {
        }
    }
    void publish(Recorder& recorder, int first, int last) {
        for (int i = first; i <= last; ++i) {
            publishTimer(*kept, i);
            if (i % 100 == 0) record(recorder);
        }
        record(recorder);
    }
    static std::vector<uint64_t> numbers(int first, int last) {
        std::vector<uint64_t> sequences;
        for (int i = first; i <= last; ++i) sequences.push_back(static_cast<uint64_t>(i));
        return sequences;
    }
};

INSTANTIATE_TEST_SUITE_P(Engines, KeptBuses, testing::Values("mem"));

TEST_P(KeptBuses, ServeLateJoinersFromTheirJournal) {
    Recorder recorder(*kept, *journal);
    publish(recorder, 1, 10'000);
    EXPECT_EQ(recorder.lost(), 0u);
    for (const int first : {1, 5000, 9990, 10'000}) {
        const auto begin = static_cast<uint64_t>(first);
        EXPECT_EQ(all(*kept, {}, From::at(begin), 10'000), numbers(first, 10'000));
        EXPECT_EQ(all(*kept, {}, From::since(timeOf(begin)), 10'000), numbers(first, 10'000));
    }
    // The journal grows while it is read, and what is published last is in the ring alone.
    int next = 10'000;
    std::vector<uint64_t> got;
    const auto subscription = kept->subscribe({}, From::oldest(),
                                              {[&](const Record& it) {
                                                   got.push_back(it.sequence);
                                                   if (it.sequence % 7 == 0 && next < 20'000)
                                                       publishTimer(*kept, ++next);
                                                   if (it.sequence % 500 == 0) record(recorder);
                                               },
                                               {}});
    while (subscription->poll(10) != 0) {
    }
    EXPECT_EQ(got, numbers(1, next));
    EXPECT_EQ(subscription->lost(), 0u);
    std::filesystem::remove_all(path);
    const uint64_t oldest = all(*kept, {}, From::oldest(), got.back()).front();
    EXPECT_GT(oldest, 1000u);
    EXPECT_EQ(all(*kept, {}, From::at(1), got.back(), oldest - 1).front(), oldest)
        << "no journal any more: what is lost is told";
}

TEST_P(KeptBuses, RefuseToPublishWhatCannotBeKept) {
    Recorder recorder(*kept, *journal);
    publish(recorder, 1, 10);
    int next = 10;
    {
        const FullDisk disk(2000);
        while (recorder.refusal().empty()) {
            publishTimer(*kept, ++next);
            record(recorder);
        }
        try {
            publishTimer(*kept, next + 1);
            ADD_FAILURE() << "published";
        } catch (const BusError& error) {
            EXPECT_NE(std::string(error.what()).find("File too large"), std::string::npos) << error.what();
        }
        record(recorder);
    }
    record(recorder);
    publish(recorder, next + 1, next + 10);
    EXPECT_EQ(journal->last(), static_cast<uint64_t>(next) + 10);
    EXPECT_EQ(recorder.lost(), 0u);

    Victim keeper(0, [&] {
        kept->journalIs({path, "it is away"}, 0);
        pause();
    });
    EXPECT_THROW(for (;;) publishTimer(*kept, ++next), BusError);
    keeper.kill();
    publishTimer(*kept, ++next);
}

TEST_P(KeptBuses, GoOnWithTheSequencesOfTheirJournal) {
    {
        Recorder recorder(*kept, *journal);
        publish(recorder, 1, 1000);
    }
    std::filesystem::remove(folder.path("small")); // as when the machine starts anew
    const auto again = openBus(small, qlTopics());
    const auto early = again->subscribe({}, From::live(), {[](const Record&) {}, {}});
    Recorder recorder(*again, *journal);
    EXPECT_EQ(publishTimer(*again, 1001), 1001u);
    early->poll(0);
    EXPECT_EQ(early->lost(), 0u);
    EXPECT_EQ(all(*again, {}, From::at(1), 1001), numbers(1, 1001));

    std::filesystem::remove(folder.path("small"));
    const auto anew = openBus(small, qlTopics());
    publishTimer(*anew, 1);
    EXPECT_THROW(Recorder(*anew, *journal), BusError) << "who came first used numbers that the journal has";
}

// --- the tool

/// The tool with a bus that its commands share.
class Tools : public Buses {
  protected:
    ToolFolder tool;
    Folder::Result run(const std::string& command) const {
        return tool.run("bus='" + url + "' tool='" QLPROTO_TOOL "'; " + command);
    }
};

INSTANTIATE_TEST_SUITE_P(Engines, Tools, ALL, nameOf);

TEST_P(Tools, RecordWhatTheyPublish) {
    if (!isMem) open(); // waits for the server
    // Streams take their time: 3000 unless QL_MESSAGES tells another number.
    const char* const wanted = std::getenv("QL_MESSAGES");
    const std::string count = isMem ? "100000" : wanted != nullptr ? wanted : "3000";
    if (isMem) openBus(url.substr(0, url.find('?')) + "?size=64", qlTopics());
    const Folder::Result result = run("n=" + count + R"(
        qlproto generate --messages $n --seed 7 -o session.pcap
        mkdir journal
        qlproto record --bus $bus -o journal --messages $n --seconds 500 2>journal.err & qlproto publish session.pcap --bus $bus --speed max
        qlproto record --bus $bus -o again.pcapng --start oldest --messages $n --seconds 500
        wait; qlproto merge journal/*.pcapng -o journal.pcap && qlproto diff session.pcap journal.pcap && qlproto diff session.pcap again.pcapng)");
    EXPECT_EQ(result.exitCode, 0) << result.err << result.out;
    EXPECT_NE(result.err.find(count + " messages recorded, 0 lost"), std::string::npos) << result.err;
    EXPECT_NE(tool.content("journal.err").find(count + " messages recorded, 0 lost"), std::string::npos);

    // A part of it again, from a time and from a sequence.
    const Folder::Result part = run(R"(
        from=$(qlproto decode session.pcap | sed -n 2001p | cut -d' ' -f1)
        qlproto slice --from $from session.pcap -o slice.pcap
        qlproto record --bus $bus --start $from --messages $(qlproto decode slice.pcap | wc -l) -o since.pcapng --seconds 60
        qlproto diff slice.pcap since.pcapng >&2 || exit 1
        qlproto decode --from $from -n 500 --message MktDataMessage session.pcap >wanted
        qlproto watch --bus $bus --start $from -n 500 --message MktDataMessage --seconds 60 >got
        qlproto watch --bus journal --start oldest --from $from -n 500 --message MktDataMessage --seconds 60 >journaled
        qlproto watch --bus $bus --start 2001 --messages 1000 --seconds 60 | wc -l
        cmp wanted got && cmp wanted journaled)");
    EXPECT_EQ(part.exitCode, 0) << part.err << part.out;
    EXPECT_EQ(part.out, "1000\n");
}

TEST_P(Tools, PaceWhatTheyPublish) {
    if (!isMem) open();
    tool.store("two.pcap", {{1'000'000'000, ToolFolder::packet<TimerMessage>([](auto&) {})},
                            {3'000'000'000, ToolFolder::packet<TimerMessage>([](auto& it) { it.tqid = 7; })}});
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(run("qlproto publish two.pcap --bus $bus --speed 4").exitCode, 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500))
        << "two seconds, four times as fast";
    EXPECT_EQ(
        run("$tool publish two.pcap --bus $bus --speed max --loop --now & pid=$!; qlproto watch --bus $bus --start "
            "oldest --stats --messages 10 --seconds 10; kill $pid; wait $pid")
            .exitCode,
        0);
    const std::string table = tool.content("out");
    EXPECT_TRUE(table.starts_with("10 messages, ")) << table;
    EXPECT_EQ(table.find("TimerMessage"), table.rfind("TimerMessage")) << table;
    EXPECT_EQ(run("qlproto watch --bus $bus --start 1 --messages 2").out,
              "1.000000000 TimerMessage tqid=0\n3.000000000 TimerMessage tqid=7\n");
}

TEST(LiveTools, ServeFiguresThatPrometheusTakes) {
    const ToolFolder tool;
    tool.store("two.pcap", {{1, ToolFolder::packet<TimerMessage>([](auto&) {})},
                            {3, ToolFolder::packet<TimerMessage>([](auto& it) { it.tqid = 7; })}});
    const std::string port = std::to_string(30'000 + getpid() % 2000);
    const Folder::Result result = tool.run("tool='" QLPROTO_TOOL "' port=" + port + R"(
        qlproto publish two.pcap --bus mem:./bus?size=1 --speed max --quiet
        $tool metrics --bus mem:./bus --start oldest --listen 127.0.0.1:$port --seconds 20 & pid=$!
        for i in $(seq 100); do
            kill -0 $pid || break
            { exec 3<>/dev/tcp/127.0.0.1/$port; } 2>/dev/null && printf 'GET /metrics HTTP/1.0\r\n\r\n' >&3 && timeout 5 cat <&3 >answer
            grep -q 'TimerMessage"} 2' answer && break
            sleep 0.1
        done
        kill $pid; wait $pid; status=$?
        sed '1,/^\r$/d' answer >metrics; grep -c . metrics
        ! command -v promtool >/dev/null || promtool check metrics <metrics || status=9
        exit $status)");
    if (result.err.find("without prometheus-cpp") != std::string::npos) GTEST_SKIP() << result.err;
    EXPECT_EQ(result.exitCode, 0) << result.err;
    const std::string metrics = tool.content("metrics");
    for (const char* line :
         {"ql_messages_total{message=\"TimerMessage\"} 2", "ql_bytes_total{message=\"TimerMessage\"} 2",
          "ql_lost_total 0", "ql_faults_total 0", "ql_hop_seconds_count{message=\"TimerMessage\"} 2"})
        EXPECT_NE(metrics.find(line), std::string::npos) << line << "\n" << metrics;
}

TEST(LiveTools, AnswerForWhatIsWrong) {
    ToolFolder tool;
    for (const char* command : {"watch --bus mem:", "watch --bus none", "publish none --bus mem:/none/x",
                                "record --bus x:y -o f", "watch --bus mem:/none/x"})
        EXPECT_EQ(tool.run(std::string("qlproto ") + command).exitCode, 3) << command;
    for (const char* command : {"watch", "watch --bus mem:x --start never", "publish f --bus mem:x --speed 0",
                                "watch --bus mem:x --seconds 0"})
        EXPECT_EQ(tool.run(std::string("qlproto ") + command).exitCode, 2) << command;
}

// The C++ of docs/host.md, run as printed.
TEST(DocExamples, OfHostsPublishAndSubscribe) {
    Quillon::initialize();
    const Folder own;
    const std::string folder = own.path("");
    std::ostringstream out;
    std::streambuf* const before = std::cout.rdbuf(out.rdbuf());
    {
#include "host.inc"
    } std::cout.rdbuf(before);
    EXPECT_EQ(out.str(), "1: message 53284\n");
    Quillon::finalize();
}

} // namespace
