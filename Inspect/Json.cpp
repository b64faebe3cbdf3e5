#include "Inspect/Json.h"

#include <charconv>
#include <concepts>
#include <limits>
#include <set>
#include <vector>

#include <nlohmann/json.hpp>

#include "Inspect/IdTable.h"
#include "Inspect/Utf8.h"

namespace Inspect {
namespace {

using namespace Velmora;
using nlohmann::json;
using nlohmann::ordered_json;

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

std::string escaped(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const size_t length = first_code_point(bytes).length;
        if (length == 0) {
            const auto byte = static_cast<unsigned char>(bytes[0]);
            text += {'\\', 'x', HEX_DIGITS[byte >> 4], HEX_DIGITS[byte & 15]};
        } else {
            if (bytes[0] == '\\') text += '\\';
            text += bytes.substr(0, length);
        }
        bytes.remove_prefix(length != 0 ? length : 1);
    }
    return text;
}

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

class Writer {
  public:
    explicit Writer(Integers integers) : _integers(integers) {}

    template <Composite T>
    ordered_json operator()(const T& v) const {
        ordered_json object = ordered_json::object();
        fields(of<T>{}, [&](const char* name, auto member, auto) {
            object.push_back({name, (*this)(v.*member)});
            return true;
        });
        return object;
    }
    ordered_json operator()(const Vector auto& v) const {
        ordered_json array = ordered_json::array();
        for (size_t i = 0; i < v.size(); ++i) array.push_back((*this)(v[i]));
        return array;
    }
    ordered_json operator()(const String auto& v) const {
        if (v.empty_()) return nullptr;
        return escaped({v.c_str(), v.size()});
    }
    template <Enumerator E>
    ordered_json operator()(E v) const {
        ordered_json result = static_cast<int32_t>(v);
        enumerators(of<EnumerationOf<E>>{}, [&](const char* name, E value) {
            if (value == v) result = name;
        });
        return result;
    }
    ordered_json operator()(std::integral auto v) const {
        if constexpr (std::same_as<decltype(v), int64_t>) {
            if (const char* const sentinel = sentinelName(v)) return sentinel;
            if (_integers == Integers::strings) return std::to_string(v);
        }
        return v;
    }

  private:
    Integers _integers;
};

// --- reading

template <class T>
void read(const json& j, T& v, const Path& path);

template <Composite T>
void readRecord(const json& j, T& v, const Path& path) {
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
T readInteger(const json& j, const Path& path) {
    if (!j.is_number_integer()) path.fail("not an integer");
    constexpr int64_t min = std::numeric_limits<T>::min(), max = std::numeric_limits<T>::max();
    const bool isTooLarge = j.is_number_unsigned() && j.get<uint64_t>() > static_cast<uint64_t>(max);
    const auto value = j.get<int64_t>();
    if (isTooLarge || value < min || value > max)
        path.fail("not in " + std::to_string(min) + ".." + std::to_string(max));
    return static_cast<T>(value);
}

int64_t readQuantity(const json& j, const Path& path) {
    if (!j.is_string()) return readInteger<int64_t>(j, path);
    const auto& text = j.get_ref<const std::string&>();
    for (const int64_t sentinel : {Velmora::MAX, NMA, NDA, NA})
        if (text == sentinelName(sentinel)) return sentinel;
    int64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    if (std::to_string(value) != text) path.fail("not an integer of 64 bits"); // nor with zeros in front, or beyond
    return value;
}

template <Enumerator E>
E readEnumerator(const json& j, const Path& path) {
    if (!j.is_string()) return static_cast<E>(readInteger<int32_t>(j, path));
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
        readRecord(j, v, path);
    } else if constexpr (Vector<T>) {
        if (!j.is_array()) path.fail("not an array");
        v.resize(j.size());
        for (size_t i = 0; i < j.size(); ++i) read(j[i], v[i], {&path, nullptr, i});
    } else if constexpr (String<T>) {
        if (j.is_null()) return; // stays as constructed, never stored
        if (!j.is_string()) path.fail("not a string");
        v = unescaped(j.get_ref<const std::string&>(), path);
    } else if constexpr (Enumerator<T>) {
        v = readEnumerator<T>(j, path);
    } else if constexpr (std::same_as<T, bool>) {
        if (!j.is_boolean()) path.fail("not a boolean");
        v = j.get<bool>();
    } else if constexpr (std::same_as<T, int64_t>) {
        v = readQuantity(j, path);
    } else {
        v = readInteger<T>(j, path);
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
    ordered_json (*write)(const void* message, Integers integers);
    void (*read)(const json& j, void* message);
};
constexpr IdTable<Entry> entries([]<class T>(of<T>, const char*) {
    return Entry{
        [](const void* message, Integers integers) { return Writer(integers)(*static_cast<const T*>(message)); },
        [](const json& j, void* message) { read(j, *static_cast<T*>(message), Path{}); }};
});

const Entry& entryOf(MsgType_t id) {
    const Entry* const entry = entries.find(id);
    if (entry == nullptr) throw JsonError("", "unknown identifier " + std::to_string(id));
    return *entry;
}

} // namespace

std::string to_json(MsgType_t id, const void* message, Integers integers) {
    return entryOf(id).write(message, integers).dump();
}

void from_json(MsgType_t id, std::string_view json, void* message) {
    const Entry& entry = entryOf(id);
    entry.read(parse(json), message);
}

} // namespace Inspect
