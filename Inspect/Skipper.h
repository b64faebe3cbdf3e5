// A cursor over a body that steps over values and reads some of them, never beyond the body's end.
//
// The length of a number shows in the highest bits of its bytes alone: its last byte is the one without. So numbers in a row
// are not stepped over one by one, but gathered until something else follows, and then counted by such bytes, sixteen at once.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>
#include <string_view>
#include <type_traits>

#include "Backend/Common/Inline.h"
#include "Backend/Velmora/Wire.h"

namespace Inspect {

/// Where a value is missing, the cursor goes to the end for good: what is read from then on is zero or empty.
class Skipper {
  public:
    Skipper(const char* begin, const char* end) : _p(begin), _end(end) {}

    /// Whether a value that was read, or should have been stepped over before the last one read, is missing.
    bool isAtEnd() const { return _p == nullptr; }
    void giveUp() { _p = nullptr; }

    /// Steps over that many varints or prices.
    QL_FORCE_INLINE void numbers(size_t n) { _pending += n; }

    QL_FORCE_INLINE void bytes(size_t n) { take(n); }

    /// A text with a varint in front of it. Bits of its length beyond the sixteenth are dropped, as read() does.
    QL_FORCE_INLINE std::string_view text() { return take(number<uint16_t>()); }
    /// A text with two bytes of length in front of it.
    QL_FORCE_INLINE std::string_view fixedText() { return take(held<uint16_t>()); }

    /// How many elements follow. None, and the end, if the body cannot hold that many of `least` bytes each.
    QL_FORCE_INLINE size_t count(size_t least) {
        size_t n = held<uint8_t>();
        if (n >= 0x80) n = (n << 8 | held<uint8_t>()) & 0x7FFF;
        if (_p != nullptr && n * least <= static_cast<size_t>(_end - _p)) return n;
        giveUp();
        return 0;
    }

    /// A plain varint.
    template <class T>
    QL_FORCE_INLINE T number() {
        settle();
        if (_p != nullptr && _p != _end && byte_at(_p) < 0x80) return static_cast<T>(byte_at(_p++));
        return longNumber([](Reader& in) { return in.varint<T>(); });
    }
    /// A price's pattern.
    QL_FORCE_INLINE uint64_t price() {
        settle();
        return longNumber([](Reader& in) { return in.special(); });
    }
    /// A value as it lies in memory.
    template <class T>
    QL_FORCE_INLINE T held() {
        T value{};
        if (const std::string_view from = take(sizeof value); !from.empty())
            std::memcpy(&value, from.data(), sizeof value);
        return value;
    }

  private:
    using Reader = Velmora::Reader<Velmora::Baseline, Velmora::AtRange>;

    static unsigned char byte_at(const char* p) { return static_cast<unsigned char>(*p); }

    QL_FORCE_INLINE std::string_view take(size_t n) {
        settle();
        if (_p == nullptr || n > static_cast<size_t>(_end - _p)) {
            giveUp();
            return {};
        }
        const char* const begin = _p;
        _p += n;
        return {begin, n};
    }

    /// Steps over the numbers that were gathered.
    QL_FORCE_INLINE void settle() {
        if (_pending == 0) return;
        if (_p != nullptr) _p = after_numbers(_p, _end, _pending);
        _pending = 0;
    }

    /// Null if there are not as many.
    QL_FORCE_INLINE static const char* after_numbers(const char* p, const char* end, size_t n) {
        // The length of one alone is tested byte by byte: it is mostly the one that the processor has foreseen, which then goes on
        // without waiting for the bytes.
        if (n == 1 && end - p >= 8)
            for (int i = 0; i < 8; ++i)
                if (byte_at(p + i) < 0x80) return p + i + 1;
        // A few, as stand in a row in records, mostly end within 32 bytes.
        if (n <= 8 && end - p >= 32) {
            __m128i low, high;
            std::memcpy(&low, p, sizeof low);
            std::memcpy(&high, p + 16, sizeof high);
            uint32_t lasts =
                ~(static_cast<uint32_t>(_mm_movemask_epi8(low)) | static_cast<uint32_t>(_mm_movemask_epi8(high)) << 16);
            for (size_t i = 1; i < n; ++i) lasts &= lasts - 1;
            if (lasts != 0) return p + std::countr_zero(lasts) + 1;
        }
        for (; end - p >= 16; p += 16) {
            __m128i bytes;
            std::memcpy(&bytes, p, sizeof bytes);
            unsigned lasts = static_cast<unsigned>(_mm_movemask_epi8(bytes)) ^ 0xFFFF;
            for (; lasts != 0; lasts &= lasts - 1) // without its lowest bit
                if (--n == 0) return p + std::countr_zero(lasts) + 1;
        }
        for (; p != end; ++p)
            if (byte_at(p) < 0x80 && --n == 0) return p + 1;
        return nullptr;
    }

    /// A number of any length, by the codec's own reader.
    template <class Read>
    QL_FORCE_INLINE auto longNumber(Read&& read) -> decltype(read(std::declval<Reader&>())) {
        if (_p != nullptr && _p != _end) {
            // A range is one of mutable bytes, but a reader leaves them as they are.
            const Velmora::Range range{const_cast<char*>(_p), const_cast<char*>(_end)};
            Reader in(_p, range);
            const auto value = read(in);
            _p = in.p;
            if (_p <= _end) return value;
        }
        giveUp();
        return 0;
    }

    const char* _p; ///< null: at the end
    const char* const _end;
    size_t _pending = 0; ///< numbers that are yet to be stepped over
};

} // namespace Inspect
