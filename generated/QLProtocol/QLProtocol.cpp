// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
#include "generated/QLProtocol/QLProtocol.h"

#include <iostream> // brings the initialiser of the standard streams into the module, ahead of the registry
#include <iterator>

#include "Backend/Velmora/MsgRegistry.h"
#include "Backend/Velmora/TypeLists.h"
#include "Backend/Velmora/operations/CheckBounds.h"
#include "Backend/Velmora/operations/Compare.h"
#include "Backend/Velmora/operations/Decode.h"
#include "Backend/Velmora/operations/Encode.h"
#include "Backend/Velmora/operations/Print.h"
#include "generated/QLProtocol/AsciiWriter.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace Quillon {

// Deliberately empty. Decoding is tolerant: a byte without a name is kept, so that peers may know more enumerators.
void validateEnum(const std::string&, bool) {}

// Enumerations.

bool LogLevel::_initialized = false;
const char* LogLevel::_names[_maxValue + 1];
unsigned char LogLevel::_toIndex[_maxValue + 1];
LogLevel::Type LogLevel::_fromIndex[_nbValues];
void LogLevel::initialize() { Velmora::initializeEnumeration<LogLevel>(); }
std::ostream& operator<<(std::ostream& os, LogLevel::Type value) { return Velmora::printEnumerator<LogLevel>(os, value); }
FastOStream& operator<<(FastOStream& os, LogLevel::Type value) { return Velmora::printEnumerator<LogLevel>(os, value); }

bool Side::_initialized = false;
const char* Side::_names[_maxValue + 1];
unsigned char Side::_toIndex[_maxValue + 1];
Side::Type Side::_fromIndex[_nbValues];
void Side::initialize() { Velmora::initializeEnumeration<Side>(); }
std::ostream& operator<<(std::ostream& os, Side::Type value) { return Velmora::printEnumerator<Side>(os, value); }
FastOStream& operator<<(FastOStream& os, Side::Type value) { return Velmora::printEnumerator<Side>(os, value); }

bool Request::_initialized = false;
const char* Request::_names[_maxValue + 1];
unsigned char Request::_toIndex[_maxValue + 1];
Request::Type Request::_fromIndex[_nbValues];
void Request::initialize() { Velmora::initializeEnumeration<Request>(); }
std::ostream& operator<<(std::ostream& os, Request::Type value) { return Velmora::printEnumerator<Request>(os, value); }
FastOStream& operator<<(FastOStream& os, Request::Type value) { return Velmora::printEnumerator<Request>(os, value); }

bool MDElement::_initialized = false;
const char* MDElement::_names[_maxValue + 1];
unsigned char MDElement::_toIndex[_maxValue + 1];
MDElement::Type MDElement::_fromIndex[_nbValues];
void MDElement::initialize() { Velmora::initializeEnumeration<MDElement>(); }
std::ostream& operator<<(std::ostream& os, MDElement::Type value) { return Velmora::printEnumerator<MDElement>(os, value); }
FastOStream& operator<<(FastOStream& os, MDElement::Type value) { return Velmora::printEnumerator<MDElement>(os, value); }

bool MDSource::_initialized = false;
const char* MDSource::_names[_maxValue + 1];
unsigned char MDSource::_toIndex[_maxValue + 1];
MDSource::Type MDSource::_fromIndex[_nbValues];
void MDSource::initialize() { Velmora::initializeEnumeration<MDSource>(); }
std::ostream& operator<<(std::ostream& os, MDSource::Type value) { return Velmora::printEnumerator<MDSource>(os, value); }
FastOStream& operator<<(FastOStream& os, MDSource::Type value) { return Velmora::printEnumerator<MDSource>(os, value); }

bool MDUpdateAction::_initialized = false;
const char* MDUpdateAction::_names[_maxValue + 1];
unsigned char MDUpdateAction::_toIndex[_maxValue + 1];
MDUpdateAction::Type MDUpdateAction::_fromIndex[_nbValues];
void MDUpdateAction::initialize() { Velmora::initializeEnumeration<MDUpdateAction>(); }
std::ostream& operator<<(std::ostream& os, MDUpdateAction::Type value) { return Velmora::printEnumerator<MDUpdateAction>(os, value); }
FastOStream& operator<<(FastOStream& os, MDUpdateAction::Type value) { return Velmora::printEnumerator<MDUpdateAction>(os, value); }

bool OrderStatus::_initialized = false;
const char* OrderStatus::_names[_maxValue + 1];
unsigned char OrderStatus::_toIndex[_maxValue + 1];
OrderStatus::Type OrderStatus::_fromIndex[_nbValues];
void OrderStatus::initialize() { Velmora::initializeEnumeration<OrderStatus>(); }
std::ostream& operator<<(std::ostream& os, OrderStatus::Type value) { return Velmora::printEnumerator<OrderStatus>(os, value); }
FastOStream& operator<<(FastOStream& os, OrderStatus::Type value) { return Velmora::printEnumerator<OrderStatus>(os, value); }

bool TimeInForce::_initialized = false;
const char* TimeInForce::_names[_maxValue + 1];
unsigned char TimeInForce::_toIndex[_maxValue + 1];
TimeInForce::Type TimeInForce::_fromIndex[_nbValues];
void TimeInForce::initialize() { Velmora::initializeEnumeration<TimeInForce>(); }
std::ostream& operator<<(std::ostream& os, TimeInForce::Type value) { return Velmora::printEnumerator<TimeInForce>(os, value); }
FastOStream& operator<<(FastOStream& os, TimeInForce::Type value) { return Velmora::printEnumerator<TimeInForce>(os, value); }

bool MatchStatus::_initialized = false;
const char* MatchStatus::_names[_maxValue + 1];
unsigned char MatchStatus::_toIndex[_maxValue + 1];
MatchStatus::Type MatchStatus::_fromIndex[_nbValues];
void MatchStatus::initialize() { Velmora::initializeEnumeration<MatchStatus>(); }
std::ostream& operator<<(std::ostream& os, MatchStatus::Type value) { return Velmora::printEnumerator<MatchStatus>(os, value); }
FastOStream& operator<<(FastOStream& os, MatchStatus::Type value) { return Velmora::printEnumerator<MatchStatus>(os, value); }

bool OrderType::_initialized = false;
const char* OrderType::_names[_maxValue + 1];
unsigned char OrderType::_toIndex[_maxValue + 1];
OrderType::Type OrderType::_fromIndex[_nbValues];
void OrderType::initialize() { Velmora::initializeEnumeration<OrderType>(); }
std::ostream& operator<<(std::ostream& os, OrderType::Type value) { return Velmora::printEnumerator<OrderType>(os, value); }
FastOStream& operator<<(FastOStream& os, OrderType::Type value) { return Velmora::printEnumerator<OrderType>(os, value); }

bool RejectReason::_initialized = false;
const char* RejectReason::_names[_maxValue + 1];
unsigned char RejectReason::_toIndex[_maxValue + 1];
RejectReason::Type RejectReason::_fromIndex[_nbValues];
void RejectReason::initialize() { Velmora::initializeEnumeration<RejectReason>(); }
std::ostream& operator<<(std::ostream& os, RejectReason::Type value) { return Velmora::printEnumerator<RejectReason>(os, value); }
FastOStream& operator<<(FastOStream& os, RejectReason::Type value) { return Velmora::printEnumerator<RejectReason>(os, value); }

bool CancelRejectReason::_initialized = false;
const char* CancelRejectReason::_names[_maxValue + 1];
unsigned char CancelRejectReason::_toIndex[_maxValue + 1];
CancelRejectReason::Type CancelRejectReason::_fromIndex[_nbValues];
void CancelRejectReason::initialize() { Velmora::initializeEnumeration<CancelRejectReason>(); }
std::ostream& operator<<(std::ostream& os, CancelRejectReason::Type value) { return Velmora::printEnumerator<CancelRejectReason>(os, value); }
FastOStream& operator<<(FastOStream& os, CancelRejectReason::Type value) { return Velmora::printEnumerator<CancelRejectReason>(os, value); }

bool APIResult::_initialized = false;
const char* APIResult::_names[_maxValue + 1];
unsigned char APIResult::_toIndex[_maxValue + 1];
APIResult::Type APIResult::_fromIndex[_nbValues];
void APIResult::initialize() { Velmora::initializeEnumeration<APIResult>(); }
std::ostream& operator<<(std::ostream& os, APIResult::Type value) { return Velmora::printEnumerator<APIResult>(os, value); }
FastOStream& operator<<(FastOStream& os, APIResult::Type value) { return Velmora::printEnumerator<APIResult>(os, value); }

bool ExchEventType::_initialized = false;
const char* ExchEventType::_names[_maxValue + 1];
unsigned char ExchEventType::_toIndex[_maxValue + 1];
ExchEventType::Type ExchEventType::_fromIndex[_nbValues];
void ExchEventType::initialize() { Velmora::initializeEnumeration<ExchEventType>(); }
std::ostream& operator<<(std::ostream& os, ExchEventType::Type value) { return Velmora::printEnumerator<ExchEventType>(os, value); }
FastOStream& operator<<(FastOStream& os, ExchEventType::Type value) { return Velmora::printEnumerator<ExchEventType>(os, value); }

bool APIType::_initialized = false;
const char* APIType::_names[_maxValue + 1];
unsigned char APIType::_toIndex[_maxValue + 1];
APIType::Type APIType::_fromIndex[_nbValues];
void APIType::initialize() { Velmora::initializeEnumeration<APIType>(); }
std::ostream& operator<<(std::ostream& os, APIType::Type value) { return Velmora::printEnumerator<APIType>(os, value); }
FastOStream& operator<<(FastOStream& os, APIType::Type value) { return Velmora::printEnumerator<APIType>(os, value); }

bool APITest::_initialized = false;
const char* APITest::_names[_maxValue + 1];
unsigned char APITest::_toIndex[_maxValue + 1];
APITest::Type APITest::_fromIndex[_nbValues];
void APITest::initialize() { Velmora::initializeEnumeration<APITest>(); }
std::ostream& operator<<(std::ostream& os, APITest::Type value) { return Velmora::printEnumerator<APITest>(os, value); }
FastOStream& operator<<(FastOStream& os, APITest::Type value) { return Velmora::printEnumerator<APITest>(os, value); }

bool UserType::_initialized = false;
const char* UserType::_names[_maxValue + 1];
unsigned char UserType::_toIndex[_maxValue + 1];
UserType::Type UserType::_fromIndex[_nbValues];
void UserType::initialize() { Velmora::initializeEnumeration<UserType>(); }
std::ostream& operator<<(std::ostream& os, UserType::Type value) { return Velmora::printEnumerator<UserType>(os, value); }
FastOStream& operator<<(FastOStream& os, UserType::Type value) { return Velmora::printEnumerator<UserType>(os, value); }

bool StatType::_initialized = false;
const char* StatType::_names[_maxValue + 1];
unsigned char StatType::_toIndex[_maxValue + 1];
StatType::Type StatType::_fromIndex[_nbValues];
void StatType::initialize() { Velmora::initializeEnumeration<StatType>(); }
std::ostream& operator<<(std::ostream& os, StatType::Type value) { return Velmora::printEnumerator<StatType>(os, value); }
FastOStream& operator<<(FastOStream& os, StatType::Type value) { return Velmora::printEnumerator<StatType>(os, value); }

bool Direction::_initialized = false;
const char* Direction::_names[_maxValue + 1];
unsigned char Direction::_toIndex[_maxValue + 1];
Direction::Type Direction::_fromIndex[_nbValues];
void Direction::initialize() { Velmora::initializeEnumeration<Direction>(); }
std::ostream& operator<<(std::ostream& os, Direction::Type value) { return Velmora::printEnumerator<Direction>(os, value); }
FastOStream& operator<<(FastOStream& os, Direction::Type value) { return Velmora::printEnumerator<Direction>(os, value); }

bool ReplayStatus::_initialized = false;
const char* ReplayStatus::_names[_maxValue + 1];
unsigned char ReplayStatus::_toIndex[_maxValue + 1];
ReplayStatus::Type ReplayStatus::_fromIndex[_nbValues];
void ReplayStatus::initialize() { Velmora::initializeEnumeration<ReplayStatus>(); }
std::ostream& operator<<(std::ostream& os, ReplayStatus::Type value) { return Velmora::printEnumerator<ReplayStatus>(os, value); }
FastOStream& operator<<(FastOStream& os, ReplayStatus::Type value) { return Velmora::printEnumerator<ReplayStatus>(os, value); }

bool CancelReason::_initialized = false;
const char* CancelReason::_names[_maxValue + 1];
unsigned char CancelReason::_toIndex[_maxValue + 1];
CancelReason::Type CancelReason::_fromIndex[_nbValues];
void CancelReason::initialize() { Velmora::initializeEnumeration<CancelReason>(); }
std::ostream& operator<<(std::ostream& os, CancelReason::Type value) { return Velmora::printEnumerator<CancelReason>(os, value); }
FastOStream& operator<<(FastOStream& os, CancelReason::Type value) { return Velmora::printEnumerator<CancelReason>(os, value); }

bool DateRolloverType::_initialized = false;
const char* DateRolloverType::_names[_maxValue + 1];
unsigned char DateRolloverType::_toIndex[_maxValue + 1];
DateRolloverType::Type DateRolloverType::_fromIndex[_nbValues];
void DateRolloverType::initialize() { Velmora::initializeEnumeration<DateRolloverType>(); }
std::ostream& operator<<(std::ostream& os, DateRolloverType::Type value) { return Velmora::printEnumerator<DateRolloverType>(os, value); }
FastOStream& operator<<(FastOStream& os, DateRolloverType::Type value) { return Velmora::printEnumerator<DateRolloverType>(os, value); }

bool ConnectionResponse::_initialized = false;
const char* ConnectionResponse::_names[_maxValue + 1];
unsigned char ConnectionResponse::_toIndex[_maxValue + 1];
ConnectionResponse::Type ConnectionResponse::_fromIndex[_nbValues];
void ConnectionResponse::initialize() { Velmora::initializeEnumeration<ConnectionResponse>(); }
std::ostream& operator<<(std::ostream& os, ConnectionResponse::Type value) { return Velmora::printEnumerator<ConnectionResponse>(os, value); }
FastOStream& operator<<(FastOStream& os, ConnectionResponse::Type value) { return Velmora::printEnumerator<ConnectionResponse>(os, value); }

bool CcyType::_initialized = false;
const char* CcyType::_names[_maxValue + 1];
unsigned char CcyType::_toIndex[_maxValue + 1];
CcyType::Type CcyType::_fromIndex[_nbValues];
void CcyType::initialize() { Velmora::initializeEnumeration<CcyType>(); }
std::ostream& operator<<(std::ostream& os, CcyType::Type value) { return Velmora::printEnumerator<CcyType>(os, value); }
FastOStream& operator<<(FastOStream& os, CcyType::Type value) { return Velmora::printEnumerator<CcyType>(os, value); }

