// The books of all listings and the stream of market data from them.
#pragma once

#include <vector>

#include "tools/qlproto/trading/session/Book.h"
#include "tools/qlproto/trading/session/Hops.h"
#include "tools/qlproto/trading/session/Sender.h"

namespace qlproto::session {

class MarketData : public Actor {
  public:
    MarketData(const World& world, Scheduler& scheduler, Sender& sender, Rng rng);

    /// From now on every book changes.
    void start();

    /// The book of the listing with that index.
    const Book& book(std::size_t listing) const { return _books[listing]; }

    /// Sends the whole book of a listing, in answer to the request for stream `streamID`.
    void sendSnapshot(std::size_t listing, int32_t streamID);

    /// Sends a change of the book of the listing whose index is the token.
    void act(int token) override;

  private:
    void describe(Quillon::MktDataMessage& message, std::size_t listing, bool isSnapshot);

    const World& _world;
    Scheduler& _scheduler;
    Sender& _sender;
    Rng _rng;
    std::vector<Book> _books;
    int64_t _batchID = 0;
};

} // namespace qlproto::session
