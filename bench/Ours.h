// The measured messages as this library's own.
#pragma once

#include <memory>
#include <vector>

#include "bench/Sinks.h"
#include "bench/Values.h"
#include "generated/QLProtocol/QLProtocol.h"

namespace bench {

/// The library's type for values of type M.
template <class M>
struct OurType;
#define TYPE(T)                                                                                                        \
    template <>                                                                                                        \
    struct OurType<T> {                                                                                                \
        using type = Quillon::T;                                                                                       \
    };
#define NUMBER(type, name, Name, lower)
#define TEXT(name, Name, lower)
#define RECORD(T, name, Name, lower)
#define TEXTS(name, Name, lower)
#define RECORDS(T, name, Name, lower)
#define END
#include "bench/Fields.def"

#define TYPE(T) inline void fill(Quillon::T& to, const T& from) {
#define NUMBER(type, name, Name, lower) to.name = static_cast<decltype(to.name)>(from.name);
#define TEXT(name, Name, lower) to.name = from.name;
#define RECORD(T, name, Name, lower) fill(to.name, from.name);
#define TEXTS(name, Name, lower)                                                                                       \
    for (const auto& text : from.name) to.name.add_back() = text;
#define RECORDS(T, name, Name, lower)                                                                                  \
    to.name.resize(from.name.size());                                                                                  \
    for (size_t i = 0; i < from.name.size(); ++i) fill(to.name[i], from.name[i]);
#define END }
#include "bench/Fields.def"

/// The other way round.
#define TYPE(T) inline void take(T& to, const Quillon::T& from) {
#define NUMBER(type, name, Name, lower) to.name = static_cast<type>(from.name);
#define TEXT(name, Name, lower) to.name.assign(from.name.c_str(), from.name.size());
#define RECORD(T, name, Name, lower) take(to.name, from.name);
#define TEXTS(name, Name, lower)                                                                                       \
    for (const auto& text : from.name) to.name.emplace_back(text.c_str(), text.size());
#define RECORDS(T, name, Name, lower)                                                                                  \
    to.name.resize(from.name.size());                                                                                  \
    for (size_t i = 0; i < from.name.size(); ++i) take(to.name[i], from.name[i]);
#define END }
#include "bench/Fields.def"

#define TYPE(T)                                                                                                        \
    template <class Sink>                                                                                              \
    void show(const Quillon::T& from, Sink& sink) {
#define NUMBER(type, name, Name, lower) sink.number(static_cast<type>(from.name));
#define TEXT(name, Name, lower) sink.text(from.name.c_str(), from.name.size());
#define RECORD(T, name, Name, lower) show(from.name, sink);
#define TEXTS(name, Name, lower)                                                                                       \
    sink.count(from.name.size());                                                                                      \
    for (const auto& text : from.name) sink.text(text.c_str(), text.size());
#define RECORDS(T, name, Name, lower)                                                                                  \
    sink.count(from.name.size());                                                                                      \
    for (const auto& record : from.name) show(record, sink);
#define END }
#include "bench/Fields.def"

/// Room for any of the measured messages with all it owns, for its bytes, or for its text.
inline constexpr int plenty = 1 << 16;

/// Memory to decode into, one fresh message after the other.
class Scratch {
  public:
    /// Empties the block. The message before is abandoned without destruction.
    void restart() { alloc = Velmora::BufferAllocator(_block.get(), plenty, "bench", "message"); }

    /// A fresh T at the first bytes of the emptied block.
    template <class T>
    T& fresh() {
        restart();
        return *new (alloc.allocate(sizeof(T))) T(alloc);
    }

    Velmora::BufferAllocator alloc;

  private:
    std::unique_ptr<char[]> _block = std::make_unique<char[]>(plenty);
};

/// All messages of a shape, each in a block of exactly its size: blocks at equal distances of a large power of two
/// would compete for the same sets of the cache. Each with its encoded body, which ends where its storage ends.
template <class M>
class OurMessages {
  public:
    using T = typename OurType<M>::type;

    explicit OurMessages(const Shape<M>& shape) {
        Scratch scratch;
        for (const M& values : shape.values) {
            T& draft = scratch.fresh<T>();
            fill(draft, values);

            const auto size = static_cast<int>(scratch.alloc.used_size());
            auto block = std::make_unique<char[]>(static_cast<size_t>(size));
            auto alloc = std::make_unique<Velmora::BufferAllocator>(block.get(), size, "bench", shape.name);
            T* const message = new (alloc->allocate(sizeof(T))) T(*alloc);
            *message = draft;

            std::vector<char> room(plenty);
            Velmora::FastCodec codec(room.data(), room.data() + room.size());
            message->write(codec);
            bodies.emplace_back(room.data(), room.data() + codec.size());

            _blocks.push_back(std::move(block));
            _allocs.push_back(std::move(alloc));
            _messages.push_back(message);
        }
    }

    const T& operator[](size_t i) const { return *_messages[i]; }

    /// Decodes body `i` into a fresh message in `scratch`.
    T& decode(size_t i, Scratch& scratch) {
        T& message = scratch.fresh<T>();
        Velmora::FastCodec codec(bodies[i].data(), bodies[i].data() + bodies[i].size());
        message.read(codec);
        return message;
    }

    std::vector<std::vector<char>> bodies;

  private:
    // The messages are never destroyed: all they own goes with their blocks.
    std::vector<std::unique_ptr<char[]>> _blocks;
    std::vector<std::unique_ptr<Velmora::BufferAllocator>> _allocs;
    std::vector<T*> _messages;
};

} // namespace bench
