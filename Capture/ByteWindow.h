// A file read from front to back, with a look ahead. Memory stays bounded, and no more is waited for than was asked
// for: what a live source has sent is seen at once. Of a compressed file it is the contents that are read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Capture/ByteSource.h"

namespace Capture {

/// A place in a file from which reading can begin.
struct Place {
    uint64_t file = 0;     ///< offset in the file: of a frame, if it is compressed
    uint64_t contents = 0; ///< and in the contents
};

class ByteWindow {
  public:
    /// The furthest look ahead.
    static constexpr std::size_t CAPACITY = 2 * 1024 * 1024;

    /// Opens the file; "-" is standard input. Throws IoError.
    explicit ByteWindow(const std::string& path);

    /// The next bytes: `size` of them or more, fewer only where the file ends. Valid until the next call. Throws
    /// IoError, or DamagedCapture if the file is compressed beyond the limits (Decompression.h). REQUIRES: size <=
    /// CAPACITY.
    std::string_view peek(std::size_t size) {
        if (_end - _begin < size) read(size);
        return {_bytes.get() + _begin, _end - _begin};
    }

    /// Goes on after the next bytes. REQUIRES: the last peek() gave as many.
    void skip(std::size_t size) { _begin += size, _position += size; }

    /// Goes on at another place. Throws IoError. REQUIRES: isFile().
    void jump(const Place& to);

    /// What is held already of the next bytes.
    std::string_view held() const { return {_bytes.get() + _begin, _end - _begin}; }

    /// Whether the compression has a fault at the position or before it; the first of them.
    bool hasFault() const {
        return _contents && !_contents->faults.empty() && _contents->faults.front().position <= _position;
    }
    std::optional<SourceFault> takeFault();

    /// Whether the file has bytes that were not read yet, or is at its end; waits up to so many milliseconds for them.
    bool hasInput(int milliseconds) const { return _file.hasInput(milliseconds); }

    uint64_t position() const { return _position; }    ///< offset of the next byte in the contents
    bool isFile() const { return _file.size() != 0; }  ///< a regular one, which is not waited for
    uint64_t fileSize() const { return _file.size(); } ///< 0 if that is not known, as of a pipe
    const std::string& name() const { return _file.name(); }

    /// Bytes of the file that were read to get here.
    uint64_t filePosition() const { return _contents ? _file.bytesRead() : _position; }

    /// Bytes of the contents; 0 if that is not known, as of a pipe or a compressed file.
    uint64_t size() const { return _contents ? 0 : _file.size(); }

  private:
    /// Small at first: of most captures no more is looked at ahead than a packet or two, and many may be open at once.
    static constexpr std::size_t SMALLEST = 64 * 1024;

    void read(std::size_t size);
    void makeRoom(std::size_t size);

    FileSource _file;
    std::unique_ptr<ByteSource> _contents; ///< null if they are the file itself
    std::unique_ptr<char[]> _bytes;
    std::size_t _capacity = SMALLEST;
    std::size_t _begin = 0; ///< the bytes held are [_begin, _end)
    std::size_t _end = 0;
    bool _isAtEnd = false;
    bool _isRecognised = false; ///< whether the file is compressed has been decided
    uint64_t _position = 0;
};

} // namespace Capture
