// The command "compare" of qlgen.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace qlgen::compare {

class Command {
  public:
    /// Adds the command, which is to outlive the parser.
    explicit Command(CLI::App& app);

    CLI::App* app() const { return _app; }

    /// Compares and prints, or prints the rules. Exit status: 0 compatible, 1 not, or a definition or the file of exceptions is at fault, 3 a
    /// file cannot be read or the output not be written.
    int run() const;

  private:
    CLI::App* const _app;
    std::string _oldFile;
    std::string _newFile;
    std::string _exceptions;
    std::string _level = "wire";
    std::string _format = "text";
    bool _isAboutRules = false;
};

} // namespace qlgen::compare
