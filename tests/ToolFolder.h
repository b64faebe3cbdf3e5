// Runs the command-line tool as its users do, in a folder of its own.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Capture/Writer.h"
#include "generated/QLProtocol/QLProtocol.h"
#include "tests/Folder.h"

class ToolFolder : public Folder {
  public:
    /// A packet for store(): time and bytes.
    using Packet = std::pair<int64_t, std::string>;

    /// Runs a command line in the folder, with `qlproto` the tool.
    Result run(const std::string& command) const {
        return Folder::run("qlproto() { '" QLPROTO_TOOL "' \"$@\"; }; " + command);
    }

    void store(const std::string& name, const std::vector<Packet>& packets) const {
        Capture::Writer writer(path(name));
        for (const auto& [time, bytes] : packets) writer.packet({time, bytes});
        writer.close();
    }

    /// The bytes of a packet with the message that `fill` filled.
    template <class Message, class Fill>
    static std::string packet(Fill fill) {
        char block[4096], bytes[4096];
        Velmora::BufferAllocator alloc(block, sizeof(block), "test", "packet");
        Message message(alloc);
        fill(message);
        Velmora::FastCodec codec(bytes, bytes + sizeof(bytes));
        message.write(codec);
        return Capture::identifierBytes(Message::ID) + std::string(bytes, codec.size());
    }
};
