// The module qlproto._core; qlproto/__init__.py is what its users see.
#include <cstdlib>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <pybind11/functional.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "Capture/Errors.h"
#include "Capture/MessageSequence.h"
#include "Capture/Verification.h"
#include "Columns/Scan.h"
#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "Inspect/SizeWalk.h"
#include "bindings/python/Arrays.h"
#ifdef QL_WITH_HOST
#include "bindings/python/Live.h"
#endif
#include "bindings/python/Named.h"
#include "bindings/python/Values.h"

namespace py = pybind11;

namespace qlproto_python {
namespace {

/// Raised for bodies and dicts that are wrong; the module's exceptions take what it holds.
struct Refused {
    const char* exception;
    std::string reason, path;
    std::optional<size_t> offset;
};

/// How messages stand in captures of networks; nothing if the framing is None.
std::optional<Capture::NetworkOptions> networkOf(const std::optional<std::string>& framing,
                                                 const std::vector<uint16_t>& ports) {
    if (!framing) return std::nullopt;
    try {
        return Capture::NetworkOptions{Capture::Framing::of(*framing), ports};
    } catch (const Capture::FramingError& error) {
        throw py::value_error(std::string("framing: ") + error.what());
    }
}

py::object verify(const py::object& nameOrId, const std::string& body, const std::string& policy) {
    const Inspect::MessageInfo& message = messageOf(nameOrId);
    const Inspect::Result result = Capture::verifyBody(protocol(), message.id, body, policyOf(policy));
    if (result) return py::none();
    return py::make_tuple(Inspect::to_string(result.fault), result.offset, result.path(), result.text());
}

py::dict decode(const py::object& nameOrId, const std::string& body, const std::string& policy) {
    const Inspect::MessageInfo& message = messageOf(nameOrId);
    const Inspect::Policy liberties = policyOf(policy);
    std::optional<BodyValues> values;
    Inspect::Result result;
    {
        const py::gil_scoped_release unlocked;
        result = Capture::verifyBody(protocol(), message.id, body, liberties);
        std::string room;
        if (result) values.emplace(*message.type, Capture::readableBody(protocol(), result, body, room));
    }
    if (!result) throw Refused{"DecodeError", result.text(), result.path(), result.offset};
    return values->object();
}

/// `json` is the message as JSON (Inspect/Json.h).
py::bytes encode(const py::object& nameOrId, const std::string& json) {
    constexpr size_t longest = 1 << 20, block = 33 * longest;
    const Inspect::MessageInfo& message = messageOf(nameOrId);
    const auto memory = std::make_unique_for_overwrite<char[]>(block);
    const auto body = std::make_unique_for_overwrite<char[]>(longest);
    Velmora::BufferAllocator alloc(memory.get(), static_cast<int>(block), "qlproto", "encode");
    Velmora::MsgDescriptor& descriptor = *protocol().instance()->getDescriptor(message.id);
    void* const place = alloc.allocate(descriptor.size());
    descriptor.construct(place, alloc);
    const auto destroy = [&](void* it) { descriptor.destroy(it); };
    const std::unique_ptr<void, decltype(destroy)> owner(place, destroy);
    try {
        Inspect::from_json(protocol(), message.id, json, place);
    } catch (const Inspect::JsonError& error) {
        throw Refused{"EncodeError", error.what(), error.path(), std::nullopt};
    } catch (const Inspect::DoesNotFit& error) {
        throw Refused{"EncodeError", error.what(), error.path(), std::nullopt};
    }
    const Inspect::Encoded encoded =
        Inspect::encode_checked(protocol(), message.id, place, body.get(), body.get() + longest);
    if (!encoded) throw Refused{"EncodeError", encoded.text(), encoded.field, std::nullopt};
    return {body.get(), encoded.size};
}

/// The good messages of captures, one by one.
class Messages {
  public:
    Messages(std::vector<std::string> paths, const std::string& policy, const std::optional<std::string>& framing,
             const std::vector<uint16_t>& ports, const std::vector<std::string>& names)
        : _captures(std::move(paths), protocol(), networkOf(framing, ports)), _policy(policyOf(policy)) {
        for (const std::string& name : names) _ids.push_back(messageOf(py::str(name)).id);
    }

