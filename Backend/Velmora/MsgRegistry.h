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
    explicit MsgRegistry(size_t entries) : _descriptorsMap(entries) {}

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

    /// Deletes every descriptor and leaves the registry empty; the map keeps its buckets.
    void release() {
        for (auto& [id, descriptor] : _descriptorsMap) {
            delete descriptor;
            descriptor = nullptr;
        }
        _descriptorsMap.clear();
        for (MsgDescriptor*& slot : _descriptors) {
            delete slot;
            slot = nullptr;
        }
    }

  private:
    struct IdentityHash {
        size_t operator()(MsgType_t id) const { return id; }
    };
    using DescriptorMap = std::unordered_map<MsgType_t, MsgDescriptor*, IdentityHash>;

    MsgDescriptor* _descriptors[Modulo] = {};
    DescriptorMap _descriptorsMap;
};

} // namespace Velmora
