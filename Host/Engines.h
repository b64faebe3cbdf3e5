// The engines of buses that a program is linked with: shared memory always, NATS by the library QLHostNats.
//
//     const auto bus = Host::openBus(url, topics, Host::engines());
#pragma once

#include <span>

#include "Host/Bus.h"
#ifdef QL_WITH_NATS // who links QLHostNats has it from there
#include "Host/NatsBus.h"
#endif

namespace Host {

/// Static, because another part of the same program may be linked with others.
static inline std::span<const Engine> engines() {
    static const Engine all[] = {
        MEM_ENGINE,
#ifdef QL_WITH_NATS
        NATS_ENGINE,
#endif
    };
    return all;
}

} // namespace Host