    /// (name, identifier, time, packet, capture, body, dict, messages that were lost before it, facts of its connection or
    /// None), or nothing at the end.
    py::object next() {
        std::unique_lock lock(_mutex, std::defer_lock);
        {
            const py::gil_scoped_release unlocked; // before the mutex: who has that waits for the lock
            lock.lock();
            if (!advance()) return py::none();
        }
        return py::make_tuple(textOf(_type->name), _id, _packet.time, _captures.messages(_packet.capture),
                              _captures.paths()[_packet.capture],
                              py::bytes(_packet.bytes.substr(Capture::IDENTIFIER_SIZE)), _values->object(), 0,
                              connection());
    }

    uint64_t faults() const { return _faults; }

  private:
    /// The facts of the connection by which the message came.
    py::object connection() {
        if (_packet.connection == nullptr) return py::none();
        if (_facts && _connection == *_packet.connection) return *_facts;
        _connection = *_packet.connection;
        py::tuple facts(Capture::CONNECTION_FACTS.size());
        for (size_t i = 0; i < facts.size(); ++i) {
            const auto fact = static_cast<Capture::ConnectionFact>(i);
            facts[i] = fact == Capture::ConnectionFact::connectionID ? py::object(py::int_(_connection.number))
                                                                     : textOf(Capture::textOf(fact, _connection));
        }
        return *(_facts = facts);
    }

    bool advance() {
        for (bool isThere = true; isThere;) {
            isThere = _captures.next(_packet);
            _faults += _captures.faults().size();
            if (isThere && isTaken()) return true;
        }
        return false;
    }

    bool isTaken() {
        const std::string_view bytes = _packet.bytes;
        const bool hasId = bytes.size() >= Capture::IDENTIFIER_SIZE;
        if (hasId) _id = Capture::identifierOf(bytes);
        if (hasId && !_ids.empty() && std::find(_ids.begin(), _ids.end(), _id) == _ids.end()) return false;
        const auto fault = Capture::verifyPacket(protocol(), bytes, _packet.originalLength(), _policy);
        if (fault) {
            ++_faults;
            return false;
        }
        _type = Inspect::reflect(protocol(), _id);
        const std::string_view body = bytes.substr(Capture::IDENTIFIER_SIZE);
        const Inspect::Result result = Capture::verifyBody(protocol(), _id, body, _policy);
        _values.emplace(*_type, Capture::readableBody(protocol(), result, body, _room));
        return true;
    }

