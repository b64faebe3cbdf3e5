#include "tools/qlproto/analysis/RateSeries.h"

#include <algorithm>

namespace qlproto {

namespace {

RateSeries::Amount& operator+=(RateSeries::Amount& to, const RateSeries::Amount& amount) {
    to.messages += amount.messages;
    to.bytes += amount.bytes;
    return to;
}

} // namespace

void RateSeries::add(int64_t time, uint64_t bytes) {
    _first = std::min(_first, time);
    _last = std::max(_last, time);
    insert(time, {1, static_cast<double>(bytes)});
}

void RateSeries::merge(const RateSeries& other) {
    if (other.isEmpty()) return;
    while (_shift < other._shift) widen();
    for (std::size_t i = 0; i < other._stretches.size(); ++i)
        if (other._stretches[i].messages != 0)
            insert((other._begin + static_cast<int64_t>(i)) << other._shift, other._stretches[i]);
    _first = std::min(_first, other._first);
    _last = std::max(_last, other._last);
}

void RateSeries::insert(int64_t time, const Amount& amount) {
    if (_stretches.empty()) {
        _begin = time >> _shift;
        _stretches.resize(1);
    }
    for (;; widen()) {
        const int64_t stretch = time >> _shift;
        const int64_t end = _begin + static_cast<int64_t>(_stretches.size());
        const int64_t span = std::max(end, stretch + 1) - std::min(_begin, stretch);
        if (span > static_cast<int64_t>(MAX_STRETCHES)) continue;
        if (stretch < _begin) {
            _stretches.insert(_stretches.begin(), static_cast<std::size_t>(_begin - stretch), {});
            _begin = stretch;
        } else if (stretch >= end) {
            _stretches.resize(static_cast<std::size_t>(span));
        }
        _stretches[static_cast<std::size_t>(stretch - _begin)] += amount;
        return;
    }
}

void RateSeries::widen() {
    std::vector<Amount> wider;
    for (std::size_t i = 0; i < _stretches.size(); ++i) {
        const int64_t stretch = (_begin + static_cast<int64_t>(i)) >> 1;
        const auto at = static_cast<std::size_t>(stretch - (_begin >> 1));
        if (at == wider.size()) wider.emplace_back();
        wider[at] += _stretches[i];
    }
    _stretches = std::move(wider);
    _begin >>= 1;
    ++_shift;
}

RateSeries::Span RateSeries::withoutStrays(uint64_t perMille) const {
    double all = 0;
    for (const Amount& it : _stretches) all += it.messages;
    const double most = all * static_cast<double>(perMille) / 1000;
    // Leaves out stretches from one end while they hold no more than that.
    double outside = 0;
    const auto skip = [&](auto it, auto end) {
        double skipped = 0;
        while (it != end && skipped + it->messages <= most) skipped += (it++)->messages;
        outside += skipped;
        return it;
    };
    const auto begin = skip(_stretches.begin(), _stretches.end());
    const auto end = skip(_stretches.rbegin(), _stretches.rend()).base();
    const auto timeAt = [&](auto it) { return (_begin + (it - _stretches.begin())) * (int64_t{1} << _shift); };
    const Span span{std::max(_first, timeAt(begin)), std::min(_last, timeAt(end)), static_cast<uint64_t>(outside)};
    const bool isMuchShorter = begin < end && span.last - span.first < (_last - _first) / 2;
    return isMuchShorter ? span : Span{_first, _last, 0};
}

std::vector<RateSeries::Amount> RateSeries::rates(std::size_t columns, int64_t first, int64_t last) const {
    std::vector<Amount> result(columns);
    const double from = 0, to = static_cast<double>(last - first), width = to / static_cast<double>(columns);
    if (width <= 0) return result;
    for (std::size_t i = 0; i < _stretches.size(); ++i) {
        // The first and the last stretch reach beyond the messages, which are all inside.
        const int64_t begin = (_begin + static_cast<int64_t>(i)) << _shift;
        if (begin > last || begin + (int64_t{1} << _shift) <= first) continue;
        const double low = std::max(from, static_cast<double>(std::max(begin, _first) - first));
        const double high = std::min(to, static_cast<double>(std::min(begin + (int64_t{1} << _shift), _last) - first));
        const auto column = [&](double at) { return std::min(static_cast<std::size_t>(at / width), columns - 1); };
        for (std::size_t c = column(low); c <= column(std::max(low, high)); ++c) {
            const double start = std::max(low, static_cast<double>(c) * width);
            const double end = std::min(high, static_cast<double>(c + 1) * width);
            const double share = high > low ? std::max(0.0, end - start) / (high - low) : 1;
            result[c].messages += _stretches[i].messages * share / (width / 1e9);
            result[c].bytes += _stretches[i].bytes * share / (width / 1e9);
        }
    }
    return result;
}

} // namespace qlproto
