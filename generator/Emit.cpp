#include "generator/Emit.h"

#include <algorithm>
#include <set>

#include <fmt/format.h>

namespace qlgen {
namespace {

// Enumerator names that headers of the system or of common libraries define as macros: arpa/nameser_compat.h,
// arpa/ftp.h, protocols/talkd.h, curses.h, Tcl and Tk, Python's opcode.h, and headers written for other systems.
constexpr const char* knownMacros[] = {"CANCELED", "DELETE", "DISABLED", "ERROR",   "NA",   "NONE",
                                       "OK",       "ON",     "OTHER",    "SUCCESS", "SWAP", "TIMEOUT"};

/// One line per known macro that is the name of an enumerator; `format` takes the name.
std::string perMacro(const Definition& definition, fmt::format_string<const std::string&> format) {
    std::set<std::string> names;
    for (const Enumeration& enumeration : definition.enumerations)
        for (const Enumerator& enumerator : enumeration.enumerators)
            if (std::ranges::find(knownMacros, enumerator.name) != std::end(knownMacros)) names.insert(enumerator.name);
    std::string lines;
    for (const std::string& name : names) lines += fmt::format(format, name);
    return lines;
}

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

} // namespace

Text::Text() : _text("// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.\n") {}

void Text::add(std::string_view lines, std::initializer_list<Hole> holes) {
    while (!lines.empty()) {
        const size_t mark = std::min(lines.find('$'), lines.size());
        _text += lines.substr(0, mark);
        lines.remove_prefix(mark);
        if (lines.empty()) break;
        lines.remove_prefix(1);
        const auto end = std::find_if_not(lines.begin(), lines.end(), isLetter);
        const std::string_view name = lines.substr(0, static_cast<size_t>(end - lines.begin()));
        const auto hole = std::ranges::find(holes, name, &Hole::name);
        if (hole == holes.end()) throw std::logic_error(fmt::format("nothing fills the hole ${}", name));
        _text += hole->value;
        lines.remove_prefix(name.size());
    }
}

std::vector<const Composite*> composites(const Definition& definition) {
    std::vector<const Composite*> all;
    for (const Composite& record : definition.records) all.push_back(&record);
    for (const Composite& message : definition.messages) all.push_back(&message);
    return all;
}

std::string hideMacros(const Definition& definition) {
    const std::string lines = perMacro(definition, "#pragma push_macro(\"{0}\")\n#undef {0}\n");
    return lines.empty() ? "" : "\n// Names of enumerators that some headers define as macros.\n" + lines;
}

std::string restoreMacros(const Definition& definition) {
    const std::string lines = perMacro(definition, "#pragma pop_macro(\"{0}\")\n");
    return lines.empty() ? "" : "\n" + lines;
}

std::vector<File> emit(const Definition& definition) {
    return {{"QLProtocol.h", emitHeader(definition)},          {"QLProtocol.fields.h", emitFields(definition)},
            {"QLProtocol.cpp", emitSource(definition)},        {"MsgHandler.h", emitHandlerHeader(definition)},
            {"MsgHandler.cpp", emitHandlerSource(definition)}, {"AsciiWriter.h", emitWriterHeader(definition)},
            {"AsciiWriter.cpp", emitWriterSource(definition)}, {"Catalogue.md", emitCatalogue(definition)}};
}

} // namespace qlgen
