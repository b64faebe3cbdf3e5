// What a process that exchanges messages needs: blocks that threads share, frames on a stream.
#include <atomic>
#include <csignal>
#include <cstring>
#include <deque>
#include <fstream>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <thread>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Host/Connection.h"
#include "Host/Frames.h"
#include "Host/MemRing.h"
#include "Host/MsgBlockPool.h"
#include "Host/RingTurn.h"
#include "Host/SharedMessage.h"
#include "Inspect/Sizes.h"
#include "tests/Folder.h"
#include "tests/Hex.h"
#include "tests/Samples.h"

namespace {

using namespace Velmora;
using Quillon::SubmitOrderMessage;
using Quillon::TimerMessage;

std::string bodyOf(const auto& message) {
    std::string body(Inspect::encoded_size(message), '\0');
    FastCodec codec(body.data(), body.data() + body.size());
    message.write(codec);
    return body;
}

class Pool : public Module {
  protected:
    static MsgDescriptor& descriptor(MsgType_t id) { return *Quillon::__protocol->getDescriptor(id); }
    static MsgStats stats(MsgType_t id) { return descriptor(id).getStats(); }

    MsgControl* decode(MsgBlockPool& pool, MsgType_t id, std::string_view body) {
        return pool.decode(Inspect::default_protocol(), id, body, result);
    }

