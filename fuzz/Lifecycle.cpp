// All that a host does with a body from a stranger: decode it checked, encode it again, print it, copy it to another
// block, compare, check its bounds, and turn it into JSON and back.
#include "fuzz/Input.h"

#include <sstream>
#include <string>
#include <vector>

#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "Inspect/Reflection.h"
#include "Inspect/SafeText.h"
#include "Inspect/Sizes.h"

namespace {

using namespace Inspect;

/// A block of exactly `size` bytes, so that the address sanitizer sees what leaves it.
struct Block {
    explicit Block(size_t size) : bytes(size), alloc(bytes.data(), static_cast<int>(size), "fuzz", "message") {}
    char* end() { return bytes.data() + bytes.size(); }
    std::vector<char> bytes;
    Velmora::BufferAllocator alloc;
};

template <class T>
struct Placed {
    explicit Placed(Block& block) : object(new (block.alloc.allocate(sizeof(T))) T(block.alloc)) {}
    ~Placed() { object->~T(); }
    T* object;
};

template <class T>
void check(std::string_view body) {
    const Result result = verify<T>(body.data(), body.data() + body.size(), whole);
    Block block(sizeof(T) + result.blockBytes);
    const Decoded decoded = decode_verified(T::ID, body, block.alloc);
    FUZZ_CHECK(static_cast<bool>(decoded) == static_cast<bool>(result));
    if (!decoded) {
        FUZZ_CHECK(!decoded.result.text().empty());
        FUZZ_CHECK(block.alloc.used_size() == 0);
        return;
    }
    const T& message = *static_cast<const T*>(decoded.object);
    decoded.descriptor->checkbounds(decoded.object, block.bytes.data(), block.end());

    // Encode: exactly the size told, and not in a byte less.
    std::string bytes(encoded_size(message), '\0');
    FUZZ_CHECK(!encode_checked(message, bytes.data(), bytes.data() + bytes.size() - 1));
    FUZZ_CHECK(encode_checked(message, bytes.data(), bytes.data() + bytes.size()));

    // Copy and compare.
    Block other(sizeof(T) + required_block_bytes(message));
    const Placed<T> copy(other);
    *copy.object = message;
    FUZZ_CHECK(other.alloc.unused_size() == 0);
    copy.object->checkbounds(other.bytes.data(), other.end());
    FUZZ_CHECK(*copy.object == message && !(*copy.object != message));
    FUZZ_CHECK(!(*copy.object < message) && !(message < *copy.object));

    // Print: as the operators do where there is room, and into less than is wanted.
    static std::string paper(4 << 20, '\0');
    Quillon::FastOStream os(paper.data(), paper.data() + paper.size());
    os << message;
    std::ostringstream stream;
    stream << message;
    FUZZ_CHECK(stream.str().starts_with('<') && stream.str().ends_with('>'));
    std::vector<char> line(body.size() * 2);
    const Rendered rendered = render(message, line.data(), line.data() + line.size(), Secrets::hide);
    for (size_t i = 0; i < rendered.size; ++i)
        FUZZ_CHECK(static_cast<unsigned char>(line[i]) >= 0x20 && line[i] != 0x7F);

    // JSON.
    const std::string text = to_json(message, body.size() % 2 != 0 ? Integers::strings : Integers::numbers);
    Block third(sizeof(T) + required_block_bytes(message));
    const Placed<T> back(third);
    from_json(text, *back.object);
    FUZZ_CHECK(*back.object == message);
}

constexpr auto checks = perMessage<void (*)(std::string_view)>([]<class T>(Velmora::of<T>) { return &check<T>; });

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    initializeOnce();
    const Input input(data, size);
    checks[input.index](std::string(input.body)); // bytes of its own, that end where the body ends
    return 0;
}
