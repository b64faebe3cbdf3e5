// What a capture file begins with: a word that tells the byte order and the resolution of times; the version in two
// halves, two words that are always 0, the longest packet, and the link type.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Capture {

inline constexpr std::size_t FILE_HEADER = 24; ///< bytes
inline constexpr uint32_t MAGIC_NANOSECONDS = 0xA1B23C4D;
inline constexpr uint32_t MAGIC_MICROSECONDS = 0xA1B2C3D4;
inline constexpr uint32_t MAGIC_PCAPNG = 0x0A0D0D0A; ///< of the newer form, in either byte order
inline constexpr uint32_t VERSION_MAJOR = 2, VERSION_MINOR = 4;
inline constexpr uint32_t LINK_TYPE = 147; ///< USER0

} // namespace Capture
