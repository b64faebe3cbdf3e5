// What no codec can beat, and the plain byte loop. Measured in the same run, because ratios to them carry from machine
// to machine while times do not.
#include <cstring>

#include "bench/Measure.h"
#include "bench/Ours.h"
#include "bench/PlainCodec.h"

namespace bench {
namespace {

/// Stores every number of `from` once, as wide as it is in memory, and of texts and vectors the count and what they
/// hold. Texts go in pieces of 16 bytes that read and write beyond the text, which no codec may: `from` and `to` need
/// 16 bytes after them. Returns the end.
template <class T>
QL_FORCE_INLINE char* store(const T& from, char* to) {
    if constexpr (Velmora::String<T>) {
        const size_t size = from.size();
        const char* const text = from.c_str();
        std::memcpy(to, &size, sizeof size);
        to += sizeof size;
        for (size_t i = 0; i < size; i += 16) std::memcpy(to + i, text + i, 16);
        return to + size;
    } else if constexpr (Velmora::Vector<T>) {
        const size_t size = from.size();
        std::memcpy(to, &size, sizeof size);
        to += sizeof size;
        for (const auto& element : from) to = store(element, to);
        return to;
    } else if constexpr (Velmora::Composite<T>) {
        fields(Velmora::of<T>{}, [&](const char*, auto member, auto) QL_FORCE_INLINE_LAMBDA {
            to = store(from.*member, to);
            return true;
        });
        return to;
    } else {
        std::memcpy(to, &from, sizeof from);
        return to + sizeof from;
    }
}

template <class M>
void addShape(const Shape<M>& shape) {
    using T = typename OurType<M>::type;
    const auto ours = std::make_shared<OurMessages<M>>(shape);
    const auto scratch = std::make_shared<Scratch>();
    const auto out = std::make_shared<std::vector<char>>(plenty);
    char* const begin = out->data();

    for (size_t i = 0; i < distinct; ++i) {
        PlainCodec writer(begin);
        writer.write((*ours)[i]);
        const auto& body = ours->bodies[i];
        requireSame(shape.name, "the plain byte loop's bytes", {body.data(), body.size()}, {begin, writer.size()});
        T& message = scratch->template fresh<T>();
        PlainCodec(ours->bodies[i].data()).read(message);
        Transcript transcript;
        show(message, transcript);
        requireSame(shape.name, "the plain byte loop", shape.transcripts[i], transcript.written);
    }

    measure(shape.name, "encode", "plain byte loop", [=](size_t i) {
        PlainCodec codec(begin);
        codec.write((*ours)[i]);
        benchmark::DoNotOptimize(codec.size());
        (void)out; // keeps the bytes alive
    });
    measure(shape.name, "decode", "plain byte loop", [=](size_t i) {
        T& message = scratch->template fresh<T>();
        PlainCodec codec(ours->bodies[i].data());
        codec.read(message);
        benchmark::DoNotOptimize(&message);
    });
    measure(shape.name, "encode", "memcpy of the bytes", [=](size_t i) {
        const auto& body = ours->bodies[i];
        std::memcpy(begin, body.data(), body.size());
        benchmark::DoNotOptimize(out->data());
    });
    // The blocks of `ours` end with the last text; copies in a roomy block can be over-read.
    std::vector<std::shared_ptr<Scratch>> roomy;
    for (size_t i = 0; i < distinct; ++i) {
        roomy.push_back(std::make_shared<Scratch>());
        roomy.back()->template fresh<T>() = (*ours)[i];
    }
    measure(shape.name, "decode", "store every field once", [=](size_t i) {
        const T& message = *reinterpret_cast<const T*>(roomy[i]->alloc.buffer());
        benchmark::DoNotOptimize(store(message, begin));
        (void)out;
    });
    // The size comes from memory: for a constant one the compiler emits string instructions that start slowly.
    measure(shape.name, "construct", "zero as many bytes", [=, size = sizeof(T)](size_t) {
        std::memset(begin, 0, size);
        benchmark::DoNotOptimize(out->data());
    });
}

} // namespace

void addFloors() {
    forEachShape([](const auto& shape) { addShape(shape); });
}

} // namespace bench
