#include "generator/Signature.h"

#include <fmt/format.h>

namespace qlgen {
namespace {

std::string formText(const LogicalType& type) {
    static constexpr const char* names[] = {"boolean", "byte", "zigzag",    "varint", "special",
                                            "fixed",   "text", "fixedText", "padding"};
    return fmt::format("{}{}{}", names[static_cast<size_t>(type.form)], type.bits != 0 ? fmt::to_string(type.bits) : "",
                       type.isEnciphered ? " enciphered" : "");
}

/// The forms of a type's fields, a line each. A record stands there by the signature of its own lines, so that the text
/// stays short however deep records nest.
std::string wireLines(const Composite& type, const std::vector<std::string>& records) {
    std::string lines;
    for (const Field& field : type.fields) {
        const FieldType& is = field.type;
        lines += is.isVector ? "count " : "";
        lines += is.isRecord ? records[is.index] : is.logical != nullptr ? formText(*is.logical) : "byte8";
        lines += '\n';
    }
    return lines;
}

std::string nameLines(const Composite& type) {
    std::string lines;
    for (const Field& field : type.fields)
        lines += fmt::format("{} {}{}\n", field.name, field.type.name, field.type.isVector ? "[]" : "");
    return lines;
}

} // namespace

std::string canonicalWire(const Definition& definition) {
    std::vector<std::string> records;
    for (const Composite& record : definition.records) records.push_back(signatureOf(wireLines(record, records)));
    std::string lines;
    for (const Composite& message : definition.messages)
        lines += fmt::format("message {}\n{}", message.id, wireLines(message, records));
    return lines;
}

std::string canonicalNames(const Definition& definition) {
    std::string lines;
    for (const Enumeration& enumeration : definition.enumerations) {
        lines += fmt::format("enumeration {}\n", enumeration.name);
        for (const Enumerator& it : enumeration.enumerators) lines += fmt::format("{} {}\n", it.name, it.value);
    }
    for (const Composite& record : definition.records)
        lines += fmt::format("record {}\n{}", record.name, nameLines(record));
    for (const Composite& message : definition.messages)
        lines += fmt::format("message {} {}\n{}", message.name, message.id, nameLines(message));
    return lines;
}

std::string signatureOf(const std::string& text) {
    __extension__ using Word = unsigned __int128;
    constexpr auto word = [](uint64_t high, uint64_t low) { return static_cast<Word>(high) << 64 | low; };
    constexpr Word prime = word(0x1000000, 0x13B);
    Word hash = word(0x6C62272E07BB0142, 0x62B821756295C58D);
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * prime;
    return fmt::format("{:016x}{:016x}", static_cast<uint64_t>(hash >> 64), static_cast<uint64_t>(hash));
}

void deriveSignatures(Definition& definition) {
    const std::string wire = canonicalWire(definition), names = canonicalNames(definition);
    const auto fill = [](std::string& signature, const std::string& text) {
        if (signature.empty()) signature = signatureOf(text);
    };
    fill(definition.signature, wire + names);
    fill(definition.signatureAPI, names);
    fill(definition.signatureStorage, wire);
}

} // namespace qlgen
