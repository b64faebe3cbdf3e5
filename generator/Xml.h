// What the XML parser lets pass and XML does not: found beforehand, so that a definition that loads is one to every
// other program, too. And where in a text a line ends.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qlgen {

struct XmlFault {
    size_t offset;
    std::string text;
};

/// The first of: bytes that are not UTF-8, characters that no XML holds, references to what is not defined, markup in
/// an attribute, '--' in a comment, text outside the root element. A document type is one as well: definitions take
/// none.
std::optional<XmlFault> findXmlFault(std::string_view xml);

/// Whether `text` holds a character that turns the direction of the text after it: compilers warn of those in comments.
bool turnsText(std::string_view text);

/// Characters of a text in UTF-8.
size_t countCharacters(std::string_view text);

/// The lines of a text.
class Lines {
  public:
    explicit Lines(std::string_view text);

    /// Of the character at `offset`, from 1.
    size_t at(size_t offset) const;

  private:
    std::vector<size_t> _ends;
};

} // namespace qlgen
