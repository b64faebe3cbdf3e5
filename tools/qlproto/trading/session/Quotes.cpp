#include "tools/qlproto/trading/session/Quotes.h"

#include <fmt/format.h>

namespace qlproto::session {

using namespace Quillon;

namespace {

constexpr int NEW_REQUEST = -1;                         // token: another request comes
constexpr int64_t REQUEST_INTERVAL = 30 * MILLISECONDS; // from one to the next, on average
constexpr int64_t SHORTEST_STEP = LONGEST_WAY;          // so that times are in order at every station
constexpr int64_t LONGEST_STEP = 4 * MILLISECONDS;
constexpr const char* STREAM = "makers-1";

} // namespace

const std::array<Quotes::Script, 7> Quotes::SCRIPTS = [] {
    using enum Step;
    static constexpr Step whenPassed[] = {request, pass};
    static constexpr Step whenExpired[] = {request, quote, acknowledged, expired};
    static constexpr Step whenWithdrawn[] = {request, quote, acknowledged, cancelQuote, canceled};
    static constexpr Step whenTraded[] = {request, quote, acknowledged, newOrder, acceptOrder, tradeAcknowledged};
    static constexpr Step whenRefused[] = {request, quote, acknowledged, newOrder, rejectOrder};
    static constexpr Step whenTradeRejected[] = {request, quote, acknowledged, newOrder, acceptOrder, tradeRejected};
    static constexpr Step whenTimedOut[] = {request, quote, acknowledged, newOrder, orderTimeout};
    return std::array<Script, 7>{whenPassed,  whenExpired,       whenWithdrawn, whenTraded,
                                 whenRefused, whenTradeRejected, whenTimedOut};
}();

Quotes::Quotes(World& world, const MarketData& marketData, Scheduler& scheduler, Sender& sender, Rng rng)
    : _world(world),
      _marketData(marketData),
      _scheduler(scheduler),
      _sender(sender),
      _rng(rng),
      _scripts(_rng.fork(), SCRIPTS) {}

void Quotes::start() { _scheduler.wake(0, *this, NEW_REQUEST); }

void Quotes::act(int token) {
    if (token == NEW_REQUEST) {
        beginRequest();
        _scheduler.wake(_scheduler.paced(_rng.around(REQUEST_INTERVAL)), *this, NEW_REQUEST);
        return;
    }
    Request& request = _requests[token];
    const Step step = request.script.front();
    request.script = request.script.subspan(1);
    perform(step, request);
    if (request.script.empty())
        _requests.end(token);
    else
        _scheduler.wake(_rng.between(SHORTEST_STEP, LONGEST_STEP), *this, token);
}

void Quotes::beginRequest() {
    Request request;
    request.script = _scripts.deal();
    request.listing = _rng.indexIn(_world.listings);
    request.quoteReqID = fmt::format("QR{}", ++_lastID);
    request.amount = _rng.between(1, 25) * MILLION;
    request.side = _rng.chance(50) ? Side::BID : Side::OFR;
    _scheduler.wake(0, *this, _requests.begin(std::move(request)));
}

void Quotes::perform(Step step, Request& request) {
    switch (step) {
    case Step::request:
        return sendRequest(request);
    case Step::pass:
        return pass(request);
    case Step::quote:
        return quote(request);
    case Step::acknowledged:
        return acknowledge(request, QuoteStatus::NOT_APPLICABLE, "");
    case Step::expired:
        return acknowledge(request, QuoteStatus::EXPIRED, "not taken in time");
    case Step::cancelQuote:
        return cancelQuote(request);
    case Step::canceled:
        return acknowledge(request, QuoteStatus::CANCELED, "");
    case Step::newOrder:
        return newOrder(request);
    case Step::rejectOrder:
        return rejectOrder(request);
    case Step::acceptOrder:
        return acceptOrder(request);
    case Step::tradeAcknowledged:
        return acknowledgeTrade(request, TradeStatus::NOT_APPLICABLE, "");
    case Step::tradeRejected:
        return acknowledgeTrade(request, TradeStatus::REJECTED, "credit check failed");
    case Step::orderTimeout:
        return timeout(request);
    }
}

template <class Record>
void Quotes::identify(Record& record, const Request& request) {
    record.feedID = _world.listings[request.listing].feed->id;
    record.marketID = _world.listings[request.listing].market->id;
    if constexpr (requires { record.quoteReqID; }) record.quoteReqID = request.quoteReqID;
    if constexpr (requires { record.execID; }) record.execID = request.execID;
    if constexpr (requires { record.settlDate; }) record.settlDate = settlDate(_scheduler.now());
    if constexpr (requires { record.sequenceID; }) record.sequenceID = ++maker().sequenceID;
}

/// What the records about a new order have in common.
template <class Record>
void Quotes::describeOrder(Record& record, const Request& request) {
    identify(record, request);
    record.isBaseSpecified = true;
    record.side = request.side;
    record.price = request.side == Side::BID ? request.ask : request.bid;
    record.amount = request.amount;
    record.partyID = _world.users[0].company;
    record.clOrdID = request.clOrdID;
    record.orderID = request.orderID;
    record.tradeDate = tradeDate(_scheduler.now());
}

std::string Quotes::quoteID(const Request& request, Side::Type side) const {
    return request.quoteReqID + (side == Side::BID ? "-bid" : "-ofr");
}

void Quotes::sendRequest(Request& request) {
    _sender.send<QuoteRequestMessage>([&](QuoteRequestMessage& message) {
        identify(message.contents, request);
        message.contents.isBaseSpecified = true;
        message.contents.mdStreamID = STREAM;
        message.contents.amount = request.amount;
        message.contents.side = Side::BOTH;
        stampOut(message.contents);
    });
}

void Quotes::pass(Request& request) {
    _sender.send<RejectQuoteRequestMessage>([&](RejectQuoteRequestMessage& message) {
        identify(message.contents, request);
        message.contents.reason = QuoteRequestRejectReason::PASS;
        message.contents.text = "no interest";
        stampOut(message.contents);
    });
}

void Quotes::quote(Request& request) {
    const Book& book = _marketData.book(request.listing);
    request.bid = book.bid();
    request.ask = book.ask();
    _sender.send<MassQuoteMessage>([&](MassQuoteMessage& message) {
        QLMassQuote& it = message.contents;
        identify(it, request);
        it.mdStreamID = STREAM;
        it.quotes.reserve(2);
        for (Side::Type side : {Side::BID, Side::OFR}) {
            QLQuote& quote = it.quotes.add_back();
            quote.quoteID = quoteID(request, side);
            quote.price = side == Side::BID ? request.bid : request.ask;
            quote.amount = request.amount;
            quote.side = side;
        }
        stampOut(it);
    });
}

void Quotes::acknowledge(Request& request, QuoteStatus::Type status, const char* text) {
    _sender.send<MassQuoteAckMessage>([&](MassQuoteAckMessage& message) {
        identify(message.contents, request);
        message.contents.status = status;
        message.contents.text = text;
        stampIn(message.contents);
    });
}

void Quotes::cancelQuote(Request& request) {
    _sender.send<CancelQuoteMessage>([&](CancelQuoteMessage& message) {
        identify(message.contents, request);
        message.contents.quoteID = quoteID(request, Side::BID);
        message.contents.type = QuoteCancelType::CANCEL_ALL_QUOTES;
        stampOut(message.contents);
    });
}

void Quotes::newOrder(Request& request) {
    const int64_t id = ++_lastID;
    request.clOrdID = fmt::format("{}-q{}", _world.users[0].name, id);
    request.orderID = fmt::format("N{}", id);
    request.execID = fmt::format("X{}", id);
    _sender.send<NewOrderMessage>([&](NewOrderMessage& message) {
        describeOrder(message.contents, request);
        message.contents.ordType = OrderType::PREVIOUSLY_QUOTED;
        // Who buys takes the offer.
        message.contents.quoteID = quoteID(request, request.side == Side::BID ? Side::OFR : Side::BID);
        stampIn(message.contents);
    });
}

void Quotes::rejectOrder(Request& request) {
    _sender.send<RejectOrderMessage>([&](RejectOrderMessage& message) {
        describeOrder(message.contents, request);
        message.contents.text = "price no longer good";
        stampOut(message.contents);
    });
}

void Quotes::acceptOrder(Request& request) {
    _sender.send<AcceptOrderMessage>([&](AcceptOrderMessage& message) {
        describeOrder(message.contents, request);
        stampOut(message.contents);
    });
}

void Quotes::acknowledgeTrade(Request& request, TradeStatus::Type status, const char* text) {
    _sender.send<TradeCaptureAckMessage>([&](TradeCaptureAckMessage& message) {
        identify(message.contents, request);
        message.contents.status = status;
        message.contents.text = text;
        stampIn(message.contents);
    });
}

void Quotes::timeout(Request& request) {
    _sender.send<OrderTimeoutMessage>([&](OrderTimeoutMessage& message) {
        identify(message.contents, request);
        message.contents.clOrdID = request.clOrdID;
        stampIn(message.contents);
    });
}

} // namespace qlproto::session
