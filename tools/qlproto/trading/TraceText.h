// The steps of a trace as people and programs read them. The packets have been verified by that policy.
#pragma once

#include <string>
#include <vector>

#include "Inspect/Display.h"
#include "Inspect/Verify.h"
#include "tools/qlproto/trading/Trace.h"

namespace qlproto {

/// A table with a row for each step and the fields of its message that are set. Secrets are hidden.
std::string traceTable(const std::vector<Trace::Step>& steps, const Inspect::Policy& policy);

/// A line of JSON for each step, as MessageLine has it, with the packet's number and the gap to the step before.
std::string traceLines(const std::vector<Trace::Step>& steps, const Inspect::Policy& policy,
                       const Inspect::Display& display);

} // namespace qlproto
