#include "Columns/Column.h"

#include <bit>
#include <cstring>
#include <memory>
#include <utility>

#include "Inspect/Utf8.h"

namespace Columns {

using Inspect::Kind;

namespace {

const char* formatOf(Kind kind) {
    switch (kind) {
    case Kind::boolean:
        return "b";
    case Kind::int8:
        return "c";
    case Kind::int16:
        return "s";
    case Kind::int32:
        return "i";
    case Kind::int64:
    case Kind::price:
    case Kind::int64Fixed:
        return "l";
    case Kind::uint8:
        return "C";
    case Kind::uint16:
    case Kind::uint16Fixed:
        return "S";
    case Kind::uint32:
    case Kind::uint32Fixed:
        return "I";
    case Kind::uint64:
        return "L";
    case Kind::float4:
        return "f";
    case Kind::float8:
        return "g";
    case Kind::string:
    case Kind::stringFixed:
    case Kind::cryptstring:
        return "u";
    case Kind::padding:
    case Kind::blob:
    case Kind::cryptblob:
        return "z";
    case Kind::enumeration:
        return "s"; // into the dictionary
    case Kind::record:
        return "+s";
    case Kind::vector:
        return "+l";
    }
    return "n";
}

constexpr Kind TIME = Kind::int64;

constexpr bool isPlain(char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\\'; }

/// Appends the first character of a text. What is no UTF-8 is mapped as in the strings of JSON (Inspect/Json.h): to \xHH, and
/// a backslash to two. Returns how many bytes of the text that was.
size_t appendMapped(std::string_view text, std::vector<uint8_t>& to) {
    const auto [value, length] = Inspect::first_code_point(text);
    const auto byte = static_cast<unsigned char>(text[0]);
    if (length == 0) {
        for (const char c : {'\\', 'x', Inspect::HEX_DIGITS[byte >> 4], Inspect::HEX_DIGITS[byte & 15]})
            to.push_back(static_cast<uint8_t>(c));
        return 1;
    }
    if (byte == '\\') to.push_back(byte);
    to.insert(to.end(), text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length));
    return length;
}

/// What a schema owns, itself included.
struct OwnedSchema {
    std::string format, name;
    std::vector<ArrowSchema> columns;
    std::vector<ArrowSchema*> pointers;
    ArrowSchema dictionary{};
};

void release(ArrowSchema* schema) {
    const std::unique_ptr<OwnedSchema> owned(static_cast<OwnedSchema*>(schema->private_data));
    for (ArrowSchema& column : owned->columns)
        if (column.release != nullptr) column.release(&column); // unless somebody moved it out
    if (owned->dictionary.release != nullptr) owned->dictionary.release(&owned->dictionary);
    schema->release = nullptr;
}

/// What an array owns.
struct OwnedArray {
    std::vector<uint8_t> validity, values;
    std::vector<int32_t> offsets;
    std::vector<const void*> buffers;
    std::vector<ArrowArray> columns;
    std::vector<ArrowArray*> pointers;
    ArrowArray dictionary{};
};

void release(ArrowArray* array) {
    const std::unique_ptr<OwnedArray> owned(static_cast<OwnedArray*>(array->private_data));
    for (ArrowArray& column : owned->columns)
        if (column.release != nullptr) column.release(&column);
    if (owned->dictionary.release != nullptr) owned->dictionary.release(&owned->dictionary);
    array->release = nullptr;
}

/// Fills in what all schemas have. The columns within are to be filled by the caller.
OwnedSchema& own(ArrowSchema& to, std::string format, std::string name, size_t columns) {
    auto owned = std::make_unique<OwnedSchema>();
    owned->format = std::move(format);
    owned->name = std::move(name);
    owned->columns.resize(columns);
    for (ArrowSchema& column : owned->columns) owned->pointers.push_back(&column);
    to = {.format = owned->format.c_str(),
          .name = owned->name.c_str(),
          .metadata = nullptr,
          .flags = ARROW_FLAG_NULLABLE,
          .n_children = static_cast<int64_t>(columns),
          .children = owned->pointers.data(),
          .dictionary = nullptr,
          .release = &release,
          .private_data = owned.get()};
    return *owned.release();
}

} // namespace

Column::Column(std::string name, const Inspect::ValueInfo& value, std::optional<int> decimals)
    : _name(std::move(name)), _format(formatOf(value.kind)), _kind(value.kind) {
    if (decimals && _kind == Kind::price) _format = "d:19," + std::to_string(*decimals); // 19 digits hold any
    reset();
}

Column::Column(std::string name, const char* format) : _name(std::move(name)), _format(format), _kind(TIME) { reset(); }

Column& Column::within(Column column) { return _columns.emplace_back(std::move(column)); }

size_t Column::bytes() const {
    size_t all = _validity.size() + _values.size() + _offsets.size() * sizeof(int32_t);
    for (const Column& column : _columns) all += column.bytes();
    return all;
}

void Column::reset() {
    _length = _nulls = 0;
    _validity.clear();
    _values.clear();
    _offsets.clear();
    _indices.clear();
    _names.clear();
    if (Inspect::is_bytes(_kind) || _kind == Kind::vector) _offsets.push_back(0);
}

// --- values

void Column::valid(bool isValid) {
    if (!isValid && _nulls++ == 0) _validity.assign((_length + 7) / 8, 0xFF); // all before are there
    if (_nulls != 0) {
        _validity.resize(_length / 8 + 1);
        auto& byte = _validity.back();
        const auto bit = static_cast<uint8_t>(1u << _length % 8);
        byte = static_cast<uint8_t>(isValid ? byte | bit : byte & ~bit);
    }
    ++_length;
}

template <class T>
void Column::append(T value) {
    const size_t at = _values.size();
    _values.resize(at + sizeof value);
    std::memcpy(_values.data() + at, &value, sizeof value);
}

void Column::put(int64_t value) {
    switch (_format[0]) {
    case 'b':
        if (_length % 8 == 0) _values.push_back(0);
        _values.back() = static_cast<uint8_t>(_values.back() | (value != 0) << _length % 8);
        break;
    case 'c':
    case 'C':
        append(static_cast<int8_t>(value));
        break;
    case 's':
    case 'S':
        append(static_cast<int16_t>(value));
        break;
    case 'i':
    case 'I':
    case 'f': // only the zero that stands for a null
        append(static_cast<int32_t>(value));
        break;
    case 'd': // of 128 bits
        append(value);
        append(value < 0 ? int64_t{-1} : int64_t{0});
        break;
    default:
        append(value);
    }
}

void Column::number(int64_t value) {
    put(value);
    valid(true);
}

void Column::text(std::string_view bytes) {
    if (_format == "z") {
        _values.insert(_values.end(), bytes.begin(), bytes.end());
    } else {
        while (!bytes.empty()) {
            size_t plain = 0;
            while (plain < bytes.size() && isPlain(bytes[plain])) ++plain;
            _values.insert(_values.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(plain));
            bytes.remove_prefix(plain);
            if (!bytes.empty()) bytes.remove_prefix(appendMapped(bytes, _values));
        }
    }
    _offsets.push_back(static_cast<int32_t>(_values.size()));
    valid(true);
}

void Column::word(size_t number_, std::string_view text_) {
    if (number_ >= _indices.size()) _indices.resize(number_ + 1, -1);
    int16_t& index = _indices[number_];
    if (index < 0) {
        index = static_cast<int16_t>(_names.size());
        _names.emplace_back(text_);
    }
    number(index);
}

void Column::name(const Inspect::Value& value) {
    const auto number_ = static_cast<size_t>(value.number); // a byte
    const bool isKnown = number_ < _indices.size() && _indices[number_] >= 0;
    word(number_, isKnown ? std::string() : Inspect::number_text(value));
}

void Column::value(const Inspect::Value& value) {
    if (value.is_text())
        text(value.text);
    else if (value.kind == Kind::enumeration)
        name(value);
    else if (value.kind == Kind::float4)
        append(static_cast<float>(value.real)), valid(true);
    else if (value.kind == Kind::float8)
        append(value.real), valid(true);
    else
        number(value.number);
}

void Column::null() {
    if (!_offsets.empty())
        _offsets.push_back(_offsets.back());
    else
        put(0);
    valid(false);
}

void Column::elements(size_t count) {
    _offsets.push_back(_offsets.back() + static_cast<int32_t>(count));
    valid(true);
}

void Column::row() { valid(true); }

// --- handing over

void Column::exportSchema(ArrowSchema& to) const {
    OwnedSchema& owned = own(to, _format, _name, _columns.size());
    for (size_t i = 0; i < _columns.size(); ++i) _columns[i].exportSchema(owned.columns[i]);
    if (_kind == Kind::enumeration) {
        own(owned.dictionary, "u", "", 0);
        to.dictionary = &owned.dictionary;
    }
}

void Column::exportArray(ArrowArray& to) {
    auto owned = std::make_unique<OwnedArray>();
    owned->columns.resize(_columns.size());
    for (size_t i = 0; i < _columns.size(); ++i) {
        _columns[i].exportArray(owned->columns[i]);
        owned->pointers.push_back(&owned->columns[i]);
    }
    if (_kind == Kind::enumeration) {
        Column names("", Inspect::ValueInfo{.kind = Kind::string});
        for (const std::string& it : _names) names.text(it);
        names.exportArray(owned->dictionary);
    }
    owned->validity = std::move(_validity);
    owned->values = std::move(_values);
    owned->offsets = std::move(_offsets);
    owned->buffers.push_back(_nulls != 0 ? owned->validity.data() : nullptr);
    if (!owned->offsets.empty()) owned->buffers.push_back(owned->offsets.data());
    if (_kind != Kind::record && _kind != Kind::vector) owned->buffers.push_back(owned->values.data());
    to = {.length = static_cast<int64_t>(_length),
          .null_count = static_cast<int64_t>(_nulls),
          .offset = 0,
          .n_buffers = static_cast<int64_t>(owned->buffers.size()),
          .n_children = static_cast<int64_t>(owned->columns.size()),
          .buffers = owned->buffers.data(),
          .children = owned->pointers.data(),
          .dictionary = _kind == Kind::enumeration ? &owned->dictionary : nullptr,
          .release = &release,
          .private_data = owned.get()};
    owned.release();
    reset();
}

} // namespace Columns
