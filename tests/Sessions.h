// Made-up sessions in memory, and captures put together by hand, for the tests of the tool.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/Module.h"
#include "tools/qlproto/trading/session/Session.h"

struct Sent {
    int64_t time;
    std::string bytes;
    bool operator==(const Sent&) const = default;
    Velmora::MsgType_t id() const { return Capture::identifierOf(bytes); }
};

inline std::vector<Sent> session(uint64_t seed, uint64_t messages) {
    struct Memory : Capture::PacketSink {
        std::vector<Sent> packets;
        void packet(const Capture::Packet& packet) override {
            packets.push_back({packet.time, std::string(packet.bytes)});
        }
    } memory;
    qlproto::session::Session(seed, messages, memory).run();
    return memory.packets;
}

/// The bytes of captures.
struct CaptureForm {
    uint32_t perSecond = 1'000'000'000; ///< fractions that times are told in
    bool isSwapped = false;             ///< the other byte order
    uint32_t linkType = 147;

    std::string header() const {
        return word(perSecond == 1'000'000 ? 0xA1B2C3D4 : 0xA1B23C4D) + word(isSwapped ? 0x00020004 : 0x00040002)
               + word(0) + word(0) + word(262144) + word(linkType);
    }

    /// A record; `cutFrom` are the bytes that the packet had before it was cut.
    std::string record(const Sent& it, size_t cutFrom = 0) const {
        const size_t size = it.bytes.size();
        const int64_t second = 1'000'000'000;
        return word(it.time / second) + word(it.time % second / (second / perSecond)) + word(size)
               + word(cutFrom != 0 ? cutFrom : size) + it.bytes;
    }

  private:
    std::string word(auto number) const {
        auto value = static_cast<uint32_t>(number);
        if (isSwapped) value = __builtin_bswap32(value);
        return {reinterpret_cast<const char*>(&value), sizeof(value)};
    }
};
