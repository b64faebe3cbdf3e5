// The walks that write and read a message as JSON. The form is told in Json.h.
#pragma once

#include <bitset>
#include <charconv>
#include <cmath>
#include <concepts>
#include <limits>

#include "Backend/Velmora/Enumeration.h"
#include "Inspect/Json.h"
#include "Inspect/JsonCursor.h"
#include "Inspect/MessageTable.h"
#include "Inspect/Secrets.h"
#include "Inspect/TypeInfo.h"

namespace Inspect::detail {

using namespace Velmora;

/// JSON has no such numbers; they stand in strings.
inline std::string_view not_finite(double v) { return std::isnan(v) ? "NaN" : v > 0 ? "Infinity" : "-Infinity"; }

// --- writing

/// Writes the text itself: a tree of values first, as for reading, takes many times as long.
class JsonWriter {
  public:
    JsonWriter(std::string& text, Integers integers, const Display& display)
        : _text(text), _integers(integers), _display(display) {}

    template <Composite T>
    void operator()(const T& v) {
        char before = '{';
        fields(of<T>{}, [&](const char* name, auto member, auto encoding) {
            _text += before;
            before = ',';
            (_text += '"').append(name).append("\":");
            if (_display.secrets == Secrets::hide && is_secret<T>(member))
                quote(HIDDEN);
            else
                value(encoding, v.*member);
            return true;
        });
        _text += '}';
    }
    void operator()(const String auto& v) {
        if (v.empty_()) {
            _text += "null";
            return;
        }
        text({v.c_str(), v.size()});
    }
    void text(std::string_view rest); ///< in quotes, with escapes
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
    template <std::integral I>
    requires(sizeof(I) < sizeof(int64_t) && !std::same_as<I, bool>) void operator()(I v) { number(v); }
    void operator()(std::same_as<uint64_t> auto v) {
        if (_integers == Integers::strings)
            quote(std::to_string(v));
        else
            number(v);
    }
    /// As short as it can be to come back; with a point where it would look like an integer, which has no -0.
    void operator()(std::floating_point auto v) {
        if (!std::isfinite(v)) return quote(not_finite(v));
        char digits[32];
        const std::string_view text(digits, std::to_chars(digits, digits + sizeof digits, v).ptr);
        _text += text;
        if (text.find_first_of(".e") == text.npos) _text += ".0";
    }

  private:
    template <class Encoding, class T>
    void value(Encoding encoding, const T& v) {
        if constexpr (Vector<T>) {
            _text += '[';
            for (size_t i = 0; i < v.size(); ++i) {
                if (i != 0) _text += ',';
                value(encoding, v[i]);
            }
            _text += ']';
        } else if constexpr (std::same_as<Encoding, price_t>) {
            price(v);
        } else {
            (*this)(v);
        }
    }

    size_t escape(std::string_view rest); ///< writes the first character, which is not plain, and returns its bytes

    void price(int64_t v) {
        if (_display.priceScale == 1)
            (*this)(v);
        else if (_integers == Integers::numbers && sentinelName(v).empty())
            _text += scaled_text(v, _display.priceScale);
        else
            quote(scaled_text(v, _display.priceScale));
    }

    void quote(std::string_view plain) { (_text += '"').append(plain) += '"'; }

    void number(std::integral auto v) {
        char digits[20];
        _text.append(digits, std::to_chars(digits, digits + sizeof digits, v).ptr);
    }

    std::string& _text;
    Integers _integers;
    const Display& _display;
};

// --- reading

/// A step from the whole to a value in it. A chain of them on the stack becomes a text only when there is an error.
struct JsonPath {
    const JsonPath* outer;
    std::string_view name; ///< empty for an element
    size_t index = 0;
    JsonReading* reading = nullptr; ///< of the whole

    JsonReading& whole() const;
    std::string text() const;
    [[noreturn]] void fail(const std::string& reason) const { throw JsonError(text(), reason); }
};

/// Grows a value in the block, which fails in one way or the other: beyond what is left, or beyond the whole block.
template <class Grow>
void grow(const JsonPath& path, Grow&& grow) {
    try {
        grow();
    } catch (const std::out_of_range&) {
        throw DoesNotFit(path.text());
    } catch (const std::length_error&) {
        throw DoesNotFit(path.text());
    }
}

using Next = JsonCursor::Next;

/// Of an unknown name, which may be as long as the text, an error tells the beginning.
inline constexpr size_t MAX_SHOWN_NAME = 100;

template <std::integral T>
T read_integer(JsonCursor& json, const JsonPath& path) {
    if (json.next() != Next::number) path.fail("not an integer");
    const auto [text, isInteger] = json.number();
    if (!isInteger) path.fail("not an integer");
    T value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc())
        path.fail("not in " + std::to_string(std::numeric_limits<T>::min()) + ".."
                  + std::to_string(std::numeric_limits<T>::max()));
    return value;
}

