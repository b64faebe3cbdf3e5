// Other texts and numbers in place of real ones: the same for the same, others for others, under a key.
//
// A pseudonym has the length of what it stands for, and a letter, digit or small letter where that had one, so that it is read
// by whatever read the real one. No two values share one: they are permuted, by a Feistel network that adds to each character
// of one half what a hash of the other half says (HMAC-SHA-256 under the key), eight times. Without the key nobody can tell what
// a pseudonym stood for but by what remains: its length, its blanks and signs, how often it occurs and where.
//
// A number and its digits as text have the same pseudonym.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <nettle/hmac.h>

#include "Capture/SeededHash.h"

namespace qlproto {

class Pseudonyms {
  public:
    explicit Pseudonyms(std::string_view key);

    /// Digits, ASCII letters and letters of two and three bytes of UTF-8 change, all else stays; so do zeros that lead a
    /// number. The result holds until the next call.
    const std::string& ofText(std::string_view text);

    /// The same for bytes that are no text: each may become any other.
    const std::string& ofBytes(std::string_view bytes);

    /// A number with as many digits and the same sign, up to `most`.
    uint64_t ofNumber(uint64_t magnitude, uint64_t most);

  private:
    const std::string& permuted(std::string_view text, const std::string& shape);
    void addTo(std::string& text, const std::string& shape, std::size_t begin, std::size_t end, char round);

    struct hmac_sha256_ctx _context;
    Capture::SeededMap<std::string, std::string> _known; ///< short texts, which come again and again; bounded
    std::string _result;
};

} // namespace qlproto
