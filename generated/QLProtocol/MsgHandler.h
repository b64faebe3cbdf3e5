// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
//
// Handling of messages by type. Derive from MsgHandler, override what concerns you (with `using MsgHandler::handle;`
// for the rest), and let dispatch() find the overload.
#pragma once

#include "generated/QLProtocol/QLProtocol.h"

namespace Quillon {

/// Does nothing with any message. The order of the virtual functions is a contract with code built apart from this
/// module.
class MsgHandler {
  public:
    virtual ~MsgHandler();

    virtual void handle(const LogMessage&);
    virtual void handle(const StatCounterMessage&);
    virtual void handle(const ExchangeMessage&);
    virtual void handle(const StatTimeoutMessage&);
    virtual void handle(const TaskInitializationMessage&);
    virtual void handle(const MDActivityCheckMessage&);
    virtual void handle(const CallbackMessage&);
    virtual void handle(const TimerMessage&);
    virtual void handle(const SubscriptionTimeoutMessage&);
    virtual void handle(const HeartbeatTimerMessage&);
    virtual void handle(const VersionMessage&);
    virtual void handle(const ProtocolDefinitionMessage&);
    virtual void handle(const PadMessage&);
    virtual void handle(const RuThereMessage&);
    virtual void handle(const ImHereMessage&);
    virtual void handle(const HeartbeatMessage&);
    virtual void handle(const ReplayMessage&);
    virtual void handle(const ReplayDoneMessage&);
    virtual void handle(const LastSequenceIDMessage&);
    virtual void handle(const BatchRegisterMessage&);
    virtual void handle(const BatchUnregisterMessage&);
    virtual void handle(const SecurityInfoMessage&);
    virtual void handle(const BatchesCompletedMessage&);
    virtual void handle(const MktDataMessage&);
    virtual void handle(const SubmitOrderMessage&);
    virtual void handle(const CancelOrderMessage&);
    virtual void handle(const CancelAllOrderMessage&);
    virtual void handle(const ModifyOrderMessage&);
    virtual void handle(const OrderReceivedMessage&);
    virtual void handle(const OrderSubmittedMessage&);
    virtual void handle(const OrderRejectedMessage&);
    virtual void handle(const OrderCanceledMessage&);
    virtual void handle(const OrderDoneMessage&);
    virtual void handle(const OrderCancelRejectedMessage&);
    virtual void handle(const TradeCaptureMessage&);
    virtual void handle(const DropCopyMessage&);
    virtual void handle(const EventReportMessage&);
    virtual void handle(const DateRolloverMessage&);
    virtual void handle(const ClientConnectMessage&);
    virtual void handle(const ClientDisconnectMessage&);
    virtual void handle(const ConnectResponseMessage&);
    virtual void handle(const InternalClientInfoMessage&);
    virtual void handle(const TradeLimitDataMessage&);
    virtual void handle(const RiskResponseMessage&);
    virtual void handle(const LockResponseMessage&);
    virtual void handle(const LockUserMessage&);
    virtual void handle(const MemBusHeartbeatMessage&);
    virtual void handle(const MemBusConnectMessage&);
    virtual void handle(const MemBusDisconnectMessage&);
    virtual void handle(const ConfigMessage&);
    virtual void handle(const SubscribeMessage&);
    virtual void handle(const UnsubscribeMessage&);
    virtual void handle(const UnsubscribeAllMessage&);
    virtual void handle(const SubscriptionEventMessage&);
    virtual void handle(const SubscriptionTimerMessage&);
    virtual void handle(const InsertLogMessage&);
    virtual void handle(const TestMessage&);
    virtual void handle(const RequestSnapshotMessage&);
    virtual void handle(const RequestMessage&);
    virtual void handle(const QuoteRequestMessage&);
    virtual void handle(const RejectQuoteRequestMessage&);
    virtual void handle(const CancelQuoteMessage&);
    virtual void handle(const MassQuoteMessage&);
    virtual void handle(const MassQuoteAckMessage&);
    virtual void handle(const NewOrderMessage&);
    virtual void handle(const RejectOrderMessage&);
    virtual void handle(const AcceptOrderMessage&);
    virtual void handle(const TradeCaptureAckMessage&);
    virtual void handle(const OrderTimeoutMessage&);
    virtual void handle(const JsonFromServer&);
    virtual void handle(const JsonFromClient&);
};

/// Hands the message at `message` to the overload for identifier `id`, which the caller guarantees to be its type.
/// Returns false, and calls nothing, if no message has that identifier.
bool dispatch(MsgType_t id, const void* message, MsgHandler& handler);

} // namespace Quillon
