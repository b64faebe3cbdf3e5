#include "Backend/Velmora/MsgProtocol.h"

namespace Velmora {

std::string MsgProtocol::getDefinition() const {
    size_t length = 0;
    const void* definition = getCompressedDefinition(length);
    return std::string(static_cast<const char*>(definition), length);
}

} // namespace Velmora
