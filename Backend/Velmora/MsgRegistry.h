// The descriptors of a protocol's messages.
//
// Every message type has two descriptors with separate statistics: one in a direct table of `Modulo` slots, at
// identifier modulo `Modulo`, and one in a hash map, which is the one that lookups hand out. The duplication is
// deliberate: users count on the map's descriptor starting with statistics of its own.
#pragma once

#include <cstddef>
#include <unordered_map>

#include "Backend/Velmora/MsgDescriptor.h"

namespace Velmora {

template <size_t Modulo>
class MsgRegistry {
  public:
    /// An empty registry whose map is sized for that many entries.
    explicit MsgRegistry(size_t entries) : _descriptorsMap(bucketsFor(entries)) {}

    /// Forgets what the direct table holds, without releasing it.
    void clearTable() {
        for (MsgDescriptor*& slot : _descriptors) slot = nullptr;
    }

    /// Creates both descriptors of a message type. When memory runs out midway, what was created is registered already,
    /// so that release() finds it.
    template <class Message>
    void add(const char* name, MsgProtocol* protocol) {
        _descriptors[Message::ID % Modulo] = new MsgDescriptorT<Message>(name, protocol);
        // The entry comes first: were the descriptor made before it, it would leak if the map could not grow.
        MsgDescriptor*& entry = _descriptorsMap[Message::ID];
        entry = new MsgDescriptorT<Message>(name, protocol);
    }

    /// The map's descriptor for that identifier, or null.
    MsgDescriptor* find(MsgType_t id) const {
        const auto found = _descriptorsMap.find(id);
        return found != _descriptorsMap.end() ? found->second : nullptr;
    }

    /// Deletes every descriptor and leaves the registry empty; the map keeps its buckets. In the order that hosts see
    /// in their own hooks: the map's, bucket by bucket, then those of the table, slot by slot.
    void release() {
        for (size_t bucket = 0; bucket < _descriptorsMap.bucket_count(); ++bucket)
            for (auto entry = _descriptorsMap.begin(bucket); entry != _descriptorsMap.end(bucket); ++entry) {
                delete entry->second;
                entry->second = nullptr;
            }
        _descriptorsMap.clear();
        for (MsgDescriptor*& slot : _descriptors) {
            delete slot;
            slot = nullptr;
        }
    }

  private:
    /// The first of these primes that is not below `entries`: 193 for 100, of which two identifiers share a bucket at
    /// most. The standard libraries of GCC and clang make exactly as many buckets as asked for when that is a prime,
    /// and keep them while there are no more entries. Another may make more, which changes nothing but the order in
    /// which release() goes through the map.
    static constexpr size_t bucketsFor(size_t entries) {
        for (const size_t prime : {53u, 97u, 193u, 389u, 769u, 1543u})
            if (prime >= entries) return prime;
        return entries;
    }

    struct IdentityHash {
        size_t operator()(MsgType_t id) const { return id; }
    };
    using DescriptorMap = std::unordered_map<MsgType_t, MsgDescriptor*, IdentityHash>;

    MsgDescriptor* _descriptors[Modulo] = {};
    DescriptorMap _descriptorsMap;
};

} // namespace Velmora
