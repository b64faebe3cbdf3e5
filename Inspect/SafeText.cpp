#include "Inspect/SafeText.h"

#include <algorithm>
#include <concepts>
#include <cstring>
#include <string_view>

#include "Backend/Velmora/Enumeration.h"
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

    bool isCut() const { return _isCut; }
    Rendered rendered() const { return {static_cast<size_t>(_at - _begin), _isCut}; }

  private:
    size_t room(const char* at) const { return static_cast<size_t>(_end - at); }

    char* _begin;
    char* _at;
    char* _end;
    char* _lastWithMark; // behind the last piece that leaves room for the mark
    bool _isCut = false;
};

/// Whether a code point may stand in a line as it is: not control characters, nor the invisible ones that separate
/// lines or change the direction of what follows.
bool isHarmless(char32_t c) {
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) return false;
    if (c == 0x061C || c == 0xFEFF) return false;
    if (c >= 0x200B && c <= 0x200F) return false;
    if (c >= 0x2028 && c <= 0x202E) return false;
    return c < 0x2060 || c > 0x206F;
}

/// Passes the text to `put` character by character, escaped, until that returns false.
template <class Put>
void putEscaped(std::string_view text, Put put) {
    while (!text.empty()) {
        const CodePoint first = first_code_point(text);
        const std::string_view bytes = text.substr(0, std::max<size_t>(first.length, 1));
        text.remove_prefix(bytes.size());
        const std::string_view named = first.length == 0     ? ""
                                       : first.value == '"'  ? "\\\""
                                       : first.value == '\\' ? "\\\\"
                                       : first.value == '\n' ? "\\n"
                                       : first.value == '\r' ? "\\r"
                                       : first.value == '\t' ? "\\t"
                                                             : "";
        if (!named.empty() || (first.length != 0 && isHarmless(first.value))) {
            if (!put(named.empty() ? bytes : named)) return;
            continue;
        }
        for (const char byte : bytes) {
            const auto b = static_cast<unsigned char>(byte);
            const char escape[] = {'\\', 'x', HEX_DIGITS[b >> 4], HEX_DIGITS[b & 15]};
            if (!put(std::string_view(escape, sizeof escape))) return;
        }
    }
}

class Renderer {
  public:
    Renderer(char* begin, char* end, Secrets secrets) : _text(begin, end), _secrets(secrets) {}

    template <class T>
    Rendered message(const char* name, const T& value) {
        _text.put("<");
        _text.put(name);
        _text.put(" ");
        showFields(value);
        _text.put(">");
        return _text.rendered();
    }

  private:
    template <class T>
    void showFields(const T& value) {
        bool isFirst = true;
        fields(of<T>{}, [&](const char* name, auto member, auto) {
            if (!isFirst) _text.put(" ");
            isFirst = false;
            _text.put(name);
            _text.put("=");
            if (_secrets == Secrets::hide && is_secret<T>(member))
                _text.put("***");
            else
                show(value.*member);
            return !_text.isCut();
        });
    }

    void show(std::same_as<bool> auto v) { _text.put(v ? "T" : "F"); }
    void show(std::same_as<int64_t> auto v) {
        if (const char* const sentinel = sentinelName(v))
            _text.put(sentinel);
        else
            _text.put(std::to_string(v));
    }
    template <std::signed_integral I>
    requires(sizeof(I) < sizeof(int64_t)) void show(I v) { _text.put(std::to_string(v)); }
    void show(Enumerator auto v) {
        if (const char* const name = enumeratorName<EnumerationOf<decltype(v)>>(v))
            _text.put(name);
        else
            show(static_cast<int32_t>(v));
    }
    template <Composite T>
    void show(const T& v) {
        _text.put("(");
        showFields(v);
        _text.put(")");
    }
    void show(const Vector auto& v) {
        _text.put("[");
        for (size_t i = 0; i < v.size() && !_text.isCut(); ++i) {
            if (i != 0) _text.put(" ");
            show(v[i]);
        }
        _text.put("]");
    }
    void show(const String auto& v) {
        _text.put("\"");
        putEscaped({v.c_str(), v.size()}, [&](std::string_view piece) {
            _text.put(piece);
            return !_text.isCut();
        });
        _text.put("\"");
    }

    BoundedText _text;
    Secrets _secrets;
};

template <class T>
Rendered renderAs(const char* name, const void* message, char* begin, char* end, Secrets secrets) {
    return Renderer(begin, end, secrets).message(name, *static_cast<const T*>(message));
}

struct Entry {
    const char* name;
    Rendered (*render)(const char* name, const void* message, char* begin, char* end, Secrets secrets);
};
constexpr IdTable<Entry> renderers([]<class T>(of<T>, const char* name) { return Entry{name, &renderAs<T>}; });

} // namespace

Rendered render(MsgType_t id, const void* message, char* begin, char* end, Secrets secrets) {
    if (const Entry* const entry = renderers.find(id)) return entry->render(entry->name, message, begin, end, secrets);
    BoundedText text(begin, end);
    text.put("<unknown message ");
    text.put(std::to_string(id));
    text.put(">");
    return text.rendered();
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    putEscaped(text, [&](std::string_view piece) {
        result += piece;
        return true;
    });
    return result + '"';
}

} // namespace Inspect
