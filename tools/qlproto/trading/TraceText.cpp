#include "tools/qlproto/trading/TraceText.h"

#include <algorithm>

#include <fmt/format.h>

#include "tools/qlproto/analysis/FlatFields.h"
#include "tools/qlproto/messages/MessageLine.h"
#include "tools/qlproto/terminal/Duration.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

namespace {

/// The fields that are set, but for the stations' times: the step's own time and gap tell enough.
std::string describe(const MessageReader& reader, const Inspect::Display& display) {
    std::string text;
    for (const FlatField& field : flatFields(reader.descriptor().id(), reader.message(), display)) {
        if (!field.isSet || field.isTime) continue;
        const std::string_view path = field.path;
        constexpr std::string_view usual = "contents.";
        text +=
            fmt::format("{}{}={}", text.empty() ? "" : " ", path.starts_with(usual) ? path.substr(usual.size()) : path,
                        field.isSecret ? Inspect::HIDDEN : field.text);
    }
    return text;
}

} // namespace

Table traceTable(const std::vector<Trace::Step>& steps, const ScanOptions& options) {
    const bool hasConnections =
        std::ranges::any_of(steps, [](const Trace::Step& it) { return it.connection.has_value(); });
    std::vector<std::string> columns{"packet", "time", "gap", "message", "fields"};
    if (hasConnections) columns.insert(columns.begin() + 3, "from and to");
    Table table(columns, columns.size());
    MessageReader reader(options.policy);
    int64_t before = steps.empty() ? 0 : steps.front().time;
    for (const Trace::Step& step : steps) {
        reader.read(step.packet);
        std::vector<Cell> row{std::to_string(step.number), timeText(step.time, options.time),
                              Cell::of('+' + readableDuration(step.time - before), std::to_string(step.time - before))};
        if (hasConnections) row.push_back(step.connection ? step.connection->way() : "");
        row.push_back(reader.descriptor().name());
        row.push_back(describe(reader, options.display));
        table.add(row);
        before = step.time;
    }
    return table;
}

std::string traceLines(const std::vector<Trace::Step>& steps, const ScanOptions& options) {
    std::string text;
    MessageReader reader(options.policy);
    int64_t before = steps.empty() ? 0 : steps.front().time;
    for (const Trace::Step& step : steps) {
        reader.read(step.packet);
        MessageLineWriter line(text);
        line.time(step.time, options.time);
        line.message(reader, options.display);
        line.member("packet", std::to_string(step.number));
        line.member("gap", std::to_string(step.time - before));
        if (step.connection) line.member("connection", '"' + step.connection->way() + '"');
        line.end();
        before = step.time;
    }
    return text;
}

} // namespace qlproto
