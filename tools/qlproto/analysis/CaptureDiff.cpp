#include "tools/qlproto/analysis/CaptureDiff.h"

#include <algorithm>
#include <string_view>

#include "Capture/Packet.h"
#include "Capture/SeededHash.h"

namespace qlproto {

namespace {

/// What packets of the same type have in common; so have those that are too short for one.
int typeOf(const CaptureDiff::Side& side) {
    return side.packet.size() < Capture::IDENTIFIER_SIZE ? -1 : Capture::identifierOf(side.packet);
}

/// What is equal for runs of `run` packets that are equal. Runs that end early equal those alone that end alike.
int64_t runAt(const std::vector<uint32_t>& numbers, std::size_t at, std::size_t run) {
    static_assert(2 * CaptureDiff::WINDOW < 1 << 20); // so that three numbers fit
    int64_t all = 0;
    for (std::size_t i = at; i < at + run; ++i) all = all << 20 | (i < numbers.size() ? numbers[i] : 0xFFFFF);
    return all;
}

} // namespace

CaptureDiff::CaptureDiff(Source a, Source b, Tell tell) : _tell(std::move(tell)) {
    _a.source = std::move(a);
    _b.source = std::move(b);
}

void CaptureDiff::Ahead::fill(std::size_t count) {
    while (packets.size() < count && bytes < WINDOW_BYTES && !isAtEnd) {
        if (source(packets.emplace_back())) {
            bytes += packets.back().bytes();
        } else {
            packets.pop_back();
            isAtEnd = true;
        }
    }
}

void CaptureDiff::Ahead::drop() {
    bytes -= packets.front().bytes();
    packets.pop_front();
}

void CaptureDiff::run() {
    for (;;) {
        _a.fill(1);
        _b.fill(1);
        if (_a.packets.empty() && _b.packets.empty()) return;
        if (_a.packets.empty()) {
            tellOnlyInB();
        } else if (_b.packets.empty()) {
            tellOnlyInA();
        } else if (_a.packets.front() == _b.packets.front()) {
            tellPair();
        } else {
            _a.fill(WINDOW);
            _b.fill(WINDOW);
            const Numbers numbers = number();
            layOut(untilTheyMeet(numbers), numbers);
        }
    }
}

CaptureDiff::Numbers CaptureDiff::number() const {
    Capture::SeededMap<std::string_view, uint32_t> keys, packets; // a key is no packet, even if its bytes are
    Numbers numbers;
    uint32_t next = 0;
    const auto add = [&](const Side& side, std::vector<uint32_t>& to) {
        const auto [it, isNew] = side.key ? keys.try_emplace(*side.key, next) : packets.try_emplace(side.packet, next);
        next += isNew;
        to.push_back(it->second);
    };
    for (const Side& side : _a.packets) add(side, numbers.a);
    for (const Side& side : _b.packets) add(side, numbers.b);
    return numbers;
}

CaptureDiff::Stretch CaptureDiff::untilTheyMeet(const Numbers& numbers) const {
    Capture::SeededMap<int64_t, std::size_t> places; // of each run in b, the first
    for (std::size_t j = 0; j < numbers.b.size(); ++j) places.try_emplace(runAt(numbers.b, j, RUN), j);
    Stretch nearest{numbers.a.size(), numbers.b.size(), false};
    std::size_t distance = numbers.a.size() + numbers.b.size();
    for (std::size_t i = 0; i < numbers.a.size() && i < distance; ++i) {
        const auto found = places.find(runAt(numbers.a, i, RUN));
        if (found == places.end() || i + found->second >= distance) continue;
        nearest = {i, found->second, true};
        distance = i + found->second;
    }
    return nearest;
}

void CaptureDiff::layOut(const Stretch& stretch, const Numbers& numbers) {
    const bool fits = stretch.a * stretch.b <= PART * PART;
    const std::size_t rows = fits ? stretch.a : std::min(stretch.a, PART);
    const std::size_t columns = fits ? stretch.b : std::min(stretch.b, PART);

    // The best score of what is from i and j on: two for a pair of equals, one for a pair of the same type. At most two
    // for each of the shorter side, which has PART at most.
    std::vector<uint16_t> best((rows + 1) * (columns + 1));
    const auto at = [&](std::size_t i, std::size_t j) -> uint16_t& { return best[i * (columns + 1) + j]; };
    std::vector<int> rowTypes(rows), columnTypes(columns); // in a row, for they are compared very often
    std::transform(_a.packets.begin(), _a.packets.begin() + static_cast<std::ptrdiff_t>(rows), rowTypes.begin(),
                   typeOf);
    std::transform(_b.packets.begin(), _b.packets.begin() + static_cast<std::ptrdiff_t>(columns), columnTypes.begin(),
                   typeOf);
    const auto score = [&](std::size_t i, std::size_t j) -> uint16_t {
        return numbers.a[i] == numbers.b[j] ? 2 : rowTypes[i] == columnTypes[j] ? 1 : 0;
    };
    for (std::size_t i = rows; i-- > 0;)
        for (std::size_t j = columns; j-- > 0;) {
            const uint16_t pair = score(i, j);
            at(i, j) = std::max(at(i + 1, j), at(i, j + 1));
            if (pair != 0) at(i, j) = std::max<uint16_t>(at(i, j), static_cast<uint16_t>(at(i + 1, j + 1) + pair));
        }

    // Unless it ends where both meet or end, the far half is laid out again, together with what follows it.
    const bool isWhole = fits && (stretch.meets || (_a.isAtEnd && _b.isAtEnd));
    const std::size_t until = isWhole ? WINDOW : std::clamp<std::size_t>(std::max(rows, columns) / 2, 1, PART / 2);
    std::vector<char> steps; // found first, because the scores look at the packets that telling takes away
    for (std::size_t i = 0, j = 0; (i < rows || j < columns) && i < until && j < until;) {
        const uint16_t pair = i < rows && j < columns ? score(i, j) : 0;
        if (pair != 0 && at(i, j) == at(i + 1, j + 1) + pair) {
            steps.push_back('=');
            ++i;
            ++j;
        } else if (i < rows && (j == columns || at(i, j) == at(i + 1, j))) {
            steps.push_back('a');
            ++i;
        } else {
            steps.push_back('b');
            ++j;
        }
    }
    for (char step : steps) step == '=' ? tellPair() : step == 'a' ? tellOnlyInA() : tellOnlyInB();
}

void CaptureDiff::tellPair() {
    if (_a.packets.front() == _b.packets.front()) {
        ++_equal;
    } else {
        ++_different;
        _tell(&_a.packets.front(), &_b.packets.front());
    }
    _a.drop();
    _b.drop();
}

void CaptureDiff::tellOnlyInA() {
    ++_onlyInA;
    _tell(&_a.packets.front(), nullptr);
    _a.drop();
}

void CaptureDiff::tellOnlyInB() {
    ++_onlyInB;
    _tell(nullptr, &_b.packets.front());
    _b.drop();
}

} // namespace qlproto
