// Runs the command-line tool as its users do, in a folder of its own that goes with the object.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <sys/wait.h>

#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/Capture.h"

class ToolFolder {
  public:
    struct Result {
        int exitCode;
        std::string out, err;
        size_t lines() const { return static_cast<size_t>(std::count(out.begin(), out.end(), '\n')); }
    };

    /// A packet for store(): time and bytes.
    using Packet = std::pair<int64_t, std::string>;

    ToolFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "qlproto-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the tool");
        _folder = name;
    }
    ~ToolFolder() { std::filesystem::remove_all(_folder); }
    ToolFolder(const ToolFolder&) = delete;
    ToolFolder& operator=(const ToolFolder&) = delete;

    std::string path(const std::string& name) const { return _folder / name; }

    /// Runs a command line in the folder, with `qlproto` the tool.
    Result run(const std::string& command) const {
        const std::string line = "cd '" + _folder.string() + "' && qlproto() { '" QLPROTO_TOOL "' \"$@\"; }; { "
                                 + command + "; } >out 2>err";
        std::ofstream(path("command")) << line;
        const int status = std::system(("bash '" + path("command") + "'").c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content("out"), content("err")};
    }

    std::string content(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }

    void store(const std::string& name, const std::vector<Packet>& packets) const {
        qlproto::CaptureWriter writer(path(name));
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
        return std::string{static_cast<char>(Message::ID & 0xFF), static_cast<char>(Message::ID >> 8)}
               + std::string(bytes, codec.size());
    }

  private:
    std::filesystem::path _folder;
};
