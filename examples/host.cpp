// The road of one received message, in a host that takes bytes from strangers: verified before they are decoded.
// examples/trusted.cpp goes the same road step by step, with the library alone.
#include <iostream>
#include <string>

#include "Inspect/Checked.h"
#include "generated/QLProtocol/MsgHandler.h"
#include "generated/QLProtocol/QLProtocol.h"

using Velmora::BufferAllocator;

/// Prices and amounts are whole numbers of 1/SCALE. The protocol fixes no scale; peers agree on one.
constexpr int64_t SCALE = 100'000'000;

/// Stands for a peer: an encoded order. The identifier travels beside the body.
static std::string bodyFromPeer() {
    char block[4096];
    BufferAllocator alloc(block, sizeof block, "peer", "SubmitOrderMessage");
    Quillon::SubmitOrderMessage order(alloc);
    order.userID = 7;
    order.contents.clOrdID = "EURUSD-0001";
    order.contents.side = Quillon::Side::BID;
    order.contents.amount = 1'000'000 * SCALE;
    order.contents.price = 108'250'000; // 1.0825
    order.contents.parameters.add_back().key = "desk";

    std::string body(1024, '\0');
    const Inspect::Encoded written = Inspect::encode_checked(order, body.data(), body.data() + body.size());
    if (!written) std::cout << "not sent: " << written.text() << '\n';
    body.resize(written ? written.size : 0);
    return body;
}

/// What a host does with messages: it takes those it knows as what they are.
class Desk : public Quillon::MsgHandler {
  public:
    void handle(const Quillon::SubmitOrderMessage& order) override {
        std::cout << "received " << order << '\n';

        // The message lives in the receiver's block; what is to stay is copied into another.
        char block[4096];
        BufferAllocator alloc(block, sizeof block, "archive", "SubmitOrderMessage");
        Quillon::SubmitOrderMessage copy(alloc);
        copy = order;
        if (copy == order) std::cout << "copied, equal\n";
    }
};

static void receive(Velmora::MsgType_t id, const std::string& body, Quillon::MsgHandler& handler) {
    char block[4096];
    BufferAllocator alloc(block, sizeof block, "host", "message");
    const Inspect::Decoded message = Inspect::decode_verified(id, body, alloc); // all or nothing; ends with the scope
    if (!message) {
        std::cout << "refused: " << message.result.text() << '\n';
        return;
    }
    Quillon::dispatch(id, message.object, handler);
}

int main() {
    Quillon::initialize(); // once, before anything else

    Desk desk;
    const std::string body = bodyFromPeer();
    receive(Quillon::SubmitOrderMessage::ID, body, desk);
    receive(Quillon::SubmitOrderMessage::ID, body.substr(0, 20), desk);

    Quillon::finalize();
}
