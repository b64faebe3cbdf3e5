#include "Capture/Verification.h"

#include "Inspect/Reflection.h"

namespace Capture {

namespace {

Inspect::Result verifyPad(const Inspect::Protocol& protocol, Velmora::MsgType_t id, std::string_view body,
                          const Inspect::Policy& policy) {
    Inspect::Result result{
        .id = id, .begin = body.data(), .end = body.data() + body.size(), .type = Inspect::reflect(protocol, id)};
    const std::size_t size = body.size() < PAD_LENGTH ? PAD_LENGTH
                                                      : PAD_LENGTH + static_cast<unsigned char>(body[0])
                                                            + 256u * static_cast<unsigned char>(body[1]);
    if (body.empty() && policy.missingLastFields) {
        result.missing = PAD_LENGTH;
    } else if (body.size() < size) {
        result.fault = Inspect::Fault::truncated;
    } else if (body.size() > size && !policy.trailingBytes) {
        result.fault = Inspect::Fault::trailingBytes;
        result.offset = result.consumed = size;
    } else {
        result.consumed = size;
    }
    return result;
}

} // namespace

bool isPad(const Inspect::Protocol& protocol, Velmora::MsgType_t id) {
    const Inspect::TypeInfo* const type = Inspect::reflect(protocol, id);
    return type != nullptr && type->fields.size() == 1 && type->fields[0].value.kind == Inspect::Kind::padding;
}

Inspect::Result verifyBody(const Inspect::Protocol& protocol, Velmora::MsgType_t id, std::string_view body,
                           const Inspect::Policy& policy) {
    if (isPad(protocol, id)) return verifyPad(protocol, id, body, policy);
    return Inspect::verify(protocol, id, body.data(), body.data() + body.size(), policy);
}

} // namespace Capture