/// An integer of 64 bits, which may stand in a string, as for readers that know none.
template <std::integral T>
T read_quantity(JsonCursor& json, const JsonPath& path) {
    if (json.next() != Next::string) return read_integer<T>(json, path);
    const std::string_view text = json.string();
    if constexpr (std::same_as<T, int64_t>)
        for (const int64_t sentinel : {Velmora::MAX, NMA, NDA, NA})
            if (text == sentinelName(sentinel)) return sentinel;
    T value = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value);
    const bool hasZeros = text.substr(text.starts_with('-')).starts_with('0') && text != "0"; // in front, or "-0"
    if (error != std::errc() || last != end || hasZeros) path.fail("not an integer of 64 bits");
    return value;
}

template <std::floating_point T>
T read_floating(JsonCursor& json, const JsonPath& path) {
    constexpr T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
    const Next next = json.next();
    if (next == Next::string) {
        const std::string_view text = json.string();
        for (const T it : {inf, -inf, nan})
            if (text == not_finite(it)) return it;
    }
    if (next != Next::number) path.fail("not a number");
    const std::string_view text = json.number().text;
    T value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc())
        path.fail("beyond the numbers of its type");
    return value;
}

template <Enumerator E>
E read_enumerator(JsonCursor& json, const EnumerationInfo& info, const JsonPath& path) {
    if (json.next() != Next::string) return static_cast<E>(read_integer<int32_t>(json, path));
    const std::string_view name = json.string();
    for (const EnumeratorInfo& it : info.enumerators)
        if (it.name == name) return static_cast<E>(it.value);
    path.fail("no enumerator of " + std::string(info.name));
}

void read_string(JsonCursor& json, bufstl::bufstring& v, const JsonPath& path);

/// The position of the field of that name; that of its neighbours' mostly, for writers keep the order. Their number if
/// there is none.
size_t field_named(std::string_view name, const TypeInfo& type, size_t expected);

/// Keeps an error for each field that was not given, unless that is allowed.
void find_missing(const std::bitset<MAX_FIELDS>& given, const TypeInfo& type, const JsonPath& path);

template <class T>
void read(JsonCursor& json, T& v, const ValueInfo& info, const JsonPath& path);

template <Composite T>
void read_record(JsonCursor& json, T& v, const TypeInfo& type, const JsonPath& path) {
    if (json.next() != Next::object) path.fail("not an object");
    std::bitset<MAX_FIELDS> given;
    size_t expected = 0;
    const auto member = [&](std::string_view name) {
        const size_t at = field_named(name, type, expected);
        if (at == type.fields.size()) JsonPath{&path, name.substr(0, MAX_SHOWN_NAME)}.fail("unknown name");
        const FieldInfo& field = type.fields[at];
        const JsonPath inner{&path, field.name};
        if (given[at]) inner.fail("given twice");
        given[at] = true;
        expected = at + 1;
        size_t i = 0;
        fields(of<T>{}, [&](const char*, auto field_, auto) {
            if (i++ != at) return true;
            read(json, v.*field_, field.value, inner);
            return false;
        });
    };
    json.object([&](std::string_view name) {
        const size_t start = json.position();
        try {
            member(name);
        } catch (const JsonError& error) {
            path.whole().keep(error, json, start);
        }
    });
    find_missing(given, type, path);
}

template <class T>
void read(JsonCursor& json, T& v, const ValueInfo& info, const JsonPath& path) {
    if constexpr (Composite<T>) {
        read_record(json, v, *info.record, path);
    } else if constexpr (Vector<T>) {
        if (json.next() != Next::array) path.fail("not an array");
        const size_t count = json.count_elements();
        grow(path, [&] { v.resize(count); }); // at once, for a block takes nothing back
        size_t i = 0;
        json.array([&] {
            if (i == count) json.fail("more elements than commas"); // cannot be; but a stranger must not find out
            const size_t start = json.position();
            try {
                read(json, v[i], *info.element, {&path, {}, i});
            } catch (const JsonError& error) {
                path.whole().keep(error, json, start);
            }
            ++i;
        });
    } else if constexpr (String<T>) {
        read_string(json, v, path);
    } else if constexpr (Enumerator<T>) {
        v = read_enumerator<T>(json, *info.enumeration, path);
    } else if constexpr (std::same_as<T, bool>) {
        if (json.next() != Next::boolean) path.fail("not a boolean");
        v = json.boolean();
    } else if constexpr (std::floating_point<T>) {
        v = read_floating<T>(json, path);
    } else if constexpr (std::same_as<T, int64_t> || std::same_as<T, uint64_t>) {
        v = read_quantity<T>(json, path);
    } else {
        v = read_integer<T>(json, path);
    }
}

template <class T>
constexpr JsonCoder entry(Velmora::of<JsonCoder>, Velmora::of<T>) {
    return {[](const void* message, JsonWriter& writer) { writer(*static_cast<const T*>(message)); },
            [](JsonCursor& json, void* message, const JsonPath& path) {
                read_record(json, *static_cast<T*>(message), tables::type_of<T>(), path);
            }};
}

} // namespace Inspect::detail
