// The kernel for processors without BMI2, whatever this one has.
#pragma once

#include "Backend/Common/Processor.h"

/// While one lives, a library that is linked statically takes that kernel. For one thread.
struct OlderProcessor {
    OlderProcessor() { Quillon::fastDeposit = false; }
    ~OlderProcessor() { Quillon::fastDeposit = was; }

    const bool was = Quillon::fastDeposit;
};
