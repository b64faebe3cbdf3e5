// Writes capture files: pcap with times in nanoseconds and link type USER0, one message a packet.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

#include "Capture/Definition.h"
#include "Capture/Output.h"
#include "Capture/Packet.h"

namespace Capture {

class Writer : public PacketSink {
  public:
    /// Creates the capture; "-" is standard output. Throws IoError. If the definition is given, it is told where the
    /// output allows it.
    explicit Writer(const std::string& path, std::optional<Definition> definition = std::nullopt);

    /// Throws IoError or ClosedPipe.
    void packet(const Packet& packet) override;

    /// Writes what is left and puts the capture in its place. To be called at the end: without, there is no capture.
    void close();

  private:
    void append(std::initializer_list<uint32_t> words);

    const std::string _path;
    const std::optional<Definition> _definition;
    Output _output;
};

} // namespace Capture
