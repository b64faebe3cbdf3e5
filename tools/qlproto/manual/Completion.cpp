#include "tools/qlproto/manual/Completion.h"

#include <functional>
#include <map>
#include <set>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tools/qlproto/Tool.h"
#include "tools/qlproto/messages/Names.h"

namespace qlproto {

namespace {

using Words = std::vector<std::string>;

Words messageNames() {
    Words names;
    for (const Inspect::MessageInfo& it : thisTool.protocol.messages) names.emplace_back(it.type->name);
    return names;
}

/// Of records or enumerations.
Words namesOf(const auto& types) {
    Words names;
    for (const auto* it : types) names.emplace_back(it->name);
    return names;
}

/// For each field that holds an enumeration: the enumerators that it may have, whatever the record.
std::map<std::string_view, std::set<std::string_view>> enumeratorsByField() {
    std::map<std::string_view, std::set<std::string_view>> enumerators;
    const auto add = [&](const Inspect::TypeInfo& type) {
        for (const Inspect::FieldInfo& field : type.fields) {
            const Inspect::ValueInfo& value = field.value.element != nullptr ? *field.value.element : field.value;
            if (value.enumeration == nullptr) continue;
            for (const Inspect::EnumeratorInfo& it : value.enumeration->enumerators)
                enumerators[field.name].insert(it.name);
        }
    };
    for (const Inspect::MessageInfo& it : thisTool.protocol.messages) add(*it.type);
    for (const Inspect::TypeInfo* it : thisTool.protocol.records) add(*it);
    return enumerators;
}

std::string joined(const Words& words) { return fmt::format("{}", fmt::join(words, " ")); }

Words optionNames(const CommandNode& command) {
    Words names;
    for (const Argument& it : command.options) names.insert(names.end(), it.names.begin(), it.names.end());
    return names;
}

Words commandNames(const CommandNode& tool) {
    Words names;
    for (const CommandNode& it : tool.commands) names.push_back(it.name);
    return names;
}

// --- bash

/// What offers the values of one argument; empty when nothing can be offered.
std::string bashOffer(const Argument& it) {
    switch (it.value) {
    case Value::file:
        return "files=yes";
    case Value::choice:
        return fmt::format("words+=' {}'", joined(it.choices));
    case Value::message:
        return "words+=\" $messages\"";
    case Value::type:
        return "words+=\" $messages $records\"";
    case Value::enumeration:
        return "words+=\" $enumerations\"";
    case Value::field:
    case Value::condition:
        return "words+=\" $fields\"";
    case Value::none:
    case Value::opaque:
        break;
    }
    return "";
}

/// What offers enumerators after "side=", which bash takes for two or three words.
std::string bashConditions(const CommandNode& tool) {
    Words patterns;
    for (const CommandNode& command : tool.commands)
        for (const Argument& it : command.options)
            if (it.value == Value::condition)
                for (const std::string& name : it.names) patterns.push_back(fmt::format("'{} {}'", command.name, name));
    if (patterns.empty()) return "";
    std::string script = R"(
    # An enumerator after the field of a condition.
    local field=
    if [ "$previous" = = ]; then
        field=$((COMP_CWORD - 2))
    elif [ "$current" = = ]; then
        field=$((COMP_CWORD - 1)) current=
    fi
    [ -z "$field" ] || case "$command ${COMP_WORDS[field - 1]}" in
    )";
    script += fmt::format("{})\n        case ${{COMP_WORDS[field]%!}} in\n", fmt::join(patterns, " | "));
    for (const auto& [field, names] : enumeratorsByField())
        script += fmt::format("        {}) words='{}' ;;\n", field, fmt::join(names, " "));
    return script + R"(        esac
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
        ;;
    esac
)";
}

void addBashCases(std::string& script, const CommandNode& command) {
    for (const Argument& it : command.options) {
        if (it.value == Value::none) continue;
        Words patterns;
        for (const std::string& name : it.names) patterns.push_back(fmt::format("'{} {}'", command.name, name));
        const std::string offer = bashOffer(it);
        script +=
            fmt::format("    {}) value=yes{} ;;\n", fmt::join(patterns, " | "), offer.empty() ? "" : "; " + offer);
    }
}

} // namespace

