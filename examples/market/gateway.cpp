// A gateway with clients: each submits orders at the prices it sees, and is told what becomes of them.
#include <map>
#include <random>

#include "Market.h"

using namespace market;
using namespace Quillon;

namespace {

class Gateway : public MsgHandler {
  public:
    explicit Gateway(Process& process) : _process(process) {}

    void handle(const MktDataMessage& data) override {
        if (!data.mvd.mdEntryList.empty()) _best[data.mvd.fmID.marketID] = data.mvd.mdEntryList[0].price;
    }
    void handle(const OrderSubmittedMessage& order) override {
        if (_sent.contains(std::string(order.contents.clOrdID.c_str()))) ++_acknowledged;
    }
    void handle(const TradeCaptureMessage& trade) override {
        const auto order = _sent.find(trade.contents.clOrdID.c_str());
        if (order == _sent.end()) return;
        ++_traded;
        _slowest = std::max(_slowest, now() - order->second);
        _sent.erase(order);
    }

    /// One of the clients sends an order.
    void submit() {
        if (_best.empty()) return; // no prices yet
        const int user = 100 + static_cast<int>(_random() % CLIENTS);
        auto market = _best.begin();
        std::advance(market, _random() % _best.size());
        New<SubmitOrderMessage> order;
        order->userID = user;
        order->contents.clOrdID = ("client" + std::to_string(user) + '-' + std::to_string(++_number)).c_str();
        order->contents.timeApiClient = now();
        order->contents.feedID = 1;
        order->contents.marketID = market->first;
        order->contents.side = _random() % 2 == 0 ? Side::BID : Side::OFR;
        order->contents.amount = static_cast<int64_t>(1 + _random() % 5) * 1'000'000 * SCALE;
        order->contents.price = market->second + (static_cast<int64_t>(_random() % 21) - 10) * SCALE / 100'000;
        _sent[order->contents.clOrdID.c_str()] = now();
        if (_sent.size() > 10'000) _sent.erase(_sent.begin()); // what nobody trades is given up
        _process.publish(order);
    }
    void tell() const {
        std::printf("gateway: %d orders, %d acknowledged, %d traded, slowest trade after %.3f ms\n", _number,
                    _acknowledged, _traded, static_cast<double>(_slowest) / 1e6);
    }

  private:
    static constexpr unsigned CLIENTS = 5;

    Process& _process;
    std::mt19937 _random{2};
    std::map<int32_t, int64_t> _best;     // price of each market
    std::map<std::string, int64_t> _sent; // when each order was
    int _number = 0, _acknowledged = 0, _traded = 0;
    int64_t _slowest = 0;
};

void run(const char* url) {
    Process process(url, 2);
    Gateway gateway(process);
    process.run({.families = {"market-data", "orders"}}, gateway, std::chrono::milliseconds(10),
                [&] { gateway.submit(); });
    gateway.tell();
}

} // namespace

int main(int argc, char** argv) { return runProcess(argc, argv, run); }
