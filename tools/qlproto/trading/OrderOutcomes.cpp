#include "tools/qlproto/trading/OrderOutcomes.h"

#include "generated/QLProtocol/MsgHandler.h"

namespace qlproto {

namespace {

using namespace Quillon;

enum Told : uint8_t {
    REJECTED = 1,
    TRADED = 2,
    FILLED = 4,
    WITHDRAWN = 8, // canceled, by whomever; a modification's cancel is none
    DONE = 16,
    ACCEPTED = 32,
    TIMED_OUT = 64,
};

/// An order has the first outcome of which all bits were told.
struct Rule {
    std::string_view name;
    uint8_t told;
};

constexpr Rule ORDER_FLOW[] = {
    {"rejected", REJECTED},        {"filled in part, then canceled", TRADED | WITHDRAWN},
    {"canceled", WITHDRAWN},       {"filled", FILLED},
    {"filled", TRADED | DONE},     {"filled in part, still open", TRADED},
    {"done without a fill", DONE}, {"still open", 0},
};

constexpr Rule NEW_ORDERS[] = {
    {"rejected", REJECTED},
    {"accepted", ACCEPTED},
    {"timed out", TIMED_OUT},
    {"unanswered", 0},
};

template <std::size_t N, class Orders>
std::vector<OrderOutcomes::Outcome> count(const Rule (&rules)[N], const Orders& orders) {
    std::vector<OrderOutcomes::Outcome> outcomes;
    std::array<std::size_t, N> outcomeOf{}; // two rules can have one outcome
    for (std::size_t i = 0; i < N; ++i) {
        if (outcomes.empty() || outcomes.back().name != rules[i].name) outcomes.push_back({rules[i].name, 0});
        outcomeOf[i] = outcomes.size() - 1;
    }
    for (const auto& [id, told] : orders) {
        std::size_t rule = 0;
        while ((told & rules[rule].told) != rules[rule].told) ++rule;
        ++outcomes[outcomeOf[rule]].orders;
    }
    return outcomes;
}

} // namespace

class OrderOutcomes::Collector : public MsgHandler {
  public:
    explicit Collector(OrderOutcomes& to) : _to(to) {}

    using MsgHandler::handle;
    void handle(const SubmitOrderMessage& it) override { tell(it.contents, 0); }
    void handle(const OrderReceivedMessage& it) override { tell(it.contents, 0); }
    void handle(const OrderSubmittedMessage& it) override {
        tell(it.contents, it.contents.ordStatus == OrderStatus::FILLED ? FILLED : 0);
    }
    void handle(const OrderRejectedMessage& it) override { tell(it.contents, Told::REJECTED); }
    void handle(const TradeCaptureMessage& it) override { tell(it.contents, TRADED); }
    void handle(const OrderCanceledMessage& it) override {
        tell(it.contents, it.contents.reason == CancelReason::ORDER_MODIFIED ? 0 : WITHDRAWN);
    }
    void handle(const OrderDoneMessage& it) override { tell(it.contents, Told::DONE); }

    void handle(const NewOrderMessage& it) override { tellNew(it.contents, 0); }
    void handle(const AcceptOrderMessage& it) override { tellNew(it.contents, Told::ACCEPTED); }
    void handle(const RejectOrderMessage& it) override { tellNew(it.contents, Told::REJECTED); }
    void handle(const OrderTimeoutMessage& it) override { tellNew(it.contents, TIMED_OUT); }

  private:
    void tell(const auto& record, int told) {
        if (record.orderID != 0) _to._orderFlow[record.orderID] |= static_cast<uint8_t>(told);
    }
    void tellNew(const auto& record, int told) {
        if (!record.clOrdID.empty())
            _to._newOrders[{record.clOrdID.c_str(), record.clOrdID.size()}] |= static_cast<uint8_t>(told);
    }

    OrderOutcomes& _to;
};

void OrderOutcomes::add(const Capture::Packet&, const MessageReader& reader) {
    Collector collector(*this);
    dispatch(reader.descriptor().id(), reader.message(), collector);
}

std::vector<OrderOutcomes::Outcome> OrderOutcomes::orderFlow() const { return count(ORDER_FLOW, _orderFlow); }

std::vector<OrderOutcomes::Outcome> OrderOutcomes::newOrders() const { return count(NEW_ORDERS, _newOrders); }

} // namespace qlproto