bool RiskStatus::_initialized = false;
const char* RiskStatus::_names[_maxValue + 1];
unsigned char RiskStatus::_toIndex[_maxValue + 1];
RiskStatus::Type RiskStatus::_fromIndex[_nbValues];
void RiskStatus::initialize() { Velmora::initializeEnumeration<RiskStatus>(); }
std::ostream& operator<<(std::ostream& os, RiskStatus::Type value) { return Velmora::printEnumerator<RiskStatus>(os, value); }
FastOStream& operator<<(FastOStream& os, RiskStatus::Type value) { return Velmora::printEnumerator<RiskStatus>(os, value); }

bool LockStatus::_initialized = false;
const char* LockStatus::_names[_maxValue + 1];
unsigned char LockStatus::_toIndex[_maxValue + 1];
LockStatus::Type LockStatus::_fromIndex[_nbValues];
void LockStatus::initialize() { Velmora::initializeEnumeration<LockStatus>(); }
std::ostream& operator<<(std::ostream& os, LockStatus::Type value) { return Velmora::printEnumerator<LockStatus>(os, value); }
FastOStream& operator<<(FastOStream& os, LockStatus::Type value) { return Velmora::printEnumerator<LockStatus>(os, value); }

bool InstrumentType::_initialized = false;
const char* InstrumentType::_names[_maxValue + 1];
unsigned char InstrumentType::_toIndex[_maxValue + 1];
InstrumentType::Type InstrumentType::_fromIndex[_nbValues];
void InstrumentType::initialize() { Velmora::initializeEnumeration<InstrumentType>(); }
std::ostream& operator<<(std::ostream& os, InstrumentType::Type value) { return Velmora::printEnumerator<InstrumentType>(os, value); }
FastOStream& operator<<(FastOStream& os, InstrumentType::Type value) { return Velmora::printEnumerator<InstrumentType>(os, value); }

bool StandardTenor::_initialized = false;
const char* StandardTenor::_names[_maxValue + 1];
unsigned char StandardTenor::_toIndex[_maxValue + 1];
StandardTenor::Type StandardTenor::_fromIndex[_nbValues];
void StandardTenor::initialize() { Velmora::initializeEnumeration<StandardTenor>(); }
std::ostream& operator<<(std::ostream& os, StandardTenor::Type value) { return Velmora::printEnumerator<StandardTenor>(os, value); }
FastOStream& operator<<(FastOStream& os, StandardTenor::Type value) { return Velmora::printEnumerator<StandardTenor>(os, value); }

bool FeedFlag::_initialized = false;
const char* FeedFlag::_names[_maxValue + 1];
unsigned char FeedFlag::_toIndex[_maxValue + 1];
FeedFlag::Type FeedFlag::_fromIndex[_nbValues];
void FeedFlag::initialize() { Velmora::initializeEnumeration<FeedFlag>(); }
std::ostream& operator<<(std::ostream& os, FeedFlag::Type value) { return Velmora::printEnumerator<FeedFlag>(os, value); }
FastOStream& operator<<(FastOStream& os, FeedFlag::Type value) { return Velmora::printEnumerator<FeedFlag>(os, value); }

bool SubscriptionStatus::_initialized = false;
const char* SubscriptionStatus::_names[_maxValue + 1];
unsigned char SubscriptionStatus::_toIndex[_maxValue + 1];
SubscriptionStatus::Type SubscriptionStatus::_fromIndex[_nbValues];
void SubscriptionStatus::initialize() { Velmora::initializeEnumeration<SubscriptionStatus>(); }
std::ostream& operator<<(std::ostream& os, SubscriptionStatus::Type value) { return Velmora::printEnumerator<SubscriptionStatus>(os, value); }
FastOStream& operator<<(FastOStream& os, SubscriptionStatus::Type value) { return Velmora::printEnumerator<SubscriptionStatus>(os, value); }

bool QuoteRequestRejectReason::_initialized = false;
const char* QuoteRequestRejectReason::_names[_maxValue + 1];
unsigned char QuoteRequestRejectReason::_toIndex[_maxValue + 1];
QuoteRequestRejectReason::Type QuoteRequestRejectReason::_fromIndex[_nbValues];
void QuoteRequestRejectReason::initialize() { Velmora::initializeEnumeration<QuoteRequestRejectReason>(); }
std::ostream& operator<<(std::ostream& os, QuoteRequestRejectReason::Type value) { return Velmora::printEnumerator<QuoteRequestRejectReason>(os, value); }
FastOStream& operator<<(FastOStream& os, QuoteRequestRejectReason::Type value) { return Velmora::printEnumerator<QuoteRequestRejectReason>(os, value); }

bool QuoteStatus::_initialized = false;
const char* QuoteStatus::_names[_maxValue + 1];
unsigned char QuoteStatus::_toIndex[_maxValue + 1];
QuoteStatus::Type QuoteStatus::_fromIndex[_nbValues];
void QuoteStatus::initialize() { Velmora::initializeEnumeration<QuoteStatus>(); }
std::ostream& operator<<(std::ostream& os, QuoteStatus::Type value) { return Velmora::printEnumerator<QuoteStatus>(os, value); }
FastOStream& operator<<(FastOStream& os, QuoteStatus::Type value) { return Velmora::printEnumerator<QuoteStatus>(os, value); }

bool TradeStatus::_initialized = false;
const char* TradeStatus::_names[_maxValue + 1];
unsigned char TradeStatus::_toIndex[_maxValue + 1];
TradeStatus::Type TradeStatus::_fromIndex[_nbValues];
void TradeStatus::initialize() { Velmora::initializeEnumeration<TradeStatus>(); }
std::ostream& operator<<(std::ostream& os, TradeStatus::Type value) { return Velmora::printEnumerator<TradeStatus>(os, value); }
FastOStream& operator<<(FastOStream& os, TradeStatus::Type value) { return Velmora::printEnumerator<TradeStatus>(os, value); }

bool QuoteCancelType::_initialized = false;
const char* QuoteCancelType::_names[_maxValue + 1];
unsigned char QuoteCancelType::_toIndex[_maxValue + 1];
QuoteCancelType::Type QuoteCancelType::_fromIndex[_nbValues];
void QuoteCancelType::initialize() { Velmora::initializeEnumeration<QuoteCancelType>(); }
std::ostream& operator<<(std::ostream& os, QuoteCancelType::Type value) { return Velmora::printEnumerator<QuoteCancelType>(os, value); }
FastOStream& operator<<(FastOStream& os, QuoteCancelType::Type value) { return Velmora::printEnumerator<QuoteCancelType>(os, value); }

// Records and messages.

KeyValuePair::KeyValuePair(BufferAllocator& alloc) : key(alloc), value(alloc) {}
KeyValuePair::~KeyValuePair() = default;
bool KeyValuePair::operator==(const KeyValuePair& other) const { return !(*this != other); }
bool KeyValuePair::operator!=(const KeyValuePair& other) const { return Velmora::differ(*this, other); }
bool KeyValuePair::operator<(const KeyValuePair& other) const { return Velmora::less(*this, other); }
void KeyValuePair::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void KeyValuePair::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void KeyValuePair::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const KeyValuePair& value) { return Velmora::print<AsciiWriter>(os, "<KeyValuePair ", value); }
FastOStream& operator<<(FastOStream& os, const KeyValuePair& value) { return Velmora::print<AsciiWriter>(os, "<KeyValuePair ", value); }

IDNamePair::IDNamePair(BufferAllocator& alloc) : name(alloc) {}
IDNamePair::~IDNamePair() = default;
bool IDNamePair::operator==(const IDNamePair& other) const { return !(*this != other); }
bool IDNamePair::operator!=(const IDNamePair& other) const { return Velmora::differ(*this, other); }
bool IDNamePair::operator<(const IDNamePair& other) const { return Velmora::less(*this, other); }
void IDNamePair::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void IDNamePair::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void IDNamePair::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const IDNamePair& value) { return Velmora::print<AsciiWriter>(os, "<IDNamePair ", value); }
FastOStream& operator<<(FastOStream& os, const IDNamePair& value) { return Velmora::print<AsciiWriter>(os, "<IDNamePair ", value); }

bool FeedMarketID::operator==(const FeedMarketID& other) const { return !(*this != other); }
bool FeedMarketID::operator!=(const FeedMarketID& other) const { return Velmora::differ(*this, other); }
bool FeedMarketID::operator<(const FeedMarketID& other) const { return Velmora::less(*this, other); }
void FeedMarketID::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void FeedMarketID::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void FeedMarketID::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const FeedMarketID& value) { return Velmora::print<AsciiWriter>(os, "<FeedMarketID ", value); }
FastOStream& operator<<(FastOStream& os, const FeedMarketID& value) { return Velmora::print<AsciiWriter>(os, "<FeedMarketID ", value); }

MDEntry::MDEntry(BufferAllocator& alloc) : components(alloc) {}
MDEntry::~MDEntry() = default;
bool MDEntry::operator==(const MDEntry& other) const { return !(*this != other); }
bool MDEntry::operator!=(const MDEntry& other) const { return Velmora::differ(*this, other); }
bool MDEntry::operator<(const MDEntry& other) const { return Velmora::less(*this, other); }
void MDEntry::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MDEntry::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MDEntry::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MDEntry& value) { return Velmora::print<AsciiWriter>(os, "<MDEntry ", value); }
FastOStream& operator<<(FastOStream& os, const MDEntry& value) { return Velmora::print<AsciiWriter>(os, "<MDEntry ", value); }

StatCounter::StatCounter(BufferAllocator& alloc) : name(alloc) {}
StatCounter::~StatCounter() = default;
bool StatCounter::operator==(const StatCounter& other) const { return !(*this != other); }
bool StatCounter::operator!=(const StatCounter& other) const { return Velmora::differ(*this, other); }
bool StatCounter::operator<(const StatCounter& other) const { return Velmora::less(*this, other); }
void StatCounter::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void StatCounter::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void StatCounter::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const StatCounter& value) { return Velmora::print<AsciiWriter>(os, "<StatCounter ", value); }
FastOStream& operator<<(FastOStream& os, const StatCounter& value) { return Velmora::print<AsciiWriter>(os, "<StatCounter ", value); }

Heartbeat::Heartbeat(BufferAllocator& alloc) : activeFeeds(alloc) {}
Heartbeat::~Heartbeat() = default;
bool Heartbeat::operator==(const Heartbeat& other) const { return !(*this != other); }
bool Heartbeat::operator!=(const Heartbeat& other) const { return Velmora::differ(*this, other); }
bool Heartbeat::operator<(const Heartbeat& other) const { return Velmora::less(*this, other); }
void Heartbeat::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void Heartbeat::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void Heartbeat::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const Heartbeat& value) { return Velmora::print<AsciiWriter>(os, "<Heartbeat ", value); }
FastOStream& operator<<(FastOStream& os, const Heartbeat& value) { return Velmora::print<AsciiWriter>(os, "<Heartbeat ", value); }

bool ReplayDone::operator==(const ReplayDone& other) const { return !(*this != other); }
bool ReplayDone::operator!=(const ReplayDone& other) const { return Velmora::differ(*this, other); }
bool ReplayDone::operator<(const ReplayDone& other) const { return Velmora::less(*this, other); }
void ReplayDone::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ReplayDone::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ReplayDone::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ReplayDone& value) { return Velmora::print<AsciiWriter>(os, "<ReplayDone ", value); }
FastOStream& operator<<(FastOStream& os, const ReplayDone& value) { return Velmora::print<AsciiWriter>(os, "<ReplayDone ", value); }

bool UserSequenceID::operator==(const UserSequenceID& other) const { return !(*this != other); }
bool UserSequenceID::operator!=(const UserSequenceID& other) const { return Velmora::differ(*this, other); }
bool UserSequenceID::operator<(const UserSequenceID& other) const { return Velmora::less(*this, other); }
void UserSequenceID::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void UserSequenceID::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void UserSequenceID::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const UserSequenceID& value) { return Velmora::print<AsciiWriter>(os, "<UserSequenceID ", value); }
FastOStream& operator<<(FastOStream& os, const UserSequenceID& value) { return Velmora::print<AsciiWriter>(os, "<UserSequenceID ", value); }

MarketView::MarketView(BufferAllocator& alloc) : mdEntryList(alloc) {}
MarketView::~MarketView() = default;
bool MarketView::operator==(const MarketView& other) const { return !(*this != other); }
bool MarketView::operator!=(const MarketView& other) const { return Velmora::differ(*this, other); }
bool MarketView::operator<(const MarketView& other) const { return Velmora::less(*this, other); }
void MarketView::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MarketView::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MarketView::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MarketView& value) { return Velmora::print<AsciiWriter>(os, "<MarketView ", value); }
FastOStream& operator<<(FastOStream& os, const MarketView& value) { return Velmora::print<AsciiWriter>(os, "<MarketView ", value); }

SubmitOrder::SubmitOrder(BufferAllocator& alloc) : clOrdID(alloc), parameters(alloc) {}
SubmitOrder::~SubmitOrder() = default;
bool SubmitOrder::operator==(const SubmitOrder& other) const { return !(*this != other); }
bool SubmitOrder::operator!=(const SubmitOrder& other) const { return Velmora::differ(*this, other); }
bool SubmitOrder::operator<(const SubmitOrder& other) const { return Velmora::less(*this, other); }
void SubmitOrder::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void SubmitOrder::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void SubmitOrder::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const SubmitOrder& value) { return Velmora::print<AsciiWriter>(os, "<SubmitOrder ", value); }
FastOStream& operator<<(FastOStream& os, const SubmitOrder& value) { return Velmora::print<AsciiWriter>(os, "<SubmitOrder ", value); }

CancelOrder::CancelOrder(BufferAllocator& alloc) : cxlID(alloc), clOrdID(alloc) {}
CancelOrder::~CancelOrder() = default;
bool CancelOrder::operator==(const CancelOrder& other) const { return !(*this != other); }
bool CancelOrder::operator!=(const CancelOrder& other) const { return Velmora::differ(*this, other); }
bool CancelOrder::operator<(const CancelOrder& other) const { return Velmora::less(*this, other); }
void CancelOrder::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void CancelOrder::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void CancelOrder::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const CancelOrder& value) { return Velmora::print<AsciiWriter>(os, "<CancelOrder ", value); }
FastOStream& operator<<(FastOStream& os, const CancelOrder& value) { return Velmora::print<AsciiWriter>(os, "<CancelOrder ", value); }

CancelAllOrder::CancelAllOrder(BufferAllocator& alloc) : cxlID(alloc) {}
CancelAllOrder::~CancelAllOrder() = default;
bool CancelAllOrder::operator==(const CancelAllOrder& other) const { return !(*this != other); }
bool CancelAllOrder::operator!=(const CancelAllOrder& other) const { return Velmora::differ(*this, other); }
bool CancelAllOrder::operator<(const CancelAllOrder& other) const { return Velmora::less(*this, other); }
void CancelAllOrder::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void CancelAllOrder::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void CancelAllOrder::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const CancelAllOrder& value) { return Velmora::print<AsciiWriter>(os, "<CancelAllOrder ", value); }
FastOStream& operator<<(FastOStream& os, const CancelAllOrder& value) { return Velmora::print<AsciiWriter>(os, "<CancelAllOrder ", value); }

