#include "tools/qlproto/sql/ArrowChunk.h"

#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

namespace qlproto::sql {

namespace {

using engine::Count, engine::ListEntry, engine::LogicalType, engine::Text, engine::Vector;

struct Plain {
    char format;
    engine::Type type;
    size_t width;
};
constexpr Plain PLAIN[] = {{'c', engine::TINYINT, 1},   {'C', engine::UTINYINT, 1},     {'s', engine::SMALLINT, 2},
                           {'S', engine::USMALLINT, 2}, {'i', engine::INTEGER, 4},      {'I', engine::UINTEGER, 4},
                           {'l', engine::BIGINT, 8},    {'L', engine::UBIGINT, 8},      {'f', engine::FLOAT, 4},
                           {'g', engine::DOUBLE, 8},    {'t', engine::TIMESTAMP_NS, 8}, {'d', engine::HUGEINT, 16}};

const Plain& plainOf(const ArrowSchema& column) {
    for (const Plain& it : PLAIN)
        if (it.format == column.format[0]) return it;
    std::abort(); // Columns makes no others
}

/// Texts at `offsets`, which has one more.
template <class OffsetOf>
void fillTexts(Vector vector, size_t count, const char* texts, OffsetOf&& of) {
    auto* const to = static_cast<Text*>(duckdb().vector_get_data(vector));
    for (size_t i = 0; i < count; ++i) {
        const auto [begin, end] = of(i);
        const auto length = static_cast<uint32_t>(end - begin);
        if (length > Text::INLINED) {
            duckdb().vector_assign_string_element_len(vector, i, texts + begin, length);
            continue;
        }
        to[i] = {};
        to[i].length = length;
        if (length != 0) std::memcpy(to[i].inlined, texts + begin, length);
    }
}

void fillList(Vector vector, const ArrowSchema& whole, const ArrowSchema& schema, const ArrowArray& array) {
    const auto count = static_cast<size_t>(array.length);
    const auto* const offsets = static_cast<const int32_t*>(array.buffers[1]);
    auto* const to = static_cast<ListEntry*>(duckdb().vector_get_data(vector));
    for (size_t i = 0; i < count; ++i)
        to[i] = {static_cast<uint64_t>(offsets[i]), static_cast<uint64_t>(offsets[i + 1] - offsets[i])};
    const auto elements = static_cast<Count>(array.children[0]->length);
    duckdb().list_vector_reserve(vector, elements);
    duckdb().list_vector_set_size(vector, elements);
    fill(duckdb().list_vector_get_child(vector), *whole.children[0], *schema.children[0], *array.children[0]);
}

void fillStruct(Vector vector, const ArrowSchema& whole, const ArrowSchema& schema, const ArrowArray& array) {
    int64_t next = 0;
    for (int64_t i = 0; i < whole.n_children; ++i) {
        const Vector child = duckdb().struct_vector_get_child(vector, static_cast<Count>(i));
        if (next < schema.n_children
            && std::string_view(whole.children[i]->name) == std::string_view(schema.children[next]->name)) {
            fill(child, *whole.children[i], *schema.children[next], *array.children[next]);
            ++next;
        } else {
            fillWithNulls(child, *whole.children[i], static_cast<size_t>(array.length));
        }
    }
}

} // namespace

LogicalType typeOf(const ArrowSchema& column) {
    const char first = column.format[0];
    if (column.dictionary != nullptr || first == 'u') return duckdb().create_logical_type(engine::VARCHAR);
    if (first == 'z') return duckdb().create_logical_type(engine::BLOB);
    if (first == 'b') return duckdb().create_logical_type(engine::BOOLEAN);
    if (first == 'd') { // "d:19,4"
        const char* const scale = std::strchr(column.format, ',') + 1;
        return duckdb().create_decimal_type(19, static_cast<uint8_t>(std::atoi(scale)));
    }
    if (first != '+') return duckdb().create_logical_type(plainOf(column).type);
    std::vector<LogicalType> types;
    std::vector<const char*> names;
    for (int64_t i = 0; i < column.n_children; ++i) {
        types.push_back(typeOf(*column.children[i]));
        names.push_back(column.children[i]->name);
    }
    const LogicalType type = column.format[1] == 'l'
                                 ? duckdb().create_list_type(types[0])
                                 : duckdb().create_struct_type(types.data(), names.data(), names.size());
    for (LogicalType& it : types) duckdb().destroy_logical_type(&it);
    return type;
}

void fillWithNulls(Vector vector, const ArrowSchema& column, size_t count) {
    duckdb().vector_ensure_validity_writable(vector);
    std::memset(duckdb().vector_get_validity(vector), 0, (count + 7) / 8);
    if (column.format[0] != '+') return;
    if (column.format[1] == 'l') {
        std::memset(duckdb().vector_get_data(vector), 0, count * sizeof(ListEntry));
        duckdb().list_vector_set_size(vector, 0);
        return;
    }
    for (int64_t i = 0; i < column.n_children; ++i)
        fillWithNulls(duckdb().struct_vector_get_child(vector, static_cast<Count>(i)), *column.children[i], count);
}

void fill(Vector vector, const ArrowSchema& whole, const ArrowSchema& schema, const ArrowArray& array) {
    const auto count = static_cast<size_t>(array.length);
    if (array.buffers[0] != nullptr) {
        duckdb().vector_ensure_validity_writable(vector);
        std::memcpy(duckdb().vector_get_validity(vector), array.buffers[0], (count + 7) / 8);
    }
    if (count == 0) return;
    if (schema.dictionary != nullptr) {
        const ArrowArray& words = *array.dictionary;
        const auto* const indices = static_cast<const int16_t*>(array.buffers[1]);
        const auto* const offsets = static_cast<const int32_t*>(words.buffers[1]);
        // A null has the first index, if there are words.
        const bool isEmpty = words.length == 0;
        fillTexts(vector, count, static_cast<const char*>(words.buffers[2]), [&](size_t i) {
            return isEmpty ? std::pair(0, 0) : std::pair(offsets[indices[i]], offsets[indices[i] + 1]);
        });
        return;
    }
    switch (schema.format[0]) {
    case '+':
        schema.format[1] == 'l' ? fillList(vector, whole, schema, array) : fillStruct(vector, whole, schema, array);
        break;
    case 'u':
    case 'z': {
        const auto* const offsets = static_cast<const int32_t*>(array.buffers[1]);
        fillTexts(vector, count, static_cast<const char*>(array.buffers[2]),
                  [&](size_t i) { return std::pair(offsets[i], offsets[i + 1]); });
        break;
    }
    case 'b': {
        const auto* const bits = static_cast<const uint8_t*>(array.buffers[1]);
        auto* const to = static_cast<bool*>(duckdb().vector_get_data(vector));
        for (size_t i = 0; i < count; ++i) to[i] = (bits[i / 8] >> i % 8 & 1) != 0;
        break;
    }
    default:
        std::memcpy(duckdb().vector_get_data(vector), array.buffers[1], count * plainOf(schema).width);
    }
}

} // namespace qlproto::sql
