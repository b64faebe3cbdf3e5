// The binary wire codec: a cursor over a byte range of the caller's.
//
//   plain varint   unsigned, seven bits a byte, lowest first; bit 7 says that more follow
//   zig-zag        signed v of width w as the varint of (v << 1) ^ (v >> (w - 1)), in w bits
//   special        signed 64 bits for prices and amounts. NMA, NDA, NA: the bytes 03, 05, 07. Any other u = pattern of v:
//                  the first byte holds its low five bits in bits 2 to 6; bit 7 says that u >> 5 follows as a plain varint
//   length         count up to 127: one byte. Above: two bytes, high part first, bit 7 of the first set; at most 32767
//   string         length as a varint of 16 bits (or two bytes, low first, in the fixed form), then the bytes, no terminator
//   fixed forms    little-endian, as held in memory
//
// By contract no operation stops at the end of the range or tells that it went past it: a writer sizes the range from
// the message's own limits beforehand, and a reader of bytes from strangers must have them verified. Writers never look
// at the end, and touch no byte outside their encoding. Readers of varints look at it for one purpose, to tell whether
// the eight bytes at the cursor may be loaded as one word; the value read is the same either way. So a read touches
// nothing at or beyond the end unless the encoding itself runs there.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include "Backend/Common/DumbCrypt.h"
#include "Backend/Common/Inline.h"
#include "Backend/Velmora/Wire.h"
#include "Backend/Velmora/bufstl/bufstring.h"

namespace Velmora {

class FastCodec {
  public:
    using bufstring = bufstl::bufstring;

    /// A cursor at `begin` of the range [begin, end), which the caller owns.
    FastCodec(char* begin, char* end) : _buf(begin), _range{begin, end} {}

    size_t size() const { return static_cast<size_t>(_buf - _range.begin); } ///< bytes coded so far
    bool check() const { return _buf <= _range.end; } ///< whether the cursor is still within the range
    void reset() { _buf = _range.begin; }             ///< back to the start of the range

    // For the operations that run whole messages past the range; they leave the cursor after what they coded.
    const Range& range() const { return _range; }
    char* cursor() const { return _buf; }
    void setCursor(const char* cursor) { _buf += cursor - _buf; } // a reader's cursor is one to const

    // --- varints

    /// The varint of the value's unsigned pattern.
    template <class T>
    QL_FORCE_INLINE void write_varint(T value) {
        Writer out(_buf);
        out.varint(static_cast<std::make_unsigned_t<T>>(value));
        _buf = out.p;
    }
    /// A varint of any length. Bits beyond the accumulator (32 bits wide for targets of 16 and 32 bits, else 64) are
    /// dropped.
    template <class T>
    QL_FORCE_INLINE T read_varint() {
        Reader in(_buf, _range);
        const auto value = in.varint<std::make_unsigned_t<T>>();
        setCursor(in.p);
        return static_cast<T>(value);
    }
    template <class T>
    QL_FORCE_INLINE void read_varint(T& value) {
        value = read_varint<T>();
    }

    QL_FORCE_INLINE void write_varint16_zigzag(int16_t v) { write_varint(zigzag<uint16_t>(v)); }
    QL_FORCE_INLINE void write_varint32_zigzag(int32_t v) { write_varint(zigzag<uint32_t>(v)); }
    QL_FORCE_INLINE void write_varint64_zigzag(int64_t v) { write_varint(zigzag<uint64_t>(v)); }
    QL_FORCE_INLINE void read_varint16_zigzag(int16_t& v) { v = unzigzag<int16_t>(read_varint<uint16_t>()); }
    QL_FORCE_INLINE void read_varint32_zigzag(int32_t& v) { v = unzigzag<int32_t>(read_varint<uint32_t>()); }
    QL_FORCE_INLINE void read_varint64_zigzag(int64_t& v) { v = unzigzag<int64_t>(read_varint<uint64_t>()); }

