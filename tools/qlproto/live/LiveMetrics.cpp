#include "tools/qlproto/live/LiveMetrics.h"

#ifdef QL_WITH_PROMETHEUS

#include <algorithm>
#include <map>

#include <prometheus/counter.h>
#include <prometheus/exposer.h>
#include <prometheus/histogram.h>
#include <prometheus/registry.h>

#include "Capture/Errors.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"

namespace qlproto {

namespace {

class PrometheusMetrics : public LiveMetrics {
  public:
    explicit PrometheusMetrics(const std::string& address) : _exposer(address, 1) {
        _exposer.RegisterCollectable(_registry);
    }

    void add(const Host::Record& record, int64_t now) override {
        Kind& kind = kindOf(record.id);
        kind.messages->Increment();
        kind.bytes->Increment(static_cast<double>(record.body.size()));
        kind.hop->Observe(static_cast<double>(std::max<int64_t>(0, now - record.time)) / 1e9);
    }
    void addLost(uint64_t messages) override { _lost.Increment(static_cast<double>(messages)); }
    void addFaults(uint64_t messages) override { _faults.Increment(static_cast<double>(messages)); }

  private:
    struct Kind {
        prometheus::Counter *messages, *bytes;
        prometheus::Histogram* hop;
    };

    prometheus::Family<prometheus::Counter>& counters(const char* name, const char* help) {
        return prometheus::BuildCounter().Name(name).Help(help).Register(*_registry);
    }

    Kind& kindOf(Velmora::MsgType_t id) {
        Kind& kind = _kinds[id];
        if (kind.messages != nullptr) return kind;
        const std::map<std::string, std::string> label{
            {"message", std::string(Inspect::reflect(thisTool.protocol, id)->name)}};
        kind = {&_messages.Add(label), &_bytes.Add(label), &_hops.Add(label, buckets())};
        return kind;
    }

    /// Ten microseconds to ten seconds, three a decade.
    static prometheus::Histogram::BucketBoundaries buckets() {
        prometheus::Histogram::BucketBoundaries all;
        for (double decade = 1e-5; decade < 5; decade *= 10)
            for (const double step : {1.0, 2.0, 5.0}) all.push_back(decade * step);
        all.push_back(10);
        return all;
    }

    const std::shared_ptr<prometheus::Registry> _registry = std::make_shared<prometheus::Registry>();
    prometheus::Family<prometheus::Counter>& _messages = counters("ql_messages_total", "Messages that came");
    prometheus::Family<prometheus::Counter>& _bytes = counters("ql_bytes_total", "Bytes of their bodies");
    prometheus::Counter& _lost = counters("ql_lost_total", "Messages that came and went unseen").Add({});
    prometheus::Counter& _faults = counters("ql_faults_total", "Messages that were left out as bad").Add({});
    prometheus::Family<prometheus::Histogram>& _hops = prometheus::BuildHistogram()
                                                           .Name("ql_hop_seconds")
                                                           .Help("From the time of the message to its arrival")
                                                           .Register(*_registry);
    std::map<Velmora::MsgType_t, Kind> _kinds;
    prometheus::Exposer _exposer; // the last: it serves what stands before it
};

} // namespace

std::unique_ptr<LiveMetrics> LiveMetrics::listen(const std::string& address) {
    try {
        return std::make_unique<PrometheusMetrics>(address);
    } catch (const std::exception& error) {
        throw Capture::IoError(address + ": nobody can listen there: " + error.what());
    }
}

} // namespace qlproto

#else

namespace qlproto {
std::unique_ptr<LiveMetrics> LiveMetrics::listen(const std::string&) { return nullptr; }
} // namespace qlproto

#endif
