#include "generator/compare/Body.h"

#include <algorithm>
#include <bit>

#include <fmt/format.h>

namespace qlgen::compare {
namespace {

// Of signed 64-bit prices, which travel as one byte.
constexpr uint64_t NMA = 0x8000000000000001, NDA = 0x8000000000000002, NA = 0x8000000000000003;

uint64_t lowBits(uint64_t bits, unsigned width) { return width == 64 ? bits : bits & ((uint64_t{1} << width) - 1); }

Value::Kind kindOf(const LogicalType& type) {
    if (type.isEnciphered) return Value::Kind::enciphered;
    if (type.holdsStorage()) return Value::Kind::text;
    return type.kind == ValueKind::floating ? Value::Kind::real : Value::Kind::integer;
}

class Decoder {
  public:
    Decoder(std::string_view body, Reader reader) : _body(body), _reader(reader) {}

    bool decode(Items items) {
        for (const Item& item : items)
            if (!addItem(item)) return false;
        return _next == _body.size() || _reader == Reader::rolling;
    }

    Reading reading;

  private:
    bool addItem(const Item& item) {
        if (_next == _body.size() && _reader == Reader::rolling && item.mayEndBefore && _at.empty()) _isMissing = true;
        const size_t place = reading.size();
        reading.push_back({&item, _at, {}});
        const std::optional<Value> value = _isMissing ? zeroOf(item) : take(item);
        if (!value) return false;
        reading[place].value = *value;
        if (!item.isVector) return true;
        for (uint64_t i = 0; i < value->bits; ++i) {
            _at.push_back(static_cast<uint16_t>(i));
            for (const Item& inner : item.element)
                if (!addItem(inner)) return false;
            _at.pop_back();
        }
        return true;
    }

    std::optional<Value> take(const Item& item) {
        const unsigned bits = item.type->bits;
        switch (_reader == Reader::written ? item.written() : item.read()) {
        case Framing::byte: {
            const auto byte = takeFixed(1);
            if (!byte) return {};
            return integer(item.type->form == WireForm::boolean ? *byte != 0 : *byte, 8, item.isSigned());
        }
        case Framing::varint:
            return item.isPrice() ? takePrice() : takeNumber(item);
        case Framing::fixed: {
            const auto pattern = takeFixed(bits / 8);
            if (!pattern) return {};
            if (item.type->kind == ValueKind::floating) return Value{Value::Kind::real, false, *pattern, {}};
            return integer(*pattern, bits, item.isSigned());
        }
        case Framing::text: {
            const auto length = takeVarint();
            return length ? takeText(item, *length & 0xFFFF) : std::nullopt;
        }
        case Framing::fixedText: {
            const auto length = takeFixed(2);
            return length ? takeText(item, *length) : std::nullopt;
        }
        case Framing::count:
            break;
        }
        const auto first = takeFixed(1);
        if (!first || *first < 0x80) return first ? std::optional(integer(*first, 16, false)) : std::nullopt;
        const auto second = takeFixed(1);
        if (!second) return {};
        return integer((*first << 8 | *second) & 0x7FFF, 16, false);
    }

    std::optional<Value> takeNumber(const Item& item) {
        const auto varint = takeVarint();
        if (!varint) return {};
        const uint64_t u = lowBits(*varint, item.type->bits);
        return integer(item.isZigzag() ? u >> 1 ^ (0 - (u & 1)) : u, item.type->bits, item.isSigned());
    }

    std::optional<Value> takePrice() {
        const auto first = takeFixed(1);
        if (!first) return {};
        if (*first == 0x03 || *first == 0x05 || *first == 0x07)
            return integer(*first == 0x03 ? NMA : *first == 0x05 ? NDA : NA, 64, true);
        uint64_t pattern = *first >> 2 & 0x1F;
        if ((*first & 0x80) != 0) {
            const auto rest = takeVarint();
            if (!rest) return {};
            pattern |= *rest << 5;
        }
        return integer((*first & 0x02) != 0 ? ~pattern : pattern, 64, true);
    }

    std::optional<uint64_t> takeVarint() {
        uint64_t value = 0;
        for (unsigned shift = 0;; shift += 7) {
            const auto byte = takeFixed(1);
            if (!byte) return {};
            if (shift < 64) value |= (*byte & 0x7F) << shift;
            if (*byte < 0x80) return value;
        }
    }

    std::optional<uint64_t> takeFixed(size_t width) {
        if (_body.size() - _next < width) return {};
        uint64_t bits = 0;
        for (size_t i = 0; i < width; ++i) bits |= uint64_t{static_cast<unsigned char>(_body[_next++])} << 8 * i;
        return bits;
    }

    std::optional<Value> takeText(const Item& item, size_t length) {
        if (_body.size() - _next < length) return {};
        Value value{kindOf(*item.type), false, 0, std::string(_body.substr(_next, length))};
        _next += length;
        return value;
    }

