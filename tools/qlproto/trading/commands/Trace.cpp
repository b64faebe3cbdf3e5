// qlproto trace: all that happened to one order, to one quote or by one user.
#include <memory>
#include <optional>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Inspect/Display.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/terminal/Duration.h"
#include "tools/qlproto/trading/Trace.h"
#include "tools/qlproto/trading/TraceText.h"

namespace qlproto {

namespace {

struct TraceOptions {
    std::vector<std::string> captures;
    std::string order;
    std::string quote;
    std::optional<int32_t> user;
    TableForm form;
    ScanOptions scan;
};

int trace(const TraceOptions& options) {
    const TraceRule rule = !options.order.empty()   ? TraceRule::order()
                           : !options.quote.empty() ? TraceRule::quote()
                                                    : TraceRule::user();
    const std::string name = !options.order.empty()   ? options.order
                             : !options.quote.empty() ? options.quote
                                                      : std::to_string(*options.user);
    Trace trace(rule, name, options.user);
    // A message that is not to be shown can be the one that leads to those that are.
    CaptureScan scan(options.scan.ofAll());
    scan.concerns([&](Velmora::MsgType_t id) { return mayTellOf(rule, id); });
    Filter filter(options.scan);
    scan.onBegin([&](int64_t time) { filter.beginAt(time); });
    scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
        trace.add(packet, reader, scan.packets());
    });

    std::vector<Trace::Step> steps = trace.steps();
    std::erase_if(steps, [&](const Trace::Step& it) {
        Capture::Packet packet{it.time, it.packet};
        if (it.connection) packet.connection = &*it.connection;
        return !filter.takes(packet);
    });
    if (options.scan.first < steps.size()) steps.resize(options.scan.first);
    if (!steps.empty() || options.form == TableForm::csv)
        Capture::writeText(inForm(
            options.form, [&] { return traceTable(steps, options.scan); },
            [&] { return traceLines(steps, options.scan); }));
    scan.summarize();
    if (options.scan.isQuiet) return scan.exitCode();
    tell(steps.empty() ? fmt::format("nothing is known of {}", name)
                       : fmt::format("{} in {}", Capture::counted(steps.size(), "step"),
                                     readableDuration(steps.back().time - steps.front().time)));
    return scan.exitCode();
}

} // namespace

void addTrace(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<TraceOptions>();
    CLI::App* const command = app.add_subcommand("trace", "Follow one order, quote or user through all messages");
    addCaptures(*command, options->captures);
    addScanOptions(*command, options->scan);
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
    addTableForm(*command, options->form);
    command->footer(
        "An order is followed from identifier to identifier: clOrdID, orderID and exOrdID, the new clOrdID of a\n"
        "modified order, the cancellation of all orders that canceled it, the acknowledgement of its execution. The\n"
        "capture is read once; messages that may belong are kept until its end, in a temporary file if they are many.\n"
        "Steps are in order of the packets' time, each with the gap to the one before and its fields that are set,\n"
        "except for the times of the stations. Faults are told of in messages that may be steps; others are counted. "
        "Filters choose among the steps. The table and CSV always hide secrets; JSON is a line for each message, as "
        "of\n"
        "decode.\n\n"
        "Examples:\n"
        "  qlproto trace session.pcap --order heron-1\n"
        "  qlproto trace session.pcap --quote QR1\n"
        "  qlproto trace session.pcap --user 11 --json\n"
        "  qlproto trace session.pcap --order heron-1 --json | qlproto encode - -o heron-1.pcap");
    commands.push_back({command, [options] { return trace(*options); }});
}

} // namespace qlproto
