#include "generator/Output.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <fmt/format.h>

namespace qlgen {
namespace fs = std::filesystem;
namespace {

fs::path temporary(const fs::path& path) { return path.string() + ".tmp"; }

void write(const fs::path& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (!out) throw std::runtime_error(fmt::format("cannot write {}", path.string()));
}

} // namespace

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(in), {});
    if (!in) throw std::runtime_error(fmt::format("cannot read {}", path.string()));
    return text;
}

std::vector<std::string> outdated(const std::vector<File>& files, const fs::path& directory) {
    std::vector<std::string> names;
    for (const File& file : files) {
        const fs::path path = directory / file.name;
        if (!fs::is_regular_file(path) || readFile(path) != file.text) names.push_back(file.name);
    }
    return names;
}

std::vector<std::string> writeFiles(const std::vector<File>& files, const fs::path& directory) {
    fs::create_directories(directory);
    const std::vector<std::string> changed = outdated(files, directory);
    try {
        for (const File& file : files)
            if (std::ranges::find(changed, file.name) != changed.end())
                write(temporary(directory / file.name), file.text);
    } catch (...) {
        std::error_code ignored;
        for (const std::string& name : changed) fs::remove(temporary(directory / name), ignored);
        throw;
    }
    for (const std::string& name : changed) fs::rename(temporary(directory / name), directory / name);
    return changed;
}

} // namespace qlgen
