// A file read from front to back, with a look ahead. Memory stays bounded, and no more is waited for than was asked
// for: what a live source has sent is seen at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Capture {

class ByteWindow {
  public:
    /// The furthest look ahead.
    static constexpr std::size_t CAPACITY = 2 * 1024 * 1024;

    /// Opens the file; "-" is standard input. Throws IoError.
    explicit ByteWindow(const std::string& path);
    ~ByteWindow();
    ByteWindow(const ByteWindow&) = delete;
    ByteWindow& operator=(const ByteWindow&) = delete;

    /// The next bytes: `size` of them or more, fewer only where the file ends. Valid until the next call. Throws
    /// IoError. REQUIRES: size <= CAPACITY. With 0 nothing is read: it gives what is held.
    std::string_view peek(std::size_t size) {
        if (_end - _begin < size) read(size);
        return {_bytes.get() + _begin, _end - _begin};
    }

    /// Goes on after the next bytes. REQUIRES: the last peek() gave as many.
    void skip(std::size_t size) { _begin += size, _position += size; }

    uint64_t position() const { return _position; } ///< offset of the next byte in the file
    uint64_t fileSize() const { return _fileSize; } ///< 0 if that is not known, as of a pipe
    const std::string& name() const { return _name; }

  private:
    void read(std::size_t size);

    std::string _name;
    int _fd;
    std::unique_ptr<char[]> _bytes;
    std::size_t _begin = 0; ///< the bytes held are [_begin, _end)
    std::size_t _end = 0;
    bool _isAtEnd = false;
    uint64_t _position = 0;
    uint64_t _fileSize = 0;
};

} // namespace Capture
