// qlproto describe: the fields of a message or record, those of the records in it indented below.
#include <memory>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/messages/WireForm.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

void addFields(Table& table, const Inspect::TypeInfo& type, std::size_t depth) {
    for (const Inspect::FieldInfo& field : type.fields) {
        const WireForm form = wireForm(field.value);
        std::string encoding = form.text;
        if (field.isSecret) encoding += "; secret";
        table.add(
            {std::string(2 * depth, ' ') + std::string(field.name), type_text(field.value), sizeText(form), encoding});
        const Inspect::ValueInfo& inner = field.value.element != nullptr ? *field.value.element : field.value;
        if (inner.record != nullptr) addFields(table, *inner.record, depth + 1);
    }
}

int describe(const std::string& name) {
    const NamedType found = findType(name);
    const std::string kind = found.id ? fmt::format("message {} (0x{:04X})", *found.id, *found.id) : "record";
    using enum Table::Align;
    Table table({left, left, left, left});
    table.add({"field", "type", "bytes", "encoding"});
    addFields(table, *found.type, 0);

    Capture::writeText(fmt::format("{}: {}, {}, {} bytes on the wire, {} in memory without what it owns\n\n{}",
                                   found.type->name, kind, Capture::counted(found.type->fields.size(), "field"),
                                   sizeText(wireForm(*found.type)), found.type->memorySize, table.text(2)));
    return EXIT_FINE;
}

} // namespace

void addDescribe(CLI::App& app, Commands& commands) {
    const auto name = std::make_shared<std::string>();
    CLI::App* const command =
        app.add_subcommand("describe", "Show the fields of a message or record: types, sizes, encodings");
    command->add_option("name", *name, "A message by name or identifier, or a record by name")
        ->required()
        ->check(isType());
    command->footer("Examples:\n"
                    "  qlproto describe SubmitOrderMessage\n"
                    "  qlproto describe 0xD024\n"
                    "  qlproto describe MDEntry");
    commands.push_back({command, [name] { return describe(*name); }});
}

} // namespace qlproto
