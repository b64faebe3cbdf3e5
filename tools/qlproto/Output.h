// Text output in big writes.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace qlproto {

class Output {
  public:
    /// Creates the file; "-" is standard output. Throws IoError.
    explicit Output(const std::string& path = "-");
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Throws IoError or ClosedPipe when what has gathered cannot be written.
    void append(std::string_view text);

    /// Appends text of which nothing may end the line or steer a terminal: control characters appear as \xNN.
    void appendVisible(std::string_view text);

    /// Writes what has gathered. To be called before the end; the destructor does not.
    void flush();

  private:
    static constexpr std::size_t CAPACITY = 256 * 1024;

    void write(std::string_view text);

    const std::string _name; ///< for errors
    const int _fd;
    std::unique_ptr<char[]> _buffer;
    std::size_t _size = 0;
};

/// Writes a whole text to a file; "-" is standard output. Throws IoError or ClosedPipe.
void writeText(std::string_view text, const std::string& path = "-");

} // namespace qlproto
