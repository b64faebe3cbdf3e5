// QLProtocol is the protocol that is meant where none is given.
#include "Inspect/Protocol.h"
#include "generated/QLProtocol/QLProtocol.traits.h"

constinit const Inspect::Protocol* const Inspect::detail::defaultProtocol =
    &Inspect::protocol_of<Quillon::QLProtocolTraits>();
