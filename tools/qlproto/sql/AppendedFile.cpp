#include "tools/qlproto/sql/AppendedFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Capture/Errors.h"

namespace qlproto::sql {

AppendedFile::AppendedFile(const std::filesystem::path& path) : _path(path) {
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (error) throw Capture::IoError(path.parent_path().string() + ": " + error.message());
    _file = open(_path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (_file < 0) fail();
    struct stat status {};
    _isNew = fstat(_file, &status) == 0 && status.st_size == 0;
}

AppendedFile::~AppendedFile() {
    if (_file >= 0) ::close(_file);
}

void AppendedFile::append(std::string_view bytes) {
    constexpr size_t capacity = 256 * 1024;
    _bytes += bytes;
    if (_bytes.size() >= capacity) flush();
}

void AppendedFile::flush() {
    for (std::string_view left = _bytes; !left.empty();) {
        const ssize_t written = write(_file, left.data(), left.size());
        if (written < 0 && errno != EINTR) fail();
        left.remove_prefix(static_cast<size_t>(std::max<ssize_t>(written, 0)));
    }
    _bytes.clear();
}

void AppendedFile::close() {
    flush();
    if (::close(std::exchange(_file, -1)) != 0) fail();
}

void AppendedFile::fail() const { throw Capture::IoError(_path + ": " + std::strerror(errno)); }

} // namespace qlproto::sql
