// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
//
// The types of the protocol and the entry points of its module. A host calls initialize() once, alone and before
// anything else, and then works with the structures below or, by message identifier, with __protocol.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <stdexcept>
#include <string>

#include "Backend/Common/Assert.h"
#include "Backend/Common/FastOStream.h"
#include "Backend/Velmora/BufferAllocator.h"
#include "Backend/Velmora/Codec.h"
#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"
#include "Backend/Velmora/MsgDescriptor.h"
#include "Backend/Velmora/MsgErrors.h"
#include "Backend/Velmora/MsgProtocol.h"
#include "Backend/Velmora/TextCodec.h"
#include "Backend/Velmora/bufstl/bufstring.h"
#include "Backend/Velmora/bufstl/bufvector.h"

namespace Quillon {

using bufstl::bufstring;
using bufstl::bufvector;
using bufstl::bufvectox;
using Velmora::BufferAllocator;
using Velmora::FastCodec;
using Velmora::MsgDescriptor;
using Velmora::MsgProtocol;
using Velmora::MsgType_t;

// Enumerations. Each helper has no instances, only static members, the same in all:
//
//   Type             the enumeration; a field may hold any byte, also one without a name
//   Name             the helper's own name
//   initialize()     fills the tables; called by the module's initialize(). finalize() has no effect.
//   isValid(byte)    whether an enumerator has that value
//   toString(byte)   its name, or null
//   toIndex(value)   its ordinal in declaration order; 0 if there is none
//   fromIndex(ordinal)                  the way back, unchecked
//   fromValue(byte), fromString(text)   the enumerator; throw std::invalid_argument if there is none
//
// isValid, toString, fromString and what relies on them assert that initialize() has run. The operators << write the
// name, and nothing for a value without one, which turns a standard stream bad. enumerationOf is never defined: it
// names the helper of a value.

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

/// Severity of a log entry.
struct LogLevel {
    enum Type : int32_t {
        LOGMESSAGE = 0,
        LOGCRITICAL = 1,
        LOGERROR = 2,
        LOGWARN = 3,
        LOGINFO = 4,
        LOGTRACE = 5,
        LOGDEBUG = 6,
    };
    static constexpr const char* Name = "LogLevel";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 6;
    static constexpr unsigned int _nbValues = 7;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<LogLevel>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<LogLevel>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<LogLevel>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<LogLevel>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<LogLevel>(text);
    }
};
std::ostream& operator<<(std::ostream& os, LogLevel::Type value);
FastOStream& operator<<(FastOStream& os, LogLevel::Type value);
Velmora::of<LogLevel> enumerationOf(LogLevel::Type);

/// Side of an order, quote or market data entry.
struct Side {
    enum Type : int32_t {
        BID = 1,
        OFR = 2,
        BOTH = 3,
        MIDPOINT = 4,
    };
    static constexpr const char* Name = "Side";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 4;
    static constexpr unsigned int _nbValues = 4;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<Side>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<Side>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<Side>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<Side>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<Side>(text);
    }
};
std::ostream& operator<<(std::ostream& os, Side::Type value);
FastOStream& operator<<(FastOStream& os, Side::Type value);
Velmora::of<Side> enumerationOf(Side::Type);

/// What a request message asks for, named by the identifier of the message wanted.
struct Request {
    enum Type : int32_t {
        SECURITYINFO = 53327,
    };
    static constexpr const char* Name = "Request";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 53327;
    static constexpr unsigned int _nbValues = 1;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<Request>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<Request>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<Request>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<Request>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<Request>(text);
    }
};
std::ostream& operator<<(std::ostream& os, Request::Type value);
FastOStream& operator<<(FastOStream& os, Request::Type value);
Velmora::of<Request> enumerationOf(Request::Type);

/// What a market data entry stands for.
struct MDElement {
    enum Type : int32_t {
        LEVEL = 1,
        AMOUNT_CONS = 2,
        SPREAD_CONS = 3,
        LOCAL_BEST = 4,
        EXCHANGE_BEST = 5,
        LAST_TRADE = 6,
        LAST_TRADE_NO_SIDE = 7,
        WORST_TRADE = 8,
        LEVEL_QUOTE = 9,
        LEVEL_QUOTE_AMT_TIER = 10,
        QUOTE = 11,
        QUOTE_AMT_TIER = 12,
        ORDER = 13,
    };
    static constexpr const char* Name = "MDElement";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 13;
    static constexpr unsigned int _nbValues = 13;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<MDElement>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<MDElement>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<MDElement>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<MDElement>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<MDElement>(text);
    }
};
std::ostream& operator<<(std::ostream& os, MDElement::Type value);
FastOStream& operator<<(FastOStream& os, MDElement::Type value);
Velmora::of<MDElement> enumerationOf(MDElement::Type);

/// Where a market data entry comes from.
struct MDSource {
    enum Type : int32_t {
        MARKET_DATA = 1,
        OBSCURE = 2,
        ENHANCEMENT = 4,
        QL_BOOK = 8,
    };
    static constexpr const char* Name = "MDSource";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 8;
    static constexpr unsigned int _nbValues = 4;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<MDSource>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<MDSource>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<MDSource>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<MDSource>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<MDSource>(text);
    }
};
std::ostream& operator<<(std::ostream& os, MDSource::Type value);
FastOStream& operator<<(FastOStream& os, MDSource::Type value);
Velmora::of<MDSource> enumerationOf(MDSource::Type);

/// What happens to an entry of a market's book.
struct MDUpdateAction {
    enum Type : int32_t {
        NEW = 0,
        CHANGE = 1,
        DELETE = 2,
    };
    static constexpr const char* Name = "MDUpdateAction";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 2;
    static constexpr unsigned int _nbValues = 3;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<MDUpdateAction>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<MDUpdateAction>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<MDUpdateAction>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<MDUpdateAction>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<MDUpdateAction>(text);
    }
};
std::ostream& operator<<(std::ostream& os, MDUpdateAction::Type value);
FastOStream& operator<<(FastOStream& os, MDUpdateAction::Type value);
Velmora::of<MDUpdateAction> enumerationOf(MDUpdateAction::Type);

/// State of a live order.
struct OrderStatus {
    enum Type : int32_t {
        PARTIALLY_FILLED = 1,
        FILLED = 2,
        ACCEPTED = 3,
    };
    static constexpr const char* Name = "OrderStatus";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 3;
    static constexpr unsigned int _nbValues = 3;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<OrderStatus>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<OrderStatus>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<OrderStatus>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<OrderStatus>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<OrderStatus>(text);
    }
};
std::ostream& operator<<(std::ostream& os, OrderStatus::Type value);
FastOStream& operator<<(FastOStream& os, OrderStatus::Type value);
Velmora::of<OrderStatus> enumerationOf(OrderStatus::Type);

/// How long an order stays in force.
struct TimeInForce {
    enum Type : int32_t {
        DAY = 0,
        GTC = 1,
        IOC = 3,
        FOK = 4,
    };
    static constexpr const char* Name = "TimeInForce";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 4;
    static constexpr unsigned int _nbValues = 4;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<TimeInForce>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<TimeInForce>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<TimeInForce>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<TimeInForce>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<TimeInForce>(text);
    }
};
std::ostream& operator<<(std::ostream& os, TimeInForce::Type value);
FastOStream& operator<<(FastOStream& os, TimeInForce::Type value);
Velmora::of<TimeInForce> enumerationOf(TimeInForce::Type);

/// State of a match between two parties.
struct MatchStatus {
    enum Type : int32_t {
        PENDING = 3,
        DONE = 0,
        ERROR = 4,
    };
    static constexpr const char* Name = "MatchStatus";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 4;
    static constexpr unsigned int _nbValues = 3;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<MatchStatus>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<MatchStatus>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<MatchStatus>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<MatchStatus>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<MatchStatus>(text);
    }
};
std::ostream& operator<<(std::ostream& os, MatchStatus::Type value);
FastOStream& operator<<(FastOStream& os, MatchStatus::Type value);
Velmora::of<MatchStatus> enumerationOf(MatchStatus::Type);

/// Kind of order.
struct OrderType {
    enum Type : int32_t {
        MARKET = 1,
        LIMIT = 2,
        STOP = 3,
        STOPLIMIT = 4,
        MARKETLIMIT = 5,
        PREVIOUSLY_QUOTED = 6,
        VWAP_SWEEP = 7,
        PREVIOUSLY_QUOTED_AMT_TIER = 8,
    };
    static constexpr const char* Name = "OrderType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 8;
    static constexpr unsigned int _nbValues = 8;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<OrderType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<OrderType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<OrderType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<OrderType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<OrderType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, OrderType::Type value);
FastOStream& operator<<(FastOStream& os, OrderType::Type value);
Velmora::of<OrderType> enumerationOf(OrderType::Type);

/// Why an order was rejected.
struct RejectReason {
    enum Type : int32_t {
        NOT_SUBSCRIBED = 0,
        UNKNOWN_SYMBOL = 1,
        EXCHANGE_NOT_AVAILABLE = 2,
        CREDIT_LOW = 3,
        DUPLICATE_ORDER = 6,
        INCORRECT_QUANTITY = 13,
        INCORRECT_PRICE = 17,
        INVALID_ORDER = 18,
        INVALID_FEED = 20,
        INVALID_MARKET = 21,
        FEED_DOWN = 22,
        INVALID_ORDER_TYPE = 23,
        INVALID_TIME_IN_FORCE = 24,
        INVALID_CLORDID = 25,
        UNKNOWN_ORDER = 27,
        TOO_MANY_ORDER_SUBMITS = 28,
        RESEND_REQUESTED = 29,
        MARKET_NOT_ACTIVE = 30,
        LOCKED_USER = 31,
        EXCEEDS_NOP_LIMIT = 32,
        EXCEEDS_DSL_LIMIT = 33,
        EXCEEDS_POSITION_LIMIT = 34,
        EXCEEDS_PENDING_LIMIT = 35,
        EXCEEDS_SINGLE_LIMIT = 36,
        TRADE_LIMIT_RESTRICTION = 40,
        INVALID_MODEL = 45,
        INVALID_MIN_AMOUNT = 46,
        NOT_APPLICABLE = 254,
    };
    static constexpr const char* Name = "RejectReason";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 254;
    static constexpr unsigned int _nbValues = 28;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<RejectReason>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<RejectReason>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<RejectReason>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<RejectReason>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<RejectReason>(text);
    }
};
std::ostream& operator<<(std::ostream& os, RejectReason::Type value);
FastOStream& operator<<(FastOStream& os, RejectReason::Type value);
Velmora::of<RejectReason> enumerationOf(RejectReason::Type);

/// Why a cancellation or modification was rejected.
struct CancelRejectReason {
    enum Type : int32_t {
        TOO_LATE_TO_CANCEL = 0,
        UNKNOWN_ORDER = 1,
        DUPLICATE_CLORDID_RECEIVED = 6,
        INVALID_CANCEL = 11,
        OTHER = 12,
        ORDER_NOT_ACTIVE = 13,
        INVALID_FEED = 14,
        INVALID_MARKET = 15,
        NOT_IMPLEMENTED = 100,
        FEED_DOWN = 22,
        TOO_MANY_ORDER_SUBMITS = 28,
        RESEND_REQUESTED = 29,
        LOCKED_USER = 31,
        EXCEEDS_NOP_LIMIT = 32,
        EXCEEDS_DSL_LIMIT = 33,
        EXCEEDS_POSITION_LIMIT = 34,
        EXCEEDS_PENDING_LIMIT = 35,
        EXCEEDS_SINGLE_LIMIT = 36,
        TRADE_LIMIT_RESTRICTION = 40,
        NOT_APPLICABLE = 254,
    };
    static constexpr const char* Name = "CancelRejectReason";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 254;
    static constexpr unsigned int _nbValues = 20;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<CancelRejectReason>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<CancelRejectReason>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<CancelRejectReason>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<CancelRejectReason>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<CancelRejectReason>(text);
    }
};
std::ostream& operator<<(std::ostream& os, CancelRejectReason::Type value);
FastOStream& operator<<(FastOStream& os, CancelRejectReason::Type value);
Velmora::of<CancelRejectReason> enumerationOf(CancelRejectReason::Type);

/// Outcome of a call to the client API.
struct APIResult {
    enum Type : int32_t {
        OK = 0,
        COULD_NOT_CONNECT = 10,
        TIMEOUT = 11,
        BUFFER_FULL = 12,
        COULD_NOT_OPEN = 14,
        SOCKERR_DNS = 101,
        SOCKERR_CREATE = 102,
        SOCKERR_CONNECT = 103,
        SOCKERR_CLOSED = 104,
        SOCKERR_READING = 105,
        SOCKERR_WRITING = 106,
        NOT_CONNECTED = 20,
        NOT_RUNNING = 21,
        IS_CONNECTED = 22,
        IS_RUNNING = 23,
        IS_STOPPING = 24,
        EXCEPTION_THROWN = 25,
        PROTOCOL_ERROR = 30,
        INCOMPATIBLE_PROTOCOL = 31,
        INVALID_USER = 32,
        INVALID_PASSWORD = 33,
        USER_ALREADY_CONNECTED = 34,
        COULD_NOT_LOGIN = 35,
        INVALID_FEED = 40,
        INVALID_MARKET = 41,
        INVALID_ORDERID = 42,
        INVALID_BATCHID = 43,
        INVALID_CLIENT_ORDERID = 44,
        DUPLICATE_CLIENT_ORDERID = 45,
        INVALID_MARKETDATA_FEED = 46,
        INVALID_TRADING_FEED = 47,
        USER_LOCKED = 48,
        SYSTEM_LOCKED = 49,
        ADMIN_HANDLER_FAULT = 50,
        INVALID_PARAMETER = 252,
        NOT_IMPLEMENTED = 253,
        NOT_APPLICABLE = 254,
    };
    static constexpr const char* Name = "APIResult";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 254;
    static constexpr unsigned int _nbValues = 37;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<APIResult>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<APIResult>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<APIResult>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<APIResult>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<APIResult>(text);
    }
};
std::ostream& operator<<(std::ostream& os, APIResult::Type value);
FastOStream& operator<<(FastOStream& os, APIResult::Type value);
Velmora::of<APIResult> enumerationOf(APIResult::Type);

/// Event reported by an exchange.
struct ExchEventType {
    enum Type : int32_t {
        CREDITAVAILABLE = 1,
        CREDITLOW = 2,
        CREDITEXHAUSTED = 3,
        TRADEDATEROLLOVER = 4,
        VALUEDATEROLLOVER = 5,
        TRADING_OPEN = 6,
        TRADING_CLOSED = 7,
        ERROR = 10,
        PRE_OPEN = 11,
        NO_CANCEL = 12,
    };
    static constexpr const char* Name = "ExchEventType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 12;
    static constexpr unsigned int _nbValues = 10;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<ExchEventType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<ExchEventType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<ExchEventType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<ExchEventType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<ExchEventType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, ExchEventType::Type value);
FastOStream& operator<<(FastOStream& os, ExchEventType::Type value);
Velmora::of<ExchEventType> enumerationOf(ExchEventType::Type);

/// Part of the client API that a subscription belongs to.
struct APIType {
    enum Type : int32_t {
        MARKETDATA = 0,
        TRADING = 1,
        DROPCOPY = 2,
        MARKET_MAKER_PRICING = 3,
        MARKET_MAKER_TRADING = 4,
    };
    static constexpr const char* Name = "APIType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 4;
    static constexpr unsigned int _nbValues = 5;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<APIType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<APIType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<APIType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<APIType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<APIType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, APIType::Type value);
FastOStream& operator<<(FastOStream& os, APIType::Type value);
Velmora::of<APIType> enumerationOf(APIType::Type);

/// Test that a client can ask the server to run.
struct APITest {
    enum Type : int32_t {
        NONE = 0,
        INVOKE_EVENT_REPORT = 1,
        FORCE_LOCAL_DISCONNECT = 2,
        FORCE_REMOTE_DISCONNECT = 3,
        TEST_FULL_BUFFER = 4,
        FORCE_DISCONNECT_FEEDS = 5,
        EXTRA_TEST2 = 6,
        EXTRA_TEST3 = 7,
        EXTRA_TEST4 = 8,
        EXTRA_TEST5 = 9,
    };
    static constexpr const char* Name = "APITest";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 9;
    static constexpr unsigned int _nbValues = 10;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<APITest>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<APITest>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<APITest>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<APITest>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<APITest>(text);
    }
};
std::ostream& operator<<(std::ostream& os, APITest::Type value);
FastOStream& operator<<(FastOStream& os, APITest::Type value);
Velmora::of<APITest> enumerationOf(APITest::Type);

/// Kind of user.
struct UserType {
    enum Type : int32_t {
        INTERNAL = 0,
        REGULAR = 1,
        ADMIN = 2,
        MONITORED = 3,
        MODEL = 4,
        MARKET_MAKER = 5,
        SUPER = 6,
    };
    static constexpr const char* Name = "UserType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 6;
    static constexpr unsigned int _nbValues = 7;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<UserType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<UserType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<UserType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<UserType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<UserType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, UserType::Type value);
FastOStream& operator<<(FastOStream& os, UserType::Type value);
Velmora::of<UserType> enumerationOf(UserType::Type);

/// Kind of statistics counter.
struct StatType {
    enum Type : int32_t {
        QUEUE_SIZE = 0,
    };
    static constexpr const char* Name = "StatType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 0;
    static constexpr unsigned int _nbValues = 1;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<StatType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<StatType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<StatType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<StatType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<StatType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, StatType::Type value);
FastOStream& operator<<(FastOStream& os, StatType::Type value);
Velmora::of<StatType> enumerationOf(StatType::Type);

/// Direction of traffic.
struct Direction {
    enum Type : int32_t {
        INCOMING = 0,
        OUTGOING = 1,
    };
    static constexpr const char* Name = "Direction";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 1;
    static constexpr unsigned int _nbValues = 2;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<Direction>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<Direction>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<Direction>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<Direction>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<Direction>(text);
    }
};
std::ostream& operator<<(std::ostream& os, Direction::Type value);
FastOStream& operator<<(FastOStream& os, Direction::Type value);
Velmora::of<Direction> enumerationOf(Direction::Type);

