#include "generator/Emit.h"

#include <algorithm>
#include <set>

#include <fmt/format.h>

namespace qlgen {
namespace {

using Names = std::set<std::string>;

Names enumeratorNames(const Definition& definition) {
    Names names;
    for (const Enumeration& enumeration : definition.enumerations)
        for (const Enumerator& it : enumeration.enumerators) names.insert(it.name);
    return names;
}

/// Of types and fields, and those that the namespace is made of.
Names otherNames(const Definition& definition) {
    Names names;
    for (const Enumeration& enumeration : definition.enumerations) names.insert(enumeration.name);
    for (const Composite* type : composites(definition)) {
        names.insert(type->name);
        for (const Field& field : type->fields) names.insert(field.name);
    }
    const std::string& space = definition.cppNamespace;
    for (size_t begin = 0; begin < space.size();) {
        const size_t end = std::min(space.find(':', begin), space.size());
        names.insert(space.substr(begin, end - begin));
        begin = end + 2;
    }
    return names;
}

/// Names that are shielded from macros throughout a file: all, or of those that the definition lists what is no
/// enumerator.
Names shielded(const Definition& definition) {
    Names names = otherNames(definition);
    if (definition.macros)
        std::erase_if(names, [&](const std::string& name) { return !definition.macros->contains(name); });
    else
        names.merge(enumeratorNames(definition));
    names.erase("defined"); // no macro can be called that
    return names;
}

Names shieldedEnumerators(const Definition& definition) {
    Names names = enumeratorNames(definition);
    std::erase_if(names,
                  [&](const std::string& name) { return !definition.macros || !definition.macros->contains(name); });
    return names;
}

/// One line or more for each; `format` takes the name.
std::string perName(const Names& names, fmt::format_string<const std::string&> format) {
    std::string lines;
    for (const std::string& name : names) lines += fmt::format(format, name);
    return lines;
}

std::string hidden(const Names& names) { return perName(names, "#pragma push_macro(\"{0}\")\n#undef {0}\n"); }
std::string restored(const Names& names) { return perName(names, "#pragma pop_macro(\"{0}\")\n"); }

bool deprecatesAny(const Definition& definition) {
    const auto isDeprecated = [](const auto& it) { return !it.deprecated.empty(); };
    return std::ranges::any_of(definition.enumerations,
                               [&](const Enumeration& it) {
                                   return isDeprecated(it) || std::ranges::any_of(it.enumerators, isDeprecated);
                               })
           || std::ranges::any_of(composites(definition), [&](const Composite* it) {
                  return isDeprecated(*it) || std::ranges::any_of(it->fields, isDeprecated);
              });
}

/// Names of fields that are parameters of the members, too. The members mean the parameters.
bool hasFieldsLikeParameters(const Definition& definition) {
    static const Names parameters = {"alloc", "begin", "codec", "end", "other"};
    return std::ranges::any_of(composites(definition), [](const Composite* type) {
        return std::ranges::any_of(type->fields, [](const Field& field) { return parameters.contains(field.name); });
    });
}

/// Warnings that the files must not raise about what the definition asks for.
std::vector<std::string> silenced(const Definition& definition) {
    std::vector<std::string> warnings;
    if (deprecatesAny(definition)) warnings.push_back("-Wdeprecated-declarations");
    if (hasFieldsLikeParameters(definition)) warnings.push_back("-Wshadow");
    return warnings;
}

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

std::string deprecatedNote(const std::string& why) { return why.empty() ? "" : "; deprecated: " + why; }

} // namespace

std::string sourceText(const Definition& definition) {
    return definition.stem == "QLProtocol" ? "protocol/QLProtocol.xml"
                                           : fmt::format("the definition of the protocol {}", definition.name);
}

Text::Text(const Definition& definition)
    : _definition(definition),
      _text(fmt::format("// Generated from {} by qlgen. Do not edit.\n", sourceText(definition))) {}

void Text::add(std::string_view lines, std::initializer_list<Hole> holes) {
    const Hole common[] = {
        {"namespace", _definition.cppNamespace}, {"folder", _definition.folder}, {"stem", _definition.stem}};
    while (!lines.empty()) {
        const size_t mark = std::min(lines.find('$'), lines.size());
        _text += lines.substr(0, mark);
        lines.remove_prefix(mark);
        if (lines.empty()) break;
        lines.remove_prefix(1);
        const auto last = std::find_if_not(lines.begin(), lines.end(), isLetter);
        const std::string_view name = lines.substr(0, static_cast<size_t>(last - lines.begin()));
        const Hole* hole = std::ranges::find(holes, name, &Hole::name);
        if (hole == holes.end()) hole = std::ranges::find(common, name, &Hole::name);
        if (hole == std::end(common)) throw std::logic_error(fmt::format("nothing fills the hole ${}", name));
        _text += hole->value;
        lines.remove_prefix(name.size());
    }
}

void Text::guard() {
    if (const std::string lines = hidden(shielded(_definition)); !lines.empty())
        _text += "\n// Names that headers may define as macros.\n" + lines;
    if (const auto warnings = silenced(_definition); !warnings.empty()) {
        _text += "\n#pragma GCC diagnostic push\n";
        for (const std::string& warning : warnings)
            _text += fmt::format("#pragma GCC diagnostic ignored \"{}\"\n", warning);
    }
}

void Text::open() {
    guard();
    add("\nnamespace $namespace {\n");
}

std::string Text::close() {
    add("\n} // namespace $namespace\n");
    return unguard();
}

std::string Text::unguard() {
    if (!silenced(_definition).empty()) _text += "\n#pragma GCC diagnostic pop\n";
    if (const std::string lines = restored(shielded(_definition)); !lines.empty()) _text += "\n" + lines;
    return std::move(_text);
}

std::vector<const Composite*> composites(const Definition& definition) {
    std::vector<const Composite*> all;
    for (const Composite& record : definition.records) all.push_back(&record);
    for (const Composite& message : definition.messages) all.push_back(&message);
    return all;
}

std::string literal(const std::string& text) {
    std::string escaped = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped + '"';
}

std::string deprecatedAttribute(const std::string& why) {
    return why.empty() ? "" : fmt::format("[[deprecated({})]] ", literal(why));
}

std::string notedDoc(const Field& field) {
    return fmt::format("{}{}{}{}{}", field.doc, field.isSecret ? "; secret" : "",
                       field.identifies.empty() ? "" : "; identifies: " + field.identifies,
                       field.station.empty() ? "" : "; station: " + field.station, deprecatedNote(field.deprecated));
}

std::string notedDoc(const Enumerator& enumerator) { return enumerator.doc + deprecatedNote(enumerator.deprecated); }

std::string hideMacros(const Definition& definition) {
    const std::string lines = hidden(shieldedEnumerators(definition));
    return lines.empty() ? "" : "\n// Names of enumerators that some headers define as macros.\n" + lines;
}

std::string restoreMacros(const Definition& definition) {
    const std::string lines = restored(shieldedEnumerators(definition));
    return lines.empty() ? "" : "\n" + lines;
}

std::vector<File> emit(const Definition& definition) {
    return {{definition.stem + ".h", emitHeader(definition)},
            {definition.stem + ".fields.h", emitFields(definition)},
            {definition.stem + ".traits.h", emitTraits(definition)},
            {definition.stem + ".cpp", emitSource(definition)},
            {"MsgHandler.h", emitHandlerHeader(definition)},
            {"MsgHandler.cpp", emitHandlerSource(definition)},
            {"AsciiWriter.h", emitWriterHeader(definition)},
            {"AsciiWriter.cpp", emitWriterSource(definition)},
            {"Catalogue.md", emitCatalogue(definition)}};
}

} // namespace qlgen