    /// The special varint. Deliberate: a negative value travels as its full two's-complement pattern, in ten bytes. The
    /// writer never sets bit 1, but the reader honours it.
    template <class T>
    QL_FORCE_INLINE void write_varint_special(T value) {
        static_assert(std::is_integral_v<T> && sizeof(T) == 8);
        Writer out(_buf);
        out.special(static_cast<int64_t>(value));
        _buf = out.p;
    }
    /// Bit 1 of the first byte complements the magnitude, for peers that set it; bit 0 alone has no meaning.
    QL_FORCE_INLINE void read_varint_special(uint64_t& pattern) {
        Reader in(_buf, _range);
        pattern = in.special();
        setCursor(in.p);
    }

    /// The encoding of prices and amounts: the special varint.
    QL_FORCE_INLINE void write_qlfloat(long long v) { write_varint_special(v); }
    QL_FORCE_INLINE long long read_qlfloat() {
        uint64_t pattern;
        read_varint_special(pattern);
        return static_cast<long long>(pattern);
    }

    // --- single bytes

    QL_FORCE_INLINE void write_bool(bool v) { write_raw(static_cast<unsigned char>(v)); }
    QL_FORCE_INLINE bool read_bool() { return read_raw<unsigned char>() != 0; } ///< any byte but 0 is true
    QL_FORCE_INLINE void write_int8(char v) { write_raw(static_cast<unsigned char>(v)); }
    QL_FORCE_INLINE char read_int8() { return static_cast<char>(read_raw<unsigned char>()); }
    QL_FORCE_INLINE void write_uint8(unsigned char v) { write_raw(v); }
    QL_FORCE_INLINE unsigned char read_uint8() { return read_raw<unsigned char>(); }

    // --- integers: signed ones as zig-zag varints, unsigned ones as plain varints

    QL_FORCE_INLINE void write_int16(int16_t v) { write_varint16_zigzag(v); }
    QL_FORCE_INLINE int16_t read_int16() { return unzigzag<int16_t>(read_varint<uint16_t>()); }
    QL_FORCE_INLINE void write_int32(int32_t v) { write_varint32_zigzag(v); }
    QL_FORCE_INLINE int32_t read_int32() { return unzigzag<int32_t>(read_varint<uint32_t>()); }
    QL_FORCE_INLINE void write_int64(int64_t v) { write_varint64_zigzag(v); }
    QL_FORCE_INLINE int64_t read_int64() { return unzigzag<int64_t>(read_varint<uint64_t>()); }
    QL_FORCE_INLINE void write_uint16(uint16_t v) { write_varint(v); }
    QL_FORCE_INLINE uint16_t read_uint16() { return read_varint<uint16_t>(); }
    QL_FORCE_INLINE void write_uint32(uint32_t v) { write_varint(v); }
    QL_FORCE_INLINE uint32_t read_uint32() { return read_varint<uint32_t>(); }
    QL_FORCE_INLINE void write_uint64(uint64_t v) { write_varint(v); }
    QL_FORCE_INLINE uint64_t read_uint64() { return read_varint<uint64_t>(); }

    // --- fixed forms and floating point (IEEE 754): as held in memory, little-endian

    QL_FORCE_INLINE void write_uint16_fixed(uint16_t v) { write_raw(v); }
    QL_FORCE_INLINE uint16_t read_uint16_fixed() { return read_raw<uint16_t>(); }
    QL_FORCE_INLINE void write_uint32_fixed(uint32_t v) { write_raw(v); }
    QL_FORCE_INLINE uint32_t read_uint32_fixed() { return read_raw<uint32_t>(); }
    QL_FORCE_INLINE void write_int64_fixed(int64_t v) { write_raw(v); }
    QL_FORCE_INLINE int64_t read_int64_fixed() { return read_raw<int64_t>(); }
    QL_FORCE_INLINE void write_float4(float v) { write_raw(v); }
    QL_FORCE_INLINE float read_float4() { return read_raw<float>(); }
    QL_FORCE_INLINE void write_float8(double v) { write_raw(v); }
    QL_FORCE_INLINE double read_float8() { return read_raw<double>(); }

    // --- element counts