    Inspect::Result result;
};

TEST_F(Pool, BlocksAreOfTheSmallestSizeLeftAndRunOut) {
    EXPECT_THROW(MsgBlockPool({}), std::invalid_argument);
    EXPECT_THROW(MsgBlockPool({{64, 0}}), std::invalid_argument);
    EXPECT_THROW(MsgBlockPool({{64, MsgBlockPool::MOST_BLOCKS + 1}}), std::invalid_argument);
    MsgBlockPool pool({{1000, 1}, {100, 2}});
    EXPECT_EQ(pool.capacity(), 3u);
    std::vector<MsgControl*> taken;
    for (const size_t expected : {100u, 100u, 1000u}) {
        taken.push_back(pool.get(100));
        EXPECT_EQ(taken.back()->allocator().size(), expected);
        EXPECT_FALSE(taken.back()->acquireReader() || taken.back()->acquireWriter()) << "it has a writer";
    }
    EXPECT_EQ(pool.get(1), nullptr);
    taken[0]->releaseWriter();
    EXPECT_EQ(pool.get(101), nullptr) << "what is left is too small";
    EXPECT_EQ(pool.exhausted(), 2u);
    EXPECT_EQ(pool.free(), 1u);
    EXPECT_EQ(pool.get(50), taken[0]) << "the one that is in the cache";
    for (MsgControl* const block : taken) block->releaseWriter();
    EXPECT_EQ(pool.free(), 3u);
}

TEST_F(Pool, DecodesIntoABlockThatIsLargeEnough) {
    InBlock<SubmitOrderMessage> order;
    Sample(Filling::extreme).fill(*order);
    const std::string body = bodyOf(*order);
    const size_t needed =
        Inspect::verify<SubmitOrderMessage>(body.data(), body.data() + body.size(), Inspect::whole).blockBytes
        + sizeof(SubmitOrderMessage);
    for (const size_t size : {needed, needed - 1}) {
        MsgBlockPool pool({{sizeof(SubmitOrderMessage) + 10, 1}, {size, 1}});
        const OwnedMessage message(decode(pool, SubmitOrderMessage::ID, body));
        EXPECT_EQ(bool(message), size == needed);
        EXPECT_EQ(result.fault, message ? Inspect::Fault::none : Inspect::Fault::blockTooSmall);
        if (message) {
            Sample(Filling::extreme).check(*static_cast<const SubmitOrderMessage*>(message.get()));
            EXPECT_EQ(decode(pool, SubmitOrderMessage::ID, body), nullptr) << "there is no other block of that size";
            EXPECT_EQ(result.fault, Inspect::Fault::none);
        }
        EXPECT_EQ(decode(pool, SubmitOrderMessage::ID, body.substr(1, 5)), nullptr);
        EXPECT_EQ(result.fault, Inspect::Fault::truncated);
        EXPECT_EQ(decode(pool, 0x1234, ""), nullptr);
        EXPECT_EQ(result.fault, Inspect::Fault::unknownIdentifier);
        EXPECT_EQ(pool.free(), message ? 1u : 2u);
    }
}

TEST_F(Pool, StatisticsTellWhatBecameOfMessages) {
    MsgBlockPool pool({{4096, 2}});
    const MsgType_t id = SubmitOrderMessage::ID;
    OwnedMessage one(pool.get(4096)), other(pool.get(4096));
    one.control().initialize(descriptor(id));
    EXPECT_EQ(MsgControl::of(one.get()), &one.control());
    Sample(Filling::typical).fill(*static_cast<SubmitOrderMessage*>(one.get()));
    other.control().initialize(descriptor(id));
    other.control().copy(one.control());
    Sample(Filling::typical).check(*static_cast<const SubmitOrderMessage*>(other.get()));
    const auto used = one.control().allocator().used_size();

    char body[4096];
    EXPECT_FALSE(one.control().write(Inspect::default_protocol(), body, body + 3));
    const Inspect::Encoded encoded = one.control().write(Inspect::default_protocol(), body, body + sizeof body);
    EXPECT_EQ(std::string(body, encoded.size), bodyOf(*static_cast<const SubmitOrderMessage*>(one.get())));
    EXPECT_TRUE(other.control().read(Inspect::default_protocol(), id, {body, encoded.size}));
    EXPECT_FALSE(other.control().read(Inspect::default_protocol(), id, {body, encoded.size - 1}));
    EXPECT_EQ(other.control().get(), nullptr) << "the one before is gone";
    other = OwnedMessage();
    one = OwnedMessage();
    const MsgStats all = stats(id);
    EXPECT_EQ(all.nconstruct, 3u);
    EXPECT_EQ(all.ndestroy, 3u);
    EXPECT_EQ(all.nalloc, 3u);
    EXPECT_EQ(all.ndealloc, 3u);
    EXPECT_EQ(all.ncopy, 1u);
    EXPECT_EQ(all.nwrite, 1u);
    EXPECT_EQ(all.nread, 1u);
    EXPECT_GE(all.max_size, used);
    EXPECT_EQ(pool.free(), 2u);
}

TEST_F(Pool, LastOneOutGivesTheBlockBack) {
    MsgBlockPool pool({{256, 1}});
    OwnedMessage owned(pool.get(1));
    MsgControl& control = owned.control();
    SharedMessage first = std::move(owned).share();
    EXPECT_FALSE(control.acquireWriter());
    {
        const SharedMessage second = first;
        EXPECT_EQ(control.readers(), 2);
        first = SharedMessage();
        EXPECT_EQ(pool.free(), 0u);
    }
    EXPECT_EQ(pool.free(), 1u);

    OwnedMessage again(pool.get(1));
    first = std::move(again).share();
    while (control.acquireReader()) {
    }
    EXPECT_EQ(control.readers(), MsgControl::MOST_READERS);
    EXPECT_FALSE(SharedMessage(first)) << "no room for another";
    for (int i = 1; i < MsgControl::MOST_READERS; ++i) control.releaseReader();
}

// Threads take, fill, share and drop blocks as fast as they can. No two writers ever have one block, a reader sees what
// its writer wrote, and in the end all blocks are back.
TEST_F(Pool, ThreadsNeverMeetInABlock) {
    MsgBlockPool pool({{64, 3}, {512, 5}});
    std::mutex mutex;
    std::vector<SharedMessage> board(4);
    std::atomic<uint64_t> taken = 0, refused = 0;
    const auto work = [&](unsigned seed) {
        std::mt19937 random(seed);
        for (int i = 0; i < 20000; ++i) {
            if (OwnedMessage message(pool.get(random() % 2 == 0 ? 64 : 512)); message) {
                auto* const timer =
                    static_cast<TimerMessage*>(message.control().initialize(descriptor(TimerMessage::ID)));
                ASSERT_EQ(timer->tqid, 0);
                timer->tqid = static_cast<int>(random());
                const int written = timer->tqid;
                ++taken;
                SharedMessage shared = std::move(message).share();
                SharedMessage kept = shared;
                {
                    const std::lock_guard lock(mutex);
                    std::swap(board[random() % board.size()], shared);
                }
                ASSERT_EQ(static_cast<const TimerMessage*>(kept.get())->tqid, written);
            } else {
                ++refused;
            }
        }
    };
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < 4; ++seed) threads.emplace_back(work, seed);
    for (std::thread& thread : threads) thread.join();
    board.clear();
    EXPECT_EQ(pool.free(), pool.capacity());
    EXPECT_EQ(pool.exhausted(), refused);
    EXPECT_EQ(stats(TimerMessage::ID).nconstruct, taken);
    EXPECT_EQ(stats(TimerMessage::ID).ndestroy, taken);
    std::set<MsgControl*> all;
    while (MsgControl* const block = pool.get(1)) EXPECT_TRUE(all.insert(block).second) << "handed out twice";
    EXPECT_EQ(all.size(), pool.capacity());
    for (MsgControl* const block : all) block->releaseWriter();
}

