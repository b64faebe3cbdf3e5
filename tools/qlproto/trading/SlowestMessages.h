// The messages that took longest on their whole way, from the first station that stamped them to the last. Memory is
// bounded by how many of them are asked for.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/qlproto/messages/MessageReader.h"

namespace qlproto {

class SlowestMessages {
  public:
    struct Message {
        uint64_t number; ///< of the packet, from 1
        int64_t time;    ///< of the packet
        std::size_t index;
        std::size_t from = 0, to = 0;         ///< positions in STATIONS
        int64_t took = 0;                     ///< nanoseconds
        std::size_t slowFrom = 0, slowTo = 0; ///< of the hop that took most of it
        int64_t slowest = -1;
        bool hasValue = false; ///< for whoever wants to tell more of it
        std::string value = {};
    };

    explicit SlowestMessages(std::size_t most) : _most(most) {}

    /// `valueOf`, if there is one, is asked for the value of what is among the slowest so far.
    using ValueOf = std::function<std::optional<std::string>()>;
    void add(const Capture::Packet& packet, const MessageReader& reader, uint64_t number, const ValueOf& valueOf);

    /// The slowest first, earlier ones before later ones.
    std::vector<Message> messages() const;

  private:
    std::size_t _most;
    std::vector<Message> _heap; ///< the least slow at its front
};

} // namespace qlproto
