// A message as its values: as a list with the path of each, for people, and as bytes, for comparison.
//
// Fields can be ignored by name, which leaves out all that is in them, too.
#pragma once

#include <string>
#include <vector>

#include "Backend/Velmora/MsgDescriptor.h"
#include "Inspect/Display.h"

namespace qlproto {

struct FlatField {
    std::string path; ///< "contents.parameters[3].value"
    std::string text; ///< as JSON has it, but enumerators without quotes; characters beyond ASCII as \uXXXX
    bool isSet;       ///< neither zero, false nor empty
    bool isSecret;    ///< not to be shown
    bool isTime;      ///< at a station
};

/// The values of the message at `message`, whose identifier is `id`, in declaration order. A vector without elements is
/// one value, "[]". Prices and times are as `display` has them.
std::vector<FlatField> flatFields(Velmora::MsgType_t id, const void* message, const Inspect::Display& display,
                                  const std::vector<std::string>& ignored = {});

/// Bytes that are the same for two messages if and only if these are of one type and equal in all values that are not
/// ignored and in how many elements each vector has.
std::string valueBytes(Velmora::MsgType_t id, const void* message, const std::vector<std::string>& ignored);

} // namespace qlproto
