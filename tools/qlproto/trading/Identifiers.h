// What messages are known by: the identifiers of orders, quotes, users and sessions in them, which the definition marks.
// One kind of identifier can travel under several names.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
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

/// What a field with that mark in the definition identifies; none if it has no mark, or one of another kind.
constexpr IdKind idKindOf(std::string_view mark) {
    constexpr std::pair<std::string_view, IdKind> kinds[] = {
        {"order", IdKind::order},
        {"clientOrder", IdKind::clientOrder},
        {"exchangeOrder", IdKind::exchangeOrder},
        {"cancel", IdKind::cancel},
        {"execution", IdKind::execution},
        {"quoteRequest", IdKind::quoteRequest},
        {"quote", IdKind::quote},
        {"user", IdKind::user},
        {"session", IdKind::session},
    };
    for (const auto& [name, kind] : kinds)
        if (name == mark) return kind;
    return IdKind::none;
}

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
