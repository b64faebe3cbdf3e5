// qlproto stats: how much of what a capture holds.
#include <algorithm>
#include <memory>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/analysis/TrafficStats.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/terminal/Plot.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

using Traffic = TrafficStats::Traffic;

struct StatsOptions {
    std::string capture;
    bool json = false;
    bool plot = false;
    ScanOptions scan;
};

std::vector<std::string> row(std::string_view name, const Traffic& it, double seconds) {
    const Histogram& sizes = it.sizes;
    const std::string perSecond =
        seconds > 0 ? fmt::format("{:.1f}", static_cast<double>(sizes.count()) / seconds) : "-";
    if (sizes.count() == 0) return {std::string(name), "0", "0", "-", "-", "-", "-", "-"};
    return {std::string(name),
            std::to_string(sizes.count()),
            std::to_string(it.bytes),
            perSecond,
            std::to_string(sizes.min()),
            std::to_string(sizes.percentile(50)),
            std::to_string(sizes.percentile(99)),
            std::to_string(sizes.max())};
}

std::string table(const TrafficStats& stats, const Traffic& overall) {
    const double seconds = overall.overTime.seconds();
    Table table({"message", "count", "bytes", "per s", "min", "median", "p99", "max"});
    for (std::size_t i : stats.byFrequency())
        table.add(row(Inspect::all_messages(thisTool.protocol)[i].type->name, stats.byMessage()[i], seconds));
    table.add(row("all", overall, seconds));
    return table.text();
}

std::string json(const TrafficStats& stats, const Traffic& overall) {
    const double seconds = overall.overTime.seconds();
    nlohmann::ordered_json json;
    json["seconds"] = seconds;
    json["all"] = trafficJson(overall, seconds);
    json["messages"] = nlohmann::ordered_json::object();
    for (std::size_t i : stats.byFrequency())
        json["messages"][std::string(Inspect::all_messages(thisTool.protocol)[i].type->name)] =
            trafficJson(stats.byMessage()[i], seconds);
    return json.dump(2) + '\n';
}

std::string plotRate(const RateSeries& overTime, std::size_t width) {
    constexpr std::size_t height = 8;
    // As many columns as fit beside the label, whose length depends on the greatest rate, which depends on them: a
    // label of ten digits is enough for any.
    const std::size_t columns = width - curveMargin("9999999999");
    std::vector<double> values;
    for (const auto& amount : overTime.rates(columns, overTime.first(), overTime.last()))
        values.push_back(amount.messages);
    const std::string greatest = fmt::format("{:.0f}", *std::max_element(values.begin(), values.end()));
    return fmt::format("\nmessages per second, over {:.3f} s\n", overTime.seconds())
           + plotCurve(values, height, greatest);
}

std::string plotSizes(const Histogram& sizes, std::size_t width) {
    std::vector<Bar> bars;
    for (const SizeClass& it : sizeClasses(sizes))
        bars.push_back(
            {fmt::format("{}-{}", it.low, it.high), static_cast<double>(it.count), std::to_string(it.count)});
    return "\nmessages by size in bytes\n" + plotBars(bars, width);
}

int stats(const StatsOptions& options) {
    TrafficStats stats;
    CaptureScan scan(options.scan);
    scan.run(options.capture,
             [&](const Capture::Packet& packet, const MessageReader& reader) { stats.add(packet, reader); });

    const Traffic overall = stats.overall();
    std::string text = options.json ? json(stats, overall) : table(stats, overall);
    if (options.plot && !overall.overTime.isEmpty()) {
        const std::size_t width = terminalWidth();
        text += plotRate(overall.overTime, width) + plotSizes(overall.sizes, width);
    }
    Capture::writeText(text);
    tellOutOfTime(stats);
    scan.summarize();
    return scan.exitCode();
}

} // namespace

void addStats(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<StatsOptions>();
    CLI::App* const command = app.add_subcommand("stats", "Count messages and bytes, tell rates and sizes");
    command->add_option("capture", options->capture, "The capture to read; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    addScanOptions(*command, options->scan);
    CLI::Option* const json = command->add_flag("--json", options->json, "As JSON instead of a table");
    command->add_flag("--plot", options->plot, "Draw rate over time and sizes, too")->excludes(json);
    addExamples(*command,
                "Sizes are in bytes of identifier and body; the rate is over the time from the first message to the\n"
                "last. Percentiles are exact up to 2047 bytes, and within 0.05 % beyond.",
                {"$tool stats session.pcap", "$tool stats --plot session.pcap",
                 "$tool stats --json session.pcap | grep -A 10 $message"});
    commands.push_back({command, [options] { return stats(*options); }});
}

} // namespace qlproto
