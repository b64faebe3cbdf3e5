#include "tools/qlproto/trading/session/Book.h"

#include <algorithm>

namespace qlproto::session {

using Quillon::MDElement;
using Quillon::MDEntry;
using Quillon::MDSource;
using Quillon::MDUpdateAction;
using Quillon::Side;

namespace {

constexpr int64_t LOT = MILLION / 10; // amounts are multiples of a lot

Side::Type opposite(Side::Type side) { return side == Side::BID ? Side::OFR : Side::BID; }

MDEntry& addEntry(Book::Entries& entries, int64_t price, int64_t amount, Side::Type side) {
    MDEntry& entry = entries.add_back();
    entry.price = price;
    entry.amount = amount;
    entry.side = side;
    entry.source = MDSource::MARKET_DATA;
    return entry;
}

} // namespace

Book::Book(const Listing& listing, Rng rng)
    : _rng(rng), _tick(listing.market->tick), _mid(listing.market->price + _tick * _rng.between(-3, 3)) {
    for (Level& level : _bids) level = newLevel();
    for (Level& level : _asks) level = newLevel();
}

Book::Level Book::newLevel() { return {_rng.between(5, 100) * LOT, static_cast<int16_t>(_rng.between(1, 12))}; }

int64_t Book::price(Side::Type side, int level) const {
    const int64_t distance = (GAP + level) * _tick;
    return side == Side::BID ? _mid - distance : _mid + distance;
}

void Book::add(Entries& entries, MDUpdateAction::Type action, Side::Type side, int level) const {
    const Level& it = (side == Side::BID ? _bids : _asks)[static_cast<std::size_t>(level)];
    MDEntry& entry = addEntry(entries, price(side, level), it.amount, side);
    entry.updateAction = action;
    entry.element = MDElement::LEVEL;
    entry.minAmount = LOT;
    entry.numberOfOrders = it.orders;
}

void Book::snapshot(Entries& entries) const {
    entries.reserve(2 * DEPTH);
    for (Side::Type side : {Side::BID, Side::OFR})
        for (int level = 0; level < DEPTH; ++level) add(entries, MDUpdateAction::NEW, side, level);
}

void Book::update(Entries& entries) {
    entries.reserve(4);
    const int64_t kind = _rng.between(1, 100);
    if (kind <= 60)
        changeAmount(entries);
    else if (kind <= 90)
        step(entries);
    else
        trade(entries);
}

void Book::changeAmount(Entries& entries) {
    // One or two levels, each at most once: on both sides, or on one.
    Side::Type side = _rng.chance(50) ? Side::BID : Side::OFR;
    const int64_t count = _rng.between(1, 2);
    for (int64_t i = 0; i < count; ++i, side = opposite(side)) {
        const int64_t level = _rng.between(0, DEPTH - 1);
        levels(side)[static_cast<std::size_t>(level)] = newLevel();
        add(entries, MDUpdateAction::CHANGE, side, static_cast<int>(level));
    }
}

void Book::step(Entries& entries) {
    // The mid goes towards one side: that side's best level falls away and its far end gains one, the other side the
    // reverse.
    const Side::Type towards = _rng.chance(50) ? Side::BID : Side::OFR;
    const Side::Type away = opposite(towards);
    add(entries, MDUpdateAction::DELETE, towards, 0);
    add(entries, MDUpdateAction::DELETE, away, DEPTH - 1);

    _mid += towards == Side::BID ? -_tick : _tick;
    Levels& near = levels(towards);
    Levels& far = levels(away);
    std::rotate(near.begin(), near.begin() + 1, near.end());
    near.back() = newLevel();
    std::rotate(far.begin(), far.end() - 1, far.end());
    far.front() = newLevel();

    add(entries, MDUpdateAction::NEW, towards, DEPTH - 1);
    add(entries, MDUpdateAction::NEW, away, 0);
}

void Book::trade(Entries& entries) {
    // A trade takes half of a best level, which keeps at least a lot; the consolidated amount of that side goes with
    // it.
    const Side::Type side = _rng.chance(50) ? Side::BID : Side::OFR;
    Level& best = levels(side).front();
    const int64_t traded = std::min(best.amount - LOT, best.amount / (2 * LOT) * LOT);
    if (traded <= 0) return changeAmount(entries);
    best.amount -= traded;
    add(entries, MDUpdateAction::CHANGE, side, 0);

    MDEntry& print = addEntry(entries, price(side, 0), traded, side);
    print.updateAction = MDUpdateAction::NEW;
    print.element = MDElement::LAST_TRADE;
    print.numberOfOrders = 1;

    int64_t total = 0;
    for (const Level& level : levels(side)) total += level.amount;
    MDEntry& consolidated = addEntry(entries, price(side, 0), total, side);
    consolidated.updateAction = MDUpdateAction::CHANGE;
    consolidated.element = MDElement::AMOUNT_CONS;
    consolidated.source = MDSource::QL_BOOK;
    consolidated.components = "levels 1-5";
}

} // namespace qlproto::session