class Frames : public Module {
  protected:
    /// The stream in pieces of these sizes, as far as it can be read.
    static std::vector<std::pair<MsgType_t, std::string>> read(Host::FrameReader& reader, std::string_view stream,
                                                               auto&& nextSize) {
        std::vector<std::pair<MsgType_t, std::string>> frames;
        while (!stream.empty()) {
            const std::span<char> room = reader.room();
            const size_t size = std::min({stream.size(), room.size(), nextSize()});
            std::ranges::copy(stream.substr(0, size), room.data());
            reader.received(size);
            stream.remove_prefix(size);
            for (Host::Frame frame; reader.next(frame);) frames.emplace_back(frame.id, frame.body);
        }
        return frames;
    }
};

TEST_F(Frames, ComeBackHoweverTheStreamIsCut) {
    Host::FrameWriter writer;
    std::vector<std::pair<MsgType_t, std::string>> sent;
    std::mt19937 random(7);
    for (unsigned i = 0; i < 300; ++i) {
        InBlock<SubmitOrderMessage> order;
        Sample(i % 3 == 0 ? Filling::extreme : Filling::typical, i).fill(*order);
        ASSERT_TRUE(writer.append(Inspect::default_protocol(), SubmitOrderMessage::ID, &*order));
        sent.emplace_back(SubmitOrderMessage::ID, bodyOf(*order));
        sent.emplace_back(static_cast<MsgType_t>(random()), std::string(random() % 5 == 0 ? random() % 20000 : 0, 'x'));
        writer.append(sent.back().first, sent.back().second);
    }
    const std::string stream(writer.bytes());
    for (const size_t most : {1u, 7u, 5000u, 1u << 20}) {
        Host::FrameReader reader;
        EXPECT_EQ(read(reader, stream, [&] { return 1 + random() % most; }), sent) << most;
        EXPECT_TRUE(reader.isBetween());
        EXPECT_EQ(reader.offset(), stream.size());
        EXPECT_LT(reader.memory(), 256 * 1024u);
    }
    writer.sent(stream.size() - 3);
    EXPECT_EQ(writer.bytes(), stream.substr(stream.size() - 3));
}

TEST_F(Frames, HaveTheFormThatIsWrittenDown) {
    Host::FrameWriter writer;
    InBlock<TimerMessage> timer;
    timer->tqid = 7;
    ASSERT_TRUE(writer.append(Inspect::default_protocol(), TimerMessage::ID, &*timer));
    EXPECT_EQ(hex(std::string(writer.bytes())), "0300000024d00e");
}

TEST_F(Frames, OfImpossibleLengthsAreRefusedBeforeTheyCome) {
    const std::string good("\3\0\0\0\x24\xd0\x0e", 7);
    for (const auto& [bytes, isGood] : std::vector<std::pair<std::string, bool>>{{{"\0\0\0\0", 4}, false},
                                                                                 {{"\1\0\0\0", 4}, false},
                                                                                 {{"\x02\0\0\0", 4}, true},
                                                                                 {{"\x0c\0\0\0", 4}, true},
                                                                                 {{"\x0d\0\0\0", 4}, false},
                                                                                 {{"\xff\xff\xff\xff", 4}, false}}) {
        const std::string& length = bytes; // older compilers do not capture parts
        Host::FrameReader reader(10);
        const auto readAll = [&] { return read(reader, good + length, [] { return size_t{1}; }).size(); };
        if (isGood) {
            EXPECT_EQ(readAll(), 1u) << hex(length);
            EXPECT_FALSE(reader.isBetween());
            continue;
        }
        try {
            readAll();
            ADD_FAILURE() << hex(length);
        } catch (const Host::FrameError& error) {
            EXPECT_EQ(error.offset(), good.size()) << error.what();
        }
        Host::Frame frame;
        EXPECT_THROW(reader.next(frame), Host::FrameError) << "for good";
        EXPECT_LT(reader.memory(), 10000u);
    }
    Host::FrameWriter writer(10);
    EXPECT_THROW(writer.append(1, std::string(11, 'x')), std::length_error);
    InBlock<SubmitOrderMessage> order;
    Sample(Filling::typical).fill(*order);
    const Inspect::Encoded refused = writer.append(Inspect::default_protocol(), SubmitOrderMessage::ID, &*order);
    EXPECT_EQ(refused.refusal, Inspect::Refusal::tooSmall);
    EXPECT_TRUE(writer.bytes().empty());
}

