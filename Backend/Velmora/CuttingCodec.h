// The text codec for values that may be longer than the stream's buffer: writes what TextCodec writes as long as there
// is room, and marks where the text was cut. Slower, because it looks at its room for every piece.
#pragma once

#include <algorithm>
#include <string_view>

#include "Backend/Common/FastOStream.h"
#include "Backend/Velmora/TextCodec.h"

namespace Velmora {

class CuttingCodec final : public TextCodec<Quillon::FastOStream> {
  public:
    static constexpr std::string_view MARK = "...[cut]";

    /// The stream must have room for the mark and a NUL after it. Nothing else may write into it as long as the codec
    /// does.
    using TextCodec::TextCodec;

    /// Whether room was missing. The text then ends with the mark, and nothing more is written.
    bool isCut() const { return _isCut; }

    void write_bool(bool x) override { put(x ? "T" : "F"); }
    void write_int8(char x) override { number(x); }
    void write_uint8(unsigned char x) override { number(x); }
    void write_int16(short x) override { number(x); }
    void write_uint16(unsigned short x) override { number(x); }
    void write_int32(int x) override { number(x); }
    void write_uint32(unsigned int x) override { number(x); }
    void write_int64(long long x) override { number(x); }
    void write_uint64(unsigned long long x) override { number(x); }
    void write_float4(float x) override { floating(x); }
    void write_float8(double x) override { floating(x); }
    void write_string(const bufstring& x) override { quoted({x.c_str(), x.size()}); }
    void write_string(const std::string& x) override { quoted(x.c_str()); }
    void write_rawfield(const char* x) override { write_data(x); }
    void write_data(const char* x) override {
        if (x != nullptr) put(x);
    }

  private:
    template <class Integer>
    void number(Integer x) {
        char digits[24]; // an integer has 20 at most
        Quillon::FastOStream os(digits, sizeof digits);
        os << +x;
        put({digits, os.size()});
    }
    template <class Float>
    void floating(Float x) {
        if (_isCut) return;
        Quillon::FastOStream& os = stream();
        os << x; // stays within the buffer by itself, but its position does not
        if (os.free() == 0) cut(os.size() - os.capacity() + 1);
    }
    void quoted(std::string_view text) {
        put("\"");
        put(text);
        put("\"");
    }

    void put(std::string_view piece) {
        if (_isCut) return;
        Quillon::FastOStream& os = stream();
        const size_t room = os.free() - 1; // a NUL is still to come
        os.write(piece.data(), std::min(piece.size(), room));
        if (piece.size() > room) cut(0);
    }
    void cut(size_t beyondRoom) {
        _isCut = true;
        stream().rchop(beyondRoom + MARK.size()).write(MARK.data(), MARK.size());
    }

    bool _isCut = false;
};

} // namespace Velmora
