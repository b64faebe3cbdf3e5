#include "bench/Values.h"

#include <random>

#include "bench/Ours.h"

namespace bench {
namespace {

/// Draws the values. Every field is set, as in the traffic of a live session; nothing is random but what varies there.
class Market {
  public:
    RuThereMessage ruThere() {
        RuThereMessage m;
        m.dpdSeqNo = static_cast<int32_t>(between(20'000, 900'000));
        m.timeApiClient = now();
        return m;
    }

    SubmitOrderMessage submitOrder() {
        SubmitOrderMessage m;
        m.userID = userID();
        m.quoteID = id("Q", 7);
        m.onBehalfOfCompID = "BANK" + std::to_string(between(1, 9));
        m.contents.orderID = between(1'000'000'000, 9'000'000'000);
        m.contents.clOrdID = id("C", 10);
        m.contents.timeApiClient = now();
        m.contents.timeApiServer = now();
        m.contents.timeHandler = now();
        m.contents.feedID = feedID();
        m.contents.marketID = marketID();
        m.contents.side = side();
        m.contents.amount = amount();
        m.contents.price = price();
        m.contents.ordType = 2;
        m.contents.timeInForce = between(0, 3) == 0 ? 3 : 1;
        m.contents.stopPrice = price();
        m.contents.maxShow = amount();
        m.contents.minAmount = 100'000;
        m.contents.parameters = {{"desk", "FX" + std::to_string(between(1, 20))}};
        m.modelID = "MODEL" + std::to_string(between(1, 30));
        return m;
    }

