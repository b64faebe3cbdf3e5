// Catalogue.md: the protocol for reading and looking up, every type with a heading to link to.
//
//     ### SubmitOrderMessage
//
//     An order is submitted. Identifier `0xD024` (53284).
//
//     | # | field | type | on the wire | meaning |
//     |---:|---|---|---|---|
//     | 1 | `userID` | int32 | zig-zag varint | identifier of the user |
#include "generator/Emit.h"

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

namespace qlgen {
namespace {

/// To the heading of that name, as forges make its anchor.
std::string link(const std::string& heading, const std::string& page = "") {
    std::string anchor = heading;
    for (char& c : anchor) c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return fmt::format("[{}]({}#{})", heading, page, anchor);
}

std::string formLink(const std::string& form) { return link(form, "../../docs/wire-format.md"); }

/// The type alone: of a vector's elements, and without what C++ adds.
std::string bareType(const Field& field) {
    std::string type = field.cppType;
    if (const size_t open = type.find('<'); open != type.npos) type = type.substr(open + 1, type.size() - open - 2);
    if (type.ends_with("::Type")) type.resize(type.size() - 6);
    return type;
}

bool isVector(const Field& field) { return field.cppType.ends_with('>'); }

struct WireForm {
    const char* type;
    const char* form;
};

/// As docs/wire-format.md names it; both are null for a type of the protocol's own.
WireForm wireForm(const Field& field) {
    const std::string type = bareType(field);
    if (field.encoding == "price") return {"price", "special varint"};
    if (field.encoding == "crypt") return {"string", "enciphered string"};
    if (field.encoding == "padding") return {"string", "padding"};
    if (type == "bufstring") return {"string", "string"};
    if (type == "bool") return {"bool", "byte"};
    if (type == "int8_t") return {"int8", "byte"};
    if (type == "int16_t") return {"int16", "zig-zag varint"};
    if (type == "int32_t" || type == "int") return {"int32", "zig-zag varint"};
    if (type == "int64_t") return {"int64", "zig-zag varint"};
    return {nullptr, nullptr};
}

std::string fieldLine(size_t number, const Field& field, const Definition& definition) {
    const std::string bare = bareType(field);
    const bool isEnumeration =
        std::ranges::find(definition.enumerations, bare, &Enumeration::name) != definition.enumerations.end();
    const WireForm known = wireForm(field);
    std::string type = known.type != nullptr ? known.type : link(bare);
    std::string form = known.form != nullptr ? formLink(known.form) : isEnumeration ? formLink("byte") : "its fields";
    if (isVector(field)) {
        type += "[]";
        form = formLink("count") + ", then each: " + form;
    }
    return fmt::format("| {} | `{}` | {} | {} | {}{} |\n", number, field.name, type, form, field.doc,
                       field.isSecret ? "; secret" : "");
}

void addFields(std::string& page, const Composite& type, const Definition& definition) {
    page += "| # | field | type | on the wire | meaning |\n|---:|---|---|---|---|\n";
    size_t number = 0;
    for (const Field& field : type.fields) page += fieldLine(++number, field, definition);
}

/// "Used by A, B.", or nothing.
std::string users(const std::string& name, const Definition& definition) {
    std::string links;
    for (const Composite* type : composites(definition))
        if (std::ranges::any_of(type->fields, [&](const Field& field) { return bareType(field) == name; }))
            links += (links.empty() ? "" : ", ") + link(type->name);
    return links.empty() ? "" : fmt::format("Used by {}.\n\n", links);
}

} // namespace

std::string emitCatalogue(const Definition& definition) {
    std::string page = fmt::format(
        R"(<!-- Generated from protocol/QLProtocol.xml by qlgen. Do not edit. -->
# Catalogue of the protocol {}

What there is on the wire: {} messages, made of {} records and {} enumerations. The fields travel one after the other in the
order shown, with nothing before, between or after them; the identifier of a message travels beside its body. The forms are
explained in [the wire format](../../docs/wire-format.md).

| identifier | message | meaning |
|---|---|---|
)",
        definition.name, definition.messages.size(), definition.records.size(), definition.enumerations.size());
    for (const Composite& message : definition.messages)
        page += fmt::format("| `0x{:04X}` | {} | {} |\n", message.id, link(message.name), message.doc);

    page += "\n## Messages\n";
    for (const Composite& message : definition.messages) {
        page += fmt::format("\n### {}\n\n{} Identifier `0x{:04X}` ({}).\n\n", message.name, message.doc, message.id,
                            message.id);
        addFields(page, message, definition);
    }
    page += "\n## Records\n";
    for (const Composite& record : definition.records) {
        page += fmt::format("\n### {}\n\n{}\n\n{}", record.name, record.doc, users(record.name, definition));
        addFields(page, record, definition);
    }
    page += "\n## Enumerations\n";
    for (const Enumeration& enumeration : definition.enumerations) {
        page += fmt::format("\n### {}\n\n{}\n\n{}| value | name |\n|---:|---|\n", enumeration.name, enumeration.doc,
                            users(enumeration.name, definition));
        for (const Enumerator& it : enumeration.enumerators) page += fmt::format("| {} | `{}` |\n", it.value, it.name);
    }
    return page;
}

} // namespace qlgen
