// The same wire bytes, coded the way one would write it down first: byte by byte, through the cursor in a codec object
// that is handed to one function per type. It is the yardstick by which figures of different machines can be compared,
// and is not to be tuned.
#pragma once

#include <cstring>

#include "Backend/Velmora/FieldList.h"
#include "generated/QLProtocol/QLProtocol.fields.h"

namespace bench {

class PlainCodec {
  public:
    explicit PlainCodec(char* begin) : _begin(begin), _buf(begin) {}
    size_t size() const { return static_cast<size_t>(_buf - _begin); }

    // Not inlined, as the members of the generated types are not: the cursor stays in memory.
    template <class T>
    [[gnu::noinline]] void write(const T& value) {
        fields(Velmora::of<T>{}, [&](const char*, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
            put(encoding, value.*member);
            return true;
        });
    }

    template <class T>
    [[gnu::noinline]] void read(T& value) {
        fields(Velmora::of<T>{}, [&](const char*, auto member, auto encoding) QL_FORCE_INLINE_LAMBDA {
            get(encoding, value.*member);
            return true;
        });
    }

  private:
    void writeVarint(uint64_t v) {
        for (; v > 127; v >>= 7) *_buf++ = static_cast<char>(v | 0x80);
        *_buf++ = static_cast<char>(v);
    }
    uint64_t readVarint() {
        uint64_t v = 0;
        for (unsigned shift = 0;; shift += 7) {
            const auto byte = static_cast<unsigned char>(*_buf++);
            v |= static_cast<uint64_t>(byte & 0x7F) << shift;
            if (byte < 0x80) return v;
        }
    }

    template <class T>
    void put(Velmora::plain_t, const T& v) {
        if constexpr (Velmora::String<T>) {
            writeVarint(v.size());
            std::memcpy(_buf, v.c_str(), v.size());
            _buf += v.size();
        } else if constexpr (Velmora::Vector<T>) {
            if (v.size() > 127) *_buf++ = static_cast<char>(0x80 | v.size() >> 8);
            *_buf++ = static_cast<char>(v.size());
            for (const auto& element : v) put(Velmora::plain, element);
        } else if constexpr (Velmora::Composite<T>) {
            write(v);
        } else if constexpr (std::is_enum_v<T> || sizeof(T) == 1) {
            *_buf++ = static_cast<char>(v);
        } else {
            using U = std::make_unsigned_t<T>;
            writeVarint(static_cast<U>(static_cast<U>(v) << 1 ^ static_cast<U>(v >> (8 * sizeof(T) - 1))));
        }
    }
    void put(Velmora::price_t, int64_t v) {
        if (v == Velmora::NMA || v == Velmora::NDA || v == Velmora::NA) {
            *_buf++ = v == Velmora::NMA ? 0x03 : v == Velmora::NDA ? 0x05 : 0x07;
            return;
        }
        const auto u = static_cast<uint64_t>(v);
        *_buf++ = static_cast<char>((u & 0x1F) << 2 | (u > 0x1F ? 0x80 : 0));
        if (u > 0x1F) writeVarint(u >> 5);
    }

    template <class T>
    void get(Velmora::plain_t, T& v) {
        if constexpr (Velmora::String<T>) {
            const auto length = static_cast<uint16_t>(readVarint());
            v.resize(length + 1u);
            std::memcpy(v.data(), _buf, length);
            v.data()[length] = '\0';
            _buf += length;
        } else if constexpr (Velmora::Vector<T>) {
            size_t count = static_cast<unsigned char>(*_buf++);
            if (count > 127) count = (count << 8 | static_cast<unsigned char>(*_buf++)) & 0x7FFF;
            v.resize(count);
            for (auto& element : v) get(Velmora::plain, element);
        } else if constexpr (Velmora::Composite<T>) {
            read(v);
        } else if constexpr (std::is_same_v<T, bool>) {
            v = *_buf++ != 0;
        } else if constexpr (std::is_enum_v<T> || sizeof(T) == 1) {
            v = static_cast<T>(static_cast<unsigned char>(*_buf++));
        } else {
            using U = std::make_unsigned_t<T>;
            const auto u = static_cast<U>(readVarint());
            v = static_cast<T>(static_cast<U>(u >> 1) ^ static_cast<U>(0 - (u & 1)));
        }
    }
    void get(Velmora::price_t, int64_t& v) {
        const auto first = static_cast<unsigned char>(*_buf++);
        if (first == 0x05 || first == 0x07 || first == 0x03) {
            v = first == 0x05 ? Velmora::NDA : first == 0x07 ? Velmora::NA : Velmora::NMA;
            return;
        }
        uint64_t u = first >> 2 & 0x1F;
        if (first >= 0x80) u |= readVarint() << 5;
        v = static_cast<int64_t>((first & 2) != 0 ? ~u : u);
    }

    // Encodings that none of the measured messages has are not offered: a message with one would not compile.

    char* _begin;
    char* _buf;
};

} // namespace bench
