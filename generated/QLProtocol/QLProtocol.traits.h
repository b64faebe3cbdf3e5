// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
//
// The protocol as a type, for code that works with any protocol, and what the definition says about types, fields and
// enumerators beyond what hosts need to build; see Backend/Velmora/Notes.h.
#pragma once

#include <array>
#include <cstddef>

#include "Backend/Velmora/Notes.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace Quillon {

/// All members are static: the type is a template argument, never an object.
struct QLProtocolTraits {
    static constexpr const char* NAME = "Quillon";
    static constexpr int VERSION = 1;
    static constexpr const char* SIGNATURE = "3cb14c3a66f8bcf889f1a7afd1cd3ecf";
    static constexpr const char* SIGNATURE_API = "c622d22c9a1d9f1698e94a287f643c13";
    static constexpr const char* SIGNATURE_STORAGE = "ec9f41aa078427a07d47a4a748a8d476";
    // Derived from the definition, whatever it gives as its signatures: of what bodies depend on, and of names.
    static constexpr const char* WIRE_SIGNATURE = "02370b1a9998905f676aae0ed2fa72f8";
    static constexpr const char* NAMES_SIGNATURE = "a32de3ee83eb80a43c0fe4384dbbabe6";
    /// The INDEX of each message is below this.
    static constexpr size_t MESSAGES = 71;
    /// No two identifiers are the same modulo this.
    static constexpr size_t MODULUS = 350;

    // Each calls `visit(Velmora::of<T>{}, name)` for its types in order until a call returns false, and returns whether
    // all were visited. Messages come in the order of INDEX.

    template <class Visit>
    static constexpr bool enumerations(Visit&& visit) {
        return ::Quillon::enumerations(visit);
    }
    template <class Visit>
    static constexpr bool records(Visit&& visit) {
        return ::Quillon::records(visit);
    }
    template <class Visit>
    static constexpr bool messages(Visit&& visit) {
        return ::Quillon::messages(visit);
    }

    static void initialize() { ::Quillon::initialize(); }
    static void finalize() { ::Quillon::finalize(); }
    static MsgProtocol* instance() { return __protocol; } ///< null before initialize() and after finalize()
};

