// Any text as the JSON of a message: an error, or a message whose own JSON gives it back.
#include "fuzz/Input.h"

#include <string>
#include <vector>

#include "Inspect/Json.h"

namespace {

using namespace Inspect;

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
    } catch (const JsonError& e) {
        FUZZ_CHECK(*e.what() != '\0');
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
