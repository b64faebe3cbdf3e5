#include "Capture/Verification.h"

#include "Inspect/Reflection.h"

namespace Capture {

namespace {

constexpr std::size_t PAD_LENGTH = 2; // bytes of the length in front of the padding

Inspect::Result verifyPad(Velmora::MsgType_t id, std::string_view body, const Inspect::Policy& policy) {
    Inspect::Result result{
        .id = id, .begin = body.data(), .end = body.data() + body.size(), .type = Inspect::reflect(id)};
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

bool isPad(Velmora::MsgType_t id) {
    const Inspect::TypeInfo* const type = Inspect::reflect(id);
    return type != nullptr && type->fields.size() == 1 && type->fields[0].value.kind == Inspect::Kind::padding;
}

Inspect::Result verifyBody(Velmora::MsgType_t id, std::string_view body, const Inspect::Policy& policy) {
    if (isPad(id)) return verifyPad(id, body, policy);
    return Inspect::verify(id, body.data(), body.data() + body.size(), policy);
}

} // namespace Capture
