#include "bindings/python/Arrays.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "bindings/python/Values.h"

namespace qlproto_python {

namespace py = pybind11;

namespace {

bool isNull(const ArrowArray& array, size_t row) {
    const auto* const validity = static_cast<const uint8_t*>(array.buffers[0]);
    return validity != nullptr && (validity[row / 8] >> row % 8 & 1) == 0;
}

template <class T>
const T* valuesOf(const ArrowArray& array) {
    return static_cast<const T*>(array.buffers[1]);
}

/// An array of numpy over a buffer, which `owner` keeps.
py::object shared(const char* type, int64_t length, const void* buffer, const py::object& owner) {
    static const char nothing[8] = {};
    py::array result(py::dtype(type), {length}, length != 0 ? buffer : nothing, owner);
    result.attr("setflags")(py::arg("write") = false);
    return result;
}

const char* typeOf(char format) {
    switch (format) {
    case 'c':
        return "i1";
    case 'C':
        return "u1";
    case 's':
        return "i2";
    case 'S':
        return "u2";
    case 'i':
        return "i4";
    case 'I':
        return "u4";
    case 'l':
        return "i8";
    case 'L':
        return "u8";
    case 'f':
        return "f4";
    case 'g':
        return "f8";
    case 't':
        return "datetime64[ns]";
    default:
        return nullptr;
    }
}

std::string_view bytesAt(const ArrowArray& array, size_t row) {
    const auto* const offsets = valuesOf<int32_t>(array);
    return {static_cast<const char*>(array.buffers[2]) + offsets[row],
            static_cast<size_t>(offsets[row + 1] - offsets[row])};
}

template <class T>
py::object numberAt(const ArrowArray& array, size_t row) {
    return py::cast(valuesOf<T>(array)[row]);
}

py::object valueAt(const ArrowSchema& schema, const ArrowArray& array, size_t row) {
    if (isNull(array, row)) return py::none();
    if (schema.dictionary != nullptr)
        return valueAt(*schema.dictionary, *array.dictionary, static_cast<size_t>(valuesOf<int16_t>(array)[row]));
    switch (schema.format[0]) {
    case 'b':
        return py::bool_((valuesOf<uint8_t>(array)[row / 8] >> row % 8 & 1) != 0);
    case 'c':
        return numberAt<int8_t>(array, row);
    case 'C':
        return numberAt<uint8_t>(array, row);
    case 's':
        return numberAt<int16_t>(array, row);
    case 'S':
        return numberAt<uint16_t>(array, row);
    case 'i':
        return numberAt<int32_t>(array, row);
    case 'I':
        return numberAt<uint32_t>(array, row);
    case 'L':
        return numberAt<uint64_t>(array, row);
    case 'f':
        return numberAt<float>(array, row);
    case 'g':
        return numberAt<double>(array, row);
    case 'u':
        return textOf(bytesAt(array, row));
    case 'z':
        return py::bytes(std::string(bytesAt(array, row)));
    case 'd': { // of 128 bits, of which 64 say all
        const int scale = std::atoi(std::strchr(schema.format, ',') + 1);
        const py::object decimal = py::module_::import("decimal").attr("Decimal")(valuesOf<int64_t>(array)[2 * row]);
        return decimal.attr("scaleb")(-scale);
    }
    case '+': {
        if (schema.format[1] == 's') {
            py::dict record;
            for (int64_t i = 0; i < array.n_children; ++i)
                record[textOf(schema.children[i]->name)] = valueAt(*schema.children[i], *array.children[i], row);
            return record;
        }
        py::list list;
        const auto* const offsets = valuesOf<int32_t>(array);
        for (int32_t i = offsets[row]; i < offsets[row + 1]; ++i)
            list.append(valueAt(*schema.children[0], *array.children[0], static_cast<size_t>(i)));
        return list;
    }
    default: // integers of 64 bits, and times
        return numberAt<int64_t>(array, row);
    }
}

/// The values of a dictionary; none if it is null.
py::list wordsOf(const ArrowSchema* schema, const ArrowArray* array) {
    py::list words;
    for (size_t i = 0; array != nullptr && i < static_cast<size_t>(array->length); ++i)
        words.append(valueAt(*schema, *array, i));
    return words;
}

/// A copy in which null is not a time.
py::object times(const ArrowArray& array) {
    constexpr int64_t notATime = INT64_MIN;
    py::array_t<int64_t> result(array.length);
    int64_t* const to = result.mutable_data();
    for (size_t i = 0; i < static_cast<size_t>(array.length); ++i)
        to[i] = isNull(array, i) ? notATime : valuesOf<int64_t>(array)[i];
    return result.attr("view")("datetime64[ns]");
}

void addNames(const ArrowSchema& schema, const std::string& path, py::list& names) {
    for (int64_t i = 0; i < schema.n_children; ++i) {
        const ArrowSchema& column = *schema.children[i];
        if (std::string_view(column.format) == "+s")
            addNames(column, path + column.name + '.', names);
        else
            names.append(textOf(path + column.name));
    }
}

} // namespace

Batch::Batch(std::shared_ptr<ArrowSchema> schema, const ArrowArray& array)
    : _schema(std::move(schema)), _array(array) {}

Batch::~Batch() { _array.release(&_array); }

py::list Batch::columns() const {
    py::list names;
    addNames(*_schema, "", names);
    return names;
}

Batch::Column Batch::find(const std::string& path) const {
    Column at{_schema.get(), &_array};
    for (size_t begin = 0; begin <= path.size();) {
        while (std::string_view(at.schema->format) == "+l") at = {at.schema->children[0], at.array->children[0]};
        const size_t end = std::min(path.find('.', begin), path.size());
        const std::string_view name = std::string_view(path).substr(begin, end - begin);
        int64_t i = 0;
        const bool isRecord = std::string_view(at.schema->format) == "+s";
        while (isRecord && i < at.schema->n_children && at.schema->children[i]->name != name) ++i;
        if (!isRecord || i == at.schema->n_children) throw py::key_error(path);
        at = {at.schema->children[i], at.array->children[i]};
        begin = end + 1;
    }
    return at;
}

py::object Batch::column(const py::object& self, const std::string& path) {
    const Column it = self.cast<const Batch&>().find(path);
    const char format = it.schema->format[0];
    if (it.schema->dictionary == nullptr && format == 't' && it.array->null_count != 0) return times(*it.array);
    if (const char* const type = typeOf(format); type != nullptr && it.schema->dictionary == nullptr)
        return shared(type, it.array->length, it.array->buffers[1], self);
    const py::object numpy = py::module_::import("numpy");
    if (format == 'b' && it.array->null_count == 0) {
        const py::array bits = py::array(py::dtype("u1"), {(it.array->length + 7) / 8}, it.array->buffers[1], self);
        return numpy.attr("unpackbits")(bits, py::arg("count") = it.array->length, py::arg("bitorder") = "little")
            .attr("view")("bool");
    }
    const py::array result = numpy.attr("empty")(it.array->length, "O");
    auto* const to = static_cast<PyObject**>(const_cast<void*>(result.data()));
    const py::list words = wordsOf(it.schema->dictionary, it.array->dictionary);
    for (size_t i = 0; i < static_cast<size_t>(it.array->length); ++i) {
        py::object value = it.schema->dictionary == nullptr || isNull(*it.array, i)
                               ? valueAt(*it.schema, *it.array, i)
                               : py::object(words[static_cast<size_t>(valuesOf<int16_t>(*it.array)[i])]);
        Py_XDECREF(std::exchange(to[i], value.release().ptr()));
    }
    return result;
}

py::object Batch::offsets(const py::object& self, const std::string& path) {
    const Column it = self.cast<const Batch&>().find(path);
    if (std::string_view(it.schema->format) != "+l") throw py::type_error(path + " is no list");
    return shared("i4", it.array->length + 1, it.array->buffers[1], self);
}

py::object Batch::valid(const std::string& path) const {
    const Column it = find(path);
    if (it.array->null_count == 0) return py::none();
    py::array_t<bool> result(it.array->length);
    bool* const to = result.mutable_data();
    for (size_t i = 0; i < static_cast<size_t>(it.array->length); ++i) to[i] = !isNull(*it.array, i);
    return result;
}

py::tuple Batch::words(const py::object& self, const std::string& path) {
    const Column it = self.cast<const Batch&>().find(path);
    if (it.schema->dictionary == nullptr) throw py::type_error(path + " is no enumeration");
    const py::list words = wordsOf(it.schema->dictionary, it.array->dictionary);
    if (it.array->null_count == 0)
        return py::make_tuple(shared("i2", it.array->length, it.array->buffers[1], self), words);
    py::array_t<int16_t> numbers(it.array->length);
    for (size_t i = 0; i < static_cast<size_t>(it.array->length); ++i)
        numbers.mutable_data()[i] = isNull(*it.array, i) ? int16_t{-1} : valuesOf<int16_t>(*it.array)[i];
    return py::make_tuple(numbers, words);
}

} // namespace qlproto_python
