#include "generator/compare/Verdict.h"

#include <algorithm>
#include <array>
#include <queue>
#include <unordered_map>

#include "generator/compare/Automaton.h"
#include "generator/compare/RandomBody.h"

namespace qlgen::compare {
namespace {

// --- what can be told from the grammars alone

bool hasOnlyLowBytes(const Item& writer) {
    if (writer.type->form == WireForm::boolean) return true;
    return writer.enumeration != nullptr
           && std::ranges::all_of(writer.enumeration->enumerators,
                                  [](const Enumerator& it) { return static_cast<uint8_t>(it.value) < 0x80; });
}

/// Whether the reader's value ends where the writer's does, whatever it is.
bool endsAlike(const Item& writer, const Item& reader);

bool endAlike(Items writer, Items reader) { return std::ranges::equal(writer, reader, endsAlike); }

bool endsAlike(const Item& writer, const Item& reader) {
    if (writer.written() == Framing::byte && reader.read() == Framing::varint) return hasOnlyLowBytes(writer);
    if (writer.written() != reader.read()) return false;
    if (writer.written() == Framing::fixed) return writer.type->bits == reader.type->bits;
    return !writer.isVector || endAlike(writer.element, reader.element);
}

/// Whether every byte that the writer's values travel as means the same to the reader.
bool bytesMeanTheSame(const Item& writer, const Item& reader) {
    if (writer.type->form == WireForm::boolean) return true; // 0 and 1 are those numbers everywhere
    const bool isByte = reader.type->form == WireForm::byte;
    if (writer.enumeration == nullptr) return isByte && writer.isSigned() == reader.isSigned();
    return std::ranges::all_of(writer.enumeration->enumerators, [&](const Enumerator& it) {
        const auto byte = static_cast<uint8_t>(it.value);
        if (reader.enumeration != nullptr) return !changesMeaning(*writer.enumeration, *reader.enumeration, byte);
        if (reader.type->form == WireForm::boolean) return byte <= 1;
        return !reader.isSigned() || byte < 0x80;
    });
}

/// Whether the reader reads every value of the writer's as it was meant. `padding`: that of both is taken to be alike; it
/// does not even read back where it was written.
bool isKept(const Item& writer, const Item& reader, bool padding);

bool areKept(Items writer, Items reader, bool padding) {
    return std::ranges::equal(writer, reader, [&](const Item& w, const Item& r) { return isKept(w, r, padding); });
}

bool isKept(const Item& writer, const Item& reader, bool padding) {
    if (writer.key != reader.key) return false;
    if (writer.isPadding() && reader.isPadding()) return padding;
    if (!endsAlike(writer, reader)) return false;
    const LogicalType &w = *writer.type, &r = *reader.type;
    switch (writer.written()) {
    case Framing::byte: // a plain varint below 128 is that byte
        return (reader.read() == Framing::byte || r.form == WireForm::varint) && bytesMeanTheSame(writer, reader);
    case Framing::varint:
        return w.form == r.form && w.bits <= r.bits;
    case Framing::fixed:
        return w.kind == r.kind;
    case Framing::text:
    case Framing::fixedText:
        return w.isEnciphered == r.isEnciphered;
    case Framing::count:
        return areKept(writer.element, reader.element, padding);
    }
    return false;
}

size_t commonStart(Items writer, Items reader, bool (*isAlike)(const Item&, const Item&)) {
    const auto [end, ignored] = std::ranges::mismatch(writer, reader, isAlike);
    return static_cast<size_t>(end - writer.begin());
}

/// Values at the end that are read as they were meant.
size_t commonEnd(Items writer, Items reader) {
    size_t common = 0;
    while (common < std::min(writer.size(), reader.size())
           && isKept(writer[writer.size() - 1 - common], reader[reader.size() - 1 - common], false))
        ++common;
    return common;
}

/// Whether a rolling reader reads all fields that both have as they were meant, and has or lacks some at the end.
bool isExtended(Items writer, Items reader, size_t common) {
    return common == reader.size() || (common == writer.size() && reader[common].mayEndBefore);
}

// --- searching for a body that shows a misreading

Reading zeros(Items items) {
    Reading values;
    for (const Item& item : items) values.push_back({&item, {}, zeroOf(item)});
    return values;
}

class Search {
  public:
    Search(Items writer, Items reader, Reader kind, bool isOther)
        : _writer(writer),
          _reader(reader),
          _kind(kind),
          _isOther(isOther),
          _tail(isOther ? 0 : commonEnd(writer, reader)),
          _ownParser(writer, Reader::written),
          _otherParser(reader, kind) {}

