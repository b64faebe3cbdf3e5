// Captures as commands open them, and the definition that they make captures with.
#pragma once

#include <string>

#include "Capture/Definition.h"
#include "Capture/Reader.h"

namespace qlproto {

/// The definition that this program is built with.
const Capture::Definition& ownDefinition();

/// Opens a capture; "-" is standard input. Tells on standard error if it was made with another definition.
Capture::Reader openCapture(const std::string& path);

} // namespace qlproto
