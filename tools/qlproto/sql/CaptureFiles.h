// Captures that are read several times, standard input among them.
#pragma once

#include <string>
#include <vector>

#include "tools/qlproto/messages/OpenCapture.h"

namespace qlproto::sql {

class CaptureFiles {
  public:
    /// Opens each capture once, so that one that cannot be read, or was made with another definition, is told at once. "-",
    /// standard input, is copied into a temporary file. Throws as Capture::Reader does.
    explicit CaptureFiles(std::vector<std::string> paths, const NetworkChoice& network);
    ~CaptureFiles();
    CaptureFiles(const CaptureFiles&) = delete;
    CaptureFiles& operator=(const CaptureFiles&) = delete;

    const std::vector<std::string>& paths() const { return _paths; } ///< that can be opened

  private:
    void copyStandardInput();

    std::vector<std::string> _paths;
    int _copy = -1;
};

} // namespace qlproto::sql
