// Which names a definition may give: those that the generated code can bear, whatever headers it meets.
//
// Names of types begin with a capital letter and names of enumerators consist of capital letters, so that neither can
// be a word of C++ or, but for a few, one of the generated code's own. Macros are no matter: the generated files shield
// the names that stand in them. What remains is refused, with the reason.
#pragma once

#include <string>
#include <string_view>

namespace qlgen {

enum class NameOf { protocol, type, enumerator, field, cppNamespace, stem, folder, mark };

/// Why that name cannot be one; empty if it can.
std::string whyNotName(NameOf of, const std::string& name);

/// `name` with its capital letters made small: names that give the same are one to a file system that knows no case.
std::string lowered(std::string name);

} // namespace qlgen
