// QLProtocol.fields.h: the lists that operations walk, one line per entry.
//
//     void enumerators(of<Side>, visit)      visit("BID", Side::BID); ...
//     bool fields(of<MDEntry>, visit)        visit("price", &MDEntry::price, Velmora::price) && ...
//     bool secrets(of<Login>, visit)         visit(&Login::password) && ...            where a type has secrets
//     bool records(visit)                    visit(Velmora::of<MDEntry>{}, "MDEntry") && ...
#include "generator/Emit.h"

#include <algorithm>

namespace qlgen {
namespace {

void addEnumerators(Text& text, const Enumeration& enumeration) {
    text.add(R"(
template <class Visit>
constexpr void enumerators(Velmora::of<$T>, Visit&& visit) {
)",
             {{"T", enumeration.name}});
    for (const Enumerator& enumerator : enumeration.enumerators)
        text.add("    visit(\"$name\", $T::$name);\n", {{"T", enumeration.name}, {"name", enumerator.name}});
    text.add("}\n");
}

void addFields(Text& text, const Composite& type) {
    text.add(R"(
template <class Visit>
QL_FORCE_INLINE constexpr bool fields(Velmora::of<$T>, Visit&& visit) {
)",
             {{"T", type.name}});
    const char* before = "    return ";
    for (const Field& field : type.fields) {
        text.add(before);
        text.add("visit(\"$name\", &$T::$name, Velmora::$encoding)",
                 {{"T", type.name}, {"name", field.name}, {"encoding", field.encoding}});
        before = "\n           && ";
    }
    text.add(";\n}\n");
}

void addSecrets(Text& text, const Composite& type) {
    if (std::ranges::none_of(type.fields, &Field::isSecret)) return;
    text.add(R"(
template <class Visit>
constexpr bool secrets(Velmora::of<$T>, Visit&& visit) {
)",
             {{"T", type.name}});
    const char* before = "    return ";
    for (const Field& field : type.fields) {
        if (!field.isSecret) continue;
        text.add(before);
        text.add("visit(&$T::$name)", {{"T", type.name}, {"name", field.name}});
        before = "\n           && ";
    }
    text.add(";\n}\n");
}

template <class Types>
void addList(Text& text, const char* name, const Types& types) {
    text.add(R"(
template <class Visit>
constexpr bool $name(Visit&&$visit) {
)",
             {{"name", name}, {"visit", types.empty() ? "" : " visit"}});
    if (types.empty()) return text.add("    return true;\n}\n");
    const char* before = "    return ";
    for (const auto& type : types) {
        text.add(before);
        text.add("visit(Velmora::of<$T>{}, \"$T\")", {{"T", type.name}});
        before = "\n           && ";
    }
    text.add(";\n}\n");
}

} // namespace

std::string emitFields(const Definition& definition) {
    Text text(definition);
    text.add(R"(//
// What the protocol consists of, as lists to walk: the enumerators of an enumeration, the fields of a record or
// message, those of them that are secret (for types that have some), and the types themselves. Every entry is one call
// of `visit`; where that returns a bool, false ends the walk, and the list returns whether it was walked to its end.
// For the sources that work over all types; the others need $stem.h only.
#pragma once

#include "Backend/Common/Inline.h"
#include "Backend/Velmora/FieldList.h"
#include "$folder/$stem.h"
)");
    text.open();
    text.add(hideMacros(definition));
    for (const Enumeration& enumeration : definition.enumerations) addEnumerators(text, enumeration);
    text.add(restoreMacros(definition));
    for (const Composite* type : composites(definition)) addFields(text, *type);
    for (const Composite* type : composites(definition)) addSecrets(text, *type);
    addList(text, "enumerations", definition.enumerations);
    addList(text, "records", definition.records);
    addList(text, "messages", definition.messages);
    return text.close();
}

} // namespace qlgen
