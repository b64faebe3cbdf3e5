// qlproto enum: the names and values of an enumeration.
#include <memory>

#include <fmt/format.h>

#include "Capture/Output.h"
#include "tools/qlproto/Tool.h"
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
    const Inspect::EnumerationInfo& enumeration = *findEnumeration(name);
    for (const Inspect::EnumeratorInfo& it : enumeration.enumerators) {
        std::string note(it.doc);
        const auto add = [&](const std::string& text) { note += (note.empty() ? "" : "; ") + text; };
        // Deliberate: such a value loses its high byte, which peers have come to rely on.
        if (it.value > 0xFF) add(fmt::format("travels as its low byte, {}", it.value & 0xFF));
        if (!it.deprecated.empty()) add(fmt::format("deprecated: {}", it.deprecated));
        table.add({fmt::format("{}", it.value), std::string(it.name), note});
    }
    Capture::writeText(table.text());
    if (!enumeration.deprecated.empty()) Capture::writeText(fmt::format("Deprecated: {}.\n", enumeration.deprecated));
    return EXIT_FINE;
}

int listEnumerations() {
    std::string names;
    for (const Inspect::EnumerationInfo* enumeration : Inspect::all_enumerations(thisTool.protocol))
        names.append(enumeration->name) += '\n';
    Capture::writeText(names);
    return EXIT_FINE;
}

} // namespace

void addEnum(CLI::App& app, Commands& commands) {
    const auto name = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("enum", "Show the values of an enumeration, or name all enumerations");
    command->add_option("name", *name, "The enumeration; all are named if it is left out")->check(isEnumeration());
    addExamples(*command, "", {"$tool enum"});
    commands.push_back({command, [name] { return name->empty() ? listEnumerations() : showEnumeration(*name); }});
}

} // namespace qlproto
