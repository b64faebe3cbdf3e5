// qlproto latency: how long messages took from station to station.
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/analysis/Groups.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/FieldPath.h"
#include "tools/qlproto/terminal/Duration.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/terminal/Terminal.h"
#include "tools/qlproto/trading/LatencyStats.h"
#include "tools/qlproto/trading/SlowestMessages.h"

namespace qlproto {

namespace {

using Hop = LatencyStats::Hop;

struct LatencyOptions {
    std::vector<std::string> captures;
    TableForm form;
    std::string by;
    std::string sort;
    std::size_t slowest = 0;
    ScanOptions scan;
};

/// A hop of a message, or of the messages with a value of a field.
struct LatencyRow {
    std::string name;
    Hop hop;
};

void add(std::vector<LatencyRow>& rows, const std::string& name, std::vector<Hop> hops) {
    for (Hop& hop : hops)
        if (hop.occurs()) rows.push_back({name, std::move(hop)});
}

/// By what rows can be sorted, besides percentiles.
int64_t sortKey(const Hop& hop, const std::string& by) {
    if (by == "count") return static_cast<int64_t>(hop.times.count());
    if (by == "negative") return static_cast<int64_t>(hop.negative);
    if (hop.times.count() == 0) return -1;
    return by == "max" ? hop.times.max() : hop.times.percentile(std::strtod(by.c_str() + 1, nullptr));
}

Cell duration(const Hop& hop, int64_t time) {
    return hop.times.count() != 0 ? Cell::of(readableDuration(time), std::to_string(time)) : Cell::none();
}

std::string hopName(std::size_t from, std::size_t to) { return fmt::format("{}->{}", STATIONS[from], STATIONS[to]); }

Table table(const std::string& by, const std::vector<LatencyRow>& rows) {
    std::vector<std::string> header{by.empty() ? "message" : by, "hop", "count"};
    for (double percent : LATENCY_PERCENTILES) header.push_back(fmt::format("p{}", percent));
    for (const char* name : {"max", "unset", "negative", "lowest"}) header.push_back(name);
    Table table(std::move(header), 2);
    for (const auto& [name, hop] : rows) {
        std::vector<Cell> row{name, hopName(hop.from, hop.to), std::to_string(hop.times.count())};
        for (double percent : LATENCY_PERCENTILES)
            row.push_back(duration(hop, hop.times.count() != 0 ? hop.times.percentile(percent) : 0));
        row.push_back(duration(hop, hop.times.count() != 0 ? hop.times.max() : 0));
        row.push_back(std::to_string(hop.unset));
        row.push_back(std::to_string(hop.negative));
        row.push_back(hop.negative != 0 ? Cell::of(readableDuration(hop.mostNegative), std::to_string(hop.mostNegative))
                                        : Cell::none());
        table.add(std::move(row));
    }
    return table;
}

nlohmann::ordered_json toJson(const std::vector<Hop>& hops) {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const Hop& hop : hops) {
        if (!hop.occurs()) continue;
        nlohmann::ordered_json it{{"from", STATIONS[hop.from]},
                                  {"to", STATIONS[hop.to]},
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

/// What is told of together: each message that has a way, or each value of a field.
struct LatencyGroup {
    std::string name;
    std::vector<Hop> hops;
};

std::string json(const std::string& by, const std::vector<LatencyGroup>& groups, const std::vector<Hop>& overall) {
    nlohmann::ordered_json json;
    json["unit"] = "ns";
    json["all"] = toJson(overall);
    if (!by.empty()) json["by"] = by;
    nlohmann::ordered_json& told = json[by.empty() ? "messages" : "groups"] = nlohmann::ordered_json::object();
    for (const LatencyGroup& it : groups)
        if (nlohmann::ordered_json hops = toJson(it.hops); !hops.empty()) told[visible(it.name)] = std::move(hops);
    return json.dump(2) + '\n';
}

Table table(const LatencyOptions& options, const std::vector<SlowestMessages::Message>& messages) {
    std::vector<std::string> header{"packet", "time", "message", "way", "took", "slowest hop", "it took"};
    if (!options.by.empty()) header.push_back(options.by);
    Table table(std::move(header), 4);
    for (const SlowestMessages::Message& it : messages) {
        std::vector<Cell> row{std::to_string(it.number),
                              timeText(it.time, options.scan.time),
                              std::string(Inspect::all_messages()[it.index].type->name),
                              hopName(it.from, it.to),
                              Cell::of(readableDuration(it.took), std::to_string(it.took)),
                              hopName(it.slowFrom, it.slowTo),
                              Cell::of(readableDuration(it.slowest), std::to_string(it.slowest))};
        if (!options.by.empty()) row.push_back(it.hasValue ? Cell(it.value) : Cell::none());
        table.add(std::move(row));
    }
    return table;
}

std::string json(const LatencyOptions& options, const std::vector<SlowestMessages::Message>& messages) {
    nlohmann::ordered_json json{{"unit", "ns"}, {"slowest", nlohmann::ordered_json::array()}};
    for (const SlowestMessages::Message& it : messages) {
        nlohmann::ordered_json told{{"packet", it.number},
                                    {"time", timeText(it.time, options.scan.time)},
                                    {"message", Inspect::all_messages()[it.index].type->name},
                                    {"from", STATIONS[it.from]},
                                    {"to", STATIONS[it.to]},
                                    {"took", it.took},
                                    {"slowestHop", hopName(it.slowFrom, it.slowTo)},
                                    {"slowestHopTook", it.slowest}};
        if (it.hasValue) told[options.by] = visible(it.value);
        json["slowest"].push_back(std::move(told));
    }
    return json.dump(2) + '\n';
}

bool isLive(const LatencyOptions& options) {
    return options.form == TableForm::table && isWatched(options.captures.front());
}

void tellSlowest(const LatencyOptions& options, const std::optional<FieldValue>& by, CaptureScan& scan) {
    SlowestMessages slowest(options.slowest);
    const auto told = [&] {
        const std::vector<SlowestMessages::Message> messages = slowest.messages();
        return inForm(
            options.form, [&] { return table(options, messages); }, [&] { return json(options, messages); });
    };
    if (isLive(options)) scan.showMeanwhile(told);
    scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
        SlowestMessages::ValueOf valueOf;
        if (by) valueOf = [&] { return by->of(packet, reader, options.scan.display); };
        slowest.add(packet, reader, scan.packets(), valueOf);
    });
    Capture::writeText(told());
}

std::vector<LatencyGroup> groupsOf(const Groups<LatencyStats>& found) {
    std::vector<LatencyGroup> groups;
    found.forEach([&](std::string_view name, const LatencyStats& it) {
        groups.push_back({std::string(name), it.overall()});
    });
    return groups;
}

LatencyStats wholeOf(const Groups<LatencyStats>& found) {
    LatencyStats all;
    found.forEach([&](std::string_view, const LatencyStats& it) { all.merge(it); });
    return all;
}

/// What was gathered, in the form that was asked for.
std::string toldText(const LatencyOptions& options, std::vector<LatencyGroup> groups, std::vector<Hop> overall) {
    if (options.form == TableForm::json) return json(options.by, groups, overall);
    std::vector<LatencyRow> rows;
    for (LatencyGroup& it : groups) add(rows, it.name, std::move(it.hops));
    if (options.sort != "way")
        std::ranges::stable_sort(rows, std::ranges::greater{},
                                 [&](const LatencyRow& it) { return sortKey(it.hop, options.sort); });
    add(rows, "all", std::move(overall));
    return inForm(options.form, [&] { return table(options.by, rows); });
}

void tellHops(const LatencyOptions& options, const std::optional<FieldValue>& by, CaptureScan& scan) {
    constexpr std::size_t mostGroups = 200;
    if (by) {
        Groups<LatencyStats> found(mostGroups);
        const auto told = [&] { return toldText(options, groupsOf(found), wholeOf(found).overall()); };
        if (isLive(options)) scan.showMeanwhile(told);
        scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
            if (hasWay(reader)) found[by->of(packet, reader, options.scan.display)].add(packet, reader);
        });
        return Capture::writeText(told());
    }
    LatencyStats stats;
    const auto told = [&] {
        LatencyStats copy;
        copy.merge(stats);
        std::vector<Hop> overall = copy.overall();
        std::vector<LatencyGroup> groups;
        for (std::size_t i = 0; i < MESSAGE_COUNT; ++i)
            groups.push_back({std::string(Inspect::all_messages()[i].type->name), copy.takeHops(i)});
        return toldText(options, std::move(groups), std::move(overall));
    };
    if (isLive(options)) {
        scan.showMeanwhile(told);
        scan.run(options.captures,
                 [&](const Capture::Packet& packet, const MessageReader& reader) { stats.add(packet, reader); });
    } else {
        stats = scan.gather<LatencyStats>(options.captures);
    }
    Capture::writeText(told());
}

