#include "tools/qlproto/sql/CaptureFiles.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "Capture/Errors.h"

namespace qlproto::sql {

namespace {

[[noreturn]] void fail() { throw Capture::IoError(std::string("temporary file: ") + std::strerror(errno)); }

} // namespace

CaptureFiles::CaptureFiles(std::vector<std::string> paths, const NetworkChoice& network) : _paths(std::move(paths)) {
    for (std::string& path : _paths) {
        if (path == "-") {
            if (_copy < 0) copyStandardInput();
            path = "/proc/self/fd/" + std::to_string(_copy);
        }
        openCaptures({path}, network);
    }
}

CaptureFiles::~CaptureFiles() {
    if (_copy >= 0) close(_copy);
}

void CaptureFiles::copyStandardInput() {
    const char* const folder = std::getenv("TMPDIR");
    std::string name = std::string(folder != nullptr ? folder : "/tmp") + "/qlproto-XXXXXX";
    _copy = mkostemp(name.data(), O_CLOEXEC);
    if (_copy < 0) fail();
    unlink(name.c_str());
    std::array<char, 65536> buffer;
    for (ssize_t read; (read = ::read(STDIN_FILENO, buffer.data(), buffer.size())) != 0;) {
        if (read < 0 && errno == EINTR) continue;
        if (read < 0) throw Capture::IoError(std::string("standard input: ") + std::strerror(errno));
        for (ssize_t written = 0; written != read;) {
            const ssize_t more = write(_copy, buffer.data() + written, static_cast<size_t>(read - written));
            if (more < 0 && errno != EINTR) fail();
            written += std::max<ssize_t>(more, 0);
        }
    }
}

} // namespace qlproto::sql
