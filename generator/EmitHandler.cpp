// MsgHandler.h, MsgHandler.cpp: one virtual function per message, and the switch that calls it.
//
//     virtual void handle(const LogMessage&);
//
//     case LogMessage::ID: handler.handle(*static_cast<const LogMessage*>(message)); return true;
#include "generator/Emit.h"

namespace qlgen {

std::string emitHandlerHeader(const Definition& definition) {
    Text text(definition);
    text.add(R"(//
// Handling of messages by type. Derive from MsgHandler, override what concerns you (with `using MsgHandler::handle;`
// for the rest), and let dispatch() find the overload.
#pragma once

#include "$folder/$stem.h"
)");
    text.open();
    text.add(R"(
/// Does nothing with any message. The order of the virtual functions is a contract with code built apart from this
/// module.
class MsgHandler {
  public:
    virtual ~MsgHandler();

)");
    for (const Composite& message : definition.messages)
        text.add("    virtual void handle(const $T&);\n", {{"T", message.name}});
    text.add(R"(};

/// Hands the message at `message` to the overload for identifier `id`, which the caller guarantees to be its type.
/// Returns false, and calls nothing, if no message has that identifier.
bool dispatch(MsgType_t id, const void* message, MsgHandler& handler);
)");
    return text.close();
}

std::string emitHandlerSource(const Definition& definition) {
    Text text(definition);
    text.add("#include \"$folder/MsgHandler.h\"\n");
    text.open();
    text.add(R"(
MsgHandler::~MsgHandler() = default;

)");
    for (const Composite& message : definition.messages)
        text.add("void MsgHandler::handle(const $T&) {}\n", {{"T", message.name}});
    text.add(R"(
bool dispatch(MsgType_t id, const void* message, MsgHandler& handler) {
    switch (id) {
)");
    for (const Composite& message : definition.messages)
        text.add(R"(    case $T::ID:
        handler.handle(*static_cast<const $T*>(message));
        return true;
)",
                 {{"T", message.name}});
    text.add(R"(    default:
        return false;
    }
}
)");
    return text.close();
}

} // namespace qlgen
