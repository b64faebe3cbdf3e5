// Bytes from a stranger, in a gateway that links QLInspect: verified before they are decoded.
#include <iostream>

#include "Inspect/Checked.h"
#include "generated/QLProtocol/QLProtocol.h"

/// Decodes a body in a block of its own and tells what it was.
static void receive(Velmora::MsgType_t id, const std::string& body) {
    char block[4096];
    Velmora::BufferAllocator alloc(block, sizeof block, "gateway", "message");
    const Inspect::Decoded message = Inspect::decode_verified(id, body, alloc);
    if (!message) {
        std::cout << "refused: " << message.result.text() << '\n';
        return;
    }
    std::cout << "accepted " << message.descriptor->name() << '\n';
    message.descriptor->destroy(message.object);
}

int main() {
    Quillon::initialize();
    receive(Quillon::TimerMessage::ID, "\x0e");
    receive(Quillon::TimerMessage::ID, "\x8e");
    Quillon::finalize();
}
