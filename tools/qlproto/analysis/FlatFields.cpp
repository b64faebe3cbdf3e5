#include "tools/qlproto/analysis/FlatFields.h"

#include <nlohmann/json.hpp>

#include "Inspect/Json.h"
#include "Inspect/Reflection.h"

namespace qlproto {

namespace {

using Inspect::Kind;
using nlohmann::ordered_json;

class Flattener {
  public:
    std::vector<FlatField> fields;

    void record(const Inspect::TypeInfo& type, const ordered_json& json, const std::string& path, bool isSecret) {
        for (const Inspect::FieldInfo& field : type.fields) {
            const std::string name(field.name);
            value(field.value, json.at(name), path.empty() ? name : path + '.' + name, isSecret || field.isSecret);
        }
    }

  private:
    void value(const Inspect::ValueInfo& info, const ordered_json& json, const std::string& path, bool isSecret) {
        if (info.kind == Kind::record) return record(*info.record, json, path, isSecret);
        if (info.kind == Kind::vector && !json.empty()) {
            for (std::size_t i = 0; i < json.size(); ++i)
                value(*info.element, json[i], path + '[' + std::to_string(i) + ']', isSecret);
            return;
        }
        const bool isBare = json.is_string() && info.kind != Kind::string && info.kind != Kind::cryptstring
                            && info.kind != Kind::padding;
        const std::string text = isBare ? json.get<std::string>() : json.dump(-1, ' ', true);
        const bool isUnset = json.is_null() || json.empty() || json == 0 || json == false || json == "";
        fields.push_back({path, text, !isUnset, isSecret});
    }
};

} // namespace

std::vector<FlatField> flatFields(Velmora::MsgType_t id, const void* message) {
    Flattener flattener;
    flattener.record(*Inspect::reflect(id),
                     ordered_json::parse(Inspect::to_json(id, message, Inspect::Integers::numbers)), "", false);
    return std::move(flattener.fields);
}

} // namespace qlproto
