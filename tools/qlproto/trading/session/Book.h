// The simulated book of one listing: DEPTH levels on both sides of a mid price that walks at random.
//
//     asks   mid + (GAP + DEPTH - 1) ticks  ...  mid + GAP ticks
//     bids   mid - GAP ticks                ...  mid - (GAP + DEPTH - 1) ticks
//
// Levels stand on every tick, so a step of the mid takes one level away at each end and puts one on; whoever applies
// the entries to the last snapshot always holds this book.
#pragma once

#include <array>
#include <cstdint>

#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/trading/session/Rng.h"
#include "tools/qlproto/trading/session/World.h"

namespace qlproto::session {

class Book {
  public:
    using Entries = bufstl::bufvectox<Quillon::MDEntry>;

    static constexpr int DEPTH = 5; ///< levels of a side
    static constexpr int GAP = 2;   ///< ticks from the mid to the best price

    Book(const Listing& listing, Rng rng);

    int64_t bid() const { return _mid - GAP * _tick; } ///< best price to sell at
    int64_t ask() const { return _mid + GAP * _tick; } ///< best price to buy at

    /// Appends the whole book.
    void snapshot(Entries& entries) const;

    /// Changes the book and appends what changed.
    void update(Entries& entries);

  private:
    struct Level {
        int64_t amount;
        int16_t orders;
    };
    using Levels = std::array<Level, DEPTH>; // best first

    Level newLevel();
    int64_t price(Quillon::Side::Type side, int level) const;
    Levels& levels(Quillon::Side::Type side) { return side == Quillon::Side::BID ? _bids : _asks; }

    void add(Entries& entries, Quillon::MDUpdateAction::Type action, Quillon::Side::Type side, int level) const;
    void changeAmount(Entries& entries);
    void step(Entries& entries);
    void trade(Entries& entries);

    Rng _rng;
    int64_t _tick;
    int64_t _mid;
    Levels _bids;
    Levels _asks;
};

} // namespace qlproto::session
