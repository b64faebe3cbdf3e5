// qlproto enum: the names and values of an enumeration.
#include <memory>

#include <fmt/format.h>

#include "Capture/Output.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

int showEnumeration(const std::string& name) {
    using enum Table::Align;
    Table table({right, left, left});
    table.add({"value", "name"});
    for (const auto& [enumerator, value] : findEnumeration(name)->enumerators) {
        // Deliberate: such a value loses its high byte, which peers have come to rely on.
        const std::string note = value > 0xFF ? fmt::format("travels as its low byte, {}", value & 0xFF) : "";
        table.add({fmt::format("{}", value), std::string(enumerator), note});
    }
    Capture::writeText(table.text());
    return EXIT_FINE;
}

int listEnumerations() {
    std::string names;
    for (const Inspect::EnumerationInfo* enumeration : Inspect::all_enumerations())
        names.append(enumeration->name) += '\n';
    Capture::writeText(names);
    return EXIT_FINE;
}

} // namespace

void addEnum(CLI::App& app, Commands& commands) {
    const auto name = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("enum", "Show the values of an enumeration, or name all enumerations");
    command->add_option("name", *name, "The enumeration; all are named if it is left out")->check(isEnumeration());
    command->footer("Examples:\n  qlproto enum Side\n  qlproto enum");
    commands.push_back({command, [name] { return name->empty() ? listEnumerations() : showEnumeration(*name); }});
}

} // namespace qlproto
