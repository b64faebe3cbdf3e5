// Batches of columns in the Arrow layout as arrays of numpy, without copies where the layouts are the same.
#pragma once

#include <memory>
#include <string>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include "Columns/Arrow.h"

namespace qlproto_python {

/// A batch and its schema. Arrays that refer to its buffers keep it alive.
class Batch {
  public:
    /// Takes both over.
    Batch(std::shared_ptr<ArrowSchema> schema, const ArrowArray& array);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    size_t rows() const { return static_cast<size_t>(_array.length); }
    pybind11::list columns() const; ///< the paths of all but records, as in "contents.price"

    /// The values of a column; of what stands in lists those of all elements, one after the other. `self` is this object as
    /// the interpreter has it. Numbers and times are arrays of numbers, which share the buffers; times and texts that are
    /// null, and all that has no like in numpy, are copied.
    static pybind11::object column(const pybind11::object& self, const std::string& path);
    /// Of lists: the places of their first elements among all elements, and the end.
    static pybind11::object offsets(const pybind11::object& self, const std::string& path);
    /// Which values are there, or None if all are.
    pybind11::object valid(const std::string& path) const;
    /// Of enumerations: the numbers of words, and the words; -1 is null.
    static pybind11::tuple words(const pybind11::object& self, const std::string& path);

  private:
    struct Column {
        const ArrowSchema* schema;
        const ArrowArray* array;
    };
    Column find(const std::string& path) const;

    std::shared_ptr<ArrowSchema> _schema;
    ArrowArray _array;
};

} // namespace qlproto_python
