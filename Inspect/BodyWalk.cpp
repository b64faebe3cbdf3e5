#include "Inspect/BodyWalk.h"

#include <algorithm>
#include <bit>

#include "Backend/Common/DumbCrypt.h"
#include "Backend/Velmora/Wire.h"

namespace Inspect {
namespace {

/// The cursor, and the path of where it is.
class Walk {
  public:
    Walk(std::string_view body, const std::function<bool(const BodyValue&)>& visit, PadForm padForm)
        : _body(body), _visit(visit), _padForm(padForm) {}

    /// False if the visitor ended it.
    bool record(const TypeInfo& type, bool isSecret = false) {
        for (const FieldInfo& field : type.fields) {
            const size_t length = _path.size();
            if (!_path.empty()) _path += '.';
            _path += field.name;
            if (!value(field.value, field, field.is_secret_in(isSecret))) return false;
            _path.resize(length);
        }
        return true;
    }

  private:
    bool value(const ValueInfo& info, const FieldInfo& field, bool isSecret) {
        if (info.kind == Kind::record) return record(*info.record, isSecret);
        BodyValue value{info, field, _path, _at, 0, 0, {}, isSecret};
        if (info.kind == Kind::float4)
            value.real = std::bit_cast<float>(static_cast<uint32_t>(read_fixed(4)));
        else if (info.kind == Kind::float8)
            value.real = std::bit_cast<double>(read_fixed(8));
        else
            value.number = read_number(info.kind);
        if (is_bytes(info.kind)) {
            value.bytes = _body.substr(_at, static_cast<size_t>(value.number));
            _at += value.bytes.size();
        }
        value.end = _at;
        if (!_visit(value)) return false;
        return info.kind != Kind::vector || elements(*info.element, field, value.number, isSecret);
    }

    bool elements(const ValueInfo& element, const FieldInfo& field, int64_t count, bool isSecret) {
        const size_t length = _path.size();
        for (int64_t i = 0; i < count; ++i) {
            _path += '[' + std::to_string(i) + ']';
            if (!value(element, field, isSecret)) return false;
            _path.resize(length);
        }
        return true;
    }

    /// The value itself, or the length or count in front of it.
    int64_t read_number(Kind kind) {
        switch (kind) {
        case Kind::boolean:
            return read_byte() != 0;
        case Kind::int8:
            return static_cast<int8_t>(read_byte());
        case Kind::enumeration:
            return read_byte();
        case Kind::int16:
            return unzigzag(static_cast<uint16_t>(read_varint()));
        case Kind::int32:
            return unzigzag(static_cast<uint32_t>(read_varint()));
        case Kind::int64:
            return unzigzag(read_varint());
        case Kind::price:
            return read_price();
        case Kind::uint8:
            return read_byte();
        case Kind::uint16:
            return static_cast<uint16_t>(read_varint());
        case Kind::uint32:
            return static_cast<uint32_t>(read_varint());
        case Kind::uint64:
            return static_cast<int64_t>(read_varint());
        case Kind::uint32Fixed:
            return static_cast<int64_t>(read_fixed(4));
        case Kind::int64Fixed:
            return static_cast<int64_t>(read_fixed(8));
        case Kind::padding:
            if (_padForm == PadForm::read) return static_cast<uint16_t>(read_varint());
            [[fallthrough]];
        case Kind::uint16Fixed:
        case Kind::stringFixed:
            return static_cast<int64_t>(read_fixed(2));
        case Kind::string:
        case Kind::cryptstring:
        case Kind::blob:
        case Kind::cryptblob:
            return static_cast<uint16_t>(read_varint());
        case Kind::vector: {
            const int first = read_byte();
            return first < 0x80 ? first : (first << 8 | read_byte()) & 0x7FFF;
        }
        case Kind::float4:
        case Kind::float8:
        case Kind::record:
            break; // has no number
        }
        return 0;
    }

    unsigned char read_byte() { return _at < _body.size() ? static_cast<unsigned char>(_body[_at++]) : 0; }

    /// That many bytes, the low one first.
    uint64_t read_fixed(unsigned bytes) {
        uint64_t value = 0;
        for (unsigned i = 0; i < bytes; ++i) value |= uint64_t{read_byte()} << 8 * i;
        return value;
    }

    uint64_t read_varint() {
        uint64_t value = 0;
        unsigned char byte = 0x80;
        for (unsigned shift = 0; byte >= 0x80; shift += 7) {
            byte = read_byte();
            if (shift < 64) value |= static_cast<uint64_t>(byte & 0x7F) << shift;
        }
        return value;
    }

    static int64_t unzigzag(uint64_t u) { return static_cast<int64_t>(u >> 1 ^ (0 - (u & 1))); }

    int64_t read_price() {
        const unsigned char first = read_byte();
        if (first == 0x03) return Velmora::NMA;
        if (first == 0x05) return Velmora::NDA;
        if (first == 0x07) return Velmora::NA;
        uint64_t magnitude = first >> 2 & 0x1F;
        if (first >= 0x80) magnitude |= read_varint() << 5;
        return static_cast<int64_t>((first & 0x02) != 0 ? ~magnitude : magnitude);
    }

    const std::string_view _body;
    const std::function<bool(const BodyValue&)>& _visit;
    const PadForm _padForm;
    size_t _at = 0;
    std::string _path;
};

} // namespace

std::string BodyValue::text() const {
    std::string text(bytes);
    if (value.kind == Kind::cryptstring || value.kind == Kind::cryptblob)
        Quillon::DumbCrypt::decrypt(text.data(), static_cast<int>(text.size()), 0);
    return text;
}

bool walk_body(const TypeInfo& type, std::string_view body, const std::function<bool(const BodyValue&)>& visit,
               PadForm padForm) {
    return Walk(body, visit, padForm).record(type);
}

} // namespace Inspect
