// qlproto report: what a capture holds, as one page for the browser that needs nothing else.
#include <algorithm>
#include <memory>

#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/analysis/FaultLog.h"
#include "tools/qlproto/analysis/Groups.h"
#include "tools/qlproto/analysis/TrafficStats.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/FieldPath.h"
#include "tools/qlproto/terminal/Duration.h"
#include "tools/qlproto/terminal/TimeText.h"
#include "tools/qlproto/trading/LatencyStats.h"
#include "tools/qlproto/trading/OrderTotals.h"
#include "tools/qlproto/trading/report/Assets.h"

namespace qlproto {

namespace {

using nlohmann::ordered_json;
using Traffic = TrafficStats::Traffic;

struct ReportOptions {
    std::vector<std::string> captures;
    std::string output;
    ScanOptions scan;
};

/// Feeds that are told of one by one.
constexpr std::size_t MOST_FEEDS = 50;

struct Findings {
    TrafficStats traffic;
    LatencyStats latency;
    const FieldValue feed{"feedID"};
    Groups<LatencyStats> latencyByFeed{MOST_FEEDS};
    Orders orders{ORDERS}, newOrders{NEW_ORDERS};
    FaultLog faults;

    void add(const Capture::Packet& packet, const MessageReader& reader) {
        traffic.add(packet, reader);
        latency.add(packet, reader);
        if (hasWay(reader)) latencyByFeed[feed.of(packet, reader, {})].add(packet, reader);
        orders.add(packet, reader, 0);
        newOrders.add(packet, reader, 0);
    }
};

/// Points of a curve over time, and messages that have one of their own.
constexpr std::size_t POINTS = 120;
constexpr std::size_t CURVES = 6;
/// Messages in 1,000 that may stand outside of the curves, at either end.
constexpr uint64_t STRAYS = 2;

/// Points of a curve of percentiles; those of LATENCY_PERCENTILES are among them.
constexpr double CURVE_PERCENTILES[] = {1,  10, 20, 30, 40,   50,   60,   70,    80,
                                        90, 95, 98, 99, 99.5, 99.8, 99.9, 99.95, 99.99};

ordered_json rates(const std::vector<std::size_t>& byFrequency, const TrafficStats& traffic, const Traffic& overall) {
    ordered_json json{{"times", ordered_json::array()}, {"series", ordered_json::array()}};
    if (overall.overTime.seconds() <= 0) return json;
    const RateSeries::Span span = overall.overTime.withoutStrays(STRAYS);
    json["outside"] = span.outside;
    for (std::size_t i = 0; i < POINTS; ++i) // milliseconds since 1970
        json["times"].push_back(
            (static_cast<double>(span.first)
             + static_cast<double>(span.last - span.first) * (static_cast<double>(i) + 0.5) / POINTS)
            / 1e6);
    const auto add = [&](std::string_view name, const RateSeries& series) {
        ordered_json values = ordered_json::array();
        for (const auto& amount : series.rates(POINTS, span.first, span.last)) values.push_back(amount.messages);
        json["series"].push_back({{"name", name}, {"values", std::move(values)}});
    };
    add("all", overall.overTime);
    for (std::size_t i = 0; i < std::min(CURVES, byFrequency.size()); ++i)
        add(Inspect::all_messages()[byFrequency[i]].type->name, traffic.byMessage()[byFrequency[i]].overTime);
    return json;
}

ordered_json hops(const LatencyStats& latency) {
    ordered_json json = ordered_json::array();
    for (const LatencyStats::Hop& hop : latency.overall()) {
        if (!hop.occurs()) continue;
        ordered_json values = ordered_json::array();
        for (double percent : CURVE_PERCENTILES)
            if (hop.times.count() != 0) values.push_back(hop.times.percentile(percent));
        json.push_back({{"from", STATIONS[hop.from]},
                        {"to", STATIONS[hop.to]},
                        {"isInwards", hop.from < hop.to},
                        {"count", hop.times.count()},
                        {"unset", hop.unset},
                        {"negative", hop.negative},
                        {"values", std::move(values)},
                        {"max", hop.times.count() != 0 ? hop.times.max() : 0}});
    }
    return json;
}

ordered_json latency(const Findings& findings) {
    ordered_json json{{"percentiles", CURVE_PERCENTILES},
                      {"told", LATENCY_PERCENTILES},
                      {"hops", hops(findings.latency)},
                      {"feeds", ordered_json::array()}};
    findings.latencyByFeed.forEach([&](std::string_view feed, const LatencyStats& it) {
        for (ordered_json& hop : hops(it)) {
            hop["feed"] = feed;
            json["feeds"].push_back(std::move(hop));
        }
    });
    return json;
}

ordered_json outcomes(const Orders& orders) {
    ordered_json json = ordered_json::array();
    for (const Orders::Count& it : orders.outcomes()) json.push_back({{"name", it.name}, {"orders", it.orders}});
    return json;
}

/// Of orders by reason, user and feed.
ordered_json totals(const Orders& orders) {
    OrderRows rows;
    for (const OrderRow& row : orders.rows()) rows.push_back(&row);
    const OrderTotals totals = totalsOf(orders.kind(), rows);
    ordered_json json = ordered_json::object();
    for (const std::string_view by : ORDER_TOTALS)
        for (const auto& [value, total] : byFrequency(totals, by))
            json[std::string(by)].push_back(
                {{"name", value}, {"orders", total.orders}, {"refused", total.refused}, {"traded", total.done}});
    return json;
}

ordered_json faults(const FaultLog& faults, TimeForm form) {
    ordered_json json{{"count", faults.count()}, {"kinds", ordered_json::array()}, {"first", ordered_json::array()}};
    for (const auto& [name, kind] : faults.kinds())
        json["kinds"].push_back({{"name", name}, {"count", kind.count}, {"first", kind.first}, {"last", kind.last}});
    std::ranges::stable_sort(json["kinds"].get_ref<ordered_json::array_t&>(), std::ranges::greater{},
                             [](const ordered_json& it) { return it["count"].get<uint64_t>(); });
    for (const CaptureScan::Fault& it : faults.first())
        json["first"].push_back({{"packet", it.packet},
                                 {"time", it.time == 0 ? "" : timeText(it.time, form)},
                                 {"kind", it.kind},
                                 {"text", it.text}});
    return json;
}

ordered_json data(const std::string& capture, const Findings& findings, TimeForm form) {
    const Traffic overall = findings.traffic.overall();
    const double seconds = overall.overTime.seconds();
    const std::vector<std::size_t> byFrequency = findings.traffic.byFrequency();

    ordered_json json;
    json["capture"] = capture == "-" ? "standard input" : capture;
    json["first"] = overall.overTime.isEmpty() ? "" : timeText(overall.overTime.first(), form);
    json["last"] = overall.overTime.isEmpty() ? "" : timeText(overall.overTime.last(), form);
    json["outOfTime"] = findings.traffic.outOfTime();
    json["seconds"] = seconds;
    json["all"] = trafficJson(overall, seconds);
    json["messages"] = ordered_json::array();
    for (std::size_t i : byFrequency) {
        ordered_json message{{"name", Inspect::all_messages()[i].type->name}};
        message.update(trafficJson(findings.traffic.byMessage()[i], seconds));
        json["messages"].push_back(std::move(message));
    }
    json["rates"] = rates(byFrequency, findings.traffic, overall);
    json["sizes"] = ordered_json::array();
    for (const SizeClass& it : sizeClasses(overall.sizes))
        json["sizes"].push_back({{"low", it.low}, {"high", it.high}, {"count", it.count}});
    json["latency"] = latency(findings);
    json["orders"] = outcomes(findings.orders);
    json["newOrders"] = outcomes(findings.newOrders);
    json["totals"] = totals(findings.orders);
    json["faults"] = faults(findings.faults, form);
    return json;
}

/// As the text of a script element: no "<" that could end it, whatever a text of the capture holds.
std::string embeddable(const ordered_json& json) {
    std::string text;
    for (char c : json.dump(-1, ' ', true, ordered_json::error_handler_t::replace)) {
        if (c == '<')
            text += "\\u003c";
        else
            text += c;
    }
    return text;
}

/// The page, with each {{name}} in it replaced: by the data, or by the file of that name.
std::string page(const std::string& data) {
    std::string page;
    std::string_view rest = REPORT_ASSETS[0].text;
    for (std::size_t at; (at = rest.find("{{")) != std::string_view::npos;) {
        page += rest.substr(0, at);
        const std::size_t end = rest.find("}}", at);
        const std::string_view name = rest.substr(at + 2, end - at - 2);
        rest.remove_prefix(end + 2);
        const auto asset = std::find_if(std::begin(REPORT_ASSETS), std::end(REPORT_ASSETS),
                                        [&](const ReportAsset& it) { return it.name == name; });
        page += asset == std::end(REPORT_ASSETS) ? std::string_view(data) : asset->text;
    }
    return page.append(rest);
}

int report(const ReportOptions& options) {
    Findings findings;
    CaptureScan scan(options.scan);
    scan.onFault([&](const CaptureScan::Fault& fault) { findings.faults.add(fault); });
    scan.run(options.captures,
             [&](const Capture::Packet& packet, const MessageReader& reader) { findings.add(packet, reader); });
    // Dates are for people, as the page is.
    const TimeForm form = options.scan.time == TimeForm::raw ? TimeForm::utc : options.scan.time;
    Capture::writeText(page(embeddable(data(fmt::format("{}", fmt::join(options.captures, ", ")), findings, form))),
                       options.output);
    tellOutOfTime(findings.traffic);
    scan.summarize();
    return scan.exitCode();
}

} // namespace

void addReport(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<ReportOptions>();
    CLI::App* const command = app.add_subcommand("report", "Write a page with rates, latencies, orders and faults");
    addCaptures(*command, options->captures);
    addScanOptions(*command, options->scan);
    command->add_option("-o,--output", options->output, "The page to write, HTML; - is standard output")
        ->required()
        ->type_name(FILE_VALUE);
    command->footer(
        "The page needs no network and no other files: it can be archived and sent as it is. Its times are\n"
        "UTC unless --time names a zone.\n"
        "Memory grows with the number of orders, by some 400 bytes each.\n\n"
        "Example:\n"
        "  qlproto report session.pcap -o report.html");
    commands.push_back({command, [options] { return report(*options); }});
}

} // namespace qlproto
