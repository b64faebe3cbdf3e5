#include "Messages_generated.h"
#include "bench/Cold.h"
#include "bench/Sinks.h"

namespace fb {

/// A struct has no builder; this one gives the only struct the face of one.
class FeedMarketIDBuilder {
  public:
    explicit FeedMarketIDBuilder(flatbuffers::FlatBufferBuilder&) {}
    void add_marketID(int32_t v) { _marketID = v; }
    void add_feedID(int32_t v) { _feedID = v; }
    FeedMarketID Finish() const { return {_marketID, _feedID}; }

  private:
    int32_t _marketID = 0;
    int32_t _feedID = 0;
};

} // namespace fb

namespace bench {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;
using flatbuffers::Vector;

/// A record when built: structs as such, tables as offsets; what add_... takes of it, and lists of either.
template <class T>
using Built = decltype(std::declval<T&>().Finish());
const fb::FeedMarketID* reference(const fb::FeedMarketID& built) { return &built; }
template <class T>
Offset<T> reference(Offset<T> built) {
    return built;
}
Offset<Vector<const fb::FeedMarketID*>> list(FlatBufferBuilder& builder, const std::vector<fb::FeedMarketID>& built) {
    return builder.CreateVectorOfStructs(built);
}
template <class T>
Offset<Vector<Offset<T>>> list(FlatBufferBuilder& builder, const std::vector<Offset<T>>& built) {
    return builder.CreateVector(built);
}

#define TYPE(T) Built<fb::T##Builder> build(FlatBufferBuilder& builder, const T& from);
#define NUMBER(type, name, Name, lower)
#define TEXT(name, Name, lower)
#define RECORD(T, name, Name, lower)
#define TEXTS(name, Name, lower)
#define RECORDS(T, name, Name, lower)
#define END
#include "bench/Fields.def"

template <class M>
auto buildAll(FlatBufferBuilder& builder, const std::vector<M>& from) {
    static std::vector<decltype(build(builder, from[0]))> built; // kept, so that it goes to the heap only once
    built.clear();
    for (const M& record : from) built.push_back(build(builder, record));
    return list(builder, built);
}

// What a table refers to must be built before the table is begun.
#define TYPE(T)                                                                                                        \
    struct T##Children {                                                                                               \
        FlatBufferBuilder& builder;                                                                                    \
        const T& from;
#define NUMBER(type, name, Name, lower)
#define TEXT(name, Name, lower) Offset<flatbuffers::String> name = builder.CreateString(from.name);
#define RECORD(T, name, Name, lower) Built<fb::T##Builder> name = build(builder, from.name);
#define TEXTS(name, Name, lower)                                                                                       \
    Offset<Vector<Offset<flatbuffers::String>>> name = builder.CreateVectorOfStrings(from.name);
#define RECORDS(T, name, Name, lower) decltype(buildAll(builder, from.name)) name = buildAll(builder, from.name);
#define END                                                                                                            \
    }                                                                                                                  \
    ;
#include "bench/Fields.def"

#define TYPE(T)                                                                                                        \
    Built<fb::T##Builder> build(FlatBufferBuilder& builder, const T& from) {                                           \
        [[maybe_unused]] const T##Children children{builder, from};                                                    \
        fb::T##Builder table(builder);
#define NUMBER(type, name, Name, lower) table.add_##name(from.name);
#define TEXT(name, Name, lower) table.add_##name(children.name);
#define RECORD(T, name, Name, lower) table.add_##name(reference(children.name));
#define TEXTS(name, Name, lower) table.add_##name(children.name);
#define RECORDS(T, name, Name, lower) table.add_##name(children.name);
#define END                                                                                                            \
    return table.Finish();                                                                                             \
    }
#include "bench/Fields.def"