    MktDataMessage mktData(size_t entries) {
        MktDataMessage m;
        m.mvd.fmID = {marketID(), feedID()};
        m.mvd.timeExchange = now();
        m.mvd.timeArrival = now();
        m.mvd.timeHandler = now();
        m.mvd.timeEnhanced = now();
        m.mvd.timeApiServer = now();
        m.mvd.timeApiClient = now();
        m.mvd.isSnapshot = between(0, 9) == 0;
        for (size_t i = 0; i < entries; ++i) m.mvd.mdEntryList.push_back(mdEntry());
        m.fmIDsInBatch = {{marketID(), feedID()}};
        m.batchID = between(1, 5'000);
        m.streamID = static_cast<int32_t>(between(1, 200));
        return m;
    }

    TradeCaptureMessage tradeCapture() {
        TradeCaptureMessage m;
        m.userID = userID();
        m.origPrice = price();
        auto& c = m.contents;
        c.sequenceID = sequenceID();
        c.orderID = between(1'000'000'000, 9'000'000'000);
        c.clOrdID = id("C", 10);
        c.exOrdID = id("X", 12);
        c.exPendingID = id("P", 8);
        c.exTradeID = id("T", 12);
        c.modelID = "MODEL" + std::to_string(between(1, 30));
        c.timeExchange = now();
        c.timeHandler = now();
        c.timeApiServer = now();
        c.timeApiClient = now();
        c.feedID = feedID();
        c.origFeedID = feedID();
        c.marketID = marketID();
        c.side = side();
        c.amount = amount();
        c.price = price();
        c.isTaker = between(0, 1) == 1;
        c.matchStatus = between(0, 3) == 0 ? 3 : 0;
        c.counterPartyID = "BANK" + std::to_string(between(1, 99));
        c.tradeDate = date();
        c.settlDate = date();
        return m;
    }

    DropCopyMessage dropCopy() {
        DropCopyMessage m;
        auto& c = m.contents;
        c.sequenceID = sequenceID();
        c.customerClientID = id("CL", 6);
        c.customerAccountID = id("AC", 8);
        c.userName = "trader" + std::to_string(between(1, 300));
        c.onBehalfOfCompID = "BANK" + std::to_string(between(1, 9));
        c.onBehalfOfSubID = "DESK" + std::to_string(between(1, 20));
        c.clOrdID = id("C", 10);
        c.exOrdID = id("X", 12);
        c.exPendingID = id("P", 8);
        c.exTradeID = id("T", 12);
        c.modelID = "MODEL" + std::to_string(between(1, 30));
        c.timeExchange = now();
        c.timeHandler = now();
        c.timeApiServer = now();
        c.timeApiClient = now();
        c.feedID = feedID();
        c.origFeedID = feedID();
        c.marketID = marketID();
        c.side = side();
        c.price = price();
        c.origPrice = price();
        c.baseCurrAmt = amount();
        c.baseCurrency = "EUR";
        c.counterCurrAmt = amount() + between(1, 99'999);
        c.counterCurrency = "USD";
        c.settlCurrAmt = c.counterCurrAmt;
        c.settlCurrency = "USD";
        c.isTaker = between(0, 1) == 1;
        c.matchStatus = 0;
        c.counterPartyID = "BANK" + std::to_string(between(1, 99));
        c.tradeDate = date();
        c.settlDate = date();
        m.userID = userID();
        m.origFeedSequenceID = sequenceID();
        return m;
    }

    TradeLimitDataMessage tradeLimitData() {
        TradeLimitDataMessage m;
        auto& c = m.contents;
        c.clDataID = id("D", 8);
        for (int i = 0; i < 20; ++i) c.groupLimits.push_back(tradeLimit());
        for (int i = 0; i < 20; ++i) c.groupStates.push_back(tradeState());
        for (int i = 0; i < 5; ++i)
            c.userHierarchy.push_back(
                {"trader" + std::to_string(between(1, 300)), {group(), group(), group(), group()}});
        for (int i = 0; i < 4; ++i) c.marketRates.push_back({marketID(), now(), decimal(1, 2)});
        c.numRemainingMessages = static_cast<int32_t>(between(0, 50));
        c.isSnapshot = true;
        for (int i = 0; i < 3; ++i) m.groupIDNamePairs.push_back({userID(), group()});
        for (int i = 0; i < 3; ++i) m.userIDNamePairs.push_back({userID(), "trader" + std::to_string(between(1, 300))});
        return m;
    }

  private:
    MDEntry mdEntry() {
        MDEntry e;
        e.price = price();
        e.amount = amount();
        e.minAmount = 100'000;
        e.updateAction = static_cast<uint8_t>(between(0, 2));
        e.element = static_cast<uint8_t>(between(1, 13));
        e.side = side();
        e.source = static_cast<int8_t>(between(1, 9));
        e.numberOfOrders = static_cast<int16_t>(between(1, 40));
        if (between(0, 1) == 1) e.components = std::to_string(between(1, 9)) + "+" + std::to_string(between(1, 99));
        return e;
    }

    TradeLimit tradeLimit() {
        TradeLimit t;
        t.limitID = id("L", 6);
        t.groupName = group();
        t.feedID = feedID();
        t.marketID = marketID();
        t.ccyType = static_cast<uint8_t>(between(0, 2));
        t.nopAmount = decimal(1'000'000, 900'000'000);
        t.dslAmount = decimal(1'000'000, 900'000'000);
        t.positionAmount = decimal(1'000'000, 900'000'000);
        t.pendingAmount = decimal(100'000, 9'000'000);
        t.singleAmount = decimal(100'000, 9'000'000);
        t.throttleCap = std::to_string(between(10, 500));
        t.adminName = "admin" + std::to_string(between(1, 20));
        t.contacts = "risk" + std::to_string(between(1, 20)) + "@bank.example, +44 20 7946 0"
                     + std::to_string(between(100, 999));
        t.nopWarnPct = static_cast<int16_t>(between(70, 95));
        t.dslWarnPct = static_cast<int16_t>(between(70, 95));
        return t;
    }

    TradeState tradeState() {
        TradeState t;
        t.groupName = group();
        t.boughtBase = decimal(1'000'000, 90'000'000);
        t.soldBase = decimal(1'000'000, 90'000'000);
        t.boughtCounter = decimal(1'000'000, 90'000'000);
        t.soldCounter = decimal(1'000'000, 90'000'000);
        t.pendingBoughtBase = decimal(1'000'000, 9'000'000);
        t.pendingSoldBase = decimal(1'000'000, 9'000'000);
        t.feedID = feedID();
        t.marketID = marketID();
        t.ccyType = static_cast<uint8_t>(between(0, 2));
        t.settlTime = now();
        t.syncTime = now();
        return t;
    }

    int64_t between(int64_t low, int64_t high) {
        return low + static_cast<int64_t>(_random() % static_cast<uint64_t>(high - low + 1));
    }
    /// Nanoseconds since 1970, some microseconds after the time before.
    int64_t now() { return _now += between(1'000, 900'000); }
    int64_t date() { return between(20'260, 20'290); }           // days since 1970
    int64_t price() { return between(90'000'000, 130'000'000); } // 0.9 to 1.3 in units of 10^-8
    int64_t amount() { return between(1, 50) * 100'000; }        // round lots
    uint8_t side() { return static_cast<uint8_t>(between(1, 2)); }
    int32_t userID() { return static_cast<int32_t>(between(100, 8'000)); }
    int32_t feedID() { return static_cast<int32_t>(between(1, 60)); }
    int32_t marketID() { return static_cast<int32_t>(between(1, 2'000)); }
    int32_t sequenceID() { return static_cast<int32_t>(between(10'000, 900'000)); }
    std::string group() { return "GROUP-" + std::to_string(between(1, 500)); }
    std::string decimal(int64_t low, int64_t high) { return std::to_string(between(low, high)) + ".25"; }
    std::string id(const char* prefix, int digits) {
        std::string text = prefix;
        for (int i = 0; i < digits; ++i) text += static_cast<char>('0' + between(0, 9));
        return text;
    }

    std::mt19937_64 _random{20'260'101}; // its sequence is fixed by the standard, unlike that of distributions
    int64_t _now = 1'767'225'600'000'000'000;
};

template <class M, class Make>
Shape<M> shape(const char* name, Make&& make) {
    Shape<M> s{name, {}, {}};
    for (size_t i = 0; i < distinct; ++i) s.values.push_back(make());
    return s;
}

} // namespace

static Shapes makeShapes() {
    Market market;
    return {shape<RuThereMessage>("RuThere", [&] { return market.ruThere(); }),
            shape<SubmitOrderMessage>("SubmitOrder", [&] { return market.submitOrder(); }),
            shape<MktDataMessage>("MktData1", [&] { return market.mktData(1); }),
            shape<MktDataMessage>("MktData20", [&] { return market.mktData(20); }),
            shape<MktDataMessage>("MktData200", [&] { return market.mktData(200); }),
            shape<TradeCaptureMessage>("TradeCapture", [&] { return market.tradeCapture(); }),
            shape<DropCopyMessage>("DropCopy", [&] { return market.dropCopy(); }),
            shape<TradeLimitDataMessage>("TradeLimitData", [&] { return market.tradeLimitData(); })};
}

const Shapes& shapes() {
    static const Shapes all = [] {
        Shapes made = makeShapes();
        const auto transcribe = []<class M>(Shape<M>& shape) {
            OurMessages<M> ours(shape);
            Scratch scratch;
            for (size_t i = 0; i < distinct; ++i) {
                Transcript transcript;
                show(ours.decode(i, scratch), transcript);
                shape.transcripts.push_back(transcript.written);
            }
        };
        std::apply([&](auto&... shape) { (transcribe(shape), ...); }, made);
        return made;
    }();
    return all;
}

} // namespace bench