    /// Tries single values first, which make the plainest witnesses, then bodies along which both parsers can go, then
    /// any.
    bool run() { return tryValues(_writer) || tryPaths() || tryAny(); }

    Reading written;
    Reading read;

  private:
    // A definition can be so large that to try everything takes minutes.
    static constexpr size_t MOST_VALUES = 300'000, MOST_NODES = 20'000, MOST_RANDOM_VALUES = 300'000;

    bool isTired() const { return _tried > _limit; }

    /// Whether the body of these values is accepted and misread; kept if so.
    bool isWitness(const Reading& values) { return isWitness(values, encode(values)); }
    bool isWitness(const Reading& values, const std::string& body) {
        _tried += 1 + values.size() + _reader.size();
        std::optional<Reading> result = decode(_reader, body, _kind);
        if (!result || !(_isOther || differ(values, *result))) return false;
        written = values;
        read = std::move(*result);
        return true;
    }

    // --- one value at a time, all others zero

    bool tryValues(Items items) {
        for (const Item& item : items) {
            for (const Value& value : samples(item)) {
                if (isTired()) return false;
                Reading values;
                fill(_writer, item, value, {}, values);
                if (isWitness(values)) return true;
            }
            if (tryValues(item.element)) return true;
        }
        return false;
    }

    static bool holds(Items items, const Item& target) {
        return std::ranges::any_of(items, [&](const Item& it) { return &it == &target || holds(it.element, target); });
    }

    static void fill(Items items, const Item& target, const Value& value, const std::vector<uint16_t>& at,
                     Reading& out) {
        for (const Item& item : items) {
            Value it = zeroOf(item);
            if (&item == &target)
                it = value;
            else if (holds(item.element, target))
                it.bits = 1;
            out.push_back({&item, at, it});
            if (!item.isVector) continue;
            for (uint64_t i = 0; i < it.bits; ++i) {
                std::vector<uint16_t> inner = at;
                inner.push_back(static_cast<uint16_t>(i));
                fill(item.element, target, value, inner, out);
            }
        }
    }

    static std::vector<Value> samples(const Item& item) {
        std::vector<Value> values;
        const LogicalType& type = *item.type;
        const auto add = [&](uint64_t bits) { values.push_back(integer(bits, type.bits, item.isSigned())); };
        switch (item.written()) {
        case Framing::count:
            for (const uint64_t count : {1u, 2u}) add(count);
            break;
        case Framing::text:
        case Framing::fixedText:
            for (const char* const text : {"a", "\1", "ab"}) {
                values.push_back(zeroOf(item));
                values.back().text = text;
            }
            break;
        default:
            if (type.form == WireForm::boolean) {
                add(1);
            } else if (item.enumeration != nullptr) {
                for (const Enumerator& it : item.enumeration->enumerators) add(static_cast<uint8_t>(it.value));
            } else if (type.kind == ValueKind::floating) {
                const uint64_t one = type.bits == 32 ? 0x3F800000u : 0x3FF0000000000000u;
                values.push_back({Value::Kind::real, false, one, {}});
            } else {
                // Small ones, and those that each narrower form cannot hold.
                add(1);
                add(item.isSigned() ? ~uint64_t{0} : 2);
                if (item.written() == Framing::fixed) add(type.bits / 8 - 1); // its other bytes are as many
                for (const unsigned bits : {7u, 8u, 15u, 16u, 31u, 32u, 63u})
                    if (bits < type.bits) add(uint64_t{1} << bits);
                if (item.isPrice()) add(0x8000000000000001); // one of a single byte
            }
        }
        return values;
    }

    // --- bodies along which both parsers can go

    // What both parsers have come to, by way of some bytes. Where both stand before values that are read as they were
    // meant up to the end, the search ends, too: nothing can go wrong after that.
    struct Node {
        int writer;
        int reader;
        int from;     // node before it, or none
        uint8_t byte; // that led here
        size_t depth = 0;
        int onward = NOWHERE; // next node on a way to an end
        uint8_t onwardByte = 0;
    };
    static constexpr int NOWHERE = -2, ENDS = -1;

