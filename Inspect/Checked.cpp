#include "Inspect/Checked.h"

#include "Backend/Common/Assert.h"
#include "Inspect/IdTable.h"
#include "Inspect/Sizes.h"

namespace Inspect {
namespace {

using namespace Velmora;

/// Looks for what cannot travel: its refusal, with the path in `path`, which begins with a dot.
template <class T>
Refusal find_unencodable(const T& value, std::string& path) {
    if constexpr (String<T>) {
        if (value.size() > MAX_TEXT) return Refusal::textTooLong;
    } else if constexpr (Vector<T>) {
        if (value.size() > MAX_COUNT) return Refusal::tooManyElements;
        if constexpr (holdsStorage<typename T::value_type>())
            for (size_t i = 0; i < value.size(); ++i) {
                if (const Refusal refusal = find_unencodable(value[i], path); refusal != Refusal::none) {
                    path.insert(0, '[' + std::to_string(i) + ']');
                    return refusal;
                }
            }
    } else {
        Refusal refusal = Refusal::none;
        fields(of<T>{}, [&](const char* name, auto member, auto) {
            if constexpr (holdsStorage<MemberType<decltype(member)>>()) {
                refusal = find_unencodable(value.*member, path);
                if (refusal != Refusal::none) path.insert(0, std::string(".") + name);
            }
            return refusal == Refusal::none;
        });
        return refusal;
    }
    return Refusal::none;
}

template <class T>
Encoded encode(const void* message, char* begin, char* end) {
    const T& value = *static_cast<const T*>(message);
    Encoded result;
    result.refusal = find_unencodable(value, result.field);
    if (!result) {
        result.field.erase(0, 1);
        return result;
    }
    result.size = encoded_size(value);
    if (result.size > static_cast<size_t>(end - begin)) {
        result.refusal = Refusal::tooSmall;
        return result;
    }
    FastCodec codec(begin, end);
    value.write(codec);
    return result;
}

using Encode = Encoded (*)(const void* message, char* begin, char* end);
constexpr IdTable<Encode> encoders([]<class T>(of<T>, const char*) { return &encode<T>; });

} // namespace

Decoded decode_verified(MsgType_t id, std::string_view bytes, BufferAllocator& block, const Policy& policy) {
    QL_ASSERT(Quillon::__protocol != nullptr); // there is no descriptor before initialize() nor after finalize()
    Decoded decoded{.result = verify(id, bytes.data(), bytes.data() + bytes.size(), policy)};
    if (!decoded.result) return decoded;
    MsgDescriptor* const descriptor = Quillon::__protocol->getDescriptor(id);
    decoded.needed = descriptor->size() + decoded.result.blockBytes;
    if (decoded.needed > block.unused_size()) {
        decoded.result.fault = Fault::blockTooSmall;
        return decoded;
    }
    std::string filled; // the body with the zeros that stand for its missing last fields
    if (decoded.result.missing != 0) {
        filled.reserve(bytes.size() + decoded.result.missing);
        filled.append(bytes).append(decoded.result.missing, '\0');
        bytes = filled;
    }
    void* const object = block.allocate(descriptor->size());
    descriptor->construct(object, block);
    // The codec takes a mutable range, but reading leaves it as it is.
    char* const begin = const_cast<char*>(bytes.data());
    FastCodec codec(begin, begin + bytes.size());
    try {
        descriptor->read(object, codec);
    } catch (...) { // the bytes are good and fit; the heap may still be out of memory for the name of a field
        descriptor->destroy(object);
        throw;
    }
    decoded.object = object;
    decoded.descriptor = descriptor;
    return decoded;
}

Encoded encode_checked(MsgType_t id, const void* message, char* begin, char* end) {
    if (const Encode* const encoder = encoders.find(id)) return (*encoder)(message, begin, end);
    return {.refusal = Refusal::unknownIdentifier, .size = 0, .field = ""};
}

std::string Encoded::text() const {
    switch (refusal) {
    case Refusal::none:
        return "encoded in " + std::to_string(size) + " bytes";
    case Refusal::tooSmall:
        return "needs " + std::to_string(size) + " bytes";
    case Refusal::textTooLong:
        return "string too long (" + field + ")";
    case Refusal::tooManyElements:
        return "too many elements (" + field + ")";
    case Refusal::unknownIdentifier:
        return "unknown identifier";
    }
    return "unknown refusal";
}

} // namespace Inspect
