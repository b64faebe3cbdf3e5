#include "generator/compare/Command.h"

#include <iostream>

#include "generator/Output.h"
#include "generator/compare/Report.h"

namespace qlgen::compare {
namespace {

constexpr const char* EXAMPLES = R"(Examples:
  qlgen compare released.xml acme.xml
  qlgen compare released.xml acme.xml --level source --format json
  qlgen compare released.xml acme.xml --exceptions accepted.txt
  qlgen compare --rules

For every change: its rule, and what becomes of the bodies of each side at the other. same: all are read as they were
meant. refused: none is misread, but those that the change touches are refused. silent: some body is accepted and read
as other values; one is shown. Rolling readers take missing last fields as zero, bytes after the last, and pass over
messages that they do not know.

A line of the file of exceptions is RULE PLACE: REASON. The place may be *. Lines that begin with # say nothing.

Exit status: 0 compatible at that level, 1 not or a definition is at fault, 2 usage, 3 input or output failed.)";

Definition load(const std::string& file) { return parseDefinition(readFile(file), file); }

void print(const std::string& text) {
    std::cout << text << std::flush;
    if (!std::cout) throw std::runtime_error("cannot write the output");
}

} // namespace

Command::Command(CLI::App& app)
    : _app(app.add_subcommand("compare", "Tells what a changed definition does to peers that have the old one.")) {
    _app->add_option("OLD", _oldFile, "The definition that peers have");
    _app->add_option("NEW", _newFile, "The definition as changed");
    _app->add_option("--level", _level, "What must still work: the bytes; also JSON; also the sources of C++ hosts")
        ->check(CLI::IsMember({"wire", "json", "source"}))
        ->capture_default_str();
    _app->add_option("--format", _format, "For people or for programs")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    _app->add_option("--exceptions", _exceptions, "File of what is accepted all the same, each with its reason");
    _app->add_flag("--rules", _isAboutRules, "Print the rules as a table, and nothing else");
    _app->callback([this] {
        if (!_isAboutRules && _newFile.empty()) throw CLI::RequiredError("OLD and NEW");
    });
    _app->footer(EXAMPLES);
}

int Command::run() const {
    const Level level = _level == "wire" ? Level::wire : _level == "json" ? Level::json : Level::source;
    try {
        if (_isAboutRules) {
            print(rulesTable());
            return 0;
        }
        Comparison comparison = compare(load(_oldFile), load(_newFile));
        if (!_exceptions.empty())
            for (const Exception& it : accept(comparison, parseExceptions(readFile(_exceptions), _exceptions)))
                std::cerr << _exceptions << ':' << it.line << ": nothing differs by " << it.rule << " in " << it.place
                          << '\n';
        print(_format == "json" ? asJson(comparison, level, {_oldFile, _newFile}) : asText(comparison, level));
        return comparison.isCompatible(level) ? 0 : 1;
    } catch (const DefinitionError& e) {
        std::cerr << e.what() << '\n';
        return 1;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 3;
    }
}

} // namespace qlgen::compare
