// A risk monitor: what each user holds by his trades. Who holds too much is locked; and it tells which processes come and go.
#include <cstdlib>
#include <map>

#include "Market.h"

using namespace market;
using namespace Quillon;

namespace {

class Risk : public MsgHandler {
  public:
    explicit Risk(Process& process) : _process(process) {}

    void handle(const TradeCaptureMessage& trade) override {
        ++_trades;
        const bool isBid = trade.contents.side == Side::BID;
        int64_t& held = _held[{trade.userID, trade.contents.marketID}];
        held += isBid ? trade.contents.amount : -trade.contents.amount;
        if (std::llabs(held) <= LIMIT || _isLocked[trade.userID]) return;
        _isLocked[trade.userID] = true;
        New<LockUserMessage> lock;
        lock->contents.locked = true;
        lock->contents.username = std::to_string(trade.userID).c_str();
        _process.publish(lock);
        std::printf("risk: user %d is locked, holds %lld of market %d\n", trade.userID,
                    static_cast<long long>(held / SCALE), trade.contents.marketID);
    }
    void tell() const { std::printf("risk: %d trades seen\n", _trades); }

  private:
    static constexpr int64_t LIMIT = 40'000'000 * SCALE;

    Process& _process;
    std::map<std::pair<int32_t, int32_t>, int64_t> _held; // by user and market
    std::map<int32_t, bool> _isLocked;
    int _trades = 0;
};

void run(const char* url) {
    Process process(url, 4);
    Risk risk(process);
    const auto say = [](const char* what) {
        return [what](const Host::Incarnation& it) { std::printf("risk: process %d %s\n", it.application, what); };
    };
    Host::Peers peers(Host::QL_PRESENCE, {say("is there"), say("has left"), say("is silent"), say("is there twice")});
    const auto presence = process.bus->subscribe({.families = {"memory-bus"}}, Host::From::oldest(),
                                                 {[&](const Host::Record& it) { peers.take(it); }, {}});
    process.run({.messages = {"TradeCaptureMessage"}}, risk, std::chrono::milliseconds(100), [&] {
        while (presence->poll(0) != 0) {
        }
        peers.look(now());
    });
    risk.tell();
}

} // namespace

int main(int argc, char** argv) { return runProcess(argc, argv, run); }
