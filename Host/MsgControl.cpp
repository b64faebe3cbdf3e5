#include "Host/MsgControl.h"

#include "Backend/Common/Assert.h"
#include "Host/MsgBlockPool.h"

namespace Velmora {

using Quillon::Atomic;

MsgControl::MsgControl(MsgBlockPool& pool, char* block, size_t size)
    : _alloc(block, static_cast<int>(size), pool.site(), ""), _buffer(block), _pool(&pool), _users(0) {}

MsgControl* MsgControl::of(void* message) {
    return reinterpret_cast<MsgControl*>(static_cast<char*>(message) - OFFSET);
}

template <class Change>
bool MsgControl::changeUsers(Change change) {
    for (;;) {
        const Quillon::cas_t seen = __atomic_load_n(&_users, __ATOMIC_SEQ_CST);
        auto now = std::bit_cast<Users>(seen);
        if (!change(now)) return false;
        if (Atomic::cas(&_users, seen, std::bit_cast<Quillon::cas_t>(now))) return true;
    }
}

void MsgControl::describe(MsgType_t id, int16_t index) {
    changeUsers([&](Users& users) {
        users._id = id;
        users._index = index;
        return true;
    });
}

void MsgControl::count(Quillon::cas_t MsgStats::*counter) const {
    Atomic::increment(&(_descriptor->getStats().*counter));
}

void* MsgControl::initialize(MsgDescriptor& descriptor) {
    finalize();
    _alloc = BufferAllocator(_buffer, static_cast<int>(_alloc.size()), _pool->site(), descriptor.name());
    descriptor.construct(_alloc.allocate(descriptor.size()), _alloc);
    hold(descriptor);
    return _buffer;
}

void MsgControl::hold(MsgDescriptor& descriptor) {
    _descriptor = &descriptor;
    _protocol = descriptor.protocol();
    describe(descriptor.id(), descriptor.index());
    count(&MsgStats::nalloc);
    count(&MsgStats::nconstruct);
}

void MsgControl::finalize() {
    if (_descriptor != nullptr) {
        Atomic::setmax(&_descriptor->getStats().max_size, _alloc.used_size());
        count(&MsgStats::ndestroy);
        count(&MsgStats::ndealloc);
        _descriptor->destroy(_buffer);
    }
    _descriptor = nullptr;
    _protocol = nullptr;
    _alloc = BufferAllocator(_buffer, static_cast<int>(_alloc.size()), _pool->site(), "");
    describe(0, 0);
}

Inspect::Result MsgControl::read(const Inspect::Protocol& protocol, MsgType_t id, std::string_view body,
                                 const Inspect::Policy& policy) {
    finalize();
    Inspect::Decoded decoded = Inspect::decode_verified(protocol, id, body, _alloc, policy);
    if (decoded) {
        hold(*decoded.descriptor);
        count(&MsgStats::nread);
        decoded.release();
    }
    return decoded.result;
}

Inspect::Encoded MsgControl::write(const Inspect::Protocol& protocol, char* begin, char* end) const {
    const Inspect::Encoded encoded = Inspect::encode_checked(protocol, id(), _buffer, begin, end);
    if (encoded) count(&MsgStats::nwrite);
    return encoded;
}

void MsgControl::copy(const MsgControl& from) {
    QL_ASSERT(_descriptor == from._descriptor && _descriptor != nullptr);
    _descriptor->copy(_buffer, from._buffer);
    count(&MsgStats::ncopy);
}

bool MsgControl::acquireReader() {
    return changeUsers([](Users& users) {
        if (users._writers != 0 || users._readers == MOST_READERS) return false;
        ++users._readers;
        return true;
    });
}

bool MsgControl::acquireWriter() {
    return changeUsers([](Users& users) {
        if (users._writers != 0 || users._readers != 0) return false;
        users._writers = 1;
        return true;
    });
}

void MsgControl::share() {
    changeUsers([](Users& users) {
        QL_ASSERT(users._writers == 1);
        users._writers = 0;
        users._readers = 1;
        return true;
    });
}

void MsgControl::releaseReader() {
    bool isLast = false;
    changeUsers([&](Users& users) {
        QL_ASSERT(users._readers > 0);
        // The last reader becomes the writer, so that nobody else gets in while the message is destroyed.
        isLast = --users._readers == 0;
        users._writers = isLast ? 1 : 0;
        return true;
    });
    if (isLast) releaseWriter();
}

void MsgControl::releaseWriter() {
    QL_ASSERT(writers() == 1);
    finalize();
    changeUsers([](Users& users) {
        users._writers = 0;
        return true;
    });
    _pool->put(this);
}

} // namespace Velmora
