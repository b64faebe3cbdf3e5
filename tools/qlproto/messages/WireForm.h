// How values travel, for people and for programs that read the schema.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "Inspect/Reflection.h"

namespace qlproto {

struct WireForm {
    const char* name;              ///< for programs: "zigzag-varint"
    const char* text;              ///< for people: "zig-zag varint"
    std::size_t minimal;           ///< fewest bytes, as read() takes it
    std::optional<size_t> maximal; ///< most bytes, as the writer makes it; none where a vector makes it open
};

WireForm wireForm(const Inspect::ValueInfo& value);
WireForm wireForm(const Inspect::TypeInfo& type);

/// "1", "1..10", "25 or more".
std::string sizeText(const WireForm& form);

} // namespace qlproto