/// How a replay ended.
struct ReplayStatus {
    enum Type : int32_t {
        DONE = 1,
        REJECTED = 2,
    };
    static constexpr const char* Name = "ReplayStatus";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 2;
    static constexpr unsigned int _nbValues = 2;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<ReplayStatus>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<ReplayStatus>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<ReplayStatus>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<ReplayStatus>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<ReplayStatus>(text);
    }
};
std::ostream& operator<<(std::ostream& os, ReplayStatus::Type value);
FastOStream& operator<<(FastOStream& os, ReplayStatus::Type value);
Velmora::of<ReplayStatus> enumerationOf(ReplayStatus::Type);

/// Why an order was canceled.
struct CancelReason {
    enum Type : int32_t {
        CANCEL_REQUESTED = 1,
        BY_EXCHANGE = 2,
        ORDER_MODIFIED = 3,
        BY_ADMIN = 4,
    };
    static constexpr const char* Name = "CancelReason";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 4;
    static constexpr unsigned int _nbValues = 4;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<CancelReason>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<CancelReason>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<CancelReason>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<CancelReason>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<CancelReason>(text);
    }
};
std::ostream& operator<<(std::ostream& os, CancelReason::Type value);
FastOStream& operator<<(FastOStream& os, CancelReason::Type value);
Velmora::of<CancelReason> enumerationOf(CancelReason::Type);

/// Which date rolls over.
struct DateRolloverType {
    enum Type : int32_t {
        TRADE = 1,
        SETTLE = 2,
    };
    static constexpr const char* Name = "DateRolloverType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 2;
    static constexpr unsigned int _nbValues = 2;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<DateRolloverType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<DateRolloverType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<DateRolloverType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<DateRolloverType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<DateRolloverType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, DateRolloverType::Type value);
FastOStream& operator<<(FastOStream& os, DateRolloverType::Type value);
Velmora::of<DateRolloverType> enumerationOf(DateRolloverType::Type);

/// Outcome of a client's connect.
struct ConnectionResponse {
    enum Type : int32_t {
        SUCCESS = 0,
        FAILED_INVALID_USER = 1,
        FAILED_INVALID_PASSWORD = 2,
        FAILED_USER_ALREADY_CONNECTED = 3,
        FAILED_OTHER = 4,
        FAILED_INCOMPATIBLE_PROTOCOL = 5,
        FAILED_USER_LOCKED = 7,
        FAILED_SYSTEM_LOCKED = 8,
    };
    static constexpr const char* Name = "ConnectionResponse";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 8;
    static constexpr unsigned int _nbValues = 8;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<ConnectionResponse>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<ConnectionResponse>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<ConnectionResponse>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<ConnectionResponse>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<ConnectionResponse>(text);
    }
};
std::ostream& operator<<(std::ostream& os, ConnectionResponse::Type value);
FastOStream& operator<<(FastOStream& os, ConnectionResponse::Type value);
Velmora::of<ConnectionResponse> enumerationOf(ConnectionResponse::Type);

/// Currency of a pair that amounts are in.
struct CcyType {
    enum Type : int32_t {
        MARKET = 0,
        BASE = 1,
        COUNTER = 2,
    };
    static constexpr const char* Name = "CcyType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 2;
    static constexpr unsigned int _nbValues = 3;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<CcyType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<CcyType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<CcyType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<CcyType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<CcyType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, CcyType::Type value);
FastOStream& operator<<(FastOStream& os, CcyType::Type value);
Velmora::of<CcyType> enumerationOf(CcyType::Type);

/// Outcome of a change of risk data.
struct RiskStatus {
    enum Type : int32_t {
        SUCCESS = 1,
        INVALID_PERMISSIONS = 2,
        INVALID_GROUP = 3,
        INVALID_USER = 4,
        INVALID_ADMIN = 5,
        INVALID_FEED = 6,
        INVALID_MARKET = 7,
        INVALID_SETTLDATE = 8,
        INVALID_AMOUNT = 9,
        INVALID_DROPCOPY_SEQID = 10,
        INVALID_DROPCOPY_FEED = 11,
        MISSING_RISK_DATA = 20,
    };
    static constexpr const char* Name = "RiskStatus";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 20;
    static constexpr unsigned int _nbValues = 12;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<RiskStatus>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<RiskStatus>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<RiskStatus>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<RiskStatus>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<RiskStatus>(text);
    }
};
std::ostream& operator<<(std::ostream& os, RiskStatus::Type value);
FastOStream& operator<<(FastOStream& os, RiskStatus::Type value);
Velmora::of<RiskStatus> enumerationOf(RiskStatus::Type);

/// Outcome of locking or unlocking a user.
struct LockStatus {
    enum Type : int32_t {
        SUCCESS = 1,
        ERROR = 2,
    };
    static constexpr const char* Name = "LockStatus";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 2;
    static constexpr unsigned int _nbValues = 2;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<LockStatus>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<LockStatus>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<LockStatus>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<LockStatus>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<LockStatus>(text);
    }
};
std::ostream& operator<<(std::ostream& os, LockStatus::Type value);
FastOStream& operator<<(FastOStream& os, LockStatus::Type value);
Velmora::of<LockStatus> enumerationOf(LockStatus::Type);

/// Kind of instrument.
struct InstrumentType {
    enum Type : int32_t {
        SPOT = 1,
        FUTURE = 2,
        FORWARD = 3,
        NDF = 4,
        SWAP = 5,
    };
    static constexpr const char* Name = "InstrumentType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 5;
    static constexpr unsigned int _nbValues = 5;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<InstrumentType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<InstrumentType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<InstrumentType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<InstrumentType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<InstrumentType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, InstrumentType::Type value);
FastOStream& operator<<(FastOStream& os, InstrumentType::Type value);
Velmora::of<InstrumentType> enumerationOf(InstrumentType::Type);

/// Settlement tenor.
struct StandardTenor {
    enum Type : int32_t {
        NA = 0,
        TOD = 1,
        TOM = 2,
        ON = 3,
        TN = 4,
        SP = 5,
        SN = 6,
        W1 = 7,
        W2 = 8,
        W3 = 9,
        M1 = 10,
        M2 = 11,
        M3 = 12,
        M4 = 13,
        M5 = 14,
        M6 = 15,
        M7 = 16,
        M8 = 17,
        M9 = 18,
        M10 = 19,
        M11 = 20,
        Y1 = 21,
        M15 = 22,
        M18 = 23,
        M21 = 24,
        Y2 = 25,
    };
    static constexpr const char* Name = "StandardTenor";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 25;
    static constexpr unsigned int _nbValues = 26;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<StandardTenor>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<StandardTenor>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<StandardTenor>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<StandardTenor>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<StandardTenor>(text);
    }
};
std::ostream& operator<<(std::ostream& os, StandardTenor::Type value);
FastOStream& operator<<(FastOStream& os, StandardTenor::Type value);
Velmora::of<StandardTenor> enumerationOf(StandardTenor::Type);

/// What a feed is able to do.
struct FeedFlag {
    enum Type : int32_t {
        MARKET_DATA = 1,
        TRADING = 2,
        BATCHING = 3,
        DROPCOPY = 4,
        GTC = 5,
        IOC = 6,
        FOK = 7,
        AGGREGATE = 8,
        MARKET_MAKING = 9,
    };
    static constexpr const char* Name = "FeedFlag";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 9;
    static constexpr unsigned int _nbValues = 9;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<FeedFlag>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<FeedFlag>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<FeedFlag>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<FeedFlag>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<FeedFlag>(text);
    }
};
std::ostream& operator<<(std::ostream& os, FeedFlag::Type value);
FastOStream& operator<<(FastOStream& os, FeedFlag::Type value);
Velmora::of<FeedFlag> enumerationOf(FeedFlag::Type);

/// State of a subscription.
struct SubscriptionStatus {
    enum Type : int32_t {
        INVALID = 0,
        ENABLED = 1,
        DISABLED = 2,
        ERROR = 3,
    };
    static constexpr const char* Name = "SubscriptionStatus";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 3;
    static constexpr unsigned int _nbValues = 4;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<SubscriptionStatus>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<SubscriptionStatus>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<SubscriptionStatus>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<SubscriptionStatus>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<SubscriptionStatus>(text);
    }
};
std::ostream& operator<<(std::ostream& os, SubscriptionStatus::Type value);
FastOStream& operator<<(FastOStream& os, SubscriptionStatus::Type value);
Velmora::of<SubscriptionStatus> enumerationOf(SubscriptionStatus::Type);

/// Why a quote request was rejected.
struct QuoteRequestRejectReason {
    enum Type : int32_t {
        OTHER = 1,
        UNKNOWN_SYMBOL = 2,
        NOT_ALLOWED = 3,
        PASS = 4,
        EXCEEDS_LIMIT = 5,
        NOT_AVAILABLE = 6,
        INVALID_SETTLDATE = 7,
        INVALID_AMOUNT = 8,
    };
    static constexpr const char* Name = "QuoteRequestRejectReason";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 8;
    static constexpr unsigned int _nbValues = 8;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<QuoteRequestRejectReason>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<QuoteRequestRejectReason>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<QuoteRequestRejectReason>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<QuoteRequestRejectReason>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<QuoteRequestRejectReason>(text);
    }
};
std::ostream& operator<<(std::ostream& os, QuoteRequestRejectReason::Type value);
FastOStream& operator<<(FastOStream& os, QuoteRequestRejectReason::Type value);
Velmora::of<QuoteRequestRejectReason> enumerationOf(QuoteRequestRejectReason::Type);

/// State of a quote.
struct QuoteStatus {
    enum Type : int32_t {
        EXPIRED = 1,
        REJECTED = 2,
        CANCELED = 3,
        NOT_APPLICABLE = 254,
    };
    static constexpr const char* Name = "QuoteStatus";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 254;
    static constexpr unsigned int _nbValues = 4;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<QuoteStatus>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<QuoteStatus>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<QuoteStatus>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<QuoteStatus>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<QuoteStatus>(text);
    }
};
std::ostream& operator<<(std::ostream& os, QuoteStatus::Type value);
FastOStream& operator<<(FastOStream& os, QuoteStatus::Type value);
Velmora::of<QuoteStatus> enumerationOf(QuoteStatus::Type);

/// State of a trade awaiting acknowledgement.
struct TradeStatus {
    enum Type : int32_t {
        REJECTED = 1,
        CANCEL_REQUESTED = 2,
        NOT_APPLICABLE = 254,
    };
    static constexpr const char* Name = "TradeStatus";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 254;
    static constexpr unsigned int _nbValues = 3;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<TradeStatus>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<TradeStatus>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<TradeStatus>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<TradeStatus>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<TradeStatus>(text);
    }
};
std::ostream& operator<<(std::ostream& os, TradeStatus::Type value);
FastOStream& operator<<(FastOStream& os, TradeStatus::Type value);
Velmora::of<TradeStatus> enumerationOf(TradeStatus::Type);

/// Which quotes a cancellation covers.
struct QuoteCancelType {
    enum Type : int32_t {
        CANCEL_FOR_SYMBOL = 1,
        CANCEL_ALL_QUOTES = 4,
        CANCEL_QUOTE_SPECIFIED_IN_QUOTE_ID = 5,
    };
    static constexpr const char* Name = "QuoteCancelType";
    static bool _initialized;
    static constexpr unsigned int _maxValue = 5;
    static constexpr unsigned int _nbValues = 3;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<QuoteCancelType>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<QuoteCancelType>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<QuoteCancelType>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<QuoteCancelType>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<QuoteCancelType>(text);
    }
};
std::ostream& operator<<(std::ostream& os, QuoteCancelType::Type value);
FastOStream& operator<<(FastOStream& os, QuoteCancelType::Type value);
Velmora::of<QuoteCancelType> enumerationOf(QuoteCancelType::Type);

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

// Records and messages. All have the same operations, over their fields in declaration order:
//
//   X(alloc)         every field zero; strings and vectors empty, bound to `alloc` and taking all storage from it
//   ==, !=, <        by the first field that differs
//   write(codec)     appends the encoding; the caller leaves enough room
//   read(codec)      overwrites the fields from a complete encoding; throws when the message block is exhausted
//   checkbounds      asserts that the value and all it owns lie inside [begin, end)
//   operators <<     one line of text, "<X name=value ...>"
//
// A value with strings or vectors lives in a message block: it is built with an allocator only, and copied by
// assignment, which rebuilds what it owns in the block of the target. The others are plain bytes.

// Records: travel inside messages.

/// A named parameter.
struct KeyValuePair {
    bufstring key;   ///< name of the parameter
    bufstring value; ///< value of the parameter

    explicit KeyValuePair(BufferAllocator& alloc);
    ~KeyValuePair();
    KeyValuePair& operator=(const KeyValuePair&) = default;
    bool operator==(const KeyValuePair& other) const;
    bool operator!=(const KeyValuePair& other) const;
    bool operator<(const KeyValuePair& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    KeyValuePair() = delete;
    KeyValuePair(const KeyValuePair&) = delete;
};
std::ostream& operator<<(std::ostream& os, const KeyValuePair& value);
FastOStream& operator<<(FastOStream& os, const KeyValuePair& value);

/// An identifier and the name it stands for.
struct IDNamePair {
    int32_t id{};   ///< identifier that the name belongs to
    bufstring name; ///< name for people

    explicit IDNamePair(BufferAllocator& alloc);
    ~IDNamePair();
    IDNamePair& operator=(const IDNamePair&) = default;
    bool operator==(const IDNamePair& other) const;
    bool operator!=(const IDNamePair& other) const;
    bool operator<(const IDNamePair& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    IDNamePair() = delete;
    IDNamePair(const IDNamePair&) = delete;
};
std::ostream& operator<<(std::ostream& os, const IDNamePair& value);
FastOStream& operator<<(FastOStream& os, const IDNamePair& value);

/// A market and the feed it belongs to; the market comes first.
struct FeedMarketID {
    int32_t marketID{}; ///< identifier of the market within its feed
    int32_t feedID{};   ///< identifier of the feed

    FeedMarketID() = default;
    explicit FeedMarketID(BufferAllocator&) {}
    FeedMarketID(const FeedMarketID&) = default;
    ~FeedMarketID() = default;
    FeedMarketID& operator=(const FeedMarketID&) = default;

    FeedMarketID(int32_t marketID_, int32_t feedID_) : marketID(marketID_), feedID(feedID_) {}
    void set(int32_t marketID_, int32_t feedID_) { *this = FeedMarketID(marketID_, feedID_); }

    bool operator==(const FeedMarketID& other) const;
    bool operator!=(const FeedMarketID& other) const;
    bool operator<(const FeedMarketID& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const FeedMarketID& value);
FastOStream& operator<<(FastOStream& os, const FeedMarketID& value);

/// One level, trade or quote of a market's book.
struct MDEntry {
    int64_t price{};                     ///< price, fixed point; the peers agree on the scale
    int64_t amount{};                    ///< amount, fixed point; the peers agree on the scale
    int64_t minAmount{};                 ///< smallest amount that may be executed, fixed point; the peers agree on the scale
    MDUpdateAction::Type updateAction{}; ///< what happens to the entry in the book
    MDElement::Type element{};           ///< what the entry stands for
    Side::Type side{};                   ///< side of the order, quote or entry
    int8_t source{};                     ///< where the entry comes from, as a plain number that is never validated
    int16_t numberOfOrders{};            ///< number of orders behind the entry
    bufstring components;                ///< parts that the entry is made of, as text

    explicit MDEntry(BufferAllocator& alloc);
    ~MDEntry();
    MDEntry& operator=(const MDEntry&) = default;
    bool operator==(const MDEntry& other) const;
    bool operator!=(const MDEntry& other) const;
    bool operator<(const MDEntry& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    MDEntry() = delete;
    MDEntry(const MDEntry&) = delete;
};
std::ostream& operator<<(std::ostream& os, const MDEntry& value);
FastOStream& operator<<(FastOStream& os, const MDEntry& value);

/// One statistics counter of a thread.
struct StatCounter {
    StatType::Type type{}; ///< kind of counter
    bufstring name;        ///< name of the counter
    int32_t value{};       ///< value of the counter

    explicit StatCounter(BufferAllocator& alloc);
    ~StatCounter();
    StatCounter& operator=(const StatCounter&) = default;
    bool operator==(const StatCounter& other) const;
    bool operator!=(const StatCounter& other) const;
    bool operator<(const StatCounter& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    StatCounter() = delete;
    StatCounter(const StatCounter&) = delete;
};
std::ostream& operator<<(std::ostream& os, const StatCounter& value);
FastOStream& operator<<(FastOStream& os, const StatCounter& value);

/// Sign of life of the API server, with the feeds that are up.
struct Heartbeat {
    int64_t timeApiServer{};    ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    bufvector<int> activeFeeds; ///< identifiers of the feeds that are up

    explicit Heartbeat(BufferAllocator& alloc);
    ~Heartbeat();
    Heartbeat& operator=(const Heartbeat&) = default;
    bool operator==(const Heartbeat& other) const;
    bool operator!=(const Heartbeat& other) const;
    bool operator<(const Heartbeat& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    Heartbeat() = delete;
    Heartbeat(const Heartbeat&) = delete;
};
std::ostream& operator<<(std::ostream& os, const Heartbeat& value);
FastOStream& operator<<(FastOStream& os, const Heartbeat& value);

/// End of a replay on one feed.
struct ReplayDone {
    int32_t feedID{};                  ///< identifier of the feed
    ReplayStatus::Type replayStatus{}; ///< how the replay ended

    ReplayDone() = default;
    explicit ReplayDone(BufferAllocator&) {}
    ReplayDone(const ReplayDone&) = default;
    ~ReplayDone() = default;
    ReplayDone& operator=(const ReplayDone&) = default;

    ReplayDone(int32_t feedID_, ReplayStatus::Type replayStatus_) : feedID(feedID_), replayStatus(replayStatus_) {}
    void set(int32_t feedID_, ReplayStatus::Type replayStatus_) { *this = ReplayDone(feedID_, replayStatus_); }

    bool operator==(const ReplayDone& other) const;
    bool operator!=(const ReplayDone& other) const;
    bool operator<(const ReplayDone& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const ReplayDone& value);
FastOStream& operator<<(FastOStream& os, const ReplayDone& value);

/// The last sequence number of one user.
struct UserSequenceID {
    int32_t userID{};     ///< identifier of the user; identifies: user
    int32_t sequenceID{}; ///< number of the report in its sequence

