// qlproto trace: all that happened to one order, to one quote or by one user.
#include <algorithm>
#include <memory>
#include <optional>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Inspect/Display.h"
#include "tools/qlproto/analysis/FlatFields.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/MessageLine.h"
#include "tools/qlproto/terminal/Duration.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/terminal/TimeText.h"
#include "tools/qlproto/trading/Stations.h"
#include "tools/qlproto/trading/Trace.h"

namespace qlproto {

namespace {

struct Options {
    std::string capture;
    std::string order;
    std::string quote;
    std::optional<int32_t> user;
    bool json = false;
    bool redact = false;
    Inspect::Policy policy;
};

bool isStationTime(std::string_view path) {
    return std::any_of(STATIONS.begin(), STATIONS.end(), [&](const Station& it) { return path.ends_with(it.field); });
}

/// The fields that are set, but for the stations' times: the step's own time and gap tell enough.
std::string describe(const MessageReader& reader) {
    std::string text;
    for (const FlatField& field : flatFields(reader.descriptor().id(), reader.message())) {
        if (!field.isSet || isStationTime(field.path)) continue;
        const std::string_view path = field.path;
        constexpr std::string_view usual = "contents.";
        text +=
            fmt::format("{}{}={}", text.empty() ? "" : " ", path.starts_with(usual) ? path.substr(usual.size()) : path,
                        field.isSecret ? Inspect::HIDDEN : field.text);
    }
    return text;
}

std::string table(const std::vector<Trace::Step>& steps, const Inspect::Policy& policy) {
    Table table({"packet", "time", "gap", "message", "fields"}, 5);
    MessageReader reader(policy);
    int64_t before = steps.empty() ? 0 : steps.front().time;
    for (const Trace::Step& step : steps) {
        reader.read(step.packet);
        table.add({std::to_string(step.number), timeText(step.time), '+' + readableDuration(step.time - before),
                   reader.descriptor().name(), describe(reader)});
        before = step.time;
    }
    return table.text();
}

/// A message a line, with what the trace adds.
std::string json(const std::vector<Trace::Step>& steps, const Inspect::Policy& policy,
                 const Inspect::Display& display) {
    std::string text;
    MessageReader reader(policy);
    int64_t before = steps.empty() ? 0 : steps.front().time;
    for (const Trace::Step& step : steps) {
        reader.read(step.packet);
        MessageLineWriter line(text);
        line.time(step.time, TimeForm::raw);
        line.message(reader, display);
        line.member("packet", std::to_string(step.number));
        line.member("gap", std::to_string(step.time - before));
        line.end();
        before = step.time;
    }
    return text;
}

int trace(const Options& options) {
    const TraceRule rule = !options.order.empty()   ? TraceRule::order()
                           : !options.quote.empty() ? TraceRule::quote()
                                                    : TraceRule::user();
    const std::string name = !options.order.empty()   ? options.order
                             : !options.quote.empty() ? options.quote
                                                      : std::to_string(*options.user);
    Trace trace(rule, name, options.user);
    CaptureScan scan(options.policy);
    scan.run(options.capture, [&](const Capture::Packet& packet, const MessageReader& reader) {
        trace.add(packet, reader, scan.packets());
    });

    const std::vector<Trace::Step> steps = trace.steps();
    if (options.json)
        Capture::writeText(
            json(steps, options.policy, {.secrets = options.redact ? Inspect::Secrets::hide : Inspect::Secrets::show}));
    else if (!steps.empty())
        Capture::writeText(table(steps, options.policy));
    tell(steps.empty() ? fmt::format("nothing is known of {}", name)
                       : fmt::format("{} in {}", Capture::counted(steps.size(), "step"),
                                     readableDuration(steps.back().time - steps.front().time)));
    return scan.exitCode();
}

} // namespace

void addTrace(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand("trace", "Follow one order, quote or user through all messages");
    command->add_option("capture", options->capture, "The capture to read; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    addPolicy(*command, options->policy);
    CLI::Option* const order =
        command->add_option("--order", options->order, "An order, by its clOrdID, orderID or exOrdID")
            ->check(isNotEmpty());
    command->add_option("--quote", options->quote, "A quote or quote request, by its quoteID or quoteReqID")
        ->excludes(order)
        ->check(isNotEmpty());
    command->add_option("--user", options->user, "A user, by userID; with another, its messages of this user only")
        ->transform(isNumberFrom<int32_t>(INT32_MIN, INT32_MAX))
        ->type_name(NUMBER_VALUE);
    command->final_callback([options] {
        if (options->order.empty() && options->quote.empty() && !options->user)
            throw CLI::RequiredError("One of --order, --quote and --user");
    });
    command->add_flag("--json", options->json,
                      "A line of JSON for each message, as of decode --format json, instead of a table");
    command->add_flag("--redact", options->redact,
                      "Hide passwords and other secrets in JSON, as the table always does");
    command->footer(
        "An order is followed from identifier to identifier: clOrdID, orderID and exOrdID, the new clOrdID of a\n"
        "modified order, the cancellation of all orders that canceled it, the acknowledgement of its execution. The\n"
        "capture is read once; messages that may belong are kept until its end, in a temporary file if they are many.\n"
        "Steps are in order of the packets' time, each with the gap to the one before and its fields that are set,\n"
        "except for the times of the stations.\n\n"
        "Examples:\n"
        "  qlproto trace session.pcap --order heron-1\n"
        "  qlproto trace session.pcap --quote QR1\n"
        "  qlproto trace session.pcap --user 11 --json\n"
        "  qlproto trace session.pcap --order heron-1 --json | qlproto encode - -o heron-1.pcap");
    commands.push_back({command, [options] { return trace(*options); }});
}

} // namespace qlproto
