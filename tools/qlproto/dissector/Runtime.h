// The fixed part of the packet-analyser plug-in: runtime.lua, which the build embeds.
#pragma once

#include <string_view>

namespace qlproto {

extern const std::string_view DISSECTOR_RUNTIME;

} // namespace qlproto
