// The file of a ring of messages, in this process's memory.
#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

#include "Host/Descriptor.h"

namespace Host {

/// The file cannot be made or opened, or is none of this layout, or nothing may be published now.
class RingError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

namespace detail {

struct RingHeader;

class RingFile {
  public:
    static constexpr size_t LEAST_SIZE = 1 << 16;

    /// Opens it or, if there is none, makes it with `size` bytes for messages. Throws RingError.
    static RingFile open(const std::string& path, size_t size);

    RingHeader& header() const { return *_header; }
    /// The same file, opened once more. Throws RingError.
    Descriptor again() const;

  private:
    struct Unmap {
        size_t size;
        void operator()(RingHeader* header) const;
    };

    RingFile(Descriptor file, const std::string& path);

    Descriptor _file;
    std::unique_ptr<RingHeader, Unmap> _header;
};

} // namespace detail
} // namespace Host
