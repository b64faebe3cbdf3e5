// What this library does with the measured messages.
#include "bench/Ours.h"

#include <ostream>
#include <streambuf>

#include "Inspect/Checked.h"
#include "Inspect/Peek.h"
#include "Inspect/Reflection.h"
#include "Inspect/Selection.h"
#include "bench/Cold.h"
#include "generated/QLProtocol/QLProtocol.fields.h"
#include "tests/OlderProcessor.h"

namespace bench {

namespace {

/// A standard stream into memory of its own, without the growth of string streams.
class MemoryStream : private std::streambuf, public std::ostream {
  public:
    MemoryStream() : std::ostream(static_cast<std::streambuf*>(this)) { restart(); }
    void restart() { setp(_text, _text + sizeof _text); }

  private:
    char _text[plenty];
};

std::optional<int32_t> peekChosen(const SubmitOrderMessage*, std::string_view body) {
    return Inspect::peek<&Quillon::SubmitOrderMessage::contents, &Quillon::SubmitOrder::marketID>(body);
}
std::optional<int32_t> peekChosen(const MktDataMessage*, std::string_view body) {
    return Inspect::peek<&Quillon::MktDataMessage::mvd, &Quillon::MarketView::fmID, &Quillon::FeedMarketID::marketID>(
        body);
}
const char* chosenPath(const SubmitOrderMessage*) { return "contents.marketID"; }
const char* chosenPath(const MktDataMessage*) { return "mvd.fmID.marketID"; }

/// One field of a body, without a message.
template <class M>
void addPeek(const Shape<M>& shape, const OurMessages<M>& ours) {
    constexpr const M* type = nullptr;
    const auto bodies = std::make_shared<std::vector<std::vector<char>>>(ours.bodies);
    const auto body = [=](size_t i) { return std::string_view((*bodies)[i].data(), (*bodies)[i].size()); };
    const auto selection = std::make_shared<Inspect::Selection>(
        Inspect::Selection::at(*Inspect::reflect(OurType<M>::type::ID), chosenPath(type)));
    const auto select = [=](size_t i) {
        int64_t found = 0;
        selection->read(body(i), [&](const Inspect::Value& value) { return found = value.number, true; });
        return found;
    };
    for (size_t i = 0; i < distinct; ++i) {
        const std::string wanted = std::to_string(chosenField(shape.values[i]));
        requireSame(shape.name, "peek()", wanted, std::to_string(peekChosen(type, body(i)).value_or(-1)));
        requireSame(shape.name, "a selection", wanted, std::to_string(select(i)));
    }
    measure(shape.name, "peek", "QLProtocol", [=](size_t i) { benchmark::DoNotOptimize(peekChosen(type, body(i))); });
    measure(shape.name, "peek", "QLProtocol by path text", [=](size_t i) { benchmark::DoNotOptimize(select(i)); });
}

template <class M>
void addShape(const Shape<M>& shape) {
    using T = typename OurType<M>::type;
    const auto ours = std::make_shared<OurMessages<M>>(shape);
    const auto scratch = std::make_shared<Scratch>();
    const auto out = std::make_shared<std::vector<char>>(plenty);
    char* const begin = out->data();
    char* const end = begin + plenty;

    // What every other time of this file contains without being work on a message.
    measureAlsoCold(shape.name, "harness", "choosing a message",
                    [=](size_t i) { benchmark::DoNotOptimize(&(*ours)[i]); });

    measure(
        shape.name, "encode", "QLProtocol",
        [=](size_t i) {
            Velmora::FastCodec codec(begin, end);
            (*ours)[i].write(codec);
            benchmark::DoNotOptimize(codec.size());
            (void)out; // keeps the bytes alive
        },
        meanSize(ours->bodies));
    measure(shape.name, "decode", "QLProtocol",
            [=](size_t i) { benchmark::DoNotOptimize(&ours->decode(i, *scratch)); });
    measure(shape.name, "decode+read", "QLProtocol", [=](size_t i) {
        Sum sum;
        show(ours->decode(i, *scratch), sum);
        benchmark::DoNotOptimize(sum.total);
    });

    // The path for processors without BMI2, whatever this one has: the library's own, by the flag that chooses.
    measure(shape.name, "encode", "QLProtocol without BMI2", [=](size_t i) {
        const OlderProcessor older;
        Velmora::FastCodec codec(begin, end);
        (*ours)[i].write(codec);
        benchmark::DoNotOptimize(codec.size());
        (void)out;
    });
    measure(shape.name, "decode", "QLProtocol without BMI2", [=](size_t i) {
        const OlderProcessor older;
        benchmark::DoNotOptimize(&ours->decode(i, *scratch));
    });

    // The same through the untyped descriptor, as queues and gateways do.
    Velmora::MsgDescriptor* const descriptor = Quillon::__protocol->getDescriptor(T::ID);
    measure(shape.name, "encode", "QLProtocol by descriptor", [=](size_t i) {
        Velmora::FastCodec codec(begin, end);
        descriptor->write(&(*ours)[i], codec);
        benchmark::DoNotOptimize(codec.size());
        (void)out;
    });
    measure(shape.name, "decode", "QLProtocol by descriptor", [=](size_t i) {
        auto& body = ours->bodies[i];
        scratch->restart();
        void* const message = scratch->alloc.allocate(descriptor->size());
        descriptor->construct(message, scratch->alloc);
        Velmora::FastCodec codec(body.data(), body.data() + body.size());
        descriptor->read(message, codec);
        benchmark::DoNotOptimize(message);
    });

    // What a host does that faces strangers: everything checked. Messages are left to their blocks, as above.
    const auto exact = std::make_shared<std::vector<std::vector<char>>>(ours->bodies);
    measureAlsoCold(shape.name, "safe encode", "QLProtocol", [=](size_t i) {
        benchmark::DoNotOptimize(Inspect::encode_checked((*ours)[i], begin, end)), (void)out;
    });
    measure(shape.name, "safe encode", "QLProtocol into a range of its size", [=](size_t i) {
        std::vector<char>& range = (*exact)[i];
        benchmark::DoNotOptimize(Inspect::encode_checked((*ours)[i], range.data(), range.data() + range.size()));
    });
    const auto decodeSafely = [=](size_t i) {
        scratch->restart();
        const std::string_view body(ours->bodies[i].data(), ours->bodies[i].size());
        return Inspect::decode_verified<T>(body, scratch->alloc);
    };
    measureAlsoCold(shape.name, "safe decode", "QLProtocol", [=](size_t i) {
        auto decoded = decodeSafely(i);
        benchmark::DoNotOptimize(decoded);
        benchmark::DoNotOptimize(decoded.object.release());
    });
    measureAlsoCold(shape.name, "safe decode+read", "QLProtocol", [=](size_t i) {
        Sum sum;
        auto decoded = decodeSafely(i);
        show(*decoded, sum);
        benchmark::DoNotOptimize(decoded.object.release());
        benchmark::DoNotOptimize(sum.total);
    });
    measure(shape.name, "safe decode", "QLProtocol, destroyed",
            [=](size_t i) { benchmark::DoNotOptimize(decodeSafely(i).needed); });
    measure(shape.name, "safe decode", "QLProtocol by identifier", [=](size_t i) {
        scratch->restart();
        const std::string_view body(ours->bodies[i].data(), ours->bodies[i].size());
        benchmark::DoNotOptimize(Inspect::decode_verified(T::ID, body, scratch->alloc).release());
    });
    measure(shape.name, "verify", "QLProtocol", [=](size_t i) {
        const auto& body = ours->bodies[i];
        benchmark::DoNotOptimize(Inspect::verify<T>(body.data(), body.data() + body.size(), Inspect::strict));
    });

    if constexpr (HasChosenField<M>) addPeek(shape, *ours);

    scratch->restart();
    measure(shape.name, "construct", "QLProtocol",
            [=](size_t) { benchmark::DoNotOptimize(new (scratch->alloc.buffer()) T(scratch->alloc)); });
    measure(shape.name, "copy", "QLProtocol", [=](size_t i) {
        T& copy = scratch->template fresh<T>();
        copy = (*ours)[i];
        benchmark::DoNotOptimize(&copy);
    });
    measure(shape.name, "copy", "QLProtocol by descriptor", [=](size_t i) {
        T& copy = scratch->template fresh<T>();
        descriptor->copy(&copy, &(*ours)[i]);
        benchmark::DoNotOptimize(&copy);
    });
    const auto others = std::make_shared<OurMessages<M>>(shape);
    measure(shape.name, "compare equal", "QLProtocol",
            [=](size_t i) { benchmark::DoNotOptimize((*ours)[i] == (*others)[i]); });
    measure(shape.name, "compare less", "QLProtocol",
            [=](size_t i) { benchmark::DoNotOptimize((*ours)[i] < (*others)[i]); });

    measure(shape.name, "print", "FastOStream", [=](size_t i) {
        Quillon::FastOStream text(begin, end);
        text << (*ours)[i];
        benchmark::DoNotOptimize(text.size());
        (void)out;
    });
    const auto stream = std::make_shared<MemoryStream>();
    measure(shape.name, "print", "std::ostream", [=](size_t i) {
        stream->restart();
        *stream << (*ours)[i];
    });
}

} // namespace

void addOurs() {
    forEachShape([](const auto& shape) { addShape(shape); });
}

} // namespace bench
