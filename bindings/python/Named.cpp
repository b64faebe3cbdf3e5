#include "bindings/python/Named.h"

#include <utility>

#include "Inspect/Reflection.h"

namespace qlproto_python {

namespace py = pybind11;

const Inspect::MessageInfo& messageOf(const py::object& nameOrId) {
    const bool isName = py::isinstance<py::str>(nameOrId);
    const std::string name = isName ? nameOrId.cast<std::string>() : "";
    const long id = isName ? -1 : nameOrId.cast<long>();
    for (const Inspect::MessageInfo& it : Inspect::all_messages(protocol()))
        if (isName ? it.type->name == name || it.type->name == name + "Message" : it.id == id) return it;
    throw py::key_error("no message is " + py::str(nameOrId).cast<std::string>());
}

Inspect::Policy policyOf(const std::string& name) {
    for (const auto& [known, policy] :
         {std::pair("whole", Inspect::whole), std::pair("strict", Inspect::strict),
          std::pair("tolerant", Inspect::tolerant), std::pair("rolling", Inspect::rolling)})
        if (name == known) return policy;
    throw py::value_error("no policy is " + name);
}

} // namespace qlproto_python
