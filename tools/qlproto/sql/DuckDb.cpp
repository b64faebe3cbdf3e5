#include "tools/qlproto/sql/DuckDb.h"

#include <cstdlib>
#include <filesystem>
#include <vector>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Capture/Errors.h"

namespace qlproto::sql {

namespace {

namespace fs = std::filesystem;

constexpr const char* VARIABLE = "QLPROTO_DUCKDB";
constexpr const char* PACKAGE = "@duckdb/node-bindings-linux-x64";
constexpr const char* FILE_NAME = "libduckdb.so";

/// Whether nobody but us and the system's administrator can have put the file there: it is loaded from folders above this
/// one, which may be anybody's.
bool isTrusted(const fs::path& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)
           && (status.st_uid == 0 || status.st_uid == geteuid()) && (status.st_mode & S_IWOTH) == 0;
}

std::string installedByNpm() {
    std::error_code error;
    std::vector<fs::path> folders;
    for (fs::path folder = fs::current_path(error); !folder.empty(); folder = folder.parent_path()) {
        folders.push_back(folder);
        if (folder == folder.parent_path()) break;
    }
    folders.insert(folders.end(), {"/usr/local/lib", "/usr/lib"});
    for (const fs::path& folder : folders)
        if (const fs::path path = folder / "node_modules" / PACKAGE / FILE_NAME; isTrusted(path)) return path;
    return {};
}

void* openLibrary() {
    if (const char* const path = std::getenv(VARIABLE); path != nullptr && *path != '\0') {
        if (void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL)) return library;
        throw Capture::IoError(std::string(VARIABLE) + ": " + dlerror());
    }
    if (const std::string path = installedByNpm(); !path.empty()) {
        if (void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) return library;
        throw Capture::IoError(dlerror());
    }
    if (void* const library = dlopen(FILE_NAME, RTLD_NOW | RTLD_LOCAL)) return library;
    throw Capture::IoError(std::string("this needs the library of DuckDB, ") + FILE_NAME
                           + ", which is not here: npm install " + PACKAGE + ", or set " + VARIABLE + " to its path");
}

engine::Functions load() {
    void* const library = openLibrary();
    engine::Functions functions{};
    const auto find = [&](const char* name) {
        void* const function = dlsym(library, name);
        if (function == nullptr)
            throw Capture::IoError(std::string("the library of DuckDB is too old: it has no ") + name);
        return function;
    };
#define QL_ENGINE_FIND(name, result, parameters)                                                                       \
    functions.name = reinterpret_cast<decltype(functions.name)>(find("duckdb_" #name));
    QL_ENGINE_FUNCTIONS(QL_ENGINE_FIND)
#undef QL_ENGINE_FIND
    return functions;
}

} // namespace

const engine::Functions& duckdb() {
    static const engine::Functions functions = load();
    return functions;
}

} // namespace qlproto::sql
