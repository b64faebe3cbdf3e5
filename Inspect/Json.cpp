#include "Inspect/Json.h"

#include "Inspect/JsonWalk.h"
#include "Inspect/Utf8.h"

namespace Inspect {
namespace detail {

static bool is_plain(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte < 0x7F && byte != '"' && byte != '\\';
}

void JsonWriter::text(std::string_view rest) {
    _text += '"';
    while (!rest.empty()) {
        size_t plain = 0;
        while (plain < rest.size() && is_plain(rest[plain])) ++plain;
        _text.append(rest, 0, plain);
        rest.remove_prefix(plain);
        if (!rest.empty()) rest.remove_prefix(escape(rest));
    }
    _text += '"';
}

size_t JsonWriter::escape(std::string_view rest) {
    const auto [value, length] = first_code_point(rest);
    const auto byte = static_cast<unsigned char>(rest[0]);
    if (length == 0) {
        _text.append({'\\', '\\', 'x', HEX_DIGITS[byte >> 4], HEX_DIGITS[byte & 15]});
        return 1;
    }
    constexpr std::string_view special = "\b\f\n\r\t\"", letters = "bfnrt\"";
    if (byte == '\\')
        _text += R"(\\\\)"; // one for the mapping, twice for JSON
    else if (const size_t at = special.find(rest[0]); at != special.npos)
        _text.append({'\\', letters[at]});
    else if (!is_harmless(value)) // all of them have four digits at most
        _text.append({'\\', 'u', HEX_DIGITS[value >> 12 & 15], HEX_DIGITS[value >> 8 & 15], HEX_DIGITS[value >> 4 & 15],
                      HEX_DIGITS[value & 15]});
    else
        _text.append(rest, 0, length);
    return length;
}

std::string JsonPath::text() const {
    std::string before = outer != nullptr ? outer->text() : "";
    if (name.empty()) return outer != nullptr ? before + '[' + std::to_string(index) + ']' : before;
    if (!before.empty()) before += '.';
    return before.append(name);
}

JsonReading& JsonPath::whole() const {
    const JsonPath* it = this;
    while (it->outer != nullptr) it = it->outer;
    return *it->reading;
}

static std::string unescaped(std::string_view text, const JsonPath& path) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
        } else if (text.substr(i, 2) == "\\\\") {
            bytes += '\\';
            ++i;
        } else {
            unsigned char byte = 0;
            const char* const digits = text.data() + i + 2;
            if (text.substr(i, 2) != "\\x" || text.size() - i < 4
                || std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2)
                path.fail("a backslash is neither \\\\ nor \\x and two hexadecimal digits");
            bytes += static_cast<char>(byte);
            i += 3;
        }
    }
    return bytes;
}

void read_string(JsonCursor& json, bufstl::bufstring& v, const JsonPath& path) {
    const Next next = json.next();
    if (next == Next::null) return json.null(); // stays as constructed, never stored
    if (next != Next::string) path.fail("not a string");
    std::string_view text = json.string();
    std::string bytes;
    if (text.find('\\') != text.npos) text = bytes = unescaped(text, path);
    grow(path, [&] { v.assign(text.data(), text.size()); });
}

void find_missing(const std::bitset<MAX_FIELDS>& given, const TypeInfo& type, const JsonPath& path) {
    if (given.count() == type.fields.size() || path.whole().isPartial) return;
    for (size_t i = 0; i < type.fields.size(); ++i)
        if (!given[i]) path.whole().keep(JsonError(JsonPath{&path, type.fields[i].name}.text(), "missing"));
}

size_t field_named(std::string_view name, const TypeInfo& type, size_t expected) {
    if (expected < type.fields.size() && type.fields[expected].name == name) return expected;
    size_t i = 0;
    while (i < type.fields.size() && type.fields[i].name != name) ++i;
    return i;
}

} // namespace detail

namespace {

const detail::JsonCoder& coder_of(const Protocol& protocol, Velmora::MsgType_t id) {
    const detail::JsonCoder* const coder = protocol.find(protocol.jsonCoders, id);
    if (coder == nullptr) throw JsonError("", "unknown identifier " + std::to_string(id));
    return *coder;
}

} // namespace

std::string to_json(const Protocol& protocol, Velmora::MsgType_t id, const void* message, Integers integers) {
    std::string text;
    append_json(protocol, id, message, integers, Display(), text);
    return text;
}

void append_json(const Protocol& protocol, Velmora::MsgType_t id, const void* message, Integers integers,
                 const Display& display, std::string& text) {
    detail::JsonWriter writer(text, integers, display);
    coder_of(protocol, id).write(message, writer);
}

std::string json_text(std::string_view bytes) {
    std::string text;
    const Display display;
    detail::JsonWriter(text, Integers::strings, display).text(bytes);
    return text;
}

void JsonReading::keep(const JsonError& error) {
    if (errors.size() + 1 >= mostErrors) throw JsonError(error);
    errors.push_back(error);
}

void JsonReading::keep(const JsonError& error, JsonCursor& json, size_t start) {
    if (error.path().empty()) throw JsonError(error);
    keep(error);
    json.go_back(start);
    json.next();
    json.skip();
}

void from_json(const Protocol& protocol, Velmora::MsgType_t id, std::string_view json, void* message) {
    JsonCursor cursor(json);
    JsonReading reading;
    from_json(protocol, id, cursor, message, reading);
    cursor.end();
}

void from_json(const Protocol& protocol, Velmora::MsgType_t id, JsonCursor& json, void* message, JsonReading& reading,
               std::string_view name) {
    coder_of(protocol, id).read(json, message, detail::JsonPath{.outer = nullptr, .name = name, .reading = &reading});
}

} // namespace Inspect
