// What became of the orders: one outcome for each, from all messages that told of it, in whatever order they came.
//
// Memory grows with the number of orders, by some 50 bytes and the client's identifier each.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/messages/SeededHash.h"

namespace qlproto {

class OrderOutcomes {
  public:
    struct Outcome {
        std::string_view name;
        uint64_t orders;
    };

    void add(const Capture::Packet& packet, const MessageReader& reader);

    /// Of the order flow, by orderID; orders without one are not counted. All outcomes, also those without an order.
    std::vector<Outcome> orderFlow() const;

    /// Of the new-order interface, by clOrdID.
    std::vector<Outcome> newOrders() const;

  private:
    class Collector;

    // What messages told of an order, as bits; see OrderOutcomes.cpp.
    SeededMap<int64_t, uint8_t> _orderFlow;
    SeededMap<std::string, uint8_t> _newOrders;
};

} // namespace qlproto
