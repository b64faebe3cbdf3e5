// A folder of this process alone, which nobody else can read, for what the SQL engine puts aside.
#pragma once

#include <string>

namespace qlproto::sql {

class SpillFolder {
  public:
    /// Makes $TMPDIR/qlproto-sql-PROCESS-XXXXXX, and removes those that killed processes have left. Throws Capture::IoError.
    SpillFolder();
    ~SpillFolder(); ///< removes it with all that is in it
    SpillFolder(const SpillFolder&) = delete;
    SpillFolder& operator=(const SpillFolder&) = delete;

    const std::string& path() const { return _path; }

  private:
    std::string _path;
};

} // namespace qlproto::sql
