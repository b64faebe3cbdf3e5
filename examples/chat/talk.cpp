// Sends messages of the chat to itself: what one side writes, the other reads and hands to its handler.
#include <iostream>
#include <string>

#include "Chat.h"
#include "protocols/chat/MsgHandler.h"

using Velmora::BufferAllocator;

/// A message on its way: the identifier travels beside the body.
struct Sent {
    Velmora::MsgType_t id;
    std::string body;
};

template <class T>
static Sent send(const T& message) {
    std::string body(1024, '\0');
    Velmora::FastCodec codec(body.data(), body.data() + body.size());
    message.write(codec);
    body.resize(codec.size());
    return {T::ID, body};
}

class Screen : public Chat::MsgHandler {
  public:
    void handle(const Chat::JoinMessage& join) override { std::cout << join.person.name.c_str() << " joins\n"; }
    void handle(const Chat::SayMessage& said) override { std::cout << said << '\n'; }
};

static void receive(Sent sent, Chat::MsgHandler& handler) {
    char block[4096];
    BufferAllocator alloc(block, sizeof block, "talk", "message");
    Velmora::MsgDescriptor* const descriptor = Chat::__protocol->getDescriptor(sent.id);
    void* const message = alloc.allocate(descriptor->size());
    descriptor->construct(message, alloc);
    Velmora::FastCodec codec(sent.body.data(), sent.body.data() + sent.body.size());
    descriptor->read(message, codec);
    Chat::dispatch(sent.id, message, handler);
    descriptor->destroy(message);
}

int main() {
    Chat::initialize();
    Screen screen;
    char block[4096];
    BufferAllocator alloc(block, sizeof block, "talk", "outgoing");

    Chat::JoinMessage join(alloc);
    join.person.name = "ann";
    receive(send(join), screen);

    Chat::SayMessage said(alloc);
    said.user = "ann";
    said.text = "hello";
    said.mood = Chat::Mood::LOUD;
    receive(send(said), screen);
    Chat::finalize();
}
