// The text of records and messages: the frame, and the fields as AsciiWriter writes them.
#include <gtest/gtest.h>

#include <iomanip>
#include <set>
#include <sstream>

#include "Backend/Velmora/operations/Print.h"
#include "Backend/Velmora/operations/TextSize.h"
#include "generated/QLProtocol/AsciiWriter.h"
#include "tests/Samples.h"

namespace {

using namespace Quillon;
using Velmora::of;

class TextRendering : public Module {};

template <class T>
std::string standard(const T& value) {
    std::ostringstream os;
    os << value;
    return os.str();
}

template <class T>
std::string severalLines(const T& value, int indent) {
    StaticOStream<65536> os;
    Velmora::TextCodec<FastOStream> codec(os);
    AsciiWriter(codec, true, indent).handle(value);
    return std::string(os.begin(), os.size());
}

TEST_F(TextRendering, EveryTypeStandsInItsFrameAndNamesEveryField) {
    forEveryType([]<class T>(of<T>, const char* name) {
        for (const Filling filling : fillings) {
            InBlock<T> value;
            Sample(filling, 2).fill(*value);
            const std::string text = printed(*value);
            EXPECT_EQ(text.find(std::string("<") + name + " "), 0u);
            EXPECT_EQ(text.back(), '>');
            fields(of<T>{}, [&](const char* field, auto, auto) {
                EXPECT_NE(text.find(std::string(" ") + field + "="), std::string::npos) << field << " in " << text;
                return true;
            });
            if (text.find('\0') == std::string::npos) {
                EXPECT_EQ(standard(*value), text);
            }
        }
    });
}

TEST_F(TextRendering, OneLine) {
    InBlock<SubmitOrderMessage> order;
    order->userID = 7;
    order->quoteID = "Q-1";
    order->contents.orderID = -42;
    order->contents.clOrdID = "a \"quoted\" id";
    order->contents.side = Side::BID;
    order->contents.amount = Velmora::MAX;
    order->contents.price = Velmora::NMA;
    order->contents.stopPrice = Velmora::NDA;
    order->contents.maxShow = Velmora::NA;
    order->contents.ordType = static_cast<OrderType::Type>(99);
    for (const char* key : {"k1", "k2"}) order->contents.parameters.add_back().key = key;
    EXPECT_EQ(printed(*order),
              "<SubmitOrderMessage userID=7 quoteID=\"Q-1\" onBehalfOfCompID=\"\" contents=(orderID=-42 "
              "clOrdID=\"a \"quoted\" id\" timeApiClient=0 timeApiServer=0 timeHandler=0 feedID=0 marketID=0 side=BID "
              "amount=MAX price=NMA ordType=99 timeInForce=DAY stopPrice=NDA maxShow=NA minAmount=0 "
              "parameters=[(key=\"k1\" value=\"\") (key=\"k2\" value=\"\")]) modelID=\"\">");

    InBlock<MDEntry> entry;
    entry->source = -1;
    entry->side = static_cast<Side::Type>((1 << 30) + Side::BID); // not by its low byte
    entry->numberOfOrders = 10;
    EXPECT_EQ(printed(*entry), "<MDEntry price=0 amount=0 minAmount=0 updateAction=NEW element=0 side=1073741825 "
                               "source=-1 numberOfOrders=10 components=\"\">");
    CallbackMessage callback;
    callback.arg1 = Velmora::NA;
    callback.arg2 = INT64_MIN;
    EXPECT_EQ(printed(callback), "<CallbackMessage action=0 arg1=NA arg2=-9223372036854775808 arg3=0 arg4=0>");
    InBlock<Heartbeat> heartbeat;
    EXPECT_EQ(printed(*heartbeat), "<Heartbeat timeApiServer=0 activeFeeds=[]>");
    for (const int feed : {1, -2, 3}) heartbeat->activeFeeds.push_back(feed);
    EXPECT_EQ(printed(*heartbeat), "<Heartbeat timeApiServer=0 activeFeeds=[1 -2 3]>");
    InBlock<TradeHierarchy> hierarchy;
    for (const char* name : {"a", "b c"}) hierarchy->groupNames.add_back() = name;
    EXPECT_EQ(printed(*hierarchy), "<TradeHierarchy userName=\"\" groupNames=[\"a\" \"b c\"]>");
    InBlock<LockUser> lock;
    lock->locked = true;
    EXPECT_EQ(printed(*lock), "<LockUser clRequestID=\"\" locked=T username=\"\">");
    RequestMessage request;
    request.request = Request::SECURITYINFO;
    EXPECT_EQ(printed(request), "<RequestMessage fmID=(marketID=0 feedID=0) request=SECURITYINFO>");
    InBlock<LogMessage> log;
    log->description = "in clear";
    EXPECT_NE(printed(*log).find("description=\"in clear\">"), std::string::npos);
}

TEST_F(TextRendering, SeveralLines) {
    InBlock<TradeLimitData> data;
    data->clDataID = "id";
    data->userHierarchy.add_back().userName = "u";
    data->userHierarchy[0].groupNames.add_back() = "g";
    EXPECT_EQ(severalLines(*data, 0), "clDataID=\"id\"\n"
                                      "groupLimits=[]\n"
                                      "groupStates=[]\n"
                                      "userHierarchy=[\n"
                                      "  (\n"
                                      "    userName=\"u\"\n"
                                      "    groupNames=[\"g\"]\n"
                                      "  )\n"
                                      "]\n"
                                      "marketRates=[]\n"
                                      "numRemainingMessages=0\n"
                                      "isSnapshot=F");
    MemBusConnectMessage connect;
    EXPECT_EQ(severalLines(connect, 3), "   id=(\n"
                                        "     appID=0\n"
                                        "     generation=0\n"
                                        "   )");
}

/// Renders values its own way: all strings in one case, and so on.
struct Shouting : Velmora::TextCodec<FastOStream> {
    using TextCodec::TextCodec;
    using TextCodec::write_string;
    void write_string(const bufstl::bufstring& x) override { stream() << '!' << x << '!'; }
    void write_int64(long long) override { stream() << "int64"; }
};

TEST_F(TextRendering, DerivedCodecRendersValuesItsOwnWay) {
    InBlock<JsonFromClient> json;
    json->contents = "x";
    InBlock<ProtocolDefinitionMessage> definition;
    definition->proto = "y";
    StaticOStream<65536> os;
    Shouting codec(os);
    AsciiWriter writer(codec, false, 0);
    writer.handle(*json);
    writer.handle(*definition);
    writer.handle(HeartbeatTimerMessage());
    EXPECT_STREQ(os.ends(), "contents=!x!proto=!y!interval_ns=int64");
}

TEST_F(TextRendering, EmbeddedNulEndsTheTextOnAStandardStreamOnly) {
    InBlock<JsonFromClient> json;
    json->contents = std::string("a\0b", 3);
    EXPECT_EQ(standard(*json), "<JsonFromClient contents=\"a>");
    EXPECT_EQ(printed(*json), std::string("<JsonFromClient contents=\"a\0b\">", 31));
}

TEST_F(TextRendering, TextsBeyondTheScratchOfStandardStreamsAreCutVisibly) {
    // The scratch holds 65,535 characters of fields. Texts that fit are whole, whatever might have been.
    constexpr size_t room = 65535;
    const std::string frame = "<JsonFromClient contents=\"\">";
    const size_t around = std::strlen("contents=\"\"");
    for (const size_t length : {room - around - 1, room - around, room - around + 1, size_t{65535}, size_t{70000}}) {
        InBlock<JsonFromClient> json(200000);
        json->contents = std::string(length, 'x');
        const std::string whole = printed(*json);
        ASSERT_EQ(whole.size(), frame.size() + length);
        if (around + length <= room)
            EXPECT_EQ(standard(*json), whole) << length;
        else
            EXPECT_EQ(standard(*json), whole.substr(0, std::strlen("<JsonFromClient ") + room - 8) + "...[cut]");
    }

    // The bound on the text of many small values is far above their text.
    InBlock<Heartbeat> heartbeat(300000);
    heartbeat->activeFeeds.resize(32000);
    EXPECT_EQ(standard(*heartbeat), printed(*heartbeat));
    InBlock<SubmitOrderMessage> order(8 << 20);
    order->contents.parameters.resize(3500);
    EXPECT_EQ(standard(*order), printed(*order)); // close to the room
    order->contents.parameters.resize(32767);
    const std::string cut = standard(*order);
    EXPECT_EQ(cut, printed(*order).substr(0, std::strlen("<SubmitOrderMessage ") + room - 8) + "...[cut]");
}

TEST_F(TextRendering, NoTextIsLongerThanToldBeforehand) {
    forEveryType([]<class T>(of<T>, const char* name) {
        for (const Filling filling : fillings) {
            InBlock<T> value;
            Sample(filling, 3).fill(*value);
            const size_t text = printed(*value).size() - std::strlen(name) - 3;
            const size_t told = Velmora::maxFieldsTextSize(&*value);
            EXPECT_LE(text, told) << name;
            EXPECT_LE(told, 14 * text) << name; // and not by just anything
        }
    });
}

/// Fails in the middle of its text.
struct FailingWriter {
    FailingWriter(Velmora::TextCodec<FastOStream>& codec, bool, int) : _codec(codec) { ++alive; }
    ~FailingWriter() { --alive; }
    void handle(const TimerMessage&) {
        _codec.write_data("half");
        throw std::runtime_error("writer");
    }
    Velmora::TextCodec<FastOStream>& _codec;
    inline static int alive = 0;
};

TEST_F(TextRendering, AWriterThatFailsLeavesStandardStreamsAloneAndOthersHalfWritten) {
    const TimerMessage timer;
    std::ostringstream standard;
    standard << std::setw(30);
    StaticOStream<100> fixed;
    EXPECT_THROW(Velmora::print<FailingWriter>(standard, "<TimerMessage ", timer), std::runtime_error);
    EXPECT_THROW(Velmora::print<FailingWriter>(fixed, "<TimerMessage ", timer), std::runtime_error);
    EXPECT_EQ(standard.str(), "");
    EXPECT_TRUE(standard.good());
    EXPECT_EQ(standard.width(), 30);
    EXPECT_STREQ(fixed.ends(), "<TimerMessage half");
    EXPECT_EQ(FailingWriter::alive, 0);
}

TEST_F(TextRendering, FieldWidthPadsTheOpeningOnly) {
    std::ostringstream os;
    os << std::setw(30) << std::right << TimerMessage();
    EXPECT_EQ(os.str(), std::string(16, ' ') + "<TimerMessage tqid=0>");
    EXPECT_EQ(os.width(), 0);
}

TEST_F(TextRendering, FramesFollowEachOtherWithNothingBetween) {
    char buffer[100];
    FastOStream os(buffer, sizeof buffer);
    const TimerMessage timer;
    FastOStream& same = os << timer << timer;
    EXPECT_EQ(&same, &os);
    EXPECT_STREQ(os.ends(), "<TimerMessage tqid=0><TimerMessage tqid=0>");
}

} // namespace
