#include <capnp/message.h>
#include <capnp/serialize.h>

#include <cstring>

#include "Messages.capnp.h"
#include "bench/Cold.h"
#include "bench/Sinks.h"

namespace bench {
namespace {

capnp::Text::Reader asText(const std::string& text) { return {text.c_str(), text.size()}; }
template <class Sink>
void showText(capnp::Text::Reader text, Sink& sink) {
    sink.text(text.begin(), text.size());
}

#define TYPE(T) void fill(cp::T::Builder to, const T& from) {
#define NUMBER(type, name, Name, lower) to.set##Name(from.name);
#define TEXT(name, Name, lower) to.set##Name(asText(from.name));
#define RECORD(T, name, Name, lower) fill(to.init##Name(), from.name);
#define TEXTS(name, Name, lower)                                                                                       \
    auto list##Name = to.init##Name(static_cast<unsigned>(from.name.size()));                                          \
    for (unsigned i = 0; i < list##Name.size(); ++i) list##Name.set(i, asText(from.name[i]));
#define RECORDS(T, name, Name, lower)                                                                                  \
    auto list##Name = to.init##Name(static_cast<unsigned>(from.name.size()));                                          \
    for (unsigned i = 0; i < list##Name.size(); ++i) fill(list##Name[i], from.name[i]);
#define END }
#include "bench/Fields.def"

#define TYPE(T)                                                                                                        \
    template <class Sink>                                                                                              \
    void show(cp::T::Reader from, Sink& sink) {
#define NUMBER(type, name, Name, lower) sink.number(from.get##Name());
#define TEXT(name, Name, lower) showText(from.get##Name(), sink);
#define RECORD(T, name, Name, lower) show(from.get##Name(), sink);
#define TEXTS(name, Name, lower)                                                                                       \
    const auto list##Name = from.get##Name();                                                                          \
    sink.count(list##Name.size());                                                                                     \
    for (const auto text : list##Name) showText(text, sink);
#define RECORDS(T, name, Name, lower)                                                                                  \
    const auto list##Name = from.get##Name();                                                                          \
    sink.count(list##Name.size());                                                                                     \
    for (const auto record : list##Name) show(record, sink);
#define END }
#include "bench/Fields.def"

template <class M>
struct PeerType;
#define TYPE(T)                                                                                                        \
    template <>                                                                                                        \
    struct PeerType<T> {                                                                                               \
        using type = cp::T;                                                                                            \
    };
#define NUMBER(type, name, Name, lower)
#define TEXT(name, Name, lower)
#define RECORD(T, name, Name, lower)
#define TEXTS(name, Name, lower)
#define RECORDS(T, name, Name, lower)
#define END
#include "bench/Fields.def"

/// Words of a message in one segment, as they would travel, ending where their storage ends.
struct Body {
    kj::Array<capnp::word> words;
    size_t size() const { return words.asBytes().size(); }
};

template <class M>
void addShape(const Shape<M>& shape) {
    using Peer = typename PeerType<M>::type;
    const auto values = std::make_shared<std::vector<M>>(shape.values);
    const auto bodies = std::make_shared<std::vector<Body>>();
    for (size_t i = 0; i < distinct; ++i) {
        capnp::MallocMessageBuilder builder(1 << 13);
        fill(builder.initRoot<Peer>(), (*values)[i]);
        bodies->push_back({capnp::messageToFlatArray(builder)});
        capnp::FlatArrayMessageReader reader(bodies->back().words);
        Transcript transcript;
        show(reader.getRoot<Peer>(), transcript);
        requireSame(shape.name, "Cap'n Proto", shape.transcripts[i], transcript.written);
    }

    // Built in place in a zeroed segment that is kept, which is the fastest way there is; the builder zeroes what it
    // used when it goes.
    const auto segment = std::make_shared<std::vector<capnp::word>>(1 << 13);
    std::memset(static_cast<void*>(segment->data()), 0, segment->size() * sizeof(capnp::word));
    measureAlsoCold(
        shape.name, "encode", "Cap'n Proto flat",
        [=](size_t i) {
            capnp::MallocMessageBuilder builder(kj::arrayPtr(segment->data(), segment->size()));
            fill(builder.initRoot<Peer>(), (*values)[i]);
            benchmark::DoNotOptimize(builder.getSegmentsForOutput().begin());
        },
        meanSize(*bodies));
    measureAlsoCold(shape.name, "decode", "Cap'n Proto read every field", [=](size_t i) {
        capnp::FlatArrayMessageReader reader((*bodies)[i].words);
        Sum sum;
        show(reader.getRoot<Peer>(), sum);
        benchmark::DoNotOptimize(sum.total);
    });
}

} // namespace

void addCapnProto() {
    forEachShape([](const auto& shape) { addShape(shape); });
}

} // namespace bench
