#include "Inspect/Values.h"

#include <charconv>

#include "Inspect/Display.h"
#include "Inspect/Reflection.h"

namespace Inspect {

bool walk_values(const Protocol& protocol, Velmora::MsgType_t id, const void* message, ValueVisitor& visitor) {
    const TypeInfo* const type = reflect(protocol, id);
    return type == nullptr || walk_values(protocol, id, *type, message, visitor);
}

bool walk_values(const Protocol& protocol, Velmora::MsgType_t id, const TypeInfo& type, const void* message,
                 ValueVisitor& visitor) {
    return protocol.find(protocol.valueWalkers, id)->walk(message, type, visitor);
}

std::string number_text(const Value& value) {
    switch (value.kind) {
    case Kind::boolean:
        return value.number != 0 ? "true" : "false";
    case Kind::enumeration:
        for (const EnumeratorInfo& it : value.enumeration->enumerators)
            if (it.value == value.number) return std::string(it.name);
        break;
    case Kind::int64:
    case Kind::int64Fixed:
    case Kind::price:
        return scaled_text(value.number, 1);
    case Kind::uint64:
        return std::to_string(static_cast<uint64_t>(value.number));
    case Kind::float4:
    case Kind::float8: {
        char digits[32]; // as few as tell it from its neighbours
        const bool isNarrow = value.kind == Kind::float4;
        return {digits, (isNarrow ? std::to_chars(digits, digits + sizeof digits, static_cast<float>(value.real))
                                  : std::to_chars(digits, digits + sizeof digits, value.real))
                            .ptr};
    }
    default:
        break;
    }
    return std::to_string(value.number);
}

std::string number_text(const Value& value, const Display& display) {
    if (value.kind == Kind::price) return scaled_text(value.number, display.priceScale);
    if (!value.isTime || display.showTime == nullptr || !Display::is_time(value.number)) return number_text(value);
    std::string text;
    display.showTime(value.number, text);
    return text;
}

std::string path_text(Path path) {
    std::string text;
    for (const PathPiece& piece : path) {
        if (piece.name.empty())
            text += '[' + std::to_string(piece.index) + ']';
        else
            (text.empty() ? text : text += '.') += piece.name;
    }
    return text;
}

} // namespace Inspect