    std::vector<uint8_t> alphabet() const {
        std::vector<uint8_t> bytes = {1, 0, 2, 3, 4, 6, 8, 12, 0x80, 0x81, 0xFF};
        addEnumerators(_writer, bytes);
        addLengths(_writer, bytes);
        return bytes;
    }
    static void add(uint8_t byte, std::vector<uint8_t>& bytes) {
        if (bytes.size() < 40 && std::ranges::find(bytes, byte) == bytes.end()) bytes.push_back(byte);
    }
    /// Of texts that cover the rest of an element whose first byte is taken for their length.
    static void addLengths(Items items, std::vector<uint8_t>& bytes) {
        for (const Item& item : items) {
            if (const size_t size = compare::fewestBytes(item.element, Reader::written); size > 1 && size < 0x80)
                add(static_cast<uint8_t>(size - 1), bytes);
            addLengths(item.element, bytes);
        }
    }
    static void addEnumerators(Items items, std::vector<uint8_t>& bytes) {
        for (const Item& item : items) {
            if (item.enumeration != nullptr)
                for (const Enumerator& it : item.enumeration->enumerators) add(static_cast<uint8_t>(it.value), bytes);
            addEnumerators(item.element, bytes);
        }
    }

    Node& node(int at) { return _nodes[static_cast<size_t>(at)]; }
    const Node& node(int at) const { return _nodes[static_cast<size_t>(at)]; }

    bool isEnd(const Node& at) const {
        if (_ownParser.isEnd(at.writer) && _otherParser.isEnd(at.reader)) return true;
        const size_t own = _ownParser.remaining(at.writer), other = _otherParser.remaining(at.reader);
        return own == other && own <= _tail;
    }

    /// Runs both parsers over the same bytes in all ways that neither refuses, towards the shortest bodies first, of them
    /// those with most zeros, and tries the body of each way on from each place that leads to an end.
    bool tryPaths() {
        const std::vector<uint8_t> bytes = alphabet();
        struct Edge {
            int from;
            int to;
            uint8_t byte;
        };
        std::vector<Edge> open; // to nodes of which it is not known yet whether they lead to an end
        std::unordered_map<uint64_t, int> known{{0, 0}};
        using Candidate = std::array<size_t, 3>; // bytes of a body, bytes that are not zero, node
        std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> next;
        next.push({0, 0, 0});
        _nodes.push_back({Automaton::START, Automaton::START, -1, 0});
        while (!next.empty() && !isTired()) {
            const int at = static_cast<int>(next.top()[2]);
            const size_t others = next.top()[1];
            next.pop();
            for (const uint8_t byte : bytes) {
                const int w = _ownParser.step(node(at).writer, byte);
                const int r = w == Automaton::REFUSED ? w : _otherParser.step(node(at).reader, byte);
                if (r == Automaton::REFUSED) continue;
                const auto key = static_cast<uint64_t>(w) << 32 | static_cast<uint32_t>(r);
                const auto [found, isNew] = known.emplace(key, static_cast<int>(_nodes.size()));
                const int to = found->second;
                if (isNew) {
                    if (_nodes.size() == MOST_NODES) return tryOpen(open);
                    _nodes.push_back({w, r, at, byte, node(at).depth + 1});
                    if (isEnd(_nodes.back()))
                        node(to).onward = ENDS;
                    else
                        next.push({node(to).depth + fewestBytes(w, r), others + (byte != 0), static_cast<size_t>(to)});
                }
                if (node(to).onward == NOWHERE) {
                    if (!isNew) open.push_back({at, to, byte});
                    continue;
                }
                leadsOn(at, to, byte);
                if (tryBody(at, byte, to)) return true;
            }
        }
        return tryOpen(open);
    }

    /// Of what can still follow, so that both parsers come to their ends.
    size_t fewestBytes(int writer, int reader) const {
        const size_t own = _ownParser.fewestBytes(writer);
        return _kind == Reader::rolling ? own : std::max(own, _otherParser.fewestBytes(reader));
    }

    template <class Edges>
    bool tryOpen(const Edges& open) {
        return std::ranges::any_of(open, [&](const auto& it) {
            return !isTired() && node(it.to).onward != NOWHERE && tryBody(it.from, it.byte, it.to);
        });
    }

    /// Notes that a node and those before it lead to an end, by way of `to`.
    void leadsOn(int at, int to, uint8_t byte) {
        for (; at >= 0 && node(at).onward == NOWHERE; at = node(at).from) {
            node(at).onward = to;
            node(at).onwardByte = byte;
            to = at;
            byte = node(at).byte;
        }
    }

