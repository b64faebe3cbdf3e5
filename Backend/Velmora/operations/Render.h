// The text of a value's fields, for people who grep logs.
//
//   fields        name=value, separated by one blank
//   records       (name=value ...)            vectors    [value value ...]
//   int64_t       the sentinels by name: MAX, NMA, NDA, NA
//   enumerations  by name, a value without a name by number
//   the rest      as the text codec writes it: strings and blobs in double quotes, booleans T or F
//
// On several lines every field stands on a line of its own, indented by two blanks a level; vectors of numbers and
// strings stay on one line.
#pragma once

#include <concepts>
#include <cstring>
#include <typeinfo>

#include "Backend/Common/CopyBytes.h"
#include "Backend/Common/FastOStream.h"
#include "Backend/Common/Util.h"
#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"
#include "Backend/Velmora/TextCodec.h"

namespace Velmora {

// Where the text goes. A sink is passed and returned by value, so that its write position stays in a register.

/// One line, straight into the buffer: what nearly every print wants. Writes what TextCodec writes, without its calls.
class LineSink {
  public:
    explicit LineSink(char* position) : p(position) {}

    QL_FORCE_INLINE void separate(bool isFirst) {
        if (!isFirst) *p++ = ' ';
    }
    QL_FORCE_INLINE void open(char bracket) { *p++ = bracket; }
    QL_FORCE_INLINE void close(char bracket) { *p++ = bracket; }
    QL_FORCE_INLINE void character(char c) { *p++ = c; }
    QL_FORCE_INLINE void text(const char* text, size_t n) {
        std::memcpy(p, text, n);
        p += n;
    }
    /// A short text whose length is known only now: copied in place, for a call would cost more.
    QL_FORCE_INLINE void word(const char* word, size_t n) {
        Quillon::copyBytes(p, word, n);
        p += n;
    }
    QL_FORCE_INLINE void boolean(bool v) { *p++ = v ? 'T' : 'F'; }
    QL_FORCE_INLINE void integer(int32_t v) {
        if (v >= 0 && v < 10)
            *p++ = static_cast<char>('0' + v);
        else
            p = Quillon::Util::decimal(v, p);
    }
    QL_FORCE_INLINE void integer(int64_t v) { p = Quillon::Util::decimal(v, p); }
    QL_FORCE_INLINE void integer(uint64_t v) { p += Quillon::Util::ulltoa(v, p, 10); }
    QL_FORCE_INLINE void string(const bufstl::bufstring& v) {
        const char* const text = v.data(); // looked up once: the stores below could change the string
        const size_t n = v.size();
        *p++ = '"';
        word(text, n);
        *p++ = '"';
    }
    QL_FORCE_INLINE void cryptstring(const bufstl::bufstring& v) { string(v); }
    QL_FORCE_INLINE void blob(const bufstl::bufstring& v) { string(v); }
    QL_FORCE_INLINE void cryptblob(const bufstl::bufstring& v) { string(v); }

    char* p;
};

/// Any layout, through the operations of a codec that may render values its own way.
class CodecSink { // calls, not code in place: this way is rare, and there is one for every field
  public:
    using Codec = TextCodec<Quillon::FastOStream>;

    CodecSink(Codec& codec, bool multiline, int indent) : _codec(&codec), _indent(indent), _multiline(multiline) {}

    [[gnu::noinline]] void separate(bool isFirst) {
        if (!isFirst) character(_multiline ? '\n' : ' ');
        if (_multiline)
            for (int i = 0; i < _indent; ++i) character(' ');
    }
    [[gnu::noinline]] void open(char bracket) {
        character(bracket);
        if (!_multiline) return;
        character('\n');
        _indent += 2;
    }
    [[gnu::noinline]] void close(char bracket) {
        if (_multiline) {
            _indent -= 2;
            separate(false);
        }
        character(bracket);
    }
    [[gnu::noinline]] void character(char c) {
        const char text[] = {c, '\0'};
        _codec->write_data(text);
    }
    [[gnu::noinline]] void text(const char* text, size_t) { _codec->write_rawfield(text); }
    void word(const char* word, size_t n) { text(word, n); }
    void boolean(bool v) { _codec->write_bool(v); }
    void integer(int8_t v) { _codec->write_int8(static_cast<char>(v)); }
    void integer(int16_t v) { _codec->write_int16(v); }
    void integer(int32_t v) { _codec->write_int32(v); }
    void integer(int64_t v) { _codec->write_int64(v); }
    void integer(uint8_t v) { _codec->write_uint8(v); }
    void integer(uint16_t v) { _codec->write_uint16(v); }
    void integer(uint32_t v) { _codec->write_uint32(v); }
    void integer(uint64_t v) { _codec->write_uint64(v); }
    void floating(float v) { _codec->write_float4(v); }
    void floating(double v) { _codec->write_float8(v); }
    void string(const bufstl::bufstring& v) { _codec->write_string(v); }
    void cryptstring(const bufstl::bufstring& v) { _codec->write_cryptstring(v); }
    void blob(const bufstl::bufstring& v) { _codec->write_blob(v); }
    void cryptblob(const bufstl::bufstring& v) { _codec->write_cryptblob(v); }

