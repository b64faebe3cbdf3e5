#include "tools/qlproto/messages/WireForm.h"

#include <fmt/format.h>

#include "Inspect/SizeWalk.h"

namespace qlproto {

using Inspect::Kind;

WireForm wireForm(const Inspect::ValueInfo& value) {
    using Inspect::MAX_TEXT;
    switch (value.kind) {
    case Kind::boolean:
        return {"bool", "byte, 0 or 1", 1, 1};
    case Kind::int8:
        return {"byte", "byte, signed", 1, 1};
    case Kind::enumeration:
        return {"enum-byte", "byte", 1, 1};
    case Kind::int16:
        return {"zigzag-varint", "zig-zag varint", 1, 3};
    case Kind::int32:
        return {"zigzag-varint", "zig-zag varint", 1, 5};
    case Kind::int64:
        return {"zigzag-varint", "zig-zag varint", 1, 10};
    case Kind::price:
        return {"special-varint", "special varint", 1, 10};
    case Kind::uint8:
        return {"unsigned-byte", "byte, unsigned", 1, 1};
    case Kind::uint16:
        return {"varint", "plain varint", 1, 3};
    case Kind::uint32:
        return {"varint", "plain varint", 1, 5};
    case Kind::uint64:
        return {"varint", "plain varint", 1, 10};
    case Kind::uint16Fixed:
        return {"fixed", "two bytes, low first", 2, 2};
    case Kind::uint32Fixed:
        return {"fixed", "four bytes, low first", 4, 4};
    case Kind::int64Fixed:
        return {"fixed", "eight bytes, low first", 8, 8};
    case Kind::float4:
        return {"float", "floating point, four bytes, low first", 4, 4};
    case Kind::float8:
        return {"float", "floating point, eight bytes, low first", 8, 8};
    case Kind::stringFixed:
        return {"fixed-string", "length in two bytes, low first, bytes", 2, MAX_TEXT + 2};
    case Kind::blob:
        return {"blob", "length as a varint, bytes", 1, MAX_TEXT + 3};
    case Kind::cryptblob:
        return {"crypt-blob", "length as a varint, enciphered bytes", 1, MAX_TEXT + 3};
    case Kind::string:
        return {"string", "length as a varint, bytes", 1, MAX_TEXT + 3};
    case Kind::cryptstring:
        return {"crypt-string", "length as a varint, enciphered bytes", 1, MAX_TEXT + 3};
    case Kind::padding:
        // Deliberate: written with a length of two bytes, read with a varint. An empty one is read from one byte.
        return {"padding", "written: length in two bytes, low first; read: as a varint; bytes", 1, MAX_TEXT + 2};
    case Kind::record:
        return wireForm(*value.record);
    case Kind::vector:
        return {"vector", "count, elements", 1, {}};
    }
    return {"", "", 0, {}};
}

WireForm wireForm(const Inspect::TypeInfo& type) {
    WireForm whole{"record", "its fields", 0, 0};
    for (const Inspect::FieldInfo& field : type.fields) {
        const WireForm form = wireForm(field.value);
        whole.minimal += form.minimal;
        whole.maximal = whole.maximal && form.maximal ? std::optional(*whole.maximal + *form.maximal) : std::nullopt;
    }
    return whole;
}

std::string sizeText(const WireForm& form) {
    if (!form.maximal) return fmt::format("{} or more", form.minimal);
    if (*form.maximal == form.minimal) return fmt::format("{}", form.minimal);
    return fmt::format("{}..{}", form.minimal, *form.maximal);
}

} // namespace qlproto
