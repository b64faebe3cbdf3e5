#include "Capture/Connection.h"

#include <cstring>
#include <string_view>

#include <arpa/inet.h>

namespace Capture {

std::string Endpoint::text() const {
    char name[INET6_ADDRSTRLEN] = "";
    constexpr std::string_view mapped("\0\0\0\0\0\0\0\0\0\0\xFF\xFF", 12);
    const std::string suffix = ':' + std::to_string(port);
    if (std::memcmp(address.data(), mapped.data(), mapped.size()) == 0) {
        inet_ntop(AF_INET, address.data() + mapped.size(), name, sizeof(name));
        return name + suffix;
    }
    inet_ntop(AF_INET6, address.data(), name, sizeof(name));
    return '[' + std::string(name) + ']' + suffix;
}

std::string textOf(ConnectionFact fact, const Connection& connection) {
    switch (fact) {
    case ConnectionFact::connection:
        return connection.text();
    case ConnectionFact::connectionID:
        return std::to_string(connection.number);
    case ConnectionFact::from:
        return connection.sender().text();
    case ConnectionFact::to:
        return connection.receiver().text();
    case ConnectionFact::direction:
        return connection.isBack ? "back" : "there";
    }
    return {};
}

} // namespace Capture
