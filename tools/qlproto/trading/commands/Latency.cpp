// qlproto latency: how long messages took from station to station.
#include <memory>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/terminal/Duration.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/trading/LatencyStats.h"

namespace qlproto {

namespace {

using Hop = LatencyStats::Hop;

struct LatencyOptions {
    std::string capture;
    bool json = false;
    ScanOptions scan;
};

void add(Table& table, std::string_view name, const std::vector<Hop>& hops) {
    for (const Hop& hop : hops) {
        if (!hop.occurs()) continue;
        std::vector<std::string> row{std::string(name),
                                     fmt::format("{}->{}", STATIONS[hop.from].name, STATIONS[hop.to].name),
                                     std::to_string(hop.times.count())};
        for (double percent : LATENCY_PERCENTILES)
            row.push_back(hop.times.count() != 0 ? readableDuration(hop.times.percentile(percent)) : "-");
        row.push_back(hop.times.count() != 0 ? readableDuration(hop.times.max()) : "-");
        row.push_back(std::to_string(hop.unset));
        row.push_back(std::to_string(hop.negative));
        row.push_back(hop.negative != 0 ? readableDuration(hop.mostNegative) : "-");
        table.add(std::move(row));
    }
}

std::string table(const LatencyStats& stats) {
    std::vector<std::string> header{"message", "hop", "count"};
    for (double percent : LATENCY_PERCENTILES) header.push_back(fmt::format("p{}", percent));
    for (const char* name : {"max", "unset", "negative", "lowest"}) header.push_back(name);
    Table table(std::move(header), 2);
    for (std::size_t i = 0; i < MESSAGE_COUNT; ++i)
        add(table, Inspect::all_messages()[i].type->name, stats.byMessage()[i]);
    add(table, "all", stats.overall());
    return table.text();
}

nlohmann::ordered_json toJson(const std::vector<Hop>& hops) {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const Hop& hop : hops) {
        if (!hop.occurs()) continue;
        nlohmann::ordered_json it{{"from", STATIONS[hop.from].name},
                                  {"to", STATIONS[hop.to].name},
                                  {"count", hop.times.count()},
                                  {"unset", hop.unset},
                                  {"negative", hop.negative}};
        if (hop.negative != 0) it["lowest"] = hop.mostNegative;
        if (hop.times.count() != 0) {
            it["min"] = hop.times.min();
            for (double percent : LATENCY_PERCENTILES) it[fmt::format("p{}", percent)] = hop.times.percentile(percent);
            it["max"] = hop.times.max();
        }
        json.push_back(std::move(it));
    }
    return json;
}

std::string json(const LatencyStats& stats) {
    nlohmann::ordered_json json;
    json["unit"] = "ns";
    json["all"] = toJson(stats.overall());
    json["messages"] = nlohmann::ordered_json::object();
    for (std::size_t i = 0; i < MESSAGE_COUNT; ++i) {
        nlohmann::ordered_json hops = toJson(stats.byMessage()[i]);
        if (!hops.empty()) json["messages"][std::string(Inspect::all_messages()[i].type->name)] = std::move(hops);
    }
    return json.dump(2) + '\n';
}

int latency(const LatencyOptions& options) {
    CaptureScan scan(options.scan);
    const LatencyStats stats = scan.gather<LatencyStats>(options.capture);
    Capture::writeText(options.json ? json(stats) : table(stats));
    scan.summarize();
    return scan.exitCode();
}

} // namespace

void addLatency(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<LatencyOptions>();
    CLI::App* const command = app.add_subcommand("latency", "Tell how long messages took from station to station");
    command->add_option("capture", options->capture, "The capture to read; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    addScanOptions(*command, options->scan);
    command->add_flag("--json", options->json, "As JSON instead of a table, durations in nanoseconds");
    command->footer(
        "Hops are between the stations that stamp their time into a message: exchange, arrival, handler, enhanced,\n"
        "(API) server and (API) client on its way in, client, server and handler on its way out. The last hop of a\n"
        "message is its whole way; \"all\" adds up the hops of all messages. Times are taken for nanoseconds, one "
        "that\n"
        "is 0 for unset. Hops against the clock are counted as negative, the lowest of them told, and kept out of the\n"
        "percentiles, which are within 0.05 %.\n\n"
        "Examples:\n"
        "  qlproto latency session.pcap\n"
        "  qlproto latency session.pcap | grep '^all '\n"
        "  qlproto latency --json session.pcap");
    commands.push_back({command, [options] { return latency(*options); }});
}

} // namespace qlproto
