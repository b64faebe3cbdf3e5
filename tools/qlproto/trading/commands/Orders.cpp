// qlproto orders, qlproto quotes: one row for each order, or each quote request, and totals.
#include <algorithm>
#include <map>
#include <memory>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Inspect/Display.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/terminal/Duration.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/terminal/Terminal.h"
#include "tools/qlproto/trading/OrderTotals.h"

namespace qlproto {

namespace {

using nlohmann::ordered_json;

struct OrdersOptions {
    std::vector<std::string> captures;
    TableForm form;
    std::string outcome;
    std::string sort;
    bool onlyTotals = false;
    ScanOptions scan;
};

/// From the first message to the end, or to the last step that was seen.
int64_t durationOf(const OrderRow& row) { return *std::ranges::max_element(row.times) - row.first; }

/// Those to be told, in order.
OrderRows chosen(const Orders& orders, const OrdersOptions& options) {
    OrderRows rows;
    for (const OrderRow& row : orders.rows())
        if (row.isTaken && (options.outcome.empty() || orders.kind().outcomeOf(row.told) == options.outcome))
            rows.push_back(&row);
    if (options.sort == "duration")
        std::ranges::stable_sort(rows, std::ranges::greater{}, [](const OrderRow* it) { return durationOf(*it); });
    if (options.sort == "amount") std::ranges::stable_sort(rows, std::ranges::greater{}, &OrderRow::amount);
    if (options.sort == "filled") std::ranges::stable_sort(rows, std::ranges::greater{}, &OrderRow::filled);
    if (rows.size() > options.scan.first) rows.resize(options.scan.first);
    return rows;
}

/// The most frequent value of each first.
Table table(const OrderKind& kind, const OrderTotals& totals) {
    using enum Table::Align;
    Table table({"by", "value", std::string(kind.what), "refused", "traded"}, 2);
    for (const std::string_view by : ORDER_TOTALS)
        for (const auto& [value, total] : byFrequency(totals, by))
            table.add({std::string(by), value, std::to_string(total.orders), std::to_string(total.refused),
                       std::to_string(total.done)});
    return table;
}

Cell cellOf(int64_t quantity, int64_t scale) {
    return quantity == 0 ? Cell::of("-", "0") : Cell(Inspect::scaled_text(quantity, scale));
}

Cell orNone(const std::string& text) { return text.empty() ? Cell::none() : Cell(text); }

Table table(const OrderKind& kind, const OrderRows& rows, const ScanOptions& options) {
    std::vector<std::string> header{kind.what == QUOTES.what ? "quoteReqID" : "orderID",
                                    "clOrdID",
                                    "exOrdID",
                                    "user",
                                    "feed",
                                    "market",
                                    "side",
                                    "amount",
                                    "filled",
                                    "price",
                                    "outcome",
                                    "reason",
                                    "text",
                                    "packet",
                                    "time"};
    for (const std::string_view step : kind.steps) header.emplace_back(step);
    header.push_back("duration");
    using enum Table::Align;
    std::vector<Table::Align> columns(header.size(), right);
    for (const std::size_t i : {0u, 1u, 2u, 6u, 10u, 11u, 12u, 14u}) columns[i] = left;
    Table table(std::move(columns));
    table.add({header.begin(), header.end()});
    const int64_t scale = options.display.priceScale;
    for (const OrderRow* row : rows) {
        std::vector<Cell> cells{row->id,
                                orNone(row->client),
                                orNone(row->exchange),
                                row->user == 0 ? Cell::none() : Cell(std::to_string(row->user)),
                                std::to_string(row->feed),
                                std::to_string(row->market),
                                orNone(row->side),
                                cellOf(row->amount, scale),
                                cellOf(row->filled, scale),
                                cellOf(row->price, scale),
                                std::string(kind.outcomeOf(row->told)),
                                orNone(row->reason),
                                orNone(row->text),
                                std::to_string(row->packet),
                                timeText(row->first, options.time)};
        for (const int64_t time : row->times)
            cells.push_back(time == 0
                                ? Cell::none()
                                : Cell::of('+' + readableDuration(time - row->first), timeText(time, options.time)));
        cells.push_back(Cell::of(readableDuration(durationOf(*row)), std::to_string(durationOf(*row))));
        table.add(std::move(cells));
    }
    return table;
}

std::string json(const OrderKind& kind, const OrderRows& rows, const OrderTotals& totals,
                 const OrdersOptions& options) {
    const int64_t scale = options.scan.display.priceScale;
    const auto quantity = [&](int64_t value) { return Inspect::scaled_text(value, scale); };
    ordered_json json{{"unit", "ns"}};
    if (!options.onlyTotals) {
        ordered_json& list = json[std::string(kind.what)] = ordered_json::array();
        for (const OrderRow* row : rows) {
            ordered_json steps = ordered_json::object();
            for (std::size_t i = 0; i < ORDER_STEPS; ++i)
                if (row->times[i] != 0) steps[std::string(kind.steps[i])] = timeText(row->times[i], options.scan.time);
            list.push_back({{"id", visible(row->id)},
                            {"clOrdID", visible(row->client)},
                            {"exOrdID", visible(row->exchange)},
                            {"user", row->user},
                            {"feed", row->feed},
                            {"market", row->market},
                            {"side", row->side},
                            {"amount", quantity(row->amount)},
                            {"filled", quantity(row->filled)},
                            {"price", quantity(row->price)},
                            {"outcome", kind.outcomeOf(row->told)},
                            {"reason", row->reason},
                            {"text", visible(row->text)},
                            {"packet", row->packet},
                            {"time", timeText(row->first, options.scan.time)},
                            {"steps", std::move(steps)},
                            {"duration", durationOf(*row)}});
        }
    }
    ordered_json& told = json["totals"];
    for (const std::string_view by : ORDER_TOTALS) told[std::string(by)] = ordered_json::object();
    for (const auto& [key, total] : totals)
        told[std::string(key.first)][visible(key.second)] = {
            {"count", total.orders}, {"refused", total.refused}, {"traded", total.done}};
    return json.dump(2) + '\n';
}

int listOrders(const OrderKind& kind, const OrdersOptions& options) {
    Orders orders(kind);
    // A message that the filter does not take can tell of an order that is listed.
    Filter filter(options.scan);
    ScanOptions all = options.scan.ofAll();
    all.names = {kind.messages.begin(), kind.messages.end()};
    CaptureScan scan(all);
    scan.concerns([&](Velmora::MsgType_t id) {
        const Inspect::TypeInfo* const type = Inspect::reflect(id);
        return type != nullptr && std::ranges::find(kind.messages, type->name) != kind.messages.end();
    });
    scan.onBegin([&](int64_t time) { filter.beginAt(time); });
    scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
        orders.add(packet, reader, scan.packets(), filter.takes(packet));
    });

