// The protocol that the module speaks, and how callers name what is in it. All of it needs the interpreter's lock.
#pragma once

#include <string>

#include <pybind11/pybind11.h>

#include "Inspect/Protocol.h"
#include "Inspect/Verify.h"

namespace qlproto_python {

inline const Inspect::Protocol& protocol() { return Inspect::default_protocol(); }

/// By its name, with or without "Message" at its end, or its identifier. Raises KeyError.
const Inspect::MessageInfo& messageOf(const pybind11::object& nameOrId);

/// Raises ValueError.
Inspect::Policy policyOf(const std::string& name);

} // namespace qlproto_python
