#include "tools/qlproto/analysis/CaptureDiff.h"

#include <algorithm>
#include <string_view>

#include "tools/qlproto/Packet.h"
#include "tools/qlproto/SeededHash.h"

namespace qlproto {

namespace {

bool sameType(const CaptureDiff::Side& a, const CaptureDiff::Side& b) {
    return std::string_view(a.packet).substr(0, IDENTIFIER_SIZE)
           == std::string_view(b.packet).substr(0, IDENTIFIER_SIZE);
}

} // namespace

CaptureDiff::CaptureDiff(Source a, Source b, Tell tell) : _tell(std::move(tell)) {
    _a.source = std::move(a);
    _b.source = std::move(b);
}

void CaptureDiff::Ahead::fill(std::size_t count) {
    while (packets.size() < count && !isAtEnd) {
        if (!source(packets.emplace_back())) {
            packets.pop_back();
            isAtEnd = true;
        }
    }
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
        } else if (_a.packets.front().key == _b.packets.front().key) {
            tellPair();
        } else {
            _a.fill(WINDOW);
            _b.fill(WINDOW);
            layOut(untilTheyMeet());
        }
    }
}

CaptureDiff::Stretch CaptureDiff::untilTheyMeet() const {
    SeededMap<std::string_view, std::vector<std::size_t>> places;
    for (std::size_t j = 0; j < _b.packets.size(); ++j) places[_b.packets[j].key].push_back(j);
    Stretch nearest{_a.packets.size(), _b.packets.size(), false};
    std::size_t distance = _a.packets.size() + _b.packets.size();
    for (std::size_t i = 0; i < _a.packets.size() && i < distance; ++i) {
        const auto found = places.find(_a.packets[i].key);
        if (found == places.end()) continue;
        for (std::size_t j : found->second) {
            if (i + j >= distance) break;
            if (!isRun(i, j)) continue;
            nearest = {i, j, true};
            distance = i + j;
            break;
        }
    }
    return nearest;
}

bool CaptureDiff::isRun(std::size_t a, std::size_t b) const {
    for (std::size_t n = 0; n < RUN; ++n) {
        const bool aEnds = a + n == _a.packets.size(), bEnds = b + n == _b.packets.size();
        if (aEnds || bEnds) return n > 0 && aEnds && bEnds;
        if (_a.packets[a + n].key != _b.packets[b + n].key) return false;
    }
    return true;
}

void CaptureDiff::layOut(const Stretch& stretch) {
    const bool fits = stretch.a * stretch.b <= PART * PART;
    const std::size_t rows = fits ? stretch.a : std::min(stretch.a, PART);
    const std::size_t columns = fits ? stretch.b : std::min(stretch.b, PART);

    // The best score of what is from i and j on: two for a pair of equals, one for a pair of the same type. At most two
    // for each of the shorter side, which has PART at most.
    std::vector<uint16_t> best((rows + 1) * (columns + 1));
    const auto at = [&](std::size_t i, std::size_t j) -> uint16_t& { return best[i * (columns + 1) + j]; };
    const auto score = [&](std::size_t i, std::size_t j) -> uint16_t {
        const Side &a = _a.packets[i], &b = _b.packets[j];
        return a.key == b.key ? 2 : sameType(a, b) ? 1 : 0;
    };
    for (std::size_t i = rows; i-- > 0;)
        for (std::size_t j = columns; j-- > 0;) {
            const uint16_t pair = score(i, j);
            at(i, j) = std::max(at(i + 1, j), at(i, j + 1));
            if (pair != 0) at(i, j) = std::max<uint16_t>(at(i, j), static_cast<uint16_t>(at(i + 1, j + 1) + pair));
        }

    // Unless it ends where both meet or end, the far half is laid out again, together with what follows it.
    const bool isWhole = fits && (stretch.meets || (_a.isAtEnd && _b.isAtEnd));
    const std::size_t until = isWhole ? WINDOW : PART / 2;
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
    if (_a.packets.front().key == _b.packets.front().key) {
        ++_equal;
    } else {
        ++_different;
        _tell(&_a.packets.front(), &_b.packets.front());
    }
    _a.packets.pop_front();
    _b.packets.pop_front();
}

void CaptureDiff::tellOnlyInA() {
    ++_onlyInA;
    _tell(&_a.packets.front(), nullptr);
    _a.packets.pop_front();
}

void CaptureDiff::tellOnlyInB() {
    ++_onlyInB;
    _tell(nullptr, &_b.packets.front());
    _b.packets.pop_front();
}

} // namespace qlproto
