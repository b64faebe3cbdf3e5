#include "tools/qlproto/Output.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "tools/qlproto/Errors.h"

namespace qlproto {

namespace {

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

/// Looks at all characters without stopping, which the compiler turns into wide instructions; nearly all texts have
/// none.
bool holdsControl(std::string_view text) {
    bool found = false;
    for (char c : text) found |= isControl(c);
    return found;
}

} // namespace

Output::Output(const std::string& path)
    : _name(path == "-" ? "standard output" : path),
      _fd(path == "-" ? STDOUT_FILENO : ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)),
      _buffer(std::make_unique_for_overwrite<char[]>(CAPACITY)) {
    if (_fd < 0) throw IoError(fmt::format("{}: {}", _name, std::strerror(errno)));
}

Output::~Output() {
    if (_fd != STDOUT_FILENO) ::close(_fd);
}

void Output::append(std::string_view text) {
    if (text.size() > CAPACITY - _size) {
        flush();
        if (text.size() > CAPACITY) return write(text);
    }
    std::memcpy(_buffer.get() + _size, text.data(), text.size());
    _size += text.size();
}

void Output::appendVisible(std::string_view text) {
    if (!holdsControl(text)) return append(text);
    for (;;) {
        const auto control = std::find_if(text.begin(), text.end(), isControl);
        append({text.begin(), control});
        if (control == text.end()) return;
        append(fmt::format("\\x{:02X}", static_cast<unsigned char>(*control)));
        text = {control + 1, text.end()};
    }
}

void Output::flush() {
    const std::size_t size = _size;
    _size = 0; // first, so that nothing is written twice after an error
    write({_buffer.get(), size});
}

void Output::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(_fd, text.data(), text.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            if (errno == EPIPE) throw ClosedPipe();
            throw IoError(fmt::format("{}: {}", _name, std::strerror(errno)));
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void writeText(std::string_view text, const std::string& path) {
    Output output(path);
    output.append(text);
    output.flush();
}

} // namespace qlproto
