// Text and bytes in big writes.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Capture/OutputFile.h"

namespace Capture {

class Output {
  public:
    /// "-" is standard output. Throws IoError.
    explicit Output(const std::string& path = "-");

    /// Throws IoError or ClosedPipe when what has gathered cannot be written.
    void append(std::string_view text);

    /// Writes what has gathered.
    void flush();

    bool isFile() const { return _file.isReplaced(); } ///< a regular one

    /// Writes what has gathered and puts the file in its place. To be called at the end: without, there is no file.
    void close();

  private:
    static constexpr std::size_t CAPACITY = 256 * 1024;

    OutputFile _file;
    std::unique_ptr<char[]> _buffer;
    std::size_t _size = 0;
};

/// Writes a whole text to a file; "-" is standard output, whose reader need not take it all. Throws IoError.
void writeText(std::string_view text, const std::string& path = "-");

} // namespace Capture
