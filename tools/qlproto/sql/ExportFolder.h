// The folder that an export writes: FOLDER/TABLE/hour=2024-03-04T07/NAME.parquet, as distributed engines have it.
//
// Files are written in a folder beside, ".part-" and the number of the process, and moved to their places when those of a
// table are complete. That folder goes with the object; one that a killed process has left goes when the next export begins.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace qlproto::sql {

/// Whether the name is the prefix and the number of a process that is dead, and perhaps more after a hyphen.
bool isOfDeadProcess(std::string_view name, std::string_view prefix);

class ExportFolder {
  public:
    /// Throws Capture::IoError.
    explicit ExportFolder(const std::string& path);
    ~ExportFolder();
    ExportFolder(const ExportFolder&) = delete;
    ExportFolder& operator=(const ExportFolder&) = delete;

    /// Where the files of a table are written, in folders as they shall have.
    std::filesystem::path beside(const std::string& table) const { return _part / table; }

    /// Puts them in their places, instead of those that an earlier export has made. They are named after the capture, with
    /// numbers after the first of a folder. Returns how many there are. Throws Capture::IoError.
    size_t complete(const std::string& table, const std::string& name, const std::string& extension);

    /// Whether such files are there already, all of them, and not older than the capture. A hidden file says so.
    bool isComplete(const std::string& table, const std::string& name, const std::string& extension,
                    const std::string& capture) const;

    /// The name of what is made of a capture; different captures of the same name have different ones.
    static std::string nameOf(const std::string& capture);

    /// "hour=2024-03-04T07"
    static std::string hourOf(int64_t time);

  private:
    std::filesystem::path markOf(const std::string& table, const std::string& name, const std::string& extension) const;

    std::filesystem::path _folder, _part;
};

/// A file of lines, beside its place. Throws Capture::IoError.
class LineFile {
  public:
    /// Lines go to its end.
    explicit LineFile(const std::filesystem::path& path);
    ~LineFile();
    LineFile(const LineFile&) = delete;
    LineFile& operator=(const LineFile&) = delete;

    bool isNew() const { return _isNew; }
    void append(std::string_view lines);
    void close(); ///< to be called at the end

  private:
    void flush();
    [[noreturn]] void fail() const;

    const std::string _path;
    int _file = -1;
    bool _isNew = false;
    std::string _lines;
};

} // namespace qlproto::sql
