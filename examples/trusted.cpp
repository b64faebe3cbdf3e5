// The road of one message between trusted processes, step by step, in a host that links the library alone.
#include <iostream>
#include <vector>

#include "generated/QLProtocol/QLProtocol.h"

using Velmora::BufferAllocator;
using Velmora::FastCodec;
using Velmora::MsgDescriptor;
using Velmora::MsgType_t;

/// Prices and amounts are whole numbers of 1/SCALE. The protocol fixes no scale; peers agree on one.
constexpr int64_t SCALE = 100'000'000;

/// Stands for a peer: an encoded order. The identifier travels beside the body.
static std::vector<char> bodyFromPeer(MsgType_t& id) {
    char block[4096];
    BufferAllocator alloc(block, sizeof block, "peer", "SubmitOrderMessage");
    Quillon::SubmitOrderMessage order(alloc);
    order.userID = 7;
    order.contents.clOrdID = "EURUSD-0001";
    order.contents.side = Quillon::Side::BID;
    order.contents.amount = 1'000'000 * SCALE;
    order.contents.price = 108'250'000; // 1.0825
    order.contents.parameters.add_back().key = "desk";

    std::vector<char> body(1024); // sized by what an order can take: the codec does not check
    FastCodec codec(body.data(), body.data() + body.size());
    order.write(codec);
    body.resize(codec.size());
    id = order.ID;
    return body;
}

int main() {
    Quillon::initialize(); // once, before anything else

    MsgType_t id;
    std::vector<char> body = bodyFromPeer(id);

    // The descriptor of the identifier builds the message in a block of ours; its strings and vectors go there too.
    MsgDescriptor* descriptor = Quillon::__protocol->getDescriptor(id);
    if (descriptor == nullptr) return 1;
    char block[4096];
    BufferAllocator alloc(block, sizeof block, "host", descriptor->name());
    void* message = alloc.allocate(descriptor->size());
    descriptor->construct(message, alloc);

    FastCodec codec(body.data(), body.data() + body.size());
    descriptor->read(message, codec);
    descriptor->checkbounds(message, block, block + sizeof block);

    // A host that knows the type prints and copies it as a value.
    auto& order = *static_cast<Quillon::SubmitOrderMessage*>(message);
    std::cout << "received " << order << '\n';

    char otherBlock[4096];
    BufferAllocator otherAlloc(otherBlock, sizeof otherBlock, "archive", descriptor->name());
    void* copy = otherAlloc.allocate(descriptor->size());
    descriptor->construct(copy, otherAlloc);
    descriptor->copy(copy, message);
    descriptor->checkbounds(copy, otherBlock, otherBlock + sizeof otherBlock);
    if (*static_cast<Quillon::SubmitOrderMessage*>(copy) == order) std::cout << "copied, equal, inside its block\n";

    descriptor->destroy(copy);
    descriptor->destroy(message);
    Quillon::finalize();
}
