// The command-line tool: the sessions it makes up, and the commands as their users run them.
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Inspect/Reflection.h"
#include "generated/QLProtocol/MsgHandler.h"
#include "tests/Sessions.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/messages/MessageReader.h"

using namespace Quillon;

namespace {

using Session = Module;
using Reader = Module;

// --- sessions

TEST_F(Session, IsTheSameForTheSameSeedOnly) {
    EXPECT_EQ(session(7, 5000), session(7, 5000));
    EXPECT_NE(session(7, 5000), session(8, 5000));
}

TEST_F(Session, HasAsManyMessagesAsAskedForInOrderOfTime) {
    for (uint64_t count : {0u, 1u, 30u, 80u, 100u, 120u, 999u, 1000u, 5000u}) {
        const std::vector<Sent> packets = session(3, count);
        EXPECT_EQ(packets.size(), count);
        for (size_t i = 1; i < packets.size(); ++i) ASSERT_LE(packets[i - 1].time, packets[i].time) << i;
    }
}

TEST_F(Session, ThatIsTooShortForItsEndIsTheBeginningOfALongerOne) {
    const std::vector<Sent> whole = session(3, 5000);
    const std::vector<Sent> part = session(3, 60);
    EXPECT_TRUE(std::equal(part.begin(), part.end(), whole.begin()));
    EXPECT_EQ(whole.back().id(), MemBusDisconnectMessage::ID);
}

TEST_F(Session, HoldsEveryTypeFromAThousandMessagesOn) {
    for (uint64_t seed = 0; seed < 150; ++seed) {
        std::set<MsgType_t> seen;
        for (const Sent& it : session(seed, 1000)) seen.insert(it.id());
        ASSERT_EQ(seen.size(), Inspect::all_messages().size()) << "seed " << seed;
    }
}

TEST_F(Session, IsMostlyMarketDataThenOrders) {
    std::map<MsgType_t, int> counts;
    for (const Sent& it : session(1, 20000)) ++counts[it.id()];
    EXPECT_GT(counts[MktDataMessage::ID], 14000);
    EXPECT_LT(counts[MktDataMessage::ID], 16000);
    int orders = 0;
    for (const auto& [id, count] : counts)
        if (id >= DropCopyMessage::ID && id <= OrderReceivedMessage::ID) orders += count;
    EXPECT_GT(orders, 2000);
}

// Follows a session the way its receivers would and checks that what belongs together agrees.
class Follower : public MsgHandler {
  public:
    int64_t now = 0; ///< time of the packet at hand
    int orders = 0, fills = 0, cancels = 0, massCancels = 0, books = 0, trades = 0;

    using MsgHandler::handle;

    void handle(const MktDataMessage& m) override {
        const MarketView& view = m.mvd;
        inOrder({view.timeExchange, view.timeArrival, view.timeHandler, view.timeEnhanced, view.timeApiServer,
                 view.timeApiClient, now});
        auto& book = _books[{view.fmID.feedID, view.fmID.marketID}];
        if (view.isSnapshot) book.clear();
        for (size_t i = 0; i < view.mdEntryList.size(); ++i) {
            const MDEntry& entry = view.mdEntryList[i];
            if (entry.element != MDElement::LEVEL) continue;
            const auto level = std::pair(entry.side, int64_t{entry.price});
            EXPECT_EQ(book.contains(level), entry.updateAction != MDUpdateAction::NEW);
            EXPECT_GT(entry.amount, 0);
            if (entry.updateAction == MDUpdateAction::DELETE)
                book.erase(level);
            else
                book.insert(level);
        }
        int64_t bid = 0, ask = INT64_MAX;
        for (const auto& [side, price] : book) {
            if (side == Side::BID) bid = std::max(bid, price);
            if (side == Side::OFR) ask = std::min(ask, price);
        }
        EXPECT_EQ(book.size(), 10u);
        EXPECT_LT(bid, ask);
        ++books;
    }

