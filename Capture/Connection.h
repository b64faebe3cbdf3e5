// Between whom messages of a network travel.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace Capture {

struct Endpoint {
    std::array<char, 16> address{}; ///< of IPv6; one of IPv4 in its last four bytes, after ten of 0 and two of 0xFF
    uint16_t port = 0;

    auto operator<=>(const Endpoint&) const = default;
    bool operator==(const Endpoint& other) const { // compilers call a function for the defaulted one
        return port == other.port && std::memcmp(address.data(), other.address.data(), address.size()) == 0;
    }

    /// "10.0.0.1:9001", "[2001:db8::1]:9001".
    std::string text() const;
};

/// What a message knows of the connection by which it came.
struct Connection {
    uint64_t number = 0;  ///< from 1 on, in the order in which they were met
    Endpoint from, to;    ///< from is who opened it, as far as the capture tells, else who was seen first
    bool isBack = false;  ///< the message goes from `to` to `from`
    bool isStream = true; ///< TCP, else UDP

    bool operator==(const Connection&) const = default;

    const Endpoint& sender() const { return isBack ? to : from; }
    const Endpoint& receiver() const { return isBack ? from : to; }

    /// "10.0.0.1:40000 > 10.0.0.2:9001": who opened it stands first, or else who sends.
    std::string text() const { return from.text() + " > " + to.text(); }
    std::string way() const { return sender().text() + " > " + receiver().text(); }
};

/// What is known of a message by its connection, and the names by which users have it.
///
///   connection     "10.0.0.1:40000 > 10.0.0.2:9001", from who opened it
///   connectionID   its number in the capture, from 1
///   from, to       "10.0.0.1:40000": sender and receiver of the message
///   direction      there, from who opened the connection, or back
enum class ConnectionFact : uint8_t { connection, connectionID, from, to, direction };
inline constexpr std::array<std::string_view, 5> CONNECTION_FACTS{"connection", "connectionID", "from", "to",
                                                                  "direction"};

std::string textOf(ConnectionFact fact, const Connection& connection);

} // namespace Capture
