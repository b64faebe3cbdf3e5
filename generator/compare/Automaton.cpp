#include "generator/compare/Automaton.h"

#include <algorithm>
#include <bit>

namespace qlgen::compare {
namespace {

constexpr int UNKNOWN = -2;
constexpr uint32_t MOST_TEXT = 127, MOST_ELEMENTS = 127, MOST_BYTES = 10;

Framing framing(const Item& item, Reader reader) { return reader == Reader::written ? item.written() : item.read(); }

/// Whether a writer's value of one byte can be that.
bool canWrite(const Item& item, uint8_t byte) {
    if (item.type->form == WireForm::boolean) return byte <= 1;
    return item.enumeration == nullptr || byte == 0
           || std::ranges::any_of(item.enumeration->enumerators,
                                  [&](const Enumerator& it) { return static_cast<uint8_t>(it.value) == byte; });
}

} // namespace

size_t fewestBytes(Items items, Reader reader) {
    size_t bytes = 0;
    for (const Item& item : items) {
        const Framing is = framing(item, reader);
        bytes += is == Framing::fixed ? item.type->bits / 8 : is == Framing::fixedText ? 2 : 1;
    }
    return bytes;
}

Automaton::Automaton(Items items, Reader reader) : _items(items), _reader(reader) {
    State start;
    start.frames.push_back({items.data(), items.data(), items.data() + items.size(), 1});
    settle(start);
    intern(std::move(start));
}

int Automaton::step(int state, uint8_t byte) {
    const auto at = static_cast<size_t>(state);
    if (_steps[at][byte] == UNKNOWN) {
        State next = _states[at];
        const int to = advance(next, byte) ? intern(std::move(next)) : REFUSED;
        _steps[at][byte] = to;
    }
    return _steps[at][byte];
}

bool Automaton::isEnd(int state) const {
    const State& it = _states[static_cast<size_t>(state)];
    if (it.frames.empty()) return true;
    return _reader == Reader::rolling && it.phase == Phase::start && it.frames.size() == 1
           && it.frames.back().next->mayEndBefore;
}

size_t Automaton::remaining(int state) const {
    const State& it = _states[static_cast<size_t>(state)];
    if (it.frames.empty()) return 0;
    const bool isBetween = it.frames.size() == 1 && it.phase == Phase::start;
    return isBetween ? static_cast<size_t>(it.frames.back().end - it.frames.back().next) : _items.size() + 1;
}

size_t Automaton::fewestBytes(const State& state) const {
    size_t bytes = 0;
    for (const Frame& frame : state.frames) {
        bytes += compare::fewestBytes(Items(frame.next, frame.end), _reader);
        if (frame.remaining > 1)
            bytes += (frame.remaining - 1) * compare::fewestBytes(Items(frame.first, frame.end), _reader);
    }
    switch (state.phase) { // of a value that has begun
    case Phase::start:
        return bytes;
    case Phase::fixed:
    case Phase::text:
        bytes += state.number;
        break;
    case Phase::textLength:
    case Phase::fixedLength:
        bytes += 1 + state.number;
        break;
    case Phase::varint:
    case Phase::count:
        bytes += 1;
        break;
    }
    return bytes - compare::fewestBytes(Items(state.frames.back().next, 1), _reader);
}

int Automaton::intern(State state) {
    std::vector<uint64_t> key{static_cast<uint64_t>(state.phase), state.number};
    for (const Frame& frame : state.frames) {
        key.push_back(std::bit_cast<uint64_t>(frame.next));
        key.push_back(frame.remaining);
    }
    const auto [found, isNew] = _known.emplace(std::move(key), static_cast<int>(_states.size()));
    if (isNew) {
        _fewest.push_back(fewestBytes(state));
        _states.push_back(std::move(state));
        _steps.emplace_back().fill(UNKNOWN);
    }
    return found->second;
}

/// Leaves what has ended: the elements of a vector, or all.
void Automaton::settle(State& state) {
    while (!state.frames.empty()) {
        Frame& frame = state.frames.back();
        if (frame.next != frame.end) return;
        if (--frame.remaining == 0)
            state.frames.pop_back();
        else
            frame.next = frame.first;
    }
}

bool Automaton::complete(State& state) {
    ++state.frames.back().next;
    state.phase = Phase::start;
    state.number = 0;
    settle(state);
    return true;
}

bool Automaton::beginText(State& state, uint32_t length) {
    if (length > MOST_TEXT) return false;
    if (length == 0) return complete(state);
    state.phase = Phase::text;
    state.number = length;
    return true;
}

bool Automaton::beginElements(State& state, uint32_t count) {
    if (count > MOST_ELEMENTS) return false;
    const Items element = state.frames.back().next->element;
    ++state.frames.back().next;
    if (count != 0) state.frames.push_back({element.data(), element.data(), element.data() + element.size(), count});
    state.phase = Phase::start;
    state.number = 0;
    settle(state);
    return true;
}

bool Automaton::begin(State& state, uint8_t byte) const {
    if (state.frames.empty()) return _reader == Reader::rolling;
    const Item& item = *state.frames.back().next;
    const auto continues = [&](Phase phase, uint32_t number) {
        state.phase = phase;
        state.number = number;
        return true;
    };
    switch (framing(item, _reader)) {
    case Framing::byte:
        return (_reader != Reader::written || canWrite(item, byte)) && complete(state);
    case Framing::varint:
        if (item.isPrice() && _reader == Reader::written && (byte & 3) != 0 && byte != 3 && byte != 5 && byte != 7)
            return false;
        return byte < 0x80 ? complete(state) : continues(Phase::varint, 1);
    case Framing::fixed:
        return continues(Phase::fixed, item.type->bits / 8 - 1);
    case Framing::text:
        return byte < 0x80 ? beginText(state, byte) : continues(Phase::textLength, byte & 0x7F);
    case Framing::fixedText:
        return continues(Phase::fixedLength, byte);
    case Framing::count:
        return byte < 0x80 ? beginElements(state, byte) : continues(Phase::count, byte);
    }
    return false;
}

/// Bytes of the longest varint that is followed.
uint32_t Automaton::longest(const Item& item) const {
    return _reader == Reader::written && !item.isPrice() ? (item.type->bits + 6) / 7 : MOST_BYTES;
}

bool Automaton::advance(State& state, uint8_t byte) const {
    switch (state.phase) {
    case Phase::start:
        return begin(state, byte);
    case Phase::varint:
        if (byte < 0x80) return (byte != 0 || _reader != Reader::written) && complete(state);
        if (_reader != Reader::written) return true; // however long
        return ++state.number < longest(*state.frames.back().next);
    case Phase::fixed:
    case Phase::text:
        return --state.number == 0 ? complete(state) : true;
    case Phase::textLength: // a second byte is the last that leaves a text short enough
        return byte < 0x80 && (byte != 0 || _reader != Reader::written)
               && beginText(state, state.number | static_cast<uint32_t>(byte) << 7);
    case Phase::fixedLength:
        return beginText(state, state.number | static_cast<uint32_t>(byte) << 8);
    case Phase::count: {
        const uint32_t count = (state.number << 8 | byte) & 0x7FFF;
        return (count >= 0x80 || _reader != Reader::written) && beginElements(state, count);
    }
    }
    return false;
}

namespace {

/// A nondeterministic automaton over two kinds of bytes: without bit 7, and with it.
class Nfa {
  public:
    Nfa(Items items, Reader reader) : _reader(reader) {
        int at = add();
        _start = at;
        std::vector<int> ends;
        for (const Item& item : items) {
            if (reader == Reader::rolling && item.mayEndBefore) ends.push_back(at);
            at = addItem(item, at);
        }
        end = at;
        if (reader != Reader::rolling) return;
        link(end, both, end); // trailing bytes
        end = add();
        ends.push_back(at);
        for (const int from : ends) link(from, nothing, end);
    }