using Host::Connection;
using Host::Descriptor;

/// Both ends of connections over the loopback interface.
class Connections : public testing::Test {
  protected:
    uint16_t port() const {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(listener.number(), reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(getsockname(listener.number(), reinterpret_cast<sockaddr*>(&address), &size), 0);
        return ntohs(address.sin_port);
    }
    void listenNow() { EXPECT_EQ(listen(listener.number(), 8), 0); }
    Descriptor accepted() {
        Descriptor peer(accept4(listener.number(), nullptr, nullptr, SOCK_CLOEXEC));
        EXPECT_TRUE(peer);
        return peer;
    }
    /// Until it holds, five seconds at most.
    bool pollUntil(const std::function<bool()>& holds) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (!holds() && std::chrono::steady_clock::now() < end) {
            client.poll(1);
            if (server) server->poll(0);
        }
        return holds();
    }
    static std::string text(int i) { return std::to_string(i) + std::string(static_cast<size_t>(i * 37 % 500), 'x'); }
    static Connection::Handler noting(std::vector<std::string>& to) {
        return {[&to](const Host::Frame& frame) {
            if (frame.id == 7) to.emplace_back(frame.body);
        }};
    }

    const Descriptor listener{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    Host::ConnectionOptions options{.address = "127.0.0.1",
                                    .port = port(),
                                    .mostQueued = 100'000,
                                    .longestPause = std::chrono::milliseconds(40),
                                    .beat = std::chrono::milliseconds(100),
                                    .heartbeat = 9,
                                    .heartbeatBody = "beat"};
    std::string reason;
    std::vector<std::string> got, back;
    std::optional<Connection> server;
    Connection::Handler handler{[this](const Host::Frame& frame) {
                                    if (frame.id == 7) back.emplace_back(frame.body);
                                },
                                {},
                                [this](const std::string& it) { reason = it; }};
    Connection client{options, handler};
};

TEST_F(Connections, ComeAgainWithWhatWasQueued) {
    int sent = 0;
    while (client.send(7, text(sent))) ++sent; // nobody listens yet
    EXPECT_LE(client.queued(), options.mostQueued);
    EXPECT_GT(sent, 100);
    for (int i = 0; i < 20; ++i) client.poll(1);
    EXPECT_FALSE(client.isConnected());
    listenNow();
    ASSERT_TRUE(pollUntil([&] { return client.isConnected(); }));
    server.emplace(accepted(), options, noting(got));
    ASSERT_TRUE(pollUntil([&] { return got.size() == static_cast<size_t>(sent); }));
    for (int i = 0; i < sent; ++i) ASSERT_EQ(got[static_cast<size_t>(i)], text(i));
    EXPECT_TRUE(server->send(7, "back"));
    EXPECT_TRUE(pollUntil([&] { return back == std::vector<std::string>{"back"}; }));

    for (int round = 0; round < 5; ++round) {
        server.reset(); // the peer dies
        got.clear();
        ASSERT_TRUE(pollUntil([&] { return !client.isConnected(); }));
        for (int i = 0; i < 10; ++i) EXPECT_TRUE(client.send(7, text(i)));
        ASSERT_TRUE(pollUntil([&] { return client.isConnected(); }));
        server.emplace(accepted(), options, noting(got));
        ASSERT_TRUE(pollUntil([&] { return got.size() == 10; }));
        for (int i = 0; i < 10; ++i) EXPECT_EQ(got[static_cast<size_t>(i)], text(i));
    }
    reason.clear();
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500); // several beats
    pollUntil([&] { return std::chrono::steady_clock::now() > end; });
    EXPECT_TRUE(client.isConnected() && !server->isOver()) << "heartbeats keep what is quiet: " << reason;
}

