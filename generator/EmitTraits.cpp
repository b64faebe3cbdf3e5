// QLProtocol.traits.h: the protocol as a type, and what its definition says beyond names and types.
//
//     struct QLProtocolTraits { ... };
//
//     constexpr Velmora::TypeNotes typeNotes(Velmora::of<Side>) { return {"Side", "A side.", ""}; }
//     constexpr std::array<Velmora::FieldNotes, 2> fieldNotes(Velmora::of<Pair>) {
//         return {{
//             {.doc = "a side"},
//             {.doc = "a size", .isSecret = true},
//         }};
//     }
#include <fmt/format.h>

#include "generator/Emit.h"
#include "generator/Signature.h"

namespace qlgen {
namespace {

template <class Type>
void addTypeNotes(Text& text, const Type& type) {
    text.add(R"(
constexpr Velmora::TypeNotes typeNotes(Velmora::of<$T>) {
    return {"$T", $doc, $deprecated};
}
)",
             {{"T", type.name}, {"doc", literal(type.doc)}, {"deprecated", literal(type.deprecated)}});
}

/// ", .name = "value"", or nothing.
std::string note(const char* name, const std::string& value) {
    return value.empty() ? "" : fmt::format(", .{} = {}", name, literal(value));
}

void addNotes(Text& text, const Enumeration& enumeration) {
    addTypeNotes(text, enumeration);
    text.add(
        "constexpr std::array<Velmora::EnumeratorNotes, $count> enumeratorNotes(Velmora::of<$T>) {\n    return {{\n",
        {{"count", fmt::to_string(enumeration.enumerators.size())}, {"T", enumeration.name}});
    for (const Enumerator& it : enumeration.enumerators)
        text.add("        {.doc = $doc$deprecated},\n",
                 {{"doc", literal(it.doc)}, {"deprecated", note("deprecated", it.deprecated)}});
    text.add("    }};\n}\n");
}

void addNotes(Text& text, const Composite& type) {
    addTypeNotes(text, type);
    text.add("constexpr std::array<Velmora::FieldNotes, $count> fieldNotes(Velmora::of<$T>) {\n    return {{\n",
             {{"count", fmt::to_string(type.fields.size())}, {"T", type.name}});
    for (const Field& field : type.fields)
        text.add("        {.doc = $doc$more},\n",
                 {{"doc", literal(field.doc)},
                  {"more", note("deprecated", field.deprecated) + note("identifies", field.identifies)
                               + note("station", field.station) + (field.isSecret ? ", .isSecret = true" : "")}});
    text.add("    }};\n}\n");
}

} // namespace

std::string emitTraits(const Definition& definition) {
    Text text(definition);
    text.add(R"(//
// The protocol as a type, for code that works with any protocol, and what the definition says about types, fields and
// enumerators beyond what hosts need to build; see Backend/Velmora/Notes.h.
#pragma once

#include <array>
#include <cstddef>

#include "Backend/Velmora/Notes.h"
#include "$folder/$stem.fields.h"
)");
    text.open();
    text.add(R"(
/// All members are static: the type is a template argument, never an object.
struct $stemTraits {
    static constexpr const char* NAME = "$name";
    static constexpr int VERSION = $version;
    static constexpr const char* SIGNATURE = "$signature";
    static constexpr const char* SIGNATURE_API = "$API";
    static constexpr const char* SIGNATURE_STORAGE = "$storage";
    // Derived from the definition, whatever it gives as its signatures: of what bodies depend on, and of names.
    static constexpr const char* WIRE_SIGNATURE = "$wire";
    static constexpr const char* NAMES_SIGNATURE = "$names";
    /// The INDEX of each message is below this.
    static constexpr size_t MESSAGES = $messages;
    /// No two identifiers are the same modulo this.
    static constexpr size_t MODULUS = $modulus;

    // Each calls `visit(Velmora::of<T>{}, name)` for its types in order until a call returns false, and returns whether
    // all were visited. Messages come in the order of INDEX.

    template <class Visit>
    static constexpr bool enumerations(Visit&& visit) {
        return ::$namespace::enumerations(visit);
    }
    template <class Visit>
    static constexpr bool records(Visit&& visit) {
        return ::$namespace::records(visit);
    }
    template <class Visit>
    static constexpr bool messages(Visit&& visit) {
        return ::$namespace::messages(visit);
    }

    static void initialize() { ::$namespace::initialize(); }
    static void finalize() { ::$namespace::finalize(); }
    static MsgProtocol* instance() { return __protocol; } ///< null before initialize() and after finalize()
};
)",
             {{"stemTraits", definition.stem + "Traits"},
              {"name", definition.name},
              {"version", fmt::to_string(definition.version)},
              {"signature", definition.signature},
              {"API", definition.signatureAPI},
              {"storage", definition.signatureStorage},
              {"wire", signatureOf(canonicalWire(definition))},
              {"names", signatureOf(canonicalNames(definition))},
              {"messages", fmt::to_string(definition.messages.size())},
              {"modulus", fmt::to_string(definition.slots)}});
    for (const Enumeration& enumeration : definition.enumerations) addNotes(text, enumeration);
    for (const Composite* type : composites(definition)) addNotes(text, *type);
    return text.close();
}

} // namespace qlgen
