#include "tools/qlproto/messages/Pseudonyms.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <fmt/format.h>

namespace qlproto {

namespace {

constexpr int ROUNDS = 8;
constexpr std::size_t LONGEST_KNOWN = 64, MOST_KNOWN = 100'000; // some 20 MB

/// What a character may become: one of `size` in a row from `first`. One alone stays.
struct Alphabet {
    unsigned char first;
    unsigned size;
};

// Letters of shapes, which are part of what is hashed.
constexpr char KEPT = ' ', DIGIT = '0', FIRST_DIGIT = '1', CAPITAL = 'A', SMALL = 'a', CONTINUATION = 'u', BYTE = 'b';

constexpr Alphabet alphabetOf(char shape) {
    switch (shape) {
    case DIGIT:
        return {'0', 10};
    case FIRST_DIGIT:
        return {'1', 9};
    case CAPITAL:
        return {'A', 26};
    case SMALL:
        return {'a', 26};
    case CONTINUATION:
        return {0x80, 64};
    case BYTE:
        return {0, 256};
    default:
        return {0, 1};
    }
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// Bytes after this one that may be any continuation, so that the character stays one: of scripts with letters.
std::size_t freeBytesAfter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0xC3 && byte <= 0xDF ? 1 : byte >= 0xE3 && byte <= 0xEC ? 2 : 0;
}

/// The kind of each byte. That of a text's pseudonym is the same, or the pseudonym of another text could be equal to it.
std::string shapeOf(std::string_view text) {
    std::string shape(text.size(), KEPT);
    bool isInNumber = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (isDigit(c)) {
            // A zero that begins a number stays, and nothing else becomes one.
            shape[i] = isInNumber ? DIGIT : c == '0' ? KEPT : FIRST_DIGIT;
        } else if (c >= 'A' && c <= 'Z') {
            shape[i] = CAPITAL;
        } else if (c >= 'a' && c <= 'z') {
            shape[i] = SMALL;
        } else if (const std::size_t bytes = freeBytesAfter(c); bytes != 0 && bytes < text.size() - i) {
            if (std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i + 1),
                            text.begin() + static_cast<std::ptrdiff_t>(i + 1 + bytes), isContinuation)) {
                std::fill_n(shape.begin() + static_cast<std::ptrdiff_t>(i + 1), bytes, CONTINUATION);
                i += bytes;
            }
        }
        isInNumber = isDigit(c);
    }
    return shape;
}

} // namespace

Pseudonyms::Pseudonyms(std::string_view key) {
    hmac_sha256_set_key(&_context, key.size(), reinterpret_cast<const uint8_t*>(key.data()));
}

const std::string& Pseudonyms::ofText(std::string_view text) {
    if (text.size() > LONGEST_KNOWN) return permuted(text, shapeOf(text));
    if (const auto known = _known.find(text); known != _known.end()) return known->second;
    if (_known.size() == MOST_KNOWN) _known.clear();
    return _known.emplace(std::string(text), permuted(text, shapeOf(text))).first->second;
}

const std::string& Pseudonyms::ofBytes(std::string_view bytes) {
    return permuted(bytes, std::string(bytes.size(), BYTE));
}

uint64_t Pseudonyms::ofNumber(uint64_t magnitude, uint64_t most) {
    // What comes out too large is permuted again, until it fits: that is a permutation of what does.
    std::string digits = fmt::to_string(magnitude);
    for (;;) {
        digits = std::string(ofText(digits));
        uint64_t number = 0;
        if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec == std::errc() && number <= most)
            return number;
    }
}

const std::string& Pseudonyms::permuted(std::string_view text, const std::string& shape) {
    _result = text;
    const std::size_t half = text.size() / 2;
    for (int round = 0; round < ROUNDS; ++round)
        round % 2 == 0 ? addTo(_result, shape, half, text.size(), static_cast<char>(round))
                       : addTo(_result, shape, 0, half, static_cast<char>(round));
    return _result;
}

/// Adds to the characters from `begin` to `end`, each within its alphabet, what the others and the key say.
void Pseudonyms::addTo(std::string& text, const std::string& shape, std::size_t begin, std::size_t end, char round) {
    std::array<uint8_t, SHA256_DIGEST_SIZE> others, block;
    const auto update = [&](const char* bytes, std::size_t size) {
        hmac_sha256_update(&_context, size, reinterpret_cast<const uint8_t*>(bytes));
    };
    update(&round, 1);
    update(shape.data(), shape.size());
    update(text.data(), begin);
    update(text.data() + end, text.size() - end);
    hmac_sha256_digest(&_context, others.size(), others.data()); // and begins anew

    constexpr std::size_t BYTES_EACH = 2; // so that no character is much likelier than others
    for (std::size_t i = begin, at = block.size(); i < end; ++i, at += BYTES_EACH) {
        if (at == block.size()) {
            const uint32_t place = static_cast<uint32_t>(i);
            hmac_sha256_update(&_context, others.size(), others.data());
            update(reinterpret_cast<const char*>(&place), sizeof place);
            hmac_sha256_digest(&_context, block.size(), block.data());
            at = 0;
        }
        const Alphabet alphabet = alphabetOf(shape[i]);
        if (alphabet.size == 1) continue;
        const unsigned was = static_cast<unsigned char>(text[i]) - alphabet.first;
        const unsigned sum = was + (static_cast<unsigned>(block[at]) << 8 | block[at + 1]);
        text[i] = static_cast<char>(alphabet.first + sum % alphabet.size);
    }
}

} // namespace qlproto
