#include "generated/QLProtocol/MsgHandler.h"

#include <gtest/gtest.h>

#include "generated/QLProtocol/AsciiWriter.h"
#include "tests/Samples.h"

namespace {

using namespace Quillon;
using Velmora::of;

class Handler : public Module {};

struct Recording : MsgHandler {
    using MsgHandler::handle;
    void handle(const SubmitOrderMessage& message) override { seen = &message; }
    const void* seen = nullptr;
};

TEST_F(Handler, DispatchReachesTheOverloadOfTheIdentifier) {
    InBlock<SubmitOrderMessage> order;
    Recording recording;
    EXPECT_TRUE(dispatch(SubmitOrderMessage::ID, &*order, recording));
    EXPECT_EQ(recording.seen, &*order);
    recording.seen = nullptr;
    EXPECT_FALSE(dispatch(3, &*order, recording)) << "unknown identifier";
    InBlock<CancelOrderMessage> cancel;
    EXPECT_TRUE(dispatch(CancelOrderMessage::ID, &*cancel, recording)) << "overloads not overridden do nothing";
    EXPECT_EQ(recording.seen, nullptr);
}

TEST_F(Handler, DispatchPrintsEveryMessageAsItsOperatorDoes) {
    forEveryMessage([]<class T>(of<T>, const char* name) {
        InBlock<T> value;
        Sample(Filling::typical, 3).fill(*value);
        StaticOStream<65536> dispatched;
        Velmora::TextCodec<FastOStream> codec(dispatched);
        AsciiWriter writer(codec, false, 0);
        EXPECT_TRUE(dispatch(T::ID, &*value, writer));
        EXPECT_EQ(std::string("<") + name + " " + std::string(dispatched.begin(), dispatched.size()) + ">",
                  printed(*value));
    });
}

TEST_F(Handler, VirtualTableIsInDeclarationOrder) {
    // Slot 2 + INDEX, after the two forms of the destructor, is the overload of that message.
    Recording recording;
    InBlock<SubmitOrderMessage> order;
    using Overload = void (*)(void*, const void*);
    void** slots = *reinterpret_cast<void***>(&recording);
    reinterpret_cast<Overload>(slots[2 + SubmitOrderMessage::INDEX])(&recording, &*order);
    EXPECT_EQ(recording.seen, &*order);
    for (int i = 0; i < MESSAGES; ++i) {
        if (i == SubmitOrderMessage::INDEX) continue;
        recording.seen = nullptr;
        reinterpret_cast<Overload>(slots[2 + i])(&recording, &*order);
        EXPECT_EQ(recording.seen, nullptr) << i;
    }
}

} // namespace
