// The bytes of one side, one at a time: a writer's as it makes them, or a reader's as it takes them. For searching: texts,
// vectors and numbers beyond a few bytes are left out, and a writer's forms may be a little too liberal.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "generator/compare/Body.h"

namespace qlgen::compare {

/// Of all bodies of these values.
size_t fewestBytes(Items items, Reader reader);

class Automaton {
  public:
    static constexpr int REFUSED = -1;
    static constexpr int START = 0;

    Automaton(Items items, Reader reader);

    /// The state after one more byte, or REFUSED.
    int step(int state, uint8_t byte);
    /// Whether a body may end in that state.
    bool isEnd(int state) const;
    /// Values of the message still to come if a body stands between two of them, and none is within a vector; else more
    /// than it has.
    size_t remaining(int state) const;
    /// Fewest bytes from there to the end of the last value.
    size_t fewestBytes(int state) const { return _fewest[static_cast<size_t>(state)]; }

  private:
    enum class Phase : uint8_t { start, varint, fixed, textLength, fixedLength, text, count };
    struct Frame {
        const Item* first;
        const Item* next;
        const Item* end;
        uint32_t remaining; ///< elements, this one included
    };
    struct State {
        std::vector<Frame> frames; // those of vectors after the message's own; empty at the end
        Phase phase = Phase::start;
        uint32_t number = 0; // what the phase counts: bytes seen or still to come, or the first part of a length
    };

    bool advance(State& state, uint8_t byte) const;
    bool begin(State& state, uint8_t byte) const;
    uint32_t longest(const Item& item) const;
    static void settle(State& state);
    static bool complete(State& state);
    static bool beginText(State& state, uint32_t length);
    static bool beginElements(State& state, uint32_t count);
    size_t fewestBytes(const State& state) const;
    int intern(State state);

    const Items _items;
    const Reader _reader;
    std::vector<State> _states;
    std::vector<size_t> _fewest;
    std::vector<std::array<int, 256>> _steps; // UNKNOWN where not asked for yet
    std::map<std::vector<uint64_t>, int> _known;
};

/// Whether no sequence of bytes whatever fits both grammars: their lengths and counts forgotten, all else kept.
bool areDisjoint(Items writer, Items reader, Reader kind);

} // namespace qlgen::compare
