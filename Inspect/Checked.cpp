#include "Inspect/Checked.h"

#include "Backend/Common/Assert.h"

namespace Inspect {

using namespace Velmora;

Decoded decode_verified(const Protocol& protocol, MsgType_t id, std::string_view bytes, BufferAllocator& block,
                        const Policy& policy) {
    MsgProtocol* const __protocol = protocol.instance(); // called as hosts know it, for the report
    QL_ASSERT(__protocol != nullptr); // there is no descriptor before initialize() nor after finalize()
    Decoded decoded{.result = verify(protocol, id, bytes.data(), bytes.data() + bytes.size(), policy)};
    if (!decoded.result) return decoded;
    MsgDescriptor* const descriptor = __protocol->getDescriptor(id);
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

Encoded encode_checked(const Protocol& protocol, MsgType_t id, const void* message, char* begin, char* end) {
    if (const detail::Operations* const found = protocol.operations_of(id)) return found->encode(message, begin, end);
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
