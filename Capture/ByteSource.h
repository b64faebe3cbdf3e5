// Where bytes come from, one after the other: a file, or what a compressed file holds.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

namespace Capture {

/// A place in a source's bytes at which something is wrong with what they are made from: bytes may be missing there.
struct SourceFault {
    uint64_t position = 0; ///< in the bytes
    std::string reason;
};

class ByteSource {
  public:
    virtual ~ByteSource() = default;

    /// The next bytes: as many as can be had without waiting for more, at least one and at most `size`; 0 at the end.
    /// Throws IoError, or DamagedCapture where to go on would take more than the limits allow.
    virtual std::size_t read(char* bytes, std::size_t size) = 0;

    std::deque<SourceFault> faults; ///< in what was read until now, in order; to be taken by whoever reads
};

/// A file as it stands.
class FileSource : public ByteSource {
  public:
    /// Opens the file; "-" is standard input. Throws IoError.
    explicit FileSource(const std::string& path);
    ~FileSource() override;
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    std::size_t read(char* bytes, std::size_t size) override;

    /// Waits for bytes, or the end, up to so many milliseconds; whether there are any to be read without waiting.
    bool hasInput(int milliseconds) const;

    /// Goes on at that offset. Throws IoError. REQUIRES: size() != 0.
    void seek(uint64_t offset);

    /// Goes there and reads so many bytes, fewer at the end. Throws IoError. REQUIRES: as above.
    std::string bytesAt(uint64_t offset, std::size_t size);

    uint64_t size() const { return _size; } ///< 0 if that is not known, as of a pipe
    uint64_t bytesRead() const { return _bytesRead; }
    const std::string& name() const { return _name; }

  private:
    const std::string _name;
    const int _fd;
    uint64_t _size = 0;
    std::atomic<uint64_t> _bytesRead = 0; ///< may be read ahead on another thread
};

} // namespace Capture