ModifyOrder::ModifyOrder(BufferAllocator& alloc) : clOrdID(alloc), clNewID(alloc), extra(alloc) {}
ModifyOrder::~ModifyOrder() = default;
bool ModifyOrder::operator==(const ModifyOrder& other) const { return !(*this != other); }
bool ModifyOrder::operator!=(const ModifyOrder& other) const { return Velmora::differ(*this, other); }
bool ModifyOrder::operator<(const ModifyOrder& other) const { return Velmora::less(*this, other); }
void ModifyOrder::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ModifyOrder::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ModifyOrder::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ModifyOrder& value) { return Velmora::print<AsciiWriter>(os, "<ModifyOrder ", value); }
FastOStream& operator<<(FastOStream& os, const ModifyOrder& value) { return Velmora::print<AsciiWriter>(os, "<ModifyOrder ", value); }

OrderReceived::OrderReceived(BufferAllocator& alloc) : clOrdID(alloc), modelID(alloc) {}
OrderReceived::~OrderReceived() = default;
bool OrderReceived::operator==(const OrderReceived& other) const { return !(*this != other); }
bool OrderReceived::operator!=(const OrderReceived& other) const { return Velmora::differ(*this, other); }
bool OrderReceived::operator<(const OrderReceived& other) const { return Velmora::less(*this, other); }
void OrderReceived::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderReceived::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderReceived::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderReceived& value) { return Velmora::print<AsciiWriter>(os, "<OrderReceived ", value); }
FastOStream& operator<<(FastOStream& os, const OrderReceived& value) { return Velmora::print<AsciiWriter>(os, "<OrderReceived ", value); }

OrderSubmitted::OrderSubmitted(BufferAllocator& alloc) : clOrdID(alloc), exOrdID(alloc), modelID(alloc) {}
OrderSubmitted::~OrderSubmitted() = default;
bool OrderSubmitted::operator==(const OrderSubmitted& other) const { return !(*this != other); }
bool OrderSubmitted::operator!=(const OrderSubmitted& other) const { return Velmora::differ(*this, other); }
bool OrderSubmitted::operator<(const OrderSubmitted& other) const { return Velmora::less(*this, other); }
void OrderSubmitted::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderSubmitted::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderSubmitted::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderSubmitted& value) { return Velmora::print<AsciiWriter>(os, "<OrderSubmitted ", value); }
FastOStream& operator<<(FastOStream& os, const OrderSubmitted& value) { return Velmora::print<AsciiWriter>(os, "<OrderSubmitted ", value); }

OrderRejected::OrderRejected(BufferAllocator& alloc) : clOrdID(alloc), modelID(alloc), text(alloc) {}
OrderRejected::~OrderRejected() = default;
bool OrderRejected::operator==(const OrderRejected& other) const { return !(*this != other); }
bool OrderRejected::operator!=(const OrderRejected& other) const { return Velmora::differ(*this, other); }
bool OrderRejected::operator<(const OrderRejected& other) const { return Velmora::less(*this, other); }
void OrderRejected::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderRejected::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderRejected::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderRejected& value) { return Velmora::print<AsciiWriter>(os, "<OrderRejected ", value); }
FastOStream& operator<<(FastOStream& os, const OrderRejected& value) { return Velmora::print<AsciiWriter>(os, "<OrderRejected ", value); }

OrderCanceled::OrderCanceled(BufferAllocator& alloc) : clOrdID(alloc), exOrdID(alloc), cxlID(alloc), modelID(alloc), text(alloc) {}
OrderCanceled::~OrderCanceled() = default;
bool OrderCanceled::operator==(const OrderCanceled& other) const { return !(*this != other); }
bool OrderCanceled::operator!=(const OrderCanceled& other) const { return Velmora::differ(*this, other); }
bool OrderCanceled::operator<(const OrderCanceled& other) const { return Velmora::less(*this, other); }
void OrderCanceled::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderCanceled::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderCanceled::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderCanceled& value) { return Velmora::print<AsciiWriter>(os, "<OrderCanceled ", value); }
FastOStream& operator<<(FastOStream& os, const OrderCanceled& value) { return Velmora::print<AsciiWriter>(os, "<OrderCanceled ", value); }

OrderDone::OrderDone(BufferAllocator& alloc) : clOrdID(alloc), exOrdID(alloc), modelID(alloc) {}
OrderDone::~OrderDone() = default;
bool OrderDone::operator==(const OrderDone& other) const { return !(*this != other); }
bool OrderDone::operator!=(const OrderDone& other) const { return Velmora::differ(*this, other); }
bool OrderDone::operator<(const OrderDone& other) const { return Velmora::less(*this, other); }
void OrderDone::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderDone::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderDone::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderDone& value) { return Velmora::print<AsciiWriter>(os, "<OrderDone ", value); }
FastOStream& operator<<(FastOStream& os, const OrderDone& value) { return Velmora::print<AsciiWriter>(os, "<OrderDone ", value); }

OrderCancelRejected::OrderCancelRejected(BufferAllocator& alloc) : clOrdID(alloc), exOrdID(alloc), cxlID(alloc), modelID(alloc), text(alloc) {}
OrderCancelRejected::~OrderCancelRejected() = default;
bool OrderCancelRejected::operator==(const OrderCancelRejected& other) const { return !(*this != other); }
bool OrderCancelRejected::operator!=(const OrderCancelRejected& other) const { return Velmora::differ(*this, other); }
bool OrderCancelRejected::operator<(const OrderCancelRejected& other) const { return Velmora::less(*this, other); }
void OrderCancelRejected::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderCancelRejected::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderCancelRejected::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderCancelRejected& value) { return Velmora::print<AsciiWriter>(os, "<OrderCancelRejected ", value); }
FastOStream& operator<<(FastOStream& os, const OrderCancelRejected& value) { return Velmora::print<AsciiWriter>(os, "<OrderCancelRejected ", value); }

TradeCapture::TradeCapture(BufferAllocator& alloc) : clOrdID(alloc), exOrdID(alloc), exPendingID(alloc), exTradeID(alloc), modelID(alloc), counterPartyID(alloc) {}
TradeCapture::~TradeCapture() = default;
bool TradeCapture::operator==(const TradeCapture& other) const { return !(*this != other); }
bool TradeCapture::operator!=(const TradeCapture& other) const { return Velmora::differ(*this, other); }
bool TradeCapture::operator<(const TradeCapture& other) const { return Velmora::less(*this, other); }
void TradeCapture::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeCapture::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeCapture::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeCapture& value) { return Velmora::print<AsciiWriter>(os, "<TradeCapture ", value); }
FastOStream& operator<<(FastOStream& os, const TradeCapture& value) { return Velmora::print<AsciiWriter>(os, "<TradeCapture ", value); }

DropCopy::DropCopy(BufferAllocator& alloc) : customerClientID(alloc), customerAccountID(alloc), userName(alloc), onBehalfOfCompID(alloc), onBehalfOfSubID(alloc), clOrdID(alloc), exOrdID(alloc), exPendingID(alloc), exTradeID(alloc), modelID(alloc), baseCurrency(alloc), counterCurrency(alloc), settlCurrency(alloc), counterPartyID(alloc) {}
DropCopy::~DropCopy() = default;
bool DropCopy::operator==(const DropCopy& other) const { return !(*this != other); }
bool DropCopy::operator!=(const DropCopy& other) const { return Velmora::differ(*this, other); }
bool DropCopy::operator<(const DropCopy& other) const { return Velmora::less(*this, other); }
void DropCopy::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void DropCopy::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void DropCopy::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const DropCopy& value) { return Velmora::print<AsciiWriter>(os, "<DropCopy ", value); }
FastOStream& operator<<(FastOStream& os, const DropCopy& value) { return Velmora::print<AsciiWriter>(os, "<DropCopy ", value); }

EventReport::EventReport(BufferAllocator& alloc) : eventContents(alloc) {}
EventReport::~EventReport() = default;
bool EventReport::operator==(const EventReport& other) const { return !(*this != other); }
bool EventReport::operator!=(const EventReport& other) const { return Velmora::differ(*this, other); }
bool EventReport::operator<(const EventReport& other) const { return Velmora::less(*this, other); }
void EventReport::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void EventReport::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void EventReport::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const EventReport& value) { return Velmora::print<AsciiWriter>(os, "<EventReport ", value); }
FastOStream& operator<<(FastOStream& os, const EventReport& value) { return Velmora::print<AsciiWriter>(os, "<EventReport ", value); }

bool DateRollover::operator==(const DateRollover& other) const { return !(*this != other); }
bool DateRollover::operator!=(const DateRollover& other) const { return Velmora::differ(*this, other); }
bool DateRollover::operator<(const DateRollover& other) const { return Velmora::less(*this, other); }
void DateRollover::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void DateRollover::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void DateRollover::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const DateRollover& value) { return Velmora::print<AsciiWriter>(os, "<DateRollover ", value); }
FastOStream& operator<<(FastOStream& os, const DateRollover& value) { return Velmora::print<AsciiWriter>(os, "<DateRollover ", value); }

MarketRate::MarketRate(BufferAllocator& alloc) : rate(alloc) {}
MarketRate::~MarketRate() = default;
bool MarketRate::operator==(const MarketRate& other) const { return !(*this != other); }
bool MarketRate::operator!=(const MarketRate& other) const { return Velmora::differ(*this, other); }
bool MarketRate::operator<(const MarketRate& other) const { return Velmora::less(*this, other); }
void MarketRate::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MarketRate::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MarketRate::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MarketRate& value) { return Velmora::print<AsciiWriter>(os, "<MarketRate ", value); }
FastOStream& operator<<(FastOStream& os, const MarketRate& value) { return Velmora::print<AsciiWriter>(os, "<MarketRate ", value); }

TradeLimit::TradeLimit(BufferAllocator& alloc) : limitID(alloc), groupName(alloc), nopAmount(alloc), dslAmount(alloc), positionAmount(alloc), pendingAmount(alloc), singleAmount(alloc), throttleCap(alloc), adminName(alloc), contacts(alloc) {}
TradeLimit::~TradeLimit() = default;
bool TradeLimit::operator==(const TradeLimit& other) const { return !(*this != other); }
bool TradeLimit::operator!=(const TradeLimit& other) const { return Velmora::differ(*this, other); }
bool TradeLimit::operator<(const TradeLimit& other) const { return Velmora::less(*this, other); }
void TradeLimit::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeLimit::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeLimit::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeLimit& value) { return Velmora::print<AsciiWriter>(os, "<TradeLimit ", value); }
FastOStream& operator<<(FastOStream& os, const TradeLimit& value) { return Velmora::print<AsciiWriter>(os, "<TradeLimit ", value); }

TradeState::TradeState(BufferAllocator& alloc) : groupName(alloc), boughtBase(alloc), soldBase(alloc), boughtCounter(alloc), soldCounter(alloc), pendingBoughtBase(alloc), pendingSoldBase(alloc) {}
TradeState::~TradeState() = default;
bool TradeState::operator==(const TradeState& other) const { return !(*this != other); }
bool TradeState::operator!=(const TradeState& other) const { return Velmora::differ(*this, other); }
bool TradeState::operator<(const TradeState& other) const { return Velmora::less(*this, other); }
void TradeState::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeState::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeState::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeState& value) { return Velmora::print<AsciiWriter>(os, "<TradeState ", value); }
FastOStream& operator<<(FastOStream& os, const TradeState& value) { return Velmora::print<AsciiWriter>(os, "<TradeState ", value); }

TradeHierarchy::TradeHierarchy(BufferAllocator& alloc) : userName(alloc), groupNames(alloc) {}
TradeHierarchy::~TradeHierarchy() = default;
bool TradeHierarchy::operator==(const TradeHierarchy& other) const { return !(*this != other); }
bool TradeHierarchy::operator!=(const TradeHierarchy& other) const { return Velmora::differ(*this, other); }
bool TradeHierarchy::operator<(const TradeHierarchy& other) const { return Velmora::less(*this, other); }
void TradeHierarchy::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeHierarchy::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeHierarchy::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeHierarchy& value) { return Velmora::print<AsciiWriter>(os, "<TradeHierarchy ", value); }
FastOStream& operator<<(FastOStream& os, const TradeHierarchy& value) { return Velmora::print<AsciiWriter>(os, "<TradeHierarchy ", value); }

TradeLimitData::TradeLimitData(BufferAllocator& alloc) : clDataID(alloc), groupLimits(alloc), groupStates(alloc), userHierarchy(alloc), marketRates(alloc) {}
TradeLimitData::~TradeLimitData() = default;
bool TradeLimitData::operator==(const TradeLimitData& other) const { return !(*this != other); }
bool TradeLimitData::operator!=(const TradeLimitData& other) const { return Velmora::differ(*this, other); }
bool TradeLimitData::operator<(const TradeLimitData& other) const { return Velmora::less(*this, other); }
void TradeLimitData::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeLimitData::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeLimitData::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeLimitData& value) { return Velmora::print<AsciiWriter>(os, "<TradeLimitData ", value); }
FastOStream& operator<<(FastOStream& os, const TradeLimitData& value) { return Velmora::print<AsciiWriter>(os, "<TradeLimitData ", value); }

RiskLimitStatus::RiskLimitStatus(BufferAllocator& alloc) : group(alloc), reason(alloc) {}
RiskLimitStatus::~RiskLimitStatus() = default;
bool RiskLimitStatus::operator==(const RiskLimitStatus& other) const { return !(*this != other); }
bool RiskLimitStatus::operator!=(const RiskLimitStatus& other) const { return Velmora::differ(*this, other); }
bool RiskLimitStatus::operator<(const RiskLimitStatus& other) const { return Velmora::less(*this, other); }
void RiskLimitStatus::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RiskLimitStatus::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RiskLimitStatus::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RiskLimitStatus& value) { return Velmora::print<AsciiWriter>(os, "<RiskLimitStatus ", value); }
FastOStream& operator<<(FastOStream& os, const RiskLimitStatus& value) { return Velmora::print<AsciiWriter>(os, "<RiskLimitStatus ", value); }

RiskUsageStatus::RiskUsageStatus(BufferAllocator& alloc) : user(alloc), reason(alloc) {}
RiskUsageStatus::~RiskUsageStatus() = default;
bool RiskUsageStatus::operator==(const RiskUsageStatus& other) const { return !(*this != other); }
bool RiskUsageStatus::operator!=(const RiskUsageStatus& other) const { return Velmora::differ(*this, other); }
bool RiskUsageStatus::operator<(const RiskUsageStatus& other) const { return Velmora::less(*this, other); }
void RiskUsageStatus::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RiskUsageStatus::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RiskUsageStatus::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RiskUsageStatus& value) { return Velmora::print<AsciiWriter>(os, "<RiskUsageStatus ", value); }
FastOStream& operator<<(FastOStream& os, const RiskUsageStatus& value) { return Velmora::print<AsciiWriter>(os, "<RiskUsageStatus ", value); }

