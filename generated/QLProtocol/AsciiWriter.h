// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
//
// The fields of a value as text, "name=value name=value ...", without a frame. The operators << of the types put the
// frame around it; see Backend/Velmora/operations/Render.h for the rules of the text.
#pragma once

#include "Backend/Velmora/operations/Render.h"
#include "generated/QLProtocol/MsgHandler.h"

namespace Quillon {

class AsciiWriter : public MsgHandler {
  public:
    /// Writes through `codec`, which must outlive the writer, into its stream; the caller leaves enough room.
    /// `multiline`: one field a line instead of all on one; `indent`: blanks in front of each of these lines.
    AsciiWriter(Velmora::TextCodec<FastOStream>& codec, bool multiline, int indent);
    ~AsciiWriter() override;

    void handle(const KeyValuePair& value);
    void handle(const IDNamePair& value);
    void handle(const FeedMarketID& value);
    void handle(const MDEntry& value);
    void handle(const StatCounter& value);
    void handle(const Heartbeat& value);
    void handle(const ReplayDone& value);
    void handle(const UserSequenceID& value);
    void handle(const MarketView& value);
    void handle(const SubmitOrder& value);
    void handle(const CancelOrder& value);
    void handle(const CancelAllOrder& value);
    void handle(const ModifyOrder& value);
    void handle(const OrderReceived& value);
    void handle(const OrderSubmitted& value);
    void handle(const OrderRejected& value);
    void handle(const OrderCanceled& value);
    void handle(const OrderDone& value);
    void handle(const OrderCancelRejected& value);
    void handle(const TradeCapture& value);
    void handle(const DropCopy& value);
    void handle(const EventReport& value);
    void handle(const DateRollover& value);
    void handle(const MarketRate& value);
    void handle(const TradeLimit& value);
    void handle(const TradeState& value);
    void handle(const TradeHierarchy& value);
    void handle(const TradeLimitData& value);
    void handle(const RiskLimitStatus& value);
    void handle(const RiskUsageStatus& value);
    void handle(const RiskResponse& value);
    void handle(const LockResponse& value);
    void handle(const LockUser& value);
    void handle(const MemBusID& value);
    void handle(const APIMarket& value);
    void handle(const APIFeed& value);
    void handle(const Subscription& value);
    void handle(const SubscriptionEvent& value);
    void handle(const QuoteRequest& value);
    void handle(const RejectQuoteRequest& value);
    void handle(const CancelQuote& value);
    void handle(const QLQuote& value);
    void handle(const QLMassQuote& value);
    void handle(const MassQuoteAck& value);
    void handle(const NewOrder& value);
    void handle(const RejectOrder& value);
    void handle(const AcceptOrder& value);
    void handle(const TradeCaptureAck& value);
    void handle(const OrderTimeout& value);

    void handle(const LogMessage& value) override;
    void handle(const StatCounterMessage& value) override;
    void handle(const ExchangeMessage& value) override;
    void handle(const StatTimeoutMessage& value) override;
    void handle(const TaskInitializationMessage& value) override;
    void handle(const MDActivityCheckMessage& value) override;
    void handle(const CallbackMessage& value) override;
    void handle(const TimerMessage& value) override;
    void handle(const SubscriptionTimeoutMessage& value) override;
    void handle(const HeartbeatTimerMessage& value) override;
    void handle(const VersionMessage& value) override;
    void handle(const ProtocolDefinitionMessage& value) override;
    void handle(const PadMessage& value) override;
    void handle(const RuThereMessage& value) override;
    void handle(const ImHereMessage& value) override;
    void handle(const HeartbeatMessage& value) override;
    void handle(const ReplayMessage& value) override;
    void handle(const ReplayDoneMessage& value) override;
    void handle(const LastSequenceIDMessage& value) override;
    void handle(const BatchRegisterMessage& value) override;
    void handle(const BatchUnregisterMessage& value) override;
    void handle(const SecurityInfoMessage& value) override;
    void handle(const BatchesCompletedMessage& value) override;
    void handle(const MktDataMessage& value) override;
    void handle(const SubmitOrderMessage& value) override;
    void handle(const CancelOrderMessage& value) override;
    void handle(const CancelAllOrderMessage& value) override;
    void handle(const ModifyOrderMessage& value) override;
    void handle(const OrderReceivedMessage& value) override;
    void handle(const OrderSubmittedMessage& value) override;
    void handle(const OrderRejectedMessage& value) override;
    void handle(const OrderCanceledMessage& value) override;
    void handle(const OrderDoneMessage& value) override;
    void handle(const OrderCancelRejectedMessage& value) override;
    void handle(const TradeCaptureMessage& value) override;
    void handle(const DropCopyMessage& value) override;
    void handle(const EventReportMessage& value) override;
    void handle(const DateRolloverMessage& value) override;
    void handle(const ClientConnectMessage& value) override;
    void handle(const ClientDisconnectMessage& value) override;
    void handle(const ConnectResponseMessage& value) override;
    void handle(const InternalClientInfoMessage& value) override;
    void handle(const TradeLimitDataMessage& value) override;
    void handle(const RiskResponseMessage& value) override;
    void handle(const LockResponseMessage& value) override;
    void handle(const LockUserMessage& value) override;
    void handle(const MemBusHeartbeatMessage& value) override;
    void handle(const MemBusConnectMessage& value) override;
    void handle(const MemBusDisconnectMessage& value) override;
    void handle(const ConfigMessage& value) override;
    void handle(const SubscribeMessage& value) override;
    void handle(const UnsubscribeMessage& value) override;
    void handle(const UnsubscribeAllMessage& value) override;
    void handle(const SubscriptionEventMessage& value) override;
    void handle(const SubscriptionTimerMessage& value) override;
    void handle(const InsertLogMessage& value) override;
    void handle(const TestMessage& value) override;
    void handle(const RequestSnapshotMessage& value) override;
    void handle(const RequestMessage& value) override;
    void handle(const QuoteRequestMessage& value) override;
    void handle(const RejectQuoteRequestMessage& value) override;
    void handle(const CancelQuoteMessage& value) override;
    void handle(const MassQuoteMessage& value) override;
    void handle(const MassQuoteAckMessage& value) override;
    void handle(const NewOrderMessage& value) override;
    void handle(const RejectOrderMessage& value) override;
    void handle(const AcceptOrderMessage& value) override;
    void handle(const TradeCaptureAckMessage& value) override;
    void handle(const OrderTimeoutMessage& value) override;
    void handle(const JsonFromServer& value) override;
    void handle(const JsonFromClient& value) override;

  private:
    Velmora::FieldPrinter _printer;
};

} // namespace Quillon
