#include "Capture/ByteWindow.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Capture/Errors.h"

namespace Capture {

namespace {

/// Opens a file for reading, never as one of the standard streams: one that is closed stays closed.
int openFile(const char* path) {
    const int fd = open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0 || fd > STDERR_FILENO) return fd;
    const int moved = fcntl(fd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(fd);
    return moved;
}

} // namespace

ByteWindow::ByteWindow(const std::string& path)
    : _name(path == "-" ? "standard input" : path),
      _fd(path == "-" ? STDIN_FILENO : openFile(path.c_str())),
      _bytes(std::make_unique_for_overwrite<char[]>(CAPACITY)) {
    if (_fd < 0) throw IoError(_name + ": " + std::strerror(errno));
    struct stat status {};
    if (fstat(_fd, &status) == 0 && S_ISREG(status.st_mode)) _fileSize = static_cast<uint64_t>(status.st_size);
}

ByteWindow::~ByteWindow() {
    if (_fd != STDIN_FILENO) close(_fd);
}

void ByteWindow::read(std::size_t size) {
    if (_isAtEnd) return;
    if (_begin + size > CAPACITY) {
        std::memmove(_bytes.get(), _bytes.get() + _begin, _end - _begin);
        _end -= _begin;
        _begin = 0;
    }
    while (_end - _begin < size) {
        const ssize_t got = ::read(_fd, _bytes.get() + _end, CAPACITY - _end);
        if (got < 0) {
            if (errno == EINTR) continue;
            throw IoError(_name + ": " + std::strerror(errno));
        }
        if (got == 0) {
            _isAtEnd = true;
            return;
        }
        _end += static_cast<std::size_t>(got);
    }
}

} // namespace Capture
