// The verifier against the codec: what verify() accepts, read() decodes from the same bytes and into the same block
// bytes, with a page after the bytes that must not be touched and no byte of block to spare. Strict accepts exactly
// what write() makes.
#include "fuzz/Input.h"

#include "Inspect/Checked.h"
#include "Inspect/Reflection.h"
#include "Inspect/Sizes.h"
#include "tests/Guarded.h"
#include "tests/KnownEnumerators.h"

namespace {

using namespace Inspect;

template <class T>
void check(std::string_view body) {
    const Result tolerated = verify<T>(body.data(), body.data() + body.size(), tolerant);
    const Result exact = verify<T>(body.data(), body.data() + body.size(), strict);
    const Result rolled = verify<T>(body.data(), body.data() + body.size(), rolling);
    FUZZ_CHECK(!tolerated || rolled.missing == 0);
    if (rolled.missing != 0) {
        const std::string filled = std::string(body) + std::string(rolled.missing, '\0');
        const Result full = verify<T>(filled.data(), filled.data() + filled.size(), whole);
        FUZZ_CHECK(full && full.blockBytes == rolled.blockBytes);
    }
    if (!tolerated) {
        FUZZ_CHECK(!exact);
        FUZZ_CHECK(tolerated.offset <= body.size());
        FUZZ_CHECK(!tolerated.path().empty());
        return;
    }
    FUZZ_CHECK(tolerated.consumed <= body.size());
    FUZZ_CHECK(tolerated.blockBytes <= 33 * tolerated.consumed);

    static Guarded block(34 << 20); // its end is the end of the message's block
    const size_t needed = sizeof(T) + tolerated.blockBytes;
    Velmora::BufferAllocator alloc(block.end() - needed, static_cast<int>(needed), "fuzz", "message");
    T* const message = new (alloc.allocate(sizeof(T))) T(alloc);
    char* const begin = const_cast<char*>(body.data());
    Velmora::FastCodec reader(begin, begin + body.size());
    message->read(reader);
    FUZZ_CHECK(reader.size() == tolerated.consumed);
    FUZZ_CHECK(alloc.unused_size() == 0);
    message->checkbounds(block.end() - needed, block.end());

    if constexpr (!std::is_same_v<T, Quillon::PadMessage>) { // is written in another form than it is read
        static Guarded range(12 << 20);                      // a price of one byte may grow to ten
        const size_t size = encoded_size(*message);
        Velmora::FastCodec writer(range.end() - size, range.end());
        message->write(writer);
        FUZZ_CHECK(writer.size() == size);
        const std::string_view written(range.end() - size, size);
        FUZZ_CHECK(static_cast<bool>(exact) == (written == body && holdsKnownEnumerators(*message)));
    }
    message->~T();
}

constexpr auto checks = perMessage<void (*)(std::string_view)>([]<class T>(Velmora::of<T>) { return &check<T>; });

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    initializeOnce();
    static Guarded guarded(1 << 20);
    const Input input(data, size);
    checks[input.index](guarded.hold(input.body));
    return 0;
}
