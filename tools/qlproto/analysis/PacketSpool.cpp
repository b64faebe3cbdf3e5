#include "tools/qlproto/analysis/PacketSpool.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fmt/format.h>
#include <unistd.h>

#include "Capture/Errors.h"

namespace qlproto {

namespace {

[[noreturn]] void fail() { throw Capture::IoError(fmt::format("temporary file: {}", std::strerror(errno))); }

/// A file that goes when it is closed, in TMPDIR or /tmp.
std::FILE* openTemporary() {
    std::error_code error;
    std::string path = (std::filesystem::temp_directory_path(error) / "packets-XXXXXX").string();
    const int fd = error ? -1 : mkstemp(path.data());
    if (fd < 0) throw Capture::IoError(fmt::format("{}: {}", path, error ? error.message() : std::strerror(errno)));
    unlink(path.c_str());
    std::FILE* const file = fdopen(fd, "w+b");
    if (file == nullptr) fail();
    return file;
}

} // namespace

void PacketSpool::add(const Capture::Packet& packet, uint64_t number) {
    const Head head{packet.time, number, packet.bytes.size(), packet.connection != nullptr};
    if (_held.size() + sizeof(head) + sizeof(Capture::Connection) + head.size > CAPACITY) spill();
    _held.append(reinterpret_cast<const char*>(&head), sizeof(head));
    if (head.hasConnection) _held.append(reinterpret_cast<const char*>(packet.connection), sizeof(Capture::Connection));
    _held.append(packet.bytes);
}

void PacketSpool::spill() {
    if (!_file) _file.reset(openTemporary());
    if (std::fwrite(_held.data(), 1, _held.size(), _file.get()) != _held.size()) fail();
    _held.clear();
}

void PacketSpool::forEach(const Visit& visit) {
    if (_file) {
        spill();
        if (std::fseek(_file.get(), 0, SEEK_SET) != 0) fail(); // writes what is left, too
    } else {
        if (_held.empty()) return;
        _file.reset(fmemopen(_held.data(), _held.size(), "rb"));
        if (!_file) fail();
    }
    Head head;
    Capture::Connection connection;
    std::string bytes;
    while (std::fread(&head, sizeof(head), 1, _file.get()) == 1) {
        if (head.hasConnection && std::fread(&connection, sizeof(connection), 1, _file.get()) != 1) fail();
        bytes.resize(head.size);
        if (std::fread(bytes.data(), 1, bytes.size(), _file.get()) != bytes.size()) fail();
        Capture::Packet packet{head.time, bytes};
        if (head.hasConnection) packet.connection = &connection;
        visit(packet, head.number);
    }
    if (std::ferror(_file.get()) != 0) fail();
}

} // namespace qlproto