RiskResponse::RiskResponse(BufferAllocator& alloc) : clRequestID(alloc), limitStatus(alloc), usageStatus(alloc) {}
RiskResponse::~RiskResponse() = default;
bool RiskResponse::operator==(const RiskResponse& other) const { return !(*this != other); }
bool RiskResponse::operator!=(const RiskResponse& other) const { return Velmora::differ(*this, other); }
bool RiskResponse::operator<(const RiskResponse& other) const { return Velmora::less(*this, other); }
void RiskResponse::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RiskResponse::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RiskResponse::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RiskResponse& value) { return Velmora::print<AsciiWriter>(os, "<RiskResponse ", value); }
FastOStream& operator<<(FastOStream& os, const RiskResponse& value) { return Velmora::print<AsciiWriter>(os, "<RiskResponse ", value); }

LockResponse::LockResponse(BufferAllocator& alloc) : clRequestID(alloc), reason(alloc) {}
LockResponse::~LockResponse() = default;
bool LockResponse::operator==(const LockResponse& other) const { return !(*this != other); }
bool LockResponse::operator!=(const LockResponse& other) const { return Velmora::differ(*this, other); }
bool LockResponse::operator<(const LockResponse& other) const { return Velmora::less(*this, other); }
void LockResponse::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void LockResponse::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void LockResponse::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const LockResponse& value) { return Velmora::print<AsciiWriter>(os, "<LockResponse ", value); }
FastOStream& operator<<(FastOStream& os, const LockResponse& value) { return Velmora::print<AsciiWriter>(os, "<LockResponse ", value); }

LockUser::LockUser(BufferAllocator& alloc) : clRequestID(alloc), username(alloc) {}
LockUser::~LockUser() = default;
bool LockUser::operator==(const LockUser& other) const { return !(*this != other); }
bool LockUser::operator!=(const LockUser& other) const { return Velmora::differ(*this, other); }
bool LockUser::operator<(const LockUser& other) const { return Velmora::less(*this, other); }
void LockUser::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void LockUser::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void LockUser::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const LockUser& value) { return Velmora::print<AsciiWriter>(os, "<LockUser ", value); }
FastOStream& operator<<(FastOStream& os, const LockUser& value) { return Velmora::print<AsciiWriter>(os, "<LockUser ", value); }

bool MemBusID::operator==(const MemBusID& other) const { return !(*this != other); }
bool MemBusID::operator!=(const MemBusID& other) const { return Velmora::differ(*this, other); }
bool MemBusID::operator<(const MemBusID& other) const { return Velmora::less(*this, other); }
void MemBusID::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MemBusID::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MemBusID::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MemBusID& value) { return Velmora::print<AsciiWriter>(os, "<MemBusID ", value); }
FastOStream& operator<<(FastOStream& os, const MemBusID& value) { return Velmora::print<AsciiWriter>(os, "<MemBusID ", value); }

APIMarket::APIMarket(BufferAllocator& alloc) : name(alloc) {}
APIMarket::~APIMarket() = default;
bool APIMarket::operator==(const APIMarket& other) const { return !(*this != other); }
bool APIMarket::operator!=(const APIMarket& other) const { return Velmora::differ(*this, other); }
bool APIMarket::operator<(const APIMarket& other) const { return Velmora::less(*this, other); }
void APIMarket::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void APIMarket::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void APIMarket::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const APIMarket& value) { return Velmora::print<AsciiWriter>(os, "<APIMarket ", value); }
FastOStream& operator<<(FastOStream& os, const APIMarket& value) { return Velmora::print<AsciiWriter>(os, "<APIMarket ", value); }

APIFeed::APIFeed(BufferAllocator& alloc) : name(alloc), exchangeName(alloc), marketList(alloc) {}
APIFeed::~APIFeed() = default;
bool APIFeed::operator==(const APIFeed& other) const { return !(*this != other); }
bool APIFeed::operator!=(const APIFeed& other) const { return Velmora::differ(*this, other); }
bool APIFeed::operator<(const APIFeed& other) const { return Velmora::less(*this, other); }
void APIFeed::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void APIFeed::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void APIFeed::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const APIFeed& value) { return Velmora::print<AsciiWriter>(os, "<APIFeed ", value); }
FastOStream& operator<<(FastOStream& os, const APIFeed& value) { return Velmora::print<AsciiWriter>(os, "<APIFeed ", value); }

bool Subscription::operator==(const Subscription& other) const { return !(*this != other); }
bool Subscription::operator!=(const Subscription& other) const { return Velmora::differ(*this, other); }
bool Subscription::operator<(const Subscription& other) const { return Velmora::less(*this, other); }
void Subscription::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void Subscription::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void Subscription::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const Subscription& value) { return Velmora::print<AsciiWriter>(os, "<Subscription ", value); }
FastOStream& operator<<(FastOStream& os, const Subscription& value) { return Velmora::print<AsciiWriter>(os, "<Subscription ", value); }

SubscriptionEvent::SubscriptionEvent(BufferAllocator& alloc) : clSubID(alloc), reason(alloc) {}
SubscriptionEvent::~SubscriptionEvent() = default;
bool SubscriptionEvent::operator==(const SubscriptionEvent& other) const { return !(*this != other); }
bool SubscriptionEvent::operator!=(const SubscriptionEvent& other) const { return Velmora::differ(*this, other); }
bool SubscriptionEvent::operator<(const SubscriptionEvent& other) const { return Velmora::less(*this, other); }
void SubscriptionEvent::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void SubscriptionEvent::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void SubscriptionEvent::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const SubscriptionEvent& value) { return Velmora::print<AsciiWriter>(os, "<SubscriptionEvent ", value); }
FastOStream& operator<<(FastOStream& os, const SubscriptionEvent& value) { return Velmora::print<AsciiWriter>(os, "<SubscriptionEvent ", value); }

QuoteRequest::QuoteRequest(BufferAllocator& alloc) : quoteReqID(alloc), mdStreamID(alloc), detail(alloc) {}
QuoteRequest::~QuoteRequest() = default;
bool QuoteRequest::operator==(const QuoteRequest& other) const { return !(*this != other); }
bool QuoteRequest::operator!=(const QuoteRequest& other) const { return Velmora::differ(*this, other); }
bool QuoteRequest::operator<(const QuoteRequest& other) const { return Velmora::less(*this, other); }
void QuoteRequest::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void QuoteRequest::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void QuoteRequest::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const QuoteRequest& value) { return Velmora::print<AsciiWriter>(os, "<QuoteRequest ", value); }
FastOStream& operator<<(FastOStream& os, const QuoteRequest& value) { return Velmora::print<AsciiWriter>(os, "<QuoteRequest ", value); }

RejectQuoteRequest::RejectQuoteRequest(BufferAllocator& alloc) : quoteReqID(alloc), text(alloc), detail(alloc) {}
RejectQuoteRequest::~RejectQuoteRequest() = default;
bool RejectQuoteRequest::operator==(const RejectQuoteRequest& other) const { return !(*this != other); }
bool RejectQuoteRequest::operator!=(const RejectQuoteRequest& other) const { return Velmora::differ(*this, other); }
bool RejectQuoteRequest::operator<(const RejectQuoteRequest& other) const { return Velmora::less(*this, other); }
void RejectQuoteRequest::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RejectQuoteRequest::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RejectQuoteRequest::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RejectQuoteRequest& value) { return Velmora::print<AsciiWriter>(os, "<RejectQuoteRequest ", value); }
FastOStream& operator<<(FastOStream& os, const RejectQuoteRequest& value) { return Velmora::print<AsciiWriter>(os, "<RejectQuoteRequest ", value); }

CancelQuote::CancelQuote(BufferAllocator& alloc) : quoteReqID(alloc), quoteID(alloc), detail(alloc) {}
CancelQuote::~CancelQuote() = default;
bool CancelQuote::operator==(const CancelQuote& other) const { return !(*this != other); }
bool CancelQuote::operator!=(const CancelQuote& other) const { return Velmora::differ(*this, other); }
bool CancelQuote::operator<(const CancelQuote& other) const { return Velmora::less(*this, other); }
void CancelQuote::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void CancelQuote::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void CancelQuote::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const CancelQuote& value) { return Velmora::print<AsciiWriter>(os, "<CancelQuote ", value); }
FastOStream& operator<<(FastOStream& os, const CancelQuote& value) { return Velmora::print<AsciiWriter>(os, "<CancelQuote ", value); }

QLQuote::QLQuote(BufferAllocator& alloc) : quoteID(alloc), detail(alloc) {}
QLQuote::~QLQuote() = default;
bool QLQuote::operator==(const QLQuote& other) const { return !(*this != other); }
bool QLQuote::operator!=(const QLQuote& other) const { return Velmora::differ(*this, other); }
bool QLQuote::operator<(const QLQuote& other) const { return Velmora::less(*this, other); }
void QLQuote::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void QLQuote::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void QLQuote::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const QLQuote& value) { return Velmora::print<AsciiWriter>(os, "<QLQuote ", value); }
FastOStream& operator<<(FastOStream& os, const QLQuote& value) { return Velmora::print<AsciiWriter>(os, "<QLQuote ", value); }

QLMassQuote::QLMassQuote(BufferAllocator& alloc) : quoteReqID(alloc), mdStreamID(alloc), quotes(alloc), detail(alloc) {}
QLMassQuote::~QLMassQuote() = default;
bool QLMassQuote::operator==(const QLMassQuote& other) const { return !(*this != other); }
bool QLMassQuote::operator!=(const QLMassQuote& other) const { return Velmora::differ(*this, other); }
bool QLMassQuote::operator<(const QLMassQuote& other) const { return Velmora::less(*this, other); }
void QLMassQuote::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void QLMassQuote::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void QLMassQuote::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const QLMassQuote& value) { return Velmora::print<AsciiWriter>(os, "<QLMassQuote ", value); }
FastOStream& operator<<(FastOStream& os, const QLMassQuote& value) { return Velmora::print<AsciiWriter>(os, "<QLMassQuote ", value); }

MassQuoteAck::MassQuoteAck(BufferAllocator& alloc) : quoteReqID(alloc), text(alloc), detail(alloc) {}
MassQuoteAck::~MassQuoteAck() = default;
bool MassQuoteAck::operator==(const MassQuoteAck& other) const { return !(*this != other); }
bool MassQuoteAck::operator!=(const MassQuoteAck& other) const { return Velmora::differ(*this, other); }
bool MassQuoteAck::operator<(const MassQuoteAck& other) const { return Velmora::less(*this, other); }
void MassQuoteAck::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MassQuoteAck::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MassQuoteAck::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MassQuoteAck& value) { return Velmora::print<AsciiWriter>(os, "<MassQuoteAck ", value); }
FastOStream& operator<<(FastOStream& os, const MassQuoteAck& value) { return Velmora::print<AsciiWriter>(os, "<MassQuoteAck ", value); }

NewOrder::NewOrder(BufferAllocator& alloc) : partyID(alloc), clOrdID(alloc), orderID(alloc), execID(alloc), quoteID(alloc), quoteReqID(alloc), detail(alloc) {}
NewOrder::~NewOrder() = default;
bool NewOrder::operator==(const NewOrder& other) const { return !(*this != other); }
bool NewOrder::operator!=(const NewOrder& other) const { return Velmora::differ(*this, other); }
bool NewOrder::operator<(const NewOrder& other) const { return Velmora::less(*this, other); }
void NewOrder::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void NewOrder::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void NewOrder::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const NewOrder& value) { return Velmora::print<AsciiWriter>(os, "<NewOrder ", value); }
FastOStream& operator<<(FastOStream& os, const NewOrder& value) { return Velmora::print<AsciiWriter>(os, "<NewOrder ", value); }

RejectOrder::RejectOrder(BufferAllocator& alloc) : partyID(alloc), orderID(alloc), clOrdID(alloc), execID(alloc), quoteReqID(alloc), text(alloc), detail(alloc) {}
RejectOrder::~RejectOrder() = default;
bool RejectOrder::operator==(const RejectOrder& other) const { return !(*this != other); }
bool RejectOrder::operator!=(const RejectOrder& other) const { return Velmora::differ(*this, other); }
bool RejectOrder::operator<(const RejectOrder& other) const { return Velmora::less(*this, other); }
void RejectOrder::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RejectOrder::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RejectOrder::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RejectOrder& value) { return Velmora::print<AsciiWriter>(os, "<RejectOrder ", value); }
FastOStream& operator<<(FastOStream& os, const RejectOrder& value) { return Velmora::print<AsciiWriter>(os, "<RejectOrder ", value); }

AcceptOrder::AcceptOrder(BufferAllocator& alloc) : partyID(alloc), clOrdID(alloc), orderID(alloc), execID(alloc), quoteReqID(alloc), detail(alloc) {}
AcceptOrder::~AcceptOrder() = default;
bool AcceptOrder::operator==(const AcceptOrder& other) const { return !(*this != other); }
bool AcceptOrder::operator!=(const AcceptOrder& other) const { return Velmora::differ(*this, other); }
bool AcceptOrder::operator<(const AcceptOrder& other) const { return Velmora::less(*this, other); }
void AcceptOrder::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void AcceptOrder::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void AcceptOrder::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const AcceptOrder& value) { return Velmora::print<AsciiWriter>(os, "<AcceptOrder ", value); }
FastOStream& operator<<(FastOStream& os, const AcceptOrder& value) { return Velmora::print<AsciiWriter>(os, "<AcceptOrder ", value); }

TradeCaptureAck::TradeCaptureAck(BufferAllocator& alloc) : execID(alloc), text(alloc), detail(alloc) {}
TradeCaptureAck::~TradeCaptureAck() = default;
bool TradeCaptureAck::operator==(const TradeCaptureAck& other) const { return !(*this != other); }
bool TradeCaptureAck::operator!=(const TradeCaptureAck& other) const { return Velmora::differ(*this, other); }
bool TradeCaptureAck::operator<(const TradeCaptureAck& other) const { return Velmora::less(*this, other); }
void TradeCaptureAck::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeCaptureAck::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeCaptureAck::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeCaptureAck& value) { return Velmora::print<AsciiWriter>(os, "<TradeCaptureAck ", value); }
FastOStream& operator<<(FastOStream& os, const TradeCaptureAck& value) { return Velmora::print<AsciiWriter>(os, "<TradeCaptureAck ", value); }

OrderTimeout::OrderTimeout(BufferAllocator& alloc) : clOrdID(alloc), detail(alloc) {}
OrderTimeout::~OrderTimeout() = default;
bool OrderTimeout::operator==(const OrderTimeout& other) const { return !(*this != other); }
bool OrderTimeout::operator!=(const OrderTimeout& other) const { return Velmora::differ(*this, other); }
bool OrderTimeout::operator<(const OrderTimeout& other) const { return Velmora::less(*this, other); }
void OrderTimeout::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderTimeout::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderTimeout::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderTimeout& value) { return Velmora::print<AsciiWriter>(os, "<OrderTimeout ", value); }
FastOStream& operator<<(FastOStream& os, const OrderTimeout& value) { return Velmora::print<AsciiWriter>(os, "<OrderTimeout ", value); }

