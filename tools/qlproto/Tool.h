// What makes the tool of one protocol of the commands for any. They know the protocol from here alone.
//
//     constinit const qlproto::Tool qlproto::thisTool{
//         .program = "chatproto", .version = "1", .name = "Chat", .filterPrefix = "chat",
//         .protocol = Inspect::protocol_of<Chat::ChatTraits>()};
//     int main(int argc, char** argv) { return qlproto::runTool(argc, argv); }
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Host/Topics.h"
#include "Inspect/Protocol.h"

namespace qlproto {

using Host::Family;

/// An example at the end of a command's help.
struct Example {
    std::string_view command; ///< empty for the help of the tool
    std::string_view line;    ///< in which "$tool" stands for the program
};

/// A message for texts.
struct Sample {
    std::string_view message;
    std::string_view body; ///< in JSON
};

struct Tool {
    std::string_view program;      ///< its name
    std::string_view version;      ///< its own
    std::string_view name;         ///< of the protocol, as people call it: "QLProtocol"
    std::string_view filterPrefix; ///< of the names of fields in a packet analyser: "ql"
    const Inspect::Protocol& protocol;

    // What cannot be known of any protocol.
    std::string_view title = {};                    ///< the name in sentences, if not "the protocol NAME"
    std::span<const Family> families = {};          ///< of messages, for --family and for buses
    std::span<const std::string_view> busKeys = {}; ///< see Host::Topics
    std::span<const Example> examples = {};         ///< instead of those that fit any protocol
    Sample sample = {};                             ///< or else the first message
    std::string_view keyFields = {}; ///< names of fields that tell most; a packet analyser shows them first
    /// Up to two bodies of the message as they occur in life, for the corpus.
    std::vector<std::string> (*bodiesOf)(Velmora::MsgType_t id) = nullptr;
};

extern const Tool thisTool; // defined by each program

/// Runs the tool with the commands that fit any protocol. Returns its exit status.
int runTool(int argc, char** argv);

} // namespace qlproto
