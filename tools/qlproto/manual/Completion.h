// Completions of the command line for shells: names of commands and options, choices, files, and the names of messages,
// records and enumerations where a value is one.
#pragma once

#include <string>

#include "tools/qlproto/manual/CommandTree.h"

namespace qlproto {

std::string bashCompletion(const CommandNode& tool); ///< a script to source
std::string zshCompletion(const CommandNode& tool);  ///< a function file for a folder of $fpath

} // namespace qlproto