LogMessage::LogMessage(BufferAllocator& alloc) : thread(alloc), logger(alloc), filename(alloc), function(alloc), description(alloc) {}
LogMessage::~LogMessage() = default;
bool LogMessage::operator==(const LogMessage& other) const { return !(*this != other); }
bool LogMessage::operator!=(const LogMessage& other) const { return Velmora::differ(*this, other); }
bool LogMessage::operator<(const LogMessage& other) const { return Velmora::less(*this, other); }
void LogMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void LogMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void LogMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const LogMessage& value) { return Velmora::print<AsciiWriter>(os, "<LogMessage ", value); }
FastOStream& operator<<(FastOStream& os, const LogMessage& value) { return Velmora::print<AsciiWriter>(os, "<LogMessage ", value); }

StatCounterMessage::StatCounterMessage(BufferAllocator& alloc) : threadname(alloc), stats(alloc) {}
StatCounterMessage::~StatCounterMessage() = default;
bool StatCounterMessage::operator==(const StatCounterMessage& other) const { return !(*this != other); }
bool StatCounterMessage::operator!=(const StatCounterMessage& other) const { return Velmora::differ(*this, other); }
bool StatCounterMessage::operator<(const StatCounterMessage& other) const { return Velmora::less(*this, other); }
void StatCounterMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void StatCounterMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void StatCounterMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const StatCounterMessage& value) { return Velmora::print<AsciiWriter>(os, "<StatCounterMessage ", value); }
FastOStream& operator<<(FastOStream& os, const StatCounterMessage& value) { return Velmora::print<AsciiWriter>(os, "<StatCounterMessage ", value); }

ExchangeMessage::ExchangeMessage(BufferAllocator& alloc) : contents(alloc) {}
ExchangeMessage::~ExchangeMessage() = default;
bool ExchangeMessage::operator==(const ExchangeMessage& other) const { return !(*this != other); }
bool ExchangeMessage::operator!=(const ExchangeMessage& other) const { return Velmora::differ(*this, other); }
bool ExchangeMessage::operator<(const ExchangeMessage& other) const { return Velmora::less(*this, other); }
void ExchangeMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ExchangeMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ExchangeMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ExchangeMessage& value) { return Velmora::print<AsciiWriter>(os, "<ExchangeMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ExchangeMessage& value) { return Velmora::print<AsciiWriter>(os, "<ExchangeMessage ", value); }

bool StatTimeoutMessage::operator==(const StatTimeoutMessage& other) const { return !(*this != other); }
bool StatTimeoutMessage::operator!=(const StatTimeoutMessage& other) const { return Velmora::differ(*this, other); }
bool StatTimeoutMessage::operator<(const StatTimeoutMessage& other) const { return Velmora::less(*this, other); }
void StatTimeoutMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void StatTimeoutMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void StatTimeoutMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const StatTimeoutMessage& value) { return Velmora::print<AsciiWriter>(os, "<StatTimeoutMessage ", value); }
FastOStream& operator<<(FastOStream& os, const StatTimeoutMessage& value) { return Velmora::print<AsciiWriter>(os, "<StatTimeoutMessage ", value); }

bool TaskInitializationMessage::operator==(const TaskInitializationMessage& other) const { return !(*this != other); }
bool TaskInitializationMessage::operator!=(const TaskInitializationMessage& other) const { return Velmora::differ(*this, other); }
bool TaskInitializationMessage::operator<(const TaskInitializationMessage& other) const { return Velmora::less(*this, other); }
void TaskInitializationMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TaskInitializationMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TaskInitializationMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TaskInitializationMessage& value) { return Velmora::print<AsciiWriter>(os, "<TaskInitializationMessage ", value); }
FastOStream& operator<<(FastOStream& os, const TaskInitializationMessage& value) { return Velmora::print<AsciiWriter>(os, "<TaskInitializationMessage ", value); }

bool MDActivityCheckMessage::operator==(const MDActivityCheckMessage& other) const { return !(*this != other); }
bool MDActivityCheckMessage::operator!=(const MDActivityCheckMessage& other) const { return Velmora::differ(*this, other); }
bool MDActivityCheckMessage::operator<(const MDActivityCheckMessage& other) const { return Velmora::less(*this, other); }
void MDActivityCheckMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MDActivityCheckMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MDActivityCheckMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MDActivityCheckMessage& value) { return Velmora::print<AsciiWriter>(os, "<MDActivityCheckMessage ", value); }
FastOStream& operator<<(FastOStream& os, const MDActivityCheckMessage& value) { return Velmora::print<AsciiWriter>(os, "<MDActivityCheckMessage ", value); }

bool CallbackMessage::operator==(const CallbackMessage& other) const { return !(*this != other); }
bool CallbackMessage::operator!=(const CallbackMessage& other) const { return Velmora::differ(*this, other); }
bool CallbackMessage::operator<(const CallbackMessage& other) const { return Velmora::less(*this, other); }
void CallbackMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void CallbackMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void CallbackMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const CallbackMessage& value) { return Velmora::print<AsciiWriter>(os, "<CallbackMessage ", value); }
FastOStream& operator<<(FastOStream& os, const CallbackMessage& value) { return Velmora::print<AsciiWriter>(os, "<CallbackMessage ", value); }

bool TimerMessage::operator==(const TimerMessage& other) const { return !(*this != other); }
bool TimerMessage::operator!=(const TimerMessage& other) const { return Velmora::differ(*this, other); }
bool TimerMessage::operator<(const TimerMessage& other) const { return Velmora::less(*this, other); }
void TimerMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TimerMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TimerMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TimerMessage& value) { return Velmora::print<AsciiWriter>(os, "<TimerMessage ", value); }
FastOStream& operator<<(FastOStream& os, const TimerMessage& value) { return Velmora::print<AsciiWriter>(os, "<TimerMessage ", value); }

bool SubscriptionTimeoutMessage::operator==(const SubscriptionTimeoutMessage& other) const { return !(*this != other); }
bool SubscriptionTimeoutMessage::operator!=(const SubscriptionTimeoutMessage& other) const { return Velmora::differ(*this, other); }
bool SubscriptionTimeoutMessage::operator<(const SubscriptionTimeoutMessage& other) const { return Velmora::less(*this, other); }
void SubscriptionTimeoutMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void SubscriptionTimeoutMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void SubscriptionTimeoutMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const SubscriptionTimeoutMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubscriptionTimeoutMessage ", value); }
FastOStream& operator<<(FastOStream& os, const SubscriptionTimeoutMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubscriptionTimeoutMessage ", value); }

bool HeartbeatTimerMessage::operator==(const HeartbeatTimerMessage& other) const { return !(*this != other); }
bool HeartbeatTimerMessage::operator!=(const HeartbeatTimerMessage& other) const { return Velmora::differ(*this, other); }
bool HeartbeatTimerMessage::operator<(const HeartbeatTimerMessage& other) const { return Velmora::less(*this, other); }
void HeartbeatTimerMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void HeartbeatTimerMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void HeartbeatTimerMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const HeartbeatTimerMessage& value) { return Velmora::print<AsciiWriter>(os, "<HeartbeatTimerMessage ", value); }
FastOStream& operator<<(FastOStream& os, const HeartbeatTimerMessage& value) { return Velmora::print<AsciiWriter>(os, "<HeartbeatTimerMessage ", value); }

VersionMessage::VersionMessage(BufferAllocator& alloc) : program(alloc), version_extra(alloc), revision(alloc), commitdate(alloc), branch(alloc), build(alloc), arch(alloc), host(alloc), date(alloc), time(alloc), compiler(alloc), defines(alloc), builduser(alloc), distribution(alloc), platform(alloc), protosig(alloc), extra1(alloc), extra2(alloc), extra3(alloc), extra4(alloc), extra5(alloc) {}
VersionMessage::~VersionMessage() = default;
bool VersionMessage::operator==(const VersionMessage& other) const { return !(*this != other); }
bool VersionMessage::operator!=(const VersionMessage& other) const { return Velmora::differ(*this, other); }
bool VersionMessage::operator<(const VersionMessage& other) const { return Velmora::less(*this, other); }
void VersionMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void VersionMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void VersionMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const VersionMessage& value) { return Velmora::print<AsciiWriter>(os, "<VersionMessage ", value); }
FastOStream& operator<<(FastOStream& os, const VersionMessage& value) { return Velmora::print<AsciiWriter>(os, "<VersionMessage ", value); }

ProtocolDefinitionMessage::ProtocolDefinitionMessage(BufferAllocator& alloc) : proto(alloc) {}
ProtocolDefinitionMessage::~ProtocolDefinitionMessage() = default;
bool ProtocolDefinitionMessage::operator==(const ProtocolDefinitionMessage& other) const { return !(*this != other); }
bool ProtocolDefinitionMessage::operator!=(const ProtocolDefinitionMessage& other) const { return Velmora::differ(*this, other); }
bool ProtocolDefinitionMessage::operator<(const ProtocolDefinitionMessage& other) const { return Velmora::less(*this, other); }
void ProtocolDefinitionMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ProtocolDefinitionMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ProtocolDefinitionMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ProtocolDefinitionMessage& value) { return Velmora::print<AsciiWriter>(os, "<ProtocolDefinitionMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ProtocolDefinitionMessage& value) { return Velmora::print<AsciiWriter>(os, "<ProtocolDefinitionMessage ", value); }

PadMessage::PadMessage(BufferAllocator& alloc) : padding(alloc) {}
PadMessage::~PadMessage() = default;
bool PadMessage::operator==(const PadMessage& other) const { return !(*this != other); }
bool PadMessage::operator!=(const PadMessage& other) const { return Velmora::differ(*this, other); }
bool PadMessage::operator<(const PadMessage& other) const { return Velmora::less(*this, other); }
void PadMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void PadMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void PadMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const PadMessage& value) { return Velmora::print<AsciiWriter>(os, "<PadMessage ", value); }
FastOStream& operator<<(FastOStream& os, const PadMessage& value) { return Velmora::print<AsciiWriter>(os, "<PadMessage ", value); }

bool RuThereMessage::operator==(const RuThereMessage& other) const { return !(*this != other); }
bool RuThereMessage::operator!=(const RuThereMessage& other) const { return Velmora::differ(*this, other); }
bool RuThereMessage::operator<(const RuThereMessage& other) const { return Velmora::less(*this, other); }
void RuThereMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RuThereMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RuThereMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RuThereMessage& value) { return Velmora::print<AsciiWriter>(os, "<RuThereMessage ", value); }
FastOStream& operator<<(FastOStream& os, const RuThereMessage& value) { return Velmora::print<AsciiWriter>(os, "<RuThereMessage ", value); }

bool ImHereMessage::operator==(const ImHereMessage& other) const { return !(*this != other); }
bool ImHereMessage::operator!=(const ImHereMessage& other) const { return Velmora::differ(*this, other); }
bool ImHereMessage::operator<(const ImHereMessage& other) const { return Velmora::less(*this, other); }
void ImHereMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ImHereMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ImHereMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ImHereMessage& value) { return Velmora::print<AsciiWriter>(os, "<ImHereMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ImHereMessage& value) { return Velmora::print<AsciiWriter>(os, "<ImHereMessage ", value); }

HeartbeatMessage::HeartbeatMessage(BufferAllocator& alloc) : contents(alloc) {}
HeartbeatMessage::~HeartbeatMessage() = default;
bool HeartbeatMessage::operator==(const HeartbeatMessage& other) const { return !(*this != other); }
bool HeartbeatMessage::operator!=(const HeartbeatMessage& other) const { return Velmora::differ(*this, other); }
bool HeartbeatMessage::operator<(const HeartbeatMessage& other) const { return Velmora::less(*this, other); }
void HeartbeatMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void HeartbeatMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void HeartbeatMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const HeartbeatMessage& value) { return Velmora::print<AsciiWriter>(os, "<HeartbeatMessage ", value); }
FastOStream& operator<<(FastOStream& os, const HeartbeatMessage& value) { return Velmora::print<AsciiWriter>(os, "<HeartbeatMessage ", value); }

bool ReplayMessage::operator==(const ReplayMessage& other) const { return !(*this != other); }
bool ReplayMessage::operator!=(const ReplayMessage& other) const { return Velmora::differ(*this, other); }
bool ReplayMessage::operator<(const ReplayMessage& other) const { return Velmora::less(*this, other); }
void ReplayMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ReplayMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ReplayMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ReplayMessage& value) { return Velmora::print<AsciiWriter>(os, "<ReplayMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ReplayMessage& value) { return Velmora::print<AsciiWriter>(os, "<ReplayMessage ", value); }

bool ReplayDoneMessage::operator==(const ReplayDoneMessage& other) const { return !(*this != other); }
bool ReplayDoneMessage::operator!=(const ReplayDoneMessage& other) const { return Velmora::differ(*this, other); }
bool ReplayDoneMessage::operator<(const ReplayDoneMessage& other) const { return Velmora::less(*this, other); }
void ReplayDoneMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ReplayDoneMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ReplayDoneMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ReplayDoneMessage& value) { return Velmora::print<AsciiWriter>(os, "<ReplayDoneMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ReplayDoneMessage& value) { return Velmora::print<AsciiWriter>(os, "<ReplayDoneMessage ", value); }

LastSequenceIDMessage::LastSequenceIDMessage(BufferAllocator& alloc) : feedSeqIDs(alloc) {}
LastSequenceIDMessage::~LastSequenceIDMessage() = default;
bool LastSequenceIDMessage::operator==(const LastSequenceIDMessage& other) const { return !(*this != other); }
bool LastSequenceIDMessage::operator!=(const LastSequenceIDMessage& other) const { return Velmora::differ(*this, other); }
bool LastSequenceIDMessage::operator<(const LastSequenceIDMessage& other) const { return Velmora::less(*this, other); }
void LastSequenceIDMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void LastSequenceIDMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void LastSequenceIDMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const LastSequenceIDMessage& value) { return Velmora::print<AsciiWriter>(os, "<LastSequenceIDMessage ", value); }
FastOStream& operator<<(FastOStream& os, const LastSequenceIDMessage& value) { return Velmora::print<AsciiWriter>(os, "<LastSequenceIDMessage ", value); }

BatchRegisterMessage::BatchRegisterMessage(BufferAllocator& alloc) : marketIDList(alloc) {}
BatchRegisterMessage::~BatchRegisterMessage() = default;
bool BatchRegisterMessage::operator==(const BatchRegisterMessage& other) const { return !(*this != other); }
bool BatchRegisterMessage::operator!=(const BatchRegisterMessage& other) const { return Velmora::differ(*this, other); }
bool BatchRegisterMessage::operator<(const BatchRegisterMessage& other) const { return Velmora::less(*this, other); }
void BatchRegisterMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void BatchRegisterMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void BatchRegisterMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const BatchRegisterMessage& value) { return Velmora::print<AsciiWriter>(os, "<BatchRegisterMessage ", value); }
FastOStream& operator<<(FastOStream& os, const BatchRegisterMessage& value) { return Velmora::print<AsciiWriter>(os, "<BatchRegisterMessage ", value); }

bool BatchUnregisterMessage::operator==(const BatchUnregisterMessage& other) const { return !(*this != other); }
bool BatchUnregisterMessage::operator!=(const BatchUnregisterMessage& other) const { return Velmora::differ(*this, other); }
bool BatchUnregisterMessage::operator<(const BatchUnregisterMessage& other) const { return Velmora::less(*this, other); }
void BatchUnregisterMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void BatchUnregisterMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void BatchUnregisterMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const BatchUnregisterMessage& value) { return Velmora::print<AsciiWriter>(os, "<BatchUnregisterMessage ", value); }
FastOStream& operator<<(FastOStream& os, const BatchUnregisterMessage& value) { return Velmora::print<AsciiWriter>(os, "<BatchUnregisterMessage ", value); }

