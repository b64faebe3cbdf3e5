#include "tools/qlproto/manual/ManualPage.h"

#include <cctype>
#include <sstream>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace qlproto {

namespace {

/// Text as roff takes it: no character is a command, every '-' is the one that can be copied to a shell.
std::string plain(const std::string& text) {
    std::string out;
    bool isLineStart = true;
    for (const char c : text) {
        if (isLineStart && (c == '.' || c == '\'')) out += "\\&";
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
        isLineStart = c == '\n';
    }
    return out;
}

std::string bold(const std::string& text) { return "\\fB" + plain(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + plain(text) + "\\fR"; }

std::string upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

/// Length of the title at the start of a line such as "Exit status: 0 fine", or 0.
size_t titleOf(const std::string& line) {
    const size_t colon = line.find(':');
    if (colon == line.npos || !std::isupper(static_cast<unsigned char>(line[0]))) return 0;
    for (size_t i = 0; i < colon; ++i)
        if (!std::isalpha(static_cast<unsigned char>(line[i])) && line[i] != ' ') return 0;
    return colon;
}

/// A title begins a section of its own or a paragraph.
void addFooter(std::string& page, const std::string& footer, bool titlesAreSections) {
    std::istringstream lines(footer);
    bool isVerbatim = false, isFirst = true;
    for (std::string line; std::getline(lines, line);) {
        const bool isIndented = line.starts_with("  ");
        if (isIndented && !isVerbatim) page += isFirst || !titlesAreSections ? ".PP\n.nf\n" : ".nf\n";
        if (!isIndented && isVerbatim) page += ".fi\n";
        isVerbatim = isIndented;
        if (isIndented) {
            page += plain(line) + "\n";
        } else if (line.empty()) {
            isFirst = true;
        } else if (const size_t title = titleOf(line); title != 0 && titlesAreSections) {
            page += fmt::format(".SH {}\n", plain(upper(line.substr(0, title))));
            const size_t text = line.find_first_not_of(' ', title + 1);
            if (text != line.npos) page += plain(line.substr(text)) + "\n";
            isFirst = false;
        } else {
            if (isFirst || title != 0) page += ".PP\n";
            page += plain(line) + "\n";
            isFirst = false;
        }
    }
    if (isVerbatim) page += ".fi\n";
}

void addArgument(std::string& page, const Argument& it) {
    std::vector<std::string> names;
    for (const std::string& name : it.names) names.push_back(bold(name));
    std::string head = fmt::format("{}", fmt::join(names, ", "));
    if (!it.placeholder.empty()) head += (head.empty() ? "" : " ") + italic(it.placeholder);
    if (it.isRepeatable) head += " ...";
    page += fmt::format(".TP\n{}\n{}", head, plain(it.description));
    if (it.names.empty() && !it.choices.empty())
        page += fmt::format(": {}", plain(fmt::format("{}", fmt::join(it.choices, ", "))));
    if (it.isRequired) page += " (required)";
    if (!it.defaultText.empty()) page += fmt::format(" (default: {})", plain(it.defaultText));
    page += '\n';
}

std::string synopsis(const CommandNode& command) {
    std::string line;
    for (const Argument& it : command.options)
        if (it.isRequired) line += " " + bold(it.names.back()) + " " + italic(it.placeholder);
    if (!command.options.empty()) line += " [" + italic("OPTIONS") + "]";
    for (const Argument& it : command.positionals) {
        const std::string name = italic(it.placeholder) + (it.isRepeatable ? " ..." : "");
        line += it.isRequired ? " " + name : " [" + name + "]";
    }
    return line;
}

void addCommand(std::string& page, const CommandNode& command, const std::string& path) {
    const std::string name = path + " " + command.name;
    page += fmt::format(".SS {}\n{}{}\n.PP\n{}.\n", plain(command.name), bold(name), synopsis(command),
                        plain(command.description));
    for (const Argument& it : command.positionals) addArgument(page, it);
    for (const Argument& it : command.options)
        if (it.names.back() != "--help") addArgument(page, it); // the tool's own options tell it once
    addFooter(page, command.footer, false);
    for (const CommandNode& it : command.commands) addCommand(page, it, name);
}

} // namespace

std::string manualPage(const CommandNode& tool, const std::string& version) {
    std::string page = fmt::format(".\\\" Made by \"{0} manpage\" from the commands themselves.\n"
                                   ".TH {1} 1 \"\" \"{0} {2}\" \"User Commands\"\n"
                                   ".SH NAME\n{0} \\- {3}\n.SH SYNOPSIS\n{4} {5} [{6}] ...\n",
                                   tool.name, upper(tool.name), version, plain(tool.description), bold(tool.name),
                                   italic("COMMAND"), italic("OPTIONS"));
    page += ".SH DESCRIPTION\n" + plain(tool.description) + "\n.SH OPTIONS\n";
    for (const Argument& it : tool.options) addArgument(page, it);
    page += ".SH COMMANDS\n";
    for (const CommandNode& it : tool.commands) addCommand(page, it, tool.name);
    addFooter(page, tool.footer, true);
    return page;
}

} // namespace qlproto
