// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
#include "generated/QLProtocol/MsgHandler.h"

namespace Quillon {

MsgHandler::~MsgHandler() = default;

void MsgHandler::handle(const LogMessage&) {}
void MsgHandler::handle(const StatCounterMessage&) {}
void MsgHandler::handle(const ExchangeMessage&) {}
void MsgHandler::handle(const StatTimeoutMessage&) {}
void MsgHandler::handle(const TaskInitializationMessage&) {}
void MsgHandler::handle(const MDActivityCheckMessage&) {}
void MsgHandler::handle(const CallbackMessage&) {}
void MsgHandler::handle(const TimerMessage&) {}
void MsgHandler::handle(const SubscriptionTimeoutMessage&) {}
void MsgHandler::handle(const HeartbeatTimerMessage&) {}
void MsgHandler::handle(const VersionMessage&) {}
void MsgHandler::handle(const ProtocolDefinitionMessage&) {}
void MsgHandler::handle(const PadMessage&) {}
void MsgHandler::handle(const RuThereMessage&) {}
void MsgHandler::handle(const ImHereMessage&) {}
void MsgHandler::handle(const HeartbeatMessage&) {}
void MsgHandler::handle(const ReplayMessage&) {}
void MsgHandler::handle(const ReplayDoneMessage&) {}
void MsgHandler::handle(const LastSequenceIDMessage&) {}
void MsgHandler::handle(const BatchRegisterMessage&) {}
void MsgHandler::handle(const BatchUnregisterMessage&) {}
void MsgHandler::handle(const SecurityInfoMessage&) {}
void MsgHandler::handle(const BatchesCompletedMessage&) {}
void MsgHandler::handle(const MktDataMessage&) {}
void MsgHandler::handle(const SubmitOrderMessage&) {}
void MsgHandler::handle(const CancelOrderMessage&) {}
void MsgHandler::handle(const CancelAllOrderMessage&) {}
void MsgHandler::handle(const ModifyOrderMessage&) {}
void MsgHandler::handle(const OrderReceivedMessage&) {}
void MsgHandler::handle(const OrderSubmittedMessage&) {}
void MsgHandler::handle(const OrderRejectedMessage&) {}
void MsgHandler::handle(const OrderCanceledMessage&) {}
void MsgHandler::handle(const OrderDoneMessage&) {}
void MsgHandler::handle(const OrderCancelRejectedMessage&) {}
void MsgHandler::handle(const TradeCaptureMessage&) {}
void MsgHandler::handle(const DropCopyMessage&) {}
void MsgHandler::handle(const EventReportMessage&) {}
void MsgHandler::handle(const DateRolloverMessage&) {}
void MsgHandler::handle(const ClientConnectMessage&) {}
void MsgHandler::handle(const ClientDisconnectMessage&) {}
void MsgHandler::handle(const ConnectResponseMessage&) {}
void MsgHandler::handle(const InternalClientInfoMessage&) {}
void MsgHandler::handle(const TradeLimitDataMessage&) {}
void MsgHandler::handle(const RiskResponseMessage&) {}
void MsgHandler::handle(const LockResponseMessage&) {}
void MsgHandler::handle(const LockUserMessage&) {}
void MsgHandler::handle(const MemBusHeartbeatMessage&) {}
void MsgHandler::handle(const MemBusConnectMessage&) {}
void MsgHandler::handle(const MemBusDisconnectMessage&) {}
void MsgHandler::handle(const ConfigMessage&) {}
void MsgHandler::handle(const SubscribeMessage&) {}
void MsgHandler::handle(const UnsubscribeMessage&) {}
void MsgHandler::handle(const UnsubscribeAllMessage&) {}
void MsgHandler::handle(const SubscriptionEventMessage&) {}
void MsgHandler::handle(const SubscriptionTimerMessage&) {}
void MsgHandler::handle(const InsertLogMessage&) {}
void MsgHandler::handle(const TestMessage&) {}
void MsgHandler::handle(const RequestSnapshotMessage&) {}
void MsgHandler::handle(const RequestMessage&) {}
void MsgHandler::handle(const QuoteRequestMessage&) {}
void MsgHandler::handle(const RejectQuoteRequestMessage&) {}
void MsgHandler::handle(const CancelQuoteMessage&) {}
void MsgHandler::handle(const MassQuoteMessage&) {}
void MsgHandler::handle(const MassQuoteAckMessage&) {}
void MsgHandler::handle(const NewOrderMessage&) {}
void MsgHandler::handle(const RejectOrderMessage&) {}
void MsgHandler::handle(const AcceptOrderMessage&) {}
void MsgHandler::handle(const TradeCaptureAckMessage&) {}
void MsgHandler::handle(const OrderTimeoutMessage&) {}
void MsgHandler::handle(const JsonFromServer&) {}
void MsgHandler::handle(const JsonFromClient&) {}

bool dispatch(MsgType_t id, const void* message, MsgHandler& handler) {
    switch (id) {
    case LogMessage::ID:
        handler.handle(*static_cast<const LogMessage*>(message));
        return true;
    case StatCounterMessage::ID:
        handler.handle(*static_cast<const StatCounterMessage*>(message));
        return true;
    case ExchangeMessage::ID:
        handler.handle(*static_cast<const ExchangeMessage*>(message));
        return true;
    case StatTimeoutMessage::ID:
        handler.handle(*static_cast<const StatTimeoutMessage*>(message));
        return true;
    case TaskInitializationMessage::ID:
        handler.handle(*static_cast<const TaskInitializationMessage*>(message));
        return true;
    case MDActivityCheckMessage::ID:
        handler.handle(*static_cast<const MDActivityCheckMessage*>(message));
        return true;
    case CallbackMessage::ID:
        handler.handle(*static_cast<const CallbackMessage*>(message));
        return true;
    case TimerMessage::ID:
        handler.handle(*static_cast<const TimerMessage*>(message));
        return true;
    case SubscriptionTimeoutMessage::ID:
        handler.handle(*static_cast<const SubscriptionTimeoutMessage*>(message));
        return true;
    case HeartbeatTimerMessage::ID:
        handler.handle(*static_cast<const HeartbeatTimerMessage*>(message));
        return true;
    case VersionMessage::ID:
        handler.handle(*static_cast<const VersionMessage*>(message));
        return true;
    case ProtocolDefinitionMessage::ID:
        handler.handle(*static_cast<const ProtocolDefinitionMessage*>(message));
        return true;
    case PadMessage::ID:
        handler.handle(*static_cast<const PadMessage*>(message));
        return true;
    case RuThereMessage::ID:
        handler.handle(*static_cast<const RuThereMessage*>(message));
        return true;
    case ImHereMessage::ID:
        handler.handle(*static_cast<const ImHereMessage*>(message));
        return true;
    case HeartbeatMessage::ID:
        handler.handle(*static_cast<const HeartbeatMessage*>(message));
        return true;
    case ReplayMessage::ID:
        handler.handle(*static_cast<const ReplayMessage*>(message));
        return true;
    case ReplayDoneMessage::ID:
        handler.handle(*static_cast<const ReplayDoneMessage*>(message));
        return true;
    case LastSequenceIDMessage::ID:
        handler.handle(*static_cast<const LastSequenceIDMessage*>(message));
        return true;
    case BatchRegisterMessage::ID:
        handler.handle(*static_cast<const BatchRegisterMessage*>(message));
        return true;
    case BatchUnregisterMessage::ID:
        handler.handle(*static_cast<const BatchUnregisterMessage*>(message));
        return true;
    case SecurityInfoMessage::ID:
        handler.handle(*static_cast<const SecurityInfoMessage*>(message));
        return true;
    case BatchesCompletedMessage::ID:
        handler.handle(*static_cast<const BatchesCompletedMessage*>(message));
        return true;
    case MktDataMessage::ID:
        handler.handle(*static_cast<const MktDataMessage*>(message));
        return true;
    case SubmitOrderMessage::ID:
        handler.handle(*static_cast<const SubmitOrderMessage*>(message));
        return true;
    case CancelOrderMessage::ID:
        handler.handle(*static_cast<const CancelOrderMessage*>(message));
        return true;
    case CancelAllOrderMessage::ID:
        handler.handle(*static_cast<const CancelAllOrderMessage*>(message));
        return true;
    case ModifyOrderMessage::ID:
        handler.handle(*static_cast<const ModifyOrderMessage*>(message));
        return true;
    case OrderReceivedMessage::ID:
        handler.handle(*static_cast<const OrderReceivedMessage*>(message));
        return true;
    case OrderSubmittedMessage::ID:
        handler.handle(*static_cast<const OrderSubmittedMessage*>(message));
        return true;
    case OrderRejectedMessage::ID:
        handler.handle(*static_cast<const OrderRejectedMessage*>(message));
        return true;
    case OrderCanceledMessage::ID:
        handler.handle(*static_cast<const OrderCanceledMessage*>(message));
        return true;
    case OrderDoneMessage::ID:
        handler.handle(*static_cast<const OrderDoneMessage*>(message));
        return true;
    case OrderCancelRejectedMessage::ID:
        handler.handle(*static_cast<const OrderCancelRejectedMessage*>(message));
        return true;
    case TradeCaptureMessage::ID:
        handler.handle(*static_cast<const TradeCaptureMessage*>(message));
        return true;
    case DropCopyMessage::ID:
        handler.handle(*static_cast<const DropCopyMessage*>(message));
        return true;
    case EventReportMessage::ID:
        handler.handle(*static_cast<const EventReportMessage*>(message));
        return true;
    case DateRolloverMessage::ID:
        handler.handle(*static_cast<const DateRolloverMessage*>(message));
        return true;
    case ClientConnectMessage::ID:
        handler.handle(*static_cast<const ClientConnectMessage*>(message));
        return true;
    case ClientDisconnectMessage::ID:
        handler.handle(*static_cast<const ClientDisconnectMessage*>(message));
        return true;
    case ConnectResponseMessage::ID:
        handler.handle(*static_cast<const ConnectResponseMessage*>(message));
        return true;
    case InternalClientInfoMessage::ID:
        handler.handle(*static_cast<const InternalClientInfoMessage*>(message));
        return true;
    case TradeLimitDataMessage::ID:
        handler.handle(*static_cast<const TradeLimitDataMessage*>(message));
        return true;
    case RiskResponseMessage::ID:
        handler.handle(*static_cast<const RiskResponseMessage*>(message));
        return true;
    case LockResponseMessage::ID:
        handler.handle(*static_cast<const LockResponseMessage*>(message));
        return true;
    case LockUserMessage::ID:
        handler.handle(*static_cast<const LockUserMessage*>(message));
        return true;
    case MemBusHeartbeatMessage::ID:
        handler.handle(*static_cast<const MemBusHeartbeatMessage*>(message));
        return true;
    case MemBusConnectMessage::ID:
        handler.handle(*static_cast<const MemBusConnectMessage*>(message));
        return true;
    case MemBusDisconnectMessage::ID:
        handler.handle(*static_cast<const MemBusDisconnectMessage*>(message));
        return true;
    case ConfigMessage::ID:
        handler.handle(*static_cast<const ConfigMessage*>(message));
        return true;
    case SubscribeMessage::ID:
        handler.handle(*static_cast<const SubscribeMessage*>(message));
        return true;
    case UnsubscribeMessage::ID:
        handler.handle(*static_cast<const UnsubscribeMessage*>(message));
        return true;
    case UnsubscribeAllMessage::ID:
        handler.handle(*static_cast<const UnsubscribeAllMessage*>(message));
        return true;
    case SubscriptionEventMessage::ID:
        handler.handle(*static_cast<const SubscriptionEventMessage*>(message));
        return true;
    case SubscriptionTimerMessage::ID:
        handler.handle(*static_cast<const SubscriptionTimerMessage*>(message));
        return true;
    case InsertLogMessage::ID:
        handler.handle(*static_cast<const InsertLogMessage*>(message));
        return true;
    case TestMessage::ID:
        handler.handle(*static_cast<const TestMessage*>(message));
        return true;
    case RequestSnapshotMessage::ID:
        handler.handle(*static_cast<const RequestSnapshotMessage*>(message));
        return true;
    case RequestMessage::ID:
        handler.handle(*static_cast<const RequestMessage*>(message));
        return true;
    case QuoteRequestMessage::ID:
        handler.handle(*static_cast<const QuoteRequestMessage*>(message));
        return true;
    case RejectQuoteRequestMessage::ID:
        handler.handle(*static_cast<const RejectQuoteRequestMessage*>(message));
        return true;
    case CancelQuoteMessage::ID:
        handler.handle(*static_cast<const CancelQuoteMessage*>(message));
        return true;
    case MassQuoteMessage::ID:
        handler.handle(*static_cast<const MassQuoteMessage*>(message));
        return true;
    case MassQuoteAckMessage::ID:
        handler.handle(*static_cast<const MassQuoteAckMessage*>(message));
        return true;
    case NewOrderMessage::ID:
        handler.handle(*static_cast<const NewOrderMessage*>(message));
        return true;
    case RejectOrderMessage::ID:
        handler.handle(*static_cast<const RejectOrderMessage*>(message));
        return true;
    case AcceptOrderMessage::ID:
        handler.handle(*static_cast<const AcceptOrderMessage*>(message));
        return true;
    case TradeCaptureAckMessage::ID:
        handler.handle(*static_cast<const TradeCaptureAckMessage*>(message));
        return true;
    case OrderTimeoutMessage::ID:
        handler.handle(*static_cast<const OrderTimeoutMessage*>(message));
        return true;
    case JsonFromServer::ID:
        handler.handle(*static_cast<const JsonFromServer*>(message));
        return true;
    case JsonFromClient::ID:
        handler.handle(*static_cast<const JsonFromClient*>(message));
        return true;
    default:
        return false;
    }
}

} // namespace Quillon
