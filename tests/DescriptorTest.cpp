// Every message type driven through the untyped descriptor, as queues and gateways do.
#include <gtest/gtest.h>

#include "tests/Hex.h"
#include "tests/Samples.h"

namespace {

using Velmora::MsgDescriptor;
using Velmora::of;

class Descriptor : public Module {};

TEST_F(Descriptor, TellsNameIdIndexAndSize) {
    forEveryMessage([]<class T>(of<T>, const char* name) {
        const MsgDescriptor* descriptor = Quillon::__protocol->getDescriptor(T::ID);
        EXPECT_STREQ(descriptor->name(), name);
        EXPECT_EQ(descriptor->id(), T::ID);
        EXPECT_EQ(descriptor->index(), T::INDEX);
        EXPECT_EQ(descriptor->size(), sizeof(T));
        EXPECT_EQ(descriptor->protocol(), Quillon::__protocol);
    });
}

TEST_F(Descriptor, DoesAllOnUntypedMemoryAndCountsNothing) {
    forEveryMessage([]<class T>(of<T>, const char*) {
        MsgDescriptor* descriptor = Quillon::__protocol->getDescriptor(T::ID);
        Block sourceBlock(1 << 17, 1), block(1 << 18, 2), copyBlock(1 << 18, 3);
        void* source = sourceBlock.alloc.allocate(descriptor->size());
        void* message = block.alloc.allocate(descriptor->size());
        void* copy = copyBlock.alloc.allocate(descriptor->size());
        descriptor->construct(source, sourceBlock.alloc);
        descriptor->construct(message, block.alloc);
        descriptor->construct(copy, copyBlock.alloc);

        Sample sample(Filling::typical, 5);
        sample.fill(*static_cast<T*>(source));
        std::string bytes(1 << 17, '\0');
        Velmora::FastCodec writer(bytes.data(), bytes.data() + bytes.size());
        descriptor->write(source, writer);
        // What PadMessage writes is not what it reads; a body of its reading form has one byte of length.
        if (std::is_same_v<T, Quillon::PadMessage>) bytes.erase(1, 1);
        Velmora::FastCodec reader(bytes.data(), bytes.data() + bytes.size());
        descriptor->read(message, reader);
        EXPECT_EQ(reader.size(), writer.size() - (std::is_same_v<T, Quillon::PadMessage> ? 1 : 0));
        sample.check(*static_cast<T*>(message));
        descriptor->copy(copy, message);
        sample.check(*static_cast<T*>(copy));
        descriptor->checkbounds(copy, copyBlock.begin(), copyBlock.end());
        descriptor->nodestroy();
        for (void* p : {source, message, copy}) descriptor->destroy(p);

        const Velmora::MsgStats& stats = descriptor->getStats();
        for (const Quillon::cas_t counter : {stats.nconstruct, stats.ndestroy, stats.ncopy, stats.nwrite, stats.nread,
                                             stats.nalloc, stats.ndealloc, stats.max_size, stats.nundress})
            EXPECT_EQ(counter, 0u);
    });
}

TEST_F(Descriptor, ConstructOfNullDoesNothing) {
    Block block(10);
    Quillon::__protocol->getDescriptor(Quillon::LogMessage::ID)->construct(nullptr, block.alloc);
    EXPECT_EQ(block.alloc.used_size(), 0u);
}

TEST_F(Descriptor, TypeObjectIsTheUsers) {
    int object = 7;
    auto* descriptor = new Velmora::MsgDescriptorT<Quillon::TestMessage>("TestMessage", Quillon::__protocol);
    EXPECT_EQ(descriptor->getTypeObject(), nullptr);
    descriptor->setTypeObject(&object);
    EXPECT_EQ(descriptor->getTypeObject(), &object);
    delete descriptor;
    EXPECT_EQ(object, 7);
}

TEST_F(Descriptor, StatisticsAreForUsersToKeep) {
    Velmora::MsgStats& stats = Quillon::__protocol->getDescriptor(0)->getStats();
    Quillon::Atomic::increment(&stats.nread);
    Quillon::Atomic::setmax(&stats.max_size, 100);
    EXPECT_EQ(Quillon::__protocol->getDescriptor(0)->getStats().nread, 1u);
    EXPECT_EQ(Quillon::__protocol->getDescriptor(0)->getStats().max_size, 100u);
    EXPECT_EQ(Quillon::__protocol->getDescriptor(1)->getStats().nread, 0u);
}

/// The slots of a descriptor's virtual table, by what calling them does: code built apart relies on the order.
TEST_F(Descriptor, VirtualTableKeepsItsOrder) {
    const MsgDescriptor* descriptor = Quillon::__protocol->getDescriptor(521);
    const auto slot = [](const void* object, size_t n) { return (*static_cast<void** const*>(object))[n]; };
    const auto call = [&]<class R>(size_t n, R*) {
        return reinterpret_cast<R (*)(const void*)>(slot(descriptor, n))(descriptor);
    };
    EXPECT_STREQ(call(2, static_cast<const char**>(nullptr)), "MassQuoteAckMessage");
    EXPECT_EQ(call(3, static_cast<Velmora::MsgType_t*>(nullptr)), 521);
    EXPECT_EQ(call(4, static_cast<short*>(nullptr)), 63);
    EXPECT_EQ(call(5, static_cast<size_t*>(nullptr)), sizeof(Quillon::MassQuoteAckMessage));
    EXPECT_EQ(call(13, static_cast<Velmora::MsgStats**>(nullptr)), &const_cast<MsgDescriptor*>(descriptor)->getStats());

    const auto text = [&](size_t n) {
        return reinterpret_cast<const char* (*)(const void*)>(slot(Quillon::__protocol, n))(Quillon::__protocol);
    };
    EXPECT_STREQ(text(2), "Quillon");
    EXPECT_STREQ(text(6), "3cb14c3a66f8bcf889f1a7afd1cd3ecf");
    EXPECT_STREQ(text(7), "c622d22c9a1d9f1698e94a287f643c13");
    EXPECT_STREQ(text(8), "ec9f41aa078427a07d47a4a748a8d476");
    const auto lookup = slot(Quillon::__protocol, 3);
    EXPECT_EQ(reinterpret_cast<MsgDescriptor* (*)(const void*, Velmora::MsgType_t)>(lookup)(Quillon::__protocol, 521),
              descriptor);
}

} // namespace