    void handle(const SubmitOrderMessage& m) override {
        const SubmitOrder& it = m.contents;
        inOrder({it.timeApiClient, it.timeApiServer, it.timeHandler, now});
        EXPECT_FALSE(_orders.contains(it.orderID));
        Order& order = _orders[it.orderID];
        order.userID = m.userID;
        order.clOrdID = it.clOrdID.c_str();
        order.open = it.amount;
        order.lastStep = now;
        ++orders;
    }
    void handle(const OrderReceivedMessage& m) override { report(m, {}, 0); }
    void handle(const OrderSubmittedMessage& m) override {
        report(m, m.contents.exOrdID.c_str(), m.contents.timeExchange);
        EXPECT_EQ(m.contents.amount, _orders[m.contents.orderID].open);
    }
    void handle(const OrderRejectedMessage& m) override {
        report(m, {}, m.contents.timeExchange);
        _orders[m.contents.orderID].ended = true;
    }
    void handle(const TradeCaptureMessage& m) override {
        Order& order = report(m, m.contents.exOrdID.c_str(), m.contents.timeExchange);
        order.open -= m.contents.amount;
        EXPECT_GE(order.open, 0);
        EXPECT_GT(m.contents.amount, 0);
        order.lastTrade = m.contents.exTradeID.c_str();
        order.lastFill = m.contents.amount;
        _clOrdIDs[order.clOrdID] = m.contents.orderID;
        ++fills;
    }
    void handle(const DropCopyMessage& m) override {
        const DropCopy& it = m.contents;
        inOrder({it.timeExchange, it.timeHandler, it.timeApiServer, it.timeApiClient, now});
        ASSERT_TRUE(_clOrdIDs.contains(it.clOrdID.c_str()));
        const Order& order = _orders[_clOrdIDs[it.clOrdID.c_str()]];
        EXPECT_EQ(it.exTradeID, order.lastTrade);
        EXPECT_EQ(it.baseCurrAmt, order.lastFill);
        EXPECT_EQ(m.userID, order.userID);
        next(m.userID, it.sequenceID);
    }
    void handle(const ModifyOrderMessage& m) override {
        Order& order = request(m);
        order.clOrdID = m.contents.clNewID.c_str();
        order.open = m.contents.amount;
    }
    void handle(const CancelOrderMessage& m) override { request(m).cxlID = m.contents.cxlID.c_str(); }
    void handle(const CancelAllOrderMessage& m) override {
        _cancelAll[m.contents.cxlID.c_str()] = {m.userID, m.contents.feedID};
    }
    void handle(const OrderCanceledMessage& m) override {
        Order& order = report(m, m.contents.exOrdID.c_str(), m.contents.timeExchange);
        EXPECT_EQ(m.contents.amount, order.open);
        EXPECT_EQ(m.contents.cxlID.empty(), m.contents.reason == CancelReason::BY_EXCHANGE);
        if (_cancelAll.contains(m.contents.cxlID.c_str())) {
            EXPECT_EQ(_cancelAll[m.contents.cxlID.c_str()], std::pair(m.userID, m.contents.feedID));
            if (++_canceledTogether[m.contents.cxlID.c_str()] > 1) ++massCancels;
        } else {
            EXPECT_EQ(m.contents.cxlID, order.cxlID);
        }
        order.open = 0;
        ++cancels;
    }
    void handle(const OrderCancelRejectedMessage& m) override {
        EXPECT_EQ(m.contents.cxlID, report(m, m.contents.exOrdID.c_str(), m.contents.timeExchange).cxlID);
    }
    void handle(const OrderDoneMessage& m) override {
        Order& order = report(m, m.contents.exOrdID.c_str(), m.contents.timeExchange);
        EXPECT_EQ(order.open, 0);
        order.ended = true;
    }

