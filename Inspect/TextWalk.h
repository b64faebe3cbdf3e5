// The walk that renders a message for logs. The form is told in SafeText.h.
#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstring>
#include <string_view>

#include "Backend/Velmora/Enumeration.h"
#include "Inspect/Display.h"
#include "Inspect/MessageTable.h"
#include "Inspect/SafeText.h"
#include "Inspect/Secrets.h"
#include "Inspect/Utf8.h"

namespace Inspect::detail {

using namespace Velmora;

inline constexpr std::string_view CUT = "...[cut]";

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

class TextRenderer {
  public:
    TextRenderer(char* begin, char* end, const Display& display) : _text(begin, end), _display(display) {}

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
        size_t i = 0;
        fields(of<T>{}, [&](const char* name, auto member, auto encoding) {
            if (i != 0) _text.put(" ");
            _text.put(name);
            _text.put("=");
            if (_display.secrets == Secrets::hide && is_secret<T>(member))
                _text.put(HIDDEN);
            else if (!show_time<T>(i, value.*member))
                show(encoding, value.*member);
            ++i;
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
    /// The value of that field of a T. False if it is no time, or times are shown as numbers.
    template <class T>
    bool show_time(size_t field, const auto& v) {
        if constexpr (std::same_as<std::decay_t<decltype(v)>, int64_t>) {
            if (_display.showTime == nullptr || tables::type_of<T>().fields[field].station.empty()
                || !Display::is_time(v))
                return false;
            std::string text;
            _display.showTime(v, text);
            _text.put(text);
            return true;
        }
        return false;
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

    void show_characters(std::string_view rest); ///< with escapes
    void show_character(CodePoint c, std::string_view bytes);

    BoundedText _text;
    const Display& _display;
};

template <class T>
constexpr Renderer entry(Velmora::of<Renderer>, Velmora::of<T>) {
    return {[](const void* message, char* begin, char* end, const Display& display) {
        return TextRenderer(begin, end, display).message(typeNotes(of<T>{}).name, *static_cast<const T*>(message));
    }};
}

} // namespace Inspect::detail
