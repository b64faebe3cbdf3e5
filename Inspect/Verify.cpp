#include "Inspect/Verify.h"

#include "Inspect/Reflection.h"
#include "Inspect/VerifyWalk.h"

namespace Inspect {
namespace walk {

const char* Judge::boolean(const char* p) {
    if (p != _end && byte_at(p) > 1 && !_policy.anyBoolean) return refuse(Fault::badBoolean, p);
    return byte(p);
}

const char* Judge::enumerator(const char* p, bool isKnown) {
    if (p != _end && !isKnown && !_policy.unknownEnumerators) return refuse(Fault::unknownEnumerator, p);
    return byte(p);
}

/// A varint at `p`, which belongs to the value at `start`; stores its low 64 bits.
const char* Judge::varint(const char* p, const char* start, unsigned bits, uint64_t& value) {
    const unsigned most = longest(bits);
    bool dropsBits = false;
    unsigned char byte = 0x80;
    value = 0;
    for (size_t n = 0; byte >= 0x80; ++n) {
        if (n == most && !_policy.overlongVarints) return refuse(Fault::overlongVarint, start);
        if (p == _end) return refuse(Fault::truncated, start);
        byte = byte_at(p++);
        const uint64_t group = byte & 0x7F;
        const size_t shift = 7 * n;
        if (shift < 64) value |= group << shift;
        dropsBits |= shift < bits ? bits - shift < 7 && group >> (bits - shift) != 0 : group != 0;
        // A last byte of 0 adds nothing. Where even overlong forms are accepted, so are those zeros.
        if (byte == 0 && n != 0 && n < most && !_policy.nonMinimal) return refuse(Fault::nonMinimal, start);
    }
    if (dropsBits && !_policy.droppedBits) return refuse(Fault::varintOverflow, start);
    return p;
}

const char* Judge::price(const char* p) {
    if (p == _end) return refuse(Fault::truncated, p);
    const unsigned first = byte_at(p);
    if (first == 0x03 || first == 0x05 || first == 0x07) return p + 1;
    if ((first & 0x03) != 0 && !_policy.reservedPriceBits) return refuse(Fault::reservedPriceBits, p);
    if ((first & 0x80) == 0) return p + 1;
    uint64_t rest;
    const char* const next = varint(p + 1, p, PRICE_REST, rest);
    if (next == nullptr) return nullptr;
    // Shorter forms: without a rest that is 0, and one byte for a sentinel.
    const auto value = static_cast<int64_t>(rest << 5 | (first >> 2 & 0x1F));
    if ((rest == 0 || value == Velmora::NMA || value == Velmora::NDA || value == Velmora::NA) && !_policy.nonMinimal)
        return refuse(Fault::nonMinimal, p);
    return next;
}

const char* Judge::string(const char* p, size_t& n) {
    uint64_t value;
    const char* const text = varint(p, p, 16, value);
    if (text == nullptr) {
        if (_fault == Fault::varintOverflow) _fault = Fault::lengthBeyondWidth;
        return nullptr;
    }
    n = value & 0xFFFF;
    return this->text(text, n, p);
}

const char* Judge::count(const char* p, size_t& n) {
    if (p == _end) return refuse(Fault::truncated, p);
    n = byte_at(p);
    if (n < 0x80) return p + 1;
    if (remaining(p) < 2) return refuse(Fault::truncated, p);
    n = (n << 8 | byte_at(p + 1)) & 0x7FFF;
    if (n < 0x80 && !_policy.nonMinimal) return refuse(Fault::nonMinimal, p);
    return p + 2;
}

} // namespace walk

Result verify(const Protocol& protocol, Velmora::MsgType_t id, const char* begin, const char* end,
              const Policy& policy) {
    const detail::Verifier* const verifier = protocol.find(protocol.verifiers, id);
    if (verifier == nullptr) return {.fault = Fault::unknownIdentifier, .id = id, .begin = begin, .end = end};
    return detail::verify(*verifier, id, begin, end, policy);
}

std::string Result::path() const {
    if (fault == Fault::none || fault == Fault::blockTooSmall || type == nullptr) return "";
    const std::string_view body(begin, static_cast<size_t>(end - begin));
    if (offset <= body.size()) return path_at(*type, body, offset);
    std::string filled(body); // with the zeros that stand for what is missing
    filled.resize(offset);
    return path_at(*type, filled, offset);
}

std::string Result::text() const {
    if (fault == Fault::none) return "accepted";
    std::string line = to_string(fault);
    if (fault == Fault::unknownIdentifier) return line + " " + std::to_string(id);
    if (fault == Fault::blockTooSmall) return line;
    line += " at byte " + std::to_string(offset);
    const std::string where = path();
    return where.empty() ? line : line + " (" + where + ")";
}

const char* to_string(Fault fault) {
    switch (fault) {
    case Fault::none:
        return "accepted";
    case Fault::truncated:
        return "truncated";
    case Fault::overlongVarint:
        return "overlong varint";
    case Fault::varintOverflow:
        return "varint overflow";
    case Fault::nonMinimal:
        return "non-minimal form";
    case Fault::lengthBeyondWidth:
        return "length beyond its width";
    case Fault::countBeyondBytes:
        return "count beyond the remaining bytes";
    case Fault::unknownEnumerator:
        return "unknown enumerator";
    case Fault::badBoolean:
        return "boolean not 0 or 1";
    case Fault::reservedPriceBits:
        return "reserved bits of a price";
    case Fault::trailingBytes:
        return "trailing bytes";
    case Fault::unknownIdentifier:
        return "unknown identifier";
    case Fault::blockTooSmall:
        return "block too small";
    }
    return "unknown fault";
}

} // namespace Inspect