    bool tryBody(int at, uint8_t byte, int to) {
        std::string body;
        for (; node(at).from >= 0; at = node(at).from) body += static_cast<char>(node(at).byte);
        std::ranges::reverse(body);
        body += static_cast<char>(byte);
        for (; node(to).onward >= 0; to = node(to).onward) body += static_cast<char>(node(to).onwardByte);
        return tryBody(body + encode(zeros(_writer.last(_ownParser.remaining(node(to).writer)))));
    }

    bool tryBody(const std::string& body) {
        _tried += _writer.size();
        const std::optional<Reading> values = decode(_writer, body, Reader::written);
        if (!values || encode(*values) != body || !isWitness(*values, body)) return false;
        shrink();
        return true;
    }

    /// Bodies that the parsers' limits and alphabet leave out.
    bool tryAny() {
        RandomBody random(_writer);
        for (_limit = _tried + MOST_RANDOM_VALUES; !isTired();)
            if (isWitness(random.next())) {
                shrink();
                return true;
            }
        return false;
    }

    // --- the witness made plainer

    void shrink() {
        for (bool isSmaller = true; isSmaller && !isTired();) {
            isSmaller = false;
            for (size_t i = 0; i < written.size() && !isTired(); ++i) {
                if (written[i].value.isZero()) continue;
                Reading smaller = written;
                if (smaller[i].item->isVector)
                    dropLastElement(smaller, i);
                else
                    smaller[i].value = zeroOf(*smaller[i].item);
                isSmaller |= isWitness(smaller);
            }
        }
    }
    static void dropLastElement(Reading& values, size_t vector) {
        const uint64_t last = --values[vector].value.bits;
        const size_t depth = values[vector].at.size();
        const std::vector<uint16_t> at = values[vector].at;
        auto from = values.begin() + static_cast<std::ptrdiff_t>(vector) + 1;
        const auto isInside = [&](const Place& it) {
            return it.at.size() > depth && std::equal(at.begin(), at.end(), it.at.begin());
        };
        const auto end = std::find_if_not(from, values.end(), isInside);
        from = std::find_if(from, end, [&](const Place& it) { return it.at[depth] == last; });
        values.erase(from, end);
    }

    const Items _writer;
    const Items _reader;
    const Reader _kind;
    const bool _isOther;
    const size_t _tail; // values at the end that are read as they were meant
    Automaton _ownParser;
    Automaton _otherParser;
    size_t _tried = 0; // values written and read
    size_t _limit = MOST_VALUES;
    std::vector<Node> _nodes;
};

std::vector<std::pair<std::string, std::string>> notZero(const Reading& reading) {
    std::vector<std::pair<std::string, std::string>> values;
    for (const Place& place : reading)
        if (!place.value.isZero()) values.emplace_back(place.path(), place.text());
    return values;
}

} // namespace

const char* toText(Verdict verdict) {
    return verdict == Verdict::same ? "same" : verdict == Verdict::refused ? "refused" : "silent";
}

Outcome judge(Items writer, Items reader, bool isOther) {
    Outcome outcome;
    if (!isOther && areKept(writer, reader, true)) return outcome;

    // Values that are read as they were meant, whatever they are, have no part in what goes wrong after them.
    const size_t kept =
        isOther ? 0 : commonStart(writer, reader, [](const Item& w, const Item& r) { return isKept(w, r, false); });
    const Items ownRest = writer.subspan(kept), otherRest = reader.subspan(kept);
    const size_t alike = commonStart(ownRest, otherRest, endsAlike);
    const std::string start = encode(zeros(writer.first(kept)));
    const auto verdictOf = [&](Reader kind) {
        if (areDisjoint(ownRest.subspan(alike), otherRest.subspan(alike), kind)) return Verdict::refused;
        Search search(ownRest, otherRest, kind, isOther);
        if (search.run()) {
            outcome.witness = Witness{start + encode(search.written), kind == Reader::rolling, notZero(search.written),
                                      notZero(search.read)};
            return Verdict::silent;
        }
        outcome.isProved = false;
        return Verdict::refused;
    };
    outcome.verdict = verdictOf(Reader::whole);
    if (outcome.verdict == Verdict::silent)
        outcome.rolling = Verdict::silent;
    else if (!isOther && isExtended(writer, reader, kept))
        outcome.rolling = Verdict::same;
    else
        outcome.rolling = verdictOf(Reader::rolling);
    return outcome;
}

} // namespace qlgen::compare