    void handle(const QuoteRequestMessage& m) override {
        outOrder(m.contents);
        EXPECT_TRUE(_quotes.try_emplace(m.contents.quoteReqID.c_str()).second);
    }
    void handle(const RejectQuoteRequestMessage& m) override {
        outOrder(m.contents);
        EXPECT_TRUE(_quotes.contains(m.contents.quoteReqID.c_str()));
    }
    void handle(const MassQuoteMessage& m) override {
        outOrder(m.contents);
        ASSERT_TRUE(_quotes.contains(m.contents.quoteReqID.c_str()));
        for (size_t i = 0; i < m.contents.quotes.size(); ++i)
            _quotes[m.contents.quoteReqID.c_str()][m.contents.quotes[i].quoteID.c_str()] = m.contents.quotes[i].price;
    }
    void handle(const MassQuoteAckMessage& m) override { EXPECT_FALSE(_quotes[m.contents.quoteReqID.c_str()].empty()); }
    void handle(const CancelQuoteMessage& m) override {
        outOrder(m.contents);
        EXPECT_TRUE(_quotes[m.contents.quoteReqID.c_str()].contains(m.contents.quoteID.c_str()));
    }
    void handle(const NewOrderMessage& m) override {
        const NewOrder& it = m.contents;
        inOrder({it.timeExchange, it.timeHandler, it.timeApiServer, it.timeApiClient, now});
        ASSERT_TRUE(_quotes[it.quoteReqID.c_str()].contains(it.quoteID.c_str()));
        EXPECT_EQ(_quotes[it.quoteReqID.c_str()][it.quoteID.c_str()], it.price);
        _newOrders[it.clOrdID.c_str()] = it.execID.c_str();
    }
    void handle(const AcceptOrderMessage& m) override { answer(m.contents); }
    void handle(const RejectOrderMessage& m) override { answer(m.contents); }
    void handle(const OrderTimeoutMessage& m) override { EXPECT_TRUE(_newOrders.contains(m.contents.clOrdID.c_str())); }
    void handle(const TradeCaptureAckMessage& m) override {
        EXPECT_TRUE(_accepted.contains(m.contents.execID.c_str()));
        ++trades;
    }

    void handle(const LockUserMessage& m) override { _lastRequest = m.contents.clRequestID.c_str(); }
    void handle(const LockResponseMessage& m) override { EXPECT_EQ(m.contents.clRequestID, _lastRequest); }
    void handle(const RuThereMessage& m) override { _probe = m.dpdSeqNo; }
    void handle(const ImHereMessage& m) override { EXPECT_EQ(m.dpdSeqNo, _probe); }

  private:
    struct Order {
        int32_t userID = 0;
        std::string clOrdID;
        int64_t open = 0;     ///< amount
        int64_t lastStep = 0; ///< at the exchange, or when it was captured
        std::string exOrdID, cxlID, lastTrade;
        int64_t lastFill = 0;
        bool ended = false;
    };

    static void inOrder(std::initializer_list<int64_t> times) {
        EXPECT_GT(*times.begin(), 0);
        EXPECT_TRUE(std::is_sorted(times.begin(), times.end()));
    }
    template <class Record>
    void outOrder(const Record& it) {
        inOrder({it.timeApiClient, it.timeApiServer, it.timeHandler, now});
    }

    /// Reports to a user are numbered without a gap.
    void next(int32_t userID, int32_t sequenceID) { EXPECT_EQ(sequenceID, ++_sequenceIDs[userID]); }

