// qlproto messages: what the protocol consists of, at a glance.
#include <memory>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

Table asTable() {
    using enum Table::Align;
    Table table({right, left, left, right, right});
    table.add({"id", "hex", "message", "fields", "bytes"});
    for (const auto& [id, type] : Inspect::all_messages(thisTool.protocol))
        table.add({fmt::format("{}", id), fmt::format("0x{:04X}", id), std::string(type->name),
                   fmt::format("{}", type->fields.size()), fmt::format("{}", type->minimalSize)});
    return table;
}

std::string asJson() {
    nlohmann::ordered_json messages = nlohmann::ordered_json::array();
    for (const auto& [id, type] : Inspect::all_messages(thisTool.protocol))
        messages.push_back({{"id", id},
                            {"hex", fmt::format("0x{:04X}", id)},
                            {"name", type->name},
                            {"fields", type->fields.size()},
                            {"minimalSize", type->minimalSize}});
    return messages.dump(2) + "\n";
}

int messages(TableForm form) {
    Capture::writeText(inForm(form, asTable, asJson));
    return EXIT_FINE;
}

} // namespace

void addMessages(CLI::App& app, Commands& commands) {
    const auto form = std::make_shared<TableForm>();
    CLI::App* const command =
        app.add_subcommand("messages", "List all messages: identifier, name, fields, fewest bytes of a body");
    addTableForm(*command, *form);
    addExamples(*command, "", {"$tool messages", "$tool messages --json"});
    commands.push_back({command, [form] { return messages(*form); }});
}

} // namespace qlproto
