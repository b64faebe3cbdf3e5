// Zstandard in frames that can be sought: each holds some 1 MB of whole records and is read without the others. A frame that
// readers skip ends the file and tells the lengths of all, as the seekable format has it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/ByteWindow.h"
#include "Capture/Output.h"

struct ZSTD_CCtx_s; // of <zstd.h>

namespace Capture {

/// Where a file's frames begin, by the frame that tells their lengths; nothing if it has none that can be true.
/// Throws IoError. REQUIRES: it is a regular one.
std::vector<Place> framesOf(FileSource& file);

class ZstdFrames {
  public:
    /// REQUIRES: the output outlives this.
    explicit ZstdFrames(Output& output);

    /// Throws as the output does.
    void append(std::string_view record);

    void endFrame(); ///< if it holds anything
    void close();    ///< ends the file

  private:
    struct Free {
        void operator()(ZSTD_CCtx_s* context) const;
    };

    Output& _output;
    const std::unique_ptr<ZSTD_CCtx_s, Free> _context;
    std::string _content; ///< of the frame
    std::string _frame;   ///< compressed
    std::string _table;   ///< of the lengths of all frames
};

} // namespace Capture
