// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
//
// What the protocol consists of, as lists to walk: the enumerators of an enumeration, the fields of a record or
// message, those of them that are secret (for types that have some), and the types themselves. Every entry is one call
// of `visit`; where that returns a bool, false ends the walk, and the list returns whether it was walked to its end.
// For the sources that work over all types; the others need QLProtocol.h only.
#pragma once

#include "Backend/Common/Inline.h"
#include "Backend/Velmora/FieldList.h"
#include "generated/QLProtocol/QLProtocol.h"

namespace Quillon {

// Names of enumerators that some headers define as macros.
#pragma push_macro("CANCELED")
#undef CANCELED
#pragma push_macro("DELETE")
#undef DELETE
#pragma push_macro("DISABLED")
#undef DISABLED
#pragma push_macro("ERROR")
#undef ERROR
#pragma push_macro("NA")
#undef NA
#pragma push_macro("NONE")
#undef NONE
#pragma push_macro("OK")
#undef OK
#pragma push_macro("ON")
#undef ON
#pragma push_macro("OTHER")
#undef OTHER
#pragma push_macro("SUCCESS")
#undef SUCCESS
#pragma push_macro("SWAP")
#undef SWAP
#pragma push_macro("TIMEOUT")
#undef TIMEOUT

template <class Visit>
constexpr void enumerators(Velmora::of<LogLevel>, Visit&& visit) {
    visit("LOGMESSAGE", LogLevel::LOGMESSAGE);
    visit("LOGCRITICAL", LogLevel::LOGCRITICAL);
    visit("LOGERROR", LogLevel::LOGERROR);
    visit("LOGWARN", LogLevel::LOGWARN);
    visit("LOGINFO", LogLevel::LOGINFO);
    visit("LOGTRACE", LogLevel::LOGTRACE);
    visit("LOGDEBUG", LogLevel::LOGDEBUG);
}

template <class Visit>
constexpr void enumerators(Velmora::of<Side>, Visit&& visit) {
    visit("BID", Side::BID);
    visit("OFR", Side::OFR);
    visit("BOTH", Side::BOTH);
    visit("MIDPOINT", Side::MIDPOINT);
}

template <class Visit>
constexpr void enumerators(Velmora::of<Request>, Visit&& visit) {
    visit("SECURITYINFO", Request::SECURITYINFO);
}

template <class Visit>
constexpr void enumerators(Velmora::of<MDElement>, Visit&& visit) {
    visit("LEVEL", MDElement::LEVEL);
    visit("AMOUNT_CONS", MDElement::AMOUNT_CONS);
    visit("SPREAD_CONS", MDElement::SPREAD_CONS);
    visit("LOCAL_BEST", MDElement::LOCAL_BEST);
    visit("EXCHANGE_BEST", MDElement::EXCHANGE_BEST);
    visit("LAST_TRADE", MDElement::LAST_TRADE);
    visit("LAST_TRADE_NO_SIDE", MDElement::LAST_TRADE_NO_SIDE);
    visit("WORST_TRADE", MDElement::WORST_TRADE);
    visit("LEVEL_QUOTE", MDElement::LEVEL_QUOTE);
    visit("LEVEL_QUOTE_AMT_TIER", MDElement::LEVEL_QUOTE_AMT_TIER);
    visit("QUOTE", MDElement::QUOTE);
    visit("QUOTE_AMT_TIER", MDElement::QUOTE_AMT_TIER);
    visit("ORDER", MDElement::ORDER);
}

template <class Visit>
constexpr void enumerators(Velmora::of<MDSource>, Visit&& visit) {
    visit("MARKET_DATA", MDSource::MARKET_DATA);
    visit("OBSCURE", MDSource::OBSCURE);
    visit("ENHANCEMENT", MDSource::ENHANCEMENT);
    visit("QL_BOOK", MDSource::QL_BOOK);
}

template <class Visit>
constexpr void enumerators(Velmora::of<MDUpdateAction>, Visit&& visit) {
    visit("NEW", MDUpdateAction::NEW);
    visit("CHANGE", MDUpdateAction::CHANGE);
    visit("DELETE", MDUpdateAction::DELETE);
}

template <class Visit>
constexpr void enumerators(Velmora::of<OrderStatus>, Visit&& visit) {
    visit("PARTIALLY_FILLED", OrderStatus::PARTIALLY_FILLED);
    visit("FILLED", OrderStatus::FILLED);
    visit("ACCEPTED", OrderStatus::ACCEPTED);
}

template <class Visit>
constexpr void enumerators(Velmora::of<TimeInForce>, Visit&& visit) {
    visit("DAY", TimeInForce::DAY);
    visit("GTC", TimeInForce::GTC);
    visit("IOC", TimeInForce::IOC);
    visit("FOK", TimeInForce::FOK);
}

template <class Visit>
constexpr void enumerators(Velmora::of<MatchStatus>, Visit&& visit) {
    visit("PENDING", MatchStatus::PENDING);
    visit("DONE", MatchStatus::DONE);
    visit("ERROR", MatchStatus::ERROR);
}

template <class Visit>
constexpr void enumerators(Velmora::of<OrderType>, Visit&& visit) {
    visit("MARKET", OrderType::MARKET);
    visit("LIMIT", OrderType::LIMIT);
    visit("STOP", OrderType::STOP);
    visit("STOPLIMIT", OrderType::STOPLIMIT);
    visit("MARKETLIMIT", OrderType::MARKETLIMIT);
    visit("PREVIOUSLY_QUOTED", OrderType::PREVIOUSLY_QUOTED);
    visit("VWAP_SWEEP", OrderType::VWAP_SWEEP);
    visit("PREVIOUSLY_QUOTED_AMT_TIER", OrderType::PREVIOUSLY_QUOTED_AMT_TIER);
}

template <class Visit>
constexpr void enumerators(Velmora::of<RejectReason>, Visit&& visit) {
    visit("NOT_SUBSCRIBED", RejectReason::NOT_SUBSCRIBED);
    visit("UNKNOWN_SYMBOL", RejectReason::UNKNOWN_SYMBOL);
    visit("EXCHANGE_NOT_AVAILABLE", RejectReason::EXCHANGE_NOT_AVAILABLE);
    visit("CREDIT_LOW", RejectReason::CREDIT_LOW);
    visit("DUPLICATE_ORDER", RejectReason::DUPLICATE_ORDER);
    visit("INCORRECT_QUANTITY", RejectReason::INCORRECT_QUANTITY);
    visit("INCORRECT_PRICE", RejectReason::INCORRECT_PRICE);
    visit("INVALID_ORDER", RejectReason::INVALID_ORDER);
    visit("INVALID_FEED", RejectReason::INVALID_FEED);
    visit("INVALID_MARKET", RejectReason::INVALID_MARKET);
    visit("FEED_DOWN", RejectReason::FEED_DOWN);
    visit("INVALID_ORDER_TYPE", RejectReason::INVALID_ORDER_TYPE);
    visit("INVALID_TIME_IN_FORCE", RejectReason::INVALID_TIME_IN_FORCE);
    visit("INVALID_CLORDID", RejectReason::INVALID_CLORDID);
    visit("UNKNOWN_ORDER", RejectReason::UNKNOWN_ORDER);
    visit("TOO_MANY_ORDER_SUBMITS", RejectReason::TOO_MANY_ORDER_SUBMITS);
    visit("RESEND_REQUESTED", RejectReason::RESEND_REQUESTED);
    visit("MARKET_NOT_ACTIVE", RejectReason::MARKET_NOT_ACTIVE);
    visit("LOCKED_USER", RejectReason::LOCKED_USER);
    visit("EXCEEDS_NOP_LIMIT", RejectReason::EXCEEDS_NOP_LIMIT);
    visit("EXCEEDS_DSL_LIMIT", RejectReason::EXCEEDS_DSL_LIMIT);
    visit("EXCEEDS_POSITION_LIMIT", RejectReason::EXCEEDS_POSITION_LIMIT);
    visit("EXCEEDS_PENDING_LIMIT", RejectReason::EXCEEDS_PENDING_LIMIT);
    visit("EXCEEDS_SINGLE_LIMIT", RejectReason::EXCEEDS_SINGLE_LIMIT);
    visit("TRADE_LIMIT_RESTRICTION", RejectReason::TRADE_LIMIT_RESTRICTION);
    visit("INVALID_MODEL", RejectReason::INVALID_MODEL);
    visit("INVALID_MIN_AMOUNT", RejectReason::INVALID_MIN_AMOUNT);
    visit("NOT_APPLICABLE", RejectReason::NOT_APPLICABLE);
}

template <class Visit>
constexpr void enumerators(Velmora::of<CancelRejectReason>, Visit&& visit) {
    visit("TOO_LATE_TO_CANCEL", CancelRejectReason::TOO_LATE_TO_CANCEL);
    visit("UNKNOWN_ORDER", CancelRejectReason::UNKNOWN_ORDER);
    visit("DUPLICATE_CLORDID_RECEIVED", CancelRejectReason::DUPLICATE_CLORDID_RECEIVED);
    visit("INVALID_CANCEL", CancelRejectReason::INVALID_CANCEL);
    visit("OTHER", CancelRejectReason::OTHER);
    visit("ORDER_NOT_ACTIVE", CancelRejectReason::ORDER_NOT_ACTIVE);
    visit("INVALID_FEED", CancelRejectReason::INVALID_FEED);
    visit("INVALID_MARKET", CancelRejectReason::INVALID_MARKET);
    visit("NOT_IMPLEMENTED", CancelRejectReason::NOT_IMPLEMENTED);
    visit("FEED_DOWN", CancelRejectReason::FEED_DOWN);
    visit("TOO_MANY_ORDER_SUBMITS", CancelRejectReason::TOO_MANY_ORDER_SUBMITS);
    visit("RESEND_REQUESTED", CancelRejectReason::RESEND_REQUESTED);
    visit("LOCKED_USER", CancelRejectReason::LOCKED_USER);
    visit("EXCEEDS_NOP_LIMIT", CancelRejectReason::EXCEEDS_NOP_LIMIT);
    visit("EXCEEDS_DSL_LIMIT", CancelRejectReason::EXCEEDS_DSL_LIMIT);
    visit("EXCEEDS_POSITION_LIMIT", CancelRejectReason::EXCEEDS_POSITION_LIMIT);
    visit("EXCEEDS_PENDING_LIMIT", CancelRejectReason::EXCEEDS_PENDING_LIMIT);
    visit("EXCEEDS_SINGLE_LIMIT", CancelRejectReason::EXCEEDS_SINGLE_LIMIT);
    visit("TRADE_LIMIT_RESTRICTION", CancelRejectReason::TRADE_LIMIT_RESTRICTION);
    visit("NOT_APPLICABLE", CancelRejectReason::NOT_APPLICABLE);
}

template <class Visit>
constexpr void enumerators(Velmora::of<APIResult>, Visit&& visit) {
    visit("OK", APIResult::OK);
    visit("COULD_NOT_CONNECT", APIResult::COULD_NOT_CONNECT);
    visit("TIMEOUT", APIResult::TIMEOUT);
    visit("BUFFER_FULL", APIResult::BUFFER_FULL);
    visit("COULD_NOT_OPEN", APIResult::COULD_NOT_OPEN);
    visit("SOCKERR_DNS", APIResult::SOCKERR_DNS);
    visit("SOCKERR_CREATE", APIResult::SOCKERR_CREATE);
    visit("SOCKERR_CONNECT", APIResult::SOCKERR_CONNECT);
    visit("SOCKERR_CLOSED", APIResult::SOCKERR_CLOSED);
    visit("SOCKERR_READING", APIResult::SOCKERR_READING);
    visit("SOCKERR_WRITING", APIResult::SOCKERR_WRITING);
    visit("NOT_CONNECTED", APIResult::NOT_CONNECTED);
    visit("NOT_RUNNING", APIResult::NOT_RUNNING);
    visit("IS_CONNECTED", APIResult::IS_CONNECTED);
    visit("IS_RUNNING", APIResult::IS_RUNNING);
    visit("IS_STOPPING", APIResult::IS_STOPPING);
    visit("EXCEPTION_THROWN", APIResult::EXCEPTION_THROWN);
    visit("PROTOCOL_ERROR", APIResult::PROTOCOL_ERROR);
    visit("INCOMPATIBLE_PROTOCOL", APIResult::INCOMPATIBLE_PROTOCOL);
    visit("INVALID_USER", APIResult::INVALID_USER);
    visit("INVALID_PASSWORD", APIResult::INVALID_PASSWORD);
    visit("USER_ALREADY_CONNECTED", APIResult::USER_ALREADY_CONNECTED);
    visit("COULD_NOT_LOGIN", APIResult::COULD_NOT_LOGIN);
    visit("INVALID_FEED", APIResult::INVALID_FEED);
    visit("INVALID_MARKET", APIResult::INVALID_MARKET);
    visit("INVALID_ORDERID", APIResult::INVALID_ORDERID);
    visit("INVALID_BATCHID", APIResult::INVALID_BATCHID);
    visit("INVALID_CLIENT_ORDERID", APIResult::INVALID_CLIENT_ORDERID);
    visit("DUPLICATE_CLIENT_ORDERID", APIResult::DUPLICATE_CLIENT_ORDERID);
    visit("INVALID_MARKETDATA_FEED", APIResult::INVALID_MARKETDATA_FEED);
    visit("INVALID_TRADING_FEED", APIResult::INVALID_TRADING_FEED);
    visit("USER_LOCKED", APIResult::USER_LOCKED);
    visit("SYSTEM_LOCKED", APIResult::SYSTEM_LOCKED);
    visit("ADMIN_HANDLER_FAULT", APIResult::ADMIN_HANDLER_FAULT);
    visit("INVALID_PARAMETER", APIResult::INVALID_PARAMETER);
    visit("NOT_IMPLEMENTED", APIResult::NOT_IMPLEMENTED);
    visit("NOT_APPLICABLE", APIResult::NOT_APPLICABLE);
}

template <class Visit>
constexpr void enumerators(Velmora::of<ExchEventType>, Visit&& visit) {
    visit("CREDITAVAILABLE", ExchEventType::CREDITAVAILABLE);
    visit("CREDITLOW", ExchEventType::CREDITLOW);
    visit("CREDITEXHAUSTED", ExchEventType::CREDITEXHAUSTED);
    visit("TRADEDATEROLLOVER", ExchEventType::TRADEDATEROLLOVER);
    visit("VALUEDATEROLLOVER", ExchEventType::VALUEDATEROLLOVER);
    visit("TRADING_OPEN", ExchEventType::TRADING_OPEN);
    visit("TRADING_CLOSED", ExchEventType::TRADING_CLOSED);
    visit("ERROR", ExchEventType::ERROR);
    visit("PRE_OPEN", ExchEventType::PRE_OPEN);
    visit("NO_CANCEL", ExchEventType::NO_CANCEL);
}

template <class Visit>
constexpr void enumerators(Velmora::of<APIType>, Visit&& visit) {
    visit("MARKETDATA", APIType::MARKETDATA);
    visit("TRADING", APIType::TRADING);
    visit("DROPCOPY", APIType::DROPCOPY);
    visit("MARKET_MAKER_PRICING", APIType::MARKET_MAKER_PRICING);
    visit("MARKET_MAKER_TRADING", APIType::MARKET_MAKER_TRADING);
}

template <class Visit>
constexpr void enumerators(Velmora::of<APITest>, Visit&& visit) {
    visit("NONE", APITest::NONE);
    visit("INVOKE_EVENT_REPORT", APITest::INVOKE_EVENT_REPORT);
    visit("FORCE_LOCAL_DISCONNECT", APITest::FORCE_LOCAL_DISCONNECT);
    visit("FORCE_REMOTE_DISCONNECT", APITest::FORCE_REMOTE_DISCONNECT);
    visit("TEST_FULL_BUFFER", APITest::TEST_FULL_BUFFER);
    visit("FORCE_DISCONNECT_FEEDS", APITest::FORCE_DISCONNECT_FEEDS);
    visit("EXTRA_TEST2", APITest::EXTRA_TEST2);
    visit("EXTRA_TEST3", APITest::EXTRA_TEST3);
    visit("EXTRA_TEST4", APITest::EXTRA_TEST4);
    visit("EXTRA_TEST5", APITest::EXTRA_TEST5);
}

template <class Visit>
constexpr void enumerators(Velmora::of<UserType>, Visit&& visit) {
    visit("INTERNAL", UserType::INTERNAL);
    visit("REGULAR", UserType::REGULAR);
    visit("ADMIN", UserType::ADMIN);
    visit("MONITORED", UserType::MONITORED);
    visit("MODEL", UserType::MODEL);
    visit("MARKET_MAKER", UserType::MARKET_MAKER);
    visit("SUPER", UserType::SUPER);
}

template <class Visit>
constexpr void enumerators(Velmora::of<StatType>, Visit&& visit) {
    visit("QUEUE_SIZE", StatType::QUEUE_SIZE);
}

template <class Visit>
constexpr void enumerators(Velmora::of<Direction>, Visit&& visit) {
    visit("INCOMING", Direction::INCOMING);
    visit("OUTGOING", Direction::OUTGOING);
}

template <class Visit>
constexpr void enumerators(Velmora::of<ReplayStatus>, Visit&& visit) {
    visit("DONE", ReplayStatus::DONE);
    visit("REJECTED", ReplayStatus::REJECTED);
}

template <class Visit>
constexpr void enumerators(Velmora::of<CancelReason>, Visit&& visit) {
    visit("CANCEL_REQUESTED", CancelReason::CANCEL_REQUESTED);
    visit("BY_EXCHANGE", CancelReason::BY_EXCHANGE);
    visit("ORDER_MODIFIED", CancelReason::ORDER_MODIFIED);
    visit("BY_ADMIN", CancelReason::BY_ADMIN);
}

template <class Visit>
constexpr void enumerators(Velmora::of<DateRolloverType>, Visit&& visit) {
    visit("TRADE", DateRolloverType::TRADE);
    visit("SETTLE", DateRolloverType::SETTLE);
}

template <class Visit>
constexpr void enumerators(Velmora::of<ConnectionResponse>, Visit&& visit) {
    visit("SUCCESS", ConnectionResponse::SUCCESS);
    visit("FAILED_INVALID_USER", ConnectionResponse::FAILED_INVALID_USER);
    visit("FAILED_INVALID_PASSWORD", ConnectionResponse::FAILED_INVALID_PASSWORD);
    visit("FAILED_USER_ALREADY_CONNECTED", ConnectionResponse::FAILED_USER_ALREADY_CONNECTED);
    visit("FAILED_OTHER", ConnectionResponse::FAILED_OTHER);
    visit("FAILED_INCOMPATIBLE_PROTOCOL", ConnectionResponse::FAILED_INCOMPATIBLE_PROTOCOL);
    visit("FAILED_USER_LOCKED", ConnectionResponse::FAILED_USER_LOCKED);
    visit("FAILED_SYSTEM_LOCKED", ConnectionResponse::FAILED_SYSTEM_LOCKED);
}

template <class Visit>
constexpr void enumerators(Velmora::of<CcyType>, Visit&& visit) {
    visit("MARKET", CcyType::MARKET);
    visit("BASE", CcyType::BASE);
    visit("COUNTER", CcyType::COUNTER);
}

template <class Visit>
constexpr void enumerators(Velmora::of<RiskStatus>, Visit&& visit) {
    visit("SUCCESS", RiskStatus::SUCCESS);
    visit("INVALID_PERMISSIONS", RiskStatus::INVALID_PERMISSIONS);
    visit("INVALID_GROUP", RiskStatus::INVALID_GROUP);
    visit("INVALID_USER", RiskStatus::INVALID_USER);
    visit("INVALID_ADMIN", RiskStatus::INVALID_ADMIN);
    visit("INVALID_FEED", RiskStatus::INVALID_FEED);
    visit("INVALID_MARKET", RiskStatus::INVALID_MARKET);
    visit("INVALID_SETTLDATE", RiskStatus::INVALID_SETTLDATE);
    visit("INVALID_AMOUNT", RiskStatus::INVALID_AMOUNT);
    visit("INVALID_DROPCOPY_SEQID", RiskStatus::INVALID_DROPCOPY_SEQID);
    visit("INVALID_DROPCOPY_FEED", RiskStatus::INVALID_DROPCOPY_FEED);
    visit("MISSING_RISK_DATA", RiskStatus::MISSING_RISK_DATA);
}

template <class Visit>
constexpr void enumerators(Velmora::of<LockStatus>, Visit&& visit) {
    visit("SUCCESS", LockStatus::SUCCESS);
    visit("ERROR", LockStatus::ERROR);
}

template <class Visit>
constexpr void enumerators(Velmora::of<InstrumentType>, Visit&& visit) {
    visit("SPOT", InstrumentType::SPOT);
    visit("FUTURE", InstrumentType::FUTURE);
    visit("FORWARD", InstrumentType::FORWARD);
    visit("NDF", InstrumentType::NDF);
    visit("SWAP", InstrumentType::SWAP);
}

template <class Visit>
constexpr void enumerators(Velmora::of<StandardTenor>, Visit&& visit) {
    visit("NA", StandardTenor::NA);
    visit("TOD", StandardTenor::TOD);
    visit("TOM", StandardTenor::TOM);
    visit("ON", StandardTenor::ON);
    visit("TN", StandardTenor::TN);
    visit("SP", StandardTenor::SP);
    visit("SN", StandardTenor::SN);
    visit("W1", StandardTenor::W1);
    visit("W2", StandardTenor::W2);
    visit("W3", StandardTenor::W3);
    visit("M1", StandardTenor::M1);
    visit("M2", StandardTenor::M2);
    visit("M3", StandardTenor::M3);
    visit("M4", StandardTenor::M4);
    visit("M5", StandardTenor::M5);
    visit("M6", StandardTenor::M6);
    visit("M7", StandardTenor::M7);
    visit("M8", StandardTenor::M8);
    visit("M9", StandardTenor::M9);
    visit("M10", StandardTenor::M10);
    visit("M11", StandardTenor::M11);
    visit("Y1", StandardTenor::Y1);
    visit("M15", StandardTenor::M15);
    visit("M18", StandardTenor::M18);
    visit("M21", StandardTenor::M21);
    visit("Y2", StandardTenor::Y2);
}

template <class Visit>
constexpr void enumerators(Velmora::of<FeedFlag>, Visit&& visit) {
    visit("MARKET_DATA", FeedFlag::MARKET_DATA);
    visit("TRADING", FeedFlag::TRADING);
    visit("BATCHING", FeedFlag::BATCHING);
    visit("DROPCOPY", FeedFlag::DROPCOPY);
    visit("GTC", FeedFlag::GTC);
    visit("IOC", FeedFlag::IOC);
    visit("FOK", FeedFlag::FOK);
    visit("AGGREGATE", FeedFlag::AGGREGATE);
    visit("MARKET_MAKING", FeedFlag::MARKET_MAKING);
}

template <class Visit>
constexpr void enumerators(Velmora::of<SubscriptionStatus>, Visit&& visit) {
    visit("INVALID", SubscriptionStatus::INVALID);
    visit("ENABLED", SubscriptionStatus::ENABLED);
    visit("DISABLED", SubscriptionStatus::DISABLED);
    visit("ERROR", SubscriptionStatus::ERROR);
}

template <class Visit>
constexpr void enumerators(Velmora::of<QuoteRequestRejectReason>, Visit&& visit) {
    visit("OTHER", QuoteRequestRejectReason::OTHER);
    visit("UNKNOWN_SYMBOL", QuoteRequestRejectReason::UNKNOWN_SYMBOL);
    visit("NOT_ALLOWED", QuoteRequestRejectReason::NOT_ALLOWED);
    visit("PASS", QuoteRequestRejectReason::PASS);
    visit("EXCEEDS_LIMIT", QuoteRequestRejectReason::EXCEEDS_LIMIT);
    visit("NOT_AVAILABLE", QuoteRequestRejectReason::NOT_AVAILABLE);
    visit("INVALID_SETTLDATE", QuoteRequestRejectReason::INVALID_SETTLDATE);
    visit("INVALID_AMOUNT", QuoteRequestRejectReason::INVALID_AMOUNT);
}

template <class Visit>
constexpr void enumerators(Velmora::of<QuoteStatus>, Visit&& visit) {
    visit("EXPIRED", QuoteStatus::EXPIRED);
    visit("REJECTED", QuoteStatus::REJECTED);
    visit("CANCELED", QuoteStatus::CANCELED);
    visit("NOT_APPLICABLE", QuoteStatus::NOT_APPLICABLE);
}

template <class Visit>
constexpr void enumerators(Velmora::of<TradeStatus>, Visit&& visit) {
    visit("REJECTED", TradeStatus::REJECTED);
    visit("CANCEL_REQUESTED", TradeStatus::CANCEL_REQUESTED);
    visit("NOT_APPLICABLE", TradeStatus::NOT_APPLICABLE);
}

template <class Visit>
constexpr void enumerators(Velmora::of<QuoteCancelType>, Visit&& visit) {
    visit("CANCEL_FOR_SYMBOL", QuoteCancelType::CANCEL_FOR_SYMBOL);
    visit("CANCEL_ALL_QUOTES", QuoteCancelType::CANCEL_ALL_QUOTES);
    visit("CANCEL_QUOTE_SPECIFIED_IN_QUOTE_ID", QuoteCancelType::CANCEL_QUOTE_SPECIFIED_IN_QUOTE_ID);
}

#pragma pop_macro("CANCELED")
#pragma pop_macro("DELETE")
#pragma pop_macro("DISABLED")
#pragma pop_macro("ERROR")
#pragma pop_macro("NA")
#pragma pop_macro("NONE")
#pragma pop_macro("OK")
#pragma pop_macro("ON")
#pragma pop_macro("OTHER")
#pragma pop_macro("SUCCESS")
#pragma pop_macro("SWAP")
#pragma pop_macro("TIMEOUT")

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<KeyValuePair>, Visit&& visit) {
    return visit("key", &KeyValuePair::key, Velmora::plain)
           && visit("value", &KeyValuePair::value, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<IDNamePair>, Visit&& visit) {
    return visit("id", &IDNamePair::id, Velmora::plain)
           && visit("name", &IDNamePair::name, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<FeedMarketID>, Visit&& visit) {
    return visit("marketID", &FeedMarketID::marketID, Velmora::plain)
           && visit("feedID", &FeedMarketID::feedID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MDEntry>, Visit&& visit) {
    return visit("price", &MDEntry::price, Velmora::price)
           && visit("amount", &MDEntry::amount, Velmora::price)
           && visit("minAmount", &MDEntry::minAmount, Velmora::price)
           && visit("updateAction", &MDEntry::updateAction, Velmora::plain)
           && visit("element", &MDEntry::element, Velmora::plain)
           && visit("side", &MDEntry::side, Velmora::plain)
           && visit("source", &MDEntry::source, Velmora::plain)
           && visit("numberOfOrders", &MDEntry::numberOfOrders, Velmora::plain)
           && visit("components", &MDEntry::components, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<StatCounter>, Visit&& visit) {
    return visit("type", &StatCounter::type, Velmora::plain)
           && visit("name", &StatCounter::name, Velmora::plain)
           && visit("value", &StatCounter::value, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<Heartbeat>, Visit&& visit) {
    return visit("timeApiServer", &Heartbeat::timeApiServer, Velmora::plain)
           && visit("activeFeeds", &Heartbeat::activeFeeds, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ReplayDone>, Visit&& visit) {
    return visit("feedID", &ReplayDone::feedID, Velmora::plain)
           && visit("replayStatus", &ReplayDone::replayStatus, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<UserSequenceID>, Visit&& visit) {
    return visit("userID", &UserSequenceID::userID, Velmora::plain)
           && visit("sequenceID", &UserSequenceID::sequenceID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MarketView>, Visit&& visit) {
    return visit("fmID", &MarketView::fmID, Velmora::plain)
           && visit("timeExchange", &MarketView::timeExchange, Velmora::plain)
           && visit("timeArrival", &MarketView::timeArrival, Velmora::plain)
           && visit("timeHandler", &MarketView::timeHandler, Velmora::plain)
           && visit("timeEnhanced", &MarketView::timeEnhanced, Velmora::plain)
           && visit("timeApiServer", &MarketView::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &MarketView::timeApiClient, Velmora::plain)
           && visit("isSnapshot", &MarketView::isSnapshot, Velmora::plain)
           && visit("mdEntryList", &MarketView::mdEntryList, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<SubmitOrder>, Visit&& visit) {
    return visit("orderID", &SubmitOrder::orderID, Velmora::plain)
           && visit("clOrdID", &SubmitOrder::clOrdID, Velmora::plain)
           && visit("timeApiClient", &SubmitOrder::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &SubmitOrder::timeApiServer, Velmora::plain)
           && visit("timeHandler", &SubmitOrder::timeHandler, Velmora::plain)
           && visit("feedID", &SubmitOrder::feedID, Velmora::plain)
           && visit("marketID", &SubmitOrder::marketID, Velmora::plain)
           && visit("side", &SubmitOrder::side, Velmora::plain)
           && visit("amount", &SubmitOrder::amount, Velmora::price)
           && visit("price", &SubmitOrder::price, Velmora::price)
           && visit("ordType", &SubmitOrder::ordType, Velmora::plain)
           && visit("timeInForce", &SubmitOrder::timeInForce, Velmora::plain)
           && visit("stopPrice", &SubmitOrder::stopPrice, Velmora::price)
           && visit("maxShow", &SubmitOrder::maxShow, Velmora::price)
           && visit("minAmount", &SubmitOrder::minAmount, Velmora::price)
           && visit("parameters", &SubmitOrder::parameters, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<CancelOrder>, Visit&& visit) {
    return visit("orderID", &CancelOrder::orderID, Velmora::plain)
           && visit("cxlID", &CancelOrder::cxlID, Velmora::plain)
           && visit("feedID", &CancelOrder::feedID, Velmora::plain)
           && visit("marketID", &CancelOrder::marketID, Velmora::plain)
           && visit("clOrdID", &CancelOrder::clOrdID, Velmora::plain)
           && visit("timeApiClient", &CancelOrder::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &CancelOrder::timeApiServer, Velmora::plain)
           && visit("timeHandler", &CancelOrder::timeHandler, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<CancelAllOrder>, Visit&& visit) {
    return visit("cxlID", &CancelAllOrder::cxlID, Velmora::plain)
           && visit("monitoredOnly", &CancelAllOrder::monitoredOnly, Velmora::plain)
           && visit("timeApiClient", &CancelAllOrder::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &CancelAllOrder::timeApiServer, Velmora::plain)
           && visit("timeHandler", &CancelAllOrder::timeHandler, Velmora::plain)
           && visit("feedID", &CancelAllOrder::feedID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ModifyOrder>, Visit&& visit) {
    return visit("orderID", &ModifyOrder::orderID, Velmora::plain)
           && visit("clOrdID", &ModifyOrder::clOrdID, Velmora::plain)
           && visit("clNewID", &ModifyOrder::clNewID, Velmora::plain)
           && visit("timeApiClient", &ModifyOrder::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &ModifyOrder::timeApiServer, Velmora::plain)
           && visit("timeHandler", &ModifyOrder::timeHandler, Velmora::plain)
           && visit("feedID", &ModifyOrder::feedID, Velmora::plain)
           && visit("marketID", &ModifyOrder::marketID, Velmora::plain)
           && visit("side", &ModifyOrder::side, Velmora::plain)
           && visit("amount", &ModifyOrder::amount, Velmora::price)
           && visit("price", &ModifyOrder::price, Velmora::price)
           && visit("minAmount", &ModifyOrder::minAmount, Velmora::price)
           && visit("ordType", &ModifyOrder::ordType, Velmora::plain)
           && visit("timeInForce", &ModifyOrder::timeInForce, Velmora::plain)
           && visit("extra", &ModifyOrder::extra, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderReceived>, Visit&& visit) {
    return visit("sequenceID", &OrderReceived::sequenceID, Velmora::plain)
           && visit("orderID", &OrderReceived::orderID, Velmora::plain)
           && visit("clOrdID", &OrderReceived::clOrdID, Velmora::plain)
           && visit("modelID", &OrderReceived::modelID, Velmora::plain)
           && visit("timeApiServer", &OrderReceived::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &OrderReceived::timeApiClient, Velmora::plain)
           && visit("feedID", &OrderReceived::feedID, Velmora::plain)
           && visit("marketID", &OrderReceived::marketID, Velmora::plain)
           && visit("side", &OrderReceived::side, Velmora::plain)
           && visit("amount", &OrderReceived::amount, Velmora::price)
           && visit("price", &OrderReceived::price, Velmora::price)
           && visit("ordType", &OrderReceived::ordType, Velmora::plain)
           && visit("timeInForce", &OrderReceived::timeInForce, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderSubmitted>, Visit&& visit) {
    return visit("sequenceID", &OrderSubmitted::sequenceID, Velmora::plain)
           && visit("orderID", &OrderSubmitted::orderID, Velmora::plain)
           && visit("clOrdID", &OrderSubmitted::clOrdID, Velmora::plain)
           && visit("exOrdID", &OrderSubmitted::exOrdID, Velmora::plain)
           && visit("modelID", &OrderSubmitted::modelID, Velmora::plain)
           && visit("amount", &OrderSubmitted::amount, Velmora::price)
           && visit("ordStatus", &OrderSubmitted::ordStatus, Velmora::plain)
           && visit("timeExchange", &OrderSubmitted::timeExchange, Velmora::plain)
           && visit("timeHandler", &OrderSubmitted::timeHandler, Velmora::plain)
           && visit("timeApiServer", &OrderSubmitted::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &OrderSubmitted::timeApiClient, Velmora::plain)
           && visit("feedID", &OrderSubmitted::feedID, Velmora::plain)
           && visit("marketID", &OrderSubmitted::marketID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderRejected>, Visit&& visit) {
    return visit("sequenceID", &OrderRejected::sequenceID, Velmora::plain)
           && visit("orderID", &OrderRejected::orderID, Velmora::plain)
           && visit("clOrdID", &OrderRejected::clOrdID, Velmora::plain)
           && visit("modelID", &OrderRejected::modelID, Velmora::plain)
           && visit("timeExchange", &OrderRejected::timeExchange, Velmora::plain)
           && visit("timeHandler", &OrderRejected::timeHandler, Velmora::plain)
           && visit("timeApiServer", &OrderRejected::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &OrderRejected::timeApiClient, Velmora::plain)
           && visit("feedID", &OrderRejected::feedID, Velmora::plain)
           && visit("marketID", &OrderRejected::marketID, Velmora::plain)
           && visit("reason", &OrderRejected::reason, Velmora::plain)
           && visit("text", &OrderRejected::text, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderCanceled>, Visit&& visit) {
    return visit("sequenceID", &OrderCanceled::sequenceID, Velmora::plain)
           && visit("orderID", &OrderCanceled::orderID, Velmora::plain)
           && visit("clOrdID", &OrderCanceled::clOrdID, Velmora::plain)
           && visit("exOrdID", &OrderCanceled::exOrdID, Velmora::plain)
           && visit("cxlID", &OrderCanceled::cxlID, Velmora::plain)
           && visit("modelID", &OrderCanceled::modelID, Velmora::plain)
           && visit("timeExchange", &OrderCanceled::timeExchange, Velmora::plain)
           && visit("timeHandler", &OrderCanceled::timeHandler, Velmora::plain)
           && visit("timeApiServer", &OrderCanceled::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &OrderCanceled::timeApiClient, Velmora::plain)
           && visit("feedID", &OrderCanceled::feedID, Velmora::plain)
           && visit("marketID", &OrderCanceled::marketID, Velmora::plain)
           && visit("side", &OrderCanceled::side, Velmora::plain)
           && visit("amount", &OrderCanceled::amount, Velmora::price)
           && visit("price", &OrderCanceled::price, Velmora::price)
           && visit("reason", &OrderCanceled::reason, Velmora::plain)
           && visit("text", &OrderCanceled::text, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderDone>, Visit&& visit) {
    return visit("sequenceID", &OrderDone::sequenceID, Velmora::plain)
           && visit("orderID", &OrderDone::orderID, Velmora::plain)
           && visit("clOrdID", &OrderDone::clOrdID, Velmora::plain)
           && visit("exOrdID", &OrderDone::exOrdID, Velmora::plain)
           && visit("modelID", &OrderDone::modelID, Velmora::plain)
           && visit("timeExchange", &OrderDone::timeExchange, Velmora::plain)
           && visit("timeHandler", &OrderDone::timeHandler, Velmora::plain)
           && visit("timeApiServer", &OrderDone::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &OrderDone::timeApiClient, Velmora::plain)
           && visit("feedID", &OrderDone::feedID, Velmora::plain)
           && visit("marketID", &OrderDone::marketID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderCancelRejected>, Visit&& visit) {
    return visit("sequenceID", &OrderCancelRejected::sequenceID, Velmora::plain)
           && visit("orderID", &OrderCancelRejected::orderID, Velmora::plain)
           && visit("clOrdID", &OrderCancelRejected::clOrdID, Velmora::plain)
           && visit("exOrdID", &OrderCancelRejected::exOrdID, Velmora::plain)
           && visit("cxlID", &OrderCancelRejected::cxlID, Velmora::plain)
           && visit("modelID", &OrderCancelRejected::modelID, Velmora::plain)
           && visit("timeExchange", &OrderCancelRejected::timeExchange, Velmora::plain)
           && visit("timeHandler", &OrderCancelRejected::timeHandler, Velmora::plain)
           && visit("timeApiServer", &OrderCancelRejected::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &OrderCancelRejected::timeApiClient, Velmora::plain)
           && visit("feedID", &OrderCancelRejected::feedID, Velmora::plain)
           && visit("marketID", &OrderCancelRejected::marketID, Velmora::plain)
           && visit("reason", &OrderCancelRejected::reason, Velmora::plain)
           && visit("text", &OrderCancelRejected::text, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeCapture>, Visit&& visit) {
    return visit("sequenceID", &TradeCapture::sequenceID, Velmora::plain)
           && visit("orderID", &TradeCapture::orderID, Velmora::plain)
           && visit("clOrdID", &TradeCapture::clOrdID, Velmora::plain)
           && visit("exOrdID", &TradeCapture::exOrdID, Velmora::plain)
           && visit("exPendingID", &TradeCapture::exPendingID, Velmora::plain)
           && visit("exTradeID", &TradeCapture::exTradeID, Velmora::plain)
           && visit("modelID", &TradeCapture::modelID, Velmora::plain)
           && visit("timeExchange", &TradeCapture::timeExchange, Velmora::plain)
           && visit("timeHandler", &TradeCapture::timeHandler, Velmora::plain)
           && visit("timeApiServer", &TradeCapture::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &TradeCapture::timeApiClient, Velmora::plain)
           && visit("feedID", &TradeCapture::feedID, Velmora::plain)
           && visit("origFeedID", &TradeCapture::origFeedID, Velmora::plain)
           && visit("marketID", &TradeCapture::marketID, Velmora::plain)
           && visit("side", &TradeCapture::side, Velmora::plain)
           && visit("amount", &TradeCapture::amount, Velmora::price)
           && visit("price", &TradeCapture::price, Velmora::price)
           && visit("isTaker", &TradeCapture::isTaker, Velmora::plain)
           && visit("matchStatus", &TradeCapture::matchStatus, Velmora::plain)
           && visit("counterPartyID", &TradeCapture::counterPartyID, Velmora::plain)
           && visit("tradeDate", &TradeCapture::tradeDate, Velmora::plain)
           && visit("settlDate", &TradeCapture::settlDate, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<DropCopy>, Visit&& visit) {
    return visit("sequenceID", &DropCopy::sequenceID, Velmora::plain)
           && visit("customerClientID", &DropCopy::customerClientID, Velmora::plain)
           && visit("customerAccountID", &DropCopy::customerAccountID, Velmora::plain)
           && visit("userName", &DropCopy::userName, Velmora::plain)
           && visit("onBehalfOfCompID", &DropCopy::onBehalfOfCompID, Velmora::plain)
           && visit("onBehalfOfSubID", &DropCopy::onBehalfOfSubID, Velmora::plain)
           && visit("clOrdID", &DropCopy::clOrdID, Velmora::plain)
           && visit("exOrdID", &DropCopy::exOrdID, Velmora::plain)
           && visit("exPendingID", &DropCopy::exPendingID, Velmora::plain)
           && visit("exTradeID", &DropCopy::exTradeID, Velmora::plain)
           && visit("modelID", &DropCopy::modelID, Velmora::plain)
           && visit("timeExchange", &DropCopy::timeExchange, Velmora::plain)
           && visit("timeHandler", &DropCopy::timeHandler, Velmora::plain)
           && visit("timeApiServer", &DropCopy::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &DropCopy::timeApiClient, Velmora::plain)
           && visit("feedID", &DropCopy::feedID, Velmora::plain)
           && visit("origFeedID", &DropCopy::origFeedID, Velmora::plain)
           && visit("marketID", &DropCopy::marketID, Velmora::plain)
           && visit("side", &DropCopy::side, Velmora::plain)
           && visit("price", &DropCopy::price, Velmora::price)
           && visit("origPrice", &DropCopy::origPrice, Velmora::price)
           && visit("baseCurrAmt", &DropCopy::baseCurrAmt, Velmora::price)
           && visit("baseCurrency", &DropCopy::baseCurrency, Velmora::plain)
           && visit("counterCurrAmt", &DropCopy::counterCurrAmt, Velmora::price)
           && visit("counterCurrency", &DropCopy::counterCurrency, Velmora::plain)
           && visit("settlCurrAmt", &DropCopy::settlCurrAmt, Velmora::price)
           && visit("settlCurrency", &DropCopy::settlCurrency, Velmora::plain)
           && visit("isTaker", &DropCopy::isTaker, Velmora::plain)
           && visit("matchStatus", &DropCopy::matchStatus, Velmora::plain)
           && visit("counterPartyID", &DropCopy::counterPartyID, Velmora::plain)
           && visit("tradeDate", &DropCopy::tradeDate, Velmora::plain)
           && visit("settlDate", &DropCopy::settlDate, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<EventReport>, Visit&& visit) {
    return visit("eventCode", &EventReport::eventCode, Velmora::plain)
           && visit("fmID", &EventReport::fmID, Velmora::plain)
           && visit("eventContents", &EventReport::eventContents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<DateRollover>, Visit&& visit) {
    return visit("fmID", &DateRollover::fmID, Velmora::plain)
           && visit("tradeDate", &DateRollover::tradeDate, Velmora::plain)
           && visit("settleDate", &DateRollover::settleDate, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MarketRate>, Visit&& visit) {
    return visit("marketID", &MarketRate::marketID, Velmora::plain)
           && visit("settlTime", &MarketRate::settlTime, Velmora::plain)
           && visit("rate", &MarketRate::rate, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeLimit>, Visit&& visit) {
    return visit("limitID", &TradeLimit::limitID, Velmora::plain)
           && visit("groupName", &TradeLimit::groupName, Velmora::plain)
           && visit("feedID", &TradeLimit::feedID, Velmora::plain)
           && visit("marketID", &TradeLimit::marketID, Velmora::plain)
           && visit("ccyType", &TradeLimit::ccyType, Velmora::plain)
           && visit("nopAmount", &TradeLimit::nopAmount, Velmora::plain)
           && visit("dslAmount", &TradeLimit::dslAmount, Velmora::plain)
           && visit("positionAmount", &TradeLimit::positionAmount, Velmora::plain)
           && visit("pendingAmount", &TradeLimit::pendingAmount, Velmora::plain)
           && visit("singleAmount", &TradeLimit::singleAmount, Velmora::plain)
           && visit("throttleCap", &TradeLimit::throttleCap, Velmora::plain)
           && visit("adminName", &TradeLimit::adminName, Velmora::plain)
           && visit("contacts", &TradeLimit::contacts, Velmora::plain)
           && visit("nopWarnPct", &TradeLimit::nopWarnPct, Velmora::plain)
           && visit("dslWarnPct", &TradeLimit::dslWarnPct, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeState>, Visit&& visit) {
    return visit("groupName", &TradeState::groupName, Velmora::plain)
           && visit("boughtBase", &TradeState::boughtBase, Velmora::plain)
           && visit("soldBase", &TradeState::soldBase, Velmora::plain)
           && visit("boughtCounter", &TradeState::boughtCounter, Velmora::plain)
           && visit("soldCounter", &TradeState::soldCounter, Velmora::plain)
           && visit("pendingBoughtBase", &TradeState::pendingBoughtBase, Velmora::plain)
           && visit("pendingSoldBase", &TradeState::pendingSoldBase, Velmora::plain)
           && visit("feedID", &TradeState::feedID, Velmora::plain)
           && visit("marketID", &TradeState::marketID, Velmora::plain)
           && visit("ccyType", &TradeState::ccyType, Velmora::plain)
           && visit("settlTime", &TradeState::settlTime, Velmora::plain)
           && visit("syncTime", &TradeState::syncTime, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeHierarchy>, Visit&& visit) {
    return visit("userName", &TradeHierarchy::userName, Velmora::plain)
           && visit("groupNames", &TradeHierarchy::groupNames, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeLimitData>, Visit&& visit) {
    return visit("clDataID", &TradeLimitData::clDataID, Velmora::plain)
           && visit("groupLimits", &TradeLimitData::groupLimits, Velmora::plain)
           && visit("groupStates", &TradeLimitData::groupStates, Velmora::plain)
           && visit("userHierarchy", &TradeLimitData::userHierarchy, Velmora::plain)
           && visit("marketRates", &TradeLimitData::marketRates, Velmora::plain)
           && visit("numRemainingMessages", &TradeLimitData::numRemainingMessages, Velmora::plain)
           && visit("isSnapshot", &TradeLimitData::isSnapshot, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RiskLimitStatus>, Visit&& visit) {
    return visit("group", &RiskLimitStatus::group, Velmora::plain)
           && visit("feedID", &RiskLimitStatus::feedID, Velmora::plain)
           && visit("marketID", &RiskLimitStatus::marketID, Velmora::plain)
           && visit("status", &RiskLimitStatus::status, Velmora::plain)
           && visit("reason", &RiskLimitStatus::reason, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RiskUsageStatus>, Visit&& visit) {
    return visit("user", &RiskUsageStatus::user, Velmora::plain)
           && visit("settlDate", &RiskUsageStatus::settlDate, Velmora::plain)
           && visit("feedID", &RiskUsageStatus::feedID, Velmora::plain)
           && visit("marketID", &RiskUsageStatus::marketID, Velmora::plain)
           && visit("status", &RiskUsageStatus::status, Velmora::plain)
           && visit("reason", &RiskUsageStatus::reason, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RiskResponse>, Visit&& visit) {
    return visit("clRequestID", &RiskResponse::clRequestID, Velmora::plain)
           && visit("limitStatus", &RiskResponse::limitStatus, Velmora::plain)
           && visit("usageStatus", &RiskResponse::usageStatus, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<LockResponse>, Visit&& visit) {
    return visit("clRequestID", &LockResponse::clRequestID, Velmora::plain)
           && visit("status", &LockResponse::status, Velmora::plain)
           && visit("reason", &LockResponse::reason, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<LockUser>, Visit&& visit) {
    return visit("clRequestID", &LockUser::clRequestID, Velmora::plain)
           && visit("locked", &LockUser::locked, Velmora::plain)
           && visit("username", &LockUser::username, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MemBusID>, Visit&& visit) {
    return visit("appID", &MemBusID::appID, Velmora::plain)
           && visit("generation", &MemBusID::generation, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<APIMarket>, Visit&& visit) {
    return visit("marketID", &APIMarket::marketID, Velmora::plain)
           && visit("name", &APIMarket::name, Velmora::plain)
           && visit("feedID", &APIMarket::feedID, Velmora::plain)
           && visit("bigIncrement", &APIMarket::bigIncrement, Velmora::price)
           && visit("minIncrement", &APIMarket::minIncrement, Velmora::price)
           && visit("instrumentType", &APIMarket::instrumentType, Velmora::plain)
           && visit("settlementDate", &APIMarket::settlementDate, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<APIFeed>, Visit&& visit) {
    return visit("name", &APIFeed::name, Velmora::plain)
           && visit("exchangeName", &APIFeed::exchangeName, Velmora::plain)
           && visit("feedID", &APIFeed::feedID, Velmora::plain)
           && visit("flags", &APIFeed::flags, Velmora::plain)
           && visit("marketList", &APIFeed::marketList, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<Subscription>, Visit&& visit) {
    return visit("apiType", &Subscription::apiType, Velmora::plain)
           && visit("feedID", &Subscription::feedID, Velmora::plain)
           && visit("marketID", &Subscription::marketID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<SubscriptionEvent>, Visit&& visit) {
    return visit("sub", &SubscriptionEvent::sub, Velmora::plain)
           && visit("clSubID", &SubscriptionEvent::clSubID, Velmora::plain)
           && visit("status", &SubscriptionEvent::status, Velmora::plain)
           && visit("reason", &SubscriptionEvent::reason, Velmora::plain)
           && visit("sticky", &SubscriptionEvent::sticky, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<QuoteRequest>, Visit&& visit) {
    return visit("feedID", &QuoteRequest::feedID, Velmora::plain)
           && visit("marketID", &QuoteRequest::marketID, Velmora::plain)
           && visit("isBaseSpecified", &QuoteRequest::isBaseSpecified, Velmora::plain)
           && visit("quoteReqID", &QuoteRequest::quoteReqID, Velmora::plain)
           && visit("mdStreamID", &QuoteRequest::mdStreamID, Velmora::plain)
           && visit("amount", &QuoteRequest::amount, Velmora::price)
           && visit("side", &QuoteRequest::side, Velmora::plain)
           && visit("settlDate", &QuoteRequest::settlDate, Velmora::plain)
           && visit("timeApiClient", &QuoteRequest::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &QuoteRequest::timeApiServer, Velmora::plain)
           && visit("timeHandler", &QuoteRequest::timeHandler, Velmora::plain)
           && visit("detail", &QuoteRequest::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RejectQuoteRequest>, Visit&& visit) {
    return visit("feedID", &RejectQuoteRequest::feedID, Velmora::plain)
           && visit("marketID", &RejectQuoteRequest::marketID, Velmora::plain)
           && visit("quoteReqID", &RejectQuoteRequest::quoteReqID, Velmora::plain)
           && visit("reason", &RejectQuoteRequest::reason, Velmora::plain)
           && visit("text", &RejectQuoteRequest::text, Velmora::plain)
           && visit("timeApiClient", &RejectQuoteRequest::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &RejectQuoteRequest::timeApiServer, Velmora::plain)
           && visit("timeHandler", &RejectQuoteRequest::timeHandler, Velmora::plain)
           && visit("detail", &RejectQuoteRequest::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<CancelQuote>, Visit&& visit) {
    return visit("feedID", &CancelQuote::feedID, Velmora::plain)
           && visit("marketID", &CancelQuote::marketID, Velmora::plain)
           && visit("quoteReqID", &CancelQuote::quoteReqID, Velmora::plain)
           && visit("quoteID", &CancelQuote::quoteID, Velmora::plain)
           && visit("type", &CancelQuote::type, Velmora::plain)
           && visit("timeApiClient", &CancelQuote::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &CancelQuote::timeApiServer, Velmora::plain)
           && visit("timeHandler", &CancelQuote::timeHandler, Velmora::plain)
           && visit("detail", &CancelQuote::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<QLQuote>, Visit&& visit) {
    return visit("quoteID", &QLQuote::quoteID, Velmora::plain)
           && visit("price", &QLQuote::price, Velmora::price)
           && visit("amount", &QLQuote::amount, Velmora::price)
           && visit("side", &QLQuote::side, Velmora::plain)
           && visit("detail", &QLQuote::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<QLMassQuote>, Visit&& visit) {
    return visit("feedID", &QLMassQuote::feedID, Velmora::plain)
           && visit("marketID", &QLMassQuote::marketID, Velmora::plain)
           && visit("quoteReqID", &QLMassQuote::quoteReqID, Velmora::plain)
           && visit("mdStreamID", &QLMassQuote::mdStreamID, Velmora::plain)
           && visit("settlDate", &QLMassQuote::settlDate, Velmora::plain)
           && visit("quotes", &QLMassQuote::quotes, Velmora::plain)
           && visit("timeApiClient", &QLMassQuote::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &QLMassQuote::timeApiServer, Velmora::plain)
           && visit("timeHandler", &QLMassQuote::timeHandler, Velmora::plain)
           && visit("detail", &QLMassQuote::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MassQuoteAck>, Visit&& visit) {
    return visit("feedID", &MassQuoteAck::feedID, Velmora::plain)
           && visit("marketID", &MassQuoteAck::marketID, Velmora::plain)
           && visit("quoteReqID", &MassQuoteAck::quoteReqID, Velmora::plain)
           && visit("status", &MassQuoteAck::status, Velmora::plain)
           && visit("text", &MassQuoteAck::text, Velmora::plain)
           && visit("timeHandler", &MassQuoteAck::timeHandler, Velmora::plain)
           && visit("timeApiServer", &MassQuoteAck::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &MassQuoteAck::timeApiClient, Velmora::plain)
           && visit("detail", &MassQuoteAck::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<NewOrder>, Visit&& visit) {
    return visit("sequenceID", &NewOrder::sequenceID, Velmora::plain)
           && visit("feedID", &NewOrder::feedID, Velmora::plain)
           && visit("marketID", &NewOrder::marketID, Velmora::plain)
           && visit("isBaseSpecified", &NewOrder::isBaseSpecified, Velmora::plain)
           && visit("side", &NewOrder::side, Velmora::plain)
           && visit("price", &NewOrder::price, Velmora::price)
           && visit("amount", &NewOrder::amount, Velmora::price)
           && visit("ordType", &NewOrder::ordType, Velmora::plain)
           && visit("partyID", &NewOrder::partyID, Velmora::plain)
           && visit("clOrdID", &NewOrder::clOrdID, Velmora::plain)
           && visit("orderID", &NewOrder::orderID, Velmora::plain)
           && visit("execID", &NewOrder::execID, Velmora::plain)
           && visit("quoteID", &NewOrder::quoteID, Velmora::plain)
           && visit("quoteReqID", &NewOrder::quoteReqID, Velmora::plain)
           && visit("tradeDate", &NewOrder::tradeDate, Velmora::plain)
           && visit("settlDate", &NewOrder::settlDate, Velmora::plain)
           && visit("timeHandler", &NewOrder::timeHandler, Velmora::plain)
           && visit("timeApiServer", &NewOrder::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &NewOrder::timeApiClient, Velmora::plain)
           && visit("timeExchange", &NewOrder::timeExchange, Velmora::plain)
           && visit("detail", &NewOrder::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RejectOrder>, Visit&& visit) {
    return visit("feedID", &RejectOrder::feedID, Velmora::plain)
           && visit("marketID", &RejectOrder::marketID, Velmora::plain)
           && visit("isBaseSpecified", &RejectOrder::isBaseSpecified, Velmora::plain)
           && visit("side", &RejectOrder::side, Velmora::plain)
           && visit("amount", &RejectOrder::amount, Velmora::price)
           && visit("price", &RejectOrder::price, Velmora::price)
           && visit("partyID", &RejectOrder::partyID, Velmora::plain)
           && visit("orderID", &RejectOrder::orderID, Velmora::plain)
           && visit("clOrdID", &RejectOrder::clOrdID, Velmora::plain)
           && visit("execID", &RejectOrder::execID, Velmora::plain)
           && visit("quoteReqID", &RejectOrder::quoteReqID, Velmora::plain)
           && visit("tradeDate", &RejectOrder::tradeDate, Velmora::plain)
           && visit("settlDate", &RejectOrder::settlDate, Velmora::plain)
           && visit("text", &RejectOrder::text, Velmora::plain)
           && visit("timeApiClient", &RejectOrder::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &RejectOrder::timeApiServer, Velmora::plain)
           && visit("timeHandler", &RejectOrder::timeHandler, Velmora::plain)
           && visit("detail", &RejectOrder::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<AcceptOrder>, Visit&& visit) {
    return visit("feedID", &AcceptOrder::feedID, Velmora::plain)
           && visit("marketID", &AcceptOrder::marketID, Velmora::plain)
           && visit("isBaseSpecified", &AcceptOrder::isBaseSpecified, Velmora::plain)
           && visit("side", &AcceptOrder::side, Velmora::plain)
           && visit("amount", &AcceptOrder::amount, Velmora::price)
           && visit("price", &AcceptOrder::price, Velmora::price)
           && visit("partyID", &AcceptOrder::partyID, Velmora::plain)
           && visit("clOrdID", &AcceptOrder::clOrdID, Velmora::plain)
           && visit("orderID", &AcceptOrder::orderID, Velmora::plain)
           && visit("execID", &AcceptOrder::execID, Velmora::plain)
           && visit("quoteReqID", &AcceptOrder::quoteReqID, Velmora::plain)
           && visit("tradeDate", &AcceptOrder::tradeDate, Velmora::plain)
           && visit("settlDate", &AcceptOrder::settlDate, Velmora::plain)
           && visit("timeApiClient", &AcceptOrder::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &AcceptOrder::timeApiServer, Velmora::plain)
           && visit("timeHandler", &AcceptOrder::timeHandler, Velmora::plain)
           && visit("detail", &AcceptOrder::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeCaptureAck>, Visit&& visit) {
    return visit("sequenceID", &TradeCaptureAck::sequenceID, Velmora::plain)
           && visit("feedID", &TradeCaptureAck::feedID, Velmora::plain)
           && visit("marketID", &TradeCaptureAck::marketID, Velmora::plain)
           && visit("execID", &TradeCaptureAck::execID, Velmora::plain)
           && visit("status", &TradeCaptureAck::status, Velmora::plain)
           && visit("text", &TradeCaptureAck::text, Velmora::plain)
           && visit("timeHandler", &TradeCaptureAck::timeHandler, Velmora::plain)
           && visit("timeApiServer", &TradeCaptureAck::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &TradeCaptureAck::timeApiClient, Velmora::plain)
           && visit("detail", &TradeCaptureAck::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderTimeout>, Visit&& visit) {
    return visit("sequenceID", &OrderTimeout::sequenceID, Velmora::plain)
           && visit("feedID", &OrderTimeout::feedID, Velmora::plain)
           && visit("marketID", &OrderTimeout::marketID, Velmora::plain)
           && visit("clOrdID", &OrderTimeout::clOrdID, Velmora::plain)
           && visit("timeHandler", &OrderTimeout::timeHandler, Velmora::plain)
           && visit("timeApiServer", &OrderTimeout::timeApiServer, Velmora::plain)
           && visit("timeApiClient", &OrderTimeout::timeApiClient, Velmora::plain)
           && visit("detail", &OrderTimeout::detail, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<LogMessage>, Visit&& visit) {
    return visit("timestamp", &LogMessage::timestamp, Velmora::plain)
           && visit("thread", &LogMessage::thread, Velmora::crypt)
           && visit("level", &LogMessage::level, Velmora::plain)
           && visit("logger", &LogMessage::logger, Velmora::crypt)
           && visit("filename", &LogMessage::filename, Velmora::crypt)
           && visit("lineno", &LogMessage::lineno, Velmora::plain)
           && visit("function", &LogMessage::function, Velmora::crypt)
           && visit("description", &LogMessage::description, Velmora::crypt);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<StatCounterMessage>, Visit&& visit) {
    return visit("threadname", &StatCounterMessage::threadname, Velmora::plain)
           && visit("stats", &StatCounterMessage::stats, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ExchangeMessage>, Visit&& visit) {
    return visit("timeArrival", &ExchangeMessage::timeArrival, Velmora::plain)
           && visit("feedID", &ExchangeMessage::feedID, Velmora::plain)
           && visit("connection", &ExchangeMessage::connection, Velmora::plain)
           && visit("continuation", &ExchangeMessage::continuation, Velmora::plain)
           && visit("contents", &ExchangeMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<StatTimeoutMessage>, Visit&& visit) {
    return visit("dummy", &StatTimeoutMessage::dummy, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TaskInitializationMessage>, Visit&& visit) {
    return visit("dummy", &TaskInitializationMessage::dummy, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MDActivityCheckMessage>, Visit&& visit) {
    return visit("dummy", &MDActivityCheckMessage::dummy, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<CallbackMessage>, Visit&& visit) {
    return visit("action", &CallbackMessage::action, Velmora::plain)
           && visit("arg1", &CallbackMessage::arg1, Velmora::plain)
           && visit("arg2", &CallbackMessage::arg2, Velmora::plain)
           && visit("arg3", &CallbackMessage::arg3, Velmora::plain)
           && visit("arg4", &CallbackMessage::arg4, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TimerMessage>, Visit&& visit) {
    return visit("tqid", &TimerMessage::tqid, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<SubscriptionTimeoutMessage>, Visit&& visit) {
    return visit("requestId", &SubscriptionTimeoutMessage::requestId, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<HeartbeatTimerMessage>, Visit&& visit) {
    return visit("interval_ns", &HeartbeatTimerMessage::interval_ns, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<VersionMessage>, Visit&& visit) {
    return visit("program", &VersionMessage::program, Velmora::plain)
           && visit("version_major", &VersionMessage::version_major, Velmora::plain)
           && visit("version_minor", &VersionMessage::version_minor, Velmora::plain)
           && visit("version_micro", &VersionMessage::version_micro, Velmora::plain)
           && visit("version_extra", &VersionMessage::version_extra, Velmora::plain)
           && visit("revision", &VersionMessage::revision, Velmora::plain)
           && visit("commitdate", &VersionMessage::commitdate, Velmora::plain)
           && visit("branch", &VersionMessage::branch, Velmora::plain)
           && visit("build", &VersionMessage::build, Velmora::plain)
           && visit("arch", &VersionMessage::arch, Velmora::plain)
           && visit("host", &VersionMessage::host, Velmora::plain)
           && visit("date", &VersionMessage::date, Velmora::plain)
           && visit("time", &VersionMessage::time, Velmora::plain)
           && visit("compiler", &VersionMessage::compiler, Velmora::plain)
           && visit("defines", &VersionMessage::defines, Velmora::plain)
           && visit("builduser", &VersionMessage::builduser, Velmora::plain)
           && visit("distribution", &VersionMessage::distribution, Velmora::plain)
           && visit("platform", &VersionMessage::platform, Velmora::plain)
           && visit("protosig", &VersionMessage::protosig, Velmora::plain)
           && visit("syncSize", &VersionMessage::syncSize, Velmora::plain)
           && visit("extra1", &VersionMessage::extra1, Velmora::plain)
           && visit("extra2", &VersionMessage::extra2, Velmora::plain)
           && visit("extra3", &VersionMessage::extra3, Velmora::plain)
           && visit("extra4", &VersionMessage::extra4, Velmora::plain)
           && visit("extra5", &VersionMessage::extra5, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ProtocolDefinitionMessage>, Visit&& visit) {
    return visit("proto", &ProtocolDefinitionMessage::proto, Velmora::crypt);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<PadMessage>, Visit&& visit) {
    return visit("padding", &PadMessage::padding, Velmora::padding);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RuThereMessage>, Visit&& visit) {
    return visit("dpdSeqNo", &RuThereMessage::dpdSeqNo, Velmora::plain)
           && visit("timeApiClient", &RuThereMessage::timeApiClient, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ImHereMessage>, Visit&& visit) {
    return visit("dpdSeqNo", &ImHereMessage::dpdSeqNo, Velmora::plain)
           && visit("timeApiClient", &ImHereMessage::timeApiClient, Velmora::plain)
           && visit("timeApiServer", &ImHereMessage::timeApiServer, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<HeartbeatMessage>, Visit&& visit) {
    return visit("contents", &HeartbeatMessage::contents, Velmora::plain)
           && visit("feedSeqID", &HeartbeatMessage::feedSeqID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ReplayMessage>, Visit&& visit) {
    return visit("feedID", &ReplayMessage::feedID, Velmora::plain)
           && visit("first", &ReplayMessage::first, Velmora::plain)
           && visit("last", &ReplayMessage::last, Velmora::plain)
           && visit("userID", &ReplayMessage::userID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ReplayDoneMessage>, Visit&& visit) {
    return visit("contents", &ReplayDoneMessage::contents, Velmora::plain)
           && visit("userID", &ReplayDoneMessage::userID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<LastSequenceIDMessage>, Visit&& visit) {
    return visit("feedSeqIDs", &LastSequenceIDMessage::feedSeqIDs, Velmora::plain)
           && visit("feedID", &LastSequenceIDMessage::feedID, Velmora::plain)
           && visit("origFeedID", &LastSequenceIDMessage::origFeedID, Velmora::plain)
           && visit("sequenceID", &LastSequenceIDMessage::sequenceID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<BatchRegisterMessage>, Visit&& visit) {
    return visit("feedID", &BatchRegisterMessage::feedID, Velmora::plain)
           && visit("marketIDList", &BatchRegisterMessage::marketIDList, Velmora::plain)
           && visit("batchDefID", &BatchRegisterMessage::batchDefID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<BatchUnregisterMessage>, Visit&& visit) {
    return visit("batchDefID", &BatchUnregisterMessage::batchDefID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<SecurityInfoMessage>, Visit&& visit) {
    return visit("fmID", &SecurityInfoMessage::fmID, Velmora::plain)
           && visit("settlDate", &SecurityInfoMessage::settlDate, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<BatchesCompletedMessage>, Visit&& visit) {
    return visit("batchesCompleted", &BatchesCompletedMessage::batchesCompleted, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MktDataMessage>, Visit&& visit) {
    return visit("mvd", &MktDataMessage::mvd, Velmora::plain)
           && visit("fmIDsInBatch", &MktDataMessage::fmIDsInBatch, Velmora::plain)
           && visit("batchID", &MktDataMessage::batchID, Velmora::plain)
           && visit("streamID", &MktDataMessage::streamID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<SubmitOrderMessage>, Visit&& visit) {
    return visit("userID", &SubmitOrderMessage::userID, Velmora::plain)
           && visit("quoteID", &SubmitOrderMessage::quoteID, Velmora::plain)
           && visit("onBehalfOfCompID", &SubmitOrderMessage::onBehalfOfCompID, Velmora::plain)
           && visit("contents", &SubmitOrderMessage::contents, Velmora::plain)
           && visit("modelID", &SubmitOrderMessage::modelID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<CancelOrderMessage>, Visit&& visit) {
    return visit("userID", &CancelOrderMessage::userID, Velmora::plain)
           && visit("contents", &CancelOrderMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<CancelAllOrderMessage>, Visit&& visit) {
    return visit("userID", &CancelAllOrderMessage::userID, Velmora::plain)
           && visit("contents", &CancelAllOrderMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ModifyOrderMessage>, Visit&& visit) {
    return visit("userID", &ModifyOrderMessage::userID, Velmora::plain)
           && visit("contents", &ModifyOrderMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderReceivedMessage>, Visit&& visit) {
    return visit("userID", &OrderReceivedMessage::userID, Velmora::plain)
           && visit("contents", &OrderReceivedMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderSubmittedMessage>, Visit&& visit) {
    return visit("userID", &OrderSubmittedMessage::userID, Velmora::plain)
           && visit("contents", &OrderSubmittedMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderRejectedMessage>, Visit&& visit) {
    return visit("userID", &OrderRejectedMessage::userID, Velmora::plain)
           && visit("contents", &OrderRejectedMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderCanceledMessage>, Visit&& visit) {
    return visit("userID", &OrderCanceledMessage::userID, Velmora::plain)
           && visit("contents", &OrderCanceledMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderDoneMessage>, Visit&& visit) {
    return visit("userID", &OrderDoneMessage::userID, Velmora::plain)
           && visit("contents", &OrderDoneMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderCancelRejectedMessage>, Visit&& visit) {
    return visit("userID", &OrderCancelRejectedMessage::userID, Velmora::plain)
           && visit("contents", &OrderCancelRejectedMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeCaptureMessage>, Visit&& visit) {
    return visit("userID", &TradeCaptureMessage::userID, Velmora::plain)
           && visit("origPrice", &TradeCaptureMessage::origPrice, Velmora::price)
           && visit("contents", &TradeCaptureMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<DropCopyMessage>, Visit&& visit) {
    return visit("contents", &DropCopyMessage::contents, Velmora::plain)
           && visit("userID", &DropCopyMessage::userID, Velmora::plain)
           && visit("origFeedSequenceID", &DropCopyMessage::origFeedSequenceID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<EventReportMessage>, Visit&& visit) {
    return visit("sequenceID", &EventReportMessage::sequenceID, Velmora::plain)
           && visit("contents", &EventReportMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<DateRolloverMessage>, Visit&& visit) {
    return visit("contents", &DateRolloverMessage::contents, Velmora::plain)
           && visit("dispatchToAll", &DateRolloverMessage::dispatchToAll, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ClientConnectMessage>, Visit&& visit) {
    return visit("user", &ClientConnectMessage::user, Velmora::plain)
           && visit("password", &ClientConnectMessage::password, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ClientDisconnectMessage>, Visit&& visit) {
    return visit("sessionID", &ClientDisconnectMessage::sessionID, Velmora::plain)
           && visit("timeDisconnected", &ClientDisconnectMessage::timeDisconnected, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ConnectResponseMessage>, Visit&& visit) {
    return visit("connectionResponse", &ConnectResponseMessage::connectionResponse, Velmora::plain)
           && visit("text", &ConnectResponseMessage::text, Velmora::plain)
           && visit("sessionID", &ConnectResponseMessage::sessionID, Velmora::plain)
           && visit("userType", &ConnectResponseMessage::userType, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<InternalClientInfoMessage>, Visit&& visit) {
    return visit("userID", &InternalClientInfoMessage::userID, Velmora::plain)
           && visit("sessionID", &InternalClientInfoMessage::sessionID, Velmora::plain)
           && visit("timeConnected", &InternalClientInfoMessage::timeConnected, Velmora::plain)
           && visit("apiLanguage", &InternalClientInfoMessage::apiLanguage, Velmora::plain)
           && visit("apiVersion", &InternalClientInfoMessage::apiVersion, Velmora::plain)
           && visit("ipAddress", &InternalClientInfoMessage::ipAddress, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeLimitDataMessage>, Visit&& visit) {
    return visit("contents", &TradeLimitDataMessage::contents, Velmora::plain)
           && visit("groupIDNamePairs", &TradeLimitDataMessage::groupIDNamePairs, Velmora::plain)
           && visit("userIDNamePairs", &TradeLimitDataMessage::userIDNamePairs, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RiskResponseMessage>, Visit&& visit) {
    return visit("contents", &RiskResponseMessage::contents, Velmora::plain)
           && visit("numRemainingMessages", &RiskResponseMessage::numRemainingMessages, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<LockResponseMessage>, Visit&& visit) {
    return visit("contents", &LockResponseMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<LockUserMessage>, Visit&& visit) {
    return visit("contents", &LockUserMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MemBusHeartbeatMessage>, Visit&& visit) {
    return visit("id", &MemBusHeartbeatMessage::id, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MemBusConnectMessage>, Visit&& visit) {
    return visit("id", &MemBusConnectMessage::id, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MemBusDisconnectMessage>, Visit&& visit) {
    return visit("id", &MemBusDisconnectMessage::id, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<ConfigMessage>, Visit&& visit) {
    return visit("feedsList", &ConfigMessage::feedsList, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<SubscribeMessage>, Visit&& visit) {
    return visit("sub", &SubscribeMessage::sub, Velmora::plain)
           && visit("clSubID", &SubscribeMessage::clSubID, Velmora::plain)
           && visit("sticky", &SubscribeMessage::sticky, Velmora::plain)
           && visit("sessionID", &SubscribeMessage::sessionID, Velmora::plain)
           && visit("timestamp", &SubscribeMessage::timestamp, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<UnsubscribeMessage>, Visit&& visit) {
    return visit("sub", &UnsubscribeMessage::sub, Velmora::plain)
           && visit("clSubID", &UnsubscribeMessage::clSubID, Velmora::plain)
           && visit("sessionID", &UnsubscribeMessage::sessionID, Velmora::plain)
           && visit("timestamp", &UnsubscribeMessage::timestamp, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<UnsubscribeAllMessage>, Visit&& visit) {
    return visit("clSubID", &UnsubscribeAllMessage::clSubID, Velmora::plain)
           && visit("sessionID", &UnsubscribeAllMessage::sessionID, Velmora::plain)
           && visit("timestamp", &UnsubscribeAllMessage::timestamp, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<SubscriptionEventMessage>, Visit&& visit) {
    return visit("contents", &SubscriptionEventMessage::contents, Velmora::plain)
           && visit("sessionID", &SubscriptionEventMessage::sessionID, Velmora::plain)
           && visit("timestamp", &SubscriptionEventMessage::timestamp, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<SubscriptionTimerMessage>, Visit&& visit) {
    return visit("sub", &SubscriptionTimerMessage::sub, Velmora::plain)
           && visit("action", &SubscriptionTimerMessage::action, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<InsertLogMessage>, Visit&& visit) {
    return visit("description", &InsertLogMessage::description, Velmora::plain)
           && visit("level", &InsertLogMessage::level, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TestMessage>, Visit&& visit) {
    return visit("test", &TestMessage::test, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RequestSnapshotMessage>, Visit&& visit) {
    return visit("feedID", &RequestSnapshotMessage::feedID, Velmora::plain)
           && visit("markets", &RequestSnapshotMessage::markets, Velmora::plain)
           && visit("streamID", &RequestSnapshotMessage::streamID, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RequestMessage>, Visit&& visit) {
    return visit("fmID", &RequestMessage::fmID, Velmora::plain)
           && visit("request", &RequestMessage::request, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<QuoteRequestMessage>, Visit&& visit) {
    return visit("contents", &QuoteRequestMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RejectQuoteRequestMessage>, Visit&& visit) {
    return visit("contents", &RejectQuoteRequestMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<CancelQuoteMessage>, Visit&& visit) {
    return visit("contents", &CancelQuoteMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MassQuoteMessage>, Visit&& visit) {
    return visit("contents", &MassQuoteMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<MassQuoteAckMessage>, Visit&& visit) {
    return visit("contents", &MassQuoteAckMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<NewOrderMessage>, Visit&& visit) {
    return visit("contents", &NewOrderMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<RejectOrderMessage>, Visit&& visit) {
    return visit("contents", &RejectOrderMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<AcceptOrderMessage>, Visit&& visit) {
    return visit("contents", &AcceptOrderMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<TradeCaptureAckMessage>, Visit&& visit) {
    return visit("contents", &TradeCaptureAckMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<OrderTimeoutMessage>, Visit&& visit) {
    return visit("contents", &OrderTimeoutMessage::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<JsonFromServer>, Visit&& visit) {
    return visit("contents", &JsonFromServer::contents, Velmora::plain);
}

template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<JsonFromClient>, Visit&& visit) {
    return visit("contents", &JsonFromClient::contents, Velmora::plain);
}

template <class Visit>
constexpr bool secrets(Velmora::of<ClientConnectMessage>, Visit&& visit) {
    return visit(&ClientConnectMessage::password);
}

template <class Visit>
constexpr bool enumerations(Visit&& visit) {
    return visit(Velmora::of<LogLevel>{}, "LogLevel")
           && visit(Velmora::of<Side>{}, "Side")
           && visit(Velmora::of<Request>{}, "Request")
           && visit(Velmora::of<MDElement>{}, "MDElement")
           && visit(Velmora::of<MDSource>{}, "MDSource")
           && visit(Velmora::of<MDUpdateAction>{}, "MDUpdateAction")
           && visit(Velmora::of<OrderStatus>{}, "OrderStatus")
           && visit(Velmora::of<TimeInForce>{}, "TimeInForce")
           && visit(Velmora::of<MatchStatus>{}, "MatchStatus")
           && visit(Velmora::of<OrderType>{}, "OrderType")
           && visit(Velmora::of<RejectReason>{}, "RejectReason")
           && visit(Velmora::of<CancelRejectReason>{}, "CancelRejectReason")
           && visit(Velmora::of<APIResult>{}, "APIResult")
           && visit(Velmora::of<ExchEventType>{}, "ExchEventType")
           && visit(Velmora::of<APIType>{}, "APIType")
           && visit(Velmora::of<APITest>{}, "APITest")
           && visit(Velmora::of<UserType>{}, "UserType")
           && visit(Velmora::of<StatType>{}, "StatType")
           && visit(Velmora::of<Direction>{}, "Direction")
           && visit(Velmora::of<ReplayStatus>{}, "ReplayStatus")
           && visit(Velmora::of<CancelReason>{}, "CancelReason")
           && visit(Velmora::of<DateRolloverType>{}, "DateRolloverType")
           && visit(Velmora::of<ConnectionResponse>{}, "ConnectionResponse")
           && visit(Velmora::of<CcyType>{}, "CcyType")
           && visit(Velmora::of<RiskStatus>{}, "RiskStatus")
           && visit(Velmora::of<LockStatus>{}, "LockStatus")
           && visit(Velmora::of<InstrumentType>{}, "InstrumentType")
           && visit(Velmora::of<StandardTenor>{}, "StandardTenor")
           && visit(Velmora::of<FeedFlag>{}, "FeedFlag")
           && visit(Velmora::of<SubscriptionStatus>{}, "SubscriptionStatus")
           && visit(Velmora::of<QuoteRequestRejectReason>{}, "QuoteRequestRejectReason")
           && visit(Velmora::of<QuoteStatus>{}, "QuoteStatus")
           && visit(Velmora::of<TradeStatus>{}, "TradeStatus")
           && visit(Velmora::of<QuoteCancelType>{}, "QuoteCancelType");
}

template <class Visit>
constexpr bool records(Visit&& visit) {
    return visit(Velmora::of<KeyValuePair>{}, "KeyValuePair")
           && visit(Velmora::of<IDNamePair>{}, "IDNamePair")
           && visit(Velmora::of<FeedMarketID>{}, "FeedMarketID")
           && visit(Velmora::of<MDEntry>{}, "MDEntry")
           && visit(Velmora::of<StatCounter>{}, "StatCounter")
           && visit(Velmora::of<Heartbeat>{}, "Heartbeat")
           && visit(Velmora::of<ReplayDone>{}, "ReplayDone")
           && visit(Velmora::of<UserSequenceID>{}, "UserSequenceID")
           && visit(Velmora::of<MarketView>{}, "MarketView")
           && visit(Velmora::of<SubmitOrder>{}, "SubmitOrder")
           && visit(Velmora::of<CancelOrder>{}, "CancelOrder")
           && visit(Velmora::of<CancelAllOrder>{}, "CancelAllOrder")
           && visit(Velmora::of<ModifyOrder>{}, "ModifyOrder")
           && visit(Velmora::of<OrderReceived>{}, "OrderReceived")
           && visit(Velmora::of<OrderSubmitted>{}, "OrderSubmitted")
           && visit(Velmora::of<OrderRejected>{}, "OrderRejected")
           && visit(Velmora::of<OrderCanceled>{}, "OrderCanceled")
           && visit(Velmora::of<OrderDone>{}, "OrderDone")
           && visit(Velmora::of<OrderCancelRejected>{}, "OrderCancelRejected")
           && visit(Velmora::of<TradeCapture>{}, "TradeCapture")
           && visit(Velmora::of<DropCopy>{}, "DropCopy")
           && visit(Velmora::of<EventReport>{}, "EventReport")
           && visit(Velmora::of<DateRollover>{}, "DateRollover")
           && visit(Velmora::of<MarketRate>{}, "MarketRate")
           && visit(Velmora::of<TradeLimit>{}, "TradeLimit")
           && visit(Velmora::of<TradeState>{}, "TradeState")
           && visit(Velmora::of<TradeHierarchy>{}, "TradeHierarchy")
           && visit(Velmora::of<TradeLimitData>{}, "TradeLimitData")
           && visit(Velmora::of<RiskLimitStatus>{}, "RiskLimitStatus")
           && visit(Velmora::of<RiskUsageStatus>{}, "RiskUsageStatus")
           && visit(Velmora::of<RiskResponse>{}, "RiskResponse")
           && visit(Velmora::of<LockResponse>{}, "LockResponse")
           && visit(Velmora::of<LockUser>{}, "LockUser")
           && visit(Velmora::of<MemBusID>{}, "MemBusID")
           && visit(Velmora::of<APIMarket>{}, "APIMarket")
           && visit(Velmora::of<APIFeed>{}, "APIFeed")
           && visit(Velmora::of<Subscription>{}, "Subscription")
           && visit(Velmora::of<SubscriptionEvent>{}, "SubscriptionEvent")
           && visit(Velmora::of<QuoteRequest>{}, "QuoteRequest")
           && visit(Velmora::of<RejectQuoteRequest>{}, "RejectQuoteRequest")
           && visit(Velmora::of<CancelQuote>{}, "CancelQuote")
           && visit(Velmora::of<QLQuote>{}, "QLQuote")
           && visit(Velmora::of<QLMassQuote>{}, "QLMassQuote")
           && visit(Velmora::of<MassQuoteAck>{}, "MassQuoteAck")
           && visit(Velmora::of<NewOrder>{}, "NewOrder")
           && visit(Velmora::of<RejectOrder>{}, "RejectOrder")
           && visit(Velmora::of<AcceptOrder>{}, "AcceptOrder")
           && visit(Velmora::of<TradeCaptureAck>{}, "TradeCaptureAck")
           && visit(Velmora::of<OrderTimeout>{}, "OrderTimeout");
}

template <class Visit>
constexpr bool messages(Visit&& visit) {
    return visit(Velmora::of<LogMessage>{}, "LogMessage")
           && visit(Velmora::of<StatCounterMessage>{}, "StatCounterMessage")
           && visit(Velmora::of<ExchangeMessage>{}, "ExchangeMessage")
           && visit(Velmora::of<StatTimeoutMessage>{}, "StatTimeoutMessage")
           && visit(Velmora::of<TaskInitializationMessage>{}, "TaskInitializationMessage")
           && visit(Velmora::of<MDActivityCheckMessage>{}, "MDActivityCheckMessage")
           && visit(Velmora::of<CallbackMessage>{}, "CallbackMessage")
           && visit(Velmora::of<TimerMessage>{}, "TimerMessage")
           && visit(Velmora::of<SubscriptionTimeoutMessage>{}, "SubscriptionTimeoutMessage")
           && visit(Velmora::of<HeartbeatTimerMessage>{}, "HeartbeatTimerMessage")
           && visit(Velmora::of<VersionMessage>{}, "VersionMessage")
           && visit(Velmora::of<ProtocolDefinitionMessage>{}, "ProtocolDefinitionMessage")
           && visit(Velmora::of<PadMessage>{}, "PadMessage")
           && visit(Velmora::of<RuThereMessage>{}, "RuThereMessage")
           && visit(Velmora::of<ImHereMessage>{}, "ImHereMessage")
           && visit(Velmora::of<HeartbeatMessage>{}, "HeartbeatMessage")
           && visit(Velmora::of<ReplayMessage>{}, "ReplayMessage")
           && visit(Velmora::of<ReplayDoneMessage>{}, "ReplayDoneMessage")
           && visit(Velmora::of<LastSequenceIDMessage>{}, "LastSequenceIDMessage")
           && visit(Velmora::of<BatchRegisterMessage>{}, "BatchRegisterMessage")
           && visit(Velmora::of<BatchUnregisterMessage>{}, "BatchUnregisterMessage")
           && visit(Velmora::of<SecurityInfoMessage>{}, "SecurityInfoMessage")
           && visit(Velmora::of<BatchesCompletedMessage>{}, "BatchesCompletedMessage")
           && visit(Velmora::of<MktDataMessage>{}, "MktDataMessage")
           && visit(Velmora::of<SubmitOrderMessage>{}, "SubmitOrderMessage")
           && visit(Velmora::of<CancelOrderMessage>{}, "CancelOrderMessage")
           && visit(Velmora::of<CancelAllOrderMessage>{}, "CancelAllOrderMessage")
           && visit(Velmora::of<ModifyOrderMessage>{}, "ModifyOrderMessage")
           && visit(Velmora::of<OrderReceivedMessage>{}, "OrderReceivedMessage")
           && visit(Velmora::of<OrderSubmittedMessage>{}, "OrderSubmittedMessage")
           && visit(Velmora::of<OrderRejectedMessage>{}, "OrderRejectedMessage")
           && visit(Velmora::of<OrderCanceledMessage>{}, "OrderCanceledMessage")
           && visit(Velmora::of<OrderDoneMessage>{}, "OrderDoneMessage")
           && visit(Velmora::of<OrderCancelRejectedMessage>{}, "OrderCancelRejectedMessage")
           && visit(Velmora::of<TradeCaptureMessage>{}, "TradeCaptureMessage")
           && visit(Velmora::of<DropCopyMessage>{}, "DropCopyMessage")
           && visit(Velmora::of<EventReportMessage>{}, "EventReportMessage")
           && visit(Velmora::of<DateRolloverMessage>{}, "DateRolloverMessage")
           && visit(Velmora::of<ClientConnectMessage>{}, "ClientConnectMessage")
           && visit(Velmora::of<ClientDisconnectMessage>{}, "ClientDisconnectMessage")
           && visit(Velmora::of<ConnectResponseMessage>{}, "ConnectResponseMessage")
           && visit(Velmora::of<InternalClientInfoMessage>{}, "InternalClientInfoMessage")
           && visit(Velmora::of<TradeLimitDataMessage>{}, "TradeLimitDataMessage")
           && visit(Velmora::of<RiskResponseMessage>{}, "RiskResponseMessage")
           && visit(Velmora::of<LockResponseMessage>{}, "LockResponseMessage")
           && visit(Velmora::of<LockUserMessage>{}, "LockUserMessage")
           && visit(Velmora::of<MemBusHeartbeatMessage>{}, "MemBusHeartbeatMessage")
           && visit(Velmora::of<MemBusConnectMessage>{}, "MemBusConnectMessage")
           && visit(Velmora::of<MemBusDisconnectMessage>{}, "MemBusDisconnectMessage")
           && visit(Velmora::of<ConfigMessage>{}, "ConfigMessage")
           && visit(Velmora::of<SubscribeMessage>{}, "SubscribeMessage")
           && visit(Velmora::of<UnsubscribeMessage>{}, "UnsubscribeMessage")
           && visit(Velmora::of<UnsubscribeAllMessage>{}, "UnsubscribeAllMessage")
           && visit(Velmora::of<SubscriptionEventMessage>{}, "SubscriptionEventMessage")
           && visit(Velmora::of<SubscriptionTimerMessage>{}, "SubscriptionTimerMessage")
           && visit(Velmora::of<InsertLogMessage>{}, "InsertLogMessage")
           && visit(Velmora::of<TestMessage>{}, "TestMessage")
           && visit(Velmora::of<RequestSnapshotMessage>{}, "RequestSnapshotMessage")
           && visit(Velmora::of<RequestMessage>{}, "RequestMessage")
           && visit(Velmora::of<QuoteRequestMessage>{}, "QuoteRequestMessage")
           && visit(Velmora::of<RejectQuoteRequestMessage>{}, "RejectQuoteRequestMessage")
           && visit(Velmora::of<CancelQuoteMessage>{}, "CancelQuoteMessage")
           && visit(Velmora::of<MassQuoteMessage>{}, "MassQuoteMessage")
           && visit(Velmora::of<MassQuoteAckMessage>{}, "MassQuoteAckMessage")
           && visit(Velmora::of<NewOrderMessage>{}, "NewOrderMessage")
           && visit(Velmora::of<RejectOrderMessage>{}, "RejectOrderMessage")
           && visit(Velmora::of<AcceptOrderMessage>{}, "AcceptOrderMessage")
           && visit(Velmora::of<TradeCaptureAckMessage>{}, "TradeCaptureAckMessage")
           && visit(Velmora::of<OrderTimeoutMessage>{}, "OrderTimeoutMessage")
           && visit(Velmora::of<JsonFromServer>{}, "JsonFromServer")
           && visit(Velmora::of<JsonFromClient>{}, "JsonFromClient");
}

} // namespace Quillon