    /// A report on an order: it names the order as the order was last named and happens after what happened to it
    /// before.
    template <class Message>
    Order& report(const Message& m, const std::string& exOrdID, int64_t timeExchange) {
        EXPECT_TRUE(_orders.contains(m.contents.orderID));
        Order& order = _orders[m.contents.orderID];
        EXPECT_FALSE(order.ended);
        EXPECT_EQ(m.userID, order.userID);
        EXPECT_EQ(m.contents.clOrdID, order.clOrdID);
        if (order.exOrdID.empty()) order.exOrdID = exOrdID;
        EXPECT_TRUE(exOrdID.empty() || exOrdID == order.exOrdID);
        next(m.userID, m.contents.sequenceID);
        if constexpr (requires { m.contents.timeExchange; })
            inOrder({timeExchange, m.contents.timeHandler, m.contents.timeApiServer, m.contents.timeApiClient, now});
        else
            inOrder({m.contents.timeApiServer, m.contents.timeApiClient, now});
        EXPECT_GT(timeExchange != 0 ? timeExchange : now, order.lastStep);
        order.lastStep = now;
        return order;
    }

    /// A client's request about a living order.
    template <class Message>
    Order& request(const Message& m) {
        outOrder(m.contents);
        Order& order = _orders[m.contents.orderID];
        EXPECT_EQ(m.userID, order.userID);
        EXPECT_EQ(m.contents.clOrdID, order.clOrdID);
        EXPECT_FALSE(order.ended);
        order.lastStep = now;
        return order;
    }

    template <class Record>
    void answer(const Record& it) {
        outOrder(it);
        EXPECT_EQ(it.execID, _newOrders[it.clOrdID.c_str()]);
        _accepted.insert(it.execID.c_str());
    }

