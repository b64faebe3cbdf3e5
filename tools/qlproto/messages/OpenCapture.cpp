#include "tools/qlproto/messages/OpenCapture.h"

#include "tools/qlproto/Tool.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

const Capture::Definition& ownDefinition() {
    static const Capture::Definition definition{std::string(thisTool.protocol.name), thisTool.protocol.version,
                                                std::string(thisTool.protocol.wireSignature),
                                                std::string(thisTool.protocol.namesSignature)};
    return definition;
}

Capture::Reader openCapture(const std::string& path) {
    std::string difference = path == "-" ? "" : Capture::differenceOfDefinition(path, ownDefinition());
    Capture::Reader capture(path, thisTool.protocol);
    if (difference.empty()) difference = Capture::differenceOfDefinition(path, capture.definition(), ownDefinition());
    if (!difference.empty()) tellFault(difference);
    return capture;
}

} // namespace qlproto
