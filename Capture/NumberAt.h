// Numbers in the byte order of networks, high byte first, and in the other one.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace Capture {

static_assert(std::endian::native == std::endian::little);

constexpr uint16_t swapped(uint16_t word) { return __builtin_bswap16(word); }
constexpr uint32_t swapped(uint32_t word) { return __builtin_bswap32(word); }
constexpr uint64_t swapped(uint64_t word) { return __builtin_bswap64(word); }

/// The number of so many bytes at a place. REQUIRES: the bytes hold it, size <= 8.
inline uint64_t numberAt(std::string_view bytes, std::size_t at, std::size_t size, bool isHighFirst = true) {
    const char* const place = bytes.data() + at;
    const auto load = [&]<class Word>(Word word) -> uint64_t {
        std::memcpy(&word, place, sizeof word);
        return isHighFirst ? swapped(word) : word;
    };
    switch (size) {
    case 2:
        return load(uint16_t{});
    case 4:
        return load(uint32_t{});
    case 8:
        return load(uint64_t{});
    default:
        break;
    }
    uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = number << 8 | static_cast<unsigned char>(place[isHighFirst ? i : size - 1 - i]);
    return number;
}

/// The other way round. REQUIRES: size <= 8.
inline void appendNumber(std::string& to, uint64_t number, std::size_t size, bool isHighFirst = true) {
    for (std::size_t i = 0; i < size; ++i) to += static_cast<char>(number >> 8 * (isHighFirst ? size - 1 - i : i));
}

inline uint32_t halfAt(std::string_view bytes, std::size_t at) { return static_cast<uint32_t>(numberAt(bytes, at, 2)); }

constexpr unsigned byteAt(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }

/// The sum of the 16-bit words of the bytes that checksums are made of, folded to 16 bits.
inline uint32_t wordSum(std::string_view bytes, uint64_t sum = 0) {
    std::size_t at = 0;
    for (; at + 4 <= bytes.size(); at += 4) sum += numberAt(bytes, at, 4); // two words: folded, their sum is the same
    if (at + 2 <= bytes.size()) sum += halfAt(bytes, at), at += 2;
    if (at < bytes.size()) sum += byteAt(bytes, at) << 8;
    while (sum >> 16 != 0) sum = (sum & 0xFFFF) + (sum >> 16);
    return static_cast<uint32_t>(sum);
}

} // namespace Capture
