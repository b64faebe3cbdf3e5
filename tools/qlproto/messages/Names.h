// Types and enumerations as users name them on the command line: by their exact names, messages also by identifier,
// decimal or hexadecimal (53300, 0xD034).
//
// The checks are for options: a wrong name is a usage error that suggests the nearest names.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "Inspect/Reflection.h"

namespace qlproto {

/// Null if there is none of that name or identifier.
const Inspect::MessageInfo* findMessage(std::string_view nameOrId);

/// A message, or a record, which has no identifier.
struct NamedType {
    const Inspect::TypeInfo* type = nullptr; ///< null if there is none of that name or identifier
    std::optional<Velmora::MsgType_t> id;
};
NamedType findType(std::string_view nameOrId);

const Inspect::EnumerationInfo* findEnumeration(std::string_view name);

/// The candidates that a mistyped `name` may have meant, the nearest first, at most three. The case does not count, and
/// a part of a name is near to it.
std::vector<std::string_view> nearestNames(std::string_view name, const std::vector<std::string_view>& candidates);

/// "no command is named 'decde'; did you mean decode?"
std::string noneNamed(const char* what, std::string_view name, const std::vector<std::string_view>& candidates);

/// The names of the fields of all messages and records, each once.
std::vector<std::string_view> fieldNames();

/// "no message is named 'Order'; did you mean A, B or C?"
std::string noSuchMessage(std::string_view nameOrId);

/// "no message has a field 'timeApiClent'; did you mean timeApiClient?"
std::string noSuchField(std::string_view name);

/// "no Side is named 'BDI'; did you mean BID?", or else all names that there are.
std::string noSuchEnumerator(const Inspect::EnumerationInfo& enumeration, std::string_view name);

CLI::Validator isMessage();     ///< a MESSAGE_VALUE, by name or identifier
CLI::Validator isIdentifier();  ///< a number that is the identifier of a message
CLI::Validator isType();        ///< a TYPE_VALUE
CLI::Validator isField();       ///< the name of a field of a message or record
CLI::Validator isEnumeration(); ///< an ENUMERATION_VALUE

} // namespace qlproto
