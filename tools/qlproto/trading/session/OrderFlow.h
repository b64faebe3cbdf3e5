// Orders from submission to their end.
//
// What becomes of an order is dealt when it begins, as a script of steps; each step is one message. All messages of an
// order carry the same orderID and the client's own identifier (a modification replaces the latter, and says so).
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "tools/qlproto/trading/session/Hops.h"
#include "tools/qlproto/trading/session/Incident.h"
#include "tools/qlproto/trading/session/LifeCycles.h"
#include "tools/qlproto/trading/session/MarketData.h"
#include "tools/qlproto/trading/session/Sender.h"
#include "tools/qlproto/trading/session/World.h"

namespace qlproto::session {

class OrderFlow : public Actor {
  public:
    OrderFlow(World& world, const MarketData& marketData, Scheduler& scheduler, Sender& sender, Rng rng);

    /// From now on orders come in.
    void start();

    /// Goes one step on with the order in the slot that is the token, or begins a new one.
    void act(int token) override;

    // Of an incident.
    void startRejects();
    bool hasOpenOrders(const User& user);
    void disconnect(const User& user); ///< sends nothing from now on, and its open orders are canceled

  private:
    enum class Step {
        submit,
        received,
        accepted,
        rejected,
        fillPart,
        fillRest,
        dropCopy, ///< of the last fill
        status,   ///< how far the order is filled
        modify,
        cancel,
        cancelAll, ///< of the user's orders at the feed
        canceled,
        canceledByExchange,
        canceledByDisconnect,
        cancelRejected,
        done,
    };
    using Script = std::span<const Step>;
    static const std::array<Script, 8> SCRIPTS;

    struct Order {
        User* user = nullptr; ///< null: the slot is free
        std::size_t listing = 0;
        Script script;   ///< steps yet to come
        int64_t due = 0; ///< time of the next step
        int64_t orderID = 0;
        std::string clOrdID, exOrdID, cxlID, modelID, exTradeID;
        Quillon::Side::Type side{};
        Quillon::OrderType::Type ordType{};
        Quillon::TimeInForce::Type timeInForce{};
        int64_t price = 0;
        int64_t open = 0;           ///< amount not filled yet
        int64_t filled = 0;         ///< amount of the last fill
        int32_t fillSequenceID = 0; ///< sequence number of the report of the last fill
        bool isOfBurst = false;     ///< of the incident's rejections
    };

    void beginOrder(bool othersFollow);
    void beginRejected();
    static bool isOpen(const Order& order); ///< can still be canceled
    void begin(Order order);
    void chooseNext();
    void perform(Step step, Order& order);
    void scheduleNext(int slot, int64_t delay);
    void cancelRestingOrdersLike(const Order& order);

    void submit(Order& order);
    void received(Order& order);
    void status(Order& order, Quillon::OrderStatus::Type ordStatus);
    void rejected(Order& order);
    void fill(Order& order, int64_t amount);
    void dropCopy(Order& order);
    void modify(Order& order);
    void cancel(Order& order);
    void cancelAll(Order& order);
    void canceled(Order& order, Quillon::CancelReason::Type reason, const char* text);
    void cancelRejected(Order& order);
    void done(Order& order);

    /// Why the order is rejected, given the cause that is next without an incident.
    RejectCause causeFor(const Order& order, std::size_t usual);
    int32_t nextSequenceID(User& user);

    // Fields that several records share.
    template <class Record>
    void identify(Record& record, const Order& order);
    template <class Record>
    void report(Record& record, Order& order);
    template <class Record>
    void describe(Record& record, const Order& order);

    const Listing& listing(const Order& order) const { return _world.listings[order.listing]; }

    World& _world;
    const MarketData& _marketData;
    Scheduler& _scheduler;
    Sender& _sender;
    Rng _rng;
    Deck<Script, 8> _scripts;
    LifeCycles<Order> _orders;
    User* _user = nullptr;    ///< who sends the next order
    std::size_t _listing = 0; ///< and where
    int64_t _lastID = 0;      ///< of orders, cancels and trades
};

} // namespace qlproto::session
