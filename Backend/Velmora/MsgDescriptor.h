// The run-time handle of one message type.
//
// Generic code (queues, block pools, gateways) takes a MsgDescriptor from the protocol by message identifier and works
// on untyped memory with it; it never names a concrete message type. A descriptor is a pure dispatcher: it counts
// nothing itself, accounting is done by its users through getStats() and Quillon::Atomic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

#include "Backend/Velmora/BufferAllocator.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/MsgStats.h"

namespace Velmora {

class MsgProtocol;

/// Identifies a message type. Travels beside the encoded body, never in it.
using MsgType_t = uint16_t;

/// The order of the virtual operations is a contract with code built apart from this module.
class MsgDescriptor {
  public:
    explicit MsgDescriptor(MsgProtocol* protocol) : _protocol(protocol) {}
    virtual ~MsgDescriptor() = default;

    virtual const char* name() const = 0; ///< the message type's name
    virtual MsgType_t id() const = 0;     ///< its identifier
    virtual short index() const = 0;      ///< its position in the protocol's message index
    virtual size_t size() const = 0;      ///< bytes of one message object in memory, without what it owns
    /// Builds a message at `p`, whose strings and vectors will draw on `alloc`. Does nothing if `p` is null.
    virtual void construct(void* p, BufferAllocator& alloc) = 0;
    /// Destroys the message at `p`, which must not be null. The memory stays the caller's.
    virtual void destroy(void* p) = 0;
    /// Hook for a message that is abandoned without destruction.
    virtual void nodestroy() = 0;
    virtual void write(const void* p, FastCodec& codec) const = 0; ///< encodes the message at `p`
    /// Decodes into the message at `p`. Throws std::out_of_range when its block is exhausted.
    virtual void read(void* p, FastCodec& codec) const = 0;
    /// Assigns; `dst` keeps its own block. Throws std::out_of_range when that is exhausted.
    virtual void copy(void* dst, const void* src) const = 0;
    /// Asserts that the message at `p` and all it owns lie inside [lo, hi).
    virtual void checkbounds(void* p, const void* lo, const void* hi) const = 0;
    virtual MsgStats& getStats() = 0; ///< counters for the users of the descriptor

    MsgProtocol* protocol() const { return _protocol; }

    /// A pointer of the user's, null at first; never interpreted and never freed.
    void* getTypeObject() const { return _typeObject; }
    void setTypeObject(void* object) { _typeObject = object; }

  private:
    MsgProtocol* _protocol;
    void* _typeObject = nullptr;
};

template <class T>
class MsgDescriptorT final : public MsgDescriptor {
  public:
    /// `name` is not owned and must outlive the descriptor.
    MsgDescriptorT(const char* name, MsgProtocol* protocol) : MsgDescriptor(protocol), _name(name) {}

    const char* name() const override { return _name; }
    MsgType_t id() const override { return T::ID; }
    short index() const override { return T::INDEX; }
    size_t size() const override { return sizeof(T); }
    void construct(void* p, BufferAllocator& alloc) override {
        if (p != nullptr) new (p) T(alloc);
    }
    void destroy(void* p) override { static_cast<T*>(p)->~T(); }
    void nodestroy() override {}
    void write(const void* p, FastCodec& codec) const override { static_cast<const T*>(p)->write(codec); }
    void read(void* p, FastCodec& codec) const override { static_cast<T*>(p)->read(codec); }
    void copy(void* dst, const void* src) const override { *static_cast<T*>(dst) = *static_cast<const T*>(src); }
    void checkbounds(void* p, const void* lo, const void* hi) const override {
        static_cast<const T*>(p)->checkbounds(lo, hi);
    }
    MsgStats& getStats() override { return _stats; }

  private:
    const char* _name;
    MsgStats _stats;
};

} // namespace Velmora
