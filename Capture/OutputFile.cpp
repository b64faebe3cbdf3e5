#include "Capture/OutputFile.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <random>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Capture/Errors.h"

namespace Capture {

namespace {

namespace fs = std::filesystem;

/// The file that a signal's handler has to remove; null if there is none.
std::atomic<const char*> unfinished = nullptr;
static_assert(decltype(unfinished)::is_always_lock_free); // or no handler could read it

/// Ends the process as if there were no handler, but only once the file is gone: the same signal may come again at any
/// time, to the process itself and to its group.
extern "C" void removeAndEnd(int signal) {
    if (const char* const path = unfinished) unlink(path);
    std::signal(signal, SIG_DFL);
    raise(signal);
}

void handleSignals() {
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue; // as under nohup
        action.sa_handler = removeAndEnd;
        sigaction(signal, &action, nullptr);
    }
}

/// Whether the path names an open file rather than a place in a folder.
bool isDescriptor(const fs::path& path) {
    std::error_code error;
    const fs::path folder = fs::canonical(path.parent_path(), error);
    return !error && folder.native().starts_with("/proc/");
}

} // namespace

OutputFile::OutputFile(const std::string& path) : _name(path == "-" ? "standard output" : path) {
    if (path == "-") {
        _fd = STDOUT_FILENO;
        return;
    }
    struct stat old {};
    const bool isThere = stat(path.c_str(), &old) == 0;
    if (!isThere && (errno != ENOENT || path.empty())) fail();

    // Links are followed here, also one to a file that is not there yet. They end: stat() has gone the same way.
    fs::path target = path;
    std::error_code error;
    while (!isDescriptor(target) && fs::is_symlink(fs::symlink_status(target, error)))
        target = target.parent_path() / fs::read_symlink(target, error);

    if (isThere && (!S_ISREG(old.st_mode) || isDescriptor(target))) {
        _fd = open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
        if (_fd < 0) fail();
        return;
    }
    _target = target;
    createBeside(isThere ? &old : nullptr);
}

void OutputFile::createBeside(const struct ::stat* old) {
    // A file that may not be written may not be replaced, though the folder's permissions allow it.
    if (old != nullptr && faccessat(AT_FDCWD, _target.c_str(), W_OK, AT_EACCESS) != 0) fail();
    static const bool isHandled = (handleSignals(), true);
    static_cast<void>(isHandled);

    std::random_device random;
    _part = fs::path(_target).parent_path() / (".part-" + std::to_string(random()) + std::to_string(random()));
    unfinished = _part.c_str();
    const mode_t mode = old != nullptr ? old->st_mode & 0777 : 0666;
    _fd = open(_part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (_fd < 0) {
        unfinished = nullptr;
        fail(old != nullptr ? "no file can be created beside it: " : "");
    }
    if (old == nullptr) return;
    if (fchown(_fd, old->st_uid, old->st_gid) != 0) static_cast<void>(0); // then it is the user's own
    fchmod(_fd, mode);                                                    // without the umask
}

OutputFile::~OutputFile() {
    if (_fd > STDERR_FILENO) close(_fd);
    if (_part.empty()) return;
    unlink(_part.c_str());
    unfinished = nullptr;
}

void OutputFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(_fd, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            if (errno == EPIPE) throw ClosedPipe();
            fail();
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void OutputFile::complete() {
    if (_part.empty()) return;
    if (close(std::exchange(_fd, -1)) != 0) fail(); // some file systems tell of a full disk only now
    if (rename(_part.c_str(), _target.c_str()) != 0) fail();
    unfinished = nullptr;
    _part.clear();
}

void OutputFile::fail(const char* what) const { throw IoError(_name + ": " + what + std::strerror(errno)); }

} // namespace Capture
