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
    enum Container { pcap, pcapng, erfCapture };

    uint32_t perSecond = 1'000'000'000; ///< fractions that times are told in
    bool isSwapped = false;             ///< the other byte order
    uint32_t linkType = 147;
    Container container = pcap;

    std::string header() const {
        const std::string version = word(isSwapped ? 0x00020004 : 0x00040002);
        if (container == erfCapture) return "";
        if (container == pcap)
            return word(perSecond == 1'000'000 ? 0xA1B2C3D4 : 0xA1B23C4D) + version + word(0) + word(0) + word(262144)
                   + word(linkType);
        const std::string resolution =
            word(isSwapped ? 0x00090001 : 0x00010009) + (perSecond == 1'000'000 ? '\6' : '\x9') + std::string(3, '\0');
        return block(0x0A0D0D0A, word(0x1A2B3C4D) + word(isSwapped ? 0x00010000 : 1) + word(-1) + word(-1))
               + block(1, word(isSwapped ? linkType << 16 : linkType) + word(262144) + resolution + word(0));
    }

    /// A record; `cutFrom` are the bytes that the packet had before it was cut.
    std::string record(const Sent& it, size_t cutFrom = 0) const {
        const size_t size = it.bytes.size(), original = cutFrom != 0 ? cutFrom : size;
        const int64_t second = 1'000'000'000, fraction = it.time % second;
        if (container == pcap)
            return word(it.time / second) + word(fraction / (second / perSecond)) + word(size) + word(original)
                   + it.bytes;
        const std::string zeros(7, '\0');
        if (container == pcapng) {
            const int64_t time = it.time / (second / perSecond);
            return block(6, word(0) + word(time >> 32) + word(time) + word(size) + word(original) + it.bytes
                                + zeros.substr(0, -size % 4));
        }
        const bool isEthernet = linkType == 1;
        const size_t begin = isEthernet ? 18 : 16, length = (begin + size + 7) / 8 * 8;
        const auto half = [](size_t number) { return std::string{char(number >> 8), char(number)}; };
        return word(((fraction << 32) + second / 2) / second) + word(it.time / second)
               + (isEthernet ? "\x02\x04" : "\x18\x04") + half(length) + half(0) + half(original)
               + zeros.substr(0, begin - 16) + it.bytes + zeros.substr(0, length - begin - size);
    }

    std::string block(uint32_t type, const std::string& body) const {
        const std::string size = word(body.size() + 12);
        return word(type) + size + body + size;
    }

    std::string word(auto number) const {
        auto value = static_cast<uint32_t>(number);
        if (isSwapped) value = __builtin_bswap32(value);
        return {reinterpret_cast<const char*>(&value), sizeof(value)};
    }
};