bool SecurityInfoMessage::operator==(const SecurityInfoMessage& other) const { return !(*this != other); }
bool SecurityInfoMessage::operator!=(const SecurityInfoMessage& other) const { return Velmora::differ(*this, other); }
bool SecurityInfoMessage::operator<(const SecurityInfoMessage& other) const { return Velmora::less(*this, other); }
void SecurityInfoMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void SecurityInfoMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void SecurityInfoMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const SecurityInfoMessage& value) { return Velmora::print<AsciiWriter>(os, "<SecurityInfoMessage ", value); }
FastOStream& operator<<(FastOStream& os, const SecurityInfoMessage& value) { return Velmora::print<AsciiWriter>(os, "<SecurityInfoMessage ", value); }

BatchesCompletedMessage::BatchesCompletedMessage(BufferAllocator& alloc) : batchesCompleted(alloc) {}
BatchesCompletedMessage::~BatchesCompletedMessage() = default;
bool BatchesCompletedMessage::operator==(const BatchesCompletedMessage& other) const { return !(*this != other); }
bool BatchesCompletedMessage::operator!=(const BatchesCompletedMessage& other) const { return Velmora::differ(*this, other); }
bool BatchesCompletedMessage::operator<(const BatchesCompletedMessage& other) const { return Velmora::less(*this, other); }
void BatchesCompletedMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void BatchesCompletedMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void BatchesCompletedMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const BatchesCompletedMessage& value) { return Velmora::print<AsciiWriter>(os, "<BatchesCompletedMessage ", value); }
FastOStream& operator<<(FastOStream& os, const BatchesCompletedMessage& value) { return Velmora::print<AsciiWriter>(os, "<BatchesCompletedMessage ", value); }

MktDataMessage::MktDataMessage(BufferAllocator& alloc) : mvd(alloc), fmIDsInBatch(alloc) {}
MktDataMessage::~MktDataMessage() = default;
bool MktDataMessage::operator==(const MktDataMessage& other) const { return !(*this != other); }
bool MktDataMessage::operator!=(const MktDataMessage& other) const { return Velmora::differ(*this, other); }
bool MktDataMessage::operator<(const MktDataMessage& other) const { return Velmora::less(*this, other); }
void MktDataMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MktDataMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MktDataMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MktDataMessage& value) { return Velmora::print<AsciiWriter>(os, "<MktDataMessage ", value); }
FastOStream& operator<<(FastOStream& os, const MktDataMessage& value) { return Velmora::print<AsciiWriter>(os, "<MktDataMessage ", value); }

SubmitOrderMessage::SubmitOrderMessage(BufferAllocator& alloc) : quoteID(alloc), onBehalfOfCompID(alloc), contents(alloc), modelID(alloc) {}
SubmitOrderMessage::~SubmitOrderMessage() = default;
bool SubmitOrderMessage::operator==(const SubmitOrderMessage& other) const { return !(*this != other); }
bool SubmitOrderMessage::operator!=(const SubmitOrderMessage& other) const { return Velmora::differ(*this, other); }
bool SubmitOrderMessage::operator<(const SubmitOrderMessage& other) const { return Velmora::less(*this, other); }
void SubmitOrderMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void SubmitOrderMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void SubmitOrderMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const SubmitOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubmitOrderMessage ", value); }
FastOStream& operator<<(FastOStream& os, const SubmitOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubmitOrderMessage ", value); }

CancelOrderMessage::CancelOrderMessage(BufferAllocator& alloc) : contents(alloc) {}
CancelOrderMessage::~CancelOrderMessage() = default;
bool CancelOrderMessage::operator==(const CancelOrderMessage& other) const { return !(*this != other); }
bool CancelOrderMessage::operator!=(const CancelOrderMessage& other) const { return Velmora::differ(*this, other); }
bool CancelOrderMessage::operator<(const CancelOrderMessage& other) const { return Velmora::less(*this, other); }
void CancelOrderMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void CancelOrderMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void CancelOrderMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const CancelOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<CancelOrderMessage ", value); }
FastOStream& operator<<(FastOStream& os, const CancelOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<CancelOrderMessage ", value); }

CancelAllOrderMessage::CancelAllOrderMessage(BufferAllocator& alloc) : contents(alloc) {}
CancelAllOrderMessage::~CancelAllOrderMessage() = default;
bool CancelAllOrderMessage::operator==(const CancelAllOrderMessage& other) const { return !(*this != other); }
bool CancelAllOrderMessage::operator!=(const CancelAllOrderMessage& other) const { return Velmora::differ(*this, other); }
bool CancelAllOrderMessage::operator<(const CancelAllOrderMessage& other) const { return Velmora::less(*this, other); }
void CancelAllOrderMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void CancelAllOrderMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void CancelAllOrderMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const CancelAllOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<CancelAllOrderMessage ", value); }
FastOStream& operator<<(FastOStream& os, const CancelAllOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<CancelAllOrderMessage ", value); }

ModifyOrderMessage::ModifyOrderMessage(BufferAllocator& alloc) : contents(alloc) {}
ModifyOrderMessage::~ModifyOrderMessage() = default;
bool ModifyOrderMessage::operator==(const ModifyOrderMessage& other) const { return !(*this != other); }
bool ModifyOrderMessage::operator!=(const ModifyOrderMessage& other) const { return Velmora::differ(*this, other); }
bool ModifyOrderMessage::operator<(const ModifyOrderMessage& other) const { return Velmora::less(*this, other); }
void ModifyOrderMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ModifyOrderMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ModifyOrderMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ModifyOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<ModifyOrderMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ModifyOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<ModifyOrderMessage ", value); }

OrderReceivedMessage::OrderReceivedMessage(BufferAllocator& alloc) : contents(alloc) {}
OrderReceivedMessage::~OrderReceivedMessage() = default;
bool OrderReceivedMessage::operator==(const OrderReceivedMessage& other) const { return !(*this != other); }
bool OrderReceivedMessage::operator!=(const OrderReceivedMessage& other) const { return Velmora::differ(*this, other); }
bool OrderReceivedMessage::operator<(const OrderReceivedMessage& other) const { return Velmora::less(*this, other); }
void OrderReceivedMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderReceivedMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderReceivedMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderReceivedMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderReceivedMessage ", value); }
FastOStream& operator<<(FastOStream& os, const OrderReceivedMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderReceivedMessage ", value); }

OrderSubmittedMessage::OrderSubmittedMessage(BufferAllocator& alloc) : contents(alloc) {}
OrderSubmittedMessage::~OrderSubmittedMessage() = default;
bool OrderSubmittedMessage::operator==(const OrderSubmittedMessage& other) const { return !(*this != other); }
bool OrderSubmittedMessage::operator!=(const OrderSubmittedMessage& other) const { return Velmora::differ(*this, other); }
bool OrderSubmittedMessage::operator<(const OrderSubmittedMessage& other) const { return Velmora::less(*this, other); }
void OrderSubmittedMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderSubmittedMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderSubmittedMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderSubmittedMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderSubmittedMessage ", value); }
FastOStream& operator<<(FastOStream& os, const OrderSubmittedMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderSubmittedMessage ", value); }

OrderRejectedMessage::OrderRejectedMessage(BufferAllocator& alloc) : contents(alloc) {}
OrderRejectedMessage::~OrderRejectedMessage() = default;
bool OrderRejectedMessage::operator==(const OrderRejectedMessage& other) const { return !(*this != other); }
bool OrderRejectedMessage::operator!=(const OrderRejectedMessage& other) const { return Velmora::differ(*this, other); }
bool OrderRejectedMessage::operator<(const OrderRejectedMessage& other) const { return Velmora::less(*this, other); }
void OrderRejectedMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderRejectedMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderRejectedMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderRejectedMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderRejectedMessage ", value); }
FastOStream& operator<<(FastOStream& os, const OrderRejectedMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderRejectedMessage ", value); }

OrderCanceledMessage::OrderCanceledMessage(BufferAllocator& alloc) : contents(alloc) {}
OrderCanceledMessage::~OrderCanceledMessage() = default;
bool OrderCanceledMessage::operator==(const OrderCanceledMessage& other) const { return !(*this != other); }
bool OrderCanceledMessage::operator!=(const OrderCanceledMessage& other) const { return Velmora::differ(*this, other); }
bool OrderCanceledMessage::operator<(const OrderCanceledMessage& other) const { return Velmora::less(*this, other); }
void OrderCanceledMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderCanceledMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderCanceledMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderCanceledMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderCanceledMessage ", value); }
FastOStream& operator<<(FastOStream& os, const OrderCanceledMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderCanceledMessage ", value); }

OrderDoneMessage::OrderDoneMessage(BufferAllocator& alloc) : contents(alloc) {}
OrderDoneMessage::~OrderDoneMessage() = default;
bool OrderDoneMessage::operator==(const OrderDoneMessage& other) const { return !(*this != other); }
bool OrderDoneMessage::operator!=(const OrderDoneMessage& other) const { return Velmora::differ(*this, other); }
bool OrderDoneMessage::operator<(const OrderDoneMessage& other) const { return Velmora::less(*this, other); }
void OrderDoneMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderDoneMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderDoneMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderDoneMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderDoneMessage ", value); }
FastOStream& operator<<(FastOStream& os, const OrderDoneMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderDoneMessage ", value); }

OrderCancelRejectedMessage::OrderCancelRejectedMessage(BufferAllocator& alloc) : contents(alloc) {}
OrderCancelRejectedMessage::~OrderCancelRejectedMessage() = default;
bool OrderCancelRejectedMessage::operator==(const OrderCancelRejectedMessage& other) const { return !(*this != other); }
bool OrderCancelRejectedMessage::operator!=(const OrderCancelRejectedMessage& other) const { return Velmora::differ(*this, other); }
bool OrderCancelRejectedMessage::operator<(const OrderCancelRejectedMessage& other) const { return Velmora::less(*this, other); }
void OrderCancelRejectedMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderCancelRejectedMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderCancelRejectedMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderCancelRejectedMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderCancelRejectedMessage ", value); }
FastOStream& operator<<(FastOStream& os, const OrderCancelRejectedMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderCancelRejectedMessage ", value); }

TradeCaptureMessage::TradeCaptureMessage(BufferAllocator& alloc) : contents(alloc) {}
TradeCaptureMessage::~TradeCaptureMessage() = default;
bool TradeCaptureMessage::operator==(const TradeCaptureMessage& other) const { return !(*this != other); }
bool TradeCaptureMessage::operator!=(const TradeCaptureMessage& other) const { return Velmora::differ(*this, other); }
bool TradeCaptureMessage::operator<(const TradeCaptureMessage& other) const { return Velmora::less(*this, other); }
void TradeCaptureMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeCaptureMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeCaptureMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeCaptureMessage& value) { return Velmora::print<AsciiWriter>(os, "<TradeCaptureMessage ", value); }
FastOStream& operator<<(FastOStream& os, const TradeCaptureMessage& value) { return Velmora::print<AsciiWriter>(os, "<TradeCaptureMessage ", value); }

DropCopyMessage::DropCopyMessage(BufferAllocator& alloc) : contents(alloc) {}
DropCopyMessage::~DropCopyMessage() = default;
bool DropCopyMessage::operator==(const DropCopyMessage& other) const { return !(*this != other); }
bool DropCopyMessage::operator!=(const DropCopyMessage& other) const { return Velmora::differ(*this, other); }
bool DropCopyMessage::operator<(const DropCopyMessage& other) const { return Velmora::less(*this, other); }
void DropCopyMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void DropCopyMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void DropCopyMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const DropCopyMessage& value) { return Velmora::print<AsciiWriter>(os, "<DropCopyMessage ", value); }
FastOStream& operator<<(FastOStream& os, const DropCopyMessage& value) { return Velmora::print<AsciiWriter>(os, "<DropCopyMessage ", value); }

EventReportMessage::EventReportMessage(BufferAllocator& alloc) : contents(alloc) {}
EventReportMessage::~EventReportMessage() = default;
bool EventReportMessage::operator==(const EventReportMessage& other) const { return !(*this != other); }
bool EventReportMessage::operator!=(const EventReportMessage& other) const { return Velmora::differ(*this, other); }
bool EventReportMessage::operator<(const EventReportMessage& other) const { return Velmora::less(*this, other); }
void EventReportMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void EventReportMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void EventReportMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const EventReportMessage& value) { return Velmora::print<AsciiWriter>(os, "<EventReportMessage ", value); }
FastOStream& operator<<(FastOStream& os, const EventReportMessage& value) { return Velmora::print<AsciiWriter>(os, "<EventReportMessage ", value); }

bool DateRolloverMessage::operator==(const DateRolloverMessage& other) const { return !(*this != other); }
bool DateRolloverMessage::operator!=(const DateRolloverMessage& other) const { return Velmora::differ(*this, other); }
bool DateRolloverMessage::operator<(const DateRolloverMessage& other) const { return Velmora::less(*this, other); }
void DateRolloverMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void DateRolloverMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void DateRolloverMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const DateRolloverMessage& value) { return Velmora::print<AsciiWriter>(os, "<DateRolloverMessage ", value); }
FastOStream& operator<<(FastOStream& os, const DateRolloverMessage& value) { return Velmora::print<AsciiWriter>(os, "<DateRolloverMessage ", value); }

ClientConnectMessage::ClientConnectMessage(BufferAllocator& alloc) : user(alloc), password(alloc) {}
ClientConnectMessage::~ClientConnectMessage() = default;
bool ClientConnectMessage::operator==(const ClientConnectMessage& other) const { return !(*this != other); }
bool ClientConnectMessage::operator!=(const ClientConnectMessage& other) const { return Velmora::differ(*this, other); }
bool ClientConnectMessage::operator<(const ClientConnectMessage& other) const { return Velmora::less(*this, other); }
void ClientConnectMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ClientConnectMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ClientConnectMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ClientConnectMessage& value) { return Velmora::print<AsciiWriter>(os, "<ClientConnectMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ClientConnectMessage& value) { return Velmora::print<AsciiWriter>(os, "<ClientConnectMessage ", value); }

bool ClientDisconnectMessage::operator==(const ClientDisconnectMessage& other) const { return !(*this != other); }
bool ClientDisconnectMessage::operator!=(const ClientDisconnectMessage& other) const { return Velmora::differ(*this, other); }
bool ClientDisconnectMessage::operator<(const ClientDisconnectMessage& other) const { return Velmora::less(*this, other); }
void ClientDisconnectMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ClientDisconnectMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ClientDisconnectMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ClientDisconnectMessage& value) { return Velmora::print<AsciiWriter>(os, "<ClientDisconnectMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ClientDisconnectMessage& value) { return Velmora::print<AsciiWriter>(os, "<ClientDisconnectMessage ", value); }

ConnectResponseMessage::ConnectResponseMessage(BufferAllocator& alloc) : text(alloc) {}
ConnectResponseMessage::~ConnectResponseMessage() = default;
bool ConnectResponseMessage::operator==(const ConnectResponseMessage& other) const { return !(*this != other); }
bool ConnectResponseMessage::operator!=(const ConnectResponseMessage& other) const { return Velmora::differ(*this, other); }
bool ConnectResponseMessage::operator<(const ConnectResponseMessage& other) const { return Velmora::less(*this, other); }
void ConnectResponseMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ConnectResponseMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ConnectResponseMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ConnectResponseMessage& value) { return Velmora::print<AsciiWriter>(os, "<ConnectResponseMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ConnectResponseMessage& value) { return Velmora::print<AsciiWriter>(os, "<ConnectResponseMessage ", value); }

InternalClientInfoMessage::InternalClientInfoMessage(BufferAllocator& alloc) : apiLanguage(alloc), apiVersion(alloc), ipAddress(alloc) {}
InternalClientInfoMessage::~InternalClientInfoMessage() = default;
bool InternalClientInfoMessage::operator==(const InternalClientInfoMessage& other) const { return !(*this != other); }
bool InternalClientInfoMessage::operator!=(const InternalClientInfoMessage& other) const { return Velmora::differ(*this, other); }
bool InternalClientInfoMessage::operator<(const InternalClientInfoMessage& other) const { return Velmora::less(*this, other); }
void InternalClientInfoMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void InternalClientInfoMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void InternalClientInfoMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const InternalClientInfoMessage& value) { return Velmora::print<AsciiWriter>(os, "<InternalClientInfoMessage ", value); }
FastOStream& operator<<(FastOStream& os, const InternalClientInfoMessage& value) { return Velmora::print<AsciiWriter>(os, "<InternalClientInfoMessage ", value); }

TradeLimitDataMessage::TradeLimitDataMessage(BufferAllocator& alloc) : contents(alloc), groupIDNamePairs(alloc), userIDNamePairs(alloc) {}
TradeLimitDataMessage::~TradeLimitDataMessage() = default;
bool TradeLimitDataMessage::operator==(const TradeLimitDataMessage& other) const { return !(*this != other); }
bool TradeLimitDataMessage::operator!=(const TradeLimitDataMessage& other) const { return Velmora::differ(*this, other); }
bool TradeLimitDataMessage::operator<(const TradeLimitDataMessage& other) const { return Velmora::less(*this, other); }
void TradeLimitDataMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeLimitDataMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeLimitDataMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeLimitDataMessage& value) { return Velmora::print<AsciiWriter>(os, "<TradeLimitDataMessage ", value); }
FastOStream& operator<<(FastOStream& os, const TradeLimitDataMessage& value) { return Velmora::print<AsciiWriter>(os, "<TradeLimitDataMessage ", value); }

RiskResponseMessage::RiskResponseMessage(BufferAllocator& alloc) : contents(alloc) {}
RiskResponseMessage::~RiskResponseMessage() = default;
bool RiskResponseMessage::operator==(const RiskResponseMessage& other) const { return !(*this != other); }
bool RiskResponseMessage::operator!=(const RiskResponseMessage& other) const { return Velmora::differ(*this, other); }
bool RiskResponseMessage::operator<(const RiskResponseMessage& other) const { return Velmora::less(*this, other); }
void RiskResponseMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RiskResponseMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RiskResponseMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RiskResponseMessage& value) { return Velmora::print<AsciiWriter>(os, "<RiskResponseMessage ", value); }
FastOStream& operator<<(FastOStream& os, const RiskResponseMessage& value) { return Velmora::print<AsciiWriter>(os, "<RiskResponseMessage ", value); }

LockResponseMessage::LockResponseMessage(BufferAllocator& alloc) : contents(alloc) {}
LockResponseMessage::~LockResponseMessage() = default;
bool LockResponseMessage::operator==(const LockResponseMessage& other) const { return !(*this != other); }
bool LockResponseMessage::operator!=(const LockResponseMessage& other) const { return Velmora::differ(*this, other); }
bool LockResponseMessage::operator<(const LockResponseMessage& other) const { return Velmora::less(*this, other); }
void LockResponseMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void LockResponseMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void LockResponseMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const LockResponseMessage& value) { return Velmora::print<AsciiWriter>(os, "<LockResponseMessage ", value); }
FastOStream& operator<<(FastOStream& os, const LockResponseMessage& value) { return Velmora::print<AsciiWriter>(os, "<LockResponseMessage ", value); }

LockUserMessage::LockUserMessage(BufferAllocator& alloc) : contents(alloc) {}
LockUserMessage::~LockUserMessage() = default;
bool LockUserMessage::operator==(const LockUserMessage& other) const { return !(*this != other); }
bool LockUserMessage::operator!=(const LockUserMessage& other) const { return Velmora::differ(*this, other); }
bool LockUserMessage::operator<(const LockUserMessage& other) const { return Velmora::less(*this, other); }
void LockUserMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void LockUserMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void LockUserMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const LockUserMessage& value) { return Velmora::print<AsciiWriter>(os, "<LockUserMessage ", value); }
FastOStream& operator<<(FastOStream& os, const LockUserMessage& value) { return Velmora::print<AsciiWriter>(os, "<LockUserMessage ", value); }

bool MemBusHeartbeatMessage::operator==(const MemBusHeartbeatMessage& other) const { return !(*this != other); }
bool MemBusHeartbeatMessage::operator!=(const MemBusHeartbeatMessage& other) const { return Velmora::differ(*this, other); }
bool MemBusHeartbeatMessage::operator<(const MemBusHeartbeatMessage& other) const { return Velmora::less(*this, other); }
void MemBusHeartbeatMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MemBusHeartbeatMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MemBusHeartbeatMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MemBusHeartbeatMessage& value) { return Velmora::print<AsciiWriter>(os, "<MemBusHeartbeatMessage ", value); }
FastOStream& operator<<(FastOStream& os, const MemBusHeartbeatMessage& value) { return Velmora::print<AsciiWriter>(os, "<MemBusHeartbeatMessage ", value); }

bool MemBusConnectMessage::operator==(const MemBusConnectMessage& other) const { return !(*this != other); }
bool MemBusConnectMessage::operator!=(const MemBusConnectMessage& other) const { return Velmora::differ(*this, other); }
bool MemBusConnectMessage::operator<(const MemBusConnectMessage& other) const { return Velmora::less(*this, other); }
void MemBusConnectMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MemBusConnectMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MemBusConnectMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MemBusConnectMessage& value) { return Velmora::print<AsciiWriter>(os, "<MemBusConnectMessage ", value); }
FastOStream& operator<<(FastOStream& os, const MemBusConnectMessage& value) { return Velmora::print<AsciiWriter>(os, "<MemBusConnectMessage ", value); }

bool MemBusDisconnectMessage::operator==(const MemBusDisconnectMessage& other) const { return !(*this != other); }
bool MemBusDisconnectMessage::operator!=(const MemBusDisconnectMessage& other) const { return Velmora::differ(*this, other); }
bool MemBusDisconnectMessage::operator<(const MemBusDisconnectMessage& other) const { return Velmora::less(*this, other); }
void MemBusDisconnectMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MemBusDisconnectMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MemBusDisconnectMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MemBusDisconnectMessage& value) { return Velmora::print<AsciiWriter>(os, "<MemBusDisconnectMessage ", value); }
FastOStream& operator<<(FastOStream& os, const MemBusDisconnectMessage& value) { return Velmora::print<AsciiWriter>(os, "<MemBusDisconnectMessage ", value); }

