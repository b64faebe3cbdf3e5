#include "bindings/python/Values.h"

#include "Backend/Velmora/Wire.h"
#include "Inspect/Selection.h"

namespace qlproto_python {

namespace py = pybind11;
using Inspect::Kind;

BodyValues::BodyValues(const Inspect::TypeInfo& type, std::string_view body) : _type(type) {
    const Inspect::Selection all(type, [](Inspect::Path, const Inspect::ValueInfo&) { return true; });
    all.read(body, [&](const Inspect::Value& value) {
        _values.push_back({value, std::string(value.text)});
        return true;
    });
}

/// Puts the values where they belong, one after the other.
class BodyValues::Builder {
  public:
    explicit Builder(const std::vector<Stored>& values) : _next(values.begin()) {}

    py::dict record(const Inspect::TypeInfo& type) {
        py::dict result;
        for (const Inspect::FieldInfo& field : type.fields) result[textOf(field.name)] = value(field.value);
        return result;
    }

  private:
    py::object value(const Inspect::ValueInfo& info) {
        if (info.kind == Kind::record) return record(*info.record);
        const Stored& stored = *_next++;
        const Inspect::Value& it = stored.value;
        switch (it.kind) {
        case Kind::vector: {
            py::list list;
            for (int64_t i = 0; i < it.number; ++i) list.append(value(*info.element));
            return list;
        }
        case Kind::boolean:
            return py::bool_(it.number != 0);
        case Kind::float4:
        case Kind::float8:
            return py::float_(it.real);
        case Kind::uint64:
            return py::int_(static_cast<uint64_t>(it.number));
        case Kind::padding:
        case Kind::blob:
        case Kind::cryptblob:
            return py::bytes(stored.text);
        case Kind::string:
        case Kind::stringFixed:
        case Kind::cryptstring:
            return textOf(stored.text);
        case Kind::enumeration:
            for (const Inspect::EnumeratorInfo& enumerator : it.enumeration->enumerators)
                if (enumerator.value == it.number) return textOf(enumerator.name);
            return py::int_(it.number);
        case Kind::price:
        case Kind::int64:
        case Kind::int64Fixed:
            if (const std::string_view name = Velmora::sentinelName(it.number); !name.empty()) return textOf(name);
            return py::int_(it.number);
        default:
            return py::int_(it.number);
        }
    }

    std::vector<Stored>::const_iterator _next;
};

py::dict BodyValues::object() const { return Builder(_values).record(_type); }

py::str textOf(std::string_view bytes) {
    PyObject* const text = PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "surrogateescape");
    if (text == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::str>(text);
}

py::dict describe(const Inspect::TypeInfo& type) {
    py::list fields;
    for (const Inspect::FieldInfo& field : type.fields) {
        py::dict it;
        it["name"] = textOf(field.name);
        it["type"] = textOf(Inspect::type_text(field.value));
        it["doc"] = textOf(field.doc);
        it["secret"] = py::bool_(field.isSecret);
        it["station"] = field.station.empty() ? py::object(py::none()) : textOf(field.station);
        fields.append(it);
    }
    py::dict result;
    result["name"] = textOf(type.name);
    result["doc"] = textOf(type.doc);
    result["fields"] = fields;
    return result;
}

} // namespace qlproto_python
