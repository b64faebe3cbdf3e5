#include "tools/qlproto/sql/SpillFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fmt/format.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "tools/qlproto/sql/ProcessName.h"

namespace qlproto::sql {

namespace {

constexpr const char* SPILL = "qlproto-sql-";

} // namespace

SpillFolder::SpillFolder() {
    const char* const given = std::getenv("TMPDIR");
    const std::string parent = given != nullptr ? given : "/tmp";
    std::error_code error; // what cannot be removed is another user's
    for (std::filesystem::directory_iterator it(parent, error), end; !error && it != end; it.increment(error)) {
        std::error_code kept;
        if (isOfDeadProcess(it->path().filename().native(), SPILL)) std::filesystem::remove_all(it->path(), kept);
    }
    _path = fmt::format("{}/{}{}-XXXXXX", parent, SPILL, getpid());
    if (mkdtemp(_path.data()) == nullptr) throw Capture::IoError(_path + ": " + std::strerror(errno));
}

SpillFolder::~SpillFolder() {
    std::error_code error;
    std::filesystem::remove_all(_path, error);
}

} // namespace qlproto::sql
