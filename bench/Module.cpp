// What does not depend on a message: allocation from a block, looking a descriptor up.
#include <cstdlib>
#include <memory>
#include <vector>

#include "bench/Measure.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace bench {

void addModule() {
    constexpr int size = 4096;
    const auto block = std::make_shared<std::vector<char>>(size);
    const auto alloc = std::make_shared<Velmora::BufferAllocator>(block->data(), size, "bench", "block");
    measure("module", "allocate 24 bytes", "BufferAllocator", [block, alloc](size_t) {
        if (alloc->unused_size() < 24) *alloc = Velmora::BufferAllocator(block->data(), size, "bench", "block");
        benchmark::DoNotOptimize(alloc->allocate(24));
    });
    measure("module", "allocate 24 bytes", "malloc and free", [](size_t) {
        void* const p = std::malloc(24); // const: the library's way of using a variable can change it under GCC
        benchmark::DoNotOptimize(p);
        std::free(p);
    });

    // All identifiers, in strides, so that neighbours in the map do not follow each other.
    std::vector<Velmora::MsgType_t> ids;
    Quillon::messages([&]<class T>(Velmora::of<T>, const char*) { return ids.push_back(T::ID), true; });
    measure("module", "look up a descriptor", "QLProtocol", [ids, at = size_t{0}](size_t) mutable {
        at = (at + 37) % ids.size();
        benchmark::DoNotOptimize(Quillon::__protocol->getDescriptor(ids[at]));
    });
}

} // namespace bench