    const std::string_view _body;
    const Reader _reader;
    size_t _next = 0;
    bool _isMissing = false; // from here on all fields are
    std::vector<uint16_t> _at;
};

void appendFixed(std::string& body, uint64_t bits, size_t width) {
    for (size_t i = 0; i < width; ++i) body += static_cast<char>(bits >> 8 * i);
}

void appendVarint(std::string& body, uint64_t value) {
    for (; value >= 0x80; value >>= 7) body += static_cast<char>(value | 0x80);
    body += static_cast<char>(value);
}

void appendPrice(std::string& body, uint64_t pattern) {
    if (pattern == NMA || pattern == NDA || pattern == NA) return appendFixed(body, (pattern & 3) << 1 | 1, 1);
    const uint64_t low = (pattern & 0x1F) << 2;
    if (pattern >> 5 == 0) return appendFixed(body, low, 1);
    appendFixed(body, low | 0x80, 1);
    appendVarint(body, pattern >> 5);
}

void append(std::string& body, const Place& place) {
    const Item& item = *place.item;
    const uint64_t bits = place.value.bits;
    switch (item.written()) {
    case Framing::byte:
        return appendFixed(body, bits, 1);
    case Framing::fixed:
        return appendFixed(body, bits, item.type->bits / 8);
    case Framing::varint:
        if (item.isPrice()) return appendPrice(body, bits);
        if (!item.isZigzag()) return appendVarint(body, bits);
        return appendVarint(body, lowBits(bits << 1 ^ (place.value.isNegative ? ~uint64_t{0} : 0), item.type->bits));
    case Framing::count:
        if (bits > 127) appendFixed(body, 0x80 | bits >> 8, 1);
        return appendFixed(body, bits & 0xFF, 1);
    case Framing::text:
        appendVarint(body, place.value.text.size());
        break;
    case Framing::fixedText:
        appendFixed(body, place.value.text.size(), 2);
        break;
    }
    body += place.value.text;
}

std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            (out += '\\') += c;
        else if (byte >= 0x20 && byte < 0x7F)
            out += c;
        else
            out += fmt::format("\\x{:02x}", byte);
    }
    return out + '"';
}

uint8_t byteOf(const Enumerator& enumerator) { return static_cast<uint8_t>(enumerator.value); }

/// Whether the reader takes the writer's value for another.
bool isMisread(const Place& written, const Place& read) {
    if (written.value != read.value) return true;
    const EnumerationView* const writer = written.item->enumeration;
    const EnumerationView* const reader = read.item->enumeration;
    return writer != nullptr && reader != nullptr
           && changesMeaning(*writer, *reader, static_cast<uint8_t>(written.value.bits));
}

} // namespace

Value zeroOf(const Item& item) { return {kindOf(*item.type), false, 0, {}}; }

Value integer(uint64_t bits, unsigned width, bool isSigned) {
    const bool isNegative = isSigned && (bits >> (width - 1) & 1) != 0;
    return {
        Value::Kind::integer, isNegative, isNegative ? bits | ~lowBits(~uint64_t{0}, width) : lowBits(bits, width), {}};
}

bool Value::operator==(const Value& other) const {
    if (kind != other.kind) return isZero() && other.isZero();
    return bits == other.bits && isNegative == other.isNegative && text == other.text;
}

std::string Place::path() const {
    std::string path;
    auto index = at.begin();
    for (const char c : item->path) {
        if (c == ']') path += fmt::to_string(*index++);
        path += c;
    }
    return path;
}

std::string Place::text() const {
    if (item->isVector) return fmt::format("{} element{}", value.bits, value.bits == 1 ? "" : "s");
    if (value.kind == Value::Kind::text) return quoted(value.text);
    if (value.kind == Value::Kind::enciphered) return "enciphered " + quoted(value.text);
    if (value.kind == Value::Kind::real)
        return item->type->bits == 32 ? fmt::to_string(std::bit_cast<float>(static_cast<uint32_t>(value.bits)))
                                      : fmt::to_string(std::bit_cast<double>(value.bits));
    if (item->enumeration != nullptr)
        for (const Enumerator& it : item->enumeration->enumerators)
            if (byteOf(it) == value.bits) return it.name;
    if (item->isPrice())
        for (const auto& [bits, name] : {std::pair(NMA, "NMA"), std::pair(NDA, "NDA"), std::pair(NA, "NA")})
            if (value.bits == bits) return name;
    return value.isNegative ? fmt::to_string(static_cast<int64_t>(value.bits)) : fmt::to_string(value.bits);
}

std::optional<Reading> decode(Items items, std::string_view body, Reader reader) {
    Decoder decoder(body, reader);
    if (!decoder.decode(items)) return {};
    return std::move(decoder.reading);
}

std::string encode(const Reading& reading) {
    std::string body;
    for (const Place& place : reading) append(body, place);
    return body;
}

bool haveOtherDocs(const Enumerator& one, const Enumerator& other) {
    return !one.doc.empty() && !other.doc.empty() && one.doc != other.doc;
}

bool changesMeaning(const EnumerationView& writer, const EnumerationView& reader, uint8_t byte) {
    const bool isSame = writer.identity == reader.identity;
    for (const Enumerator& meant : writer.enumerators) {
        if (byteOf(meant) != byte) continue;
        if (const Enumerator* const known = reader.find(meant.name)) {
            if (byteOf(*known) != byte) return true;
            continue;
        }
        // The name is gone. A new name at its byte is the same enumerator renamed; an old one has taken its byte over.
        for (const Enumerator& taken : reader.enumerators) {
            if (byteOf(taken) != byte) continue;
            const Enumerator* const before = writer.find(taken.name);
            if (before == nullptr ? !isSame || haveOtherDocs(meant, taken) : byteOf(*before) != byte) return true;
        }
    }
    return false;
}

bool differ(const Reading& written, const Reading& read) {
    size_t hint = 0; // values mostly stand in the same order on both sides
    for (const Place& place : read) {
        const Place* match = nullptr;
        for (size_t i = 0; i < written.size() && match == nullptr; ++i) {
            const size_t at = hint + i < written.size() ? hint + i : hint + i - written.size();
            if (written[at].item->key == place.item->key && written[at].at == place.at) {
                match = &written[at];
                hint = at + 1;
            }
        }
        if (match == nullptr ? !place.value.isZero() : isMisread(*match, place)) return true;
    }
    return false;
}

} // namespace qlgen::compare
