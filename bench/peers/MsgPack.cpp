// Records as arrays, which is the compact way: without the names of fields.
#include <msgpack.hpp>

#include "bench/Cold.h"
#include "bench/Sinks.h"

namespace bench {
namespace {

// The number of fields, for the header of the array.
#define TYPE(T)                                                                                                        \
    constexpr uint32_t sizeOf(const T*) {                                                                              \
        return 0
#define NUMBER(type, name, Name, lower) +1
#define TEXT(name, Name, lower) +1
#define RECORD(T, name, Name, lower) +1
#define TEXTS(name, Name, lower) +1
#define RECORDS(T, name, Name, lower) +1
#define END                                                                                                            \
    ;                                                                                                                  \
    }
#include "bench/Fields.def"

using Packer = msgpack::packer<msgpack::sbuffer>;

#define TYPE(T)                                                                                                        \
    void pack(Packer& to, const T& from) {                                                                             \
        to.pack_array(sizeOf(&from));
#define NUMBER(type, name, Name, lower) to.pack(from.name);
#define TEXT(name, Name, lower) to.pack(from.name);
#define RECORD(T, name, Name, lower) pack(to, from.name);
#define TEXTS(name, Name, lower) to.pack(from.name);
#define RECORDS(T, name, Name, lower)                                                                                  \
    to.pack_array(static_cast<uint32_t>(from.name.size()));                                                            \
    for (const auto& record : from.name) pack(to, record);
#define END }
#include "bench/Fields.def"

/// The elements of an array; throws where there is none.
const msgpack::object_array& array(const msgpack::object& from) {
    if (from.type != msgpack::type::ARRAY) throw msgpack::type_error();
    return from.via.array;
}

#define TYPE(T)                                                                                                        \
    void unpack(const msgpack::object& from, T& to) {                                                                  \
        if (array(from).size != sizeOf(&to)) throw msgpack::type_error();                                              \
        const msgpack::object* field = from.via.array.ptr;
#define NUMBER(type, name, Name, lower) (field++)->convert(to.name);
#define TEXT(name, Name, lower) (field++)->convert(to.name);
#define RECORD(T, name, Name, lower) unpack(*field++, to.name);
#define TEXTS(name, Name, lower) (field++)->convert(to.name);
#define RECORDS(T, name, Name, lower)                                                                                  \
    to.name.resize(array(*field).size);                                                                                \
    for (size_t i = 0; i < to.name.size(); ++i) unpack(field->via.array.ptr[i], to.name[i]);                           \
    ++field;
#define END }
#include "bench/Fields.def"

#define TYPE(T)                                                                                                        \
    template <class Sink>                                                                                              \
    void show(const T& from, Sink& sink) {
#define NUMBER(type, name, Name, lower) sink.number(from.name);
#define TEXT(name, Name, lower) sink.text(from.name.data(), from.name.size());
#define RECORD(T, name, Name, lower) show(from.name, sink);
#define TEXTS(name, Name, lower)                                                                                       \
    sink.count(from.name.size());                                                                                      \
    for (const auto& text : from.name) sink.text(text.data(), text.size());
#define RECORDS(T, name, Name, lower)                                                                                  \
    sink.count(from.name.size());                                                                                      \
    for (const auto& record : from.name) show(record, sink);
#define END }
#include "bench/Fields.def"

template <class M>
void addShape(const Shape<M>& shape) {
    const auto values = std::make_shared<std::vector<M>>(shape.values);
    const auto buffer = std::make_shared<msgpack::sbuffer>(1 << 16);
    const auto bodies = std::make_shared<std::vector<std::vector<char>>>();
    for (size_t i = 0; i < distinct; ++i) {
        buffer->clear();
        Packer packer(*buffer);
        pack(packer, (*values)[i]);
        bodies->emplace_back(buffer->data(), buffer->data() + buffer->size());
        M decoded;
        unpack(msgpack::unpack(bodies->back().data(), bodies->back().size()).get(), decoded);
        Transcript transcript;
        show(decoded, transcript);
        requireSame(shape.name, "msgpack-c", shape.transcripts[i], transcript.written);
    }

    measureAlsoCold(
        shape.name, "encode", "msgpack-c pack",
        [=](size_t i) {
            buffer->clear();
            Packer packer(*buffer);
            pack(packer, (*values)[i]);
            benchmark::DoNotOptimize(buffer->data());
        },
        meanSize(*bodies));
    measureAlsoCold(shape.name, "decode", "msgpack-c unpack", [=](size_t i) {
        const std::vector<char>& body = (*bodies)[i];
        M decoded;
        unpack(msgpack::unpack(body.data(), body.size()).get(), decoded);
        benchmark::DoNotOptimize(&decoded);
    });
}

} // namespace

void addMsgPack() {
    forEachShape([](const auto& shape) { addShape(shape); });
}

} // namespace bench