int latency(const LatencyOptions& options) {
    const std::optional<FieldValue> by = options.by.empty() ? std::nullopt : std::optional<FieldValue>(options.by);
    CaptureScan scan(options.scan);
    if (options.slowest != 0)
        tellSlowest(options, by, scan);
    else
        tellHops(options, by, scan);
    scan.summarize();
    return scan.exitCode();
}

} // namespace

void addLatency(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<LatencyOptions>();
    CLI::App* const command = app.add_subcommand("latency", "Tell how long messages took from station to station");
    addCaptures(*command, options->captures);
    addScanOptions(*command, options->scan);
    addTableForm(*command, options->form);
    command
        ->add_option(
            "--by", options->by,
            "By the values of this field, a name or a path, instead of by message; with --slowest, show it, too")
        ->type_name(FIELD_VALUE)
        ->check(isNotEmpty());
    std::vector<std::pair<std::string, std::string>> orders{{"way", "way"}, {"count", "count"}};
    for (double percent : LATENCY_PERCENTILES)
        orders.emplace_back(fmt::format("p{}", percent), fmt::format("p{}", percent));
    for (const char* name : {"max", "negative"}) orders.emplace_back(name, name);
    addChoice(*command, "--sort", options->sort, orders, "The rows of the table with the most of this first");
    addNumber(*command, "--slowest", options->slowest,
              "Instead, the packets that took longest on their whole way: so many of them", 1, 100'000);
    command->footer(
        "Hops are between the stations that stamp their time into a message: exchange, arrival, handler, enhanced,\n"
        "(API) server and (API) client on its way in, client, server and handler on its way out. The last hop of a\n"
        "message is its whole way; \"all\" adds up the hops of all messages. Times are taken for nanoseconds, one "
        "that\n"
        "is 0 for unset. Hops against the clock are counted as negative, the lowest of them told, and kept out of the\n"
        "percentiles, which are within 0.05 %. By a field, the first value of each message counts, and from 200 "
        "values\n"
        "on further ones are told together, as (others). On a terminal, what comes through a pipe is told of as it "
        "comes.\n\n"
        "Examples:\n"
        "  qlproto latency session.pcap\n"
        "  qlproto latency session.pcap | grep '^all '\n"
        "  tail -c +1 session.pcap | qlproto latency -\n"
        "  qlproto latency --by feedID --sort p99 session.pcap\n"
        "  qlproto latency --slowest 10 --by userID session.pcap\n"
        "  qlproto latency --json session.pcap");
    commands.push_back({command, [options] { return latency(*options); }});
}

} // namespace qlproto
