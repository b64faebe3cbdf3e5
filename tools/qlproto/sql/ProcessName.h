// Names that tell which process a folder is of, so that another one can remove it when that is dead.
#pragma once

#include <string_view>

namespace qlproto::sql {

/// Whether the name is the prefix and the number of a process that is dead, and perhaps more after a hyphen.
bool isOfDeadProcess(std::string_view name, std::string_view prefix);

} // namespace qlproto::sql
