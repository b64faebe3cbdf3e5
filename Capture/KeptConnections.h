// Connections of packets that are kept: what packets refer to is valid until the next one alone.
#pragma once

#include <cstddef>
#include <vector>

#include "Capture/Connection.h"

namespace Capture {

class KeptConnections {
  public:
    /// The number under which a packet's connection is kept; 0 for null. Mostly it is that of the packet before.
    std::size_t add(const Connection* connection) {
        if (connection == nullptr) return 0;
        if (_all.empty() || _all.back() != *connection) _all.push_back(*connection);
        return _all.size();
    }

    /// The connection of that number, null for 0. Valid until the next add().
    const Connection* find(std::size_t number) const { return number != 0 ? &_all[number - 1] : nullptr; }

    void clear() { _all.clear(); }

  private:
    std::vector<Connection> _all;
};

} // namespace Capture
