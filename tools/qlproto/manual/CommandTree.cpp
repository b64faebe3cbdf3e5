#include "tools/qlproto/manual/CommandTree.h"

#include <sstream>

#include "tools/qlproto/commands/Arguments.h"

namespace qlproto {

namespace {

std::vector<std::string> choicesIn(const std::string& type) {
    const size_t open = type.find('{'), close = type.find('}');
    std::vector<std::string> choices;
    if (open == type.npos || close == type.npos) return choices;
    std::istringstream list(type.substr(open + 1, close - open - 1));
    for (std::string choice; std::getline(list, choice, ',');) choices.push_back(choice);
    return choices;
}

Value valueOf(const std::string& placeholder) {
    if (placeholder.empty()) return Value::none;
    if (placeholder.starts_with('{')) return Value::choice;
    if (placeholder == MESSAGE_VALUE) return Value::message;
    if (placeholder == TYPE_VALUE) return Value::type;
    if (placeholder == ENUMERATION_VALUE) return Value::enumeration;
    if (placeholder == FIELD_VALUE) return Value::field;
    if (placeholder == CONDITION_VALUE) return Value::condition;
    return placeholder == FILE_VALUE || placeholder == FOLDER_VALUE ? Value::file : Value::opaque;
}

Argument argument(const CLI::Option& option) {
    const std::string type = placeholderOf(option);
    Argument it{{},
                type,
                option.get_description(),
                option.get_default_str(),
                option.get_required(),
                option.get_expected_max() == CLI::detail::expected_max_vector_size,
                valueOf(type),
                choicesIn(type)};
    for (const std::string& name : option.get_snames()) it.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) it.names.push_back("--" + name);
    if (it.names.empty()) it.placeholder = option.get_name(true);
    return it;
}

void collect(const CLI::App& app, CommandNode& node) {
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_group().empty()) continue; // hidden
        (option->nonpositional() ? node.options : node.positionals).push_back(argument(*option));
    }
    for (const CLI::App* part : app.get_subcommands(nullptr)) {
        if (part->get_name().empty())
            collect(*part, node); // a group of options
        else if (!part->get_group().empty())
            node.commands.push_back(commandTree(*part));
    }
}

} // namespace

std::string placeholderOf(const CLI::Option& option) {
    const std::string type = option.get_type_size() == 0 ? "" : option.get_type_name();
    return type.substr(type.rfind(':') + 1); // what a check says of the value follows the parser's own name for it
}

CommandNode commandTree(const CLI::App& app) {
    CommandNode node{app.get_name(), app.get_description(), app.get_footer(), {}, {}, {}};
    collect(app, node);
    return node;
}

} // namespace qlproto
