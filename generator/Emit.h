// The emitted files. Each has a source of its own, whose first comment shows the shape of what it emits.
//
// They hold lists, declarations and one-line members; what an operation does is written by hand under Backend/Velmora.
// The text depends on the definition alone, and is formatted as clang-format would leave it.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "generator/Definition.h"

namespace qlgen {

struct File {
    std::string name;
    std::string text;
};

/// All files of a protocol, rendered in memory.
std::vector<File> emit(const Definition& definition);

std::string emitHeader(const Definition& definition);        ///< QLProtocol.h
std::string emitFields(const Definition& definition);        ///< QLProtocol.fields.h
std::string emitTraits(const Definition& definition);        ///< QLProtocol.traits.h
std::string emitSource(const Definition& definition);        ///< QLProtocol.cpp
std::string emitHandlerHeader(const Definition& definition); ///< MsgHandler.h
std::string emitHandlerSource(const Definition& definition); ///< MsgHandler.cpp
std::string emitWriterHeader(const Definition& definition);  ///< AsciiWriter.h
std::string emitWriterSource(const Definition& definition);  ///< AsciiWriter.cpp
std::string emitCatalogue(const Definition& definition);     ///< Catalogue.md, for people

// What the emitters share.

/// "protocol/QLProtocol.xml", or what else there is to say of where the files come from.
std::string sourceText(const Definition& definition);

/// The text of one emitted file of C++, begun with the banner.
class Text {
  public:
    struct Hole {
        std::string_view name;
        std::string value;
    };

    explicit Text(const Definition& definition);

    /// Appends `lines` with every "$name" replaced. Holes are marked this way because C++ is full of braces. Those of
    /// every file are filled already: $namespace, $folder, $stem. Throws std::logic_error for a hole that nothing
    /// fills.
    void add(std::string_view lines, std::initializer_list<Hole> holes = {});

    /// Guards against what could disturb the names of the definition: macros, and warnings about deprecated things,
    /// which are for hosts.
    void guard();

    /// Takes the guards back, and ends the text.
    std::string unguard();

    // The same with the namespace, guarded.
    void open();
    std::string close();

  private:
    const Definition& _definition;
    std::string _text;
};

/// Records and messages, in the order of their declaration.
std::vector<const Composite*> composites(const Definition& definition);

/// `text` as a literal of C++.
std::string literal(const std::string& text);

/// [[deprecated("why")]] and a blank, or nothing.
std::string deprecatedAttribute(const std::string& why);

/// The doc of a field or an enumerator, followed by what else the definition says about it.
std::string notedDoc(const Field& field);
std::string notedDoc(const Enumerator& enumerator);

/// #undef of the names of enumerators that the definition says are macros elsewhere, and their return. Both are empty
/// when there are none, and when all names are shielded anyway.
std::string hideMacros(const Definition& definition);
std::string restoreMacros(const Definition& definition);

} // namespace qlgen
