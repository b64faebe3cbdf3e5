// The container pcapng: blocks, of which some describe the file (a section) and where packets come from (interfaces), and
// others hold packets. In either byte order, with times in any resolution.
//
// Packets are taken from interfaces of link type USER0 and, if that is asked for, of those of networks. The first comment of a section tells the definition that the file
// was made with.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "Capture/Blocks.h"
#include "Capture/Container.h"

namespace Capture {

class Pcapng : public Container {
  public:
    // Numbers of options.
    static constexpr uint32_t COMMENT = 1, TIME_RESOLUTION = 9, TIME_OFFSET = 14;

    /// Works at the position of the window, where the first section begins. REQUIRES: the window outlives this.
    Pcapng(ByteWindow& window, const Inspect::Protocol& protocol, Takes takes);

    /// Whether a file that begins with these bytes is of this container. REQUIRES: header.size() >= Block::SMALLEST.
    static bool isStart(std::string_view header);

    bool next(Packet& packet) override;
    bool isReady() const override;
    void jumped() override { _block.reset(); }
    uint64_t descriptions() const override { return _descriptions; }

  private:
    struct Interface {
        uint32_t linkType;
        uint32_t longest;               ///< the length that packets are cut to; 0 if they are not
        uint64_t perSecond = 1'000'000; ///< units of time
        int64_t offset = 0;             ///< of times, in seconds
        bool isTold = false;            ///< that its packets are left out
    };

    bool nextBlock();
    bool take(Packet& packet);
    bool takePacket(Packet& packet, std::string_view block);
    bool takeSimple(Packet& packet, std::string_view block);
    void section(std::string_view block);
    void describe(std::string_view block);
    const Interface* interfaceOf(std::string_view block);
    std::optional<uint32_t> lengthOf(std::string_view block);
    bool looksLikePacket(std::string_view block);
    int64_t timeOf(std::string_view block, const Interface& interface);
    void told(const std::string& reason);
    std::string fault(std::string_view header) const;

    ByteWindow& _window;
    BlockFinder _finder;
    const Takes _takes;
    std::optional<Block> _block; ///< the last one, still at the window's position
    std::vector<Interface> _interfaces;
    int64_t _time = 0;          ///< of the last packet
    uint64_t _descriptions = 0; ///< sections and interfaces
    bool _hasPackets = false;   ///< some came out
    bool _isGuessed = false;    ///< that no interface is described was told
};

} // namespace Capture
