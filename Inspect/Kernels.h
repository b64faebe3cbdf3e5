// The choice between the codec's two kernels, for the walks of Inspect.
#pragma once

#include "Backend/Common/Processor.h"

namespace Inspect::walk {

#ifdef QLInspect_EXPORTS // a shared library has a flag of its own, which initialize() does not reach
[[gnu::visibility("hidden")]] inline bool has_fast_kernel() {
    static const bool isFast = Quillon::findFastDeposit();
    return isFast;
}
#else
QL_FORCE_INLINE bool has_fast_kernel() { return Quillon::fastDeposit; }
#endif

} // namespace Inspect::walk
