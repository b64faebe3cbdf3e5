// A file that grows at its end. Throws Capture::IoError.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace qlproto::sql {

class AppendedFile {
  public:
    /// Makes the file and its folder, or goes on at its end.
    explicit AppendedFile(const std::filesystem::path& path);
    ~AppendedFile();
    AppendedFile(const AppendedFile&) = delete;
    AppendedFile& operator=(const AppendedFile&) = delete;

    bool isNew() const { return _isNew; }
    void append(std::string_view bytes);
    void close(); ///< to be called at the end

  private:
    void flush();
    [[noreturn]] void fail() const;

    const std::string _path;
    int _file = -1;
    bool _isNew = false;
    std::string _bytes; ///< that are not in the file yet
};

} // namespace qlproto::sql
