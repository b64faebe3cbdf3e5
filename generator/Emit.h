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
std::string emitSource(const Definition& definition);        ///< QLProtocol.cpp
std::string emitHandlerHeader(const Definition& definition); ///< MsgHandler.h
std::string emitHandlerSource(const Definition& definition); ///< MsgHandler.cpp
std::string emitWriterHeader(const Definition& definition);  ///< AsciiWriter.h
std::string emitWriterSource(const Definition& definition);  ///< AsciiWriter.cpp
std::string emitCatalogue(const Definition& definition);     ///< Catalogue.md, for people

// What the emitters share.

/// The text of one emitted file, begun with the banner.
class Text {
  public:
    struct Hole {
        std::string_view name;
        std::string value;
    };

    Text();

    /// Appends `lines` with every "$name" replaced. Holes are marked this way because C++ is full of braces. Throws
    /// std::logic_error for a hole that `holes` does not fill.
    void add(std::string_view lines, std::initializer_list<Hole> holes = {});

    std::string take() { return std::move(_text); }

  private:
    std::string _text;
};

/// Records and messages, in the order of their declaration.
std::vector<const Composite*> composites(const Definition& definition);

/// #undef of the macros that system headers are known to define with the name of an enumerator, and their return. Both
/// are empty when no enumerator is concerned.
std::string hideMacros(const Definition& definition);
std::string restoreMacros(const Definition& definition);

} // namespace qlgen