constexpr Velmora::TypeNotes typeNotes(Velmora::of<LogLevel>) {
    return {"LogLevel", "Severity of a log entry.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 7> enumeratorNotes(Velmora::of<LogLevel>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<Side>) {
    return {"Side", "Side of an order, quote or market data entry.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 4> enumeratorNotes(Velmora::of<Side>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<Request>) {
    return {"Request", "What a request message asks for, named by the identifier of the message wanted.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 1> enumeratorNotes(Velmora::of<Request>) {
    return {{
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MDElement>) {
    return {"MDElement", "What a market data entry stands for.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 13> enumeratorNotes(Velmora::of<MDElement>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MDSource>) {
    return {"MDSource", "Where a market data entry comes from.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 4> enumeratorNotes(Velmora::of<MDSource>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MDUpdateAction>) {
    return {"MDUpdateAction", "What happens to an entry of a market's book.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 3> enumeratorNotes(Velmora::of<MDUpdateAction>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderStatus>) {
    return {"OrderStatus", "State of a live order.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 3> enumeratorNotes(Velmora::of<OrderStatus>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TimeInForce>) {
    return {"TimeInForce", "How long an order stays in force.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 4> enumeratorNotes(Velmora::of<TimeInForce>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MatchStatus>) {
    return {"MatchStatus", "State of a match between two parties.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 3> enumeratorNotes(Velmora::of<MatchStatus>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderType>) {
    return {"OrderType", "Kind of order.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 8> enumeratorNotes(Velmora::of<OrderType>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RejectReason>) {
    return {"RejectReason", "Why an order was rejected.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 28> enumeratorNotes(Velmora::of<RejectReason>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CancelRejectReason>) {
    return {"CancelRejectReason", "Why a cancellation or modification was rejected.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 20> enumeratorNotes(Velmora::of<CancelRejectReason>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<APIResult>) {
    return {"APIResult", "Outcome of a call to the client API.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 37> enumeratorNotes(Velmora::of<APIResult>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ExchEventType>) {
    return {"ExchEventType", "Event reported by an exchange.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 10> enumeratorNotes(Velmora::of<ExchEventType>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<APIType>) {
    return {"APIType", "Part of the client API that a subscription belongs to.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 5> enumeratorNotes(Velmora::of<APIType>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<APITest>) {
    return {"APITest", "Test that a client can ask the server to run.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 10> enumeratorNotes(Velmora::of<APITest>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<UserType>) {
    return {"UserType", "Kind of user.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 7> enumeratorNotes(Velmora::of<UserType>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<StatType>) {
    return {"StatType", "Kind of statistics counter.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 1> enumeratorNotes(Velmora::of<StatType>) {
    return {{
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<Direction>) {
    return {"Direction", "Direction of traffic.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 2> enumeratorNotes(Velmora::of<Direction>) {
    return {{
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ReplayStatus>) {
    return {"ReplayStatus", "How a replay ended.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 2> enumeratorNotes(Velmora::of<ReplayStatus>) {
    return {{
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CancelReason>) {
    return {"CancelReason", "Why an order was canceled.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 4> enumeratorNotes(Velmora::of<CancelReason>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<DateRolloverType>) {
    return {"DateRolloverType", "Which date rolls over.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 2> enumeratorNotes(Velmora::of<DateRolloverType>) {
    return {{
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ConnectionResponse>) {
    return {"ConnectionResponse", "Outcome of a client's connect.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 8> enumeratorNotes(Velmora::of<ConnectionResponse>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CcyType>) {
    return {"CcyType", "Currency of a pair that amounts are in.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 3> enumeratorNotes(Velmora::of<CcyType>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RiskStatus>) {
    return {"RiskStatus", "Outcome of a change of risk data.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 12> enumeratorNotes(Velmora::of<RiskStatus>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<LockStatus>) {
    return {"LockStatus", "Outcome of locking or unlocking a user.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 2> enumeratorNotes(Velmora::of<LockStatus>) {
    return {{
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<InstrumentType>) {
    return {"InstrumentType", "Kind of instrument.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 5> enumeratorNotes(Velmora::of<InstrumentType>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<StandardTenor>) {
    return {"StandardTenor", "Settlement tenor.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 26> enumeratorNotes(Velmora::of<StandardTenor>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<FeedFlag>) {
    return {"FeedFlag", "What a feed is able to do.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 9> enumeratorNotes(Velmora::of<FeedFlag>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SubscriptionStatus>) {
    return {"SubscriptionStatus", "State of a subscription.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 4> enumeratorNotes(Velmora::of<SubscriptionStatus>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<QuoteRequestRejectReason>) {
    return {"QuoteRequestRejectReason", "Why a quote request was rejected.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 8> enumeratorNotes(Velmora::of<QuoteRequestRejectReason>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<QuoteStatus>) {
    return {"QuoteStatus", "State of a quote.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 4> enumeratorNotes(Velmora::of<QuoteStatus>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeStatus>) {
    return {"TradeStatus", "State of a trade awaiting acknowledgement.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 3> enumeratorNotes(Velmora::of<TradeStatus>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<QuoteCancelType>) {
    return {"QuoteCancelType", "Which quotes a cancellation covers.", ""};
}
constexpr std::array<Velmora::EnumeratorNotes, 3> enumeratorNotes(Velmora::of<QuoteCancelType>) {
    return {{
        {.doc = ""},
        {.doc = ""},
        {.doc = ""},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<KeyValuePair>) {
    return {"KeyValuePair", "A named parameter.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<KeyValuePair>) {
    return {{
        {.doc = "name of the parameter"},
        {.doc = "value of the parameter"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<IDNamePair>) {
    return {"IDNamePair", "An identifier and the name it stands for.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<IDNamePair>) {
    return {{
        {.doc = "identifier that the name belongs to"},
        {.doc = "name for people"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<FeedMarketID>) {
    return {"FeedMarketID", "A market and the feed it belongs to; the market comes first.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<FeedMarketID>) {
    return {{
        {.doc = "identifier of the market within its feed"},
        {.doc = "identifier of the feed"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MDEntry>) {
    return {"MDEntry", "One level, trade or quote of a market's book.", ""};
}
constexpr std::array<Velmora::FieldNotes, 9> fieldNotes(Velmora::of<MDEntry>) {
    return {{
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "smallest amount that may be executed, fixed point; the peers agree on the scale"},
        {.doc = "what happens to the entry in the book"},
        {.doc = "what the entry stands for"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "where the entry comes from, as a plain number that is never validated"},
        {.doc = "number of orders behind the entry"},
        {.doc = "parts that the entry is made of, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<StatCounter>) {
    return {"StatCounter", "One statistics counter of a thread.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<StatCounter>) {
    return {{
        {.doc = "kind of counter"},
        {.doc = "name of the counter"},
        {.doc = "value of the counter"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<Heartbeat>) {
    return {"Heartbeat", "Sign of life of the API server, with the feeds that are up.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<Heartbeat>) {
    return {{
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "identifiers of the feeds that are up"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ReplayDone>) {
    return {"ReplayDone", "End of a replay on one feed.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<ReplayDone>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "how the replay ended"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<UserSequenceID>) {
    return {"UserSequenceID", "The last sequence number of one user.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<UserSequenceID>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "number of the report in its sequence"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MarketView>) {
    return {"MarketView", "A market's book, or the changes to it, with the times of its way.", ""};
}
constexpr std::array<Velmora::FieldNotes, 9> fieldNotes(Velmora::of<MarketView>) {
    return {{
        {.doc = "market and feed concerned"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "64-bit time of arrival; the peers agree on the unit", .station = "arrival"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time at which the data was enhanced; the peers agree on the unit", .station = "enhanced"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "whether this is snapshot data"},
        {.doc = "the entries, in order"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SubmitOrder>) {
    return {"SubmitOrder", "A new order from a client.", ""};
}
constexpr std::array<Velmora::FieldNotes, 16> fieldNotes(Velmora::of<SubmitOrder>) {
    return {{
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "kind of order"},
        {.doc = "how long the order stays in force"},
        {.doc = "price that triggers a stop order, fixed point; the peers agree on the scale"},
        {.doc = "largest amount shown to the market, fixed point; the peers agree on the scale"},
        {.doc = "smallest amount that may be executed, fixed point; the peers agree on the scale"},
        {.doc = "further parameters of the order"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CancelOrder>) {
    return {"CancelOrder", "A client's cancellation of one order.", ""};
}
constexpr std::array<Velmora::FieldNotes, 8> fieldNotes(Velmora::of<CancelOrder>) {
    return {{
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the cancellation", .identifies = "cancel"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CancelAllOrder>) {
    return {"CancelAllOrder", "A client's cancellation of all orders of a feed.", ""};
}
constexpr std::array<Velmora::FieldNotes, 6> fieldNotes(Velmora::of<CancelAllOrder>) {
    return {{
        {.doc = "the client's own identifier of the cancellation", .identifies = "cancel"},
        {.doc = "whether only monitored orders are meant"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "identifier of the feed"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ModifyOrder>) {
    return {"ModifyOrder", "A client's change of a live order.", ""};
}
constexpr std::array<Velmora::FieldNotes, 15> fieldNotes(Velmora::of<ModifyOrder>) {
    return {{
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the client's own identifier of the order as modified", .identifies = "clientOrder"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "smallest amount that may be executed, fixed point; the peers agree on the scale"},
        {.doc = "kind of order"},
        {.doc = "how long the order stays in force"},
        {.doc = "further text, opaque"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderReceived>) {
    return {"OrderReceived", "Report that the system received an order.", ""};
}
constexpr std::array<Velmora::FieldNotes, 13> fieldNotes(Velmora::of<OrderReceived>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "identifier of the trading model"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "kind of order"},
        {.doc = "how long the order stays in force"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderSubmitted>) {
    return {"OrderSubmitted", "Report that an order is live at the exchange.", ""};
}
constexpr std::array<Velmora::FieldNotes, 13> fieldNotes(Velmora::of<OrderSubmitted>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the exchange's identifier of the order", .identifies = "exchangeOrder"},
        {.doc = "identifier of the trading model"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "state of the order"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderRejected>) {
    return {"OrderRejected", "Report that an order was rejected.", ""};
}
constexpr std::array<Velmora::FieldNotes, 12> fieldNotes(Velmora::of<OrderRejected>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "identifier of the trading model"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "why the order was rejected"},
        {.doc = "explanation for people"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderCanceled>) {
    return {"OrderCanceled", "Report that an order was canceled.", ""};
}
constexpr std::array<Velmora::FieldNotes, 17> fieldNotes(Velmora::of<OrderCanceled>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the exchange's identifier of the order", .identifies = "exchangeOrder"},
        {.doc = "the client's own identifier of the cancellation", .identifies = "cancel"},
        {.doc = "identifier of the trading model"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "why the order was canceled"},
        {.doc = "explanation for people"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderDone>) {
    return {"OrderDone", "Report that an order is finished.", ""};
}
constexpr std::array<Velmora::FieldNotes, 11> fieldNotes(Velmora::of<OrderDone>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the exchange's identifier of the order", .identifies = "exchangeOrder"},
        {.doc = "identifier of the trading model"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderCancelRejected>) {
    return {"OrderCancelRejected", "Report that a cancellation or modification was rejected.", ""};
}
constexpr std::array<Velmora::FieldNotes, 14> fieldNotes(Velmora::of<OrderCancelRejected>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the exchange's identifier of the order", .identifies = "exchangeOrder"},
        {.doc = "the client's own identifier of the cancellation", .identifies = "cancel"},
        {.doc = "identifier of the trading model"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "why the cancellation or modification was rejected"},
        {.doc = "explanation for people"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeCapture>) {
    return {"TradeCapture", "Report of one execution.", ""};
}
constexpr std::array<Velmora::FieldNotes, 22> fieldNotes(Velmora::of<TradeCapture>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the exchange's identifier of the order", .identifies = "exchangeOrder"},
        {.doc = "the exchange's identifier of the pending trade"},
        {.doc = "the exchange's identifier of the trade"},
        {.doc = "identifier of the trading model"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the feed of origin"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "whether this party took liquidity"},
        {.doc = "state of the match"},
        {.doc = "identifier of the other party"},
        {.doc = "64-bit trade date; the peers agree on the calendar meaning"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<DropCopy>) {
    return {"DropCopy", "Copy of an execution for those who follow a customer's trading.", ""};
}
constexpr std::array<Velmora::FieldNotes, 32> fieldNotes(Velmora::of<DropCopy>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the customer's identifier of the client"},
        {.doc = "the customer's identifier of the account"},
        {.doc = "name of the user"},
        {.doc = "identifier of the firm on whose behalf this is done"},
        {.doc = "identifier within the firm on whose behalf this is done"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the exchange's identifier of the order", .identifies = "exchangeOrder"},
        {.doc = "the exchange's identifier of the pending trade"},
        {.doc = "the exchange's identifier of the trade"},
        {.doc = "identifier of the trading model"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the feed of origin"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "original price, fixed point; the peers agree on the scale"},
        {.doc = "amount in the base currency, fixed point; the peers agree on the scale"},
        {.doc = "the base currency"},
        {.doc = "amount in the counter currency, fixed point; the peers agree on the scale"},
        {.doc = "the counter currency"},
        {.doc = "amount in the settlement currency, fixed point; the peers agree on the scale"},
        {.doc = "the settlement currency"},
        {.doc = "whether this party took liquidity"},
        {.doc = "state of the match"},
        {.doc = "identifier of the other party"},
        {.doc = "64-bit trade date; the peers agree on the calendar meaning"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<EventReport>) {
    return {"EventReport", "An event at the exchange.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<EventReport>) {
    return {{
        {.doc = "what happened"},
        {.doc = "market and feed concerned"},
        {.doc = "details of the event, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<DateRollover>) {
    return {"DateRollover", "New trade and settlement dates of a market.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<DateRollover>) {
    return {{
        {.doc = "market and feed concerned"},
        {.doc = "64-bit trade date; the peers agree on the calendar meaning"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MarketRate>) {
    return {"MarketRate", "Rate of a market, for the evaluation of limits.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<MarketRate>) {
    return {{
        {.doc = "identifier of the market within its feed"},
        {.doc = "64-bit settlement time; the peers agree on the unit"},
        {.doc = "rate, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeLimit>) {
    return {"TradeLimit", "Trading limits of a group of users on a market.", ""};
}
constexpr std::array<Velmora::FieldNotes, 15> fieldNotes(Velmora::of<TradeLimit>) {
    return {{
        {.doc = "identifier of the limit"},
        {.doc = "name of the group of users"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "currency that the amounts are in"},
        {.doc = "amount of the NOP limit, as text"},
        {.doc = "amount of the DSL limit, as text"},
        {.doc = "amount of the position limit, as text"},
        {.doc = "amount of the pending limit, as text"},
        {.doc = "amount of the single limit, as text"},
        {.doc = "cap of the throttle, as text"},
        {.doc = "name of the administrator"},
        {.doc = "whom to contact, as text"},
        {.doc = "level of the NOP limit that calls for a warning, in percent"},
        {.doc = "level of the DSL limit that calls for a warning, in percent"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeState>) {
    return {"TradeState", "How much of its limits a group of users has taken up on a market.", ""};
}
constexpr std::array<Velmora::FieldNotes, 12> fieldNotes(Velmora::of<TradeState>) {
    return {{
        {.doc = "name of the group of users"},
        {.doc = "amount bought in the base currency, as text"},
        {.doc = "amount sold in the base currency, as text"},
        {.doc = "amount bought in the counter currency, as text"},
        {.doc = "amount sold in the counter currency, as text"},
        {.doc = "amount of pending purchases in the base currency, as text"},
        {.doc = "amount of pending sales in the base currency, as text"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "currency that the amounts are in"},
        {.doc = "64-bit settlement time; the peers agree on the unit"},
        {.doc = "64-bit time of the last synchronisation; the peers agree on the unit"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeHierarchy>) {
    return {"TradeHierarchy", "A user and the groups the user belongs to.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<TradeHierarchy>) {
    return {{
        {.doc = "name of the user"},
        {.doc = "names of the groups that the user belongs to"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeLimitData>) {
    return {"TradeLimitData", "Limits, states and hierarchy of trading risk, whole or changed.", ""};
}
constexpr std::array<Velmora::FieldNotes, 7> fieldNotes(Velmora::of<TradeLimitData>) {
    return {{
        {.doc = "the client's own identifier of the data"},
        {.doc = "limits, one per entry"},
        {.doc = "states of use, one per entry"},
        {.doc = "users and their groups"},
        {.doc = "rates of the markets"},
        {.doc = "number of messages still to follow"},
        {.doc = "whether this is snapshot data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RiskLimitStatus>) {
    return {"RiskLimitStatus", "Outcome of a change of one limit.", ""};
}
constexpr std::array<Velmora::FieldNotes, 5> fieldNotes(Velmora::of<RiskLimitStatus>) {
    return {{
        {.doc = "name of the group of users"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "state reported"},
        {.doc = "explanation for people"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RiskUsageStatus>) {
    return {"RiskUsageStatus", "Outcome of a change of one user's use of a limit.", ""};
}
constexpr std::array<Velmora::FieldNotes, 6> fieldNotes(Velmora::of<RiskUsageStatus>) {
    return {{
        {.doc = "name of the user"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "state reported"},
        {.doc = "explanation for people"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RiskResponse>) {
    return {"RiskResponse", "Outcome of a request to change risk data.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<RiskResponse>) {
    return {{
        {.doc = "the client's own identifier of the request"},
        {.doc = "outcome per limit"},
        {.doc = "outcome per use of a limit"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<LockResponse>) {
    return {"LockResponse", "Outcome of a request to lock or unlock a user.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<LockResponse>) {
    return {{
        {.doc = "the client's own identifier of the request"},
        {.doc = "state reported"},
        {.doc = "explanation for people"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<LockUser>) {
    return {"LockUser", "Request to lock or unlock a user.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<LockUser>) {
    return {{
        {.doc = "the client's own identifier of the request"},
        {.doc = "whether the user is to be locked"},
        {.doc = "name of the user"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MemBusID>) {
    return {"MemBusID", "One incarnation of an application on the memory bus.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<MemBusID>) {
    return {{
        {.doc = "identifier of the application on the memory bus"},
        {.doc = "generation of the application"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<APIMarket>) {
    return {"APIMarket", "Configuration of one market of a feed.", ""};
}
constexpr std::array<Velmora::FieldNotes, 7> fieldNotes(Velmora::of<APIMarket>) {
    return {{
        {.doc = "identifier of the market within its feed"},
        {.doc = "name for people"},
        {.doc = "identifier of the feed"},
        {.doc = "large price increment, fixed point; the peers agree on the scale"},
        {.doc = "smallest price increment, fixed point; the peers agree on the scale"},
        {.doc = "kind of instrument"},
        {.doc = "settlement tenor of the market; a tenor code, not a date"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<APIFeed>) {
    return {"APIFeed", "Configuration of one feed and its markets.", ""};
}
constexpr std::array<Velmora::FieldNotes, 5> fieldNotes(Velmora::of<APIFeed>) {
    return {{
        {.doc = "name for people"},
        {.doc = "name of the exchange"},
        {.doc = "identifier of the feed"},
        {.doc = "flags of the feed"},
        {.doc = "the markets of the feed"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<Subscription>) {
    return {"Subscription", "What a client subscribes to: a part of the API on one market.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<Subscription>) {
    return {{
        {.doc = "part of the API concerned"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SubscriptionEvent>) {
    return {"SubscriptionEvent", "A change in the state of a subscription.", ""};
}
constexpr std::array<Velmora::FieldNotes, 5> fieldNotes(Velmora::of<SubscriptionEvent>) {
    return {{
        {.doc = "the subscription"},
        {.doc = "the client's own identifier of the subscription"},
        {.doc = "state reported"},
        {.doc = "explanation for people"},
        {.doc = "whether the subscription is sticky"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<QuoteRequest>) {
    return {"QuoteRequest", "A request for quotes.", ""};
}
constexpr std::array<Velmora::FieldNotes, 12> fieldNotes(Velmora::of<QuoteRequest>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "whether the amount is specified in the base currency"},
        {.doc = "identifier of the quote request", .identifies = "quoteRequest"},
        {.doc = "identifier of the market data stream"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RejectQuoteRequest>) {
    return {"RejectQuoteRequest", "Refusal of a quote request.", ""};
}
constexpr std::array<Velmora::FieldNotes, 9> fieldNotes(Velmora::of<RejectQuoteRequest>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "identifier of the quote request", .identifies = "quoteRequest"},
        {.doc = "why the request was rejected"},
        {.doc = "explanation for people"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CancelQuote>) {
    return {"CancelQuote", "Withdrawal of quotes.", ""};
}
constexpr std::array<Velmora::FieldNotes, 9> fieldNotes(Velmora::of<CancelQuote>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "identifier of the quote request", .identifies = "quoteRequest"},
        {.doc = "identifier of the quote", .identifies = "quote"},
        {.doc = "which quotes are withdrawn"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<QLQuote>) {
    return {"QLQuote", "One quote of a set.", ""};
}
constexpr std::array<Velmora::FieldNotes, 5> fieldNotes(Velmora::of<QLQuote>) {
    return {{
        {.doc = "identifier of the quote", .identifies = "quote"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<QLMassQuote>) {
    return {"QLMassQuote", "A set of quotes for one quote request.", ""};
}
constexpr std::array<Velmora::FieldNotes, 10> fieldNotes(Velmora::of<QLMassQuote>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "identifier of the quote request", .identifies = "quoteRequest"},
        {.doc = "identifier of the market data stream"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
        {.doc = "the quotes"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MassQuoteAck>) {
    return {"MassQuoteAck", "Answer to a set of quotes.", ""};
}
constexpr std::array<Velmora::FieldNotes, 9> fieldNotes(Velmora::of<MassQuoteAck>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "identifier of the quote request", .identifies = "quoteRequest"},
        {.doc = "state reported"},
        {.doc = "explanation for people"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<NewOrder>) {
    return {"NewOrder", "An order of the new-order interface, to be accepted or rejected.", ""};
}
constexpr std::array<Velmora::FieldNotes, 21> fieldNotes(Velmora::of<NewOrder>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "whether the amount is specified in the base currency"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "kind of order"},
        {.doc = "identifier of the party"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "identifier of the execution", .identifies = "execution"},
        {.doc = "identifier of the quote", .identifies = "quote"},
        {.doc = "identifier of the quote request", .identifies = "quoteRequest"},
        {.doc = "64-bit trade date; the peers agree on the calendar meaning"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the exchange; the peers agree on the unit", .station = "exchange"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RejectOrder>) {
    return {"RejectOrder", "Rejection of an order of the new-order interface.", ""};
}
constexpr std::array<Velmora::FieldNotes, 18> fieldNotes(Velmora::of<RejectOrder>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "whether the amount is specified in the base currency"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "identifier of the party"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "identifier of the execution", .identifies = "execution"},
        {.doc = "identifier of the quote request", .identifies = "quoteRequest"},
        {.doc = "64-bit trade date; the peers agree on the calendar meaning"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
        {.doc = "explanation for people"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<AcceptOrder>) {
    return {"AcceptOrder", "Acceptance of an order of the new-order interface.", ""};
}
constexpr std::array<Velmora::FieldNotes, 17> fieldNotes(Velmora::of<AcceptOrder>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "whether the amount is specified in the base currency"},
        {.doc = "side of the order, quote or entry"},
        {.doc = "amount, fixed point; the peers agree on the scale"},
        {.doc = "price, fixed point; the peers agree on the scale"},
        {.doc = "identifier of the party"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "the system's identifier of the order", .identifies = "order"},
        {.doc = "identifier of the execution", .identifies = "execution"},
        {.doc = "identifier of the quote request", .identifies = "quoteRequest"},
        {.doc = "64-bit trade date; the peers agree on the calendar meaning"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeCaptureAck>) {
    return {"TradeCaptureAck", "Acknowledgement of a reported trade.", ""};
}
constexpr std::array<Velmora::FieldNotes, 10> fieldNotes(Velmora::of<TradeCaptureAck>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "identifier of the execution", .identifies = "execution"},
        {.doc = "state reported"},
        {.doc = "explanation for people"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderTimeout>) {
    return {"OrderTimeout", "Notice that an order timed out.", ""};
}
constexpr std::array<Velmora::FieldNotes, 8> fieldNotes(Velmora::of<OrderTimeout>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the market within its feed"},
        {.doc = "the client's own identifier of the order", .identifies = "clientOrder"},
        {.doc = "64-bit time stamped at the feed handler; the peers agree on the unit", .station = "handler"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "further detail, as text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<LogMessage>) {
    return {"LogMessage", "A log entry of a server; its texts travel enciphered.", ""};
}
constexpr std::array<Velmora::FieldNotes, 8> fieldNotes(Velmora::of<LogMessage>) {
    return {{
        {.doc = "64-bit time of the event; the peers agree on the unit"},
        {.doc = "name of the thread"},
        {.doc = "severity"},
        {.doc = "name of the logger"},
        {.doc = "source file"},
        {.doc = "line in the source file"},
        {.doc = "function in the source file"},
        {.doc = "text of the entry"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<StatCounterMessage>) {
    return {"StatCounterMessage", "Statistics counters of one thread.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<StatCounterMessage>) {
    return {{
        {.doc = "name of the thread"},
        {.doc = "the counters"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ExchangeMessage>) {
    return {"ExchangeMessage", "Raw data that arrived from an exchange.", ""};
}
constexpr std::array<Velmora::FieldNotes, 5> fieldNotes(Velmora::of<ExchangeMessage>) {
    return {{
        {.doc = "64-bit time of arrival; the peers agree on the unit", .station = "arrival"},
        {.doc = "identifier of the feed"},
        {.doc = "number of the connection"},
        {.doc = "continuation mark, opaque"},
        {.doc = "the data as it arrived"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<StatTimeoutMessage>) {
    return {"StatTimeoutMessage", "Tells a server task that it is time to report statistics.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<StatTimeoutMessage>) {
    return {{
        {.doc = "unused"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TaskInitializationMessage>) {
    return {"TaskInitializationMessage", "Tells a server task to initialise itself.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<TaskInitializationMessage>) {
    return {{
        {.doc = "unused"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MDActivityCheckMessage>) {
    return {"MDActivityCheckMessage", "Tells a server task to check that market data comes in.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<MDActivityCheckMessage>) {
    return {{
        {.doc = "unused"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CallbackMessage>) {
    return {"CallbackMessage", "Hands a call over to another server task.", ""};
}
constexpr std::array<Velmora::FieldNotes, 5> fieldNotes(Velmora::of<CallbackMessage>) {
    return {{
        {.doc = "what to do, opaque"},
        {.doc = "first argument, opaque"},
        {.doc = "second argument, opaque"},
        {.doc = "third argument, opaque"},
        {.doc = "fourth argument, opaque"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TimerMessage>) {
    return {"TimerMessage", "Tells a server task that a timer expired.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<TimerMessage>) {
    return {{
        {.doc = "identifier of the timer"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SubscriptionTimeoutMessage>) {
    return {"SubscriptionTimeoutMessage", "Tells a server task that a subscription timed out.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<SubscriptionTimeoutMessage>) {
    return {{
        {.doc = "identifier of the request that timed out"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<HeartbeatTimerMessage>) {
    return {"HeartbeatTimerMessage", "Tells a server task that a heartbeat is due.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<HeartbeatTimerMessage>) {
    return {{
        {.doc = "interval in nanoseconds"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<VersionMessage>) {
    return {"VersionMessage", "Version and build of a peer.", ""};
}
constexpr std::array<Velmora::FieldNotes, 25> fieldNotes(Velmora::of<VersionMessage>) {
    return {{
        {.doc = "name of the program"},
        {.doc = "major number of the version"},
        {.doc = "minor number of the version"},
        {.doc = "micro number of the version"},
        {.doc = "suffix of the version"},
        {.doc = "revision of the sources"},
        {.doc = "date of the commit"},
        {.doc = "branch of the sources"},
        {.doc = "build"},
        {.doc = "machine architecture"},
        {.doc = "host of the build"},
        {.doc = "date of the build"},
        {.doc = "time of the build"},
        {.doc = "compiler of the build"},
        {.doc = "definitions of the build, opaque"},
        {.doc = "user who made the build"},
        {.doc = "distribution of the operating system"},
        {.doc = "platform of the build"},
        {.doc = "signature of the protocol, opaque"},
        {.doc = "size of synchronisation, opaque"},
        {.doc = "not interpreted"},
        {.doc = "not interpreted"},
        {.doc = "not interpreted"},
        {.doc = "not interpreted"},
        {.doc = "not interpreted"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ProtocolDefinitionMessage>) {
    return {"ProtocolDefinitionMessage", "The protocol definition that a peer speaks.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<ProtocolDefinitionMessage>) {
    return {{
        {.doc = "the protocol definition"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<PadMessage>) {
    return {"PadMessage", "Filler bytes.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<PadMessage>) {
    return {{
        {.doc = "filler; written with a fixed two-byte length, read with a varint one"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RuThereMessage>) {
    return {"RuThereMessage", "Asks the peer whether it is still there.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<RuThereMessage>) {
    return {{
        {.doc = "sequence number of the probe"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ImHereMessage>) {
    return {"ImHereMessage", "Answers a peer that asked whether this side is still there.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<ImHereMessage>) {
    return {{
        {.doc = "sequence number of the probe"},
        {.doc = "64-bit time stamped at the API client; the peers agree on the unit", .station = "client"},
        {.doc = "64-bit time stamped at the API server; the peers agree on the unit", .station = "server"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<HeartbeatMessage>) {
    return {"HeartbeatMessage", "Heartbeat of the API server to its clients.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<HeartbeatMessage>) {
    return {{
        {.doc = "the business data"},
        {.doc = "sequence number of the feed"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ReplayMessage>) {
    return {"ReplayMessage", "Asks for a range of reports again.", ""};
}
constexpr std::array<Velmora::FieldNotes, 4> fieldNotes(Velmora::of<ReplayMessage>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "first number asked for"},
        {.doc = "last number asked for"},
        {.doc = "identifier of the user", .identifies = "user"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ReplayDoneMessage>) {
    return {"ReplayDoneMessage", "Says that a replay has ended.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<ReplayDoneMessage>) {
    return {{
        {.doc = "the business data"},
        {.doc = "identifier of the user", .identifies = "user"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<LastSequenceIDMessage>) {
    return {"LastSequenceIDMessage", "Last sequence numbers of a feed, for recovery.", ""};
}
constexpr std::array<Velmora::FieldNotes, 4> fieldNotes(Velmora::of<LastSequenceIDMessage>) {
    return {{
        {.doc = "last sequence number of each user"},
        {.doc = "identifier of the feed"},
        {.doc = "identifier of the feed of origin"},
        {.doc = "number of the report in its sequence"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<BatchRegisterMessage>) {
    return {"BatchRegisterMessage", "Registers a batch of markets on a feed.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<BatchRegisterMessage>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifiers of the markets of the batch"},
        {.doc = "identifier of the batch definition"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<BatchUnregisterMessage>) {
    return {"BatchUnregisterMessage", "Takes back the registration of a batch of markets.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<BatchUnregisterMessage>) {
    return {{
        {.doc = "identifier of the batch definition"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SecurityInfoMessage>) {
    return {"SecurityInfoMessage", "Settlement date of a market.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<SecurityInfoMessage>) {
    return {{
        {.doc = "market and feed concerned"},
        {.doc = "64-bit settlement date; the peers agree on the calendar meaning"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<BatchesCompletedMessage>) {
    return {"BatchesCompletedMessage", "Says which batches are complete.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<BatchesCompletedMessage>) {
    return {{
        {.doc = "identifiers of the completed batches"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MktDataMessage>) {
    return {"MktDataMessage", "Market data of one market.", ""};
}
constexpr std::array<Velmora::FieldNotes, 4> fieldNotes(Velmora::of<MktDataMessage>) {
    return {{
        {.doc = "the market's view"},
        {.doc = "markets and feeds of the batch"},
        {.doc = "identifier of the batch"},
        {.doc = "identifier of the stream"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SubmitOrderMessage>) {
    return {"SubmitOrderMessage", "Submits an order.", ""};
}
constexpr std::array<Velmora::FieldNotes, 5> fieldNotes(Velmora::of<SubmitOrderMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "identifier of the quote", .identifies = "quote"},
        {.doc = "identifier of the firm on whose behalf this is done"},
        {.doc = "the business data"},
        {.doc = "identifier of the trading model"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CancelOrderMessage>) {
    return {"CancelOrderMessage", "Cancels an order.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<CancelOrderMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CancelAllOrderMessage>) {
    return {"CancelAllOrderMessage", "Cancels all orders of a feed.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<CancelAllOrderMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ModifyOrderMessage>) {
    return {"ModifyOrderMessage", "Modifies an order.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<ModifyOrderMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderReceivedMessage>) {
    return {"OrderReceivedMessage", "Reports that an order was received.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<OrderReceivedMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderSubmittedMessage>) {
    return {"OrderSubmittedMessage", "Reports that an order is live at the exchange.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<OrderSubmittedMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderRejectedMessage>) {
    return {"OrderRejectedMessage", "Reports that an order was rejected.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<OrderRejectedMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderCanceledMessage>) {
    return {"OrderCanceledMessage", "Reports that an order was canceled.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<OrderCanceledMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderDoneMessage>) {
    return {"OrderDoneMessage", "Reports that an order is finished.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<OrderDoneMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderCancelRejectedMessage>) {
    return {"OrderCancelRejectedMessage", "Reports that a cancellation or change was rejected.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<OrderCancelRejectedMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeCaptureMessage>) {
    return {"TradeCaptureMessage", "Reports an execution.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<TradeCaptureMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "original price, fixed point; the peers agree on the scale"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<DropCopyMessage>) {
    return {"DropCopyMessage", "Delivers the copy of an execution.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<DropCopyMessage>) {
    return {{
        {.doc = "the business data"},
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "sequence number at the feed of origin"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<EventReportMessage>) {
    return {"EventReportMessage", "Reports an event at the exchange.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<EventReportMessage>) {
    return {{
        {.doc = "number of the report in its sequence"},
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<DateRolloverMessage>) {
    return {"DateRolloverMessage", "Announces new trade and settlement dates.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<DateRolloverMessage>) {
    return {{
        {.doc = "the business data"},
        {.doc = "whether everyone gets it"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ClientConnectMessage>) {
    return {"ClientConnectMessage", "Asks to open a client's session.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<ClientConnectMessage>) {
    return {{
        {.doc = "name of the user"},
        {.doc = "the user's password", .isSecret = true},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ClientDisconnectMessage>) {
    return {"ClientDisconnectMessage", "Says that a client's session has ended.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<ClientDisconnectMessage>) {
    return {{
        {.doc = "identifier of the client's session", .identifies = "session"},
        {.doc = "64-bit time of the disconnect; the peers agree on the unit"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ConnectResponseMessage>) {
    return {"ConnectResponseMessage", "Answers a client's connect.", ""};
}
constexpr std::array<Velmora::FieldNotes, 4> fieldNotes(Velmora::of<ConnectResponseMessage>) {
    return {{
        {.doc = "outcome of the connect"},
        {.doc = "explanation for people"},
        {.doc = "identifier of the client's session", .identifies = "session"},
        {.doc = "kind of user"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<InternalClientInfoMessage>) {
    return {"InternalClientInfoMessage", "Tells the servers about a connected client.", ""};
}
constexpr std::array<Velmora::FieldNotes, 6> fieldNotes(Velmora::of<InternalClientInfoMessage>) {
    return {{
        {.doc = "identifier of the user", .identifies = "user"},
        {.doc = "identifier of the client's session", .identifies = "session"},
        {.doc = "64-bit time of the connect; the peers agree on the unit"},
        {.doc = "programming language of the client's API"},
        {.doc = "version of the client's API"},
        {.doc = "network address of the client"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeLimitDataMessage>) {
    return {"TradeLimitDataMessage", "Delivers risk limits and states.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<TradeLimitDataMessage>) {
    return {{
        {.doc = "the business data"},
        {.doc = "identifiers and names of the groups"},
        {.doc = "identifiers and names of the users"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RiskResponseMessage>) {
    return {"RiskResponseMessage", "Answers a request to change risk data.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<RiskResponseMessage>) {
    return {{
        {.doc = "the business data"},
        {.doc = "number of messages still to follow"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<LockResponseMessage>) {
    return {"LockResponseMessage", "Answers a request to lock or unlock a user.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<LockResponseMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<LockUserMessage>) {
    return {"LockUserMessage", "Asks to lock or unlock a user.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<LockUserMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MemBusHeartbeatMessage>) {
    return {"MemBusHeartbeatMessage", "Sign of life of an application on the memory bus.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<MemBusHeartbeatMessage>) {
    return {{
        {.doc = "the application"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MemBusConnectMessage>) {
    return {"MemBusConnectMessage", "Says that an application joined the memory bus.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<MemBusConnectMessage>) {
    return {{
        {.doc = "the application"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MemBusDisconnectMessage>) {
    return {"MemBusDisconnectMessage", "Says that an application left the memory bus.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<MemBusDisconnectMessage>) {
    return {{
        {.doc = "the application"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<ConfigMessage>) {
    return {"ConfigMessage", "Delivers the configured feeds and markets.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<ConfigMessage>) {
    return {{
        {.doc = "the configured feeds"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SubscribeMessage>) {
    return {"SubscribeMessage", "Asks for a subscription.", ""};
}
constexpr std::array<Velmora::FieldNotes, 5> fieldNotes(Velmora::of<SubscribeMessage>) {
    return {{
        {.doc = "the subscription"},
        {.doc = "the client's own identifier of the subscription"},
        {.doc = "whether the subscription is sticky"},
        {.doc = "identifier of the client's session", .identifies = "session"},
        {.doc = "64-bit time of the event; the peers agree on the unit"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<UnsubscribeMessage>) {
    return {"UnsubscribeMessage", "Ends a subscription.", ""};
}
constexpr std::array<Velmora::FieldNotes, 4> fieldNotes(Velmora::of<UnsubscribeMessage>) {
    return {{
        {.doc = "the subscription"},
        {.doc = "the client's own identifier of the subscription"},
        {.doc = "identifier of the client's session", .identifies = "session"},
        {.doc = "64-bit time of the event; the peers agree on the unit"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<UnsubscribeAllMessage>) {
    return {"UnsubscribeAllMessage", "Ends all subscriptions of a client.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<UnsubscribeAllMessage>) {
    return {{
        {.doc = "the client's own identifier of the subscription"},
        {.doc = "identifier of the client's session", .identifies = "session"},
        {.doc = "64-bit time of the event; the peers agree on the unit"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SubscriptionEventMessage>) {
    return {"SubscriptionEventMessage", "Reports a change in the state of a subscription.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<SubscriptionEventMessage>) {
    return {{
        {.doc = "the business data"},
        {.doc = "identifier of the client's session", .identifies = "session"},
        {.doc = "64-bit time of the event; the peers agree on the unit"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<SubscriptionTimerMessage>) {
    return {"SubscriptionTimerMessage", "Tells a server task that a subscription's timer expired.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<SubscriptionTimerMessage>) {
    return {{
        {.doc = "the subscription"},
        {.doc = "what to do, opaque"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<InsertLogMessage>) {
    return {"InsertLogMessage", "Asks a server to write a log entry.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<InsertLogMessage>) {
    return {{
        {.doc = "text of the entry"},
        {.doc = "severity"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TestMessage>) {
    return {"TestMessage", "Asks a server to run a test.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<TestMessage>) {
    return {{
        {.doc = "the test to run"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RequestSnapshotMessage>) {
    return {"RequestSnapshotMessage", "Asks for snapshots of markets.", ""};
}
constexpr std::array<Velmora::FieldNotes, 3> fieldNotes(Velmora::of<RequestSnapshotMessage>) {
    return {{
        {.doc = "identifier of the feed"},
        {.doc = "identifiers of the markets"},
        {.doc = "identifier of the stream"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RequestMessage>) {
    return {"RequestMessage", "Asks for a message about a market.", ""};
}
constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<RequestMessage>) {
    return {{
        {.doc = "market and feed concerned"},
        {.doc = "identifier of the message asked for; only its low byte travels"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<QuoteRequestMessage>) {
    return {"QuoteRequestMessage", "Asks for quotes.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<QuoteRequestMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RejectQuoteRequestMessage>) {
    return {"RejectQuoteRequestMessage", "Refuses a quote request.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<RejectQuoteRequestMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<CancelQuoteMessage>) {
    return {"CancelQuoteMessage", "Withdraws quotes.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<CancelQuoteMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MassQuoteMessage>) {
    return {"MassQuoteMessage", "Delivers a set of quotes.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<MassQuoteMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<MassQuoteAckMessage>) {
    return {"MassQuoteAckMessage", "Answers a set of quotes.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<MassQuoteAckMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<NewOrderMessage>) {
    return {"NewOrderMessage", "Hands over an order to be accepted or rejected.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<NewOrderMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<RejectOrderMessage>) {
    return {"RejectOrderMessage", "Rejects an order that was handed over.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<RejectOrderMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<AcceptOrderMessage>) {
    return {"AcceptOrderMessage", "Accepts an order that was handed over.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<AcceptOrderMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<TradeCaptureAckMessage>) {
    return {"TradeCaptureAckMessage", "Acknowledges a reported trade.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<TradeCaptureAckMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<OrderTimeoutMessage>) {
    return {"OrderTimeoutMessage", "Says that an order timed out.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<OrderTimeoutMessage>) {
    return {{
        {.doc = "the business data"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<JsonFromServer>) {
    return {"JsonFromServer", "JSON text from a server, passed through unparsed.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<JsonFromServer>) {
    return {{
        {.doc = "the JSON text"},
    }};
}

constexpr Velmora::TypeNotes typeNotes(Velmora::of<JsonFromClient>) {
    return {"JsonFromClient", "JSON text from a client, passed through unparsed.", ""};
}
constexpr std::array<Velmora::FieldNotes, 1> fieldNotes(Velmora::of<JsonFromClient>) {
    return {{
        {.doc = "the JSON text"},
    }};
}

} // namespace Quillon
