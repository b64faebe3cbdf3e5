// Any text as the JSON of a message: an error, or a message whose own JSON gives it back. Whoever looks for several errors
// finds the same one first, and none where there is none.
#include "fuzz/Input.h"

#include <string>
#include <vector>

#include "Inspect/Json.h"
#include "Inspect/JsonCursor.h"

namespace {

using namespace Inspect;

/// The first error of many that are looked for; empty if there is none.
template <class T>
std::string firstOfMany(std::string_view text) {
    static std::vector<char> block(1 << 20);
    Velmora::BufferAllocator alloc(block.data(), static_cast<int>(block.size()), "fuzz", "message");
    T* const message = new (alloc.allocate(sizeof(T))) T(alloc);
    JsonReading reading{.mostErrors = 5};
    JsonCursor json(text);
    std::string last;
    try {
        from_json(T::ID, json, message, reading);
        if (reading.errors.empty()) json.end();
    } catch (const JsonError& e) {
        last = e.what();
    }
    message->~T();
    FUZZ_CHECK(reading.errors.size() < 5);
    return reading.errors.empty() ? last : reading.errors.front().what();
}

template <class T>
void check(std::string_view text) {
    static std::vector<char> blocks[2] = {std::vector<char>(1 << 20), std::vector<char>(1 << 20)};
    Velmora::BufferAllocator alloc(blocks[0].data(), static_cast<int>(blocks[0].size()), "fuzz", "message");
    T* const message = new (alloc.allocate(sizeof(T))) T(alloc);
    try {
        from_json(text, *message);
        Velmora::BufferAllocator other(blocks[1].data(), static_cast<int>(blocks[1].size()), "fuzz", "message");
        T* const back = new (other.allocate(sizeof(T))) T(other);
        from_json(to_json(*message), *back);
        FUZZ_CHECK(*back == *message);
        back->~T();
        FUZZ_CHECK(firstOfMany<T>(text).empty());
    } catch (const JsonError& e) {
        FUZZ_CHECK(*e.what() != '\0');
        FUZZ_CHECK(firstOfMany<T>(text) == e.what());
    } catch (const DoesNotFit& e) {
        FUZZ_CHECK(!e.path().empty());
    }
    message->~T();
}

constexpr auto checks = perMessage<void (*)(std::string_view)>([]<class T>(Velmora::of<T>) { return &check<T>; });

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    initializeOnce();
    const Input input(data, size);
    checks[input.index](input.body);
    return 0;
}
