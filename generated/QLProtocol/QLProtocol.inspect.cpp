// Generated from protocol/QLProtocol.xml by qlgen. Do not edit.
//
// The protocol's table for Inspect; see Inspect/Protocol.h. Whoever does not use Inspect leaves this source out.
#include "Inspect/ProtocolTables.h"
#include "generated/QLProtocol/QLProtocol.traits.h"

template struct Inspect::detail::ProtocolTable<::Quillon::QLProtocolTraits>;

// This protocol is the one that is meant where none is given.
constinit const Inspect::Protocol* const Inspect::detail::defaultProtocol =
    &Inspect::protocol_of<::Quillon::QLProtocolTraits>();