    const OrderRows rows = chosen(orders, options);
    const OrderTotals totals = totalsOf(kind, rows);
    std::string text = inForm(
        options.form, [&] { return options.onlyTotals ? table(kind, totals) : table(kind, rows, options.scan); },
        [&] { return json(kind, rows, totals, options); });
    if (options.form == TableForm::table && !options.onlyTotals) text += '\n' + table(kind, totals).text();
    Capture::writeText(text);
    scan.summarize();
    return scan.exitCode();
}

void add(CLI::App& app, Commands& commands, const OrderKind& kind, const std::string& description,
         const std::string& footer) {
    const auto options = std::make_shared<OrdersOptions>();
    CLI::App* const command = app.add_subcommand(std::string(kind.what), description);
    addCaptures(*command, options->captures);
    addTableForm(*command, options->form);
    command->add_option("--outcome", options->outcome, "Only those with this outcome, as the totals name it")
        ->check(CLI::Validator(
            [&kind](std::string& text) {
                std::vector<std::string_view> names;
                for (const OrderKind::Outcome& it : kind.outcomes) names.push_back(it.name);
                if (std::ranges::find(names, text) != names.end()) return std::string();
                return fmt::format("'{}' is no outcome; there are: {}", text, fmt::join(names, "; "));
            },
            "OUTCOME"));
    addChoice(*command, "--sort", options->sort,
              {{"time", "time"}, {"duration", "duration"}, {"amount", "amount"}, {"filled", "filled"}},
              "By time, or those with the most of this first");
    command->add_flag("--totals", options->onlyTotals, "Only how many there are by outcome, reason, user and feed");
    addScanOptions(*command, options->scan);
    command->footer(
        "Listed is what has a message that the filters take, with all that is known of it; --first counts the\n"
        "rows. Times of steps are told from the first message on, in CSV and JSON as they are. Faults are told\n"
        "of in such messages; others are counted. Memory grows by\n"
        "some 300 bytes for each.\n\n"
        + footer);
    commands.push_back({command, [&kind, options] { return listOrders(kind, *options); }});
}

} // namespace

void addOrders(CLI::App& app, Commands& commands) {
    add(app, commands, ORDERS, "List orders: who, what, outcome, reason, times; and totals",
        "Orders are those with an orderID.\n\n"
        "Examples:\n"
        "  qlproto orders session.pcap\n"
        "  qlproto orders --outcome rejected --price-scale 100000000 session.pcap\n"
        "  qlproto orders --where feedID=2 --from 07:00:01 --to 07:00:02 --sort duration --first 10 session.pcap\n"
        "  qlproto orders --totals session.pcap\n"
        "  qlproto orders --csv session.pcap");
}

void addQuotes(CLI::App& app, Commands& commands) {
    add(app, commands, QUOTES,
        "List quote requests and the orders they led to: what, outcome, reason, times; and totals",
        "Quote requests are those with a quoteReqID, and new orders without one.\n\n"
        "Examples:\n"
        "  qlproto quotes session.pcap\n"
        "  qlproto quotes --outcome passed session.pcap\n"
        "  qlproto quotes --totals --json session.pcap");
}

} // namespace qlproto
