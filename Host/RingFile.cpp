#include "Host/RingFile.h"

#include <bit>
#include <cerrno>
#include <new>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Host/RingLayout.h"

namespace Host::detail {

namespace {

[[noreturn]] void fail(const std::string& path, const std::string& what) { throw RingError(path + ": " + what); }
[[noreturn]] void failBySystem(const std::string& path) { fail(path, std::generic_category().message(errno)); }

/// Writes the header of a ring without messages. False, with errno, if that fails.
bool writeHeader(int file, size_t size) {
    void* const memory = ::mmap(nullptr, RingHeader::offset(), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED) return false;
    auto* const header = new (memory) RingHeader{};
    header->magic = RingHeader::MAGIC;
    header->layout = RingHeader::LAYOUT;
    header->size = size;
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    pthread_mutex_init(&header->turn, &attributes);
    pthread_mutexattr_destroy(&attributes);
    ::munmap(memory, RingHeader::offset());
    return true;
}

/// Makes the ring under another name first: nobody sees it before it is whole. Another one may have the name by then.
void make(const std::string& path, size_t size) {
    std::random_device random;
    const std::string part = path + ".part-" + std::to_string(random());
    const Descriptor file(::open(part.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0660));
    if (!file) failBySystem(part);
    // Its pages are taken now: a full disk is told here, and never by a signal while a message is written.
    int reason = ::posix_fallocate(file.number(), 0, static_cast<off_t>(RingHeader::offset() + size));
    if (reason == 0 && (!writeHeader(file.number(), size) || ::link(part.c_str(), path.c_str()) != 0)) reason = errno;
    ::unlink(part.c_str());
    errno = reason;
    if (reason != 0 && reason != EEXIST) failBySystem(path);
}

} // namespace

void RingFile::Unmap::operator()(RingHeader* header) const { ::munmap(header, size); }

RingFile RingFile::open(const std::string& path, size_t size) {
    for (;;) {
        Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
        if (file) return RingFile(std::move(file), path);
        if (errno != ENOENT) failBySystem(path);
        if (size > SIZE_MAX / 4) fail(path, "too large");
        make(path, std::bit_ceil(std::max(size, LEAST_SIZE)));
    }
}

RingFile::RingFile(Descriptor file, const std::string& path) : _file(std::move(file)) {
    struct stat status;
    if (::fstat(_file.number(), &status) != 0) failBySystem(path);
    const auto all = static_cast<size_t>(status.st_size);
    if (!S_ISREG(status.st_mode) || all < RingHeader::offset() + LEAST_SIZE) fail(path, "is no ring of messages");
    void* const memory = ::mmap(nullptr, all, PROT_READ | PROT_WRITE, MAP_SHARED, _file.number(), 0);
    if (memory == MAP_FAILED) failBySystem(path);
    _header = {static_cast<RingHeader*>(memory), Unmap{all}};
    if (_header->magic != RingHeader::MAGIC) fail(path, "is no ring of messages");
    if (_header->layout != RingHeader::LAYOUT)
        fail(path,
             "is a ring of layout " + std::to_string(_header->layout) + ", not " + std::to_string(RingHeader::LAYOUT));
    if (!std::has_single_bit(_header->size) || RingHeader::offset() + _header->size != all)
        fail(path, "is a ring of another size than its file");
}

Descriptor RingFile::again() const {
    const std::string path = "/proc/self/fd/" + std::to_string(_file.number()); // whatever has its name by now
    Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
    if (!file) failBySystem(path);
    return file;
}

} // namespace Host::detail
