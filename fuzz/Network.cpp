// Any packets of networks: memory is bounded, and what comes out is told by whom it was sent.
//
// An input: packets of a byte that tells what they are, one with their length, and so many bytes. Of a segment of TCP these
// are: sequence number (two bytes), flags, ports, and what it carries; else a frame as it is.
#include "fuzz/Input.h"

#include <string>
#include <utility>

#include "Capture/Network.h"
#include "Capture/NetworkPackets.h"

namespace {

std::string segment(std::string_view bytes) {
    constexpr size_t head = 4;
    if (bytes.size() < head) return {};
    const auto byte = [&](size_t at) { return static_cast<unsigned char>(bytes[at]); };
    const Capture::Endpoint from = Capture::endpointOf(1, byte(3) & 1), to = Capture::endpointOf(1, byte(3) >> 7 & 1);
    const uint32_t sequence = byte(0) == 0xFF ? byte(1) * 0x1000001u : byte(0) * 256u + byte(1);
    return Capture::tcpPacket(from, to, {sequence, 0, byte(2)}, bytes.substr(head));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using Type = Capture::LinkType;
    initializeOnce();
    std::string_view input(reinterpret_cast<const char*>(data), size);
    Capture::Faults faults;
    Capture::Network network({Capture::Framing::of("frames")}, Inspect::default_protocol(), faults);
    uint64_t last = 0; // connection of which a text was made, which takes longer than all else
    const auto drain = [&] {
        for (Capture::Packet it; network.next(it);) {
            FUZZ_CHECK(it.connection != nullptr && it.bytes.size() <= it.original);
            if (std::exchange(last, it.connection->number) != it.connection->number)
                FUZZ_CHECK(!it.connection->way().empty());
        }
        FUZZ_CHECK(network.memory() < Capture::Network::MOST_BYTES + Capture::Ip::MOST_BYTES + (1 << 20));
    };
    for (int64_t time = 0; input.size() >= 2; time += 1'000'000'000) {
        const auto kind = static_cast<unsigned char>(input[0]);
        const std::string_view bytes = input.substr(2, static_cast<unsigned char>(input[1]));
        input.remove_prefix(2 + bytes.size());
        constexpr uint32_t types[] = {Type::ETHERNET, Type::RAW_IP, Type::COOKED, Type::COOKED_2, Type::IPV6};
        const bool isSegment = kind >= 128;
        const std::string packet = isSegment ? segment(bytes) : std::string(bytes);
        network.take({.time = time, .bytes = packet, .linkType = isSegment ? Type::RAW_IP : types[kind % 5]});
        drain();
    }
    do drain();
    while (network.finish());
    for (const Capture::Damage& it : faults.all()) FUZZ_CHECK(!it.text().empty());
    return 0;
}
