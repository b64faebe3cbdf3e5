// What a message consists of, for tools that know only its identifier: constant tables made from the field lists.
//
//     const Inspect::TypeInfo* type = Inspect::reflect(0xF0E9);
//     for (const Inspect::FieldInfo& field : type->fields) ... field.name, type_text(field.value)
//
// Everything here is static: pointers and texts are valid for ever, and the module need not be initialised. Without a
// protocol, the default one is meant (Protocol.h).
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "Inspect/Protocol.h"
#include "Inspect/TypeInfo.h"

namespace Inspect {

/// The message with that identifier, or null.
inline const TypeInfo* reflect(const Protocol& protocol, Velmora::MsgType_t id) {
    const MessageInfo* const message = protocol.find(protocol.messages.data(), id);
    return message != nullptr ? message->type : nullptr;
}
inline const TypeInfo* reflect(Velmora::MsgType_t id) { return reflect(default_protocol(), id); }

/// All messages, in the order of the protocol's message index.
inline std::span<const MessageInfo> all_messages(const Protocol& protocol) { return protocol.messages; }
inline std::span<const MessageInfo> all_messages() { return all_messages(default_protocol()); }

/// All records, in declaration order.
inline std::span<const TypeInfo* const> all_records(const Protocol& protocol) { return protocol.records; }
inline std::span<const TypeInfo* const> all_records() { return all_records(default_protocol()); }

/// All enumerations, in declaration order.
inline std::span<const EnumerationInfo* const> all_enumerations(const Protocol& protocol) {
    return protocol.enumerations;
}
inline std::span<const EnumerationInfo* const> all_enumerations() { return all_enumerations(default_protocol()); }

/// Whether a field of the type, or of a record in it, is secret.
bool holds_secret(const TypeInfo& type);

/// The type as the protocol definition spells it: "int64", "Side", "KeyValuePair[]".
std::string type_text(const ValueInfo& value);

/// The path, as in "contents.parameters[3].value", of the value to which the byte at `offset` of a body belongs, or of
/// the one that should begin there if the body ends before. Empty if all values end before `offset`. The body before
/// `offset` must be one that verify() takes; a body cut short or longer than its values is no matter.
std::string path_at(const TypeInfo& type, std::string_view body, size_t offset);

} // namespace Inspect
