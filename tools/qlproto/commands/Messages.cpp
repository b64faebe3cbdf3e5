// qlproto messages: what the protocol consists of, at a glance.
#include <memory>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

std::string asTable() {
    using enum Table::Align;
    Table table({right, left, left, right, right});
    table.add({"id", "hex", "message", "fields", "bytes"});
    for (const auto& [id, type] : Inspect::all_messages(thisTool.protocol))
        table.add({fmt::format("{}", id), fmt::format("0x{:04X}", id), std::string(type->name),
                   fmt::format("{}", type->fields.size()), fmt::format("{}", type->minimalSize)});
    return table.text();
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

int messages(bool isJson) {
    Capture::writeText(isJson ? asJson() : asTable());
    return EXIT_FINE;
}

} // namespace

void addMessages(CLI::App& app, Commands& commands) {
    const auto isJson = std::make_shared<bool>(false);
    CLI::App* const command =
        app.add_subcommand("messages", "List all messages: identifier, name, fields, fewest bytes of a body");
    command->add_flag("--json", *isJson, "As an array of JSON objects");
    addExamples(*command, "", {"$tool messages", "$tool messages --json"});
    commands.push_back({command, [isJson] { return messages(*isJson); }});
}

} // namespace qlproto
