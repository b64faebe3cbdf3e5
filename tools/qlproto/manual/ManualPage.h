// The manual page of the tool, in the macros of man(7).
#pragma once

#include <string>

#include "tools/qlproto/manual/CommandTree.h"

namespace qlproto {

/// The page of section 1. In footers, "Title: text" or "Title:" begins a part, and lines indented by two blanks stay as
/// they are.
std::string manualPage(const CommandNode& tool, const std::string& version);

} // namespace qlproto
