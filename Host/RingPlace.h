// Where a reader with a name stopped, kept in the ring, so that it goes on there in whatever process.
#pragma once

#include <cstdint>
#include <string>

#include "Host/Descriptor.h"
#include "Host/MemRing.h"

namespace Host {

class RingPlace {
  public:
    /// Throws RingError if another one has that name just now, or there are too many names. The system takes the name from
    /// a process that dies. REQUIRES: a name of 1 to LONGEST_READER_NAME bytes; the ring outlives it.
    RingPlace(const MemRing& ring, const std::string& name);

    uint64_t next() const;            ///< sequence of the message to go on with; 0: nobody of that name has begun
    void goOnWith(uint64_t sequence); ///< from now on

  private:
    uint64_t& _next;
    Descriptor _lock;
};

} // namespace Host