  private:
    Codec* _codec;
    int _indent;
    bool _multiline;
};

/// All fields of `value`, without brackets around them. Returns the sink after them.
template <class Sink, class T>
Sink renderFields(Sink sink, const T& value);

// One overload per kind of value.

template <class Sink>
QL_FORCE_INLINE void show(Sink& sink, plain_t, std::same_as<bool> auto v) {
    sink.boolean(v);
}
template <class Sink, std::signed_integral T>
requires(sizeof(T) < sizeof(int64_t)) QL_FORCE_INLINE void show(Sink& sink, plain_t, T v) { sink.integer(v); }
template <class Sink, class Encoding, std::unsigned_integral T>
requires(!std::same_as<T, bool>) QL_FORCE_INLINE void show(Sink& sink, Encoding, T v) {
    if constexpr (std::same_as<Sink, LineSink>)
        sink.integer(static_cast<std::conditional_t<(sizeof(T) > 2), uint64_t, int32_t>>(v));
    else
        sink.integer(v);
}
template <class Sink>
void show(Sink& sink, plain_t, std::floating_point auto v) {
    sink.floating(v);
}
template <class Sink, class Encoding>
QL_FORCE_INLINE void show(Sink& sink, Encoding, std::same_as<int64_t> auto v) {
    if (const std::string_view sentinel = sentinelName(v); !sentinel.empty())
        sink.word(sentinel.data(), sentinel.size());
    else
        sink.integer(v);
}
template <class Sink, class Encoding>
QL_FORCE_INLINE void show(Sink& sink, Encoding, const String auto& v) {
    if constexpr (std::is_same_v<Encoding, crypt_t>)
        sink.cryptstring(v);
    else if constexpr (std::is_same_v<Encoding, blob_t>)
        sink.blob(v);
    else if constexpr (std::is_same_v<Encoding, cryptblob_t>)
        sink.cryptblob(v);
    else
        sink.string(v);
}
template <class Sink, Enumerator E>
QL_FORCE_INLINE void show(Sink& sink, plain_t, E v) {
    if (const char* const name = enumeratorName<EnumerationOf<E>>(v))
        sink.word(name, enumeratorNameLength<EnumerationOf<E>>(v));
    else
        sink.integer(static_cast<int32_t>(v));
}
template <class Sink>
QL_FORCE_INLINE void show(Sink& sink, plain_t, const Composite auto& v) {
    sink.open('(');
    sink = renderFields(sink, v);
    sink.close(')');
}
template <class Sink, class Encoding, Vector V>
QL_FORCE_INLINE void show(Sink& sink, Encoding encoding, const V& v) {
    if constexpr (Composite<typename V::value_type>) {
        if (!v.empty()) {
            sink.open('[');
            for (size_t i = 0; i < v.size(); ++i) {
                sink.separate(i == 0);
                show(sink, plain, v[i]);
            }
            return sink.close(']');
        }
    }
    sink.character('[');
    for (size_t i = 0; i < v.size(); ++i) {
        if (i != 0) sink.character(' ');
        show(sink, encoding, v[i]);
    }
    sink.character(']');
}

template <class Sink, class T>
Sink renderFields(Sink sink, const T& value) {
    bool isFirst = true;
    fields(of<T>{}, [&](const char* name, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
        sink.separate(isFirst);
        isFirst = false;
        sink.text(name, __builtin_strlen(name));
        sink.character('=');
        show(sink, encoding, value.*member);
        return true;
    });
    return sink;
}

/// Whether there are floating-point numbers in a T. Their text depends on the stream, which a LineSink does not know.
template <class T>
consteval bool holdsFloats() {
    if constexpr (Vector<T>)
        return holdsFloats<typename T::value_type>();
    else if constexpr (Composite<T>)
        return !fields(of<T>{},
                       [](const char*, auto member, auto) { return !holdsFloats<MemberType<decltype(member)>>(); });
    else
        return std::is_floating_point_v<T>;
}

/// Renders values through a codec, in the layout given.
class FieldPrinter {
  public:
    using Codec = CodecSink::Codec;

    /// `indent`: blanks in front of the outermost fields when printing on several lines. The codec must outlive the
    /// printer.
    FieldPrinter(Codec& codec, bool multiline, int indent)
        : _codec(codec),
          _multiline(multiline),
          _indent(indent),
          _isPlain(!multiline && typeid(codec) == typeid(Codec)) {} // a derived codec may render values its own way

    /// All fields of a record or message, without brackets or a line end around them.
    template <class T>
    void render(const T& value) {
        if constexpr (!holdsFloats<T>())
            if (_isPlain) {
                char* const position = _codec.stream().current();
                _codec.stream().advance(static_cast<size_t>(renderFields(LineSink(position), value).p - position));
                return;
            }
        renderFields(CodecSink(_codec, _multiline, _indent), value);
    }

  private:
    Codec& _codec;
    bool _multiline;
    int _indent;
    bool _isPlain;
};

} // namespace Velmora
