// The interface through which a field writer renders or reads values: one operation per primitive type and direction.
//
// The order of the operations is binding: binaries built apart call them by their place in the virtual table, the
// destructor first. New operations go to the end.
#pragma once

#include <string>

#include "Backend/Velmora/bufstl/bufstring.h"

namespace Velmora {

class Codec {
  public:
    using bufstring = bufstl::bufstring;

    virtual ~Codec() {}

    virtual bool read_bool() = 0;
    virtual char read_int8() = 0;
    virtual unsigned char read_uint8() = 0;
    virtual short read_int16() = 0;
    virtual unsigned short read_uint16() = 0;
    virtual int read_int32() = 0;
    virtual unsigned int read_uint32() = 0;
    virtual long long read_int64() = 0;
    virtual unsigned long long read_uint64() = 0;
    virtual float read_float4() = 0;
    virtual double read_float8() = 0;
    virtual void read_string(bufstring& x) = 0;
    virtual void read_cryptstring(bufstring& x) = 0;
    virtual void read_blob(bufstring& x) = 0;
    virtual void read_cryptblob(bufstring& x) = 0;

    virtual void write_bool(bool x) = 0;
    virtual void write_int8(char x) = 0;
    virtual void write_uint8(unsigned char x) = 0;
    virtual void write_int16(short x) = 0;
    virtual void write_uint16(unsigned short x) = 0;
    virtual void write_int32(int x) = 0;
    virtual void write_uint32(unsigned int x) = 0;
    virtual void write_int64(long long x) = 0;
    virtual void write_uint64(unsigned long long x) = 0;
    virtual void write_float4(float x) = 0;
    virtual void write_float8(double x) = 0;
    virtual void write_string(const bufstring& x) = 0;
    virtual void write_string(const std::string& x) = 0;
    virtual void write_cryptstring(const bufstring& x) = 0;
    virtual void write_cryptstring(const std::string& x) = 0;
    virtual void write_blob(const bufstring& x) = 0;
    virtual void write_blob(const std::string& x) = 0;
    virtual void write_cryptblob(const bufstring& x) = 0;
    virtual void write_cryptblob(const std::string& x) = 0;
    /// Text of the writer's own, such as field names and separators: as it stands; a null pointer is nothing.
    virtual void write_rawfield(const char* x) = 0;
    /// A value that is text already: as it stands; a null pointer is nothing.
    virtual void write_data(const char* x) = 0;
};

} // namespace Velmora
