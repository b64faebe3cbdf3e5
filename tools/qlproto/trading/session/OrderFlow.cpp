#include "tools/qlproto/trading/session/OrderFlow.h"

#include <algorithm>

#include <fmt/format.h>

namespace qlproto::session {

using namespace Quillon;

namespace {

// Tokens that are no slots.
constexpr int NEW_ORDER = -1; // another order comes
constexpr int REJECTS = -2;   // another order comes that is rejected

constexpr int64_t ORDER_INTERVAL = 24 * MILLISECONDS; // from one burst of orders to the next, on average
constexpr int64_t BURST_INTERVAL = 2 * MILLISECONDS;  // within a burst: one user at one listing
constexpr int64_t SHORTEST_STEP = LONGEST_WAY;        // so that an order's times are in order at every station
constexpr int64_t LONGEST_STEP = 5 * MILLISECONDS;
constexpr int64_t LOT = MILLION / 10;

} // namespace

const std::array<OrderFlow::Script, 8> OrderFlow::SCRIPTS = [] {
    using enum Step;
    static constexpr Step whenFilled[] = {submit, received, accepted, fillRest, dropCopy, done};
    static constexpr Step whenFilledInParts[] = {submit,   received, accepted, fillPart, dropCopy, status,
                                                 fillPart, dropCopy, fillRest, dropCopy, status,   done};
    static constexpr Step whenRejected[] = {submit, received, rejected};
    static constexpr Step whenCanceled[] = {submit, received, accepted, cancel, canceled, done};
    static constexpr Step whenCanceledTooLate[] = {submit,   received, accepted,       cancel,
                                                   fillRest, dropCopy, cancelRejected, done};
    static constexpr Step whenCanceledWithAll[] = {submit, received, accepted, cancelAll, canceled, done};
    static constexpr Step whenRestCanceled[] = {submit,   received, accepted,           fillPart,
                                                dropCopy, status,   canceledByExchange, done};
    static constexpr Step whenModified[] = {submit, received, accepted, modify, accepted, fillRest, dropCopy, done};
    return std::array<Script, 8>{whenFilled,          whenFilledInParts,   whenRejected,     whenCanceled,
                                 whenCanceledTooLate, whenCanceledWithAll, whenRestCanceled, whenModified};
}();

OrderFlow::OrderFlow(World& world, const MarketData& marketData, Scheduler& scheduler, Sender& sender, Rng rng)
    : _world(world),
      _marketData(marketData),
      _scheduler(scheduler),
      _sender(sender),
      _rng(rng),
      _scripts(_rng.fork(), SCRIPTS) {
    chooseNext();
}

void OrderFlow::start() { _scheduler.wake(0, *this, NEW_ORDER); }

void OrderFlow::act(int token) {
    if (token == NEW_ORDER) {
        const bool burst = _rng.chance(30);
        beginOrder(burst);
        _scheduler.wake(_scheduler.paced(_rng.around(burst ? BURST_INTERVAL : ORDER_INTERVAL)), *this, NEW_ORDER);
        return;
    }
    if (token == REJECTS) return beginRejected();
    Order& order = _orders[token];
    if (order.due != _scheduler.now()) return; // overtaken: its steps were changed and set to another time
    const Step step = order.script.front();
    order.script = order.script.subspan(1);
    perform(step, order);
    if (order.script.empty())
        _orders.end(token);
    else
        scheduleNext(token, _rng.between(SHORTEST_STEP, LONGEST_STEP));
}

void OrderFlow::scheduleNext(int slot, int64_t delay) {
    _orders[slot].due = _scheduler.now() + delay;
    _scheduler.wake(delay, *this, slot);
}

void OrderFlow::beginOrder(bool othersFollow) {
    Order order;
    order.script = _scripts.deal();
    order.user = _user;
    order.listing = _listing;
    if (!othersFollow) chooseNext();
    begin(std::move(order));
}

void OrderFlow::begin(Order order) {
    order.orderID = ++_lastID;
    order.clOrdID = fmt::format("{}-{}", order.user->name, order.orderID);
    if (order.user->type == UserType::MODEL) order.modelID = "drift-3";
    order.side = _rng.chance(50) ? Side::BID : Side::OFR;
    order.ordType = _rng.chance(85) ? OrderType::LIMIT : OrderType::MARKET;
    const bool restIsCanceled =
        std::find(order.script.begin(), order.script.end(), Step::canceledByExchange) != order.script.end();
    order.timeInForce = restIsCanceled ? TimeInForce::IOC : TimeInForce::DAY;
    const Book& book = _marketData.book(order.listing);
    order.price = order.side == Side::BID ? book.ask() : book.bid();
    order.open = _rng.between(8, 80) * LOT;
    scheduleNext(_orders.begin(std::move(order)), 0);
}

void OrderFlow::chooseNext() {
    auto user = static_cast<std::size_t>(_rng.between(0, 2)); // the last makes markets and sends no orders
    if (_world.incident != nullptr && _world.incident->isGone(_world.users[user])) user = 0;
    _user = &_world.users[user];
    _listing = _rng.indexIn(_world.listings);
}

void OrderFlow::startRejects() { _scheduler.wake(0, *this, REJECTS); }

void OrderFlow::beginRejected() {
    static constexpr Step whenRejected[] = {Step::submit, Step::received, Step::rejected};
    Incident::Rejects& rejects = _world.incident->rejects;
    Order order;
    order.script = whenRejected;
    order.user = std::ranges::find(_world.users, rejects.userID, &User::id);
    order.listing = _rng.indexIn(_world.listings);
    order.isOfBurst = true;
    begin(std::move(order));
    if (--rejects.left != 0) _scheduler.wake(_rng.around(BURST_INTERVAL), *this, REJECTS);
}

bool OrderFlow::isOpen(const Order& order) {
    static constexpr Step others[] = {Step::submit, Step::rejected, Step::canceled, Step::canceledByExchange};
    return order.open != 0 && std::ranges::find(others, order.script.front()) == std::end(others);
}

bool OrderFlow::hasOpenOrders(const User& user) {
    for (int slot = 0; slot < _orders.size(); ++slot)
        if (_orders[slot].user == &user && isOpen(_orders[slot])) return true;
    return false;
}

void OrderFlow::disconnect(const User& user) {
    static constexpr Step ending[] = {Step::canceledByDisconnect, Step::done};
    if (_user == &user) chooseNext();
    for (int slot = 0; slot < _orders.size(); ++slot) {
        Order& order = _orders[slot];
        if (order.user != &user) continue;
        if (order.script.front() == Step::submit) {
            _orders.end(slot);
        } else if (isOpen(order)) {
            order.script = ending;
            scheduleNext(slot, _rng.between(SHORTEST_STEP, LONGEST_STEP));
        }
    }
}

int32_t OrderFlow::nextSequenceID(User& user) {
    if (_world.incident != nullptr) user.sequenceID += _world.incident->lost(user, _sender.sent(), _scheduler.now());
    return ++user.sequenceID;
}

void OrderFlow::perform(Step step, Order& order) {
    switch (step) {
    case Step::submit:
        return submit(order);
    case Step::received:
        return received(order);
    case Step::accepted:
        if (order.exOrdID.empty())
            order.exOrdID = fmt::format("{}{}", listing(order).feed->name[0], 700000 + order.orderID);
        return status(order, OrderStatus::ACCEPTED);
    case Step::rejected:
        return rejected(order);
    case Step::fillPart:
        return fill(order, order.open / (3 * LOT) * LOT);
    case Step::fillRest:
        return fill(order, order.open);
    case Step::dropCopy:
        return dropCopy(order);
    case Step::status:
        return status(order, order.open == 0 ? OrderStatus::FILLED : OrderStatus::PARTIALLY_FILLED);
    case Step::modify:
        return modify(order);
    case Step::cancel:
        return cancel(order);
    case Step::cancelAll:
        return cancelAll(order);
    case Step::canceled:
        return canceled(order, CancelReason::CANCEL_REQUESTED, "");
    case Step::canceledByExchange:
        return canceled(order, CancelReason::BY_EXCHANGE, "rest of the amount");
    case Step::canceledByDisconnect:
        ++_world.incident->disconnect.canceled;
        return canceled(order, CancelReason::BY_ADMIN, "client disconnected");
    case Step::cancelRejected:
        return cancelRejected(order);
    case Step::done:
        return done(order);
    }
}

RejectCause OrderFlow::causeFor(const Order& order, std::size_t usual) {
    if (_world.incident == nullptr || order.user->id != _world.incident->rejects.userID) return REJECT_CAUSES[usual];
    Incident::Rejects& rejects = _world.incident->rejects;
    if (!order.isOfBurst)
        return REJECT_CAUSES[REJECT_CAUSES[usual].reason == rejects.cause.reason ? (usual + 1) % 4 : usual];
    if (rejects.orders++ == 0) rejects.first = _scheduler.now();
    rejects.last = _scheduler.now();
    return rejects.cause;
}

template <class Record>
void OrderFlow::identify(Record& record, const Order& order) {
    record.orderID = order.orderID;
    record.clOrdID = order.clOrdID;
    record.feedID = listing(order).feed->id;
    record.marketID = listing(order).market->id;
    if constexpr (requires { record.exOrdID; }) record.exOrdID = order.exOrdID;
    if constexpr (requires { record.modelID; }) record.modelID = order.modelID;
}

/// What the records to the client have in common.
template <class Record>
void OrderFlow::report(Record& record, Order& order) {
    identify(record, order);
    record.sequenceID = nextSequenceID(*order.user);
    Hops::in(_rng, _scheduler.now()).stamp(record);
}

template <class Record>
void OrderFlow::describe(Record& record, const Order& order) {
    record.side = order.side;
    record.amount = order.open;
    record.price = order.price;
    if constexpr (requires { record.ordType; }) record.ordType = order.ordType;
    if constexpr (requires { record.timeInForce; }) record.timeInForce = order.timeInForce;
}

void OrderFlow::submit(Order& order) {
    _sender.send<SubmitOrderMessage>([&](SubmitOrderMessage& message) {
        message.userID = order.user->id;
        message.onBehalfOfCompID = order.user->company;
        message.modelID = order.modelID;
        SubmitOrder& it = message.contents;
        identify(it, order);
        describe(it, order);
        Hops::out(_rng, _scheduler.now()).stamp(it);
        it.stopPrice = Velmora::NA;
        it.maxShow = Velmora::MAX;
        it.minAmount = LOT;
        KeyValuePair& desk = it.parameters.add_back();
        desk.key = "desk";
        desk.value = order.user->group;
    });
}

void OrderFlow::received(Order& order) {
    _sender.send<OrderReceivedMessage>([&](OrderReceivedMessage& message) {
        message.userID = order.user->id;
        report(message.contents, order);
        describe(message.contents, order);
    });
}

void OrderFlow::status(Order& order, OrderStatus::Type ordStatus) {
    _sender.send<OrderSubmittedMessage>([&](OrderSubmittedMessage& message) {
        message.userID = order.user->id;
        report(message.contents, order);
        message.contents.amount = order.open;
        message.contents.ordStatus = ordStatus;
    });
}

void OrderFlow::rejected(Order& order) {
    _sender.send<OrderRejectedMessage>([&](OrderRejectedMessage& message) {
        message.userID = order.user->id;
        report(message.contents, order);
        const RejectCause cause = causeFor(order, _rng.indexIn(REJECT_CAUSES));
        message.contents.reason = cause.reason;
        message.contents.text = cause.text;
    });
}

void OrderFlow::fill(Order& order, int64_t amount) {
    order.open -= amount;
    order.filled = amount;
    order.exTradeID = fmt::format("T{}", ++_lastID);
    _sender.send<TradeCaptureMessage>([&](TradeCaptureMessage& message) {
        message.userID = order.user->id;
        message.origPrice = order.price;
        TradeCapture& it = message.contents;
        report(it, order);
        order.fillSequenceID = it.sequenceID;
        it.exTradeID = order.exTradeID;
        it.origFeedID = it.feedID;
        it.side = order.side;
        it.amount = amount;
        it.price = order.price;
        it.isTaker = order.timeInForce == TimeInForce::IOC;
        it.matchStatus = MatchStatus::DONE;
        it.counterPartyID = "THISTLEBANK";
        it.tradeDate = tradeDate(_scheduler.now());
        it.settlDate = settlDate(_scheduler.now());
    });
}

void OrderFlow::dropCopy(Order& order) {
    _sender.send<DropCopyMessage>([&](DropCopyMessage& message) {
        message.userID = order.user->id;
        message.origFeedSequenceID = order.fillSequenceID;
        DropCopy& it = message.contents;
        it.sequenceID = nextSequenceID(*order.user);
        it.customerClientID = order.user->company;
        it.customerAccountID = fmt::format("{}-{}", order.user->company, order.user->id);
        it.userName = order.user->name;
        it.onBehalfOfCompID = order.user->company;
        it.clOrdID = order.clOrdID;
        it.exOrdID = order.exOrdID;
        it.exTradeID = order.exTradeID;
        it.modelID = order.modelID;
        Hops::in(_rng, _scheduler.now()).stamp(it);
        it.feedID = it.origFeedID = listing(order).feed->id;
        it.marketID = listing(order).market->id;
        it.side = order.side;
        it.price = it.origPrice = order.price;
        it.baseCurrAmt = order.filled;
        it.baseCurrency = listing(order).market->base;
        it.counterCurrAmt = it.settlCurrAmt = times(order.filled, order.price);
        it.counterCurrency = listing(order).market->counter;
        it.settlCurrency = listing(order).market->counter;
        it.isTaker = order.timeInForce == TimeInForce::IOC;
        it.matchStatus = MatchStatus::DONE;
        it.counterPartyID = "THISTLEBANK";
        it.tradeDate = tradeDate(_scheduler.now());
        it.settlDate = settlDate(_scheduler.now());
    });
}

void OrderFlow::modify(Order& order) {
    order.price += (order.side == Side::BID ? 1 : -1) * listing(order).market->tick;
    order.open += LOT;
    _sender.send<ModifyOrderMessage>([&](ModifyOrderMessage& message) {
        message.userID = order.user->id;
        ModifyOrder& it = message.contents;
        identify(it, order);
        order.clOrdID += "-m";
        it.clNewID = order.clOrdID;
        describe(it, order);
        it.minAmount = LOT;
        Hops::out(_rng, _scheduler.now()).stamp(it);
    });
}

void OrderFlow::cancel(Order& order) {
    order.cxlID = fmt::format("{}-c{}", order.user->name, ++_lastID);
    _sender.send<CancelOrderMessage>([&](CancelOrderMessage& message) {
        message.userID = order.user->id;
        identify(message.contents, order);
        message.contents.cxlID = order.cxlID;
        Hops::out(_rng, _scheduler.now()).stamp(message.contents);
    });
}

void OrderFlow::cancelAll(Order& order) {
    order.cxlID = fmt::format("{}-c{}", order.user->name, ++_lastID);
    cancelRestingOrdersLike(order);
    _sender.send<CancelAllOrderMessage>([&](CancelAllOrderMessage& message) {
        message.userID = order.user->id;
        message.contents.cxlID = order.cxlID;
        message.contents.feedID = listing(order).feed->id;
        message.contents.monitoredOnly = order.user->type == UserType::MONITORED;
        Hops::out(_rng, _scheduler.now()).stamp(message.contents);
    });
}

void OrderFlow::cancelRestingOrdersLike(const Order& order) {
    static constexpr Step ending[] = {Step::canceled, Step::done};
    for (int slot = 0; slot < _orders.size(); ++slot) {
        Order& other = _orders[slot];
        if (&other == &order || other.user != order.user || listing(other).feed != listing(order).feed) continue;
        const Step next = other.script.front();
        const bool resting =
            !other.exOrdID.empty() && (next == Step::fillPart || next == Step::fillRest) && other.cxlID.empty();
        if (!resting) continue;
        other.cxlID = order.cxlID;
        other.script = ending;
        scheduleNext(slot, _rng.between(SHORTEST_STEP, LONGEST_STEP));
    }
}

void OrderFlow::canceled(Order& order, CancelReason::Type reason, const char* text) {
    _sender.send<OrderCanceledMessage>([&](OrderCanceledMessage& message) {
        message.userID = order.user->id;
        report(message.contents, order);
        describe(message.contents, order);
        message.contents.cxlID = order.cxlID;
        message.contents.reason = reason;
        message.contents.text = text;
    });
}

void OrderFlow::cancelRejected(Order& order) {
    _sender.send<OrderCancelRejectedMessage>([&](OrderCancelRejectedMessage& message) {
        message.userID = order.user->id;
        report(message.contents, order);
        message.contents.cxlID = order.cxlID;
        message.contents.reason = CancelRejectReason::TOO_LATE_TO_CANCEL;
        message.contents.text = "filled before the cancel arrived";
    });
}

void OrderFlow::done(Order& order) {
    _sender.send<OrderDoneMessage>([&](OrderDoneMessage& message) {
        message.userID = order.user->id;
        report(message.contents, order);
    });
}

} // namespace qlproto::session
