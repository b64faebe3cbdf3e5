// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
#include "generated/QLProtocol/AsciiWriter.h"

#include "generated/QLProtocol/QLProtocol.fields.h"

namespace Quillon {

AsciiWriter::AsciiWriter(Velmora::TextCodec<FastOStream>& codec, bool multiline, int indent)
    : _printer(codec, multiline, indent) {}
AsciiWriter::~AsciiWriter() = default;

void AsciiWriter::handle(const KeyValuePair& value) { _printer.render(value); }
void AsciiWriter::handle(const IDNamePair& value) { _printer.render(value); }
void AsciiWriter::handle(const FeedMarketID& value) { _printer.render(value); }
void AsciiWriter::handle(const MDEntry& value) { _printer.render(value); }
void AsciiWriter::handle(const StatCounter& value) { _printer.render(value); }
void AsciiWriter::handle(const Heartbeat& value) { _printer.render(value); }
void AsciiWriter::handle(const ReplayDone& value) { _printer.render(value); }
void AsciiWriter::handle(const UserSequenceID& value) { _printer.render(value); }
void AsciiWriter::handle(const MarketView& value) { _printer.render(value); }
void AsciiWriter::handle(const SubmitOrder& value) { _printer.render(value); }
void AsciiWriter::handle(const CancelOrder& value) { _printer.render(value); }
void AsciiWriter::handle(const CancelAllOrder& value) { _printer.render(value); }
void AsciiWriter::handle(const ModifyOrder& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderReceived& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderSubmitted& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderRejected& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderCanceled& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderDone& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderCancelRejected& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeCapture& value) { _printer.render(value); }
void AsciiWriter::handle(const DropCopy& value) { _printer.render(value); }
void AsciiWriter::handle(const EventReport& value) { _printer.render(value); }
void AsciiWriter::handle(const DateRollover& value) { _printer.render(value); }
void AsciiWriter::handle(const MarketRate& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeLimit& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeState& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeHierarchy& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeLimitData& value) { _printer.render(value); }
void AsciiWriter::handle(const RiskLimitStatus& value) { _printer.render(value); }
void AsciiWriter::handle(const RiskUsageStatus& value) { _printer.render(value); }
void AsciiWriter::handle(const RiskResponse& value) { _printer.render(value); }
void AsciiWriter::handle(const LockResponse& value) { _printer.render(value); }
void AsciiWriter::handle(const LockUser& value) { _printer.render(value); }
void AsciiWriter::handle(const MemBusID& value) { _printer.render(value); }
void AsciiWriter::handle(const APIMarket& value) { _printer.render(value); }
void AsciiWriter::handle(const APIFeed& value) { _printer.render(value); }
void AsciiWriter::handle(const Subscription& value) { _printer.render(value); }
void AsciiWriter::handle(const SubscriptionEvent& value) { _printer.render(value); }
void AsciiWriter::handle(const QuoteRequest& value) { _printer.render(value); }
void AsciiWriter::handle(const RejectQuoteRequest& value) { _printer.render(value); }
void AsciiWriter::handle(const CancelQuote& value) { _printer.render(value); }
void AsciiWriter::handle(const QLQuote& value) { _printer.render(value); }
void AsciiWriter::handle(const QLMassQuote& value) { _printer.render(value); }
void AsciiWriter::handle(const MassQuoteAck& value) { _printer.render(value); }
void AsciiWriter::handle(const NewOrder& value) { _printer.render(value); }
void AsciiWriter::handle(const RejectOrder& value) { _printer.render(value); }
void AsciiWriter::handle(const AcceptOrder& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeCaptureAck& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderTimeout& value) { _printer.render(value); }
void AsciiWriter::handle(const LogMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const StatCounterMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ExchangeMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const StatTimeoutMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const TaskInitializationMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const MDActivityCheckMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const CallbackMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const TimerMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const SubscriptionTimeoutMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const HeartbeatTimerMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const VersionMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ProtocolDefinitionMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const PadMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const RuThereMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ImHereMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const HeartbeatMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ReplayMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ReplayDoneMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const LastSequenceIDMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const BatchRegisterMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const BatchUnregisterMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const SecurityInfoMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const BatchesCompletedMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const MktDataMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const SubmitOrderMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const CancelOrderMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const CancelAllOrderMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ModifyOrderMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderReceivedMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderSubmittedMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderRejectedMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderCanceledMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderDoneMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderCancelRejectedMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeCaptureMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const DropCopyMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const EventReportMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const DateRolloverMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ClientConnectMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ClientDisconnectMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ConnectResponseMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const InternalClientInfoMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeLimitDataMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const RiskResponseMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const LockResponseMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const LockUserMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const MemBusHeartbeatMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const MemBusConnectMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const MemBusDisconnectMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const ConfigMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const SubscribeMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const UnsubscribeMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const UnsubscribeAllMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const SubscriptionEventMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const SubscriptionTimerMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const InsertLogMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const TestMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const RequestSnapshotMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const RequestMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const QuoteRequestMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const RejectQuoteRequestMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const CancelQuoteMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const MassQuoteMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const MassQuoteAckMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const NewOrderMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const RejectOrderMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const AcceptOrderMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const TradeCaptureAckMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const OrderTimeoutMessage& value) { _printer.render(value); }
void AsciiWriter::handle(const JsonFromServer& value) { _printer.render(value); }
void AsciiWriter::handle(const JsonFromClient& value) { _printer.render(value); }

} // namespace Quillon
