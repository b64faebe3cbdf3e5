// The cipher of the strings that should not be read at a glance on the wire.
//
// This is obfuscation and no security. The bytes are exclusive-ored with a keystream that is a fixed function of the
// key and the position, the protocol's key is a constant, and equal texts give equal bytes. It keeps passwords out of
// casual sight in dumps; whoever wants them gets them. Confidentiality is the transport's business.
//
// Keystream, a part of the wire format: block n (bytes 8n to 8n+7, least significant byte first) is
//     splitmix64(key + (n + 1) * 0x9E3779B97F4A7C15) | 0x8080808080808080
// where splitmix64 is that generator's output function. The top bits are forced so that no byte ever stands in clear;
// plain ASCII text thereby also never turns into a NUL.
#pragma once

namespace Quillon {

class DumbCrypt {
  public:
    /// Enciphers `length` bytes at `data` in place; the length stays the same. A length of 0 or less does nothing.
    /// Byte i of the result depends only on the key, i and byte i: a prefix of an enciphered text is the enciphered
    /// prefix.
    static void encrypt(char* data, int length, unsigned int key);

    /// Undoes encrypt() with the same key.
    static void decrypt(char* data, int length, unsigned int key);
};

} // namespace Quillon
