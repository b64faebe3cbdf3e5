// Random numbers that are the same on every machine.
//
// A session is repeatable to the byte from its seed, so nothing here may depend on the standard library: its
// distributions give other numbers with every implementation. The generator is splitmix64; the remainder's slight bias
// does not matter to a simulation.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace qlproto::session {

class Rng {
  public:
    explicit Rng(uint64_t seed) : _state(seed) {}

    uint64_t next() {
        uint64_t z = (_state += 0x9E3779B97F4A7C15u);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

    /// A number from `low` to `high`, both included.
    int64_t between(int64_t low, int64_t high) {
        return low + static_cast<int64_t>(next() % static_cast<uint64_t>(high - low + 1));
    }

    /// True in `percent` of 100 cases.
    bool chance(int percent) { return between(1, 100) <= percent; }

    template <class Container>
    auto& pick(Container& items) {
        return items[indexIn(items)];
    }

    template <class Container>
    std::size_t indexIn(const Container& items) {
        return next() % items.size();
    }

    /// A time around `mean`, from half of it to one and a half.
    int64_t around(int64_t mean) { return between(mean / 2, mean + mean / 2); }

    /// A generator of its own for one part of the session, so that a change in one part leaves the others as they were.
    Rng fork() { return Rng(next()); }

  private:
    uint64_t _state;
};

/// Deals its cards in random order and shuffles again when all are dealt. What happens in a session is dealt, not
/// drawn: so every kind of event occurs once per round, however short the session.
template <class Card, std::size_t N>
class Deck {
  public:
    Deck(Rng rng, const std::array<Card, N>& cards) : _rng(rng), _cards(cards) {}

    Card deal() {
        if (_dealt == N) _dealt = 0;
        if (_dealt == 0) shuffle();
        return _cards[_dealt++];
    }

  private:
    void shuffle() {
        for (std::size_t i = N - 1; i > 0; --i) std::swap(_cards[i], _cards[_rng.next() % (i + 1)]);
    }

    Rng _rng;
    std::array<Card, N> _cards;
    std::size_t _dealt = 0;
};

} // namespace qlproto::session