// Through buffers that hold less than a frame at a time, and to a peer that dies in the midst of one.
TEST_F(Connections, SendFramesFromTheirStart) {
    const int little = 2048;
    EXPECT_EQ(setsockopt(listener.number(), SOL_SOCKET, SO_RCVBUF, &little, sizeof little), 0);
    listenNow();
    for (const bool dies : {true, false}) {
        ASSERT_TRUE(pollUntil([&] { return client.isConnected(); }));
        EXPECT_EQ(setsockopt(client.descriptor(), SOL_SOCKET, SO_SNDBUF, &little, sizeof little), 0);
        int sent = 0;
        while (client.send(7, text(sent))) ++sent;
        for (int i = 0; i < 5; ++i) client.poll(1);
        EXPECT_GT(client.queued(), 0u);
        if (dies) {
            const Descriptor peer = accepted(); // sends the start of a frame, and goes
            EXPECT_EQ(send(peer.number(), "\x09\0\0\0\7", 5, 0), 5);
            for (int i = 0; i < 5; ++i) client.poll(1);
            EXPECT_EQ(shutdown(peer.number(), SHUT_RDWR), 0);
            ASSERT_TRUE(pollUntil([&] { return !client.isConnected(); }));
            ASSERT_TRUE(pollUntil([&] { return client.isConnected(); }));
        }
        got.clear();
        back.clear();
        server.emplace(accepted(), options, noting(got));
        EXPECT_TRUE(server->send(7, "back"));
        EXPECT_TRUE(pollUntil([&] { return back == std::vector<std::string>{"back"}; }));
        ASSERT_TRUE(pollUntil([&] { return !got.empty() && got.back() == text(sent - 1); }));
        EXPECT_EQ(got.size() == static_cast<size_t>(sent), !dies);
        for (size_t i = 1; i <= got.size(); ++i) EXPECT_EQ(got[got.size() - i], text(sent - static_cast<int>(i)));
        server.reset();
        ASSERT_TRUE(pollUntil([&] { return !client.isConnected(); }));
    }
}

TEST_F(Connections, AreLostWhenThePeerIsSilentOrTalksNonsense) {
    listenNow();
    ASSERT_TRUE(pollUntil([&] { return client.isConnected(); }));
    const Descriptor silent = accepted();
    ASSERT_TRUE(pollUntil([&] { return !reason.empty(); }));
    EXPECT_EQ(reason, "the peer is silent");
    char bytes[1000];
    const ssize_t size = recv(silent.number(), bytes, sizeof bytes, 0);
    ASSERT_GE(size, 10);
    EXPECT_EQ(std::string_view(bytes, 10), std::string_view("\6\0\0\0\x09\0beat", 10));

    reason.clear();
    ASSERT_TRUE(pollUntil([&] { return client.isConnected(); }));
    const Descriptor hostile = accepted();
    EXPECT_EQ(send(hostile.number(), "\xff\xff\xff\xff", 4, 0), 4);
    ASSERT_TRUE(pollUntil([&] { return !reason.empty(); }));
    EXPECT_NE(reason.find("length 4294967295"), std::string::npos) << reason;
}

/// What a publisher puts into the ring, known by its seed.
std::string ringBody(uint64_t seed) {
    std::string body(8 + seed * 37 % 400, static_cast<char>(seed));
    std::memcpy(body.data(), &seed, sizeof seed);
    return body;
}
uint64_t seedOf(std::string_view body) {
    uint64_t seed = 0;
    EXPECT_GE(body.size(), sizeof seed);
    std::memcpy(&seed, body.data(), std::min(sizeof seed, body.size()));
    EXPECT_EQ(body, ringBody(seed)) << "torn";
    return seed;
}

class Ring : public testing::Test {
  protected:
    const Folder folder;
    const std::string path = folder.path("ring");
    Host::MemRing ring = Host::MemRing::open(path, 1);
    Host::Record record;

    void publish(uint64_t seed) { ring.publish({.id = 7, .body = ringBody(seed), .time = static_cast<int64_t>(seed)}); }
};

