// The steps of a trace as people and programs read them. The packets have been verified by the policy of the options.
#pragma once

#include <string>
#include <vector>

#include "tools/qlproto/messages/ScanOptions.h"
#include "tools/qlproto/terminal/Table.h"
#include "tools/qlproto/trading/Trace.h"

namespace qlproto {

/// A table with a row for each step and the fields of its message that are set. Secrets are hidden.
Table traceTable(const std::vector<Trace::Step>& steps, const ScanOptions& options);

/// A line of JSON for each step, as MessageLine has it, with the packet's number and the gap to the step before.
std::string traceLines(const std::vector<Trace::Step>& steps, const ScanOptions& options);

} // namespace qlproto
