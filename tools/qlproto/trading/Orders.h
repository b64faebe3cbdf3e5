// What is known of each order, or of each quote request: who, what, what became of it and when, from all messages that
// told of it, in whatever order they came.
//
// Memory grows with their number, by some 300 bytes each and what their identifiers and texts take beyond 15 characters.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/SeededHash.h"
#include "tools/qlproto/messages/MessageReader.h"

namespace qlproto {

inline constexpr std::size_t ORDER_STEPS = 5;

struct OrderRow {
    std::string id;       ///< the system's of an order, the asker's of a quote request
    std::string client;   ///< the client's own identifier, the first
    std::string exchange; ///< the exchange's
    std::string reason;   ///< of a rejection or cancellation: an enumerator
    std::string text;     ///< that came with it
    std::string side;
    int32_t user = 0, feed = 0, market = 0;
    int64_t amount = 0, filled = 0, price = 0;
    uint64_t packet = 0;                      ///< the first one, from 1
    int64_t first = 0;                        ///< its time
    std::array<int64_t, ORDER_STEPS> times{}; ///< of the steps; 0 for one that was not seen
    uint8_t told = 0;                         ///< as bits; see Orders.cpp
    bool isTaken = false;                     ///< whether a filter takes one of its messages
};

/// What orders or quote requests go through. An order has the first outcome of which all bits were told.
struct OrderKind {
    struct Outcome {
        std::string_view name;
        uint8_t told;
    };
    std::string_view what; ///< "orders"
    std::span<const Outcome> outcomes;
    std::array<std::string_view, ORDER_STEPS> steps;
    std::span<const std::string_view> messages; ///< that tell of them
    uint8_t refused, done;                      ///< bits of which one means so: turned down; traded

    std::string_view outcomeOf(uint8_t told) const;
};

/// Those of the order flow, by orderID; orders without one are not counted.
extern const OrderKind ORDERS;
/// Requests for quotes and the orders that came of them, by quoteReqID, or by clOrdID where there is none.
extern const OrderKind QUOTES;
/// Those of the new-order interface alone, by clOrdID.
extern const OrderKind NEW_ORDERS;

class Orders {
  public:
    explicit Orders(const OrderKind& kind) : _kind(kind) {}

    void add(const Capture::Packet& packet, const MessageReader& reader, uint64_t number, bool isTaken = true);

    const OrderKind& kind() const { return _kind; }
    const std::vector<OrderRow>& rows() const { return _rows; } ///< in the order in which they came up

    /// How many have each outcome, also those without any.
    struct Count {
        std::string_view name;
        uint64_t orders;
    };
    std::vector<Count> outcomes() const;

  private:
    class Collector;

    const OrderKind& _kind;
    std::vector<OrderRow> _rows;
    Capture::SeededMap<int64_t, std::size_t> _byNumber; ///< positions in the rows
    Capture::SeededMap<std::string, std::size_t> _byText;
    Capture::SeededMap<std::string, std::size_t>
        _byClient; ///< of quote requests, for messages that name the order alone
};

} // namespace qlproto
