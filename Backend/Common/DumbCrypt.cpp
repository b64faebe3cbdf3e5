#include "Backend/Common/DumbCrypt.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Quillon {

static_assert(std::endian::native == std::endian::little, "the keystream's byte order is part of the wire format");

void DumbCrypt::encrypt(char* data, int length, unsigned int key) {
    std::uint64_t state = key;
    while (length > 0) {
        state += 0x9E3779B97F4A7C15;
        std::uint64_t keys = state;
        keys = (keys ^ (keys >> 30)) * 0xBF58476D1CE4E5B9;
        keys = (keys ^ (keys >> 27)) * 0x94D049BB133111EB;
        keys = (keys ^ (keys >> 31)) | 0x8080808080808080;

        const std::size_t count = length < 8 ? static_cast<std::size_t>(length) : 8;
        std::uint64_t block = 0;
        std::memcpy(&block, data, count);
        block ^= keys;
        std::memcpy(data, &block, count);
        data += count;
        length -= static_cast<int>(count);
    }
}

void DumbCrypt::decrypt(char* data, int length, unsigned int key) {
    encrypt(data, length, key); // exclusive-or undoes itself
}

} // namespace Quillon
