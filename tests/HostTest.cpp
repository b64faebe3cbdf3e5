// What a process that exchanges messages needs: blocks that threads share, frames on a stream.
#include <atomic>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <thread>

#include <gtest/gtest.h>

#include "Host/Frames.h"
#include "Host/MsgBlockPool.h"
#include "Host/SharedMessage.h"
#include "Inspect/Sizes.h"
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
    for (const auto& [length, isGood] : std::vector<std::pair<std::string, bool>>{{{"\0\0\0\0", 4}, false},
                                                                                  {{"\1\0\0\0", 4}, false},
                                                                                  {{"\x02\0\0\0", 4}, true},
                                                                                  {{"\x0c\0\0\0", 4}, true},
                                                                                  {{"\x0d\0\0\0", 4}, false},
                                                                                  {{"\xff\xff\xff\xff", 4}, false}}) {
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

} // namespace
