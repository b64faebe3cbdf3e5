#include "tools/qlproto/trading/session/Risk.h"

#include <fmt/format.h>

namespace qlproto::session {

using namespace Quillon;

const Risk::Events Risk::EVENTS = {{
    {&Risk::changeLimits, &Risk::answerLimits},
    {&Risk::lockUser, &Risk::answerLock},
    {&Risk::lockUser, &Risk::answerLock},
}};

Risk::Risk(const World& world, Scheduler& scheduler, Sender& sender, Rng rng)
    : Routine(world, scheduler, sender, rng, EVENTS, 60 * MILLISECONDS, 2 * MILLISECONDS) {}

void Risk::sendLimits(bool isSnapshot) {
    _limitsRequest = fmt::format("risk-{}", ++_lastRequest);
    _sender.send<TradeLimitDataMessage>([&](TradeLimitDataMessage& message) {
        TradeLimitData& it = message.contents;
        it.clDataID = _limitsRequest;
        it.isSnapshot = isSnapshot;
        int32_t groupID = 0;
        for (const char* group : {"Majors", "Crosses", "Makers"}) {
            const int64_t limit = _rng.between(50, 200) * MILLION;

            TradeLimit& limits = it.groupLimits.add_back();
            limits.limitID = fmt::format("limit-{}", group);
            limits.groupName = group;
            limits.ccyType = CcyType::BASE;
            limits.nopAmount = decimal(limit);
            limits.dslAmount = decimal(2 * limit);
            limits.positionAmount = decimal(limit);
            limits.pendingAmount = decimal(limit / 2);
            limits.singleAmount = decimal(limit / 10);
            limits.throttleCap = "500";
            limits.adminName = "sexton";
            limits.contacts = "risk desk";
            limits.nopWarnPct = 80;
            limits.dslWarnPct = 90;

            TradeState& state = it.groupStates.add_back();
            state.groupName = group;
            state.boughtBase = decimal(_rng.between(0, limit));
            state.soldBase = decimal(_rng.between(0, limit));
            state.boughtCounter = decimal(_rng.between(0, limit));
            state.soldCounter = decimal(_rng.between(0, limit));
            state.pendingBoughtBase = "0.00";
            state.pendingSoldBase = "0.00";
            state.ccyType = CcyType::BASE;
            state.settlTime = settlDate(_scheduler.now());
            state.syncTime = _scheduler.now();

            IDNamePair& pair = message.groupIDNamePairs.add_back();
            pair.id = ++groupID;
            pair.name = group;
        }
        for (const User& user : _world.users) {
            TradeHierarchy& hierarchy = it.userHierarchy.add_back();
            hierarchy.userName = user.name;
            hierarchy.groupNames.add_back() = user.group;
            hierarchy.groupNames.add_back() = "Everyone";

            IDNamePair& pair = message.userIDNamePairs.add_back();
            pair.id = user.id;
            pair.name = user.name;
        }
        for (const Market& market : _world.markets) {
            MarketRate& rate = it.marketRates.add_back();
            rate.marketID = market.id;
            rate.settlTime = settlDate(_scheduler.now());
            rate.rate = fmt::format("{}.{:08}", market.price / SCALE, market.price % SCALE);
        }
    });
}

void Risk::answerLimits() {
    _sender.send<RiskResponseMessage>([&](RiskResponseMessage& message) {
        RiskResponse& it = message.contents;
        it.clRequestID = _limitsRequest;
        for (const char* group : {"Majors", "Crosses", "Makers"}) {
            RiskLimitStatus& status = it.limitStatus.add_back();
            status.group = group;
            status.status = RiskStatus::SUCCESS;
        }
        RiskUsageStatus& usage = it.usageStatus.add_back();
        usage.user = _rng.pick(_world.users).name;
        usage.settlDate = settlDate(_scheduler.now());
        usage.feedID = _world.feeds[0].id;
        usage.marketID = _world.markets[0].id;
        usage.status = RiskStatus::MISSING_RISK_DATA;
        usage.reason = "no usage reported yet";
    });
}

void Risk::lockUser() {
    _locked = !_locked;
    _lockRequest = fmt::format("lock-{}", ++_lastRequest);
    _sender.send<LockUserMessage>([&](LockUserMessage& message) {
        message.contents.clRequestID = _lockRequest;
        message.contents.locked = _locked;
        message.contents.username = _world.users[2].name;
    });
}

void Risk::answerLock() {
    _sender.send<LockResponseMessage>([&](LockResponseMessage& message) {
        message.contents.clRequestID = _lockRequest;
        message.contents.status = LockStatus::SUCCESS;
    });
}

} // namespace qlproto::session
