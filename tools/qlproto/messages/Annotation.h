// The bytes of a body, each with what it stands for.
#pragma once

#include <string>
#include <string_view>

#include "Inspect/Reflection.h"
#include "Inspect/SafeText.h"
#include "Inspect/Verify.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

struct Annotation {
    std::string text; ///< lines: offset, bytes, field, type, value
    /// The same for programs, a row for each value.
    Table table{std::vector<Table::Align>{}};
    Inspect::Result fault; ///< where the body stops making sense, if it does
};

/// Explains the body up to its end or its first fault, whose bytes are shown and named. Offsets
/// count from the body's beginning. The body of a PadMessage is taken in the form that it is written in, if it has
/// that, else in the form that is read. Hidden secrets show neither value nor bytes; nor does what follows a fault then
/// or the last field, if the message has secrets at all, for it may be part of one.
Annotation annotate(const Inspect::MessageInfo& message, std::string_view body, const Inspect::Policy& policy,
                    Inspect::Secrets secrets = Inspect::Secrets::show);

} // namespace qlproto
