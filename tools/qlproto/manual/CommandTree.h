// The command line as the parser knows it: commands, options and arguments, for what is written about them. Nothing is
// listed here by hand, so a new command is in the manual page and in the completions as soon as it parses.
//
// What a value can be is told by the type that --help shows after it: {a,b} is a choice, NAME|ID a message or record,
// NAME an enumeration, bare TEXT perhaps a file.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace qlproto {

enum class Value { none, opaque, file, choice, type, enumeration };

/// An option, or an argument without a name of its own.
struct Argument {
    std::vector<std::string> names; ///< "-o", "--output"; empty for an argument that goes by position
    std::string placeholder;        ///< of its value: "UINT", or "capture" by position; empty for a flag
    std::string description;
    std::string defaultText; ///< empty for none
    bool isRequired;
    bool isRepeatable;
    Value value;
    std::vector<std::string> choices; ///< of a choice
};

/// The tool itself, or a command of it. Hidden commands and options are left out.
struct CommandNode {
    std::string name;
    std::string description;
    std::string footer;
    std::vector<Argument> options;
    std::vector<Argument> positionals;
    std::vector<CommandNode> commands;
};

CommandNode commandTree(const CLI::App& app);

} // namespace qlproto
