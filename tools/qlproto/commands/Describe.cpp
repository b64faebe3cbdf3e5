// qlproto describe: the fields of a message or record, those of the records in it indented below; and what its own mean.
#include <memory>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/messages/WireForm.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

struct DescribeOptions {
    std::string name;
    TableForm form;
};

/// Those of a record in it after their own, by their whole path for programs.
void addFields(Table& table, const Inspect::TypeInfo& type, std::size_t depth, const std::string& outer = "") {
    for (const Inspect::FieldInfo& field : type.fields) {
        const WireForm form = wireForm(field.value);
        std::string encoding = form.text;
        if (field.isSecret) encoding += "; secret";
        const std::string path = outer + std::string(field.name);
        table.add({Cell::of(std::string(2 * depth, ' ') + std::string(field.name), path), type_text(field.value),
                   sizeText(form), encoding});
        const Inspect::ValueInfo& inner = field.value.element != nullptr ? *field.value.element : field.value;
        const char* const element = field.value.element != nullptr ? "[]." : ".";
        if (inner.record != nullptr) addFields(table, *inner.record, depth + 1, path + element);
    }
}

/// "who says it; identifies: user; deprecated: use another", as in the catalogue; empty where nothing is said.
std::string meaningOf(const Inspect::FieldInfo& field) {
    std::string meaning(field.doc);
    for (const auto& [mark, value] :
         {std::pair{"identifies", field.identifies}, {"station", field.station}, {"deprecated", field.deprecated}})
        if (!value.empty()) meaning += fmt::format("{}{}: {}", meaning.empty() ? "" : "; ", mark, value);
    return meaning;
}

/// A table of the fields of which the definition says something; nothing if there are none.
std::string meaningsText(const Inspect::TypeInfo& type) {
    using enum Table::Align;
    Table table({left, left});
    table.add({"field", "meaning"});
    bool isAny = false;
    for (const Inspect::FieldInfo& field : type.fields)
        if (std::string meaning = meaningOf(field); !meaning.empty()) {
            table.add({std::string(field.name), std::move(meaning)});
            isAny = true;
        }
    return isAny ? "\n" + table.text(2) : "";
}

/// What the definition says of the type as a whole: a line, or nothing.
std::string aboutText(const Inspect::TypeInfo& type) {
    std::string line(type.doc);
    if (!type.deprecated.empty()) line += fmt::format("{}Deprecated: {}.", line.empty() ? "" : " ", type.deprecated);
    return line.empty() ? line : line + '\n';
}

int describe(const DescribeOptions& options) {
    const NamedType found = findType(options.name);
    const std::string kind = found.id ? fmt::format("message {} (0x{:04X})", *found.id, *found.id) : "record";
    using enum Table::Align;
    Table table({left, left, left, left});
    table.add({"field", "type", "bytes", "encoding"});
    addFields(table, *found.type, 0);
    if (options.form != TableForm::table) {
        Capture::writeText(inForm(options.form, [&] { return table; }));
        return EXIT_FINE;
    }
    Capture::writeText(fmt::format("{}: {}, {}, {} bytes on the wire, {} in memory without what it owns\n{}\n{}{}",
                                   found.type->name, kind, Capture::counted(found.type->fields.size(), "field"),
                                   sizeText(wireForm(*found.type)), found.type->memorySize, aboutText(*found.type),
                                   table.text(2), meaningsText(*found.type)));
    return EXIT_FINE;
}

} // namespace

void addDescribe(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<DescribeOptions>();
    CLI::App* const command =
        app.add_subcommand("describe", "Show the fields of a message or record: types, sizes, encodings");
    command->add_option("name", options->name, "A message by name or identifier, or a record by name")
        ->required()
        ->check(isType());
    addTableForm(*command, options->form);
    addExamples(*command, "", {"$tool describe $message"});
    commands.push_back({command, [options] { return describe(*options); }});
}

} // namespace qlproto
