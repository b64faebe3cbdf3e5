// IP packets: what is told between whom, put together where it came in fragments.
//
// Both versions, with options and extension headers. Fragments wait for the rest of their packet for 30 seconds of the
// capture's time, in bounded memory; what is given up is told. Of fragments that overlap, what came first holds.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <string_view>

#include "Backend/Common/Inline.h"
#include "Capture/Faults.h"

namespace Capture {

/// What an IP packet carries for one protocol.
struct Datagram {
    std::array<char, 16> from{}, to{}; ///< as in Endpoint
    unsigned protocol = 0;
    std::string_view bytes;  ///< without what the capture cut off
    std::size_t missing = 0; ///< bytes that it cut off
};

/// Bytes that the IP packet says it has, if it is well-formed so far and its checksum, if it has one, is right; else 0.
std::size_t lengthOfIp(std::string_view packet);

class Ip {
  public:
    static constexpr unsigned TCP = 6, UDP = 17;
    static constexpr std::size_t MOST_FRAGMENTED = 1024;        ///< packets that wait for fragments
    static constexpr std::size_t MOST_BYTES = 16 * 1024 * 1024; ///< of them
    static constexpr int64_t LONGEST_WAIT = 30'000'000'000;     ///< nanoseconds
    static constexpr std::size_t LONGEST_DATAGRAM = 65535;

    explicit Ip(Faults& faults) : _faults(faults) {}

    /// What the packet carries, or the one that it completes. False if there is none: the packet is a fragment of more, or
    /// damaged, which is told. Valid until the next call.
    bool take(std::string_view packet, int64_t time, Datagram& datagram);

    /// Tells of all that still wait.
    void finish();

    std::size_t memory() const { return _bytes; } ///< bytes that wait

  private:
    struct Fragmented {
        std::string key;
        int64_t begun = 0;
        std::string bytes;
        std::map<std::size_t, std::size_t> ranges; ///< from, to: what has come, in parts that do not touch
        std::size_t size = 0;                      ///< of all; 0 while it is not known
    };
    struct Fragment {
        std::size_t at;
        bool isLast;
        std::string_view bytes;
    };

    bool takeV4(std::string_view packet, int64_t time, Datagram& datagram);
    bool takeV6(std::string_view packet, int64_t time, Datagram& datagram);
    QL_COLD_PATH bool reassemble(std::string key, const Fragment& fragment, int64_t time, Datagram& datagram);
    void fill(Fragmented& it, const Fragment& fragment);
    void giveUp(std::list<Fragmented>::iterator it, const char* why);
    QL_COLD_PATH bool damaged(const std::string& reason);

    Faults& _faults;
    std::list<Fragmented> _waiting; ///< the oldest first
    std::map<std::string, std::list<Fragmented>::iterator, std::less<>> _byKey;
    std::size_t _bytes = 0;
    std::string _whole; ///< the last one that was put together
};

} // namespace Capture
