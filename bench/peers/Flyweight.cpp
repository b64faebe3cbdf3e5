// A fixed-layout codec written for the purpose, the fastest kind of peer: numbers as they are in memory, in one packed
// block per record, then its texts and records one after the other, each after a count of two bytes. No varints, no
// vtables, no padding; reading is pointing.
#include <cstring>

#include "bench/Cold.h"
#include "bench/Sinks.h"

namespace bench {
namespace {

#define TYPE(T) struct [[gnu::packed]] T##Block {
#define NUMBER(type, name, Name, lower) type name;
#define TEXT(name, Name, lower)
#define RECORD(T, name, Name, lower)
#define TEXTS(name, Name, lower)
#define RECORDS(T, name, Name, lower)
#define END                                                                                                            \
    }                                                                                                                  \
    ;
#include "bench/Fields.def"

char* writeCount(char* to, size_t n) {
    const auto count = static_cast<uint16_t>(n);
    std::memcpy(to, &count, sizeof count);
    return to + sizeof count;
}
size_t readCount(const char*& from) {
    uint16_t count;
    std::memcpy(&count, from, sizeof count);
    from += sizeof count;
    return count;
}
char* writeText(char* to, const std::string& text) {
    to = writeCount(to, text.size());
    std::memcpy(to, text.data(), text.size());
    return to + text.size();
}
template <class Sink>
void showText(const char*& from, Sink& sink) {
    const size_t size = readCount(from);
    sink.text(from, size);
    from += size;
}

#define TYPE(T)                                                                                                        \
    char* write(char* to, const T& from) {                                                                             \
        [[maybe_unused]] auto* const block = reinterpret_cast<T##Block*>(to);                                          \
        if constexpr (!std::is_empty_v<T##Block>) to += sizeof(T##Block);
#define NUMBER(type, name, Name, lower) block->name = from.name;
#define TEXT(name, Name, lower) to = writeText(to, from.name);
#define RECORD(T, name, Name, lower) to = write(to, from.name);
#define TEXTS(name, Name, lower)                                                                                       \
    to = writeCount(to, from.name.size());                                                                             \
    for (const auto& text : from.name) to = writeText(to, text);
#define RECORDS(T, name, Name, lower)                                                                                  \
    to = writeCount(to, from.name.size());                                                                             \
    for (const auto& record : from.name) to = write(to, record);
#define END                                                                                                            \
    return to;                                                                                                         \
    }
#include "bench/Fields.def"

/// Reading needs the type's name, which the bytes do not have.
template <class T>
struct As {};

#define TYPE(T)                                                                                                        \
    template <class Sink>                                                                                              \
    void show(As<T>, const char*& from, Sink& sink) {                                                                  \
        [[maybe_unused]] const auto* const block = reinterpret_cast<const T##Block*>(from);                            \
        if constexpr (!std::is_empty_v<T##Block>) from += sizeof(T##Block);
#define NUMBER(type, name, Name, lower) sink.number(block->name);
#define TEXT(name, Name, lower) showText(from, sink);
#define RECORD(T, name, Name, lower) show(As<T>{}, from, sink);
#define TEXTS(name, Name, lower)                                                                                       \
    const size_t n##Name = readCount(from);                                                                            \
    sink.count(n##Name);                                                                                               \
    for (size_t i = 0; i < n##Name; ++i) showText(from, sink);
#define RECORDS(T, name, Name, lower)                                                                                  \
    const size_t n##Name = readCount(from);                                                                            \
    sink.count(n##Name);                                                                                               \
    for (size_t i = 0; i < n##Name; ++i) show(As<T>{}, from, sink);
#define END }
#include "bench/Fields.def"

int32_t chosenField(As<SubmitOrderMessage>, const char* from) {
    from += sizeof(SubmitOrderMessageBlock);
    for (int text = 0; text < 2; ++text) {
        const size_t size = readCount(from);
        from += size;
    }
    return reinterpret_cast<const SubmitOrderBlock*>(from)->marketID;
}
int32_t chosenField(As<MktDataMessage>, const char* from) {
    from += sizeof(MktDataMessageBlock) + sizeof(MarketViewBlock);
    return reinterpret_cast<const FeedMarketIDBlock*>(from)->marketID;
}

template <class M>
void addShape(const Shape<M>& shape) {
    const auto values = std::make_shared<std::vector<M>>(shape.values);
    const auto out = std::make_shared<std::vector<char>>(1 << 16);
    const auto bodies = std::make_shared<std::vector<std::vector<char>>>();
    for (size_t i = 0; i < distinct; ++i) {
        bodies->emplace_back(out->data(), write(out->data(), (*values)[i]));
        const char* from = bodies->back().data();
        Transcript transcript;
        show(As<M>{}, from, transcript);
        requireSame(shape.name, "fixed layout", shape.transcripts[i], transcript.written);
    }

    measureAlsoCold(
        shape.name, "encode", "fixed layout",
        [=](size_t i) { benchmark::DoNotOptimize(write(out->data(), (*values)[i])); }, meanSize(*bodies));
    measureAlsoCold(shape.name, "decode", "fixed layout read every field", [=](size_t i) {
        const char* from = (*bodies)[i].data();
        Sum sum;
        show(As<M>{}, from, sum);
        benchmark::DoNotOptimize(sum.total);
    });
    if constexpr (HasChosenField<M>) {
        const auto read = [=](size_t i) { return chosenField(As<M>{}, (*bodies)[i].data()); };
        for (size_t i = 0; i < distinct; ++i)
            requireSame(shape.name, "fixed layout", std::to_string(chosenField((*values)[i])), std::to_string(read(i)));
        measure(shape.name, "peek", "fixed layout read one field, trusting",
                [=](size_t i) { benchmark::DoNotOptimize(read(i)); });
    }
}

} // namespace

void addFlyweight() {
    forEachShape([](const auto& shape) { addShape(shape); });
}

} // namespace bench