    UserSequenceID() = default;
    explicit UserSequenceID(BufferAllocator&) {}
    UserSequenceID(const UserSequenceID&) = default;
    ~UserSequenceID() = default;
    UserSequenceID& operator=(const UserSequenceID&) = default;

    UserSequenceID(int32_t userID_, int32_t sequenceID_) : userID(userID_), sequenceID(sequenceID_) {}
    void set(int32_t userID_, int32_t sequenceID_) { *this = UserSequenceID(userID_, sequenceID_); }

    bool operator==(const UserSequenceID& other) const;
    bool operator!=(const UserSequenceID& other) const;
    bool operator<(const UserSequenceID& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const UserSequenceID& value);
FastOStream& operator<<(FastOStream& os, const UserSequenceID& value);

/// A market's book, or the changes to it, with the times of its way.
struct MarketView {
    FeedMarketID fmID{};            ///< market and feed concerned
    int64_t timeExchange{};         ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    int64_t timeArrival{};          ///< 64-bit time of arrival; the peers agree on the unit; station: arrival
    int64_t timeHandler{};          ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeEnhanced{};         ///< 64-bit time at which the data was enhanced; the peers agree on the unit; station: enhanced
    int64_t timeApiServer{};        ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};        ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    bool isSnapshot{};              ///< whether this is snapshot data
    bufvectox<MDEntry> mdEntryList; ///< the entries, in order

    explicit MarketView(BufferAllocator& alloc);
    ~MarketView();
    MarketView& operator=(const MarketView&) = default;
    bool operator==(const MarketView& other) const;
    bool operator!=(const MarketView& other) const;
    bool operator<(const MarketView& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    MarketView() = delete;
    MarketView(const MarketView&) = delete;
};
std::ostream& operator<<(std::ostream& os, const MarketView& value);
FastOStream& operator<<(FastOStream& os, const MarketView& value);

/// A new order from a client.
struct SubmitOrder {
    int64_t orderID{};                  ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;                  ///< the client's own identifier of the order; identifies: clientOrder
    int64_t timeApiClient{};            ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{};            ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};              ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int32_t feedID{};                   ///< identifier of the feed
    int32_t marketID{};                 ///< identifier of the market within its feed
    Side::Type side{};                  ///< side of the order, quote or entry
    int64_t amount{};                   ///< amount, fixed point; the peers agree on the scale
    int64_t price{};                    ///< price, fixed point; the peers agree on the scale
    OrderType::Type ordType{};          ///< kind of order
    TimeInForce::Type timeInForce{};    ///< how long the order stays in force
    int64_t stopPrice{};                ///< price that triggers a stop order, fixed point; the peers agree on the scale
    int64_t maxShow{};                  ///< largest amount shown to the market, fixed point; the peers agree on the scale
    int64_t minAmount{};                ///< smallest amount that may be executed, fixed point; the peers agree on the scale
    bufvectox<KeyValuePair> parameters; ///< further parameters of the order

    explicit SubmitOrder(BufferAllocator& alloc);
    ~SubmitOrder();
    SubmitOrder& operator=(const SubmitOrder&) = default;
    bool operator==(const SubmitOrder& other) const;
    bool operator!=(const SubmitOrder& other) const;
    bool operator<(const SubmitOrder& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    SubmitOrder() = delete;
    SubmitOrder(const SubmitOrder&) = delete;
};
std::ostream& operator<<(std::ostream& os, const SubmitOrder& value);
FastOStream& operator<<(FastOStream& os, const SubmitOrder& value);

/// A client's cancellation of one order.
struct CancelOrder {
    int64_t orderID{};       ///< the system's identifier of the order; identifies: order
    bufstring cxlID;         ///< the client's own identifier of the cancellation; identifies: cancel
    int32_t feedID{};        ///< identifier of the feed
    int32_t marketID{};      ///< identifier of the market within its feed
    bufstring clOrdID;       ///< the client's own identifier of the order; identifies: clientOrder
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{}; ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};   ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler

    explicit CancelOrder(BufferAllocator& alloc);
    ~CancelOrder();
    CancelOrder& operator=(const CancelOrder&) = default;
    bool operator==(const CancelOrder& other) const;
    bool operator!=(const CancelOrder& other) const;
    bool operator<(const CancelOrder& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    CancelOrder() = delete;
    CancelOrder(const CancelOrder&) = delete;
};
std::ostream& operator<<(std::ostream& os, const CancelOrder& value);
FastOStream& operator<<(FastOStream& os, const CancelOrder& value);

/// A client's cancellation of all orders of a feed.
struct CancelAllOrder {
    bufstring cxlID;         ///< the client's own identifier of the cancellation; identifies: cancel
    bool monitoredOnly{};    ///< whether only monitored orders are meant
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{}; ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};   ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int32_t feedID{};        ///< identifier of the feed

    explicit CancelAllOrder(BufferAllocator& alloc);
    ~CancelAllOrder();
    CancelAllOrder& operator=(const CancelAllOrder&) = default;
    bool operator==(const CancelAllOrder& other) const;
    bool operator!=(const CancelAllOrder& other) const;
    bool operator<(const CancelAllOrder& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    CancelAllOrder() = delete;
    CancelAllOrder(const CancelAllOrder&) = delete;
};
std::ostream& operator<<(std::ostream& os, const CancelAllOrder& value);
FastOStream& operator<<(FastOStream& os, const CancelAllOrder& value);

/// A client's change of a live order.
struct ModifyOrder {
    int64_t orderID{};               ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;               ///< the client's own identifier of the order; identifies: clientOrder
    bufstring clNewID;               ///< the client's own identifier of the order as modified; identifies: clientOrder
    int64_t timeApiClient{};         ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{};         ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};           ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int32_t feedID{};                ///< identifier of the feed
    int32_t marketID{};              ///< identifier of the market within its feed
    Side::Type side{};               ///< side of the order, quote or entry
    int64_t amount{};                ///< amount, fixed point; the peers agree on the scale
    int64_t price{};                 ///< price, fixed point; the peers agree on the scale
    int64_t minAmount{};             ///< smallest amount that may be executed, fixed point; the peers agree on the scale
    OrderType::Type ordType{};       ///< kind of order
    TimeInForce::Type timeInForce{}; ///< how long the order stays in force
    bufstring extra;                 ///< further text, opaque

    explicit ModifyOrder(BufferAllocator& alloc);
    ~ModifyOrder();
    ModifyOrder& operator=(const ModifyOrder&) = default;
    bool operator==(const ModifyOrder& other) const;
    bool operator!=(const ModifyOrder& other) const;
    bool operator<(const ModifyOrder& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    ModifyOrder() = delete;
    ModifyOrder(const ModifyOrder&) = delete;
};
std::ostream& operator<<(std::ostream& os, const ModifyOrder& value);
FastOStream& operator<<(FastOStream& os, const ModifyOrder& value);

/// Report that the system received an order.
struct OrderReceived {
    int32_t sequenceID{};            ///< number of the report in its sequence
    int64_t orderID{};               ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;               ///< the client's own identifier of the order; identifies: clientOrder
    bufstring modelID;               ///< identifier of the trading model
    int64_t timeApiServer{};         ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};         ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int32_t feedID{};                ///< identifier of the feed
    int32_t marketID{};              ///< identifier of the market within its feed
    Side::Type side{};               ///< side of the order, quote or entry
    int64_t amount{};                ///< amount, fixed point; the peers agree on the scale
    int64_t price{};                 ///< price, fixed point; the peers agree on the scale
    OrderType::Type ordType{};       ///< kind of order
    TimeInForce::Type timeInForce{}; ///< how long the order stays in force

    explicit OrderReceived(BufferAllocator& alloc);
    ~OrderReceived();
    OrderReceived& operator=(const OrderReceived&) = default;
    bool operator==(const OrderReceived& other) const;
    bool operator!=(const OrderReceived& other) const;
    bool operator<(const OrderReceived& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderReceived() = delete;
    OrderReceived(const OrderReceived&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderReceived& value);
FastOStream& operator<<(FastOStream& os, const OrderReceived& value);

/// Report that an order is live at the exchange.
struct OrderSubmitted {
    int32_t sequenceID{};          ///< number of the report in its sequence
    int64_t orderID{};             ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;             ///< the client's own identifier of the order; identifies: clientOrder
    bufstring exOrdID;             ///< the exchange's identifier of the order; identifies: exchangeOrder
    bufstring modelID;             ///< identifier of the trading model
    int64_t amount{};              ///< amount, fixed point; the peers agree on the scale
    OrderStatus::Type ordStatus{}; ///< state of the order
    int64_t timeExchange{};        ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    int64_t timeHandler{};         ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};       ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};       ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int32_t feedID{};              ///< identifier of the feed
    int32_t marketID{};            ///< identifier of the market within its feed

    explicit OrderSubmitted(BufferAllocator& alloc);
    ~OrderSubmitted();
    OrderSubmitted& operator=(const OrderSubmitted&) = default;
    bool operator==(const OrderSubmitted& other) const;
    bool operator!=(const OrderSubmitted& other) const;
    bool operator<(const OrderSubmitted& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderSubmitted() = delete;
    OrderSubmitted(const OrderSubmitted&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderSubmitted& value);
FastOStream& operator<<(FastOStream& os, const OrderSubmitted& value);

/// Report that an order was rejected.
struct OrderRejected {
    int32_t sequenceID{};        ///< number of the report in its sequence
    int64_t orderID{};           ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;           ///< the client's own identifier of the order; identifies: clientOrder
    bufstring modelID;           ///< identifier of the trading model
    int64_t timeExchange{};      ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    int64_t timeHandler{};       ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};     ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};     ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int32_t feedID{};            ///< identifier of the feed
    int32_t marketID{};          ///< identifier of the market within its feed
    RejectReason::Type reason{}; ///< why the order was rejected
    bufstring text;              ///< explanation for people

    explicit OrderRejected(BufferAllocator& alloc);
    ~OrderRejected();
    OrderRejected& operator=(const OrderRejected&) = default;
    bool operator==(const OrderRejected& other) const;
    bool operator!=(const OrderRejected& other) const;
    bool operator<(const OrderRejected& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderRejected() = delete;
    OrderRejected(const OrderRejected&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderRejected& value);
FastOStream& operator<<(FastOStream& os, const OrderRejected& value);

/// Report that an order was canceled.
struct OrderCanceled {
    int32_t sequenceID{};        ///< number of the report in its sequence
    int64_t orderID{};           ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;           ///< the client's own identifier of the order; identifies: clientOrder
    bufstring exOrdID;           ///< the exchange's identifier of the order; identifies: exchangeOrder
    bufstring cxlID;             ///< the client's own identifier of the cancellation; identifies: cancel
    bufstring modelID;           ///< identifier of the trading model
    int64_t timeExchange{};      ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    int64_t timeHandler{};       ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};     ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};     ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int32_t feedID{};            ///< identifier of the feed
    int32_t marketID{};          ///< identifier of the market within its feed
    Side::Type side{};           ///< side of the order, quote or entry
    int64_t amount{};            ///< amount, fixed point; the peers agree on the scale
    int64_t price{};             ///< price, fixed point; the peers agree on the scale
    CancelReason::Type reason{}; ///< why the order was canceled
    bufstring text;              ///< explanation for people

