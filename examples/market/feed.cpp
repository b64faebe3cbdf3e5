// A market data feed: prices that wander, as books of three levels a side, some hundred a second.
#include <random>

#include "Market.h"

using namespace market;
using namespace Quillon;

namespace {

class Feed : public MsgHandler {
  public:
    explicit Feed(Process& process) : _process(process) {
        for (int i = 0; i < MARKETS; ++i) _middle[i] = SCALE + i * SCALE / 10;
    }

    void publish() {
        const int market = static_cast<int>(_random() % MARKETS);
        _middle[market] += (static_cast<int64_t>(_random() % 2001) - 1000) * SCALE / 10'000'000;
        New<MktDataMessage> data;
        data->mvd.fmID = {market, 1};
        data->mvd.timeExchange = now();
        data->mvd.isSnapshot = true;
        data->streamID = ++_sent;
        for (int level = 1; level <= 3; ++level)
            for (const auto side : {Side::BID, Side::OFR}) {
                MDEntry& entry = data->mvd.mdEntryList.add_back();
                entry.price = _middle[market] + (side == Side::BID ? -level : level) * SCALE / 20'000;
                entry.amount = level * 1'000'000 * SCALE;
                entry.side = side;
            }
        _process.publish(data);
    }

  private:
    Process& _process;
    std::mt19937 _random{1};
    int64_t _middle[MARKETS];
    int32_t _sent = 0;
};

void run(const char* url) {
    Process process(url, 1);
    Feed feed(process);
    process.run({.families = {"memory-bus"}}, feed, std::chrono::milliseconds(5), [&] { feed.publish(); });
}

} // namespace

int main(int argc, char** argv) { return runProcess(argc, argv, run); }
