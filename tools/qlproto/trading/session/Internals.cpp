#include "tools/qlproto/trading/session/Internals.h"

#include <fmt/format.h>

namespace qlproto::session {

using namespace Quillon;

const Internals::Events Internals::EVENTS = {{
    {&Internals::log},
    {&Internals::log},
    {&Internals::log},
    {&Internals::insertLog},
    {&Internals::statisticsTimeout, &Internals::statistics},
    {&Internals::exchange},
    {&Internals::exchange},
    {&Internals::checkActivity},
    {&Internals::callback},
    {&Internals::timer},
    {&Internals::test},
    {&Internals::jsonRequest, &Internals::jsonAnswer},
}};

Internals::Internals(const World& world, Scheduler& scheduler, Sender& sender, Rng rng)
    : Routine(world, scheduler, sender, rng, EVENTS, 16 * MILLISECONDS, 500 * MICROSECONDS) {}

void Internals::initializeTask() {
    _sender.send<TaskInitializationMessage>([](TaskInitializationMessage&) {});
}

void Internals::log() {
    struct Line {
        LogLevel::Type level;
        const char* logger;
        const char* filename;
        int32_t lineno;
        const char* function;
        const char* description;
    };
    static constexpr std::array<Line, 4> lines{{
        {LogLevel::LOGINFO, "orders", "OrderTask.cpp", 212, "onFill", "position updated"},
        {LogLevel::LOGWARN, "feeds", "FeedHandler.cpp", 87, "onLate", "market data later than 5 ms"},
        {LogLevel::LOGDEBUG, "quotes", "QuoteTask.cpp", 341, "expire", "request expired"},
        {LogLevel::LOGERROR, "risk", "RiskTask.cpp", 55, "check", "no rate for market, used the last one"},
    }};
    _sender.send<LogMessage>([&](LogMessage& message) {
        const Line& line = _rng.pick(lines);
        message.timestamp = _scheduler.now();
        message.thread = fmt::format("worker-{}", _rng.between(1, 4));
        message.level = line.level;
        message.logger = line.logger;
        message.filename = line.filename;
        message.lineno = line.lineno;
        message.function = line.function;
        message.description = line.description;
    });
}

void Internals::insertLog() {
    _sender.send<InsertLogMessage>([](InsertLogMessage& message) {
        message.description = "client says: order blotter reloaded";
        message.level = LogLevel::LOGINFO;
    });
}

void Internals::statisticsTimeout() {
    _sender.send<StatTimeoutMessage>([](StatTimeoutMessage&) {});
}

void Internals::statistics() {
    _sender.send<StatCounterMessage>([&](StatCounterMessage& message) {
        message.threadname = fmt::format("worker-{}", _rng.between(1, 4));
        for (const char* name : {"orders", "marketdata", "dropcopy"}) {
            StatCounter& counter = message.stats.add_back();
            counter.type = StatType::QUEUE_SIZE;
            counter.name = name;
            counter.value = static_cast<int32_t>(_rng.between(0, 400));
        }
    });
}

void Internals::exchange() {
    _sender.send<ExchangeMessage>([&](ExchangeMessage& message) {
        message.timeArrival = _scheduler.now();
        message.feedID = _rng.pick(_world.feeds).id;
        message.connection = 1;
        message.contents = fmt::format("HB seq={} time={}", _rng.between(1, 1'000'000), _scheduler.now());
    });
}

void Internals::checkActivity() {
    _sender.send<MDActivityCheckMessage>([](MDActivityCheckMessage&) {});
}

void Internals::callback() {
    _sender.send<CallbackMessage>([&](CallbackMessage& message) {
        message.action = static_cast<int8_t>(_rng.between(1, 5));
        message.arg1 = _scheduler.now();
        message.arg2 = _rng.between(-1'000'000, 1'000'000);
    });
}

void Internals::timer() {
    _sender.send<TimerMessage>([&](TimerMessage& message) { message.tqid = ++_timers; });
}

void Internals::test() {
    _sender.send<TestMessage>([](TestMessage& message) { message.test = APITest::INVOKE_EVENT_REPORT; });
}

void Internals::jsonRequest() {
    _sender.send<JsonFromClient>([&](JsonFromClient& message) {
        message.contents = fmt::format(R"({{"request":{},"ask":"uptime"}})", ++_jsonRequests);
    });
}

void Internals::jsonAnswer() {
    _sender.send<JsonFromServer>([&](JsonFromServer& message) {
        message.contents = fmt::format(R"({{"request":{},"uptime":{}}})", _jsonRequests, _rng.between(100, 99'999));
    });
}

} // namespace qlproto::session
