// The statistics block of a message descriptor.
//
// The framework never updates it. Who accounts for message traffic does, through Quillon::Atomic only; a plain read is
// a snapshot of one counter.
#pragma once

#include "Backend/LockFree/Atomic.h"

namespace Velmora {

struct MsgStats {
    Quillon::cas_t nconstruct = 0; ///< messages constructed
    Quillon::cas_t ndestroy = 0;   ///< messages destroyed
    Quillon::cas_t ncopy = 0;      ///< messages copied
    Quillon::cas_t nwrite = 0;     ///< messages encoded
    Quillon::cas_t nread = 0;      ///< messages decoded
    Quillon::cas_t nalloc = 0;     ///< message blocks allocated
    Quillon::cas_t ndealloc = 0;   ///< message blocks released
    Quillon::cas_t max_size = 0;   ///< largest size seen, in bytes; kept with Atomic::setmax
    Quillon::cas_t nundress = 0;   ///< kept by the layer of the message blocks
};

} // namespace Velmora
