#include "Backend/Velmora/BufferAllocator.h"

#include <ostream>
#include <stdexcept>
#include <string>

namespace Velmora {

void BufferAllocator::throwExhausted() const {
    throw std::out_of_range(std::string("BufferAllocator: exhausted memory block. (MsgName=") + _name
                            + ", Site=" + _site + ")");
}

void BufferAllocator::dump(std::ostream& os) const {
    os << "BufferAllocator: MsgName=" << _name << ", Site=" << _site << ", size=" << size() << ", used=" << used_size()
       << ", unused=" << unused_size() << ", deallocated=" << _nbytes_deallocated
       << ", buffer=" << static_cast<const void*>(_begin) << ", end=" << static_cast<const void*>(_end) << '\n';
}

} // namespace Velmora
