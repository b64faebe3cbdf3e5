// Made-up sessions in memory, for the tests of the tool.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/session/Session.h"

struct Sent {
    int64_t time;
    std::string bytes;
    bool operator==(const Sent&) const = default;
    Velmora::MsgType_t id() const {
        return static_cast<Velmora::MsgType_t>(static_cast<unsigned char>(bytes[0])
                                               | static_cast<unsigned char>(bytes[1]) << 8);
    }
};

inline std::vector<Sent> session(uint64_t seed, uint64_t messages) {
    struct Memory : qlproto::PacketSink {
        std::vector<Sent> packets;
        void packet(const qlproto::Packet& packet) override {
            packets.push_back({packet.time, std::string(packet.bytes)});
        }
    } memory;
    qlproto::session::Session(seed, messages, memory).run();
    return memory.packets;
}

/// The protocol is initialised while a test runs.
class WithProtocol : public testing::Test {
  protected:
    void SetUp() override { Quillon::initialize(); }
    void TearDown() override { Quillon::finalize(); }
};
