// QLProtocol.inspect.cpp: the table by which Inspect works with the protocol, instantiated.
//
//     template struct Inspect::detail::ProtocolTable<::Quillon::QLProtocolTraits>;
#include "generator/Emit.h"

namespace qlgen {

std::string emitInspect(const Definition& definition) {
    Text text(definition);
    text.add(R"(//
// The protocol's table for Inspect; see Inspect/Protocol.h. Whoever does not use Inspect leaves this source out.
#include "Inspect/ProtocolTables.h"
#include "$folder/$stem.traits.h"
)");
    text.guard();
    text.add(R"(
template struct Inspect::detail::ProtocolTable<::$namespace::$stemTraits>;
)",
             {{"stemTraits", definition.stem + "Traits"}});
    if (definition.isDefault)
        text.add(R"(
// This protocol is the one that is meant where none is given.
constinit const Inspect::Protocol* const Inspect::detail::defaultProtocol =
    &Inspect::protocol_of<::$namespace::$stemTraits>();
)",
                 {{"stemTraits", definition.stem + "Traits"}});
    return text.unguard();
}

} // namespace qlgen
