// What messages are known by: the identifiers of orders, quotes, users and sessions in them, found by name in the field
// lists.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qlproto {

enum class IdKind : uint8_t {
    none,
    order,
    clientOrder,
    exchangeOrder,
    cancel,
    execution,
    quoteRequest,
    quote,
    user,
    session
};

/// Which fields carry identifiers. One kind of identifier can travel under several names.
struct IdField {
    std::string_view field;
    IdKind kind;
};
inline constexpr IdField ID_FIELDS[] = {
    {"orderID", IdKind::order},         {"clOrdID", IdKind::clientOrder},
    {"clNewID", IdKind::clientOrder}, // replaces the clOrdID of a modified order
    {"exOrdID", IdKind::exchangeOrder}, {"cxlID", IdKind::cancel},
    {"execID", IdKind::execution},      {"quoteReqID", IdKind::quoteRequest},
    {"quoteID", IdKind::quote},         {"userID", IdKind::user},
    {"sessionID", IdKind::session},
};

struct Identifier {
    IdKind kind;
    /// The order flow numbers its orders and the new-order interface gives them texts: an orderID of the one is no
    /// orderID of the other, even if the digits are the same.
    bool isText;
    std::string value;

    auto operator<=>(const Identifier&) const = default;
};

/// Appends the identifiers of the message at `message`; empty texts and zeros identify nothing.
/// REQUIRES: it is of the type at `index` of the message index.
void collectIdentifiers(short index, const void* message, std::vector<Identifier>& to);

} // namespace qlproto
