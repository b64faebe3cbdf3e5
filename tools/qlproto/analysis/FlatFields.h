// A message as a list of its values, each with its path: what is compared, and what is told of a step.
#pragma once

#include <string>
#include <vector>

#include "Backend/Velmora/MsgDescriptor.h"

namespace qlproto {

struct FlatField {
    std::string path; ///< "contents.parameters[3].value"
    std::string text; ///< as JSON has it, but enumerators without quotes; characters beyond ASCII as \uXXXX
    bool isSet;       ///< neither zero, false nor empty
    bool isSecret;    ///< not to be shown
};

/// The values of the message at `message`, whose identifier is `id`, in declaration order. A vector without elements is
/// one value, "[]".
std::vector<FlatField> flatFields(Velmora::MsgType_t id, const void* message);

} // namespace qlproto
