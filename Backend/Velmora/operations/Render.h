// The text of a value's fields, for people who grep logs.
//
//   fields      name=value, separated by one blank
//   records     (name=value ...)            vectors    [value value ...]
//   int64_t     the sentinels by name: MAX, NMA, NDA, NA
//   enumerations by name, a value without a name by number
//   the rest    as the text codec writes it: strings in double quotes, booleans T or F
//
// On several lines every field stands on a line of its own, indented by two blanks a level; vectors of numbers and
// strings stay on one line.
#pragma once

#include <concepts>

#include "Backend/Common/FastOStream.h"
#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"
#include "Backend/Velmora/TextCodec.h"

namespace Velmora {

class FieldPrinter {
  public:
    using Codec = TextCodec<Quillon::FastOStream>;

    /// `indent`: blanks in front of the outermost fields when printing on several lines. The codec must outlive the
    /// printer.
    FieldPrinter(Codec& codec, bool multiline, int indent) : _codec(codec), _multiline(multiline), _indent(indent) {}

    /// All fields of a record or message, without brackets or a line end around them.
    template <class T>
    void render(const T& value) {
        bool first = true;
        fields(of<T>{}, [&](const char* name, auto member, auto encoding) {
            separate(first);
            first = false;
            _codec.stream() << name << '=';
            show(encoding, value.*member);
            return true;
        });
    }

  private:
    void show(plain_t, std::same_as<bool> auto v) { _codec.write_bool(v); }
    void show(plain_t, std::same_as<int8_t> auto v) { _codec.write_int8(static_cast<char>(v)); }
    void show(plain_t, std::same_as<int16_t> auto v) { _codec.write_int16(v); }
    void show(plain_t, std::same_as<int32_t> auto v) { _codec.write_int32(v); }
    void show(plain_t, std::same_as<int64_t> auto v) { showQuantity(v); }
    void show(price_t, std::same_as<int64_t> auto v) { showQuantity(v); }
    void show(plain_t, const String auto& v) { _codec.write_string(v); }
    void show(crypt_t, const String auto& v) { _codec.write_cryptstring(v); }
    void show(padding_t, const String auto& v) { _codec.write_string(v); }

    void show(plain_t, Enumerator auto v) {
        const char* const name = enumeratorName<EnumerationOf<decltype(v)>>(v);
        if (name != nullptr)
            _codec.write_rawfield(name);
        else
            _codec.write_int32(v);
    }

    template <Composite T>
    void show(plain_t, const T& v) {
        open('(');
        render(v);
        close(')');
    }

    template <Vector V>
    void show(plain_t, const V& v) {
        if constexpr (Composite<typename V::value_type>) {
            if (!v.empty()) return showRecords(v);
        }
        _codec.stream() << '[';
        for (size_t i = 0; i < v.size(); ++i) {
            if (i != 0) _codec.stream() << ' ';
            show(plain, v[i]);
        }
        _codec.stream() << ']';
    }

    template <Vector V>
    void showRecords(const V& v) {
        open('[');
        for (size_t i = 0; i < v.size(); ++i) {
            separate(i == 0);
            show(plain, v[i]);
        }
        close(']');
    }

    void showQuantity(int64_t v) {
        if (const char* const sentinel = sentinelName(v))
            _codec.write_rawfield(sentinel);
        else
            _codec.write_int64(v);
    }

    // Layout. On one line, brackets and blanks only; on several, every field and every record on a line of its own.

    /// What stands before a field or a record: nothing before the first on one line.
    void separate(bool isFirst) {
        if (!isFirst) _codec.stream() << (_multiline ? '\n' : ' ');
        if (_multiline) _codec.stream().write_nchars(' ', static_cast<size_t>(_indent));
    }
    void open(char bracket) {
        _codec.stream() << bracket;
        if (!_multiline) return;
        _codec.stream() << '\n';
        _indent += 2;
    }
    void close(char bracket) {
        if (_multiline) {
            _indent -= 2;
            separate(false);
        }
        _codec.stream() << bracket;
    }

    Codec& _codec;
    bool _multiline;
    int _indent;
};

} // namespace Velmora