    struct Step {
        int kind;
        int to;
    };
    static constexpr int nothing = 0, low = 1, high = 2, both = 3;

    const std::vector<Step>& steps(int state) const { return _steps[static_cast<size_t>(state)]; }
    size_t size() const { return _steps.size(); }
    int start() const { return _start; }
    int end;

  private:
    int add() {
        _steps.emplace_back();
        return static_cast<int>(_steps.size()) - 1;
    }
    void link(int from, int kind, int to) { _steps[static_cast<size_t>(from)].push_back({kind, to}); }
    int after(int from, int kind) {
        const int to = add();
        link(from, kind, to);
        return to;
    }
    int varint(int from) {
        const int digits = after(from, nothing);
        link(digits, high, digits);
        return after(digits, low);
    }
    int bytes(int from) {
        const int loop = after(from, nothing);
        link(loop, both, loop);
        return after(loop, nothing);
    }
    int addItem(const Item& item, int from) {
        switch (framing(item, _reader)) {
        case Framing::byte: {
            bool isLow =
                _reader == Reader::written && (item.type->form == WireForm::boolean || item.enumeration != nullptr);
            for (unsigned byte = 0x80; isLow && byte < 0x100; ++byte)
                isLow = !canWrite(item, static_cast<uint8_t>(byte));
            return after(from, isLow ? low : both);
        }
        case Framing::varint:
            return varint(from);
        case Framing::fixed:
            for (unsigned i = 0; i < item.type->bits / 8; ++i) from = after(from, both);
            return from;
        case Framing::text:
            return bytes(varint(from));
        case Framing::fixedText:
            return bytes(after(after(from, both), both));
        case Framing::count:
            break;
        }
        const int loop = after(from, low);
        link(after(from, high), both, loop);
        int at = after(loop, nothing);
        for (const Item& inner : item.element) at = addItem(inner, at);
        link(at, nothing, loop);
        return after(loop, nothing);
    }

    const Reader _reader;
    int _start;
    std::vector<std::vector<Step>> _steps;
};

} // namespace

bool areDisjoint(Items writer, Items reader, Reader kind) {
    const Nfa a(writer, Reader::written), b(reader, kind);
    if (a.size() * b.size() > 4'000'000) return false; // not worth it
    std::vector<bool> seen(a.size() * b.size());
    std::vector<std::pair<int, int>> open;
    const auto visit = [&](int p, int q) {
        const size_t at = static_cast<size_t>(p) * b.size() + static_cast<size_t>(q);
        if (!seen[at]) open.emplace_back(p, q);
        seen[at] = true;
    };
    visit(a.start(), b.start());
    while (!open.empty()) {
        const auto [p, q] = open.back();
        open.pop_back();
        if (p == a.end && q == b.end) return false;
        for (const Nfa::Step& step : a.steps(p)) {
            if (step.kind == Nfa::nothing) visit(step.to, q);
            for (const Nfa::Step& other : b.steps(q))
                if ((step.kind & other.kind) != 0) visit(step.to, other.to);
        }
        for (const Nfa::Step& other : b.steps(q))
            if (other.kind == Nfa::nothing) visit(p, other.to);
    }
    return true;
}

} // namespace qlgen::compare
