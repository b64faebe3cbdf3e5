#include "Inspect/JsonCursor.h"

#include <array>
#include <charconv>

#include "Inspect/Json.h"
#include "Inspect/Utf8.h"

namespace Inspect {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// Characters that stand in a string as they are, at a glance.
constexpr auto PLAIN = [] {
    std::array<bool, 256> plain{};
    for (size_t c = 0x20; c < 0x80; ++c) plain[c] = c != '"' && c != '\\';
    return plain;
}();

bool is_plain(char c) { return PLAIN[static_cast<unsigned char>(c)]; }

void append_utf8(char32_t c, std::string& text) {
    const auto byte = [&](char32_t bits) { text += static_cast<char>(bits); };
    if (c < 0x80) return byte(c);
    if (c < 0x800) {
        byte(0xC0 | c >> 6);
    } else {
        if (c < 0x10000) {
            byte(0xE0 | c >> 12);
        } else {
            byte(0xF0 | c >> 18);
            byte(0x80 | (c >> 12 & 0x3F));
        }
        byte(0x80 | (c >> 6 & 0x3F));
    }
    byte(0x80 | (c & 0x3F));
}

} // namespace

void JsonCursor::fail(const char* reason) const {
    throw JsonError("", "not JSON at byte " + std::to_string(position()) + ": " + reason);
}

void JsonCursor::skip_blanks() {
    while (_at != _end && (*_at == ' ' || *_at == '\t' || *_at == '\n' || *_at == '\r')) ++_at;
}

bool JsonCursor::take(char c) {
    if (_at == _end || *_at != c) return false;
    ++_at;
    return true;
}

JsonCursor::Next JsonCursor::next() {
    skip_blanks();
    if (_at != _end) switch (*_at) {
        case '{':
            return Next::object;
        case '[':
            return Next::array;
        case '"':
            return Next::string;
        case 't':
        case 'f':
            return Next::boolean;
        case 'n':
            return Next::null;
        default:
            if (*_at == '-' || is_digit(*_at)) return Next::number;
        }
    fail("a value is missing");
}

// --- objects and arrays

bool JsonCursor::begin(char last) {
    ++_at;
    skip_blanks();
    return !take(last);
}

bool JsonCursor::more(char last) {
    skip_blanks();
    if (take(',')) return true;
    if (!take(last)) fail(last == ']' ? "a comma or ] is missing" : "a comma or } is missing");
    return false;
}

std::string_view JsonCursor::name() {
    skip_blanks();
    if (_at == _end || *_at != '"') fail("a name is missing");
    const std::string_view name = string();
    skip_blanks();
    if (!take(':')) fail("a colon is missing");
    return name;
}

size_t JsonCursor::count_elements() const {
    size_t commas = 0, depth = 0;
    bool isEmpty = true;
    for (const char* p = _at; p != _end; ++p) {
        switch (*p) {
        case '"':
            do {
                if (*p == '\\') ++p;
                if (p != _end) ++p;
                if (p == _end) return commas + 1;
            } while (*p != '"');
            isEmpty = false;
            break;
        case '[':
        case '{':
            isEmpty = depth++ == 0;
            break;
        case ']':
        case '}':
            if (--depth == 0) return isEmpty ? 0 : commas + 1;
            break;
        case ',':
            commas += depth == 1;
            break;
        case ' ':
        case '\t':
        case '\n':
        case '\r':
            break;
        default:
            isEmpty = false;
        }
    }
    return commas + 1;
}

void JsonCursor::skip(int depth) {
    const auto inner = [&] {
        if (depth == 0) fail("nested too deeply");
        skip(depth - 1);
    };
    switch (next()) {
    case Next::object:
        return object([&](std::string_view) { inner(); });
    case Next::array:
        return array(inner);
    case Next::string:
        return void(string());
    case Next::number:
        return void(number());
    case Next::boolean:
        return void(boolean());
    case Next::null:
        return null();
    }
}

void JsonCursor::end() {
    skip_blanks();
    if (_at != _end) fail("something follows");
}

// --- simple values

void JsonCursor::literal(std::string_view word) {
    if (!std::string_view(_at, _end).starts_with(word)) fail("a value is missing");
    _at += word.size();
}

void JsonCursor::null() { literal("null"); }

bool JsonCursor::boolean() {
    const bool value = *_at == 't';
    literal(value ? "true" : "false");
    return value;
}

void JsonCursor::digits() {
    if (_at == _end || !is_digit(*_at)) fail("a digit is missing");
    while (_at != _end && is_digit(*_at)) ++_at;
}

JsonCursor::Number JsonCursor::number() {
    const char* const start = _at;
    take('-');
    if (!take('0')) digits(); // nothing follows a zero in front: it is then no comma that comes next
    bool isInteger = true;
    if (take('.')) {
        isInteger = false;
        digits();
    }
    if (take('e') || take('E')) {
        isInteger = false;
        if (!take('+')) take('-');
        digits();
    }
    return {{start, _at}, isInteger};
}

// --- strings

std::string_view JsonCursor::string() {
    const char* const start = ++_at;
    while (_at != _end && is_plain(*_at)) ++_at;
    if (_at == _end || *_at != '"') return long_string(start);
    return {start, _at++};
}

/// A string that begins at `start` and is plain up to here.
std::string_view JsonCursor::long_string(const char* start) {
    _room.assign(start, _at);
    while (!take('"')) {
        if (_at == _end) fail("a string has no end");
        if (take('\\')) {
            escape();
            continue;
        }
        if (static_cast<unsigned char>(*_at) < 0x20) fail("a control character in a string");
        const size_t length = first_code_point({_at, _end}).length;
        if (length == 0) fail("a string is no UTF-8");
        _room.append(_at, length);
        _at += length;
    }
    return _room;
}

/// Takes what follows a backslash.
void JsonCursor::escape() {
    constexpr std::string_view letters = "\"\\/bfnrt", meanings = "\"\\/\b\f\n\r\t";
    if (_at == _end) fail("a string has no end");
    if (const size_t letter = letters.find(*_at); letter != letters.npos) {
        _room += meanings[letter];
        ++_at;
        return;
    }
    if (!take('u')) fail("an unknown escape");
    char32_t c = code_unit();
    if (c >= 0xD800 && c < 0xE000) {
        if (c >= 0xDC00 || !take('\\') || !take('u')) fail("half a pair of surrogates");
        const unsigned low = code_unit();
        if (low < 0xDC00 || low >= 0xE000) fail("half a pair of surrogates");
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
    }
    append_utf8(c, _room);
}

/// Four hexadecimal digits.
unsigned JsonCursor::code_unit() {
    unsigned value = 0;
    if (_end - _at < 4 || std::from_chars(_at, _at + 4, value, 16).ptr != _at + 4) fail("four digits are missing");
    _at += 4;
    return value;
}

} // namespace Inspect
