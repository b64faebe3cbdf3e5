// The codec that writes text: each value at the stream's position, with no separator, name or line end.
//
//     bool         T or F
//     integers     decimal; a char is a number too, its code with sign
//     floats       in the stream's precision
//     strings      between double quotes, nothing escaped
//
// Deliberate: the cipher forms write clear text and the blob forms raw bytes. Logs show what a message holds.
// Reading is no error: it yields zeros and leaves strings untouched. Room is not checked, see the stream.
#pragma once

#include <string>

#include "Backend/Velmora/Codec.h"

namespace Velmora {

template <class Stream>
class TextCodec : public Codec {
  public:
    /// Writes into `os`, which must outlive the codec. Copies write into the same stream.
    explicit TextCodec(Stream& os) : _os(os) {}
    TextCodec(const TextCodec&) = default;

    Stream& stream() const { return const_cast<Stream&>(_os); }

    bool read_bool() override { return false; }
    char read_int8() override { return 0; }
    unsigned char read_uint8() override { return 0; }
    short read_int16() override { return 0; }
    unsigned short read_uint16() override { return 0; }
    int read_int32() override { return 0; }
    unsigned int read_uint32() override { return 0; }
    long long read_int64() override { return 0; }
    unsigned long long read_uint64() override { return 0; }
    float read_float4() override { return 0; }
    double read_float8() override { return 0; }
    void read_string(bufstring&) override {}
    void read_cryptstring(bufstring&) override {}
    void read_blob(bufstring&) override {}
    void read_cryptblob(bufstring&) override {}

    void write_bool(bool x) override { stream() << (x ? 'T' : 'F'); }
    void write_int8(char x) override { stream() << static_cast<int>(x); }
    void write_uint8(unsigned char x) override { stream() << static_cast<unsigned int>(x); }
    void write_int16(short x) override { stream() << x; }
    void write_uint16(unsigned short x) override { stream() << x; }
    void write_int32(int x) override { stream() << x; }
    void write_uint32(unsigned int x) override { stream() << x; }
    void write_int64(long long x) override { stream() << x; }
    void write_uint64(unsigned long long x) override { stream() << x; }
    void write_float4(float x) override { stream() << x; }
    void write_float8(double x) override { stream() << x; }

    /// All characters, embedded NULs included.
    void write_string(const bufstring& x) override { stream() << '"' << x << '"'; }
    /// Deliberate: only up to the first NUL, unlike the form above.
    void write_string(const std::string& x) override { stream() << '"' << x.c_str() << '"'; }

    // Through the virtual table: a derived codec that renders strings otherwise changes all of these at once.
    void write_cryptstring(const bufstring& x) override { write_string(x); }
    void write_cryptstring(const std::string& x) override { write_string(x); }
    void write_blob(const bufstring& x) override { write_string(x); }
    void write_blob(const std::string& x) override { write_string(x); }
    void write_cryptblob(const bufstring& x) override { write_string(x); }
    void write_cryptblob(const std::string& x) override { write_string(x); }

    void write_rawfield(const char* x) override { stream() << x; }
    void write_data(const char* x) override { stream() << x; }

  private:
    /// Deliberate: const, yet written through. The codec never rebinds or replaces its stream, it only appends to it;
    /// the constructor takes a mutable stream, so the cast in stream() is sound.
    const Stream& _os;
};

} // namespace Velmora
