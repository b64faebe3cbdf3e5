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
#include <map>
#include <set>

#include <fmt/format.h>

namespace qlgen {
namespace {

/// To the heading of that name, as forges make its anchor.
std::string link(const std::string& heading, const std::string& page = "") {
    std::string anchor = heading;
    for (char& c : anchor) c = c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return fmt::format("[{}]({}#{})", heading, page, anchor);
}

/// Whether the catalogue can link to the project's own pages.
bool liesBesideDocs(const Definition& definition) { return definition.folder == "generated/QLProtocol"; }

/// To a section of docs/wire-format.md; the name alone in the catalogue of a protocol that lies elsewhere.
std::string formLink(const std::string& form, const Definition& definition) {
    return liesBesideDocs(definition) ? link(form, "../../docs/wire-format.md") : form;
}

std::string formName(const LogicalType& type) {
    switch (type.form) {
    case WireForm::boolean:
    case WireForm::byte:
        return "byte";
    case WireForm::zigzag:
        return "zig-zag varint";
    case WireForm::varint:
        return "plain varint";
    case WireForm::special:
        return "special varint";
    case WireForm::fixed:
        return "fixed number";
    case WireForm::text:
        return type.isEnciphered ? "enciphered string" : "string";
    case WireForm::fixedText:
        return "fixed string";
    case WireForm::padding:
        return "padding";
    }
    return "";
}

/// What the values are, whatever their form: "string" also of those that travel enciphered.
std::string shownType(const LogicalType& type) {
    switch (type.kind) {
    case ValueKind::text:
        return "string";
    case ValueKind::bytes:
        return "blob";
    default:
        return std::string(type.name.substr(0, type.name.find('_')));
    }
}

/// A text for a cell of a table.
std::string cell(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '|') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

/// The doc of a type, and whether it is deprecated.
template <class Type>
std::string noted(const Type& type) {
    return type.deprecated.empty() ? type.doc : fmt::format("{} Deprecated: {}.", type.doc, type.deprecated);
}

std::string fieldLine(size_t number, const Field& field, const Definition& definition) {
    const LogicalType* const logical = field.type.logical;
    std::string type = logical != nullptr ? shownType(*logical) : link(field.type.name);
    std::string form =
        field.type.isRecord ? "its fields" : formLink(logical != nullptr ? formName(*logical) : "byte", definition);
    if (field.type.isVector) {
        type += "[]";
        form = formLink("count", definition) + ", then each: " + form;
    }
    return fmt::format("| {} | `{}` | {} | {} | {} |\n", number, field.name, type, form, cell(notedDoc(field)));
}

void addFields(std::string& page, const Composite& type, const Definition& definition) {
    page += "| # | field | type | on the wire | meaning |\n|---:|---|---|---|---|\n";
    size_t number = 0;
    for (const Field& field : type.fields) page += fieldLine(++number, field, definition);
}

/// With a column for what they mean only where that is said of any.
void addEnumerators(std::string& page, const Enumeration& enumeration) {
    const bool isNoted =
        std::ranges::any_of(enumeration.enumerators, [](const Enumerator& it) { return !notedDoc(it).empty(); });
    page += isNoted ? "| value | name | meaning |\n|---:|---|---|\n" : "| value | name |\n|---:|---|\n";
    for (const Enumerator& it : enumeration.enumerators) {
        page += fmt::format("| {} | `{}` |", it.value, it.name);
        page += isNoted ? fmt::format(" {} |\n", cell(notedDoc(it))) : "\n";
    }
}

/// For each type of the definition's own, links to those that have fields of it: "A, B".
using Users = std::map<std::string, std::string>;
Users findUsers(const Definition& definition) {
    Users users;
    for (const Composite* type : composites(definition)) {
        std::set<std::string> used;
        for (const Field& field : type->fields)
            if (field.type.logical == nullptr && used.insert(field.type.name).second) {
                std::string& links = users[field.type.name];
                links += (links.empty() ? "" : ", ") + link(type->name);
            }
    }
    return users;
}

/// "Used by A, B.", or nothing.
std::string usedBy(const std::string& name, const Users& users) {
    const auto found = users.find(name);
    return found != users.end() ? fmt::format("Used by {}.\n\n", found->second) : "";
}

} // namespace

std::string emitCatalogue(const Definition& definition) {
    std::string page = fmt::format(
        R"(<!-- Generated from {} by qlgen. Do not edit. -->
# Catalogue of the protocol {}

What there is on the wire: {} messages, made of {} records and {} enumerations. The fields travel one after the other in the
order shown, with nothing before, between or after them; the identifier of a message travels beside its body.{}

| identifier | message | meaning |
|---|---|---|
)",
        sourceText(definition), definition.name, definition.messages.size(), definition.records.size(),
        definition.enumerations.size(),
        liesBesideDocs(definition) ? " The forms are\nexplained in [the wire format](../../docs/wire-format.md)." : "");
    for (const Composite& message : definition.messages)
        page += fmt::format("| `0x{:04X}` | {} | {} |\n", message.id, link(message.name), cell(noted(message)));

    const Users users = findUsers(definition);
    page += "\n## Messages\n";
    for (const Composite& message : definition.messages) {
        page += fmt::format("\n### {}\n\n{} Identifier `0x{:04X}` ({}).\n\n", message.name, noted(message), message.id,
                            message.id);
        addFields(page, message, definition);
    }
    page += "\n## Records\n";
    for (const Composite& record : definition.records) {
        page += fmt::format("\n### {}\n\n{}\n\n{}", record.name, noted(record), usedBy(record.name, users));
        addFields(page, record, definition);
    }
    page += "\n## Enumerations\n";
    for (const Enumeration& enumeration : definition.enumerations) {
        page +=
            fmt::format("\n### {}\n\n{}\n\n{}", enumeration.name, noted(enumeration), usedBy(enumeration.name, users));
        addEnumerators(page, enumeration);
    }
    return page;
}

} // namespace qlgen
