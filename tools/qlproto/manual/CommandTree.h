// The command line as the parser knows it: commands, options and arguments, for what is written about them. Nothing is
// listed here by hand, so a new command is in the manual page and in the completions as soon as it parses.
//
// What a value can be is told by the type of its option: {a,b} is a choice, the others are named in Arguments.h.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace qlproto {

enum class Value { none, opaque, file, choice, message, type, enumeration, field, condition };

/// An option, or an argument without a name of its own.
struct Argument {
    std::vector<std::string> names; ///< "-o", "--output"; empty for an argument that goes by position
    std::string placeholder;        ///< of its value: "N", or "capture" by position; empty for a flag
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

/// What stands for the option's value in texts: "N", "{a,b}"; empty for a flag.
std::string placeholderOf(const CLI::Option& option);

CommandNode commandTree(const CLI::App& app);

} // namespace qlproto
