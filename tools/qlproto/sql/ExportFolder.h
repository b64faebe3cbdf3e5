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

/// What an export makes of a capture, of each table.
struct ExportedFiles {
    std::string name; ///< see ExportFolder::nameOf()
    std::string extension;
    std::string how; ///< they were made: those that were made otherwise are not the same
};

class ExportFolder {
  public:
    /// Throws Capture::IoError.
    explicit ExportFolder(const std::string& path);
    ~ExportFolder();
    ExportFolder(const ExportFolder&) = delete;
    ExportFolder& operator=(const ExportFolder&) = delete;

    /// Where the files of a table are written, those of each capture in partOf() it, in folders as they shall have.
    std::filesystem::path beside(const std::string& table) const { return _part / table; }
    static std::string partOf(size_t capture) { return "_part=" + std::to_string(capture); }

    /// Puts those of a capture in their places, instead of those that an earlier export has made. They are named after it,
    /// with numbers after the first of a folder. Returns how many there are. Throws Capture::IoError.
    size_t complete(const std::string& table, size_t capture, const ExportedFiles& files);

    /// Removes those that an earlier export has made of a capture, however it did. Throws Capture::IoError.
    void remove(const std::string& table, const ExportedFiles& files);

    /// Whether such files are there already, all of them, and not older than that. A hidden file says so.
    bool isComplete(const std::string& table, const ExportedFiles& files, std::filesystem::file_time_type newest) const;

    /// The name of what is made of a capture; different captures of the same name have different ones.
    static std::string nameOf(const std::string& capture);

    /// "hour=2024-03-04T07"
    static std::string hourOf(int64_t time);

  private:
    std::filesystem::path markOf(const std::string& table, const ExportedFiles& files) const;

    std::filesystem::path _folder, _part;
};

} // namespace qlproto::sql
