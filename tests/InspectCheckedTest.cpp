// Decoding and encoding for hosts: all or nothing.
#include "Inspect/Checked.h"

#include <gtest/gtest.h>

#include "tests/Bodies.h"
#include "tests/Hex.h"

namespace {

using namespace Inspect;
using Velmora::of;

class Checked : public Module {};

TEST_F(Checked, MessagesAreDecodedIntoExactlyTheBlockTheyNeed) {
    forEveryMessage([&]<class T>(of<T>, const char*) {
        const std::string body = sampleBody<T>(Filling::typical).bytes;
        const auto needed =
            static_cast<int>(sizeof(T) + verify<T>(body.data(), body.data() + body.size(), whole).blockBytes);
        Block block(needed, 3);
        Decoded decoded = decode_verified(T::ID, body, block.alloc);
        ASSERT_TRUE(decoded) << decoded.result.text();
        EXPECT_EQ(decoded.needed, static_cast<size_t>(needed));
        EXPECT_EQ(block.alloc.unused_size(), 0u);
        EXPECT_EQ(decoded.descriptor, Quillon::__protocol->getDescriptor(T::ID));
        Sample(Filling::typical).check(*static_cast<T*>(decoded.object));
        decoded.descriptor->checkbounds(decoded.object, block.begin(), block.end());

        Block small(needed - 1);
        decoded = decode_verified(T::ID, body, small.alloc);
        EXPECT_FALSE(decoded);
        EXPECT_EQ(decoded.result.text(), "block too small");
        EXPECT_EQ(decoded.needed, static_cast<size_t>(needed));
        EXPECT_EQ(small.alloc.used_size(), 0u) << "a refusal takes nothing";
    });
}

TEST_F(Checked, RefusedBytesLeaveTheBlockAsItWas) {
    struct Case {
        Velmora::MsgType_t id;
        const char* body;
        Policy policy;
        const char* text;
    };
    const Case cases[] = {
        {Quillon::ClientConnectMessage::ID, "03616263", whole, "truncated at byte 4 (password)"},
        {Quillon::ClientConnectMessage::ID, "0361626303", tolerant, "truncated at byte 4 (password)"},
        {Quillon::TimerMessage::ID, "0000", whole, "trailing bytes at byte 1"},
        {Quillon::TimerMessage::ID, "8000", strict, "non-minimal form at byte 0 (tqid)"},
        {Quillon::BatchesCompletedMessage::ID, "ffff00", whole,
         "count beyond the remaining bytes at byte 0 (batchesCompleted)"},
        {0xF209, "00", whole, "unknown identifier 61961"},
    };
    constexpr size_t size = 1 << 18; // holds the largest count of numbers
    Block block(size);
    for (const Case& c : cases) {
        const std::string body = unhex(c.body);
        std::memset(block.begin(), 0xAA, size);
        const Decoded decoded = decode_verified(c.id, body, block.alloc, c.policy);
        EXPECT_FALSE(decoded);
        EXPECT_EQ(decoded.object, nullptr);
        EXPECT_EQ(decoded.result.text(), c.text);
        EXPECT_EQ(block.alloc.used_size(), 0u);
        const std::string_view rest(block.begin() + 512 + 33 * body.size(), size - 512 - 33 * body.size());
        EXPECT_EQ(rest.find_first_not_of('\xAA'), rest.npos) << "no more was written than bytes can ask for";
    }
    EXPECT_EQ(decode_verified<Quillon::TimerMessage>({}, block.alloc).result.text(), "truncated at byte 0 (tqid)");
    Velmora::BufferAllocator exhausted = block.alloc;
    EXPECT_ANY_THROW(exhausted.allocate(SIZE_MAX)); // is beyond every block from now on
    EXPECT_EQ(decode_verified<Quillon::TimerMessage>("\x0E", exhausted).result.text(), "block too small");
}

TEST(CheckedDeathTest, DecodingWithoutTheModuleIsAnAssertion) {
    Block block(4096);
    for (const char* body : {"\x0E", "\x8E"}) // good, cut
        EXPECT_DEATH(decode_verified(Quillon::TimerMessage::ID, {body, 1}, block.alloc), "decode_verified.*__protocol");
    EXPECT_EQ(decode_verified<Quillon::TimerMessage>("\x0E", block.alloc)->tqid, 7) << "needs no descriptor";
    EXPECT_DEATH(decode_verified<Quillon::TestMessage>("\x01", block.alloc), "_initialized") << "but enumerations";
    InBlock<Quillon::TimerMessage> timer;
    char range[8];
    EXPECT_TRUE(encode_checked(*timer, range, range + sizeof range));
}

TEST_F(Checked, AMessageEndsWithItsOwnerUnlessItIsReleased) {
    const std::string body = unhex("01610162"); // user, password
    Block block(4096);
    const int owned = 4;
    {
        Decoded first = decode_verified(Quillon::ClientConnectMessage::ID, body, block.alloc), second(std::move(first));
        EXPECT_FALSE(first);
        first = std::move(second);
        EXPECT_TRUE(first && !second);
        EXPECT_EQ(block.alloc.deallocated_size(), 0);
        first = decode_verified(Quillon::ClientConnectMessage::ID, body, block.alloc);
        EXPECT_EQ(block.alloc.deallocated_size(), owned) << "the one that was replaced";
        auto third = decode_verified<Quillon::ClientConnectMessage>(body, block.alloc);
        EXPECT_TRUE(third->user == "a" && (*third).password == "b");
        EXPECT_EQ(third.needed, sizeof *third + owned);
        EXPECT_EQ(third.result.consumed, body.size());
    }
    EXPECT_EQ(block.alloc.deallocated_size(), 3 * owned);
    void* const message = decode_verified(Quillon::ClientConnectMessage::ID, body, block.alloc).release();
    EXPECT_EQ(block.alloc.deallocated_size(), 3 * owned);
    static_cast<Quillon::ClientConnectMessage*>(message)->~ClientConnectMessage();
}

TEST_F(Checked, EncodingFitsExactlyAndStaysInItsRange) {
    forEveryMessage([&]<class T>(of<T>, const char*) {
        for (const Filling filling : {Filling::typical, Filling::extreme}) {
            InBlock<T> value(1 << 18);
            Sample(filling).fill(*value);
            expectEncodedWithin(*value);
        }
    });
}

TEST_F(Checked, WhatCannotTravelIsNamed) {
    std::string range(1 << 20, '\xAA');
    const auto refusal = [&](const auto& message) {
        const Encoded result = encode_checked(message, range.data(), range.data() + range.size());
        EXPECT_EQ(result.size, 0u);
        return result.text();
    };
    InBlock<Quillon::SubmitOrderMessage> order(1 << 20);
    order->contents.parameters.resize(4);
    order->contents.parameters[3].value = std::string(65536, 'x');
    EXPECT_EQ(refusal(*order), "string too long (contents.parameters[3].value)");
    order->contents.clOrdID = std::string(70000, 'x');
    EXPECT_EQ(refusal(*order), "string too long (contents.clOrdID)") << "the first of them";

    InBlock<Quillon::TradeLimitDataMessage> limits(1 << 23);
    limits->contents.userHierarchy.resize(2);
    limits->contents.userHierarchy[1].groupNames.resize(32768);
    EXPECT_EQ(refusal(*limits), "too many elements (contents.userHierarchy[1].groupNames)");
    limits->contents.userHierarchy[1].groupNames.resize(2);
    limits->contents.userHierarchy[1].groupNames[1] = std::string(65536, 'x');
    EXPECT_EQ(refusal(*limits), "string too long (contents.userHierarchy[1].groupNames[1])");

    InBlock<Quillon::BatchesCompletedMessage> numbers(1 << 19);
    numbers->batchesCompleted.resize(32768);
    EXPECT_EQ(refusal(*numbers), "too many elements (batchesCompleted)");
    InBlock<Quillon::PadMessage> pad(1 << 19);
    pad->padding = std::string(65536, 'x');
    EXPECT_EQ(refusal(*pad), "string too long (padding)");
    EXPECT_EQ(encode_checked(0xF209, nullptr, nullptr, nullptr).refusal, Refusal::unknownIdentifier);

    // The largest that can travel do.
    pad->padding = std::string(65535, 'x');
    EXPECT_TRUE(encode_checked(*pad, range.data(), range.data() + range.size()));
    numbers->batchesCompleted.resize(32767);
    EXPECT_TRUE(encode_checked(*numbers, range.data(), range.data() + range.size()));
}

} // namespace