TEST_F(Ring, ReadersGetWhatIsThereAndAreToldWhatIsNot) {
    Host::RingReader fast(ring), slow(ring);
    for (uint64_t i = 1; i <= 3000; ++i) {
        publish(i);
        ASSERT_TRUE(fast.next(record));
        ASSERT_EQ(seedOf(record.body), i);
        ASSERT_EQ(record.sequence, i);
        ASSERT_EQ(record.time, static_cast<int64_t>(i));
        ASSERT_EQ(record.lost, 0u);
        ASSERT_FALSE(fast.next(record));
    }
    const Host::MemRing again = Host::MemRing::open(path, 1 << 20); // as another process sees it
    EXPECT_EQ(again.size(), ring.size());
    Host::RingReader oldest(again, Host::From::oldest()), late(again);
    EXPECT_FALSE(late.next(record));
    uint64_t read = 0;
    for (; slow.next(record); ++read) EXPECT_EQ(seedOf(record.body), record.sequence);
    EXPECT_EQ(record.sequence, 3000u);
    EXPECT_EQ(slow.lost() + read, 3000u);
    EXPECT_GT(read * 230, ring.size() * 3 / 4) << "most of what the ring holds";
    for (uint64_t i = 0; i < read; ++i) ASSERT_TRUE(oldest.next(record));
    EXPECT_EQ(oldest.lost(), 0u) << "it asked for no more than there is";
    publish(1);
    ASSERT_TRUE(late.next(record));
    EXPECT_EQ(record.sequence, 3001u);
    EXPECT_THROW(ring.publish({.id = 1, .body = std::string(ring.longestBody() + 1, 'x')}), std::length_error);
    for (int i = 0; i < 20; ++i) {
        const std::string longest(ring.longestBody() - static_cast<size_t>(i), 'x');
        ring.publish({.id = 1, .body = longest});
        ASSERT_TRUE(late.next(record));
        ASSERT_EQ(record.body, longest);
    }
}

TEST_F(Ring, EncodesMessages) {
    Quillon::initialize();
    Host::RingReader reader(ring);
    for (const Filling filling : {Filling::typical, Filling::extreme}) {
        InBlock<SubmitOrderMessage> order;
        Sample(filling).fill(*order);
        uint64_t sequence = 0;
        EXPECT_TRUE(ring.publish(Inspect::default_protocol(), SubmitOrderMessage::ID, &*order, 5, sequence));
        ASSERT_TRUE(reader.next(record));
        EXPECT_EQ(record.sequence, sequence);
        EXPECT_EQ(record.id, SubmitOrderMessage::ID);
        EXPECT_EQ(record.body, bodyOf(*order));
        EXPECT_EQ(ring.publish(Inspect::default_protocol(), 0x1234, &*order, 5, sequence).refusal,
                  Inspect::Refusal::unknownIdentifier);
        EXPECT_FALSE(reader.next(record));
    }
    Quillon::finalize();
}

TEST_F(Ring, ForeignFilesAreRefused) {
    const std::string bytes = folder.content("ring");
    const auto expectRefused = [&](size_t at, char byte, const std::string& reason) {
        std::string changed = bytes;
        changed.resize(std::max(changed.size(), at + 1));
        changed[at] = byte;
        try {
            Host::MemRing::open(folder.write("other", changed));
            ADD_FAILURE() << reason;
        } catch (const Host::RingError& error) {
            EXPECT_NE(std::string(error.what()).find(reason), std::string::npos) << error.what();
        }
    };
    expectRefused(0, 'x', "is no ring");
    expectRefused(8, 1, "layout 1, not 4");
    expectRefused(17, 1, "another size");
    expectRefused(bytes.size(), 1, "another size");
    EXPECT_THROW(Host::MemRing::open(folder.write("short", bytes.substr(0, 100))), Host::RingError);
    EXPECT_THROW(Host::MemRing::open(folder.path("none/ring")), Host::RingError);
    EXPECT_THROW(Host::MemRing::open("/dev/null"), Host::RingError);

    // Lengths that no publisher writes, by a process that runs wild.
    Host::RingReader reader(ring);
    publish(1);
    for (const auto& [at, byte] :
         {std::pair(3, '\x7f'), std::pair(3, '\xff'), std::pair(3, '\0'), std::pair(1, '\1')}) {
        std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(bytes.size() - ring.size()) + at);
        file.put(byte).flush();
        if (byte == 0) continue; // what was there
        EXPECT_THROW(reader.next(record), Host::RingError);
    }
}

