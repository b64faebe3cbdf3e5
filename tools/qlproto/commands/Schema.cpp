// qlproto schema: the protocol as JSON, for generators and checkers in other languages.
//
//     {"protocol": name, "version": …, "signature": …,
//      "enumerations": [{"name", "values": [{"name", "value"}]}],
//      "records":      [{"name", "fields": [field]}],
//      "messages":     [{"name", "id", "fields": [field]}]}
//
//     field: {"name", "type", "encoding", "element" (of a vector: {"type", "encoding"}), "secret" (where true)}
//
// Everything stands in declaration order, which for fields is wire order; the same protocol gives the same bytes.
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/WireForm.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

using Json = nlohmann::ordered_json;

Json valueJson(const Inspect::ValueInfo& value) {
    return {{"type", type_text(value)}, {"encoding", wireForm(value).name}};
}

Json fieldsJson(const Inspect::TypeInfo& type) {
    Json fields = Json::array();
    for (const Inspect::FieldInfo& field : type.fields) {
        Json json = {{"name", field.name}};
        json.update(valueJson(field.value));
        if (field.value.element != nullptr) json["element"] = valueJson(*field.value.element);
        if (field.isSecret) json["secret"] = true;
        fields.push_back(std::move(json));
    }
    return fields;
}

Json schemaJson() {
    Json enumerations = Json::array(), records = Json::array(), messages = Json::array();
    for (const Inspect::EnumerationInfo* enumeration : Inspect::all_enumerations()) {
        Json values = Json::array();
        for (const auto& [name, value] : enumeration->enumerators) values.push_back({{"name", name}, {"value", value}});
        enumerations.push_back({{"name", enumeration->name}, {"values", std::move(values)}});
    }
    for (const Inspect::TypeInfo* record : Inspect::all_records())
        records.push_back({{"name", record->name}, {"fields", fieldsJson(*record)}});
    for (const auto& [id, type] : Inspect::all_messages())
        messages.push_back({{"name", type->name}, {"id", id}, {"fields", fieldsJson(*type)}});
    return {{"protocol", Quillon::__protocol->getName()},
            {"version", Quillon::VERSION},
            {"signature", Quillon::__protocol->getSignature()},
            {"enumerations", std::move(enumerations)},
            {"records", std::move(records)},
            {"messages", std::move(messages)}};
}

int schema() {
    Capture::writeText(schemaJson().dump(1) + "\n");
    return EXIT_FINE;
}

} // namespace

void addSchema(CLI::App& app, Commands& commands) {
    CLI::App* const command =
        app.add_subcommand("schema", "Print the protocol as JSON: enumerations, records, messages, fields, encodings");
    command->footer("Examples:\n  qlproto schema\n  qlproto schema | python3 -m json.tool");
    commands.push_back({command, schema});
}

} // namespace qlproto
