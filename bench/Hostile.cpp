// Bodies made to cost much, in three sizes: decoding must take time in proportion to their bytes.
#include <algorithm>
#include <cstdlib>

#include "bench/Measure.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace bench {
namespace {

constexpr int blockSize = 1 << 23;

struct Block {
    std::unique_ptr<char[]> storage = std::make_unique<char[]>(blockSize);
    Velmora::BufferAllocator alloc{storage.get(), blockSize, "bench", "hostile"};
};

/// Decodes `bodies` one after the other into one fresh T.
template <class T>
void add(const std::string& kind, std::vector<std::string> bodies) {
    size_t bytes = 0;
    for (const std::string& body : bodies) bytes += body.size();
    const auto block = std::make_shared<Block>();
    measure("module", "decode " + std::to_string(bytes) + " hostile bytes", kind,
            [bodies = std::move(bodies), block](size_t) mutable {
                Velmora::BufferAllocator& alloc = block->alloc;
                alloc = Velmora::BufferAllocator(block->storage.get(), blockSize, "bench", "hostile");
                T& value = *new (alloc.allocate(sizeof(T))) T(alloc);
                for (std::string& body : bodies) {
                    Velmora::FastCodec codec(body.data(), body.data() + body.size());
                    value.read(codec);
                    if (codec.size() != body.size()) std::abort();
                }
                benchmark::DoNotOptimize(&value);
            });
}

/// A TradeHierarchy of `count` names, each with the bytes `name`.
std::string names(size_t count, const std::string& name) {
    std::string body{'\0', static_cast<char>(0x80 | count >> 8), static_cast<char>(count)};
    while (count-- > 0) body += name;
    return body;
}

} // namespace

void addHostile() {
    for (const size_t size : {1u << 10, 1u << 13, 1u << 16}) {
        const size_t most = 32767; // elements of a vector
        add<Quillon::RuThereMessage>("one overlong varint", {std::string(size - 2, '\x80') + std::string(2, '\0')});
        add<Quillon::TradeHierarchy>("empty strings", {names(std::min(size, most), std::string(1, '\0'))});
        add<Quillon::TradeHierarchy>("strings of overlong length",
                                     {names(size / 9, std::string("\x81\x80\x80\x80\x80\x80\x80\0x", 9))});
        const std::string few = names(size / 8, "\1x"), many = names(size / 4, "\1x");
        add<Quillon::TradeHierarchy>("a used vector, fewer and more elements", {few, many, few});
    }
}

} // namespace bench