TEST_F(Ring, LengthsBeyondTheirEndAreRefused) {
    Host::RingReader reader(ring);
    const std::string body(1000, 'x'); // in records of 1024 bytes, 64 of them
    const size_t records = ring.size() / 1024;
    for (size_t i = 0; i < records + 6; ++i) {
        ring.publish({.id = 1, .body = body});
        EXPECT_TRUE(i >= records - 1 || reader.next(record));
    }
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(-1024, std::ios::end); // what is read next
    const uint32_t length = 3000;
    file.write(reinterpret_cast<const char*>(&length), sizeof length).flush();
    try {
        reader.next(record);
        ADD_FAILURE();
    } catch (const Host::RingError& error) {
        EXPECT_TRUE(std::string(error.what()).ends_with(" " + std::to_string(1024 * (records - 1)))) << error.what();
    }
}

TEST_F(Ring, WaitersAreWoken) {
    Host::RingReader reader(ring);
    EXPECT_FALSE(reader.wait(1));
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        publish(1);
    });
    EXPECT_TRUE(reader.wait(100'000)) << "by the message, long before that time";
    other.join();
    EXPECT_TRUE(reader.wait(100'000)) << "it has not been read yet";
}

// Where a publisher that died wanted to begin a record, none may begin.
TEST_F(Ring, MarksOfTheDeadAreForgotten) {
    publish(1);
    const auto file = Host::detail::RingFile::open(path, 1);
    Host::detail::RingHeader& header = file.header();
    const pid_t child = fork();
    if (child == 0) {
        const Host::detail::RingTurn turn(header);
        header.marks[3] = header.committed + 64;
        _exit(0); // its turn does not end
    }
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    publish(2);
    EXPECT_EQ(header.marks[3], 0u);
    EXPECT_EQ(ring.last(), 2u);
}

// Publishers and readers at once, the readers at paces of their own.
TEST_F(Ring, ManyPublishAndReadAtOnce) {
    constexpr uint64_t EACH = 30000, PUBLISHERS = 3;
    std::vector<std::thread> threads;
    std::atomic<bool> isOver = false;
    std::deque<Host::RingReader> places;
    for (int i = 0; i < 2; ++i) places.emplace_back(ring);
    for (uint64_t publisher = 0; publisher < PUBLISHERS; ++publisher)
        threads.emplace_back([&, publisher] {
            for (uint64_t i = 1; i <= EACH; ++i) publish(publisher << 32 | i);
        });
    std::vector<std::thread> readers;
    for (Host::RingReader& reader : places)
        readers.emplace_back([&] {
            const int pause = &reader == &places[0] ? 0 : 200;
            Host::Record it;
            std::map<uint64_t, uint64_t> last; // of each publisher
            uint64_t read = 0, sequence = 0;
            for (bool wasOver = false;;) {
                if (!reader.next(it)) {
                    if (wasOver) break;
                    wasOver = isOver; // one more look: what was published before it was over
                    reader.wait(5);
                    continue;
                }
                const uint64_t seed = seedOf(it.body);
                ASSERT_GT(seed, last[seed >> 32]);
                last[seed >> 32] = seed;
                ASSERT_EQ(it.sequence, sequence + it.lost + 1);
                sequence = it.sequence;
                if (++read % 500 == 0) std::this_thread::sleep_for(std::chrono::microseconds(pause));
            }
            EXPECT_EQ(sequence, EACH * PUBLISHERS);
            EXPECT_EQ(reader.lost() + read, EACH * PUBLISHERS);
        });
    for (std::thread& thread : threads) thread.join();
    isOver = true;
    for (std::thread& thread : readers) thread.join();
}

// Of processes that are killed nothing remains but what they had published.
TEST_F(Ring, NobodyIsHeldUpByTheDead) {
    Host::RingReader reader(ring);
    uint64_t read = 0, sequence = 0;
    const auto readAll = [&] {
        while (reader.next(record)) {
            seedOf(record.body);
            ASSERT_EQ(record.sequence, sequence + record.lost + 1);
            sequence = record.sequence;
            ++read;
        }
    };
    std::mt19937 random(3);
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        if (child == 0)
            for (uint64_t i = 0;; ++i) publish(i);
        ASSERT_GT(child, 0);
        for (int i = 0; i < 20; ++i) readAll(), publish(random());
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 3000));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        publish(random());
        readAll();
    }
    EXPECT_EQ(reader.lost() + read, sequence);
    EXPECT_GT(read, 400u);
}

} // namespace
