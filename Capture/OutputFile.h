// Where output goes, byte by byte.
//
// A regular file is written beside its place, as ".part-..." in the same folder, and renamed when it is complete.
// Until then what stands there is left alone, be it the command's own input; and it stays if the disk is full, the
// command fails or is interrupted. Of a symbolic link the file it leads to is replaced. The new file has the old one's
// permissions, and its owner and group as far as the user may give them away; other hard links keep the old contents.
//
// Standard output, devices, pipes and open files named through /proc (as /dev/stdout) are written in place.
#pragma once

#include <string>
#include <string_view>

struct stat; // of <sys/stat.h>

namespace Capture {

class OutputFile {
  public:
    /// "-" is standard output. Throws IoError. One file at a time: a signal removes what the latest has written.
    explicit OutputFile(const std::string& path);

    /// Removes the file if it was not completed.
    ~OutputFile();

    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Throws IoError, or ClosedPipe if the output's reader has gone.
    void write(std::string_view bytes);

    /// Whether it is a regular file, which appears when it is complete.
    bool isReplaced() const { return !_target.empty(); }

    /// Puts the file in its place. Nothing can be written after that. Throws IoError.
    void complete();

  private:
    /// Creates the file beside `_target`, which is `old` if it exists.
    void createBeside(const struct ::stat* old);
    [[noreturn]] void fail(const char* what = "") const;

    const std::string _name; ///< for errors
    std::string _target;     ///< what is replaced at the end; empty if the output is written in place
    std::string _part;       ///< what is written until then
    int _fd = -1;
};

} // namespace Capture
