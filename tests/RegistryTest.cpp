// The life cycle of the module: what initialize() builds, finalize() releases, and what is left when memory runs out
// midway.
#include <algorithm>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

#include "generated/QLProtocol/QLProtocol.fields.h"
#include "generated/QLProtocol/QLProtocol.h"
#include "tests/CountedHeap.h"
#include "tests/Samples.h"

namespace {

using Velmora::of;

void expectComplete() {
    ASSERT_NE(Quillon::__protocol, nullptr);
    size_t count = 0;
    const int* index = Quillon::__protocol->getMessageIndex(count);
    ASSERT_EQ(count, size_t{MESSAGES});
    for (size_t i = 0; i < count; ++i) {
        const auto id = static_cast<Velmora::MsgType_t>(index[i]);
        Velmora::MsgDescriptor* descriptor = Quillon::__protocol->getDescriptor(id);
        ASSERT_NE(descriptor, nullptr) << id;
        EXPECT_EQ(descriptor->id(), id);
        EXPECT_EQ(descriptor->index(), static_cast<short>(i));
        EXPECT_STREQ(Quillon::__protocol->getMessageName(id), descriptor->name());
    }
}

// The one place of these figures: who extends the definition changes them here.
TEST(Definition, HoldsWhatWasAgreed) {
    EXPECT_EQ(Velmora::countTypes([](auto visit) { return Quillon::enumerations(visit); }), 34);
    EXPECT_EQ(Velmora::countTypes([](auto visit) { return Quillon::records(visit); }), 49);
    EXPECT_EQ(MESSAGES, 71);
}

TEST(Registry, LooksUpAllMessagesAndNoOthers) {
    EXPECT_EQ(Quillon::__protocol, nullptr);
    Quillon::initialize();
    expectComplete();
    int found = 0;
    for (int id = 0; id < 65536; ++id)
        found += Quillon::__protocol->getDescriptor(static_cast<Velmora::MsgType_t>(id)) != nullptr;
    EXPECT_EQ(found, MESSAGES);
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
    EXPECT_STREQ(Quillon::__protocol->getSignature(), "3cb14c3a66f8bcf889f1a7afd1cd3ecf");
    EXPECT_STREQ(Quillon::__protocol->getSignatureAPI(), "c622d22c9a1d9f1698e94a287f643c13");
    EXPECT_STREQ(Quillon::__protocol->getSignatureStorage(), "ec9f41aa078427a07d47a4a748a8d476");
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
        EXPECT_EQ(heap::alive - before, 1 + MESSAGES * 3);
        Quillon::finalize();
        EXPECT_EQ(Quillon::__protocol, nullptr);
        EXPECT_EQ(heap::alive, before);
        Quillon::finalize();
        EXPECT_EQ(heap::alive, before);
    }
    EXPECT_TRUE(Quillon::Side::_initialized) << "the enumeration tables stay";
}

/// What initialize() makes, as it takes it from the heap: the protocol, then for each message the direct table's
/// descriptor, the map's entry and the map's descriptor.
struct Made : heap::Record {
    Made() {
        Quillon::initialize();
        heap::Record::current = nullptr;
    }
    void* protocol() const { return taken[0]; }
    void* direct(size_t index) const { return taken[3 * index + 1]; }
    void* entry(size_t index) const { return taken[3 * index + 2]; }
    void* found(size_t index) const { return taken[3 * index + 3]; }
};

/// The messages by the remainder of their identifiers; where that is the same, the later first.
std::vector<size_t> inOrderOfSlots(int slots) {
    size_t count = 0;
    const int* const ids = Quillon::__protocol->getMessageIndex(count);
    std::vector<size_t> order(count);
    std::iota(order.rbegin(), order.rend(), 0);
    std::ranges::stable_sort(order, {}, [=](size_t index) { return ids[index] % slots; });
    return order;
}

TEST(Registry, LooksUpTheDescriptorOfTheMapAndNotTheOther) {
    const Made made;
    size_t count = 0;
    const int* const ids = Quillon::__protocol->getMessageIndex(count);
    EXPECT_EQ(Quillon::__protocol, made.protocol());
    for (size_t i = 0; i < count; ++i) {
        auto* const found = Quillon::__protocol->getDescriptor(static_cast<Velmora::MsgType_t>(ids[i]));
        auto* const other = static_cast<Velmora::MsgDescriptor*>(made.direct(i));
        EXPECT_EQ(found, made.found(i));
        EXPECT_EQ(other->name(), found->name());
        EXPECT_EQ(other->protocol(), Quillon::__protocol);
        found->getStats().nread = 1;
        EXPECT_EQ(other->getStats().nread, 0u) << "each counts for itself";
    }
    Quillon::finalize();
}

TEST(Registry, FinalizeReleasesTheMapThenTheTableThenTheProtocol) {
    const Made made;
    std::vector<const void*> expected, entries;
    int previous = -1, inBucket = 0;
    for (const size_t i : inOrderOfSlots(193)) {
        expected.push_back(made.found(i));
        entries.push_back(made.entry(i));
        const int bucket = static_cast<Velmora::MsgDescriptor*>(made.found(i))->id() % 193;
        inBucket = bucket == previous ? inBucket + 1 : 1;
        EXPECT_LE(inBucket, 2);
        previous = bucket;
    }
    const auto entriesBegin = static_cast<std::ptrdiff_t>(expected.size());
    expected.insert(expected.end(), entries.begin(), entries.end());
    const auto entriesEnd = static_cast<std::ptrdiff_t>(expected.size());
    for (const size_t i : inOrderOfSlots(350)) expected.push_back(made.direct(i));
    expected.push_back(made.protocol());

    heap::Record released;
    Quillon::finalize();
    heap::Record::current = nullptr;
    std::vector<const void*> freed(released.freed, released.freed + released.freedCount);
    ASSERT_EQ(freed.size(), expected.size());
    for (auto* all : {&freed, &expected}) // entries in any order
        std::sort(all->begin() + entriesBegin, all->begin() + entriesEnd);
    EXPECT_EQ(freed, expected);
}

TEST(Registry, ASecondInitializeBuildsEverythingAnewAndForgetsTheFirst) {
    const long before = heap::alive;
    const Made made;
    size_t count = 0;
    const int* const ids = Quillon::__protocol->getMessageIndex(count);
    const long built = heap::alive - before;
    Quillon::initialize();
    EXPECT_NE(Quillon::__protocol, made.protocol());
    expectComplete();
    for (size_t i = 0; i < count; ++i)
        EXPECT_NE(Quillon::__protocol->getDescriptor(static_cast<Velmora::MsgType_t>(ids[i])), made.found(i));
    Quillon::finalize();
    EXPECT_EQ(heap::alive - before, built - static_cast<long>(count)) << "all but the entries, which are used again";
    for (size_t i = 0; i < count; ++i)
        for (void* const forgotten : {made.direct(i), made.found(i)})
            delete static_cast<Velmora::MsgDescriptor*>(forgotten);
    delete static_cast<Velmora::MsgProtocol*>(made.protocol());
    EXPECT_EQ(heap::alive, before);
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
    EXPECT_EQ(refused, 1 + MESSAGES * 3) << "every allocation of initialize() was refused once";
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
