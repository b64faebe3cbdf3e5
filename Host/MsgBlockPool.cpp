#include "Host/MsgBlockPool.h"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

#include "Backend/Common/Assert.h"
#include "Inspect/Reflection.h"

namespace Velmora {

using Quillon::Atomic;
using Quillon::cas_t;

namespace {

constexpr size_t LINE = 64; // of the processor's cache: no two headers share one

cas_t load(const cas_t& word) { return __atomic_load_n(&word, __ATOMIC_SEQ_CST); }

} // namespace

size_t MsgBlockPool::Shelf::stride(SizeClass size) {
    return (MsgControl::OFFSET + size.bytes + LINE - 1) / LINE * LINE;
}

MsgControl* MsgBlockPool::Shelf::pop() {
    for (;;) {
        const cas_t top = load(_top);
        const cas_t number = top & INDEX;
        if (number == 0) return nullptr;
        const cas_t below = load(_next[number - 1]); // of another time if the block is gone by now: the exchange fails
        if (!Atomic::cas(&_top, top, ((top | INDEX) + 1) | below)) continue;
        Atomic::decrement(&_free);
        return reinterpret_cast<MsgControl*>(at(number - 1));
    }
}

void MsgBlockPool::Shelf::push(MsgControl* block) {
    const auto i = static_cast<size_t>(reinterpret_cast<char*>(block) - _memory) / stride(_size);
    for (;;) {
        const cas_t top = load(_top);
        __atomic_store_n(&_next[i], top & INDEX, __ATOMIC_SEQ_CST);
        if (Atomic::cas(&_top, top, ((top | INDEX) + 1) | (i + 1))) break;
    }
    Atomic::increment(&_free);
}

void MsgBlockPool::Release::operator()(char* memory) const { ::operator delete (memory, std::align_val_t{LINE}); }

MsgBlockPool::MsgBlockPool(std::vector<SizeClass> classes, const char* site) : _site(site) {
    std::ranges::sort(classes, {}, &SizeClass::bytes);
    size_t all = 0;
    for (const SizeClass& it : classes) {
        if (it.bytes == 0 || it.bytes > INT32_MAX || it.blocks == 0 || it.blocks > MOST_BLOCKS)
            throw std::invalid_argument("MsgBlockPool: size of a class out of range");
        if (__builtin_add_overflow(all, Shelf::stride(it) * it.blocks, &all)) throw std::bad_alloc();
    }
    if (classes.empty()) throw std::invalid_argument("MsgBlockPool: no class of sizes");
    _memory.reset(static_cast<char*>(::operator new (all, std::align_val_t{LINE})));
    _shelves.reserve(classes.size());
    char* at = _memory.get();
    for (const SizeClass& it : classes) {
        Shelf& shelf = _shelves.emplace_back(it, at);
        at += Shelf::stride(it) * it.blocks;
        for (size_t i = it.blocks; i-- != 0;) {
            char* const place = shelf.at(i);
            shelf.push(new (place) MsgControl(*this, place + MsgControl::OFFSET, it.bytes));
        }
    }
}

MsgBlockPool::~MsgBlockPool() { QL_ASSERT(free() == capacity()); }

MsgControl* MsgBlockPool::get(size_t bytes) {
    for (Shelf& shelf : _shelves) {
        if (shelf.blockBytes() < bytes) continue;
        if (MsgControl* const block = shelf.pop()) {
            block->acquireWriter();
            return block;
        }
    }
    Atomic::increment(&_exhausted);
    return nullptr;
}

void MsgBlockPool::put(MsgControl* block) {
    std::ranges::find_if(_shelves, [&](const Shelf& shelf) { return shelf.holds(block); })->push(block);
}

MsgControl* MsgBlockPool::decode(const Inspect::Protocol& protocol, MsgType_t id, std::string_view body,
                                 Inspect::Result& result, const Inspect::Policy& policy) {
    const Inspect::TypeInfo* const type = Inspect::reflect(protocol, id);
    // A guess that mostly suffices; else the refusal tells how much is needed.
    size_t bytes = std::min((type != nullptr ? type->memorySize : 0) + 2 * body.size(), _shelves.back().blockBytes());
    for (;;) {
        MsgControl* const block = get(bytes);
        if (block == nullptr) {
            result = {};
            return nullptr;
        }
        result = block->read(protocol, id, body, policy);
        if (result) return block;
        block->releaseWriter();
        if (result.fault != Inspect::Fault::blockTooSmall) return nullptr;
        bytes = type->memorySize + result.blockBytes;
        if (bytes > _shelves.back().blockBytes()) return nullptr;
    }
}

size_t MsgBlockPool::free() const {
    size_t all = 0;
    for (const Shelf& shelf : _shelves) all += shelf.free();
    return all;
}

size_t MsgBlockPool::capacity() const {
    size_t all = 0;
    for (const Shelf& shelf : _shelves) all += shelf.blocks();
    return all;
}

} // namespace Velmora
