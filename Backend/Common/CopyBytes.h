// Copying short runs of bytes without a call.
#pragma once

#include <cstddef>
#include <cstring>

#include "Backend/Common/Inline.h"

namespace Quillon {

/// Copies `n` bytes in two pieces of `Size` that overlap in the middle. Requires Size <= n <= 2 * Size.
template <size_t Size>
QL_FORCE_INLINE void copyInTwoPieces(char* to, const char* from, size_t n) {
    char first[Size], last[Size]; // both are read before either is written, so the ranges may overlap
    std::memcpy(first, from, Size);
    std::memcpy(last, from + n - Size, Size);
    std::memcpy(to, first, Size);
    std::memcpy(to + n - Size, last, Size);
}

/// Up to so many bytes are copied without a call, and texts of so many are coded and copied in place.
inline constexpr size_t SHORT_COPY = 32;

/// Copies `n` bytes. The ranges may overlap. Texts of a few dozen characters are the common case.
QL_FORCE_INLINE void copyBytes(char* to, const char* from, size_t n) {
    if (n >= 16)
        n <= SHORT_COPY ? copyInTwoPieces<16>(to, from, n) : static_cast<void>(std::memmove(to, from, n));
    else if (n >= 8)
        copyInTwoPieces<8>(to, from, n);
    else if (n >= 4)
        copyInTwoPieces<4>(to, from, n);
    else if (n >= 2)
        copyInTwoPieces<2>(to, from, n);
    else if (n == 1)
        *to = *from;
}

} // namespace Quillon
