// The life cycle of the module: what initialize() builds, finalize() releases, and what is left when memory runs out
// midway.
#include <gtest/gtest.h>

#include "generated/QLProtocol/QLProtocol.fields.h"
#include "generated/QLProtocol/QLProtocol.h"
#include "tests/CountedHeap.h"

namespace {

using Velmora::of;

void expectComplete() {
    ASSERT_NE(Quillon::__protocol, nullptr);
    size_t count = 0;
    const int* index = Quillon::__protocol->getMessageIndex(count);
    ASSERT_EQ(count, 71u);
    for (size_t i = 0; i < count; ++i) {
        const auto id = static_cast<Velmora::MsgType_t>(index[i]);
        Velmora::MsgDescriptor* descriptor = Quillon::__protocol->getDescriptor(id);
        ASSERT_NE(descriptor, nullptr) << id;
        EXPECT_EQ(descriptor->id(), id);
        EXPECT_EQ(descriptor->index(), static_cast<short>(i));
        EXPECT_STREQ(Quillon::__protocol->getMessageName(id), descriptor->name());
    }
}

TEST(Registry, LooksUpAllMessagesAndNoOthers) {
    EXPECT_EQ(Quillon::__protocol, nullptr);
    Quillon::initialize();
    expectComplete();
    int found = 0;
    for (int id = 0; id < 65536; ++id)
        found += Quillon::__protocol->getDescriptor(static_cast<Velmora::MsgType_t>(id)) != nullptr;
    EXPECT_EQ(found, 71);
    EXPECT_STREQ(Quillon::__protocol->getDescriptor(0)->name(), "VersionMessage");
    EXPECT_STREQ(Quillon::__protocol->getMessageName(521), "MassQuoteAckMessage");
    EXPECT_STREQ(Quillon::__protocol->getMessageName(61673), "SubmitOrderMessage");
    EXPECT_EQ(Quillon::__protocol->getDescriptor(3), nullptr);
    EXPECT_EQ(Quillon::__protocol->getDescriptor(0xF209), nullptr);
    size_t count = 0;
    const int* index = Quillon::__protocol->getMessageIndex(count);
    EXPECT_EQ(index[0], 53280);
    EXPECT_EQ(index[1], 53300);
    EXPECT_EQ(index[2], 53296);
    EXPECT_EQ(index[70], 61974);
    Quillon::finalize();
}

TEST(Registry, TellsTheIdentityOfTheProtocol) {
    Quillon::initialize();
    EXPECT_STREQ(Quillon::__protocol->getName(), "Quillon");
    size_t length = 0;
    const void* definition = Quillon::__protocol->getCompressedDefinition(length);
    EXPECT_EQ(std::string(static_cast<const char*>(definition), length), "(Not supported.)");
    EXPECT_EQ(length, 16u);
    EXPECT_EQ(Quillon::__protocol->getDefinition(), "(Not supported.)");
    EXPECT_EQ(Quillon::VERSION, 1);
    Quillon::finalize();
}

TEST(Registry, FinalizeReleasesEverythingAndMayRunAnyTime) {
    Quillon::finalize();
    const long before = heap::alive;
    for (int round = 0; round < 3; ++round) {
        Quillon::initialize();
        expectComplete();
        // Protocol, and per message two descriptors and an entry of the map.
        EXPECT_EQ(heap::alive - before, 1 + 71 * 3);
        Quillon::finalize();
        EXPECT_EQ(Quillon::__protocol, nullptr);
        EXPECT_EQ(heap::alive, before);
        Quillon::finalize();
        EXPECT_EQ(heap::alive, before);
    }
    EXPECT_TRUE(Quillon::Side::_initialized) << "the enumeration tables stay";
}

TEST(Registry, OutOfMemoryAtAnyStepLeaksNothing) {
    Quillon::finalize();
    const long before = heap::alive;
    long refused = 0;
    for (;; ++refused) {
        bool threw = false;
        {
            const heap::Refusal refusal(refused);
            try {
                Quillon::initialize();
            } catch (const std::bad_alloc&) {
                threw = true;
            }
        }
        if (!threw) break;
        EXPECT_EQ(heap::alive - before, refused) << "what was made is registered";
        if (Quillon::__protocol != nullptr) {
            size_t registered = 0;
            for (int id = 0; id < 65536; ++id)
                registered += Quillon::__protocol->getDescriptor(static_cast<Velmora::MsgType_t>(id)) != nullptr;
            EXPECT_EQ(registered, static_cast<size_t>(refused - 1) / 3);
        }
        Quillon::finalize();
        EXPECT_EQ(heap::alive, before) << "refused allocation " << refused;
        EXPECT_EQ(Quillon::__protocol, nullptr);
    }
    EXPECT_EQ(refused, 1 + 71 * 3) << "every allocation of initialize() was refused once";
    expectComplete();
    Quillon::finalize();
}

TEST(Errors, TypesForHostsKeepTheirBases) {
    const Quillon::QLProtocolError error("text");
    EXPECT_STREQ(static_cast<const std::runtime_error&>(error).what(), "text");
    const Velmora::InvalidEnumException invalid("side");
    EXPECT_STREQ(
        static_cast<const std::logic_error&>(static_cast<const Velmora::VelmoraEncodingError&>(invalid)).what(),
        "side");
}

} // namespace