    std::mutex _mutex; ///< held while messages are read and told: threads that share this take turns
    Capture::MessageSequence _captures;
    const Inspect::Policy _policy;
    std::vector<Velmora::MsgType_t> _ids; ///< all if empty
    Capture::Packet _packet;
    uint64_t _faults = 0;
    Velmora::MsgType_t _id = 0;
    const Inspect::TypeInfo* _type = nullptr;
    std::optional<BodyValues> _values;
    std::string _room;
    Capture::Connection _connection; ///< the last one
    std::optional<py::tuple> _facts; ///< of it; nothing as long as there was none
};

/// A stream of batches. Whoever takes it by its capsule, takes it over.
class Stream {
  public:
    Stream(std::vector<std::string> paths, const std::string& table, const std::vector<std::string>& columns,
           std::optional<int> decimals, bool showsSecrets, const std::string& policy, size_t batchRows,
           const std::optional<std::string>& framing, const std::vector<uint16_t>& ports) {
        Columns::Request request{.table = table,
                                 .options = {.showsSecrets = showsSecrets, .decimals = decimals},
                                 .policy = policyOf(policy),
                                 .batchRows = batchRows,
                                 .network = networkOf(framing, ports)};
        if (!columns.empty())
            request.options.takes = [columns](Inspect::Path path) {
                const std::string text = Inspect::path_text(path);
                // A record is taken with all in it.
                return std::any_of(columns.begin(), columns.end(), [&](const std::string& it) {
                    return text == it || (text.starts_with(it) && text[it.size()] == '.') || text + "_sentinel" == it;
                });
            };
        Columns::exportStream(std::move(paths), protocol(), std::move(request), _stream);
    }
    ~Stream() {
        if (_stream.release == nullptr) return;
        const py::gil_scoped_release unlocked; // it waits for its threads
        _stream.release(&_stream);
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    /// The next batch, or nothing at the end.
    std::unique_ptr<Batch> next() {
        ArrowArray array{};
        {
            const py::gil_scoped_release unlocked;
            const std::lock_guard lock(_mutex);
            checkThere();
            if (_schema == nullptr) {
                ArrowSchema schema;
                check(_stream.get_schema(&_stream, &schema));
                _schema = std::shared_ptr<ArrowSchema>(new ArrowSchema(schema), [](ArrowSchema* it) {
                    it->release(it);
                    delete it;
                });
            }
            check(_stream.get_next(&_stream, &array));
        }
        return array.release != nullptr ? std::make_unique<Batch>(_schema, array) : nullptr;
    }

    py::capsule capsule() {
        const std::lock_guard lock(_mutex);
        checkThere();
        auto* const stream = new ArrowArrayStream(_stream);
        _stream.release = nullptr;
        return py::capsule(stream, "arrow_array_stream", [](PyObject* it) {
            auto* const held = static_cast<ArrowArrayStream*>(PyCapsule_GetPointer(it, "arrow_array_stream"));
            if (held->release != nullptr) held->release(held);
            delete held;
        });
    }

  private:
    void checkThere() const {
        if (_stream.release == nullptr) throw py::value_error("the stream was handed over");
    }
    void check(int result) {
        if (result == 0) return;
        const char* const error = _stream.get_last_error(&_stream);
        throw Capture::IoError(error != nullptr ? error : "captures cannot be read");
    }

    std::mutex _mutex; ///< held while a batch is taken
    ArrowArrayStream _stream{};
    std::shared_ptr<ArrowSchema> _schema;
};

py::list messages() {
    py::list result;
    for (const Inspect::MessageInfo& it : Inspect::all_messages(protocol()))
        result.append(py::make_tuple(textOf(it.type->name), it.id));
    return result;
}

void translate(std::exception_ptr error) {
    const auto raise = [](const char* name, const std::string& reason, const std::string& path,
                          const std::optional<size_t>& offset) {
        const py::object type = py::module_::import("qlproto").attr(name);
        const py::object it = type(textOf(reason), path.empty() ? py::object(py::none()) : textOf(path), offset);
        PyErr_SetObject(type.ptr(), it.ptr());
    };
    try {
        if (error) std::rethrow_exception(error);
    } catch (const Refused& it) {
        raise(it.exception, it.reason, it.path, it.offset);
    } catch (const Capture::IoError& it) {
        raise("CaptureError", it.what(), "", std::nullopt);
    } catch (const Capture::DamagedCapture& it) {
        raise("CaptureError", it.what(), "", std::nullopt);
    }
#ifdef QL_WITH_HOST
    catch (const Host::BusError& it) {
        raise("BusError", it.what(), "", std::nullopt);
    }
#endif
}

} // namespace
} // namespace qlproto_python

PYBIND11_MODULE(_core, module) {
    using namespace qlproto_python;
    Inspect::default_protocol().initialize();
    py::register_exception_translator(translate);

    module.def("messages", messages);
    module.def("message", [](const py::object& nameOrId) {
        const Inspect::MessageInfo& it = messageOf(nameOrId);
        return py::make_tuple(textOf(it.type->name), it.id);
    });
    module.def("verify", verify);
    module.def("decode", decode);
    module.def("encode", encode);
    module.def("describe", [](const py::object& nameOrId) { return describe(*messageOf(nameOrId).type); });

    py::class_<Messages>(module, "Messages")
        .def(py::init<std::vector<std::string>, const std::string&, const std::optional<std::string>&,
                      const std::vector<uint16_t>&, const std::vector<std::string>&>())
        .def("next", &Messages::next)
        .def_property_readonly("faults", &Messages::faults);
#ifdef QL_WITH_HOST
    py::class_<LiveMessages>(module, "LiveMessages")
        .def(py::init<const std::string&, const py::object&, const std::string&, const std::vector<std::string>&>())
        .def("next", &LiveMessages::next)
        .def_property_readonly("faults", &LiveMessages::faults)
        .def_property_readonly("lost", &LiveMessages::lost);
#endif
    py::class_<Stream>(module, "Stream")
        .def(py::init<std::vector<std::string>, const std::string&, const std::vector<std::string>&, std::optional<int>,
                      bool, const std::string&, size_t, const std::optional<std::string>&,
                      const std::vector<uint16_t>&>())
        .def("next", &Stream::next)
        .def("capsule", &Stream::capsule);
    py::class_<Batch>(module, "Batch")
        .def("__len__", &Batch::rows)
        .def("columns", &Batch::columns)
        .def("column", [](const py::object& self, const std::string& path) { return Batch::column(self, path); })
        .def("offsets", [](const py::object& self, const std::string& path) { return Batch::offsets(self, path); })
        .def("valid", &Batch::valid)
        .def("words", [](const py::object& self, const std::string& path) { return Batch::words(self, path); });
}
