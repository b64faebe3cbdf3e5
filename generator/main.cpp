// qlgen: turns the protocol definition into the sources of generated/QLProtocol, and compares definitions.
//
// Exit status: 0 done, or all current; 1 --check found files that are not; 2 the definition or a file is at fault;
// above 100 wrong usage. Those of "compare" stand with that command.
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "generator/Output.h"
#include "generator/compare/Command.h"

int main(int argc, char** argv) {
    CLI::App app{"Generates the sources of a protocol from its definition."};
    std::string definition;
    std::string directory;
    bool check = false;
    app.add_option("DEFINITION", definition, "the definition, an XML file");
    app.add_option("OUTPUT_DIR", directory, "where the generated files go");
    app.add_flag("--check", check,
                 "write nothing; name the files that are not current and exit with 1 if there are any");
    const qlgen::compare::Command compare(app);
    app.callback([&] { // the parser would look for a required definition where the command stands
        if (!*compare.app() && directory.empty()) throw CLI::RequiredError("DEFINITION and OUTPUT_DIR");
    });
    app.footer("Examples:\n  qlgen acme.xml generated/acme\n  qlgen --check acme.xml generated/acme\n"
               "  qlgen compare released.xml acme.xml");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const int status = app.exit(error);
        return status != 0 && *compare.app() ? 2 : status;
    }
    if (*compare.app()) return compare.run();

    try {
        const auto files = qlgen::emit(qlgen::parseDefinition(qlgen::readFile(definition), definition));
        if (!check) {
            for (const std::string& name : qlgen::writeFiles(files, directory)) std::cout << name << " written\n";
            return 0;
        }
        const auto names = qlgen::outdated(files, directory);
        for (const std::string& name : names) std::cout << directory << '/' << name << " is not current\n";
        return names.empty() ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 2;
    }
}
