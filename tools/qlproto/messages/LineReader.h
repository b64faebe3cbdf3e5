// The lines of a text file, one by one, of bounded length.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Capture/ByteWindow.h"

namespace qlproto {

class LineReader {
  public:
    /// Opens the file; "-" is standard input. Waits for its first byte, so that what cannot be read is known before
    /// anything is done. Throws IoError. Lines of more than `longest` bytes are cut to these.
    LineReader(const std::string& path, std::size_t longest) : _window(path), _longest(longest) { _window.peek(1); }

    /// The next line, without its end, valid until the next call; false at the end of the file. Throws IoError.
    bool next(std::string_view& line);

    bool isCut() const { return _isCut; }       ///< whether the last line was longer
    uint64_t number() const { return _number; } ///< of the last line, from 1
    const std::string& name() const { return _window.name(); }

  private:
    Capture::ByteWindow _window;
    const std::size_t _longest;
    std::string _line; ///< what has been gathered of a line that the window did not hold whole
    bool _isCut = false;
    uint64_t _number = 0;
};

} // namespace qlproto
