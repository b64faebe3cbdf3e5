#include <google/protobuf/arena.h>

#include "Messages.pb.h"
#include "bench/Cold.h"
#include "bench/Session.h"

namespace bench {
namespace {

template <class M>
struct PeerType;
#define TYPE(T)                                                                                                        \
    template <>                                                                                                        \
    struct PeerType<T> {                                                                                               \
        using type = pb::T;                                                                                            \
    };
#define NUMBER(type, name, Name, lower)
#define TEXT(name, Name, lower)
#define RECORD(T, name, Name, lower)
#define TEXTS(name, Name, lower)
#define RECORDS(T, name, Name, lower)
#define END
#include "bench/Fields.def"

#define TYPE(T) void fill(pb::T& to, const T& from) {
#define NUMBER(type, name, Name, lower) to.set_##lower(from.name);
#define TEXT(name, Name, lower) to.set_##lower(from.name);
#define RECORD(T, name, Name, lower) fill(*to.mutable_##lower(), from.name);
#define TEXTS(name, Name, lower)                                                                                       \
    for (const auto& text : from.name) to.add_##lower(text);
#define RECORDS(T, name, Name, lower)                                                                                  \
    for (const auto& record : from.name) fill(*to.add_##lower(), record);
#define END }
#include "bench/Fields.def"

#define TYPE(T)                                                                                                        \
    template <class Sink>                                                                                              \
    void show(const pb::T& from, Sink& sink) {
#define NUMBER(type, name, Name, lower) sink.number(static_cast<type>(from.lower()));
#define TEXT(name, Name, lower) sink.text(from.lower().data(), from.lower().size());
#define RECORD(T, name, Name, lower) show(from.lower(), sink);
#define TEXTS(name, Name, lower)                                                                                       \
    sink.count(static_cast<size_t>(from.lower().size()));                                                              \
    for (const auto& text : from.lower()) sink.text(text.data(), text.size());
#define RECORDS(T, name, Name, lower)                                                                                  \
    sink.count(static_cast<size_t>(from.lower().size()));                                                              \
    for (const auto& record : from.lower()) show(record, sink);
#define END }
#include "bench/Fields.def"

constexpr size_t room = 1 << 16;

/// An arena over memory of its own, so that it never goes to the heap.
struct RoomyArena {
    std::unique_ptr<char[]> block = std::make_unique<char[]>(8 * room);
    google::protobuf::Arena arena{block.get(), 8 * room};
};

template <class M>
void addShape(const Shape<M>& shape) {
    using Peer = typename PeerType<M>::type;
    const auto values = std::make_shared<std::vector<M>>(shape.values);
    const auto filled = std::make_shared<std::vector<Peer>>(distinct);
    const auto bodies = std::make_shared<std::vector<std::string>>();
    const auto out = std::make_shared<std::vector<char>>(room);
    for (size_t i = 0; i < distinct; ++i) {
        fill((*filled)[i], (*values)[i]);
        bodies->push_back((*filled)[i].SerializeAsString());
        Peer decoded;
        decoded.ParseFromString(bodies->back());
        Transcript transcript;
        show(decoded, transcript);
        requireSame(shape.name, "protobuf", shape.transcripts[i], transcript.written);
    }

    measureAlsoCold(
        shape.name, "encode", "protobuf serialise",
        [=](size_t i) { benchmark::DoNotOptimize((*filled)[i].SerializeToArray(out->data(), room)); },
        meanSize(*bodies));
    const auto reused = std::make_shared<Peer>();
    measure(shape.name, "encode", "protobuf fill and serialise", [=](size_t i) {
        reused->Clear();
        fill(*reused, (*values)[i]);
        benchmark::DoNotOptimize(reused->SerializeToArray(out->data(), room));
    });
    measureAlsoCold(shape.name, "decode", "protobuf parse, object reused", [=](size_t i) {
        const std::string& body = (*bodies)[i];
        benchmark::DoNotOptimize(reused->ParseFromArray(body.data(), static_cast<int>(body.size())));
    });
    const auto roomy = std::make_shared<RoomyArena>();
    measure(shape.name, "decode", "protobuf parse, arena", [=](size_t i) {
        const std::string& body = (*bodies)[i];
        auto* const message = google::protobuf::Arena::CreateMessage<Peer>(&roomy->arena);
        benchmark::DoNotOptimize(message->ParseFromArray(body.data(), static_cast<int>(body.size())));
        roomy->arena.Reset();
    });
    measure(shape.name, "decode+read", "protobuf parse, object reused", [=](size_t i) {
        const std::string& body = (*bodies)[i];
        reused->ParseFromArray(body.data(), static_cast<int>(body.size()));
        Sum sum;
        show(*reused, sum);
        benchmark::DoNotOptimize(sum.total);
    });
}

/// The messages of the session that there is a schema for.
void addMeasuredSession() {
    struct Message {
        std::shared_ptr<google::protobuf::Message> filled;
        google::protobuf::Message* reused; // one for all of a type
        std::string body;
    };
    const auto messages = std::make_shared<std::vector<Message>>();
    double bytes = 0;
    for (const SessionMessage& it : session())
        visitMeasured(it, [&]<class M>(const M& values, const auto& ours) {
            using Peer = typename PeerType<M>::type;
            static Peer reused;
            const auto filled = std::make_shared<Peer>();
            fill(*filled, values);
            messages->push_back({filled, &reused, filled->SerializeAsString()});
            bytes += static_cast<double>(messages->back().body.size());
            reused.ParseFromString(messages->back().body);
            Transcript expected, found;
            bench::show(ours, expected);
            show(reused, found);
            requireSame("session", "protobuf", expected.written, found.written);
        });
    const size_t count = messages->size();
    const auto out = std::make_shared<std::vector<char>>(room);
    measure(
        "session", "safe encode", "protobuf serialise, types with a schema",
        [=](size_t i) { benchmark::DoNotOptimize((*messages)[i].filled->SerializeToArray(out->data(), room)); },
        bytes / static_cast<double>(count), count);
    measure(
        "session", "safe decode", "protobuf parse, object reused, types with a schema",
        [=](size_t i) {
            const Message& it = (*messages)[i];
            benchmark::DoNotOptimize(it.reused->ParseFromArray(it.body.data(), static_cast<int>(it.body.size())));
        },
        0, count);
    measure(
        "session", "print", "protobuf text, types with a schema",
        [=](size_t i) { benchmark::DoNotOptimize((*messages)[i].filled->ShortDebugString()); }, 0, count);
}

} // namespace

void addProtobuf() {
    forEachShape([](const auto& shape) { addShape(shape); });
    addMeasuredSession();
}

} // namespace bench
