#include "Inspect/Verify.h"

#include <array>

#include "Inspect/IdTable.h"
#include "Inspect/Reflection.h"
#include "Inspect/VerifyWalk.h"

namespace Inspect {
namespace walk {

const char* judgeVarint(const char* p, const char* start, unsigned bits, State& state, uint64_t& value) {
    const unsigned most = (bits + 6) / 7;
    bool dropsBits = false;
    unsigned char byte = 0x80;
    value = 0;
    for (size_t n = 0; byte >= 0x80; ++n) {
        if (n == most && !state.policy.overlongVarints) return state.refuse(Fault::overlongVarint, start);
        if (p == state.end) return state.refuse(Fault::truncated, start);
        byte = byteAt(p++);
        const uint64_t group = byte & 0x7F;
        const size_t shift = 7 * n;
        if (shift < 64) value |= group << shift;
        dropsBits |= shift < bits ? bits - shift < 7 && group >> (bits - shift) != 0 : group != 0;
        // A last byte of 0 adds nothing. Where even overlong forms are accepted, so are those zeros.
        if (byte == 0 && n != 0 && n < most && !state.policy.nonMinimal) return state.refuse(Fault::nonMinimal, start);
    }
    if (dropsBits && !state.policy.droppedBits) return state.refuse(Fault::varintOverflow, start);
    return p;
}

const char* judgePrice(const char* p, State& state) {
    if (p == state.end) return state.refuse(Fault::truncated, p);
    const unsigned first = byteAt(p);
    if (first == 0x03 || first == 0x05 || first == 0x07) return p + 1;
    if ((first & 0x03) != 0 && !state.policy.reservedPriceBits) return state.refuse(Fault::reservedPriceBits, p);
    if ((first & 0x80) == 0) return p + 1;
    uint64_t rest;
    const char* const next = judgeVarint(p + 1, p, PRICE_REST, state, rest);
    if (next == nullptr) return nullptr;
    // Shorter forms: without a rest that is 0, and one byte for a sentinel.
    const auto value = static_cast<int64_t>(rest << 5 | (first >> 2 & 0x1F));
    if ((rest == 0 || value == NMA || value == NDA || value == NA) && !state.policy.nonMinimal)
        return state.refuse(Fault::nonMinimal, p);
    return next;
}

const char* judgeLength(const char* p, State& state, size_t& length) {
    uint64_t value;
    const char* const text = judgeVarint(p, p, 16, state, value);
    if (text == nullptr) {
        if (state.fault == Fault::varintOverflow) state.fault = Fault::lengthBeyondWidth;
        return nullptr;
    }
    length = value & 0xFFFF;
    return text;
}

const char* judgeCount(const char* p, State& state, size_t& count) {
    if (state.remaining(p) < 2) return state.refuse(Fault::truncated, p);
    count = (static_cast<size_t>(byteAt(p)) << 8 | byteAt(p + 1)) & 0x7FFF;
    if (count < 128 && !state.policy.nonMinimal) return state.refuse(Fault::nonMinimal, p);
    return p + 2;
}

} // namespace walk

namespace detail {
namespace {

constexpr auto table = [] {
    std::array<Verifier, Velmora::countTypes([](auto&& visit) { return Quillon::messages(visit); })> byIndex{};
    Quillon::messages([&]<class T>(Velmora::of<T>, const char*) {
        byIndex[T::INDEX] = &walk::run<T>;
        return true;
    });
    return byIndex;
}();

} // namespace

const Verifier* const verifiers = table.data();

} // namespace detail

namespace {

constexpr IdTable<detail::Verifier> byIdentifier([]<class T>(Velmora::of<T>, const char*) { return &walk::run<T>; });

} // namespace

Result verify(Velmora::MsgType_t id, const char* begin, const char* end, const Policy& policy) {
    if (const detail::Verifier* const verifier = byIdentifier.find(id)) return (*verifier)(begin, end, policy);
    return {.fault = Fault::unknownIdentifier, .id = id, .begin = begin, .end = end};
}

std::string Result::path() const {
    const TypeInfo* const type = reflect(id);
    if (fault == Fault::none || fault == Fault::blockTooSmall || type == nullptr) return "";
    return path_at(*type, {begin, static_cast<size_t>(end - begin)}, offset);
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