    /// The caller guarantees count <= 32767; the top bit of a larger one merges with the flag.
    QL_FORCE_INLINE void write_length(unsigned short count) {
        Writer out(_buf);
        out.count(count);
        _buf = out.p;
    }
    /// Two bytes are accepted even where one would have done.
    QL_FORCE_INLINE unsigned short read_length() {
        Reader in(_buf, _range);
        const unsigned short count = in.count();
        setCursor(in.p);
        return count;
    }

    // --- strings in a message block. Reads leave the text and one NUL, which takes storage from the string's block and
    // so throws std::out_of_range when that is exhausted. The cipher forms encipher the written copy, never the source.

    QL_FORCE_INLINE void write_string(const bufstring& x) { __write_string(x, false, true); }
    QL_FORCE_INLINE void write_string_fixed(const bufstring& x) { __write_string(x, false, false); }
    QL_FORCE_INLINE void write_cryptstring(const bufstring& x) { __write_string(x, true, true); }
    QL_FORCE_INLINE void write_blob(const bufstring& x) { __write_string(x, false, true); }
    QL_FORCE_INLINE void write_cryptblob(const bufstring& x) { __write_string(x, true, true); }
    QL_FORCE_INLINE void read_string(bufstring& x) { __read_string(x, false, true); }
    QL_FORCE_INLINE void read_string_fixed(bufstring& x) { __read_string(x, false, false); }
    QL_FORCE_INLINE void read_cryptstring(bufstring& x) { __read_string(x, true, true); }
    QL_FORCE_INLINE void read_blob(bufstring& x) { __read_string(x, false, true); }
    QL_FORCE_INLINE void read_cryptblob(bufstring& x) { __read_string(x, true, true); }

    /// The caller guarantees a text of at most 65535 characters: only the low 16 bits of its length are written.
    QL_FORCE_INLINE void __write_string(const bufstring& x, bool encrypt, bool useVarLen) {
        write_text(x.c_str(), x.size(), encrypt, useVarLen);
    }
    QL_FORCE_INLINE void __read_string(bufstring& x, bool encrypt, bool useVarLen) {
        const uint16_t length = useVarLen ? read_uint16() : read_uint16_fixed();
        x.assign(_buf, length);
        _buf += length;
        if (encrypt && length != 0) Quillon::DumbCrypt::decrypt(x.data(), length, 0);
    }

    // --- standard strings, in the layout of the others

    void write_string(const std::string& x) { __write_string(x, false); }
    void write_cryptstring(const std::string& x) { __write_string(x, true); }
    void write_blob(const std::string& x) { __write_string(x, false); }
    void write_cryptblob(const std::string& x) { __write_string(x, true); }
    std::string read_string() { return __read_string(false); }
    std::string read_cryptstring() { return __read_string(true); }
    std::string read_blob() { return __read_string(false); }
    std::string read_cryptblob() { return __read_string(true); }

    void __write_string(const std::string& x, bool encrypt) { write_text(x.data(), x.size(), encrypt, true); }
    std::string __read_string(bool encrypt) {
        const uint16_t length = read_uint16();
        std::string text(_buf, length);
        _buf += length;
        if (encrypt && length != 0) Quillon::DumbCrypt::decrypt(text.data(), length, 0);
        return text;
    }

  private:
    // A single operation is too short to ask for the processor's faster kernel.
    using Writer = Velmora::Writer<Baseline>;
    using Reader = Velmora::Reader<Baseline>;

    template <class T>
    QL_FORCE_INLINE void write_raw(T value) {
        Writer out(_buf);
        out.raw(value);
        _buf = out.p;
    }
    template <class T>
    QL_FORCE_INLINE T read_raw() {
        Reader in(_buf, _range);
        const T value = in.raw<T>();
        setCursor(in.p);
        return value;
    }

    QL_FORCE_INLINE void write_text(const char* text, size_t length, bool encrypt, bool useVarLen) {
        const auto travelling = static_cast<uint16_t>(length);
        if (useVarLen)
            write_uint16(travelling);
        else
            write_uint16_fixed(travelling);
        Quillon::copyBytes(_buf, text, length);
        if (encrypt && length != 0) Quillon::DumbCrypt::encrypt(_buf, static_cast<int>(length), 0);
        _buf += length;
    }

    char* _buf;
    Range _range;
};

} // namespace Velmora
