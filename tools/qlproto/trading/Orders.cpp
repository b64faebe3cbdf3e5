#include "tools/qlproto/trading/Orders.h"

#include "Backend/Velmora/Enumeration.h"
#include "generated/QLProtocol/MsgHandler.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace qlproto {

namespace {

using namespace Quillon;

enum Told : uint8_t {
    REJECTED = 1,
    TRADED = 2,
    FILLED = 4,
    WITHDRAWN = 8, // canceled, by whomever; a modification's cancel is none
    DONE = 16,
};

constexpr OrderKind::Outcome ORDER_OUTCOMES[] = {
    {"rejected", REJECTED},        {"filled in part, then canceled", TRADED | WITHDRAWN},
    {"canceled", WITHDRAWN},       {"filled", FILLED},
    {"filled", TRADED | DONE},     {"filled in part, still open", TRADED},
    {"done without a fill", DONE}, {"still open", 0},
};

enum ToldOfQuote : uint8_t {
    PASSED = 1,
    QUOTED = 2,
    ORDERED = 4,
    ORDER_REJECTED = 8,
    ORDER_ACCEPTED = 16,
    ORDER_TIMED_OUT = 32,
    CANCELED = 64,
    EXPIRED = 128,
};

constexpr OrderKind::Outcome QUOTE_OUTCOMES[] = {
    {"passed", PASSED},
    {"traded", ORDER_ACCEPTED},
    {"order rejected", ORDER_REJECTED},
    {"order timed out", ORDER_TIMED_OUT},
    {"ordered", ORDERED},
    {"canceled", CANCELED},
    {"expired", EXPIRED},
    {"quoted", QUOTED},
    {"requested", 0},
};

constexpr OrderKind::Outcome NEW_ORDER_OUTCOMES[] = {
    {"rejected", ORDER_REJECTED}, {"accepted", ORDER_ACCEPTED}, {"timed out", ORDER_TIMED_OUT}, {"unanswered", 0}};

constexpr std::string_view ORDER_MESSAGES[] = {
    "SubmitOrderMessage",  "OrderReceivedMessage", "OrderSubmittedMessage", "OrderRejectedMessage",
    "TradeCaptureMessage", "OrderCanceledMessage", "OrderDoneMessage",      "ModifyOrderMessage",
};
constexpr std::string_view QUOTE_MESSAGES[] = {
    "QuoteRequestMessage", "RejectQuoteRequestMessage", "MassQuoteMessage",
    "MassQuoteAckMessage", "CancelQuoteMessage",        "NewOrderMessage",
    "RejectOrderMessage",  "AcceptOrderMessage",        "OrderTimeoutMessage",
};

/// Empty for a zero that is no enumerator: it was not set.
template <class E>
std::string nameOf(E value) {
    const char* const name = Velmora::enumeratorName<Velmora::EnumerationOf<E>>(value);
    if (name != nullptr) return name;
    return value == 0 ? "" : std::to_string(static_cast<int32_t>(value));
}

void set(std::string& to, const bufstl::bufstring& text) {
    if (to.empty()) to.assign(text.c_str(), text.size());
}

void set(int32_t& to, int32_t value) {
    if (to == 0) to = value;
}

/// Not more than there are numbers for, whatever strangers add up.
int64_t sum(int64_t a, int64_t b) {
    int64_t result = 0;
    return __builtin_add_overflow(a, b, &result) ? (b > 0 ? INT64_MAX : INT64_MIN) : result;
}

constexpr std::array<std::string_view, ORDER_STEPS> QUOTE_STEPS{"requested", "quoted", "ordered", "answered", "ended"};

} // namespace

constinit const OrderKind ORDERS{.what = "orders",
                                 .outcomes = ORDER_OUTCOMES,
                                 .steps = {"submitted", "received", "accepted", "traded", "ended"},
                                 .messages = ORDER_MESSAGES,
                                 .refused = REJECTED,
                                 .done = TRADED | FILLED};
constinit const OrderKind QUOTES{.what = "quotes",
                                 .outcomes = QUOTE_OUTCOMES,
                                 .steps = QUOTE_STEPS,
                                 .messages = QUOTE_MESSAGES,
                                 .refused = PASSED | ORDER_REJECTED,
                                 .done = ORDER_ACCEPTED};
