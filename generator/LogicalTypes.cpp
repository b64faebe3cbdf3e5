#include "generator/LogicalTypes.h"

#include <algorithm>

namespace qlgen {
namespace {

using enum ValueKind;

// One line per pair of a read and a write of the codec that a field can use.
constexpr LogicalType types[] = {
    {"bool", "bool", "plain", boolean, WireForm::boolean, 1},
    {"int8", "int8_t", "plain", signedInteger, WireForm::byte, 8},
    {"int16", "int16_t", "plain", signedInteger, WireForm::zigzag, 16},
    {"int32", "int32_t", "plain", signedInteger, WireForm::zigzag, 32},
    {"int64", "int64_t", "plain", signedInteger, WireForm::zigzag, 64},
    {"int64_fixed", "int64_t", "fixed", signedInteger, WireForm::fixed, 64},
    {"price", "int64_t", "price", signedInteger, WireForm::special, 64},
    {"uint8", "uint8_t", "plain", unsignedInteger, WireForm::byte, 8},
    {"uint16", "uint16_t", "plain", unsignedInteger, WireForm::varint, 16},
    {"uint32", "uint32_t", "plain", unsignedInteger, WireForm::varint, 32},
    {"uint64", "uint64_t", "plain", unsignedInteger, WireForm::varint, 64},
    {"uint16_fixed", "uint16_t", "fixed", unsignedInteger, WireForm::fixed, 16},
    {"uint32_fixed", "uint32_t", "fixed", unsignedInteger, WireForm::fixed, 32},
    {"float4", "float", "plain", floating, WireForm::fixed, 32},
    {"float8", "double", "plain", floating, WireForm::fixed, 64},
    {"string", "bufstring", "plain", text, WireForm::text},
    {"string_fixed", "bufstring", "fixed", text, WireForm::fixedText},
    {"cryptstring", "bufstring", "crypt", text, WireForm::text, 0, true},
    {"padding", "bufstring", "padding", text, WireForm::padding},
    {"blob", "bufstring", "blob", bytes, WireForm::text},
    {"cryptblob", "bufstring", "cryptblob", bytes, WireForm::text, 0, true},
};

} // namespace

std::span<const LogicalType> logicalTypes() { return types; }

const LogicalType* findLogicalType(std::string_view name) {
    const auto* const found = std::ranges::find(types, name, &LogicalType::name);
    return found != std::end(types) ? found : nullptr;
}

} // namespace qlgen
