#include "tools/qlproto/messages/Scrubber.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Backend/Common/DumbCrypt.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/Wire.h"
#include "Capture/Verification.h"
#include "tools/qlproto/Tool.h"

namespace qlproto {

namespace {

using Inspect::BodyValue;
using Inspect::Kind;

bool isEnciphered(Kind kind) { return kind == Kind::cryptstring || kind == Kind::cryptblob; }
bool isBlob(Kind kind) { return kind == Kind::blob || kind == Kind::cryptblob; }

/// The greatest number of the kind, or the size of the least.
uint64_t mostOf(Kind kind, bool isNegative) {
    const auto ofSigned = [&](auto most) { return static_cast<uint64_t>(most) + (isNegative ? 1 : 0); };
    switch (kind) {
    case Kind::int8:
        return ofSigned(std::numeric_limits<int8_t>::max());
    case Kind::int16:
        return ofSigned(std::numeric_limits<int16_t>::max());
    case Kind::int32:
        return ofSigned(std::numeric_limits<int32_t>::max());
    case Kind::uint8:
        return std::numeric_limits<uint8_t>::max();
    case Kind::uint16:
    case Kind::uint16Fixed:
        return std::numeric_limits<uint16_t>::max();
    case Kind::uint32:
    case Kind::uint32Fixed:
        return std::numeric_limits<uint32_t>::max();
    case Kind::uint64:
        return std::numeric_limits<uint64_t>::max();
    default:
        return ofSigned(std::numeric_limits<int64_t>::max());
    }
}

/// Sums and products that do not fit stay within the type.
int64_t saturated(long double value) {
    constexpr auto most = static_cast<long double>(std::numeric_limits<int64_t>::max());
    return value >= most    ? std::numeric_limits<int64_t>::max()
           : value <= -most ? -std::numeric_limits<int64_t>::max()
                            : std::llrint(value);
}

/// Appends a number as the writer makes it.
void writeNumber(Kind kind, int64_t number, std::string& to) {
    char bytes[16];
    Velmora::FastCodec codec(bytes, bytes + sizeof bytes);
    switch (kind) {
    case Kind::int16:
        codec.write_int16(static_cast<int16_t>(number));
        break;
    case Kind::int32:
        codec.write_int32(static_cast<int32_t>(number));
        break;
    case Kind::int64:
        codec.write_int64(number);
        break;
    case Kind::price:
        codec.write_qlfloat(number);
        break;
    case Kind::uint16:
        codec.write_uint16(static_cast<uint16_t>(number));
        break;
    case Kind::uint32:
        codec.write_uint32(static_cast<uint32_t>(number));
        break;
    case Kind::uint64:
        codec.write_uint64(static_cast<uint64_t>(number));
        break;
    case Kind::uint16Fixed:
        codec.write_uint16_fixed(static_cast<uint16_t>(number));
        break;
    case Kind::uint32Fixed:
    case Kind::float4: // only ever zero
        codec.write_uint32_fixed(static_cast<uint32_t>(number));
        break;
    case Kind::int64Fixed:
    case Kind::float8:
        codec.write_int64_fixed(number);
        break;
    default: // one byte
        codec.write_uint8(static_cast<uint8_t>(number));
        break;
    }
    to.append(bytes, codec.size());
}

/// A pad's bytes may be whatever memory held. The first are its length, in one of two forms.
std::string emptiedPad(std::string_view body) {
    std::string pad(body);
    const auto isLong = [&](std::size_t i) { return i < pad.size() && static_cast<unsigned char>(pad[i]) >= 0x80; };
    const std::size_t length = isLong(0) && isLong(1) ? 3 : 2;
    std::fill(pad.begin() + static_cast<std::ptrdiff_t>(std::min(length, pad.size())), pad.end(), '\0');
    return pad;
}

} // namespace

const char* Scrubber::toText(Deed deed) {
    switch (deed) {
    case Deed::kept:
        return "kept";
    case Deed::renamed:
        return "pseudonyms";
    case Deed::emptied:
        return "emptied";
    case Deed::scaled:
        return "scaled";
    case Deed::shifted:
        return "shifted";
    }
    return "";
}

std::optional<Scrubber::Deed> Scrubber::deedFor(const BodyValue& value) const {
    const Kind kind = value.value.kind;
    const bool isCount = kind == Kind::vector; // of elements, which are judged one by one
    if (!isCount && (value.isSecret || kind == Kind::padding)) return Deed::emptied;
    if (std::find(_rules.kept.begin(), _rules.kept.end(), value.field.name) != _rules.kept.end()) return Deed::kept;
    if (isCount) return {};
    if (Inspect::is_bytes(kind)) return Deed::renamed;
    if (kind == Kind::price) return _rules.scale != 1 ? std::optional(Deed::scaled) : std::nullopt;
    if (Inspect::is_floating(kind) || kind == Kind::boolean || kind == Kind::enumeration) return {};
    if (!value.field.identifies.empty()) return Deed::renamed;
    return !value.field.station.empty() && _rules.shift != 0 ? std::optional(Deed::shifted) : std::nullopt;
}

std::string Scrubber::body(Velmora::MsgType_t id, std::string_view body) {
    if (Capture::isPad(thisTool.protocol, id)) return emptiedPad(body);
    const Inspect::TypeInfo& type = *Inspect::reflect(thisTool.protocol, id);
    std::string to;
    to.reserve(body.size() + 16);
    Inspect::walk_body(type, body, [&](const BodyValue& value) {
        if (value.end == value.begin) return false; // from here on all are missing, and read as zeros
        const std::optional<Deed> deed = deedFor(value);
        if (deed) ++_done[{std::string(type.name), std::string(value.field.name), *deed}];
        if (!deed || deed == Deed::kept)
            to += body.substr(value.begin, value.end - value.begin);
        else if (Inspect::is_bytes(value.value.kind))
            writeText(value, *deed, body, to);
        else
            writeNumber(value.value.kind, numberFor(value, *deed), to);
        return true;
    });
    return to;
}

void Scrubber::writeText(const BodyValue& value, Deed deed, std::string_view body, std::string& to) {
    const Kind kind = value.value.kind;
    if (deed == Deed::emptied && kind != Kind::padding) { // a length of zero, in one byte or two
        to.append(kind == Kind::stringFixed ? 2 : 1, '\0');
        return;
    }
    to += body.substr(value.begin, value.end - value.begin - value.bytes.size());
    if (deed == Deed::emptied) {
        to.append(value.bytes.size(), '\0');
        return;
    }
    std::string text = value.text();
    text = isBlob(kind) ? _pseudonyms.ofBytes(text) : _pseudonyms.ofText(text);
    if (isEnciphered(kind)) Quillon::DumbCrypt::encrypt(text.data(), static_cast<int>(text.size()), 0);
    to += text;
}

int64_t Scrubber::numberFor(const BodyValue& value, Deed deed) {
    const int64_t number = value.number;
    switch (deed) {
    case Deed::scaled:
        return !Velmora::sentinelName(number).empty() ? number
                                                      : saturated(static_cast<long double>(number) * _rules.scale);
    case Deed::shifted: // a zero says that there is no time
        return number == 0 ? 0 : saturated(static_cast<long double>(number) + static_cast<long double>(_rules.shift));
    case Deed::renamed: {
        const bool isNegative = number < 0 && value.value.kind != Kind::uint64;
        const uint64_t size = isNegative ? 0 - static_cast<uint64_t>(number) : static_cast<uint64_t>(number);
        const uint64_t pseudonym = _pseudonyms.ofNumber(size, mostOf(value.value.kind, isNegative));
        return static_cast<int64_t>(isNegative ? 0 - pseudonym : pseudonym);
    }
    case Deed::emptied:
    case Deed::kept:
        break;
    }
    return 0;
}

} // namespace qlproto
