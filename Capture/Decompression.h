// Compressed files: gzip (of one member or several) and Zstandard (of one frame or several), told by their first bytes.
//
// Where compressed data is damaged, all up to the damage is read, and reading goes on with the next member or frame if
// there is one. So little is lost of files of many frames, such as Capture::Writer makes.
//
// Limits: memory is bounded whatever the file says. A Zstandard frame may ask for a window of 128 MB at most, as for
// `zstd` itself. What becomes more than a thousand times as long as the file, and 256 MB, is taken for an attack.
#pragma once

#include <memory>
#include <string_view>

#include "Capture/ByteSource.h"

namespace Capture {

/// Whether a file that begins with these bytes is compressed.
bool isCompressed(std::string_view start);

/// Whether one can be that begins with these bytes, be they ever so few.
bool mayBeCompressed(std::string_view start);

/// The contents of a compressed file, of which `start` has been read already. REQUIRES: isCompressed(start), and the file
/// outlives the result.
std::unique_ptr<ByteSource> decompressor(std::string_view start, FileSource& file);

} // namespace Capture
