// Tables whose keys come from strangers.
//
// Whoever knows how a table hashes can choose keys that all fall into one place, and every look-up then walks through
// all of them: std::hash gives integers as themselves and has no secret for texts. SipHash is made to keep the places
// secret; its key is drawn anew for each process. No other hash table belongs where a capture or a line is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace Capture {

struct SipKey {
    uint64_t low, high;
};

/// SipHash-2-4 of the bytes.
uint64_t sipHash(std::string_view bytes, const SipKey& key);

class SeededHash {
  public:
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const { return sipHash(text, processKey()); }
    std::size_t operator()(int64_t number) const {
        return sipHash({reinterpret_cast<const char*>(&number), sizeof number}, processKey());
    }

  private:
    static const SipKey& processKey();
};

template <class Key, class Value>
using SeededMap = std::unordered_map<Key, Value, SeededHash, std::equal_to<>>;

} // namespace Capture
