// Text output into a buffer of the caller's, without heap and without the standard stream machinery.
//
// A write stores at the write position and advances it. Nothing is checked against the end of the buffer: the caller
// leaves room for what it writes. Only floating-point text is bounded, and even there the position advances by the
// length of the whole text, so that it lies beyond the end by as much as was cut off. The text is not NUL-terminated
// before ends().
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "Backend/Common/Util.h"

namespace bufstl {
template <class Char>
class basic_bufstring;
}

namespace Quillon {

class FastOStream {
  public:
    /// Writes into [begin, end), which the stream does not own. Floating-point precision starts at 5 digits.
    FastOStream(char* begin, char* end) : _buf(begin), _begin(begin), _end(end) {}
    /// The same over `size` characters at `buf`.
    FastOStream(char* buf, int size) : FastOStream(buf, buf + size) {}

    /// Turns to another buffer, empty at first. The precision stays as it is.
    void init(char* begin, char* end) {
        _buf = begin;
        _begin = begin;
        _end = end;
    }

    const char* begin() const { return _begin; }
    /// The write position. Text may be stored here directly, followed by advance().
    char* current() const { return _buf; }
    const char* end() const { return _end; }

    /// Characters written; more than capacity() once a floating-point text was cut off.
    std::size_t size() const { return static_cast<std::size_t>(_buf - _begin); }
    std::size_t capacity() const { return static_cast<std::size_t>(_end - _begin); }
    /// Room left in characters; 0 when the position lies past the end.
    std::size_t free() const { return _buf < _end ? static_cast<std::size_t>(_end - _buf) : 0; }

    /// Back to the beginning.
    FastOStream& clear() {
        _buf = const_cast<char*>(_begin); // was handed in as a mutable buffer
        return *this;
    }

    FastOStream& advance(std::size_t count) {
        _buf += count;
        return *this;
    }

    /// Drops `count` characters from the end, at most all.
    FastOStream& rchop(std::size_t count) {
        _buf -= std::min(count, size());
        return *this;
    }

    /// Digits after the decimal point of float and double values from here on, 0 to 99; more counts as 99.
    FastOStream& setprecision(std::size_t digits) {
        _precision = static_cast<int>(std::min<std::size_t>(digits, 99)); // the formats have room for two digits
        std::snprintf(_fmtfloat, sizeof(_fmtfloat), "%%.%df", _precision);
        std::snprintf(_fmtdouble, sizeof(_fmtdouble), "%%.%dlf", _precision);
        return *this;
    }

    /// Ends the text with a NUL, which counts in size(), unless it already ends with one. Returns the beginning of the
    /// text.
    const char* ends() {
        if (_buf == _begin || _buf[-1] != '\0') *_buf++ = '\0';
        return _begin;
    }

    FastOStream& write(const char* text, std::size_t count) {
        if (count != 0) std::memcpy(_buf, text, count); // an empty text may come as a null pointer
        _buf += count;
        return *this;
    }

    /// Up to the terminating NUL; a null pointer writes nothing.
    FastOStream& write(const char* text) { return text != nullptr ? write(text, std::strlen(text)) : *this; }

    /// The text, and `fill` after it up to `width` characters in all. A longer text is written whole.
    FastOStream& write_pad(const char* text, std::size_t width, char fill) {
        const std::size_t length = text != nullptr ? std::strlen(text) : 0;
        write(text, length);
        return length < width ? write_nchars(fill, width - length) : *this;
    }

    FastOStream& write_nchars(char c, std::size_t count) {
        std::memset(_buf, c, count);
        _buf += count;
        return *this;
    }

    /// In base 2, without leading zeros.
    FastOStream& write_binary(std::uint64_t value) { return written(Util::ulltoa(value, _buf, 2)); }

    /// "T" or "F".
    FastOStream& operator<<(bool value) { return *this << (value ? 'T' : 'F'); }

    FastOStream& operator<<(char c) {
        *_buf++ = c;
        return *this;
    }

    FastOStream& operator<<(short value) { return written(Util::stoa(value, _buf, 10)); }
    FastOStream& operator<<(unsigned short value) { return written(Util::ustoa(value, _buf, 10)); }
    FastOStream& operator<<(int value) { return written(Util::itoa(value, _buf, 10)); }
    FastOStream& operator<<(unsigned int value) { return written(Util::uitoa(value, _buf, 10)); }
    FastOStream& operator<<(long value) { return written(Util::lltoa(value, _buf, 10)); }
    FastOStream& operator<<(unsigned long value) { return written(Util::ulltoa(value, _buf, 10)); }
    FastOStream& operator<<(long long value) { return written(Util::lltoa(value, _buf, 10)); }
    FastOStream& operator<<(unsigned long long value) { return written(Util::ulltoa(value, _buf, 10)); }

    FastOStream& operator<<(double value) { return write_floating(_fmtdouble, value); }
    FastOStream& operator<<(float value) { return write_floating(_fmtfloat, static_cast<double>(value)); }

    /// "0x" and the address in hexadecimal.
    FastOStream& operator<<(const void* address) {
        write("0x", 2);
        return written(Util::ulltoa(reinterpret_cast<std::uintptr_t>(address), _buf, 16));
    }

    /// Up to the terminating NUL; a null pointer writes nothing.
    FastOStream& operator<<(const char* text) { return write(text); }
    /// All characters, embedded NULs included.
    FastOStream& operator<<(const std::string& text) { return write(text.data(), text.size()); }

    /// bufstl::bufstring: all characters without the stored terminator, embedded NULs included. A template over the
    /// declared name, because this stream knows nothing of the layer that defines the type: who prints one has included
    /// it.
    template <class Char>
    FastOStream& operator<<(const bufstl::basic_bufstring<Char>& text) {
        return write(text.data(), text.size());
    }

    FastOStream& operator<<(FastOStream& (*manipulator)(FastOStream&)) { return manipulator(*this); }

  private:
    FastOStream& written(int count) { return advance(static_cast<std::size_t>(count)); }

    FastOStream& write_floating(const char* format, double value) {
        // Deliberate: the advance is not clamped to the room, so that a cut text shows in size().
        return written(std::snprintf(_buf, free(), format, value));
    }

    char* _buf;
    const char* _begin;
    const char* _end;
    char _fmtfloat[8] = "%.5f";
    char _fmtdouble[8] = "%.5lf";
    int _precision = 5;
};

/// A stream that carries its buffer of `N` characters, meant for the stack. Not copyable: a copy would write into the
/// original's buffer.
template <std::size_t N>
class StaticOStream : public FastOStream {
  public:
    StaticOStream() : FastOStream(_staticBuf, _staticBuf + N) {}
    StaticOStream(const StaticOStream&) = delete;
    StaticOStream& operator=(const StaticOStream&) = delete;

    char* buffer() { return _staticBuf; }
    const char* buffer() const { return _staticBuf; }

  private:
    char _staticBuf[N]; // left uninitialised: filling it would cost more than most prints
};

} // namespace Quillon
