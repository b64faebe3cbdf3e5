// Changes messages as messages: the body is decoded, some of its fields are set to likely trouble, and it is encoded
// again. Every third change is one of raw bytes instead, so that bodies also break.
#include "fuzz/Input.h"

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "Inspect/Sizes.h"
#include "Inspect/Verify.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

namespace {

using namespace Inspect;

class Changer {
  public:
    explicit Changer(unsigned seed) : _random(seed) {}

    /// Changes about one field in eight.
    template <class T>
    void change(T& v) {
        if constexpr (Velmora::Composite<T>) {
            fields(Velmora::of<T>{}, [&](const char*, auto member, auto) { return change(v.*member), true; });
        } else if constexpr (Velmora::Vector<T>) {
            if (isHit()) v.resize(_random() % 8 != 0 ? _random() % 4 : 100 + _random() % 100);
            for (auto& element : v) change(element);
        } else if (isHit()) {
            set(v);
        }
    }

  private:
    bool isHit() { return _random() % 8 == 0; }

    template <class T>
    void set(T& v) {
        if constexpr (Velmora::String<T>) {
            std::string text(_random() % 16 != 0 ? _random() % 8 : 120 + _random() % 20, '\0');
            for (char& c : text)
                c = _random() % 2 != 0 ? static_cast<char>(_random()) : "\"\\\n\xC3\xA4<>="[_random() % 8];
            v = text;
        } else if constexpr (Velmora::Enumerator<T>) {
            v = static_cast<T>(_random() % 256);
        } else if constexpr (std::is_same_v<T, bool>) {
            v = !v;
        } else {
            static constexpr int64_t limits[] = {INT64_MAX,   INT64_MIN, Velmora::NMA, Velmora::NDA,
                                                 Velmora::NA, -1,        31,           32};
            const auto near = static_cast<int64_t>((uint64_t{1} << _random() % 64) - _random() % 2);
            v = static_cast<T>(_random() % 2 != 0 ? near : limits[_random() % std::size(limits)]);
        }
    }

    std::mt19937 _random;
};

/// The body of a changed message; empty if `body` is none or the change makes it too large.
template <class T>
std::string changed(std::string_view body, unsigned seed) {
    static std::vector<char> block(1 << 22);
    Velmora::BufferAllocator alloc(block.data(), static_cast<int>(block.size()), "fuzz", "message");
    T* const message = new (alloc.allocate(sizeof(T))) T(alloc);
    std::string result;
    if (verify<T>(body.data(), body.data() + body.size(), tolerant)) {
        char* const begin = const_cast<char*>(body.data());
        Velmora::FastCodec reader(begin, begin + body.size());
        message->read(reader);
    }
    try {
        Changer(seed).change(*message);
        result.resize(encoded_size(*message));
        Velmora::FastCodec writer(result.data(), result.data() + result.size());
        message->write(writer);
    } catch (const std::exception&) { // the block is full
        result.clear();
    }
    message->~T();
    return result;
}

constexpr auto changers =
    perMessage<std::string (*)(std::string_view, unsigned)>([]<class T>(Velmora::of<T>) { return &changed<T>; });

} // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed) {
    initializeOnce();
    if (seed % 3 == 0 || size == 0) return LLVMFuzzerMutate(data, size, maxSize);
    const Input input(data, size);
    const std::string body = changers[input.index](std::string(input.body), seed);
    if (body.empty() || body.size() + 1 > maxSize) return LLVMFuzzerMutate(data, size, maxSize);
    std::memcpy(data + 1, body.data(), body.size());
    return body.size() + 1;
}
