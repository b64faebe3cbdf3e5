// qlproto schema: the protocol as JSON, for generators and checkers in other languages.
//
//     {"protocol": name, "version": …, "signature": …,
//      "enumerations": [{"name", notes, "values": [{"name", "value", notes}]}],
//      "records":      [{"name", notes, "fields": [field]}],
//      "messages":     [{"name", "id", notes, "fields": [field]}]}
//
//     field: {"name", "type", "encoding", "element" (of a vector: {"type", "encoding"}), "secret" (where true), notes,
//             "identifies", "station"}
//     notes: "doc", "deprecated" (why); these, and marks, are left out where the definition says nothing
//
// Everything stands in declaration order, which for fields is wire order; the same protocol gives the same bytes.
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/WireForm.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

using Json = nlohmann::ordered_json;

Json valueJson(const Inspect::ValueInfo& value) {
    return {{"type", type_text(value)}, {"encoding", wireForm(value).name}};
}

void addText(Json& json, const char* name, std::string_view text) {
    if (!text.empty()) json[name] = text;
}

/// `json`, with what the definition says of it for people.
template <class Info>
Json noted(Json json, const Info& info) {
    addText(json, "doc", info.doc);
    addText(json, "deprecated", info.deprecated);
    return json;
}

Json fieldsJson(const Inspect::TypeInfo& type) {
    Json fields = Json::array();
    for (const Inspect::FieldInfo& field : type.fields) {
        Json json = {{"name", field.name}};
        json.update(valueJson(field.value));
        if (field.value.element != nullptr) json["element"] = valueJson(*field.value.element);
        if (field.isSecret) json["secret"] = true;
        json = noted(std::move(json), field);
        addText(json, "identifies", field.identifies);
        addText(json, "station", field.station);
        fields.push_back(std::move(json));
    }
    return fields;
}

Json schemaJson() {
    Json enumerations = Json::array(), records = Json::array(), messages = Json::array();
    for (const Inspect::EnumerationInfo* enumeration : Inspect::all_enumerations(thisTool.protocol)) {
        Json values = Json::array();
        for (const Inspect::EnumeratorInfo& it : enumeration->enumerators)
            values.push_back(noted({{"name", it.name}, {"value", it.value}}, it));
        enumerations.push_back(noted({{"name", enumeration->name}}, *enumeration));
        enumerations.back()["values"] = std::move(values);
    }
    for (const Inspect::TypeInfo* record : Inspect::all_records(thisTool.protocol)) {
        records.push_back(noted({{"name", record->name}}, *record));
        records.back()["fields"] = fieldsJson(*record);
    }
    for (const auto& [id, type] : Inspect::all_messages(thisTool.protocol)) {
        messages.push_back(noted({{"name", type->name}, {"id", id}}, *type));
        messages.back()["fields"] = fieldsJson(*type);
    }
    return {{"protocol", thisTool.protocol.name},
            {"version", thisTool.protocol.version},
            {"signature", thisTool.protocol.signature},
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
    addExamples(*command, "", {"$tool schema", "$tool schema | grep -c secret"});
    commands.push_back({command, schema});
}

} // namespace qlproto
