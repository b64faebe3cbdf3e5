#include "Inspect/Checked.h"

#include "Backend/Common/Assert.h"

namespace Inspect {

using namespace Velmora;

namespace detail {

void* decode_judged(const Decoder& decoder, const Verifier& verifier, std::string_view bytes, BufferAllocator& block,
                    const Policy& policy, Result& result, size_t& needed) {
    result = verify(verifier, result.id, bytes.data(), bytes.data() + bytes.size(), policy);
    if (!result) return nullptr;
    needed = decoder.size + result.blockBytes;
    if (needed > block.unused_size()) {
        result.fault = Fault::blockTooSmall;
        return nullptr;
    }
    if (result.missing == 0) return decoder.trusted(bytes, block);
    std::string filled; // the body with the zeros that stand for its missing last fields
    filled.reserve(bytes.size() + result.missing);
    filled.append(bytes).append(result.missing, '\0');
    return decoder.trusted(filled, block);
}

} // namespace detail

Decoded decode_verified(const Protocol& protocol, MsgType_t id, std::string_view bytes, BufferAllocator& block,
                        const Policy& policy) {
    MsgProtocol* const __protocol = protocol.instance(); // called as hosts know it, for the report
    QL_ASSERT(__protocol != nullptr); // there is no descriptor before initialize() nor after finalize()
    const detail::Decoder* const decoder = protocol.find(protocol.decoders, id);
    if (decoder == nullptr)
        return {verify(protocol, id, bytes.data(), bytes.data() + bytes.size(), policy), nullptr, nullptr, 0};
    return detail::decode(*decoder, *protocol.find(protocol.verifiers, id), id, bytes, block, policy,
                          [&](const Result& result, void* object, size_t needed) {
                              return Decoded(result, object, __protocol->getDescriptor(id), needed);
                          });
}

Encoded encode_checked(const Protocol& protocol, MsgType_t id, const void* message, char* begin, char* end) {
    if (const detail::Encoder* const found = protocol.find(protocol.encoders, id))
        return detail::encode(*found, message, begin, end);
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