    std::map<std::pair<int32_t, int32_t>, std::set<std::pair<Side::Type, int64_t>>> _books;
    std::map<int64_t, Order> _orders;
    std::map<std::string, int64_t> _clOrdIDs;
    std::map<std::string, std::pair<int32_t, int32_t>> _cancelAll;
    std::map<std::string, int> _canceledTogether;
    std::map<int32_t, int32_t> _sequenceIDs;
    std::map<std::string, std::map<std::string, int64_t>> _quotes; ///< prices by quote, by request
    std::map<std::string, std::string> _newOrders;                 ///< execution by order
    std::set<std::string> _accepted;
    std::string _lastRequest;
    int32_t _probe = 0;
};

TEST_F(Session, MessagesHangTogether) {
    for (uint64_t seed : {1u, 2u, 3u}) {
        Follower follower;
        qlproto::MessageReader reader;
        for (const Sent& it : session(seed, 30000)) {
            ASSERT_TRUE(reader.read(it.bytes)) << reader.fault();
            follower.now = it.time;
            ASSERT_TRUE(dispatch(it.id(), reader.message(), follower));
            ASSERT_FALSE(HasFailure()) << reader.descriptor().name() << " at " << it.time;
        }
        // The checks above had something to check.
        EXPECT_GT(follower.books, 20000);
        EXPECT_GT(follower.orders, 300);
        EXPECT_GT(follower.fills, 300);
        EXPECT_GT(follower.cancels, 100);
        EXPECT_GT(follower.massCancels, 0);
        EXPECT_GT(follower.trades, 50);
    }
}

// --- bad packets

TEST_F(Reader, TakesPadsByTheirWrittenLength) {
    qlproto::MessageReader reader;
    const size_t lengths[] = {0, 1, 127, 128, 255, 256, 300, 32768, 65535};
    for (size_t length : lengths) {
        const std::string pad = std::string("\x02\x00", 2) + static_cast<char>(length & 0xFF)
                                + static_cast<char>(length >> 8) + std::string(length, ' ');
        EXPECT_TRUE(reader.read(pad)) << length << ": " << reader.fault();
        EXPECT_FALSE(reader.read(pad + ' ')) << length;
        EXPECT_FALSE(reader.read(pad.substr(0, pad.size() - 1))) << length;
    }
}

TEST_F(Reader, SurvivesBodiesOfAnyBytes) {
    // Of 0xFF, vectors claim 32,767 elements and strings 65,535 bytes; random bytes reach what no pattern does.
    size_t count = 0;
    const int* ids = __protocol->getMessageIndex(count);
    qlproto::MessageReader reader;
    qlproto::session::Rng rng(11);
    int sound = 0;
    for (size_t i = 0; i < count; ++i) {
        for (int trial = 0; trial < 60; ++trial) {
            std::string packet = Capture::identifierBytes(static_cast<MsgType_t>(ids[i]));
            const int64_t length = rng.between(0, trial % 10 == 0 ? 3000 : 60);
            for (int64_t k = 0; k < length; ++k)
                packet += trial % 3 == 0 ? '\xFF' : static_cast<char>(rng.between(0, 255));
            if (reader.read(packet)) ++sound;
        }
    }
    EXPECT_LT(sound, 1000); // most are bad, and were called so
}

// --- the commands

/// A folder of its own for files, and the tool as a subprocess.
class Tool : public Module, protected ToolFolder {
  protected:
    static std::string record(const std::string& packet, size_t cutFrom = 0) {
        return CaptureForm().record({1709535600'000000042, packet}, cutFrom);
    }

    const std::string header = CaptureForm().header();
};

TEST_F(Tool, GeneratesACaptureWithNanosecondsAndLinkTypeUser0) {
    ASSERT_EQ(run("qlproto generate --messages 500 --seed 9 -o a.pcap").exitCode, 0);
    const std::string capture = content("a.pcap");
    // All packets of the session, each with its time, identifier and body, and nothing else.
    std::string expected = header;
    for (const Sent& it : session(9, 500)) expected += CaptureForm().record(it);
    EXPECT_EQ(capture, expected);
    EXPECT_EQ(run("qlproto generate --messages 500 --seed 9 -o -").out, capture);
}

TEST_F(Tool, ShowsFieldsAndNoControlCharacters) {
    const std::string log = "one\ntwo\x1B[31m\x7F";
    write("a.pcap", header + record(std::string("\x24\xD0\x0E", 3)) // TimerMessage, tqid 7
                        + record(std::string("\x15\xF2", 2) + static_cast<char>(log.size()) + log));
    const Result result = run("qlproto decode a.pcap");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "1709535600.000000042 TimerMessage tqid=7\n"
                          "1709535600.000000042 JsonFromServer contents=\"one\\ntwo\\x1b[31m\\x7f\"\n");
}

TEST_F(Tool, NamesBadPacketsAndGoesOn) {
    const std::string timer("\x24\xD0\x0E", 3);
    struct Case {
        std::string bytes;
        int exitCode;
        size_t lines;
        std::string complaint;
    };
    const Case cases[] = {
        {header, 0, 0, "0 messages, "},
        {header + record(timer), 0, 1, "1 message, 3 bytes, "},
        {header + record(std::string("\x03\x00", 2)) + record(timer), 1, 1,
         "packet 1 at offset 24 of 1709535600.000000042: unknown message identifier 3"},
        {header + record(timer) + record("\x24") + record(timer), 1, 2,
         "packet 2 at offset 43 of 1709535600.000000042: 1 byte cannot hold an identifier"},
        {header + record("") + record("") + record("") + record(timer), 1, 1,
         "packet 3 at offset 56 of 1709535600.000000042: 0 bytes cannot hold an identifier\n1 message, "},
        {header + record(""), 1, 0, "packet 1 at offset 24 of 1709535600.000000042: 0 bytes cannot hold an identifier"},
        {header + record(timer + "x"), 1, 0,
         "packet 1 at offset 24 of 1709535600.000000042: TimerMessage: trailing bytes at byte 1"},
        {header + record("\x24\xD0"), 1, 0,
         "packet 1 at offset 24 of 1709535600.000000042: TimerMessage: truncated at byte 0 (tqid)"},
        {header + record("\x24\xD0\x80"), 1, 0,
         "packet 1 at offset 24 of 1709535600.000000042: TimerMessage: truncated at byte 0 (tqid)"},
        {header + record(timer, 100) + record(timer), 1, 1,
         "packet 1 at offset 24 of 1709535600.000000042: only 3 of its 100 bytes were captured, TimerMessage at "
         "1709535600.000000042\n"
         "1 message, 6 bytes, "},
        {header + record(timer, 100) + record(""), 1, 0, "2 faults: 1 cut by the capture, 1 no identifier\n"},
        {header + record(timer) + record(timer).substr(0, 18), 1, 1,
         "after packet 1: damaged record at offset 43: the capture ends inside its 3 bytes; 18 bytes skipped"},
        {header + record(timer) + record(timer).substr(0, 7), 1, 1,
         "after packet 1: damaged record at offset 43: the capture ends inside its header; 7 bytes skipped"},
        {CaptureForm{.linkType = 1}.header() + record(timer), 1, 0, "link type 1 instead of USER0 (147)"},
        {header.substr(0, 20), 1, 0, "not a capture"},
        {"", 1, 0, "not a capture"},
        {"1709535600.000000042 TimerMessage tqid=7\n", 1, 0, "not a capture"},
        {std::string("\0\0\0\0\x60\x75\xE5\x65\2\4\0\x10\0\0\0\0", 16), 1, 0, "type 2 instead of RAW_LINK (24)"},
    };
    for (const Case& it : cases) {
        write("a.pcap", it.bytes);
        const Result result = run("qlproto decode --verbose a.pcap");
        EXPECT_EQ(result.exitCode, it.exitCode) << it.complaint;
        EXPECT_EQ(result.lines(), it.lines) << it.complaint;
        EXPECT_NE(result.err.find(it.complaint), std::string::npos) << it.complaint << " is not in: " << result.err;
    }
}

TEST_F(Tool, TellsUsageFromInputAndOutputErrors) {
    EXPECT_EQ(run("qlproto decde a.pcap").err, "qlproto: no command is named 'decde'; did you mean decode?\n");
    struct Case {
        const char* command;
        int exitCode;
    };
    const Case cases[] = {
        {"qlproto --help", 0},
        {"qlproto decode --help", 0},
        {"qlproto", 2},
        {"qlproto decode", 2},
        {"qlproto nonsense", 2},
        {"qlproto generate", 2},
        {"qlproto generate --messages -5 -o - | head -c 0; exit ${PIPESTATUS[0]}", 2},
        {"qlproto generate --messages many -o a.pcap", 2},
        {"qlproto decode --hex a.pcap b.pcap", 2},
        {"qlproto decode a.pcap b.pcap", 3},
        {"qlproto ''", 2},
        {"qlproto trace a.pcap", 2},
        {"qlproto trace a.pcap '' --json --order x", 3},
        {"qlproto trace a.pcap --order ''", 2},
        {"qlproto trace a.pcap --quote ''", 2},
        {"qlproto trace a.pcap --user ''", 2},
        {"qlproto trace a.pcap --user 2147483648", 2},
        {"qlproto verify a.pcap --first -1", 2},
        {"qlproto diff a.pcap a.pcap --first -1", 2},
        {"qlproto annotate a.pcap --packet 99999999999999999999", 2},
        {"qlproto generate --messages 18446744073709551616 -o /dev/null", 2},
        {"qlproto generate --seed -1 -o /dev/null", 2},
        {"qlproto generate --rate 4294967297 -o /dev/null", 2},
        {"qlproto enum ''", 2},
        {"[ \"$(qlproto --version)\" = 'qlproto " QLPROTO_VERSION "' ] && echo", 0},
        {"qlproto decode no-such-file.pcap", 3},
        {"qlproto decode .", 3},
        {"qlproto generate -o no-such-folder/a.pcap", 3},
        {"qlproto generate -o /dev/full", 3},
        {"qlproto dissector -o no-such-folder/a.lua", 3},
        {"qlproto dissector >/dev/full", 3},
        {"qlproto generate -o a.pcap && qlproto decode a.pcap >/dev/full", 3},
    };
    for (const Case& it : cases) {
        const Result result = run(it.command);
        EXPECT_EQ(result.exitCode, it.exitCode) << it.command;
        EXPECT_EQ(result.out.empty(), it.exitCode != 0) << it.command; // help is data, complaints are not
        EXPECT_EQ(result.err.empty(), it.exitCode == 0) << it.command;
    }
}

TEST_F(Tool, EndsQuietlyWhenNobodyReadsOn) {
    ASSERT_EQ(run("qlproto generate --messages 50000 -o a.pcap").exitCode, 0);
    for (const char* command : {"qlproto decode a.pcap", "qlproto generate --messages 50000 -o -"}) {
        const Result result = run(std::string(command) + " | head -c 100 >/dev/null; exit ${PIPESTATUS[0]}");
        EXPECT_EQ(result.exitCode, 0) << command;
        EXPECT_EQ(result.err, "") << command;
    }
}

TEST_F(Tool, GetsTheSameBytesBackButForPads) {
    int pads = 0;
    for (const Sent& it : session(4, 20000)) pads += it.id() == PadMessage::ID;
    ASSERT_EQ(run("qlproto generate --messages 20000 --seed 4 -o a.pcap").exitCode, 0);
    const Result result = run("qlproto roundtrip a.pcap");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.rfind("identical " + std::to_string(20000 - pads) + "\ndifferent 0\n", 0), 0u) << result.out;
    EXPECT_NE(result.out.find("PadMessage " + std::to_string(pads) + ","), std::string::npos) << result.out;
}

TEST_F(Tool, FindsBytesThatDoNotComeBack) {
    // A number in more bytes than it needs reads well but is written otherwise.
    write("a.pcap", header + record(std::string("\x24\xD0\x8E\x00", 4)));
    const Result result = run("qlproto roundtrip a.pcap");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.out.find("different 1\n"), std::string::npos) << result.out;
    EXPECT_NE(result.err.find("packet 1 at offset 24 of 1709535600.000000042: TimerMessage: encodes to 1 byte instead "
                              "of 2, different from offset 0"),
              std::string::npos)
        << result.err;
}

