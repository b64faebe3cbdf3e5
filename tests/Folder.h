// A folder of its own that goes with the object, and shell commands run in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/wait.h>

inline std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

class Folder {
  public:
    struct Result {
        int exitCode;
        std::string out, err;
        size_t lines() const { return linesOf(out).size(); }
    };

    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "qlproto-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the test");
        _folder = name;
    }
    ~Folder() { std::filesystem::remove_all(_folder); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string path(const std::string& name) const { return _folder / name; }

    /// Runs a command of bash in the folder. The files "command", "out" and "err" there are taken.
    Result run(const std::string& command) const {
        write("command", "cd '" + _folder.string() + "' && { " + command + "; } >out 2>err");
        const int status = std::system(("bash '" + path("command") + "'").c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content("out"), content("err")};
    }

    std::string content(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }

    /// Stores a file; returns its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

  private:
    std::filesystem::path _folder;
};
