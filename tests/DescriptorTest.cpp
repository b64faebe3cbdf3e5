// Every message type driven through the untyped descriptor, as queues and gateways do.
#include <gtest/gtest.h>

#include "tests/Hex.h"
#include "tests/Samples.h"
#include "tests/Slots.h"

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
        for (void* p : {source, copy}) descriptor->destroy(p);
        const int before = block.alloc.deallocated_size();
        descriptor->destroy(message);
        EXPECT_EQ(block.alloc.deallocated_size() > before, Velmora::holdsStorage<T>());

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

using DescriptorDeathTest = Descriptor;

TEST_F(DescriptorDeathTest, ChecksTheBoundsItIsGiven) {
    MsgDescriptor* descriptor = Quillon::__protocol->getDescriptor(Quillon::LogMessage::ID);
    InBlock<Quillon::LogMessage> message;
    EXPECT_DEATH(descriptor->checkbounds(&*message, message.block.begin() + 1, message.block.end()), "begin <= this");
    EXPECT_DEATH(descriptor->checkbounds(&*message, message.block.begin(), message.block.begin()), "begin <= this");
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

TEST(Slots, OrderIsBinding) {
    using D = MsgDescriptor;
    expectSlotsFromTwo(&D::name, &D::id, &D::index, &D::size, &D::construct, &D::destroy, &D::nodestroy, &D::write,
                       &D::read, &D::copy, &D::checkbounds, &D::getStats);
    using P = Velmora::MsgProtocol;
    expectSlotsFromTwo(&P::getName, &P::getDescriptor, &P::getCompressedDefinition, &P::getDefinition, &P::getSignature,
                       &P::getSignatureAPI, &P::getSignatureStorage, &P::getMessageIndex, &P::getMessageName);
}

} // namespace
