// Packets of the same time that several taps have seen, in an order that contradicts no tap's own, if there is one: where
// clocks are coarse, many packets have one time, and which tap is named first says nothing of who was first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "Capture/Packet.h"
#include "Capture/SeededHash.h"

namespace qlproto {

class TapOrder {
  public:
    /// `take` gets the packets in their order.
    TapOrder(std::size_t taps, std::function<void(const Capture::Packet&)> take)
        : _take(std::move(take)), _taps(taps) {}

    /// Passes on those before if the packet is of another time. REQUIRES: packet.capture, the tap, < taps.
    void add(const Capture::Packet& packet);

    /// Passes on those that are held.
    void pass();

  private:
    static constexpr std::size_t MOST = 16 * 1024 * 1024; ///< bytes that are held: then the first ones go as they came

    struct Held {
        Capture::Packet packet; ///< but for its bytes
        std::string bytes;
        std::string seen;      ///< what all taps see alike of it
        std::size_t alike = 0; ///< the number of those that are the same packet
    };

    bool passAlike();
    void number();
    bool mayPass(std::size_t tap) const;
    std::size_t nextTap() const;
    void passFirstOf(std::size_t tap);

    const std::function<void(const Capture::Packet&)> _take;
    std::vector<std::deque<Held>> _taps;
    Capture::SeededMap<std::string, std::size_t> _alike;
    std::vector<std::vector<std::size_t>> _left; ///< for each number, how many each tap still has
    std::size_t _bytes = 0;
    int64_t _time = 0;
};

} // namespace qlproto
