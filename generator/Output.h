// Emitted files on disk: compared with what is there, and replaced all or none.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "generator/Emit.h"

namespace qlgen {

/// Names of those `files` whose copy in `directory` is missing or differs.
std::vector<std::string> outdated(const std::vector<File>& files, const std::filesystem::path& directory);

/// Brings `directory`, which is created if need be, up to date and returns the names of the files that changed. All
/// texts are written to temporary files first and then renamed, so that no reader sees half a file and a full disk
/// leaves the old files alone. Files that are current keep their time. Throws std::runtime_error or
/// std::filesystem::filesystem_error.
std::vector<std::string> writeFiles(const std::vector<File>& files, const std::filesystem::path& directory);

/// The whole content of a file. Throws std::runtime_error if it cannot be read.
std::string readFile(const std::filesystem::path& path);

} // namespace qlgen
