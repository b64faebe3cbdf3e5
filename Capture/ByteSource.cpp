#include "Capture/ByteSource.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
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

FileSource::FileSource(const std::string& path)
    : _name(path == "-" ? "standard input" : path), _fd(path == "-" ? STDIN_FILENO : openFile(path.c_str())) {
    if (_fd < 0) throw IoError(_name + ": " + std::strerror(errno));
    struct stat status {};
    if (fstat(_fd, &status) == 0 && S_ISREG(status.st_mode)) _size = static_cast<uint64_t>(status.st_size);
}

FileSource::~FileSource() {
    if (_fd != STDIN_FILENO) close(_fd);
}

bool FileSource::hasInput(int milliseconds) const {
    pollfd it{.fd = _fd, .events = POLLIN, .revents = 0};
    return poll(&it, 1, milliseconds) != 0; // what is wrong is found out by reading
}

std::size_t FileSource::read(char* bytes, std::size_t size) {
    ssize_t got;
    while ((got = ::read(_fd, bytes, size)) < 0)
        if (errno != EINTR) throw IoError(_name + ": " + std::strerror(errno));
    _bytesRead += static_cast<std::size_t>(got);
    return static_cast<std::size_t>(got);
}

void FileSource::seek(uint64_t offset) {
    if (::lseek(_fd, static_cast<off_t>(offset), SEEK_SET) < 0) throw IoError(_name + ": " + std::strerror(errno));
    _bytesRead = offset;
}

std::string FileSource::bytesAt(uint64_t offset, std::size_t size) {
    seek(offset);
    std::string bytes(size, '\0');
    std::size_t held = 0;
    for (std::size_t got = 1; got != 0 && held != size; held += got) got = read(bytes.data() + held, size - held);
    bytes.resize(held);
    return bytes;
}

} // namespace Capture
