// Captures as hosts write them: for days, in files that follow one another, for readers that look on.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Capture/Writer.h"

namespace Capture {

struct CaptureWriterOptions {
    std::optional<WriterForm> form = {}; ///< else what the name says
    std::optional<Definition> definition = {};
    uint64_t rotateSize = 0; ///< bytes, before they are compressed, after which the next file begins; 0: no limit
    int64_t rotateTime = 0;  ///< nanoseconds of packets' time after which the next file begins; 0: no limit
    bool isFlushed = false;  ///< each packet is written at once; slower, and larger if compressed
};

/// Writes whole packets only: whatever was written ends with one, be it on a pipe or when the process is killed.
///
/// Files appear under their names when they are complete: at the next one, or at close(). Until then they are hidden beside
/// them. Packets are written when 256 kB have gathered, and before that some 1 MB if they are compressed, or at flush().
/// If files are rotated, the first is a-00001.pcap for "a.pcap", and so on. Standard output, pipes and devices are not
/// rotated.
class CaptureWriter : public PacketSink {
  public:
    /// Throws IoError.
    CaptureWriter(const std::string& path, CaptureWriterOptions options);

    /// Throws IoError or ClosedPipe. REQUIRES: as Writer::packet().
    void packet(const Packet& packet) override;

    void flush();
    void close(); ///< to be called at the end: without, the last file is missing

  private:
    void begin();

    const std::string _path;
    const CaptureWriterOptions _options;
    const bool _isRotated;
    unsigned _number = 0; ///< of the file
    std::unique_ptr<Writer> _writer;
    std::optional<int64_t> _firstTime; ///< of the file's packets
};

} // namespace Capture