    explicit OrderCanceled(BufferAllocator& alloc);
    ~OrderCanceled();
    OrderCanceled& operator=(const OrderCanceled&) = default;
    bool operator==(const OrderCanceled& other) const;
    bool operator!=(const OrderCanceled& other) const;
    bool operator<(const OrderCanceled& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderCanceled() = delete;
    OrderCanceled(const OrderCanceled&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderCanceled& value);
FastOStream& operator<<(FastOStream& os, const OrderCanceled& value);

/// Report that an order is finished.
struct OrderDone {
    int32_t sequenceID{};    ///< number of the report in its sequence
    int64_t orderID{};       ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;       ///< the client's own identifier of the order; identifies: clientOrder
    bufstring exOrdID;       ///< the exchange's identifier of the order; identifies: exchangeOrder
    bufstring modelID;       ///< identifier of the trading model
    int64_t timeExchange{};  ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    int64_t timeHandler{};   ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{}; ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int32_t feedID{};        ///< identifier of the feed
    int32_t marketID{};      ///< identifier of the market within its feed

    explicit OrderDone(BufferAllocator& alloc);
    ~OrderDone();
    OrderDone& operator=(const OrderDone&) = default;
    bool operator==(const OrderDone& other) const;
    bool operator!=(const OrderDone& other) const;
    bool operator<(const OrderDone& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderDone() = delete;
    OrderDone(const OrderDone&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderDone& value);
FastOStream& operator<<(FastOStream& os, const OrderDone& value);

/// Report that a cancellation or modification was rejected.
struct OrderCancelRejected {
    int32_t sequenceID{};              ///< number of the report in its sequence
    int64_t orderID{};                 ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;                 ///< the client's own identifier of the order; identifies: clientOrder
    bufstring exOrdID;                 ///< the exchange's identifier of the order; identifies: exchangeOrder
    bufstring cxlID;                   ///< the client's own identifier of the cancellation; identifies: cancel
    bufstring modelID;                 ///< identifier of the trading model
    int64_t timeExchange{};            ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    int64_t timeHandler{};             ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};           ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};           ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int32_t feedID{};                  ///< identifier of the feed
    int32_t marketID{};                ///< identifier of the market within its feed
    CancelRejectReason::Type reason{}; ///< why the cancellation or modification was rejected
    bufstring text;                    ///< explanation for people

    explicit OrderCancelRejected(BufferAllocator& alloc);
    ~OrderCancelRejected();
    OrderCancelRejected& operator=(const OrderCancelRejected&) = default;
    bool operator==(const OrderCancelRejected& other) const;
    bool operator!=(const OrderCancelRejected& other) const;
    bool operator<(const OrderCancelRejected& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderCancelRejected() = delete;
    OrderCancelRejected(const OrderCancelRejected&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderCancelRejected& value);
FastOStream& operator<<(FastOStream& os, const OrderCancelRejected& value);

/// Report of one execution.
struct TradeCapture {
    int32_t sequenceID{};            ///< number of the report in its sequence
    int64_t orderID{};               ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;               ///< the client's own identifier of the order; identifies: clientOrder
    bufstring exOrdID;               ///< the exchange's identifier of the order; identifies: exchangeOrder
    bufstring exPendingID;           ///< the exchange's identifier of the pending trade
    bufstring exTradeID;             ///< the exchange's identifier of the trade
    bufstring modelID;               ///< identifier of the trading model
    int64_t timeExchange{};          ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    int64_t timeHandler{};           ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};         ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};         ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int32_t feedID{};                ///< identifier of the feed
    int32_t origFeedID{};            ///< identifier of the feed of origin
    int32_t marketID{};              ///< identifier of the market within its feed
    Side::Type side{};               ///< side of the order, quote or entry
    int64_t amount{};                ///< amount, fixed point; the peers agree on the scale
    int64_t price{};                 ///< price, fixed point; the peers agree on the scale
    bool isTaker{};                  ///< whether this party took liquidity
    MatchStatus::Type matchStatus{}; ///< state of the match
    bufstring counterPartyID;        ///< identifier of the other party
    int64_t tradeDate{};             ///< 64-bit trade date; the peers agree on the calendar meaning
    int64_t settlDate{};             ///< 64-bit settlement date; the peers agree on the calendar meaning

    explicit TradeCapture(BufferAllocator& alloc);
    ~TradeCapture();
    TradeCapture& operator=(const TradeCapture&) = default;
    bool operator==(const TradeCapture& other) const;
    bool operator!=(const TradeCapture& other) const;
    bool operator<(const TradeCapture& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeCapture() = delete;
    TradeCapture(const TradeCapture&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeCapture& value);
FastOStream& operator<<(FastOStream& os, const TradeCapture& value);

/// Copy of an execution for those who follow a customer's trading.
struct DropCopy {
    int32_t sequenceID{};            ///< number of the report in its sequence
    bufstring customerClientID;      ///< the customer's identifier of the client
    bufstring customerAccountID;     ///< the customer's identifier of the account
    bufstring userName;              ///< name of the user
    bufstring onBehalfOfCompID;      ///< identifier of the firm on whose behalf this is done
    bufstring onBehalfOfSubID;       ///< identifier within the firm on whose behalf this is done
    bufstring clOrdID;               ///< the client's own identifier of the order; identifies: clientOrder
    bufstring exOrdID;               ///< the exchange's identifier of the order; identifies: exchangeOrder
    bufstring exPendingID;           ///< the exchange's identifier of the pending trade
    bufstring exTradeID;             ///< the exchange's identifier of the trade
    bufstring modelID;               ///< identifier of the trading model
    int64_t timeExchange{};          ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    int64_t timeHandler{};           ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};         ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};         ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int32_t feedID{};                ///< identifier of the feed
    int32_t origFeedID{};            ///< identifier of the feed of origin
    int32_t marketID{};              ///< identifier of the market within its feed
    Side::Type side{};               ///< side of the order, quote or entry
    int64_t price{};                 ///< price, fixed point; the peers agree on the scale
    int64_t origPrice{};             ///< original price, fixed point; the peers agree on the scale
    int64_t baseCurrAmt{};           ///< amount in the base currency, fixed point; the peers agree on the scale
    bufstring baseCurrency;          ///< the base currency
    int64_t counterCurrAmt{};        ///< amount in the counter currency, fixed point; the peers agree on the scale
    bufstring counterCurrency;       ///< the counter currency
    int64_t settlCurrAmt{};          ///< amount in the settlement currency, fixed point; the peers agree on the scale
    bufstring settlCurrency;         ///< the settlement currency
    bool isTaker{};                  ///< whether this party took liquidity
    MatchStatus::Type matchStatus{}; ///< state of the match
    bufstring counterPartyID;        ///< identifier of the other party
    int64_t tradeDate{};             ///< 64-bit trade date; the peers agree on the calendar meaning
    int64_t settlDate{};             ///< 64-bit settlement date; the peers agree on the calendar meaning

    explicit DropCopy(BufferAllocator& alloc);
    ~DropCopy();
    DropCopy& operator=(const DropCopy&) = default;
    bool operator==(const DropCopy& other) const;
    bool operator!=(const DropCopy& other) const;
    bool operator<(const DropCopy& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    DropCopy() = delete;
    DropCopy(const DropCopy&) = delete;
};
std::ostream& operator<<(std::ostream& os, const DropCopy& value);
FastOStream& operator<<(FastOStream& os, const DropCopy& value);

/// An event at the exchange.
struct EventReport {
    ExchEventType::Type eventCode{}; ///< what happened
    FeedMarketID fmID{};             ///< market and feed concerned
    bufstring eventContents;         ///< details of the event, as text

    explicit EventReport(BufferAllocator& alloc);
    ~EventReport();
    EventReport& operator=(const EventReport&) = default;
    bool operator==(const EventReport& other) const;
    bool operator!=(const EventReport& other) const;
    bool operator<(const EventReport& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    EventReport() = delete;
    EventReport(const EventReport&) = delete;
};
std::ostream& operator<<(std::ostream& os, const EventReport& value);
FastOStream& operator<<(FastOStream& os, const EventReport& value);

/// New trade and settlement dates of a market.
struct DateRollover {
    FeedMarketID fmID{};  ///< market and feed concerned
    int64_t tradeDate{};  ///< 64-bit trade date; the peers agree on the calendar meaning
    int64_t settleDate{}; ///< 64-bit settlement date; the peers agree on the calendar meaning

    DateRollover() = default;
    explicit DateRollover(BufferAllocator&) {}
    DateRollover(const DateRollover&) = default;
    ~DateRollover() = default;
    DateRollover& operator=(const DateRollover&) = default;

    DateRollover(FeedMarketID fmID_, int64_t tradeDate_, int64_t settleDate_) : fmID(fmID_), tradeDate(tradeDate_), settleDate(settleDate_) {}
    void set(FeedMarketID fmID_, int64_t tradeDate_, int64_t settleDate_) { *this = DateRollover(fmID_, tradeDate_, settleDate_); }

    bool operator==(const DateRollover& other) const;
    bool operator!=(const DateRollover& other) const;
    bool operator<(const DateRollover& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const DateRollover& value);
FastOStream& operator<<(FastOStream& os, const DateRollover& value);

/// Rate of a market, for the evaluation of limits.
struct MarketRate {
    int32_t marketID{};  ///< identifier of the market within its feed
    int64_t settlTime{}; ///< 64-bit settlement time; the peers agree on the unit
    bufstring rate;      ///< rate, as text

    explicit MarketRate(BufferAllocator& alloc);
    ~MarketRate();
    MarketRate& operator=(const MarketRate&) = default;
    bool operator==(const MarketRate& other) const;
    bool operator!=(const MarketRate& other) const;
    bool operator<(const MarketRate& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    MarketRate() = delete;
    MarketRate(const MarketRate&) = delete;
};
std::ostream& operator<<(std::ostream& os, const MarketRate& value);
FastOStream& operator<<(FastOStream& os, const MarketRate& value);

/// Trading limits of a group of users on a market.
struct TradeLimit {
    bufstring limitID;        ///< identifier of the limit
    bufstring groupName;      ///< name of the group of users
    int32_t feedID{};         ///< identifier of the feed
    int32_t marketID{};       ///< identifier of the market within its feed
    CcyType::Type ccyType{};  ///< currency that the amounts are in
    bufstring nopAmount;      ///< amount of the NOP limit, as text
    bufstring dslAmount;      ///< amount of the DSL limit, as text
    bufstring positionAmount; ///< amount of the position limit, as text
    bufstring pendingAmount;  ///< amount of the pending limit, as text
    bufstring singleAmount;   ///< amount of the single limit, as text
    bufstring throttleCap;    ///< cap of the throttle, as text
    bufstring adminName;      ///< name of the administrator
    bufstring contacts;       ///< whom to contact, as text
    int16_t nopWarnPct{};     ///< level of the NOP limit that calls for a warning, in percent
    int16_t dslWarnPct{};     ///< level of the DSL limit that calls for a warning, in percent

    explicit TradeLimit(BufferAllocator& alloc);
    ~TradeLimit();
    TradeLimit& operator=(const TradeLimit&) = default;
    bool operator==(const TradeLimit& other) const;
    bool operator!=(const TradeLimit& other) const;
    bool operator<(const TradeLimit& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeLimit() = delete;
    TradeLimit(const TradeLimit&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeLimit& value);
FastOStream& operator<<(FastOStream& os, const TradeLimit& value);

/// How much of its limits a group of users has taken up on a market.
struct TradeState {
    bufstring groupName;         ///< name of the group of users
    bufstring boughtBase;        ///< amount bought in the base currency, as text
    bufstring soldBase;          ///< amount sold in the base currency, as text
    bufstring boughtCounter;     ///< amount bought in the counter currency, as text
    bufstring soldCounter;       ///< amount sold in the counter currency, as text
    bufstring pendingBoughtBase; ///< amount of pending purchases in the base currency, as text
    bufstring pendingSoldBase;   ///< amount of pending sales in the base currency, as text
    int32_t feedID{};            ///< identifier of the feed
    int32_t marketID{};          ///< identifier of the market within its feed
    CcyType::Type ccyType{};     ///< currency that the amounts are in
    int64_t settlTime{};         ///< 64-bit settlement time; the peers agree on the unit
    int64_t syncTime{};          ///< 64-bit time of the last synchronisation; the peers agree on the unit

    explicit TradeState(BufferAllocator& alloc);
    ~TradeState();
    TradeState& operator=(const TradeState&) = default;
    bool operator==(const TradeState& other) const;
    bool operator!=(const TradeState& other) const;
    bool operator<(const TradeState& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeState() = delete;
    TradeState(const TradeState&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeState& value);
FastOStream& operator<<(FastOStream& os, const TradeState& value);

/// A user and the groups the user belongs to.
struct TradeHierarchy {
    bufstring userName;              ///< name of the user
    bufvectox<bufstring> groupNames; ///< names of the groups that the user belongs to

    explicit TradeHierarchy(BufferAllocator& alloc);
    ~TradeHierarchy();
    TradeHierarchy& operator=(const TradeHierarchy&) = default;
    bool operator==(const TradeHierarchy& other) const;
    bool operator!=(const TradeHierarchy& other) const;
    bool operator<(const TradeHierarchy& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeHierarchy() = delete;
    TradeHierarchy(const TradeHierarchy&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeHierarchy& value);
FastOStream& operator<<(FastOStream& os, const TradeHierarchy& value);

/// Limits, states and hierarchy of trading risk, whole or changed.
struct TradeLimitData {
    bufstring clDataID;                      ///< the client's own identifier of the data
    bufvectox<TradeLimit> groupLimits;       ///< limits, one per entry
    bufvectox<TradeState> groupStates;       ///< states of use, one per entry
    bufvectox<TradeHierarchy> userHierarchy; ///< users and their groups
    bufvectox<MarketRate> marketRates;       ///< rates of the markets
    int32_t numRemainingMessages{};          ///< number of messages still to follow
    bool isSnapshot{};                       ///< whether this is snapshot data

    explicit TradeLimitData(BufferAllocator& alloc);
    ~TradeLimitData();
    TradeLimitData& operator=(const TradeLimitData&) = default;
    bool operator==(const TradeLimitData& other) const;
    bool operator!=(const TradeLimitData& other) const;
    bool operator<(const TradeLimitData& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeLimitData() = delete;
    TradeLimitData(const TradeLimitData&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeLimitData& value);
FastOStream& operator<<(FastOStream& os, const TradeLimitData& value);

/// Outcome of a change of one limit.
struct RiskLimitStatus {
    bufstring group;           ///< name of the group of users
    int32_t feedID{};          ///< identifier of the feed
    int32_t marketID{};        ///< identifier of the market within its feed
    RiskStatus::Type status{}; ///< state reported
    bufstring reason;          ///< explanation for people

    explicit RiskLimitStatus(BufferAllocator& alloc);
    ~RiskLimitStatus();
    RiskLimitStatus& operator=(const RiskLimitStatus&) = default;
    bool operator==(const RiskLimitStatus& other) const;
    bool operator!=(const RiskLimitStatus& other) const;
    bool operator<(const RiskLimitStatus& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RiskLimitStatus() = delete;
    RiskLimitStatus(const RiskLimitStatus&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RiskLimitStatus& value);
FastOStream& operator<<(FastOStream& os, const RiskLimitStatus& value);

/// Outcome of a change of one user's use of a limit.
struct RiskUsageStatus {
    bufstring user;            ///< name of the user
    int64_t settlDate{};       ///< 64-bit settlement date; the peers agree on the calendar meaning
    int32_t feedID{};          ///< identifier of the feed
    int32_t marketID{};        ///< identifier of the market within its feed
    RiskStatus::Type status{}; ///< state reported
    bufstring reason;          ///< explanation for people

    explicit RiskUsageStatus(BufferAllocator& alloc);
    ~RiskUsageStatus();
    RiskUsageStatus& operator=(const RiskUsageStatus&) = default;
    bool operator==(const RiskUsageStatus& other) const;
    bool operator!=(const RiskUsageStatus& other) const;
    bool operator<(const RiskUsageStatus& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RiskUsageStatus() = delete;
    RiskUsageStatus(const RiskUsageStatus&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RiskUsageStatus& value);
FastOStream& operator<<(FastOStream& os, const RiskUsageStatus& value);

/// Outcome of a request to change risk data.
struct RiskResponse {
    bufstring clRequestID;                  ///< the client's own identifier of the request
    bufvectox<RiskLimitStatus> limitStatus; ///< outcome per limit
    bufvectox<RiskUsageStatus> usageStatus; ///< outcome per use of a limit

    explicit RiskResponse(BufferAllocator& alloc);
    ~RiskResponse();
    RiskResponse& operator=(const RiskResponse&) = default;
    bool operator==(const RiskResponse& other) const;
    bool operator!=(const RiskResponse& other) const;
    bool operator<(const RiskResponse& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RiskResponse() = delete;
    RiskResponse(const RiskResponse&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RiskResponse& value);
FastOStream& operator<<(FastOStream& os, const RiskResponse& value);

/// Outcome of a request to lock or unlock a user.
struct LockResponse {
    bufstring clRequestID;     ///< the client's own identifier of the request
    LockStatus::Type status{}; ///< state reported
    bufstring reason;          ///< explanation for people

    explicit LockResponse(BufferAllocator& alloc);
    ~LockResponse();
    LockResponse& operator=(const LockResponse&) = default;
    bool operator==(const LockResponse& other) const;
    bool operator!=(const LockResponse& other) const;
    bool operator<(const LockResponse& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    LockResponse() = delete;
    LockResponse(const LockResponse&) = delete;
};
std::ostream& operator<<(std::ostream& os, const LockResponse& value);
FastOStream& operator<<(FastOStream& os, const LockResponse& value);

/// Request to lock or unlock a user.
struct LockUser {
    bufstring clRequestID; ///< the client's own identifier of the request
    bool locked{};         ///< whether the user is to be locked
    bufstring username;    ///< name of the user

    explicit LockUser(BufferAllocator& alloc);
    ~LockUser();
    LockUser& operator=(const LockUser&) = default;
    bool operator==(const LockUser& other) const;
    bool operator!=(const LockUser& other) const;
    bool operator<(const LockUser& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    LockUser() = delete;
    LockUser(const LockUser&) = delete;
};
std::ostream& operator<<(std::ostream& os, const LockUser& value);
FastOStream& operator<<(FastOStream& os, const LockUser& value);

/// One incarnation of an application on the memory bus.
struct MemBusID {
    int16_t appID{};      ///< identifier of the application on the memory bus
    int64_t generation{}; ///< generation of the application

    MemBusID() = default;
    explicit MemBusID(BufferAllocator&) {}
    MemBusID(const MemBusID&) = default;
    ~MemBusID() = default;
    MemBusID& operator=(const MemBusID&) = default;

    MemBusID(int16_t appID_, int64_t generation_) : appID(appID_), generation(generation_) {}
    void set(int16_t appID_, int64_t generation_) { *this = MemBusID(appID_, generation_); }

    bool operator==(const MemBusID& other) const;
    bool operator!=(const MemBusID& other) const;
    bool operator<(const MemBusID& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const MemBusID& value);
FastOStream& operator<<(FastOStream& os, const MemBusID& value);

/// Configuration of one market of a feed.
struct APIMarket {
    int32_t marketID{};                    ///< identifier of the market within its feed
    bufstring name;                        ///< name for people
    int32_t feedID{};                      ///< identifier of the feed
    int64_t bigIncrement{};                ///< large price increment, fixed point; the peers agree on the scale
    int64_t minIncrement{};                ///< smallest price increment, fixed point; the peers agree on the scale
    InstrumentType::Type instrumentType{}; ///< kind of instrument
    StandardTenor::Type settlementDate{};  ///< settlement tenor of the market; a tenor code, not a date

    explicit APIMarket(BufferAllocator& alloc);
    ~APIMarket();
    APIMarket& operator=(const APIMarket&) = default;
    bool operator==(const APIMarket& other) const;
    bool operator!=(const APIMarket& other) const;
    bool operator<(const APIMarket& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    APIMarket() = delete;
    APIMarket(const APIMarket&) = delete;
};
std::ostream& operator<<(std::ostream& os, const APIMarket& value);
FastOStream& operator<<(FastOStream& os, const APIMarket& value);

/// Configuration of one feed and its markets.
struct APIFeed {
    bufstring name;                  ///< name for people
    bufstring exchangeName;          ///< name of the exchange
    int32_t feedID{};                ///< identifier of the feed
    int64_t flags{};                 ///< flags of the feed
    bufvectox<APIMarket> marketList; ///< the markets of the feed

    explicit APIFeed(BufferAllocator& alloc);
    ~APIFeed();
    APIFeed& operator=(const APIFeed&) = default;
    bool operator==(const APIFeed& other) const;
    bool operator!=(const APIFeed& other) const;
    bool operator<(const APIFeed& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    APIFeed() = delete;
    APIFeed(const APIFeed&) = delete;
};
std::ostream& operator<<(std::ostream& os, const APIFeed& value);
FastOStream& operator<<(FastOStream& os, const APIFeed& value);

/// What a client subscribes to: a part of the API on one market.
struct Subscription {
    APIType::Type apiType{}; ///< part of the API concerned
    int32_t feedID{};        ///< identifier of the feed
    int32_t marketID{};      ///< identifier of the market within its feed

    Subscription() = default;
    explicit Subscription(BufferAllocator&) {}
    Subscription(const Subscription&) = default;
    ~Subscription() = default;
    Subscription& operator=(const Subscription&) = default;

    Subscription(APIType::Type apiType_, int32_t feedID_, int32_t marketID_) : apiType(apiType_), feedID(feedID_), marketID(marketID_) {}
    void set(APIType::Type apiType_, int32_t feedID_, int32_t marketID_) { *this = Subscription(apiType_, feedID_, marketID_); }

    bool operator==(const Subscription& other) const;
    bool operator!=(const Subscription& other) const;
    bool operator<(const Subscription& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const Subscription& value);
FastOStream& operator<<(FastOStream& os, const Subscription& value);

/// A change in the state of a subscription.
struct SubscriptionEvent {
    Subscription sub{};                ///< the subscription
    bufstring clSubID;                 ///< the client's own identifier of the subscription
    SubscriptionStatus::Type status{}; ///< state reported
    bufstring reason;                  ///< explanation for people
    bool sticky{};                     ///< whether the subscription is sticky

    explicit SubscriptionEvent(BufferAllocator& alloc);
    ~SubscriptionEvent();
    SubscriptionEvent& operator=(const SubscriptionEvent&) = default;
    bool operator==(const SubscriptionEvent& other) const;
    bool operator!=(const SubscriptionEvent& other) const;
    bool operator<(const SubscriptionEvent& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    SubscriptionEvent() = delete;
    SubscriptionEvent(const SubscriptionEvent&) = delete;
};
std::ostream& operator<<(std::ostream& os, const SubscriptionEvent& value);
FastOStream& operator<<(FastOStream& os, const SubscriptionEvent& value);

/// A request for quotes.
struct QuoteRequest {
    int32_t feedID{};        ///< identifier of the feed
    int32_t marketID{};      ///< identifier of the market within its feed
    bool isBaseSpecified{};  ///< whether the amount is specified in the base currency
    bufstring quoteReqID;    ///< identifier of the quote request; identifies: quoteRequest
    bufstring mdStreamID;    ///< identifier of the market data stream
    int64_t amount{};        ///< amount, fixed point; the peers agree on the scale
    Side::Type side{};       ///< side of the order, quote or entry
    int64_t settlDate{};     ///< 64-bit settlement date; the peers agree on the calendar meaning
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{}; ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};   ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    bufstring detail;        ///< further detail, as text

    explicit QuoteRequest(BufferAllocator& alloc);
    ~QuoteRequest();
    QuoteRequest& operator=(const QuoteRequest&) = default;
    bool operator==(const QuoteRequest& other) const;
    bool operator!=(const QuoteRequest& other) const;
    bool operator<(const QuoteRequest& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    QuoteRequest() = delete;
    QuoteRequest(const QuoteRequest&) = delete;
};
std::ostream& operator<<(std::ostream& os, const QuoteRequest& value);
FastOStream& operator<<(FastOStream& os, const QuoteRequest& value);

/// Refusal of a quote request.
struct RejectQuoteRequest {
    int32_t feedID{};                        ///< identifier of the feed
    int32_t marketID{};                      ///< identifier of the market within its feed
    bufstring quoteReqID;                    ///< identifier of the quote request; identifies: quoteRequest
    QuoteRequestRejectReason::Type reason{}; ///< why the request was rejected
    bufstring text;                          ///< explanation for people
    int64_t timeApiClient{};                 ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{};                 ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};                   ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    bufstring detail;                        ///< further detail, as text

    explicit RejectQuoteRequest(BufferAllocator& alloc);
    ~RejectQuoteRequest();
    RejectQuoteRequest& operator=(const RejectQuoteRequest&) = default;
    bool operator==(const RejectQuoteRequest& other) const;
    bool operator!=(const RejectQuoteRequest& other) const;
    bool operator<(const RejectQuoteRequest& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RejectQuoteRequest() = delete;
    RejectQuoteRequest(const RejectQuoteRequest&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RejectQuoteRequest& value);
FastOStream& operator<<(FastOStream& os, const RejectQuoteRequest& value);

/// Withdrawal of quotes.
struct CancelQuote {
    int32_t feedID{};             ///< identifier of the feed
    int32_t marketID{};           ///< identifier of the market within its feed
    bufstring quoteReqID;         ///< identifier of the quote request; identifies: quoteRequest
    bufstring quoteID;            ///< identifier of the quote; identifies: quote
    QuoteCancelType::Type type{}; ///< which quotes are withdrawn
    int64_t timeApiClient{};      ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{};      ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};        ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    bufstring detail;             ///< further detail, as text

    explicit CancelQuote(BufferAllocator& alloc);
    ~CancelQuote();
    CancelQuote& operator=(const CancelQuote&) = default;
    bool operator==(const CancelQuote& other) const;
    bool operator!=(const CancelQuote& other) const;
    bool operator<(const CancelQuote& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    CancelQuote() = delete;
    CancelQuote(const CancelQuote&) = delete;
};
std::ostream& operator<<(std::ostream& os, const CancelQuote& value);
FastOStream& operator<<(FastOStream& os, const CancelQuote& value);

/// One quote of a set.
struct QLQuote {
    bufstring quoteID; ///< identifier of the quote; identifies: quote
    int64_t price{};   ///< price, fixed point; the peers agree on the scale
    int64_t amount{};  ///< amount, fixed point; the peers agree on the scale
    Side::Type side{}; ///< side of the order, quote or entry
    bufstring detail;  ///< further detail, as text

    explicit QLQuote(BufferAllocator& alloc);
    ~QLQuote();
    QLQuote& operator=(const QLQuote&) = default;
    bool operator==(const QLQuote& other) const;
    bool operator!=(const QLQuote& other) const;
    bool operator<(const QLQuote& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    QLQuote() = delete;
    QLQuote(const QLQuote&) = delete;
};
std::ostream& operator<<(std::ostream& os, const QLQuote& value);
FastOStream& operator<<(FastOStream& os, const QLQuote& value);

/// A set of quotes for one quote request.
struct QLMassQuote {
    int32_t feedID{};          ///< identifier of the feed
    int32_t marketID{};        ///< identifier of the market within its feed
    bufstring quoteReqID;      ///< identifier of the quote request; identifies: quoteRequest
    bufstring mdStreamID;      ///< identifier of the market data stream
    int64_t settlDate{};       ///< 64-bit settlement date; the peers agree on the calendar meaning
    bufvectox<QLQuote> quotes; ///< the quotes
    int64_t timeApiClient{};   ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{};   ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};     ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    bufstring detail;          ///< further detail, as text

    explicit QLMassQuote(BufferAllocator& alloc);
    ~QLMassQuote();
    QLMassQuote& operator=(const QLMassQuote&) = default;
    bool operator==(const QLMassQuote& other) const;
    bool operator!=(const QLMassQuote& other) const;
    bool operator<(const QLMassQuote& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    QLMassQuote() = delete;
    QLMassQuote(const QLMassQuote&) = delete;
};
std::ostream& operator<<(std::ostream& os, const QLMassQuote& value);
FastOStream& operator<<(FastOStream& os, const QLMassQuote& value);

/// Answer to a set of quotes.
struct MassQuoteAck {
    int32_t feedID{};           ///< identifier of the feed
    int32_t marketID{};         ///< identifier of the market within its feed
    bufstring quoteReqID;       ///< identifier of the quote request; identifies: quoteRequest
    QuoteStatus::Type status{}; ///< state reported
    bufstring text;             ///< explanation for people
    int64_t timeHandler{};      ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};    ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};    ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    bufstring detail;           ///< further detail, as text

    explicit MassQuoteAck(BufferAllocator& alloc);
    ~MassQuoteAck();
    MassQuoteAck& operator=(const MassQuoteAck&) = default;
    bool operator==(const MassQuoteAck& other) const;
    bool operator!=(const MassQuoteAck& other) const;
    bool operator<(const MassQuoteAck& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    MassQuoteAck() = delete;
    MassQuoteAck(const MassQuoteAck&) = delete;
};
std::ostream& operator<<(std::ostream& os, const MassQuoteAck& value);
FastOStream& operator<<(FastOStream& os, const MassQuoteAck& value);

/// An order of the new-order interface, to be accepted or rejected.
struct NewOrder {
    int32_t sequenceID{};      ///< number of the report in its sequence
    int32_t feedID{};          ///< identifier of the feed
    int32_t marketID{};        ///< identifier of the market within its feed
    bool isBaseSpecified{};    ///< whether the amount is specified in the base currency
    Side::Type side{};         ///< side of the order, quote or entry
    int64_t price{};           ///< price, fixed point; the peers agree on the scale
    int64_t amount{};          ///< amount, fixed point; the peers agree on the scale
    OrderType::Type ordType{}; ///< kind of order
    bufstring partyID;         ///< identifier of the party
    bufstring clOrdID;         ///< the client's own identifier of the order; identifies: clientOrder
    bufstring orderID;         ///< the system's identifier of the order; identifies: order
    bufstring execID;          ///< identifier of the execution; identifies: execution
    bufstring quoteID;         ///< identifier of the quote; identifies: quote
    bufstring quoteReqID;      ///< identifier of the quote request; identifies: quoteRequest
    int64_t tradeDate{};       ///< 64-bit trade date; the peers agree on the calendar meaning
    int64_t settlDate{};       ///< 64-bit settlement date; the peers agree on the calendar meaning
    int64_t timeHandler{};     ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};   ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};   ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeExchange{};    ///< 64-bit time stamped at the exchange; the peers agree on the unit; station: exchange
    bufstring detail;          ///< further detail, as text

    explicit NewOrder(BufferAllocator& alloc);
    ~NewOrder();
    NewOrder& operator=(const NewOrder&) = default;
    bool operator==(const NewOrder& other) const;
    bool operator!=(const NewOrder& other) const;
    bool operator<(const NewOrder& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    NewOrder() = delete;
    NewOrder(const NewOrder&) = delete;
};
std::ostream& operator<<(std::ostream& os, const NewOrder& value);
FastOStream& operator<<(FastOStream& os, const NewOrder& value);

/// Rejection of an order of the new-order interface.
struct RejectOrder {
    int32_t feedID{};        ///< identifier of the feed
    int32_t marketID{};      ///< identifier of the market within its feed
    bool isBaseSpecified{};  ///< whether the amount is specified in the base currency
    Side::Type side{};       ///< side of the order, quote or entry
    int64_t amount{};        ///< amount, fixed point; the peers agree on the scale
    int64_t price{};         ///< price, fixed point; the peers agree on the scale
    bufstring partyID;       ///< identifier of the party
    bufstring orderID;       ///< the system's identifier of the order; identifies: order
    bufstring clOrdID;       ///< the client's own identifier of the order; identifies: clientOrder
    bufstring execID;        ///< identifier of the execution; identifies: execution
    bufstring quoteReqID;    ///< identifier of the quote request; identifies: quoteRequest
    int64_t tradeDate{};     ///< 64-bit trade date; the peers agree on the calendar meaning
    int64_t settlDate{};     ///< 64-bit settlement date; the peers agree on the calendar meaning
    bufstring text;          ///< explanation for people
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{}; ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};   ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    bufstring detail;        ///< further detail, as text

    explicit RejectOrder(BufferAllocator& alloc);
    ~RejectOrder();
    RejectOrder& operator=(const RejectOrder&) = default;
    bool operator==(const RejectOrder& other) const;
    bool operator!=(const RejectOrder& other) const;
    bool operator<(const RejectOrder& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RejectOrder() = delete;
    RejectOrder(const RejectOrder&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RejectOrder& value);
FastOStream& operator<<(FastOStream& os, const RejectOrder& value);

/// Acceptance of an order of the new-order interface.
struct AcceptOrder {
    int32_t feedID{};        ///< identifier of the feed
    int32_t marketID{};      ///< identifier of the market within its feed
    bool isBaseSpecified{};  ///< whether the amount is specified in the base currency
    Side::Type side{};       ///< side of the order, quote or entry
    int64_t amount{};        ///< amount, fixed point; the peers agree on the scale
    int64_t price{};         ///< price, fixed point; the peers agree on the scale
    bufstring partyID;       ///< identifier of the party
    bufstring clOrdID;       ///< the client's own identifier of the order; identifies: clientOrder
    bufstring orderID;       ///< the system's identifier of the order; identifies: order
    bufstring execID;        ///< identifier of the execution; identifies: execution
    bufstring quoteReqID;    ///< identifier of the quote request; identifies: quoteRequest
    int64_t tradeDate{};     ///< 64-bit trade date; the peers agree on the calendar meaning
    int64_t settlDate{};     ///< 64-bit settlement date; the peers agree on the calendar meaning
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{}; ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeHandler{};   ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    bufstring detail;        ///< further detail, as text

    explicit AcceptOrder(BufferAllocator& alloc);
    ~AcceptOrder();
    AcceptOrder& operator=(const AcceptOrder&) = default;
    bool operator==(const AcceptOrder& other) const;
    bool operator!=(const AcceptOrder& other) const;
    bool operator<(const AcceptOrder& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    AcceptOrder() = delete;
    AcceptOrder(const AcceptOrder&) = delete;
};
std::ostream& operator<<(std::ostream& os, const AcceptOrder& value);
FastOStream& operator<<(FastOStream& os, const AcceptOrder& value);

/// Acknowledgement of a reported trade.
struct TradeCaptureAck {
    int32_t sequenceID{};       ///< number of the report in its sequence
    int32_t feedID{};           ///< identifier of the feed
    int32_t marketID{};         ///< identifier of the market within its feed
    bufstring execID;           ///< identifier of the execution; identifies: execution
    TradeStatus::Type status{}; ///< state reported
    bufstring text;             ///< explanation for people
    int64_t timeHandler{};      ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{};    ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{};    ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    bufstring detail;           ///< further detail, as text

    explicit TradeCaptureAck(BufferAllocator& alloc);
    ~TradeCaptureAck();
    TradeCaptureAck& operator=(const TradeCaptureAck&) = default;
    bool operator==(const TradeCaptureAck& other) const;
    bool operator!=(const TradeCaptureAck& other) const;
    bool operator<(const TradeCaptureAck& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeCaptureAck() = delete;
    TradeCaptureAck(const TradeCaptureAck&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeCaptureAck& value);
FastOStream& operator<<(FastOStream& os, const TradeCaptureAck& value);

/// Notice that an order timed out.
struct OrderTimeout {
    int32_t sequenceID{};    ///< number of the report in its sequence
    int32_t feedID{};        ///< identifier of the feed
    int32_t marketID{};      ///< identifier of the market within its feed
    bufstring clOrdID;       ///< the client's own identifier of the order; identifies: clientOrder
    int64_t timeHandler{};   ///< 64-bit time stamped at the feed handler; the peers agree on the unit; station: handler
    int64_t timeApiServer{}; ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    bufstring detail;        ///< further detail, as text

    explicit OrderTimeout(BufferAllocator& alloc);
    ~OrderTimeout();
    OrderTimeout& operator=(const OrderTimeout&) = default;
    bool operator==(const OrderTimeout& other) const;
    bool operator!=(const OrderTimeout& other) const;
    bool operator<(const OrderTimeout& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderTimeout() = delete;
    OrderTimeout(const OrderTimeout&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderTimeout& value);
FastOStream& operator<<(FastOStream& os, const OrderTimeout& value);

// Messages. ID travels beside the encoded body; INDEX is the position in the protocol's message index.

/// A log entry of a server; its texts travel enciphered.
struct LogMessage {
    static constexpr MsgType_t ID = 0xD020;
    static constexpr short INDEX = 0;

    int64_t timestamp{};    ///< 64-bit time of the event; the peers agree on the unit
    bufstring thread;       ///< name of the thread
    LogLevel::Type level{}; ///< severity
    bufstring logger;       ///< name of the logger
    bufstring filename;     ///< source file
    int32_t lineno{};       ///< line in the source file
    bufstring function;     ///< function in the source file
    bufstring description;  ///< text of the entry

    explicit LogMessage(BufferAllocator& alloc);
    ~LogMessage();
    LogMessage& operator=(const LogMessage&) = default;
    bool operator==(const LogMessage& other) const;
    bool operator!=(const LogMessage& other) const;
    bool operator<(const LogMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    LogMessage() = delete;
    LogMessage(const LogMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const LogMessage& value);
FastOStream& operator<<(FastOStream& os, const LogMessage& value);

/// Statistics counters of one thread.
struct StatCounterMessage {
    static constexpr MsgType_t ID = 0xD034;
    static constexpr short INDEX = 1;

    bufstring threadname;         ///< name of the thread
    bufvectox<StatCounter> stats; ///< the counters

    explicit StatCounterMessage(BufferAllocator& alloc);
    ~StatCounterMessage();
    StatCounterMessage& operator=(const StatCounterMessage&) = default;
    bool operator==(const StatCounterMessage& other) const;
    bool operator!=(const StatCounterMessage& other) const;
    bool operator<(const StatCounterMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    StatCounterMessage() = delete;
    StatCounterMessage(const StatCounterMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const StatCounterMessage& value);
FastOStream& operator<<(FastOStream& os, const StatCounterMessage& value);

/// Raw data that arrived from an exchange.
struct ExchangeMessage {
    static constexpr MsgType_t ID = 0xD030;
    static constexpr short INDEX = 2;

    int64_t timeArrival{}; ///< 64-bit time of arrival; the peers agree on the unit; station: arrival
    int32_t feedID{};      ///< identifier of the feed
    int8_t connection{};   ///< number of the connection
    int8_t continuation{}; ///< continuation mark, opaque
    bufstring contents;    ///< the data as it arrived

    explicit ExchangeMessage(BufferAllocator& alloc);
    ~ExchangeMessage();
    ExchangeMessage& operator=(const ExchangeMessage&) = default;
    bool operator==(const ExchangeMessage& other) const;
    bool operator!=(const ExchangeMessage& other) const;
    bool operator<(const ExchangeMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    ExchangeMessage() = delete;
    ExchangeMessage(const ExchangeMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const ExchangeMessage& value);
FastOStream& operator<<(FastOStream& os, const ExchangeMessage& value);

/// Tells a server task that it is time to report statistics.
struct StatTimeoutMessage {
    static constexpr MsgType_t ID = 0xD033;
    static constexpr short INDEX = 3;

    int8_t dummy{}; ///< unused

    StatTimeoutMessage() = default;
    explicit StatTimeoutMessage(BufferAllocator&) {}
    StatTimeoutMessage(const StatTimeoutMessage&) = default;
    ~StatTimeoutMessage() = default;
    StatTimeoutMessage& operator=(const StatTimeoutMessage&) = default;
    bool operator==(const StatTimeoutMessage& other) const;
    bool operator!=(const StatTimeoutMessage& other) const;
    bool operator<(const StatTimeoutMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const StatTimeoutMessage& value);
FastOStream& operator<<(FastOStream& os, const StatTimeoutMessage& value);

/// Tells a server task to initialise itself.
struct TaskInitializationMessage {
    static constexpr MsgType_t ID = 0xD031;
    static constexpr short INDEX = 4;

    int8_t dummy{}; ///< unused

    TaskInitializationMessage() = default;
    explicit TaskInitializationMessage(BufferAllocator&) {}
    TaskInitializationMessage(const TaskInitializationMessage&) = default;
    ~TaskInitializationMessage() = default;
    TaskInitializationMessage& operator=(const TaskInitializationMessage&) = default;
    bool operator==(const TaskInitializationMessage& other) const;
    bool operator!=(const TaskInitializationMessage& other) const;
    bool operator<(const TaskInitializationMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const TaskInitializationMessage& value);
FastOStream& operator<<(FastOStream& os, const TaskInitializationMessage& value);

/// Tells a server task to check that market data comes in.
struct MDActivityCheckMessage {
    static constexpr MsgType_t ID = 0xD035;
    static constexpr short INDEX = 5;

    int8_t dummy{}; ///< unused

    MDActivityCheckMessage() = default;
    explicit MDActivityCheckMessage(BufferAllocator&) {}
    MDActivityCheckMessage(const MDActivityCheckMessage&) = default;
    ~MDActivityCheckMessage() = default;
    MDActivityCheckMessage& operator=(const MDActivityCheckMessage&) = default;
    bool operator==(const MDActivityCheckMessage& other) const;
    bool operator!=(const MDActivityCheckMessage& other) const;
    bool operator<(const MDActivityCheckMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const MDActivityCheckMessage& value);
FastOStream& operator<<(FastOStream& os, const MDActivityCheckMessage& value);

/// Hands a call over to another server task.
struct CallbackMessage {
    static constexpr MsgType_t ID = 0xD032;
    static constexpr short INDEX = 6;

    int8_t action{}; ///< what to do, opaque
    int64_t arg1{};  ///< first argument, opaque
    int64_t arg2{};  ///< second argument, opaque
    int64_t arg3{};  ///< third argument, opaque
    int64_t arg4{};  ///< fourth argument, opaque

    CallbackMessage() = default;
    explicit CallbackMessage(BufferAllocator&) {}
    CallbackMessage(const CallbackMessage&) = default;
    ~CallbackMessage() = default;
    CallbackMessage& operator=(const CallbackMessage&) = default;
    bool operator==(const CallbackMessage& other) const;
    bool operator!=(const CallbackMessage& other) const;
    bool operator<(const CallbackMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const CallbackMessage& value);
FastOStream& operator<<(FastOStream& os, const CallbackMessage& value);

/// Tells a server task that a timer expired.
struct TimerMessage {
    static constexpr MsgType_t ID = 0xD024;
    static constexpr short INDEX = 7;

    int32_t tqid{}; ///< identifier of the timer

    TimerMessage() = default;
    explicit TimerMessage(BufferAllocator&) {}
    TimerMessage(const TimerMessage&) = default;
    ~TimerMessage() = default;
    TimerMessage& operator=(const TimerMessage&) = default;
    bool operator==(const TimerMessage& other) const;
    bool operator!=(const TimerMessage& other) const;
    bool operator<(const TimerMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const TimerMessage& value);
FastOStream& operator<<(FastOStream& os, const TimerMessage& value);

/// Tells a server task that a subscription timed out.
struct SubscriptionTimeoutMessage {
    static constexpr MsgType_t ID = 0xD028;
    static constexpr short INDEX = 8;

    int32_t requestId{}; ///< identifier of the request that timed out

    SubscriptionTimeoutMessage() = default;
    explicit SubscriptionTimeoutMessage(BufferAllocator&) {}
    SubscriptionTimeoutMessage(const SubscriptionTimeoutMessage&) = default;
    ~SubscriptionTimeoutMessage() = default;
    SubscriptionTimeoutMessage& operator=(const SubscriptionTimeoutMessage&) = default;
    bool operator==(const SubscriptionTimeoutMessage& other) const;
    bool operator!=(const SubscriptionTimeoutMessage& other) const;
    bool operator<(const SubscriptionTimeoutMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const SubscriptionTimeoutMessage& value);
FastOStream& operator<<(FastOStream& os, const SubscriptionTimeoutMessage& value);

/// Tells a server task that a heartbeat is due.
struct HeartbeatTimerMessage {
    static constexpr MsgType_t ID = 0xA030;
    static constexpr short INDEX = 9;

    int64_t interval_ns{}; ///< interval in nanoseconds

    HeartbeatTimerMessage() = default;
    explicit HeartbeatTimerMessage(BufferAllocator&) {}
    HeartbeatTimerMessage(const HeartbeatTimerMessage&) = default;
    ~HeartbeatTimerMessage() = default;
    HeartbeatTimerMessage& operator=(const HeartbeatTimerMessage&) = default;
    bool operator==(const HeartbeatTimerMessage& other) const;
    bool operator!=(const HeartbeatTimerMessage& other) const;
    bool operator<(const HeartbeatTimerMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const HeartbeatTimerMessage& value);
FastOStream& operator<<(FastOStream& os, const HeartbeatTimerMessage& value);

/// Version and build of a peer.
struct VersionMessage {
    static constexpr MsgType_t ID = 0x0000;
    static constexpr short INDEX = 10;

    bufstring program;       ///< name of the program
    int8_t version_major{};  ///< major number of the version
    int8_t version_minor{};  ///< minor number of the version
    int8_t version_micro{};  ///< micro number of the version
    bufstring version_extra; ///< suffix of the version
    bufstring revision;      ///< revision of the sources
    bufstring commitdate;    ///< date of the commit
    bufstring branch;        ///< branch of the sources
    bufstring build;         ///< build
    bufstring arch;          ///< machine architecture
    bufstring host;          ///< host of the build
    bufstring date;          ///< date of the build
    bufstring time;          ///< time of the build
    bufstring compiler;      ///< compiler of the build
    bufstring defines;       ///< definitions of the build, opaque
    bufstring builduser;     ///< user who made the build
    bufstring distribution;  ///< distribution of the operating system
    bufstring platform;      ///< platform of the build
    bufstring protosig;      ///< signature of the protocol, opaque
    int32_t syncSize{};      ///< size of synchronisation, opaque
    bufstring extra1;        ///< not interpreted
    bufstring extra2;        ///< not interpreted
    bufstring extra3;        ///< not interpreted
    bufstring extra4;        ///< not interpreted
    bufstring extra5;        ///< not interpreted

    explicit VersionMessage(BufferAllocator& alloc);
    ~VersionMessage();
    VersionMessage& operator=(const VersionMessage&) = default;
    bool operator==(const VersionMessage& other) const;
    bool operator!=(const VersionMessage& other) const;
    bool operator<(const VersionMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    VersionMessage() = delete;
    VersionMessage(const VersionMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const VersionMessage& value);
FastOStream& operator<<(FastOStream& os, const VersionMessage& value);

/// The protocol definition that a peer speaks.
struct ProtocolDefinitionMessage {
    static constexpr MsgType_t ID = 0x0001;
    static constexpr short INDEX = 11;

    bufstring proto; ///< the protocol definition

    explicit ProtocolDefinitionMessage(BufferAllocator& alloc);
    ~ProtocolDefinitionMessage();
    ProtocolDefinitionMessage& operator=(const ProtocolDefinitionMessage&) = default;
    bool operator==(const ProtocolDefinitionMessage& other) const;
    bool operator!=(const ProtocolDefinitionMessage& other) const;
    bool operator<(const ProtocolDefinitionMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    ProtocolDefinitionMessage() = delete;
    ProtocolDefinitionMessage(const ProtocolDefinitionMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const ProtocolDefinitionMessage& value);
FastOStream& operator<<(FastOStream& os, const ProtocolDefinitionMessage& value);

/// Filler bytes.
struct PadMessage {
    static constexpr MsgType_t ID = 0x0002;
    static constexpr short INDEX = 12;

    bufstring padding; ///< filler; written with a fixed two-byte length, read with a varint one

    explicit PadMessage(BufferAllocator& alloc);
    ~PadMessage();
    PadMessage& operator=(const PadMessage&) = default;
    bool operator==(const PadMessage& other) const;
    bool operator!=(const PadMessage& other) const;
    bool operator<(const PadMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    PadMessage() = delete;
    PadMessage(const PadMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const PadMessage& value);
FastOStream& operator<<(FastOStream& os, const PadMessage& value);

/// Asks the peer whether it is still there.
struct RuThereMessage {
    static constexpr MsgType_t ID = 0xA013;
    static constexpr short INDEX = 13;

    int32_t dpdSeqNo{};      ///< sequence number of the probe
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client

    RuThereMessage() = default;
    explicit RuThereMessage(BufferAllocator&) {}
    RuThereMessage(const RuThereMessage&) = default;
    ~RuThereMessage() = default;
    RuThereMessage& operator=(const RuThereMessage&) = default;
    bool operator==(const RuThereMessage& other) const;
    bool operator!=(const RuThereMessage& other) const;
    bool operator<(const RuThereMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const RuThereMessage& value);
FastOStream& operator<<(FastOStream& os, const RuThereMessage& value);

/// Answers a peer that asked whether this side is still there.
struct ImHereMessage {
    static constexpr MsgType_t ID = 0xA014;
    static constexpr short INDEX = 14;

    int32_t dpdSeqNo{};      ///< sequence number of the probe
    int64_t timeApiClient{}; ///< 64-bit time stamped at the API client; the peers agree on the unit; station: client
    int64_t timeApiServer{}; ///< 64-bit time stamped at the API server; the peers agree on the unit; station: server

    ImHereMessage() = default;
    explicit ImHereMessage(BufferAllocator&) {}
    ImHereMessage(const ImHereMessage&) = default;
    ~ImHereMessage() = default;
    ImHereMessage& operator=(const ImHereMessage&) = default;
    bool operator==(const ImHereMessage& other) const;
    bool operator!=(const ImHereMessage& other) const;
    bool operator<(const ImHereMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const ImHereMessage& value);
FastOStream& operator<<(FastOStream& os, const ImHereMessage& value);

/// Heartbeat of the API server to its clients.
struct HeartbeatMessage {
    static constexpr MsgType_t ID = 0xA015;
    static constexpr short INDEX = 15;

    Heartbeat contents;  ///< the business data
    int32_t feedSeqID{}; ///< sequence number of the feed

    explicit HeartbeatMessage(BufferAllocator& alloc);
    ~HeartbeatMessage();
    HeartbeatMessage& operator=(const HeartbeatMessage&) = default;
    bool operator==(const HeartbeatMessage& other) const;
    bool operator!=(const HeartbeatMessage& other) const;
    bool operator<(const HeartbeatMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    HeartbeatMessage() = delete;
    HeartbeatMessage(const HeartbeatMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const HeartbeatMessage& value);
FastOStream& operator<<(FastOStream& os, const HeartbeatMessage& value);

/// Asks for a range of reports again.
struct ReplayMessage {
    static constexpr MsgType_t ID = 0xD040;
    static constexpr short INDEX = 16;

    int32_t feedID{}; ///< identifier of the feed
    int32_t first{};  ///< first number asked for
    int32_t last{};   ///< last number asked for
    int32_t userID{}; ///< identifier of the user; identifies: user

    ReplayMessage() = default;
    explicit ReplayMessage(BufferAllocator&) {}
    ReplayMessage(const ReplayMessage&) = default;
    ~ReplayMessage() = default;
    ReplayMessage& operator=(const ReplayMessage&) = default;
    bool operator==(const ReplayMessage& other) const;
    bool operator!=(const ReplayMessage& other) const;
    bool operator<(const ReplayMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const ReplayMessage& value);
FastOStream& operator<<(FastOStream& os, const ReplayMessage& value);

/// Says that a replay has ended.
struct ReplayDoneMessage {
    static constexpr MsgType_t ID = 0xD042;
    static constexpr short INDEX = 17;

    ReplayDone contents{}; ///< the business data
    int32_t userID{};      ///< identifier of the user; identifies: user

    ReplayDoneMessage() = default;
    explicit ReplayDoneMessage(BufferAllocator&) {}
    ReplayDoneMessage(const ReplayDoneMessage&) = default;
    ~ReplayDoneMessage() = default;
    ReplayDoneMessage& operator=(const ReplayDoneMessage&) = default;
    bool operator==(const ReplayDoneMessage& other) const;
    bool operator!=(const ReplayDoneMessage& other) const;
    bool operator<(const ReplayDoneMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const ReplayDoneMessage& value);
FastOStream& operator<<(FastOStream& os, const ReplayDoneMessage& value);

/// Last sequence numbers of a feed, for recovery.
struct LastSequenceIDMessage {
    static constexpr MsgType_t ID = 0xD041;
    static constexpr short INDEX = 18;

    bufvector<UserSequenceID> feedSeqIDs; ///< last sequence number of each user
    int32_t feedID{};                     ///< identifier of the feed
    int32_t origFeedID{};                 ///< identifier of the feed of origin
    int32_t sequenceID{};                 ///< number of the report in its sequence

    explicit LastSequenceIDMessage(BufferAllocator& alloc);
    ~LastSequenceIDMessage();
    LastSequenceIDMessage& operator=(const LastSequenceIDMessage&) = default;
    bool operator==(const LastSequenceIDMessage& other) const;
    bool operator!=(const LastSequenceIDMessage& other) const;
    bool operator<(const LastSequenceIDMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    LastSequenceIDMessage() = delete;
    LastSequenceIDMessage(const LastSequenceIDMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const LastSequenceIDMessage& value);
FastOStream& operator<<(FastOStream& os, const LastSequenceIDMessage& value);

/// Registers a batch of markets on a feed.
struct BatchRegisterMessage {
    static constexpr MsgType_t ID = 0xD050;
    static constexpr short INDEX = 19;

    int32_t feedID{};            ///< identifier of the feed
    bufvector<int> marketIDList; ///< identifiers of the markets of the batch
    int32_t batchDefID{};        ///< identifier of the batch definition

    explicit BatchRegisterMessage(BufferAllocator& alloc);
    ~BatchRegisterMessage();
    BatchRegisterMessage& operator=(const BatchRegisterMessage&) = default;
    bool operator==(const BatchRegisterMessage& other) const;
    bool operator!=(const BatchRegisterMessage& other) const;
    bool operator<(const BatchRegisterMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    BatchRegisterMessage() = delete;
    BatchRegisterMessage(const BatchRegisterMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const BatchRegisterMessage& value);
FastOStream& operator<<(FastOStream& os, const BatchRegisterMessage& value);

/// Takes back the registration of a batch of markets.
struct BatchUnregisterMessage {
    static constexpr MsgType_t ID = 0xD051;
    static constexpr short INDEX = 20;

    int32_t batchDefID{}; ///< identifier of the batch definition

    BatchUnregisterMessage() = default;
    explicit BatchUnregisterMessage(BufferAllocator&) {}
    BatchUnregisterMessage(const BatchUnregisterMessage&) = default;
    ~BatchUnregisterMessage() = default;
    BatchUnregisterMessage& operator=(const BatchUnregisterMessage&) = default;
    bool operator==(const BatchUnregisterMessage& other) const;
    bool operator!=(const BatchUnregisterMessage& other) const;
    bool operator<(const BatchUnregisterMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const BatchUnregisterMessage& value);
FastOStream& operator<<(FastOStream& os, const BatchUnregisterMessage& value);

/// Settlement date of a market.
struct SecurityInfoMessage {
    static constexpr MsgType_t ID = 0xD04F;
    static constexpr short INDEX = 21;

    FeedMarketID fmID{}; ///< market and feed concerned
    int64_t settlDate{}; ///< 64-bit settlement date; the peers agree on the calendar meaning

    SecurityInfoMessage() = default;
    explicit SecurityInfoMessage(BufferAllocator&) {}
    SecurityInfoMessage(const SecurityInfoMessage&) = default;
    ~SecurityInfoMessage() = default;
    SecurityInfoMessage& operator=(const SecurityInfoMessage&) = default;
    bool operator==(const SecurityInfoMessage& other) const;
    bool operator!=(const SecurityInfoMessage& other) const;
    bool operator<(const SecurityInfoMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const SecurityInfoMessage& value);
FastOStream& operator<<(FastOStream& os, const SecurityInfoMessage& value);

/// Says which batches are complete.
struct BatchesCompletedMessage {
    static constexpr MsgType_t ID = 0xD052;
    static constexpr short INDEX = 22;

    bufvector<int> batchesCompleted; ///< identifiers of the completed batches

    explicit BatchesCompletedMessage(BufferAllocator& alloc);
    ~BatchesCompletedMessage();
    BatchesCompletedMessage& operator=(const BatchesCompletedMessage&) = default;
    bool operator==(const BatchesCompletedMessage& other) const;
    bool operator!=(const BatchesCompletedMessage& other) const;
    bool operator<(const BatchesCompletedMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    BatchesCompletedMessage() = delete;
    BatchesCompletedMessage(const BatchesCompletedMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const BatchesCompletedMessage& value);
FastOStream& operator<<(FastOStream& os, const BatchesCompletedMessage& value);

/// Market data of one market.
struct MktDataMessage {
    static constexpr MsgType_t ID = 0xB099;
    static constexpr short INDEX = 23;

    MarketView mvd;                       ///< the market's view
    bufvector<FeedMarketID> fmIDsInBatch; ///< markets and feeds of the batch
    int64_t batchID{};                    ///< identifier of the batch
    int32_t streamID{};                   ///< identifier of the stream

    explicit MktDataMessage(BufferAllocator& alloc);
    ~MktDataMessage();
    MktDataMessage& operator=(const MktDataMessage&) = default;
    bool operator==(const MktDataMessage& other) const;
    bool operator!=(const MktDataMessage& other) const;
    bool operator<(const MktDataMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    MktDataMessage() = delete;
    MktDataMessage(const MktDataMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const MktDataMessage& value);
FastOStream& operator<<(FastOStream& os, const MktDataMessage& value);

/// Submits an order.
struct SubmitOrderMessage {
    static constexpr MsgType_t ID = 0xF0E9;
    static constexpr short INDEX = 24;

    int32_t userID{};           ///< identifier of the user; identifies: user
    bufstring quoteID;          ///< identifier of the quote; identifies: quote
    bufstring onBehalfOfCompID; ///< identifier of the firm on whose behalf this is done
    SubmitOrder contents;       ///< the business data
    bufstring modelID;          ///< identifier of the trading model

    explicit SubmitOrderMessage(BufferAllocator& alloc);
    ~SubmitOrderMessage();
    SubmitOrderMessage& operator=(const SubmitOrderMessage&) = default;
    bool operator==(const SubmitOrderMessage& other) const;
    bool operator!=(const SubmitOrderMessage& other) const;
    bool operator<(const SubmitOrderMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    SubmitOrderMessage() = delete;
    SubmitOrderMessage(const SubmitOrderMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const SubmitOrderMessage& value);
FastOStream& operator<<(FastOStream& os, const SubmitOrderMessage& value);

/// Cancels an order.
struct CancelOrderMessage {
    static constexpr MsgType_t ID = 0xF0EA;
    static constexpr short INDEX = 25;

    int32_t userID{};     ///< identifier of the user; identifies: user
    CancelOrder contents; ///< the business data

    explicit CancelOrderMessage(BufferAllocator& alloc);
    ~CancelOrderMessage();
    CancelOrderMessage& operator=(const CancelOrderMessage&) = default;
    bool operator==(const CancelOrderMessage& other) const;
    bool operator!=(const CancelOrderMessage& other) const;
    bool operator<(const CancelOrderMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    CancelOrderMessage() = delete;
    CancelOrderMessage(const CancelOrderMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const CancelOrderMessage& value);
FastOStream& operator<<(FastOStream& os, const CancelOrderMessage& value);

/// Cancels all orders of a feed.
struct CancelAllOrderMessage {
    static constexpr MsgType_t ID = 0xF0EB;
    static constexpr short INDEX = 26;

    int32_t userID{};        ///< identifier of the user; identifies: user
    CancelAllOrder contents; ///< the business data

    explicit CancelAllOrderMessage(BufferAllocator& alloc);
    ~CancelAllOrderMessage();
    CancelAllOrderMessage& operator=(const CancelAllOrderMessage&) = default;
    bool operator==(const CancelAllOrderMessage& other) const;
    bool operator!=(const CancelAllOrderMessage& other) const;
    bool operator<(const CancelAllOrderMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    CancelAllOrderMessage() = delete;
    CancelAllOrderMessage(const CancelAllOrderMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const CancelAllOrderMessage& value);
FastOStream& operator<<(FastOStream& os, const CancelAllOrderMessage& value);

/// Modifies an order.
struct ModifyOrderMessage {
    static constexpr MsgType_t ID = 0xF0EC;
    static constexpr short INDEX = 27;

    int32_t userID{};     ///< identifier of the user; identifies: user
    ModifyOrder contents; ///< the business data

    explicit ModifyOrderMessage(BufferAllocator& alloc);
    ~ModifyOrderMessage();
    ModifyOrderMessage& operator=(const ModifyOrderMessage&) = default;
    bool operator==(const ModifyOrderMessage& other) const;
    bool operator!=(const ModifyOrderMessage& other) const;
    bool operator<(const ModifyOrderMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    ModifyOrderMessage() = delete;
    ModifyOrderMessage(const ModifyOrderMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const ModifyOrderMessage& value);
FastOStream& operator<<(FastOStream& os, const ModifyOrderMessage& value);

/// Reports that an order was received.
struct OrderReceivedMessage {
    static constexpr MsgType_t ID = 0xF0ED;
    static constexpr short INDEX = 28;

    int32_t userID{};       ///< identifier of the user; identifies: user
    OrderReceived contents; ///< the business data

    explicit OrderReceivedMessage(BufferAllocator& alloc);
    ~OrderReceivedMessage();
    OrderReceivedMessage& operator=(const OrderReceivedMessage&) = default;
    bool operator==(const OrderReceivedMessage& other) const;
    bool operator!=(const OrderReceivedMessage& other) const;
    bool operator<(const OrderReceivedMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderReceivedMessage() = delete;
    OrderReceivedMessage(const OrderReceivedMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderReceivedMessage& value);
FastOStream& operator<<(FastOStream& os, const OrderReceivedMessage& value);

/// Reports that an order is live at the exchange.
struct OrderSubmittedMessage {
    static constexpr MsgType_t ID = 0xF0E8;
    static constexpr short INDEX = 29;

    int32_t userID{};        ///< identifier of the user; identifies: user
    OrderSubmitted contents; ///< the business data

    explicit OrderSubmittedMessage(BufferAllocator& alloc);
    ~OrderSubmittedMessage();
    OrderSubmittedMessage& operator=(const OrderSubmittedMessage&) = default;
    bool operator==(const OrderSubmittedMessage& other) const;
    bool operator!=(const OrderSubmittedMessage& other) const;
    bool operator<(const OrderSubmittedMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderSubmittedMessage() = delete;
    OrderSubmittedMessage(const OrderSubmittedMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderSubmittedMessage& value);
FastOStream& operator<<(FastOStream& os, const OrderSubmittedMessage& value);

/// Reports that an order was rejected.
struct OrderRejectedMessage {
    static constexpr MsgType_t ID = 0xF0E7;
    static constexpr short INDEX = 30;

    int32_t userID{};       ///< identifier of the user; identifies: user
    OrderRejected contents; ///< the business data

    explicit OrderRejectedMessage(BufferAllocator& alloc);
    ~OrderRejectedMessage();
    OrderRejectedMessage& operator=(const OrderRejectedMessage&) = default;
    bool operator==(const OrderRejectedMessage& other) const;
    bool operator!=(const OrderRejectedMessage& other) const;
    bool operator<(const OrderRejectedMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderRejectedMessage() = delete;
    OrderRejectedMessage(const OrderRejectedMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderRejectedMessage& value);
FastOStream& operator<<(FastOStream& os, const OrderRejectedMessage& value);

/// Reports that an order was canceled.
struct OrderCanceledMessage {
    static constexpr MsgType_t ID = 0xF0E6;
    static constexpr short INDEX = 31;

    int32_t userID{};       ///< identifier of the user; identifies: user
    OrderCanceled contents; ///< the business data

    explicit OrderCanceledMessage(BufferAllocator& alloc);
    ~OrderCanceledMessage();
    OrderCanceledMessage& operator=(const OrderCanceledMessage&) = default;
    bool operator==(const OrderCanceledMessage& other) const;
    bool operator!=(const OrderCanceledMessage& other) const;
    bool operator<(const OrderCanceledMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderCanceledMessage() = delete;
    OrderCanceledMessage(const OrderCanceledMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderCanceledMessage& value);
FastOStream& operator<<(FastOStream& os, const OrderCanceledMessage& value);

/// Reports that an order is finished.
struct OrderDoneMessage {
    static constexpr MsgType_t ID = 0xF0E5;
    static constexpr short INDEX = 32;

    int32_t userID{};   ///< identifier of the user; identifies: user
    OrderDone contents; ///< the business data

    explicit OrderDoneMessage(BufferAllocator& alloc);
    ~OrderDoneMessage();
    OrderDoneMessage& operator=(const OrderDoneMessage&) = default;
    bool operator==(const OrderDoneMessage& other) const;
    bool operator!=(const OrderDoneMessage& other) const;
    bool operator<(const OrderDoneMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderDoneMessage() = delete;
    OrderDoneMessage(const OrderDoneMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderDoneMessage& value);
FastOStream& operator<<(FastOStream& os, const OrderDoneMessage& value);

/// Reports that a cancellation or change was rejected.
struct OrderCancelRejectedMessage {
    static constexpr MsgType_t ID = 0xF0E4;
    static constexpr short INDEX = 33;

    int32_t userID{};             ///< identifier of the user; identifies: user
    OrderCancelRejected contents; ///< the business data

    explicit OrderCancelRejectedMessage(BufferAllocator& alloc);
    ~OrderCancelRejectedMessage();
    OrderCancelRejectedMessage& operator=(const OrderCancelRejectedMessage&) = default;
    bool operator==(const OrderCancelRejectedMessage& other) const;
    bool operator!=(const OrderCancelRejectedMessage& other) const;
    bool operator<(const OrderCancelRejectedMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderCancelRejectedMessage() = delete;
    OrderCancelRejectedMessage(const OrderCancelRejectedMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderCancelRejectedMessage& value);
FastOStream& operator<<(FastOStream& os, const OrderCancelRejectedMessage& value);

/// Reports an execution.
struct TradeCaptureMessage {
    static constexpr MsgType_t ID = 0xF0E3;
    static constexpr short INDEX = 34;

    int32_t userID{};      ///< identifier of the user; identifies: user
    int64_t origPrice{};   ///< original price, fixed point; the peers agree on the scale
    TradeCapture contents; ///< the business data

    explicit TradeCaptureMessage(BufferAllocator& alloc);
    ~TradeCaptureMessage();
    TradeCaptureMessage& operator=(const TradeCaptureMessage&) = default;
    bool operator==(const TradeCaptureMessage& other) const;
    bool operator!=(const TradeCaptureMessage& other) const;
    bool operator<(const TradeCaptureMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeCaptureMessage() = delete;
    TradeCaptureMessage(const TradeCaptureMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeCaptureMessage& value);
FastOStream& operator<<(FastOStream& os, const TradeCaptureMessage& value);

/// Delivers the copy of an execution.
struct DropCopyMessage {
    static constexpr MsgType_t ID = 0xF0E2;
    static constexpr short INDEX = 35;

    DropCopy contents;            ///< the business data
    int32_t userID{};             ///< identifier of the user; identifies: user
    int32_t origFeedSequenceID{}; ///< sequence number at the feed of origin

    explicit DropCopyMessage(BufferAllocator& alloc);
    ~DropCopyMessage();
    DropCopyMessage& operator=(const DropCopyMessage&) = default;
    bool operator==(const DropCopyMessage& other) const;
    bool operator!=(const DropCopyMessage& other) const;
    bool operator<(const DropCopyMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    DropCopyMessage() = delete;
    DropCopyMessage(const DropCopyMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const DropCopyMessage& value);
FastOStream& operator<<(FastOStream& os, const DropCopyMessage& value);

/// Reports an event at the exchange.
struct EventReportMessage {
    static constexpr MsgType_t ID = 0xF0C6;
    static constexpr short INDEX = 36;

    int32_t sequenceID{}; ///< number of the report in its sequence
    EventReport contents; ///< the business data

    explicit EventReportMessage(BufferAllocator& alloc);
    ~EventReportMessage();
    EventReportMessage& operator=(const EventReportMessage&) = default;
    bool operator==(const EventReportMessage& other) const;
    bool operator!=(const EventReportMessage& other) const;
    bool operator<(const EventReportMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    EventReportMessage() = delete;
    EventReportMessage(const EventReportMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const EventReportMessage& value);
FastOStream& operator<<(FastOStream& os, const EventReportMessage& value);

/// Announces new trade and settlement dates.
struct DateRolloverMessage {
    static constexpr MsgType_t ID = 0xF0C7;
    static constexpr short INDEX = 37;

    DateRollover contents{}; ///< the business data
    bool dispatchToAll{};    ///< whether everyone gets it

    DateRolloverMessage() = default;
    explicit DateRolloverMessage(BufferAllocator&) {}
    DateRolloverMessage(const DateRolloverMessage&) = default;
    ~DateRolloverMessage() = default;
    DateRolloverMessage& operator=(const DateRolloverMessage&) = default;
    bool operator==(const DateRolloverMessage& other) const;
    bool operator!=(const DateRolloverMessage& other) const;
    bool operator<(const DateRolloverMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const DateRolloverMessage& value);
FastOStream& operator<<(FastOStream& os, const DateRolloverMessage& value);

/// Asks to open a client's session.
struct ClientConnectMessage {
    static constexpr MsgType_t ID = 0xFA01;
    static constexpr short INDEX = 38;

    bufstring user;     ///< name of the user
    bufstring password; ///< the user's password; secret

    explicit ClientConnectMessage(BufferAllocator& alloc);
    ~ClientConnectMessage();
    ClientConnectMessage& operator=(const ClientConnectMessage&) = default;
    bool operator==(const ClientConnectMessage& other) const;
    bool operator!=(const ClientConnectMessage& other) const;
    bool operator<(const ClientConnectMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    ClientConnectMessage() = delete;
    ClientConnectMessage(const ClientConnectMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const ClientConnectMessage& value);
FastOStream& operator<<(FastOStream& os, const ClientConnectMessage& value);

/// Says that a client's session has ended.
struct ClientDisconnectMessage {
    static constexpr MsgType_t ID = 0xFA02;
    static constexpr short INDEX = 39;

    int32_t sessionID{};        ///< identifier of the client's session; identifies: session
    int64_t timeDisconnected{}; ///< 64-bit time of the disconnect; the peers agree on the unit

    ClientDisconnectMessage() = default;
    explicit ClientDisconnectMessage(BufferAllocator&) {}
    ClientDisconnectMessage(const ClientDisconnectMessage&) = default;
    ~ClientDisconnectMessage() = default;
    ClientDisconnectMessage& operator=(const ClientDisconnectMessage&) = default;
    bool operator==(const ClientDisconnectMessage& other) const;
    bool operator!=(const ClientDisconnectMessage& other) const;
    bool operator<(const ClientDisconnectMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const ClientDisconnectMessage& value);
FastOStream& operator<<(FastOStream& os, const ClientDisconnectMessage& value);

/// Answers a client's connect.
struct ConnectResponseMessage {
    static constexpr MsgType_t ID = 0xFA10;
    static constexpr short INDEX = 40;

    ConnectionResponse::Type connectionResponse{}; ///< outcome of the connect
    bufstring text;                                ///< explanation for people
    int32_t sessionID{};                           ///< identifier of the client's session; identifies: session
    UserType::Type userType{};                     ///< kind of user

    explicit ConnectResponseMessage(BufferAllocator& alloc);
    ~ConnectResponseMessage();
    ConnectResponseMessage& operator=(const ConnectResponseMessage&) = default;
    bool operator==(const ConnectResponseMessage& other) const;
    bool operator!=(const ConnectResponseMessage& other) const;
    bool operator<(const ConnectResponseMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    ConnectResponseMessage() = delete;
    ConnectResponseMessage(const ConnectResponseMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const ConnectResponseMessage& value);
FastOStream& operator<<(FastOStream& os, const ConnectResponseMessage& value);

/// Tells the servers about a connected client.
struct InternalClientInfoMessage {
    static constexpr MsgType_t ID = 0xFA12;
    static constexpr short INDEX = 41;

    int32_t userID{};        ///< identifier of the user; identifies: user
    int32_t sessionID{};     ///< identifier of the client's session; identifies: session
    int64_t timeConnected{}; ///< 64-bit time of the connect; the peers agree on the unit
    bufstring apiLanguage;   ///< programming language of the client's API
    bufstring apiVersion;    ///< version of the client's API
    bufstring ipAddress;     ///< network address of the client

    explicit InternalClientInfoMessage(BufferAllocator& alloc);
    ~InternalClientInfoMessage();
    InternalClientInfoMessage& operator=(const InternalClientInfoMessage&) = default;
    bool operator==(const InternalClientInfoMessage& other) const;
    bool operator!=(const InternalClientInfoMessage& other) const;
    bool operator<(const InternalClientInfoMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    InternalClientInfoMessage() = delete;
    InternalClientInfoMessage(const InternalClientInfoMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const InternalClientInfoMessage& value);
FastOStream& operator<<(FastOStream& os, const InternalClientInfoMessage& value);

/// Delivers risk limits and states.
struct TradeLimitDataMessage {
    static constexpr MsgType_t ID = 0xFA13;
    static constexpr short INDEX = 42;

    TradeLimitData contents;                ///< the business data
    bufvectox<IDNamePair> groupIDNamePairs; ///< identifiers and names of the groups
    bufvectox<IDNamePair> userIDNamePairs;  ///< identifiers and names of the users

    explicit TradeLimitDataMessage(BufferAllocator& alloc);
    ~TradeLimitDataMessage();
    TradeLimitDataMessage& operator=(const TradeLimitDataMessage&) = default;
    bool operator==(const TradeLimitDataMessage& other) const;
    bool operator!=(const TradeLimitDataMessage& other) const;
    bool operator<(const TradeLimitDataMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeLimitDataMessage() = delete;
    TradeLimitDataMessage(const TradeLimitDataMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeLimitDataMessage& value);
FastOStream& operator<<(FastOStream& os, const TradeLimitDataMessage& value);

/// Answers a request to change risk data.
struct RiskResponseMessage {
    static constexpr MsgType_t ID = 0xFA16;
    static constexpr short INDEX = 43;

    RiskResponse contents;          ///< the business data
    int32_t numRemainingMessages{}; ///< number of messages still to follow

    explicit RiskResponseMessage(BufferAllocator& alloc);
    ~RiskResponseMessage();
    RiskResponseMessage& operator=(const RiskResponseMessage&) = default;
    bool operator==(const RiskResponseMessage& other) const;
    bool operator!=(const RiskResponseMessage& other) const;
    bool operator<(const RiskResponseMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RiskResponseMessage() = delete;
    RiskResponseMessage(const RiskResponseMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RiskResponseMessage& value);
FastOStream& operator<<(FastOStream& os, const RiskResponseMessage& value);

/// Answers a request to lock or unlock a user.
struct LockResponseMessage {
    static constexpr MsgType_t ID = 0xFA14;
    static constexpr short INDEX = 44;

    LockResponse contents; ///< the business data

    explicit LockResponseMessage(BufferAllocator& alloc);
    ~LockResponseMessage();
    LockResponseMessage& operator=(const LockResponseMessage&) = default;
    bool operator==(const LockResponseMessage& other) const;
    bool operator!=(const LockResponseMessage& other) const;
    bool operator<(const LockResponseMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    LockResponseMessage() = delete;
    LockResponseMessage(const LockResponseMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const LockResponseMessage& value);
FastOStream& operator<<(FastOStream& os, const LockResponseMessage& value);

/// Asks to lock or unlock a user.
struct LockUserMessage {
    static constexpr MsgType_t ID = 0xFA15;
    static constexpr short INDEX = 45;

    LockUser contents; ///< the business data

    explicit LockUserMessage(BufferAllocator& alloc);
    ~LockUserMessage();
    LockUserMessage& operator=(const LockUserMessage&) = default;
    bool operator==(const LockUserMessage& other) const;
    bool operator!=(const LockUserMessage& other) const;
    bool operator<(const LockUserMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    LockUserMessage() = delete;
    LockUserMessage(const LockUserMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const LockUserMessage& value);
FastOStream& operator<<(FastOStream& os, const LockUserMessage& value);

/// Sign of life of an application on the memory bus.
struct MemBusHeartbeatMessage {
    static constexpr MsgType_t ID = 0xFB00;
    static constexpr short INDEX = 46;

    MemBusID id{}; ///< the application

    MemBusHeartbeatMessage() = default;
    explicit MemBusHeartbeatMessage(BufferAllocator&) {}
    MemBusHeartbeatMessage(const MemBusHeartbeatMessage&) = default;
    ~MemBusHeartbeatMessage() = default;
    MemBusHeartbeatMessage& operator=(const MemBusHeartbeatMessage&) = default;
    bool operator==(const MemBusHeartbeatMessage& other) const;
    bool operator!=(const MemBusHeartbeatMessage& other) const;
    bool operator<(const MemBusHeartbeatMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const MemBusHeartbeatMessage& value);
FastOStream& operator<<(FastOStream& os, const MemBusHeartbeatMessage& value);

/// Says that an application joined the memory bus.
struct MemBusConnectMessage {
    static constexpr MsgType_t ID = 0xFB01;
    static constexpr short INDEX = 47;

    MemBusID id{}; ///< the application

    MemBusConnectMessage() = default;
    explicit MemBusConnectMessage(BufferAllocator&) {}
    MemBusConnectMessage(const MemBusConnectMessage&) = default;
    ~MemBusConnectMessage() = default;
    MemBusConnectMessage& operator=(const MemBusConnectMessage&) = default;
    bool operator==(const MemBusConnectMessage& other) const;
    bool operator!=(const MemBusConnectMessage& other) const;
    bool operator<(const MemBusConnectMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const MemBusConnectMessage& value);
FastOStream& operator<<(FastOStream& os, const MemBusConnectMessage& value);

/// Says that an application left the memory bus.
struct MemBusDisconnectMessage {
    static constexpr MsgType_t ID = 0xFB02;
    static constexpr short INDEX = 48;

    MemBusID id{}; ///< the application

    MemBusDisconnectMessage() = default;
    explicit MemBusDisconnectMessage(BufferAllocator&) {}
    MemBusDisconnectMessage(const MemBusDisconnectMessage&) = default;
    ~MemBusDisconnectMessage() = default;
    MemBusDisconnectMessage& operator=(const MemBusDisconnectMessage&) = default;
    bool operator==(const MemBusDisconnectMessage& other) const;
    bool operator!=(const MemBusDisconnectMessage& other) const;
    bool operator<(const MemBusDisconnectMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const MemBusDisconnectMessage& value);
FastOStream& operator<<(FastOStream& os, const MemBusDisconnectMessage& value);

/// Delivers the configured feeds and markets.
struct ConfigMessage {
    static constexpr MsgType_t ID = 0xFA06;
    static constexpr short INDEX = 49;

    bufvectox<APIFeed> feedsList; ///< the configured feeds

    explicit ConfigMessage(BufferAllocator& alloc);
    ~ConfigMessage();
    ConfigMessage& operator=(const ConfigMessage&) = default;
    bool operator==(const ConfigMessage& other) const;
    bool operator!=(const ConfigMessage& other) const;
    bool operator<(const ConfigMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    ConfigMessage() = delete;
    ConfigMessage(const ConfigMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const ConfigMessage& value);
FastOStream& operator<<(FastOStream& os, const ConfigMessage& value);

/// Asks for a subscription.
struct SubscribeMessage {
    static constexpr MsgType_t ID = 0xFA03;
    static constexpr short INDEX = 50;

    Subscription sub{};  ///< the subscription
    bufstring clSubID;   ///< the client's own identifier of the subscription
    bool sticky{};       ///< whether the subscription is sticky
    int32_t sessionID{}; ///< identifier of the client's session; identifies: session
    int64_t timestamp{}; ///< 64-bit time of the event; the peers agree on the unit

    explicit SubscribeMessage(BufferAllocator& alloc);
    ~SubscribeMessage();
    SubscribeMessage& operator=(const SubscribeMessage&) = default;
    bool operator==(const SubscribeMessage& other) const;
    bool operator!=(const SubscribeMessage& other) const;
    bool operator<(const SubscribeMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    SubscribeMessage() = delete;
    SubscribeMessage(const SubscribeMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const SubscribeMessage& value);
FastOStream& operator<<(FastOStream& os, const SubscribeMessage& value);

/// Ends a subscription.
struct UnsubscribeMessage {
    static constexpr MsgType_t ID = 0xFA04;
    static constexpr short INDEX = 51;

    Subscription sub{};  ///< the subscription
    bufstring clSubID;   ///< the client's own identifier of the subscription
    int32_t sessionID{}; ///< identifier of the client's session; identifies: session
    int64_t timestamp{}; ///< 64-bit time of the event; the peers agree on the unit

    explicit UnsubscribeMessage(BufferAllocator& alloc);
    ~UnsubscribeMessage();
    UnsubscribeMessage& operator=(const UnsubscribeMessage&) = default;
    bool operator==(const UnsubscribeMessage& other) const;
    bool operator!=(const UnsubscribeMessage& other) const;
    bool operator<(const UnsubscribeMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    UnsubscribeMessage() = delete;
    UnsubscribeMessage(const UnsubscribeMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const UnsubscribeMessage& value);
FastOStream& operator<<(FastOStream& os, const UnsubscribeMessage& value);

/// Ends all subscriptions of a client.
struct UnsubscribeAllMessage {
    static constexpr MsgType_t ID = 0xFA05;
    static constexpr short INDEX = 52;

    bufstring clSubID;   ///< the client's own identifier of the subscription
    int32_t sessionID{}; ///< identifier of the client's session; identifies: session
    int64_t timestamp{}; ///< 64-bit time of the event; the peers agree on the unit

    explicit UnsubscribeAllMessage(BufferAllocator& alloc);
    ~UnsubscribeAllMessage();
    UnsubscribeAllMessage& operator=(const UnsubscribeAllMessage&) = default;
    bool operator==(const UnsubscribeAllMessage& other) const;
    bool operator!=(const UnsubscribeAllMessage& other) const;
    bool operator<(const UnsubscribeAllMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    UnsubscribeAllMessage() = delete;
    UnsubscribeAllMessage(const UnsubscribeAllMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const UnsubscribeAllMessage& value);
FastOStream& operator<<(FastOStream& os, const UnsubscribeAllMessage& value);

/// Reports a change in the state of a subscription.
struct SubscriptionEventMessage {
    static constexpr MsgType_t ID = 0xFA07;
    static constexpr short INDEX = 53;

    SubscriptionEvent contents; ///< the business data
    int32_t sessionID{};        ///< identifier of the client's session; identifies: session
    int64_t timestamp{};        ///< 64-bit time of the event; the peers agree on the unit

    explicit SubscriptionEventMessage(BufferAllocator& alloc);
    ~SubscriptionEventMessage();
    SubscriptionEventMessage& operator=(const SubscriptionEventMessage&) = default;
    bool operator==(const SubscriptionEventMessage& other) const;
    bool operator!=(const SubscriptionEventMessage& other) const;
    bool operator<(const SubscriptionEventMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    SubscriptionEventMessage() = delete;
    SubscriptionEventMessage(const SubscriptionEventMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const SubscriptionEventMessage& value);
FastOStream& operator<<(FastOStream& os, const SubscriptionEventMessage& value);

/// Tells a server task that a subscription's timer expired.
struct SubscriptionTimerMessage {
    static constexpr MsgType_t ID = 0xFA08;
    static constexpr short INDEX = 54;

    Subscription sub{}; ///< the subscription
    int8_t action{};    ///< what to do, opaque

    SubscriptionTimerMessage() = default;
    explicit SubscriptionTimerMessage(BufferAllocator&) {}
    SubscriptionTimerMessage(const SubscriptionTimerMessage&) = default;
    ~SubscriptionTimerMessage() = default;
    SubscriptionTimerMessage& operator=(const SubscriptionTimerMessage&) = default;
    bool operator==(const SubscriptionTimerMessage& other) const;
    bool operator!=(const SubscriptionTimerMessage& other) const;
    bool operator<(const SubscriptionTimerMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const SubscriptionTimerMessage& value);
FastOStream& operator<<(FastOStream& os, const SubscriptionTimerMessage& value);

/// Asks a server to write a log entry.
struct InsertLogMessage {
    static constexpr MsgType_t ID = 0xFA09;
    static constexpr short INDEX = 55;

    bufstring description;  ///< text of the entry
    LogLevel::Type level{}; ///< severity

    explicit InsertLogMessage(BufferAllocator& alloc);
    ~InsertLogMessage();
    InsertLogMessage& operator=(const InsertLogMessage&) = default;
    bool operator==(const InsertLogMessage& other) const;
    bool operator!=(const InsertLogMessage& other) const;
    bool operator<(const InsertLogMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    InsertLogMessage() = delete;
    InsertLogMessage(const InsertLogMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const InsertLogMessage& value);
FastOStream& operator<<(FastOStream& os, const InsertLogMessage& value);

/// Asks a server to run a test.
struct TestMessage {
    static constexpr MsgType_t ID = 0xFA11;
    static constexpr short INDEX = 56;

    APITest::Type test{}; ///< the test to run

    TestMessage() = default;
    explicit TestMessage(BufferAllocator&) {}
    TestMessage(const TestMessage&) = default;
    ~TestMessage() = default;
    TestMessage& operator=(const TestMessage&) = default;
    bool operator==(const TestMessage& other) const;
    bool operator!=(const TestMessage& other) const;
    bool operator<(const TestMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const TestMessage& value);
FastOStream& operator<<(FastOStream& os, const TestMessage& value);

/// Asks for snapshots of markets.
struct RequestSnapshotMessage {
    static constexpr MsgType_t ID = 0xF203;
    static constexpr short INDEX = 57;

    int32_t feedID{};       ///< identifier of the feed
    bufvector<int> markets; ///< identifiers of the markets
    int32_t streamID{};     ///< identifier of the stream

    explicit RequestSnapshotMessage(BufferAllocator& alloc);
    ~RequestSnapshotMessage();
    RequestSnapshotMessage& operator=(const RequestSnapshotMessage&) = default;
    bool operator==(const RequestSnapshotMessage& other) const;
    bool operator!=(const RequestSnapshotMessage& other) const;
    bool operator<(const RequestSnapshotMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RequestSnapshotMessage() = delete;
    RequestSnapshotMessage(const RequestSnapshotMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RequestSnapshotMessage& value);
FastOStream& operator<<(FastOStream& os, const RequestSnapshotMessage& value);

/// Asks for a message about a market.
struct RequestMessage {
    static constexpr MsgType_t ID = 0xF204;
    static constexpr short INDEX = 58;

    FeedMarketID fmID{};     ///< market and feed concerned
    Request::Type request{}; ///< identifier of the message asked for; only its low byte travels

    RequestMessage() = default;
    explicit RequestMessage(BufferAllocator&) {}
    RequestMessage(const RequestMessage&) = default;
    ~RequestMessage() = default;
    RequestMessage& operator=(const RequestMessage&) = default;
    bool operator==(const RequestMessage& other) const;
    bool operator!=(const RequestMessage& other) const;
    bool operator<(const RequestMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
};
std::ostream& operator<<(std::ostream& os, const RequestMessage& value);
FastOStream& operator<<(FastOStream& os, const RequestMessage& value);

/// Asks for quotes.
struct QuoteRequestMessage {
    static constexpr MsgType_t ID = 0xF205;
    static constexpr short INDEX = 59;

    QuoteRequest contents; ///< the business data

    explicit QuoteRequestMessage(BufferAllocator& alloc);
    ~QuoteRequestMessage();
    QuoteRequestMessage& operator=(const QuoteRequestMessage&) = default;
    bool operator==(const QuoteRequestMessage& other) const;
    bool operator!=(const QuoteRequestMessage& other) const;
    bool operator<(const QuoteRequestMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    QuoteRequestMessage() = delete;
    QuoteRequestMessage(const QuoteRequestMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const QuoteRequestMessage& value);
FastOStream& operator<<(FastOStream& os, const QuoteRequestMessage& value);

/// Refuses a quote request.
struct RejectQuoteRequestMessage {
    static constexpr MsgType_t ID = 0xF206;
    static constexpr short INDEX = 60;

    RejectQuoteRequest contents; ///< the business data

    explicit RejectQuoteRequestMessage(BufferAllocator& alloc);
    ~RejectQuoteRequestMessage();
    RejectQuoteRequestMessage& operator=(const RejectQuoteRequestMessage&) = default;
    bool operator==(const RejectQuoteRequestMessage& other) const;
    bool operator!=(const RejectQuoteRequestMessage& other) const;
    bool operator<(const RejectQuoteRequestMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RejectQuoteRequestMessage() = delete;
    RejectQuoteRequestMessage(const RejectQuoteRequestMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RejectQuoteRequestMessage& value);
FastOStream& operator<<(FastOStream& os, const RejectQuoteRequestMessage& value);

/// Withdraws quotes.
struct CancelQuoteMessage {
    static constexpr MsgType_t ID = 0xF207;
    static constexpr short INDEX = 61;

    CancelQuote contents; ///< the business data

    explicit CancelQuoteMessage(BufferAllocator& alloc);
    ~CancelQuoteMessage();
    CancelQuoteMessage& operator=(const CancelQuoteMessage&) = default;
    bool operator==(const CancelQuoteMessage& other) const;
    bool operator!=(const CancelQuoteMessage& other) const;
    bool operator<(const CancelQuoteMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    CancelQuoteMessage() = delete;
    CancelQuoteMessage(const CancelQuoteMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const CancelQuoteMessage& value);
FastOStream& operator<<(FastOStream& os, const CancelQuoteMessage& value);

/// Delivers a set of quotes.
struct MassQuoteMessage {
    static constexpr MsgType_t ID = 0xF208;
    static constexpr short INDEX = 62;

    QLMassQuote contents; ///< the business data

    explicit MassQuoteMessage(BufferAllocator& alloc);
    ~MassQuoteMessage();
    MassQuoteMessage& operator=(const MassQuoteMessage&) = default;
    bool operator==(const MassQuoteMessage& other) const;
    bool operator!=(const MassQuoteMessage& other) const;
    bool operator<(const MassQuoteMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    MassQuoteMessage() = delete;
    MassQuoteMessage(const MassQuoteMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const MassQuoteMessage& value);
FastOStream& operator<<(FastOStream& os, const MassQuoteMessage& value);

/// Answers a set of quotes.
struct MassQuoteAckMessage {
    static constexpr MsgType_t ID = 0x0209;
    static constexpr short INDEX = 63;

    MassQuoteAck contents; ///< the business data

    explicit MassQuoteAckMessage(BufferAllocator& alloc);
    ~MassQuoteAckMessage();
    MassQuoteAckMessage& operator=(const MassQuoteAckMessage&) = default;
    bool operator==(const MassQuoteAckMessage& other) const;
    bool operator!=(const MassQuoteAckMessage& other) const;
    bool operator<(const MassQuoteAckMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    MassQuoteAckMessage() = delete;
    MassQuoteAckMessage(const MassQuoteAckMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const MassQuoteAckMessage& value);
FastOStream& operator<<(FastOStream& os, const MassQuoteAckMessage& value);

/// Hands over an order to be accepted or rejected.
struct NewOrderMessage {
    static constexpr MsgType_t ID = 0xF210;
    static constexpr short INDEX = 64;

    NewOrder contents; ///< the business data

    explicit NewOrderMessage(BufferAllocator& alloc);
    ~NewOrderMessage();
    NewOrderMessage& operator=(const NewOrderMessage&) = default;
    bool operator==(const NewOrderMessage& other) const;
    bool operator!=(const NewOrderMessage& other) const;
    bool operator<(const NewOrderMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    NewOrderMessage() = delete;
    NewOrderMessage(const NewOrderMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const NewOrderMessage& value);
FastOStream& operator<<(FastOStream& os, const NewOrderMessage& value);

/// Rejects an order that was handed over.
struct RejectOrderMessage {
    static constexpr MsgType_t ID = 0xF211;
    static constexpr short INDEX = 65;

    RejectOrder contents; ///< the business data

    explicit RejectOrderMessage(BufferAllocator& alloc);
    ~RejectOrderMessage();
    RejectOrderMessage& operator=(const RejectOrderMessage&) = default;
    bool operator==(const RejectOrderMessage& other) const;
    bool operator!=(const RejectOrderMessage& other) const;
    bool operator<(const RejectOrderMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    RejectOrderMessage() = delete;
    RejectOrderMessage(const RejectOrderMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const RejectOrderMessage& value);
FastOStream& operator<<(FastOStream& os, const RejectOrderMessage& value);

/// Accepts an order that was handed over.
struct AcceptOrderMessage {
    static constexpr MsgType_t ID = 0xF212;
    static constexpr short INDEX = 66;

    AcceptOrder contents; ///< the business data

    explicit AcceptOrderMessage(BufferAllocator& alloc);
    ~AcceptOrderMessage();
    AcceptOrderMessage& operator=(const AcceptOrderMessage&) = default;
    bool operator==(const AcceptOrderMessage& other) const;
    bool operator!=(const AcceptOrderMessage& other) const;
    bool operator<(const AcceptOrderMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    AcceptOrderMessage() = delete;
    AcceptOrderMessage(const AcceptOrderMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const AcceptOrderMessage& value);
FastOStream& operator<<(FastOStream& os, const AcceptOrderMessage& value);

/// Acknowledges a reported trade.
struct TradeCaptureAckMessage {
    static constexpr MsgType_t ID = 0xF213;
    static constexpr short INDEX = 67;

    TradeCaptureAck contents; ///< the business data

    explicit TradeCaptureAckMessage(BufferAllocator& alloc);
    ~TradeCaptureAckMessage();
    TradeCaptureAckMessage& operator=(const TradeCaptureAckMessage&) = default;
    bool operator==(const TradeCaptureAckMessage& other) const;
    bool operator!=(const TradeCaptureAckMessage& other) const;
    bool operator<(const TradeCaptureAckMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    TradeCaptureAckMessage() = delete;
    TradeCaptureAckMessage(const TradeCaptureAckMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const TradeCaptureAckMessage& value);
FastOStream& operator<<(FastOStream& os, const TradeCaptureAckMessage& value);

/// Says that an order timed out.
struct OrderTimeoutMessage {
    static constexpr MsgType_t ID = 0xF214;
    static constexpr short INDEX = 68;

    OrderTimeout contents; ///< the business data

    explicit OrderTimeoutMessage(BufferAllocator& alloc);
    ~OrderTimeoutMessage();
    OrderTimeoutMessage& operator=(const OrderTimeoutMessage&) = default;
    bool operator==(const OrderTimeoutMessage& other) const;
    bool operator!=(const OrderTimeoutMessage& other) const;
    bool operator<(const OrderTimeoutMessage& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    OrderTimeoutMessage() = delete;
    OrderTimeoutMessage(const OrderTimeoutMessage&) = delete;
};
std::ostream& operator<<(std::ostream& os, const OrderTimeoutMessage& value);
FastOStream& operator<<(FastOStream& os, const OrderTimeoutMessage& value);

/// JSON text from a server, passed through unparsed.
struct JsonFromServer {
    static constexpr MsgType_t ID = 0xF215;
    static constexpr short INDEX = 69;

    bufstring contents; ///< the JSON text

    explicit JsonFromServer(BufferAllocator& alloc);
    ~JsonFromServer();
    JsonFromServer& operator=(const JsonFromServer&) = default;
    bool operator==(const JsonFromServer& other) const;
    bool operator!=(const JsonFromServer& other) const;
    bool operator<(const JsonFromServer& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    JsonFromServer() = delete;
    JsonFromServer(const JsonFromServer&) = delete;
};
std::ostream& operator<<(std::ostream& os, const JsonFromServer& value);
FastOStream& operator<<(FastOStream& os, const JsonFromServer& value);

/// JSON text from a client, passed through unparsed.
struct JsonFromClient {
    static constexpr MsgType_t ID = 0xF216;
    static constexpr short INDEX = 70;

    bufstring contents; ///< the JSON text

    explicit JsonFromClient(BufferAllocator& alloc);
    ~JsonFromClient();
    JsonFromClient& operator=(const JsonFromClient&) = default;
    bool operator==(const JsonFromClient& other) const;
    bool operator!=(const JsonFromClient& other) const;
    bool operator<(const JsonFromClient& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;

  private:
    JsonFromClient() = delete;
    JsonFromClient(const JsonFromClient&) = delete;
};
std::ostream& operator<<(std::ostream& os, const JsonFromClient& value);
FastOStream& operator<<(FastOStream& os, const JsonFromClient& value);

// The module.

inline const int VERSION = 1;

/// The protocol, from initialize() to finalize(); null otherwise.
extern MsgProtocol* __protocol;

/// Chooses the faster way of coding for this processor, fills the tables of the enumerations and registers every
/// message. To be called exactly once, while nothing else uses the module; a second call leaks what the first one built.
///
/// To be called from main() on, not by the constructor of a global object: such constructors run in any order, and the
/// registry, whose map the module constructs in the same way, may not be there yet.
void initialize();

/// Releases the protocol and its descriptors, while nothing else uses the module. May be called at any time.
void finalize();

/// The hook through which every enumeration byte without a name passes, with the name of its field; `valid` is false.
void validateEnum(const std::string& fieldName, bool valid);

/// The same for the decoders, which find it by the enumeration.
template <class H>
void validateEnum(Velmora::of<H>, const char* fieldName, bool valid) {
    VALIDATE_ENUM(fieldName, valid)
}

/// For hosts; the module never throws it.
class QLProtocolError : public std::runtime_error {
  public:
    explicit QLProtocolError(const char* text) : std::runtime_error(text) {}
    ~QLProtocolError() override = default;
};

struct QLProtocolTraits; // generated/QLProtocol/QLProtocol.traits.h

/// From a type of the protocol to its traits. Never defined, found by the argument.
template <class T>
QLProtocolTraits protocolOf(Velmora::of<T>);

} // namespace Quillon