constinit const OrderKind NEW_ORDERS{.what = "new orders",
                                     .outcomes = NEW_ORDER_OUTCOMES,
                                     .steps = QUOTE_STEPS,
                                     .messages = std::span(QUOTE_MESSAGES).last(4),
                                     .refused = ORDER_REJECTED,
                                     .done = ORDER_ACCEPTED};

std::string_view OrderKind::outcomeOf(uint8_t told) const {
    auto it = outcomes.begin();
    while ((told & it->told) != it->told) ++it;
    return it->name;
}

class Orders::Collector : public MsgHandler {
  public:
    Collector(Orders& to, const Capture::Packet& packet, uint64_t number, bool isTaken)
        : _to(to), _packet(packet), _number(number), _isTaken(isTaken) {}

    using MsgHandler::handle;
    void handle(const SubmitOrderMessage& it) override { describe(tell(it, 0, SUBMITTED), it.contents); }
    void handle(const OrderReceivedMessage& it) override { describe(tell(it, 0, RECEIVED), it.contents); }
    void handle(const ModifyOrderMessage& it) override {
        OrderRow* const row = tell(it, 0, NO_STEP);
        if (row != nullptr) row->amount = sum(row->filled, it.contents.amount), row->price = it.contents.price;
    }
    void handle(const OrderSubmittedMessage& it) override {
        const bool isFilled = it.contents.ordStatus == OrderStatus::FILLED;
        tell(it, isFilled ? FILLED : 0, isFilled ? NO_STEP : ACCEPTED);
    }
    void handle(const OrderRejectedMessage& it) override { explain(tell(it, REJECTED, ENDED), it.contents); }
    void handle(const TradeCaptureMessage& it) override {
        OrderRow* const row = tell(it, TRADED, TRADED_STEP);
        if (row == nullptr) return;
        row->filled = sum(row->filled, it.contents.amount);
        if (row->side.empty()) row->side = nameOf(it.contents.side);
        if (row->price == 0) row->price = it.contents.price;
    }
    void handle(const OrderCanceledMessage& it) override {
        const bool isWithdrawn = it.contents.reason != CancelReason::ORDER_MODIFIED;
        OrderRow* const row = tell(it, isWithdrawn ? WITHDRAWN : 0, isWithdrawn ? ENDED : NO_STEP);
        if (isWithdrawn) explain(row, it.contents);
    }
    void handle(const OrderDoneMessage& it) override { tell(it, DONE, ENDED); }

    void handle(const QuoteRequestMessage& it) override { describe(tellQuote(it, 0, REQUESTED), it.contents); }
    void handle(const RejectQuoteRequestMessage& it) override { explain(tellQuote(it, PASSED, FINISHED), it.contents); }
    void handle(const MassQuoteMessage& it) override { tellQuote(it, QUOTED, QUOTED_STEP); }
    void handle(const MassQuoteAckMessage& it) override {
        const auto status = it.contents.status;
        const int told = status == QuoteStatus::CANCELED ? CANCELED : status == QuoteStatus::EXPIRED ? EXPIRED : 0;
        OrderRow* const row = tellQuote(it, told, told != 0 ? FINISHED : NO_STEP);
        if (row != nullptr) set(row->text, it.contents.text);
    }
    void handle(const CancelQuoteMessage& it) override { tellQuote(it, CANCELED, NO_STEP); }
    void handle(const NewOrderMessage& it) override {
        OrderRow* const row = tellQuote(it, ORDERED, ORDERED_STEP);
        describe(row, it.contents);
        if (row != nullptr) row->side = nameOf(it.contents.side), row->price = it.contents.price;
    }
    void handle(const AcceptOrderMessage& it) override {
        OrderRow* const row = tellQuote(it, ORDER_ACCEPTED, ANSWERED);
        describe(row, it.contents);
        if (row != nullptr) row->filled = it.contents.amount;
    }
    void handle(const RejectOrderMessage& it) override {
        OrderRow* const row = tellQuote(it, ORDER_REJECTED, ANSWERED);
        describe(row, it.contents);
        if (row != nullptr) set(row->text, it.contents.text);
    }
    void handle(const OrderTimeoutMessage& it) override { tellQuote(it, ORDER_TIMED_OUT, ANSWERED); }

