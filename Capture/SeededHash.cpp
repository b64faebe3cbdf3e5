#include "Capture/SeededHash.h"

#include <bit>
#include <cstring>
#include <random>

namespace Capture {

namespace {

/// The four words that the bytes are mixed into.
class SipState {
  public:
    explicit SipState(const SipKey& key)
        : _a(key.low ^ 0x736f6d6570736575),
          _b(key.high ^ 0x646f72616e646f6d),
          _c(key.low ^ 0x6c7967656e657261),
          _d(key.high ^ 0x7465646279746573) {}

    void take(uint64_t word) {
        _d ^= word;
        mix();
        mix();
        _a ^= word;
    }

    uint64_t finish() {
        _c ^= 0xFF;
        for (int i = 0; i < 4; ++i) mix();
        return _a ^ _b ^ _c ^ _d;
    }

  private:
    void mix() {
        _a += _b;
        _b = std::rotl(_b, 13) ^ _a;
        _a = std::rotl(_a, 32);
        _c += _d;
        _d = std::rotl(_d, 16) ^ _c;
        _a += _d;
        _d = std::rotl(_d, 21) ^ _a;
        _c += _b;
        _b = std::rotl(_b, 17) ^ _c;
        _c = std::rotl(_c, 32);
    }

    uint64_t _a, _b, _c, _d;
};

} // namespace

uint64_t sipHash(std::string_view bytes, const SipKey& key) {
    SipState state(key);
    const uint64_t length = bytes.size();
    uint64_t word = 0;
    for (; bytes.size() >= sizeof word; bytes.remove_prefix(sizeof word)) {
        std::memcpy(&word, bytes.data(), sizeof word);
        state.take(word);
    }
    word = 0;
    if (!bytes.empty()) std::memcpy(&word, bytes.data(), bytes.size());
    state.take(word | length << 56);
    return state.finish();
}

const SipKey& SeededHash::processKey() {
    static const SipKey key = [] {
        std::random_device random;
        const auto word = [&] { return uint64_t{random()} << 32 | random(); };
        return SipKey{word(), word()};
    }();
    return key;
}

} // namespace Capture