ConfigMessage::ConfigMessage(BufferAllocator& alloc) : feedsList(alloc) {}
ConfigMessage::~ConfigMessage() = default;
bool ConfigMessage::operator==(const ConfigMessage& other) const { return !(*this != other); }
bool ConfigMessage::operator!=(const ConfigMessage& other) const { return Velmora::differ(*this, other); }
bool ConfigMessage::operator<(const ConfigMessage& other) const { return Velmora::less(*this, other); }
void ConfigMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void ConfigMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void ConfigMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const ConfigMessage& value) { return Velmora::print<AsciiWriter>(os, "<ConfigMessage ", value); }
FastOStream& operator<<(FastOStream& os, const ConfigMessage& value) { return Velmora::print<AsciiWriter>(os, "<ConfigMessage ", value); }

SubscribeMessage::SubscribeMessage(BufferAllocator& alloc) : clSubID(alloc) {}
SubscribeMessage::~SubscribeMessage() = default;
bool SubscribeMessage::operator==(const SubscribeMessage& other) const { return !(*this != other); }
bool SubscribeMessage::operator!=(const SubscribeMessage& other) const { return Velmora::differ(*this, other); }
bool SubscribeMessage::operator<(const SubscribeMessage& other) const { return Velmora::less(*this, other); }
void SubscribeMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void SubscribeMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void SubscribeMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const SubscribeMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubscribeMessage ", value); }
FastOStream& operator<<(FastOStream& os, const SubscribeMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubscribeMessage ", value); }

UnsubscribeMessage::UnsubscribeMessage(BufferAllocator& alloc) : clSubID(alloc) {}
UnsubscribeMessage::~UnsubscribeMessage() = default;
bool UnsubscribeMessage::operator==(const UnsubscribeMessage& other) const { return !(*this != other); }
bool UnsubscribeMessage::operator!=(const UnsubscribeMessage& other) const { return Velmora::differ(*this, other); }
bool UnsubscribeMessage::operator<(const UnsubscribeMessage& other) const { return Velmora::less(*this, other); }
void UnsubscribeMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void UnsubscribeMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void UnsubscribeMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const UnsubscribeMessage& value) { return Velmora::print<AsciiWriter>(os, "<UnsubscribeMessage ", value); }
FastOStream& operator<<(FastOStream& os, const UnsubscribeMessage& value) { return Velmora::print<AsciiWriter>(os, "<UnsubscribeMessage ", value); }

UnsubscribeAllMessage::UnsubscribeAllMessage(BufferAllocator& alloc) : clSubID(alloc) {}
UnsubscribeAllMessage::~UnsubscribeAllMessage() = default;
bool UnsubscribeAllMessage::operator==(const UnsubscribeAllMessage& other) const { return !(*this != other); }
bool UnsubscribeAllMessage::operator!=(const UnsubscribeAllMessage& other) const { return Velmora::differ(*this, other); }
bool UnsubscribeAllMessage::operator<(const UnsubscribeAllMessage& other) const { return Velmora::less(*this, other); }
void UnsubscribeAllMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void UnsubscribeAllMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void UnsubscribeAllMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const UnsubscribeAllMessage& value) { return Velmora::print<AsciiWriter>(os, "<UnsubscribeAllMessage ", value); }
FastOStream& operator<<(FastOStream& os, const UnsubscribeAllMessage& value) { return Velmora::print<AsciiWriter>(os, "<UnsubscribeAllMessage ", value); }

SubscriptionEventMessage::SubscriptionEventMessage(BufferAllocator& alloc) : contents(alloc) {}
SubscriptionEventMessage::~SubscriptionEventMessage() = default;
bool SubscriptionEventMessage::operator==(const SubscriptionEventMessage& other) const { return !(*this != other); }
bool SubscriptionEventMessage::operator!=(const SubscriptionEventMessage& other) const { return Velmora::differ(*this, other); }
bool SubscriptionEventMessage::operator<(const SubscriptionEventMessage& other) const { return Velmora::less(*this, other); }
void SubscriptionEventMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void SubscriptionEventMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void SubscriptionEventMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const SubscriptionEventMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubscriptionEventMessage ", value); }
FastOStream& operator<<(FastOStream& os, const SubscriptionEventMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubscriptionEventMessage ", value); }

bool SubscriptionTimerMessage::operator==(const SubscriptionTimerMessage& other) const { return !(*this != other); }
bool SubscriptionTimerMessage::operator!=(const SubscriptionTimerMessage& other) const { return Velmora::differ(*this, other); }
bool SubscriptionTimerMessage::operator<(const SubscriptionTimerMessage& other) const { return Velmora::less(*this, other); }
void SubscriptionTimerMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void SubscriptionTimerMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void SubscriptionTimerMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const SubscriptionTimerMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubscriptionTimerMessage ", value); }
FastOStream& operator<<(FastOStream& os, const SubscriptionTimerMessage& value) { return Velmora::print<AsciiWriter>(os, "<SubscriptionTimerMessage ", value); }

InsertLogMessage::InsertLogMessage(BufferAllocator& alloc) : description(alloc) {}
InsertLogMessage::~InsertLogMessage() = default;
bool InsertLogMessage::operator==(const InsertLogMessage& other) const { return !(*this != other); }
bool InsertLogMessage::operator!=(const InsertLogMessage& other) const { return Velmora::differ(*this, other); }
bool InsertLogMessage::operator<(const InsertLogMessage& other) const { return Velmora::less(*this, other); }
void InsertLogMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void InsertLogMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void InsertLogMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const InsertLogMessage& value) { return Velmora::print<AsciiWriter>(os, "<InsertLogMessage ", value); }
FastOStream& operator<<(FastOStream& os, const InsertLogMessage& value) { return Velmora::print<AsciiWriter>(os, "<InsertLogMessage ", value); }

bool TestMessage::operator==(const TestMessage& other) const { return !(*this != other); }
bool TestMessage::operator!=(const TestMessage& other) const { return Velmora::differ(*this, other); }
bool TestMessage::operator<(const TestMessage& other) const { return Velmora::less(*this, other); }
void TestMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TestMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TestMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TestMessage& value) { return Velmora::print<AsciiWriter>(os, "<TestMessage ", value); }
FastOStream& operator<<(FastOStream& os, const TestMessage& value) { return Velmora::print<AsciiWriter>(os, "<TestMessage ", value); }

