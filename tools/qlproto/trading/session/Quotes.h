// Quotes from request to trade, with the maker on the other side of the new-order interface.
//
// As with orders, what becomes of a request is dealt as a script. The maker answers with quotes or passes; the new
// order that hits a quote names the quote and its request, and all that follows of it carries the order's identifiers.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "tools/qlproto/trading/session/Hops.h"
#include "tools/qlproto/trading/session/LifeCycles.h"
#include "tools/qlproto/trading/session/MarketData.h"
#include "tools/qlproto/trading/session/Sender.h"
#include "tools/qlproto/trading/session/World.h"

namespace qlproto::session {

class Quotes : public Actor {
  public:
    Quotes(World& world, const MarketData& marketData, Scheduler& scheduler, Sender& sender, Rng rng);

    /// From now on quotes are requested.
    void start();

    /// Goes one step on with the request in the slot that is the token, or begins a new one.
    void act(int token) override;

  private:
    enum class Step {
        request,
        pass, ///< the maker does not quote
        quote,
        acknowledged,
        expired,
        cancelQuote,
        canceled,
        newOrder, ///< hits one of the quotes
        rejectOrder,
        acceptOrder,
        tradeAcknowledged,
        tradeRejected,
        orderTimeout, ///< the maker did not answer in time
    };
    using Script = std::span<const Step>;
    static const std::array<Script, 7> SCRIPTS;

    struct Request {
        std::size_t listing = 0;
        Script script;
        std::string quoteReqID, clOrdID, orderID, execID;
        int64_t amount = 0;
        Quillon::Side::Type side{}; ///< of the requester
        int64_t bid = 0, ask = 0;   ///< quoted prices
    };

    void beginRequest();
    void perform(Step step, Request& request);

    void sendRequest(Request& request);
    void pass(Request& request);
    void quote(Request& request);
    void acknowledge(Request& request, Quillon::QuoteStatus::Type status, const char* text);
    void cancelQuote(Request& request);
    void newOrder(Request& request);
    void rejectOrder(Request& request);
    void acceptOrder(Request& request);
    void acknowledgeTrade(Request& request, Quillon::TradeStatus::Type status, const char* text);
    void timeout(Request& request);

    // Fields that several records share.
    template <class Record>
    void identify(Record& record, const Request& request);
    template <class Record>
    void describeOrder(Record& record, const Request& request);
    template <class Record>
    void stampIn(Record& record) {
        Hops::in(_rng, _scheduler.now()).stamp(record);
    }
    template <class Record>
    void stampOut(Record& record) {
        Hops::out(_rng, _scheduler.now()).stamp(record);
    }

    std::string quoteID(const Request& request, Quillon::Side::Type side) const;
    User& maker() { return _world.users[3]; }

    World& _world;
    const MarketData& _marketData;
    Scheduler& _scheduler;
    Sender& _sender;
    Rng _rng;
    Deck<Script, 7> _scripts;
    LifeCycles<Request> _requests;
    int64_t _lastID = 0;
};

} // namespace qlproto::session
