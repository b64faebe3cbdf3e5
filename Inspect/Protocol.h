// A protocol as a constant table: what it consists of, and how its messages are worked with of which only the identifier
// is known. The functions of Inspect that take an identifier look it up here:
//
//     const Inspect::Protocol& chat = Inspect::protocol_of<Chat::ChatTraits>();
//     const Inspect::Result result = Inspect::verify(chat, id, begin, end, Inspect::whole);
//
// The tables are compiled for each protocol in sources of their own, which ql_add_protocol() makes. Functions that take no
// protocol mean the default one, which is QLProtocol for whoever links QLInspect.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "Backend/Velmora/MsgProtocol.h"
#include "Backend/Velmora/Notes.h"
#include "Inspect/TypeInfo.h"

namespace Inspect {

struct Display;
struct Encoded;
struct Policy;
struct Rendered;
struct Result;
class JsonCursor;
class ValueVisitor;

namespace detail {

struct JsonPath;
class JsonWriter;

/// Where a walk over a body stands.
struct Position {
    const char* p; ///< null: refused
    size_t blockBytes;
};

// How the messages of one type are worked with. What the functions do stands in the headers named ...Walk.h, and so do
// the tables.

struct Verifier {
    const TypeInfo* type;
    /// The end of a body whose values all stand in the form that write() gives them; anything else for others.
    Position (*canonical)(const char* begin, const char* end);
    /// The verdict on those others, which takes longer.
    Result (*judge)(const char* begin, const char* end, const Policy& policy);
};

/// A message in a block, and how many bytes it was read from. Null: none was built, and the block is as before.
struct Placed {
    void* message;
    size_t consumed;
};

struct Decoder {
    const TypeInfo* type;
    size_t size; ///< of a message in memory, without what it owns
    /// Decodes in one walk whatever read() decodes. Bytes may follow if `mayTrail`.
    Placed (*fresh)(std::string_view bytes, Velmora::BufferAllocator& block, bool mayTrail);
    /// Decodes what verify() accepted, into a block that has the room.
    void* (*trusted)(std::string_view bytes, Velmora::BufferAllocator& block);
};

struct Encoder {
    /// Encodes in one walk; returns the end of what was written. Null: the range may be too small, or a value too long.
    const char* (*within)(const void* message, char* begin, char* end);
    Encoded (*measured)(const void* message, char* begin, char* end); ///< in several walks, to the byte
};

struct JsonCoder {
    void (*write)(const void* message, JsonWriter& writer);
    void (*read)(JsonCursor& json, void* message, const JsonPath& path);
};

struct Renderer {
    Rendered (*render)(const void* message, char* begin, char* end, const Display& display);
};

struct ValueWalker {
    bool (*walk)(const void* message, const TypeInfo& type, ValueVisitor& visitor);
};

/// The same for all messages of a protocol, by INDEX. Each operation has a table of its own, and each table is compiled in
/// a source of its own: all walks over all types take long.
template <class Entry, class Traits>
struct MessageTable {
    static const std::array<Entry, Traits::MESSAGES> table;
};

/// Finds the INDEX of a message by its identifier in one step.
class IdIndex {
  public:
    struct Slot {
        int32_t id = -1; ///< of no message
        uint32_t index = 0;
    };

    /// Slot `id % modulus` holds the message with that identifier, if there is one.
    constexpr IdIndex(const Slot* slots, uint32_t modulus)
        : _slots(slots), _modulus(modulus), _reciprocal(UINT32_MAX / modulus + 1) {}

    /// Null if there is no such message.
    const Slot* find(Velmora::MsgType_t id) const {
        const Slot& slot = _slots[position(id)];
        return slot.id == id ? &slot : nullptr;
    }

    /// Of the only slot that can hold the message.
    constexpr size_t position(Velmora::MsgType_t id) const {
        // The remainder without a division: the fractional part of id / modulus, times modulus.
        return uint64_t{_reciprocal * id} * _modulus >> 32;
    }

  private:
    const Slot* _slots;
    uint32_t _modulus;
    uint32_t _reciprocal; ///< 2^32 / modulus, rounded up
};

} // namespace detail

struct Protocol {
    std::string_view name; ///< as it is told to peers
    int version;
    std::string_view signature;                           ///< 32 hexadecimal digits
    std::span<const MessageInfo> messages;                ///< in the order of their INDEX
    std::span<const TypeInfo* const> records;             ///< in declaration order
    std::span<const EnumerationInfo* const> enumerations; ///< in declaration order

    /// The module, with its descriptors; null before initialize() and after finalize().
    Velmora::MsgProtocol* (*instance)();
    void (*initialize)();
    void (*finalize)();

    // Of the definition, whatever it gives as its signature.
    std::string_view wireSignature;  ///< changes when bodies do
    std::string_view namesSignature; ///< changes when names do

    detail::IdIndex index;
    // By INDEX.
    const detail::Verifier* verifiers;
    const detail::Decoder* decoders;
    const detail::Encoder* encoders;
    const detail::JsonCoder* jsonCoders;
    const detail::Renderer* renderers;
    const detail::ValueWalker* valueWalkers;

    /// The entry of a message in one of the tables. Null if there is no such message.
    template <class Entry>
    const Entry* find(const Entry* table, Velmora::MsgType_t id) const {
        const detail::IdIndex::Slot* const slot = index.find(id);
        return slot != nullptr ? table + slot->index : nullptr;
    }
};

namespace detail {

template <class Traits>
struct ProtocolTable {
    static const Protocol protocol;
};

extern const Protocol* const defaultProtocol;

} // namespace detail

#pragma GCC diagnostic push
#ifdef __clang__ // the tables stand in sources of their own
#pragma GCC diagnostic ignored "-Wundefined-var-template"
#endif
/// The protocol with these traits.
template <class Traits>
constexpr const Protocol& protocol_of() {
    return detail::ProtocolTable<Traits>::protocol;
}

#pragma GCC diagnostic pop

/// The one that is meant where none is given.
inline const Protocol& default_protocol() { return *detail::defaultProtocol; }

namespace detail {

/// The entry of message T in one of the tables of its protocol.
template <class T, class Entry>
const Entry& entry_of(const Entry* Protocol::*table) {
    return (protocol_of<Velmora::ProtocolOf<T>>().*table)[T::INDEX];
}

} // namespace detail

} // namespace Inspect