std::string bashCompletion(const CommandNode& tool) {
    std::string script = fmt::format(
        R"(# Completion of {0} for bash. Made by "{0} completion bash" from the commands themselves.
_{0}() {{
    local messages='{1}'
    local records='{2}'
    local enumerations='{3}'
    local fields='{4}'
    local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}}
    local command= words= files= value= i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${{COMP_WORDS[i]}} in
        -*) ;;
        *) command=${{COMP_WORDS[i]}} && break ;;
        esac
    done
{5}
    # The value of an option.
    case "$command $previous" in
)",
        tool.name, joined(messageNames()), joined(namesOf(thisTool.protocol.records)),
        joined(namesOf(thisTool.protocol.enumerations)), fmt::join(fieldNames(), " "), bashConditions(tool));
    for (const CommandNode& it : tool.commands) addBashCases(script, it);
    script += "    esac\n\n    # An option, or what goes by position.\n    [ -n \"$value\" ] || case \"$command "
              "$current\" in\n";
    script += fmt::format("    ' '*) words='{} {}' ;;\n", joined(commandNames(tool)), joined(optionNames(tool)));
    for (const CommandNode& it : tool.commands) {
        script += fmt::format("    '{} -'*) words='{}' ;;\n", it.name, joined(optionNames(it)));
        Words offers;
        for (const Argument& argument : it.positionals)
            if (const std::string offer = bashOffer(argument); !offer.empty()) offers.push_back(offer);
        if (offers.empty()) offers.push_back(fmt::format("words='{}'", joined(optionNames(it))));
        script += fmt::format("    '{} '*) {} ;;\n", it.name, fmt::join(offers, "; "));
    }
    script += fmt::format(R"(    esac

    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current"; [ -z "$files" ] || compgen -f -- "$current")
}}
complete -o filenames -F _{0} {0}
)",
                          tool.name);
    return script;
}

// --- zsh

namespace {

/// Within double quotes, and with what _arguments and _describe would take for their own syntax escaped.
std::string zshText(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\') out += "\\\\\\";
        if (c == '"' || c == '$' || c == '`' || c == '[' || c == ']' || c == ':') out += '\\';
        out += c;
    }
    return out;
}

std::string zshAction(const Argument& it) {
    switch (it.value) {
    case Value::file:
        return "_files";
    case Value::choice:
        return fmt::format("({})", joined(it.choices));
    case Value::message:
        return "($messages)";
    case Value::type:
        return "($messages $records)";
    case Value::enumeration:
        return "($enumerations)";
    case Value::field:
        return "($fields)";
    case Value::condition:
        return fmt::format("_{}_condition", thisTool.program);
    case Value::none:
    case Value::opaque:
        break;
    }
    return " ";
}

/// The specs of one command for _arguments.
Words zshSpecs(const CommandNode& command) {
    Words specs;
    for (const Argument& it : command.options) {
        const std::string value =
            it.value == Value::none ? "" : fmt::format(":{}:{}", zshText(it.placeholder), zshAction(it));
        const std::string others = it.isRepeatable ? "*" : fmt::format("({})", joined(it.names));
        for (const std::string& name : it.names)
            specs.push_back(fmt::format("\"{}{}[{}]{}\"", others, name, zshText(it.description), value));
    }
    for (const Argument& it : command.positionals)
        specs.push_back(
            fmt::format("\"{}:{}:{}\"", it.isRepeatable ? "*" : "", zshText(it.placeholder), zshAction(it)));
    return specs;
}

} // namespace

std::string zshCompletion(const CommandNode& tool) {
    std::string enumerators;
    for (const auto& [field, names] : enumeratorsByField())
        enumerators += fmt::format("        {} '{}'\n", field, fmt::join(names, " "));
    Words commands;
    for (const CommandNode& it : tool.commands)
        commands.push_back(fmt::format("        \"{}:{}\"", it.name, zshText(it.description)));
    std::string script = fmt::format(R"(#compdef {0}
# Completion of {0} for zsh. Made by "{0} completion zsh" from the commands themselves.

# A field, or an enumerator after "side=".
_{0}_condition() {{
    local -A enumerators=(
{6}    )
    if compset -P '*='; then
        local field=${{${{IPREFIX%=}}%!}}
        compadd -- ${{=enumerators[${{field##*=}}]}}
    else
        compadd -S '' -- ${{=fields}}
    fi
}}

_{0}() {{
    local messages='{1}'
    local records='{2}'
    local enumerations='{3}'
    local fields='{4}'
    local -a commands=(
{5}
    )
    if ((CURRENT == 2)); then
        _describe command commands
        return
    fi
    shift words
    ((--CURRENT))
    case $words[1] in
)",
                                     tool.name, joined(messageNames()), joined(namesOf(thisTool.protocol.records)),
                                     joined(namesOf(thisTool.protocol.enumerations)), fmt::join(fieldNames(), " "),
                                     fmt::join(commands, "\n"), enumerators);
    for (const CommandNode& it : tool.commands)
        script += fmt::format("    {})\n        _arguments -s \\\n            {}\n        ;;\n", it.name,
                              fmt::join(zshSpecs(it), " \\\n            "));
    script += fmt::format("    esac\n}}\n_{} \"$@\"\n", tool.name);
    return script;
}

} // namespace qlproto
