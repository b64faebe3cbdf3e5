#include "tools/qlproto/messages/OpenCapture.h"

#include "generated/QLProtocol/QLProtocol.traits.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

const Capture::Definition& ownDefinition() {
    static const Capture::Definition definition = Capture::definitionOf<Quillon::QLProtocolTraits>();
    return definition;
}

Capture::Reader openCapture(const std::string& path) {
    const std::string difference = path == "-" ? "" : Capture::differenceOfDefinition(path, ownDefinition());
    if (!difference.empty()) tell("qlproto: " + difference);
    return Capture::Reader(path);
}

} // namespace qlproto
