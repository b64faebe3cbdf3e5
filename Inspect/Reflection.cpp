#include "Inspect/Reflection.h"

#include <algorithm>

#include "Inspect/BodyWalk.h"

namespace Inspect {

bool holds_secret(const TypeInfo& type) {
    return std::ranges::any_of(type.fields, [](const FieldInfo& field) {
        const ValueInfo& value = field.value.element != nullptr ? *field.value.element : field.value;
        return field.isSecret || (value.record != nullptr && holds_secret(*value.record));
    });
}

std::string type_text(const ValueInfo& value) {
    static constexpr const char* names[] = {
        "bool",   "int8",   "int16",        "int32",        "int64",        "price",       "uint8",
        "uint16", "uint32", "uint64",       "uint16_fixed", "uint32_fixed", "int64_fixed", "float4",
        "float8", "string", "string_fixed", "cryptstring",  "padding",      "blob",        "cryptblob"};
    switch (value.kind) {
    case Kind::enumeration:
        return std::string(value.enumeration->name);
    case Kind::record:
        return std::string(value.record->name);
    case Kind::vector:
        return type_text(*value.element) + "[]";
    default:
        return names[static_cast<size_t>(value.kind)];
    }
}

std::string path_at(const TypeInfo& type, std::string_view body, size_t offset) {
    const size_t target = std::min(offset, body.size());
    std::string path;
    walk_body(type, body, [&](const BodyValue& value) {
        if (value.begin != target && value.end <= target) return true;
        path = value.path;
        return false;
    });
    return path;
}

} // namespace Inspect
