# The measured messages for Cap'n Proto.
@0xb7d2c9a45e13f086;
using Cxx = import "/capnp/c++.capnp";
$Cxx.namespace("cp");

struct FeedMarketID {
  marketID @0 :Int32;
  feedID @1 :Int32;
}

struct KeyValuePair {
  key @0 :Text;
  value @1 :Text;
}

struct MDEntry {
  price @0 :Int64;
  amount @1 :Int64;
  minAmount @2 :Int64;
  updateAction @3 :UInt8;
  element @4 :UInt8;
  side @5 :UInt8;
  source @6 :Int8;
  numberOfOrders @7 :Int16;
  components @8 :Text;
}

struct MarketView {
  fmID @0 :FeedMarketID;
  timeExchange @1 :Int64;
  timeArrival @2 :Int64;
  timeHandler @3 :Int64;
  timeEnhanced @4 :Int64;
  timeApiServer @5 :Int64;
  timeApiClient @6 :Int64;
  isSnapshot @7 :Bool;
  mdEntryList @8 :List(MDEntry);
}

struct SubmitOrder {
  orderID @0 :Int64;
  clOrdID @1 :Text;
  timeApiClient @2 :Int64;
  timeApiServer @3 :Int64;
  timeHandler @4 :Int64;
  feedID @5 :Int32;
  marketID @6 :Int32;
  side @7 :UInt8;
  amount @8 :Int64;
  price @9 :Int64;
  ordType @10 :UInt8;
  timeInForce @11 :UInt8;
  stopPrice @12 :Int64;
  maxShow @13 :Int64;
  minAmount @14 :Int64;
  parameters @15 :List(KeyValuePair);
}

struct TradeCapture {
  sequenceID @0 :Int32;
  orderID @1 :Int64;
  clOrdID @2 :Text;
  exOrdID @3 :Text;
  exPendingID @4 :Text;
  exTradeID @5 :Text;
  modelID @6 :Text;
  timeExchange @7 :Int64;
  timeHandler @8 :Int64;
  timeApiServer @9 :Int64;
  timeApiClient @10 :Int64;
  feedID @11 :Int32;
  origFeedID @12 :Int32;
  marketID @13 :Int32;
  side @14 :UInt8;
  amount @15 :Int64;
  price @16 :Int64;
  isTaker @17 :Bool;
  matchStatus @18 :UInt8;
  counterPartyID @19 :Text;
  tradeDate @20 :Int64;
  settlDate @21 :Int64;
}

struct DropCopy {
  sequenceID @0 :Int32;
  customerClientID @1 :Text;
  customerAccountID @2 :Text;
  userName @3 :Text;
  onBehalfOfCompID @4 :Text;
  onBehalfOfSubID @5 :Text;
  clOrdID @6 :Text;
  exOrdID @7 :Text;
  exPendingID @8 :Text;
  exTradeID @9 :Text;
  modelID @10 :Text;
  timeExchange @11 :Int64;
  timeHandler @12 :Int64;
  timeApiServer @13 :Int64;
  timeApiClient @14 :Int64;
  feedID @15 :Int32;
  origFeedID @16 :Int32;
  marketID @17 :Int32;
  side @18 :UInt8;
  price @19 :Int64;
  origPrice @20 :Int64;
  baseCurrAmt @21 :Int64;
  baseCurrency @22 :Text;
  counterCurrAmt @23 :Int64;
  counterCurrency @24 :Text;
  settlCurrAmt @25 :Int64;
  settlCurrency @26 :Text;
  isTaker @27 :Bool;
  matchStatus @28 :UInt8;
  counterPartyID @29 :Text;
  tradeDate @30 :Int64;
  settlDate @31 :Int64;
}

struct TradeLimit {
  limitID @0 :Text;
  groupName @1 :Text;
  feedID @2 :Int32;
  marketID @3 :Int32;
  ccyType @4 :UInt8;
  nopAmount @5 :Text;
  dslAmount @6 :Text;
  positionAmount @7 :Text;
  pendingAmount @8 :Text;
  singleAmount @9 :Text;
  throttleCap @10 :Text;
  adminName @11 :Text;
  contacts @12 :Text;
  nopWarnPct @13 :Int16;
  dslWarnPct @14 :Int16;
}

struct TradeState {
  groupName @0 :Text;
  boughtBase @1 :Text;
  soldBase @2 :Text;
  boughtCounter @3 :Text;
  soldCounter @4 :Text;
  pendingBoughtBase @5 :Text;
  pendingSoldBase @6 :Text;
  feedID @7 :Int32;
  marketID @8 :Int32;
  ccyType @9 :UInt8;
  settlTime @10 :Int64;
  syncTime @11 :Int64;
}

struct TradeHierarchy {
  userName @0 :Text;
  groupNames @1 :List(Text);
}

struct MarketRate {
  marketID @0 :Int32;
  settlTime @1 :Int64;
  rate @2 :Text;
}

struct TradeLimitData {
  clDataID @0 :Text;
  groupLimits @1 :List(TradeLimit);
  groupStates @2 :List(TradeState);
  userHierarchy @3 :List(TradeHierarchy);
  marketRates @4 :List(MarketRate);
  numRemainingMessages @5 :Int32;
  isSnapshot @6 :Bool;
}

struct IDNamePair {
  id @0 :Int32;
  name @1 :Text;
}

struct RuThereMessage {
  dpdSeqNo @0 :Int32;
  timeApiClient @1 :Int64;
}

struct SubmitOrderMessage {
  userID @0 :Int32;
  quoteID @1 :Text;
  onBehalfOfCompID @2 :Text;
  contents @3 :SubmitOrder;
  modelID @4 :Text;
}

struct MktDataMessage {
  mvd @0 :MarketView;
  fmIDsInBatch @1 :List(FeedMarketID);
  batchID @2 :Int64;
  streamID @3 :Int32;
}

struct TradeCaptureMessage {
  userID @0 :Int32;
  origPrice @1 :Int64;
  contents @2 :TradeCapture;
}

struct DropCopyMessage {
  contents @0 :DropCopy;
  userID @1 :Int32;
  origFeedSequenceID @2 :Int32;
}

struct TradeLimitDataMessage {
  contents @0 :TradeLimitData;
  groupIDNamePairs @1 :List(IDNamePair);
  userIDNamePairs @2 :List(IDNamePair);
}
