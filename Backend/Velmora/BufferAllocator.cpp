#include "Backend/Velmora/BufferAllocator.h"

#include <ostream>
#include <stdexcept>
#include <string>

namespace Velmora {

namespace {

/// A label that the host left out.
const char* shown(const char* label) { return label != nullptr ? label : ""; }

} // namespace

void BufferAllocator::throwExhausted() const {
    throw std::out_of_range(std::string("BufferAllocator: exhausted memory block. (MsgName=") + shown(_name)
                            + ", Site=" + shown(_site) + ")");
}

void BufferAllocator::dump(std::ostream& os) const {
    os << "BufferAllocator: MsgName=" << shown(_name) << ", Site=" << shown(_site) << ", size=" << size()
       << ", used=" << used_size() << ", unused=" << unused_size() << ", deallocated=" << _nbytes_deallocated
       << ", buffer=" << static_cast<const void*>(_begin) << ", end=" << static_cast<const void*>(_end) << '\n';
}

} // namespace Velmora
