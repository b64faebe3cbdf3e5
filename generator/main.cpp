// qlgen: turns the protocol definition into the sources of generated/QLProtocol.
//
// Exit status: 0 done, or all current; 1 --check found files that are not; 2 the definition or a file is at fault;
// above 100 wrong usage.
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "generator/Output.h"

int main(int argc, char** argv) {
    CLI::App app{"Generates the sources of a protocol from its definition."};
    std::string definition;
    std::string directory;
    bool check = false;
    app.add_option("DEFINITION", definition, "the definition, an XML file")->required();
    app.add_option("OUTPUT_DIR", directory, "where the generated files go")->required();
    app.add_flag("--check", check,
                 "write nothing; name the files that are not current and exit with 1 if there are any");
    CLI11_PARSE(app, argc, argv);

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
