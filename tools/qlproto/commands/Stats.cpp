// qlproto stats: how much of what a capture holds.
#include <algorithm>
#include <memory>
#include <optional>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/analysis/Groups.h"
#include "tools/qlproto/analysis/TrafficStats.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/FieldPath.h"
#include "tools/qlproto/terminal/Plot.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/terminal/Terminal.h"

namespace qlproto {

namespace {

using Traffic = TrafficStats::Traffic;

struct StatsOptions {
    std::vector<std::string> captures;
    TableForm form;
    bool plot = false;
    std::string by;
    std::string sort;
    ScanOptions scan;
};

/// What is told of together: a message, or a value of a field.
struct StatsRow {
    std::string name;
    const Traffic* traffic;
};
using StatsRows = std::vector<StatsRow>;

/// By what rows can be sorted, the greatest first.
struct StatsOrder {
    const char* name;
    uint64_t (*key)(const Traffic& it);
};
constexpr StatsOrder STATS_ORDERS[] = {
    {"count", [](const Traffic& it) { return it.sizes.count(); }},
    {"bytes", [](const Traffic& it) { return it.bytes; }},
    {"median", [](const Traffic& it) { return static_cast<uint64_t>(it.sizes.percentile(50)); }},
    {"p99", [](const Traffic& it) { return static_cast<uint64_t>(it.sizes.percentile(99)); }},
    {"max", [](const Traffic& it) { return static_cast<uint64_t>(it.sizes.max()); }},
};

void sort(StatsRows& rows, const std::string& by) {
    std::erase_if(rows, [](const StatsRow& it) { return it.traffic->sizes.count() == 0; });
    const auto order = std::ranges::find(STATS_ORDERS, by, &StatsOrder::name);
    if (order == std::end(STATS_ORDERS)) { // by name
        std::ranges::stable_sort(rows, {}, &StatsRow::name);
        return;
    }
    std::ranges::stable_sort(rows, std::ranges::greater{}, [&](const StatsRow& it) { return order->key(*it.traffic); });
}

std::vector<Cell> row(const std::string& name, const Traffic& it, double seconds) {
    const Histogram& sizes = it.sizes;
    const Cell perSecond =
        seconds > 0 ? fmt::format("{:.1f}", static_cast<double>(sizes.count()) / seconds) : Cell::none();
    if (sizes.count() == 0)
        return {name, "0", "0", Cell::none(), Cell::none(), Cell::none(), Cell::none(), Cell::none()};
    return {name,
            std::to_string(sizes.count()),
            std::to_string(it.bytes),
            perSecond,
            std::to_string(sizes.min()),
            std::to_string(sizes.percentile(50)),
            std::to_string(sizes.percentile(99)),
            std::to_string(sizes.max())};
}

Table table(const std::string& by, const StatsRows& rows, const Traffic& overall) {
    const double seconds = overall.overTime.seconds();
    Table table({by.empty() ? "message" : by, "count", "bytes", "per s", "min", "median", "p99", "max"});
    for (const StatsRow& it : rows) table.add(row(it.name, *it.traffic, seconds));
    table.add(row("all", overall, seconds));
    return table;
}

std::string json(const std::string& by, const StatsRows& rows, const Traffic& overall) {
    const double seconds = overall.overTime.seconds();
    nlohmann::ordered_json json;
    json["seconds"] = seconds;
    json["all"] = trafficJson(overall, seconds);
    if (!by.empty()) json["by"] = by;
    nlohmann::ordered_json& groups = json[by.empty() ? "messages" : "groups"] = nlohmann::ordered_json::object();
    for (const StatsRow& it : rows) groups[visible(it.name)] = trafficJson(*it.traffic, seconds);
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

/// What was gathered, in the form that was asked for.
std::string toldText(const StatsOptions& options, const TrafficStats& stats, const Groups<Traffic>& groups,
                     const Traffic& overall) {
    StatsRows rows;
    if (!options.by.empty())
        groups.forEach([&](std::string_view name, const Traffic& it) { rows.push_back({std::string(name), &it}); });
    else
        for (std::size_t i = 0; i < stats.byMessage().size(); ++i)
            rows.push_back(
                {std::string(Inspect::all_messages(thisTool.protocol)[i].type->name), &stats.byMessage()[i]});
    sort(rows, options.sort);
    return inForm(
        options.form, [&] { return table(options.by, rows, overall); },
        [&] { return json(options.by, rows, overall); });
}

int stats(const StatsOptions& options) {
    constexpr std::size_t mostGroups = 1000;
    TrafficStats stats;
    Groups<Traffic> groups(mostGroups);
    const std::optional<FieldValue> by = options.by.empty() ? std::nullopt : std::optional<FieldValue>(options.by);
    CaptureScan scan(options.scan);
    if (!by) scan.onlyVerify();
    if (options.form == TableForm::table && isWatched(options.captures.front()))
        scan.showMeanwhile([&] { return toldText(options, stats, groups, stats.overall()); });
    scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
        stats.add(packet, reader);
        if (!by) return;
        Traffic& group = groups[by->of(packet, reader, options.scan.display)];
        group.bytes += packet.bytes.size();
        group.sizes.add(static_cast<int64_t>(packet.bytes.size()));
    });

    const Traffic overall = stats.overall();
    std::string text = toldText(options, stats, groups, overall);
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
    addCaptures(*command, options->captures);
    addScanOptions(*command, options->scan);
    addTableForm(*command, options->form);
    CLI::Option* const plot = command->add_flag("--plot", options->plot, "Draw rate over time and sizes, too");
    for (const char* other : {"--json", "--csv", "--format"}) plot->excludes(command->get_option(other));
    command->add_option("--by", options->by, "By the values of this field, a name or a path, instead of by message")
        ->type_name(FIELD_VALUE)
        ->check(isNotEmpty());
    addChoice(*command, "--sort", options->sort,
              {{"count", "count"},
               {"bytes", "bytes"},
               {"median", "median"},
               {"p99", "p99"},
               {"max", "max"},
               {"name", "name"}},
              "The rows with the most of this first");
    addExamples(
        *command,
        "Sizes are in bytes of identifier and body; the rate is over the time from the first message to the\n"
        "last. Percentiles are exact up to 2047 bytes, and within 0.05 % beyond. By a field, the first value of\n"
        "each message counts, and from 1,000 values on further ones are told together, as (others). On a terminal, "
        "what\n"
        "comes through a pipe is told of as it comes.",
        {"$tool stats session.pcap", "$tool stats --plot session.pcap", "tail -c +1 session.pcap | $tool stats -",
         "$tool stats --json session.pcap | grep -A 10 $message"});
    commands.push_back({command, [options] { return stats(*options); }});
}

} // namespace qlproto
