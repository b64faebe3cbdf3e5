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

/// Bytes of a value while the column grows. What Arrow has in another form gets that when it is handed over.
size_t widthOf(const std::string& format) {
    switch (format[0]) {
    case 'b': // bits
    case 'c':
    case 'C':
        return 1;
    case 's':
    case 'S':
        return 2;
    case 'i':
    case 'I':
    case 'f':
        return 4;
    case 'u':
    case 'z':
    case '+':
        return 0;
    default: // 'd' has 16
        return 8;
    }
}

constexpr bool isPlain(char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\\'; }

/// Appends the first character of a text. What is no UTF-8 is mapped as in the strings of JSON (Inspect/Json.h): to \xHH, and
/// a backslash to two. Returns how many bytes of the text that was.
size_t appendMapped(std::string_view text, Buffer& to) {
    const auto [value, length] = Inspect::first_code_point(text);
    const auto byte = static_cast<unsigned char>(text[0]);
    if (length == 0) {
        const char escape[] = {'\\', 'x', Inspect::HEX_DIGITS[byte >> 4], Inspect::HEX_DIGITS[byte & 15]};
        to.append({escape, sizeof escape});
        return 1;
    }
    if (byte == '\\') to.append(text.substr(0, 1));
    to.append(text.substr(0, length));
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
    std::vector<uint8_t> validity;
    Buffer values, offsets;
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
    : Column(std::move(name), formatOf(value.kind)) {
    _kind = value.kind;
    _enumeration = value.enumeration;
    if (decimals && _kind == Kind::price) _format = "d:19," + std::to_string(*decimals); // 19 digits hold any
    reset();
}

Column::Column(std::string name, const char* format)
    : _name(std::move(name)), _format(format), _kind(TIME), _width(widthOf(_format)) {}

Column& Column::within(Column column) { return _columns.emplace_back(std::move(column)); }

size_t Column::bytes() const {
    size_t all = _validity.size() + _values.size() + _offsets.size();
    for (const Column& column : _columns) all += column.bytes();
    return all;
}

void Column::reset() {
    _length = _nulls = 0;
    _validity.clear();
    _values = Buffer();
    _offsets = Buffer();
    _indices.clear();
    _names.clear();
    if (_width == 0 && _kind != Kind::record) _offsets.append(0, sizeof(int32_t));
}

// --- values

void Column::real(double value) {
    number(_kind == Kind::float4 ? std::bit_cast<int32_t>(static_cast<float>(value)) : std::bit_cast<int64_t>(value));
}

void Column::text(std::string_view bytes) {
    if (_kind == Kind::string || _kind == Kind::stringFixed || _kind == Kind::cryptstring)
        while (!bytes.empty()) {
            size_t plain = 0;
            while (plain < bytes.size() && isPlain(bytes[plain])) ++plain;
            _values.append(bytes.substr(0, plain));
            bytes.remove_prefix(plain);
            if (!bytes.empty()) bytes.remove_prefix(appendMapped(bytes, _values));
        }
    _values.append(bytes);
    _offsets.append(_values.size(), sizeof(int32_t));
    ++_length;
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

void Column::enumerator(int64_t value) {
    const auto number_ = static_cast<size_t>(value); // a byte
    if (number_ < _indices.size() && _indices[number_] >= 0) return number(_indices[number_]);
    word(number_, Inspect::number_text({.kind = _kind, .number = value, .text = {}, .enumeration = _enumeration}));
}

void Column::null() { nulls(1); }

void Column::nullsUpTo(size_t length) { nulls(length - _length); }

void Column::nulls(size_t count) {
    if (count == 0) return;
    if (_width != 0) {
        _values.appendZeros(count * _width);
    } else {
        const auto end = _offsets.last<uint32_t>();
        for (size_t i = 0; i < count; ++i) _offsets.append(end, sizeof end);
    }
    const size_t end = _length + count;
    _validity.resize((_length + 7) / 8, 0xFF); // all before are there
    if (_length % 8 != 0) _validity.back() = static_cast<uint8_t>(_validity.back() & ~(0xFFu << _length % 8));
    _validity.resize((end + 7) / 8, 0);
    if (end % 8 != 0) _validity.back() = static_cast<uint8_t>(_validity.back() | 0xFFu << end % 8);
    _length = end;
    _nulls += count;
}

void Column::elements(size_t count) {
    _offsets.append(_offsets.last<uint32_t>() + count, sizeof(int32_t));
    ++_length;
}

// --- handing over

void Column::exportSchema(ArrowSchema& to) const {
    OwnedSchema& owned = own(to, _format, _name, _columns.size());
    for (size_t i = 0; i < _columns.size(); ++i) _columns[i].exportSchema(owned.columns[i]);
    if (_kind == Kind::enumeration) {
        own(owned.dictionary, "u", "", 0);
        to.dictionary = &owned.dictionary;
    }
}

/// The values in the form that Arrow has.
Buffer Column::arrowValues() {
    Buffer values;
    if (_format[0] == 'd') { // of 128 bits
        for (size_t i = 0; i < _length; ++i) {
            int64_t value;
            std::memcpy(&value, _values.data() + i * sizeof value, sizeof value);
            values.append(static_cast<uint64_t>(value), sizeof value);
            values.append(value < 0 ? ~uint64_t{0} : 0, sizeof value);
        }
    } else if (_format[0] == 'b') {
        values.appendZeros((_length + 7) / 8);
        for (size_t i = 0; i < _length; ++i)
            values.data()[i / 8] = static_cast<uint8_t>(values.data()[i / 8] | (_values.data()[i] & 1) << i % 8);
    } else {
        values = std::move(_values);
    }
    return values;
}

void Column::exportArray(ArrowArray& to, size_t length) {
    const bool isRecord = _kind == Kind::record, isVector = _kind == Kind::vector;
    if (!isRecord) nullsUpTo(length);
    auto owned = std::make_unique<OwnedArray>();
    owned->columns.resize(_columns.size());
    for (size_t i = 0; i < _columns.size(); ++i) {
        _columns[i].exportArray(owned->columns[i], isVector ? _offsets.last<uint32_t>() : length);
        owned->pointers.push_back(&owned->columns[i]);
    }
    if (_kind == Kind::enumeration) {
        Column names("", Inspect::ValueInfo{.kind = Kind::string});
        for (const std::string& it : _names) names.text(it);
        names.exportArray(owned->dictionary);
    }
    if (_nulls != 0) _validity.resize((length + 7) / 8, 0xFF);
    owned->validity = std::move(_validity);
    owned->values = arrowValues();
    owned->offsets = std::move(_offsets);
    owned->buffers.push_back(_nulls != 0 ? owned->validity.data() : nullptr);
    if (_width == 0 && !isRecord) owned->buffers.push_back(owned->offsets.data());
    if (!isRecord && !isVector) owned->buffers.push_back(owned->values.data());
    to = {.length = static_cast<int64_t>(length),
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
