// Packets kept to be gone through once more: in memory while they are few, then in a temporary file.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "Capture/Packet.h"

namespace qlproto {

class PacketSpool {
  public:
    using Visit = std::function<void(const Capture::Packet& packet, uint64_t number)>;

    /// Keeps a packet and its number. Throws IoError.
    void add(const Capture::Packet& packet, uint64_t number);

    /// Goes through all packets in the order they came in; their offsets are not kept. The last thing to be done.
    /// Throws IoError.
    void forEach(const Visit& visit);

  private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    struct Head {
        int64_t time;
        uint64_t number;
        uint64_t size;
        bool hasConnection; ///< it follows
    };
    static constexpr std::size_t CAPACITY = 16 * 1024 * 1024;

    void spill();

    std::string _held; ///< what is not in the file
    std::unique_ptr<std::FILE, Close> _file;
};

} // namespace qlproto