TEST_F(Tool, GeneratesProfilesAndRates) {
    struct Case {
        const char* options;
        double low, high; ///< messages per second
        int exitCode;     ///< of verifying it
    };
    const Case cases[] = {{"--profile usual", 2000, 4000, 0}, {"--profile quiet", 50, 400, 0},
                          {"--profile busy", 8000, 40000, 0}, {"--profile hostile", 2000, 4000, 1},
                          {"--rate 100", 80, 120, 0},         {"--profile busy --rate 50000", 35000, 65000, 0}};
    std::set<std::string> all; // the types, whatever the profile
    for (const Case& it : cases) {
        const std::string generate = std::string("qlproto generate --messages 20000 --seed 3 ") + it.options + " -o ";
        ASSERT_EQ(run(generate + "a.pcap").exitCode, 0) << it.options;
        EXPECT_EQ(run(generate + "-").out, content("a.pcap")) << it.options;
        const Result verified = run("qlproto verify a.pcap");
        EXPECT_EQ(verified.exitCode, it.exitCode) << it.options;
        EXPECT_NE(verified.out.find("all packets"), std::string::npos) << verified.out;

        std::istringstream lines(run("qlproto decode a.pcap").out);
        std::set<std::string> names;
        std::vector<double> times;
        for (std::string time, name, rest; lines >> time >> name && std::getline(lines, rest);) {
            names.insert(name);
            times.push_back(std::stod(time));
        }
        if (all.empty()) all = names;
        EXPECT_EQ(names, all) << it.options;
        const double rate = static_cast<double>(times.size() - 2000) / (times.back() - times[2000]);
        EXPECT_GT(rate, it.low) << it.options;
        EXPECT_LT(rate, it.high) << it.options;
    }
}

} // namespace