RequestSnapshotMessage::RequestSnapshotMessage(BufferAllocator& alloc) : markets(alloc) {}
RequestSnapshotMessage::~RequestSnapshotMessage() = default;
bool RequestSnapshotMessage::operator==(const RequestSnapshotMessage& other) const { return !(*this != other); }
bool RequestSnapshotMessage::operator!=(const RequestSnapshotMessage& other) const { return Velmora::differ(*this, other); }
bool RequestSnapshotMessage::operator<(const RequestSnapshotMessage& other) const { return Velmora::less(*this, other); }
void RequestSnapshotMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RequestSnapshotMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RequestSnapshotMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RequestSnapshotMessage& value) { return Velmora::print<AsciiWriter>(os, "<RequestSnapshotMessage ", value); }
FastOStream& operator<<(FastOStream& os, const RequestSnapshotMessage& value) { return Velmora::print<AsciiWriter>(os, "<RequestSnapshotMessage ", value); }

bool RequestMessage::operator==(const RequestMessage& other) const { return !(*this != other); }
bool RequestMessage::operator!=(const RequestMessage& other) const { return Velmora::differ(*this, other); }
bool RequestMessage::operator<(const RequestMessage& other) const { return Velmora::less(*this, other); }
void RequestMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RequestMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RequestMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RequestMessage& value) { return Velmora::print<AsciiWriter>(os, "<RequestMessage ", value); }
FastOStream& operator<<(FastOStream& os, const RequestMessage& value) { return Velmora::print<AsciiWriter>(os, "<RequestMessage ", value); }

QuoteRequestMessage::QuoteRequestMessage(BufferAllocator& alloc) : contents(alloc) {}
QuoteRequestMessage::~QuoteRequestMessage() = default;
bool QuoteRequestMessage::operator==(const QuoteRequestMessage& other) const { return !(*this != other); }
bool QuoteRequestMessage::operator!=(const QuoteRequestMessage& other) const { return Velmora::differ(*this, other); }
bool QuoteRequestMessage::operator<(const QuoteRequestMessage& other) const { return Velmora::less(*this, other); }
void QuoteRequestMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void QuoteRequestMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void QuoteRequestMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const QuoteRequestMessage& value) { return Velmora::print<AsciiWriter>(os, "<QuoteRequestMessage ", value); }
FastOStream& operator<<(FastOStream& os, const QuoteRequestMessage& value) { return Velmora::print<AsciiWriter>(os, "<QuoteRequestMessage ", value); }

RejectQuoteRequestMessage::RejectQuoteRequestMessage(BufferAllocator& alloc) : contents(alloc) {}
RejectQuoteRequestMessage::~RejectQuoteRequestMessage() = default;
bool RejectQuoteRequestMessage::operator==(const RejectQuoteRequestMessage& other) const { return !(*this != other); }
bool RejectQuoteRequestMessage::operator!=(const RejectQuoteRequestMessage& other) const { return Velmora::differ(*this, other); }
bool RejectQuoteRequestMessage::operator<(const RejectQuoteRequestMessage& other) const { return Velmora::less(*this, other); }
void RejectQuoteRequestMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RejectQuoteRequestMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RejectQuoteRequestMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RejectQuoteRequestMessage& value) { return Velmora::print<AsciiWriter>(os, "<RejectQuoteRequestMessage ", value); }
FastOStream& operator<<(FastOStream& os, const RejectQuoteRequestMessage& value) { return Velmora::print<AsciiWriter>(os, "<RejectQuoteRequestMessage ", value); }

CancelQuoteMessage::CancelQuoteMessage(BufferAllocator& alloc) : contents(alloc) {}
CancelQuoteMessage::~CancelQuoteMessage() = default;
bool CancelQuoteMessage::operator==(const CancelQuoteMessage& other) const { return !(*this != other); }
bool CancelQuoteMessage::operator!=(const CancelQuoteMessage& other) const { return Velmora::differ(*this, other); }
bool CancelQuoteMessage::operator<(const CancelQuoteMessage& other) const { return Velmora::less(*this, other); }
void CancelQuoteMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void CancelQuoteMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void CancelQuoteMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const CancelQuoteMessage& value) { return Velmora::print<AsciiWriter>(os, "<CancelQuoteMessage ", value); }
FastOStream& operator<<(FastOStream& os, const CancelQuoteMessage& value) { return Velmora::print<AsciiWriter>(os, "<CancelQuoteMessage ", value); }

MassQuoteMessage::MassQuoteMessage(BufferAllocator& alloc) : contents(alloc) {}
MassQuoteMessage::~MassQuoteMessage() = default;
bool MassQuoteMessage::operator==(const MassQuoteMessage& other) const { return !(*this != other); }
bool MassQuoteMessage::operator!=(const MassQuoteMessage& other) const { return Velmora::differ(*this, other); }
bool MassQuoteMessage::operator<(const MassQuoteMessage& other) const { return Velmora::less(*this, other); }
void MassQuoteMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MassQuoteMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MassQuoteMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MassQuoteMessage& value) { return Velmora::print<AsciiWriter>(os, "<MassQuoteMessage ", value); }
FastOStream& operator<<(FastOStream& os, const MassQuoteMessage& value) { return Velmora::print<AsciiWriter>(os, "<MassQuoteMessage ", value); }

MassQuoteAckMessage::MassQuoteAckMessage(BufferAllocator& alloc) : contents(alloc) {}
MassQuoteAckMessage::~MassQuoteAckMessage() = default;
bool MassQuoteAckMessage::operator==(const MassQuoteAckMessage& other) const { return !(*this != other); }
bool MassQuoteAckMessage::operator!=(const MassQuoteAckMessage& other) const { return Velmora::differ(*this, other); }
bool MassQuoteAckMessage::operator<(const MassQuoteAckMessage& other) const { return Velmora::less(*this, other); }
void MassQuoteAckMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void MassQuoteAckMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void MassQuoteAckMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const MassQuoteAckMessage& value) { return Velmora::print<AsciiWriter>(os, "<MassQuoteAckMessage ", value); }
FastOStream& operator<<(FastOStream& os, const MassQuoteAckMessage& value) { return Velmora::print<AsciiWriter>(os, "<MassQuoteAckMessage ", value); }

NewOrderMessage::NewOrderMessage(BufferAllocator& alloc) : contents(alloc) {}
NewOrderMessage::~NewOrderMessage() = default;
bool NewOrderMessage::operator==(const NewOrderMessage& other) const { return !(*this != other); }
bool NewOrderMessage::operator!=(const NewOrderMessage& other) const { return Velmora::differ(*this, other); }
bool NewOrderMessage::operator<(const NewOrderMessage& other) const { return Velmora::less(*this, other); }
void NewOrderMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void NewOrderMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void NewOrderMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const NewOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<NewOrderMessage ", value); }
FastOStream& operator<<(FastOStream& os, const NewOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<NewOrderMessage ", value); }

RejectOrderMessage::RejectOrderMessage(BufferAllocator& alloc) : contents(alloc) {}
RejectOrderMessage::~RejectOrderMessage() = default;
bool RejectOrderMessage::operator==(const RejectOrderMessage& other) const { return !(*this != other); }
bool RejectOrderMessage::operator!=(const RejectOrderMessage& other) const { return Velmora::differ(*this, other); }
bool RejectOrderMessage::operator<(const RejectOrderMessage& other) const { return Velmora::less(*this, other); }
void RejectOrderMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void RejectOrderMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void RejectOrderMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const RejectOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<RejectOrderMessage ", value); }
FastOStream& operator<<(FastOStream& os, const RejectOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<RejectOrderMessage ", value); }

AcceptOrderMessage::AcceptOrderMessage(BufferAllocator& alloc) : contents(alloc) {}
AcceptOrderMessage::~AcceptOrderMessage() = default;
bool AcceptOrderMessage::operator==(const AcceptOrderMessage& other) const { return !(*this != other); }
bool AcceptOrderMessage::operator!=(const AcceptOrderMessage& other) const { return Velmora::differ(*this, other); }
bool AcceptOrderMessage::operator<(const AcceptOrderMessage& other) const { return Velmora::less(*this, other); }
void AcceptOrderMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void AcceptOrderMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void AcceptOrderMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const AcceptOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<AcceptOrderMessage ", value); }
FastOStream& operator<<(FastOStream& os, const AcceptOrderMessage& value) { return Velmora::print<AsciiWriter>(os, "<AcceptOrderMessage ", value); }

TradeCaptureAckMessage::TradeCaptureAckMessage(BufferAllocator& alloc) : contents(alloc) {}
TradeCaptureAckMessage::~TradeCaptureAckMessage() = default;
bool TradeCaptureAckMessage::operator==(const TradeCaptureAckMessage& other) const { return !(*this != other); }
bool TradeCaptureAckMessage::operator!=(const TradeCaptureAckMessage& other) const { return Velmora::differ(*this, other); }
bool TradeCaptureAckMessage::operator<(const TradeCaptureAckMessage& other) const { return Velmora::less(*this, other); }
void TradeCaptureAckMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void TradeCaptureAckMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void TradeCaptureAckMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const TradeCaptureAckMessage& value) { return Velmora::print<AsciiWriter>(os, "<TradeCaptureAckMessage ", value); }
FastOStream& operator<<(FastOStream& os, const TradeCaptureAckMessage& value) { return Velmora::print<AsciiWriter>(os, "<TradeCaptureAckMessage ", value); }

OrderTimeoutMessage::OrderTimeoutMessage(BufferAllocator& alloc) : contents(alloc) {}
OrderTimeoutMessage::~OrderTimeoutMessage() = default;
bool OrderTimeoutMessage::operator==(const OrderTimeoutMessage& other) const { return !(*this != other); }
bool OrderTimeoutMessage::operator!=(const OrderTimeoutMessage& other) const { return Velmora::differ(*this, other); }
bool OrderTimeoutMessage::operator<(const OrderTimeoutMessage& other) const { return Velmora::less(*this, other); }
void OrderTimeoutMessage::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void OrderTimeoutMessage::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void OrderTimeoutMessage::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const OrderTimeoutMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderTimeoutMessage ", value); }
FastOStream& operator<<(FastOStream& os, const OrderTimeoutMessage& value) { return Velmora::print<AsciiWriter>(os, "<OrderTimeoutMessage ", value); }

JsonFromServer::JsonFromServer(BufferAllocator& alloc) : contents(alloc) {}
JsonFromServer::~JsonFromServer() = default;
bool JsonFromServer::operator==(const JsonFromServer& other) const { return !(*this != other); }
bool JsonFromServer::operator!=(const JsonFromServer& other) const { return Velmora::differ(*this, other); }
bool JsonFromServer::operator<(const JsonFromServer& other) const { return Velmora::less(*this, other); }
void JsonFromServer::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void JsonFromServer::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void JsonFromServer::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const JsonFromServer& value) { return Velmora::print<AsciiWriter>(os, "<JsonFromServer ", value); }
FastOStream& operator<<(FastOStream& os, const JsonFromServer& value) { return Velmora::print<AsciiWriter>(os, "<JsonFromServer ", value); }

JsonFromClient::JsonFromClient(BufferAllocator& alloc) : contents(alloc) {}
JsonFromClient::~JsonFromClient() = default;
bool JsonFromClient::operator==(const JsonFromClient& other) const { return !(*this != other); }
bool JsonFromClient::operator!=(const JsonFromClient& other) const { return Velmora::differ(*this, other); }
bool JsonFromClient::operator<(const JsonFromClient& other) const { return Velmora::less(*this, other); }
void JsonFromClient::write(FastCodec& codec) const { Velmora::encode(*this, codec); }
void JsonFromClient::read(FastCodec& codec) { Velmora::decode(*this, codec); }
void JsonFromClient::checkbounds(const void* begin, const void* end) const {
    QL_ASSERT(begin <= this && this < end);
    Velmora::checkMembers(*this, begin, end);
}
std::ostream& operator<<(std::ostream& os, const JsonFromClient& value) { return Velmora::print<AsciiWriter>(os, "<JsonFromClient ", value); }
FastOStream& operator<<(FastOStream& os, const JsonFromClient& value) { return Velmora::print<AsciiWriter>(os, "<JsonFromClient ", value); }

// What the definition says, found again in the lists.
namespace {

constexpr auto allEnumerations = [](auto visit) { return enumerations(visit); };
constexpr auto allRecords = [](auto visit) { return records(visit); };
constexpr auto allMessages = [](auto visit) { return messages(visit); };

static_assert(Velmora::countTypes(allEnumerations) == 34);
static_assert(Velmora::countTypes(allRecords) == 49);
static_assert(Velmora::countTypes(allMessages) == 71);
static_assert(Velmora::countHoldingStorage(allRecords) + Velmora::countHoldingStorage(allMessages) == 93);
static_assert(Velmora::plainUnlessHoldingStorage(allRecords) && Velmora::plainUnlessHoldingStorage(allMessages));
static_assert(Velmora::indexedInOrder(allMessages));
static_assert(Velmora::idsDistinct(allMessages));

} // namespace

// The module.

MsgProtocol* __protocol = nullptr;

namespace {

bool initialized = false; // deliberate: set once and for all; nothing reads it, and finalize() leaves it set

constexpr size_t _modulo = 350;
static_assert(Velmora::idsDistinct<_modulo>(allMessages), "two messages share a slot of the direct table");
Velmora::MsgRegistry<_modulo> registry(100);
int _index[71]; // identifiers in the order of INDEX

const char* const _name = "Quillon";
const char* const _protosig = "3cb14c3a66f8bcf889f1a7afd1cd3ecf";
const char* const _protosigAPI = "c622d22c9a1d9f1698e94a287f643c13";
const char* const _protosigStorage = "ec9f41aa078427a07d47a4a748a8d476";

class Protocol : public MsgProtocol {
  public:
    const char* getName() const override { return _name; }
    MsgDescriptor* getDescriptor(MsgType_t id) const override { return registry.find(id); }
    const void* getCompressedDefinition(size_t& length) const override {
        length = sizeof _definitionNotSupported - 1;
        return _definitionNotSupported;
    }
    const char* getSignature() const override { return _protosig; }
    const char* getSignatureAPI() const override { return _protosigAPI; }
    const char* getSignatureStorage() const override { return _protosigStorage; }
    const int* getMessageIndex(size_t& count) const override {
        count = std::size(_index);
        return _index;
    }
    const char* getMessageName(MsgType_t id) const override { return getDescriptor(id)->name(); }

  private:
    // Deliberate: declared only; the module ships without its compressed definition.
    [[maybe_unused]] static const unsigned char _definition[17513];
    static constexpr char _definitionNotSupported[] = "(Not supported.)";
};

} // namespace

// Deliberate: not guarded against a second call, which builds everything anew and leaks what was there.
void initialize() {
    Quillon::fastDeposit = Quillon::findFastDeposit();
    enumerations([]<class T>(Velmora::of<T>, const char*) {
        T::initialize();
        return true;
    });
    __protocol = new Protocol;
    registry.clearTable();
    messages([]<class T>(Velmora::of<T>, const char* name) {
        registry.add<T>(name, __protocol);
        return true;
    });
    messages([]<class T>(Velmora::of<T>, const char*) {
        _index[T::INDEX] = T::ID;
        return true;
    });
    initialized = true;
}

// The tables of the enumerations stay filled.
void finalize() {
    registry.release();
    delete __protocol;
    __protocol = nullptr;
}

} // namespace Quillon
