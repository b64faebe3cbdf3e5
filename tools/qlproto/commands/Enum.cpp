// qlproto enum: the names and values of an enumeration.
#include <memory>

#include <fmt/format.h>

#include "Capture/Output.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

struct EnumOptions {
    std::string name;
    TableForm form;
};

int showEnumeration(const EnumOptions& options) {
    using enum Table::Align;
    Table table({right, left, left});
    table.add({"value", "name", Cell::of("", "note")});
    const Inspect::EnumerationInfo& enumeration = *findEnumeration(options.name);
    for (const Inspect::EnumeratorInfo& it : enumeration.enumerators) {
        std::string note(it.doc);
        const auto add = [&](const std::string& text) { note += (note.empty() ? "" : "; ") + text; };
        // Deliberate: such a value loses its high byte, which peers have come to rely on.
        if (it.value > 0xFF) add(fmt::format("travels as its low byte, {}", it.value & 0xFF));
        if (!it.deprecated.empty()) add(fmt::format("deprecated: {}", it.deprecated));
        table.add({fmt::format("{}", it.value), std::string(it.name), note});
    }
    Capture::writeText(inForm(options.form, [&] { return table; }));
    if (options.form == TableForm::table && !enumeration.deprecated.empty())
        Capture::writeText(fmt::format("Deprecated: {}.\n", enumeration.deprecated));
    return EXIT_FINE;
}

int listEnumerations(TableForm form) {
    Table table({Table::Align::left});
    if (form != TableForm::table) table.add({"enumeration"});
    for (const Inspect::EnumerationInfo* enumeration : Inspect::all_enumerations(thisTool.protocol))
        table.add({std::string(enumeration->name)});
    Capture::writeText(inForm(form, [&] { return table; }));
    return EXIT_FINE;
}

} // namespace

void addEnum(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<EnumOptions>();
    CLI::App* const command = app.add_subcommand("enum", "Show the values of an enumeration, or name all enumerations");
    command->add_option("name", options->name, "The enumeration; all are named if it is left out")
        ->check(isEnumeration());
    addTableForm(*command, options->form);
    addExamples(*command, "", {"$tool enum"});
    commands.push_back({command, [options] {
                            return options->name.empty() ? listEnumerations(options->form) : showEnumeration(*options);
                        }});
}

} // namespace qlproto
