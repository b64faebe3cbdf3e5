// A matching venue: orders of a market meet by price, then by time.
#include <functional>
#include <map>

#include "Market.h"

using namespace market;
using namespace Quillon;

namespace {

/// An order as the book keeps it.
struct Resting {
    int32_t user;
    std::string clOrdID;
    int64_t orderID, amount;
};

class Venue : public MsgHandler {
  public:
    explicit Venue(Process& process) : _process(process) {}

    void handle(const SubmitOrderMessage& order) override {
        if (_locked.contains(order.userID)) return;
        Resting it{order.userID, order.contents.clOrdID.c_str(), ++_orders, order.contents.amount};
        acknowledge(it, order.contents.marketID);
        Book& book = _books[order.contents.marketID];
        if (order.contents.side == Side::BID) {
            match(it, order, book.offers, [&](int64_t price) { return price <= order.contents.price; });
            if (it.amount > 0) book.bids.emplace(order.contents.price, it);
        } else {
            match(it, order, book.bids, [&](int64_t price) { return price >= order.contents.price; });
            if (it.amount > 0) book.offers.emplace(order.contents.price, it);
        }
    }
    void handle(const LockUserMessage& lock) override {
        const int user = std::atoi(lock.contents.username.c_str());
        if (lock.contents.locked)
            _locked[user] = true;
        else
            _locked.erase(user);
    }
    void tell() const { std::printf("venue: %lld orders, %d trades\n", static_cast<long long>(_orders), _trades); }

  private:
    struct Book {
        std::multimap<int64_t, Resting, std::greater<>> bids; // the best first, of one price the oldest
        std::multimap<int64_t, Resting> offers;
    };

    void acknowledge(const Resting& it, int32_t marketID) {
        New<OrderSubmittedMessage> message;
        message->userID = it.user;
        message->contents.orderID = it.orderID;
        message->contents.clOrdID = it.clOrdID.c_str();
        message->contents.amount = it.amount;
        message->contents.timeExchange = now();
        message->contents.marketID = marketID;
        _process.publish(message);
    }

    template <class Others, class Fits>
    void match(Resting& it, const SubmitOrderMessage& order, Others& others, Fits fits) {
        while (it.amount > 0 && !others.empty() && fits(others.begin()->first)) {
            const auto best = others.begin();
            const int64_t amount = std::min(it.amount, best->second.amount);
            const bool isBid = order.contents.side == Side::BID;
            ++_trades;
            capture(it, order.contents.marketID, isBid ? Side::BID : Side::OFR, amount, best->first, true);
            capture(best->second, order.contents.marketID, isBid ? Side::OFR : Side::BID, amount, best->first, false);
            it.amount -= amount;
            best->second.amount -= amount;
            if (best->second.amount == 0) others.erase(best);
        }
    }

    void capture(const Resting& it, int32_t marketID, Side::Type side, int64_t amount, int64_t price, bool isTaker) {
        New<TradeCaptureMessage> trade;
        trade->userID = it.user;
        trade->contents.orderID = it.orderID;
        trade->contents.clOrdID = it.clOrdID.c_str();
        trade->contents.exTradeID = ("T" + std::to_string(_trades)).c_str();
        trade->contents.timeExchange = now();
        trade->contents.marketID = marketID;
        trade->contents.side = side;
        trade->contents.amount = amount;
        trade->contents.price = price;
        trade->contents.isTaker = isTaker;
        _process.publish(trade);
    }

    Process& _process;
    std::map<int32_t, Book> _books;
    std::map<int32_t, bool> _locked;
    int64_t _orders = 0;
    int _trades = 0;
};

void run(const char* url) {
    Process process(url, 3);
    Venue venue(process);
    process.run({.messages = {"SubmitOrderMessage", "LockUserMessage"}}, venue, std::chrono::milliseconds(100), [] {});
    venue.tell();
}

} // namespace

int main(int argc, char** argv) { return runProcess(argc, argv, run); }
