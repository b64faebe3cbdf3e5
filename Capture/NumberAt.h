// Numbers in the byte order of networks, high byte first, and in the other one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Capture {

/// The number of so many bytes at a place. REQUIRES: the bytes hold it, size <= 8.
constexpr uint64_t numberAt(std::string_view bytes, std::size_t at, std::size_t size, bool isHighFirst = true) {
    uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[at + (isHighFirst ? i : size - 1 - i)]);
    return number;
}

/// The other way round. REQUIRES: size <= 8.
inline void appendNumber(std::string& to, uint64_t number, std::size_t size, bool isHighFirst = true) {
    for (std::size_t i = 0; i < size; ++i) to += static_cast<char>(number >> 8 * (isHighFirst ? size - 1 - i : i));
}

constexpr uint32_t halfAt(std::string_view bytes, std::size_t at) {
    return static_cast<uint32_t>(numberAt(bytes, at, 2));
}

constexpr unsigned byteAt(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }

/// The sum of the 16-bit words of the bytes that checksums are made of, folded to 16 bits.
constexpr uint32_t wordSum(std::string_view bytes, uint32_t sum = 0) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) sum += halfAt(bytes, i);
    if (bytes.size() % 2 != 0) sum += byteAt(bytes, bytes.size() - 1) << 8;
    while (sum >> 16 != 0) sum = (sum & 0xFFFF) + (sum >> 16);
    return sum;
}

} // namespace Capture
