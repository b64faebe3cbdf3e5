#include "Inspect/SafeText.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstring>
#include <string_view>

#include "Backend/Velmora/Enumeration.h"
#include "Inspect/Display.h"
#include "Inspect/IdTable.h"
#include "Inspect/Secrets.h"
#include "Inspect/Utf8.h"

namespace Inspect {
namespace {

using namespace Velmora;

constexpr std::string_view CUT = "...[cut]";

/// Text in a bounded buffer. A piece is written whole or not at all; with the first that does not fit, the text goes
/// back to the last piece that leaves room for the mark, and ends.
class BoundedText {
  public:
    BoundedText(char* begin, char* end) : _begin(begin), _at(begin), _end(end), _lastWithMark(begin) {}

    void put(std::string_view piece) {
        if (_isCut || piece.empty()) return;
        if (piece.size() > room(_at)) {
            _isCut = true;
            _at = _lastWithMark;
            const size_t size = std::min(CUT.size(), room(_at)); // a tiny buffer cuts the mark, too
            if (size != 0) std::memcpy(_at, CUT.data(), size);
            _at += size;
            return;
        }
        std::memcpy(_at, piece.data(), piece.size());
        _at += piece.size();
        if (room(_at) >= CUT.size()) _lastWithMark = _at;
    }

    /// Whether a piece of that size leaves room for the mark.
    bool takes_with_mark(size_t size) const { return room(_at) >= size + CUT.size(); }

    bool is_cut() const { return _isCut; }
    Rendered rendered() const { return {static_cast<size_t>(_at - _begin), _isCut}; }

  private:
    size_t room(const char* at) const { return static_cast<size_t>(_end - at); }

    char* _begin;
    char* _at;
    char* _end;
    char* _lastWithMark; // after the last piece that leaves room for the mark
    bool _isCut = false;
};

class Renderer {
  public:
    Renderer(char* begin, char* end, const Display& display) : _text(begin, end), _display(display) {}

    template <class T>
    Rendered message(const char* name, const T& value) {
        _text.put("<");
        _text.put(name);
        _text.put(" ");
        show_fields(value);
        _text.put(">");
        return _text.rendered();
    }

    Rendered characters(std::string_view bytes) {
        show_characters(bytes);
        return _text.rendered();
    }

  private:
    template <class T>
    void show_fields(const T& value) {
        bool isFirst = true;
        fields(of<T>{}, [&](const char* name, auto member, auto encoding) {
            if (!isFirst) _text.put(" ");
            isFirst = false;
            _text.put(name);
            _text.put("=");
            if (_display.secrets == Secrets::hide && is_secret<T>(member))
                _text.put(HIDDEN);
            else
                show(encoding, value.*member);
            return !_text.is_cut();
        });
    }

    template <class Encoding, class T>
    void show(Encoding encoding, const T& v) {
        if constexpr (Vector<T>) {
            _text.put("[");
            for (size_t i = 0; i < v.size() && !_text.is_cut(); ++i) {
                if (i != 0) _text.put(" ");
                show(encoding, v[i]);
            }
            _text.put("]");
        } else if constexpr (std::same_as<Encoding, price_t>) {
            show_price(v);
        } else {
            show(v);
        }
    }
    void show(std::same_as<bool> auto v) { _text.put(v ? "T" : "F"); }
    void show_price(int64_t v) {
        if (_display.priceScale == 1)
            show(v);
        else
            _text.put(scaled_text(v, _display.priceScale));
    }
    void show(std::same_as<int64_t> auto v) {
        if (const std::string_view sentinel = sentinelName(v); !sentinel.empty())
            _text.put(sentinel);
        else
            _text.put(std::to_string(v));
    }
    template <std::integral I>
    requires(!std::same_as<I, bool> && !std::same_as<I, int64_t>) void show(I v) { _text.put(std::to_string(v)); }
    void show(std::floating_point auto v) {
        char digits[32]; // as few as tell it from its neighbours
        _text.put({digits, std::to_chars(digits, digits + sizeof digits, v).ptr});
    }
    void show(Enumerator auto v) {
        if (const char* const name = enumeratorName<EnumerationOf<decltype(v)>>(v))
            _text.put(name);
        else
            show(static_cast<int32_t>(v));
    }
    template <Composite T>
    void show(const T& v) {
        _text.put("(");
        show_fields(v);
        _text.put(")");
    }
    void show(const String auto& v) {
        _text.put("\"");
        show_characters({v.c_str(), v.size()});
        _text.put("\"");
    }

    void show_characters(std::string_view rest) {
        while (!rest.empty() && !_text.is_cut()) {
            size_t plain = 0;
            while (plain < rest.size() && is_plain(rest[plain])) ++plain;
            if (plain != 0 && _text.takes_with_mark(plain)) { // as good as one by one
                _text.put(rest.substr(0, plain));
                rest.remove_prefix(plain);
                continue;
            }
            const CodePoint first = first_code_point(rest);
            const size_t length = std::max<size_t>(first.length, 1);
            show_character(first, rest.substr(0, length));
            rest.remove_prefix(length);
        }
    }

    /// Whether the character stands as it is, at a glance.
    static bool is_plain(char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; }

    void show_character(CodePoint c, std::string_view bytes) {
        if (c.length != 0) {
            switch (c.value) {
            case '"':
                return _text.put("\\\"");
            case '\\':
                return _text.put("\\\\");
            case '\n':
                return _text.put("\\n");
            case '\r':
                return _text.put("\\r");
            case '\t':
                return _text.put("\\t");
            }
            if (is_harmless(c.value)) return _text.put(bytes);
        }
        for (const char byte : bytes) {
            const auto b = static_cast<unsigned char>(byte);
            const char escape[] = {'\\', 'x', HEX_DIGITS[b >> 4], HEX_DIGITS[b & 15]};
            _text.put({escape, sizeof escape});
        }
    }

    BoundedText _text;
    const Display& _display;
};

template <class T>
Rendered render_as(const char* name, const void* message, char* begin, char* end, const Display& display) {
    return Renderer(begin, end, display).message(name, *static_cast<const T*>(message));
}

struct Entry {
    const char* name;
    Rendered (*render)(const char* name, const void* message, char* begin, char* end, const Display& display);
};
constexpr IdTable<Entry> renderers([]<class T>(of<T>, const char* name) { return Entry{name, &render_as<T>}; });

} // namespace

Rendered render(MsgType_t id, const void* message, char* begin, char* end, Secrets secrets) {
    return render(id, message, begin, end, Display{.secrets = secrets});
}

Rendered render(MsgType_t id, const void* message, char* begin, char* end, const Display& display) {
    if (const Entry* const entry = renderers.find(id)) return entry->render(entry->name, message, begin, end, display);
    BoundedText text(begin, end);
    text.put("<unknown message ");
    text.put(std::to_string(id));
    text.put(">");
    return text.rendered();
}

void append_safe(std::string_view bytes, std::string& text) {
    const size_t before = text.size();
    text.resize(before + 4 * bytes.size()); // no byte takes more
    const Display display;
    Renderer renderer(text.data() + before, text.data() + text.size(), display);
    text.resize(before + renderer.characters(bytes).size);
}

void append_visible(std::string_view bytes, std::string& text) {
    while (!bytes.empty()) {
        const CodePoint first = first_code_point(bytes);
        const std::string_view character = bytes.substr(0, std::max<size_t>(first.length, 1));
        if (first.length != 0 && is_harmless(first.value))
            text += character;
        else
            append_safe(character, text);
        bytes.remove_prefix(character.size());
    }
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    append_safe(text, result);
    return result + '"';
}

} // namespace Inspect