// Every field was written, so none is absent.
#define TYPE(T)                                                                                                        \
    template <class Sink>                                                                                              \
    void show(const fb::T& from, Sink& sink) {
#define NUMBER(type, name, Name, lower) sink.number(from.name());
#define TEXT(name, Name, lower) sink.text(from.name()->c_str(), from.name()->size());
#define RECORD(T, name, Name, lower) show(*from.name(), sink);
#define TEXTS(name, Name, lower)                                                                                       \
    sink.count(from.name()->size());                                                                                   \
    for (const auto* text : *from.name()) sink.text(text->c_str(), text->size());
#define RECORDS(T, name, Name, lower)                                                                                  \
    sink.count(from.name()->size());                                                                                   \
    for (const auto* record : *from.name()) show(*record, sink);
#define END }
#include "bench/Fields.def"

template <class M>
struct PeerType;
#define TYPE(T)                                                                                                        \
    template <>                                                                                                        \
    struct PeerType<T> {                                                                                               \
        using type = fb::T;                                                                                            \
    };
#define NUMBER(type, name, Name, lower)
#define TEXT(name, Name, lower)
#define RECORD(T, name, Name, lower)
#define TEXTS(name, Name, lower)
#define RECORDS(T, name, Name, lower)
#define END
#include "bench/Fields.def"

int32_t chosenField(const fb::SubmitOrderMessage& m) { return m.contents()->marketID(); }
int32_t chosenField(const fb::MktDataMessage& m) { return m.mvd()->fmID()->marketID(); }

template <class M>
void addShape(const Shape<M>& shape) {
    using Peer = typename PeerType<M>::type;
    const auto values = std::make_shared<std::vector<M>>(shape.values);
    const auto builder = std::make_shared<FlatBufferBuilder>(1 << 16);
    const auto bodies = std::make_shared<std::vector<std::vector<uint8_t>>>();
    const auto verified = [](const std::vector<uint8_t>& body) {
        flatbuffers::Verifier verifier(body.data(), body.size());
        return verifier.VerifyBuffer<Peer>(nullptr) ? flatbuffers::GetRoot<Peer>(body.data()) : nullptr;
    };
    for (size_t i = 0; i < distinct; ++i) {
        builder->Clear();
        builder->Finish(build(*builder, (*values)[i]));
        bodies->emplace_back(builder->GetBufferPointer(), builder->GetBufferPointer() + builder->GetSize());
        Transcript transcript;
        if (const Peer* decoded = verified(bodies->back())) show(*decoded, transcript);
        requireSame(shape.name, "FlatBuffers", shape.transcripts[i], transcript.written);
    }

    measureAlsoCold(
        shape.name, "encode", "FlatBuffers build",
        [=](size_t i) {
            builder->Clear();
            builder->Finish(build(*builder, (*values)[i]));
            benchmark::DoNotOptimize(builder->GetBufferPointer());
        },
        meanSize(*bodies));
    measureAlsoCold(shape.name, "decode", "FlatBuffers verify and read every field", [=](size_t i) {
        Sum sum;
        if (const Peer* decoded = verified((*bodies)[i])) show(*decoded, sum);
        benchmark::DoNotOptimize(sum.total);
    });
    if constexpr (HasChosenField<M>) {
        for (size_t i = 0; i < distinct; ++i)
            requireSame(shape.name, "FlatBuffers", std::to_string(chosenField((*values)[i])),
                        std::to_string(chosenField(*verified((*bodies)[i]))));
        measure(shape.name, "peek", "FlatBuffers verify and read one field", [=](size_t i) {
            const Peer* const decoded = verified((*bodies)[i]);
            benchmark::DoNotOptimize(decoded != nullptr ? chosenField(*decoded) : 0);
        });
        measure(shape.name, "peek", "FlatBuffers read one field, trusting", [=](size_t i) {
            benchmark::DoNotOptimize(chosenField(*flatbuffers::GetRoot<Peer>((*bodies)[i].data())));
        });
    }
}

} // namespace

void addFlatBuffers() {
    forEachShape([](const auto& shape) { addShape(shape); });
}

} // namespace bench
