// Bodies as objects of Python: a message or a record is a dict of its fields, a vector a list.
//
//   bool, integers, floats  bool, int, float
//   time at a station       int, nanoseconds since 1970; 0 where none was taken
//   price                   int; a sentinel its name, as in "NA"
//   enumeration             the enumerator's name; the number of a value that has none
//   string                  str; bytes that are no UTF-8 are surrogates, as files' names have them (surrogateescape)
//   padding, blob           bytes
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <pybind11/pybind11.h>

#include "Inspect/Values.h"

namespace qlproto_python {

/// The values of a body in the order in which they travel: read without the interpreter's lock.
class BodyValues {
  public:
    /// REQUIRES: verify() accepts the body, which may end in zeros that are not its own.
    BodyValues(const Inspect::TypeInfo& type, std::string_view body);

    /// Needs the lock.
    pybind11::dict object() const;

  private:
    struct Stored {
        Inspect::Value value;
        std::string text;
    };
    class Builder;

    const Inspect::TypeInfo& _type;
    std::vector<Stored> _values;
};

pybind11::str textOf(std::string_view bytes);

/// What a type consists of, as a dict.
pybind11::dict describe(const Inspect::TypeInfo& type);

} // namespace qlproto_python