  private:
    // Positions in the steps.
    static constexpr std::size_t SUBMITTED = 0, RECEIVED = 1, ACCEPTED = 2, TRADED_STEP = 3, ENDED = 4;
    static constexpr std::size_t REQUESTED = 0, QUOTED_STEP = 1, ORDERED_STEP = 2, ANSWERED = 3, FINISHED = 4;
    static constexpr std::size_t NO_STEP = ORDER_STEPS;

    OrderRow* tell(const auto& message, int told, std::size_t step) {
        const auto& record = message.contents;
        if (&_to._kind != &ORDERS || record.orderID == 0) return nullptr;
        const auto [it, isNew] = _to._byNumber.try_emplace(record.orderID, _to._rows.size());
        if (isNew) begin(std::to_string(record.orderID));
        OrderRow& row = _to._rows[it->second];
        set(row.user, message.userID);
        return note(row, record, told, step);
    }

    OrderRow* tellQuote(const auto& message, int told, std::size_t step) {
        if (&_to._kind == &ORDERS) return nullptr;
        const auto& record = message.contents;
        std::string client, quote;
        if constexpr (requires { record.clOrdID; }) set(client, record.clOrdID);
        if constexpr (requires { record.quoteReqID; })
            if (&_to._kind == &QUOTES) set(quote, record.quoteReqID);
        if (client.empty() && quote.empty()) return nullptr;
        // A message that names the order alone is of the request that the order was of.
        std::size_t at = _to._rows.size();
        at = quote.empty() ? _to._byClient.try_emplace(client, at).first->second
                           : _to._byText.try_emplace(quote, at).first->second;
        if (!client.empty()) _to._byClient[client] = at;
        if (at == _to._rows.size()) begin(quote.empty() ? client : quote);
        return note(_to._rows[at], record, told, step);
    }

    void begin(std::string id) {
        OrderRow& row = _to._rows.emplace_back();
        row.id = std::move(id);
        row.packet = _number;
        row.first = _packet.time;
    }

    OrderRow* note(OrderRow& row, const auto& record, int told, std::size_t step) {
        row.told |= static_cast<uint8_t>(told);
        row.isTaken |= _isTaken;
        if constexpr (requires { record.clOrdID; }) set(row.client, record.clOrdID);
        if constexpr (requires { record.exOrdID; }) set(row.exchange, record.exOrdID);
        set(row.feed, record.feedID);
        set(row.market, record.marketID);
        if (step != NO_STEP && (row.times[step] == 0 || step == ENDED)) row.times[step] = _packet.time;
        return &row;
    }

    static void describe(OrderRow* row, const auto& record) {
        if (row == nullptr) return;
        if (row->side.empty()) row->side = nameOf(record.side);
        if (row->amount == 0) row->amount = record.amount;
        if constexpr (requires { record.price; })
            if (row->price == 0) row->price = record.price;
    }

    static void explain(OrderRow* row, const auto& record) {
        if (row == nullptr) return;
        row->reason = nameOf(record.reason);
        row->text.assign(record.text.c_str(), record.text.size());
    }

    Orders& _to;
    const Capture::Packet& _packet;
    const uint64_t _number;
    const bool _isTaken;
};

void Orders::add(const Capture::Packet& packet, const MessageReader& reader, uint64_t number, bool isTaken) {
    Collector collector(*this, packet, number, isTaken);
    dispatch(reader.descriptor().id(), reader.message(), collector);
}

std::vector<Orders::Count> Orders::outcomes() const {
    std::vector<Count> counts;
    for (const OrderKind::Outcome& it : _kind.outcomes)
        if (counts.empty() || counts.back().name != it.name) counts.push_back({it.name, 0}); // two rules can mean one
    for (const OrderRow& row : _rows)
        for (Count& it : counts) it.orders += it.name == _kind.outcomeOf(row.told);
    return counts;
}

} // namespace qlproto
