#include "Inspect/Json.h"

#include <charconv>
#include <concepts>
#include <limits>
#include <set>
#include <vector>

#include <nlohmann/json.hpp>

#include "Backend/Velmora/Enumeration.h"
#include "Inspect/IdTable.h"
#include "Inspect/Secrets.h"
#include "Inspect/Utf8.h"

namespace Inspect {
namespace {

using namespace Velmora;
using nlohmann::json;

/// The path of a value while reading: a chain of steps on the stack, made a text only when there is an error.
struct Path {
    const Path* outer = nullptr;
    const char* name = nullptr; ///< null for an element
    size_t index = 0;

    std::string text() const {
        if (outer == nullptr) return "";
        std::string before = outer->text();
        if (name == nullptr) return before + '[' + std::to_string(index) + ']';
        return before.empty() ? name : before + '.' + name;
    }
    [[noreturn]] void fail(const std::string& reason) const { throw JsonError(text(), reason); }
};

// --- texts: any bytes as valid UTF-8

std::string unescaped(std::string_view text, const Path& path) {
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

// --- writing

/// Writes the text itself: a tree of values first, as for reading, takes many times as long.
class Writer {
  public:
    Writer(std::string& text, Integers integers, const Display& display)
        : _text(text), _integers(integers), _display(display) {}

    template <Composite T>
    void operator()(const T& v) {
        char before = '{';
        fields(of<T>{}, [&](const char* name, auto member, auto encoding) {
            _text += before;
            before = ',';
            (_text += '"').append(name).append("\":");
            if (_display.secrets == Secrets::hide && is_secret<T>(member))
                _text += "\"***\"";
            else if constexpr (std::same_as<decltype(encoding), price_t>)
                price(v.*member);
            else
                (*this)(v.*member);
            return true;
        });
        _text += '}';
    }
    void operator()(const Vector auto& v) {
        _text += '[';
        for (size_t i = 0; i < v.size(); ++i) {
            if (i != 0) _text += ',';
            (*this)(v[i]);
        }
        _text += ']';
    }
    void operator()(const String auto& v) {
        if (v.empty_()) {
            _text += "null";
            return;
        }
        _text += '"';
        for (std::string_view rest(v.c_str(), v.size()); !rest.empty();) {
            size_t plain = 0;
            while (plain < rest.size() && is_plain(rest[plain])) ++plain;
            _text.append(rest, 0, plain);
            rest.remove_prefix(plain);
            if (!rest.empty()) rest.remove_prefix(escape(rest));
        }
        _text += '"';
    }
    template <Enumerator E>
    void operator()(E v) {
        if (const char* const name = enumeratorName<EnumerationOf<E>>(v))
            quote(name);
        else
            number(static_cast<int32_t>(v));
    }
    void operator()(std::same_as<bool> auto v) { _text += v ? "true" : "false"; }
    void operator()(std::same_as<int64_t> auto v) {
        if (const std::string_view sentinel = sentinelName(v); !sentinel.empty())
            quote(sentinel);
        else if (_integers == Integers::strings)
            _text += '"', number(v), _text += '"';
        else
            number(v);
    }
    template <std::signed_integral I>
    requires(sizeof(I) < sizeof(int64_t)) void operator()(I v) { number(v); }

  private:
    static bool is_plain(char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\';
    }

    /// Writes the first character, which is not plain, and returns its bytes.
    size_t escape(std::string_view rest) {
        const size_t length = first_code_point(rest).length;
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
        else if (byte < 0x20)
            _text.append({'\\', 'u', '0', '0', HEX_DIGITS[byte >> 4], HEX_DIGITS[byte & 15]});
        else
            _text.append(rest, 0, length);
        return length;
    }

    void price(int64_t v) {
        if (_display.priceScale == 1)
            (*this)(v);
        else
            quote(scaled_text(v, _display.priceScale));
    }

    void quote(std::string_view plain) { (_text += '"').append(plain) += '"'; }

    void number(int64_t v) {
        char digits[20];
        _text.append(digits, std::to_chars(digits, digits + sizeof digits, v).ptr);
    }

    std::string& _text;
    Integers _integers;
    const Display& _display;
};

// --- reading

template <class T>
void read(const json& j, T& v, const Path& path);

template <Composite T>
void read_record(const json& j, T& v, const Path& path) {
    if (!j.is_object()) path.fail("not an object");
    std::set<std::string_view> known;
    fields(of<T>{}, [&](const char* name, auto member, auto) {
        const Path inner{&path, name};
        const auto found = j.find(name);
        if (found == j.end()) inner.fail("missing");
        read(*found, v.*member, inner);
        known.insert(name);
        return true;
    });
    if (j.size() == known.size()) return;
    for (const auto& [name, value] : j.items())
        if (!known.contains(name)) Path{&path, name.c_str()}.fail("unknown name");
}

template <std::integral T>
T read_integer(const json& j, const Path& path) {
    if (!j.is_number_integer()) path.fail("not an integer");
    constexpr int64_t min = std::numeric_limits<T>::min(), max = std::numeric_limits<T>::max();
    const bool isTooLarge = j.is_number_unsigned() && j.get<uint64_t>() > static_cast<uint64_t>(max);
    const auto value = j.get<int64_t>();
    if (isTooLarge || value < min || value > max)
        path.fail("not in " + std::to_string(min) + ".." + std::to_string(max));
    return static_cast<T>(value);
}

int64_t read_quantity(const json& j, const Path& path) {
    if (!j.is_string()) return read_integer<int64_t>(j, path);
    const auto& text = j.get_ref<const std::string&>();
    for (const int64_t sentinel : {Velmora::MAX, NMA, NDA, NA})
        if (text == sentinelName(sentinel)) return sentinel;
    int64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    if (std::to_string(value) != text) path.fail("not an integer of 64 bits"); // nor with zeros in front, or beyond
    return value;
}

template <Enumerator E>
E read_enumerator(const json& j, const Path& path) {
    if (!j.is_string()) return static_cast<E>(read_integer<int32_t>(j, path));
    const E* found = nullptr;
    E value{};
    enumerators(of<EnumerationOf<E>>{}, [&](const char* name, E enumerator) {
        if (j.get_ref<const std::string&>() != name) return;
        value = enumerator;
        found = &value;
    });
    if (found == nullptr) path.fail(std::string("no enumerator of ") + EnumerationOf<E>::Name);
    return value;
}

template <class T>
void read(const json& j, T& v, const Path& path) {
    if constexpr (Composite<T>) {
        read_record(j, v, path);
    } else if constexpr (Vector<T>) {
        if (!j.is_array()) path.fail("not an array");
        v.resize(j.size());
        for (size_t i = 0; i < j.size(); ++i) read(j[i], v[i], {&path, nullptr, i});
    } else if constexpr (String<T>) {
        if (j.is_null()) return; // stays as constructed, never stored
        if (!j.is_string()) path.fail("not a string");
        v = unescaped(j.get_ref<const std::string&>(), path);
    } else if constexpr (Enumerator<T>) {
        v = read_enumerator<T>(j, path);
    } else if constexpr (std::same_as<T, bool>) {
        if (!j.is_boolean()) path.fail("not a boolean");
        v = j.get<bool>();
    } else if constexpr (std::same_as<T, int64_t>) {
        v = read_quantity(j, path);
    } else {
        v = read_integer<T>(j, path);
    }
}

/// Watches a text being parsed for names given twice in an object: the parser itself keeps the last one.
class NamesOnce {
  public:
    bool operator()(int, json::parse_event_t event, json& parsed) {
        switch (event) {
        case json::parse_event_t::object_start:
        case json::parse_event_t::array_start:
            _levels.push_back({event == json::parse_event_t::array_start, 0, "", {}});
            break;
        case json::parse_event_t::key:
            _levels.back().name = parsed.get<std::string>();
            if (!_levels.back().names.insert(_levels.back().name).second) throw JsonError(path(), "given twice");
            break;
        case json::parse_event_t::object_end:
        case json::parse_event_t::array_end:
            _levels.pop_back();
            [[fallthrough]];
        case json::parse_event_t::value:
            if (!_levels.empty()) ++_levels.back().index;
        }
        return true;
    }

  private:
    struct Level {
        bool isArray;
        size_t index; ///< of the element being parsed
        std::string name;
        std::set<std::string> names;
    };

    std::string path() const {
        std::string text;
        for (const Level& level : _levels) {
            if (level.isArray)
                text += '[' + std::to_string(level.index) + ']';
            else
                text += (text.empty() ? "" : ".") + level.name;
        }
        return text;
    }

    std::vector<Level> _levels;
};

json parse(std::string_view text) {
    NamesOnce watch;
    try {
        return json::parse(
            text, [&](int depth, json::parse_event_t event, json& parsed) { return watch(depth, event, parsed); });
    } catch (const json::exception& e) {
        throw JsonError("", e.what());
    }
}

struct Entry {
    void (*write)(const void* message, Writer& writer);
    void (*read)(const json& j, void* message);
};
constexpr IdTable<Entry> entries([]<class T>(of<T>, const char*) {
    return Entry{[](const void* message, Writer& writer) { writer(*static_cast<const T*>(message)); },
                 [](const json& j, void* message) { read(j, *static_cast<T*>(message), Path{}); }};
});

const Entry& entry_of(MsgType_t id) {
    const Entry* const entry = entries.find(id);
    if (entry == nullptr) throw JsonError("", "unknown identifier " + std::to_string(id));
    return *entry;
}

} // namespace

std::string to_json(MsgType_t id, const void* message, Integers integers) {
    std::string text;
    append_json(id, message, integers, Display(), text);
    return text;
}

void append_json(MsgType_t id, const void* message, Integers integers, const Display& display, std::string& text) {
    Writer writer(text, integers, display);
    entry_of(id).write(message, writer);
}

void from_json(MsgType_t id, std::string_view json, void* message) {
    const Entry& entry = entry_of(id);
    entry.read(parse(json), message);
}

} // namespace Inspect
